// The Calculate and Clear Results commands.
#include "app/calculate.h"

#include "app/application.h"
#include "core/diagnostics.h"
#include "core/ui_hooks.h"
#include "propulsion/propulsion_driver.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

using Col = clsVXSpeedPerformance::Field;

constexpr const char* kSizingQuestion =
    "The propulsion sizing has recently been changed, would you like to recalculate the Propulsion results "
    "instead of the Resistance results?";

bool PropulsionPredictionOfProject() {
  ModelSet& p = App().primary;
  return CalcPropulsionPrediction(*p.WaterProperties, *p.Hull, *p.ITTC78, *p.Resistance, *p.Propulsion,
                                  *p.Propeller, *p.PropellerSeries, *p.Waterjet, *p.Engine,
                                  *p.SpeedPerformance);
}

// What differs between the two modes' runs.
struct ModeRun {
  const char* location;  // calculation location of the run
  bool (*predict)();
  const char* warningLocation;
  bool needResistance, needPropulsion;  // the Calculate flags after the run
};

const ModeRun kResistanceRun{"CalcResistance button", CalcResistancePrediction, "Resistance prediction",
                             false, true};
const ModeRun kPropulsionRun{"CalcPropulsion button", PropulsionPredictionOfProject, "Propulsion prediction",
                             false, false};

// The view command of a mode: the mode changes, its window is shown and the Calculate button
// follows; no data changes and nothing is calculated.
void ViewMode(Mode mode) {
  App().CurrentMode = mode;
  Hooks().ShowModeView(static_cast<int>(mode));
  RefreshCalculateButton();
}

// Toolbar button 5 needs a hull drag table: one that is calculated by prediction or
// aligned prediction.
bool HullDragTableCommandEnabled() {
  const auto& r = App().primary.Resistance;
  if (!r || r->HullDragEnabled() != kDragCalc) return false;
  const int technique = r->HullDragTechnique();
  return technique == kTechniquePrediction || technique == kTechniqueAlignedPrediction;
}

// The columns Clear Results sets to 0, in its order: the propulsion pass, then the resistance
// pass.
constexpr Col kPropulsionColumns[] = {
    Col::CoefFroudeLength,
    Col::CoefFroudeVolume,
    Col::PowerEffectiveTotal,
    Col::WakeFraction,
    Col::ThrustDeduction,
    Col::RelRotEfficiency,
    Col::EngineRPM,
    Col::PowerBrakePerProp,
    Col::PropulsorRPM,
    Col::CPMeanPitch,
    Col::CoefPropulsorJ,
    Col::CoefPropulsorKT,
    Col::CoefPropulsorKQ,
    Col::PropulsorEfficiency,
    Col::OverallPropulsiveEfficiency,
    Col::PropulsorThrust,
    Col::TotalDeliveredThrust,
    Col::TotalNetTowpull,
    Col::PropulsorTorque,
    Col::PowerDeliveredPerProp,
    Col::PowerShaftPerProp,
    Col::PowerShaftTotal,
    Col::PowerBrakeTotal,
    Col::SigmaV,
    Col::MinPitchFaceCav,
    Col::TipSpeed,
    Col::MeanBladePressure,
    Col::RecommendedEAR,
    Col::PercentCavAverage,
    Col::PercentCavPeak,
    Col::CoefPropulsorReynolds,
    Col::CoefPropulsorKTJ2,
    Col::CoefPropulsorKQJ3,
    Col::CoefPropulsorCTH,
    Col::CoefPropulsorCP,
    Col::FuelRatePerEngine,
    Col::TransportFactor,
    Col::PercentEngineLoadFactor,
    Col::AccelGravities,
    Col::AccelTimeSecs,
    Col::AccelDistance,
};
constexpr Col kResistanceColumns[] = {
    Col::CoefFroudeLength,
    Col::CoefFroudeVolume,
    Col::CoefFroudeChineBeam,
    Col::CoefReynoldsLength,
    Col::CoefDragBareHullFriction,
    Col::CoefDragBareHullViscous,
    Col::CoefDragBareHullResiduary,
    Col::CoefDragBareHullRoughness,
    Col::CoefDragBareHullCorrAllowance,
    Col::CoefDragBareHull,
    Col::DynamicTrimDeg,
    Col::CoefPlaningLkeelLpRatio,
    Col::CoefPlaningHumpSpeedMultiplier,
    Col::DragBareHull,
    Col::DragAppendages,
    Col::DragWind,
    Col::DragEquilibriumPlaning,
    Col::DragSeas,
    Col::DragChannel,
    Col::DragMargin,
    Col::DragTotal,
    Col::PowerEffectiveBareHull,
    Col::PowerEffectiveTotal,
    Col::CoefDragBareHullResiduaryTelfer,
    Col::CoefDragBareHullTelfer,
    Col::CoefDragBareHullWeightRatio,
    Col::CoefDragBareHullResiduaryAlignmentMultiplier,
    Col::WakeFractionAlignmentMultiplier,
    Col::ThrustDeductionAlignmentMultiplier,
    Col::RelRotEfficiencyAlignmentMultiplier,
};

}  // namespace

CalculateResult RunCalculate() {
  Application& app = App();
  // The hooks in force when the run starts serve the whole run (a front end installs its
  // hooks before it calculates, not during a run).
  UIHooks& hooks = Hooks();
  // 1. A value being typed goes through its write first.
  hooks.EndCellEdit();
  // 2. A changed propeller sizing is a reason to calculate the propulsion instead.
  if (app.CurrentMode == Mode::Propulsion) {
    app.PropulsionSizingChanged = false;
  } else if (app.PropulsionSizingChanged) {
    const Answer answer = hooks.Ask("Propulsion Sizing", kSizingQuestion, false, Answer::No);
    app.PropulsionSizingChanged = false;
    if (answer == Answer::Yes) {
      ViewMode(Mode::Propulsion);
      return RunCalculate();
    }
  }
  // 3.-4.
  hooks.BusyPointer(true);
  hooks.SnapshotGraph();
  // 5. and 6.
  const ModeRun& run = app.CurrentMode == Mode::Propulsion ? kPropulsionRun : kResistanceRun;
  CalculateResult result;
  ClearErrorStacks();
  ResetCalcErrorState();  // the message of an earlier run is not shown again
  SetCalcLocation(run.location);
  hooks.Breathe();
  result.ok = run.predict();
  hooks.Breathe();
  hooks.BusyPointer(false);
  // A warning never stops a run; it is shown once, here. A failure without a cause still
  // shows the box, with an empty message.
  const bool pending = CalcErrorsPending();
  if (pending || !result.ok) {
    result.warning = ShowWarning(0, run.warningLocation, GetCalcErrorText(), -1.0);
    result.warningShown = true;
  }
  hooks.RefreshResults();
  result.hullDragTableCommandEnabled = HullDragTableCommandEnabled();
  hooks.EnableHullDragTableCommand(result.hullDragTableCommandEnabled);
  // Also after a failed run: what was written stays, and the button no longer asks for a
  // recalculation.
  SetNeedCalculate(run.needResistance, run.needPropulsion);
  return result;
}

void ClearResults() {
  clsVXSpeedPerformance& sp = *App().primary.SpeedPerformance;
  sp.ZeroColumns(kPropulsionColumns);
  sp.ZeroColumns(kResistanceColumns);
  Hooks().RefreshResults();
}

}  // namespace velmar
