// Sums of series polynomial terms with their derivatives, and the reading of a series table.
#include "propulsion/series_polynomial.h"

#include <cmath>
#include <stdexcept>

#include "core/diagnostics.h"
#include "resistance/hull_method_support.h"

namespace velmar {
namespace {

// The derivative orders of DerivativeArray: (J, P/D, A).
constexpr int kOrders[9][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {2, 0, 0}, {0, 2, 0},
                               {0, 0, 2}, {1, 1, 0}, {1, 0, 1}, {0, 1, 1}};

}  // namespace

SeriesPowers::SeriesPowers(double x) {
  p[0] = 1.0;
  for (int i = 1; i <= kMaxSeriesPower; ++i) p[i] = p[i - 1] * x;
}

double SeriesPowers::Derivative(int e, int k) const {
  if (k > e) return 0.0;
  double f = p[e - k];
  for (int i = 0; i < k; ++i) f *= e - i;
  return f;
}

bool SumSeriesPolynomial(std::span<const SeriesTerm> terms, double& K, double J, double PD, double A, int Z,
                         DerivativeArray* d) {
  const SeriesPowers pj(J), pp(PD), pa(A), pz(Z);
  double sum = 0.0;
  if (d) d->fill(0.0);
  for (const SeriesTerm& a : terms) {
    const double cz = a.c * pz.p[a.v];
    sum += cz * pj.p[a.s] * pp.p[a.t] * pa.p[a.u];
    if (!d) continue;
    for (int i = 0; i < 9; ++i) {
      const int* k = kOrders[i];
      (*d)[i] += cz * pj.Derivative(a.s, k[0]) * pp.Derivative(a.t, k[1]) * pa.Derivative(a.u, k[2]);
    }
  }
  K = sum;
  if (std::isfinite(sum)) return true;
  AddCalcError(std::isnan(sum) ? "Invalid procedure call or argument" : "Overflow");
  return false;
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
