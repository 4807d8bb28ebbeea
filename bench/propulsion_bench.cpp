// Benchmark of a full Calculate in Propulsion mode: the cargo-ship example (ten speeds,
// Holtrop interaction, a B-series propeller with the scale correction, an engine with both
// curves), its drag columns calculated once beforehand, as a user does.
#include "bench_support.h"

namespace velmar {
namespace {

void BM_CalculatePropulsion10Speeds(benchmark::State& state) {
  if (bench::PrepareForPropulsion(state, "cargo_ship_si.vxvl")) bench::TimeCalculate(state);
}
BENCHMARK(BM_CalculatePropulsion10Speeds);

}  // namespace
}  // namespace velmar
