// Unit families, factors, formats and the conversion with significant-digit rounding.
#include "core/units.h"

#include <cmath>
#include <stdexcept>

#include "core/helpers.h"

namespace velmar {
namespace {

// Factors are "how many of this unit make one of index 0". The composite factors are the
// products and quotients of the given literals, in double precision, in this order. The
// mm2 factor is a quotient on purpose: it makes one square foot 10763910.4167 mm2.
const std::array<UnitFamilyInfo, kUnitFamilyCount>& Infos() {
  static const std::array<UnitFamilyInfo, kUnitFamilyCount> infos = {{
      {"Length",
       "Length",
       {"ft", "m", "in", "mm"},
       {1.0, 0.3048, 12.0, 1000.0 * 0.3048},
       {"0.00", "0.000", "0.0", "0", "0.000"}},
      {"Area",
       "Area",
       {"ft2", "m2", "in2", "mm2"},
       {1.0, 0.3048 * 0.3048, 144.0, (1000.0 * 1000.0) / (0.3048 * 0.3048)},
       {"0.000", "0.000", "0.000", "0.000", "0.000"}},
      {"Weight",
       "Weight",
       {"LT", "t", "lb", "kg"},
       {1.0, 1.0160469088, 2240.0, 1016.0469088},
       {"0.00", "0.00", "0", "0", "0.00"}},
      {"Speed",
       "Speed",
       {"kt", "mi/h", "m/s", "ft/s"},
       {1.0, 1.15077944802, 1852.0 / 3600.0, 1.6878098571},
       {"0.00", "0.00", "0.000", "0.00", "0.000"}},
      {"Force",
       "Force",
       {"lbf", "N", "kip", "kN"},
       {1.0, 4.44822161526, 0.001, 0.00444822161526},
       {"0", "0", "0", "0", "0"}},
      {"Power",
       "Power",
       {"hp", "kW", "W"},
       {1.0, 0.745699871582, 0.745699871582 * 1000.0},
       {"0", "0", "0", "0"}},
      {"FuelRate", "FuelRate", {"gal/h", "L/h"}, {1.0, 3.785}, {"0.0", "0.0", "0.0"}},
      {"Torque",
       "Torque",
       {"lbf\u00b7ft", "N\u00b7m", "kip\u00b7ft", "kN\u00b7m", "oz\u00b7in"},
       {1.0, 0.3048 * 4.44822161526, 0.001, 0.3048 * 0.00444822161526, 16.0 * 12.0},
       {"0.0", "0.0", "0", "0", "0.0", "0.0"}},
      {"Pressure", "Pressure", {"lbf/in2", "kPa"}, {1.0, 6.89475729317}, {"0.0", "0.0", "0.00"}},
      {"Density", "Density", {"slug/ft3", "kg/m3"}, {1.0, 515.3788}, {"0.0000", "0.00", "0.00"}},
      {"Viscosity",
       "Viscosity",
       {"ft2/s", "m2/s"},
       {1.0, 0.3048 * 0.3048},
       {"0.00000e+0", "0.00000e+0", "0.00000e+0"}},
      {"PropLength",
       "Prop length",
       {"ft", "m", "in", "mm"},
       {1.0, 0.3048, 12.0, 1000.0 * 0.3048},
       {"0.0000", "0.00000", "0.000", "0.00", "0.00000"}},
      {"TipSpeed",
       "TipSpeed",
       {"ft/s", "m/s", "in/s", "mm/s"},
       {1.0, 0.3048, 12.0, 1000.0 * 0.3048},
       {"0.0", "0.0", "0", "0", "0.00"}},
      {"Temperature", "Temperature", {"\u00b0F", "\u00b0C"}, {}, {"0", "0"}},
  }};
  return infos;
}

int Ordinal(UnitFamily f) {
  const int i = static_cast<int>(f) - static_cast<int>(UnitFamily::Length);
  if (i < 0 || i >= kUnitFamilyCount) throw std::out_of_range("Unit family has no selection");
  return i;
}

// The family whose selection and factors a family uses, and the power of the factors: a
// derived family raises those of its base. Indexed by the family's code; None has ordinal -1.
struct FamilyBase {
  signed char ordinal;
  unsigned char power;
};
constexpr auto kFamilyBases = [] {
  std::array<FamilyBase, static_cast<size_t>(UnitFamily::PropLengthCube) + 1> t{};
  auto at = [&t](UnitFamily f) -> FamilyBase& { return t[static_cast<size_t>(f)]; };
  auto ordinal = [](UnitFamily f) {
    return static_cast<signed char>(static_cast<int>(f) - static_cast<int>(UnitFamily::Length));
  };
  for (size_t code = 0; code < t.size(); ++code) t[code] = {ordinal(static_cast<UnitFamily>(code)), 1};
  at(UnitFamily::Volume) = {ordinal(UnitFamily::Length), 3};
  at(UnitFamily::PropLengthSq) = {ordinal(UnitFamily::PropLength), 2};
  at(UnitFamily::PropLengthCube) = {ordinal(UnitFamily::PropLength), 3};
  return t;
}();

// The standard factors of every family raised to the powers 1, 2 and 3, computed once by
// the same std::pow calls the conversion made on every read before. The custom factor can
// change and is raised when used.
struct PoweredFactors {
  std::array<std::array<std::array<double, 8>, 4>, kUnitFamilyCount> factor{};  // [family][power][index]
  std::array<int, kUnitFamilyCount> count{};
};

[[gnu::noinline]] PoweredFactors RaiseFactors() {
  PoweredFactors t;
  for (int o = 0; o < kUnitFamilyCount; ++o) {
    const std::vector<double>& f = Infos()[o].factors;
    t.count[o] = static_cast<int>(f.size());
    for (size_t i = 0; i < f.size(); ++i) {
      t.factor[o][1].at(i) = f[i];  // a family with more units than the table holds throws here
      for (int power = 2; power <= 3; ++power) {
        // Read back through a volatile, so that the compiler cannot turn pow(x, 2) into x * x:
        // the library's pow is what the stored values were converted with.
        volatile int exponent = power;
        t.factor[o][power][i] = std::pow(f[i], static_cast<int>(exponent));
      }
    }
  }
  return t;
}

const PoweredFactors& Factors() {
  static const PoweredFactors table = RaiseFactors();
  return table;
}

// The same table raised during the start-up of the program, for the conversions between
// standard units, which then need no guard of a function-local static (a call in the middle
// of the conversion). Until it is raised (a static initializer of another file that
// converts), `ready` is false and the conversion takes the general way.
struct StartupFactors {
  PoweredFactors table = RaiseFactors();
  bool ready = true;
};
StartupFactors startupFactors;

double Rounded(double value, int sigDigits) {
  return sigDigits != -1 ? RoundToSigDigits(value, sigDigits) : value;
}

// The conversion of a temperature, to or from a custom unit, or with an index out of range
// (which throws), and of everything before the start-up table is raised; rounded to
// `sigDigits` unless it is -1.
[[gnu::noinline]] double ConvertOther(int ordinal, int power, double customFactor, double value, int toIndex,
                                      int fromIndex, int sigDigits) {
  if (ordinal == Ordinal(UnitFamily::Temperature)) {
    if (toIndex < 0 || toIndex > 1 || fromIndex < 0 || fromIndex > 1)
      throw std::out_of_range("Temperature unit index out of range");
    if (fromIndex == kDegF && toIndex == kDegC) return Rounded((value - 32.0) / 1.8, sigDigits);
    if (fromIndex == kDegC && toIndex == kDegF) return Rounded(1.8 * value + 32.0, sigDigits);
    return Rounded(value, sigDigits);
  }
  const PoweredFactors& table = Factors();
  const int n = table.count[static_cast<size_t>(ordinal)];
  auto factor = [&](int i) {
    if (i < 0 || i > n) throw std::out_of_range("Unit index out of range");
    if (i == n) return power == 1 ? customFactor : std::pow(customFactor, power);
    return table.factor[static_cast<size_t>(ordinal)][static_cast<size_t>(power)][static_cast<size_t>(i)];
  };
  const double to = factor(toIndex);
  const double from = factor(fromIndex);
  if (from == 0.0) throw std::domain_error("Division by zero");
  return Rounded(value * to / from, sigDigits);
}

}  // namespace

const UnitFamilyInfo& FamilyInfo(UnitFamily family) { return Infos()[Ordinal(family)]; }

const std::array<UnitFamily, kUnitFamilyCount>& AllUnitFamilies() {
  static const std::array<UnitFamily, kUnitFamilyCount> all = {
      UnitFamily::Length,   UnitFamily::Area,       UnitFamily::Weight,    UnitFamily::Speed,
      UnitFamily::Force,    UnitFamily::Power,      UnitFamily::FuelRate,  UnitFamily::Torque,
      UnitFamily::Pressure, UnitFamily::Density,    UnitFamily::Viscosity, UnitFamily::PropLength,
      UnitFamily::TipSpeed, UnitFamily::Temperature};
  return all;
}

const std::array<UnitFamily, kUnitFamilyCount>& UnitsDialogOrder() {
  static const std::array<UnitFamily, kUnitFamilyCount> order = {
      UnitFamily::Length,   UnitFamily::Weight,     UnitFamily::PropLength, UnitFamily::Force,
      UnitFamily::Power,    UnitFamily::Speed,      UnitFamily::Torque,     UnitFamily::Pressure,
      UnitFamily::TipSpeed, UnitFamily::FuelRate,   UnitFamily::Area,       UnitFamily::Viscosity,
      UnitFamily::Density,  UnitFamily::Temperature};
  return order;
}

UnitFamily FamilyFromName(std::string_view name) {
  for (UnitFamily f : AllUnitFamilies()) {
    if (EqualsNoCase(name, FamilyInfo(f).name)) return f;
  }
  return UnitFamily::None;
}

clsVXUnits::clsVXUnits() = default;

const clsVXUnits::Slot& clsVXUnits::slot(UnitFamily f) const { return slots_[Ordinal(f)]; }
clsVXUnits::Slot& clsVXUnits::slot(UnitFamily f) { return slots_[Ordinal(f)]; }

int clsVXUnits::Index(UnitFamily f) const { return slot(f).index; }
void clsVXUnits::SetIndex(UnitFamily f, int index) { slot(f).index = index; }

std::string clsVXUnits::Format(UnitFamily f) const {
  const Slot& s = slot(f);
  if (!s.format.empty()) return s.format;
  const auto& defaults = FamilyInfo(f).defaultFormats;
  if (s.index < 0 || s.index >= static_cast<int>(defaults.size())) return "";
  return defaults[s.index];
}

void clsVXUnits::SetFormat(UnitFamily f, std::string format) { slot(f).format = std::move(format); }

int clsVXUnits::LabelCount(UnitFamily f) const {
  const auto& info = FamilyInfo(f);
  return static_cast<int>(info.labels.size()) + (info.factors.empty() ? 0 : 1);
}

std::string clsVXUnits::Label(UnitFamily f, int index) const {
  const Slot& s = slot(f);
  if (index == kCurrent) index = s.index;
  const auto& labels = FamilyInfo(f).labels;
  if (index >= 0 && index < static_cast<int>(labels.size())) return labels[index];
  if (index == static_cast<int>(labels.size()) && !FamilyInfo(f).factors.empty()) return s.customLabel;
  throw std::out_of_range("Unit index out of range");
}

void clsVXUnits::SetCustomData(UnitFamily f, std::string label, double factor) {
  Slot& s = slot(f);
  s.customLabel = std::move(label);
  s.customFactor = factor;
}

// Every read and write that names a unit comes here. Between two standard units of a family
// with factors, the conversion is a lookup of two factors (never 0) and one multiplication
// and division; the temperature, the custom unit and the errors go through ConvertOther.
double clsVXUnits::Convert(UnitFamily f, double value, int toIndex, int fromIndex) const {
  const auto code = static_cast<size_t>(f);
  const int ordinal = code < kFamilyBases.size() ? kFamilyBases[code].ordinal : -1;
  if (ordinal < 0) throw std::out_of_range("Unit family has no selection");
  const Slot& s = slots_[static_cast<size_t>(ordinal)];
  if (toIndex == kCurrent) toIndex = s.index;
  if (fromIndex == kCurrent) fromIndex = s.index;
  const PoweredFactors& table = startupFactors.table;
  const auto n = static_cast<unsigned>(table.count[static_cast<size_t>(ordinal)]);
  if (static_cast<unsigned>(toIndex) < n && static_cast<unsigned>(fromIndex) < n && startupFactors.ready) {
    const auto& factor = table.factor[static_cast<size_t>(ordinal)][kFamilyBases[code].power];
    const double v = value * factor[static_cast<size_t>(toIndex)] / factor[static_cast<size_t>(fromIndex)];
    return round_ ? round_(v, sigDigits_) : v;
  }
  return ConvertOther(ordinal, kFamilyBases[code].power, s.customFactor, value, toIndex, fromIndex,
                      sigDigits_);
}

UnitScale::UnitScale(const clsVXUnits* units, UnitFamily family, int toIndex, int fromIndex)
    : units_(units), family_(family), toIndex_(toIndex), fromIndex_(fromIndex) {
  if (!units) return;
  // The fast way of Convert, taken once.
  const auto code = static_cast<size_t>(family);
  const int ordinal = code < kFamilyBases.size() ? kFamilyBases[code].ordinal : -1;
  if (ordinal < 0 || !startupFactors.ready) return;
  const clsVXUnits::Slot& s = units->slots_[static_cast<size_t>(ordinal)];
  const int to = toIndex == kCurrent ? s.index : toIndex;
  const int from = fromIndex == kCurrent ? s.index : fromIndex;
  const PoweredFactors& table = startupFactors.table;
  const auto n = static_cast<unsigned>(table.count[static_cast<size_t>(ordinal)]);
  if (static_cast<unsigned>(to) >= n || static_cast<unsigned>(from) >= n) return;
  const auto& factor = table.factor[static_cast<size_t>(ordinal)][kFamilyBases[code].power];
  to_ = factor[static_cast<size_t>(to)];
  from_ = factor[static_cast<size_t>(from)];
  sigDigits_ = units->sigDigits_;
  if (sigDigits_ != -1) round_ = PreparedRounding(sigDigits_);
  prepared_ = true;
}

void clsVXUnits::SigDigits(int digits) {
  sigDigits_ = digits;
  round_ = digits != -1 ? PreparedRounding(digits) : nullptr;
}

void clsVXUnits::ClearAllData() {
  unitsFormReturn_ = 2;
  sigDigits_ = -1, round_ = nullptr;
  for (Slot& s : slots_) s.index = 0;
}

void ApplyUnitPreset(clsVXUnits& units, UnitPreset preset) {
  struct Row {
    UnitFamily family;
    int imperialIndex;
    const char* imperialFormat;
    int siIndex;
    const char* siFormat;
  };
  static const Row rows[] = {
      {UnitFamily::Length, 0, "0.00", 1, "0.000"},
      {UnitFamily::Weight, 0, "0.00", 1, "0.00"},
      {UnitFamily::PropLength, 0, "0.00", 3, "0.0"},
      {UnitFamily::Force, 0, "0", 3, "0.00"},
      {UnitFamily::Power, 0, "0.0", 1, "0.0"},
      {UnitFamily::Speed, 0, "0.00", 0, "0.00"},
      {UnitFamily::Torque, 0, "0.00", 3, "0.00"},
      {UnitFamily::Pressure, 0, "0.00", 1, "0.00"},
      {UnitFamily::TipSpeed, 0, "0.00", 1, "0.00"},
      {UnitFamily::FuelRate, 0, "0.00", 1, "0.00"},
      {UnitFamily::Area, 0, "0.00", 1, "0.0"},
      {UnitFamily::Viscosity, 0, "0.00000e+0", 1, "0.00000e+0"},
      {UnitFamily::Density, 0, "0.0000", 1, "0.00"},
      {UnitFamily::Temperature, 0, "0.0", 1, "0.0"},
  };
  for (const Row& r : rows) {
    const bool si = preset == UnitPreset::SI;
    units.SetIndex(r.family, si ? r.siIndex : r.imperialIndex);
    units.SetFormat(r.family, si ? r.siFormat : r.imperialFormat);
  }
}

}  // namespace velmar
