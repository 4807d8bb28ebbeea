// Test support: units (10 significant digits), salt water and a hull linked as the
// application links them, and the single-screw example ship of Holtrop & Mennen (1982).
#pragma once

#include <memory>

#include "vessel/hull.h"

namespace velmar::testing {

struct HullModel {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units, water);

  explicit HullModel(UnitPreset preset = UnitPreset::SI) {
    ApplyUnitPreset(*units, preset);
    units->SigDigits(10);
    water->SetWaterPropertiesToStandardValues(0);
  }

  // A hull by its main particulars in metres, its volume in m3 weighed at `density` kg/m3
  // (0: the linked water's), and lcb in percent of L forward of mid-length.
  void Enter(double L, double B, double T, double vol, double cm, double cwp, double lcb,
             double density = 0.0) {
    hull->Displacement(kKg, vol * (density > 0.0 ? density : water->Density(kKgPerM3)));
    hull->LengthWL(kM, L);
    hull->BeamWLMax(kM, B);
    hull->DraftSubmergedMax(kM, T);
    hull->AreaSectMax(kM2, cm * B * T);
    hull->AreaWaterplane(kM2, cwp * L * B);
    hull->XBuoyancyFwdTr(kM, L * (0.5 + lcb / 100.0));
  }

  // LWL 205 m, B 32 m, T 10 m, volume 37500 m3, CM 0.98, CWP 0.75, lcb -0.75 % L,
  // S 7381.45 m2, ABT 20 m2 with its centre 4 m above the keel, AT 16 m2, Cstern 10,
  // iE 12.08 deg.
  void EnterHoltropMennen1982(double density = 0.0) {
    Enter(205.0, 32.0, 10.0, 37500.0, 0.98, 0.75, -0.75, density);
    hull->WettedSurface(kM2, 7381.45);
    hull->BulbAreaSect(kM2, 20.0);
    hull->ZBulbAreaSectBelowWL(kM, 10.0 - 4.0);
    hull->AreaSectAtTr(kM2, 16.0);
    hull->AngleHalfEntDeg(12.08);
    hull->SternShapeFactor(1.0);  // Cstern 10
  }
};

}  // namespace velmar::testing
