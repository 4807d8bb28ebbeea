// The "Andersen" hull drag method: the residuary resistance charts of Guldhammer & Harvald
// (1974) in the regression form of Kristensen & Lützen (2012), a full-scale coefficient to be
// added to the ITTC-1957 friction of the ship without a form factor.
#pragma once

#include "vessel/hull.h"

namespace velmar {

// The bulb correction of Kristensen & Lützen: the form of tankers, bulk carriers and general
// cargo ships, or the form of container ships and other types.
enum class HarvaldBulbForm { None, BulkCargo, OtherTypes };

// The terms of the regression, under their published names: the diagram value
// 1000 CR = E + G + H + K, the breadth-draught correction 1000 dCR = 0.16 (B/T - 2.5), CR after
// it and CR after the bulb correction.
struct HarvaldTerms {
  double e = 0.0, g = 0.0, h = 0.0, k = 0.0;
  double diagram = 0.0, breadthDraught = 0.0, crAfterBT = 0.0, cr = 0.0;
};
// m = L / Vol^(1/3), fn on the waterline length, cp the prismatic coefficient, bt = B / T.
HarvaldTerms CalcHarvaldResiduary(double m, double fn, double cp, double bt, HarvaldBulbForm bulb);

// The method in this program's form (see ShipScaleModelCt): the ship at its own Reynolds number as the model,
// its CT the corrected CR plus the ITTC-1957 friction. A bulb (BulbAreaSect above 0) takes the correction of
// "other types", the program not knowing the ship type. Above Fn 0.33 the CR of Fn 0.33 stands (see
// ResiduaryOutsideNodes).
bool CalcHullDragAndersen(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                          double fn);

}  // namespace velmar
