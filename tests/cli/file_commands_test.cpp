// velmar-cli info, new, save, convert-units and export-ship, end to end on the example projects:
// what they print, the files they leave, and that a failure leaves no output behind.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "../core/test_support.h"
#include "cli_run.h"

namespace {

using namespace velmar::testing;

std::string Example(const char* name) { return ExamplePath(name).string(); }

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class FileCommands : public ::testing::Test {
 protected:
  std::string Tmp(const std::string& name) const { return (dir_ / name).string(); }
  TempDir dir_;
};

TEST_F(FileCommands, InfoShowsTheParticularsOfAProject) {
  const CliRun r = Cli("info " + Example("cargo_ship_si.vxvl"));
  EXPECT_EQ(r.code, 0) << r.out;
  for (const char* part :
       {"Units:         SI (length m, weight t", "LWL  Length on WL", "205.000 m",
        "Speeds:        10, 18.00 to 27.00 kt; design speed 25.00 kt", "Tasks:         17 (8 to do)"})
    EXPECT_TRUE(Has(r.out, part)) << part << "\n" << r.out;
}

TEST_F(FileCommands, InfoOfAnOlderFileShowsTheOpenWarning) {
  std::string text = ReadBytes(Example("catamaran_ferry.vxvl"));
  text.replace(text.find("\"Environment\""), 13, "\"OldEnvironment\"");
  WriteBytes(Tmp("old.vxvl"), text);
  const CliRun r = Cli("info " + Tmp("old.vxvl"));
  EXPECT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(r.out, "not in the current format")) << r.out;
  EXPECT_TRUE(Has(r.out, "Missing: \"Environment\" [Group]")) << r.out;
  EXPECT_TRUE(Has(r.out, "Hull:          Catamaran") && Has(r.out, "S    Demi-hull spacing")) << r.out;
}

// Every failure: exit code 2, one line, and no output file where there was none.
TEST_F(FileCommands, FailuresGiveOneLineAndLeaveNoOutput) {
  WriteBytes(Tmp("list.vxvl"), "[1, 2, 3]\r\n");
  WriteBytes(Tmp("notes.txt"), "my notes, not a project\n");
  fs::copy_file(Example("cargo_ship_si.vxvl"), Tmp("ship.vxvl"));
  const std::string ship = Tmp("ship.vxvl"), out = Tmp("out.vxvl"), missing = Tmp("missing.vxvl");
  const std::pair<std::string, std::string> cases[] = {
      // the command, a file it must not leave
      {"info " + missing, ""},
      {"save " + missing + " -o " + out, out},
      {"save " + ship + " -o " + Tmp("notes.txt"), ""},
      {"convert-units " + ship + " --to si -o " + ship, ""},
      {"export-ship " + Tmp("list.vxvl") + " -o " + Tmp("x.ship"), Tmp("x.ship")},
      {"new -o " + ship, ""},
      {"new -o " + out + " --template " + missing, out},
  };
  const std::string shipBefore = ReadBytes(ship);
  for (const auto& [args, output] : cases) {
    const CliRun r = Cli(args);
    EXPECT_EQ(r.code, 2) << args << "\n" << r.out;
    EXPECT_EQ(r.out.rfind("velmar-cli: ", 0), 0u) << args << ": " << r.out;
    EXPECT_EQ(r.out.find('\n'), r.out.size() - 1) << args << ": " << r.out;
    EXPECT_TRUE(output.empty() || !fs::exists(output)) << args;
  }
  EXPECT_EQ(ReadBytes(ship), shipBefore);
  EXPECT_EQ(ReadBytes(Tmp("notes.txt")), "my notes, not a project\n");
  for (const auto& e : fs::directory_iterator(dir_.path()))  // no temporary file left behind
    EXPECT_TRUE(e.path().extension() == ".vxvl" || e.path().extension() == ".txt") << e.path();
}

TEST_F(FileCommands, SaveKeepsWhatThisVersionDoesNotWrite) {
  std::string text = ReadBytes(Example("cargo_ship_si.vxvl"));
  text.insert(text.find("\"Project\""), "\"Extras\": {\"Note\": \"kept\"},\r\n\t");
  text.insert(text.find("\"Hull\": {") + 9, "\"OldTag\": 1.5,");
  WriteBytes(Tmp("ship.vxvl"), text);
  const CliRun r = Cli("save " + Tmp("ship.vxvl"));
  EXPECT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(r.out, "kept 2 blocks or tags") && Has(r.out, ": Extras, Hull.OldTag")) << r.out;
  const std::string saved = ReadBytes(Tmp("ship.vxvl"));
  EXPECT_LT(saved.find("\"Extras\""), saved.find("\"Project\""));
  EXPECT_TRUE(Has(saved, "\"OldTag\": 1.5"));
  // Saved under a new name (Save As), the project carries over what its own file holds, and
  // the new file names itself.
  const CliRun copy = Cli("save " + Tmp("ship.vxvl") + " -o " + Tmp("copy.vxvl"));
  EXPECT_TRUE(copy.code == 0 && Has(copy.out, "kept 2 blocks or tags")) << copy.out;
  const std::string copied = ReadBytes(Tmp("copy.vxvl"));
  EXPECT_TRUE(Has(copied, "\"Note\": \"kept\"") && Has(copied, "\"OldTag\": 1.5"));
  EXPECT_TRUE(Has(copied, "\"FileName\": \"copy.vxvl\""));
}

TEST_F(FileCommands, ConvertUnitsThereAndBack) {
  ASSERT_EQ(Cli("convert-units " + Example("cargo_ship_si.vxvl") + " --to imperial -o " + Tmp("i.vxvl")).code,
            0);
  CliRun r = Cli("info " + Tmp("i.vxvl"));
  EXPECT_TRUE(Has(r.out, "672.57 ft")) << r.out;  // 205 m
  EXPECT_TRUE(Has(r.out, "0.572")) << r.out;      // CB does not depend on units
  ASSERT_EQ(Cli("convert-units " + Tmp("i.vxvl") + " --to SI -o " + Tmp("si.vxvl")).code, 0);
  r = Cli("info " + Tmp("si.vxvl"));
  EXPECT_TRUE(Has(r.out, "205.000 m")) << r.out;
}

TEST_F(FileCommands, NewFromScratchAndFromATemplate) {
  ASSERT_EQ(Cli("new -o " + Tmp("blank.vxvl")).code, 0);
  CliRun r = Cli("info " + Tmp("blank.vxvl"));
  EXPECT_TRUE(Has(r.out, "Speeds:        0")) << r.out;
  EXPECT_FALSE(Has(r.out, "not in the current format")) << r.out;
  ASSERT_EQ(Cli("new -o " + Tmp("t.vxvl") + " --template " + Example("patrol_vessel_imperial.vxvl")).code, 0);
  r = Cli("info " + Tmp("t.vxvl"));
  EXPECT_TRUE(Has(r.out, "200.00 ft")) << r.out;
}

TEST_F(FileCommands, ExportShipWritesTheShipWithoutSettings) {
  ASSERT_EQ(Cli("export-ship " + Example("patrol_vessel_imperial.vxvl") + " -o " + Tmp("p.ship")).code, 0);
  const std::string ship = ReadBytes(Tmp("p.ship"));
  EXPECT_TRUE(Has(ship, "\"SpeedPerformance\""));
  EXPECT_FALSE(Has(ship, "\"Resistance\""));
}

}  // namespace
