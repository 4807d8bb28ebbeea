// Benchmarks of the propeller sizing: one sizing of three unknowns (diameter, pitch and
// blade area by power, the patrol vessel's design point), and a full Calculate in
// Propulsion mode of the ten-speed cargo ship with a controllable-pitch propeller, whose
// RPM solution runs the sizing solver for the pitch at every speed.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "app/application.h"
#include "app/calculate.h"
#include "files/project_file.h"
#include "propulsion/propeller_sizing_run.h"
#include "propulsion/propulsion_driver.h"

namespace velmar {
namespace {

std::filesystem::path Example(const char* name) {
  return std::filesystem::path(__FILE__).parent_path().parent_path() / "examples" / name;
}

// Opens an example and calculates its resistance, as a user does before propulsion.
bool Prepare(benchmark::State& state, const char* name) {
  NewProject();
  if (!OpenProjectFile(Example(name)).opened) {
    state.SkipWithError("the example could not be opened");
    return false;
  }
  App().PropulsionSizingChanged = false;
  App().CurrentMode = Mode::Resistance;
  if (!RunCalculate().ok) {
    state.SkipWithError("the resistance prediction failed");
    return false;
  }
  return true;
}

void BM_SizePropellerThreeUnknowns(benchmark::State& state) {
  if (!Prepare(state, "patrol_vessel_sizing.vxvl")) return;
  ModelSet& p = App().primary;
  if (!PreparePropulsionPrediction(*p.WaterProperties, *p.Hull, *p.ITTC78, *p.Propulsion, *p.Propeller,
                                   *p.PropellerSeries, *p.SpeedPerformance)) {
    state.SkipWithError("the interaction coefficients failed");
    return;
  }
  const auto start = p.Propeller->CopyClass();
  for (auto _ : state) {
    state.PauseTiming();
    *p.Propeller = *start;  // the same starting propeller every time
    state.ResumeTiming();
    const PropellerSizingReport r = ApplyPropellerSizing(*p.WaterProperties, *p.Hull, *p.Propulsion, *p.Propeller,
                                                         *p.PropellerSeries, *p.PropellerSizing, *p.SpeedPerformance);
    if (!r.ok) {
      state.SkipWithError("the sizing failed");
      break;
    }
    benchmark::DoNotOptimize(r.efficiency);
  }
}
BENCHMARK(BM_SizePropellerThreeUnknowns);

void BM_CalculatePropulsionCPP10Speeds(benchmark::State& state) {
  if (!Prepare(state, "cargo_ship_cpp_si.vxvl")) return;
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
BENCHMARK(BM_CalculatePropulsionCPP10Speeds);

}  // namespace
}  // namespace velmar
