// The file commands and the emergency save.
#include "app/file_commands.h"

#include <csignal>
#include <cstdlib>
#include <exception>

#include "app/application.h"
#include "core/diagnostics.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/iges_export.h"
#include "files/legacy_files.h"
#include "files/safe_write.h"

namespace velmar {
namespace fs = std::filesystem;

namespace {

constexpr const char* kUntitled = "untitled.vxvl";
constexpr const char* kProjectFilter = "Corvenith Velmar (*.vxvl)";

FileCommandResult Refused(std::string title, std::string message) {
  FileCommandResult r;
  r.title = std::move(title);
  r.message = std::move(message);
  return r;
}

FileCommandResult Done() {
  FileCommandResult r;
  r.done = true;
  return r;
}

// What New and Open replace, kept so that a file that fails to open leaves the project as it
// was.
struct SavedState {
  ModelSet primary, refResistance, refPropulsion, refPropeller;
  bool needResistance, needPropulsion, dirty;

  SavedState()
      : primary(App().primary),
        refResistance(App().RefShipResistance),
        refPropulsion(App().RefShipPropulsion),
        refPropeller(App().RefPropeller),
        needResistance(App().NeedCalculateResistance),
        needPropulsion(App().NeedCalculatePropulsion),
        dirty(App().ProjectDirty) {}

  void Restore() const {
    Application& a = App();
    a.primary = primary;
    a.RefShipResistance = refResistance;
    a.RefShipPropulsion = refPropulsion;
    a.RefPropeller = refPropeller;
    a.NeedCalculateResistance = needResistance;
    a.NeedCalculatePropulsion = needPropulsion;
    a.ProjectDirty = dirty;
  }
};

}  // namespace

void SetProjectNamesFromPath(const fs::path& path) {
  std::error_code ec;
  const fs::path full = fs::absolute(path, ec);
  clsVXProject& p = *App().primary.Project;
  p.FileName = full.filename().string();
  p.FileFolder = full.parent_path().string();
  p.FilePath = full.string();
}

namespace {

// The session of the project that is about to be replaced goes to the tracker log.
void LogSessionOfOpenProject() {
  if (App().primary.Project) App().primary.Project->WriteProjectTrackerLog();
}

bool HasExtension(const fs::path& path, std::string_view ext) {
  return EqualsNoCase(path.extension().string(), ext);
}

// A failed save: the old file stands; the project goes to an emergency file so that nothing
// typed is lost, and the message says where.
FileCommandResult SaveFailed(const std::string& reason) {
  FileCommandResult r = Refused(
      "File Write Error", "The project could not be saved. " + (reason.empty() ? std::string() : reason));
  r.errorSave = EmergencySave();
  if (!r.errorSave.empty()) r.message += " A copy was saved as \"" + r.errorSave.string() + "\".";
  return r;
}

void Saved(const fs::path& path, SettingsStore* recent) {
  App().ProjectDirty = false;
  if (recent) AddRecentFile(*recent, path.string());
  App().primary.Project->WriteProjectTrackerLog();
}

}  // namespace

bool QuerySave(SettingsStore* recent) {
  if (!App().ProjectDirty) return true;
  const Answer a =
      Hooks().Ask("Warning", "Do you want to save changes before closing this file?", true, Answer::Cancel);
  if (a == Answer::Cancel) return false;
  if (a == Answer::No) return true;
  return SaveCommand(recent).done;
}

FileCommandResult NewCommand(SettingsStore* recent) {
  if (!QuerySave(recent)) return {};
  LogSessionOfOpenProject();
  NewProject();
  Hooks().RefreshResults();
  return Done();
}

FileCommandResult OpenCommand(fs::path path, SettingsStore* recent) {
  if (!QuerySave(recent)) return {};
  if (path.empty()) path = Hooks().AskFilePath("Open file...", "*.vxvl", false);
  if (path.empty()) return {};
  const SavedState saved;
  LogSessionOfOpenProject();
  NewProject();
  FileCommandResult r;
  r.open = OpenProjectFile(path);
  if (!r.open.opened) {
    saved.Restore();
    r.title = "File open error";
    r.message = r.open.message;
    return r;
  }
  SetProjectNamesFromPath(path);
  ClearErrorStacks();
  if (recent) AddRecentFile(*recent, App().primary.Project->FilePath);
  Hooks().RefreshResults();
  r.done = true;
  return r;
}

FileCommandResult SaveCommand(SettingsStore* recent) {
  const clsVXProject& p = *App().primary.Project;
  if (EqualsNoCase(p.FileName, kUntitled) || p.FileName.empty() || p.FileFolder.empty())
    return SaveAsCommand({}, recent);
  const fs::path path = ProjectOwnPath();
  std::string error;
  if (SaveProjectFile(path, &error) != 1) return SaveFailed(error);
  Saved(path, recent);
  return Done();
}

int SaveProjectAs(fs::path path, std::string* error) {
  if (path.extension().empty()) path += ".vxvl";
  clsVXProject& p = *App().primary.Project;
  const clsVXProject before = p;
  const fs::path ownFile = ProjectOwnPath();
  SetProjectNamesFromPath(path);
  if (SaveProjectFile(path, ownFile, error) == 1) return 1;
  // The project stays the one of its own file.
  p.FileName = before.FileName;
  p.FileFolder = before.FileFolder;
  p.FilePath = before.FilePath;
  return 0;
}

FileCommandResult SaveAsCommand(fs::path path, SettingsStore* recent) {
  if (path.empty()) path = Hooks().AskFilePath("Save file...", kProjectFilter, true);
  if (path.empty()) return {};
  if (path.extension().empty()) path += ".vxvl";
  if (IsReadOnlyFile(path))
    return Refused("Read-Only Error", "The project could not be saved. The selected file is Read-only.");
  std::string error;
  if (SaveProjectAs(path, &error) != 1) return SaveFailed(error);
  Saved(App().primary.Project->FilePath, recent);
  return Done();
}

FileCommandResult CloseCommand(SettingsStore* recent) { return NewCommand(recent); }

FileCommandResult OpenRecentCommand(int index, SettingsStore& recent) {
  const std::vector<std::string> list = RecentFiles(recent);
  if (index < 0 || index >= static_cast<int>(list.size()) || list[static_cast<size_t>(index)].empty())
    return {};
  if (!QuerySave(&recent)) return {};
  const fs::path path = list[static_cast<size_t>(index)];
  std::error_code ec;
  if (!fs::is_regular_file(path, ec))
    return Refused("File opening recent job error", "The file path has been altered or it no longer exists.");
  if (!HasExtension(path, ".vxvl"))
    return Refused("File opening recent job error",
                   "Only *.vxvl file types can be opened. Other file types can be imported.");
  App().ProjectDirty = false;  // the question has been answered
  return OpenCommand(path, &recent);
}

const char* const kImportFileTypes[5] = {
    "Legacy Velmar project file (*.vl5)", "Legacy Velmar project [HULL] block only (*.vl5)",
    "Corvenith Common Ship Object (*.ship)", "Legacy Velmar model file (*.mdl)", "Corvenith Drummoline (*.vxf)"};
const char* const kExportFileTypes[2] = {"Legacy Velmar project file (*.vl5)",
                                         "Corvenith Common Ship Object (*.ship)"};

FileCommandResult ImportCommand(const fs::path& path, ImportKind kind, SettingsStore* recent) {
  if (path.empty()) return {};
  if (kind == ImportKind::LegacyHull) {
    const Answer a = Hooks().Ask(
        "Warning", "This will change the existing hull data. Do you want to save existing data before proceeding?",
        true, Answer::Cancel);
    if (a == Answer::Cancel || (a == Answer::Yes && !SaveCommand(recent).done)) return {};
  } else if (!QuerySave(recent)) {
    return {};
  }
  const SavedState saved;
  FileCommandResult r;
  if (kind == ImportKind::CommonShip) {
    LogSessionOfOpenProject();
    NewProject();
    r.open = OpenProjectFile(path);
    if (!r.open.opened) {
      saved.Restore();
      return Refused("File open error", r.open.message);
    }
  } else {
    constexpr LegacyFileKind kLegacy[] = {LegacyFileKind::Project, LegacyFileKind::HullOnly, LegacyFileKind::Project,
                                          LegacyFileKind::Model, LegacyFileKind::ShipObject};
    const LegacyFileKind legacy = kLegacy[static_cast<int>(kind)];
    if (legacy != LegacyFileKind::HullOnly) {
      LogSessionOfOpenProject();
      NewProject();
    }
    const LegacyReport report = ImportLegacyFile(path, App().primary, legacy);
    if (!report.ok) {
      saved.Restore();
      return Refused("File Import Error", report.message);
    }
    ShowLegacyImportWarning(report, legacy);
    if (legacy == LegacyFileKind::HullOnly) {
      App().ProjectDirty = true;
      App().NeedCalculateResistance = App().NeedCalculatePropulsion = true;
    }
  }
  if (kind != ImportKind::LegacyHull) SetProjectNamesFromPath(fs::path(App().primary.Project->FileFolder) / kUntitled);
  ClearErrorStacks();
  Hooks().RefreshResults();
  r.done = true;
  return r;
}

FileCommandResult ExportCommand(const fs::path& path) {
  if (path.empty()) return {};
  if (IsReadOnlyFile(path))
    return Refused("Read-Only Error", "The project could not be exported. The selected file is Read-only.");
  const bool written = HasExtension(path, ".vl5") ? ExportLegacyProject(path, App().primary).ok
                                                  : ExportCommonShipObject(path) == 1;
  if (!written)
    return Refused("File Export Error",
                   "A data error has occurred writing the file. The entire file was processed, but some data may "
                   "not have been exported.");
  return Done();
}

FileCommandResult ExportPropellerCadCommand(fs::path path) {
  const ModelSet& s = App().primary;
  const std::string refusal = CheckPropellerForIGES(*s.Propeller, *s.Propulsion);
  if (!refusal.empty()) return Refused(kIGESDialogTitle, refusal);
  if (path.empty()) path = Hooks().AskFilePath(kIGESDialogTitle, kIGESFileFilter, true);
  if (path.empty()) return {};
  if (path.extension().empty()) path += ".igs";
  Hooks().BusyPointer(true);
  const IGESExportResult r = ExportPropellerIGES(path, IGESBladeInput(*s.Propeller), s.Units->PropLengthIndex());
  Hooks().BusyPointer(false);
  return r.ok ? Done() : Refused(kIGESDialogTitle, r.message);
}

std::string WindowTitle(std::string_view applicationTitle) {
  return std::string(applicationTitle) + " - [" + App().primary.Project->FileName + "]";
}

std::vector<std::string> RecentFiles(const SettingsStore& store) {
  std::vector<std::string> list;
  for (int i = 1; i <= kRecentFileCount; ++i)
    list.push_back(store.Get("RecentFiles", "RecentFile" + std::to_string(i)));
  return list;
}

void AddRecentFile(SettingsStore& store, const std::string& path) {
  std::vector<std::string> list = RecentFiles(store);
  std::erase(list, path);
  list.insert(list.begin(), path);
  for (int i = 1; i <= kRecentFileCount; ++i) {
    const std::string& entry = static_cast<size_t>(i) <= list.size() ? list[static_cast<size_t>(i - 1)] : "";
    if (entry.empty())
      store.Remove("RecentFiles", "RecentFile" + std::to_string(i));
    else
      store.Set("RecentFiles", "RecentFile" + std::to_string(i), entry);
  }
}

fs::path EmergencySave() {
  try {
    const fs::path folder = ApplicationDataFolder();
    std::error_code ec;
    fs::create_directories(folder, ec);
    return SaveErrorProject(folder);
  } catch (...) {
    return {};
  }
}

namespace {

volatile std::sig_atomic_t gCrashing = 0;

// A fatal signal: one emergency save, then the default action (the program ends as it would
// have, with its core dump or exit status). Writing a file is not something a signal handler
// may rely on; it is the last chance to keep the user's work, and the flag keeps a second
// fault inside it from looping.
void OnFatalSignal(int sig) {
  if (!gCrashing) {
    gCrashing = 1;
    EmergencySave();
  }
  std::signal(sig, SIG_DFL);
  std::raise(sig);
}

void OnTerminate() {
  if (!gCrashing) {
    gCrashing = 1;
    EmergencySave();
  }
  std::abort();
}

}  // namespace

void InstallCrashHandler() {
  for (int sig : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT}) std::signal(sig, OnFatalSignal);
  std::set_terminate(OnTerminate);
}

}  // namespace velmar
