// velmar-cli calc, influence and estimate on the bundled examples: complete tables in every
// format, a failed prediction with its warning and exit code 1 (file and usage errors: cli_test).
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "cli_run.h"

namespace velmar::testing {
namespace {

TEST(CalcCommand, EveryExampleGivesACompletePlausibleTable) {
  for (const char* name : {"cargo_ship_si.vxvl", "patrol_vessel_imperial.vxvl", "catamaran_ferry.vxvl"}) {
    SCOPED_TRACE(name);
    const CliRun r = Cli("calc " + Example(name) + " --format json", " 2>/dev/null");
    ASSERT_EQ(r.code, 0) << r.out;
    EXPECT_NE(r.out.find("\"ok\": true"), std::string::npos);
    // Every row has a positive total drag and effective power, rising with speed.
    const std::regex total("\"DragTotal\": ([0-9.eE+-]+)");
    std::vector<double> totals;
    for (auto it = std::sregex_iterator(r.out.begin(), r.out.end(), total); it != std::sregex_iterator();
         ++it)
      totals.push_back(std::stod((*it)[1]));
    ASSERT_GE(totals.size(), 5u);
    for (size_t i = 0; i < totals.size(); ++i) EXPECT_GT(totals[i], i ? totals[i - 1] : 0.0) << i;
    EXPECT_NE(r.out.find("\"PowerEffectiveTotal\": "), std::string::npos);
  }
}

TEST(CalcCommand, FormatsCarryNamesUnitsAndFullPrecision) {
  CliRun r = Cli("calc " + Example("cargo_ship_si.vxvl") + " --format csv");
  ASSERT_EQ(r.code, 0);
  EXPECT_EQ(r.out.rfind("Speed,CoefFroudeLength,", 0), 0u) << r.out.substr(0, 200);
  EXPECT_NE(r.out.find("\nkt,,,"), std::string::npos);
  EXPECT_NE(r.out.find(",kN,"), std::string::npos);
  r = Cli("calc " + Example("patrol_vessel_imperial.vxvl") + " --format json");
  EXPECT_NE(r.out.find("\"DragTotal\": \"lbf\""), std::string::npos);
  EXPECT_TRUE(std::regex_search(r.out, std::regex("\"CoefDragBareHull\": 0\\.00[0-9]{15}")));
  r = Cli("calc " + Example("cargo_ship_si.vxvl"));
  EXPECT_NE(r.out.find("RTOTAL"), std::string::npos);
  EXPECT_NE(r.out.find("[kN]"), std::string::npos);
}

TEST(CalcCommand, MissingLengthFailsWithTheWarningAndLosesNothing) {
  const TempDir dir;
  const std::string path = EditedCopy(dir, "cargo_ship_si.vxvl", "\"LengthWL\": 205", "\"LengthWL\": 0");
  const auto out = dir / "out.vxvl";
  const CliRun r = Cli("calc " + path + " --format json -o " + out.string());
  EXPECT_EQ(r.code, 1) << r.out;
  EXPECT_NE(r.out.find("Length on waterline"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\"ok\": false"), std::string::npos);
  // The results saved are the ones the file had: the speeds stay, nothing was computed.
  ASSERT_TRUE(std::filesystem::exists(out));
  const CliRun again = Cli("calc " + out.string() + " --format csv", " 2>/dev/null");
  EXPECT_EQ(again.code, 1);
}

TEST(CalcCommand, InfluenceAndEstimate) {
  CliRun r = Cli("influence " + Example("cargo_ship_si.vxvl"));
  ASSERT_EQ(r.code, 0) << r.out;
  EXPECT_NE(r.out.find("Parameter influence - Holtrop"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Length on WL:"), std::string::npos);
  r = Cli("estimate " + Example("cargo_ship_si.vxvl") + " WettedSurface");
  ASSERT_EQ(r.code, 0) << r.out;
  EXPECT_NE(r.out.find("Holtrop"), std::string::npos);
  EXPECT_NE(r.out.find("Denny"), std::string::npos);
}

}  // namespace
}  // namespace velmar::testing
