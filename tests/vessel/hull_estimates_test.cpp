#include "vessel/hull_estimates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "core/diagnostics.h"
#include "core/format.h"
#include "resistance/ittc78.h"

namespace velmar {
namespace {

// SI units (SigDigits 10) and water of exactly 1025 kg/m3, the density of the published
// examples, so that entered volumes come back unchanged.
struct Ship {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units, water);
  clsVXITTC78Expansion ittc78{units};

  Ship() {
    ApplyUnitPreset(*units, UnitPreset::SI);
    units->SigDigits(10);
    water->WaterDefinitionIndex(3);  // Custom
    water->Density(kKgPerM3, 1025.0);
    water->Viscosity(kM2PerSec, 1.18831e-6);
    ResetCalcErrorState();
  }

  // A hull by its main particulars in metres; lcb in percent of L forward of mid-length.
  void Enter(double L, double B, double T, double vol, double cm, double cwp, double lcb) {
    clsVXHull& h = *hull;
    h.Displacement(kKg, vol * 1025.0);
    h.LengthWL(kM, L);
    h.BeamWLMax(kM, B);
    h.DraftSubmergedMax(kM, T);
    h.AreaSectMax(kM2, cm * B * T);
    h.AreaWaterplane(kM2, cwp * L * B);
    h.XBuoyancyFwdTr(kM, L * (0.5 + lcb / 100.0));
  }
  // Holtrop & Mennen (1982), the single-screw example: LWL 205 m, B 32 m, T 10 m, volume
  // 37500 m3, CM 0.98, CWP 0.75, lcb -0.75 % L, S 7381.45 m2, ABT 20 m2 with its centre 4 m
  // above the keel, AT 16 m2, Cstern 10, iE 12.08 deg.
  void EnterHoltropMennen1982() {
    Enter(205.0, 32.0, 10.0, 37500.0, 0.98, 0.75, -0.75);
    clsVXHull& h = *hull;
    h.WettedSurface(kM2, 7381.45);
    h.BulbAreaSect(kM2, 20.0);
    h.ZBulbAreaSectBelowWL(kM, 6.0);
    h.AreaSectAtTr(kM2, 16.0);
    h.AngleHalfEntDeg(12.08);
    h.SternShapeFactor(1.0);
  }
  // Holtrop (1984), the twin-screw fast ship: L 50 m, B 12 m, mean T 3.2 m, volume 900 m3,
  // CM 0.78, CWP 0.80, lcb -4.5 % L, Cstern 0, no bulb.
  void EnterHoltrop1984() { Enter(50.0, 12.0, 3.2, 900.0, 0.78, 0.80, -4.5); }
};

TEST(HullEstimateTest, HoltropExampleShips) {
  Ship s;
  s.EnterHoltropMennen1982();
  double lr = 0, k1 = 0, ie = 0, ca = 0;
  ASSERT_TRUE(CalcHoltropLengthOfRun(lr, *s.hull));
  ASSERT_TRUE(CalcHoltropFormFactor(k1, *s.hull));
  ASSERT_TRUE(CalcHoltropHalfEntranceAngle(ie, *s.hull));
  ASSERT_TRUE(CalcHoltropCorrelationAllowance(ca, *s.hull));
  // Published: LR 81.385 m.
  EXPECT_NEAR(lr * 205.0, 81.385, 0.005);
  // Published: 1+k1 1.156, from the 1982 regression c13 {0.93 + c12 (B/LR)^0.92497 ...}.
  // The 1984 regression used here gives 1.18508 for this hull (and reproduces the 1984
  // paper's own example exactly, see below): the two regressions differ by 2.5 % here.
  EXPECT_NEAR(k1, 1.18508, 1e-5);
  EXPECT_NEAR(k1, 1.156, 0.03);
  // Published: iE 12.08 deg; the regression reproduces it.
  EXPECT_NEAR(ie, 12.08, 0.005);
  // Published: CA 0.000352 with 0.006 (L+100)^-0.16 - 0.00205 (c4 = 0.04 removes the bulb
  // term). Here the later constants 0.00546 and 0.002: 0.000186. Undoing the change of
  // constants gives the paper's figure.
  EXPECT_NEAR(ca, 0.00018627, 1e-8);
  EXPECT_NEAR(ca + (0.006 - 0.00546) * std::pow(305.0, -0.16) - 0.00005, 0.000352, 5e-7);
  EXPECT_TRUE(s.hull->ErrorText().empty()) << s.hull->ErrorText();

  Ship fast;
  fast.EnterHoltrop1984();
  ASSERT_TRUE(CalcHoltropFormFactor(k1, *fast.hull));
  EXPECT_NEAR(k1, 1.297, 5e-4);  // Holtrop (1984): 1+k1 1.297
}

// The fullness term a = 0.4 (CP - 0.9) above CP 0.9 enters the length of run and the form
// factor, but not the half entrance angle. Hull: CP 0.95, CM 0.99, lcb 0, L/B 6, B/T 2.5.
TEST(HullEstimateTest, FullnessTermAboveCp09) {
  Ship s;
  const double L = 120.0, B = 20.0, T = 8.0, cm = 0.99, cp = 0.95, cwp = 0.97;
  s.Enter(L, B, T, cp * cm * L * B * T, cm, cwp, 0.0);
  ASSERT_NEAR(s.hull->CoefPrismatic(), cp, 1e-9);
  double lr = 0, k1 = 0, ie = 0;
  ASSERT_TRUE(CalcHoltropLengthOfRun(lr, *s.hull));
  ASSERT_TRUE(CalcHoltropFormFactor(k1, *s.hull));
  ASSERT_TRUE(CalcHoltropHalfEntranceAngle(ie, *s.hull));
  EXPECT_NEAR(lr, 1.0 - 0.95 + 0.02, 1e-9);
  // Holtrop (1984) 1+k1 with 1 - CP + a = 0.07 and LR/L = 0.07 (Cstern 0).
  const double vol = cp * cm * L * B * T;
  const double k1Expected = 0.93 + 0.487118 * std::pow(B / L, 1.06806) * std::pow(T / L, 0.46106) *
                                       std::pow(1.0 / 0.07, 0.121563) * std::pow(L * L * L / vol, 0.36486) *
                                       std::pow(0.07, -0.604247);
  EXPECT_NEAR(k1, k1Expected, 1e-9);
  // Holtrop (1984) iE with LR/L = 1 - CP = 0.05 and 1 - CP - 0.0225 lcb = 0.05.
  const double v = 100.0 * vol / (L * L * L);
  const double ieExpected =
      1.0 + 89.0 * std::exp(-std::pow(L / B, 0.80856) * std::pow(1.0 - cwp, 0.30484) *
                            std::pow(0.05, 0.6367) * std::pow(0.05 * L / B, 0.34574) * std::pow(v, 0.16302));
  EXPECT_NEAR(ie, ieExpected, 1e-9 * ieExpected);  // the unit round trip keeps 10 digits
}

// CA: the bulb factor c2 is 1 without a bulb, and c4 = min(T/L, 0.04) removes the CB term
// from T/L 0.04 on. Hulls of L 100 m, B 15 m; T from T/L; CB from the volume.
TEST(HullEstimateTest, CorrelationAllowanceBulbAndDraftTerms) {
  const double L = 100.0, B = 15.0;
  const double base = std::pow(L + 100.0, -0.16) * 0.00546 - 0.002;
  auto ca = [&](double tl, double cb, double abt) {
    Ship s;
    const double T = tl * L;
    s.Enter(L, B, T, cb * L * B * T, 0.98, 0.8, 0.0);
    s.hull->BulbAreaSect(kM2, abt);
    s.hull->ZBulbAreaSectBelowWL(kM, 0.6 * T);
    double v = 0;
    EXPECT_TRUE(CalcHoltropCorrelationAllowance(v, *s.hull));
    return v;
  };
  // No bulb: c2 = 1, the whole CB term counts.
  EXPECT_NEAR(ca(0.03, 0.6, 0.0) - base, 0.003 * std::sqrt(L / 7.5) * std::pow(0.6, 4) * (0.04 - 0.03),
              1e-12);
  // A bulb lowers the CB term (c2 < 1).
  EXPECT_LT(ca(0.03, 0.6, 6.0), ca(0.03, 0.6, 0.0));
  // T/L 0.05: c4 is held at 0.04, so neither CB nor the bulb matters.
  for (double cb : {0.5, 0.8}) {
    for (double abt : {0.0, 6.0}) EXPECT_NEAR(ca(0.05, cb, abt), base, 1e-12) << cb << " " << abt;
  }
}

TEST(HullEstimateTest, MissingLcbStopsTheHoltropEstimates) {
  using Fn = bool (*)(double&, const clsVXHull&);
  struct Row {
    const char* name;
    Fn fn;
    bool ok;
    double value;
  } const rows[] = {
      {"length of run", CalcHoltropLengthOfRun, false, 0.0},
      {"form factor", CalcHoltropFormFactor, false, 1.0},
      {"half entrance angle", CalcHoltropHalfEntranceAngle, false, 0.0},
      {"Kostov", CalcKostovFormFactor, false, 0.0},
      // Does not use the centre of buoyancy.
      {"correlation allowance", CalcHoltropCorrelationAllowance, true, -1.0},
  };
  for (const Row& r : rows) {
    Ship s;
    s.EnterHoltropMennen1982();
    s.hull->XBuoyancyFwdTr(kM, 0.0);
    SetCalcLocation("caller");
    double v = -99.0;
    EXPECT_EQ(r.fn(v, *s.hull), r.ok) << r.name;
    if (r.ok) continue;
    EXPECT_EQ(v, r.value) << r.name;
    EXPECT_NE(GetCalcCause().find("\tXCB fwd transom\r\n"), std::string::npos) << r.name << GetCalcCause();
    EXPECT_TRUE(CalcErrorFoundFlag()) << r.name;
    // The words have moved from the hull to the calculation error state.
    EXPECT_TRUE(s.hull->ErrorText().empty()) << r.name;
  }
}

TEST(HullEstimateTest, ProgressTextIsShownOnlyWhileAnEstimateRuns) {
  Ship s;
  s.EnterHoltropMennen1982();
  SetCalcLocation("caller");
  double v = 0;
  ASSERT_TRUE(CalcHoltropFormFactor(v, *s.hull));
  EXPECT_EQ(GetCalcLocation(), "caller");
  s.hull->LengthWL(kM, 0.0);
  EXPECT_FALSE(CalcHoltropFormFactor(v, *s.hull));
  EXPECT_EQ(GetCalcLocation(), "Holtrop form factor");  // the error belongs to the estimate
}

// The other regressions and the canoe diameter on the 1982 example ship, against values
// computed independently from the published formulas; with missing data each gives 0.
TEST(HullEstimateTest, OtherFormFactorsAndCanoeDiameter) {
  using Fn = bool (*)(double&, const clsVXHull&);
  struct Row {
    const char* name;
    Fn fn;
    double value;
  } const rows[] = {
      {"Kostov", CalcKostovFormFactor, 1.3104835},
      {"BSRA", CalcBSRAFormFactor, 1.1841110},
      {"Hamburg EWB", CalcHamburgEWBFormFactor, 1.0833394},
      {"canoe diameter [m]", CalcHullCanoeDiameter, 28.259084},
  };
  for (const Row& r : rows) {
    Ship s;
    s.EnterHoltropMennen1982();
    double v = 0;
    EXPECT_TRUE(r.fn(v, *s.hull)) << r.name;
    EXPECT_NEAR(v, r.value, 1e-6) << r.name;
    Ship empty;
    v = -1.0;
    r.fn(v, *empty.hull);
    EXPECT_EQ(v, 0.0) << r.name;
  }
}

// Names are matched without regard to case; both centres share one list.
TEST(HullEstimateListTest, ItemsByName) {
  EstimateItem item = EstimateItem::FormFactor;
  EXPECT_TRUE(EstimateItemFromName("angleHALFentdeg", item));
  EXPECT_EQ(item, EstimateItem::HalfEntranceAngle);
  for (const char* name : {"XGravityFwdTr", "xbuoyancyfwdtr"}) {
    item = EstimateItem::FormFactor;
    EXPECT_TRUE(EstimateItemFromName(name, item)) << name;
    EXPECT_EQ(item, EstimateItem::LongitudinalCentre) << name;
  }
  EXPECT_FALSE(EstimateItemFromName("Displacement", item));
  ASSERT_EQ(EstimateItemNames().size(), 8u);
  for (const std::string& n : EstimateItemNames()) EXPECT_TRUE(EstimateItemFromName(n, item)) << n;
}

// The number of rows of each list.
const std::map<EstimateItem, size_t> kRowCounts = {
    {EstimateItem::HalfEntranceAngle, 3},    {EstimateItem::WaterplaneArea, 5},
    {EstimateItem::LongitudinalCentre, 7},   {EstimateItem::CentreOfWaterplane, 1},
    {EstimateItem::MaxSectionArea, 2},       {EstimateItem::WettedSurface, 15},
    {EstimateItem::CorrelationAllowance, 7}, {EstimateItem::FormFactor, 7},
};

// On an empty hull every list has its rows, raises nothing, leaves the hull's stack and
// the caller's progress text alone, and shows empty proposals (a constant needs no data).
TEST(HullEstimateListTest, EmptyHullGivesEmptyRows) {
  Ship s;
  for (const auto& [item, count] : kRowCounts) {
    SetCalcLocation("caller");
    std::vector<EstimateRow> rows;
    ASSERT_NO_THROW(rows = EstimateList(item, *s.hull, s.ittc78, 0.0));
    ASSERT_EQ(rows.size(), count);
    for (const EstimateRow& r : rows) {
      if (r.label == "Planing [typical]") continue;
      EXPECT_EQ(r.value, 0.0) << r.label;
      EXPECT_EQ(r.text, "") << r.label;
    }
    EXPECT_TRUE(s.hull->ErrorText().empty());
    EXPECT_EQ(GetCalcLocation(), "caller");
    EXPECT_FALSE(CalcErrorFoundFlag());
  }
  // Without any links at all the lists still answer.
  clsVXHull bare;
  clsVXITTC78Expansion settings;
  for (const auto& [item, count] : kRowCounts) {
    EXPECT_NO_THROW(EXPECT_EQ(EstimateList(item, bare, settings, 0.3).size(), count));
  }
}

// Values on the 1982 example ship, in the item's unit (SI here) and format.
TEST(HullEstimateListTest, ProposalsForTheExampleShip) {
  Ship s;
  s.EnterHoltropMennen1982();
  const std::string areaFormat = s.units->Format(UnitFamily::Area);
  const std::string lengthFormat = s.units->Format(UnitFamily::Length);
  const double vol = 37500.0, cb = vol / (205.0 * 32.0 * 10.0), cp = vol / (205.0 * 313.6);
  struct Row {
    EstimateItem item;
    const char* label;
    double value, tol;
    std::string format;
  } const rows[] = {
      {EstimateItem::HalfEntranceAngle, "Holtrop (1982)", 12.0775, 1e-4, "0.00"},
      {EstimateItem::WaterplaneArea, "Series 60", (0.86 * cp + 0.18) * 205.0 * 32.0, 0.01, areaFormat},
      {EstimateItem::WaterplaneArea, "Doust trawler", 0.967059 * std::pow(cb, 0.52085) * 205.0 * 32.0, 0.01,
       areaFormat},
      {EstimateItem::LongitudinalCentre, "6% aft of mid-LWL", 0.44 * 205.0, 1e-9, lengthFormat},
      {EstimateItem::MaxSectionArea, "Typical large ship", 320.0 / (1.0 + std::pow(1.0 - cb, 3.5)), 0.01,
       areaFormat},
      // Holtrop & Mennen (1982) publish S = 7381.45 m2 for this ship.
      {EstimateItem::WettedSurface, "Holtrop", 7381.45, 0.01, areaFormat},
      {EstimateItem::WettedSurface, "Denny", 1.7 * 205.0 * 10.0 + vol / 10.0, 1e-6, areaFormat},
      // ITTC-1978: (105 (150e-6 / 205)^(1/3) - 0.64) 1e-3.
      {EstimateItem::CorrelationAllowance, "Basic", 0.00030616838, 1e-11, ""},
      {EstimateItem::CorrelationAllowance, "Planing [typical]", 0.0004, 0.0, ""},
      {EstimateItem::FormFactor, "Holtrop [ITTC57]", 1.18508, 1e-5, ""},
      {EstimateItem::FormFactor, "Granville", 1.0 + 18.7 * std::pow(cb * 32.0 / 205.0, 2), 1e-9, ""},
  };
  for (const Row& r : rows) {
    bool found = false;
    for (const EstimateRow& e : EstimateList(r.item, *s.hull, s.ittc78, 0.25)) {
      if (e.label != r.label) continue;
      found = true;
      EXPECT_NEAR(e.value, r.value, r.tol) << r.label;
      EXPECT_EQ(e.text, FormatNumber(e.value, r.format)) << r.label;
    }
    EXPECT_TRUE(found) << r.label;
  }
  EXPECT_TRUE(s.hull->ErrorText().empty()) << s.hull->ErrorText();
}

}  // namespace
}  // namespace velmar
