// Bezier control polygon through plane points with straight sections, and its evaluation
// at a given x. Each span i is the cubic Bezier of control entries 3i .. 3i+3.
//
// Choices made here where the behaviour was open:
// - An end is free when both slope values are kFreeEnd or the slope vector is zero.
// - A given end slope takes part in finding straight sections: a run that touches the first
//   (last) point loses its first (last) span unless that span also runs, within the angle
//   tolerance, in the given start (end) direction, so the caller's end tangent is kept.
//   With the control steps of a section at thirds of each span, this is the same test as
//   asking the end span's control step to be a third of the span.
// - Angles are compared modulo 2 pi, so directions either side of -pi/+pi agree.
// - Two straight sections that meet at a point form a corner (no curve between them).
// - A given tangent in a stretch of three or more points is made unit length in the
//   extent-scaled frame of the chord-length parameter and scaled back, so its length matches
//   the parameter.
// - The C2 tangents use the parameter steps themselves (non-uniform spline); with equal steps
//   the system is the 1-4-1 system with end rows 2-1.
// - `mode` is not used; every value builds the same polygon.
#include "core/spline_fit.h"

#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "core/helpers.h"

namespace velmar {

namespace {

constexpr double kAngleTol = 0.0001;  // radian: spans closer than this are one direction

double AngleDiff(double a, double b) { return std::fabs(std::remainder(a - b, 2.0 * Pi)); }

bool IsFree(double sx, double sy) { return (sx == kFreeEnd && sy == kFreeEnd) || (sx == 0.0 && sy == 0.0); }

// Cubic Bezier in Bernstein form and its derivative (Farin, Curves and Surfaces for CAGD,
// 5th ed. 2002, eqs. 4.8 and 5.3).
double Bezier(double c0, double c1, double c2, double c3, double t) {
  const double s = 1.0 - t;
  return s * s * s * c0 + 3.0 * s * s * t * c1 + 3.0 * s * t * t * c2 + t * t * t * c3;
}
double BezierSlope(double c0, double c1, double c2, double c3, double t) {
  const double s = 1.0 - t;
  return 3.0 * (s * s * (c1 - c0) + 2.0 * s * t * (c2 - c1) + t * t * (c3 - c2));
}

}  // namespace

void clsVXSplineFit::count(int n) {
  n = std::max(n, 0);
  points_.resize(n);
  control_.assign(n > 0 ? 3 * (n - 1) + 1 : 0, Pt{});
}

double clsVXSplineFit::x(int i) const { return i >= 0 && i < count() ? points_[i].x : 0.0; }
void clsVXSplineFit::x(int i, double v) {
  if (i >= 0 && i < count()) points_[i].x = v;
}
double clsVXSplineFit::y(int i) const { return i >= 0 && i < count() ? points_[i].y : 0.0; }
void clsVXSplineFit::y(int i, double v) {
  if (i >= 0 && i < count()) points_[i].y = v;
}
double clsVXSplineFit::ControlX(int k) const { return k >= 0 && k < ControlCount() ? control_[k].x : 0.0; }
double clsVXSplineFit::ControlY(int k) const { return k >= 0 && k < ControlCount() ? control_[k].y : 0.0; }

// One curved stretch, points first..last, as a C2 cubic spline in Bezier form.
// Parameter: accumulated chord length with x and y scaled by the stretch's extents (Farin
// 2002, sec. 9.6). Tangents s_i = dP/dt solve the slope form of the interpolating cubic
// spline (de Boor, A Practical Guide to Splines, 1978, ch. IV, eq. 8):
//   h_i s_{i-1} + 2 (h_{i-1} + h_i) s_i + h_{i-1} s_{i+1} = 3 (h_i D_{i-1} + h_{i-1} D_i),
// D_i = (P_{i+1} - P_i) / h_i, with the natural end rows 2 s_0 + s_1 = 3 D_0 and
// s_{n-2} + 2 s_{n-1} = 3 D_{n-2}, or s = the given tangent at a fixed end. The Bezier form
// of each Hermite segment puts the inner controls at P_i + h_i s_i / 3 and
// P_{i+1} - h_i s_{i+1} / 3 (Farin 2002, eq. 7.3).
void clsVXSplineFit::FitStretch(int first, int last, Pt startDir, bool startFree, Pt endDir, bool endFree) {
  const int n = last - first + 1;
  const Pt* p = &points_[first];
  auto put = [this](int point, int step, Pt v) { control_[ControlIndex(point) + step] = v; };
  if (n == 2) {
    const double cx = p[1].x - p[0].x, cy = p[1].y - p[0].y, chord = std::hypot(cx, cy);
    auto third = [&](Pt dir, bool isFree) {
      const double len = std::hypot(dir.x, dir.y);
      if (isFree || len == 0.0) return Pt{cx / 3.0, cy / 3.0};
      return Pt{dir.x / len * chord / 3.0, dir.y / len * chord / 3.0};
    };
    const Pt a = third(startDir, startFree), b = third(endDir, endFree);
    put(first, 0, p[0]);
    put(first, 1, {p[0].x + a.x, p[0].y + a.y});
    put(first, 2, {p[1].x - b.x, p[1].y - b.y});
    put(first, 3, p[1]);
    return;
  }
  double minX = p[0].x, maxX = p[0].x, minY = p[0].y, maxY = p[0].y;
  for (int i = 1; i < n; ++i) {
    minX = std::min(minX, p[i].x), maxX = std::max(maxX, p[i].x);
    minY = std::min(minY, p[i].y), maxY = std::max(maxY, p[i].y);
  }
  const double ex = maxX > minX ? maxX - minX : 1.0, ey = maxY > minY ? maxY - minY : 1.0;
  std::vector<double> h(n - 1);
  std::vector<Pt> dq(n - 1);
  for (int i = 0; i + 1 < n; ++i) {
    h[i] = std::hypot((p[i + 1].x - p[i].x) / ex, (p[i + 1].y - p[i].y) / ey);
    if (h[i] == 0.0) h[i] = 1.0;  // cannot happen after repeated points are removed
    dq[i] = {(p[i + 1].x - p[i].x) / h[i], (p[i + 1].y - p[i].y) / h[i]};
  }
  // A given direction as dP/dt of unit speed in the scaled frame.
  auto tangent = [ex, ey](Pt dir) {
    const double len = std::hypot(dir.x / ex, dir.y / ey);
    return len == 0.0 ? Pt{} : Pt{dir.x / len, dir.y / len};
  };
  std::vector<double> sub(n, 0.0), diag(n, 0.0), sup(n, 0.0);
  std::vector<Pt> rhs(n), s(n);
  if (startFree)
    diag[0] = 2.0, sup[0] = 1.0, rhs[0] = {3.0 * dq[0].x, 3.0 * dq[0].y};
  else
    diag[0] = 1.0, rhs[0] = tangent(startDir);
  for (int i = 1; i + 1 < n; ++i) {
    sub[i] = h[i];
    diag[i] = 2.0 * (h[i - 1] + h[i]);
    sup[i] = h[i - 1];
    rhs[i] = {3.0 * (h[i] * dq[i - 1].x + h[i - 1] * dq[i].x),
              3.0 * (h[i] * dq[i - 1].y + h[i - 1] * dq[i].y)};
  }
  if (endFree)
    sub[n - 1] = 1.0, diag[n - 1] = 2.0, rhs[n - 1] = {3.0 * dq[n - 2].x, 3.0 * dq[n - 2].y};
  else
    diag[n - 1] = 1.0, rhs[n - 1] = tangent(endDir);
  // Forward elimination and back substitution; the system is diagonally dominant.
  for (int i = 1; i < n; ++i) {
    const double m = sub[i] / diag[i - 1];
    diag[i] -= m * sup[i - 1];
    rhs[i] = {rhs[i].x - m * rhs[i - 1].x, rhs[i].y - m * rhs[i - 1].y};
  }
  s[n - 1] = {rhs[n - 1].x / diag[n - 1], rhs[n - 1].y / diag[n - 1]};
  for (int i = n - 2; i >= 0; --i)
    s[i] = {(rhs[i].x - sup[i] * s[i + 1].x) / diag[i], (rhs[i].y - sup[i] * s[i + 1].y) / diag[i]};
  for (int i = 0; i + 1 < n; ++i) {
    put(first + i, 0, p[i]);
    put(first + i, 1, {p[i].x + h[i] * s[i].x / 3.0, p[i].y + h[i] * s[i].y / 3.0});
    put(first + i, 2, {p[i + 1].x - h[i] * s[i + 1].x / 3.0, p[i + 1].y - h[i] * s[i + 1].y / 3.0});
  }
  put(last, 0, p[n - 1]);
}

void clsVXSplineFit::MakeControlWithLinearSections(double startSlopeX, double startSlopeY, double endSlopeX,
                                                   double endSlopeY, int /*mode*/) {
  try {
    const int b = baseShift_;
    if (count() - b < 1) return;
    const bool startFree = IsFree(startSlopeX, startSlopeY), endFree = IsFree(endSlopeX, endSlopeY);
    const Pt startDir{startSlopeX, startSlopeY}, endDir{endSlopeX, endSlopeY};
    if (count() - b < 3) {
      count(count());  // size the control array to the points
      if (count() - b == 1)
        control_[ControlIndex(b)] = points_[b];
      else
        FitStretch(b, b + 1, startDir, startFree, endDir, endFree);
      return;
    }
    std::vector<Pt> kept(points_.begin(), points_.begin() + b + 1);
    for (int i = b + 1; i < count(); ++i)
      if (points_[i].x != kept.back().x || points_[i].y != kept.back().y) kept.push_back(points_[i]);
    const int last = static_cast<int>(kept.size()) - 1;
    count(last + 1);
    points_ = kept;
    if (last == b) {
      control_[ControlIndex(b)] = points_[b];
      return;
    }

    // Straight sections [from, to] in point indices, each of two or more spans.
    std::vector<double> angle(last + 1, 0.0);
    for (int i = b; i < last; ++i)
      angle[i] = ArcTan2(points_[i + 1].y - points_[i].y, points_[i + 1].x - points_[i].x);
    const double startAngle = ArcTan2(startSlopeY, startSlopeX), endAngle = ArcTan2(endSlopeY, endSlopeX);
    std::vector<std::pair<int, int>> sections;
    for (int run = b; run < last;) {
      int end = run + 1;
      while (end < last && AngleDiff(angle[end], angle[run]) < kAngleTol) ++end;
      int from = run, to = end;
      if (from == b && !startFree && AngleDiff(startAngle, angle[run]) >= kAngleTol) ++from;
      if (to == last && !endFree && AngleDiff(endAngle, angle[run]) >= kAngleTol) --to;
      if (to - from >= 2) sections.emplace_back(from, to);
      run = end;
    }

    // Curved stretches between the sections share each section's direction at the joins.
    int at = b;
    Pt dir = startDir;
    bool isFree = startFree;
    for (const auto& [from, to] : sections) {
      const Pt lineDir{std::cos(angle[from]), std::sin(angle[from])};
      if (from > at) FitStretch(at, from, dir, isFree, lineDir, false);
      for (int i = from; i < to; ++i) {
        const Pt p0 = points_[i], p1 = points_[i + 1];
        const int k = ControlIndex(i);
        control_[k] = p0;
        control_[k + 1] = {p0.x + (p1.x - p0.x) / 3.0, p0.y + (p1.y - p0.y) / 3.0};
        control_[k + 2] = {p0.x + 2.0 * (p1.x - p0.x) / 3.0, p0.y + 2.0 * (p1.y - p0.y) / 3.0};
        control_[k + 3] = p1;
      }
      at = to, dir = lineDir, isFree = false;
    }
    if (at < last) FitStretch(at, last, dir, isFree, endDir, endFree);
  } catch (...) {
    // The polygon stays as far as it was built; EvalAtX reads it as it is.
  }
}

// The span whose end points bracket x, then the Bezier parameter of x by Newton's method
// from the linear guess, kept inside a bisection bracket so that it always converges.
bool clsVXSplineFit::EvalAtX(double xv, double& yv) const {
  yv = kFreeEnd;
  try {
    for (int i = baseShift_; i + 1 < count(); ++i) {
      const double x0 = points_[i].x, x1 = points_[i + 1].x;
      if (!((x0 <= xv && xv <= x1) || (x1 <= xv && xv <= x0))) continue;
      const int k = ControlIndex(i);
      if (k < 0 || k + 3 >= ControlCount()) return false;
      const Pt c0 = control_[k], c1 = control_[k + 1], c2 = control_[k + 2], c3 = control_[k + 3];
      const double dx = x1 != x0 ? x1 - x0 : 0.00001;
      const double tol = std::fabs(dx) * 1e-07;
      double t = std::clamp((xv - x0) / dx, 0.0, 1.0);
      double lo = 0.0, hi = 1.0;
      const bool belowAtStart = x0 - xv < 0.0;
      for (int iter = 0; iter < 100 && t != 0.0 && t != 1.0; ++iter) {
        const double g = Bezier(c0.x, c1.x, c2.x, c3.x, t) - xv;
        if (std::fabs(g) <= tol) break;
        ((g < 0.0) == belowAtStart ? lo : hi) = t;
        const double slope = BezierSlope(c0.x, c1.x, c2.x, c3.x, t);
        double next = slope != 0.0 ? t - g / slope : 0.5 * (lo + hi);
        if (!(next > lo && next < hi)) next = 0.5 * (lo + hi);
        const bool done = std::fabs((next - t) * dx) <= tol;
        t = next;
        if (done) break;
      }
      yv = Bezier(c0.y, c1.y, c2.y, c3.y, t);
      return true;
    }
  } catch (...) {
  }
  return false;
}

}  // namespace velmar
