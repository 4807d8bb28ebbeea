// clsVXProject: the identity of the open project (file name and place, source program,
// description, id) and the session that the project tracker log times.
#pragma once

#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace velmar {

class clsVXProject {
 public:
  std::string FileName;
  std::string FileFolder;
  std::string FilePath;
  std::string LastModified;
  std::string Source;
  std::string Description;
  std::string ProjectID;
  // Start of the working session on this project (seconds since the epoch).
  std::time_t SessionStart = std::time(nullptr);

  std::shared_ptr<clsVXProject> CopyClass() const { return std::make_shared<clsVXProject>(*this); }

  // The project tracker log (files/project_tracker.cpp). WriteProjectTrackerLog appends one
  // line for a named project whose session lasted 5 whole minutes or more, and in any case
  // starts a new session; true when a line was written.
  bool WriteProjectTrackerLog();
  // Read the log: every line holding "|", split at "|" (10 fields as written). Files: one
  // entry per project file (folder and name), its latest line; History: every line of this
  // project's file. Both return the count.
  int ReadProjectTrackerFiles();
  int ReadProjectTrackerHistory();
  int ProjectTrackerFilesCount() const { return static_cast<int>(trackerFiles_.size()); }
  const std::vector<std::string>& ProjectTrackerFilesString(int i) const { return trackerFiles_.at(i); }
  int ProjectTrackerHistoryCount() const { return static_cast<int>(trackerHistory_.size()); }
  const std::vector<std::string>& ProjectTrackerHistoryString(int i) const { return trackerHistory_.at(i); }

 private:
  std::vector<std::vector<std::string>> trackerFiles_, trackerHistory_;
};

}  // namespace velmar
