// One-dimensional table lookup for engine curves and the tunnel correction: linear
// interpolation or a natural cubic spline, both continued as straight lines past the table.
#pragma once

#include <string>
#include <vector>

namespace velmar {

// The straight line through (x1, y1) and (x2, y2) read at x, extrapolating outside the
// pair; y1 when x1 equals x2.
double Interpolate2Point(double x1, double y1, double x2, double y2, double x);

// Looks up y at x in the first `count` pairs of xs/ys (method 0 linear, 1 natural cubic
// spline; any other method is read as linear). The tables are not changed: the routine sorts
// copies. count 0 gives 0, count 1 the one y, count 2 the line through both points. A count
// above the length of either table is cut to that length. Returns false, with y = 0 and
// `location`/`cause` set, when the spline cannot be set up (two equal x).
bool CurveFit(int method, double& y, int count, const std::vector<double>& xs, const std::vector<double>& ys,
              double x, std::string& location, std::string& cause);

// The lookup of CurveFit prepared once for a table and then read at any x with the same
// result, for tables read at many points (the engine curves during a run).
class CurveFitTable {
 public:
  // Copies and sorts the table and sets up the spline, with the arguments of CurveFit. False,
  // with `location`/`cause` set as CurveFit sets them, when the spline cannot be set up.
  bool Prepare(int method, int count, const std::vector<double>& xs, const std::vector<double>& ys,
               std::string& location, std::string& cause);
  // y at x of a successfully prepared table.
  double At(double x) const;

 private:
  int method_ = 0, n_ = 0;
  std::vector<double> xs_, ys_, d_;  // the first n_ pairs (sorted from 3 on), spline d
};

}  // namespace velmar
