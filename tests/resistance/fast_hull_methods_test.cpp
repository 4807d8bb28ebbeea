// The "Delft Series" entries (the Delft Systematic Yacht Hull Series regressions) and "Mercier"
// (Mercier & Savitsky): their check values, the textbook's 611 N through the whole prediction,
// and what the tabulated methods do beyond the speeds of their tables.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "../core/test_support.h"
#include "../vessel/hull_model.h"
#include "app/application.h"
#include "core/constants.h"
#include "resistance/dsyhs.h"
#include "resistance/mercier_savitsky.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

ModelSet& P() { return App().primary; }
clsVXSpeedPerformance& SP() { return *App().primary.SpeedPerformance; }

// The YD-40 half-load hull of the literature and the parent hull of series 1 (given by its
// ratios alone), with rho g Vol in N.
struct CheckHull {
  DelftHull h;
  double weight;
};
CheckHull Yd40() {
  const double vol = 7.63, lwl = 10.02;
  DelftHull h;
  h.cp = 0.56;
  h.lcbFpp = 0.535;
  h.lcfFpp = 0.550;
  h.lcbPercent = (0.5 - 0.535) * 100.0;
  h.lwlBwl = lwl / 3.17;
  h.bwlTc = 3.17 / 0.57;
  h.lwlVol = lwl / std::cbrt(vol);
  h.awpVol = 22.0 / std::pow(vol, 2.0 / 3.0);
  h.sVol = 25.2 / std::pow(vol, 2.0 / 3.0);
  return {h, 1025.0 * 9.80665 * vol};
}
CheckHull Series1Parent() {
  DelftHull h;
  h.cp = 0.568;
  h.lcbPercent = -2.3;
  h.lwlVol = 4.78;
  h.bwlTc = 3.99;
  return {h, 1000.0};  // results as 1000 Rr / (rho g Vol)
}

TEST(DelftSeriesMethodTest, ReproducesTheCheckValues) {
  for (const auto& row : testing::ReadTable("dsyhs_check_values.txt", 5)) {
    const DelftRegression set = row[0] == "1981"       ? DelftRegression::Gerritsma1981
                                : row[0] == "1991 low" ? DelftRegression::Gerritsma1991Low
                                : row[0] == "1991"     ? DelftRegression::Gerritsma1991
                                                       : DelftRegression::KeuningSonnenberg1998;
    const CheckHull c = row[1] == "YD40" ? Yd40() : Series1Parent();
    const double got = c.weight * CalcDelftResiduary(set, c.h, row.Num(2));
    // Fn 0.350054187 stands for V = 3.47 m/s to nine digits.
    EXPECT_NEAR(got, row.Num(3), std::fabs(row.Num(3)) * 2e-7 + 5e-7) << row.where;
  }
}

// A project in SI units and the given water; the expansion of the published methods (ITTC-1957,
// no roughness allowance, no correlation allowance); one speed in ft/s.
void EnterProject(double rho, double nu, int method, double speedFtS) {
  testing::FreshApp();
  ApplyUnitPreset(*P().Units, UnitPreset::SI);
  P().WaterProperties->WaterDefinitionIndex(3);  // custom
  P().WaterProperties->Density(kKgPerM3, rho);
  P().WaterProperties->Viscosity(kM2PerSec, nu);
  P().ITTC78->HullHydrodynamicType(kHydroITTC78CT);
  P().ITTC78->HullFrictionLine(0);
  P().ITTC78->HullFormFactor(1.0);
  P().ITTC78->CorrelationAllowance(0.0);
  clsVXResistance& r = *P().Resistance;
  r.HullDragEnabled(kDragCalc);
  r.HullDragTechnique(kTechniquePrediction);
  r.HullDragMethod(method);
  r.HullDragExpansionDetail(1);
  r.HullDragITTC78ExpansionEnabled(1);
  SP().count(1);
  SP().Speed(0, kFtPerSec, speedFtS);
}

// The YD-40 entered as a hull (canoe body), with the centres from the transom at the aft end
// of the waterline.
void EnterYd40(double fn) {
  const double L = 10.02, vol = 7.63;
  EnterProject(1025.0, 1.19e-6, kHullDragDelftSeries123, fn * std::sqrt(GravityFt * L / 0.3048));
  clsVXHull& h = *P().Hull;
  testing::EnterHull(h, L, 3.17, 0.57, vol, vol / (L * 0.56) / (3.17 * 0.57), 22.0 / (L * 3.17),
                     (0.5 - 0.535) * 100.0, 25.2);
  h.XAreaWaterplaneFwdTr(kM, L * (1.0 - 0.550));
}

// Larsson & Eliasson's worked example: Rr = 611 N at Fn 0.35, here through the whole prediction
// as the residuary drag of the ship (the program's g differs from 9.80665 by 1.5e-6).
TEST(DelftSeriesMethodTest, TextbookExampleThroughThePrediction) {
  EnterYd40(0.35);
  ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
  EXPECT_NEAR(SP().DragBareHullResiduary(0, kN), 611.319895, 2e-3);
  EXPECT_EQ(SP().DragBareHullSpeedCheck(0), 1);
}

// Beyond its table a tabulated method keeps the residuary coefficient of the nearest speed,
// falling as Fn^4 below the first one, and flags the speed.
TEST(DelftSeriesMethodTest, ResiduaryCoefficientContinuesBeyondTheTable) {
  struct Case {
    double fnTable, fnOutside, ratio;
    int check;
  } const cases[] = {{0.125, 0.1, std::pow(0.1 / 0.125, 4.0), 0}, {0.45, 0.5, 1.0, 2}};
  for (const Case& c : cases) {
    EnterYd40(c.fnTable);
    ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
    const double crTable = SP().CoefDragBareHullResiduary(0);
    EnterYd40(c.fnOutside);
    ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
    EXPECT_NEAR(SP().CoefDragBareHullResiduary(0), crTable * c.ratio, crTable * 1e-9) << c.fnOutside;
    EXPECT_EQ(SP().DragBareHullSpeedCheck(0), c.check);
  }
}

// The check values of tests/data/mercier_check_values.txt: the 100 000 lb craft from the table,
// and the example craft through the whole prediction, where the expansion's friction of the
// craft makes the published size correction.
TEST(MercierMethodTest, ReproducesTheCheckValues) {
  const double vol = 40.0, L = 20.0, B = 5.0, S = 95.0, rho = 1025.0;
  const MercierHull craft{std::cbrt(vol) / L, vol / (B * B * B), std::sqrt(2.0 * 15.0), 0.6};
  for (const auto& row : testing::ReadTable("mercier_check_values.txt", 3)) {
    const double fnv = row.Num(0);
    EXPECT_NEAR(CalcMercierResistance100k(craft, fnv), row.Num(1), 5e-7) << row.where;
    if (row[2] == "-") continue;
    EnterProject(rho, 1.19e-6, kHullDragMercier, fnv * std::sqrt(GravityFt * std::cbrt(vol) / 0.3048));
    // A transom of 60 % of the midship section, and the half angle of entrance of 15 deg.
    testing::EnterHull(*P().Hull, L, B, 1.0, vol, 0.5, 0.7, -3.0, S, 15.0);
    P().Hull->AreaSectAtTr(kM2, 0.6 * P().Hull->AreaSectMax(kM2));
    ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
    EXPECT_NEAR(SP().DragBareHullIndividual(0, kN) / (rho * GravitySI * vol), row.Num(2), 5e-7) << row.where;
  }
}

}  // namespace
}  // namespace velmar
