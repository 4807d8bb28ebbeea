// Test support: the example ship of Holtrop & Mennen (1982) entered into the open project in
// SI units, set up for an ITTC-78 (CT) prediction by the Holtrop method.
#pragma once

#include <vector>

#include "../core/test_support.h"
#include "../vessel/hull_model.h"

namespace velmar::testing {

// The hull of hull_model.h in standard salt water, 1+k 1.156 as the paper finds it.
// Appendages: one rudder behind the stern of 50 m2 (1+k2 = 1.5, the paper's appendage
// surface) and one shaft; speeds in knots.
inline void EnterExampleShip(const std::vector<double>& speedsKt = {25.0}) {
  FreshApp();
  ModelSet& p = App().primary;
  ApplyUnitPreset(*p.Units, UnitPreset::SI);
  p.WaterProperties->SetWaterPropertiesToStandardValues(0);  // salt water at 15 degC

  testing::EnterHoltropMennen1982(*p.Hull);
  p.Hull->XAreaWaterplaneFwdTr(kM, 97.0);
  p.Hull->PropulsorCountPerHull(1);

  clsVXAppendage& a = *p.Appendage;
  a.RudderCount(1);
  a.RudderType(3);  // aft of stern
  a.RudderWettedSurface(kM2, 50.0);

  clsVXITTC78Expansion& e = *p.ITTC78;
  e.HullHydrodynamicType(1);  // ITTC-78 (CT)
  e.HullFormFactor(1.156);
  e.HullFrictionLine(0);  // ITTC-57
  e.CorrelationAllowance(0.00035);
  e.HullRoughnessMM(0.15);

  clsVXResistance& r = *p.Resistance;
  r.HullDragEnabled(1);
  r.HullDragTechnique(0);
  r.HullDragMethod(0);  // Holtrop
  r.HullDragExpansionDetail(1);
  r.HullDragITTC78ExpansionEnabled(1);
  r.AppendageDragEnabled(1);
  r.AppendageDragMethod(5);  // Holtrop (Component)

  clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  sp.count(static_cast<int>(speedsKt.size()));
  int row = 0;
  for (double v : speedsKt) sp.Speed(row++, kKt, v);
}

}  // namespace velmar::testing
