// Sums of series polynomial terms with their derivatives, and the reading of a series table.
#include "propulsion/series_polynomial.h"

#include <cmath>
#include <stdexcept>

#include "core/diagnostics.h"
#include "resistance/hull_method_support.h"

namespace velmar {
namespace {

// x^e and its first and second derivatives for every exponent e, from SeriesPowers::Derivative.
struct SeriesDerivatives {
  double v[kMaxSeriesPower + 1][3];
  explicit SeriesDerivatives(double x) {
    const SeriesPowers p(x);
    for (int e = 0; e <= kMaxSeriesPower; ++e)
      for (int k = 0; k < 3; ++k) v[e][k] = p.Derivative(e, k);
  }
};

}  // namespace

double SeriesPowers::Derivative(int e, int k) const {
  if (k > e) return 0.0;
  double f = p[e - k];
  for (int i = 0; i < k; ++i) f *= e - i;
  return f;
}

bool FinishSeriesSum(double& K, double sum) {
  K = sum;
  if (std::isfinite(sum)) return true;
  AddCalcError(std::isnan(sum) ? "Invalid procedure call or argument" : "Overflow");
  return false;
}

// Every entry of the derivative array is the product cz dJ dP dA of the term's derivatives of
// the orders of that entry, multiplied from the left; the products of cz with the J factor and
// of those with the P/D factor are shared between the entries that have them in common.
bool SumSeriesPolynomial(std::span<const SeriesTerm> terms, double& K, double J, double PD, double A, int Z,
                         DerivativeArray* d) {
  return FinishSeriesSum(K, SeriesPolynomialSum(terms, J, PD, A, Z, d));
}

double SeriesPolynomialSum(std::span<const SeriesTerm> terms, double J, double PD, double A, int Z,
                           DerivativeArray* d) {
  const SeriesPowers pz(Z);
  double sum = 0.0;
  if (!d) {
    const SeriesPowers pj(J), pp(PD), pa(A);
    for (const SeriesTerm& a : terms) sum += a.c * pz.p[a.v] * pj.p[a.s] * pp.p[a.t] * pa.p[a.u];
    return sum;
  }
  const SeriesDerivatives dj(J), dp(PD), da(A);
  DerivativeArray& k = *d;
  k.fill(0.0);
  for (const SeriesTerm& a : terms) {
    const double cz = a.c * pz.p[a.v];
    const double* j = dj.v[a.s];
    const double* p = dp.v[a.t];
    const double* e = da.v[a.u];
    const double c0 = cz * j[0], c1 = cz * j[1], c2 = cz * j[2];
    const double c00 = c0 * p[0], c01 = c0 * p[1], c02 = c0 * p[2], c10 = c1 * p[0], c11 = c1 * p[1],
                 c20 = c2 * p[0];
    sum += c00 * e[0];
    k[0] += c10 * e[0];  // d/dJ
    k[1] += c01 * e[0];  // d/dPD
    k[2] += c00 * e[1];  // d/dEAR
    k[3] += c20 * e[0];  // d2/dJ2
    k[4] += c02 * e[0];  // d2/dPD2
    k[5] += c00 * e[2];  // d2/dEAR2
    k[6] += c11 * e[0];  // d2/dJdPD
    k[7] += c10 * e[1];  // d2/dJdEAR
    k[8] += c01 * e[1];  // d2/dPDdEAR
  }
  return sum;
}

std::vector<SeriesTerm> ParseSeriesTerms(std::string_view csv) {
  const CoefTable table = ParseCoefTable(csv);
  const int c = table.Column("C"), s = table.Column("s"), t = table.Column("t"), u = table.Column("u"),
            v = table.Column("v");
  if (c < 0 || s < 0 || t < 0 || u < 0) throw std::logic_error("series table without its columns");
  auto exponent = [](const std::vector<double>& row, int column) {
    if (column < 0) return 0;
    const double e = row.at(static_cast<size_t>(column));
    if (!(e >= 0.0 && e <= kMaxSeriesPower && e == std::floor(e)))
      throw std::logic_error("series table exponent out of range");
    return static_cast<int>(e);
  };
  std::vector<SeriesTerm> terms;
  for (const std::vector<double>& row : table.rows) {
    const double coefficient = row.at(static_cast<size_t>(c));
    if (!std::isfinite(coefficient)) throw std::logic_error("series table coefficient is no number");
    terms.push_back({coefficient, exponent(row, s), exponent(row, t), exponent(row, u), exponent(row, v)});
  }
  return terms;
}

}  // namespace velmar
