// RoundToSigDigits over the whole double range: every finite value rounds to a finite value
// within half a unit of its last kept digit (subnormals and the largest doubles included),
// (checked to ten digits, the model's own), and infinity and NaN pass unchanged; under the sanitizers no step
// is undefined.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "core/helpers.h"

namespace velmar {
namespace {

TEST(RoundToSigDigitsTest, DefinedForEveryDouble) {
  using L = std::numeric_limits<double>;
  for (double v : {L::infinity(), -L::infinity()}) EXPECT_EQ(RoundToSigDigits(v, 10), v);
  EXPECT_TRUE(std::isnan(RoundToSigDigits(L::quiet_NaN(), 10)));

  std::mt19937_64 rng(7);
  std::uniform_int_distribution<std::uint64_t> bits(0, 0x7FEFFFFFFFFFFFFFull);  // every finite positive
  std::vector<double> values = {L::max(), L::min(), L::denorm_min(), 4.9e-324,
                                2.2e-308, 1e-300,   1e-299,          1.7e308};
  for (int i = 0; i < 200000; ++i) values.push_back(std::bit_cast<double>(bits(rng)));
  for (double v : values) {
    for (int digits : {1, 6, 10, 15}) {
      const double r = RoundToSigDigits(v, digits);
      ASSERT_TRUE(std::isfinite(r)) << v << " to " << digits;
      // Half a unit of the last kept digit, and a little more where the value is so small
      // that the double itself has fewer digits than asked.
      const double tolerance =
          std::max(0.5 * std::pow(10.0, 1 - digits) * v * 1.0000001, 2 * L::denorm_min());
      if (digits <= 10 && v < L::max() / 10) {
        ASSERT_NEAR(r, v, tolerance) << v << " to " << digits;
      }
      ASSERT_EQ(RoundToSigDigits(-v, digits), -r);
    }
  }
}

}  // namespace
}  // namespace velmar
