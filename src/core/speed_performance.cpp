// The speed table: row storage, unit-converting column access and conversions.
#include "core/speed_performance.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <stdexcept>

#include "core/format.h"

namespace velmar {

const LabelList kBreakdownCheckLabels{{"OK", "Indicated"}, {"OK", "Indicated"}};
const LabelList kCavitationCheckLabels{{"OK", "Uncertain", "Fail", "Missing"},
                                       {"OK", "Uncertain", "Fail", "Missing"}};
const LabelList kSpeedRangeCheckLabels{{"BelowRange", "OK", "AboveRange"},
                                       {"BelowRange", "OK", "AboveRange"}};

namespace {
using Field = clsVXSpeedPerformance::Field;

constexpr const FieldDesc* kColumns = clsVXSpeedPerformance::kColumns;

// A column whose text may be a dash or carry a mark.
enum class Dash : unsigned char { None, Below, Above };
struct MarkRule {
  Field column;
  Dash dash = Dash::None;  // "---" when the value is below/above `limit`
  double limit = 0.0;
  Field check = Field::Count;                                     // code 2: " !!", 1: " !"
  Field breakdown = Field::Count;                                 // code 1: " !!!", ahead of `check`
  bool (*warn)(const clsVXSpeedPerformance&, int row) = nullptr;  // true: " !"
};

// A keel/chine length ratio above 1, or a negative wetted chine length (Lc = 2 Lm - Lk from
// the mean wetted length, Savitsky 1964), puts the planing solution outside its range.
bool PlaningLengthsOutside(const clsVXSpeedPerformance& sp, int row) {
  return sp.Raw(row, FieldId(Field::CoefPlaningLkeelLpRatio)) > 1.0 ||
         2.0 * sp.Raw(row, FieldId(Field::LengthWettedMean)) - sp.Raw(row, FieldId(Field::LengthWettedKeel)) <
             0.0;
}

const MarkRule kMarkRules[] = {
    {.column = Field::PercentCavAverage,
     .dash = Dash::Below,
     .limit = 2.0,
     .check = Field::PercentCavAverageCheck,
     .breakdown = Field::PropellerBreakdownCheck},
    {.column = Field::PercentCavPeak, .dash = Dash::Below, .limit = 2.0},
    {.column = Field::RecommendedEAR, .check = Field::RecommendedEARCheck},
    {.column = Field::MinPitchFaceCav, .check = Field::MinPitchFaceCavCheck},
    {.column = Field::TipSpeed, .check = Field::TipSpeedCheck},
    {.column = Field::MeanBladePressure, .check = Field::MeanBladePressureCheck},
    {.column = Field::TransportFactor, .dash = Dash::Above, .limit = 1000.0},
    {.column = Field::CoefPlaningLkeelLpRatio, .warn = PlaningLengthsOutside},
};

const MarkRule* MarkRuleOf(int column) {
  for (const MarkRule& r : kMarkRules) {
    if (FieldId(r.column) == column) return &r;
  }
  return nullptr;
}

std::string MarkOf(const clsVXSpeedPerformance& sp, const MarkRule& r, int row) {
  const auto code = [&](Field f) {
    return f == Field::Count ? 0 : static_cast<int>(sp.Raw(row, FieldId(f)));
  };
  if (code(r.breakdown) == 1) return " !!!";
  switch (code(r.check)) {
    case 2:
      return " !!";
    case 1:
      return " !";
    default:
      break;
  }
  return r.warn && r.warn(sp, row) ? " !" : "";
}
}  // namespace

std::string clsVXSpeedPerformance::CoefReynoldsLengthSymbolDescription(bool planing) {
  return planing ? "Reynolds number [LM] by mean planing length"
                 : Column(FieldId(Field::CoefReynoldsLength)).description;
}

std::string clsVXSpeedPerformance::PowerEffectiveTotalSymbolDescription(bool vessel) {
  return vessel ? "Total vessel effective power" : Column(FieldId(Field::PowerEffectiveTotal)).description;
}

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

namespace {
// The columns by name: an open-addressing index over the names, built by the compiler, so that
// a speed table read from a file finds each tag's column in a probe or two instead of a scan
// of the whole list. The names go in in column order, so a name that two columns shared would
// find the first, as a scan does.
constexpr size_t kNameSlots = 1024;  // a power of two, well over twice the column count
static_assert(kNameSlots >= 2 * clsVXSpeedPerformance::kColumnCount);

constexpr size_t NameSlot(std::string_view name) {
  std::uint32_t h = 2166136261u;  // FNV-1a
  for (char c : name) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
  return h & (kNameSlots - 1);
}

constexpr auto kColumnNames = [] {
  std::array<std::string_view, clsVXSpeedPerformance::kColumnCount> names{};
  for (size_t i = 0; i < names.size(); ++i) names[i] = clsVXSpeedPerformance::kColumns[i].name;
  return names;
}();

constexpr auto kNameIndex = [] {
  std::array<std::int16_t, kNameSlots> slots{};
  for (auto& s : slots) s = -1;
  for (size_t i = 0; i < kColumnNames.size(); ++i) {
    size_t at = NameSlot(kColumnNames[i]);
    while (slots[at] != -1) at = (at + 1) & (kNameSlots - 1);
    slots[at] = static_cast<std::int16_t>(i);
  }
  return slots;
}();
}  // namespace

int clsVXSpeedPerformance::ColumnIndex(std::string_view name) {
  for (size_t at = NameSlot(name); kNameIndex[at] != -1; at = (at + 1) & (kNameSlots - 1)) {
    if (kColumnNames[static_cast<size_t>(kNameIndex[at])] == name) return kNameIndex[at];
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

void clsVXSpeedPerformance::RowOutOfRange() { throw std::out_of_range("Speed table row out of range"); }

// A number that is not finite is always refused, with the column's word (or its name when it
// has none): no prediction may run on it.
double clsVXSpeedPerformance::CheckedRead(const FieldDesc& d, double stored) const {
  if ((d.check != Check::None && FailsCheck(d, stored)) || !std::isfinite(stored))
    errors_.Push(*d.word ? d.word : d.name);
  return stored;
}

// A read in another unit: the conversion first (it may throw), then the check of the stored
// number.
double clsVXSpeedPerformance::ConvertedRead(const FieldDesc& d, double stored, int unit) const {
  const double value = units_->Convert(d.family, stored, unit, kCurrent);
  if ((d.check != Check::None && FailsCheck(d, stored)) || !std::isfinite(stored))
    errors_.Push(*d.word ? d.word : d.name);
  return value;
}

// A write in another unit; a check column keeps the integer part.
void clsVXSpeedPerformance::ConvertedWrite(const FieldDesc& d, double value, int unit, double& cell) {
  const double v = units_->Convert(d.family, value, kCurrent, unit);
  cell = d.kind == FieldKind::Int ? static_cast<double>(static_cast<long>(v)) : v;
}

std::string clsVXSpeedPerformance::FormattedOf(int row, int column, bool showMarks) const {
  const FieldDesc& d = kColumns[column];
  const double v = Read(row, column, kCurrent);
  const MarkRule* rule = MarkRuleOf(column);
  if (rule &&
      ((rule->dash == Dash::Below && v < rule->limit) || (rule->dash == Dash::Above && v > rule->limit)))
    return "---";
  std::string text = *d.format || d.family == UnitFamily::None || !units_
                         ? FormatNumber(v, d.format)
                         : FormatNumber(v, units_->Format(d.family));
  if (showMarks && rule) text += MarkOf(*this, *rule, row);
  return text;
}

void clsVXSpeedPerformance::ZeroColumns(std::span<const Field> columns) {
  for (int row = 0; row < count_; ++row) {
    for (Field c : columns) SetRaw(row, FieldId(c), 0.0);
  }
}

void clsVXSpeedPerformance::ZeroBareHullPropertiesArrays() {
  static constexpr Field kBareHull[] = {
      Field::CoefDragBareHullViscous,
      Field::CoefDragBareHullResiduary,
      Field::CoefDragBareHullRoughness,
      Field::CoefDragBareHull,
      Field::CoefDragBareHullWavemakingTransverse,
      Field::CoefDragBareHullWavemakingDivergent,
      Field::CoefDragBareHullResiduaryTelfer,
      Field::CoefDragBareHullTelfer,
      Field::CoefDragBareHullWeightRatio,
      Field::DragBareHullResiduary,
      Field::DragBareHullIndividual,
      Field::DragBareHull,
      Field::DynamicTrimDeg,
      Field::DynamicZGravityBelowWL,
      Field::LengthWettedKeel,
      Field::LengthWettedMean,
      Field::CoefPlaningHumpSpeedMultiplier,
      Field::CoefDragBareHullResiduaryAlignmentMultiplier,
      Field::WakeFractionAlignmentMultiplier,
      Field::ThrustDeductionAlignmentMultiplier,
      Field::RelRotEfficiencyAlignmentMultiplier,
  };
  ZeroColumns(kBareHull);
}

void clsVXSpeedPerformance::ZeroEnginePropertiesArrays() {
  ZeroColumns({Field::FuelRatePerEngine, Field::PercentEngineLoadFactor});
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
