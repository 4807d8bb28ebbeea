// velmar-cli end to end: output and exit codes of the first commands, and the one-line
// failure of every command.
#include <gtest/gtest.h>

#include "cli_run.h"

namespace velmar::testing {
namespace {

TEST(Cli, ConvertPrintsTheValueAsTheProgramHoldsIt) {
  const std::pair<const char*, const char*> cases[] = {
      {"convert 1 Area ft2 mm2", "10763910.42\n"},
      {"convert 1 Length m ft", "3.280839895\n"},
      {"convert 10 speed kt ft/s", "16.87809857\n"},
      {"convert 59 Temperature \u00b0F \u00b0C", "15\n"},
      {"convert 1000 Torque lbf\u00b7ft kN\u00b7m", "1.355817948\n"},
  };
  for (const auto& [args, out] : cases) {
    const CliRun r = Cli(args);
    EXPECT_EQ(r.code, 0) << args;
    EXPECT_EQ(r.out, out) << args;
  }
}

// Every failure, of the arguments or of the file: exit code 2, one line, and no output file
// where there was none; the files named stay as they were.
TEST(Cli, FailuresGiveOneLineAndLeaveNoOutput) {
  const TempDir dir;
  const auto tmp = [&](const char* name) { return (dir / name).string(); };
  WriteBytes(dir / "list.vxvl", "[1, 2, 3]\r\n");
  WriteBytes(dir / "notes.txt", "my notes, not a project\n");
  fs::copy_file(ExamplePath("cargo_ship_si.vxvl"), dir / "ship.vxvl");
  const std::string ship = tmp("ship.vxvl"), out = tmp("out.vxvl"), missing = tmp("missing.vxvl");
  const std::pair<std::string, std::string> cases[] = {
      // the command, a file it must not leave
      {"convert x Area ft2 mm2", ""},
      {"convert 1 Volume ft m", ""},
      {"convert 1 Area ft2 acre", ""},
      {"convert 1 Area", ""},
      {"water --type lake", ""},
      {"water --units metric", ""},
      {"nonsense", ""},
      {"-- calc", ""},                  // a command behind "--" still runs, and wants its file
      {"calc " + ship + " units", ""},  // a second command
      {"info " + missing, ""},
      {"save " + missing + " -o " + out, out},
      {"save " + ship + " -o " + tmp("notes.txt"), ""},
      {"convert-units " + ship + " --to si -o " + ship, ""},
      {"export-ship " + tmp("list.vxvl") + " -o " + tmp("x.ship"), tmp("x.ship")},
      {"new -o " + ship, ""},
      {"new -o " + out + " --template " + missing, out},
      {"calc " + missing, ""},
      {"calc " + tmp("list.vxvl"), ""},
      {"calc " + ship + " --mode towing", ""},
      {"calc " + ship + " --format xml", ""},
      {"estimate " + ship + " Colour", ""},
      {"check " + ship + " --family hulls", ""},
      {"check " + ship + " --method Nobody", ""},
      {"check " + ship + " --format csv", ""},
      {"check " + missing, ""},
      {"expert " + ship + " --family hull --apply 3", ""},
      {"expert " + ship + " --family wind --apply 99 -o " + out, out},
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
  EXPECT_EQ(ReadBytes(dir / "notes.txt"), "my notes, not a project\n");
  for (const auto& e : fs::directory_iterator(dir.path()))  // no temporary file left behind
    EXPECT_TRUE(e.path().extension() == ".vxvl" || e.path().extension() == ".txt") << e.path();
}

TEST(Cli, WaterAndUnitsAndVersion) {
  CliRun r = Cli("water --type salt --units si");
  EXPECT_EQ(r.code, 0);
  EXPECT_TRUE(Has(r.out, "Density:      1026.0000 kg/m3") && Has(r.out, "Viscosity:    1.18920e-6 m2/s"))
      << r.out;
  r = Cli("water --type fresh --temperature 59 --units imperial");
  EXPECT_TRUE(Has(r.out, "1.9386 slug/ft3")) << r.out;
  r = Cli("units");
  EXPECT_EQ(r.code, 0);
  EXPECT_TRUE(Has(r.out, "mm2         factor 10763910.4167097")) << r.out;
  r = Cli("--version");
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.out.rfind("Velmar ", 0), 0u);
  // The help lists every command, also when the line names one behind a "--".
  for (const char* args : {"--help", "--help -- calc"}) {
    r = Cli(args);
    EXPECT_EQ(r.code, 0) << args;
    EXPECT_TRUE(Has(r.out, "\n  calc ") && Has(r.out, "\n  water ")) << args << "\n" << r.out;
  }
}

}  // namespace
}  // namespace velmar::testing
