// The "Mercier" hull drag method: the pre-planing resistance of transom-stern craft of Mercier
// & Savitsky (1973), R/W of a craft of 100 000 lb at volumetric Froude numbers 1.0 to 1.9, with
// the friction correction from that craft to the vessel's size.
#pragma once

#include "vessel/hull.h"

namespace velmar {

// The regressors: x = Vol^(1/3) / L, z = Vol / B^3, u = sqrt(2 iE) with iE the half angle of
// entrance in degrees, w = AT / AX.
struct MercierHull {
  double x = 0.0, z = 0.0, u = 0.0, w = 0.0;
};
// R/W of the 100 000 lb craft at volumetric Froude number `fnv`, linear between the table's
// speeds, `fnv` held to the table (1.0 to 2.0; the method itself stays below 1.9).
double CalcMercierResistance100k(const MercierHull& hull, double fnv);

// The method in this program's form (see ShipScaleModelCt): the ship at its own Reynolds number as the model,
// its CT the residuary coefficient of the 100 000 lb craft (its R/W as a coefficient less its ITTC-1957
// friction, in the project's water) plus the ITTC-1957 friction; the expansion then adds the ship's own
// friction, which is the published size correction.
bool CalcHullDragMercier(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                         double fn);

}  // namespace velmar
