// Benchmarks of the reads every prediction makes many times: the significant-digit rounding,
// a unit-converting field read, a hull form coefficient and a ten-point table lookup.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "app/application.h"
#include "core/curve_fit.h"
#include "core/helpers.h"

namespace velmar {
namespace {

ModelSet MakeShip() {
  ModelSet s = MakeModelSet(SetKind::Primary);
  s.Units->SigDigits(10);
  ApplyUnitPreset(*s.Units, UnitPreset::SI);
  s.WaterProperties->SetWaterPropertiesToStandardValues(0);
  s.Hull->Displacement(kCurrent, 38438.0);
  s.Hull->LengthWL(kCurrent, 205.0);
  s.Hull->BeamWLMax(kCurrent, 32.0);
  s.Hull->DraftSubmergedMax(kCurrent, 10.0);
  return s;
}

void BM_ConvertingRead(benchmark::State& state) {
  ModelSet s = MakeShip();
  for (auto _ : state) benchmark::DoNotOptimize(s.Hull->LengthWL(kFt));
}
BENCHMARK(BM_ConvertingRead);

// Ten significant digits, the model's own, over values spread across twenty decades.
void BM_RoundToSigDigits(benchmark::State& state) {
  std::vector<double> values;
  for (int i = 0; i < 256; ++i) values.push_back((1.0 + 0.0371 * i) * std::pow(10.0, i % 20 - 10));
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(RoundToSigDigits(values[i++ & 255], 10));
}
BENCHMARK(BM_RoundToSigDigits);

void BM_CoefBlock(benchmark::State& state) {
  ModelSet s = MakeShip();
  for (auto _ : state) benchmark::DoNotOptimize(s.Hull->CoefBlock());
}
BENCHMARK(BM_CoefBlock);

void BM_CurveFit10(benchmark::State& state) {
  const std::vector<double> xs = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, ys = {0, 1, 4, 9, 16, 25, 36, 49, 64, 81};
  std::string location, cause;
  const int method = static_cast<int>(state.range(0));
  for (auto _ : state) {
    double y = 0;
    CurveFit(method, y, 10, xs, ys, 4.5, location, cause);
    benchmark::DoNotOptimize(y);
  }
}
BENCHMARK(BM_CurveFit10)->Arg(0)->Arg(1)->ArgName("cubic");

}  // namespace
}  // namespace velmar
