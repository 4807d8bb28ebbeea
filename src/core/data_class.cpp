// Generic field storage, conversion, checks and texts of the data classes.
#include "core/data_class.h"

#include <cmath>
#include <stdexcept>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "core/format.h"

namespace velmar {

LabelList Keyed(std::initializer_list<std::pair<const char*, const char*>> rows) {
  LabelList list;
  list.labels.reserve(rows.size());
  list.keys.reserve(rows.size());
  for (const auto& [label, key] : rows) {
    list.labels.emplace_back(label);
    list.keys.emplace_back(key);
  }
  return list;
}

const LabelList kOffOnLabels = {{"Off", "On"}, {"Off", "On"}};
const LabelList kOffCalcLockLabels = {{"Off", "Calc", "Lock"}, {"Off", "Calc", "Lock", "Enter"}};
const LabelList kDragTechniqueLabels = Keyed({{"Prediction", "Prediction"},
                                              {"Aligned prediction", "AlignedPrediction"},
                                              {"Scale from test", "ScaleFromTest"},
                                              {"Defined", "Defined"}});

namespace {
// The test of FailsCheck, inlined into the field reads.
[[gnu::always_inline]] inline bool FailsCheckOf(const FieldDesc& d, double v) {
  switch (d.check) {
    case Check::None:
      return false;
    case Check::NotPositive:
      return v <= 0.0;
    case Check::Negative:
      return v < 0.0;
    case Check::BelowOne:
      return v < 1.0;
    case Check::Outside:
      return v < d.lo || v > d.hi;
  }
  return false;
}
}  // namespace

bool FailsCheck(const FieldDesc& d, double v) { return FailsCheckOf(d, v); }

DataClass::DataClass(std::span<const FieldDesc> fields, std::shared_ptr<clsVXUnits> units)
    : fields_(fields), values_(fields.size(), 0.0), texts_(fields.size()), units_(std::move(units)) {
  ResetToInitialValues();
}

void DataClass::ResetToInitialValues() {
  // Most fields have no text: an empty text stays as it is rather than being assigned again,
  // which made every new object (and every copy of a project for a variant) pay for a text
  // assignment per field.
  for (size_t i = 0; i < fields_.size(); ++i) {
    values_[i] = fields_[i].init;
    if (*fields_[i].textInit || !texts_[i].empty()) texts_[i] = fields_[i].textInit;
  }
}

int DataClass::FieldIndex(std::string_view name) const {
  for (size_t i = 0; i < fields_.size(); ++i) {
    if (name == fields_[i].name) return static_cast<int>(i);
  }
  return -1;
}

namespace {
// Pushes the field's word (or its name when it has none) and returns the value read.
[[gnu::noinline]] double Refused(ErrorStack& errors, const FieldDesc& d, double value) {
  errors.Push(*d.word ? d.word : d.name);
  return value;
}

// A read in another unit: the conversion first (it may throw), then the refusal.
[[gnu::noinline]] double ConvertedRead(const clsVXUnits* units, const FieldDesc& d, double stored, int unit,
                                       bool refused, ErrorStack& errors) {
  if (!units) throw std::logic_error("Units link not set");
  const double v = units->Convert(d.family, stored, unit, kCurrent);
  return refused ? Refused(errors, d, v) : v;
}
}  // namespace

double DataClass::ReadChecked(int field, int unit) const {
  const FieldDesc& d = fields_[field];
  const double stored = values_[field];
  // A number that is not finite is always refused, with the field's word (or its name when
  // it has none): no prediction may run on it.
  const bool refused = FailsCheckOf(d, stored) || !std::isfinite(stored);
  // The calls are tail calls, so that a read without conversion (most of them) saves no
  // registers; an accepted read converts directly.
  if (d.family != UnitFamily::None && unit != kCurrent) {
    const clsVXUnits* units = units_.get();
    if (!refused && units) return units->Convert(d.family, stored, unit, kCurrent);
    return ConvertedRead(units, d, stored, unit, refused, errors_);
  }
  return refused ? Refused(errors_, d, stored) : stored;
}

void DataClass::Write(int field, int unit, double value) {
  const FieldDesc& d = fields_[field];
  if (d.family != UnitFamily::None && unit != kCurrent) {
    if (!units_) throw std::logic_error("Units link not set");
    value = units_->Convert(d.family, value, kCurrent, unit);
  }
  // The first entry of a still-empty field is tested against its entry range; a value
  // already there is replaced silently. The value is stored either way.
  if ((d.flags & kWarnEntryOutside) && values_[field] == 0.0 && (value < d.entryLo || value > d.entryHi)) {
    ShowWarning(1, "Data entry error",
                "Entry is outside of valid range [" + FormatNumber(d.entryLo, "0.0") + "\u00b7\u00b7" +
                    FormatNumber(d.entryHi, "0.0##") + "]",
                -1.0);
  }
  if (d.kind == FieldKind::Int || d.kind == FieldKind::Enum)
    value = static_cast<double>(static_cast<long>(value));
  values_[field] = value;
}

std::string DataClass::FormattedOf(int field, int unit) const {
  const FieldDesc& d = fields_[field];
  const double v = Read(field, unit);
  if (*d.format || d.family == UnitFamily::None) return FormatNumber(v, d.format);
  if (!units_) return FormatNumber(v, "");
  const UnitFamily f = d.family == UnitFamily::Volume ? UnitFamily::Length : d.family;
  return FormatNumber(v, units_->Format(f));
}

std::string DataClass::FieldNameOf(int field) const {
  return std::string(FieldIndent) + fields_[field].label;
}

std::string DataClass::LabelOf(int field, int index) const {
  const FieldDesc& d = fields_[field];
  if (!d.labels) return "";
  if (index == -1) index = static_cast<int>(values_[field]);
  return d.labels->labels.at(static_cast<size_t>(index));
}

void DataClass::ConvertAllData(const clsVXUnits& /*newUnits*/, const clsVXUnits& oldUnits) {
  for (size_t i = 0; i < fields_.size(); ++i) {
    const FieldDesc& d = fields_[i];
    if (d.kind != FieldKind::Quantity || (d.flags & kNoConvert)) continue;
    const UnitFamily f = d.convertAs != UnitFamily::None ? d.convertAs : d.family;
    UnitFamily selector = f;
    if (f == UnitFamily::Volume) selector = UnitFamily::Length;
    if (f == UnitFamily::PropLengthSq || f == UnitFamily::PropLengthCube) selector = UnitFamily::PropLength;
    values_[i] = units_->Convert(f, values_[i], kCurrent, oldUnits.Index(selector));
  }
}

void DataClass::ClearAllData() {
  std::fill(values_.begin(), values_.end(), 0.0);
  for (std::string& t : texts_) t.clear();
}

}  // namespace velmar
