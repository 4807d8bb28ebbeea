// Benchmark of a full resistance Calculate: the Holtrop & Mennen (1982) example ship over ten
// speeds, Holtrop bare-hull drag and Holtrop component appendages, through RunCalculate.
#include <benchmark/benchmark.h>

#include "bench_support.h"

namespace velmar {
namespace {

void BM_CalculateResistance10Speeds(benchmark::State& state) {
  bench::EnterTenSpeedProject();
  for (auto _ : state) {
    const CalculateResult r = RunCalculate();
    if (!r.ok) {
      state.SkipWithError("the resistance prediction failed");
      break;
    }
    benchmark::DoNotOptimize(App().primary.SpeedPerformance->Raw(9, 0));
  }
}
BENCHMARK(BM_CalculateResistance10Speeds);

}  // namespace
}  // namespace velmar
