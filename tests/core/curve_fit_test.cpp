// Table lookup (linear and natural cubic spline) and the plane spline with straight sections.
#include "core/curve_fit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/constants.h"
#include "core/spline_fit.h"

namespace velmar {
namespace {

double Fit(int method, int count, const std::vector<double>& xs, const std::vector<double>& ys, double x) {
  double y = -1.0;
  std::string location, cause;
  EXPECT_TRUE(CurveFit(method, y, count, xs, ys, x, location, cause));
  return y;
}

TEST(CurveFit, ShortTablesLinearLookupNaturalSplineAndItsFailure) {
  struct Case {
    const char* name;
    int method, count;
    std::vector<double> xs, ys;
    double x, expected;
  };
  const std::vector<Case> cases = {
      {"count 0 gives 0", 0, 0, {1, 2}, {5, 6}, 3.0, 0.0},
      {"count 1 gives its y anywhere", 1, 1, {1}, {7}, -40.0, 7.0},
      {"count cut to the table length of 2: the spline is a line", 1, 9, {0, 2}, {1, 5}, 3.0, 7.0},
      // Unsorted input: (0,0) (1,2) (3,3) after sorting.
      {"below the table through the first two", 0, 3, {3, 0, 1}, {3, 0, 2}, -1.0, -2.0},
      {"above the table through the last two", 0, 3, {3, 0, 1}, {3, 0, 2}, 5.0, 4.0},
      {"repeated x is fine for the linear lookup", 0, 4, {0, 1, 1, 2}, {0, 1, 1, 3}, 1.5, 2.0},
      // (0,0) (1,1) (2,0), unsorted: the natural spline has y''(1) = -3 (hand solution of the one
      // interior equation), hence y(0.5) = 0.5 + 3 * 0.375 / 6 = 0.6875 and end slopes +-1.5,
      // which the straight continuation past the table keeps.
      {"spline inside", 1, 3, {2, 0, 1}, {0, 0, 1}, 0.5, 0.6875},
      {"spline below, end slope 1.5", 1, 3, {2, 0, 1}, {0, 0, 1}, -1.0, -1.5},
      {"spline above, end slope -1.5", 1, 3, {2, 0, 1}, {0, 0, 1}, 3.0, -1.5},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(Fit(c.method, c.count, c.xs, c.ys, c.x), c.expected) << c.name;
  // A repeated x fails the spline.
  double y = 5.0;
  std::string location, cause;
  EXPECT_FALSE(CurveFit(1, y, 4, {0, 1, 1, 2}, {0, 1, 2, 3}, 0.5, location, cause));
  EXPECT_EQ(location + " / " + cause, "Setting up cubic splines / Cubic spline coefs");
}

TEST(CurveFit, NaturalSplineOfSine) {
  // sin has zero curvature at 0 and pi, so the natural end conditions are exact there and the
  // spline error is the interior O(h^4) term: 5/384 h^4 max|f''''| = 3.1e-4 for h = pi/8
  // (de Boor 1978, ch. IV). Halfway points are where the error peaks.
  std::vector<double> xs, ys;
  for (int i = 0; i <= 8; ++i) xs.push_back(i * Pi / 8), ys.push_back(std::sin(i * Pi / 8));
  for (double x = Pi / 16; x < Pi; x += Pi / 8) EXPECT_NEAR(Fit(1, 9, xs, ys, x), std::sin(x), 3.1e-4) << x;
}

clsVXSplineFit MakeSpline(const std::vector<double>& xs, const std::vector<double>& ys, double sx = kFreeEnd,
                          double sy = kFreeEnd, double ex = kFreeEnd, double ey = kFreeEnd) {
  clsVXSplineFit s;
  s.count(static_cast<int>(xs.size()));
  for (int i = 0; i < s.count(); ++i) s.x(i, xs[i]), s.y(i, ys[i]);
  s.MakeControlWithLinearSections(sx, sy, ex, ey, 2);
  return s;
}

// Cross product of the control steps into and out of control entry k: 0 when they line up.
double Kink(const clsVXSplineFit& s, int k) {
  const double ax = s.ControlX(k) - s.ControlX(k - 1), ay = s.ControlY(k) - s.ControlY(k - 1);
  const double bx = s.ControlX(k + 1) - s.ControlX(k), by = s.ControlY(k + 1) - s.ControlY(k);
  return ax * by - ay * bx;
}

TEST(SplineFit, ReproducesPointsEitherOrderAndMarksOutside) {
  // y = x^2 sampled in descending x, with a repeated point that the build removes.
  const auto s = MakeSpline({3, 2, 2, 1, 0, -1}, {9, 4, 4, 1, 0, 1});
  EXPECT_EQ(s.count(), 5);
  double y = 0;
  for (double x : {3.0, 2.0, -1.0, 0.5, 3.5, -1.01}) {
    const bool inside = x >= -1.0 && x <= 3.0;
    EXPECT_EQ(s.EvalAtX(x, y), inside) << x;
    EXPECT_NEAR(y, inside ? x * x : kFreeEnd, x == 0.5 ? 0.05 : 0.0) << x;  // the points exactly
  }
}

TEST(SplineFit, CurvedStretchIsTwiceDifferentiable) {
  const std::vector<double> xs = {0, 1, 2.5, 3, 5}, ys = {0, 2, 1.5, 3, 2};
  const auto s = MakeSpline(xs, ys);
  // Chord parameter steps, scaled by the extents 5 and 3.
  auto h = [&](int i) { return std::hypot((xs[i + 1] - xs[i]) / 5, (ys[i + 1] - ys[i]) / 3); };
  for (bool useY : {false, true}) {
    auto c = [&](int j) { return useY ? s.ControlY(j) : s.ControlX(j); };
    EXPECT_NEAR(c(0) - 2 * c(1) + c(2), 0.0, 1e-12);  // free ends are natural: no curvature
    for (int i = 1, k = 3; i + 1 < static_cast<int>(xs.size()); ++i, k += 3) {
      EXPECT_NEAR(Kink(s, k), 0.0, 1e-12) << i;
      // Second derivative of the Bezier at the end of span i-1 and the start of span i.
      const double left = 6 * (c(k) - 2 * c(k - 1) + c(k - 2)) / (h(i - 1) * h(i - 1));
      const double right = 6 * (c(k + 2) - 2 * c(k + 1) + c(k)) / (h(i) * h(i));
      EXPECT_NEAR(left, right, 1e-9 * (1 + std::fabs(left))) << i << (useY ? " y" : " x");
    }
  }
}

TEST(SplineFit, StraightSectionStaysStraightAndJoinsSmoothly) {
  // Points 2..5 lie on y = 0.5 x + 1; curves before and after.
  const auto s = MakeSpline({0, 1, 2, 3, 4, 5, 6, 7}, {0, 1.2, 2, 2.5, 3, 3.5, 3.7, 3.6});
  double y = 0;
  for (double x = 2.0; x <= 5.0; x += 0.125)
    EXPECT_TRUE(s.EvalAtX(x, y) && std::fabs(y - (0.5 * x + 1)) < 1e-12) << x;
  for (int k : {6, 15}) {
    EXPECT_NEAR(Kink(s, k), 0.0, 1e-12) << k;
    EXPECT_GT(s.ControlX(k + 1) - s.ControlX(k - 1), 0.0) << k;  // no cusp
  }
  EXPECT_TRUE(s.EvalAtX(1.5, y) && std::fabs(y - 1.75) > 1e-3);  // the curve does bend before the section

  // A run's direction is measured from its first span. Span directions 0, 6e-5 and 1.2e-4
  // rad: the first two form a section, the third is 1.2e-4 off the run's first direction and
  // leaves it, as a curve that starts along the line.
  std::vector<double> xs = {0}, ys = {0};
  for (double a : {0.0, 6e-5, 1.2e-4})
    xs.push_back(xs.back() + std::cos(a)), ys.push_back(ys.back() + std::sin(a));
  const auto run = MakeSpline(xs, ys);
  EXPECT_DOUBLE_EQ(run.ControlY(4), ys[1] + (ys[2] - ys[1]) / 3);
  EXPECT_DOUBLE_EQ(run.ControlY(7), ys[2]);
}

TEST(SplineFit, GivenEndSlopesAndThirdsAlongStraightRuns) {
  // A horizontal start tangent on otherwise straight points: the first span bends to honour
  // it, the rest stays straight with its controls at the thirds; the end tangent is given
  // along the line.
  const auto s = MakeSpline({0, 1, 2, 3}, {0, 1, 2, 3}, 1, 0, 1, 1);
  EXPECT_DOUBLE_EQ(s.ControlY(1), 0.0);
  EXPECT_DOUBLE_EQ(s.ControlX(4), 1.0 + 1.0 / 3);
  EXPECT_DOUBLE_EQ(s.ControlY(8), 3.0 - 1.0 / 3);
  // Two points with given slopes: controls a third of the chord along each tangent.
  const auto two = MakeSpline({0, 3}, {0, 4}, 0, 1, 1, 0);
  EXPECT_DOUBLE_EQ(two.ControlY(1), 5.0 / 3);
  EXPECT_DOUBLE_EQ(two.ControlX(2), 3.0 - 5.0 / 3);
}

}  // namespace
}  // namespace velmar
