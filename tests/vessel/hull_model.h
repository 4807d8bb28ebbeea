// Test support: the hulls of Holtrop's two published example ships, the papers' sea water,
// and units (10 significant digits), water and a hull linked as the application links them.
#pragma once

#include <memory>

#include "core/diagnostics.h"
#include "vessel/hull.h"

namespace velmar::testing {

// Both papers' sea water: 1025 kg/m3 and 1.18831e-6 m2/s (15 degC).
inline constexpr double kPaperDensity = 1025.0, kPaperViscosity = 1.18831e-6;

inline void UsePaperWater(clsVXWaterProperties& w) {
  w.WaterDefinitionIndex(3);  // Custom
  w.Density(kKgPerM3, kPaperDensity);
  w.Viscosity(kM2PerSec, kPaperViscosity);
}

// A hull by its main particulars in metres, its volume in m3 weighed in the hull's water,
// lcb in percent of L forward of mid-length, S in m2 and iE in degrees.
inline void EnterHull(clsVXHull& h, double L, double B, double T, double vol, double cm, double cwp,
                      double lcb, double S = 0.0, double iE = 0.0) {
  h.Displacement(kKg, vol * h.WaterProperties()->Density(kKgPerM3));
  h.LengthWL(kM, L);
  h.BeamWLMax(kM, B);
  h.DraftSubmergedMax(kM, T);
  h.AreaSectMax(kM2, cm * B * T);
  h.AreaWaterplane(kM2, cwp * L * B);
  h.XBuoyancyFwdTr(kM, L * (0.5 + lcb / 100.0));
  h.WettedSurface(kM2, S);
  h.AngleHalfEntDeg(iE);
}

// Holtrop & Mennen (1982), the single-screw example ship: LWL 205 m, B 32 m, T 10 m, volume
// 37500 m3, CM 0.98, CWP 0.75, lcb -0.75 % L, S 7381.45 m2, iE 12.08 deg, ABT 20 m2 with its
// centre 4 m above the keel, AT 16 m2, Cstern 10.
inline void EnterHoltropMennen1982(clsVXHull& h) {
  EnterHull(h, 205.0, 32.0, 10.0, 37500.0, 0.98, 0.75, -0.75, 7381.45, 12.08);
  h.BulbAreaSect(kM2, 20.0);
  h.ZBulbAreaSectBelowWL(kM, 10.0 - 4.0);
  h.AreaSectAtTr(kM2, 16.0);
  h.SternShapeFactor(1.0);  // Cstern 10
}

// Holtrop (1984), the twin-screw fast ship: L 50 m, B 12 m, T 3.2 m (mean of 3.1 fore and
// 3.3 aft; without a bulb the fore draft enters nowhere), volume 900 m3, CM 0.78, CWP 0.80,
// lcb -4.5 % L, S 584.9 m2, iE 25 deg, AT 10 m2, Cstern 0, no bulb.
inline void EnterHoltrop1984(clsVXHull& h) {
  EnterHull(h, 50.0, 12.0, 3.2, 900.0, 0.78, 0.80, -4.5, 584.9, 25.0);
  h.BulbAreaSect(kM2, 0.0);
  h.ZBulbAreaSectBelowWL(kM, 0.0);
  h.AreaSectAtTr(kM2, 10.0);
  h.SternShapeFactor(0.0);
}

struct HullModel {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units, water);

  // Standard salt water, or the papers' water with a clean calculation error state.
  explicit HullModel(UnitPreset preset = UnitPreset::SI, bool paperWater = false) {
    ApplyUnitPreset(*units, preset);
    units->SigDigits(10);
    water->SetWaterPropertiesToStandardValues(0);
    if (paperWater) UsePaperWater(*water), ResetCalcErrorState();
  }
};

}  // namespace velmar::testing
