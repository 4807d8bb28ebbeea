// velmar-cli batch and sweep: lines in input order whatever the threads, failures in their
// own lines, units made common, the grid and its shards, refused variants.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "../core/test_support.h"
#include "cli_run.h"

namespace {

using velmar::testing::Cli;
using velmar::testing::CliRun;
using velmar::testing::TempDir;

std::string Example(const char* name) { return velmar::testing::ExamplePath(name).string(); }

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream in(line);
  for (std::string cell; std::getline(in, cell, ',');) cells.push_back(cell);
  return cells;
}

// The value of `column` in the data lines of a csv output (header and unit lines first).
std::vector<double> CsvColumn(const std::string& csv, const std::string& column, size_t skip = 2) {
  const std::vector<std::string> lines = Lines(csv);
  const std::vector<std::string> head = Cells(lines.at(0));
  const size_t c = static_cast<size_t>(std::find(head.begin(), head.end(), column) - head.begin());
  std::vector<double> values;
  for (size_t i = skip; i < lines.size(); ++i) values.push_back(std::stod(Cells(lines[i]).at(c)));
  return values;
}

TEST(BatchCommand, LinesComeInInputOrderAndAFailureStaysInItsLine) {
  TempDir dir;
  velmar::testing::WriteBytes(dir / "broken.vxvl", "{ not a project");
  const std::string files = Example("cargo_ship_si.vxvl") + " " + (dir / "broken.vxvl").string() + " " +
                            (dir / "missing.vxvl").string() + " " + Example("catamaran_ferry.vxvl");
  const CliRun one = Cli("batch " + files + " --format jsonl -j 1", " 2>/dev/null");
  const CliRun two = Cli("batch " + files + " --format jsonl -j 2", " 2>/dev/null");
  EXPECT_EQ(one.code, 1);
  EXPECT_EQ(one.out, two.out);
  // One line per speed of each project that opens, one line for each that does not.
  std::vector<std::string> order;
  for (const std::string& line : Lines(two.out)) {
    const std::string file = line.substr(0, line.find(", \"Ok\""));
    if (order.empty() || order.back() != file) order.push_back(file);
    if (line.find("broken") != std::string::npos || line.find("missing") != std::string::npos) {
      EXPECT_NE(line.find("\"Ok\": false, \"Warning\": \""), std::string::npos) << line;
      EXPECT_EQ(line.find("\"Warning\": \"\""), std::string::npos) << line;
      EXPECT_EQ(line.find("DragTotal"), std::string::npos) << line;
    } else {
      EXPECT_NE(line.find("\"Ok\": true"), std::string::npos) << line;
    }
  }
  ASSERT_EQ(order.size(), 4u) << two.out;
  EXPECT_NE(order[0].find("cargo_ship_si"), std::string::npos);
  EXPECT_NE(order[3].find("catamaran_ferry"), std::string::npos);
}

TEST(BatchCommand, ValuesMatchCalcAndOtherUnitsAreConverted) {
  const CliRun batch = Cli("batch " + Example("cargo_ship_si.vxvl") + " " + Example("patrol_vessel_imperial.vxvl") +
                           " --format csv --columns Speed,DragTotal");
  ASSERT_EQ(batch.code, 0) << batch.out;
  EXPECT_EQ(Lines(batch.out).at(1), ",,,kt,kN");
  const CliRun cargo = Cli("calc " + Example("cargo_ship_si.vxvl") + " --format csv --columns DragTotal");
  const CliRun patrol = Cli("calc " + Example("patrol_vessel_imperial.vxvl") + " --format csv --columns DragTotal");
  ASSERT_EQ(Lines(patrol.out).at(1), "lbf");
  std::vector<double> expected = CsvColumn(cargo.out, "DragTotal");
  for (double lbf : CsvColumn(patrol.out, "DragTotal")) expected.push_back(lbf * 4.4482216152605e-3);  // lbf to kN
  const std::vector<double> got = CsvColumn(batch.out, "DragTotal");
  ASSERT_EQ(got.size(), expected.size());
  for (size_t i = 0; i < got.size(); ++i) EXPECT_NEAR(got[i], expected[i], 1e-8 * expected[i]) << i;
}

TEST(SweepCommand, GridOrderRefusedVariantsAndShardsThatConcatenate) {
  const std::string sweep = "sweep " + Example("cargo_ship_si.vxvl") + " --vary LengthWL=0:200:3 --vary Speed=16:20:2";
  const CliRun csv = Cli(sweep + " --format csv --columns DragTotal -j 2");
  EXPECT_EQ(csv.code, 1);  // the variants of length 0 are refused
  const std::vector<std::string> lines = Lines(csv.out);
  ASSERT_EQ(lines.size(), 8u) << csv.out;
  EXPECT_EQ(lines[0], "LengthWL,Speed,Variant,Ok,Warning,DragTotal");
  EXPECT_EQ(lines[1], "m,kt,,,,kN");
  EXPECT_EQ(lines[2], "0,16,0,false,DATA ERROR: Length on waterline (Hull.LengthWL = 0),");
  const std::vector<std::string> last = Cells(lines[7]);
  EXPECT_EQ(std::vector<std::string>(last.begin(), last.begin() + 5),
            (std::vector<std::string>{"200", "20", "5", "true", ""}));
  // Variant 5 is the project at LWL 200 m and 20 kt: the same drag as calc of that project.
  const CliRun single = Cli("sweep " + Example("cargo_ship_si.vxvl") +
                            " --vary LengthWL=200:200:1 --vary Speed=20:20:1 --format csv --columns DragTotal");
  EXPECT_EQ(Cells(Lines(single.out).at(2)).back(), last.back());

  // The shards' JSON Lines together are the whole grid, each variant once.
  const std::string grid = "sweep " + Example("cargo_ship_si.vxvl") +
                           " --vary BeamWLMax=28:34:4 --vary Speed=14:22:5 --format jsonl --columns DragTotal";
  const CliRun whole = Cli(grid, " 2>/dev/null");
  std::string joined;
  for (int k = 1; k <= 3; ++k) joined += Cli(grid + " --shard " + std::to_string(k) + "/3 -j 1", " 2>/dev/null").out;
  std::vector<std::string> a = Lines(whole.out), b = Lines(joined);
  EXPECT_EQ(a.size(), 20u);
  std::sort(a.begin(), a.end());
  std::sort(b.begin(), b.end());
  EXPECT_EQ(a, b);
}

TEST(SweepCommand, UsageErrorsAreOneLineAndExitCode2) {
  const std::string file = Example("cargo_ship_si.vxvl");
  const struct {
    std::string args, message;
  } cases[] = {
      {"--vary LengthWL=1:2 --format csv", "is not FIELD=FROM:TO:N"},
      {"--vary NoSuchField=1:2:3 --format csv", "no field \"NoSuchField\""},
      {"--vary Boat.LengthWL=1:2:3 --format csv", "unknown class \"Boat\""},
      {"--vary LengthWL=1:2:3 --format csv --shard 4/3", "is not K/N"},
      {"--vary LengthWL=1:2:3 --format xml", "unknown format"},
      {"--vary LengthWL=1:2:3 --format csv --mode towing", "unknown mode"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    const CliRun r = Cli("sweep " + file + " " + c.args);
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.out.find(c.message), std::string::npos) << r.out;
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 1) << r.out;
  }
}

}  // namespace
