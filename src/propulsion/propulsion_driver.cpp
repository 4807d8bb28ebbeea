// The propulsion prediction driver. It takes the total drag that stands in the speed table
// as given: interaction coefficients first, then per speed the RPM at which the propulsor
// delivers the thrust, the analysis of the propulsor there, and last engine load and fuel.
// A failed stage ends the whole prediction; each stage adds its context to the failure
// text, innermost first, and the rows written before the failure keep their values.
#include "propulsion/propulsion_driver.h"

#include <iterator>
#include <optional>
#include <vector>

#include "core/diagnostics.h"
#include "core/model_set.h"
#include "core/ui_hooks.h"
#include "propulsion/analysis_types.h"
#include "propulsion/engine_fuel.h"
#include "propulsion/interaction.h"
#include "propulsion/propeller_analysis.h"
#include "propulsion/propeller_series_model.h"
#include "propulsion/propeller_sizing.h"
#include "propulsion/rpm_solution.h"
#include "propulsion/waterjet_analysis.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

constexpr int kWaterjetData = 3;  // PropulsorCalcType
constexpr int kCPP = 1;           // PropellerType
constexpr int kAcceleration = 3;  // AnalysisTypeMethod

bool Fail(const char* context) {
  AddCalcError(context);
  return false;
}

// The analysis types in the order of AnalysisTypeMethod: the procedure and the context its
// failure adds. An index outside the list runs the free run.
struct AnalysisType {
  bool (*build)(clsVXWaterProperties&, clsVXHull&, clsVXPropulsion&, clsVXPropeller&, clsVXPropellerSeries&,
                clsVXWaterjet&, clsVXEngine&, clsVXSpeedPerformance&);
  const char* failure;
};
constexpr AnalysisType kAnalysisTypes[] = {
    {BuildPropulsionFreeRunAnalysis, "propulsion free-run analysis calculation"},
    {BuildPropulsionTowingAnalysis, "propulsion towing analysis calculation"},
    {BuildPropulsionFixedRPMAnalysis, "propulsion fixed engine RPM analysis calculation"},
    {BuildPropulsionAccelerationAnalysis, "propulsion acceleration analysis calculation"},
    {BuildPropulsionDefinedAnalysis, "propulsion defined analysis calculation"},
};
const AnalysisType& AnalysisTypeOf(int method) {
  return method >= 0 && method < static_cast<int>(std::size(kAnalysisTypes)) ? kAnalysisTypes[method]
                                                                             : kAnalysisTypes[0];
}

// The wait cursor is on while the prediction runs, and off on every way out.
class BusyPointer {
 public:
  BusyPointer() { Hooks().BusyPointer(true); }
  ~BusyPointer() { Hooks().BusyPointer(false); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace

bool CalcPropulsionPrediction(clsVXWaterProperties& water, clsVXHull& hull, clsVXITTC78Expansion& ittc78,
                              clsVXResistance& resistance, clsVXPropulsion& propulsion,
                              clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                              clsVXWaterjet& waterjet, clsVXEngine& engine,
                              clsVXSpeedPerformance& speedPerformance) {
  return RunGuarded([&] {
    return BuildPropulsionPrediction(water, hull, ittc78, resistance, propulsion, propeller, propellerSeries,
                                     waterjet, engine, speedPerformance);
  });
}

bool BuildPropulsionPrediction(clsVXWaterProperties& water, clsVXHull& hull, clsVXITTC78Expansion& ittc78,
                               clsVXResistance& /*resistance*/, clsVXPropulsion& propulsion,
                               clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                               clsVXWaterjet& waterjet, clsVXEngine& engine,
                               clsVXSpeedPerformance& speedPerformance) {
  // 1.
  SetCalcLocation("Building Propulsion prediction");
  std::optional<BusyPointer> busy(std::in_place);
  // 2.-4.
  if (!PreparePropulsionPrediction(water, hull, ittc78, propulsion, propeller, propellerSeries,
                                   speedPerformance))
    return false;
  // 5. The sizing window lets the user finish a sizing before the analysis.
  busy.reset();
  const auto& sizing = App().primary.PropellerSizing;
  if (propulsion.PropulsorCalcType() != kWaterjetData && sizing && sizing->PropellerSizingIdentity() != 0 &&
      speedPerformance.count() > 0)
    Hooks().ShowPropellerSizing();
  busy.emplace();
  // 6. The analysis of the selected type.
  const AnalysisType& analysis = AnalysisTypeOf(propulsion.AnalysisTypeMethod());
  if (!analysis.build(water, hull, propulsion, propeller, propellerSeries, waterjet, engine,
                      speedPerformance))
    return Fail(analysis.failure);
  // 7.
  if (propulsion.PropulsionInteractionEnabled() != kDragLock) speedPerformance.ZeroEnginePropertiesArrays();
  // 8.
  if (propulsion.EngineFileIndex() == 1 && !engine.Description().empty() &&
      !BuildEngineFuelRateAndLoad(engine, speedPerformance, propulsion))
    return Fail("propulsion system engine calculation");
  // 9.
  return true;
}

bool PreparePropulsionPrediction(clsVXWaterProperties& water, clsVXHull& hull, clsVXITTC78Expansion& ittc78,
                                 clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                 clsVXPropellerSeries& propellerSeries,
                                 clsVXSpeedPerformance& speedPerformance) {
  // 2. A missing form factor is repaired in the settings, where it stays.
  if (!(ittc78.HullFormFactor() > 0.0)) ittc78.HullFormFactor(1.0);
  // 3. A contra-rotating pair's torque depends on whether a rudder stands behind it.
  propellerSeries.CRPRudderLocation(ittc78.RudderLocation());
  // 4.
  if (!PredictPropulsionInteractionCoefs(water, hull, ittc78, propulsion, propeller, speedPerformance))
    return Fail("propulsion interaction coefficient calculation");
  return true;
}

bool BuildPropulsionFreeRunAnalysis(clsVXWaterProperties& water, clsVXHull& hull, clsVXPropulsion& propulsion,
                                    clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                                    clsVXWaterjet& waterjet, clsVXEngine& engine, clsVXSpeedPerformance& sp) {
  // 1.
  SetCalcLocation("Building Propulsion Free Run analysis");
  // 2. Hulls and weight.
  int hullCount = hull.HullConfigType() == 0 ? 1 : 2;
  if (hullCount < 1) hullCount = 1;
  const double displacementLb = hull.Displacement(kLb);
  if (hull.ErrorsFound()) {
    AddCalcErrors(hull.Errors());
    return false;
  }
  // 3. Propulsors.
  const int calcType = propulsion.PropulsorCalcType();
  int count = propulsion.PropulsorCountPerHull();
  if (count < 1) count = 1;
  if (propulsion.ErrorsFound()) {
    AddCalcErrors(propulsion.Errors());
    return false;
  }
  // 4. Row by row. The rate and pitch carry over from one row to the next: a solution that
  // stops early leaves the row with the rate of the row before. The series model's inputs are
  // read once for the run.
  double rpm = 0.0, meanPitch = 0.0;
  SeriesModelInputs inputs;
  RPMSolutionReads solutionReads;
  PropellerAnalysisReads analysisReads;
  for (int i = 0; i < sp.count(); ++i) {
    sp.SpeedIndex(i);
    const double V = sp.Speed(i, kFtPerSec);
    const double w = sp.WakeFraction(i);
    const double t = sp.ThrustDeduction(i);
    const double etaR = sp.RelRotEfficiency(i);
    const double R = sp.DragTotal(i, kLbf);
    if (sp.ErrorsFound()) {
      AddCalcErrors(sp.Errors());
      return false;
    }
    const double va = (1.0 - w) * V;
    const double thrust = R / ((1.0 - t) * count * hullCount);
    if (calcType >= 0 && calcType <= 2) {
      if (CalcRPMForGivenThrust(rpm, thrust, water, propulsion, propeller, propellerSeries, va, etaR,
                                meanPitch, engine, &inputs, &solutionReads) == kRPMFailed)
        return Fail("calculating equilibrium RPM for given thrust requirement");
      if (propeller.PropellerType() == kCPP) sp.CPMeanPitch(i, kFt, meanPitch);
    } else if (calcType == kWaterjetData) {
      // A waterjet: the power its curves need for the thrust at this speed.
      WaterjetPoint jet;
      if (!WaterjetPowerForThrust(waterjet, V, thrust, jet)) return Fail("calculating waterjet performance");
      if (!CalcWaterjetAnalysis(hullCount, propulsion, waterjet, sp, i, jet))
        return Fail("calculating propulsion analysis");
    }
    if (!CalcPropulsorAnalysis(hullCount, water, propulsion, propeller, propellerSeries, waterjet, sp, i, rpm,
                               va, meanPitch, inputs.read ? &inputs : nullptr, &analysisReads))
      return Fail("calculating propulsion analysis");
    if (!(sp.PowerBrakeTotal(i, kCurrent) > 0.0)) {
      sp.TransportFactor(i, 0.0);
    } else {
      sp.TransportFactor(i, displacementLb * V / (550.0 * sp.PowerBrakeTotal(i, kHp)));
    }
  }
  return true;
}

bool BuildEngineFuelRateAndLoad(clsVXEngine& engine, clsVXSpeedPerformance& sp,
                                const clsVXPropulsion& propulsion) {
  SetCalcLocation("Building Propulsion engine fuel rate and load");
  const clsVXUnits& units = *sp.Units();
  EngineCurveLists lists;  // the engine does not change during the run
  for (int i = 0; i < sp.count(); ++i) {
    // 1. Load against the rated power, both in kW.
    if (!(engine.MaxRatedPower(kCurrent) > 0.0)) {
      sp.PercentEngineLoadFactor(i, 0.0);
    } else {
      sp.PercentEngineLoadFactor(i, 100.0 * sp.PowerBrakePerProp(i, kKW) / engine.MaxRatedPower(kKW));
    }
    // 2.-3. Fuel rate in the project's units.
    double rate = 0.0;
    if (!CalcEngineFuelRate(rate, engine, sp.EngineRPM(i), sp.PowerBrakePerProp(i, kCurrent),
                            units.FuelRateIndex(), units.PowerIndex(), propulsion.AnalysisTypeMethod(),
                            &lists))
      return Fail("calculating propulsion analysis");
    sp.FuelRatePerEngine(i, kCurrent, rate);
  }
  return true;
}

bool CalcPropulsorAnalysis(int hullCount, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                           clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                           clsVXWaterjet& /*waterjet*/, clsVXSpeedPerformance& speedPerformance,
                           int speedIndex, double propulsorRPM, double advanceSpeed, double meanPitch,
                           const SeriesModelInputs* inputs, PropellerAnalysisReads* reads) {
  const int calcType = propulsion.PropulsorCalcType();
  if (calcType < 0 || calcType > 2) return true;  // a waterjet has no analysis here
  if (!CalcPropellerAnalysis(hullCount, water, propulsion, propeller, propellerSeries, speedPerformance,
                             speedIndex, propulsorRPM, advanceSpeed, meanPitch, inputs, reads))
    return Fail("calculating propeller analysis");
  return true;
}

int CalcPropulsorKTKQ(double& KT, double& KQ, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                      clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries, double revsPerSec,
                      double advanceSpeed, double diameter, double expAreaRatio, int cupFlag,
                      double meanPitch, double& sigmaAvg, double& tauAvg, double& sigmaPeak, double& tauPeak,
                      DerivativeArray* ktArray, DerivativeArray* kqArray, const SeriesModelInputs* inputs) {
  SetCalcLocation("Calculating propulsor KTKQ");
  if (propulsion.ErrorsFound()) {
    AddCalcErrors(propulsion.Errors());
    return 0;
  }
  const int calcType = inputs ? inputs->calcType : propulsion.PropulsorCalcType();
  if (calcType == kWaterjetData) {
    AddCalcError("Not valid for waterjets.");
    return 0;
  }
  const int result = CalcPropellerSeriesPerformance(
      KT, KQ, water, propulsion, propeller, propellerSeries, revsPerSec, advanceSpeed, diameter, expAreaRatio,
      cupFlag, meanPitch, ktArray, kqArray, sigmaAvg, tauAvg, sigmaPeak, tauPeak, inputs);
  if (result == 0) {
    AddCalcError("propeller series KTKQ calculation");
    return 0;
  }
  return result;
}

std::vector<int> PropulsionResultColumns() {
  static const char* const kNames[] = {
      "Speed",
      "DragTotal",
      "PowerEffectiveTotal",
      "WakeFraction",
      "ThrustDeduction",
      "RelRotEfficiency",
      "PropulsorThrust",
      "PropulsorRPM",
      "EngineRPM",
      "CPMeanPitch",
      "CoefPropulsorJ",
      "CoefPropulsorKT",
      "CoefPropulsorKQ",
      "CoefPropulsorKTN",
      "PropulsorEfficiency",
      "QuasiPropulsiveEfficiency",
      "OverallPropulsiveEfficiency",
      "PropulsorTorque",
      "PowerDeliveredPerProp",
      "PowerShaftPerProp",
      "PowerBrakePerProp",
      "PowerShaftTotal",
      "PowerBrakeTotal",
      "TotalDeliveredThrust",
      "TotalNetTowpull",
      "CoefPropulsorKTJ2",
      "CoefPropulsorKQJ3",
      "CoefPropulsorCTH",
      "CoefPropulsorCP",
      "CoefPropulsorReynolds",
      "SigmaV",
      "SigmaN",
      "Sigma07R",
      "PercentCavAverage",
      "PercentCavPeak",
      "RecommendedEAR",
      "MeanBladePressure",
      "MinPitchFaceCav",
      "TipSpeed",
      "TipSpeedCheck",
      "PercentCavAverageCheck",
      "RecommendedEARCheck",
      "MeanBladePressureCheck",
      "MinPitchFaceCavCheck",
      "PropellerBreakdownCheck",
      "NozzleBreakdownCheck",
      "HullPropulsorInteractionSpeedCheck",
      "TransportFactor",
      "PercentEngineLoadFactor",
      "FuelRatePerEngine",
  };
  std::vector<int> columns;
  for (const char* name : kNames) columns.push_back(clsVXSpeedPerformance::ColumnIndex(name));
  // An acceleration run adds its time, distance and acceleration.
  const auto& propulsion = App().primary.Propulsion;
  if (propulsion && propulsion->AnalysisTypeMethod() == kAcceleration)
    for (const char* name : {"AccelGravities", "AccelTimeSecs", "AccelDistance"})
      columns.push_back(clsVXSpeedPerformance::ColumnIndex(name));
  return columns;
}

}  // namespace velmar
