#include "vessel/hull.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "core/helpers.h"

namespace velmar {
namespace {

// Units (SigDigits 10), standard salt water and a hull, linked as the application links them.
struct Model {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units, water);

  explicit Model(UnitPreset preset = UnitPreset::SI) {
    ApplyUnitPreset(*units, preset);
    units->SigDigits(10);
    water->SetWaterPropertiesToStandardValues(0);
  }

  // Selects other units and converts the hull's data as the units command does.
  void ChangeUnits(const std::function<void(clsVXUnits&)>& select) {
    const auto old = units->CopyClass();
    select(*units);
    hull->ConvertAllData(*units, *old);
  }
};

bool Pushed(const clsVXHull& h, const std::string& word) {
  return h.ErrorText().find("\t" + word + "\r\n") != std::string::npos;
}

// The example ship of Holtrop & Mennen (1982), entered in metric units whatever the display
// units: LWL 205 m, B 32 m, T 10 m, volume 37500 m3 (displacement = volume x 1026 kg/m3),
// CM 0.98 (AX = CM B T), CWP 0.75 (AWP = CWP L B), S 7381.45 m2, ABT 20 m2, hB 4 m,
// AT 16 m2, lcb 0.75 % L aft of midships. XCF is assumed; the transom has no beam or
// immersion given, so both stay 0 (legal).
// Also a small hard-chine planing bottom (made-up data): chine stations at the transom and
// 10 m forward of it.
void EnterExampleShip(clsVXHull& h) {
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
  h.SternShapeFactor(1.0);  // Cstern 10
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
}

using CoefFn = double (clsVXHull::*)() const;

// Each inverse with the coefficient it undoes and the item it gives.
using InvFn = double (clsVXHull::*)(double) const;
struct InverseRow {
  InvFn inverse;
  CoefFn coefficient;
  const char* item;
};
const std::vector<InverseRow> kInverses = {
    {&clsVXHull::GetDisplacementFromCb, &clsVXHull::CoefBlock, "Displacement"},
    {&clsVXHull::GetDisplacementFromCvol, &clsVXHull::CoefLwlVol, "Displacement"},
    {&clsVXHull::GetWettedSurfaceFromCoefCS, &clsVXHull::CoefWettedSurfaceCS, "WettedSurface"},
    {&clsVXHull::GetBeamWLMaxFromLBRatio, &clsVXHull::CoefLwlBwlRatio, "BeamWLMax"},
    {&clsVXHull::GetDraftSubmergedMaxFromBTRatio, &clsVXHull::CoefBwlTvolRatio, "DraftSubmergedMax"},
    {&clsVXHull::GetDemihullSpacingFromSLRatio, &clsVXHull::CoefSLwlRatio, "DemihullSpacing"},
    {&clsVXHull::GetXBuoyancyFwdTrFromLCBLRatio, &clsVXHull::CoefLCBLwlRatio, "XBuoyancyFwdTr"},
    {&clsVXHull::GetXWaterplaneFwdTrFromLCFLRatio, &clsVXHull::CoefLCFLwlRatio, "XAreaWaterplaneFwdTr"},
    {&clsVXHull::GetBulbAreaSectFromAbtAxRatio, &clsVXHull::CoefAbtAxRatio, "BulbAreaSect"},
    {&clsVXHull::GetAreaSectAtTrFromAtAxRatio, &clsVXHull::CoefAtAxRatio, "AreaSectAtTr"},
    {&clsVXHull::GetMaxSectionAreaFromCx, &clsVXHull::CoefAreaSectMax, "AreaSectMax"},
    {&clsVXHull::GetWaterplaneAreaFromCw, &clsVXHull::CoefWaterplane, "AreaWaterplane"},
    {&clsVXHull::GetXGravityFwdTrFromLCGLPRatio, &clsVXHull::CoefLCGLpRatio, "XGravityFwdTr"},
};

TEST(HullCoefficientTest, ExampleShipGivesTheSameCoefficientsInSIAndImperialUnits) {
  struct Row {
    CoefFn fn;
    double expected;  // from the metric inputs by hand
  };
  const std::vector<Row> rows = {
      {&clsVXHull::CoefBlock, 0.5716463},              // 37500 / (205 x 32 x 10)
      {&clsVXHull::CoefPrismatic, 0.5833126},          // CB / CM
      {&clsVXHull::CoefVerticalPrismatic, 0.7621951},  // CB / CWP
      {&clsVXHull::CoefAreaSectMax, 0.98},
      {&clsVXHull::CoefLwlBwlRatio, 6.40625},
      {&clsVXHull::CoefBwlTvolRatio, 3.2},
      {&clsVXHull::CoefLambda, 0.6512825},  // 1.446 CP - 0.03 L/B
      {&clsVXHull::CoefWettedSurfaceFroudeCWS, 6.588514},
      {&clsVXHull::CoefWettedSurfaceCS, 2.662252},
      {&clsVXHull::CoefAtAxRatio, 0.05102041},
      {&clsVXHull::CoefAbtAxRatio, 0.06377551},
      {&clsVXHull::CoefLwlVol, 6.124586},
      {&clsVXHull::CoefVolBwl, 1.144409},
      {&clsVXHull::CoefLCBLwlRatio, 0.4925},
      {&clsVXHull::CoefLCFLwlRatio, 97.0 / 205.0},
      // Planing bottom: BPX at XCG 5.5 m is 3.2 + 0.4 x 4.5 / 10 = 3.38 m; the volume is
      // still the ship's, the lengths and areas are the planing hull's.
      {&clsVXHull::CoefVolBpx, 37500.0 / (3.38 * 3.38 * 3.38)},
      {&clsVXHull::CoefLpVol, 15.0 / std::cbrt(37500.0)},
      {&clsVXHull::CoefLCGBpRatio, 5.5 / 3.38},
      {&clsVXHull::CoefApVolRatio, 45.0 / std::pow(37500.0, 2.0 / 3.0)},
      {&clsVXHull::CoefLpBpxRatio, 15.0 / 3.38},
  };
  for (UnitPreset preset : {UnitPreset::SI, UnitPreset::Imperial}) {
    for (int config : {0, 1}) {  // a catamaran's coefficients are the plain ratios too
      Model m(preset);
      clsVXHull& h = *m.hull;
      EnterExampleShip(h);
      h.HullConfigType(config);
      for (size_t i = 0; i < rows.size(); ++i) {
        // The Imperial standard salt water is 1026.016 kg/m3: 1.6e-5 off in the volume.
        EXPECT_NEAR((h.*rows[i].fn)(), rows[i].expected, 3e-5 * rows[i].expected + 1e-12)
            << "row " << i << (preset == UnitPreset::SI ? " SI" : " Imperial") << " config " << config;
      }
      // Only the missing demihull spacing is reported, whatever the configuration.
      EXPECT_DOUBLE_EQ(h.CoefSLwlRatio(), 0.0);
      EXPECT_EQ(h.ErrorText(), "\tS/LWL ratio\r\n");
      EXPECT_EQ(h.CoefBlockFormatted(), "0.572");
      EXPECT_DOUBLE_EQ(h.CalcHoltropSternCoef(), 10.0);
    }
    // The inverses give back the item, rounded to 6 digits.
    Model m(preset);
    clsVXHull& h = *m.hull;
    EnterExampleShip(h);
    h.DemihullSpacing(kM, 40.0);
    for (const InverseRow& r : kInverses) {
      const double expected = h.Read(h.FieldIndex(r.item));
      const double v = (h.*r.inverse)((h.*r.coefficient)());
      EXPECT_NEAR(v, expected, 1e-5 * expected) << r.item;
      EXPECT_EQ(v, RoundToSigDigits(v, 6)) << r.item;
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
    EXPECT_EQ(h.GetBeamWLMaxFromLBRatio(-6.0), 0.0);
    EXPECT_TRUE(Pushed(h, "LWL/BWL ratio"));
  }
}

TEST(HullCoefficientTest, NewHullIsAllZeroAndReportsWhatIsMissing) {
  Model m;
  clsVXHull& h = *m.hull;
  for (int c = 0; c < static_cast<int>(clsVXHull::Coef::Count); ++c) {
    EXPECT_EQ(h.Coefficient(static_cast<clsVXHull::Coef>(c)), 0.0) << "coefficient " << c;
  }
  for (const InverseRow& r : kInverses) EXPECT_EQ((h.*r.inverse)(0.5), 0.0) << r.item;
  for (const char* word : {"Displacement", "Length on waterline", "CB coefficient", "CVOLp coefficient"}) {
    EXPECT_TRUE(Pushed(h, word)) << word;
  }
  // A hull without an immersed transom or bulb is legal.
  for (const char* word : {"ATR/AX", "BT/BWL ratio", "TTR/T ratio", "ABT/AX ratio", "Bulb sectional area"}) {
    EXPECT_FALSE(Pushed(h, word)) << word;
  }
}

TEST(HullCoefficientTest, RangeTestsPushAtTheirLimitsAndReturnTheValue) {
  struct Row {
    const char* what;
    double cb;                            // the box's block coefficient
    std::function<void(clsVXHull&)> set;  // further data
    CoefFn fn;
    double expected;
    const char* word;
    bool pushed;
  };
  const auto none = [](clsVXHull&) {};
  const std::vector<Row> rows = {
      {"CB 1.1", 1.1, none, &clsVXHull::CoefBlock, 1.1, "CB coefficient", false},
      {"CB 1.1001", 1.1001, none, &clsVXHull::CoefBlock, 1.1001, "CB coefficient", true},
      {"silent bulb ratio", 1.0, [](clsVXHull& h) { h.BulbAreaSect(kFt2, 12.0); }, &clsVXHull::CoefAbtAxRatio,
       1.2, "ABT/AX ratio", false},
      {"reporting bulb ratio", 1.0, [](clsVXHull& h) { h.BulbAreaSect(kFt2, 12.0); },
       &clsVXHull::CoefAbulbAxRatio, 1.2, "ABT/AX ratio", true},
      // CVOLp tests CVOL: without a waterline length it reports, though its own value is fine.
      {"CVOLp without LWL", 1.0,
       [](clsVXHull& h) {
         h.LengthWL(kFt, 0.0);
         h.LengthProjPlaningBottom(kFt, 10.0);
       },
       &clsVXHull::CoefLpVol, 10.0 / std::cbrt(100.0), "CVOLp coefficient", true},
      {"CVOLp with LWL", 1.0, [](clsVXHull& h) { h.LengthProjPlaningBottom(kFt, 10.0); },
       &clsVXHull::CoefLpVol, 10.0 / std::cbrt(100.0), "CVOLp coefficient", false},
  };
  for (UnitPreset preset : {UnitPreset::SI, UnitPreset::Imperial}) {
    for (const Row& r : rows) {
      // A box of 10 x 1 x 10 ft holding cb times its volume: lengths in whole feet read back
      // exactly, and the volume in cubic feet snaps to its 10 digits, so the limits are met exactly.
      Model m(preset);
      clsVXHull& h = *m.hull;
      h.LengthWL(kFt, 10.0);
      h.BeamWLMax(kFt, 1.0);
      h.DraftSubmergedMax(kFt, 10.0);
      h.AreaSectMax(kFt2, 10.0);
      h.Displacement(kKg, r.cb * 100.0 * 0.028316846592 * m.water->Density(kKgPerM3));
      r.set(h);
      h.ClearErrorStack();
      EXPECT_NEAR((h.*r.fn)(), r.expected, 1e-9) << r.what;
      EXPECT_EQ(Pushed(h, r.word), r.pushed) << r.what << ": " << h.ErrorText();
    }
  }
}

TEST(HullFieldTest, ReadChecksHoldAtTheirBounds) {
  struct Row {
    const char* field;
    double value;
    const char* word;  // "" for a legal value
  };
  const std::vector<Row> rows = {
      {"FwdStationAngleDeadriseDeg", -20.0, ""},
      {"FwdStationAngleDeadriseDeg", -20.1, "Deadrise angle at fwd station"},
      {"PropulsorCountPerHull", 0.0, "Propulsor count per hull"},
      {"XBuoyancyFwdTr", 0.0, "XCB fwd transom"},
      {"ZGravityBelowWL", -1.0, ""},
  };
  for (const Row& r : rows) {
    Model m;
    clsVXHull& h = *m.hull;
    const int f = h.FieldIndex(r.field);
    ASSERT_GE(f, 0) << r.field;
    h.Write(f, kCurrent, r.value);
    EXPECT_EQ(h.Read(f), r.value) << r.field;  // stored and returned as given
    EXPECT_EQ(h.ErrorsFound(), *r.word != '\0') << r.field << " " << r.value;
    EXPECT_TRUE(!*r.word || Pushed(h, r.word)) << r.field;
  }
}

TEST(HullStationTest, ChineBeamIsHeldForwardWhileDeadriseAndHeightExtrapolate) {
  struct Row {
    double x;  // m forward of the transom
    double beam, deadrise, height;
  };
  const std::vector<Row> rows = {
      {0.0, 3.6, 14.0, 0.25},     // aft station
      {5.5, 3.38, 18.4, 0.1675},  // between
      {10.0, 3.6, 22.0, 0.10},    // at the fwd station: the larger beam
      {12.0, 3.6, 23.6, 0.07},    // beyond it
      {-2.0, 3.68, 12.4, 0.28},   // aft of the transom
  };
  Model m;
  clsVXHull& h = *m.hull;
  EnterExampleShip(h);
  for (const Row& r : rows) {
    EXPECT_NEAR(h.CalcEffectiveChineBeam(r.x, kM), r.beam, 1e-9) << r.x;
    EXPECT_NEAR(h.CalcEffectiveAngleDeadriseDeg(r.x, kM), r.deadrise, 1e-9) << r.x;
    EXPECT_NEAR(h.CalcEffectiveZChineHeightBelowWL(r.x, kM), r.height, 1e-9) << r.x;
    // The same stations read in feet.
    EXPECT_NEAR(h.CalcEffectiveChineBeam(r.x / 0.3048, kFt), r.beam / 0.3048, 1e-8) << r.x;
  }
  // hf = 1.6 tan 22 deg, ha = 1.8 tan 14 deg over 10 m; the keel adds the chine heights.
  EXPECT_NEAR(h.CalcEffectiveChineWarpDeg(), 1.1323126, 1e-6);
  EXPECT_NEAR(h.CalcStaticEffectiveBaselineTrimAngleDeg(), -0.2730212, 1e-6);

  // Both stations at one position: no slope, and the forward values.
  h.AftStationXPositionFwdTr(kM, 10.0);
  EXPECT_EQ(h.CalcEffectiveChineWarpDeg(), 0.0);
  EXPECT_EQ(h.CalcStaticEffectiveBaselineTrimAngleDeg(), 0.0);
  EXPECT_NEAR(h.CalcEffectiveAngleDeadriseDeg(3.0, kM), 22.0, 1e-12);

  // No aft station: the forward values everywhere, no slopes.
  h.AftStationXPositionFwdTr(kM, 0.0);
  h.AftStationChineBeam(kM, 0.0);
  for (double x : {0.0, 5.5, 12.0}) {
    EXPECT_NEAR(h.CalcEffectiveChineBeam(x, kM), 3.2, 1e-12);
    EXPECT_NEAR(h.CalcEffectiveAngleDeadriseDeg(x, kM), 22.0, 1e-12);
    EXPECT_NEAR(h.CalcEffectiveZChineHeightBelowWL(x, kM), 0.10, 1e-12);
  }
  EXPECT_EQ(h.CalcEffectiveChineWarpDeg(), 0.0);
  EXPECT_EQ(h.CalcStaticEffectiveBaselineTrimAngleDeg(), 0.0);
}

TEST(HullUnitsTest, ConvertingTwiceAndBackRestoresDataButNotTheLiftDeviceSizes) {
  Model m;
  clsVXHull& h = *m.hull;
  const auto fields = h.Fields();
  const int n = static_cast<int>(fields.size());
  std::vector<double> before(n);
  for (int i = 0; i < n; ++i) h.SetRaw(i, before[i] = 1.0 + 0.37 * i);
  const int chord = h.FieldIndex("TransomLiftDeviceChordDepth");
  const int span = h.FieldIndex("TransomLiftDeviceSpan");

  m.ChangeUnits([](clsVXUnits& u) { ApplyUnitPreset(u, UnitPreset::Imperial); });
  EXPECT_NEAR(h.LengthWL(kCurrent), h.LengthWL(kM) / 0.3048, 1e-8);
  m.ChangeUnits([](clsVXUnits& u) {
    u.LengthIndex(kMm);
    u.AreaIndex(kIn2);
    u.WeightIndex(kLb);
    u.PropLengthIndex(kIn);
  });
  m.ChangeUnits([](clsVXUnits& u) { ApplyUnitPreset(u, UnitPreset::SI); });
  for (int i = 0; i < n; ++i) EXPECT_NEAR(h.Raw(i), before[i], 1e-9 * before[i]) << fields[i].name;

  // Only the two device sizes keep their numbers through a change.
  m.ChangeUnits([](clsVXUnits& u) { ApplyUnitPreset(u, UnitPreset::Imperial); });
  for (int i = 0; i < n; ++i) {
    if (fields[i].kind == FieldKind::Quantity) {
      EXPECT_EQ(h.Raw(i) == before[i], i == chord || i == span) << fields[i].name;
    }
  }
}

TEST(HullFieldTest, CaptionsFollowTheDeviceTypeAndTheLengthUnit) {
  Model m;
  clsVXHull& h = *m.hull;
  EXPECT_EQ(h.TransomLiftDeviceChordDepthFieldName(), "    Chord length:");
  h.TransomLiftDeviceType(2);
  EXPECT_EQ(h.TransomLiftDeviceChordDepthFieldName(), "    Depth:");
  m.ChangeUnits([](clsVXUnits& u) { ApplyUnitPreset(u, UnitPreset::Imperial); });
  EXPECT_EQ(h.PropellerTunnelEffectiveDiameterFieldNameWithUnits(), "  Effective diam [ft]:");
}

TEST(HullDataTest, CopyClassCopiesDataAndLinksButNotTheErrorStack) {
  Model m;
  clsVXHull& h = *m.hull;
  EnterExampleShip(h);
  h.CoefSLwlRatio();  // pushes
  ASSERT_FALSE(h.ErrorText().empty());
  const auto copy = h.CopyClass();
  EXPECT_TRUE(copy->ErrorText().empty());
  EXPECT_EQ(copy->Units(), m.units);
  EXPECT_EQ(copy->WaterProperties(), m.water);
  for (int i = 0; i < static_cast<int>(h.Fields().size()); ++i) EXPECT_EQ(copy->Raw(i), h.Raw(i));
}

}  // namespace
}  // namespace velmar
