// Open and save of whole projects, the version rules, the common ship object, reference
// ships, the new-project template, the emergency save and the side files.
#include "files/project_file.h"

#include <algorithm>
#include <span>
#include <vector>

#include "core/diagnostics.h"
#include "core/ui_hooks.h"
#include "files/block_io.h"
#include "files/legacy_files.h"

namespace velmar {

namespace {

DateTime (*gClock)() = nullptr;
bool gKeepDocuments = false;

// PropulsorCalcType of a waterjet: the opener reads the Waterjet block instead of the
// propeller's three.
constexpr int kWaterjetDataCalcType = 3;

// Every block a project file may hold; a document with none of them is no project.
constexpr std::string_view kProjectBlocks[] = {
    "Project",    "Units",           "WaterProperties",  "Hull",      "Appendage",       "Environment",
    "Resistance", "ITTC78Expansion", "Propulsion",       "Propeller", "PropellerSeries", "PropellerSizing",
    "Engine",     "Waterjet",        "SpeedPerformance", "TaskList"};

// Loads a document that holds at least one of `blocks`; otherwise the reason, in the words
// the user sees.
std::string LoadDocument(clsVXFileJSON& file, const std::filesystem::path& path,
                         std::span<const std::string_view> blocks = kProjectBlocks) {
  const std::string quoted = "\"" + path.string() + "\"";
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) return "The file " + quoted + " does not exist.";
  if (!file.ReadFile(path)) return "The file " + quoted + " cannot be read.";
  const JsonObject root = file.ParsedObject();
  if (root && std::ranges::any_of(blocks, [&](std::string_view b) { return root->Exists(b); })) return {};
  return "The file " + quoted + " is not a Corvenith Velmar file.";
}

// The blocks in the order of opening; 0 when any of them reported a missing or unknown tag.
int ReadProjectBlocks(clsVXFileJSON& file, ModelSet& s) {
  JsonObject root;
  int status = 1;
  auto take = [&](int blockStatus) { status = blockStatus == 1 ? status : 0; };
  take(ReadFileBlock(file, root, *s.Project));
  take(ReadFileBlock(file, root, *s.Units));
  take(ReadFileBlock(file, root, *s.WaterProperties));
  take(ReadFileBlock(file, root, *s.Hull));
  take(ReadFileBlock(file, root, *s.Appendage));
  take(ReadFileBlock(file, root, *s.Environment));
  take(ReadFileBlock(file, root, *s.ITTC78));
  take(ReadFileBlock(file, root, *s.Resistance));
  take(ReadFileBlock(file, root, *s.Propulsion));
  using P = clsVXPropulsion::Field;
  if (s.Propulsion->Raw(FieldId(P::PropulsorCalcType)) != kWaterjetDataCalcType) {
    take(ReadFileBlock(file, root, *s.Propeller, 1));
    take(ReadFileBlock(file, root, *s.PropellerSeries));
    take(ReadFileBlock(file, root, *s.PropellerSizing));
  } else {
    take(ReadFileBlock(file, root, *s.Waterjet));
  }
  take(ReadFileBlock(file, root, *s.Engine));
  using E = clsVXEngine::Field;
  s.Propulsion->SetRaw(FieldId(P::EngineRatedRPM), s.Engine->Raw(FieldId(E::MaxRatedRPM)));
  s.Propulsion->SetRaw(FieldId(P::EngineRatedPower), s.Engine->Raw(FieldId(E::MaxRatedPower)));
  take(ReadFileBlock(file, root, *s.SpeedPerformance, 0));
  take(ReadFileBlock(file, root, *s.TaskList));
  return status;
}

// True for a version text " 12.x.y" to " 14.x.y": exactly three fields, the first a number.
bool IsVersion12To14(std::string_view text) {
  std::vector<std::string_view> fields;
  for (size_t dot; (dot = text.find('.')) != std::string_view::npos; text.remove_prefix(dot + 1))
    fields.push_back(text.substr(0, dot));
  fields.push_back(text);
  if (fields.size() != 3) return false;
  std::string first(fields[0]);
  first.erase(0, first.find_first_not_of(' '));
  first.erase(first.find_last_not_of(' ') + 1);
  char* end = nullptr;
  const double major = std::strtod(first.c_str(), &end);
  return !first.empty() && *end == '\0' && major >= 12.0 && major <= 14.0;
}

void ApplyVersionRules(ModelSet& s) {
  const std::string& source = s.Project->Source;
  int ktkqIndex = 0;
  if (source == "Corvenith Velmar 2012")
    ktkqIndex = 1;
  else if (source.find("Velmar ") == std::string::npos ||
           !IsVersion12To14(std::string_view(source).substr(6)))
    return;
  // Files of those versions did not keep whether the side data came from a file.
  using P = clsVXPropulsion::Field;
  if (!s.Engine->Description().empty()) s.Propulsion->SetRaw(FieldId(P::EngineFileIndex), 1);
  if (s.Waterjet && !s.Waterjet->Description().empty())
    s.Propulsion->SetRaw(FieldId(P::WaterjetFileIndex), 1);
  if (!s.Propeller->Description().empty()) s.Propulsion->SetRaw(FieldId(P::KTKQFileIndex), ktkqIndex);
}

// A side file: one block in a document of its own.
template <class Obj>
bool WriteSideFile(const std::filesystem::path& path, const Obj& obj) {
  clsVXFileJSON file;
  JsonObject root;
  const int status = WriteFileBlock(file, root, obj);
  return file.WriteFile(path) && status == 1;
}

// 0: not readable or without the block; 1: read; 2: read, with missing tags.
template <class Obj>
int ReadSideFile(const std::filesystem::path& path, std::string_view block, Obj& obj) {
  clsVXFileJSON file;
  if (!LoadDocument(file, path, std::span(&block, 1)).empty()) return 0;
  JsonObject root;
  return ReadFileBlock(file, root, obj) == 1 ? 1 : 2;
}

}  // namespace

void SetProjectFileClock(DateTime (*clock)()) { gClock = clock; }

DateTime ProjectFileNow() { return gClock ? gClock() : Now(); }

std::string LastModifiedText() {
  const DateTime now = ProjectFileNow();
  return FormatDate(now, "Medium Date") + " " + FormatDate(now, "Short Time");
}

void KeepOpenedDocuments(bool keep) { gKeepDocuments = keep; }

OpenResult OpenProjectFile(const std::filesystem::path& path) {
  OpenResult result;
  clsVXFileJSON file;
  result.message = LoadDocument(file, path);
  if (!result.message.empty()) return result;
  if (gKeepDocuments) {
    thread_local JsonValue kept;
    kept = file.Parsed();
  }
  ModelSet& s = App().primary;
  result.opened = true;
  result.current = ReadProjectBlocks(file, s) == 1;
  if (!result.current) {
    // A missing tag never blocks a file; the user is told to save it in the current format.
    result.warningText = file.GetParserErrors();
    const Answer answer = Hooks().Ask("File specification warning",
                                      "The file is not in the current format. Data in the old format will be "
                                      "read, but please re-save the file "
                                      "to update it to the current specification. \r\n\r\nDo you wish to "
                                      "view the new or updated items in the "
                                      "file?",
                                      false, Answer::No);
    if (answer == Answer::Yes) {
      ShowWarning(0,
                  "Project file specification warning\r\n    File Source: " + s.Project->Source +
                      "\r\n    Application: " + ProgramVersionText(),
                  result.warningText, -1.0);
    }
  }
  if (!file.UnknownLabels().empty()) {
    // A method added by a newer version (or a mistyped label) must not pass unseen: the project
    // opens, the choice reads as the first of its list, and the user is told which ones.
    result.unknownLabels =
        "The file names a method or choice this version does not know. Each one reads as the first "
        "entry of its list; check them before you calculate:";
    for (const std::string& line : file.UnknownLabels()) result.unknownLabels += "\r\n    " + line;
    Hooks().ShowMessage("File read warning", result.unknownLabels, 0);
  }
  ApplyProjectVersionRules();
  Hooks().RefreshResults();
  return result;
}

std::filesystem::path ProjectOwnPath() {
  // A project without a folder (a new one, or one read without the Open command) has no file
  // of its own to merge with.
  const clsVXProject& p = *App().primary.Project;
  if (p.FileName.empty() || p.FileFolder.empty()) return {};
  return std::filesystem::path(p.FileFolder) / p.FileName;
}

int SaveProjectFile(const std::filesystem::path& path, std::string* error) {
  return SaveProjectFile(path, ProjectOwnPath(), error);
}

int SaveProjectFile(const std::filesystem::path& path, const std::filesystem::path& mergeFrom,
                    std::string* error) {
  ModelSet& s = App().primary;
  clsVXFileJSON file;
  // Blocks and tags of the project's own file that this program doesn't write keep their
  // places, also when the project is saved elsewhere (Save As, an emergency save).
  std::error_code ec;
  if (!mergeFrom.empty() && std::filesystem::is_regular_file(mergeFrom, ec)) {
    file.ReadFile(mergeFrom);
    file.ClearParserErrors();
  }
  s.Project->Source = ProgramVersionText();
  s.Project->LastModified = LastModifiedText();
  JsonObject root;
  int status = 1;
  auto take = [&](int blockStatus) { status = blockStatus == 1 ? status : 0; };
  take(WriteFileBlock(file, root, *s.Project));
  take(WriteFileBlock(file, root, *s.Units));
  take(WriteFileBlock(file, root, *s.WaterProperties));
  take(WriteFileBlock(file, root, *s.Hull));
  take(WriteFileBlock(file, root, *s.Appendage));
  take(WriteFileBlock(file, root, *s.Environment));
  take(WriteFileBlock(file, root, *s.Resistance));
  take(WriteFileBlock(file, root, *s.ITTC78));
  take(WriteFileBlock(file, root, *s.Propulsion));
  take(WriteFileBlock(file, root, *s.Propeller, 1));
  take(WriteFileBlock(file, root, *s.PropellerSeries));
  take(WriteFileBlock(file, root, *s.PropellerSizing));
  take(WriteFileBlock(file, root, *s.Engine));
  take(WriteFileBlock(file, root, *s.SpeedPerformance, 0));
  take(WriteFileBlock(file, root, *s.TaskList));
  // The file is replaced only when the whole text could be written.
  if (!file.WriteFile(path)) {
    status = 0;
    if (error) *error = file.WriteError();
  } else if (status != 1 && error) {
    *error = "Some data could not be written; see the File write error.";
  }
  return status;
}

void ApplyProjectVersionRules() { ApplyVersionRules(App().primary); }

int ExportCommonShipObject(const std::filesystem::path& path) {
  ModelSet& s = App().primary;
  clsVXProject ship;
  ship.ProjectID.clear();
  ship.Description = "Corvenith Common Ship Object";
  ship.FileName = path.filename().string();
  ship.FileFolder = path.parent_path().string();
  ship.FilePath = path.string();
  clsVXFileJSON file;
  JsonObject root;
  int status = 1;
  auto take = [&](int blockStatus) { status = blockStatus == 1 ? status : 0; };
  take(WriteFileBlock(file, root, ship));
  take(WriteFileBlock(file, root, *s.Units));
  take(WriteFileBlock(file, root, *s.WaterProperties));
  take(WriteFileBlock(file, root, *s.Hull));
  take(WriteFileBlock(file, root, *s.Appendage));
  take(WriteFileBlock(file, root, *s.ITTC78));
  take(WriteFileBlock(file, root, *s.Propeller, 2));
  take(WriteFileBlock(file, root, *s.SpeedPerformance, 1));
  if (!file.WriteFile(path)) status = 0;
  s.WaterProperties->ClearErrorStack();
  s.Hull->ClearErrorStack();
  s.Appendage->ClearErrorStack();
  s.ITTC78->ClearErrorStack();
  s.Propeller->ClearErrorStack();
  s.SpeedPerformance->ClearErrorStack();
  return status;
}

bool LoadReferenceShipData(const std::filesystem::path& path, ModelSet& target) {
  std::string ext = path.extension().string();
  std::ranges::transform(ext, ext.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  clsVXFileJSON file;
  // A legacy project (*.vl5) gives its results alone: units, water, speeds and results.
  if (ext == ".vl5") {
    if (ImportLegacyFile(path, target, LegacyFileKind::Results).ok) return true;
    Hooks().ShowMessage("Set reference ship", "Error in Reference ship file.", 0);
    return false;
  }
  if (!LoadDocument(file, path).empty()) {
    Hooks().ShowMessage("Set reference ship", "Error in Reference ship file.", 0);
    return false;
  }
  // A ship object holds the speed table up to the hull-propulsor coefficients only.
  JsonObject root;
  ReadFileBlock(file, root, *target.Units);
  ReadFileBlock(file, root, *target.WaterProperties);
  ReadFileBlock(file, root, *target.SpeedPerformance, ext == ".ship" ? 1 : 0);
  return true;
}

bool LoadTemplateFile(const std::filesystem::path& path) {
  ModelSet& s = App().primary;
  clsVXFileJSON file;
  if (!LoadDocument(file, path).empty()) return false;
  const clsVXProject identity = *s.Project;
  ReadProjectBlocks(file, s);
  ApplyVersionRules(s);
  *s.Project = identity;
  s.TaskList->ClearAllData();
  std::vector<clsVXSpeedPerformance::Field> results;
  for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c)
    if (c != FieldId(clsVXSpeedPerformance::Field::Speed))
      results.push_back(static_cast<clsVXSpeedPerformance::Field>(c));
  s.SpeedPerformance->ZeroColumns(results);
  return true;
}

void InstallProjectFileHooks() {
  App().LoadTemplateFile = [](const std::string& path) { return LoadTemplateFile(path); };
}

std::filesystem::path SaveErrorProject(const std::filesystem::path& folder) {
  const DateTime now = ProjectFileNow();
  const std::filesystem::path path =
      folder / ("Error-" + FormatDate(now, "yyyymmdd") + "-" + FormatDate(now, "hhmm") + ".vxvl");
  if (SaveProjectFile(path) != 1) {
    Hooks().ShowMessage(
        "File Write Error",
        "A data error has occurred in the file. The entire file was processed and saved to the "
        "application folder, but some data may not have been written.",
        0);
  }
  std::error_code ec;
  return std::filesystem::is_regular_file(path, ec) ? path : std::filesystem::path();
}

bool ReadEngineFile(const std::filesystem::path& path, clsVXEngine& engine) {
  const int status = ReadSideFile(path, "Engine", engine);
  if (status == 2) {
    Hooks().ShowMessage(
        "Engine data",
        "A data error has occurred in the file. The entire file was processed, but some data may not "
        "have been read.",
        0);
  }
  return status != 0;
}

bool WriteEngineFile(const std::filesystem::path& path, const clsVXEngine& engine) {
  return WriteSideFile(path, engine);
}

bool ReadTaskFile(const std::filesystem::path& path, clsVXTaskList& tasks) {
  if (ReadSideFile(path, "TaskList", tasks) != 0) return true;
  Hooks().ShowMessage("Task list import error", "An error occured importing the task list file.", 0);
  return false;
}

bool WriteTaskFile(const std::filesystem::path& path, const clsVXTaskList& tasks) {
  if (WriteSideFile(path, tasks)) return true;
  Hooks().ShowMessage("Task list import error", "An error occured exporting the task list file.", 0);
  return false;
}

// Read into a cleared copy, so that no record of the waterjet held before survives beside
// the file's, and a file that cannot be read leaves the waterjet as it was; the tables are
// then sorted as the waterjet keeps them.
bool ReadWaterjetFile(const std::filesystem::path& path, clsVXWaterjet& waterjet) {
  const std::shared_ptr<clsVXWaterjet> read = waterjet.CopyClass();
  read->ClearAllData();
  if (ReadSideFile(path, "Waterjet", *read) == 0) return false;
  read->Sort();
  waterjet = *read;
  return true;
}

bool WriteWaterjetFile(const std::filesystem::path& path, const clsVXWaterjet& waterjet) {
  return WriteSideFile(path, waterjet);
}

}  // namespace velmar
