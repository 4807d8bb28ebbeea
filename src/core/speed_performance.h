// clsVXSpeedPerformance: the table of results, one row per speed. The first column (Speed)
// is the input of a run; the drivers fill all other columns row by row, and reports, graphs
// and result tables read them.
#pragma once

#include <array>
#include <cmath>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/data_class.h"
#include "core/water.h"

namespace velmar {

// File labels of the check columns, by code.
extern const LabelList kBreakdownCheckLabels;   // OK, Indicated
extern const LabelList kCavitationCheckLabels;  // OK, Uncertain, Fail, Missing
extern const LabelList kSpeedRangeCheckLabels;  // BelowRange, OK, AboveRange

// The design condition table offers ten speed cells: a project holds at most ten speeds.
inline constexpr int kMaxSpeedCount = 10;

class clsVXSpeedPerformance {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "core/speed_performance_fields.def"
    Count
  };
  static constexpr int kColumnCount = static_cast<int>(Field::Count);
  // The column descriptions, visible to the inline reads and writes: a read or write of a
  // named column compiles to the one path its column takes.
  static constexpr FieldDesc kColumns[] = {
#include "core/fields_table.h"
#include "core/speed_performance_fields.def"
  };
#include "core/columns_accessors.h"
#include "core/speed_performance_fields.def"

  // Texts of the cavitation, loading and planing-length results, with the warning mark of
  // their check (" !", " !!", " !!!" for a propeller breakdown) when `showMarks` is true.
  // Some print "---" where the number means nothing (cavitation below 2 %, a transport
  // factor above 1000); a dash takes no mark.
#define VX_MARKED(N)                                        \
  std::string N##Formatted(int row, bool showMarks) const { \
    return FormattedOf(row, FieldId(Field::N), showMarks);  \
  }
  VX_MARKED(PercentCavAverage)
  VX_MARKED(PercentCavPeak)
  VX_MARKED(RecommendedEAR)
  VX_MARKED(MinPitchFaceCav)
  VX_MARKED(TipSpeed)
  VX_MARKED(MeanBladePressure)
  VX_MARKED(TransportFactor)
  VX_MARKED(CoefPlaningLkeelLpRatio)
#undef VX_MARKED

  // Symbols and descriptions that depend on the kind of prediction.
  static std::string CoefReynoldsLengthSymbolDescription(bool planing);
  static std::string PowerEffectiveTotalSymbolDescription(bool vessel);
  static std::string CoefPropulsorJSymbol(bool oblique) { return oblique ? "JH" : "J"; }
  static std::string CoefPropulsorKTSymbol(bool oblique) { return oblique ? "KTH" : "KT"; }

  clsVXSpeedPerformance() = default;
  clsVXSpeedPerformance(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water);

  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water);
  const std::shared_ptr<clsVXUnits>& Units() const { return units_; }
  const std::shared_ptr<clsVXWaterProperties>& WaterProperties() const { return water_; }

  // Number of rows. Writing 1 or more resizes the rows and keeps the rows that remain;
  // writing less than 1 erases them.
  int count() const { return count_; }
  void count(int n);
  int SpeedIndex() const { return speedIndex_; }
  void SpeedIndex(int i) { speedIndex_ = i; }
  int DesignSpeedIndex() const { return designSpeedIndex_; }
  void DesignSpeedIndex(int i) { designSpeedIndex_ = i; }

  // Generic column access (file blocks, result tables, the command line). A row of -1 is
  // the current row; a row outside the table throws std::out_of_range.
  static std::span<const FieldDesc> Columns();
  static const FieldDesc& Column(int column) { return Columns()[column]; }
  static int ColumnIndex(std::string_view name);  // -1 if unknown
  // The common read and write (a row in the table, no conversion, no check or a check that
  // passes) are inline; conversions, refusals and a row outside the table go out of line.
  double Read(int row, int column, int unit) const {
    const FieldDesc& d = kColumns[column];
    const double stored = rows_[Offset(row, column)];
    if (d.family != UnitFamily::None && unit != kCurrent) return ConvertedRead(d, stored, unit);
    if (!FailsCheckInline(d, stored) && std::isfinite(stored)) return stored;
    return CheckedRead(d, stored);
  }
  void Write(int row, int column, int unit, double value) {
    const FieldDesc& d = kColumns[column];
    double& cell = rows_[Offset(row, column)];
    if (d.family != UnitFamily::None && unit != kCurrent) return ConvertedWrite(d, value, unit, cell);
    cell = d.kind == FieldKind::Int ? static_cast<double>(static_cast<long>(value)) : value;
  }
  // Read and Write in the unit of a scale prepared for the column's family (to that unit from
  // the table's for a read, the other way for a write): the same numbers, pushed words and
  // faults as Read and Write with that unit.
  double ReadIn(int row, int column, const UnitScale& scale) const {
    if (!scale.Prepared()) return Read(row, column, scale.ToIndex());
    return scale(Read(row, column, kCurrent));
  }
  void WriteIn(int row, int column, const UnitScale& scale, double value) {
    if (!scale.Prepared()) return Write(row, column, scale.FromIndex(), value);
    Write(row, column, kCurrent, scale(value));
  }
  double Raw(int row, int column) const { return rows_.at(Offset(row, column)); }
  void SetRaw(int row, int column, double value) { rows_.at(Offset(row, column)) = value; }
  // The column's text, by its format or else its family's format, with the dash rule and,
  // if `showMarks`, the mark of the marked columns.
  std::string FormattedOf(int row, int column, bool showMarks = false) const;

  // Sets the listed columns to 0 in every row.
  void ZeroColumns(std::span<const Field> columns);
  void ZeroColumns(std::initializer_list<Field> columns) {
    ZeroColumns(std::span(columns.begin(), columns.size()));
  }
  // Bare-hull drag, trim, wetted lengths, hump multiplier and the alignment multipliers.
  void ZeroBareHullPropertiesArrays();
  // Fuel rate and engine load.
  void ZeroEnginePropertiesArrays();

  // Error stack: clearing also clears the linked water's stack.
  void ClearErrorStack();
  bool ErrorsFound() { return errors_.ErrorsFound(); }
  std::string Errors() { return errors_.Take(); }
  void Errors(std::string_view message) { errors_.Push(message); }

  // The same links, count, indices and rows; the copy's error stack starts empty.
  std::shared_ptr<clsVXSpeedPerformance> CopyClass() const {
    auto copy = std::make_shared<clsVXSpeedPerformance>(*this);
    copy->errors_.Clear();
    return copy;
  }
  void ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits);

 private:
  // The place of (row, column), a row of -1 standing for the current row. The table holds
  // count_ rows (none when count_ is below 1), so the row is tested against the count alone.
  size_t Offset(int row, int column) const {
    if (row == -1) row = speedIndex_;
    if (row < 0 || row >= count_) RowOutOfRange();
    return static_cast<size_t>(row) * kColumnCount + static_cast<size_t>(column);
  }
  [[noreturn, gnu::cold]] static void RowOutOfRange();
  // The read checks the speed table's columns have (a named column's folds to one test).
  static bool FailsCheckInline(const FieldDesc& d, double v) {
    return (d.check == Check::NotPositive && v <= 0.0) ||
           (d.check != Check::None && d.check != Check::NotPositive && FailsCheck(d, v));
  }
  double ConvertedRead(const FieldDesc& d, double stored, int unit) const;
  double CheckedRead(const FieldDesc& d, double stored) const;
  void ConvertedWrite(const FieldDesc& d, double value, int unit, double& cell);

  std::shared_ptr<clsVXUnits> units_;
  std::shared_ptr<clsVXWaterProperties> water_;
  int count_ = 0;
  int speedIndex_ = 0;
  int designSpeedIndex_ = 0;
  std::vector<double> rows_;  // count_ rows of kColumnCount values
  mutable ErrorStack errors_;
};

}  // namespace velmar
