// The "Delft Series" hull drag methods: upright bare-hull residuary resistance of the Delft
// Systematic Yacht Hull Series, Rr / (rho g Vol) of the canoe body, by the regression that fits
// each catalogue entry's data set:
//   Delft Series (1)      Gerritsma, Onnink & Versluis (1981), Fn 0.125-0.45
//   Delft Series (1/2)    Gerritsma, Keuning & Onnink (1991/92), low-speed form, Fn 0.125-0.45
//   Delft Series (1/2/3)  the same
//   Delft Series (2)      Keuning & Sonnenberg (1998), Fn 0.10-0.60
//   Delft Series (2/3)    Gerritsma, Keuning & Onnink (1991/92), both forms, Fn 0.125-0.75
#pragma once

#include "vessel/hull.h"

namespace velmar {

enum class DelftRegression {
  Gerritsma1981,     // 7 terms in CP, LCB%, B/Tc, L/Vol^(1/3)
  Gerritsma1991Low,  // 10 terms, Fn 0.125-0.45 only
  Gerritsma1991,     // the 10-term form to Fn 0.45, the 6-term form from Fn 0.475
  KeuningSonnenberg1998,
};

// The canoe body by the ratios the regressions use. lcbFpp and lcfFpp: the centres of buoyancy
// and flotation aft of the forward end of the waterline as fractions of LWL; lcbPercent the
// centre of buoyancy in percent of LWL from mid-length, negative aft; lwlVol = LWL / Vol^(1/3);
// awpVol = Awp / Vol^(2/3); sVol = S / Vol^(2/3).
struct DelftHull {
  double cp = 0.0, lcbFpp = 0.0, lcfFpp = 0.0, lcbPercent = 0.0;
  double lwlBwl = 0.0, bwlTc = 0.0, lwlVol = 0.0, awpVol = 0.0, sVol = 0.0;
};

// Lowest and highest Froude number of a regression's table.
double DelftLowestFn(DelftRegression set);
double DelftHighestFn(DelftRegression set);
// Rr / (rho g Vol) at `fn`, linear between the table's speeds (and, for the 1991/92 pair, from
// its Fn 0.45 to its Fn 0.475); `fn` is held to the table's range.
double CalcDelftResiduary(DelftRegression set, const DelftHull& hull, double fn);

// The method of catalogue entry `method` (HullDragMethod 5 to 9) in this program's form (see
// ShipScaleModelCt): the ship at its own Reynolds number as the model, its CT the residuary coefficient plus
// the ITTC-1957 friction on the full waterline length. Outside its table's speeds the residuary coefficient
// is held (see ResiduaryOutsideNodes).
bool CalcHullDragDelftSeries(int method, double& ctModel, double& modelLength, int& speedCheck,
                             const clsVXHull& hull, double fn);

}  // namespace velmar
