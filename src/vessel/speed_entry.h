// The speeds of an analysis as the user enters them: ten cells of the design condition
// table, typed as speeds or as Froude numbers.
#pragma once

#include <array>

#include "core/speed_performance.h"
#include "vessel/hull.h"

namespace velmar {

inline constexpr int kSpeedCells = 10;
inline constexpr double kMaxSpeedKnots = 100.0;

// Replaces the speeds of `sp` by the non-zero cells, smallest first. A cell holds a speed in
// the selected speed unit or, with `froudeEntry`, a Froude number by waterline length (by
// volume when the hull's hydrodynamic data set is 2). A speed above 100 kt is dropped with a
// warning. The rows keep their other columns; `count` becomes the number of speeds.
void SetSpeedsFromEntry(clsVXSpeedPerformance& sp, const clsVXHull& hull,
                        std::array<double, kSpeedCells> cells, bool froudeEntry);

}  // namespace velmar
