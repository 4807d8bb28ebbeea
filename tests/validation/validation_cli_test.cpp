// velmar-cli check and expert end to end: every example in both formats, a project without a
// design speed, a method taken and saved (their usage errors: tests/cli/cli_test.cpp).
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "../cli/cli_run.h"

namespace velmar::testing {
namespace {

// Every project in examples/.
std::vector<std::string> Examples() {
  std::vector<std::string> names;
  for (const auto& e : std::filesystem::directory_iterator(ExamplePath("")))
    if (e.path().extension() == ".vxvl") names.push_back(e.path().filename().string());
  return names;
}

TEST(ValidationCommands, CheckAndExpertOnEveryExample) {
  const std::vector<std::string> names = Examples();
  ASSERT_GE(names.size(), 4u);
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    CliRun r = Cli("check " + Example(name), " 2>/dev/null");
    ASSERT_EQ(r.code, 0) << r.out;
    for (const char* title :
         {"Hull drag methods", "Appendage drag methods", "Wind drag methods", "Seas drag methods",
          "Shallow water and channel drag methods", "Hull-propulsor interaction methods"})
      EXPECT_NE(r.out.find(title), std::string::npos) << title;
    r = Cli("check " + Example(name) + " --format json", " 2>/dev/null");
    ASSERT_EQ(r.code, 0);
    EXPECT_EQ(r.out.rfind("{\"file\": ", 0), 0u);
    EXPECT_NE(r.out.find("\"family\": \"interaction\", \"mode\": \"propulsion\""), std::string::npos);
    r = Cli("expert " + Example(name) + " --family hull", " 2>/dev/null");
    ASSERT_EQ(r.code, 0);
    EXPECT_NE(r.out.find("Rank  Method"), std::string::npos);
    r = Cli("expert " + Example(name) + " --family seas --format json", " 2>/dev/null");
    ASSERT_EQ(r.code, 0);
    EXPECT_NE(r.out.find("\"rank\": 5"), std::string::npos);
  }
}

TEST(ValidationCommands, OneMethodShowsItsRowsInEachFamilyThatHasIt) {
  const CliRun r = Cli("check " + Example("cargo_ship_si.vxvl") + " --method holtrop");
  ASSERT_EQ(r.code, 0) << r.out;
  EXPECT_NE(r.out.find("Hull drag methods"), std::string::npos);
  EXPECT_NE(r.out.find("Hull-propulsor interaction methods"), std::string::npos);
  EXPECT_EQ(r.out.find("Wind drag methods"), std::string::npos);
  const size_t lambda = r.out.find("Lambda");
  EXPECT_NE(lambda, std::string::npos);  // hull list only, in resistance mode
  EXPECT_EQ(r.out.find("Lambda", lambda + 1), std::string::npos);
  EXPECT_TRUE(std::regex_search(r.out, std::regex("FN \\[design\\] +0\\.06\u00B7\u00B70\\.74 +0\\.29\n")))
      << r.out;
}

TEST(ValidationCommands, NoDesignSpeedIsAnErrorNotAnEmptyTable) {
  const TempDir dir;
  const std::string path =
      EditedCopy(dir, "cargo_ship_si.vxvl", "\"DesignSpeedIndex\": 7", "\"DesignSpeedIndex\": 10");
  for (const std::string& cmd : {std::string("check "), std::string("expert --family hull ")}) {
    const CliRun out = Cli(cmd + path, " 2>/dev/null");
    EXPECT_EQ(out.code, 1) << cmd;
    EXPECT_EQ(out.out, "") << cmd;
    const CliRun err = Cli(cmd + path);
    EXPECT_NE(err.out.find("has no design speed"), std::string::npos) << err.out;
  }
}

TEST(ValidationCommands, ExpertTakesAMethodAndSavesIt) {
  const TempDir dir;
  const std::string out = (dir / "andersen.vxvl").string();
  CliRun r = Cli("expert " + Example("cargo_ship_si.vxvl") + " --family hull --apply 31 -o " + out);
  ASSERT_EQ(r.code, 0) << r.out;
  EXPECT_NE(r.out.find("Applied hull method 31 \"Andersen\""), std::string::npos) << r.out;
  r = Cli("check " + out + " --family hull");
  EXPECT_NE(r.out.find("31*  Andersen"), std::string::npos) << r.out;
  EXPECT_NE(ReadBytes(out).find("\"HullDragMethod\": \"Andersen\""), std::string::npos);
}

}  // namespace
}  // namespace velmar::testing
