// van Oortmerssen, G. (1971) "A power prediction method and its application to small ships",
// International Shipbuilding Progress 18(207), 397-415: the residuary resistance of 93 tug and
// trawler models of MARIN as
//   Rr / W = C1 exp(-m y / 9) + exp(-m y) (C2 + C3 sin y + C4 cos y),  y = Fn^-2,
//   m = 0.14347 CP^-2.1976,  Ci = 1e-3 sum_k d[k][i] x[k],
//   x = [1, lcb, lcb^2, CP, CP^2, L/B, (L/B)^2, Cwl, Cwl^2, B/T, (B/T)^2, CM],  Cwl = iE L/B.
//
// SINGLE SOURCE: the 48 coefficients d come from one public transcription. Helmore's errata
// paper says the original publication contains several errors; whether this table carries
// their corrections is not known.
// The sign of lcb is not confirmed either: it is taken in percent of L from mid-length,
// forward positive, as the transcription's comment says (moving lcb by 2 % changes Rr by
// 13 to 20 %).
// The form factor that the transcription's program adds to the friction is left out: a
// residuary resistance regressed as total minus friction already holds the form effect. Its
// friction is the ITTC-1957 line plus 0.00035 for a welded skin; in this program the
// correlation allowance of the expansion takes the place of the 0.00035.
#include "resistance/van_oortmerssen.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "core/diagnostics.h"
#include "resistance/hull_method_support.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

// The speed range of the method's data set, as the program's method catalogue gives it; the
// transcription refuses Froude numbers above 0.5.
constexpr double kFnLower = 0.05, kFnUpper = 0.5;

constexpr std::string_view kCoefficientsCsv =
#include "resistance/tables/van_oortmerssen_resistance.csv.inc"
    ;

// d[k][i]: 12 rows (the regressors x in order), columns C1..C4.
const CoefTable& Coefficients() {
  static const CoefTable table = ParseCoefTable(kCoefficientsCsv);
  return table;
}

bool Fail(const char* text) {
  AddCalcError(text);
  return false;
}

}  // namespace

OortmerssenTerms CalcOortmerssenResiduary(const OortmerssenHull& h, double fn) {
  const CoefTable& d = Coefficients();
  const double cwl = h.ieDeg * h.lb;
  const double x[12] = {1.0,         h.lcb, h.lcb * h.lcb, h.cp, h.cp * h.cp, h.lb,
                        h.lb * h.lb, cwl,   cwl * cwl,     h.bt, h.bt * h.bt, h.cm};
  OortmerssenTerms t;
  for (int i = 0; i < 4; ++i) {
    const int column = d.Column("C" + std::to_string(i + 1));
    double sum = 0.0;
    for (size_t k = 0; k < 12; ++k) sum += d.rows.at(k).at(static_cast<size_t>(column)) * x[k];
    t.c[i] = 1e-3 * sum;
  }
  t.m = 0.14347 * std::pow(h.cp, -2.1976);
  const double y = 1.0 / (fn * fn);  // sin and cos in radians
  t.rrPerWeight = t.c[0] * std::exp(-t.m * y / 9.0) +
                  std::exp(-t.m * y) * (t.c[1] + t.c[2] * std::sin(y) + t.c[3] * std::cos(y));
  return t;
}

bool CalcHullDragOortmerssen(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                             double fn) {
  SetCalcLocation("Oortmerssen bare-hull drag");
  ctModel = 0.0;
  modelLength = 0.0;
  speedCheck = SpeedCheckOf(fn, kFnLower, kFnUpper);
  try {
    const double L = hull.LengthWL(kFt), vol = hull.DisplacementVolume(kFt), S = hull.WettedSurface(kFt2);
    OortmerssenHull h;
    h.lcb = (hull.CoefLCBLwlRatio() - 0.5) * 100.0;
    h.cp = hull.CoefPrismatic();
    h.lb = hull.CoefLwlBwlRatio();
    h.ieDeg = hull.AngleHalfEntDeg();
    h.bt = hull.CoefBwlTvolRatio();
    h.cm = hull.CoefAreaSectMax();
    if (PassHullErrors(hull)) return false;
    if (!(fn > 0.0)) return Fail("Froude number [LWL]");
    // Above the data set the residuary coefficient of its top speed stands.
    const double fnData = std::min(fn, kFnUpper);
    const double rr = CalcOortmerssenResiduary(h, fnData).rrPerWeight;
    if (!ShipScaleModelCt(ResiduaryCoefFromWeightRatio(rr, fnData, L, vol, S), hull, fn, ctModel,
                          modelLength))
      return false;
    if (!std::isfinite(ctModel)) return Fail("Overflow");
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

}  // namespace velmar
