// The project tracker log: a plain text file shared by the maker's programs, one line per
// working session of 5 minutes or more on a named project, fields separated by "|":
//   Active | yyyy-mm-dd | ID | Source | FileName | Description | start hh:mm:ss | end hh:mm:ss
//   | elapsed hh:mm | FileFolder
// The log is "ProjectTracker.log" in "Corvenith Shared/ProjectTracker" under the user's data
// folder ($XDG_DATA_HOME, else ~/.local/share); VELMAR_TRACKER_DIR names another folder for
// the log itself (tests, shared installations).
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/project.h"

namespace velmar {

// The folder of the log; empty when neither the override nor a data folder can be found.
std::filesystem::path ProjectTrackerFolder();
// The log's path, after creating the folder and an empty log where they are missing. Empty,
// with the message "Cannot find [Common Files] directory." under "Error", when there is no
// folder to hold it.
std::filesystem::path ProjectTrackerLogPath();
// The log's lines that hold "|", split at "|" (program text, UTF-8).
std::vector<std::vector<std::string>> ReadProjectTrackerLines();

}  // namespace velmar
