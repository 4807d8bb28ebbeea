// The "Oortmerssen" hull drag method: the residuary resistance regression of van Oortmerssen
// (1971) for small ships (tugs, trawlers), Rr / W as a function of the Froude number and six
// hull parameters, added to the ITTC-1957 friction of the ship.
#pragma once

#include "vessel/hull.h"

namespace velmar {

// The hull parameters of the regression: lcb in percent of L from mid-length, forward
// positive; cp and cm the prismatic and midship-section coefficients; lb = L / B; ieDeg the
// half angle of entrance in degrees; bt = B / T.
struct OortmerssenHull {
  double lcb = 0.0, cp = 0.0, lb = 0.0, ieDeg = 0.0, bt = 0.0, cm = 0.0;
};
// C1..C4 (already times 1e-3), the exponent m and Rr / W at `fn`.
struct OortmerssenTerms {
  double c[4] = {0.0, 0.0, 0.0, 0.0};
  double m = 0.0;
  double rrPerWeight = 0.0;
};
OortmerssenTerms CalcOortmerssenResiduary(const OortmerssenHull& hull, double fn);

// The method in this program's form (see ShipScaleModelCt): the ship at its own Reynolds number as the model,
// its CT the residuary coefficient plus the ITTC-1957 friction. The length is the waterline length
// throughout. Above Fn 0.5 the CR of Fn 0.5 stands (see ResiduaryOutsideNodes).
bool CalcHullDragOortmerssen(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                             double fn);

}  // namespace velmar
