// The file commands of the program (New, Open, Save, Save As, Close, the recent list) and the
// emergency save, as engine functions that the window program and the command line share.
// Questions and file dialogs go through the UI hooks; a refusal or failure comes back as a
// title and a message in the product's words, with the project left as it was.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/settings_store.h"
#include "files/project_file.h"

namespace velmar {

struct FileCommandResult {
  bool done = false;  // the command ran to its end (false: cancelled, refused or failed)
  std::string title;  // of the message box, when there is a message
  std::string message;
  std::filesystem::path errorSave;  // the emergency save written after a failed save
  OpenResult open;                  // what an open found
};

// "Do you want to save changes before closing this file?" (Yes, No, Cancel) when the project
// has unsaved changes: Yes saves (Save, or Save As for a project without a file), No goes on,
// Cancel stops. True when the caller may go on.
bool QuerySave(SettingsStore* recent = nullptr);

FileCommandResult NewCommand(SettingsStore* recent = nullptr);
// Opens `path` (empty: asks through the "Open file..." dialog). The project's name, folder
// and path are set from the path opened and the error stacks are cleared.
FileCommandResult OpenCommand(std::filesystem::path path, SettingsStore* recent = nullptr);
// Saves to the project's own file; a project without one (untitled, or no folder) runs Save
// As. A failed save leaves the old file as it was and writes an emergency save.
FileCommandResult SaveCommand(SettingsStore* recent = nullptr);
// Saves under `path` (empty: asks through the "Save file..." dialog), carrying over what the
// project's own file holds that the program does not write. A read-only target is refused.
FileCommandResult SaveAsCommand(std::filesystem::path path, SettingsStore* recent = nullptr);
// The core of Save As without its dialog, refusal or emergency save (the command line uses
// it): the project takes its names from `path` and is saved there, merged from its own file;
// on failure the names go back and the reason is in `error`. 1 on success.
int SaveProjectAs(std::filesystem::path path, std::string* error = nullptr);
// The project's name, folder and path from the file it was opened from or saved to.
void SetProjectNamesFromPath(const std::filesystem::path& path);
// Closes the project (after QuerySave) and starts a new one.
FileCommandResult CloseCommand(SettingsStore* recent = nullptr);
// Opens entry `index` (0 = the newest) of the recent list.
FileCommandResult OpenRecentCommand(int index, SettingsStore& recent);

// File > Import, after the "Open file..." dialog: what the user chose there.
enum class ImportKind { LegacyProject, LegacyHull, CommonShip, LegacyModel, ShipObject };
// The dialog's types, in ImportKind order.
extern const char* const kImportFileTypes[5];
// Imports `path`. All but the hull-only import ask about unsaved changes and start a new
// project named "untitled.vxvl"; the hull-only import changes the hull of the open project after
// its own question. Items a legacy file could not give show once as the "File Import Warning";
// a file that cannot be read leaves the project as it was.
FileCommandResult ImportCommand(const std::filesystem::path& path, ImportKind kind,
                                SettingsStore* recent = nullptr);
// File > Export: the project as a legacy project (*.vl5) or, for any other extension, as a
// common ship object (*.ship). A read-only target is refused.
extern const char* const kExportFileTypes[2];
FileCommandResult ExportCommand(const std::filesystem::path& path);
// Tools > Utilities > Export propeller CAD shape: the propeller tested first (the refusal comes
// back as the message), then `path` asked for when empty, then the IGES file written.
FileCommandResult ExportPropellerCadCommand(std::filesystem::path path);

// The window title: the application title, " - [", the project's file name, "]".
std::string WindowTitle(std::string_view applicationTitle = "Velmar");

// The recent list: four entries under RecentFiles, RecentFile1 the newest. Adding a path puts
// it first, after dropping an equal entry, and moves the others down.
inline constexpr int kRecentFileCount = 4;
std::vector<std::string> RecentFiles(const SettingsStore& store);
void AddRecentFile(SettingsStore& store, const std::string& path);

// The emergency save: the project as "Error-yyyymmdd-hhmm.vxvl" in the program's data
// folder, merged from the project's own file, which is never touched. Empty on failure.
std::filesystem::path EmergencySave();
// Installs handlers for the fatal signals (segmentation fault, bus error, illegal
// instruction, floating-point trap, abort) and for an exception that nothing catches: each
// writes the emergency save once and then lets the program end as it would have.
void InstallCrashHandler();

}  // namespace velmar
