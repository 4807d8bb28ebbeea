// Table lookup by straight lines or by a natural cubic spline, set up once per table by
// CurveFitTable; beyond the table the spline continues with the slope of its end.
#include "core/curve_fit.h"

#include <algorithm>

#include "core/helpers.h"

namespace velmar {

double Interpolate2Point(double x1, double y1, double x2, double y2, double x) {
  if (x1 == x2) return y1;
  return y1 + (x - x1) * (y2 - y1) / (x2 - x1);
}

namespace {

// Linear lookup in a table of either order: an exact x takes its own y, an x before the
// first point or past the last extrapolates through the two end points.
double LinearLookup(int n, const std::vector<double>& xs, const std::vector<double>& ys, double x) {
  for (int i = 0; i < n; ++i)
    if (xs[i] == x) return ys[i];
  const bool ascending = xs[0] <= xs[n - 1];
  auto before = [ascending](double a, double b) { return ascending ? a < b : a > b; };
  if (before(x, xs[0])) return Interpolate2Point(xs[0], ys[0], xs[1], ys[1], x);
  if (before(xs[n - 1], x)) return Interpolate2Point(xs[n - 2], ys[n - 2], xs[n - 1], ys[n - 1], x);
  for (int i = 0; i + 1 < n; ++i)
    if (!before(x, xs[i]) && !before(xs[i + 1], x))
      return Interpolate2Point(xs[i], ys[i], xs[i + 1], ys[i + 1], x);
  return ys[n - 1];
}

// Second derivatives d of the natural cubic spline (d = 0 at both ends) by the tridiagonal
// decomposition of Press, Teukolsky, Vetterling & Flannery, Numerical Recipes (2nd ed., 1992),
// sec. 3.3, eq. 3.3.7. False when two x coincide or a pivot vanishes.
bool SplineSetUp(const std::vector<double>& x, const std::vector<double>& y, std::vector<double>& d) {
  const int n = static_cast<int>(x.size());
  d.assign(n, 0.0);
  std::vector<double> u(n, 0.0);
  for (int i = 1; i <= n - 2; ++i) {
    const double h0 = x[i + 1] - x[i - 1], h1 = x[i] - x[i - 1], h2 = x[i + 1] - x[i];
    if (h0 == 0.0 || h1 == 0.0 || h2 == 0.0) return false;
    const double sig = h1 / h0;
    const double p = sig * d[i - 1] + 2.0;
    if (p == 0.0) return false;
    d[i] = (sig - 1.0) / p;
    u[i] = (y[i + 1] - y[i]) / h2 - (y[i] - y[i - 1]) / h1;
    u[i] = (6.0 * u[i] / h0 - sig * u[i - 1]) / p;
  }
  d[n - 1] = 0.0;
  for (int k = n - 2; k >= 0; --k) d[k] = d[k] * d[k + 1] + u[k];
  return true;
}

// Spline value (Numerical Recipes eq. 3.3.3) on an ascending table with distinct x. Outside
// the table the line continues the end slope: eq. 3.3.5 at the end, where the natural end
// condition makes the end's own d vanish.
double SplineEval(const std::vector<double>& x, const std::vector<double>& y, const std::vector<double>& d,
                  double arg) {
  const int n = static_cast<int>(x.size());
  int lo = 0, hi = n - 1;
  if (arg < x[0]) {
    hi = 1;
  } else if (arg > x[n - 1]) {
    lo = n - 2;
  } else {
    while (hi - lo > 1) {
      const int k = (hi + lo) / 2;
      if (x[k] > arg)
        hi = k;
      else
        lo = k;
    }
  }
  const double h = x[hi] - x[lo];
  const double a = (x[hi] - arg) / h, b = (arg - x[lo]) / h;
  if (a > 1.0) {
    const double s = (y[hi] - y[lo]) / h + (2.0 * d[lo] - d[hi]) * h / 6.0;
    return y[lo] - (a - 1.0) * s * h;
  }
  if (b > 1.0) {
    const double s = (y[hi] - y[lo]) / h + (d[lo] - 2.0 * d[hi]) * h / 6.0;
    return (b - 1.0) * s * h + y[hi];
  }
  return a * y[lo] + b * y[hi] + ((a * a * a - a) * d[lo] + (b * b * b - b) * d[hi]) * h * h / 6.0;
}

}  // namespace

bool CurveFitTable::Prepare(int method, int count, const std::vector<double>& xs,
                            const std::vector<double>& ys, std::string& location, std::string& cause) {
  method_ = method;
  n_ = std::max(0, std::min({count, static_cast<int>(xs.size()), static_cast<int>(ys.size())}));
  xs_.assign(xs.begin(), xs.begin() + n_);
  ys_.assign(ys.begin(), ys.begin() + n_);
  d_.clear();
  if (n_ < 3) return true;
  SortPairs(n_, xs_, ys_);
  if (method_ != 1) return true;
  if (!SplineSetUp(xs_, ys_, d_)) {
    location = "Setting up cubic splines";
    cause = "Cubic spline coefs";
    return false;
  }
  return true;
}

double CurveFitTable::At(double x) const {
  if (n_ < 1) return 0.0;
  if (n_ == 1) return ys_[0];
  if (n_ == 2) return Interpolate2Point(xs_[0], ys_[0], xs_[1], ys_[1], x);
  if (method_ != 1) return LinearLookup(n_, xs_, ys_, x);
  return SplineEval(xs_, ys_, d_, x);
}

bool CurveFit(int method, double& y, int count, const std::vector<double>& xs, const std::vector<double>& ys,
              double x, std::string& location, std::string& cause) {
  CurveFitTable table;
  if (!table.Prepare(method, count, xs, ys, location, cause)) {
    y = 0.0;
    return false;
  }
  y = table.At(x);
  return true;
}

}  // namespace velmar
