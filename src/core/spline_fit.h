// A parametric cubic curve through ordered plane points, held as a Bezier control polygon,
// that keeps straight stretches of the points straight. Read back as y at a given x.
#pragma once

#include <vector>

namespace velmar {

class clsVXSplineFit {
 public:
  int count() const { return static_cast<int>(points_.size()); }
  // Sizes the point array to n points and the control array to 3(n - 1) + 1 entries.
  void count(int n);
  // First point the fit uses; control index of point i is BaseShift + 3 (i - BaseShift).
  int BaseShift() const { return baseShift_; }
  void BaseShift(int shift) { baseShift_ = shift < 0 ? 0 : shift; }

  // Point coordinates; an index outside the array reads 0 and ignores a write.
  double x(int i) const;
  void x(int i, double v);
  double y(int i) const;
  void y(int i, double v);

  // The control polygon: entry 3i is point i, 3i+1 and 3i+2 the inner controls of span i.
  int ControlCount() const { return static_cast<int>(control_.size()); }
  double ControlX(int k) const;
  double ControlY(int k) const;

  // Builds the control polygon. The end slopes are direction vectors (dx, dy); a pair of
  // kFreeEnd (or a zero vector) leaves that end free. Runs of two or more spans in one
  // direction become straight sections. Removes consecutive repeated points (count shrinks).
  // `mode` (2 in the Holtrop use) is accepted but every value builds the same polygon.
  void MakeControlWithLinearSections(double startSlopeX, double startSlopeY, double endSlopeX,
                                     double endSlopeY, int mode);

  // y of the curve at x. False, with y = kFreeEnd, when x lies in no span or the polygon
  // has not been built for the current points.
  bool EvalAtX(double x, double& y) const;

 private:
  struct Pt {
    double x = 0.0, y = 0.0;
  };
  int ControlIndex(int point) const { return baseShift_ + 3 * (point - baseShift_); }
  void FitStretch(int first, int last, Pt startDir, bool startFree, Pt endDir, bool endFree);

  std::vector<Pt> points_;
  std::vector<Pt> control_;
  int baseShift_ = 0;
};

}  // namespace velmar
