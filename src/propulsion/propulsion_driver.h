// The propulsion prediction driver: from the drag columns that stand in the speed table to
// the interaction, propulsor, engine and fuel columns.
#pragma once

#include "core/speed_performance.h"
#include "core/water.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "vessel/hull.h"

namespace velmar {

// Returns true on success; failures leave their text in the calculation error state.
bool CalcPropulsionPrediction(clsVXWaterProperties& water, clsVXHull& hull, clsVXITTC78Expansion& ittc78,
                              clsVXResistance& resistance, clsVXPropulsion& propulsion,
                              clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                              clsVXWaterjet& waterjet, clsVXEngine& engine,
                              clsVXSpeedPerformance& speedPerformance);

}  // namespace velmar
