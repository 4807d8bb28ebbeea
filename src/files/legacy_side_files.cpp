// What the legacy readers share (the report, the older unit labels, the block reader) and
// the legacy engine and waterjet files, both ways.
#include <algorithm>
#include <exception>
#include <map>

#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/file_ini.h"
#include "files/legacy_files.h"
#include "propulsion/engine.h"
#include "propulsion/waterjet.h"

namespace velmar {

namespace fs = std::filesystem;

// ---- Shared ----------------------------------------------------------------------------------

std::string LegacyReport::ItemsText() const {
  std::string text, block;
  for (size_t i = 0; i < items.size(); ++i) {
    if (i == 0 || items[i].block != block) {
      block = items[i].block;
      text += "[" + block + "]\r\n";
    }
    text += "    " + items[i].text + "\r\n";
  }
  return text;
}

std::span<const std::string> LegacyUnitLabels(UnitFamily family) {
  // The labels of older versions, in the order of the unit indices. Empty slots keep their
  // place so that the position of every label is its index.
  static const std::map<UnitFamily, std::vector<std::string>> kLabels = {
      {UnitFamily::Length, {"Foot", "Meter", "Inch", "Millimeter"}},
      {UnitFamily::PropLength, {"Foot", "Meter", "Inch", "Millimeter"}},
      {UnitFamily::Area, {"SquareFoot", "SquareMeter", "SquareInch", "SquareMillimeter"}},
      {UnitFamily::Weight, {"LongTon", "MetricTon", "Pound", "Kilogram"}},
      {UnitFamily::Speed, {"Knot", "MilePerH", "MeterPerS", "FeetPerS"}},
      {UnitFamily::Force, {"Pound", "Newton", "Kip", "kiloNewton"}},
      {UnitFamily::Power, {"Horsepower", "Kilowatt", "Dummy2", "Dummy3"}},
      {UnitFamily::FuelRate, {"GallonPerH", "LiterPerH"}},
      {UnitFamily::Torque, {"PoundFoot", "NewtonMeter", "KipFoot", "KiloNewtonMeter", "OunceInch"}},
      {UnitFamily::Pressure, {"PoundPerSqInch", "Kilopascal"}},
      {UnitFamily::Density, {"SlugPerCuFt", "KilogramPerCuM"}},
      {UnitFamily::Viscosity, {"SqFeetPerS", "SqMeterPerS"}},
      {UnitFamily::TipSpeed, {"FeetPerS", "MeterPerS", "InchPerS", "MillimeterPerS"}},
      {UnitFamily::Temperature, {"Fahrenheit", "Celsius"}},
  };
  const auto it = kLabels.find(family);
  return it == kLabels.end() ? std::span<const std::string>() : std::span<const std::string>(it->second);
}

std::string LegacyUnitLabel(UnitFamily family, int index) {
  const std::span<const std::string> older = LegacyUnitLabels(family);
  const auto i = static_cast<size_t>(index);
  if (index >= 0 && i < older.size() && !older[i].starts_with("Dummy")) return older[i];
  const std::vector<std::string>& current = FamilyInfo(family).labels;
  return index >= 0 && i < current.size() ? current[i] : std::string();
}

int GetLegacyUnitIndex(clsVXFileINI& ini, std::string_view tag, UnitFamily family, bool& failed,
                       std::string& errorText) {
  bool bad = false;
  const int index =
      ini.GetIndexFromBlockTag(tag, LegacyUnitLabels(family), bad, errorText, FamilyInfo(family).labels);
  // An empty slot of the older list names no unit of this version.
  if (!bad && static_cast<size_t>(index) >= FamilyInfo(family).labels.size()) {
    bad = true;
    errorText += (errorText.empty() ? "" : "\r\n") + ini.BlockName() + " [" + std::string(tag) + "] tag [" +
                 LegacyUnitLabels(family)[static_cast<size_t>(index)] + "] not recognized.";
  }
  failed = failed || bad;
  return bad ? -1 : index;
}

LegacyBlockReader::LegacyBlockReader(clsVXFileINI& ini, LegacyReport& report, std::string_view block)
    : ini_(ini), report_(report), block_(block) {
  ini_.ReadBlock(block, found);
}

void LegacyBlockReader::Finish() {
  if (!found) {
    report_.items.push_back({block_, "block not found."});
    return;
  }
  for (const std::string& line : SplitDelimited(errors, "\r\n"))
    if (!line.empty()) report_.items.push_back({block_, line});
  for (const std::string& tag : ini_.UnusedTags())
    report_.items.push_back({block_, tag + " tag not recognized."});
}

bool LoadLegacyFile(clsVXFileINI& ini, const fs::path& path, std::span<const std::string_view> blocks,
                    LegacyReport& report) {
  const std::string quoted = "\"" + path.string() + "\"";
  std::error_code ec;
  if (!fs::exists(path, ec)) {
    report.message = "The file " + quoted + " does not exist.";
    return false;
  }
  if (!ini.ReadFile(path)) {
    report.message = "The file " + quoted + " cannot be read.";
    return false;
  }
  for (const std::string& name : ini.BlockNames()) {
    if (std::ranges::any_of(blocks, [&](std::string_view b) { return EqualsNoCase(b, name); })) {
      report.ok = true;
      return true;
    }
  }
  report.message = "The file " + quoted + " is not a legacy Velmar file.";
  return false;
}

namespace {

// The unit index of each family that a data file names; a family it does not name is taken
// as held.
using FileUnits = std::map<UnitFamily, int>;

// A value of the file (in the file's unit of `fileFamily`) as held in `family`. The two
// families differ where a file gives a length in the propeller's unit; both have the foot
// at index 0.
double ToHeld(const clsVXUnits& held, const FileUnits& file, UnitFamily family, UnitFamily fileFamily,
              double v) {
  const auto it = file.find(fileFamily);
  if (family == UnitFamily::None || it == file.end()) return v;
  if (family == fileFamily)
    return it->second == held.Index(family) ? v : held.Convert(family, v, kCurrent, it->second);
  return held.Convert(family, held.Convert(fileFamily, v, 0, it->second), kCurrent, 0);
}

double FromHeld(const clsVXUnits& held, UnitFamily family, UnitFamily fileFamily, double v) {
  if (family == UnitFamily::None || family == fileFamily) return v;
  return held.Convert(fileFamily, held.Convert(family, v, 0, kCurrent), kCurrent, 0);
}

const clsVXUnits& NeedUnits(const DataClass& obj) {
  if (!obj.Units()) throw std::logic_error("Units link not set");
  return *obj.Units();
}

void ReadFileUnits(clsVXFileINI& ini, LegacyBlockReader& r,
                   std::span<const std::pair<const char*, UnitFamily>> tags, FileUnits& units) {
  for (const auto& [tag, family] : tags) {
    const int index = GetLegacyUnitIndex(ini, tag, family, r.failed, r.errors);
    if (index >= 0) units[family] = index;
  }
}

// A scalar of a data file: its tag, the field it fills and the unit family the file gives it
// in (None: no unit).
struct ScalarTag {
  const char* tag;
  const char* field;
  UnitFamily fileFamily;
};

void ReadScalars(clsVXFileINI& ini, LegacyBlockReader& r, std::span<const ScalarTag> tags,
                 const FileUnits& units, DataClass& obj) {
  for (const ScalarTag& t : tags) {
    bool bad = false;
    const double v = ini.GetFloatFromBlockTag(t.tag, bad, r.errors);
    r.failed = r.failed || bad;
    const int f = obj.FieldIndex(t.field);
    if (!bad)
      obj.SetRaw(f,
                 ToHeld(NeedUnits(obj), units, obj.Fields()[static_cast<size_t>(f)].family, t.fileFamily, v));
  }
}

void WriteScalars(clsVXFileINI& ini, bool& failed, std::string& errors, std::span<const ScalarTag> tags,
                  const DataClass& obj) {
  for (const ScalarTag& t : tags) {
    const int f = obj.FieldIndex(t.field);
    ini.SetFloatToBlockTag(
        t.tag,
        FromHeld(NeedUnits(obj), obj.Fields()[static_cast<size_t>(f)].family, t.fileFamily, obj.Raw(f)),
        failed, errors);
  }
}

// Ends an export: the file is written whole, and what could not be set is reported.
LegacyReport FinishExport(const clsVXFileINI& ini, const fs::path& path, std::string_view errors) {
  LegacyReport report;
  for (const std::string& line : SplitDelimited(errors, "\r\n"))
    if (!line.empty()) report.items.push_back({"", line});
  std::string error;
  report.ok = ini.WriteFile(path, &error);
  report.message = report.ok ? std::string() : error;
  return report;
}

// A guard for the readers: a fault of the data ends the import with a message.
template <class F>
LegacyReport Guarded(const fs::path& path, F f) {
  try {
    return f();
  } catch (const std::exception& e) {
    LegacyReport report;
    report.message = "The file \"" + path.string() + "\" could not be read: " + e.what();
    return report;
  }
}

// ---- Engine ----------------------------------------------------------------------------------

using Curve = clsVXEngine::Curve;
constexpr std::pair<const char*, UnitFamily> kEngineUnitTags[] = {{"Power", UnitFamily::Power},
                                                                  {"FuelRate", UnitFamily::FuelRate}};
constexpr ScalarTag kEngineScalars[] = {{"RatingPwr", "MaxRatedPower", UnitFamily::Power},
                                        {"RatingRPM", "MaxRatedRPM", UnitFamily::None}};
// The curve lists; the first of each curve gives its count.
constexpr std::pair<const char*, Curve> kEngineCurveTags[] = {
    {"PerfPwr", Curve::MaxPowerPower},     {"PerfRPM", Curve::MaxPowerRPM},
    {"PerfFuel", Curve::MaxPowerFuelRate}, {"CombPwr", Curve::DefinedLoadPower},
    {"CombRPM", Curve::DefinedLoadRPM},    {"CombFuel", Curve::DefinedLoadFuelRate}};
constexpr std::string_view kEngineBlocks[] = {"Velmar", "EngUnits", "EngineLib"};

const clsVXEngine::CurveDesc& CurveOf(Curve c) { return clsVXEngine::Curves()[static_cast<size_t>(c)]; }

// ---- Waterjet --------------------------------------------------------------------------------

constexpr std::pair<const char*, UnitFamily> kJetUnitTags[] = {{"Speed", UnitFamily::Speed},
                                                               {"Power", UnitFamily::Power},
                                                               {"Force", UnitFamily::Force},
                                                               {"PropLength", UnitFamily::PropLength}};
constexpr const char* kJetDecimalTags[] = {"SpeedDecimal", "ForceDecimal", "PowerDecimal",
                                           "PropLengthDecimal"};
constexpr UnitFamily kJetDecimalFamilies[] = {UnitFamily::Speed, UnitFamily::Force, UnitFamily::Power,
                                              UnitFamily::PropLength};
// The shaft height stands in the file in the propeller's length unit.
constexpr ScalarTag kJetScalars[] = {{"ImpDiam", "ImpellerDiameter", UnitFamily::PropLength},
                                     {"MaxPower", "MaxRatedPower", UnitFamily::Power},
                                     {"MaxRevs", "MaxRatedRPM", UnitFamily::None},
                                     {"ThrustAngle", "ShaftAngleDeg", UnitFamily::None},
                                     {"JetVCE", "ZShaftAboveBottomAtTr", UnitFamily::PropLength}};
constexpr std::string_view kJetBlocks[] = {"Velmar", "JetUnits", "JetLib", "JetPerf", "JetImpeller"};

// Decimals of a format ("0.000" has 3), held to the 1 to 6 of the file.
int Decimals(const std::string& format) {
  const size_t dot = format.find('.');
  int n = 0;
  for (size_t i = dot == std::string::npos ? format.size() : dot + 1;
       i < format.size() && (format[i] == '0' || format[i] == '#'); ++i)
    ++n;
  return std::clamp(n, 1, 6);
}

}  // namespace

LegacyReport ImportLegacyEngineFile(const fs::path& path, clsVXEngine& engine) {
  return Guarded(path, [&] {
    LegacyReport report;
    report.status = "Importing Legacy engine file";
    clsVXFileINI ini;
    if (!LoadLegacyFile(ini, path, kEngineBlocks, report)) return report;
    engine.ClearAllData();
    engine.ImportFilePath(path.string());
    LegacyBlockReader head(ini, report, "Velmar");
    if (head.found)
      engine.Description(ini.GetMultiStringFromBlockTag("Description", head.failed, head.errors));
    head.Finish();
    FileUnits units;
    LegacyBlockReader unitBlock(ini, report, "EngUnits");
    if (unitBlock.found) ReadFileUnits(ini, unitBlock, kEngineUnitTags, units);
    unitBlock.Finish();
    LegacyBlockReader lib(ini, report, "EngineLib");
    if (lib.found) {
      ReadScalars(ini, lib, kEngineScalars, units, engine);
      for (const auto& [tag, curve] : kEngineCurveTags) {
        bool bad = false;
        std::vector<double> list = ini.GetFloatArrayFromBlockTag(tag, bad, lib.errors);
        lib.failed = lib.failed || bad;
        if (list.size() > static_cast<size_t>(kEngineCurvePoints)) {
          lib.errors += (lib.errors.empty() ? "" : "\r\n") + std::string(tag) +
                        " holds more than 10 points; the others were not read.";
          list.resize(kEngineCurvePoints);
        }
        const clsVXEngine::CurveDesc& c = CurveOf(curve);
        // The power list of a curve gives its count.
        if (c.family == UnitFamily::Power) engine.SetRaw(FieldId(c.count), static_cast<double>(list.size()));
        for (size_t i = 0; i < list.size(); ++i)
          engine.CurveValue(curve, static_cast<int>(i), kCurrent,
                            ToHeld(NeedUnits(engine), units, c.family, c.family, list[i]));
      }
    }
    lib.Finish();
    return report;
  });
}

LegacyReport ExportLegacyEngineFile(const fs::path& path, const clsVXEngine& engine) {
  clsVXFileINI ini;
  bool failed = false, ok = false;
  std::string errors;
  ini.SetMultiStringToBlockTag("Description", engine.Description(), failed, errors);
  ini.WriteBlock("Velmar", ok);
  for (const auto& [tag, family] : kEngineUnitTags)
    ini.SetStringToBlockTag(tag, LegacyUnitLabel(family, NeedUnits(engine).Index(family)), failed, errors);
  ini.WriteBlock("EngUnits", ok);
  WriteScalars(ini, failed, errors, kEngineScalars, engine);
  for (const auto& [tag, curve] : kEngineCurveTags)
    ini.SetFloatArrayToBlockTag(tag, engine.CurveArray(curve), failed, errors);
  ini.WriteBlock("EngineLib", ok);
  return FinishExport(ini, path, errors);
}

LegacyReport ImportLegacyWaterjetFile(const fs::path& path, clsVXWaterjet& jet) {
  jet.ClearAllData();
  LegacyReport result = Guarded(path, [&] {
    LegacyReport report;
    report.status = "Importing Legacy waterjet file";
    clsVXFileINI ini;
    if (!LoadLegacyFile(ini, path, kJetBlocks, report)) return report;
    jet.ImportFilePath(path.string());
    const clsVXUnits& held = NeedUnits(jet);
    LegacyBlockReader head(ini, report, "Velmar");
    if (head.found) jet.Description(ini.GetMultiStringFromBlockTag("Description", head.failed, head.errors));
    head.Finish();

    FileUnits units;
    LegacyBlockReader unitBlock(ini, report, "JetUnits");
    if (unitBlock.found) {
      ReadFileUnits(ini, unitBlock, kJetUnitTags, units);
      // The decimals shown in the maker's program; this version keeps the project's formats,
      // and only checks that they are what the file may hold.
      for (const char* tag : kJetDecimalTags) {
        const int n = ini.GetIntegerFromBlockTag(tag, unitBlock.failed, unitBlock.errors);
        if (ini.HasTag(tag) && (n < 1 || n > 6)) {
          unitBlock.failed = true;
          unitBlock.errors += (unitBlock.errors.empty() ? "" : "\r\n") + std::string(tag) + " [" +
                              std::to_string(n) + "] outside 1 to 6.";
        }
      }
    }
    unitBlock.Finish();

    LegacyBlockReader lib(ini, report, "JetLib");
    if (lib.found) {
      ReadScalars(ini, lib, kJetScalars, units, jet);
      // The longitudinal centre of effort has no field in this version: taken, not kept.
      bool unused = false;
      std::string none;
      if (ini.HasTag("JetLCE")) ini.GetFloatFromBlockTag("JetLCE", unused, none);
    }
    lib.Finish();

    bool seriesCut = false, pointsCut = false;
    LegacyBlockReader perf(ini, report, "JetPerf");
    if (perf.found) {
      const int count = std::max(0, ini.GetIntegerFromBlockTag("PerfCount", perf.failed, perf.errors));
      for (int k = 1; k <= count; ++k) {
        // Power, speed, thrust and, when given, the cavitation zone (0 or 1).
        const std::string tag = "PerfPoint" + std::to_string(k);
        bool bad = false;
        const std::vector<double> v = ini.GetFloatArrayFromBlockTag(tag, bad, perf.errors);
        if (!bad && v.size() < 3) {
          bad = true;
          perf.errors += (perf.errors.empty() ? "" : "\r\n") + tag + " holds fewer than 3 values.";
        }
        perf.failed = perf.failed || bad;
        if (bad) continue;
        const auto added =
            jet.AddPerformancePoint(ToHeld(held, units, UnitFamily::Power, UnitFamily::Power, v[0]),
                                    ToHeld(held, units, UnitFamily::Speed, UnitFamily::Speed, v[1]),
                                    ToHeld(held, units, UnitFamily::Force, UnitFamily::Force, v[2]),
                                    v.size() > 3 && v[3] != 0.0 ? 1 : 0);
        seriesCut = seriesCut || added == clsVXWaterjet::AddResult::SeriesFull;
        pointsCut = pointsCut || added == clsVXWaterjet::AddResult::PointsFull;
      }
    }
    perf.Finish();

    bool impellersCut = false;
    LegacyBlockReader imp(ini, report, "JetImpeller");
    if (imp.found) {
      jet.SpeedCorrection(
          ini.GetIndexFromBlockTag("SpeedCorr", kSpeedCorrectionLabels.keys, imp.failed, imp.errors));
      const int count = std::max(0, ini.GetIntegerFromBlockTag("ImpellerCount", imp.failed, imp.errors));
      for (int k = 1; k <= count; ++k) {
        const std::string tag = "Impeller" + std::to_string(k);
        bool bad = false;
        const std::vector<double> v = ini.GetFloatArrayFromBlockTag(tag, bad, imp.errors);
        clsVXWaterjet::ImpellerRecord r;
        r.Name = ini.GetStringFromBlockTag("ImpellerName" + std::to_string(k), bad, imp.errors);
        imp.failed = imp.failed || bad;
        for (size_t i = 0; i < std::min(v.size(), r.values.size()); ++i) {
          const UnitFamily f = clsVXWaterjet::ImpellerValues()[i].family;
          r.values[i] = ToHeld(held, units, f, f, v[i]);
        }
        if (!bad) impellersCut = !jet.AddImpeller(std::move(r)) || impellersCut;
      }
      jet.ImpellerDefinitionIndex(jet.ImpellerCount() > 0 ? 1 : 0);
    }
    imp.Finish();

    if (seriesCut)
      Hooks().ShowMessage(
          "Waterjet Import",
          "This file contains more than 10 power series. The additional power series have been "
          "removed.",
          0);
    if (pointsCut)
      Hooks().ShowMessage(
          "Waterjet Import",
          "Power series data contains more than 10 performance points. The additional points have "
          "been removed.",
          0);
    if (impellersCut)
      Hooks().ShowMessage(
          "Waterjet Import",
          "This file contains more than 10 impellers. The additional impellers have been removed.", 0);
    jet.Sort();
    return report;
  });
  if (!result.ok) jet.ClearAllData();
  return result;
}

LegacyReport ExportLegacyWaterjetFile(const fs::path& path, const clsVXWaterjet& jet) {
  const clsVXUnits& held = NeedUnits(jet);
  clsVXFileINI ini;
  bool failed = false, ok = false;
  std::string errors;
  ini.SetMultiStringToBlockTag("Description", jet.Description(), failed, errors);
  ini.WriteBlock("Velmar", ok);
  for (const auto& [tag, family] : kJetUnitTags)
    ini.SetStringToBlockTag(tag, LegacyUnitLabel(family, held.Index(family)), failed, errors);
  for (size_t i = 0; i < std::size(kJetDecimalTags); ++i)
    ini.SetIntegerToBlockTag(kJetDecimalTags[i], Decimals(held.Format(kJetDecimalFamilies[i])), failed,
                             errors);
  ini.WriteBlock("JetUnits", ok);
  WriteScalars(ini, failed, errors, kJetScalars, jet);
  ini.WriteBlock("JetLib", ok);
  ini.SetIntegerToBlockTag("PerfCount", 0, failed, errors);  // its place; the count follows
  int k = 0;
  for (int s = 0; s < std::clamp(jet.PowerSeriesCount(), 0, kWaterjetMaxPowerSeries); ++s) {
    for (int p = 0; p < std::clamp(jet.PerformanceCount(s), 0, kWaterjetMaxPoints); ++p) {
      const double point[] = {jet.PowerSeries(s).Power, jet.Speed(s, p, kCurrent), jet.Thrust(s, p, kCurrent),
                              static_cast<double>(jet.CavZoneStatus(s, p))};
      ini.SetFloatArrayToBlockTag("PerfPoint" + std::to_string(++k), point, failed, errors);
    }
  }
  ini.SetIntegerToBlockTag("PerfCount", k, failed, errors);
  ini.WriteBlock("JetPerf", ok);
  ini.SetIndexToBlockTag("SpeedCorr", jet.SpeedCorrection(), kSpeedCorrectionLabels.keys, failed, errors);
  const int impellers = std::clamp(jet.ImpellerCount(), 0, kWaterjetMaxImpellers);
  ini.SetIntegerToBlockTag("ImpellerCount", impellers, failed, errors);
  for (int i = 0; i < impellers; ++i) {
    ini.SetFloatArrayToBlockTag("Impeller" + std::to_string(i + 1), jet.Impeller(i).values, failed, errors);
    ini.SetStringToBlockTag("ImpellerName" + std::to_string(i + 1), jet.Impeller(i).Name, failed, errors);
  }
  ini.WriteBlock("JetImpeller", ok);
  return FinishExport(ini, path, errors);
}

}  // namespace velmar
