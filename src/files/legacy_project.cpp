// The legacy project (*.vl5), the model file (*.mdl) and the sibling program's file (*.vxf):
// one layout table per format says which model objects each block carries, and one walker
// reads or writes them through their field tables.
#include <algorithm>
#include <array>
#include <exception>

#include "core/format.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/file_ini.h"
#include "files/legacy_files.h"
#include "files/project_file.h"

namespace velmar {

namespace {

namespace fs = std::filesystem;

// ---- Layouts ---------------------------------------------------------------------------------

enum class Obj : unsigned char {
  None,
  Water,
  Hull,
  Appendage,
  Environment,
  Resistance,
  ITTC78,
  Propulsion,
  Propeller,
  PropellerSeries,
  PropellerSizing,
  Engine
};

// What a block entry carries: the file's identity (Description, Date, Build), the units,
// the fields of one object, the engine curves, the speeds, the result columns, the tasks.
enum class Part : unsigned char { Identity, Units, Fields, EngineCurves, Speeds, Results, Tasks };

struct Entry {
  const char* block;
  Part part;
  Obj obj = Obj::None;
  const char* prefix = "";  // put before every tag; for Identity the word before the build
  const char* only = "";    // "|"-separated beginnings of the field names taken ("" all)
  const char* skip = "";    // beginnings of field names left to other blocks
};

// The legacy project. Older versions kept the resistance and ITTC-78 settings in one block,
// the propeller and its series in "Other", and the propulsion settings with the engine in
// "System" (engine tags begin with "Engine", so that they differ from the propeller's).
constexpr Entry kProjectEntries[] = {
    {"Velmar", Part::Identity, Obj::None, "Velmar "},
    {"Units", Part::Units},
    {"Condition", Part::Fields, Obj::Water},
    {"Hull", Part::Fields, Obj::Hull},
    {"Resistance", Part::Fields, Obj::Resistance},
    {"Resistance", Part::Fields, Obj::ITTC78},
    {"Other", Part::Fields, Obj::Propeller},
    {"Other", Part::Fields, Obj::PropellerSeries},
    {"Wind", Part::Fields, Obj::Environment, "", "", "Seas|ShallowWater"},
    {"Seas", Part::Fields, Obj::Environment, "", "Seas"},
    {"Channel", Part::Fields, Obj::Environment, "", "ShallowWater"},
    {"System", Part::Fields, Obj::Propulsion},
    {"System", Part::Fields, Obj::Engine, "Engine"},
    {"System", Part::EngineCurves, Obj::Engine, "Engine"},
    {"Appendages", Part::Fields, Obj::Appendage},
    {"OptSystem", Part::Fields, Obj::PropellerSizing},
    {"Speeds", Part::Speeds},
    {"Results", Part::Results},
    {"TaskList", Part::Tasks},
};
// The order of reading. The result lists are read after Speeds, whose count sizes them.
constexpr std::string_view kProjectReadOrder[] = {
    "Velmar",  "Units",  "Condition",  "Hull",      "Resistance", "Other",   "Wind",    "Seas",
    "Channel", "System", "Appendages", "OptSystem", "Speeds",     "Results", "TaskList"};
// The order of writing; BladeScan and BargeTrain carry nothing of this version and stand
// empty, so that an older program finds every block it knows.
constexpr std::string_view kProjectWriteOrder[] = {
    "Velmar",  "Units",     "Condition",  "Hull",      "Appendages", "Wind",
    "Seas",    "Channel",   "Resistance", "Other",     "System",     "Speeds",
    "Results", "BladeScan", "BargeTrain", "OptSystem", "TaskList"};
constexpr std::string_view kHullOnlyOrder[] = {"Units", "Condition", "Hull"};
constexpr std::string_view kResultsOrder[] = {"Units", "Condition", "Speeds", "Results"};

// The sibling program's file: the ship with its water, appendages, wind and propulsor, and
// the speeds with their results in one block.
constexpr Entry kShipObjectEntries[] = {
    {"Project", Part::Identity, Obj::None, "Drummoline "},
    {"Units", Part::Units},
    {"Vessel", Part::Fields, Obj::Hull},
    {"Vessel", Part::Fields, Obj::Water, "Water"},
    {"Appendage", Part::Fields, Obj::Appendage},
    {"Wind", Part::Fields, Obj::Environment, "", "", "Seas|ShallowWater"},
    {"Propulsion", Part::Fields, Obj::Propulsion},
    {"Propulsion", Part::Fields, Obj::Propeller},
    {"Results", Part::Speeds},
    {"Results", Part::Results},
};
constexpr std::string_view kShipObjectReadOrder[] = {"Project", "Units",      "Vessel", "Appendage",
                                                     "Wind",    "Propulsion", "Results"};

// Shortened tags of older versions, read when a field's own tag is missing.
struct OlderLegacyTag {
  std::string_view tag, older;
};
constexpr OlderLegacyTag kOlderTags[] = {
    {"LengthWL", "LWL"},
    {"BeamWLMax", "BWL"},
    {"DraftSubmergedMax", "Draft"},
    {"Displacement", "Displ"},
    {"WettedSurface", "WetSurf"},
    {"XBuoyancyFwdTr", "LCB"},
    {"AngleHalfEntDeg", "HalfEntAngle"},
    {"Definition", "WaterType"},
    {"WaterDefinition", "WaterType"},
};

// The task record's texts as tags numbered from 1 ("Status1", "Notes1", ...).
struct TaskTag {
  const char* tag;
  std::string TaskRecord::*member;
};
constexpr TaskTag kTaskTags[] = {{"Status", &TaskRecord::Status},
                                 {"Type", &TaskRecord::Type},
                                 {"Task", &TaskRecord::Task},
                                 {"Notes", &TaskRecord::Notes}};

DataClass* ObjectOf(const ModelSet& s, Obj o) {
  switch (o) {
    case Obj::Water:
      return s.WaterProperties.get();
    case Obj::Hull:
      return s.Hull.get();
    case Obj::Appendage:
      return s.Appendage.get();
    case Obj::Environment:
      return s.Environment.get();
    case Obj::Resistance:
      return s.Resistance.get();
    case Obj::ITTC78:
      return s.ITTC78.get();
    case Obj::Propulsion:
      return s.Propulsion.get();
    case Obj::Propeller:
      return s.Propeller.get();
    case Obj::PropellerSeries:
      return s.PropellerSeries.get();
    case Obj::PropellerSizing:
      return s.PropellerSizing.get();
    case Obj::Engine:
      return s.Engine.get();
    case Obj::None:
      break;
  }
  return nullptr;
}

bool StartsWithAny(std::string_view name, const char* list) {
  for (const std::string& p : SplitDelimited(list, "|"))
    if (!p.empty() && name.starts_with(p)) return true;
  return false;
}

// Whether a field belongs to an entry, and its tag there: the property's tag (the name where
// the current tag names a place inside an object), behind the entry's prefix.
bool Carries(const Entry& e, const FieldDesc& d) {
  if (d.flags & kNotInFile) return false;
  if (*e.only && !StartsWithAny(d.name, e.only)) return false;
  return !(*e.skip && StartsWithAny(d.name, e.skip));
}

std::string TagOf(const Entry& e, const FieldDesc& d) {
  std::string_view tag = d.Tag();
  if (tag.find('.') != std::string_view::npos) tag = d.name;
  return std::string(e.prefix) + std::string(tag);
}

std::span<const std::string> Keys(const FieldDesc& d) {
  return d.labels ? std::span<const std::string>(d.labels->keys) : std::span<const std::string>();
}
std::span<const std::string> Labels(const FieldDesc& d) {
  return d.labels ? std::span<const std::string>(d.labels->labels) : std::span<const std::string>();
}

// ---- Reading ---------------------------------------------------------------------------------

// Reads one field; a value that cannot be read leaves the field as it was. True when read.
bool ReadField(clsVXFileINI& ini, LegacyBlockReader& r, DataClass& obj, int field, std::string tag) {
  if (!ini.HasTag(tag)) {
    for (const OlderLegacyTag& o : kOlderTags)
      if (o.tag == tag && ini.HasTag(o.older)) tag = o.older;
  }
  const FieldDesc& d = obj.Fields()[static_cast<size_t>(field)];
  bool bad = false;
  double value = 0.0;
  switch (d.kind) {
    case FieldKind::Quantity:
    case FieldKind::Real:
      value = ini.GetFloatFromBlockTag(tag, bad, r.errors);
      break;
    case FieldKind::Int:
      value = ini.GetIntegerFromBlockTag(tag, bad, r.errors);
      break;
    case FieldKind::Enum:
      value = ini.GetIndexFromBlockTag(tag, Keys(d), bad, r.errors, Labels(d));
      break;
    case FieldKind::Text: {
      std::string text = ini.GetMultiStringFromBlockTag(tag, bad, r.errors);
      if (!bad) obj.SetText(field, std::move(text));
      break;
    }
  }
  if (!bad && d.kind != FieldKind::Text) obj.SetRaw(field, value);
  r.failed = r.failed || bad;
  return !bad;
}

// The fields of an entry; which of them were read.
std::vector<bool> ReadFields(clsVXFileINI& ini, LegacyBlockReader& r, const Entry& e, DataClass& obj) {
  std::vector<bool> read(obj.Fields().size(), false);
  for (size_t i = 0; i < obj.Fields().size(); ++i) {
    const FieldDesc& d = obj.Fields()[i];
    if (Carries(e, d)) read[i] = ReadField(ini, r, obj, static_cast<int>(i), TagOf(e, d));
  }
  return read;
}

void ReadIdentity(clsVXFileINI& ini, LegacyBlockReader& r, const Entry& e, clsVXProject& p) {
  p.Description = ini.GetMultiStringFromBlockTag("Description", r.failed, r.errors);
  p.LastModified = ini.GetStringFromBlockTag("Date", r.failed, r.errors);
  const std::string build = ini.GetStringFromBlockTag("Build", r.failed, r.errors);
  if (!build.empty()) p.Source = e.prefix + build;
  // The writing program's version is not needed; it is taken so that it is no unknown tag.
  bool unused = false;
  std::string none;
  if (ini.HasTag("Version")) ini.GetStringFromBlockTag("Version", unused, none);
}

void ReadUnits(clsVXFileINI& ini, LegacyBlockReader& r, clsVXUnits& units) {
  for (UnitFamily f : UnitsDialogOrder()) {
    const UnitFamilyInfo& info = FamilyInfo(f);
    const int index = GetLegacyUnitIndex(ini, info.name, f, r.failed, r.errors);
    if (index >= 0) units.SetIndex(f, index);
    // Older files have no formats: a missing one keeps the unit's default.
    const std::string formatTag = std::string(info.name) + "Format";
    if (ini.HasTag(formatTag)) units.SetFormat(f, ini.GetStringFromBlockTag(formatTag, r.failed, r.errors));
  }
}

void ReadEngineCurves(clsVXFileINI& ini, LegacyBlockReader& r, const Entry& e, clsVXEngine& engine) {
  for (const clsVXEngine::CurveDesc& c : clsVXEngine::Curves()) {
    const std::string tag = std::string(e.prefix) + c.name;
    bool bad = false;
    const std::vector<double> list = ini.GetFloatArrayFromBlockTag(tag, bad, r.errors);
    r.failed = r.failed || bad;
    if (bad) continue;
    if (list.size() > static_cast<size_t>(kEngineCurvePoints))
      r.errors +=
          (r.errors.empty() ? "" : "\r\n") + tag + " holds more than 10 points; the others were not read.";
    for (int i = 0; i < kEngineCurvePoints; ++i)
      engine.CurveValue(c.id, i, kCurrent,
                        i < static_cast<int>(list.size()) ? list[static_cast<size_t>(i)] : 0.0);
  }
}

void ReadSpeeds(clsVXFileINI& ini, LegacyBlockReader& r, clsVXSpeedPerformance& sp) {
  int count = ini.GetIntegerFromBlockTag("Count", r.failed, r.errors);
  if (count < 0 || count > kMaxSpeedCount) {
    r.failed = true;
    r.errors += (r.errors.empty() ? "" : "\r\n") + std::string("Count [") + std::to_string(count) +
                "] outside 0 to " + std::to_string(kMaxSpeedCount) + ".";
    count = std::clamp(count, 0, kMaxSpeedCount);
  }
  sp.count(count);
  sp.DesignSpeedIndex(ini.GetIntegerFromBlockTag("DesignSpeedIndex", r.failed, r.errors));
  const std::vector<double> speeds = ini.GetFloatArrayFromBlockTag("Speed", r.failed, r.errors);
  const int col = clsVXSpeedPerformance::ColumnIndex("Speed");
  for (int row = 0; row < std::min<int>(count, static_cast<int>(speeds.size())); ++row)
    sp.SetRaw(row, col, speeds[static_cast<size_t>(row)]);
}

void ReadResults(clsVXFileINI& ini, LegacyBlockReader& r, clsVXSpeedPerformance& sp) {
  const int rows = sp.count();
  for (const std::string_view tag : SpeedPerformanceFileColumns(0)) {
    if (tag == "Speed") continue;
    const int col = clsVXSpeedPerformance::ColumnIndex(tag);
    const FieldDesc& d = clsVXSpeedPerformance::Column(col);
    bool bad = false;
    if (d.labels) {
      const std::vector<std::string> list = ini.GetStringArrayFromBlockTag(tag, bad, r.errors);
      for (int row = 0; row < std::min<int>(rows, static_cast<int>(list.size())); ++row) {
        const std::string& label = list[static_cast<size_t>(row)];
        int at = FindInList(label, d.labels->keys);
        if (at == 0) at = FindInList(label, d.labels->labels);
        if (at == 0) {
          bad = true;
          r.errors +=
              (r.errors.empty() ? "" : "\r\n") + std::string(tag) + " [" + label + "] not recognized.";
          continue;
        }
        sp.SetRaw(row, col, at - 1);
      }
    } else {
      const std::vector<double> list = ini.GetFloatArrayFromBlockTag(tag, bad, r.errors);
      for (int row = 0; row < std::min<int>(rows, static_cast<int>(list.size())); ++row)
        sp.SetRaw(row, col, list[static_cast<size_t>(row)]);
    }
    r.failed = r.failed || bad;
  }
}

void ReadTasks(clsVXFileINI& ini, LegacyBlockReader& r, clsVXTaskList& tasks) {
  tasks.ClearAllData();
  const int count = std::clamp(ini.GetIntegerFromBlockTag("Count", r.failed, r.errors), 0, kMaxTaskCount);
  for (int i = 1; i <= count; ++i) {
    TaskRecord t;
    for (const TaskTag& tag : kTaskTags)
      t.*tag.member = ini.GetMultiStringFromBlockTag(tag.tag + std::to_string(i), r.failed, r.errors);
    tasks.AddTask(std::move(t));
  }
}

// Reads the blocks of `order` through the entries of `layout`; `read`, when given, receives
// for each object the fields that were read.
void ReadBlocks(clsVXFileINI& ini, LegacyReport& report, ModelSet& s, std::span<const Entry> layout,
                std::span<const std::string_view> order) {
  for (const std::string_view block : order) {
    LegacyBlockReader r(ini, report, block);
    if (r.found) {
      for (const Entry& e : layout) {
        if (e.block != block) continue;
        switch (e.part) {
          case Part::Identity:
            if (s.Project) ReadIdentity(ini, r, e, *s.Project);
            break;
          case Part::Units:
            if (s.Units) ReadUnits(ini, r, *s.Units);
            break;
          case Part::Fields:
            if (DataClass* obj = ObjectOf(s, e.obj)) ReadFields(ini, r, e, *obj);
            break;
          case Part::EngineCurves:
            if (s.Engine) ReadEngineCurves(ini, r, e, *s.Engine);
            break;
          case Part::Speeds:
            if (s.SpeedPerformance) ReadSpeeds(ini, r, *s.SpeedPerformance);
            break;
          case Part::Results:
            if (s.SpeedPerformance) ReadResults(ini, r, *s.SpeedPerformance);
            break;
          case Part::Tasks:
            if (s.TaskList) ReadTasks(ini, r, *s.TaskList);
            break;
        }
      }
    }
    r.Finish();
  }
}

// The first entry of a block of the legacy project.
const Entry& EntryOf(std::string_view block) {
  return *std::ranges::find_if(kProjectEntries, [&](const Entry& e) { return e.block == block; });
}

// The hull of a legacy project into the open project: read in the file's units, then
// converted to the project's; the fields the file does not hold keep their values.
void ReadHullOnly(clsVXFileINI& ini, LegacyReport& report, ModelSet& s) {
  ModelSet file;
  file.Units = std::make_shared<clsVXUnits>(*s.Units);
  file.WaterProperties = s.WaterProperties->CopyClass();
  file.WaterProperties->SetLinkedClasses(file.Units);
  file.Hull = s.Hull->CopyClass();
  file.Hull->SetLinkedClasses(file.Units, file.WaterProperties);
  std::vector<bool> read;
  for (const std::string_view block : kHullOnlyOrder) {
    LegacyBlockReader r(ini, report, block);
    if (r.found) {
      if (block == "Units") ReadUnits(ini, r, *file.Units);
      if (block == "Condition") ReadFields(ini, r, EntryOf(block), *file.WaterProperties);
      if (block == "Hull") read = ReadFields(ini, r, EntryOf(block), *file.Hull);
    }
    r.Finish();
  }
  file.Hull->Units(s.Units);
  file.Hull->ConvertAllData(*s.Units, *file.Units);
  for (size_t i = 0; i < read.size(); ++i) {
    if (!read[i]) continue;
    const int f = static_cast<int>(i);
    if (s.Hull->Fields()[i].kind == FieldKind::Text)
      s.Hull->SetText(f, file.Hull->TextOf(f));
    else
      s.Hull->SetRaw(f, file.Hull->Raw(f));
  }
}

// ---- Writing ---------------------------------------------------------------------------------

struct Writer {
  clsVXFileINI& ini;
  bool failed = false;
  std::string errors;

  void Field(const DataClass& obj, int field, const std::string& tag) {
    const FieldDesc& d = obj.Fields()[static_cast<size_t>(field)];
    switch (d.kind) {
      case FieldKind::Quantity:
      case FieldKind::Real:
        ini.SetFloatToBlockTag(tag, obj.Raw(field), failed, errors);
        break;
      case FieldKind::Int:
        ini.SetIntegerToBlockTag(tag, static_cast<int>(obj.Raw(field)), failed, errors);
        break;
      case FieldKind::Enum:
        ini.SetIndexToBlockTag(tag, static_cast<int>(obj.Raw(field)), Keys(d), failed, errors);
        break;
      case FieldKind::Text:
        ini.SetMultiStringToBlockTag(tag, obj.TextOf(field), failed, errors);
        break;
    }
  }

  void Write(const ModelSet& s, const Entry& e) {
    switch (e.part) {
      case Part::Identity: {
        const std::string version = ProgramVersionText();
        ini.SetStringToBlockTag("Version", version, failed, errors);
        ini.SetStringToBlockTag("Date", LastModifiedText(), failed, errors);
        ini.SetStringToBlockTag("Build", version.substr(version.find(' ') + 1), failed, errors);
        ini.SetMultiStringToBlockTag("Description", s.Project->Description, failed, errors);
        break;
      }
      case Part::Units:
        for (UnitFamily f : UnitsDialogOrder()) {
          const UnitFamilyInfo& info = FamilyInfo(f);
          ini.SetStringToBlockTag(info.name, LegacyUnitLabel(f, s.Units->Index(f)), failed, errors);
          ini.SetStringToBlockTag(std::string(info.name) + "Format", s.Units->FormatText(f), failed, errors);
        }
        break;
      case Part::Fields:
        if (const DataClass* obj = ObjectOf(s, e.obj)) {
          for (size_t i = 0; i < obj->Fields().size(); ++i)
            if (Carries(e, obj->Fields()[i])) Field(*obj, static_cast<int>(i), TagOf(e, obj->Fields()[i]));
        }
        break;
      case Part::EngineCurves:
        for (const clsVXEngine::CurveDesc& c : clsVXEngine::Curves())
          ini.SetFloatArrayToBlockTag(std::string(e.prefix) + c.name, s.Engine->CurveArray(c.id), failed,
                                      errors);
        break;
      case Part::Speeds: {
        const clsVXSpeedPerformance& sp = *s.SpeedPerformance;
        ini.SetIntegerToBlockTag("Count", sp.count(), failed, errors);
        ini.SetIntegerToBlockTag("DesignSpeedIndex", sp.DesignSpeedIndex(), failed, errors);
        ini.SetFloatArrayToBlockTag("Speed", Column(sp, "Speed"), failed, errors);
        break;
      }
      case Part::Results:
        for (const std::string_view tag : SpeedPerformanceFileColumns(0)) {
          if (tag == "Speed") continue;
          const FieldDesc& d = clsVXSpeedPerformance::Column(clsVXSpeedPerformance::ColumnIndex(tag));
          const std::vector<double> values = Column(*s.SpeedPerformance, tag);
          if (!d.labels) {
            ini.SetFloatArrayToBlockTag(tag, values, failed, errors);
            continue;
          }
          std::vector<std::string> labels;
          for (double v : values) {
            const auto at = static_cast<size_t>(v);
            labels.push_back(v >= 0 && at < d.labels->keys.size() ? d.labels->keys[at] : "");
          }
          ini.SetStringArrayToBlockTag(tag, labels, failed, errors);
        }
        break;
      case Part::Tasks: {
        const clsVXTaskList& tasks = *s.TaskList;
        ini.SetIntegerToBlockTag("Count", tasks.TaskCount(), failed, errors);
        for (int i = 0; i < tasks.TaskCount(); ++i)
          for (const TaskTag& tag : kTaskTags)
            ini.SetMultiStringToBlockTag(tag.tag + std::to_string(i + 1), tasks.Task(i).*tag.member, failed,
                                         errors);
        break;
      }
    }
  }

  // The stored numbers of a column, one per speed.
  static std::vector<double> Column(const clsVXSpeedPerformance& sp, std::string_view tag) {
    const int col = clsVXSpeedPerformance::ColumnIndex(tag);
    std::vector<double> values;
    for (int row = 0; row < sp.count(); ++row) values.push_back(sp.Raw(row, col));
    return values;
  }
};

std::span<const std::string_view> AllBlocks(LegacyFileKind kind) {
  if (kind == LegacyFileKind::ShipObject) return kShipObjectReadOrder;
  return kProjectWriteOrder;
}

std::string StatusText(LegacyFileKind kind) {
  switch (kind) {
    case LegacyFileKind::Project:
      return "Importing Legacy VL5 file";
    case LegacyFileKind::Model:
      return "Importing Legacy MDL file";
    case LegacyFileKind::ShipObject:
      return "Importing Drummoline VXF file";
    case LegacyFileKind::HullOnly:
      return "Importing Legacy VL5 hull block";
    case LegacyFileKind::Results:
      return "Importing Legacy VL5 results block";
  }
  return {};
}

}  // namespace

LegacyFileKind LegacyKindOfPath(const fs::path& path) {
  const std::string ext = path.extension().string();
  if (EqualsNoCase(ext, ".mdl")) return LegacyFileKind::Model;
  if (EqualsNoCase(ext, ".vxf")) return LegacyFileKind::ShipObject;
  return LegacyFileKind::Project;
}

LegacyReport ImportLegacyFile(const fs::path& path, ModelSet& s, LegacyFileKind kind) {
  LegacyReport report;
  report.status = StatusText(kind);
  clsVXFileINI ini;
  if (!LoadLegacyFile(ini, path, AllBlocks(kind), report)) return report;
  try {
    switch (kind) {
      case LegacyFileKind::Project:
      case LegacyFileKind::Model:
        ReadBlocks(ini, report, s, kProjectEntries, kProjectReadOrder);
        break;
      case LegacyFileKind::ShipObject:
        ReadBlocks(ini, report, s, kShipObjectEntries, kShipObjectReadOrder);
        break;
      case LegacyFileKind::HullOnly:
        ReadHullOnly(ini, report, s);
        break;
      case LegacyFileKind::Results:
        ReadBlocks(ini, report, s, kProjectEntries, kResultsOrder);
        break;
    }
    // The values that follow from others: the engine's rated point stands in the
    // propulsion settings as well.
    if (s.Propulsion && s.Engine && (kind == LegacyFileKind::Project || kind == LegacyFileKind::Model)) {
      using P = clsVXPropulsion::Field;
      using E = clsVXEngine::Field;
      s.Propulsion->SetRaw(FieldId(P::EngineRatedRPM), s.Engine->Raw(FieldId(E::MaxRatedRPM)));
      s.Propulsion->SetRaw(FieldId(P::EngineRatedPower), s.Engine->Raw(FieldId(E::MaxRatedPower)));
    }
  } catch (const std::exception& e) {
    report.ok = false;
    report.message = "The file \"" + path.string() + "\" could not be read: " + e.what();
  }
  return report;
}

LegacyReport ExportLegacyProject(const fs::path& path, const ModelSet& s) {
  LegacyReport report;
  clsVXFileINI ini;
  Writer w{ini, false, {}};
  for (const std::string_view block : kProjectWriteOrder) {
    ini.ResetArrayIndex();
    w.errors.clear();
    for (const Entry& e : kProjectEntries)
      if (e.block == block) w.Write(s, e);
    for (const std::string& line : SplitDelimited(w.errors, "\r\n"))
      if (!line.empty()) report.items.push_back({std::string(block), line});
    bool ok = false;
    ini.WriteBlock(block, ok);
  }
  std::string error;
  report.ok = ini.WriteFile(path, &error);
  if (!report.ok)
    report.message = error;
  else if (!report.items.empty())
    report.message =
        "A data error has occurred writing the file. The entire file was processed, but some data may not "
        "have "
        "been exported.";
  return report;
}

void ShowLegacyImportWarning(const LegacyReport& report, LegacyFileKind kind) {
  if (report.items.empty()) return;
  const char* format = kind == LegacyFileKind::Model        ? "MDL"
                       : kind == LegacyFileKind::ShipObject ? "VXF"
                                                            : "VL5";
  Hooks().ShowMessage("File Import Warning",
                      std::string("The format of the file does not fully conform to the latest ") + format +
                          " file specification. This generally means that the file is a subset of the latest "
                          "format, and that all data in the file was processed.\r\n\r\n" +
                          report.ItemsText(),
                      0);
}

}  // namespace velmar
