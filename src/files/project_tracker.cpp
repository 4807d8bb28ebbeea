// The project tracker log and the tracker members of clsVXProject.
#include "files/project_tracker.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "core/format.h"
#include "core/ui_hooks.h"
#include "files/text_codec.h"

namespace velmar {

namespace {

constexpr int kMinimumSessionSeconds = 5 * 60;

// A field must not split the line: separators and line breaks inside a text become blanks.
std::string Field(std::string text) {
  for (char& c : text)
    if (c == '|' || c == '\r' || c == '\n') c = ' ';
  return text;
}

std::string Lower(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

std::vector<std::string> Split(const std::string& line) {
  std::vector<std::string> fields;
  size_t from = 0;
  for (size_t bar; (bar = line.find('|', from)) != std::string::npos; from = bar + 1)
    fields.push_back(line.substr(from, bar - from));
  fields.push_back(line.substr(from));
  return fields;
}

// Field numbers (from 0) of a line as written.
constexpr size_t kFileNameField = 4, kFileFolderField = 9;

}  // namespace

std::filesystem::path ProjectTrackerFolder() {
  if (const char* dir = std::getenv("VELMAR_TRACKER_DIR"); dir && *dir) return dir;
  std::filesystem::path base;
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg)
    base = xdg;
  else if (const char* home = std::getenv("HOME"); home && *home)
    base = std::filesystem::path(home) / ".local/share";
  else
    return {};
  return base / "Corvenith Shared" / "ProjectTracker";
}

std::filesystem::path ProjectTrackerLogPath() {
  const std::filesystem::path folder = ProjectTrackerFolder();
  std::error_code ec;
  if (folder.empty() || (std::filesystem::create_directories(folder, ec), ec)) {
    Hooks().ShowMessage("Error", "Cannot find [Common Files] directory.", 0);
    return {};
  }
  const std::filesystem::path log = folder / "ProjectTracker.log";
  if (!std::filesystem::exists(log, ec)) std::ofstream(log, std::ios::binary);
  return log;
}

std::vector<std::vector<std::string>> ReadProjectTrackerLines() {
  std::vector<std::vector<std::string>> lines;
  const std::filesystem::path path = ProjectTrackerLogPath();
  if (path.empty()) return lines;
  std::ifstream in(path, std::ios::binary);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.find('|') != std::string::npos) lines.push_back(Split(Cp1252ToUtf8(line)));
  }
  return lines;
}

bool clsVXProject::WriteProjectTrackerLog() {
  const std::time_t start = SessionStart, now = std::time(nullptr);
  // A short session is dropped and does not add up with the next one.
  SessionStart = now;
  const std::string stem = Lower(std::filesystem::path(FileName).stem().string());
  if (FileName.empty() || stem == "untitled" || now - start < kMinimumSessionSeconds) return false;
  const std::filesystem::path path = ProjectTrackerLogPath();
  if (path.empty()) return false;
  const long elapsed = static_cast<long>(now - start);
  const DateTime end = LocalTime(now);
  DateTime span;
  span.hour = static_cast<int>(elapsed / 3600 % 24);
  span.minute = static_cast<int>(elapsed / 60 % 60);
  const std::string line = "Active|" + FormatDate(end, "yyyy-mm-dd") + "|" + Field(ProjectID) + "|" +
                           Field(Source) + "|" + Field(FileName) + "|" + Field(Description) + "|" +
                           FormatDate(LocalTime(start), "hh:mm:ss") + "|" + FormatDate(end, "hh:mm:ss") +
                           "|" + FormatDate(span, "hh:mm") + "|" + Field(FileFolder) + "\r\n";
  std::ofstream out(path, std::ios::binary | std::ios::app);
  out << Utf8ToCp1252(line);
  return static_cast<bool>(out.flush());
}

int clsVXProject::ReadProjectTrackerFiles() {
  trackerFiles_.clear();
  for (auto& fields : ReadProjectTrackerLines()) {
    if (fields.size() <= kFileFolderField) continue;
    auto same = [&](const std::vector<std::string>& f) {
      return f[kFileNameField] == fields[kFileNameField] && f[kFileFolderField] == fields[kFileFolderField];
    };
    auto it = std::find_if(trackerFiles_.begin(), trackerFiles_.end(), same);
    if (it == trackerFiles_.end())
      trackerFiles_.push_back(std::move(fields));
    else
      *it = std::move(fields);
  }
  return ProjectTrackerFilesCount();
}

int clsVXProject::ReadProjectTrackerHistory() {
  trackerHistory_.clear();
  for (auto& fields : ReadProjectTrackerLines()) {
    if (fields.size() > kFileFolderField && fields[kFileNameField] == FileName &&
        fields[kFileFolderField] == FileFolder)
      trackerHistory_.push_back(std::move(fields));
  }
  return ProjectTrackerHistoryCount();
}

}  // namespace velmar
