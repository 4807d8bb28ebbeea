// velmar-cli info, new, save, convert-units and export-ship, end to end on the example projects:
// what they print, the files they leave, and that a failure leaves no output behind.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include "cli_run.h"

namespace {

namespace fs = std::filesystem;

using velmar::testing::Cli;
using velmar::testing::CliRun;

std::string Example(const std::string& name) {
  return (fs::path(VELMAR_TEST_DATA) / ".." / ".." / "examples" / name).string();
}

std::string ReadText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

void WriteText(const fs::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class FileCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() / ("velmar-cli-test-" + std::to_string(std::random_device{}()));
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  std::string Tmp(const std::string& name) const { return (dir_ / name).string(); }
  fs::path dir_;
};

TEST_F(FileCommands, InfoShowsTheParticularsOfEveryExample) {
  struct Case {
    const char* file;
    std::vector<std::string> parts;
  };
  const Case cases[] = {
      {"cargo_ship_si.vxvl",
       {"Units:         SI (length m, weight t", "LWL  Length on WL", "205.000 m", "Block coefficient",
        "0.572", "Speeds:        10, 18.00 to 27.00 kt; design speed 25.00 kt",
        "Tasks:         17 (8 to do)"}},
      {"patrol_vessel_imperial.vxvl",
       {"Units:         Imperial (length ft, weight LT, force lbf, power hp, speed kt", "200.00 ft",
        "Propeller x 2 per hull", "Speeds:        8, 10.00 to 25.00 kt"}},
      {"catamaran_ferry.vxvl", {"Hull:          Catamaran", "S    Demi-hull spacing", "Speeds:        "}},
  };
  for (const Case& c : cases) {
    const CliRun r = Cli("info " + Example(c.file));
    EXPECT_EQ(r.code, 0) << c.file << "\n" << r.out;
    for (const std::string& part : c.parts)
      EXPECT_TRUE(Has(r.out, part)) << c.file << ": " << part << "\n" << r.out;
    EXPECT_FALSE(Has(r.out, "not in the current format")) << c.file << "\n" << r.out;
  }
}

TEST_F(FileCommands, InfoOfAnOlderFileShowsTheOpenWarning) {
  std::string text = ReadText(Example("cargo_ship_si.vxvl"));
  const size_t at = text.find("\"Environment\"");
  ASSERT_NE(at, std::string::npos);
  text.replace(at, 13, "\"OldEnvironment\"");
  WriteText(Tmp("old.vxvl"), text);
  const CliRun r = Cli("info " + Tmp("old.vxvl"));
  EXPECT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(r.out, "not in the current format")) << r.out;
  EXPECT_TRUE(Has(r.out, "Missing: \"Environment\" [Group]")) << r.out;
}

// Every failure: exit code 2, one line, and no output file where there was none.
TEST_F(FileCommands, FailuresGiveOneLineAndLeaveNoOutput) {
  WriteText(Tmp("list.vxvl"), "[1, 2, 3]\r\n");
  WriteText(Tmp("notes.txt"), "my notes, not a project\n");
  fs::copy_file(Example("cargo_ship_si.vxvl"), Tmp("ship.vxvl"));
  const std::string ship = Tmp("ship.vxvl"), out = Tmp("out.vxvl");
  struct Case {
    std::string args;
    std::string output;  // must not exist afterwards (empty: nothing to check)
  };
  const Case cases[] = {
      {"info " + Tmp("missing.vxvl"), ""},
      {"info " + Tmp("list.vxvl"), ""},
      {"info " + dir_.string(), ""},
      {"save " + Tmp("missing.vxvl") + " -o " + out, out},
      {"save " + Tmp("list.vxvl") + " -o " + out, out},
      {"save " + ship + " -o " + Tmp("no/such/folder/out.vxvl"), Tmp("no/such/folder/out.vxvl")},
      {"convert-units " + ship + " --to si -o " + ship, ""},
      {"convert-units " + ship + " --to metric -o " + out, out},
      {"convert-units " + Tmp("missing.vxvl") + " --to si -o " + out, out},
      {"export-ship " + Tmp("list.vxvl") + " -o " + Tmp("x.ship"), Tmp("x.ship")},
      {"new -o " + ship, ""},
      {"new -o " + out + " --template " + Tmp("missing.vxvl"), out},
      {"new -o " + out + " --template " + Tmp("list.vxvl"), out},
      {"save " + ship + " -o " + Tmp("notes.txt"), ""},
  };
  const std::string shipBefore = ReadText(ship);
  for (const Case& c : cases) {
    const CliRun r = Cli(c.args);
    EXPECT_EQ(r.code, 2) << c.args << "\n" << r.out;
    EXPECT_EQ(r.out.rfind("velmar-cli: ", 0), 0u) << c.args << ": " << r.out;
    EXPECT_EQ(r.out.find('\n'), r.out.size() - 1) << c.args << ": " << r.out;
    if (!c.output.empty()) {
      EXPECT_FALSE(fs::exists(c.output)) << c.args;
    }
  }
  EXPECT_EQ(ReadText(ship), shipBefore);
  EXPECT_EQ(ReadText(Tmp("notes.txt")), "my notes, not a project\n");
  for (const auto& e : fs::directory_iterator(dir_)) {  // no temporary file left behind
    EXPECT_TRUE(e.path().extension() == ".vxvl" || e.path().extension() == ".txt") << e.path();
  }
}

TEST_F(FileCommands, SaveKeepsWhatThisVersionDoesNotWrite) {
  std::string text = ReadText(Example("cargo_ship_si.vxvl"));
  const size_t project = text.find("\"Project\"");
  ASSERT_NE(project, std::string::npos);
  text.insert(project, "\"Extras\": {\"Note\": \"kept\"},\r\n\t");
  const size_t hull = text.find("\"Hull\": {");
  ASSERT_NE(hull, std::string::npos);
  text.insert(hull + 9, "\"OldTag\": 1.5,");
  WriteText(Tmp("ship.vxvl"), text);

  const CliRun r = Cli("save " + Tmp("ship.vxvl"));
  EXPECT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(r.out, "kept 2 blocks or tags")) << r.out;
  EXPECT_TRUE(Has(r.out, "Extras, Hull.OldTag")) << r.out;
  const std::string saved = ReadText(Tmp("ship.vxvl"));
  ASSERT_TRUE(Has(saved, "\"Extras\"")) << saved;
  EXPECT_LT(saved.find("\"Extras\""), saved.find("\"Project\""));
  EXPECT_TRUE(Has(saved, "\"OldTag\": 1.5"));

  // Saved under a new name there is nothing to merge with.
  const CliRun copy = Cli("save " + Tmp("ship.vxvl") + " -o " + Tmp("copy.vxvl"));
  EXPECT_EQ(copy.code, 0) << copy.out;
  EXPECT_FALSE(Has(copy.out, "kept")) << copy.out;
  EXPECT_FALSE(Has(ReadText(Tmp("copy.vxvl")), "Extras"));
}

TEST_F(FileCommands, ConvertUnitsThereAndBack) {
  CliRun r = Cli("convert-units " + Example("cargo_ship_si.vxvl") + " --to imperial -o " + Tmp("imp.vxvl"));
  ASSERT_EQ(r.code, 0) << r.out;
  r = Cli("info " + Tmp("imp.vxvl"));
  EXPECT_TRUE(Has(r.out, "Imperial (length ft")) << r.out;
  EXPECT_TRUE(Has(r.out, "672.57 ft")) << r.out;  // 205 m
  EXPECT_TRUE(Has(r.out, "0.572")) << r.out;      // CB does not depend on units
  r = Cli("convert-units " + Tmp("imp.vxvl") + " --to SI -o " + Tmp("si.vxvl"));
  ASSERT_EQ(r.code, 0) << r.out;
  r = Cli("info " + Tmp("si.vxvl"));
  EXPECT_TRUE(Has(r.out, "205.000 m")) << r.out;
  EXPECT_TRUE(Has(r.out, "7381.5 m2")) << r.out;
}

TEST_F(FileCommands, NewFromScratchAndFromATemplate) {
  CliRun r = Cli("new -o " + Tmp("blank.vxvl"));
  ASSERT_EQ(r.code, 0) << r.out;
  r = Cli("info " + Tmp("blank.vxvl"));
  EXPECT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(r.out, "Speeds:        0")) << r.out;
  EXPECT_FALSE(Has(r.out, "not in the current format")) << r.out;

  r = Cli("new -o " + Tmp("from.vxvl") + " --template " + Example("patrol_vessel_imperial.vxvl"));
  ASSERT_EQ(r.code, 0) << r.out;
  r = Cli("info " + Tmp("from.vxvl"));
  EXPECT_TRUE(Has(r.out, "200.00 ft")) << r.out;
}

TEST_F(FileCommands, ExportShipWritesTheShipWithoutSettings) {
  const CliRun r = Cli("export-ship " + Example("patrol_vessel_imperial.vxvl") + " -o " + Tmp("patrol.ship"));
  ASSERT_EQ(r.code, 0) << r.out;
  const std::string ship = ReadText(Tmp("patrol.ship"));
  for (const char* block : {"\"Project\"", "\"Units\"", "\"Hull\"", "\"Appendage\"", "\"SpeedPerformance\""})
    EXPECT_TRUE(Has(ship, block)) << block;
  for (const char* block : {"\"Resistance\"", "\"Engine\"", "\"TaskList\"", "\"PitchOfRecord\""})
    EXPECT_FALSE(Has(ship, block)) << block;
  EXPECT_TRUE(Has(ship, "Corvenith Common Ship Object"));
}

}  // namespace
