// The Holtrop bare-hull method: the total drag coefficient of a 20 ft model in fresh water
// at the vessel's Froude number, which the ITTC-78 expansion turns into ship drag.
#pragma once

#include "vessel/hull.h"

namespace velmar {

// Fills the model's total coefficient, the model length (ft) and the speed check (0 below,
// 1 inside, 2 above the method's speed range). Returns true on success; failures go to the
// calculation error state.
bool CalcHullDragHoltrop(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull, double fn);

}  // namespace velmar
