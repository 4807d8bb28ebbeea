// clsVXUnits: the fourteen quantity families, their units, factors and display formats, and
// the user's selection. Values in the model are stored in the selected unit; every read or
// write that names a unit index converts through here, rounded to SigDigits.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace velmar {

// Unit families. Volume and the squared/cubed propeller lengths are derived from a base
// family by raising its factors to a power; they have no selection of their own.
enum class UnitFamily : unsigned char {
  None,
  Length,
  Area,
  Weight,
  Speed,
  Force,
  Power,
  FuelRate,
  Torque,
  Pressure,
  Density,
  Viscosity,
  PropLength,
  TipSpeed,
  Temperature,
  Volume,          // Length cubed
  PropLengthSq,    // PropLength squared
  PropLengthCube,  // PropLength cubed
};

inline constexpr int kUnitFamilyCount = 14;  // the families with a selection, Length..Temperature

// Unit indices used by prediction code. -1 always means "as stored" (the selected unit).
inline constexpr int kCurrent = -1;
// Length and PropLength
inline constexpr int kFt = 0, kM = 1, kIn = 2, kMm = 3;
// Area
inline constexpr int kFt2 = 0, kM2 = 1, kIn2 = 2, kMm2 = 3;
// Weight
inline constexpr int kLT = 0, kTonne = 1, kLb = 2, kKg = 3;
// Speed
inline constexpr int kKt = 0, kMiPerH = 1, kMPerSec = 2, kFtPerSec = 3;
// Force
inline constexpr int kLbf = 0, kN = 1, kKip = 2, kKN = 3;
// Power
inline constexpr int kHp = 0, kKW = 1, kW = 2;
// FuelRate
inline constexpr int kGalPerH = 0, kLPerH = 1;
// Torque
inline constexpr int kLbfFt = 0, kNm = 1, kKipFt = 2, kKNm = 3, kOzIn = 4;
// Pressure
inline constexpr int kPsi = 0, kKPa = 1;
// Density
inline constexpr int kSlugPerFt3 = 0, kKgPerM3 = 1;
// Viscosity
inline constexpr int kFt2PerSec = 0, kM2PerSec = 1;
// TipSpeed
inline constexpr int kTipFtPerSec = 0, kTipMPerSec = 1;
// Temperature
inline constexpr int kDegF = 0, kDegC = 1;

// Static description of one family.
struct UnitFamilyInfo {
  const char* name;                         // "Length", also the row key and the file tag
  const char* dialogKey;                    // row key of the units dialog ("Prop length", ...)
  std::vector<std::string> labels;          // standard labels, without the custom entry
  std::vector<double> factors;              // units per one of index 0; empty for Temperature
  std::vector<std::string> defaultFormats;  // by index, custom entry included
};

// Info of a selectable family (Length..Temperature). Throws std::out_of_range otherwise.
const UnitFamilyInfo& FamilyInfo(UnitFamily family);
// The selectable families in declaration order, and in the order of the units dialog.
const std::array<UnitFamily, kUnitFamilyCount>& AllUnitFamilies();
const std::array<UnitFamily, kUnitFamilyCount>& UnitsDialogOrder();
// Family by name ("Length", "PropLength", ...), case-blind; UnitFamily::None if unknown.
UnitFamily FamilyFromName(std::string_view name);

class clsVXUnits {
 public:
  clsVXUnits();

  // Generic members; the named ones below forward to these.
  int Index(UnitFamily f) const;
  void SetIndex(UnitFamily f, int index);
  std::string Format(UnitFamily f) const;  // the user's format, else the default of the index
  std::string FormatText(UnitFamily f) const { return slot(f).format; }  // as stored
  void SetFormat(UnitFamily f, std::string format);
  std::string Label(UnitFamily f, int index = kCurrent) const;  // includes the custom entry
  int LabelCount(UnitFamily f) const;                           // custom entry included
  void SetCustomData(UnitFamily f, std::string label, double factor);
  std::string CustomLabel(UnitFamily f) const { return slot(f).customLabel; }
  double CustomFactor(UnitFamily f) const { return slot(f).customFactor; }
  // value x factor[to] / factor[from], then rounded to SigDigits unless SigDigits is -1.
  // Throws std::out_of_range for an index outside the family and std::domain_error for a
  // zero factor, so that the guard of the calling prediction reports it.
  double Convert(UnitFamily f, double value, int toIndex, int fromIndex) const;

  int SigDigits() const { return sigDigits_; }
  void SigDigits(int digits);
  int UnitsFormReturn() const { return unitsFormReturn_; }
  void UnitsFormReturn(int v) { unitsFormReturn_ = v; }

  void ClearAllData();
  std::shared_ptr<clsVXUnits> CopyClass() const { return std::make_shared<clsVXUnits>(*this); }

#define VX_UNIT_FAMILY(F)                                                                                 \
  int F##Index() const { return Index(UnitFamily::F); }                                                   \
  void F##Index(int i) { SetIndex(UnitFamily::F, i); }                                                    \
  std::string F##Format() const { return Format(UnitFamily::F); }                                         \
  void F##Format(std::string fmt) { SetFormat(UnitFamily::F, std::move(fmt)); }                           \
  double ConvertUnit##F(double v, int to, int from) const { return Convert(UnitFamily::F, v, to, from); } \
  std::string GetUnit##F##Label(int index) const { return Label(UnitFamily::F, index); }                  \
  void SetUnit##F##CustomData(std::string label, double factor) {                                         \
    SetCustomData(UnitFamily::F, std::move(label), factor);                                               \
  }
  VX_UNIT_FAMILY(Length)
  VX_UNIT_FAMILY(Area)
  VX_UNIT_FAMILY(Weight)
  VX_UNIT_FAMILY(Speed)
  VX_UNIT_FAMILY(Force)
  VX_UNIT_FAMILY(Power)
  VX_UNIT_FAMILY(FuelRate)
  VX_UNIT_FAMILY(Torque)
  VX_UNIT_FAMILY(Pressure)
  VX_UNIT_FAMILY(Density)
  VX_UNIT_FAMILY(Viscosity)
  VX_UNIT_FAMILY(PropLength)
  VX_UNIT_FAMILY(TipSpeed)
  VX_UNIT_FAMILY(Temperature)
#undef VX_UNIT_FAMILY
  double ConvertUnitLength3(double v, int to, int from) const {
    return Convert(UnitFamily::Volume, v, to, from);
  }
  double ConvertUnitPropLength2(double v, int to, int from) const {
    return Convert(UnitFamily::PropLengthSq, v, to, from);
  }
  double ConvertUnitPropLength3(double v, int to, int from) const {
    return Convert(UnitFamily::PropLengthCube, v, to, from);
  }

 private:
  friend class UnitScale;
  struct Slot {
    int index = 0;
    std::string format;
    std::string customLabel = "CUSTOM";
    double customFactor = 0.0;
  };
  const Slot& slot(UnitFamily f) const;
  Slot& slot(UnitFamily f);

  std::array<Slot, kUnitFamilyCount> slots_{};
  int sigDigits_ = -1;
  // The rounding to sigDigits_ that Convert takes (PreparedRounding), null for -1; set with it.
  double (*round_)(double value, int digits) = nullptr;
  int unitsFormReturn_ = 2;
};

// One conversion of a family, from one unit to another, prepared for many values: the same
// number as clsVXUnits::Convert of the same arguments. Between two standard units the factors
// and the rounding are looked up once; any other conversion (a temperature, a custom unit, an
// index out of range) goes through Convert on every call, where it throws as it always has.
// The units must not change while the scale is in use (within one prediction run).
class UnitScale {
 public:
  // `units` may be null: nothing is prepared then.
  UnitScale(const clsVXUnits* units, UnitFamily family, int toIndex, int fromIndex);
  double operator()(double value) const {
    if (!prepared_) return units_->Convert(family_, value, toIndex_, fromIndex_);
    const double v = value * to_ / from_;
    return round_ ? round_(v, sigDigits_) : v;
  }
  bool Prepared() const { return prepared_; }
  int ToIndex() const { return toIndex_; }
  int FromIndex() const { return fromIndex_; }

 private:
  const clsVXUnits* units_;
  UnitFamily family_;
  int toIndex_, fromIndex_;
  bool prepared_ = false;
  int sigDigits_ = -1;
  double (*round_)(double value, int digits) = nullptr;  // the rounding to sigDigits_, if any
  double to_ = 1.0, from_ = 1.0;
};

// The two presets of the units dialog, applied to a working copy.
enum class UnitPreset { SI, Imperial };
void ApplyUnitPreset(clsVXUnits& units, UnitPreset preset);

}  // namespace velmar
