// The "Savitsky" method of the planing route: the equilibrium's check values (simple and
// general case), the Blount & Fox multiplier, and the route that reads the hull, applies the
// corrections and fills the planing columns of the speed table.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>

#include "../core/test_support.h"
#include "app/application.h"
#include "core/constants.h"
#include "resistance/resistance_driver.h"
#include "resistance/savitsky.h"

namespace velmar {
namespace {

ModelSet& P() { return App().primary; }
clsVXSpeedPerformance& SP() { return *App().primary.SpeedPerformance; }

// The check values of tests/data/savitsky_check_values.txt, by case and quantity.
using CheckValues = std::map<std::string, std::map<std::string, double>>;
CheckValues ReadCheckValues() {
  CheckValues v;
  for (const auto& row : testing::ReadTable("savitsky_check_values.txt", 8))
    v[row[0] + " " + row[3] + " " + row[4]][row[6]] = row.Num(7);
  return v;
}

SavitskyInput LiteratureInput(double beta, double speed, double lcg) {
  SavitskyInput in;
  in.weight = 10000.0 * 9.81;
  in.beam = 3.0;
  in.deadriseDeg = beta;
  in.lcg = lcg;
  in.speed = speed;
  in.density = 1025.0;
  in.viscosity = 1.19e-6;
  in.gravity = 9.81;
  return in;
}

TEST(SavitskyMethodTest, ReproducesTheCheckValues) {
  const CheckValues expected = ReadCheckValues();
  for (const auto& [key, values] : expected) {
    SavitskyInput in = key.starts_with("simple 15") ? LiteratureInput(15.0, 15.0, 4.5)
                       : key.starts_with("simple")  ? LiteratureInput(20.0, 10.0, 4.0)
                                                    : LiteratureInput(15.0, 15.0, 4.5);
    if (key.starts_with("general")) {
      in.generalCase = true;
      in.vcg = 1.0;
      in.thrustAngleDeg = 4.0;
      in.thrustOffset = 0.3;
    }
    SavitskyResult r;
    std::string failure;
    ASSERT_TRUE(CalcSavitskyEquilibrium(in, r, failure)) << key << ": " << failure;
    const std::map<std::string, double> got = {
        {"C_V", r.cv},      {"C_Lbeta", r.clBeta},      {"C_L0", r.cl0}, {"lambda", r.lambda},
        {"tau", r.trimDeg}, {"V_1", r.meanBottomSpeed}, {"C_F", r.cf},   {"D_f", r.frictionDrag},
        {"D", r.drag},      {"L_p", r.pressureCentre}};
    for (const auto& [quantity, value] : values)
      EXPECT_NEAR(got.at(quantity), value, std::fabs(value) * 2e-6 + 1e-6) << key << " " << quantity;
  }
}

TEST(SavitskyMethodTest, BlountFoxMultiplierMatchesTheTable) {
  for (const auto& row : testing::ReadTable("blount_fox_multiplier.txt", 5))
    for (size_t i = 1; i <= 4; ++i)
      EXPECT_NEAR(CalcBlountFoxMultiplier(row.Num(0), 0.5 + 0.5 * static_cast<double>(i)), row.Num(i), 5e-5)
          << row.where << " column " << i;
}

// The first hull of the check values as a planing project: 10 t, a single station of chine
// beam 3.0 m and deadrise 15 deg, LCG 4.5 m, at 15 m/s; no allowances. The thrust line of the
// general case: centre of gravity 1.0 m above the keel, shaft 4 deg, propeller on the vertical
// of the centre of gravity, its line 0.3 m below it.
void EnterPlaningProject() {
  testing::FreshApp();
  ApplyUnitPreset(*P().Units, UnitPreset::SI);
  P().WaterProperties->WaterDefinitionIndex(3);  // custom
  P().WaterProperties->Density(kKgPerM3, 1025.0);
  P().WaterProperties->Viscosity(kM2PerSec, 1.19e-6);
  clsVXHull& h = *P().Hull;
  h.Displacement(kKg, 10000.0);
  h.FwdStationChineBeam(kM, 3.0);
  h.FwdStationAngleDeadriseDeg(15.0);
  h.XGravityFwdTr(kM, 4.5);
  h.LengthProjPlaningBottom(kM, 9.0);
  const double chineDepth = 0.1, keelDepth = chineDepth + 1.5 * std::tan(15.0 * DegToRad),
               zg = keelDepth - 1.0;
  h.FwdStationZChineHeightBelowWL(kM, chineDepth);
  h.ZGravityBelowWL(kM, zg);
  h.AngleShaftDeg(4.0);
  h.XPropulsorFwdTr(kM, 4.5);
  h.ZPropulsorBelowWL(kM, zg + 0.3 / std::cos(4.0 * DegToRad));
  P().ITTC78->HullHydrodynamicType(kHydroPlaning);
  P().ITTC78->HullFrictionLine(0);
  P().ITTC78->CorrelationAllowance(0.0);
  clsVXResistance& r = *P().Resistance;
  r.HullDragEnabled(kDragCalc);
  r.HullDragMethod(kHullDragSavitsky);
  r.HullDragExpansionDetail(1);
  r.HullDragPlaningPropulsorLiftCorrEnabled(0);
  SP().count(1);
  SP().Speed(0, kMPerSec, 15.0);
}

// The route with and without the thrust line against the check values; the program's g
// (32.174 ft/s2) against the literature's 9.81 m/s2 leaves differences of some 1e-4.
TEST(SavitskyMethodTest, PlaningRouteFillsTheSpeedTable) {
  const CheckValues expected = ReadCheckValues();
  for (const char* key : {"simple 15 15", "general 15 15"}) {
    EnterPlaningProject();
    const bool general = std::string(key).starts_with("general");
    P().Resistance->HullDragPlaningPropulsorLiftCorrEnabled(general ? 1 : 0);
    ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
    const auto& v = expected.at(key);
    const double weightRatio = 9.80665 / 9.81;
    EXPECT_NEAR(SP().DynamicTrimDeg(0), v.at("tau"), 2e-3) << key;
    EXPECT_NEAR(SP().LengthWettedMean(0, kM), v.at("lambda") * 3.0, 5e-3) << key;
    EXPECT_NEAR(SP().DragBareHull(0, kN), v.at("D") * weightRatio, v.at("D") * 1e-3) << key;
    EXPECT_EQ(SP().DragBareHull(0, kN), SP().DragEquilibriumPlaning(0, kN));
    EXPECT_NEAR(SP().CoefPlaningLkeelLpRatio(0), SP().LengthWettedKeel(0, kM) / 9.0, 1e-9);
    EXPECT_EQ(SP().DragBareHullSpeedCheck(0), 1);
  }
  // The hump multiplier, in full and at half: FnV = 15 / sqrt(g Vol^(1/3)) = 2.6.
  for (int half : {0, 1}) {
    EnterPlaningProject();
    P().Resistance->HullDragPlaningHumpMultiplierEnabled(1);
    P().Resistance->HullDragPlaningHumpMultiplierApplyFactor(half);
    ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
    const double fnv = SP().CoefFroudeVolume(0);
    const double m = 1.0 + (half ? 0.5 : 1.0) * (CalcBlountFoxMultiplier(fnv, 1.5) - 1.0);
    EXPECT_NEAR(SP().CoefPlaningHumpSpeedMultiplier(0), m, 1e-9);
    EXPECT_NEAR(SP().DragBareHull(0, kN), m * SP().DragEquilibriumPlaning(0, kN), 1e-5);
  }
}

TEST(SavitskyMethodTest, PlaningRouteRefusesWhatItCannotCompute) {
  struct Case {
    void (*set)(clsVXResistance&);
    const char* text;
  } const cases[] = {
      {[](clsVXResistance& r) { r.HullDragMethod(kHullDragHoltrop); },
       "Hull drag method not available for the Planing scope: Holtrop"},
      {[](clsVXResistance& r) { r.HullDragSprayCorrEnabled(1); }, "Spray drag correction not available"},
  };
  for (const Case& c : cases) {
    EnterPlaningProject();
    c.set(*P().Resistance);
    EXPECT_FALSE(CalcResistancePrediction());
    EXPECT_NE(testing::CalcCause().find(c.text), std::string::npos) << c.text;
  }
}

}  // namespace
}  // namespace velmar
