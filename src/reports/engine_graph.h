// The graph of the engine data window: the maximum-power curve, the same less the parasitic
// load, the defined-load curve and the rated point, power in the held unit over RPM.
#pragma once

#include "propulsion/engine.h"
#include "reports/coordinate_graph.h"

namespace velmar {

// The graph with its axes set; a note "No engine curves" when no curve has two points. A fault
// leaves the graph empty with "creating results datasets and propulsion graph for engine
// file" on the calculation error state.
clsVXCoordinateGraph EngineDataGraph(const clsVXEngine& engine);

}  // namespace velmar
