// Radojcic, D. "Mathematical model of segmental section propeller series for open-water and
// cavitating conditions applicable in CAD" (usually cited as 1988), a regression of the
// Gawn-Burrill KCA series, whose data are Gawn (1953) and Gawn & Burrill (1957), Trans. INA.
// Three blades, segmental sections:
//   KT = sum C J^s (P/D)^t x^u  (16 terms),   KQ = sum C J^s (P/D)^t x^u  (17 terms),
// x the developed over disc area ratio, P/D 0.8 to 1.8, x 0.5 to 1.1.
//
// SINGLE SOURCE: the coefficients come from one public package (two versions of one file).
//
// The area ratio. The series is defined by its developed area ratio x; the regression converts
// the expanded ratio through AE/A0 = 0.34 x (2.75 + x/3) = 0.935 x + 0.1133 x^2. Its source
// writes 0.113 under the root of the inverse and 0.1133 in the denominator, which is not the
// inverse of that relation (x 0.2 % low). The program takes the true inverse, with 0.1133 in
// both places, so that x is the area ratio the coefficients were fitted to; at a given AE/A0
// its KT differs from the source's by up to 2e-4 on the shelf's check points.
#include "propulsion/gawn_kca.h"

#include <cmath>
#include <string_view>

namespace velmar {
namespace {

constexpr std::string_view kKTCsv =
#include "propulsion/tables/gawn_burrill_kt.csv.inc"
    ;
constexpr std::string_view kKQCsv =
#include "propulsion/tables/gawn_burrill_kq.csv.inc"
    ;

const std::vector<SeriesTerm>& KTTerms() {
  static const std::vector<SeriesTerm> terms = ParseSeriesTerms(kKTCsv);
  return terms;
}
const std::vector<SeriesTerm>& KQTerms() {
  static const std::vector<SeriesTerm> terms = ParseSeriesTerms(kKQCsv);
  return terms;
}

// AE/A0 = a x + b x^2.
constexpr double a = 0.935, b = 0.1133;

// The sum in x, and the derivatives in x brought to AE/A0 by the chain rule:
// dK/dE = K_x x',  d2K/dE2 = K_xx x'^2 + K_x x'',  d2K/dJdE = K_Jx x',  d2K/dPdE = K_Px x'.
bool Sum(const std::vector<SeriesTerm>& terms, double& K, double J, double PD, double EAR,
         DerivativeArray* d) {
  if (!SumSeriesPolynomial(terms, K, J, PD, GawnDevelopedAreaRatio(EAR), 0, d)) return false;
  if (d) {
    const double root = std::sqrt(a * a + 4.0 * b * EAR);
    const double x1 = 1.0 / root, x2 = -2.0 * b / (root * root * root);
    DerivativeArray& k = *d;
    k[5] = k[5] * x1 * x1 + k[2] * x2;
    k[2] *= x1;
    k[7] *= x1;
    k[8] *= x1;
  }
  return true;
}

}  // namespace

double GawnDevelopedAreaRatio(double EAR) { return (std::sqrt(a * a + 4.0 * b * EAR) - a) / (2.0 * b); }

bool CalcKTGawnKCA(double& KT, double J, double PD, double EAR, DerivativeArray* d) {
  return Sum(KTTerms(), KT, J, PD, EAR, d);
}

bool CalcKQGawnKCA(double& KQ, double J, double PD, double EAR, DerivativeArray* d) {
  return Sum(KQTerms(), KQ, J, PD, EAR, d);
}

}  // namespace velmar
