#include "resistance/friction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "../core/test_support.h"
#include "resistance/ittc78.h"

namespace velmar {
namespace {

constexpr double kMToFt = 1.0 / 0.3048;
constexpr double kNuFresh15 = 1.13902e-6;  // m2/s, fresh water at 15 degC

// The check values of tests/data/friction_lines.txt, each line named by its file key.
TEST(FrictionLineTest, MatchesTheCheckValuesOfEachLine) {
  const std::vector<std::string>& keys = kHullFrictionLineLabels.keys;
  for (const auto& row : testing::ReadTable("friction_lines.txt", 4)) {
    const int line = static_cast<int>(std::find(keys.begin(), keys.end(), row[0]) - keys.begin());
    EXPECT_NEAR(CalcFrictionLine(row.Num(2), line, 0.0, 0.0, row.Num(1)), row.Num(3), 6e-8) << row.where;
  }
}

// The Grigson modifier is continuous across the unpublished gap 2e7 < Rn < 1e8 where it is
// interpolated.
TEST(FrictionLineTest, GrigsonBridgesTheGapBetweenItsRanges) {
  auto ratio = [](double rn) {
    return CalcFrictionLine(rn, kFrictionGrigson, 0, 0, 0) / CalcFrictionITTC57(rn);
  };
  for (double rn : {2e7, 1e8}) {
    EXPECT_NEAR(ratio(rn * (1 - 1e-9)), ratio(rn * (1 + 1e-9)), 1e-8) << rn;
  }
  const double mid = ratio(std::sqrt(2e7 * 1e8));
  EXPECT_GT(mid, ratio(2e7));
  EXPECT_LT(mid, ratio(1e8));
}

// Froude's friction depends on length and speed, not on Rn: fresh water at 15 degC with
// L = 2, 5 and 150 m at the speeds of Rn 1e6, 1e7 and 1e9 (literature check values, metric
// closed form with rho 999.1; the basin density here is 999.0, 0.01 % apart).
TEST(FrictionLineTest, FroudeUsesLengthAndSpeed) {
  struct Row {
    double rn, lengthM, cf;
  } const rows[] = {{1e6, 2.0, 0.0042098}, {1e7, 5.0, 0.0029369}, {1e9, 150.0, 0.0019397}};
  for (const Row& r : rows) {
    const double v = r.rn * kNuFresh15 / r.lengthM;
    EXPECT_NEAR(CalcFrictionLine(r.rn, kFrictionFroude, r.lengthM * kMToFt, v * kMToFt, 0), r.cf, r.cf * 2e-4)
        << r.lengthM;
    // Rn alone gives nothing.
    EXPECT_EQ(CalcFrictionLine(r.rn, kFrictionFroude, 0.0, 0.0, 0.0), 0.0);
  }
  // Against R.E. Froude's own table (Tupper, Table 8.4): f = 0.009207 lbf/(ft2 kn^1.825) in
  // salt water at L = 100 ft, 0.975 of it in fresh water (62.4 lbf/ft3), at 10 kn.
  const double vFtS = 10.0 * 6076.12 / 3600.0;
  const double cfTable = 0.975 * 0.009207 * std::pow(10.0, 1.825) / (0.5 * (62.4 / 32.174) * vFtS * vFtS);
  EXPECT_NEAR(CalcFrictionLine(0.0, kFrictionFroude, 100.0, vFtS, 0.0), cfTable, cfTable * 0.006);
}

TEST(FrictionLineTest, SchoenherrAndITTC57MeetNearShipScale) {
  // The two lines cross close to Rn 1e9 (within 0.05 %).
  const double s = CalcFrictionLine(1e9, kFrictionSchoenherr, 0, 0, 0);
  EXPECT_NEAR(s / CalcFrictionITTC57(1e9), 1.0, 5e-4);
  // The root satisfies the implicit equation over the whole practical range.
  for (double rn : {1e4, 3e5, 1e8, 1e10, 1e12}) {
    const double cf = CalcFrictionLine(rn, kFrictionSchoenherr, 0, 0, 0);
    EXPECT_NEAR(0.242 / std::sqrt(cf), std::log10(rn * cf), 1e-10) << rn;
  }
}

TEST(FrictionLineTest, LinesGiveZeroWhereTheyCannotBeEvaluated) {
  for (const auto& r : testing::ReadTable("friction_lines_zero.txt", 5))
    EXPECT_EQ(CalcFrictionLine(r.Num(1), static_cast<int>(r.Num(0)), r.Num(2), r.Num(3), r.Num(4)), 0.0)
        << r.where;
  // ITTC-57 through the line selector, and its reference point.
  EXPECT_DOUBLE_EQ(CalcFrictionITTC57(1.0e7), 0.075 / 25.0);
  EXPECT_EQ(CalcFrictionLine(1.0e7, kFrictionITTC57, 0, 0, 0), CalcFrictionITTC57(1.0e7));
  // Below the pole the ITTC-57 expression is still evaluated (only 100 exactly is refused).
  EXPECT_GT(CalcFrictionITTC57(99.0), 0.0);
}

TEST(FormFactorMultiplierTest, FollowsTheSpeedBands) {
  const double m01 =
      1.0 / (1.073 + 101.6 * std::pow(0.1, 4.6)) + 0.0377 * (1.0 + std::cos(18.84 * std::cbrt(0.1) - 11.78));
  struct Row {
    double fn;
    int enabled;
    double m;
  } const rows[] = {
      {0.3, 0, 1.0},
      {0.3, 2, 1.0},
      {0.09, 1, 0.93},
      {0.0, 1, 0.93},
      {0.1, 1, m01},
      // No cosine term from Fn 0.5 on.
      {0.5, 1, 1.0 / (1.073 + 101.6 * std::pow(0.5, 4.6))},
  };
  for (const Row& r : rows) EXPECT_DOUBLE_EQ(CalcFormFactorKMultiplier(r.fn, r.enabled), r.m) << r.fn;
  // The band edges are nearly seamless: 0.93 meets the formula at Fn 0.1 within 0.1 %.
  EXPECT_NEAR(m01, 0.93, 1e-3);
  // At Fn 0.5 the cosine term has nearly vanished (18.84 x 0.5^(1/3) - 11.78 is close to pi),
  // so dropping it there leaves a step of only 2e-5.
  EXPECT_NEAR(CalcFormFactorKMultiplier(0.5 - 1e-12, 1), CalcFormFactorKMultiplier(0.5, 1), 5e-5);
}

}  // namespace
}  // namespace velmar
