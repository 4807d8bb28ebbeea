// What the benchmarks share: the bundled examples, opened as a user opens them, and the loop
// that times a Calculate.
#pragma once

#include <benchmark/benchmark.h>

#include <filesystem>

#include "app/application.h"
#include "app/calculate.h"
#include "files/project_file.h"

namespace velmar::bench {

inline std::filesystem::path Examples() {
  return std::filesystem::path(__FILE__).parent_path().parent_path() / "examples";
}

// Opens examples/`name` over a fresh project; false, with the benchmark marked, when it fails.
inline bool OpenExample(benchmark::State& state, const char* name) {
  NewProject();
  if (OpenProjectFile(Examples() / name).opened) return true;
  state.SkipWithError("the example could not be opened");
  return false;
}

// Opens an example and calculates its resistance, as a user does before propulsion; the
// program is left in Propulsion mode.
inline bool PrepareForPropulsion(benchmark::State& state, const char* name) {
  if (!OpenExample(state, name)) return false;
  App().PropulsionSizingChanged = false;
  App().CurrentMode = Mode::Resistance;
  if (!RunCalculate().ok) {
    state.SkipWithError("the resistance prediction failed");
    return false;
  }
  App().CurrentMode = Mode::Propulsion;
  return true;
}

// Times RunCalculate of the open project in the current mode.
inline void TimeCalculate(benchmark::State& state) {
  for (auto _ : state) {
    if (!RunCalculate().ok) {
      state.SkipWithError("the prediction failed");
      break;
    }
    benchmark::DoNotOptimize(App().primary.SpeedPerformance->Raw(9, 0));
  }
}

}  // namespace velmar::bench
