// The open-water polynomials of the propeller series: KT or KQ as a sum of terms
// C J^s (P/D)^t A^u Z^v, with the first and second derivatives in J, P/D and the area ratio A
// that the RPM solution and the sizing solver use.
#pragma once

#include <array>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace velmar {

// First and second partial derivatives of a KT or KQ sum with regard to J, P/D and EAR:
// [0] d/dJ, [1] d/dPD, [2] d/dEAR, [3] d2/dJ2, [4] d2/dPD2, [5] d2/dEAR2, [6] d2/dJdPD,
// [7] d2/dJdEAR, [8] d2/dPDdEAR.
using DerivativeArray = std::array<double, 9>;

// One term C J^s (P/D)^t A^u Z^v.
struct SeriesTerm {
  double c;
  int s, t, u, v;
};

// The highest exponent a term may carry.
inline constexpr int kMaxSeriesPower = 6;

// x^0 .. x^kMaxSeriesPower, and the derivatives of a power.
struct SeriesPowers {
  double p[kMaxSeriesPower + 1];
  explicit SeriesPowers(double x) {
    p[0] = 1.0;
    for (int i = 1; i <= kMaxSeriesPower; ++i) p[i] = p[i - 1] * x;
  }
  // The k-th derivative of x^e: e (e-1) .. (e-k+1) x^(e-k), 0 when k exceeds e.
  double Derivative(int e, int k) const;
};

// The sum of `terms` at (J, P/D, A, Z) and, when `d` is given, its derivatives term by term
// (d is overwritten). False, with "Overflow" or "Invalid procedure call or argument" in the
// calculation error state, for a result that is not finite.
bool SumSeriesPolynomial(std::span<const SeriesTerm> terms, double& K, double J, double PD, double A, int Z,
                         DerivativeArray* d);
// The same sum, bare: it may not be finite, and nothing is reported.
double SeriesPolynomialSum(std::span<const SeriesTerm> terms, double J, double PD, double A, int Z,
                           DerivativeArray* d);

// The end of a sum: K, and false with the text of a result that is not finite.
bool FinishSeriesSum(double& K, double sum);

// The same sum without derivatives for a table known when the program is compiled (the
// B-series): the loop is unrolled, so every term's exponents are constants and its factors
// x^0 = 1 drop out of the product (a product with 1 is exact). Each term keeps its
// multiplications in their order, and the terms are added in the table's order.
// SeriesPolynomialSum gives the bare sum, which may not be finite.
template <const auto& kTerms>
double SeriesPolynomialSum(double J, double PD, double A, int Z) {
  const SeriesPowers pj(J), pp(PD), pa(A), pz(Z);
  double sum = 0.0;
  const auto addTerms = [&]<size_t... I>(std::index_sequence<I...>) {
    ((sum += kTerms[I].c * pz.p[kTerms[I].v] * pj.p[kTerms[I].s] * pp.p[kTerms[I].t] * pa.p[kTerms[I].u]),
     ...);
  };
  addTerms(std::make_index_sequence<std::size(kTerms)>{});
  return sum;
}
template <const auto& kTerms>
bool SumSeriesPolynomial(double& K, double J, double PD, double A, int Z) {
  return FinishSeriesSum(K, SeriesPolynomialSum<kTerms>(J, PD, A, Z));
}

// The k-th derivative of x^e as SeriesPowers::Derivative gives it, for exponents known when
// the program is compiled.
template <int e, int k>
double SeriesDerivativeOf(const SeriesPowers& p) {
  if constexpr (k > e) {
    return 0.0;
  } else {
    double f = p.p[e - k];
    for (int i = 0; i < k; ++i) f *= e - i;
    return f;
  }
}

// The bare sum with its derivatives (`k` is overwritten) for a table known when the program is
// compiled: every entry of `k` gets the products the general sum adds to it, in the table's
// order, made of the same factors in the same order; the products with a derivative that is
// exactly 0 (an exponent below the order) are left out, which changes nothing (adding a zero
// product to the running sum keeps it) as long as the sum itself is finite.
template <const auto& kTerms>
double SeriesPolynomialSum(double J, double PD, double A, int Z, DerivativeArray& k) {
  const SeriesPowers pj(J), pp(PD), pa(A), pz(Z);
  double sum = 0.0;
  k.fill(0.0);
  const auto addTerm = [&]<size_t I>() {
    constexpr SeriesTerm a = kTerms[I];
    const double cz = a.c * pz.p[a.v];
    const double j0 = SeriesDerivativeOf<a.s, 0>(pj), p0 = SeriesDerivativeOf<a.t, 0>(pp),
                 e0 = SeriesDerivativeOf<a.u, 0>(pa);
    const double c0 = cz * j0;
    const double c00 = c0 * p0;
    sum += c00 * e0;
    if constexpr (a.s >= 1) {
      const double c1 = cz * SeriesDerivativeOf<a.s, 1>(pj);
      const double c10 = c1 * p0;
      k[0] += c10 * e0;                                                          // d/dJ
      if constexpr (a.u >= 1) k[7] += c10 * SeriesDerivativeOf<a.u, 1>(pa);      // d2/dJdEAR
      if constexpr (a.t >= 1) k[6] += c1 * SeriesDerivativeOf<a.t, 1>(pp) * e0;  // d2/dJdPD
    }
    if constexpr (a.t >= 1) {
      const double c01 = c0 * SeriesDerivativeOf<a.t, 1>(pp);
      k[1] += c01 * e0;                                                      // d/dPD
      if constexpr (a.u >= 1) k[8] += c01 * SeriesDerivativeOf<a.u, 1>(pa);  // d2/dPDdEAR
    }
    if constexpr (a.u >= 1) k[2] += c00 * SeriesDerivativeOf<a.u, 1>(pa);           // d/dEAR
    if constexpr (a.s >= 2) k[3] += cz * SeriesDerivativeOf<a.s, 2>(pj) * p0 * e0;  // d2/dJ2
    if constexpr (a.t >= 2) k[4] += c0 * SeriesDerivativeOf<a.t, 2>(pp) * e0;       // d2/dPD2
    if constexpr (a.u >= 2) k[5] += c00 * SeriesDerivativeOf<a.u, 2>(pa);           // d2/dEAR2
  };
  [&]<size_t... I>(std::index_sequence<I...>) { (addTerm.template operator()<I>(), ...); }
  (std::make_index_sequence<std::size(kTerms)>{});
  return sum;
}

// The terms of a series table as published in CSV: a header naming the columns C, s, t, u
// and, where Z enters, v (0 when the column is absent), then one term per line. A malformed
// table (a missing column, an exponent that is no whole number from 0 to kMaxSeriesPower) is a
// fault of the program and throws std::logic_error.
std::vector<SeriesTerm> ParseSeriesTerms(std::string_view csv);

}  // namespace velmar
