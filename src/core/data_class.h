// The one mechanism behind every data class: each class lists its fields once, in a .def
// table, and this base derives storage, unit-converting reads and writes with their read
// checks, formatted texts, captions, symbols, ConvertAllData, copying and clearing.
//
// A .def table holds one line per field, in the order of the class's file block:
//   VX_QTY(Name, Family, .label = ..., ...)   a quantity with a unit family
//   VX_REAL(Name, ...)                        a dimensionless double
//   VX_INT(Name, ...)                         a 16-bit integer (counts)
//   VX_ENUM(Name, Labels, ...)                an index into the label/key list `Labels`
//   VX_TEXT(Name, ...)                        a text (file paths, sources, descriptions)
// The trailing arguments are designated initialisers of FieldDesc (in member order).
#pragma once

#include <cmath>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/error_stack.h"
#include "core/units.h"

namespace velmar {

// What a read tests; when the test holds, the field's word is pushed on the error stack.
enum class Check : unsigned char {
  None,
  NotPositive,  // value <= 0
  Negative,     // value < 0
  BelowOne,     // value < 1
  Outside,      // value < lo or value > hi
};

enum class FieldKind : unsigned char { Quantity, Real, Int, Enum, Text };

// The labels of an enumeration: user labels, and the keys written to project files.
struct LabelList {
  std::vector<std::string> labels;
  std::vector<std::string> keys;
};

// A label list written as (label, file key) pairs, so that index, label and key stay on one
// line.
LabelList Keyed(std::initializer_list<std::pair<const char*, const char*>> rows);

// Lists that many settings share.
extern const LabelList kOffOnLabels;          // "Off", "On"
extern const LabelList kOffCalcLockLabels;    // "Off", "Calc", "Lock"; the key "Enter" too
extern const LabelList kDragTechniqueLabels;  // "Prediction", "Aligned prediction", ...

enum FieldFlags : unsigned {
  kNoConvert = 1u << 0,         // ConvertAllData leaves the number as it is
  kWarnEntryOutside = 1u << 1,  // first entry outside [entryLo, entryHi] warns (T/C ratios)
  kNotInFile = 1u << 2,         // the field has no tag in the class's file block
  kRoundOnWrite = 1u << 3,      // written to files rounded to 6 significant digits
};

struct FieldDesc {
  const char* name = "";
  FieldKind kind = FieldKind::Real;
  UnitFamily family = UnitFamily::None;
  const LabelList* labels = nullptr;
  const char* label = "";        // entry-table caption without the indent
  const char* symbol = "";       // short symbol for reports and table heads
  const char* description = "";  // long explanation of the symbol
  const char* format = "";       // fixed format; empty: the family's format
  Check check = Check::None;
  double lo = 0.0, hi = 0.0;  // bounds of Check::Outside
  const char* word = "";      // pushed on the error stack when the check holds
  unsigned flags = 0;
  UnitFamily convertAs = UnitFamily::None;  // family ConvertAllData uses, if not `family`
  const char* tag = "";                     // file tag, if not `name`
  double entryLo = 0.0, entryHi = 0.0;      // bounds of kWarnEntryOutside
  double init = 0.0;                        // value of a new object
  int fallback = 0;                         // index an unknown label reads as (enumerations)
  const char* textInit = "";                // text of a new object (texts)

  std::string_view Tag() const { return *tag ? tag : name; }
};

// Tests a value against a field's read check.
bool FailsCheck(const FieldDesc& d, double value);

// Base of the scalar data classes (hull, appendage, environment, water, ...).
class DataClass {
 public:
  DataClass(std::span<const FieldDesc> fields, std::shared_ptr<clsVXUnits> units);
  virtual ~DataClass() = default;

  // Links.
  const std::shared_ptr<clsVXUnits>& Units() const { return units_; }
  void Units(std::shared_ptr<clsVXUnits> units) { units_ = std::move(units); }

  // Error stack members of every reporting class.
  virtual void ClearErrorStack() { errors_.Clear(); }
  bool ErrorsFound() { return errors_.ErrorsFound(); }
  std::string Errors() { return errors_.Take(); }
  void Errors(std::string_view message) { errors_.Push(message); }
  const std::string& ErrorText() const { return errors_.Text(); }

  // Every stored quantity converted from the family indices held in `oldUnits` to the
  // selection of the own Units link (which already holds the new selection).
  virtual void ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits);
  // Every field to 0.
  virtual void ClearAllData();
  // Every field to the value of a new object.
  void ResetToInitialValues();

  // Table access, for file blocks, entry tables and data reports.
  std::span<const FieldDesc> Fields() const { return fields_; }
  int FieldIndex(std::string_view name) const;  // -1 if unknown
  double Raw(int field) const { return values_[field]; }
  void SetRaw(int field, double value) { values_[field] = value; }
  // Reads with the unit conversion and the read check of the field (unit ignored when the
  // field has no family). A read without conversion of a field without check is inline.
  double Read(int field, int unit = kCurrent) const {
    const FieldDesc& d = fields_[field];
    const double stored = values_[field];
    if (d.check == Check::None && (d.family == UnitFamily::None || unit == kCurrent) && std::isfinite(stored))
      return stored;
    return ReadChecked(field, unit);
  }
  // Writes with the unit conversion; no check, but the entry warning of flagged fields.
  void Write(int field, int unit, double value);
  virtual std::string FormattedOf(int field, int unit = kCurrent) const;
  virtual std::string FieldNameOf(int field) const;
  std::string SymbolOf(int field) const { return fields_[field].symbol; }
  std::string SymbolDescriptionOf(int field) const { return fields_[field].description; }
  std::string LabelOf(int field, int index = -1) const;  // enumeration label; -1: the stored index
  const std::string& TextOf(int field) const { return texts_[field]; }
  void SetText(int field, std::string value) { texts_[field] = std::move(value); }

 protected:
  // Copies data and links of `other` into this object; the error stack stays empty.
  void CopyDataFrom(const DataClass& other) {
    values_ = other.values_;
    texts_ = other.texts_;
    units_ = other.units_;
  }
  // Reads and writes of single fields, for hand-written members of derived classes.
  void Push(std::string_view word) const { errors_.Push(word); }

 private:
  double ReadChecked(int field, int unit) const;

  std::span<const FieldDesc> fields_;
  std::vector<double> values_;
  std::vector<std::string> texts_;  // used by the text fields only
  std::shared_ptr<clsVXUnits> units_;
  mutable ErrorStack errors_;
};

// Helpers for the generated accessors.
template <class E>
constexpr int FieldId(E e) {
  return static_cast<int>(e);
}

}  // namespace velmar

// ---- Generation macros ------------------------------------------------------------------
// Use inside a class derived from DataClass:
//   enum class Field {
//   #include "core/fields_enum.h"
//   #include "vessel/hull_fields.def"
//     Count };
//   #include "core/fields_accessors.h"
//   #include "vessel/hull_fields.def"
// and in the .cpp:
//   const FieldDesc kHullFields[] = {
//   #include "core/fields_table.h"
//   #include "vessel/hull_fields.def"
//   };
// Each .def file ends with #include "core/fields_undef.h".
