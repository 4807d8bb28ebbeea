// The waterjet as a propulsor of the prediction: the maker's thrust curves (thrust over ship
// speed, one curve per power setting) read both ways, the impeller's power-RPM law, and the
// columns of one speed row. Units: ft/s, lbf, hp, RPM.
#pragma once

#include "core/speed_performance.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"

namespace velmar {

// One waterjet at one ship speed.
struct WaterjetPoint {
  double thrust = 0.0;  // lbf
  double power = 0.0;   // power into the jet (delivered), hp
  double rpm = 0.0;     // impeller RPM; 0 when the data name no impeller speed
  int cavZone = 0;      // the maker's points around it: 0 none, 1 some, 2 all in the cavitation zone
};

// The power the jet needs for `thrust` at ship speed V, and the thrust it gives for `power`.
// Between power curves, log T over log P is linear; beyond the outer curves the nearest
// pair's slope goes on (with one curve, P ~ T^1.5). False, with a failure text, when the
// data hold no curve with a positive thrust at V.
bool WaterjetPowerForThrust(const clsVXWaterjet& waterjet, double V, double thrust, WaterjetPoint& point);
bool WaterjetThrustForPower(const clsVXWaterjet& waterjet, double V, double power, WaterjetPoint& point);

// The impeller law RPM = k P^(1/3) (the pump affinity laws at fixed geometry), k from the
// selected impeller's rated point, or from the jet's rated RPM and power when no impeller is
// defined. With the speed correction on, k goes linearly with ship speed from the impeller's
// point to its corrected point. 0 when the data give no k.
double WaterjetRPMForPower(const clsVXWaterjet& waterjet, double V, double power);
double WaterjetPowerForRPM(const clsVXWaterjet& waterjet, double V, double rpm);

// Writes the propulsor columns of row `row` for one jet working at `point`: thrust, RPM,
// torque, delivered, shaft and brake power, efficiencies, the delivered thrust and net pull
// of all jets, and the cavitation zone in PercentCavAverageCheck (2: in the zone, 1: at its
// edge) and PropellerBreakdownCheck (1: in the zone).
bool CalcWaterjetAnalysis(int hullCount, clsVXPropulsion& propulsion, clsVXWaterjet& waterjet,
                          clsVXSpeedPerformance& speedPerformance, int row, const WaterjetPoint& point);

}  // namespace velmar
