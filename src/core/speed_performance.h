// clsVXSpeedPerformance: the table of results, one row per speed. The first column (Speed)
// is the input of a run; the drivers fill all other columns row by row, and reports, graphs
// and result tables read them.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "core/data_class.h"
#include "core/water.h"

namespace velmar {

class clsVXSpeedPerformance {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "core/speed_performance_fields.def"
    Count
  };
  static constexpr int kColumnCount = static_cast<int>(Field::Count);
#include "core/columns_accessors.h"
#include "core/speed_performance_fields.def"

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
  double Read(int row, int column, int unit) const;
  void Write(int row, int column, int unit, double value);
  double Raw(int row, int column) const { return rows_.at(Offset(row, column)); }
  void SetRaw(int row, int column, double value) { rows_.at(Offset(row, column)) = value; }
  std::string FormattedOf(int row, int column) const;

  // Error stack: clearing also clears the linked water's stack.
  void ClearErrorStack();
  bool ErrorsFound() { return errors_.ErrorsFound(); }
  std::string Errors() { return errors_.Take(); }
  void Errors(std::string_view message) { errors_.Push(message); }

  std::shared_ptr<clsVXSpeedPerformance> CopyClass() const { return std::make_shared<clsVXSpeedPerformance>(*this); }
  void ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits);

 private:
  size_t Offset(int row, int column) const;

  std::shared_ptr<clsVXUnits> units_;
  std::shared_ptr<clsVXWaterProperties> water_;
  int count_ = 0;
  int speedIndex_ = 0;
  int designSpeedIndex_ = 0;
  std::vector<double> rows_;  // count_ rows of kColumnCount values
  mutable ErrorStack errors_;
};

}  // namespace velmar
