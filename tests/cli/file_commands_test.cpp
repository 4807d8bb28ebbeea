// velmar-cli info, new, save, convert-units and export-ship, end to end on the example projects:
// what they print and the files they leave (their failures: cli_test).
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cli_run.h"

namespace velmar::testing {
namespace {

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
  const CliRun r =
      Cli("info " + EditedCopy(dir_, "catamaran_ferry.vxvl", "\"Environment\"", "\"OldEnvironment\""));
  EXPECT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(r.out, "not in the current format")) << r.out;
  EXPECT_TRUE(Has(r.out, "Missing: \"Environment\" [Group]")) << r.out;
  EXPECT_TRUE(Has(r.out, "Hull:          Catamaran") && Has(r.out, "S    Demi-hull spacing")) << r.out;
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
  EXPECT_TRUE(Has(saved, "\"OldTag\": 1.5"));  // under a new name: see the file safety test
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
}  // namespace velmar::testing
