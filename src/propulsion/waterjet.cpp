// Waterjet data: the field table, the impeller and power-series tables, their sort and the
// removal of records.
#include "propulsion/waterjet.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "core/format.h"

namespace velmar {

const LabelList kImpellerDefinitionLabels = {{"Undefined", "Defined"}, {"Undefined", "Defined"}};
const LabelList kSpeedCorrectionLabels = {{"Off", "On"}, {"Off", "On"}};
const LabelList kCavZoneStatusLabels = {{"False", "True"}, {"False", "True"}};

namespace {

const FieldDesc kWaterjetFields[] = {
#include "core/fields_table.h"
#include "propulsion/waterjet_fields.def"
};

using W = clsVXWaterjet;

#define VX_WATERJET_IMPELLER_DESC(N, KIND, FAM, TAG) W::ValueDesc{#N, UnitFamily::FAM, TAG},
constexpr W::ValueDesc kImpellerValues[] = {VX_WATERJET_IMPELLER_VALUES(VX_WATERJET_IMPELLER_DESC)};
#undef VX_WATERJET_IMPELLER_DESC
#define VX_WATERJET_POINT_DESC(N, FAM, TAG) W::ValueDesc{#N, UnitFamily::FAM, TAG},
constexpr W::ValueDesc kPointLists[] = {VX_WATERJET_POINT_LISTS(VX_WATERJET_POINT_DESC)};
#undef VX_WATERJET_POINT_DESC

const std::shared_ptr<clsVXUnits>& NeedUnits(const W& w) {
  if (!w.Units()) throw std::logic_error("Units link not set");
  return w.Units();
}

// A number read from storage into `unit` of its family (unchanged without one).
double ToUnit(const W& w, UnitFamily f, double stored, int unit) {
  if (f == UnitFamily::None || unit == kCurrent) return stored;
  return NeedUnits(w)->Convert(f, stored, unit, kCurrent);
}

double FromUnit(const W& w, UnitFamily f, double value, int unit) {
  if (f == UnitFamily::None || unit == kCurrent) return value;
  return NeedUnits(w)->Convert(f, value, kCurrent, unit);
}

std::string Formatted(const W& w, UnitFamily f, double value) {
  if (f == UnitFamily::None) return FormatNumber(value, "0.0");
  return FormatNumber(value, w.Units() ? w.Units()->Format(f) : "");
}

// Bubble sort of the first n items by key, ascending, with passes repeated until one makes
// no swap; equal keys are never swapped.
template <class Key, class Swap>
void BubbleSort(int n, Key key, Swap swap) {
  for (bool swapped = true; swapped;) {
    swapped = false;
    for (int i = 0; i + 1 < n; ++i) {
      if (key(i) > key(i + 1)) {
        swap(i, i + 1);
        swapped = true;
      }
    }
  }
}

// Moves the records behind `index` up one place and clears the last held place.
template <class Record, size_t N>
void RemoveAt(std::array<Record, N>& records, int count, int index) {
  for (int i = index; i + 1 < count; ++i)
    records.at(static_cast<size_t>(i)) = std::move(records.at(static_cast<size_t>(i + 1)));
  records.at(static_cast<size_t>(count - 1)) = Record{};
}

}  // namespace

std::span<const W::ValueDesc> clsVXWaterjet::ImpellerValues() { return kImpellerValues; }
std::span<const W::ValueDesc> clsVXWaterjet::PointLists() { return kPointLists; }

clsVXWaterjet::clsVXWaterjet(std::shared_ptr<clsVXUnits> units)
    : DataClass(kWaterjetFields, std::move(units)) {}

std::shared_ptr<clsVXWaterjet> clsVXWaterjet::CopyClass() const {
  auto copy = std::make_shared<clsVXWaterjet>(Units());
  copy->CopyDataFrom(*this);
  copy->impellers_ = impellers_;
  copy->series_ = series_;
  return copy;
}

void clsVXWaterjet::ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits) {
  DataClass::ConvertAllData(newUnits, oldUnits);
  auto convert = [&](UnitFamily f, double& v) {
    if (f != UnitFamily::None) v = Units()->Convert(f, v, kCurrent, oldUnits.Index(f));
  };
  for (ImpellerRecord& r : impellers_) {
    for (int k = 0; k < kImpellerValueCount; ++k)
      convert(kImpellerValues[k].family, r.values[static_cast<size_t>(k)]);
  }
  for (PowerSeriesRecord& s : series_) {
    convert(UnitFamily::Power, s.Power);
    for (int k = 0; k < kPointListCount; ++k) {
      for (double& v : s.points[static_cast<size_t>(k)]) convert(kPointLists[k].family, v);
    }
  }
}

void clsVXWaterjet::ClearAllData() {
  DataClass::ClearAllData();
  impellers_.fill(ImpellerRecord{});
  series_.fill(PowerSeriesRecord{});
}

double clsVXWaterjet::ImpellerValueOf(ImpellerValue v, int i, int unit) const {
  const size_t k = static_cast<size_t>(v);
  return ToUnit(*this, kImpellerValues[k].family, Impeller(i).values[k], unit);
}

void clsVXWaterjet::SetImpellerValue(ImpellerValue v, int i, int unit, double value) {
  const size_t k = static_cast<size_t>(v);
  Impeller(i).values[k] = FromUnit(*this, kImpellerValues[k].family, value, unit);
}

std::string clsVXWaterjet::ImpellerValueFormatted(ImpellerValue v, int i, int unit) const {
  return Formatted(*this, kImpellerValues[static_cast<size_t>(v)].family, ImpellerValueOf(v, i, unit));
}

double clsVXWaterjet::Power(int s, int unit) const {
  return ToUnit(*this, UnitFamily::Power, PowerSeries(s).Power, unit);
}

void clsVXWaterjet::Power(int s, int unit, double value) {
  PowerSeries(s).Power = FromUnit(*this, UnitFamily::Power, value, unit);
}

std::string clsVXWaterjet::PowerFormatted(int s, int unit) const {
  return Formatted(*this, UnitFamily::Power, Power(s, unit));
}

double clsVXWaterjet::PointValue(PointList l, int s, int p, int unit) const {
  const size_t k = static_cast<size_t>(l);
  return ToUnit(*this, kPointLists[k].family, PowerSeries(s).points[k].at(static_cast<size_t>(p)), unit);
}

void clsVXWaterjet::SetPointValue(PointList l, int s, int p, int unit, double value) {
  const size_t k = static_cast<size_t>(l);
  PowerSeries(s).points[k].at(static_cast<size_t>(p)) = FromUnit(*this, kPointLists[k].family, value, unit);
}

std::string clsVXWaterjet::PointValueFormatted(PointList l, int s, int p, int unit) const {
  return Formatted(*this, kPointLists[static_cast<size_t>(l)].family, PointValue(l, s, p, unit));
}

std::vector<double> clsVXWaterjet::PointArray(PointList l, int s, int unit) const {
  const int n = PerformanceCount(s);
  std::vector<double> out;
  for (int p = 0; p < n; ++p) out.push_back(PointValue(l, s, p, unit));
  return out;
}

void clsVXWaterjet::Sort() {
  BubbleSort(
      PowerSeriesCount(), [this](int i) { return series_.at(static_cast<size_t>(i)).Power; },
      [this](int a, int b) {
        std::swap(series_.at(static_cast<size_t>(a)), series_.at(static_cast<size_t>(b)));
      });
  for (int s = 0; s < PowerSeriesCount(); ++s) {
    PowerSeriesRecord& r = series_.at(static_cast<size_t>(s));
    auto& speed = r.points[static_cast<size_t>(PointList::Speed)];
    BubbleSort(
        r.PerformanceCount, [&](int i) { return speed.at(static_cast<size_t>(i)); },
        [&](int a, int b) {
          for (auto& list : r.points)
            std::swap(list.at(static_cast<size_t>(a)), list.at(static_cast<size_t>(b)));
          std::swap(r.CavZoneStatus.at(static_cast<size_t>(a)), r.CavZoneStatus.at(static_cast<size_t>(b)));
        });
  }
}

bool clsVXWaterjet::RemoveImpeller(int index) {
  const int count = ImpellerCount();
  if (index < 0 || index >= count) return false;
  RemoveAt(impellers_, count, index);
  ImpellerCount(count - 1);
  if (ImpellerIndex() > count - 2) ImpellerIndex(count - 2 < 0 ? 0 : count - 2);
  return true;
}

bool clsVXWaterjet::RemovePowerSeries(int index) {
  const int count = PowerSeriesCount();
  if (index < 0 || index >= count) return false;
  RemoveAt(series_, count, index);
  PowerSeriesCount(count - 1);
  return true;
}

clsVXWaterjet::AddResult clsVXWaterjet::AddPerformancePoint(double power, double speed, double thrust,
                                                            int cavZoneStatus) {
  const int count = std::clamp(PowerSeriesCount(), 0, kWaterjetMaxPowerSeries);
  int s = 0;
  while (s < count && series_.at(static_cast<size_t>(s)).Power != power) ++s;
  if (s == count) {
    if (count == kWaterjetMaxPowerSeries) return AddResult::SeriesFull;
    series_.at(static_cast<size_t>(s)) = PowerSeriesRecord{};
    series_.at(static_cast<size_t>(s)).Power = power;
    PowerSeriesCount(count + 1);
  }
  PowerSeriesRecord& r = series_.at(static_cast<size_t>(s));
  const int p = std::clamp(r.PerformanceCount, 0, kWaterjetMaxPoints);
  if (p == kWaterjetMaxPoints) return AddResult::PointsFull;
  r.points[static_cast<size_t>(PointList::Speed)].at(static_cast<size_t>(p)) = speed;
  r.points[static_cast<size_t>(PointList::Thrust)].at(static_cast<size_t>(p)) = thrust;
  r.CavZoneStatus.at(static_cast<size_t>(p)) = cavZoneStatus;
  r.PerformanceCount = p + 1;
  return AddResult::Added;
}

bool clsVXWaterjet::AddImpeller(ImpellerRecord record) {
  const int count = std::clamp(ImpellerCount(), 0, kWaterjetMaxImpellers);
  if (count == kWaterjetMaxImpellers) return false;
  impellers_.at(static_cast<size_t>(count)) = std::move(record);
  ImpellerCount(count + 1);
  return true;
}

}  // namespace velmar
