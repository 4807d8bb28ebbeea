// The engine check before a fuel prediction and the fuel rate of one running point, read from
// the maximum-power curve or the defined-load curve of clsVXEngine.
#pragma once

#include "propulsion/engine.h"

namespace velmar {

// True when the engine can serve a fuel prediction. An empty Description becomes "Untitled
// Engine Object". Each missing rated value or short curve shows a box under "Engine Data
// Check"; a curve with bad points asks whether to go on, and on Yes the points whose power is
// not above 0 or whose RPM is 0 are removed and the count of the curve is reduced.
bool CheckEngineData(clsVXEngine& engine);

// Fuel rate per engine at `rpm` and `power` (power held, as the speed table gives it), in fuel
// unit `fuelRateIndex`. `analysisTypeMethod` is the propulsion setting AnalysisTypeMethod
// (0 free run ... 4 defined). A rate that cannot be found comes out as -1. False when the
// engine data is unusable or a run-time fault (a division by zero) stops the calculation.
// `lists`, when given, keeps the curves' point lists from one running point to the next.
bool CalcEngineFuelRate(double& rate, clsVXEngine& engine, double rpm, double power, int fuelRateIndex,
                        int powerIndex, int analysisTypeMethod, EngineCurveLists* lists = nullptr);

}  // namespace velmar
