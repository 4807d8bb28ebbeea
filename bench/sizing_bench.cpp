// Benchmarks of the propeller sizing: one sizing of three unknowns (diameter, pitch and
// blade area by power, the patrol vessel's design point), and a full Calculate in
// Propulsion mode of the ten-speed cargo ship with a controllable-pitch propeller, whose
// RPM solution runs the sizing solver for the pitch at every speed.
#include "bench_support.h"
#include "propulsion/propeller_sizing_run.h"
#include "propulsion/propulsion_driver.h"

namespace velmar {
namespace {

void BM_SizePropellerThreeUnknowns(benchmark::State& state) {
  if (!bench::PrepareForPropulsion(state, "patrol_vessel_sizing.vxvl")) return;
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
  if (bench::PrepareForPropulsion(state, "cargo_ship_cpp_si.vxvl")) bench::TimeCalculate(state);
}
BENCHMARK(BM_CalculatePropulsionCPP10Speeds);

}  // namespace
}  // namespace velmar
