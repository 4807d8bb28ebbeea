// Mercier, J.A. and Savitsky, D. (1973) "Resistance of transom-stern craft in the pre-planing
// regime", Davidson Laboratory, Stevens Institute of Technology, Report SIT-DL-73-1667, as
// republished by Savitsky, D. and Brown, P.W. (1976) "Procedures for hydrodynamic evaluation of
// planing hulls in smooth and rough water", Marine Technology 13(4), eqs. 16 and 18: a
// regression over 118 models of seven transom-stern series,
//   (R/W)100k = A0 + A1 X + A2 U + A3 W + A4 X Z + A5 X U + A6 X W + A7 U Z + A8 W Z + A9 W^2
//               + A10 X W^2 + A11 X^2 Z + A12 U W^2 + A13 U^2 W,
// for a craft of 100 000 lb, and the size correction to the actual craft at equal FnV,
//   R/W = (R/W)100k + (CF - CF100k) 0.5 FnV^2 S / Vol^(2/3),  ITTC-1957 for both CF.
//
// SINGLE SOURCE: the coefficient table comes from one public transcription. Its FnV 2.0 column
// has two suspect entries (A4 and A9, which make R/W fall by half from FnV 1.9 to 2.0), so the
// method goes no higher than FnV 1.9. B is the waterline beam.
#include "resistance/mercier_savitsky.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <vector>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "resistance/friction.h"
#include "resistance/hull_method_support.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

// The volumetric Froude numbers the method covers: the table's first node and the last node
// before the suspect column.
constexpr double kFnvLower = 1.0, kFnvUpper = 1.9;
// Displacement of the craft the regression is written for, pounds force.
constexpr double kReferenceWeightLbf = 100000.0;

constexpr std::string_view kCoefficientsCsv =
#include "resistance/tables/mercier_savitsky_coeffs.csv.inc"
    ;

// The table by volumetric Froude number: the speeds of the node columns (FnV_1.0 ...) and per
// term A0 to A13 its value at each node.
struct Table {
  std::vector<double> fnv;
  std::vector<std::vector<double>> terms;
};

const Table& Coefficients() {
  static const Table table = [] {
    const CoefTable csv = ParseCoefTable(kCoefficientsCsv);
    Table t;
    for (size_t c = 2; c < csv.columns.size(); ++c)
      t.fnv.push_back(CsvNumber(std::string_view(csv.columns[c]).substr(4)));  // "FnV_1.0"
    for (const auto& row : csv.rows) t.terms.emplace_back(row.begin() + 2, row.end());
    return t;
  }();
  return table;
}

bool Fail(const char* text) {
  AddCalcError(text);
  return false;
}

}  // namespace

double CalcMercierResistance100k(const MercierHull& h, double fnv) {
  const Table& t = Coefficients();
  const double x = h.x, z = h.z, u = h.u, w = h.w;
  const double regressors[14] = {1.0,   x,     u,     w,         x * z,     x * u,     x * w,
                                 u * z, w * z, w * w, x * w * w, x * x * z, u * w * w, u * u * w};
  double rw = 0.0;
  for (size_t k = 0; k < 14; ++k) rw += InterpolateNodes(t.fnv, t.terms.at(k), fnv) * regressors[k];
  return rw;
}

bool CalcHullDragMercier(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                         double fn) {
  SetCalcLocation("Mercier bare-hull drag");
  ctModel = 0.0;
  modelLength = 0.0;
  speedCheck = 1;
  try {
    const double L = hull.LengthWL(kFt), vol = hull.DisplacementVolume(kFt);
    MercierHull h;
    const double lVol = hull.CoefLwlVol();
    h.x = lVol > 0.0 ? 1.0 / lVol : 0.0;
    h.z = hull.CoefVolBwl();
    h.u = std::sqrt(2.0 * hull.AngleHalfEntDeg());
    h.w = hull.CoefAtAxRatio();
    const double cws = hull.CoefWettedSurfaceFroudeCWS();  // S / Vol^(2/3)
    if (PassHullErrors(hull)) return false;
    clsVXWaterProperties& water = *hull.WaterProperties();
    const double rho = water.Density(kSlugPerFt3), nu = water.Viscosity(kFt2PerSec);
    if (water.ErrorsFound()) {
      AddCalcErrors(water.Errors());
      return false;
    }
    if (!(fn > 0.0)) return Fail("Froude number [LWL]");

    const double fnv = fn * std::sqrt(lVol);  // V / sqrt(g Vol^(1/3))
    speedCheck = SpeedCheckOf(fnv, kFnvLower, kFnvUpper);
    const double fnvNode = std::min(std::max(fnv, kFnvLower), kFnvUpper);
    // The 100 000 lb craft in the project's water, geometrically similar at the same FnV:
    // its total coefficient on the wetted surface, CT = (R/W) W / (0.5 rho V^2 S)
    // = (R/W) 2 Vol^(2/3) / (FnV^2 S), and its Reynolds number V L / nu.
    const double ct100k = CalcMercierResistance100k(h, fnvNode) * 2.0 / (fnvNode * fnvNode * cws);
    const double vol100k = kReferenceWeightLbf / (rho * GravityFt);
    const double v100k = fnvNode * std::sqrt(GravityFt * std::cbrt(vol100k));
    const double l100k = L * std::cbrt(vol100k / vol);
    const double cr100k = ct100k - CalcFrictionITTC57(v100k * l100k / nu);
    if (!ShipScaleModelCt(ResiduaryOutsideNodes(cr100k, fnv, fnvNode), hull, fn, ctModel, modelLength))
      return false;
    if (!std::isfinite(ctModel)) return Fail("Overflow");
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

}  // namespace velmar
