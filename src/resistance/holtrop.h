// The Holtrop bare-hull method: the total drag coefficient of a 20 ft model in fresh water
// at the vessel's Froude number, which the ITTC-78 expansion turns into ship drag.
#pragma once

#include "vessel/hull.h"

namespace velmar {

// Fills the model's total coefficient, the model length (ft) and the speed check (0 below,
// 1 inside, 2 above the method's speed range). Returns true on success; failures go to the
// calculation error state.
bool CalcHullDragHoltrop(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                         double fn);

// The terms of one evaluation, in feet, pounds force and seconds: the coefficients of
// Holtrop (1984) under their published names, and the resistances of the vessel's hull form
// (rw from the wave formulas or the hump spline; rb the bulb, rtr the immersed transom, both
// in the basin's fresh water), at the clamped Froude number.
struct HoltropTerms {
  double k1 = 1.0, cfModel = 0.0, cw = 0.0;
  double c1 = 0.0, c2 = 1.0, c3 = 0.0, c5 = 1.0, c7 = 0.0, c15 = 0.0, c16 = 0.0, c17 = 0.0;
  double m1 = 0.0, m3 = 0.0, lambda = 0.0;
  double rw = 0.0, rb = 0.0, rtr = 0.0;
  int speedCheck = 1;
};
// CalcHullDragHoltrop with its terms: ctModel = k1 cfModel + cw.
bool CalcHoltropTerms(HoltropTerms& terms, const clsVXHull& hull, double fn);

}  // namespace velmar
