// Benchmark of a full Calculate in Propulsion mode: the cargo-ship example (ten speeds,
// Holtrop interaction, a B-series propeller with the scale correction, an engine with both
// curves), its drag columns calculated once beforehand, as a user does.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "app/application.h"
#include "app/calculate.h"
#include "files/project_file.h"

namespace velmar {
namespace {

void BM_CalculatePropulsion10Speeds(benchmark::State& state) {
  const auto path =
      std::filesystem::path(__FILE__).parent_path().parent_path() / "examples" / "cargo_ship_si.vxvl";
  NewProject();
  if (!OpenProjectFile(path).opened) {
    state.SkipWithError("the cargo-ship example could not be opened");
    return;
  }
  App().PropulsionSizingChanged = false;
  App().CurrentMode = Mode::Resistance;
  if (!RunCalculate().ok) {
    state.SkipWithError("the resistance prediction failed");
    return;
  }
  App().CurrentMode = Mode::Propulsion;
  for (auto _ : state) {
    const CalculateResult r = RunCalculate();
    if (!r.ok) {
      state.SkipWithError("the propulsion prediction failed");
      break;
    }
    benchmark::DoNotOptimize(App().primary.SpeedPerformance->Raw(9, 0));
  }
}
BENCHMARK(BM_CalculatePropulsion10Speeds);

}  // namespace
}  // namespace velmar
