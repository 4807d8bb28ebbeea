// RoundToSigDigits takes its powers of ten from a table instead of std::pow. Every stored
// number of a project passes through it, so the table must not change a single bit: this test
// compares it with the rounding as it was written with std::pow, over many values. The
// format text does not depend on the table and is tested with the units.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "core/helpers.h"

namespace velmar {
namespace {

// The rounding with std::pow, as it stood before the table. (10^0 is exactly 1, so the case
// digits == e needs no branch of its own.)
double RoundWithPow(double value, int digits) {
  if (value == 0.0 || digits < 1) return 0.0;
  const double a = std::fabs(value);
  const int e = static_cast<int>(std::floor(Log10(a))) + 1;
  auto roundUp = [](double x) {
    double r = std::floor(x);
    if (std::floor(x + 0.5) > r) r += 1.0;
    return r;
  };
  const double r = digits > e ? roundUp(a * std::pow(10.0, digits - e)) / std::pow(10.0, digits - e)
                              : roundUp(a / std::pow(10.0, e - digits)) * std::pow(10.0, e - digits);
  return value < 0.0 ? -r : r;
}

TEST(RoundToSigDigitsTest, PowersOfTenTableGivesBitIdenticalResults) {
  std::mt19937_64 rng(20240611);
  std::uniform_real_distribution<double> mantissa(1.0, 10.0);
  // Mantissas where the rounding is delicate: exact halves, nines that carry, the ends.
  const std::vector<double> special = {1.0,          1.5,           2.5,  4.999999999,  5.0000000005,
                                       9.9999999995, 9.99999999999, 1.25, 1.0000000001, 3.14159265358979};
  long compared = 0, mismatches = 0;
  // Exponents past both ends of the table, so that every entry and the fallback are used;
  // fresh random mantissas for each.
  for (int exponent = -80; exponent <= 80; ++exponent) {
    for (size_t i = 0; i < special.size() + 40; ++i) {
      const double m = i < special.size() ? special[i] : mantissa(rng);
      for (double v : {m * std::pow(10.0, exponent), -m * std::pow(10.0, exponent)}) {
        for (int digits = 1; digits <= 17; ++digits) {
          const double got = RoundToSigDigits(v, digits), want = RoundWithPow(v, digits);
          ++compared;
          if (std::bit_cast<std::uint64_t>(got) != std::bit_cast<std::uint64_t>(want) && ++mismatches <= 5)
            ADD_FAILURE() << v << " to " << digits << ": " << got << " vs " << want;
        }
      }
    }
  }
  EXPECT_EQ(mismatches, 0);
  EXPECT_GT(compared, 250000);
}

}  // namespace
}  // namespace velmar
