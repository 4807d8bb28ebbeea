// Test support: the example ship of Holtrop & Mennen (1982) entered into the open project in
// SI units, set up for an ITTC-78 (CT) prediction by the Holtrop method.
#pragma once

#include <initializer_list>

#include "core/application.h"
#include "core/diagnostics.h"
#include "core/ui_hooks.h"

namespace velmar::testing {

// LWL 205 m, B 32 m, T 10 m, volume 37500 m3 in salt water, CM 0.98, CWP 0.75,
// S 7381.45 m2, ABT 20 m2 with its centre 4 m above the keel, AT 16 m2, lcb 0.75 % L aft of
// midships, iE 12.08 deg, Cstern 10; 1+k 1.156 as the paper finds it. Appendages: one
// rudder behind the stern of 50 m2 (1+k2 = 1.5, the paper's appendage surface) and one
// shaft; speeds in knots.
inline void EnterExampleShip(std::initializer_list<double> speedsKt = {25.0}) {
  App().CurrentMode = Mode::Resistance;
  App().PropulsionSizingChanged = false;
  App().TemplateEnabled = false;
  NewProject();
  ResetCalcErrorState();
  DefaultHeadlessHooks().messages.clear();
  DefaultHeadlessHooks().questions.clear();
  DefaultHeadlessHooks().scriptedAnswers.clear();
  ModelSet& p = App().primary;
  ApplyUnitPreset(*p.Units, UnitPreset::SI);
  p.WaterProperties->SetWaterPropertiesToStandardValues(0);  // salt water at 15 degC

  clsVXHull& h = *p.Hull;
  h.Displacement(kKg, 37500.0 * 1026.0);
  h.LengthWL(kM, 205.0);
  h.BeamWLMax(kM, 32.0);
  h.DraftSubmergedMax(kM, 10.0);
  h.AreaSectMax(kM2, 0.98 * 32.0 * 10.0);
  h.AreaWaterplane(kM2, 0.75 * 205.0 * 32.0);
  h.WettedSurface(kM2, 7381.45);
  h.BulbAreaSect(kM2, 20.0);
  h.ZBulbAreaSectBelowWL(kM, 10.0 - 4.0);
  h.AreaSectAtTr(kM2, 16.0);
  h.XBuoyancyFwdTr(kM, 102.5 - 0.0075 * 205.0);
  h.XAreaWaterplaneFwdTr(kM, 97.0);
  h.AngleHalfEntDeg(12.08);
  h.SternShapeFactor(1.0);
  h.PropulsorCountPerHull(1);

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
