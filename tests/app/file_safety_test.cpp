// A user's project is never corrupted, silently changed or lost: damaged files open with a
// warning that names every damaged tag, the file commands keep what the project's own file
// holds, saving is safe against read-only files, links, read-only folders and crashes, and
// every finite number survives a save bit for bit.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bit>
#include <csignal>
#include <cstdint>
#include <limits>

#include "../cli/cli_run.h"
#include "../core/test_support.h"
#include "app/file_commands.h"
#include "core/helpers.h"
#include "files/safe_write.h"
#include "propulsion/propeller.h"

namespace velmar {
namespace {

using testing::ReadBytes;
using testing::Replaced;
using testing::TempDir;
using testing::WriteBytes;

std::string Example() { return ReadBytes(testing::ExamplePath("cargo_ship_si.vxvl")); }

mode_t ModeOf(const std::filesystem::path& p) {
  struct stat st {};
  ::stat(p.c_str(), &st);
  return st.st_mode & 07777;
}

class FileSafety : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::FreshApp();
    ::setenv("VELMAR_DATA_DIR", (dir / "data").c_str(), 1);
    ::setenv("VELMAR_TRACKER_DIR", (dir / "tracker").c_str(), 1);
  }
  TempDir dir;
};

// Each damaged value opens with the specification warning holding its line; the file is not
// touched by the open; the project saves under a new name and opens again.
TEST_F(FileSafety, DamagedValuesAreReportedAndTheFileIsLeftAsItWas) {
  std::ifstream table(testing::DataPath("hostile_values.txt"));
  int rows = 0;
  for (std::string line; std::getline(table, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> row;  // cells between " | ", taken as they stand
    for (size_t at = 0;;) {
      const size_t bar = line.find(" | ", at);
      row.push_back(Trim(line.substr(at, bar == std::string::npos ? std::string::npos : bar - at)));
      if (bar == std::string::npos) break;
      at = bar + 3;
    }
    ASSERT_EQ(row.size(), 3u) << line;
    ++rows;
    SCOPED_TRACE(line);
    testing::FreshApp();
    const auto path = dir / "hostile.vxvl", saved = dir / "saved.vxvl";
    const std::string text = Replaced(Example(), row[0], row[1]);
    WriteBytes(path, text);
    const FileCommandResult r = OpenCommand(path);
    ASSERT_TRUE(r.done) << r.message;
    EXPECT_FALSE(r.open.current);
    EXPECT_NE(r.open.warningText.find(row[2]), std::string::npos) << r.open.warningText;
    EXPECT_EQ(ReadBytes(path), text);
    ASSERT_TRUE(SaveAsCommand(saved).done);
    const std::string out = ReadBytes(saved);
    EXPECT_EQ(out.find("inf"), std::string::npos);
    EXPECT_EQ(out.find("nan"), std::string::npos);
    testing::FreshApp();
    EXPECT_TRUE(OpenCommand(saved).done);
  }
  EXPECT_GE(rows, 10);
}

// Every finite double a field can hold reads back bit for bit; the 15-digit form is kept where
// it is exact.
TEST_F(FileSafety, EveryFiniteNumberSurvivesASaveBitForBit) {
  using L = std::numeric_limits<double>;
  const double values[] = {L::max(), -L::max(), L::min(), L::denorm_min(), 0.1 + 0.2, 1.0 / 3.0,
                           205.0,    1e-5,      6e-4};
  const auto path = dir / "numbers.vxvl";
  for (double v : values) {
    clsVXHull& hull = *App().primary.Hull;
    hull.SetRaw(hull.FieldIndex("LengthWL"), v);
    ASSERT_EQ(SaveProjectFile(path, std::filesystem::path{}), 1);
    testing::FreshApp();
    ASSERT_TRUE(OpenProjectFile(path).opened);
    clsVXHull& back = *App().primary.Hull;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(back.Raw(back.FieldIndex("LengthWL"))),
              std::bit_cast<std::uint64_t>(v))
        << v;
  }
  EXPECT_EQ(FileNumberText(205.0), "205");
  EXPECT_EQ(FileNumberText(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(FileNumberText(6e-4), "0.0006");
}

// Save As and the emergency save carry over the blocks and tags of the project's own file that
// this version does not write; Save As gives the new file its own name.
TEST_F(FileSafety, SavesElsewhereKeepWhatTheProjectsOwnFileHolds) {
  std::string text = Example();
  text.insert(text.find("\"Project\""), "\"Extras\": {\"Note\": \"kept\"},\r\n\t");
  text = Replaced(text, "\"Hull\": {", "\"Hull\": {\"OldTag\": 1.5,");
  WriteBytes(dir / "own.vxvl", text);
  ASSERT_TRUE(OpenCommand(dir / "own.vxvl").done);
  const std::filesystem::path crash = EmergencySave();
  ASSERT_FALSE(crash.empty());
  ASSERT_TRUE(SaveAsCommand(dir / "other").done);  // the extension is added
  for (const auto& p : {dir / "other.vxvl", crash}) {
    const std::string out = ReadBytes(p);
    EXPECT_NE(out.find("\"Note\": \"kept\""), std::string::npos) << p;
    EXPECT_NE(out.find("\"OldTag\": 1.5"), std::string::npos) << p;
  }
  EXPECT_NE(ReadBytes(dir / "other.vxvl").find("\"FileName\": \"other.vxvl\""), std::string::npos);
  EXPECT_EQ(WindowTitle(), "Velmar - [other.vxvl]");
  // The command line's calc -o is a Save As too.
  const auto calcOut = dir / "calculated.vxvl";
  EXPECT_EQ(
      testing::Cli("calc " + (dir / "own.vxvl").string() + " -o " + calcOut.string(), " >/dev/null 2>&1")
          .code,
      0);
  const std::string calculated = ReadBytes(calcOut);
  EXPECT_NE(calculated.find("\"Note\": \"kept\""), std::string::npos);
  EXPECT_NE(calculated.find("\"FileName\": \"calculated.vxvl\""), std::string::npos);
  EXPECT_EQ(ReadBytes(dir / "own.vxvl"), text);
}

// Read-only files are refused, permissions stay, links are written through, a read-only
// folder with a writable file is served in place, and nothing is left behind.
TEST_F(FileSafety, SavingRespectsTheTargetAndItsFolder) {
  const auto target = dir / "p.vxvl";
  WriteBytes(target, "old");
  ::chmod(target.c_str(), 0444);
  SafeWriteResult r = WriteFileSafely(target, "new");
  EXPECT_FALSE(r.ok);
  EXPECT_NE(r.message.find("read-only"), std::string::npos) << r.message;
  EXPECT_EQ(ReadBytes(target), "old");
  EXPECT_EQ(SaveAsCommand(target).message, "The project could not be saved. The selected file is Read-only.");

  ::chmod(target.c_str(), 0640);
  EXPECT_TRUE(WriteFileSafely(target, "new").ok);
  EXPECT_EQ(ModeOf(target), 0640u);

  const auto link = dir / "link.vxvl";
  std::filesystem::create_symlink("p.vxvl", link);
  EXPECT_TRUE(WriteFileSafely(link, "through").ok);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ReadBytes(target), "through");

  const auto folder = dir / "locked";
  std::filesystem::create_directories(folder);
  WriteBytes(folder / "q.vxvl", "old");
  ::chmod(folder.c_str(), 0555);
  EXPECT_TRUE(WriteFileSafely(folder / "q.vxvl", "in place").ok);
  EXPECT_EQ(ReadBytes(folder / "q.vxvl"), "in place");
  r = WriteFileSafely(folder / "new.vxvl", "x");
  EXPECT_FALSE(r.ok);
  EXPECT_NE(r.message.find("is read-only"), std::string::npos) << r.message;
  ::chmod(folder.c_str(), 0755);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);

  std::filesystem::create_symlink("loop2", dir / "loop1");
  std::filesystem::create_symlink("loop1", dir / "loop2");
  EXPECT_FALSE(WriteFileSafely(dir / "loop1", "x").ok);
}

// The file commands: a file that is no project leaves the open one as it was; a question
// answered Cancel keeps it; the recent list puts the newest first and holds four.
TEST_F(FileSafety, CommandsLeaveTheProjectAsItWasWhenTheyStop) {
  WriteBytes(dir / "own.vxvl", Example());
  ASSERT_TRUE(OpenCommand(dir / "own.vxvl").done);
  const auto hull = App().primary.Hull;
  WriteBytes(dir / "notes.txt", "my notes, not a project\n");
  FileCommandResult r = OpenCommand(dir / "notes.txt");
  EXPECT_FALSE(r.done);
  EXPECT_NE(r.message.find("is not a Corvenith Velmar file"), std::string::npos) << r.message;
  EXPECT_EQ(App().primary.Hull, hull);

  App().ProjectDirty = true;
  DefaultHeadlessHooks().scriptedAnswers = {Answer::Cancel};
  EXPECT_FALSE(NewCommand().done);
  EXPECT_EQ(App().primary.Hull, hull);
  DefaultHeadlessHooks().scriptedAnswers = {Answer::No};
  EXPECT_TRUE(NewCommand().done);
  EXPECT_NE(App().primary.Hull, hull);

  MemorySettingsStore store;
  for (const char* p : {"a", "b", "c", "d", "b", "e"}) AddRecentFile(store, p);
  EXPECT_EQ(RecentFiles(store), (std::vector<std::string>{"e", "b", "d", "c"}));
  store.Set("RecentFiles", "RecentFile1", (dir / "gone.vxvl").string());
  EXPECT_EQ(OpenRecentCommand(0, store).message, "The file path has been altered or it no longer exists.");
}

// Import, Export and the propeller CAD export: a file that cannot be read leaves the project as
// it was; the hull-only import changes the hull alone; read-only targets and a propeller that
// cannot be drawn are refused in the product's words.
TEST_F(FileSafety, ImportAndExportCommandsKeepTheProjectOrChangeOnlyWhatTheySay) {
  WriteBytes(dir / "own.vxvl", Example());
  ASSERT_TRUE(OpenCommand(dir / "own.vxvl").done);
  const auto hull = App().primary.Hull;
  const double speeds = App().primary.SpeedPerformance->count();
  EXPECT_FALSE(ImportCommand(testing::DataPath("legacy/truncated.vl5"), ImportKind::LegacyProject).done);
  EXPECT_EQ(App().primary.Hull, hull);

  DefaultHeadlessHooks().scriptedAnswers = {Answer::No};  // no save before the hull changes
  ASSERT_TRUE(ImportCommand(testing::DataPath("legacy/hull_only.vl5"), ImportKind::LegacyHull).done);
  EXPECT_NEAR(App().primary.Hull->Raw(App().primary.Hull->FieldIndex("LengthWL")), 100.0, 1e-9);
  EXPECT_EQ(App().primary.SpeedPerformance->count(), speeds);
  EXPECT_EQ(App().primary.Project->FileName, "own.vxvl");

  const std::filesystem::path vl5 = dir / "old.vl5";
  ASSERT_TRUE(ExportCommand(vl5).done);
  DefaultHeadlessHooks().scriptedAnswers = {Answer::No};
  ASSERT_TRUE(ImportCommand(vl5, ImportKind::LegacyProject).done);
  EXPECT_EQ(App().primary.Project->FileName, "untitled.vxvl");
  EXPECT_EQ(App().primary.SpeedPerformance->count(), speeds);

  ::chmod(vl5.c_str(), 0444);
  EXPECT_EQ(ExportCommand(vl5).message, "The project could not be exported. The selected file is Read-only.");
  ::chmod(vl5.c_str(), 0644);

  App().primary.Propeller->SetRaw(App().primary.Propeller->FieldIndex("BladeCount"), 0);
  EXPECT_EQ(ExportPropellerCadCommand(dir / "prop.igs").message, "Invalid number of propeller blades.");
  EXPECT_FALSE(std::filesystem::exists(dir / "prop.igs"));
}

// A crash after the project was opened leaves an emergency save and the user's file as it was.
TEST_F(FileSafety, ACrashLeavesAnEmergencySaveAndTheOriginalUntouched) {
  const std::string text = Example();
  WriteBytes(dir / "own.vxvl", text);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);  // the crash leaves no core file behind
    if (!OpenCommand(dir / "own.vxvl").done) ::_exit(3);
    InstallCrashHandler();
    std::raise(SIGSEGV);
    ::_exit(4);  // not reached
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGSEGV) << status;
  int saves = 0;
  for (const auto& e : std::filesystem::directory_iterator(dir / "data"))
    saves += e.path().filename().string().starts_with("Error-") &&
             ReadBytes(e.path()).find("\"LengthWL\": 205") != std::string::npos;
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(ReadBytes(dir / "own.vxvl"), text);
}

}  // namespace
}  // namespace velmar
