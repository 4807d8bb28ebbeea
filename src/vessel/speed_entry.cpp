// Speeds from the ten entry cells of the design condition table.
#include "vessel/speed_entry.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include "core/diagnostics.h"
#include "core/format.h"

namespace velmar {
namespace {
constexpr double kGravityFtPerSec2 = 32.174;
constexpr double kLbPerLongTon = 2240.0;

// Speed in ft/s per unit Froude number: sqrt(g L) by waterline length, or sqrt(g V^(1/3)) by
// displaced volume V = W / (g rho).
double FroudeSpeedScale(const clsVXHull& hull) {
  if (hull.HullHydrodynamicDataSet() == 2) {
    if (!hull.WaterProperties()) throw std::logic_error("Hull has no water linked");
    const double volume = hull.Displacement(kLT) * kLbPerLongTon /
                          (kGravityFtPerSec2 * hull.WaterProperties()->Density(kSlugPerFt3));
    return std::sqrt(kGravityFtPerSec2 * std::pow(volume, 0.3333333));
  }
  return std::sqrt(kGravityFtPerSec2 * hull.LengthWL(kFt));
}
}  // namespace

void SetSpeedsFromEntry(clsVXSpeedPerformance& sp, const clsVXHull& hull,
                        std::array<double, kSpeedCells> cells, bool froudeEntry) {
  const clsVXUnits& units = *sp.Units();
  if (froudeEntry) {
    const double scale = FroudeSpeedScale(hull);
    for (double& v : cells) v = units.ConvertUnitSpeed(v * scale, kCurrent, kFtPerSec);
  }
  for (double& v : cells) {
    if (units.ConvertUnitSpeed(v, kKt, kCurrent) > kMaxSpeedKnots) {
      ShowWarning(1, "Speed error", "Speed [" + FormatNumber(v, "") + "] exceeds allowable range.", -1.0);
      v = 0.0;
    }
  }
  // Bubble sort over all ten, zeros included, as the entry table has always ordered them.
  for (int pass = 0; pass < kSpeedCells - 1; ++pass) {
    for (int i = 0; i < kSpeedCells - 1 - pass; ++i) {
      if (cells[i] > cells[i + 1]) std::swap(cells[i], cells[i + 1]);
    }
  }

  for (int row = 0; row < sp.count(); ++row) sp.Speed(row, kCurrent, 0.0);
  int n = 0;
  for (double v : cells) n += v != 0.0 ? 1 : 0;
  sp.count(n);
  int row = 0;
  for (double v : cells) {
    if (v != 0.0) sp.Speed(row++, kCurrent, v);
  }
}

}  // namespace velmar
