// What the benchmarks share: the bundled examples, opened as a user opens them, the Holtrop
// example ship of the resistance benchmarks, and the loop that times a Calculate.
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

// The Holtrop & Mennen (1982) example ship, entered as a user enters it: SI units, ten speeds
// from 8 to 26 kt, Holtrop bare-hull drag with the ITTC-78 expansion (1 + k 1.156, CA 0.00035,
// roughness 0.15 mm), Holtrop component appendages and a 10 % margin. Left in Resistance mode.
inline void EnterTenSpeedProject() {
  App().CurrentMode = Mode::Resistance;
  App().PropulsionSizingChanged = false;
  NewProject();
  ModelSet& p = App().primary;
  ApplyUnitPreset(*p.Units, UnitPreset::SI);
  p.WaterProperties->SetWaterPropertiesToStandardValues(0);

  clsVXHull& h = *p.Hull;
  h.Displacement(kKg, 37500.0 * 1026.0);
  h.LengthWL(kM, 205.0);
  h.BeamWLMax(kM, 32.0);
  h.DraftSubmergedMax(kM, 10.0);
  h.AreaSectMax(kM2, 0.98 * 32.0 * 10.0);
  h.AreaWaterplane(kM2, 0.75 * 205.0 * 32.0);
  h.WettedSurface(kM2, 7381.45);
  h.BulbAreaSect(kM2, 20.0);
  h.ZBulbAreaSectBelowWL(kM, 6.0);
  h.AreaSectAtTr(kM2, 16.0);
  h.XBuoyancyFwdTr(kM, 102.5 - 0.0075 * 205.0);
  h.XAreaWaterplaneFwdTr(kM, 97.0);
  h.AngleHalfEntDeg(12.08);
  h.SternShapeFactor(1.0);
  h.PropulsorCountPerHull(2);
  h.AngleShaftDeg(4.0);

  clsVXAppendage& a = *p.Appendage;
  a.ShaftWettedSurface(kM2, 6.0);
  a.ShaftStrutBossingWettedSurface(kM2, 1.2);
  a.StrutCount(1);
  a.StrutWettedSurface(kM2, 4.0);
  a.RudderCount(2);
  a.RudderType(0);
  a.RudderWettedSurface(kM2, 25.0);
  a.BilgeKeelCount(2);
  a.BilgeKeelWettedSurface(kM2, 60.0);
  a.TunnelThrusterCount(1);
  a.TunnelThrusterDiameter(kM, 2.0);

  clsVXITTC78Expansion& e = *p.ITTC78;
  e.HullHydrodynamicType(1);
  e.HullFormFactor(1.156);
  e.CorrelationAllowance(0.00035);
  e.HullRoughnessMM(0.15);

  clsVXResistance& r = *p.Resistance;
  r.HullDragEnabled(1);
  r.HullDragMethod(0);  // Holtrop
  r.HullDragITTC78ExpansionEnabled(1);
  r.HullDragRoughnessEnabled(1);
  r.AppendageDragEnabled(1);
  r.AppendageDragMethod(5);  // Holtrop (Component)
  r.MarginDragEnabled(1);
  r.MarginDragPercentage(10.0);

  clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  sp.count(10);
  for (int row = 0; row < 10; ++row) sp.Speed(row, kKt, 8.0 + 2.0 * row);
}

}  // namespace velmar::bench
