#include "vessel/hull.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/helpers.h"
#include "vessel/hull_model.h"

namespace velmar {
namespace {

using testing::HullModel;

bool Pushed(const clsVXHull& h, const std::string& word) {
  return h.ErrorText().find("\t" + word + "\r\n") != std::string::npos;
}

// The example ship of Holtrop & Mennen (1982), entered in metric units whatever the display
// units. The transom has no beam or immersion given, so both stay 0 (legal). Also a small
// hard-chine planing bottom (made-up data): chine stations at the transom and 10 m forward
// of it.
clsVXHull& EnterExampleShip(HullModel& m) {
  clsVXHull& h = *m.hull;
  testing::EnterHoltropMennen1982(h);
  h.LengthProjPlaningBottom(kM, 15.0);
  h.AreaProjPlaningBottom(kM2, 45.0);
  h.XGravityFwdTr(kM, 5.5);
  h.FwdStationXPositionFwdTr(kM, 10.0);
  h.FwdStationChineBeam(kM, 3.2);
  h.FwdStationAngleDeadriseDeg(22.0);
  h.FwdStationZChineHeightBelowWL(kM, 0.10);
  h.AftStationXPositionFwdTr(kM, 0.0);
  h.AftStationChineBeam(kM, 3.6);
  h.AftStationAngleDeadriseDeg(14.0);
  h.AftStationZChineHeightBelowWL(kM, 0.25);
  return h;
}

using CoefFn = double (clsVXHull::*)() const;

// Inverses with the coefficient each undoes and the item it gives: the volume and surface
// ones, and the plain ratios by three of them (one length, one spacing, one area).
using InvFn = double (clsVXHull::*)(double) const;
const std::vector<std::tuple<InvFn, CoefFn, const char*>> kInverses = {
    {&clsVXHull::GetDisplacementFromCb, &clsVXHull::CoefBlock, "Displacement"},
    {&clsVXHull::GetDisplacementFromCvol, &clsVXHull::CoefLwlVol, "Displacement"},
    {&clsVXHull::GetWettedSurfaceFromCoefCS, &clsVXHull::CoefWettedSurfaceCS, "WettedSurface"},
    {&clsVXHull::GetBeamWLMaxFromLBRatio, &clsVXHull::CoefLwlBwlRatio, "BeamWLMax"},
    {&clsVXHull::GetDemihullSpacingFromSLRatio, &clsVXHull::CoefSLwlRatio, "DemihullSpacing"},
    {&clsVXHull::GetMaxSectionAreaFromCx, &clsVXHull::CoefAreaSectMax, "AreaSectMax"},
};

TEST(HullCoefficientTest, ExampleShipGivesTheSameCoefficientsInSIAndImperialUnits) {
  // Expected values from the metric inputs by hand.
  const std::vector<std::pair<CoefFn, double>> rows = {
      {&clsVXHull::CoefBlock, 0.5716463},      // 37500 / (205 x 32 x 10)
      {&clsVXHull::CoefPrismatic, 0.5833126},  // CB / CM
      {&clsVXHull::CoefLambda, 0.6512825},     // 1.446 CP - 0.03 L/B
      {&clsVXHull::CoefWettedSurfaceFroudeCWS, 6.588514},
      {&clsVXHull::CoefWettedSurfaceCS, 2.662252},
      {&clsVXHull::CoefLwlVol, 6.124586},
      // Planing bottom: BPX at XCG 5.5 m is 3.2 + 0.4 x 4.5 / 10 = 3.38 m; the volume is
      // still the ship's, the lengths and areas are the planing hull's.
      {&clsVXHull::CoefVolBpx, 37500.0 / (3.38 * 3.38 * 3.38)},
      {&clsVXHull::CoefLpVol, 15.0 / std::cbrt(37500.0)},
      {&clsVXHull::CoefLCGBpRatio, 5.5 / 3.38},
      {&clsVXHull::CoefApVolRatio, 45.0 / std::pow(37500.0, 2.0 / 3.0)},
  };
  for (UnitPreset preset : {UnitPreset::SI, UnitPreset::Imperial}) {
    for (int config : {0, 1}) {  // a catamaran's coefficients are the plain ratios too
      HullModel m(preset);
      clsVXHull& h = EnterExampleShip(m);
      h.HullConfigType(config);
      for (const auto& [fn, expected] : rows)
        EXPECT_NEAR((h.*fn)(), expected, 3e-5 * expected) << expected << " config " << config;
      // Only the missing demihull spacing is reported, whatever the configuration.
      EXPECT_DOUBLE_EQ(h.CoefSLwlRatio(), 0.0);
      EXPECT_EQ(h.ErrorText(), "\tS/LWL ratio\r\n");
      // The inverses give back the item, rounded to 6 digits.
      h.DemihullSpacing(kM, 40.0);
      for (const auto& [inverse, coefficient, item] : kInverses) {
        const double expected = h.Read(h.FieldIndex(item));
        const double v = (h.*inverse)((h.*coefficient)());
        EXPECT_NEAR(v, expected, 1e-5 * expected) << item;
        EXPECT_EQ(v, RoundToSigDigits(v, 6)) << item;
      }
      // The displacement is tested against the limits of CB: a real ship reports.
      h.ClearErrorStack();
      h.GetDisplacementFromCb(h.CoefBlock());
      EXPECT_TRUE(Pushed(h, "CB coefficient"));
      // CS from a surface converts it as if it were in square metres: right in metric units,
      // a factor of ft2 per m2 off in Imperial ones.
      const double cs = h.GetCoefCSFromWettedSurface(7381.45);
      EXPECT_NEAR(cs, 2.662252 * (preset == UnitPreset::SI ? 1.0 : 1.0 / (0.3048 * 0.3048)), 1e-5 * cs);
      // A coefficient not above 0 gives 0.
      EXPECT_EQ(h.GetBeamWLMaxFromLBRatio(0.0), 0.0);
      EXPECT_TRUE(Pushed(h, "LWL/BWL ratio"));
    }
  }
}

TEST(HullCoefficientTest, NewHullIsAllZeroReportsWhatIsMissingAndCopiesWithoutItsErrors) {
  HullModel m;
  clsVXHull& h = *m.hull;
  for (int c = 0; c < static_cast<int>(clsVXHull::Coef::Count); ++c)
    EXPECT_EQ(h.Coefficient(static_cast<clsVXHull::Coef>(c)), 0.0) << "coefficient " << c;
  for (const auto& [inverse, coefficient, item] : kInverses) EXPECT_EQ((h.*inverse)(0.5), 0.0) << item;
  for (const char* word : {"Displacement", "Length on waterline", "CB coefficient", "CVOLp coefficient"})
    EXPECT_TRUE(Pushed(h, word)) << word;
  // A hull without an immersed transom or bulb is legal.
  for (const char* word : {"ATR/AX", "BT/BWL ratio", "TTR/T ratio", "ABT/AX ratio", "Bulb sectional area"})
    EXPECT_FALSE(Pushed(h, word)) << word;
  // A copy keeps the links but starts with a clean error stack (its data: see the units test).
  const auto copy = h.CopyClass();
  EXPECT_TRUE(copy->ErrorText().empty() && copy->WaterProperties() == m.water);
  // The chord caption follows the device type.
  EXPECT_EQ(h.TransomLiftDeviceChordDepthFieldName(), "    Chord length:");
  h.TransomLiftDeviceType(2);
  EXPECT_EQ(h.TransomLiftDeviceChordDepthFieldName(), "    Depth:");
}

TEST(HullCoefficientTest, RangeTestsPushAtTheirLimitsAndReturnTheValue) {
  struct Row {
    double cb;                  // the box's block coefficient
    void (*set)(clsVXHull& h);  // further data
    CoefFn fn;
    double expected;
    const char* word;
    bool pushed;
  };
  const auto none = [](clsVXHull&) {};
  const auto bulb = [](clsVXHull& h) { h.BulbAreaSect(kFt2, 12.0); };
  const double cvolp = 10.0 / std::cbrt(100.0);  // of the box's 10 ft planing length
  const std::vector<Row> rows = {
      // CB at and just above its limit 1.1.
      {1.1, none, &clsVXHull::CoefBlock, 1.1, "CB coefficient", false},
      {1.1001, none, &clsVXHull::CoefBlock, 1.1001, "CB coefficient", true},
      // The same bulb ratio, by the silent coefficient and by the reporting one.
      {1.0, bulb, &clsVXHull::CoefAbtAxRatio, 1.2, "ABT/AX ratio", false},
      {1.0, bulb, &clsVXHull::CoefAbulbAxRatio, 1.2, "ABT/AX ratio", true},
      // CVOLp tests CVOL: without a waterline length it reports, though its own value is fine.
      {1.0, [](clsVXHull& h) { h.LengthWL(kFt, 0.0); }, &clsVXHull::CoefLpVol, cvolp, "CVOLp coefficient",
       true},
      {1.0, none, &clsVXHull::CoefLpVol, cvolp, "CVOLp coefficient", false},
  };
  for (UnitPreset preset : {UnitPreset::SI, UnitPreset::Imperial}) {
    for (const Row& r : rows) {
      // A box of 10 x 1 x 10 ft holding cb times its volume: lengths in whole feet read back
      // exactly, and the volume in cubic feet snaps to its 10 digits, so the limits are met exactly.
      HullModel m(preset);
      clsVXHull& h = *m.hull;
      h.LengthWL(kFt, 10.0);
      h.BeamWLMax(kFt, 1.0);
      h.DraftSubmergedMax(kFt, 10.0);
      h.AreaSectMax(kFt2, 10.0);
      h.LengthProjPlaningBottom(kFt, 10.0);
      h.Displacement(kKg, r.cb * 100.0 * 0.028316846592 * m.water->Density(kKgPerM3));
      r.set(h);
      EXPECT_NEAR((h.*r.fn)(), r.expected, 1e-9) << r.word << " " << r.pushed;
      EXPECT_EQ(Pushed(h, r.word), r.pushed) << r.word << ": " << h.ErrorText();
    }
  }
}

TEST(HullStationTest, ChineBeamIsHeldForwardWhileDeadriseAndHeightExtrapolate) {
  // x in m forward of the transom, chine beam, deadrise, chine height.
  const double rows[][4] = {
      {0.0, 3.6, 14.0, 0.25},     // aft station
      {5.5, 3.38, 18.4, 0.1675},  // between
      {10.0, 3.6, 22.0, 0.10},    // at the fwd station: the larger beam
      {12.0, 3.6, 23.6, 0.07},    // beyond it
      {-2.0, 3.68, 12.4, 0.28},   // aft of the transom
  };
  HullModel m;
  clsVXHull& h = EnterExampleShip(m);
  for (const auto& [x, beam, deadrise, height] : rows) {
    EXPECT_NEAR(h.CalcEffectiveChineBeam(x, kM), beam, 1e-9) << x;
    EXPECT_NEAR(h.CalcEffectiveAngleDeadriseDeg(x, kM), deadrise, 1e-9) << x;
    EXPECT_NEAR(h.CalcEffectiveZChineHeightBelowWL(x, kM), height, 1e-9) << x;
  }
  // hf = 1.6 tan 22 deg, ha = 1.8 tan 14 deg over 10 m; the keel adds the chine heights.
  EXPECT_NEAR(h.CalcEffectiveChineWarpDeg(), 1.1323126, 1e-6);
  EXPECT_NEAR(h.CalcStaticEffectiveBaselineTrimAngleDeg(), -0.2730212, 1e-6);

  // Both stations at one position: no slope, and the forward values.
  h.AftStationXPositionFwdTr(kM, 10.0);
  EXPECT_TRUE(h.CalcEffectiveChineWarpDeg() == 0.0 && h.CalcStaticEffectiveBaselineTrimAngleDeg() == 0.0);
  EXPECT_NEAR(h.CalcEffectiveAngleDeadriseDeg(3.0, kM), 22.0, 1e-12);

  // No aft station: the forward values everywhere, no slopes.
  h.AftStationXPositionFwdTr(kM, 0.0);
  h.AftStationChineBeam(kM, 0.0);
  EXPECT_NEAR(h.CalcEffectiveChineBeam(0.0, kM), 3.2, 1e-12);
  EXPECT_NEAR(h.CalcEffectiveZChineHeightBelowWL(12.0, kM), 0.10, 1e-12);
  EXPECT_TRUE(h.CalcEffectiveChineWarpDeg() == 0.0 && h.CalcStaticEffectiveBaselineTrimAngleDeg() == 0.0);
}

TEST(HullUnitsTest, ConvertingToOtherUnitsAndBackRestoresDataButNotTheLiftDeviceSizes) {
  HullModel m;
  clsVXHull& h = *m.hull;
  const auto fields = h.Fields();
  for (int i = 0; i < static_cast<int>(fields.size()); ++i) h.SetRaw(i, 1.0 + 0.37 * i);
  const auto before = h.CopyClass();
  const int chord = h.FieldIndex("TransomLiftDeviceChordDepth"), span = h.FieldIndex("TransomLiftDeviceSpan");
  // Imperial: every quantity but the two device sizes changes its number; SI again: all back.
  for (UnitPreset preset : {UnitPreset::Imperial, UnitPreset::SI}) {
    const auto old = m.units->CopyClass();
    ApplyUnitPreset(*m.units, preset);
    h.ConvertAllData(*m.units, *old);
    for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
      const bool kept = std::fabs(h.Raw(i) - before->Raw(i)) <= 1e-9 * before->Raw(i);
      EXPECT_EQ(kept,
                preset == UnitPreset::SI || fields[i].kind != FieldKind::Quantity || i == chord || i == span)
          << fields[i].name;
    }
  }
}

}  // namespace
}  // namespace velmar
