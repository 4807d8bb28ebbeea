// What the published hull drag regressions share: their coefficient tables compiled in as the
// CSV text of the literature, interpolation between the speed nodes of a table, the speed
// check, and the route by which a ship-scale method feeds the ITTC-78 model step.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vessel/hull.h"

namespace velmar {

// A coefficient table as published: the names of the header line and one row of numbers per
// line. A cell that is no number (a term's name) reads as NaN.
struct CoefTable {
  std::vector<std::string> columns;
  std::vector<std::vector<double>> rows;
  // Index of the column `name`; -1 if there is none.
  int Column(std::string_view name) const;
};
// A cell as a number, '.' the decimal separator whatever the locale; NaN if it is none.
double CsvNumber(std::string_view cell);
// Reads comma-separated text: the first line is the header, blank lines are skipped. A
// malformed table (a row of the wrong length) is a fault of the program and throws.
CoefTable ParseCoefTable(std::string_view csv);

// The value at `x` of the straight lines through (xs[i], ys[i]); `x` is held to the range of
// the nodes. `xs` ascending.
double InterpolateNodes(std::span<const double> xs, std::span<const double> ys, double x);

// DragBareHullSpeedCheck of a speed measure `f` against a data set's range: 0 below, 1 inside
// (bounds included), 2 above.
int SpeedCheckOf(double f, double lower, double upper);

// Beyond the top speed of its data set a regression keeps the residuary coefficient of that
// speed (the regressions are polynomials or exponentials that run away outside their data);
// below the first speed of a table it falls with the fourth power of the speed, as the Holtrop
// method's wave term does below Fn 0.04. `cr` is the coefficient at `fnNode`, the speed held
// to the data set; the result is the coefficient at `fn`.
double ResiduaryOutsideNodes(double cr, double fn, double fnNode);

// A ship-scale method through the ITTC-78 model step. The published regressions give the
// residuary coefficient of the ship itself (the same at model scale by Froude's hypothesis),
// to be added to the ITTC-1957 friction of the ship without a form factor. Their "model" is
// therefore the ship's twin in the basin's fresh water at the ship's Reynolds number: its
// length is the waterline length scaled by (nu_fresh / nu_ship)^(2/3), and its total
// coefficient the published CR plus the ITTC-1957 friction at that Reynolds number. The model
// step takes the model's viscous part off, (1+k) CF, and the expansion adds the ship's,
// (1+k) CF at the same Reynolds number: the ship's total is the published CR plus CF, whatever
// the form factor, and only the split between the residuary and viscous columns moves with it.
// Roughness and correlation allowance are added as the expansion settings say. Reads the
// length and the hull's water; false (with the text in the calculation error state) when they
// are missing.
bool ShipScaleModelCt(double crShip, const clsVXHull& hull, double fn, double& ctModel, double& modelLength);

// Residuary resistance over displacement weight, Rr / (rho g Vol), as a residuary coefficient
// on the wetted surface: CR = Rr / (0.5 rho V^2 S) = (Rr / W) 2 Vol / (Fn^2 L S), because
// V^2 = Fn^2 g L. Consistent units of length; dimensionless.
double ResiduaryCoefFromWeightRatio(double rrPerWeight, double fn, double length, double volume,
                                    double surface);

}  // namespace velmar
