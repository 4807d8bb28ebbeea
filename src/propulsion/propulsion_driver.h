// The propulsion prediction driver: from the drag columns that stand in the speed table to
// the interaction, propulsor, engine and fuel columns. All quantities inside are in feet,
// pounds force, slugs, seconds, horsepower and psi.
#pragma once

#include "core/speed_performance.h"
#include "core/water.h"
#include "propulsion/bseries.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "vessel/hull.h"

namespace velmar {

struct SeriesModelInputs;       // propulsion/propeller_series_model.h
struct PropellerAnalysisReads;  // propulsion/propeller_analysis.h

// The Calculate command's entry in Propulsion mode: BuildPropulsionPrediction behind the
// guard that turns a run-time fault into a failure. Returns true on success; failures leave
// their chain of texts in the calculation error state.
bool CalcPropulsionPrediction(clsVXWaterProperties& water, clsVXHull& hull, clsVXITTC78Expansion& ittc78,
                              clsVXResistance& resistance, clsVXPropulsion& propulsion,
                              clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                              clsVXWaterjet& waterjet, clsVXEngine& engine,
                              clsVXSpeedPerformance& speedPerformance);

// Interaction coefficients for every speed, the sizing window when a sizing is set, the
// analysis of the selected type (free run, towing, fixed engine RPM, acceleration, defined;
// see analysis_types.h), then engine load and fuel.
bool BuildPropulsionPrediction(clsVXWaterProperties& water, clsVXHull& hull, clsVXITTC78Expansion& ittc78,
                               clsVXResistance& resistance, clsVXPropulsion& propulsion,
                               clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                               clsVXWaterjet& waterjet, clsVXEngine& engine,
                               clsVXSpeedPerformance& speedPerformance);

// Steps 2 to 4 of the prediction, which the sizing of a propeller needs as well: a form
// factor that is not positive set to 1, the rudder location of a contra-rotating pair, and
// the interaction coefficients of every speed.
bool PreparePropulsionPrediction(clsVXWaterProperties& water, clsVXHull& hull, clsVXITTC78Expansion& ittc78,
                                 clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                 clsVXPropellerSeries& propellerSeries,
                                 clsVXSpeedPerformance& speedPerformance);

// Free run: at every speed the propulsor RPM at which the thrust meets the total drag, the
// analysis of the propulsor there, and the transport factor.
bool BuildPropulsionFreeRunAnalysis(clsVXWaterProperties& water, clsVXHull& hull, clsVXPropulsion& propulsion,
                                    clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                                    clsVXWaterjet& waterjet, clsVXEngine& engine,
                                    clsVXSpeedPerformance& speedPerformance);

// Engine load and fuel rate of every row from the brake power and engine RPM. The fuel
// rate depends on the analysis type of `propulsion`.
bool BuildEngineFuelRateAndLoad(clsVXEngine& engine, clsVXSpeedPerformance& speedPerformance,
                                const clsVXPropulsion& propulsion);

// The analysis of one row at `propulsorRPM` by the propulsor model in use; a waterjet is
// analysed from its thrust (waterjet_analysis.h), not here. `inputs`: as CalcPropulsorKTKQ.
bool CalcPropulsorAnalysis(int hullCount, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                           clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                           clsVXWaterjet& waterjet, clsVXSpeedPerformance& speedPerformance, int speedIndex,
                           double propulsorRPM, double advanceSpeed, double meanPitch,
                           const SeriesModelInputs* inputs = nullptr,
                           PropellerAnalysisReads* reads = nullptr);

// KT and KQ of the propulsor at `revsPerSec` (1/s), advance speed (ft/s), diameter and pitch
// (ft), with the cavitation numbers of the mean and peak blade positions and, when asked,
// the derivatives of KT and KQ with regard to J, P/D and EAR. Returns 0 on failure, 1 on
// success, 6 when the thrust breakdown acted.
int CalcPropulsorKTKQ(double& KT, double& KQ, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                      clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries, double revsPerSec,
                      double advanceSpeed, double diameter, double expAreaRatio, int cupFlag,
                      double meanPitch, double& sigmaAvg, double& tauAvg, double& sigmaPeak, double& tauPeak,
                      DerivativeArray* ktArray = nullptr, DerivativeArray* kqArray = nullptr,
                      const SeriesModelInputs* inputs = nullptr);

// The columns a propulsion run writes, in the order of the result tables; with the open
// project's analysis type "Acceleration", its three columns at the end.
std::vector<int> PropulsionResultColumns();

}  // namespace velmar
