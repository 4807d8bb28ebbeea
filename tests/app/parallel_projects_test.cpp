// Two projects calculated at once, one per thread, give exactly the results each gives alone:
// the project, the calculation error state, the headless hooks and every memo belong to the
// calling thread. Run under ThreadSanitizer by `make test-tsan`.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "app/variants.h"
#include "core/speed_performance.h"
#include "core/test_support.h"

namespace velmar {
namespace {

struct Outcome {
  std::string why;  // the opening's failure, else empty
  bool ok = false;
  std::string warning;
  std::vector<std::uint64_t> bits;  // every stored column of every row
};

// Opens the example on the calling thread and calculates drag and propulsion `runs` times;
// the stored table of the last run is kept.
Outcome Calculate(const std::string& example, int runs) {
  Outcome out;
  testing::FreshApp();
  if (!OpenProject(testing::ExamplePath(example), out.why)) return out;
  for (int i = 0; i < runs; ++i) {
    const PredictionRun run = RunPrediction(true);
    out.ok = run.ok;
    out.warning = run.warning;
  }
  const clsVXSpeedPerformance& sp = *App().primary.SpeedPerformance;
  for (int row = 0; row < sp.count(); ++row)
    for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c)
      out.bits.push_back(std::bit_cast<std::uint64_t>(sp.Raw(row, c)));
  return out;
}

TEST(ParallelProjectsTest, TwoProjectsInTwoThreadsMatchSerialRuns) {
  const std::vector<std::string> examples = {"cargo_ship_si.vxvl", "patrol_vessel_imperial.vxvl",
                                             "catamaran_ferry_waterjet.vxvl", "planing_craft_si.vxvl"};
  for (size_t i = 0; i + 1 < examples.size(); i += 2) {
    const std::string& a = examples[i];
    const std::string& b = examples[i + 1];
    Outcome serialA, serialB, parallelA, parallelB;
    std::thread([&] { serialA = Calculate(a, 1); }).join();
    std::thread([&] { serialB = Calculate(b, 1); }).join();
    {
      std::jthread ta([&] { parallelA = Calculate(a, 3); });
      std::jthread tb([&] { parallelB = Calculate(b, 3); });
    }
    for (const auto& [name, serial, parallel] :
         {std::tuple{a, &serialA, &parallelA}, std::tuple{b, &serialB, &parallelB}}) {
      ASSERT_EQ(serial->why, "") << name;
      EXPECT_EQ(parallel->ok, serial->ok) << name;
      EXPECT_EQ(parallel->warning, serial->warning) << name;
      EXPECT_FALSE(serial->bits.empty()) << name;
      EXPECT_TRUE(parallel->bits == serial->bits) << name << ": a stored column differs";
    }
  }
}

}  // namespace
}  // namespace velmar
