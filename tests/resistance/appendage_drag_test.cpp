// Appendage drag: each component of the Holtrop method with its form factor and surface, the
// two components with formulas of their own, the percentage method and the failures.
#include "resistance/appendage_drag.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "example_ship.h"
#include "resistance/friction.h"

namespace velmar {
namespace {

constexpr double kM2ToFt2 = 1.0 / (0.3048 * 0.3048);

struct AppendageDragTest : ::testing::Test {
  void SetUp() override {
    testing::EnterExampleShip({10.0});
    ClearAppendages();
    // The flow of the row, as the driver leaves it before the appendages.
    sp().Speed(0, kFtPerSec, 20.0);
    sp().CoefReynoldsLength(0, 1.0e9);
    sp().CoefDragBareHullCorrAllowance(0, 0.0004);
    rho = water().Density(kSlugPerFt3);
    q = 0.5 * rho * 20.0 * 20.0;
    cf = CalcFrictionITTC57(1.0e9);
  }
  void ClearAppendages() {
    app().ClearAllData();
    app().PropulsorCountPerHull(0);
  }
  clsVXAppendage& app() { return *App().primary.Appendage; }
  clsVXWaterProperties& water() { return *App().primary.WaterProperties; }
  clsVXSpeedPerformance& sp() { return *App().primary.SpeedPerformance; }
  double Component() {
    double drag = -1.0;
    EXPECT_TRUE(CalcAppendageHoltropComponent(drag, water(), app(), sp(), 0));
    return drag;
  }
  // (CF (1+k2) + CA) q S, S in m2.
  double Viscous(double f, double surfaceM2) const { return (cf * f + 0.0004) * q * surfaceM2 * kM2ToFt2; }

  double rho = 0.0, q = 0.0, cf = 0.0;
};

TEST_F(AppendageDragTest, EachComponentAddsItsViscousDragWithItsFormFactor) {
  using Setup = std::function<void(clsVXAppendage&)>;
  struct Case {
    const char* name;
    Setup setup;
    double formFactor;  // -1: the case gives `surface` as the whole drag in lbf
    double surface;     // total wetted surface in m2
  };
  const double tunnel = CalcTunnelThrusterDrag(20.0, 0.0, 0.0);  // 0 at no density
  EXPECT_EQ(tunnel, 0.0);
  const Case cases[] = {
      {"shafts at 0 deg",
       [](clsVXAppendage& a) { a.PropulsorCountPerHull(2), a.ShaftWettedSurface(kM2, 3.0); }, 1.2, 6.0},
      {"shafts at 10 deg",
       [](clsVXAppendage& a) {
         a.PropulsorCountPerHull(2), a.AngleShaftDeg(10.0), a.ShaftWettedSurface(kM2, 3.0);
       },
       1.2 - 0.3 + 1.1, 6.0},
      {"strut bossings",
       [](clsVXAppendage& a) { a.PropulsorCountPerHull(2), a.ShaftStrutBossingWettedSurface(kM2, 0.5); }, 3.5,
       1.0},
      {"hull bossings",
       [](clsVXAppendage& a) { a.PropulsorCountPerHull(1), a.ShaftHullBossingWettedSurface(kM2, 0.7); }, 3.5,
       0.7},
      {"struts with palms",
       [](clsVXAppendage& a) {
         a.PropulsorCountPerHull(2), a.StrutCount(2), a.StrutWettedSurface(kM2, 3.0);
         a.StrutPalmWidth(kM, 0.5), a.StrutPalmDepth(kM, 0.4);
       },
       4.0, (0.2 + 3.0) * 2 * 2},
      {"struts without shafts", [](clsVXAppendage& a) { a.StrutCount(2), a.StrutWettedSurface(kM2, 3.0); },
       4.0, 0.0},
      {"rudder, balanced foil", [](clsVXAppendage& a) { a.RudderCount(2), a.RudderWettedSurface(kM2, 10.0); },
       2.5, 20.0},
      {"rudder, balanced plate",
       [](clsVXAppendage& a) { a.RudderCount(1), a.RudderType(1), a.RudderWettedSurface(kM2, 10.0); }, 3.5,
       10.0},
      {"rudder aft of skeg",
       [](clsVXAppendage& a) { a.RudderCount(1), a.RudderType(2), a.RudderWettedSurface(kM2, 10.0); }, 1.35,
       10.0},
      {"rudder aft of stern",
       [](clsVXAppendage& a) { a.RudderCount(1), a.RudderType(3), a.RudderWettedSurface(kM2, 10.0); }, 1.5,
       10.0},
      {"rudder of an unknown type",
       [](clsVXAppendage& a) { a.RudderCount(1), a.RudderType(9), a.RudderWettedSurface(kM2, 10.0); }, 2.5,
       10.0},
      {"skeg", [](clsVXAppendage& a) { a.SkegKeelCount(1), a.SkegKeelWettedSurface(kM2, 30.0); }, 1.75, 30.0},
      {"keel",
       [](clsVXAppendage& a) { a.SkegKeelCount(1), a.SkegKeelType(1), a.SkegKeelWettedSurface(kM2, 30.0); },
       2.8, 30.0},
      {"stabilizers at rest",
       [](clsVXAppendage& a) {
         a.StabilizerCount(2), a.StabilizerWettedSurface(kM2, 4.0), a.StabilizerDynamicMultiplier(1.0);
       },
       2.8, 8.0},
      {"stabilizers, multiplier below 1",
       [](clsVXAppendage& a) {
         a.StabilizerCount(2), a.StabilizerWettedSurface(kM2, 4.0), a.StabilizerDynamicMultiplier(0.5);
       },
       2.8, 8.0},
      {"stabilizers at work",
       [](clsVXAppendage& a) {
         a.StabilizerCount(2), a.StabilizerWettedSurface(kM2, 4.0), a.StabilizerDynamicMultiplier(1.5);
       },
       2.8 * 1.5, 8.0},
      {"bilge keels", [](clsVXAppendage& a) { a.BilgeKeelCount(2), a.BilgeKeelWettedSurface(kM2, 40.0); },
       1.4, 80.0},
      {"sonar dome", [](clsVXAppendage& a) { a.SonarDomeCount(1), a.SonarDomeWettedSurface(kM2, 12.0); }, 2.7,
       12.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ClearAppendages();
    c.setup(app());
    EXPECT_NEAR(Component(), Viscous(c.formFactor, c.surface), 1e-9 * Viscous(c.formFactor, 100.0));
    EXPECT_EQ(app().ErrorText(), "");  // the words of absent appendages are cleared
  }
}

TEST_F(AppendageDragTest, ThrustersAndMiscellaneousHaveTheirOwnFormulas) {
  // Holtrop (1984): 0.5 rho V^2 (2 x 0.0075 Pi) d^2 per tunnel.
  EXPECT_DOUBLE_EQ(CalcTunnelThrusterDrag(10.0, 2.0, 1.0), 100.0 * 0.015 * Pi);
  app().TunnelThrusterCount(2);
  app().TunnelThrusterDiameter(kM, 2.0);
  const double dFt = 2.0 / 0.3048;
  const double thrusters = 2.0 * q * 0.015 * Pi * dFt * dFt;
  EXPECT_NEAR(Component(), thrusters, 1e-8 * thrusters);  // the reads round to 10 digits
  ClearAppendages();
  app().MiscAppendageCount(3);
  app().MiscAppendageDragCoef(0.8);
  app().MiscAppendageDragArea(kM2, 1.5);
  const double misc = 3.0 * q * 0.8 * 1.5 * kM2ToFt2;
  EXPECT_NEAR(Component(), misc, 1e-8 * misc);
}

TEST_F(AppendageDragTest, NoAppendagesGiveNoDrag) {
  // Sizes without counts are absent appendages.
  app().ShaftWettedSurface(kM2, 3.0);
  app().RudderWettedSurface(kM2, 10.0);
  app().TunnelThrusterDiameter(kM, 2.0);
  EXPECT_EQ(Component(), 0.0);
  EXPECT_EQ(app().ErrorText(), "");
}

TEST_F(AppendageDragTest, PercentageOfTheSingleHullDrag) {
  App().primary.Resistance->AppendageDragMethod(kAppendagePercentage);
  sp().DragBareHullIndividual(0, kLbf, 50000.0);
  sp().DragBareHull(0, kLbf, 100000.0);  // a twin hull: the percentage is of one hull
  struct Case {
    double percent, drag;
  };
  for (const Case& c : {Case{0.0, 0.0}, Case{-5.0, 0.0}, Case{8.0, 4000.0}}) {
    app().PercentageHullDrag(c.percent);
    double drag = -1.0;
    ASSERT_TRUE(CalcAppendageDrag(drag, water(), *App().primary.Hull, app(), *App().primary.ITTC78,
                                  *App().primary.Resistance, sp(), 0));
    EXPECT_NEAR(drag, c.drag, 1e-6) << c.percent;  // 50000 lbf stored in kN
    EXPECT_EQ(app().ErrorText(), "");
  }
}

TEST_F(AppendageDragTest, FailuresReportTheirCause) {
  auto drag = [&](double& d) {
    return CalcAppendageDrag(d, water(), *App().primary.Hull, app(), *App().primary.ITTC78,
                             *App().primary.Resistance, sp(), 0);
  };
  auto component = [&](double& d) { return CalcAppendageHoltropComponent(d, water(), app(), sp(), 0); };
  auto percentage = [&](double& d) { return CalcAppendagePercentage(d, app(), sp(), 0); };
  struct Case {
    const char* name;
    std::function<void()> spoil;
    std::function<bool(double&)> run;
    const char* cause;
    double dragAfter;  // the methods leave the drag as it stands; CalcAppendageDrag starts at 0
  };
  const Case cases[] = {
      {"no water density",
       [&] {
         water().WaterDefinitionIndex(3);  // custom water without a density
         water().Density(kCurrent, 0.0);
       },
       component, "Water density", 99.0},
      {"no speed", [&] { sp().Speed(0, kCurrent, 0.0); }, component, "Speed", 99.0},
      {"row outside the table", [] {},
       [&](double& d) { return CalcAppendageHoltropComponent(d, water(), app(), sp(), 3); }, "Run-time error",
       99.0},
      // The driver has read a speed of 0; the percentage method passes the stack on.
      {"percentage after a speed error", [&] { sp().Speed(0, kCurrent, 0.0), sp().Speed(0, kCurrent); },
       percentage, "Speed", 99.0},
      {"method without formulas", [] { App().primary.Resistance->AppendageDragMethod(8); }, drag,
       "Appendage drag method not available: Teeters (Sailboat)", 0.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SetUp();
    app().RudderCount(1);
    app().RudderWettedSurface(kM2, 10.0);
    c.spoil();
    double d = 99.0;
    EXPECT_FALSE(c.run(d));
    EXPECT_EQ(d, c.dragAfter);
    CalcErrorsPending();
    EXPECT_NE(GetCalcErrorText().find(c.cause), std::string::npos) << GetCalcErrorText();
  }
}

TEST_F(AppendageDragTest, LocationOfTheAppendageStepKeepsItsHistoricalWording) {
  App().primary.Resistance->AppendageDragMethod(3);
  double d = 1.0;
  EXPECT_FALSE(CalcAppendageDrag(d, water(), *App().primary.Hull, app(), *App().primary.ITTC78,
                                 *App().primary.Resistance, sp(), 0));
  EXPECT_EQ(d, 0.0);
  EXPECT_EQ(GetCalcLocation(), "wind drag prediction");
}

}  // namespace
}  // namespace velmar
