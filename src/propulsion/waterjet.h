// clsVXWaterjet: a waterjet as its maker's data: a family of impellers with their speed,
// power and RPM, and for each power setting a curve of thrust over speed with the
// cavitation zone of each point. The class holds, sorts and trims these tables.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/data_class.h"

namespace velmar {

// Fixed sizes of the tables; an index beyond them is a run-time fault.
inline constexpr int kWaterjetMaxImpellers = 10;
inline constexpr int kWaterjetMaxPowerSeries = 10;
inline constexpr int kWaterjetMaxPoints = 10;

extern const LabelList kImpellerDefinitionLabels;  // Undefined, Defined
extern const LabelList kSpeedCorrectionLabels;     // Off, On
extern const LabelList kCavZoneStatusLabels;       // file labels False, True

// The numbers of an impeller record: name, accessor kind (Qty with a unit, Real without),
// unit family, file tag inside the record's object.
#define VX_WATERJET_IMPELLER_VALUES(C)                    \
  C(ImpellerSpeed, Qty, Speed, "Speed")                   \
  C(ImpellerPower, Qty, Power, "Power")                   \
  C(ImpellerRPM, Real, None, "RPM")                       \
  C(ImpellerCorrectedSpeed, Qty, Speed, "CorrectedSpeed") \
  C(ImpellerCorrectedPower, Qty, Power, "CorrectedPower") \
  C(ImpellerCorrectedRPM, Real, None, "CorrectedRPM")

// The point lists of a power series: name, unit family, file tag inside the series' object.
#define VX_WATERJET_POINT_LISTS(C) \
  C(Speed, Speed, "Speed")         \
  C(Thrust, Force, "Thrust")

class clsVXWaterjet : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "propulsion/waterjet_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "propulsion/waterjet_fields.def"

#define VX_WATERJET_ENUM(N, ...) N,
  enum class ImpellerValue { VX_WATERJET_IMPELLER_VALUES(VX_WATERJET_ENUM) Count };
  enum class PointList { VX_WATERJET_POINT_LISTS(VX_WATERJET_ENUM) Count };
#undef VX_WATERJET_ENUM
  static constexpr int kImpellerValueCount = static_cast<int>(ImpellerValue::Count);
  static constexpr int kPointListCount = static_cast<int>(PointList::Count);

  // Unit family and file tag of an impeller number or a point list, in enumeration order.
  struct ValueDesc {
    const char* name;
    UnitFamily family;
    const char* tag;
  };
  static std::span<const ValueDesc> ImpellerValues();
  static std::span<const ValueDesc> PointLists();

  struct ImpellerRecord {
    std::string Name;
    std::array<double, kImpellerValueCount> values{};
  };
  struct PowerSeriesRecord {
    double Power = 0.0;
    int PerformanceCount = 0;
    std::array<std::array<double, kWaterjetMaxPoints>, kPointListCount> points{};
    std::array<int, kWaterjetMaxPoints> CavZoneStatus{};
  };

  explicit clsVXWaterjet(std::shared_ptr<clsVXUnits> units = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units) { Units(std::move(units)); }
  std::shared_ptr<clsVXWaterjet> CopyClass() const;
  void ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits) override;
  // Numbers and records to 0, texts empty.
  void ClearAllData() override;

  std::string ImpellerDefinitionLabel(int index = -1) const { return ImpellerDefinitionIndexLabel(index); }

  // Whole records, for the file block and the entry tables.
  const ImpellerRecord& Impeller(int i) const { return impellers_.at(static_cast<size_t>(i)); }
  ImpellerRecord& Impeller(int i) { return impellers_.at(static_cast<size_t>(i)); }
  const PowerSeriesRecord& PowerSeries(int s) const { return series_.at(static_cast<size_t>(s)); }
  PowerSeriesRecord& PowerSeries(int s) { return series_.at(static_cast<size_t>(s)); }

  // Impellers: the name and the numbers of record i, in `unit` of the number's family.
  const std::string& ImpellerName(int i) const { return Impeller(i).Name; }
  void ImpellerName(int i, std::string name) { Impeller(i).Name = std::move(name); }
  double ImpellerValueOf(ImpellerValue v, int i, int unit = kCurrent) const;
  void SetImpellerValue(ImpellerValue v, int i, int unit, double value);
  std::string ImpellerValueFormatted(ImpellerValue v, int i, int unit = kCurrent) const;
#define VX_WATERJET_ACC_Real(N)                                                           \
  double N(int i) const { return ImpellerValueOf(ImpellerValue::N, i); }                  \
  void N(int i, double value) { SetImpellerValue(ImpellerValue::N, i, kCurrent, value); } \
  std::string N##Formatted(int i) const { return ImpellerValueFormatted(ImpellerValue::N, i); }
#define VX_WATERJET_ACC_Qty(N)                                                                  \
  double N(int i, int unit) const { return ImpellerValueOf(ImpellerValue::N, i, unit); }        \
  void N(int i, int unit, double value) { SetImpellerValue(ImpellerValue::N, i, unit, value); } \
  std::string N##Formatted(int i, int unit) const {                                             \
    return ImpellerValueFormatted(ImpellerValue::N, i, unit);                                   \
  }
#define VX_WATERJET_ACC(N, KIND, ...) VX_WATERJET_ACC_##KIND(N)
  VX_WATERJET_IMPELLER_VALUES(VX_WATERJET_ACC)
#undef VX_WATERJET_ACC
#undef VX_WATERJET_ACC_Real
#undef VX_WATERJET_ACC_Qty

  // Power series s: its power, its point count and point p of its lists.
  double Power(int s, int unit) const;
  void Power(int s, int unit, double value);
  std::string PowerFormatted(int s, int unit) const;
  int PerformanceCount(int s) const { return PowerSeries(s).PerformanceCount; }
  void PerformanceCount(int s, int count) { PowerSeries(s).PerformanceCount = count; }
  double PointValue(PointList l, int s, int p, int unit = kCurrent) const;
  void SetPointValue(PointList l, int s, int p, int unit, double value);
  std::string PointValueFormatted(PointList l, int s, int p, int unit = kCurrent) const;
  // The first PerformanceCount points of a list of series s.
  std::vector<double> PointArray(PointList l, int s, int unit = kCurrent) const;
#define VX_WATERJET_POINT_ACC(N, ...)                                                              \
  double N(int s, int p, int unit) const { return PointValue(PointList::N, s, p, unit); }          \
  void N(int s, int p, int unit, double value) { SetPointValue(PointList::N, s, p, unit, value); } \
  std::string N##Formatted(int s, int p, int unit) const {                                         \
    return PointValueFormatted(PointList::N, s, p, unit);                                          \
  }                                                                                                \
  std::vector<double> N##Array(int s, int unit = kCurrent) const { return PointArray(PointList::N, s, unit); }
  VX_WATERJET_POINT_LISTS(VX_WATERJET_POINT_ACC)
#undef VX_WATERJET_POINT_ACC
  int CavZoneStatus(int s, int p) const { return PowerSeries(s).CavZoneStatus.at(static_cast<size_t>(p)); }
  void CavZoneStatus(int s, int p, int status) {
    PowerSeries(s).CavZoneStatus.at(static_cast<size_t>(p)) = status;
  }

  // Bubble sort of the power series by power, ascending, records swapped whole; then the
  // points of each series by speed, ascending, with their thrust and cavitation zone. Equal
  // keys keep their order.
  void Sort();
  // Removes record `index`: the records behind it move up one place, the count drops by one
  // and the last place is cleared. The selected impeller stays within the new count. False,
  // with nothing changed, for an index that is not a held record.
  bool RemoveImpeller(int index);
  bool RemovePowerSeries(int index);

  // Import of a maker's table one point at a time (values as stored): the point joins the
  // power series of its power, or starts a new series after the held ones. What the fixed
  // tables cannot take is not added, and the result says which limit stopped it.
  enum class AddResult { Added, SeriesFull, PointsFull };
  AddResult AddPerformancePoint(double power, double speed, double thrust, int cavZoneStatus);
  // Adds an impeller after the held ones; false, with nothing changed, when 10 are held.
  bool AddImpeller(ImpellerRecord record);

 private:
  std::array<ImpellerRecord, kWaterjetMaxImpellers> impellers_{};
  std::array<PowerSeriesRecord, kWaterjetMaxPowerSeries> series_{};
};

}  // namespace velmar
