// velmar-cli export-legacy and import-legacy end to end: a project there and back, the File
// Import Warning of a partial file, and the refusals.
#include <gtest/gtest.h>

#include "cli_run.h"

namespace velmar::testing {
namespace {

TEST(LegacyCommands, ThereAndBackAndTheRefusals) {
  const TempDir dir;
  const auto tmp = [&](const char* name) { return (dir / name).string(); };
  CliRun r = Cli("export-legacy " + Example("cargo_ship_si.vxvl") + " -o " + tmp("ship.vl5"));
  ASSERT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(ReadBytes(tmp("ship.vl5")), "[Velmar]\r\nVersion=Velmar ")) << r.out;
  r = Cli("import-legacy " + tmp("ship.vl5") + " -o " + tmp("back.vxvl"));
  ASSERT_EQ(r.code, 0) << r.out;
  EXPECT_FALSE(Has(r.out, "File Import Warning")) << r.out;
  EXPECT_TRUE(Has(Cli("info " + tmp("back.vxvl")).out, "205.000 m"));

  r = Cli("import-legacy " + DataPath("legacy/missing_blocks.vl5").string() + " -o " + tmp("partial.vxvl"));
  EXPECT_EQ(r.code, 0) << r.out;
  EXPECT_TRUE(Has(r.out, "File Import Warning") && Has(r.out, "[Units]\n    block not found.")) << r.out;

  for (const std::string& args :
       {"import-legacy " + DataPath("legacy/json_project.vl5").string() + " -o " + tmp("x.vxvl"),
        "import-legacy " + tmp("ship.vl5") + " -o " + tmp("back.vxvl"),
        "export-legacy " + tmp("ship.vl5") + " -o " + tmp("y.vl5")}) {
    r = Cli(args);
    EXPECT_EQ(r.code, 2) << args << "\n" << r.out;
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 1) << r.out;
  }
  EXPECT_FALSE(fs::exists(tmp("x.vxvl")) || fs::exists(tmp("y.vl5")));
}

}  // namespace
}  // namespace velmar::testing
