// velmar-cli end to end: output and exit codes of the first commands.
#include <gtest/gtest.h>

#include "cli_run.h"

namespace {

using velmar::testing::Cli;
using velmar::testing::CliRun;

TEST(Cli, ConvertPrintsTheValueAsTheProgramHoldsIt) {
  struct Case {
    const char* args;
    const char* out;
  };
  const Case cases[] = {
      {"convert 1 Area ft2 mm2", "10763910.42\n"},
      {"convert 1 Length m ft", "3.280839895\n"},
      {"convert 10 speed kt ft/s", "16.87809857\n"},
      {"convert 59 Temperature \u00b0F \u00b0C", "15\n"},
      {"convert 1000 Torque lbf\u00b7ft kN\u00b7m", "1.355817948\n"},
  };
  for (const Case& c : cases) {
    const CliRun r = Cli(c.args);
    EXPECT_EQ(r.code, 0) << c.args;
    EXPECT_EQ(r.out, c.out) << c.args;
  }
}

TEST(Cli, ArgumentErrorsGiveOneLineAndExitCodeTwo) {
  const char* cases[] = {"convert x Area ft2 mm2",
                         "convert 1 Volume ft m",
                         "convert 1 Area ft2 acre",
                         "convert 1 Area",
                         "water --type lake",
                         "water --units metric",
                         "nonsense"};
  for (const char* args : cases) {
    const CliRun r = Cli(args);
    EXPECT_EQ(r.code, 2) << args;
    EXPECT_EQ(r.out.rfind("velmar-cli: ", 0), 0u) << args << ": " << r.out;
    EXPECT_EQ(r.out.find('\n'), r.out.size() - 1) << args << ": " << r.out;
  }
}

TEST(Cli, WaterAndUnitsAndVersion) {
  CliRun r = Cli("water --type salt --units si");
  EXPECT_EQ(r.code, 0);
  EXPECT_NE(r.out.find("Density:      1026.0000 kg/m3"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Viscosity:    1.18920e-6 m2/s"), std::string::npos) << r.out;
  r = Cli("water --type fresh --temperature 59 --units imperial");
  EXPECT_NE(r.out.find("1.9386 slug/ft3"), std::string::npos) << r.out;
  r = Cli("units");
  EXPECT_EQ(r.code, 0);
  EXPECT_NE(r.out.find("mm2         factor 10763910.4167097"), std::string::npos) << r.out;
  r = Cli("--version");
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.out.rfind("Velmar ", 0), 0u);
}

}  // namespace
