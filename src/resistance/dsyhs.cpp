// Delft Systematic Yacht Hull Series: the upright residuary resistance of the canoe body,
// Rr / (rho g Vol), which by Froude's hypothesis holds at full scale as it stands.
//
//  - Gerritsma, J., Onnink, R. and Versluis, A. (1981) "Geometry, resistance and stability of
//    the Delft Systematic Yacht Hull Series", the 22 models of series 1:
//      1000 Rr / (rho g Vol) = a0 + a1 CP + a2 CP^2 + a3 LCB + a4 LCB^2 + a5 B/Tc + a6 L/Vol^(1/3).
//    SINGLE SOURCE (one transcription, in agreement with six measured points of the parent).
//  - Gerritsma, J., Keuning, J.A. and Onnink, R. (1991/92), series 1 to 3, as printed by
//    Larsson & Eliasson, "Principles of Yacht Design": for Fn 0.125 to 0.45
//      1000 Rr / (rho g Vol) = a0 + a1 CP + a2 LCB + a3 B/Tc + a4 Q + a5 CP^2 + a6 CP Q
//                              + a7 LCB^2 + a8 Q^2 + a9 Q^3,  Q = L / Vol^(1/3),
//    and for Fn 0.475 to 0.75
//      1000 Rr / (rho g Vol) = c0 + c1 L/B + c2 P + c3 LCB + c4 (L/B)^2 + c5 (L/B) P^3,
//                              P = Awp / Vol^(2/3).
//    Corroborated by three transcriptions; reproduces the textbook's 611 N.
//  - Keuning, J.A. and Sonnenberg, U.B. (1998) "Approximation of the hydrodynamic forces on a
//    sailing yacht based on the Delft Systematic Yacht Hull Series":
//      Rr / (rho g Vol) = a0 + (a1 LCBfpp + a2 CP + a3 Vol^(2/3)/Awp + a4 B/L + a5 Vol^(2/3)/S
//                         + a6 LCBfpp/LCFfpp + a7 LCBfpp^2 + a8 CP^2) Vol^(1/3) / L.
//    Corroborated by two transcriptions.
// LCB is in percent of L from mid-length, negative aft; LCBfpp and LCFfpp are fractions of L
// aft of the forward end of the waterline. The papers give no rule between their speeds: the
// node values are joined by straight lines, across the gap from Fn 0.45 to 0.475 of the
// 1991/92 pair too.
//
// Why these regressions for the five entries: each entry names the series of its data set.
// Series 1 alone has the 1981 regression, fitted to exactly those 22 hulls over the entry's
// speeds. The 1991/92 regression was fitted to series 1 to 3 (B/Tc to 19.32, the limit the
// (1/2/3) and (2/3) entries give); its low-speed form covers the speeds of (1/2/3), and its
// high-speed form, from Fn 0.475, can only rest on the hulls of series 2 and 3, which carries
// (2/3) to Fn 0.75. No regression of series 1 and 2 alone is at hand; (1/2) takes the
// low-speed form of 1991/92, whose data contain both series over the entry's speeds. (2) reaches
// Fn 0.60, the top speed of the 1998 regression and of no other.
// The Delft practice takes the friction on 0.7 LWL; this program's expansion takes the ship's
// friction on the full waterline length.
#include "resistance/dsyhs.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <vector>

#include "core/diagnostics.h"
#include "resistance/hull_method_support.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

constexpr std::string_view k1981Csv =
#include "resistance/tables/dsyhs_1981_coeffs.csv.inc"
    ;
constexpr std::string_view k1991LowCsv =
#include "resistance/tables/dsyhs_1991_low_coeffs.csv.inc"
    ;
constexpr std::string_view k1991HighCsv =
#include "resistance/tables/dsyhs_1991_high_coeffs.csv.inc"
    ;
constexpr std::string_view k1998Csv =
#include "resistance/tables/dsyhs_1998_coeffs.csv.inc"
    ;

// A table of one regression form: a row per Froude number, the first column the Froude number,
// then the coefficients in the order of the form's regressors.
struct NodeTable {
  std::vector<double> fn;
  std::vector<std::vector<double>> coef;
};

NodeTable Nodes(std::string_view csv) {
  const CoefTable t = ParseCoefTable(csv);
  NodeTable n;
  for (const auto& row : t.rows) {
    n.fn.push_back(row.front());
    n.coef.emplace_back(row.begin() + 1, row.end());
  }
  return n;
}

const NodeTable& Table1981() {
  static const NodeTable t = Nodes(k1981Csv);
  return t;
}
const NodeTable& Table1991Low() {
  static const NodeTable t = Nodes(k1991LowCsv);
  return t;
}
const NodeTable& Table1991High() {
  static const NodeTable t = Nodes(k1991HighCsv);
  return t;
}
const NodeTable& Table1998() {
  static const NodeTable t = Nodes(k1998Csv);
  return t;
}

double Sum(const std::vector<double>& a, const std::vector<double>& x) {
  double s = 0.0;
  for (size_t j = 0; j < x.size(); ++j) s += a.at(j) * x[j];
  return s;
}

// Rr / (rho g Vol) at every node of one form.
std::vector<double> Values1981(const DelftHull& h) {
  const std::vector<double> x = {1.0,     h.cp,    h.cp * h.cp, h.lcbPercent, h.lcbPercent * h.lcbPercent,
                                 h.bwlTc, h.lwlVol};
  std::vector<double> v;
  for (const auto& a : Table1981().coef) v.push_back(1e-3 * Sum(a, x));
  return v;
}
std::vector<double> Values1991Low(const DelftHull& h) {
  const double q = h.lwlVol;
  const std::vector<double> x = {1.0,   h.cp,        h.lcbPercent, h.bwlTc,
                                 q,     h.cp * h.cp, h.cp * q,     h.lcbPercent * h.lcbPercent,
                                 q * q, q * q * q};
  std::vector<double> v;
  for (const auto& a : Table1991Low().coef) v.push_back(1e-3 * Sum(a, x));
  return v;
}
std::vector<double> Values1991High(const DelftHull& h) {
  const double lb = h.lwlBwl, p = h.awpVol;
  const std::vector<double> x = {1.0, lb, p, h.lcbPercent, lb * lb, lb * p * p * p};
  std::vector<double> v;
  for (const auto& c : Table1991High().coef) v.push_back(1e-3 * Sum(c, x));
  return v;
}
std::vector<double> Values1998(const DelftHull& h) {
  const std::vector<double> x = {h.lcbFpp,
                                 h.cp,
                                 1.0 / h.awpVol,
                                 1.0 / h.lwlBwl,
                                 1.0 / h.sVol,
                                 h.lcbFpp / h.lcfFpp,
                                 h.lcbFpp * h.lcbFpp,
                                 h.cp * h.cp};
  std::vector<double> v;
  for (const auto& a : Table1998().coef) {
    const std::vector<double> terms(a.begin() + 1, a.end());
    v.push_back(a.front() + Sum(terms, x) / h.lwlVol);
  }
  return v;
}

// The Froude numbers of a regression's nodes.
std::vector<double> NodeSpeeds(DelftRegression set) {
  switch (set) {
    case DelftRegression::Gerritsma1981:
      return Table1981().fn;
    case DelftRegression::Gerritsma1991Low:
      return Table1991Low().fn;
    case DelftRegression::Gerritsma1991: {
      std::vector<double> fn = Table1991Low().fn;
      fn.insert(fn.end(), Table1991High().fn.begin(), Table1991High().fn.end());
      return fn;
    }
    case DelftRegression::KeuningSonnenberg1998:
      break;
  }
  return Table1998().fn;
}

// The regression of each catalogue entry.
struct Entry {
  int method;
  DelftRegression set;
};
constexpr Entry kEntries[] = {
    {5, DelftRegression::Gerritsma1981},          // Delft Series (1)
    {6, DelftRegression::Gerritsma1991Low},       // Delft Series (1/2)
    {7, DelftRegression::KeuningSonnenberg1998},  // Delft Series (2)
    {8, DelftRegression::Gerritsma1991Low},       // Delft Series (1/2/3)
    {9, DelftRegression::Gerritsma1991},          // Delft Series (2/3)
};

bool Fail(const char* text) {
  AddCalcError(text);
  return false;
}

}  // namespace

double DelftLowestFn(DelftRegression set) { return NodeSpeeds(set).front(); }
double DelftHighestFn(DelftRegression set) { return NodeSpeeds(set).back(); }

double CalcDelftResiduary(DelftRegression set, const DelftHull& hull, double fn) {
  std::vector<double> values;
  switch (set) {
    case DelftRegression::Gerritsma1981:
      values = Values1981(hull);
      break;
    case DelftRegression::Gerritsma1991Low:
      values = Values1991Low(hull);
      break;
    case DelftRegression::Gerritsma1991: {
      values = Values1991Low(hull);
      const std::vector<double> high = Values1991High(hull);
      values.insert(values.end(), high.begin(), high.end());
      break;
    }
    case DelftRegression::KeuningSonnenberg1998:
      values = Values1998(hull);
      break;
  }
  return InterpolateNodes(NodeSpeeds(set), values, fn);
}

bool CalcHullDragDelftSeries(int method, double& ctModel, double& modelLength, int& speedCheck,
                             const clsVXHull& hull, double fn) {
  SetCalcLocation("Delft Series bare-hull drag");
  ctModel = 0.0;
  modelLength = 0.0;
  speedCheck = 1;
  try {
    const Entry* entry = nullptr;
    for (const Entry& e : kEntries)
      if (e.method == method) entry = &e;
    if (!entry) return Fail("Delft Series entry");
    const DelftRegression set = entry->set;
    const double lo = DelftLowestFn(set), hi = DelftHighestFn(set);
    speedCheck = SpeedCheckOf(fn, lo, hi);

    // The canoe body: the hull's own waterline, draft, volume and wetted surface, with the
    // centres measured from the transom at the aft end of the waterline.
    const double L = hull.LengthWL(kFt), vol = hull.DisplacementVolume(kFt), S = hull.WettedSurface(kFt2);
    DelftHull h;
    h.cp = hull.CoefPrismatic();
    const double lcb = hull.CoefLCBLwlRatio();
    h.lcbFpp = 1.0 - lcb;
    h.lcbPercent = (lcb - 0.5) * 100.0;
    h.lwlBwl = hull.CoefLwlBwlRatio();
    h.bwlTc = hull.CoefBwlTvolRatio();
    h.lwlVol = hull.CoefLwlVol();
    h.sVol = hull.CoefWettedSurfaceFroudeCWS();
    // Only the high-speed 1991/92 form and the 1998 form need the waterplane, and only the
    // 1998 form the centre of flotation.
    if (set == DelftRegression::Gerritsma1991 || set == DelftRegression::KeuningSonnenberg1998)
      h.awpVol = hull.AreaWaterplane(kFt2) / std::pow(vol, 2.0 / 3.0);
    if (set == DelftRegression::KeuningSonnenberg1998) h.lcfFpp = 1.0 - hull.CoefLCFLwlRatio();
    if (PassHullErrors(hull)) return false;
    if (!(fn > 0.0)) return Fail("Froude number [LWL]");

    const double fnNode = std::min(std::max(fn, lo), hi);
    const double rr = CalcDelftResiduary(set, h, fnNode);
    const double cr = ResiduaryOutsideNodes(ResiduaryCoefFromWeightRatio(rr, fnNode, L, vol, S), fn, fnNode);
    if (!ShipScaleModelCt(cr, hull, fn, ctModel, modelLength)) return false;
    if (!std::isfinite(ctModel)) return Fail("Overflow");
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

}  // namespace velmar
