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
    app().ClearAllData(), app().PropulsorCountPerHull(0);
    // The flow of the row, as the driver leaves it before the appendages.
    sp().Speed(0, kFtPerSec, 20.0), sp().CoefReynoldsLength(0, 1.0e9);
    sp().CoefDragBareHullCorrAllowance(0, 0.0004);
    q = 0.5 * water().Density(kSlugPerFt3) * 20.0 * 20.0, cf = CalcFrictionITTC57(1.0e9);
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

// Every kind at once, each with distinct sizes, so that a component read with the wrong
// count, surface or form factor shows in the sum. Sizes without counts are absent appendages
// first; so are struts and bossings without shafts.
TEST_F(AppendageDragTest, ComponentsAddTheirViscousDragAndOwnFormulas) {
  clsVXAppendage& a = app();
  a.ShaftWettedSurface(kM2, 3.0), a.ShaftHullBossingWettedSurface(kM2, 0.7), a.StrutCount(2);
  a.StrutWettedSurface(kM2, 3.0), a.RudderWettedSurface(kM2, 10.0), a.TunnelThrusterDiameter(kM, 2.0);
  EXPECT_EQ(Component(), 0.0);
  EXPECT_EQ(a.ErrorText(), "");  // the words of absent appendages are cleared

  a.PropulsorCountPerHull(2), a.ShaftStrutBossingWettedSurface(kM2, 0.5), a.StrutPalmWidth(kM, 0.5);
  a.StrutPalmDepth(kM, 0.4), a.RudderCount(2), a.RudderType(2), a.TunnelThrusterCount(2);
  a.SkegKeelCount(1), a.SkegKeelType(1), a.SkegKeelWettedSurface(kM2, 30.0);
  a.StabilizerCount(2), a.StabilizerWettedSurface(kM2, 4.0), a.StabilizerDynamicMultiplier(1.5);
  a.BilgeKeelCount(2), a.BilgeKeelWettedSurface(kM2, 40.0);
  a.SonarDomeCount(1), a.SonarDomeWettedSurface(kM2, 12.0), a.AngleShaftDeg(10.0);
  a.MiscAppendageCount(3), a.MiscAppendageDragCoef(0.8), a.MiscAppendageDragArea(kM2, 1.5);
  const double viscous = Viscous(1.2 - 0.3 + 1.1, 6.0) + Viscous(3.5, 1.0 + 1.4) +
                         Viscous(4.0, (0.2 + 3.0) * 2 * 2) + Viscous(1.35, 20.0) + Viscous(2.8, 30.0) +
                         Viscous(2.8 * 1.5, 8.0) + Viscous(1.4, 80.0) + Viscous(2.7, 12.0);
  // Holtrop (1984): 0.5 rho V^2 (2 x 0.0075 Pi) d^2 per tunnel; the rest C_D A q each.
  const double dFt = 2.0 / 0.3048;
  const double own = 2.0 * q * 0.015 * Pi * dFt * dFt + 3.0 * q * 0.8 * 1.5 * kM2ToFt2;
  EXPECT_NEAR(Component(), viscous + own, 1e-8 * (viscous + own));  // the reads round to 10 digits
  // The form factors 1+k2 of Holtrop (1984) not met in the sum: a rudder of an unknown type
  // counts as a balanced foil, and a stabilizer multiplier below 1 leaves the factor.
  EXPECT_EQ(AppendageFormFactorRudder(1), 3.5);  // balanced plate
  EXPECT_EQ(AppendageFormFactorRudder(9), 2.5);
  EXPECT_EQ(AppendageFormFactorStabilizer(0.5), 2.8);
}

TEST_F(AppendageDragTest, PercentageOfTheSingleHullDrag) {
  App().primary.Resistance->AppendageDragMethod(kAppendagePercentage);
  // A twin hull: the percentage is of one hull.
  sp().DragBareHullIndividual(0, kLbf, 50000.0), sp().DragBareHull(0, kLbf, 100000.0);
  for (const auto& [percent, expected] : {std::pair{0.0, 0.0}, {-5.0, 0.0}, {8.0, 4000.0}}) {
    app().PercentageHullDrag(percent);
    double drag = -1.0;
    ASSERT_TRUE(Drag(drag));
    EXPECT_NEAR(drag, expected, 1e-6) << percent;  // 50000 lbf stored in kN
    EXPECT_EQ(app().ErrorText(), "");
  }
}

TEST_F(AppendageDragTest, FailuresReportTheirCause) {
  auto componentAt = [&](int row) {
    return [&, row](double& d) { return CalcAppendageHoltropComponent(d, water(), app(), sp(), row); };
  };
  auto drag = [&](double& d) { return Drag(d); };
  // A ship with a rudder to compute; then each case spoils it.
  auto fresh = [&] { SetUp(), app().RudderCount(1), app().RudderWettedSurface(kM2, 10.0); };
  // The methods leave the drag as it stands (99); CalcAppendageDrag starts at 0.
  auto fails = [&](const std::function<bool(double&)>& run, const std::string& cause, double dragAfter) {
    double d = 99.0;
    EXPECT_FALSE(run(d)) << cause;
    EXPECT_EQ(d, dragAfter) << cause;
    const std::string text = testing::CalcCause();
    EXPECT_NE(text.find(cause), std::string::npos) << text;
  };
  fresh(), sp().Speed(0, kCurrent, 0.0);
  fails(componentAt(0), "Speed", 99.0);
  fresh();
  fails(componentAt(3), "Run-time error", 99.0);  // a row outside the table
  // The driver has read a speed of 0; the percentage method passes the stack on.
  fresh(), sp().Speed(0, kCurrent, 0.0), sp().Speed(0, kCurrent);
  fails([&](double& d) { return CalcAppendagePercentage(d, app(), sp(), 0); }, "Speed", 99.0);
  fresh(), App().primary.Resistance->AppendageDragMethod(8);
  fails(drag, "Appendage drag method not available: Teeters (Sailboat)", 0.0);
  // The step keeps its historical wording.
  fresh(), App().primary.Resistance->AppendageDragMethod(3);
  fails(drag, "", 0.0);
  EXPECT_EQ(GetCalcLocation(), "wind drag prediction");
}

}  // namespace
}  // namespace velmar
