// Wind, wave and shallow-water drag: the check values of each method family, and what the
// prediction writes into the added-drag columns.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "../core/test_support.h"
#include "app/application.h"
#include "core/diagnostics.h"
#include "example_ship.h"
#include "resistance/resistance_driver.h"
#include "resistance/channel_drag.h"
#include "resistance/seas_drag.h"
#include "resistance/wind_drag.h"

namespace velmar {
namespace {

// Relative agreement to the printed digits of a check value.
void ExpectClose(double got, const std::string& want, const std::string& where) {
  if (want == "-") return;
  const double w = std::stod(want);
  EXPECT_NEAR(got, w, std::max(1e-6, 2e-6 * std::fabs(w))) << where;
}

int MethodIndex(const LabelList& labels, const std::string& label) {
  for (size_t i = 0; i < labels.labels.size(); ++i)
    if (labels.labels[i] == label) return static_cast<int>(i);
  ADD_FAILURE() << "no method " << label;
  return -1;
}

TEST(AddedDragTest, WindMethodsReproduceTheCheckValues) {
  Windage w;
  w.lengthOA = 200.0;
  w.beam = 32.0;
  w.areaFront = 800.0;
  w.areaProfile = 3000.0;
  w.areaSuperProfile = 1000.0;
  w.xCentroidFwdMid = -5.0;
  w.zCentroid = 12.0;
  w.heightTop = 40.0;
  w.perimeter = 450.0;
  w.mastGroups = 2;
  for (const auto& r : testing::ReadTable("wind_drag_check_values.txt", 5)) {
    const int method = MethodIndex(kWindDragMethodLabels, r[0]);
    if (r[1] != "-") w.vesselType = w.dataSet = static_cast<int>(r.Num(1));
    double got = 0.0;
    if (r[3] == "R_AA") {
      ASSERT_TRUE(WindResistanceIncrease(method, w, 10.0, r.Num(2), 7.716667, got)) << r.where;
      EXPECT_NEAR(got, r.Num(4), 0.1) << r.where;
      continue;
    }
    ASSERT_TRUE(WindResistanceCoefficient(method, w, r.Num(2), got)) << r.where;
    // Blendermann and the ITTC sets give C_X with x forward: the resistance is -C_X.
    if (r[3] == "C_X" && (method == kWindBlendermann || method == kWindITTCDataSet)) got = -got;
    ExpectClose(got, r[4], r.where);
  }
}

TEST(AddedDragTest, WaveMethodsReproduceTheCheckValues) {
  WaveShip s;
  s.length = 200.0;
  s.beam = 32.0;
  s.draft = 10.0;
  s.cb = 0.65;
  s.kyy = 0.25;
  s.rho = 1025.0;
  s.g = 9.81;
  const double speed = 7.716667;
  for (const auto& r : testing::ReadTable("seas_drag_check_values.txt", 10)) {
    if (r[0] == "STAWAVE-1") {
      WaveShip b = s;
      b.beam = r.Num(2);
      b.bowLength = r.Num(3);
      ExpectClose(Stawave1(b, r.Num(1)), r[7], r.where);
    } else if (r[0] == "STAWAVE-2 regular") {
      // The frequencies are printed to six digits, and the motion part goes with their -8.5th
      // power.
      const Stawave2Transfer t = Stawave2Regular(s, r.Num(1), speed);
      EXPECT_NEAR(t.motion, r.Num(7), 5e-5 * r.Num(7)) << r.where;
      EXPECT_NEAR(t.reflection, r.Num(8), 1e-5 * r.Num(8)) << r.where;
    } else if (r[0] == "STAWAVE-2 sea") {
      const Stawave2Transfer t = Stawave2Irregular(s, r.Num(1), r.Num(2), speed);
      EXPECT_NEAR(t.motion, r.Num(7), 0.1) << r.where;
      EXPECT_NEAR(t.reflection, r.Num(8), 0.1) << r.where;
    } else if (r[0] == "Kwon") {
      const int condition = r[1] == "ballast" ? kSeasBallast : r[1] == "container" ? kSeasContainerShip : kSeasLaden;
      const KwonSpeedLoss k = KwonPercentSpeedLoss(r.Num(4), r.Num(6), r.Num(3), r.Num(2), r.Num(5), condition);
      ExpectClose(k.percent, r[7], r.where);
      ExpectClose(k.cU, r[8], r.where);
      ExpectClose(k.cForm, r[9], r.where);
    } else if (r[0] == "Speed loss") {
      const double loss = r.Num(3);
      double drag = 0.0;
      ASSERT_TRUE(SpeedLossDrag(r.Num(1), r.Num(2), [loss](double) { return loss; }, drag)) << r.where;
      ExpectClose(drag, r[7], r.where);
    } else {
      ADD_FAILURE() << r.where << ": unknown method " << r[0];
    }
  }
}

TEST(AddedDragTest, ShallowWaterMethodsReproduceTheCheckValues) {
  for (const auto& r : testing::ReadTable("channel_drag_check_values.txt", 13)) {
    if (r[0] == "Lackenby") {
      ExpectClose(LackenbySpeedLoss(r.Num(1), r.Num(2), r.Num(3), 9.81), r[7], r.where);
    } else if (r[0] == "Raven") {
      RavenCorrection c;
      ASSERT_TRUE(RavenCorrectionOf(r.Num(1), r.Num(2), r.Num(3), r.Num(4), r.Num(5), r.Num(6), c, 9.81));
      const double got[] = {c.viscousRatio, c.frh, c.frhd, c.sinkage, c.volumeRatio, c.rSink};
      for (size_t i = 0; i < 6; ++i) ExpectClose(got[i], r[7 + i], r.where);
    } else if (r[0] == "Karpov") {
      ExpectClose(KarpovAlpha(r.Num(1), r.Num(2)), r[7], r.where);
    } else {
      ADD_FAILURE() << r.where << ": unknown method " << r[0];
    }
  }
}

// Through the prediction (the example ship at 15 kn): a method without coefficients, a missing
// input or an unsupported setting stops with its text; a working method fills its column in
// the current unit.
TEST(AddedDragTest, ThePredictionFillsTheColumnOrStopsWithTheText) {
  struct Case {
    void (*set)(clsVXResistance&, clsVXEnvironment&);
    const char* failure;
  };
  const Case cases[] = {
      {[](clsVXResistance& r, clsVXEnvironment&) { r.WindDragMethod(kWindTaylor); },
       "Wind drag method not available: Taylor"},
      {[](clsVXResistance& r, clsVXEnvironment&) { r.SeasDragMethod(kSeasAertssen); },
       "Sea-state drag method not available: Aertssen"},
      {[](clsVXResistance& r, clsVXEnvironment&) { r.ChannelDragMethod(kChannelSchlichting); },
       "Shallow-water drag method not available: Schlichting"},
      {[](clsVXResistance& r, clsVXEnvironment&) { r.WindDragMethod(kWindFujiwara); },
       "Wind drag (Fujiwara (ITTC)) needs: Profile windage area; Length overall; Superst top above WL"},
      {[](clsVXResistance& r, clsVXEnvironment& e) {
         r.WindDragMethod(kWindBlendermann);
         e.WindGradientCorr(1);
       },
       "Wind gradient correction not available"},
      {[](clsVXResistance& r, clsVXEnvironment& e) {
         r.ChannelDragMethod(kChannelLackenby);
         e.ShallowWaterDepth(kCurrent, 20.0);
         e.ShallowWaterType(1);
       },
       "Restricted channel not available: Lackenby is for open shallow water"},
      {[](clsVXResistance& r, clsVXEnvironment& e) {
         r.WindDragMethod(kWindBlendermann);
         e.WindHullTransverseArea(kCurrent, 800.0);
         e.WindHullProfileArea(kCurrent, 3000.0);
         e.WindSpeed(kMPerSec, 10.0);
       },
       nullptr},
      {[](clsVXResistance& r, clsVXEnvironment& e) {
         r.SeasDragMethod(kSeasStawave1);
         e.SeasSignificantWaveHeight(kCurrent, 2.0);
         e.SeasLengthBowWL(kCurrent, 30.0);
       },
       nullptr},
  };
  for (const Case& c : cases) {
    testing::EnterExampleShip({15.0});
    ModelSet& p = App().primary;
    clsVXResistance& r = *p.Resistance;
    const int calc = 1;
    r.WindDragEnabled(calc), r.SeasDragEnabled(calc), r.ChannelDragEnabled(calc);
    r.WindDragMethod(kWindITTCDataSet), r.SeasDragMethod(kSeasKwon), r.ChannelDragMethod(kChannelLackenby);
    p.Environment->WindHullTransverseArea(kCurrent, 1.0);
    p.Environment->ShallowWaterDepth(kCurrent, 1000.0);
    c.set(r, *p.Environment);
    if (c.failure) {
      EXPECT_FALSE(CalcResistancePrediction()) << c.failure;
      const std::string cause = testing::CalcCause();
      EXPECT_NE(cause.find(c.failure), std::string::npos) << cause;
      continue;
    }
    ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
    const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
    const double v = 15.0 * 0.5144444;
    double want = 0.0;
    if (r.WindDragMethod() == kWindBlendermann) {
      ASSERT_TRUE(WindResistanceIncrease(kWindBlendermann, WindageOf(*p.Environment, *p.Hull), 10.0, 0.0, v, want));
      EXPECT_NEAR(sp.DragWind(0, kN), want, 1e-3 * want);
    } else {
      WaveShip s;
      s.beam = p.Hull->BeamWLMax(kM);
      s.bowLength = 30.0;
      s.rho = p.WaterProperties->Density(kKgPerM3);
      EXPECT_NEAR(sp.DragSeas(0, kN), Stawave1(s, 2.0), 1e-6 * Stawave1(s, 2.0));
    }
    EXPECT_NEAR(sp.DragTotal(0, kN),
                sp.DragBareHull(0, kN) + sp.DragAppendages(0, kN) + sp.DragWind(0, kN) + sp.DragSeas(0, kN) +
                    sp.DragChannel(0, kN) + sp.DragMargin(0, kN),
                1e-6 * sp.DragTotal(0, kN));
  }
}

}  // namespace
}  // namespace velmar
