// Appendage drag: the components of the Holtrop method with their form factors and surfaces,
// the two with formulas of their own, the percentage method and the failures.
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
    app().ClearAllData();
    app().PropulsorCountPerHull(0);
    // The flow of the row, as the driver leaves it before the appendages.
    sp().Speed(0, kFtPerSec, 20.0);
    sp().CoefReynoldsLength(0, 1.0e9);
    sp().CoefDragBareHullCorrAllowance(0, 0.0004);
    q = 0.5 * water().Density(kSlugPerFt3) * 20.0 * 20.0;
    cf = CalcFrictionITTC57(1.0e9);
  }
  clsVXAppendage& app() { return *App().primary.Appendage; }
  clsVXWaterProperties& water() { return *App().primary.WaterProperties; }
  clsVXSpeedPerformance& sp() { return *App().primary.SpeedPerformance; }
  double Component() {
    double drag = -1.0;
    EXPECT_TRUE(CalcAppendageHoltropComponent(drag, water(), app(), sp(), 0));
    return drag;
  }
  bool Drag(double& d) {
    ModelSet& p = App().primary;
    return CalcAppendageDrag(d, water(), *p.Hull, app(), *p.ITTC78, *p.Resistance, sp(), 0);
  }
  // (CF (1+k2) + CA) q S, S in m2.
  double Viscous(double f, double surfaceM2) const { return (cf * f + 0.0004) * q * surfaceM2 * kM2ToFt2; }

  double q = 0.0, cf = 0.0;
};

// The form factors 1+k2 of Holtrop (1984) not met in the sum below; a rudder of an unknown
// type counts as a balanced foil, and a stabilizer multiplier below 1 leaves the factor.
TEST(AppendageFormFactorTest, HoltropValues) {
  EXPECT_EQ(AppendageFormFactorRudder(0), 2.5);  // balanced foil
  EXPECT_EQ(AppendageFormFactorRudder(1), 3.5);  // balanced plate
  EXPECT_EQ(AppendageFormFactorRudder(3), 1.5);  // aft of stern
  EXPECT_EQ(AppendageFormFactorRudder(9), 2.5);
  EXPECT_EQ(AppendageFormFactorSkegKeel(0), 1.75);
  EXPECT_EQ(AppendageFormFactorStabilizer(0.5), 2.8);
}

// Every kind at once, each with distinct sizes, so that a component read with the wrong
// count, surface or form factor shows in the sum.
TEST_F(AppendageDragTest, ComponentsAddTheirViscousDragAndOwnFormulas) {
  clsVXAppendage& a = app();
  a.PropulsorCountPerHull(2), a.AngleShaftDeg(10.0), a.ShaftWettedSurface(kM2, 3.0);
  a.ShaftStrutBossingWettedSurface(kM2, 0.5), a.ShaftHullBossingWettedSurface(kM2, 0.7);
  a.StrutCount(2), a.StrutWettedSurface(kM2, 3.0), a.StrutPalmWidth(kM, 0.5), a.StrutPalmDepth(kM, 0.4);
  a.RudderCount(2), a.RudderType(2), a.RudderWettedSurface(kM2, 10.0);
  a.SkegKeelCount(1), a.SkegKeelType(1), a.SkegKeelWettedSurface(kM2, 30.0);
  a.StabilizerCount(2), a.StabilizerWettedSurface(kM2, 4.0), a.StabilizerDynamicMultiplier(1.5);
  a.BilgeKeelCount(2), a.BilgeKeelWettedSurface(kM2, 40.0);
  a.SonarDomeCount(1), a.SonarDomeWettedSurface(kM2, 12.0);
  a.TunnelThrusterCount(2), a.TunnelThrusterDiameter(kM, 2.0);
  a.MiscAppendageCount(3), a.MiscAppendageDragCoef(0.8), a.MiscAppendageDragArea(kM2, 1.5);
  const double viscous = Viscous(1.2 - 0.3 + 1.1, 6.0) + Viscous(3.5, 1.0 + 1.4) +
                         Viscous(4.0, (0.2 + 3.0) * 2 * 2) + Viscous(1.35, 20.0) + Viscous(2.8, 30.0) +
                         Viscous(2.8 * 1.5, 8.0) + Viscous(1.4, 80.0) + Viscous(2.7, 12.0);
  // Holtrop (1984): 0.5 rho V^2 (2 x 0.0075 Pi) d^2 per tunnel.
  EXPECT_DOUBLE_EQ(CalcTunnelThrusterDrag(10.0, 2.0, 1.0), 100.0 * 0.015 * Pi);
  const double dFt = 2.0 / 0.3048;
  const double own = 2.0 * q * 0.015 * Pi * dFt * dFt + 3.0 * q * 0.8 * 1.5 * kM2ToFt2;
  EXPECT_NEAR(Component(), viscous + own, 1e-8 * (viscous + own));  // the reads round to 10 digits
  EXPECT_EQ(a.ErrorText(), "");
}

TEST_F(AppendageDragTest, NoAppendagesGiveNoDrag) {
  // Sizes without counts are absent appendages; so are struts and bossings without shafts.
  app().ShaftWettedSurface(kM2, 3.0);
  app().ShaftHullBossingWettedSurface(kM2, 0.7);
  app().StrutCount(2), app().StrutWettedSurface(kM2, 3.0);
  app().RudderWettedSurface(kM2, 10.0);
  app().TunnelThrusterDiameter(kM, 2.0);
  EXPECT_EQ(Component(), 0.0);
  EXPECT_EQ(app().ErrorText(), "");  // the words of absent appendages are cleared
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
    ASSERT_TRUE(Drag(drag));
    EXPECT_NEAR(drag, c.drag, 1e-6) << c.percent;  // 50000 lbf stored in kN
    EXPECT_EQ(app().ErrorText(), "");
  }
}

TEST_F(AppendageDragTest, FailuresReportTheirCause) {
  auto drag = [&](double& d) { return Drag(d); };
  auto component = [&](double& d) { return CalcAppendageHoltropComponent(d, water(), app(), sp(), 0); };
  auto percentage = [&](double& d) { return CalcAppendagePercentage(d, app(), sp(), 0); };
  struct Case {
    const char* name;
    std::function<void()> spoil;
    std::function<bool(double&)> run;
    const char* cause;
    double dragAfter;  // the methods leave the drag as it stands; CalcAppendageDrag starts at 0
    const char* location = nullptr;
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
      // The step keeps its historical wording.
      {"location of the step", [] { App().primary.Resistance->AppendageDragMethod(3); }, drag, "", 0.0,
       "wind drag prediction"},
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
    if (c.location) {
      EXPECT_EQ(GetCalcLocation(), c.location);
    }
    CalcErrorsPending();
    EXPECT_NE(GetCalcErrorText().find(c.cause), std::string::npos) << GetCalcErrorText();
  }
}

}  // namespace
}  // namespace velmar
