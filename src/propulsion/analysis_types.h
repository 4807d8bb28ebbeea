// The analysis types besides the free run: towing (the net pull at full power), fixed
// engine RPM, acceleration (time and distance from speed to speed at full power, the RPM
// rise limited when the engine control says so) and defined (the RPM of each row as given).
// Each writes the propulsor columns of every row, as the free run does, and the net force
// that is left over in TotalNetTowpull. docs/analysis-types.md tells the procedures.
#pragma once

#include "core/speed_performance.h"
#include "core/water.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"
#include "vessel/hull.h"

namespace velmar {

// At every speed the propulsor absorbs the engine's maximum power at the RPM where the two
// meet (the rated RPM at most); the thrust less the drag is the net towpull.
bool BuildPropulsionTowingAnalysis(clsVXWaterProperties& water, clsVXHull& hull, clsVXPropulsion& propulsion,
                                   clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                                   clsVXWaterjet& waterjet, clsVXEngine& engine,
                                   clsVXSpeedPerformance& speedPerformance);

// At every speed the engine turns at FixedEngineRPM.
bool BuildPropulsionFixedRPMAnalysis(clsVXWaterProperties& water, clsVXHull& hull,
                                     clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                     clsVXPropellerSeries& propellerSeries, clsVXWaterjet& waterjet,
                                     clsVXEngine& engine, clsVXSpeedPerformance& speedPerformance);

// From steady running at the first speed, full power: the acceleration at each speed, and
// the time and distance to reach it (AccelGravities, AccelTimeSecs, AccelDistance). The
// mass is the displacement times AddedMassMult; with EngineControlEnabled 1 the engine RPM
// rises by at most EngineLimitToRPMPerSec.
bool BuildPropulsionAccelerationAnalysis(clsVXWaterProperties& water, clsVXHull& hull,
                                         clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                         clsVXPropellerSeries& propellerSeries, clsVXWaterjet& waterjet,
                                         clsVXEngine& engine, clsVXSpeedPerformance& speedPerformance);

// At every speed the propulsor turns at the PropulsorRPM that stands in the row.
bool BuildPropulsionDefinedAnalysis(clsVXWaterProperties& water, clsVXHull& hull, clsVXPropulsion& propulsion,
                                    clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                                    clsVXWaterjet& waterjet, clsVXEngine& engine,
                                    clsVXSpeedPerformance& speedPerformance);

// The engine's maximum power less its parasitic load at `engineRPM` (hp): linear between
// the points of the maximum-power curve, constant torque below its first point, the last
// point's power above its last. 0 when the curve has fewer than two points.
double EngineAvailablePower(const clsVXEngine& engine, double engineRPM);

}  // namespace velmar
