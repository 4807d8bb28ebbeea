// The propeller as a surface model: Wageningen B-series blade sections built from the
// propeller's diameter, pitch, expanded area ratio, blade count, hub, rake and skew, fitted by
// B-spline surfaces (face and back of each blade), and the hub as surfaces of revolution.
// The CAD export writes these surfaces; the expanded area can be measured back from them.
#pragma once

#include <vector>

namespace velmar {

struct Point3 {
  double x = 0.0, y = 0.0, z = 0.0;
};

// A tensor-product B-spline surface, rational when `weights` is not empty. Poles are held
// with the u index running fastest: pole (i, j) is poles[j * countU + i].
struct BSplineSurface {
  int degreeU = 3, degreeV = 3;
  int countU = 0, countV = 0;
  std::vector<double> knotsU, knotsV;  // countU + degreeU + 1 and countV + degreeV + 1 values
  std::vector<double> weights;         // empty: polynomial
  std::vector<Point3> poles;
  bool closedV = false;

  bool Rational() const { return !weights.empty(); }
  double UStart() const { return knotsU[degreeU]; }
  double UEnd() const { return knotsU[countU]; }
  double VStart() const { return knotsV[degreeV]; }
  double VEnd() const { return knotsV[countV]; }
  Point3 Evaluate(double u, double v) const;
};

// What the blade is built from, in one length unit (the propeller's own).
struct BladeGeometryInput {
  double diameter = 0.0;
  double pitch = 0.0;         // nominal face pitch
  double expAreaRatio = 0.0;  // AE/A0 of all blades
  int bladeCount = 0;
  double hubRatio = 0.0;  // hub diameter over diameter; 0 takes the series' 0.167
  double rakeDeg = 15.0;  // aft rake of the generator line
  double skewDeg = 0.0;   // extra skew at the tip, towards the trailing edge
  bool rightHanded = true;
};

// One cylindrical section of blade 1: its expanded data and its points on the cylinder of
// radius r, from the trailing edge to the leading edge (face and back share the edge points).
struct BladeSection {
  double radius = 0.0, chord = 0.0, thickness = 0.0, localPitch = 0.0;
  std::vector<Point3> face, back;
};

struct BladeGeometry {
  BladeGeometryInput input;
  double hubRadius = 0.0;
  std::vector<BladeSection> sections;  // from the hub to the outermost section
  BSplineSurface face, back;           // blade 1, u from trailing to leading edge, v root to tip
};

// The series' hub diameter ratio, taken when the propeller holds none.
inline constexpr double kBSeriesHubRatio = 0.167;

// Blade 1 of the propeller; false when the input cannot give a blade (diameter, pitch, area
// ratio or blade count not positive, hub ratio of 0.5 or more).
bool BuildBladeGeometry(const BladeGeometryInput& input, BladeGeometry& out);

// Chord, thickness and local pitch of the section at r/R = x, in the input's length unit.
struct SectionData {
  double chord = 0.0, leadingEdge = 0.0, maxThicknessFromLE = 0.0, thickness = 0.0, localPitch = 0.0;
};
SectionData BSeriesSection(const BladeGeometryInput& input, double x);

// The surface through a grid of points rows[j][i] (j radial, i chordwise) of the given
// degrees: global interpolation with averaged chord-length parameters.
BSplineSurface InterpolateSurface(const std::vector<std::vector<Point3>>& rows, int degreeU, int degreeV);

// The surface turned about the shaft axis (X) by `angle` radians, from +Z towards +Y.
BSplineSurface RotatedAboutAxis(const BSplineSurface& s, double angle);

// The hub of the blades: a cylinder over the blade roots, a flat forward end and a rounded
// aft boss, each a surface of revolution about X.
std::vector<BSplineSurface> HubSurfaces(const BladeGeometry& blade);

// Expanded area of one blade from the chords of its sections (trapezoidal rule over radius).
double ExpandedBladeArea(const std::vector<double>& radii, const std::vector<double>& chords);

// The expanded section of a blade surface at parameter v: radius and the chord length of the
// section unrolled from its cylinder (distance from trailing to leading edge).
struct UnrolledSection {
  double radius = 0.0, chord = 0.0;
};
UnrolledSection UnrollSection(const BSplineSurface& s, double v);

}  // namespace velmar
