// Friction lines of the ITTC-78 expansion and the speed-dependent form factor multiplier.
// Notation: x = log10(Rn), CF referred to 0.5 rho S V^2.
#include "resistance/friction.h"

#include <cmath>

#include "core/constants.h"

namespace velmar {
namespace {

// Schoenherr (1932), Trans. SNAME 40, adopted as the ATTC-1947 line:
//   0.242 / sqrt(CF) = log10(Rn CF)    (implicit).
// With y = 1 / sqrt(CF): g(y) = 0.242 y + 2 log10(y) - x = 0. g rises monotonically for
// y > 0, so the root is unique: bracket it, then Newton from the ITTC-1957 value, falling
// back to bisection whenever a step leaves the bracket. Bounded iteration throughout.
double FrictionSchoenherr(double rn) {
  if (!(rn > 0.0) || !std::isfinite(rn)) return 0.0;
  const double x = std::log10(rn);
  auto g = [x](double y) { return 0.242 * y + 2.0 * std::log10(y) - x; };
  double lo = 1.0, hi = 64.0;
  for (int i = 0; i < 200 && g(lo) > 0.0; ++i) lo *= 0.5;
  for (int i = 0; i < 200 && g(hi) < 0.0; ++i) hi *= 2.0;
  if (g(lo) > 0.0 || g(hi) < 0.0) return 0.0;
  const double cf57 = CalcFrictionITTC57(rn);
  double y = cf57 > 0.0 ? 1.0 / std::sqrt(cf57) : 0.5 * (lo + hi);
  if (!(y > lo && y < hi)) y = 0.5 * (lo + hi);
  for (int i = 0; i < 100; ++i) {
    const double gy = g(y);
    if (gy == 0.0) break;
    (gy < 0.0 ? lo : hi) = y;
    double next = y - gy / (0.242 + 2.0 / (y * std::log(10.0)));
    if (!(next > lo && next < hi)) next = 0.5 * (lo + hi);
    const bool done = std::fabs(next - y) <= 1e-15 * y;
    y = next;
    if (done) break;
  }
  return 1.0 / (y * y);
}

// Hughes (1954), Trans. INA 96: 2-D turbulent friction CF0 = 0.066 / (x - 2.03)^2.
// Meaningless at and below its pole x = 2.03.
double FrictionHughes(double rn) {
  if (!(rn > 0.0)) return 0.0;
  const double x = std::log10(rn);
  return x > 2.03 ? 0.066 / ((x - 2.03) * (x - 2.03)) : 0.0;
}

// Grigson (1993), Trans. RINA 135, as a modifier on ITTC-1957; Watson, Practical Ship Design
// (1998), eqs. 7.13 (model range 1.5e6 < Rn < 2e7) and 7.14 (ship range 1e8 < Rn < 4e9).
// No expression is published between 2e7 and 1e8: the modifier is interpolated linearly in
// x between the two range ends there. Below and above, the nearer range is extrapolated.
double GrigsonModel(double x) {
  const double d = x - 6.3;
  return 0.93 + 0.1377 * d * d - 0.06334 * d * d * d * d;  // eq. 7.13
}
double GrigsonShip(double x) {
  const double d = x - 8.0;
  return 1.032 + 0.02816 * d - 0.006273 * d * d;  // eq. 7.14
}
double FrictionGrigson(double rn) {
  const double cf57 = CalcFrictionITTC57(rn);
  if (!(cf57 > 0.0) || !(rn > 100.0)) return 0.0;
  const double x = std::log10(rn);
  const double xModelEnd = std::log10(2.0e7), xShipStart = 8.0;
  double m;
  if (x <= xModelEnd) {
    m = GrigsonModel(x);
  } else if (x >= xShipStart) {
    m = GrigsonShip(x);
  } else {
    const double a = GrigsonModel(xModelEnd), b = GrigsonShip(xShipStart);
    m = a + (b - a) * (x - xModelEnd) / (xShipStart - xModelEnd);
  }
  return m * cf57;
}

// Prandtl-Schlichting smooth-plate line (Schlichting, Boundary-Layer Theory):
//   CF = 0.455 / x^2.58 - A / Rn,
// A the laminar-to-turbulent transition constant (1700 for transition near Rn = 5e5; 0 for
// the fully turbulent line). A result that is not positive is outside the line.
double FrictionPrandtlSchlichting(double rn, double transitionA) {
  if (!(rn > 1.0)) return 0.0;
  const double cf = 0.455 / std::pow(std::log10(rn), 2.58) - (transitionA > 0.0 ? transitionA / rn : 0.0);
  return cf > 0.0 ? cf : 0.0;
}

// R.E. Froude's friction, R_F = f S V^1.825 with f a function of the wetted length (data as
// tabulated by Tupper, Introduction to Naval Architecture, Table 8.4). Metric closed form for
// fresh water: R_F [kgf] = lambda S[m2] V[m/s]^1.825, lambda = 0.1392 + 0.258 / (2.68 + L[m]),
// within 0.5 % of the table from 5 to 500 ft. As a coefficient on the basin's fresh water:
//   CF = 2 g lambda V^-0.175 / rho   (rho in kg/m3; lambda holds the specific weight 1000 kgf/m3).
// Not a function of Rn: it needs length and speed.
double FrictionFroude(double lengthFt, double speedFtS) {
  if (!(lengthFt > 0.0) || !(speedFtS > 0.0)) return 0.0;
  constexpr double kFtToM = 0.3048;
  constexpr double kSlugFt3ToKgM3 = 14.5939029372 / (kFtToM * kFtToM * kFtToM);
  const double lambda = 0.1392 + 0.258 / (2.68 + lengthFt * kFtToM);
  return 2.0 * GravitySI * lambda * std::pow(speedFtS * kFtToM, -0.175) / (StdDensityFresh * kSlugFt3ToKgM3);
}

}  // namespace

double CalcFrictionLine(double rn, int line, double lengthFt, double speedFtS, double extra) {
  switch (line) {
    case kFrictionITTC57:
      return CalcFrictionITTC57(rn);
    case kFrictionSchoenherr:
      return FrictionSchoenherr(rn);
    case kFrictionHughes:
      return FrictionHughes(rn);
    case kFrictionGrigson:
      return FrictionGrigson(rn);
    case kFrictionPrandtlSchlichting:
      return FrictionPrandtlSchlichting(rn, extra);
    case kFrictionFroude:
      return FrictionFroude(lengthFt, speedFtS);
  }
  return 0.0;
}

// ITTC-1957 model-ship correlation line (8th ITTC, Madrid 1957): CF = 0.075 / (x - 2)^2.
double CalcFrictionITTC57(double rn) {
  if (rn <= 0.0 || rn == 100.0) return 0.0;
  const double d = std::log10(rn) - 2.0;
  return 0.075 / (d * d);
}

// Speed dependence of the form factor at model scale: the multiplier m of k = (1+k) - 1,
// 0.93 at the lowest speeds, with a cosine hump below Fn 0.5 and a fall-off above.
double CalcFormFactorKMultiplier(double fn, int enabled) {
  if (enabled != 1) return 1.0;
  if (fn < 0.1) return 0.93;
  double m = 1.0 / (1.073 + 101.6 * std::pow(fn, 4.6));
  if (fn < 0.5) m += 0.0377 * (1.0 + std::cos(18.84 * std::cbrt(fn) - 11.78));
  return m;
}

}  // namespace velmar
