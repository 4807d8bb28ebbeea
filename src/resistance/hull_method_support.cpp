// Coefficient tables, node interpolation, speed check and the ship-scale route of the
// published hull drag regressions.
#include "resistance/hull_method_support.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "resistance/friction.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

std::string_view Trim(std::string_view s) {
  const size_t b = s.find_first_not_of(" \t\r");
  if (b == std::string_view::npos) return {};
  return s.substr(b, s.find_last_not_of(" \t\r") - b + 1);
}

std::vector<std::string_view> Cells(std::string_view line) {
  std::vector<std::string_view> cells;
  for (size_t start = 0;;) {
    const size_t comma = line.find(',', start);
    cells.push_back(Trim(line.substr(start, comma - start)));
    if (comma == std::string_view::npos) return cells;
    start = comma + 1;
  }
}

}  // namespace

double CsvNumber(std::string_view cell) {
  double v = 0.0;
  if (!cell.empty() && cell.front() == '+') cell.remove_prefix(1);  // from_chars takes no '+'
  const char* end = cell.data() + cell.size();
  const auto [ptr, ec] = std::from_chars(cell.data(), end, v);
  return ec == std::errc() && ptr == end && !cell.empty() ? v : std::numeric_limits<double>::quiet_NaN();
}

int CoefTable::Column(std::string_view name) const {
  const auto it = std::find(columns.begin(), columns.end(), name);
  return it == columns.end() ? -1 : static_cast<int>(it - columns.begin());
}

CoefTable ParseCoefTable(std::string_view csv) {
  CoefTable table;
  for (size_t start = 0; start < csv.size();) {
    size_t end = csv.find('\n', start);
    if (end == std::string_view::npos) end = csv.size();
    const std::string_view line = Trim(csv.substr(start, end - start));
    start = end + 1;
    if (line.empty()) continue;
    const std::vector<std::string_view> cells = Cells(line);
    if (table.columns.empty()) {
      for (std::string_view c : cells) table.columns.emplace_back(c);
      continue;
    }
    if (cells.size() != table.columns.size()) throw std::logic_error("coefficient table row of wrong length");
    std::vector<double>& row = table.rows.emplace_back();
    for (std::string_view c : cells) row.push_back(CsvNumber(c));
  }
  return table;
}

double InterpolateNodes(std::span<const double> xs, std::span<const double> ys, double x) {
  if (x <= xs.front()) return ys.front();
  for (size_t i = 1; i < xs.size(); ++i) {
    if (x <= xs[i]) {
      const double t = (x - xs[i - 1]) / (xs[i] - xs[i - 1]);
      return ys[i - 1] + t * (ys[i] - ys[i - 1]);
    }
  }
  return ys.back();
}

int SpeedCheckOf(double f, double lower, double upper) { return f < lower ? 0 : (f <= upper ? 1 : 2); }

double ResiduaryOutsideNodes(double cr, double fn, double fnNode) {
  return fn < fnNode ? cr * std::pow(fn / fnNode, 4.0) : cr;
}

bool ShipScaleModelCt(double crShip, const clsVXHull& hull, double fn, double& ctModel, double& modelLength) {
  const double L = hull.LengthWL(kFt);
  if (PassHullErrors(hull)) return false;
  clsVXWaterProperties& water = *hull.WaterProperties();
  const double nu = water.Viscosity(kFt2PerSec);
  if (water.ErrorsFound()) {
    AddCalcErrors(water.Errors());
    return false;
  }
  modelLength = L * std::cbrt((StdViscosityFresh / nu) * (StdViscosityFresh / nu));
  // The Reynolds number of the model step: the model in the basin's fresh water at the ship's
  // Froude number, equal to the ship's V L / nu.
  const double rnModel = std::pow(modelLength, 1.5) * fn * std::sqrt(GravityFt) / StdViscosityFresh;
  ctModel = crShip + CalcFrictionITTC57(rnModel);
  return true;
}

double ResiduaryCoefFromWeightRatio(double rrPerWeight, double fn, double length, double volume,
                                    double surface) {
  return rrPerWeight * 2.0 * volume / (fn * fn * length * surface);
}

}  // namespace velmar
