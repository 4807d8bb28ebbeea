// The project file (*.vxvl) and its relatives: open and save of the whole project with
// merge-on-save, the version rules, the common ship export (*.ship), reference ships, the
// new-project template, the emergency "Error-" save, and the side files *.engn, *.task and
// *.wjet.
#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "core/model_set.h"
#include "core/project.h"
#include "core/speed_performance.h"
#include "core/units.h"
#include "core/water.h"
#include "files/task_list.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propeller_sizing.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "vessel/appendage.h"
#include "vessel/environment.h"
#include "vessel/hull.h"
#include "core/format.h"
#include "files/file_json.h"

namespace velmar {

// The blocks of every class, read and written by walking the class's field table (see
// block_io.h). `root` is normally empty (the file's parsed root is taken); the status is 1
// for success and 0 otherwise. Propeller and SpeedPerformance take a mode (Propeller: 1 full,
// 2 ends after Chord07R; SpeedPerformance: 0 all lists, 1 up to RelRotEfficiency).
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXProject& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXProject& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXUnits& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXUnits& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXWaterProperties& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXWaterProperties& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXHull& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXHull& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXAppendage& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXAppendage& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXEnvironment& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXEnvironment& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXITTC78Expansion& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXITTC78Expansion& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXResistance& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXResistance& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXPropulsion& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXPropulsion& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXPropeller& obj, int mode);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXPropeller& obj, int mode);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXPropellerSeries& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXPropellerSeries& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXPropellerSizing& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXPropellerSizing& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXEngine& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXEngine& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXWaterjet& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXWaterjet& obj);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXSpeedPerformance& obj, int mode);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXSpeedPerformance& obj, int mode);
int ReadFileBlock(clsVXFileJSON& file, JsonObject& root, clsVXTaskList& obj);
int WriteFileBlock(clsVXFileJSON& file, JsonObject& root, const clsVXTaskList& obj);

// The date and time the file layer stamps: LastModified ("Medium Date" and "Short Time") and
// the emergency save's name. A clock can be set for tests (nullptr: the system clock).
void SetProjectFileClock(DateTime (*clock)());
DateTime ProjectFileNow();
std::string LastModifiedText();

// The columns of the SpeedPerformance block in file order; mode 1 writes the first 16
// (Speed to RelRotEfficiency).
std::span<const std::string_view> SpeedPerformanceFileColumns(int mode = 0);

// What opening a file found.
struct OpenResult {
  bool opened = false;      // false: the file does not exist, cannot be read, or is no project
  bool current = true;      // false: some block reported a missing or unknown tag
  std::string message;      // why it did not open, in the product's words
  std::string warningText;  // the "Project file specification warning" detail, when not current
  std::string unknownLabels;  // the "File read warning" text: choices this version doesn't know
};

// Opens a project into App().primary (the caller has run NewProject). Never throws; a file
// that is not a project leaves the primary set as NewProject made it.
OpenResult OpenProjectFile(const std::filesystem::path& path);
// For a run that ends soon after opening (a command line): the document tree of the last
// file each thread opened is kept, up to the next open or the end of the thread, instead of
// being taken apart when the open ends. Taking it apart costs a sixth of a calc.
void KeepOpenedDocuments(bool keep);
// The project's own file: the folder and name of its Project block (empty for a project that
// has none).
std::filesystem::path ProjectOwnPath();
// Saves the primary set to `path`, merging into the project's own file (or `mergeFrom`):
// blocks and tags that file holds and this program does not write keep their place. Written
// safely (files/safe_write.h). Returns 1 on success, 0 otherwise, with the reason in `error`.
int SaveProjectFile(const std::filesystem::path& path, std::string* error = nullptr);
int SaveProjectFile(const std::filesystem::path& path, const std::filesystem::path& mergeFrom,
                    std::string* error = nullptr);
void ApplyProjectVersionRules();
int ExportCommonShipObject(const std::filesystem::path& path);
bool LoadReferenceShipData(const std::filesystem::path& path, ModelSet& target);
// Reads a template project over a fresh project's defaults. The new project keeps its own
// identity (Project block); the template's results (every column but the speeds) and task
// list are not taken over. False when the file is not a project.
bool LoadTemplateFile(const std::filesystem::path& path);
// Wires LoadTemplateFile into App().LoadTemplateFile.
void InstallProjectFileHooks();
// The emergency save after a data error: "Error-yyyymmdd-hhmm.vxvl" in `folder`; shows "File
// Write Error" when it fails. Returns the path written (empty on failure).
std::filesystem::path SaveErrorProject(const std::filesystem::path& folder);

// Side files: the engine file (the Engine block alone) and the task list file (one TaskList
// block). Read returns false when the file cannot be read or has no such block.
bool ReadEngineFile(const std::filesystem::path& path, clsVXEngine& engine);
bool WriteEngineFile(const std::filesystem::path& path, const clsVXEngine& engine);
bool ReadTaskFile(const std::filesystem::path& path, clsVXTaskList& tasks);
bool WriteTaskFile(const std::filesystem::path& path, const clsVXTaskList& tasks);
// The waterjet side file *.wjet: the Waterjet block alone.
bool ReadWaterjetFile(const std::filesystem::path& path, clsVXWaterjet& waterjet);
bool WriteWaterjetFile(const std::filesystem::path& path, const clsVXWaterjet& waterjet);

}  // namespace velmar
