// Test support: a vessel for the parameter checks, entered into the open project in SI units.
// The defaults are a round-bilge fast displacement hull of 50 m at 16 kn, single screw, with
// every item the checks ask for (transom, planing-bottom station, propeller) present, so that
// a test changes only what it is about.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "../core/test_support.h"
#include "../vessel/hull_model.h"
#include "validation/parameter_check.h"

namespace velmar::testing {

struct CheckVessel {
  double L = 50.0, B = 10.0, T = 3.0, vol = 750.0, cm = 0.8, cwp = 0.75, lcb = -3.0, iE = 20.0;
  double atr = 6.0, btr = 7.0, ttr = 0.9, bulb = 0.0, propellerMm = 2000.0;
  double ax = -1.0;  // section area in m2; -1: cm x B x T
  int chine = 0, dataSet = 1, propulsors = 1, propulsorType = 0;
  double speedKt = 16.0, waveHeight = 1.0, depth = 0.0;
  int appendageDefinition = 2, calcType = 0;
  double keelBulb = 0.0, strutPalm = 0.0;  // keel bulb length and strut palm depth in m
  int sonarDomes = 0;

  // Sets the item of this name (as spelt above) from a table file; false for an unknown name.
  bool Set(const std::string& name, double v) {
    // clang-format off
    const std::pair<const char*, double*> reals[] = {
        {"L", &L}, {"B", &B}, {"T", &T}, {"vol", &vol}, {"cm", &cm}, {"cwp", &cwp}, {"lcb", &lcb},
        {"iE", &iE}, {"atr", &atr}, {"btr", &btr}, {"ttr", &ttr}, {"bulb", &bulb}, {"ax", &ax},
        {"propellerMm", &propellerMm}, {"speedKt", &speedKt}, {"waveHeight", &waveHeight},
        {"depth", &depth}, {"keelBulb", &keelBulb}, {"strutPalm", &strutPalm}};
    const std::pair<const char*, int*> ints[] = {
        {"chine", &chine}, {"dataSet", &dataSet}, {"propulsors", &propulsors},
        {"propulsorType", &propulsorType}, {"calcType", &calcType}, {"sonarDomes", &sonarDomes},
        {"appendageDefinition", &appendageDefinition}};
    // clang-format on
    for (const auto& [n, p] : reals)
      if (name == n) return *p = v, true;
    for (const auto& [n, p] : ints)
      if (name == n) return *p = static_cast<int>(v), true;
    return false;
  }

  // Enters the vessel into the open project; `edit` may change it on the way.
  void Enter(const std::function<void(ModelSet&)>& edit = nullptr) const {
    FreshApp();
    ModelSet& p = App().primary;
    ApplyUnitPreset(*p.Units, UnitPreset::SI);
    p.WaterProperties->SetWaterPropertiesToStandardValues(0);
    clsVXHull& h = *p.Hull;
    EnterHull(h, L, B, T, vol, cm, cwp, lcb, 0.0, iE);
    if (ax >= 0.0) h.AreaSectMax(kM2, ax);
    h.AreaSectAtTr(kM2, atr);
    h.BeamWLAtTr(kM, btr);
    h.ImmersionDraftAtTr(kM, ttr);
    h.BulbAreaSect(kM2, bulb);
    h.ChineType(chine);
    h.HullHydrodynamicDataSet(dataSet);
    h.PropulsorCountPerHull(propulsors);
    h.HullPropulsorType(propulsorType);
    h.PropellerDiameterMax(kCurrent, propellerMm);
    h.XGravityFwdTr(kM, L * (0.5 + lcb / 100.0));
    h.LengthProjPlaningBottom(kM, 0.96 * L);
    h.AreaProjPlaningBottom(kM2, 0.76 * L * B);
    h.FwdStationXPositionFwdTr(kM, h.XGravityFwdTr(kM));
    h.FwdStationChineBeam(kM, 0.95 * B);
    h.FwdStationAngleDeadriseDeg(15.0);
    p.Appendage->AppendageDefinition(appendageDefinition);
    if (keelBulb > 0.0) p.Appendage->KeelBulbLength(kM, keelBulb);
    if (strutPalm > 0.0) p.Appendage->StrutPalmDepth(kM, strutPalm);
    if (sonarDomes > 0) p.Appendage->SonarDomeCount(sonarDomes);
    p.Environment->SeasSignificantWaveHeight(kM, waveHeight);
    p.Environment->ShallowWaterDepth(kM, depth);
    p.Propulsion->PropulsorCalcType(calcType);
    clsVXSpeedPerformance& sp = *p.SpeedPerformance;
    sp.count(1);
    sp.Speed(0, kKt, speedKt);
    sp.DesignSpeedIndex(0);
    if (edit) edit(p);
  }
};

// The check of `checkId` on the open project in `mode`, with Holtrop's full rules.
inline MethodCheck Check(int checkId, Mode mode = Mode::Resistance, bool full = true) {
  return CheckMethod(App().primary, mode, checkId, full);
}

}  // namespace velmar::testing
