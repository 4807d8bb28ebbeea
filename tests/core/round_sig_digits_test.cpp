// RoundToSigDigits finds the decimal exponent from the binary one instead of a logarithm.
// Every stored number of a project passes through it, so it must not change a single bit: this
// test compares it, result and format text, with the rounding as it was written with Log10 and
// std::pow, over millions of values across the whole double range.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/helpers.h"

namespace velmar {
namespace {

// The rounding with the logarithm and std::pow, as it stood before.
double RoundWithLog(double value, int digits, std::string* formatOut) {
  if (formatOut) formatOut->clear();
  if (value == 0.0 || digits < 1) return 0.0;
  if (!std::isfinite(value)) return value;
  const double a = std::fabs(value);
  const int e = static_cast<int>(std::floor(Log10(a))) + 1;
  auto roundUp = [](double x) {
    double r = std::floor(x);
    if (std::floor(x + 0.5) > r) r += 1.0;
    return r;
  };
  const std::string pattern = "#########0.0000000000";
  double r;
  if (digits > e && digits - e > 300) {
    const double s1 = std::pow(10.0, digits - e - 300), s2 = std::pow(10.0, 300);
    r = roundUp(a * s1 * s2) / s2 / s1;
    if (formatOut) *formatOut = pattern;
  } else if (digits > e) {
    r = roundUp(a * std::pow(10.0, digits - e)) / std::pow(10.0, digits - e);
    if (formatOut) *formatOut = pattern.substr(0, static_cast<size_t>(std::clamp(digits + 11 - e, 0, 21)));
  } else {
    r = roundUp(a / std::pow(10.0, e - digits)) * std::pow(10.0, e - digits);
    if (formatOut) *formatOut = "#########0";
  }
  if (!std::isfinite(r)) r = a;
  return value < 0.0 ? -r : r;
}

TEST(RoundToSigDigitsTest, BitIdenticalToTheLogarithmForm) {
  using L = std::numeric_limits<double>;
  std::mt19937_64 rng(20261123);
  // (value, with format text) pairs; the random bit patterns skip the format for speed.
  std::vector<double> values;
  // Around every power of ten the double range holds: the power as std::pow gives it, its
  // neighbours a few units away, and relative offsets inside and just outside the band where
  // the logarithm decides.
  for (int k = -324; k <= 308; ++k) {
    const double p = std::pow(10.0, k);
    if (p == 0.0 || !std::isfinite(p)) continue;
    double up = p, down = p;
    for (int u = 0; u < 6; ++u) {
      values.push_back(up);
      values.push_back(down);
      up = std::nextafter(up, L::infinity());
      down = std::nextafter(down, 0.0);
    }
    for (double rel : {1e-13, 1e-11, 9.9e-11, 1e-10, 1.01e-10, 1e-9, 1e-6})
      for (double s : {1.0 + rel, 1.0 - rel}) values.push_back(p * s);
  }
  // Ties: integers of up to 17 digits ending in 5 (and in 49999..., 50000...1), scaled by
  // every power of ten in reach.
  std::uniform_int_distribution<std::int64_t> head(1, 9999999999999999);
  for (int i = 0; i < 4000; ++i) {
    const double tie = static_cast<double>(head(rng) % 10000000000000 * 10 + 5);
    const int k = static_cast<int>(head(rng) % 600) - 310;
    for (double m : {tie, tie - 1e-3, tie + 1e-3}) values.push_back(m * std::pow(10.0, k));
  }
  // The ends of the range and the subnormals.
  for (double v : {L::max(), L::min(), L::denorm_min(), 4.9e-324, 2.2e-308, 1e-300, 1e-290, 1.7e308, 1e290,
                   0.1, 0.5, 0.95, 9.5, 99.5, 2.675, 1.005, 123456.5})
    values.push_back(v);
  std::uniform_int_distribution<std::uint64_t> subnormal(1, 0x000FFFFFFFFFFFFFull);
  for (int i = 0; i < 20000; ++i) values.push_back(std::bit_cast<double>(subnormal(rng)));

  const std::vector<int> digitCounts = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 40, 400};
  long compared = 0, mismatches = 0;
  auto compare = [&](double v, int digits, bool withFormat) {
    std::string gotFormat, wantFormat;
    const double got = RoundToSigDigits(v, digits, withFormat ? &gotFormat : nullptr);
    const double want = RoundWithLog(v, digits, withFormat ? &wantFormat : nullptr);
    ++compared;
    if ((std::bit_cast<std::uint64_t>(got) != std::bit_cast<std::uint64_t>(want) || gotFormat != wantFormat) &&
        ++mismatches <= 5)
      ADD_FAILURE() << std::hexfloat << v << " to " << digits << ": " << got << " \"" << gotFormat << "\" vs "
                    << want << " \"" << wantFormat << "\"";
  };
  for (double v : values)
    for (int digits : digitCounts)
      for (double s : {v, -v}) compare(s, digits, true);
  // Random bit patterns over every finite double, each with a digit count of the list.
  std::uniform_int_distribution<std::uint64_t> bits(0, 0xFFEFFFFFFFFFFFFFull);
  for (int i = 0; i < 4000000; ++i) {
    const double v = std::bit_cast<double>(bits(rng));
    if (std::isfinite(v)) compare(v, digitCounts[static_cast<size_t>(i) % digitCounts.size()], false);
  }
  EXPECT_EQ(mismatches, 0);
  EXPECT_GT(compared, 5000000);
}

}  // namespace
}  // namespace velmar
