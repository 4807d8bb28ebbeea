// Benchmark of a sweep of variants as the batch command runs it on one thread: the cargo-ship
// example with its waterline length varied over 16 values, each variant a fresh copy of the
// project calculated in Resistance mode (Arg 0) or in Propulsion mode on top (Arg 1).
#include <string>

#include "app/variants.h"
#include "bench_support.h"

namespace velmar {
namespace {

void BM_SweepLength16Variants(benchmark::State& state) {
  if (!bench::OpenExample(state, "cargo_ship_si.vxvl")) return;
  const ModelSet base = CopyModelSet(App().primary);
  SweepGrid grid;
  SweepAxis axis;
  std::string error;
  if (!ParseSweepAxis(base, "Hull.LengthWL=195:215:16", axis, error)) {
    state.SkipWithError(error.c_str());
    return;
  }
  grid.axes.push_back(axis);
  const bool propulsion = state.range(0) == 1;
  for (auto _ : state) {
    for (std::int64_t i = 0; i < grid.Size(); ++i) {
      VariantRun out;
      RunVariant(grid, i, base, propulsion, out);
      if (!out.calculated) {
        state.SkipWithError("a variant was not calculated");
        return;
      }
      benchmark::DoNotOptimize(out.run);
    }
  }
  state.SetItemsProcessed(state.iterations() * grid.Size());
}
BENCHMARK(BM_SweepLength16Variants)->Arg(0)->Arg(1)->ArgName("propulsion")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace velmar
