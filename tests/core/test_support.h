// Test support shared by every folder: a fresh application state, paths of the test data
// and the example projects, whole-file reads and writes, temporary folders, and the table
// files of tests/data.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/application.h"
#include "core/diagnostics.h"
#include "core/ui_hooks.h"

namespace velmar::testing {

namespace fs = std::filesystem;

// A new project in the resistance mode, without template or trace, with quiet hooks and a
// clean calculation error state.
inline void FreshApp() {
  App().Trace = nullptr;
  App().TemplateEnabled = false;
  App().TemplateFile.clear();
  App().CurrentMode = Mode::Resistance;
  App().PropulsionSizingChanged = false;
  NewProject();
  ResetCalcErrorState();
  HeadlessHooks& h = DefaultHeadlessHooks();
  h.messages.clear();
  h.questions.clear();
  h.scriptedAnswers.clear();
}

// The cause of a failed prediction as the Calculate command composes it.
inline std::string CalcCause() {
  CalcErrorsPending();
  return GetCalcErrorText();
}

inline fs::path DataPath(const std::string& name) { return fs::path(VELMAR_TEST_DATA) / name; }
inline fs::path ExamplePath(const std::string& name) {
  return fs::path(VELMAR_TEST_DATA) / ".." / ".." / "examples" / name;
}

inline std::string ReadBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

inline void WriteBytes(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// A fresh folder under the system's temporary folder, removed with its contents at the end.
class TempDir {
 public:
  TempDir() {
    static std::atomic<int> n{0};
    path_ =
        fs::temp_directory_path() / ("velmar-test-" + std::to_string(::getpid()) + "-" + std::to_string(n++));
    fs::create_directories(path_);
  }
  ~TempDir() {
    std::error_code ec;
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(path_, ec);
  }
  fs::path operator/(const std::string& name) const { return path_ / name; }
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

// One row of a table file: its cells, and file and line for the failure messages.
struct TableRow {
  std::string where;
  std::vector<std::string> cells;
  const std::string& operator[](size_t i) const { return cells.at(i); }
  double Num(size_t i) const {  // "inf" and "nan" too
    char* end = nullptr;
    const double v = std::strtod(cells.at(i).c_str(), &end);
    EXPECT_TRUE(!cells[i].empty() && *end == '\0') << where << ": not a number: " << cells[i];
    return v;
  }
};

// A table file of tests/data: one row a line, cells between '|', trimmed; a cell in double
// quotes is taken as it stands (empty, or with spaces at its ends). Blank lines and lines
// that start with '#' are skipped. Every row must have `columns` cells.
inline std::vector<TableRow> ReadTable(const std::string& name, size_t columns) {
  std::ifstream in(DataPath(name));
  std::vector<TableRow> rows;
  std::string text;
  for (int line = 1; std::getline(in, text); ++line) {
    const size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos || text[first] == '#') continue;
    TableRow row{name + ":" + std::to_string(line), {}};
    std::istringstream cells(text + '|');
    for (std::string c; std::getline(cells, c, '|');) {
      const size_t b = c.find_first_not_of(" \t\r"), e = c.find_last_not_of(" \t\r");
      c = b == std::string::npos ? "" : c.substr(b, e - b + 1);
      if (c.size() >= 2 && c.front() == '"' && c.back() == '"') c = c.substr(1, c.size() - 2);
      row.cells.push_back(c);
    }
    EXPECT_EQ(row.cells.size(), columns) << name << ":" << line;
    if (row.cells.size() == columns) rows.push_back(row);
  }
  EXPECT_FALSE(rows.empty()) << "no rows in " << DataPath(name);
  return rows;
}

}  // namespace velmar::testing
