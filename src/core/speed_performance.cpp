// The speed table: row storage, unit-converting column access and conversions.
#include "core/speed_performance.h"

#include <stdexcept>

#include "core/format.h"

namespace velmar {
namespace {
const FieldDesc kColumns[] = {
#include "core/fields_table.h"
#include "core/speed_performance_fields.def"
};
}  // namespace

clsVXSpeedPerformance::clsVXSpeedPerformance(std::shared_ptr<clsVXUnits> units,
                                             std::shared_ptr<clsVXWaterProperties> water) {
  SetLinkedClasses(std::move(units), std::move(water));
}

void clsVXSpeedPerformance::SetLinkedClasses(std::shared_ptr<clsVXUnits> units,
                                             std::shared_ptr<clsVXWaterProperties> water) {
  units_ = std::move(units);
  water_ = std::move(water);
}

std::span<const FieldDesc> clsVXSpeedPerformance::Columns() { return kColumns; }

int clsVXSpeedPerformance::ColumnIndex(std::string_view name) {
  for (int i = 0; i < kColumnCount; ++i) {
    if (name == kColumns[i].name) return i;
  }
  return -1;
}

void clsVXSpeedPerformance::count(int n) {
  count_ = n;
  if (n >= 1) {
    rows_.resize(static_cast<size_t>(n) * kColumnCount, 0.0);
  } else {
    rows_.clear();
  }
}

size_t clsVXSpeedPerformance::Offset(int row, int column) const {
  if (row == -1) row = speedIndex_;
  if (row < 0 || static_cast<size_t>(row + 1) * kColumnCount > rows_.size())
    throw std::out_of_range("Speed table row out of range");
  return static_cast<size_t>(row) * kColumnCount + static_cast<size_t>(column);
}

double clsVXSpeedPerformance::Read(int row, int column, int unit) const {
  const FieldDesc& d = kColumns[column];
  const double stored = rows_[Offset(row, column)];
  double v = stored;
  if (d.family != UnitFamily::None && unit != kCurrent) v = units_->Convert(d.family, stored, unit, kCurrent);
  if (FailsCheck(d, stored)) errors_.Push(d.word);
  return v;
}

void clsVXSpeedPerformance::Write(int row, int column, int unit, double value) {
  const FieldDesc& d = kColumns[column];
  const size_t at = Offset(row, column);
  if (d.family != UnitFamily::None && unit != kCurrent) value = units_->Convert(d.family, value, kCurrent, unit);
  if (d.kind == FieldKind::Int) value = static_cast<double>(static_cast<long>(value));
  rows_[at] = value;
}

std::string clsVXSpeedPerformance::FormattedOf(int row, int column) const {
  const FieldDesc& d = kColumns[column];
  const double v = Read(row, column, kCurrent);
  if (*d.format || d.family == UnitFamily::None || !units_) return FormatNumber(v, d.format);
  return FormatNumber(v, units_->Format(d.family));
}

void clsVXSpeedPerformance::ClearErrorStack() {
  errors_.Clear();
  if (water_) water_->ClearErrorStack();
}

void clsVXSpeedPerformance::ConvertAllData(const clsVXUnits& /*newUnits*/, const clsVXUnits& oldUnits) {
  if (count_ < 1) return;
  for (int row = 0; row < count_; ++row) {
    for (int c = 0; c < kColumnCount; ++c) {
      const FieldDesc& d = kColumns[c];
      if (d.kind != FieldKind::Quantity || (d.flags & kNoConvert)) continue;
      const UnitFamily f = d.convertAs != UnitFamily::None ? d.convertAs : d.family;
      double& v = rows_[Offset(row, c)];
      v = units_->Convert(f, v, kCurrent, oldUnits.Index(f));
    }
  }
}

}  // namespace velmar
