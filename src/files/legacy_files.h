// Files of older versions, all section files (files/file_ini.h): the legacy project (*.vl5),
// the model file (*.mdl, the same blocks), the file of the sibling program (*.vxf), and the
// legacy engine and waterjet files. Import reads every block to its end and gathers what
// could not be read (a missing block, a missing tag, a value that is no number or no known
// label, a tag the reader does not know) into one report, shown once as the "File Import
// Warning". Export writes the legacy project and the two data files.
//
// The project blocks are not read by one routine per class: a layout table names, per block,
// which model objects it carries (and which of their fields), and one walker reads or writes
// every field of those objects' field tables, the tag being the property name.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/model_set.h"
#include "core/units.h"

namespace velmar {

class clsVXEngine;
class clsVXWaterjet;
class clsVXFileINI;

// What an import or export found: whether the file was read (written), why not, and the
// items that could not be read (written), each with its block.
struct LegacyReport {
  struct Item {
    std::string block, text;
  };
  bool ok = false;
  std::string message;  // why the file was not read or written, in the product's words
  std::string status;   // the status text of the operation ("Importing Legacy VL5 file")
  std::vector<Item> items;
  // The items, grouped under their blocks: "[Hull]" and one indented line per item.
  std::string ItemsText() const;
};

enum class LegacyFileKind {
  Project,     // *.vl5, the whole project
  Model,       // *.mdl, read as a project
  ShipObject,  // *.vxf of the sibling program
  HullOnly,    // the Units, Condition and Hull blocks of a *.vl5, into the open project's units
  Results,     // the results of a *.vl5 for a reference ship: Units, Condition, Speeds, Results
};

// The kind of a file by its extension (vl5, mdl, vxf, any case); Project for others.
LegacyFileKind LegacyKindOfPath(const std::filesystem::path& path);

// The older unit labels of a family, position for position with the unit indices ("Foot",
// "Meter", ...; empty slots "Dummy2" ...).
std::span<const std::string> LegacyUnitLabels(UnitFamily family);
// The label a unit index is written with: its older label, or the current one where the
// older list has an empty slot or none.
std::string LegacyUnitLabel(UnitFamily family, int index);
// Reads the unit tag of a family (older or current label); -1, with the failure noted, when
// it is missing or unknown.
int GetLegacyUnitIndex(clsVXFileINI& ini, std::string_view tag, UnitFamily family, bool& failed,
                       std::string& errorText);

// Reads a legacy file into `set` (the caller has made it a fresh project, except for the
// hull-only and results imports, which change only what they read). Never throws.
LegacyReport ImportLegacyFile(const std::filesystem::path& path, ModelSet& set, LegacyFileKind kind);
// Writes the project `set` as a legacy project (*.vl5), safely: the target is replaced only
// by a complete file.
LegacyReport ExportLegacyProject(const std::filesystem::path& path, const ModelSet& set);

// The "File Import Warning" of an import that left items unread (nothing when none were).
void ShowLegacyImportWarning(const LegacyReport& report, LegacyFileKind kind);

// The legacy engine file: [Velmar] Description; [EngUnits] Power, FuelRate; [EngineLib]
// RatingPwr, RatingRPM and the curves PerfPwr, PerfRPM, PerfFuel (maximum power) and
// CombPwr, CombRPM, CombFuel (defined load). Values come in the file's units and are held in
// the engine's.
LegacyReport ImportLegacyEngineFile(const std::filesystem::path& path, clsVXEngine& engine);
LegacyReport ExportLegacyEngineFile(const std::filesystem::path& path, const clsVXEngine& engine);
// The legacy waterjet file: [Velmar] Description; [JetUnits] Speed, Power, Force, PropLength
// and their decimals; [JetLib] ImpDiam, MaxPower, MaxRevs, ThrustAngle, JetLCE, JetVCE;
// [JetPerf] PerfCount and the points PerfPoint1...; [JetImpeller] SpeedCorr, ImpellerCount
// and the impellers Impeller1..., ImpellerName1.... More than the waterjet's tables hold is
// cut with the "Waterjet Import" messages; an unreadable file leaves the waterjet cleared.
LegacyReport ImportLegacyWaterjetFile(const std::filesystem::path& path, clsVXWaterjet& waterjet);
LegacyReport ExportLegacyWaterjetFile(const std::filesystem::path& path, const clsVXWaterjet& waterjet);

// ---- Shared by the legacy readers ------------------------------------------------------------

// One block of a legacy file being read: the errors of its Gets and the tags nobody asked
// for become items of the report when it is finished; a missing block is one item.
class LegacyBlockReader {
 public:
  LegacyBlockReader(clsVXFileINI& ini, LegacyReport& report, std::string_view block);
  // Collects the items; call once, after the last Get.
  void Finish();
  bool found = false;
  bool failed = false;
  std::string errors;

 private:
  clsVXFileINI& ini_;
  LegacyReport& report_;
  std::string block_;
};

// Loads a legacy file that holds at least one of `blocks`; otherwise false and the reason in
// the report's message.
bool LoadLegacyFile(clsVXFileINI& ini, const std::filesystem::path& path,
                    std::span<const std::string_view> blocks, LegacyReport& report);

}  // namespace velmar
