// RoundToSigDigits takes its powers of ten from a table instead of std::pow. Every stored
// number of a project passes through it, so the table must not change a single bit: this test
// compares it with the rounding as it was written with std::pow, over many values.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "core/helpers.h"

namespace velmar {
namespace {

// The rounding with std::pow, as it stood before the table.
double RoundWithPow(double value, int digits, std::string* formatOut) {
  if (value == 0.0 || digits < 1) {
    if (formatOut) formatOut->clear();
    return 0.0;
  }
  const double sign = value < 0.0 ? -1.0 : 1.0;
  double a = std::fabs(value);
  const int e = static_cast<int>(std::floor(Log10(a))) + 1;
  auto roundUp = [](double x) {
    double r = std::floor(x);
    if (std::floor(x + 0.5) > r) r += 1.0;
    return r;
  };
  static const std::string kPattern = "#########0.0000000000";
  double r;
  if (digits > e) {
    const double s = std::pow(10.0, digits - e);
    r = roundUp(a * s) / s;
    if (formatOut) {
      const int len = std::clamp(digits + 11 - e, 0, static_cast<int>(kPattern.size()));
      *formatOut = kPattern.substr(0, static_cast<size_t>(len));
    }
  } else if (digits == e) {
    r = roundUp(a);
    if (formatOut) *formatOut = "#########0";
  } else {
    const double s = std::pow(10.0, e - digits);
    r = roundUp(a / s) * s;
    if (formatOut) *formatOut = "#########0";
  }
  return sign * r;
}

TEST(RoundToSigDigitsTest, PowersOfTenTableGivesBitIdenticalResults) {
  std::mt19937_64 rng(20240611);
  std::uniform_real_distribution<double> mantissa(1.0, 10.0);
  // Mantissas where the rounding is delicate: exact halves, nines that carry, the ends.
  const std::vector<double> special = {1.0,          1.5,           2.5,  4.999999999,  5.0000000005,
                                       9.9999999995, 9.99999999999, 1.25, 1.0000000001, 3.14159265358979};
  long compared = 0, mismatches = 0;
  // Exponents past both ends of the table, so that every entry and the fallback are used.
  for (int exponent = -80; exponent <= 80; ++exponent) {
    std::vector<double> values;
    for (double m : special) values.push_back(m * std::pow(10.0, exponent));
    for (int i = 0; i < 40; ++i) values.push_back(mantissa(rng) * std::pow(10.0, exponent));
    for (double v : values) {
      for (double signed_v : {v, -v}) {
        for (int digits = 1; digits <= 17; ++digits) {
          std::string f1, f2;
          const double got = RoundToSigDigits(signed_v, digits, &f1);
          const double want = RoundWithPow(signed_v, digits, &f2);
          ++compared;
          if (std::bit_cast<std::uint64_t>(got) != std::bit_cast<std::uint64_t>(want) || f1 != f2) {
            if (++mismatches <= 5)
              ADD_FAILURE() << signed_v << " to " << digits << ": " << got << " vs " << want;
          }
        }
      }
    }
  }
  EXPECT_EQ(mismatches, 0);
  EXPECT_GT(compared, 250000);
}

}  // namespace
}  // namespace velmar
