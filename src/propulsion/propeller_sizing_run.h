// The logic of the propeller sizing window, shared by the window and the command line: the
// design point from the clsVXPropellerSizing settings and the design speed row, the sizing
// solver, and the solution written back to the propeller (and the gear ratio). Also the
// headless hooks under which a propulsion Calculate runs this sizing at its sizing step.
#pragma once

#include <string>
#include <vector>

#include "core/speed_performance.h"
#include "core/ui_hooks.h"
#include "core/water.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propeller_sizing.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/sizing_solver.h"
#include "vessel/hull.h"

namespace velmar {

// One quantity the sizing may change, in the project's units.
struct SizedQuantity {
  std::string name;     // property: Diameter, PitchMean, ExpAreaRatio, GearRatio, PropulsorRPM
  std::string caption;  // as the report shows it
  UnitFamily family = UnitFamily::None;
  double before = 0.0, after = 0.0;
  bool sized = false;  // a solved unknown (PitchMean also follows a sized diameter)
};

// What a sizing did.
struct PropellerSizingReport {
  bool ran = false;  // a sizing is set and was tried
  bool ok = false;   // it succeeded and the propeller holds the solution
  int identity = 0;  // PropellerSizingIdentity
  int designRow = 0;
  double speed = 0.0;       // design speed, project's unit
  double thrust = 0.0;      // design thrust per propeller, lbf (by thrust, by total drag)
  double power = 0.0;       // design delivered power per propeller, hp (by power)
  double engineRPM = 0.0;   // engine RPM of the design point
  double efficiency = 0.0;  // open-water efficiency of the solution
  std::vector<SizedQuantity> quantities;
  SizingSummary summary;
  std::string errors;  // the failure's texts (a failed sizing changes nothing)
};

// Sizes the propeller for the design point that the sizing settings and the speed table give:
// the design speed row (DesignSpeedIndex) with its interaction coefficients; the thrust
// ReferenceThrustPerPropeller x ReferenceThrustDesignPoint (by thrust), the brake power
// ReferencePowerBrakePerPropeller x ReferencePowerDesignPoint less gear and shaft losses (by
// power) or the row's total drag (by total drag); the engine at ReferenceEngineRPM x
// ReferenceEngineRPMDesignPoint. The Keep/Size settings choose the unknowns; a sized rate
// becomes the gear ratio. On success the propeller (and the gear ratio) take the solution
// and PropulsionSizingChanged is set.
PropellerSizingReport ApplyPropellerSizing(clsVXWaterProperties& water, clsVXHull& hull,
                                           clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                           clsVXPropellerSeries& propellerSeries,
                                           clsVXPropellerSizing& sizing,
                                           clsVXSpeedPerformance& speedPerformance);

// The report as lines of text, numbers in the project's units.
std::string PropellerSizingReportText(const PropellerSizingReport& report, const clsVXUnits& units);

// Headless hooks for a Calculate that sizes: the sizing step of the propulsion prediction
// runs ApplyPropellerSizing on the open project, and the question "Propulsion Sizing" is
// answered Yes. Everything else as HeadlessHooks.
class PropellerSizingHooks : public HeadlessHooks {
 public:
  Answer Ask(std::string_view title, std::string_view text, bool withCancel, Answer defaultAnswer) override;
  void ShowPropellerSizing() override;

  std::vector<PropellerSizingReport> reports;  // one per sizing step run
};

}  // namespace velmar
