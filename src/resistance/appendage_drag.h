// Appendage drag of one hull at one speed row, by Resistance.AppendageDragMethod: a
// percentage of the bare-hull drag, or the component method of Holtrop & Mennen (1982), which
// sums the viscous drag of each appendage with its own form factor.
#pragma once

#include <array>

#include "core/speed_performance.h"
#include "core/water.h"
#include "resistance/friction.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "vessel/appendage.h"
#include "vessel/hull.h"

namespace velmar {

// AppendageDragMethod ids the program computes.
enum AppendageDragMethodId : int { kAppendagePercentage = 0, kAppendageHoltropComponent = 5 };

// The appendages of the component method as the first speed of a run read them (ft, ft2):
// for each kind whether it is present, its form factor and total surface, or the inputs of
// its own drag; and the water's density (slug/ft3). The later speeds of the run reuse them.
// `speed` is the row's own: the caller sets it before each row to the speed (ft/s) it has
// read from the row, which the method would otherwise read again. `shipFriction` holds the
// ITTC-1957 line at the ship's Reynolds number, which the hull's friction may have taken.
struct AppendageRun {
  struct Kind {
    bool present = false;
    double k = 0.0, S = 0.0, x = 0.0, y = 0.0;
    int count = 0;
  };
  bool read = false;
  double rho = 0.0;
  std::array<Kind, 11> kinds{};
  // The indices of the kinds present, in the order of the sum.
  std::array<unsigned char, 11> present{};
  int presentCount = 0;
  double speed = 0.0;
  FrictionITTC57Memo shipFriction;
};

// `drag`: the appendage drag of one hull in pounds force at row `row`. Returns true on
// success; a failure leaves its text in the calculation error state. `run`, when given,
// keeps the appendages from one row of a run to the next.
bool CalcAppendageDrag(double& drag, clsVXWaterProperties& water, clsVXHull& hull, clsVXAppendage& appendage,
                       clsVXITTC78Expansion& ittc78, clsVXResistance& resistance,
                       clsVXSpeedPerformance& speedPerformance, int row, AppendageRun* run = nullptr);
// Appendage.PercentageHullDrag percent of the row's bare-hull drag of one hull.
bool CalcAppendagePercentage(double& drag, clsVXAppendage& appendage, clsVXSpeedPerformance& speedPerformance,
                             int row);
// Holtrop & Mennen (1982): sum of (CF (1+k2) + CA) q S over the appendages, with the tunnel
// thrusters and the miscellaneous drag areas added by their own formulas.
bool CalcAppendageHoltropComponent(double& drag, clsVXWaterProperties& water, clsVXAppendage& appendage,
                                   clsVXSpeedPerformance& speedPerformance, int row,
                                   AppendageRun* run = nullptr);
// Drag of one bow thruster tunnel opening, Holtrop (1984): 0.5 rho V^2 (2 x 0.0075 Pi) d^2,
// with rho in slug/ft3, V in ft/s and d in ft; pounds force.
double CalcTunnelThrusterDrag(double speed, double density, double diameter);

// Appendage form factors 1+k2, the program's values after the table of Holtrop & Mennen
// (1982). The fixed ones:
enum class AppendageFormFactorKind { Stabilizer, BilgeKeel, Bossing, Other, Strut, SonarDome };
double AppendageFormFactor(AppendageFormFactorKind kind);
// Shafts: 1.2 - 0.03 a + 0.011 a^2 with a the shaft angle to the waterline in degrees.
double AppendageFormFactorShaft(double angleShaftDeg);
// Rudders by RudderType: balanced foil 2.5, balanced plate 3.5, aft of skeg 1.35, aft of
// stern 1.5; any other type 2.5.
double AppendageFormFactorRudder(int rudderType);
// Skegs 1.75, keels 2.8 (by SkegKeelType).
double AppendageFormFactorSkegKeel(int skegKeelType);
// Stabilizers 2.8, times a dynamic multiplier (fins at work) when that is above 1.
double AppendageFormFactorStabilizer(double dynamicMultiplier);

}  // namespace velmar
