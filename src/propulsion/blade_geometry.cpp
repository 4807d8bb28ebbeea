// Wageningen B-series blade geometry and its B-spline surfaces.
//
// Sources of the tables (compiled in from tables/bseries_*.csv.inc): van Lammeren, van Manen &
// Oosterveld (1969) "The Wageningen B-screw series", Trans. SNAME 77; Oosterveld & van Oossanen
// (1975) "Further computer-analyzed data of the Wageningen B-screw series", Int. Shipbuilding
// Progress 22(251); Kuiper (1992) "The Wageningen Propeller Series", MARIN 92-001.
//
// Section in 2-D (expanded cylindrical section at radius r): s along the pitch line from the
// generator line, positive towards the leading edge, n normal to it towards the back:
//   s_LE = a, s_tmax = a - b;  s = s_tmax + p b (p >= 0),  s = s_tmax + p (c - b) (p <= 0);
//   n_face = V1 t,  n_back = (V1 + V2) t   (sharp edges: no edge thickness).
// Wrapped on the cylinder (frame: X forward along the shaft, Z up, blade 1 towards +Z):
//   phi = atan(P(x) / (2 pi r)),  u = s cos phi - n sin phi,  w = s sin phi + n cos phi,
//   X = w - r tan(rake),  theta = h (skew(x) - u / r),  Y = r sin theta,  Z = r cos theta,
// h = +1 for a right-handed propeller. The chord closes at the tip as K = g(x) sqrt(1 - x) with
// g interpolated through the tabulated points 0.2R to 0.9R, since the tables give c = 0 at the
// tip but a finite chord at 0.9R.
//
// Surface fit: global interpolation of a point grid by a tensor-product B-spline, with
// averaged chord-length parameters and knots by averaging: Piegl & Tiller, "The NURBS Book",
// 2nd ed. (1997), section 9.2.5 (algorithm A9.4), eqs. (9.5) and (9.8); basis functions by
// their algorithms A2.1 and A2.2. Full circles of the hub: a degree-2 rational curve of nine
// poles on the square, weights 1 and sqrt(2)/2 (ibid., section 7.5, Fig. 7.16).
#include "propulsion/blade_geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

namespace velmar {
namespace {

constexpr double kPi = 3.14159265358979323846;

constexpr std::string_view kBladeZ3Csv =
#include "propulsion/tables/bseries_blade_z3.csv.inc"
    ;
constexpr std::string_view kBladeZ4PlusCsv =
#include "propulsion/tables/bseries_blade_z4plus.csv.inc"
    ;
constexpr std::string_view kPitchB4Csv =
#include "propulsion/tables/bseries_pitch_b4.csv.inc"
    ;
constexpr std::string_view kV1Csv =
#include "propulsion/tables/bseries_v1.csv.inc"
    ;
constexpr std::string_view kV2Csv =
#include "propulsion/tables/bseries_v2.csv.inc"
    ;

// The numbers of a CSV table with one header line: header values (where numeric) and rows.
struct CsvTable {
  std::vector<double> header;  // the header's cells read as numbers (0 where not numeric)
  std::vector<std::vector<double>> rows;
};

std::vector<double> ParseCsvLine(std::string_view line) {
  std::vector<double> cells;
  size_t start = 0;
  while (start <= line.size()) {
    const size_t comma = std::min(line.find(',', start), line.size());
    const std::string cell(line.substr(start, comma - start));
    cells.push_back(std::strtod(cell.c_str(), nullptr));
    start = comma + 1;
  }
  return cells;
}

CsvTable ParseCsv(std::string_view text) {
  CsvTable t;
  bool first = true;
  size_t start = 0;
  while (start < text.size()) {
    const size_t end = std::min(text.find('\n', start), text.size());
    const std::string_view line = text.substr(start, end - start);
    start = end + 1;
    if (line.empty()) continue;
    if (first)
      t.header = ParseCsvLine(line);
    else
      t.rows.push_back(ParseCsvLine(line));
    first = false;
  }
  return t;
}

// Monotone piecewise cubic through (x, y): slopes by Steffen, "A simple method for monotonic
// interpolation in one dimension", Astron. Astrophys. 239 (1990) 443, eqs. (11) and (13); at the
// two ends the secant slope. No overshoot between table rows (V1 must not dip below the pitch
// line where the table is zero). Outside the points: a straight line with the end slope.
class MonotoneCurve {
 public:
  MonotoneCurve() = default;
  MonotoneCurve(std::vector<double> x, std::vector<double> y) : x_(std::move(x)), y_(std::move(y)) {
    const size_t n = x_.size();
    d_.assign(n, 0.0);
    if (n < 2) return;
    std::vector<double> h(n - 1), s(n - 1);
    for (size_t i = 0; i + 1 < n; ++i) {
      h[i] = x_[i + 1] - x_[i];
      s[i] = (y_[i + 1] - y_[i]) / h[i];
    }
    d_[0] = s[0];
    d_[n - 1] = s[n - 2];
    for (size_t i = 1; i + 1 < n; ++i) {
      const double p = (s[i - 1] * h[i] + s[i] * h[i - 1]) / (h[i - 1] + h[i]);
      const double sign = (s[i - 1] > 0) - (s[i - 1] < 0) + (s[i] > 0) - (s[i] < 0);
      d_[i] = sign * std::min({std::fabs(s[i - 1]), std::fabs(s[i]), 0.5 * std::fabs(p)});
    }
  }
  double operator()(double x) const {
    const size_t n = x_.size();
    if (n == 1) return y_[0];
    if (x <= x_[0]) return y_[0] + d_[0] * (x - x_[0]);
    if (x >= x_[n - 1]) return y_[n - 1] + d_[n - 1] * (x - x_[n - 1]);
    size_t i = static_cast<size_t>(std::upper_bound(x_.begin(), x_.end(), x) - x_.begin()) - 1;
    const double h = x_[i + 1] - x_[i], t = (x - x_[i]) / h;
    const double h00 = (1 + 2 * t) * (1 - t) * (1 - t), h10 = t * (1 - t) * (1 - t);
    const double h01 = t * t * (3 - 2 * t), h11 = t * t * (t - 1);
    return h00 * y_[i] + h10 * h * d_[i] + h01 * y_[i + 1] + h11 * h * d_[i + 1];
  }

 private:
  std::vector<double> x_, y_, d_;
};

// One outline table (blade count 3, or 4 and more) as curves over r/R.
struct OutlineCurves {
  MonotoneCurve g;  // K / sqrt(1 - x), tip closure
  MonotoneCurve leadingEdge, maxThickness, ar, br;
};

OutlineCurves MakeOutline(std::string_view csv) {
  const CsvTable t = ParseCsv(csv);
  std::vector<double> x, g, ac, bc, x_all, ar, br;
  for (const auto& r : t.rows) {
    x_all.push_back(r[0]);
    ar.push_back(r[4]);
    br.push_back(r[5]);
    if (r[0] >= 1.0) continue;  // c = 0 at the tip: a/c and b/c have no meaning there
    x.push_back(r[0]);
    g.push_back(r[1] / std::sqrt(1.0 - r[0]));
    ac.push_back(r[2]);
    bc.push_back(r[3]);
  }
  return {MonotoneCurve(x, g), MonotoneCurve(x, ac), MonotoneCurve(x, bc), MonotoneCurve(x_all, ar),
          MonotoneCurve(x_all, br)};
}

// The ordinate tables: one curve over r/R per chordwise station p.
struct OrdinateCurves {
  std::vector<double> p;  // -1 (trailing edge) ... +1 (leading edge)
  std::vector<MonotoneCurve> v;
};

OrdinateCurves MakeOrdinates(std::string_view csv) {
  const CsvTable t = ParseCsv(csv);
  OrdinateCurves o;
  o.p.assign(t.header.begin() + 1, t.header.end());
  std::vector<double> x;
  for (const auto& r : t.rows) x.push_back(r[0]);
  for (size_t k = 0; k < o.p.size(); ++k) {
    std::vector<double> y;
    for (const auto& r : t.rows) y.push_back(r[k + 1]);
    o.v.emplace_back(x, y);
  }
  return o;
}

struct SeriesTables {
  OutlineCurves z3 = MakeOutline(kBladeZ3Csv), z4plus = MakeOutline(kBladeZ4PlusCsv);
  MonotoneCurve pitchB4;
  OrdinateCurves v1 = MakeOrdinates(kV1Csv), v2 = MakeOrdinates(kV2Csv);
  SeriesTables() {
    const CsvTable t = ParseCsv(kPitchB4Csv);
    std::vector<double> x, k;
    for (const auto& r : t.rows) {
      x.push_back(r[0]);
      k.push_back(r[1]);
    }
    pitchB4 = MonotoneCurve(x, k);
  }
};

const SeriesTables& Tables() {
  static const SeriesTables tables;
  return tables;
}

double HubRadius(const BladeGeometryInput& in) {
  const double ratio = in.hubRatio > 0.0 ? in.hubRatio : kBSeriesHubRatio;
  return 0.5 * ratio * in.diameter;
}

// Outermost section: the chord closes to nothing at the tip while the tabulated thickness
// stays 0.003 D; the blade surfaces end here and leave the tip open by a thousandth of D.
constexpr double kTipRatio = 0.995;
constexpr int kRadialSections = 16;

// --- B-spline basics (Piegl & Tiller A2.1, A2.2) ---

int FindSpan(int n, int p, double u, const std::vector<double>& U) {  // n = count - 1
  if (u >= U[n + 1]) return n;
  if (u <= U[p]) return p;
  int low = p, high = n + 1, mid = (low + high) / 2;
  while (u < U[mid] || u >= U[mid + 1]) {
    if (u < U[mid])
      high = mid;
    else
      low = mid;
    mid = (low + high) / 2;
  }
  return mid;
}

void BasisFuns(int span, double u, int p, const std::vector<double>& U, double* N) {
  std::vector<double> left(p + 1), right(p + 1);
  N[0] = 1.0;
  for (int j = 1; j <= p; ++j) {
    left[j] = u - U[span + 1 - j];
    right[j] = U[span + j] - u;
    double saved = 0.0;
    for (int r = 0; r < j; ++r) {
      const double temp = N[r] / (right[r + 1] + left[j - r]);
      N[r] = saved + right[r + 1] * temp;
      saved = left[j - r] * temp;
    }
    N[j] = saved;
  }
}

double Distance(const Point3& a, const Point3& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
}

// Averaged chord-length parameters of point sequences, eq. (9.5) averaged over the rows.
std::vector<double> AveragedParameters(const std::vector<std::vector<Point3>>& seqs) {
  const size_t n = seqs.front().size();
  std::vector<double> t(n, 0.0);
  int used = 0;
  for (const auto& q : seqs) {
    double total = 0.0;
    for (size_t k = 1; k < n; ++k) total += Distance(q[k], q[k - 1]);
    if (total <= 0.0) continue;
    double acc = 0.0;
    for (size_t k = 1; k < n; ++k) {
      acc += Distance(q[k], q[k - 1]);
      t[k] += acc / total;
    }
    ++used;
  }
  for (size_t k = 1; k < n; ++k) t[k] = used ? t[k] / used : static_cast<double>(k) / (n - 1);
  t[n - 1] = 1.0;
  return t;
}

// Knots by averaging, eq. (9.8).
std::vector<double> AveragedKnots(const std::vector<double>& t, int p) {
  const int n = static_cast<int>(t.size()) - 1;
  std::vector<double> U(n + p + 2, 0.0);
  for (int j = n + 1; j <= n + p + 1; ++j) U[j] = 1.0;
  for (int j = 1; j <= n - p; ++j) {
    double sum = 0.0;
    for (int i = j; i <= j + p - 1; ++i) sum += t[i];
    U[j + p] = sum / p;
  }
  return U;
}

// Solves A x = b for several right-hand sides of points (Gaussian elimination, partial pivot).
std::vector<Point3> Solve(std::vector<std::vector<double>> A, std::vector<Point3> b) {
  const size_t n = b.size();
  for (size_t c = 0; c < n; ++c) {
    size_t piv = c;
    for (size_t r = c + 1; r < n; ++r)
      if (std::fabs(A[r][c]) > std::fabs(A[piv][c])) piv = r;
    std::swap(A[c], A[piv]);
    std::swap(b[c], b[piv]);
    for (size_t r = c + 1; r < n; ++r) {
      const double f = A[r][c] / A[c][c];
      if (f == 0.0) continue;
      for (size_t k = c; k < n; ++k) A[r][k] -= f * A[c][k];
      b[r].x -= f * b[c].x;
      b[r].y -= f * b[c].y;
      b[r].z -= f * b[c].z;
    }
  }
  for (size_t c = n; c-- > 0;) {
    for (size_t k = c + 1; k < n; ++k) {
      b[c].x -= A[c][k] * b[k].x;
      b[c].y -= A[c][k] * b[k].y;
      b[c].z -= A[c][k] * b[k].z;
    }
    b[c].x /= A[c][c];
    b[c].y /= A[c][c];
    b[c].z /= A[c][c];
  }
  return b;
}

// The poles of the curve of degree p through q at parameters t with knots U.
std::vector<Point3> InterpolateCurve(const std::vector<Point3>& q, const std::vector<double>& t, int p,
                                     const std::vector<double>& U) {
  const int n = static_cast<int>(q.size()) - 1;
  std::vector<std::vector<double>> A(q.size(), std::vector<double>(q.size(), 0.0));
  std::vector<double> N(p + 1);
  for (int k = 0; k <= n; ++k) {
    const int span = FindSpan(n, p, t[k], U);
    BasisFuns(span, t[k], p, U, N.data());
    for (int r = 0; r <= p; ++r) A[k][span - p + r] = N[r];
  }
  return Solve(std::move(A), q);
}

// Full circle of radius 1 about X as a rational quadratic: (y, z) of the nine poles, weights.
struct UnitCircle {
  std::vector<double> y, z, w, knots;
  UnitCircle() {
    const double c = std::sqrt(0.5);
    for (int j = 0; j <= 8; ++j) {
      const double a = j * kPi / 4.0, rho = (j % 2) ? std::sqrt(2.0) : 1.0;
      y.push_back(rho * std::sin(a));
      z.push_back(rho * std::cos(a));
      w.push_back((j % 2) ? c : 1.0);
    }
    knots = {0, 0, 0, 0.25, 0.25, 0.5, 0.5, 0.75, 0.75, 1, 1, 1};
  }
};

// Surface of revolution about X of a profile (x, radius) given as poles of a Bezier curve.
BSplineSurface Revolution(const std::vector<std::pair<double, double>>& profile) {
  static const UnitCircle circle;
  BSplineSurface s;
  s.degreeU = static_cast<int>(profile.size()) - 1;
  s.degreeV = 2;
  s.countU = static_cast<int>(profile.size());
  s.countV = 9;
  s.knotsU.assign(s.countU, 0.0);
  s.knotsU.resize(2 * s.countU, 1.0);
  s.knotsV = circle.knots;
  s.closedV = true;
  for (int j = 0; j < 9; ++j)
    for (const auto& [x, r] : profile) {
      s.poles.push_back({x, r * circle.y[j], r * circle.z[j]});
      s.weights.push_back(circle.w[j]);
    }
  return s;
}

}  // namespace

Point3 BSplineSurface::Evaluate(double u, double v) const {
  std::vector<double> Nu(degreeU + 1), Nv(degreeV + 1);
  const int su = FindSpan(countU - 1, degreeU, u, knotsU), sv = FindSpan(countV - 1, degreeV, v, knotsV);
  BasisFuns(su, u, degreeU, knotsU, Nu.data());
  BasisFuns(sv, v, degreeV, knotsV, Nv.data());
  double x = 0, y = 0, z = 0, wsum = 0;
  for (int l = 0; l <= degreeV; ++l)
    for (int k = 0; k <= degreeU; ++k) {
      const size_t idx = static_cast<size_t>(sv - degreeV + l) * countU + (su - degreeU + k);
      const double w = Nu[k] * Nv[l] * (Rational() ? weights[idx] : 1.0);
      x += w * poles[idx].x;
      y += w * poles[idx].y;
      z += w * poles[idx].z;
      wsum += w;
    }
  return {x / wsum, y / wsum, z / wsum};
}

SectionData BSeriesSection(const BladeGeometryInput& in, double x) {
  const SeriesTables& tab = Tables();
  const OutlineCurves& o = in.bladeCount <= 3 ? tab.z3 : tab.z4plus;
  SectionData d;
  const double k = x < 1.0 ? o.g(x) * std::sqrt(1.0 - x) : 0.0;
  d.chord = k * in.diameter * in.expAreaRatio / in.bladeCount;  // K = c Z / (D AE/A0)
  d.leadingEdge = o.leadingEdge(x) * d.chord;
  d.maxThicknessFromLE = o.maxThickness(x) * d.chord;
  d.thickness = in.diameter * (o.ar(x) - o.br(x) * in.bladeCount);  // t/D = Ar - Br Z
  // Only the 4-bladed series has its pitch reduced towards the root.
  d.localPitch = in.pitch * (in.bladeCount == 4 ? std::min(1.0, tab.pitchB4(x)) : 1.0);
  return d;
}

bool BuildBladeGeometry(const BladeGeometryInput& in, BladeGeometry& out) {
  if (!(in.diameter > 0.0) || !(in.pitch > 0.0) || !(in.expAreaRatio > 0.0) || in.bladeCount < 1)
    return false;
  if (in.hubRatio >= 0.5 || in.hubRatio < 0.0) return false;
  const SeriesTables& tab = Tables();
  out = BladeGeometry{};
  out.input = in;
  out.hubRadius = HubRadius(in);
  const double R = 0.5 * in.diameter, xHub = out.hubRadius / R;
  const double h = in.rightHanded ? 1.0 : -1.0;
  const double tanRake = std::tan(in.rakeDeg * kPi / 180.0);
  std::vector<std::vector<Point3>> faceRows, backRows;
  for (int j = 0; j < kRadialSections; ++j) {
    // Sections closer together towards the tip, where the chord closes quickly.
    const double x = xHub + (kTipRatio - xHub) * std::sin(0.5 * kPi * j / (kRadialSections - 1));
    const double r = x * R;
    const SectionData d = BSeriesSection(in, x);
    const double phi = std::atan(d.localPitch / (2.0 * kPi * r));
    const double sTmax = d.leadingEdge - d.maxThicknessFromLE;
    const double skew = in.skewDeg * kPi / 180.0 * (x - xHub) / (1.0 - xHub);  // linear, hub to tip
    BladeSection sec{r, d.chord, d.thickness, d.localPitch, {}, {}};
    auto wrap = [&](double s, double n) {
      const double u = s * std::cos(phi) - n * std::sin(phi), w = s * std::sin(phi) + n * std::cos(phi);
      const double theta = h * (skew - u / r);
      return Point3{w - r * tanRake, r * std::sin(theta), r * std::cos(theta)};
    };
    for (size_t k = 0; k < tab.v1.p.size(); ++k) {
      const double p = tab.v1.p[k];
      const double s = sTmax + (p >= 0.0 ? p * d.maxThicknessFromLE : p * (d.chord - d.maxThicknessFromLE));
      const double v1 = std::max(0.0, tab.v1.v[k](x)), v2 = std::max(0.0, tab.v2.v[k](x));
      sec.face.push_back(wrap(s, v1 * d.thickness));
      sec.back.push_back(wrap(s, (v1 + v2) * d.thickness));
    }
    faceRows.push_back(sec.face);
    backRows.push_back(sec.back);
    out.sections.push_back(std::move(sec));
  }
  out.face = InterpolateSurface(faceRows, 3, 3);
  out.back = InterpolateSurface(backRows, 3, 3);
  return true;
}

BSplineSurface InterpolateSurface(const std::vector<std::vector<Point3>>& rows, int degreeU, int degreeV) {
  const size_t nv = rows.size(), nu = rows.front().size();
  std::vector<std::vector<Point3>> cols(nu, std::vector<Point3>(nv));
  for (size_t j = 0; j < nv; ++j)
    for (size_t i = 0; i < nu; ++i) cols[i][j] = rows[j][i];
  const std::vector<double> tu = AveragedParameters(rows), tv = AveragedParameters(cols);
  BSplineSurface s;
  s.degreeU = degreeU;
  s.degreeV = degreeV;
  s.countU = static_cast<int>(nu);
  s.countV = static_cast<int>(nv);
  s.knotsU = AveragedKnots(tu, degreeU);
  s.knotsV = AveragedKnots(tv, degreeV);
  // First along u in every row, then along v through the row poles.
  std::vector<std::vector<Point3>> rowPoles;
  for (const auto& q : rows) rowPoles.push_back(InterpolateCurve(q, tu, degreeU, s.knotsU));
  s.poles.assign(nu * nv, Point3{});
  for (size_t i = 0; i < nu; ++i) {
    std::vector<Point3> q(nv);
    for (size_t j = 0; j < nv; ++j) q[j] = rowPoles[j][i];
    const std::vector<Point3> c = InterpolateCurve(q, tv, degreeV, s.knotsV);
    for (size_t j = 0; j < nv; ++j) s.poles[j * nu + i] = c[j];
  }
  return s;
}

BSplineSurface RotatedAboutAxis(const BSplineSurface& s, double angle) {
  BSplineSurface r = s;
  const double c = std::cos(angle), sn = std::sin(angle);
  for (Point3& p : r.poles) p = {p.x, p.y * c + p.z * sn, p.z * c - p.y * sn};
  return r;
}

std::vector<BSplineSurface> HubSurfaces(const BladeGeometry& blade) {
  // Axial extent of the blade roots, with a margin of 0.15 hub diameters on both sides.
  double xMin = 0.0, xMax = 0.0;
  if (!blade.sections.empty()) {
    xMin = xMax = blade.sections.front().face.front().x;
    for (const auto* pts : {&blade.sections.front().face, &blade.sections.front().back})
      for (const Point3& p : *pts) {
        xMin = std::min(xMin, p.x);
        xMax = std::max(xMax, p.x);
      }
  }
  const double rh = blade.hubRadius, margin = 0.3 * rh;
  const double xAft = xMin - margin, xFwd = xMax + margin, boss = 0.8 * rh;
  return {
      Revolution({{xAft, rh}, {xFwd, rh}}),   // cylinder under the blade roots
      Revolution({{xFwd, rh}, {xFwd, 0.0}}),  // flat forward end, towards the shaft
      // Rounded aft boss: tangent to the cylinder, square to the axis at its end.
      Revolution({{xAft, rh}, {xAft - 0.55 * boss, rh}, {xAft - boss, 0.55 * rh}, {xAft - boss, 0.0}}),
  };
}

double ExpandedBladeArea(const std::vector<double>& radii, const std::vector<double>& chords) {
  double area = 0.0;
  for (size_t k = 1; k < radii.size() && k < chords.size(); ++k)
    area += 0.5 * (chords[k] + chords[k - 1]) * (radii[k] - radii[k - 1]);
  return area;
}

UnrolledSection UnrollSection(const BSplineSurface& s, double v) {
  const Point3 te = s.Evaluate(s.UStart(), v), le = s.Evaluate(s.UEnd(), v);
  const double r1 = std::hypot(te.y, te.z), r2 = std::hypot(le.y, le.z), r = 0.5 * (r1 + r2);
  double dTheta = std::atan2(le.y, le.z) - std::atan2(te.y, te.z);
  if (dTheta > kPi) dTheta -= 2 * kPi;
  if (dTheta < -kPi) dTheta += 2 * kPi;
  return {r, std::hypot(r * dTheta, le.x - te.x)};
}

}  // namespace velmar
