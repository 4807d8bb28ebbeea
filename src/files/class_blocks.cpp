// The file block of every model class. Each block walks its class's field table (block_io)
// and adds what the table cannot say: the block's own tags, its lists and objects, and the
// repairs that make older files read as current ones.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/block_io.h"
#include "files/project_file.h"

namespace velmar {

namespace {

// The common frame of a block: open it, run its body under the block's own handler, close it.
// A fault inside (a tag holding a value of the wrong kind, a list too long for a fixed table)
// ends that block with a line that names the tag and what it held; the tags after it keep
// the values they had.
template <class Body>
int ReadBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name, Body&& body) {
  try {
    body(BeginReadBlock(file, root, name));
  } catch (const std::exception& e) {
    file.AddError("Reading [" + std::string(name) + "] block: " + e.what() +
                  "; the rest of the block was not read");
  }
  return EndReadBlock(file);
}

template <class Body>
int WriteBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name, Body&& body) {
  try {
    body(BeginWriteBlock(file, root, name));
  } catch (const std::exception& e) {
    file.AddError(e.what());
  }
  return EndWriteBlock(file, name);
}

// Copies up to `limit` read list elements into a fixed table through `put(i, value)`.
template <class T, class Put>
void CopyList(const std::vector<T>& list, size_t limit, Put&& put) {
  for (size_t i = 0; i < std::min(list.size(), limit); ++i) put(static_cast<int>(i), list[i]);
}

// ---- Project -------------------------------------------------------------------------------

struct ProjectTag {
  const char* tag;
  std::string clsVXProject::*member;
};
const ProjectTag kProjectTags[] = {
    {"FileName", &clsVXProject::FileName}, {"FileFolder", &clsVXProject::FileFolder},
    {"FilePath", &clsVXProject::FilePath}, {"LastModified", &clsVXProject::LastModified},
    {"Source", &clsVXProject::Source},     {"Description", &clsVXProject::Description},
    {"ID", &clsVXProject::ProjectID},
};

// ---- SpeedPerformance ------------------------------------------------------------------------

// The columns of the block in file order (the table holds them in row-record order). Mode 1
// stops after RelRotEfficiency.
// clang-format off
constexpr std::string_view kSpeedPerformanceFileColumns[] = {
    "Speed", "CoefReynoldsLength", "CoefFroudeVolume", "CoefFroudeLength", "CoefDragBareHullFriction",
    "CoefDragBareHullViscous", "CoefDragBareHullResiduary", "CoefDragBareHullRoughness",
    "CoefDragBareHullCorrAllowance", "CoefDragBareHull", "DragBareHull", "DynamicTrimDeg",
    "DynamicZGravityBelowWL", "WakeFraction", "ThrustDeduction", "RelRotEfficiency", "CoefFroudeChineBeam",
    "CoefFroudeChineLength", "CoefDragBareHullWavemakingTransverse", "CoefDragBareHullWavemakingDivergent",
    "CoefPlaningHumpSpeedMultiplier", "DragBareHullResiduary", "DragBareHullIndividual", "DragAppendages",
    "DragWind", "DragEquilibriumPlaning", "DragSeas", "DragChannel", "DragMargin", "DragTotal",
    "CoefDragBareHullResiduaryTelfer", "CoefDragBareHullTelfer", "CoefDragBareHullWeightRatio",
    "DragBareHullSpeedCheck", "HullPropulsorInteractionSpeedCheck", "PropulsorEfficiency",
    "QuasiPropulsiveEfficiency", "OverallPropulsiveEfficiency", "PowerEffectiveBareHull",
    "PowerEffectiveTotal", "PowerBrakePerProp", "PowerShaftPerProp", "PowerDeliveredPerProp",
    "PowerBrakeTotal", "PowerShaftTotal", "FuelRatePerEngine", "TransportFactor", "PercentEngineLoadFactor",
    "EffectiveChineBeam", "EffectiveAngleDeadriseDeg", "PlaningDynamicStability", "LengthWettedKeel",
    "LengthWettedMean", "PressureAverageBottom", "CoefPlaningLift", "CoefPlaningLkeelLpRatio",
    "CoefPropulsorReynolds", "CoefPropulsorJ", "CoefPropulsorKT", "CoefPropulsorKQ", "CoefPropulsorKTN",
    "CoefPropulsorKTJ2", "CoefPropulsorKQJ3", "CoefPropulsorCTH", "CoefPropulsorCP", "EngineRPM",
    "PropulsorRPM", "CPMeanPitch", "PropulsorThrust", "TotalDeliveredThrust", "TotalNetTowpull",
    "PropulsorTorque", "SigmaV", "MinPitchFaceCav", "TipSpeed", "MeanBladePressure", "RecommendedEAR",
    "PercentCavAverage", "PercentCavPeak", "PropellerBreakdownCheck", "NozzleBreakdownCheck",
    "AccelDistance", "AccelGravities", "AccelTimeSecs", "TipSpeedCheck", "PercentCavAverageCheck",
    "RecommendedEARCheck", "MeanBladePressureCheck", "MinPitchFaceCavCheck",
    "CoefDragBareHullResiduaryAlignmentMultiplier", "WakeFractionAlignmentMultiplier",
    "ThrustDeductionAlignmentMultiplier", "RelRotEfficiencyAlignmentMultiplier"};
// clang-format on
constexpr size_t kSpeedPerformanceMode1Columns = 16;  // Speed .. RelRotEfficiency

// The column of a block tag; every tag above names a column of the table.
int SpeedColumn(std::string_view tag) {
  const int col = clsVXSpeedPerformance::ColumnIndex(tag);
  if (col < 0) throw std::logic_error("no speed table column " + std::string(tag));
  return col;
}

// ---- TaskList --------------------------------------------------------------------------------

struct TaskTag {
  const char* tag;
  std::string TaskRecord::*member;
};
const TaskTag kTaskTags[] = {{"Status", &TaskRecord::Status},
                             {"Type", &TaskRecord::Type},
                             {"Task", &TaskRecord::Task},
                             {"Notes", &TaskRecord::Notes}};

// The current form: `Count`, then one object per task keyed by its row number from "0".
void ReadTaskListBlock(clsVXFileJSON& file, const JsonObject& block, clsVXTaskList& tasks) {
  const int count = file.GetIntegerFromBlockTag(block, "Count");
  for (int i = 0; i < count; ++i) {
    const JsonObject o = file.GetObjectFromBlockTag(block, std::to_string(i));
    TaskRecord t;
    for (const TaskTag& tag : kTaskTags) t.*tag.member = file.GetStringFromBlockTag(o, tag.tag);
    if (!tasks.AddTask(std::move(t))) break;
  }
}

// The older form: the four fields as parallel lists, as many tasks as `Status` has elements.
void ReadTaskListBlockOld(clsVXFileJSON& file, const JsonObject& block, clsVXTaskList& tasks) {
  std::vector<std::string> lists[std::size(kTaskTags)];
  const std::int16_t count = file.GetStringArrayFromBlockTag(block, kTaskTags[0].tag, lists[0]);
  for (size_t k = 1; k < std::size(kTaskTags); ++k)
    file.GetStringArrayFromBlockTag(block, kTaskTags[k].tag, lists[k], count);
  for (size_t i = 0; i < static_cast<size_t>(count); ++i) {
    TaskRecord t;
    for (size_t k = 0; k < std::size(kTaskTags); ++k)
      if (i < lists[k].size()) t.*kTaskTags[k].member = lists[k][i];
    if (!tasks.AddTask(std::move(t))) break;
  }
}

}  // namespace

std::span<const std::string_view> SpeedPerformanceFileColumns(int mode) {
  return std::span(kSpeedPerformanceFileColumns)
      .first(mode == 1 ? kSpeedPerformanceMode1Columns : std::size(kSpeedPerformanceFileColumns));
}

int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXProject& obj) {
  return ReadBlock(file, root, "Project", [&](const JsonObject& b) {
    for (const ProjectTag& t : kProjectTags) obj.*t.member = file.GetStringFromBlockTag(b, t.tag);
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXProject& obj) {
  return WriteBlock(file, root, "Project", [&](const JsonObject& b) {
    for (const ProjectTag& t : kProjectTags)
      file.SetStringToBlockTag(b, t.tag,
                               t.member == &clsVXProject::LastModified ? LastModifiedText() : obj.*t.member);
  });
}

// The families stand in the order of the units dialog, each as its unit label and its format.
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXUnits& obj) {
  return ReadBlock(file, root, "Units", [&](const JsonObject& b) {
    for (UnitFamily f : UnitsDialogOrder()) {
      const UnitFamilyInfo& info = FamilyInfo(f);
      obj.SetIndex(f, file.GetIndexFromBlockTag(b, info.name, info.labels));
      obj.SetFormat(f, file.GetStringFromBlockTag(b, std::string(info.name) + "Format"));
    }
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXUnits& obj) {
  return WriteBlock(file, root, "Units", [&](const JsonObject& b) {
    for (UnitFamily f : UnitsDialogOrder()) {
      const UnitFamilyInfo& info = FamilyInfo(f);
      file.SetIndexToBlockTag(b, info.name, static_cast<std::int16_t>(obj.Index(f)), info.labels);
      file.SetStringToBlockTag(b, std::string(info.name) + "Format", obj.FormatText(f));
    }
  });
}

// Blocks that are their field tables and nothing else.
#define VX_TABLE_BLOCK(CLS, NAME)                                                                 \
  int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, CLS& obj) {                            \
    return ReadBlock(file, root, NAME, [&](const JsonObject& b) { ReadFields(file, b, obj); });   \
  }                                                                                               \
  int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const CLS& obj) {                     \
    return WriteBlock(file, root, NAME, [&](const JsonObject& b) { WriteFields(file, b, obj); }); \
  }
VX_TABLE_BLOCK(clsVXWaterProperties, "WaterProperties")
VX_TABLE_BLOCK(clsVXHull, "Hull")
VX_TABLE_BLOCK(clsVXAppendage, "Appendage")
VX_TABLE_BLOCK(clsVXEnvironment, "Environment")
VX_TABLE_BLOCK(clsVXITTC78Expansion, "ITTC78Expansion")
VX_TABLE_BLOCK(clsVXPropellerSizing, "PropellerSizing")
#undef VX_TABLE_BLOCK

// `SchemaVersion` is written but never read here; `HullDragDefinedSource` likewise, so that
// the source always reads as "Manual" unless the object held another one.
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXResistance& obj) {
  return ReadBlock(file, root, "Resistance", [&](const JsonObject& b) {
    const int source = FieldId(clsVXResistance::Field::HullDragDefinedSource);
    ReadFields(file, b, obj, 0, source);
    ReadFields(file, b, obj, source + 1);
    if (obj.TextOf(source).empty()) obj.SetText(source, "Manual");
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXResistance& obj) {
  return WriteBlock(file, root, "Resistance", [&](const JsonObject& b) {
    WriteSchemaVersion(file, b);
    WriteFields(file, b, obj);
  });
}

int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXPropulsion& obj) {
  using F = clsVXPropulsion::Field;
  return ReadBlock(file, root, "Propulsion", [&](const JsonObject& b) {
    const int version = ReadSchemaVersion(file, b);
    const int source = FieldId(F::PropulsionInteractionDefinedSource);
    ReadFields(file, b, obj, 0, source);
    if (version >= 1) ReadField(file, b, obj, source);
    ReadFields(file, b, obj, source + 1);
    if (obj.TextOf(source).empty()) obj.SetText(source, "Manual");
    // "Enter" has no place in this setting (and no label): it reads as "Calc".
    const int enabled = FieldId(F::PropulsionInteractionEnabled);
    if (obj.Raw(enabled) < 0 || obj.Raw(enabled) > 2) obj.SetRaw(enabled, 1);
    // Tags of older files that belong to the hull now; read only where they stand.
    if (const auto& hull = obj.Hull()) {
      for (const char* tag : {"PropulsorCountPerHull", "AngleShaftDeg", "PropellerDiameterMax"})
        if (b->Exists(tag)) ReadField(file, b, *hull, hull->FieldIndex(tag));
    }
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXPropulsion& obj) {
  return WriteBlock(file, root, "Propulsion", [&](const JsonObject& b) {
    WriteSchemaVersion(file, b);
    WriteFields(file, b, obj);
  });
}

// Mode 2 (the common ship object) ends the block after Chord07R, on writing and reading.
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXPropeller& obj, int mode) {
  using F = clsVXPropeller::Field;
  return ReadBlock(file, root, "Propeller", [&](const JsonObject& b) {
    const int last = mode == 2 ? FieldId(F::Chord07R) + 1 : -1;
    ReadFields(file, b, obj, 0, last, kImportFilePathOlderTag);
    // Older files give the hub as a ratio of the diameter.
    const int hub = FieldId(F::HubDiameter), diameter = FieldId(F::Diameter);
    if (mode == 2 || obj.Raw(hub) != 0.0) return;
    const double ratio = file.GetFloatFromBlockTag(b, "HubDiameterRatio", false);
    if (ratio > 0.0 && obj.Raw(diameter) > 0.0) obj.SetRaw(hub, ratio * obj.Raw(diameter));
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXPropeller& obj, int mode) {
  return WriteBlock(file, root, "Propeller", [&](const JsonObject& b) {
    WriteFields(file, b, obj, 0, mode == 2 ? FieldId(clsVXPropeller::Field::Chord07R) + 1 : -1);
  });
}

int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXPropellerSeries& obj) {
  using F = clsVXPropellerSeries::Field;
  return ReadBlock(file, root, "PropellerSeries", [&](const JsonObject& b) {
    const int version = FieldId(F::SchemaVersion);
    obj.SetRaw(version, ReadSchemaVersion(file, b));
    ReadFields(file, b, obj, version + 1);
    // Values that older files left at 0 and that mean "no correction" or the usual nozzle.
    const std::pair<F, double> repairs[] = {
        {F::KTMultiplier, 1.0}, {F::KQMultiplier, 1.0}, {F::NozzleLengthDiameterRatio, 0.5}};
    for (const auto& [field, value] : repairs)
      if (obj.Raw(FieldId(field)) <= 0.0) obj.SetRaw(FieldId(field), value);
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXPropellerSeries& obj) {
  return WriteBlock(file, root, "PropellerSeries", [&](const JsonObject& b) {
    WriteSchemaVersion(file, b);
    WriteFields(file, b, obj, FieldId(clsVXPropellerSeries::Field::SchemaVersion) + 1);
  });
}

// The two curves follow the rows as the objects MaxPower and DefinedLoad, each list always
// written with kEngineCurvePoints elements. The curve counts are written as floats.
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXEngine& obj) {
  return ReadBlock(file, root, "Engine", [&](const JsonObject& b) {
    ReadFields(file, b, obj, 0, -1, kImportFilePathOlderTag);
    for (const clsVXEngine::CurveDesc& c : clsVXEngine::Curves()) {
      std::vector<double> list;
      file.GetFloatArrayFromBlockTag(ChildObject(b, c.object, false), c.tag, list);
      for (int i = 0; i < kEngineCurvePoints; ++i)
        obj.CurveValue(c.id, i, kCurrent,
                       i < static_cast<int>(list.size()) ? list[static_cast<size_t>(i)] : 0.0);
    }
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXEngine& obj) {
  return WriteBlock(file, root, "Engine", [&](const JsonObject& b) {
    const int counts = FieldId(clsVXEngine::Field::MaxPowerCount);
    WriteFields(file, b, obj, 0, counts);
    for (int i = counts; i < static_cast<int>(obj.Fields().size()); ++i)
      file.SetFloatToBlockTag(b, obj.Fields()[i].Tag(), obj.Raw(i));
    for (const clsVXEngine::CurveDesc& c : clsVXEngine::Curves()) {
      std::vector<double> list(kEngineCurvePoints);
      for (int i = 0; i < kEngineCurvePoints; ++i) list[static_cast<size_t>(i)] = obj.CurveValue(c.id, i);
      file.SetFloatArrayToBlockTag(ChildObject(b, c.object, true), c.tag, list);
    }
  });
}

// The counts, the selected impeller and the speed correction are rows with tags inside the
// objects PowerSeries and Impeller; the records follow them there, keyed "0", "1", ...
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXWaterjet& obj) {
  using F = clsVXWaterjet::Field;
  return ReadBlock(file, root, "Waterjet", [&](const JsonObject& b) {
    ReadFields(file, b, obj, 0, -1, kImportFilePathOlderTag);
    const JsonObject series = ChildObject(b, "PowerSeries", false);
    const int seriesCount =
        std::clamp(static_cast<int>(obj.Raw(FieldId(F::PowerSeriesCount))), 0, kWaterjetMaxPowerSeries);
    obj.SetRaw(FieldId(F::PowerSeriesCount), seriesCount);
    for (int s = 0; s < seriesCount; ++s) {
      const JsonObject o = file.GetObjectFromBlockTag(series, std::to_string(s));
      clsVXWaterjet::PowerSeriesRecord& r = obj.PowerSeries(s);
      r = {};
      r.Power = file.GetFloatFromBlockTag(o, "Power");
      r.PerformanceCount =
          std::clamp(static_cast<int>(file.GetFloatFromBlockTag(o, "Count")), 0, kWaterjetMaxPoints);
      for (size_t k = 0; k < r.points.size(); ++k) {
        std::vector<double> list;
        file.GetFloatArrayFromBlockTag(o, clsVXWaterjet::PointLists()[k].tag, list);
        CopyList(list, kWaterjetMaxPoints, [&](int p, double v) { r.points[k][static_cast<size_t>(p)] = v; });
      }
      std::vector<std::int16_t> zones;
      file.GetIndexArrayFromBlockTag(o, "CavitationZone", kCavZoneStatusLabels.keys, zones);
      CopyList(zones, kWaterjetMaxPoints,
               [&](int p, std::int16_t v) { r.CavZoneStatus[static_cast<size_t>(p)] = v; });
    }
    const JsonObject impellers = ChildObject(b, "Impeller", false);
    int impellerCount = std::max(0, static_cast<int>(obj.Raw(FieldId(F::ImpellerCount))));
    if (impellerCount > kWaterjetMaxImpellers) {
      Hooks().ShowMessage(
          "Waterjet Import",
          "This file contains more than 10 impellers. The additional impellers have been removed.", 0);
      impellerCount = kWaterjetMaxImpellers;
    }
    obj.SetRaw(FieldId(F::ImpellerCount), impellerCount);
    for (int i = 0; i < impellerCount; ++i) {
      const JsonObject o = file.GetObjectFromBlockTag(impellers, std::to_string(i));
      clsVXWaterjet::ImpellerRecord& r = obj.Impeller(i);
      r.Name = file.GetStringFromBlockTag(o, "Name");
      for (size_t k = 0; k < r.values.size(); ++k)
        r.values[k] = file.GetFloatFromBlockTag(o, clsVXWaterjet::ImpellerValues()[k].tag);
    }
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXWaterjet& obj) {
  using F = clsVXWaterjet::Field;
  return WriteBlock(file, root, "Waterjet", [&](const JsonObject& b) {
    WriteFields(file, b, obj);
    const JsonObject series = ChildObject(b, "PowerSeries", true);
    for (int s = 0;
         s < std::clamp(static_cast<int>(obj.Raw(FieldId(F::PowerSeriesCount))), 0, kWaterjetMaxPowerSeries);
         ++s) {
      const clsVXWaterjet::PowerSeriesRecord& r = obj.PowerSeries(s);
      const JsonObject o = ChildObject(series, std::to_string(s), true);
      const auto n = static_cast<size_t>(std::clamp(r.PerformanceCount, 0, kWaterjetMaxPoints));
      file.SetFloatToBlockTag(o, "Power", r.Power);
      file.SetFloatToBlockTag(o, "Count", r.PerformanceCount);
      for (size_t k = 0; k < r.points.size(); ++k)
        file.SetFloatArrayToBlockTag(o, clsVXWaterjet::PointLists()[k].tag, std::span(r.points[k].data(), n));
      const std::vector<std::int16_t> zones(r.CavZoneStatus.begin(),
                                            r.CavZoneStatus.begin() + static_cast<std::ptrdiff_t>(n));
      file.SetIndexArrayToBlockTag(o, "CavitationZone", zones, kCavZoneStatusLabels.keys);
    }
    const JsonObject impellers = ChildObject(b, "Impeller", true);
    for (int i = 0;
         i < std::clamp(static_cast<int>(obj.Raw(FieldId(F::ImpellerCount))), 0, kWaterjetMaxImpellers);
         ++i) {
      const clsVXWaterjet::ImpellerRecord& r = obj.Impeller(i);
      const JsonObject o = ChildObject(impellers, std::to_string(i), true);
      file.SetStringToBlockTag(o, "Name", r.Name);
      for (size_t k = 0; k < r.values.size(); ++k)
        file.SetFloatToBlockTag(o, clsVXWaterjet::ImpellerValues()[k].tag, r.values[k]);
    }
  });
}

// Count and DesignSpeedIndex, then one list per column in file order, each sized Count (a
// differing count is shown on reading). Float lists are written to 6 significant digits.
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXSpeedPerformance& obj, int mode) {
  return ReadBlock(file, root, "SpeedPerformance", [&](const JsonObject& b) {
    // A project holds at most ten speeds: a count outside 0 to 10 is damage, reported as an
    // error line and held to the range, so that a damaged file cannot make a huge table.
    std::int16_t count = file.GetIntegerFromBlockTag(b, "Count");
    if (count < 0 || count > kMaxSpeedCount) {
      file.AddError("SpeedPerformance \"Count\" [" + std::to_string(count) + " outside 0 to " +
                    std::to_string(kMaxSpeedCount) + "]");
      count = static_cast<std::int16_t>(std::clamp<int>(count, 0, kMaxSpeedCount));
    }
    obj.count(count);
    obj.DesignSpeedIndex(file.GetIntegerFromBlockTag(b, "DesignSpeedIndex"));
    const auto rows = static_cast<size_t>(std::max(0, obj.count()));
    for (const std::string_view tag : SpeedPerformanceFileColumns(mode)) {
      const int col = SpeedColumn(tag);
      const FieldDesc& d = clsVXSpeedPerformance::Column(col);
      auto put = [&](int r, double v) { obj.SetRaw(r, col, v); };
      if (d.labels) {
        std::vector<std::int16_t> list;
        file.GetIndexArrayFromBlockTag(b, tag, d.labels->keys, list, count);
        CopyList(list, rows, put);
      } else {
        std::vector<double> list;
        file.GetFloatArrayFromBlockTag(b, tag, list, count);
        CopyList(list, rows, put);
      }
    }
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXSpeedPerformance& obj, int mode) {
  return WriteBlock(file, root, "SpeedPerformance", [&](const JsonObject& b) {
    file.SetIntegerToBlockTag(b, "Count", static_cast<std::int16_t>(obj.count()));
    file.SetIntegerToBlockTag(b, "DesignSpeedIndex", static_cast<std::int16_t>(obj.DesignSpeedIndex()));
    for (const std::string_view tag : SpeedPerformanceFileColumns(mode)) {
      const int col = SpeedColumn(tag);
      const FieldDesc& d = clsVXSpeedPerformance::Column(col);
      if (d.labels) {
        std::vector<std::int16_t> list;
        for (int r = 0; r < obj.count(); ++r) list.push_back(static_cast<std::int16_t>(obj.Raw(r, col)));
        file.SetIndexArrayToBlockTag(b, tag, list, d.labels->keys);
      } else {
        std::vector<double> list;
        for (int r = 0; r < obj.count(); ++r) list.push_back(RoundToSigDigits(obj.Raw(r, col), 6));
        file.SetFloatArrayToBlockTag(b, tag, list);
      }
    }
  });
}

// The older form of the block has no Count but the four fields as lists.
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXTaskList& obj) {
  return ReadBlock(file, root, "TaskList", [&](const JsonObject& b) {
    obj.ClearAllData();
    if (!b->Exists("Count") && b->Exists(kTaskTags[0].tag))
      ReadTaskListBlockOld(file, b, obj);
    else
      ReadTaskListBlock(file, b, obj);
  });
}

int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXTaskList& obj) {
  return WriteBlock(file, root, "TaskList", [&](const JsonObject& b) {
    file.SetIntegerToBlockTag(b, "Count", static_cast<std::int16_t>(obj.TaskCount()));
    for (int i = 0; i < obj.TaskCount(); ++i) {
      const JsonObject o = ChildObject(b, std::to_string(i), true);
      for (const TaskTag& t : kTaskTags) file.SetStringToBlockTag(o, t.tag, obj.Task(i).*t.member);
    }
  });
}

}  // namespace velmar
