// Propeller series selection and corrections, and the data-set limits of each series.
#include "propulsion/propeller_series.h"

#include <array>
#include <iterator>

namespace velmar {

namespace {

// An EAR range; `bladeCount` 0 is the range of every count without a range of its own.
struct EARRange {
  int bladeCount = 0;
  double lo = 0.0, hi = 0.0;
};

// One row per series, in index order: label, file key, data-set limits, and the note the
// report gives with the series (the status of its coefficients), if any.
struct SeriesRow {
  const char* label;
  const char* key;
  std::array<EARRange, 3> ear;
  double pdMin, pdMax, jMin, jMax, jZeroFactor;
  const char* note;
};

// clang-format off
constexpr SeriesRow kSeries[] = {
    {"B Series",        "BSeries",        {{{0, 0.30, 1.05}}},                           0.5,   1.4,   0.05, 1.5, 1.0, nullptr},
    {"Gawn AEW",        "GawnAEW",        {{{0, 0.50, 1.10}}},                           0.6,   1.6,   0.05, 2.0, 1.0, nullptr},
    {"Gawn KCA",        "GawnKCA",        {{{0, 0.50, 1.10}}},                           0.8,   1.8,   0.30, 1.9, 1.0, "Coefficients from a single source, unconfirmed."},
    {"Kaplan 19A",      "Kaplan19A",      {{{3, 0.65, 0.65}, {5, 0.65, 0.95}, {0, 0.55, 0.70}}}, 0.5, 1.4, 0.05, 1.5, 0.75, nullptr},
    {"Kaplan 19A KC",   "Kaplan19AKC",    {{{3, 0.50, 0.80}, {0, 0.55, 1.00}}},          0.6,   1.5,   0.05, 1.5, 0.75, nullptr},
    {"Kaplan 33",       "Kaplan33",       {{{0, 1.00, 1.00}}},                           0.5,   1.4,   0.05, 1.5, 0.75, nullptr},
    {"Kaplan 37",       "Kaplan37",       {{{0, 0.70, 0.70}}},                           0.5,   1.4,   0.05, 1.5, 0.75, nullptr},
    {"Kaplan 37 KC",    "Kaplan37KC",     {{{3, 0.50, 0.80}, {0, 0.55, 1.00}}},          0.6,   1.5,   0.05, 1.5, 0.75, nullptr},
    {"SP Series",       "SPSeries",       {{{0, 0.80, 0.80}}},                           0.9,   1.6,   0.5,  1.6, 1.15, nullptr},
    {"Cycloidal",       "Cycloidal",      {{{0, 1.06, 1.06}}},                           1.571, 2.827, 0.05, 3.0, 0.8, nullptr},
    {"Kaplan Cylinder", "KaplanCylinder", {{{0, 0.50, 0.75}}},                           0.6,   1.4,   0.01, 0.02, 1.0, nullptr},
};
// clang-format on

LabelList SeriesLabels() {
  LabelList list;
  for (const SeriesRow& row : kSeries) {
    list.labels.emplace_back(row.label);
    list.keys.emplace_back(row.key);
  }
  return list;
}

}  // namespace

const LabelList kPropellerSeriesLabels = SeriesLabels();
const LabelList kScaleCorrectionLabels = {
    {"None", "B Series", "Equiv profile", "Part ITTC", "Full ITTC"},
    {"NoCorrection", "BSeries", "EquivProfile", "PartITTC", "FullITTC"}};
const LabelList kKTKQCorrectionLabels = {{"Standard", "Custom"}, {"Standard", "Custom"}};
// Only file keys are known for the rudder location of a contra-rotating pair; the user never
// picks it, so its labels are the keys.
const LabelList kCRPRudderLocationLabels = {{"BehindPropeller", "NoneOrFreeStream"},
                                            {"BehindPropeller", "NoneOrFreeStream"}};

namespace {
const FieldDesc kPropellerSeriesFields[] = {
#include "core/fields_table.h"
#include "propulsion/propeller_series_fields.def"
};
}  // namespace

const char* PropellerSeriesNote(int series) {
  if (series < 0 || series >= static_cast<int>(std::size(kSeries))) return nullptr;
  return kSeries[series].note;
}

std::optional<PropellerSeriesLimits> GetPropellerSeriesLimits(int series, int bladeCount) {
  if (series < 0 || series >= static_cast<int>(std::size(kSeries))) return std::nullopt;
  const SeriesRow& row = kSeries[series];
  PropellerSeriesLimits limits{.PDMin = row.pdMin,
                               .PDMax = row.pdMax,
                               .JMin = row.jMin,
                               .JMax = row.jMax,
                               .JZeroFactor = row.jZeroFactor};
  for (const EARRange& r : row.ear) {
    if (r.bladeCount == bladeCount || r.bladeCount == 0) {
      limits.EARMin = r.lo;
      limits.EARMax = r.hi;
      break;
    }
  }
  return limits;
}

clsVXPropellerSeries::clsVXPropellerSeries(std::shared_ptr<clsVXUnits> units,
                                           std::shared_ptr<clsVXWaterProperties> water,
                                           std::shared_ptr<clsVXPropeller> propeller)
    : DataClass(kPropellerSeriesFields, std::move(units)),
      water_(std::move(water)),
      propeller_(std::move(propeller)) {}

void clsVXPropellerSeries::SetLinkedClasses(std::shared_ptr<clsVXUnits> units,
                                            std::shared_ptr<clsVXWaterProperties> water,
                                            std::shared_ptr<clsVXPropeller> propeller) {
  Units(std::move(units));
  water_ = std::move(water);
  propeller_ = std::move(propeller);
}

std::shared_ptr<clsVXPropellerSeries> clsVXPropellerSeries::CopyClass() const {
  auto copy = std::make_shared<clsVXPropellerSeries>(Units(), water_, propeller_);
  copy->CopyDataFrom(*this);
  return copy;
}

}  // namespace velmar
