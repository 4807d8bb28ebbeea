#include "resistance/hull_estimates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/diagnostics.h"
#include "core/format.h"
#include "vessel/hull_model.h"
#include "resistance/ittc78.h"

namespace velmar {
namespace {

using testing::EnterHoltropMennen1982;
using testing::EnterHull;

// SI units and the papers' water of exactly 1025 kg/m3, so that entered volumes come back
// unchanged.
struct Ship : testing::HullModel {
  Ship() : HullModel(UnitPreset::SI, true) {}
  clsVXITTC78Expansion ittc78{units};
};

TEST(HullEstimateTest, HoltropExampleShips) {
  Ship s;
  EnterHoltropMennen1982(*s.hull);
  double lr = 0, k1 = 0, ca = 0;
  ASSERT_TRUE(CalcHoltropLengthOfRun(lr, *s.hull) && CalcHoltropFormFactor(k1, *s.hull) &&
              CalcHoltropCorrelationAllowance(ca, *s.hull));
  // Published: LR 81.385 m.
  EXPECT_NEAR(lr * 205.0, 81.385, 0.005);
  // Published: 1+k1 1.156, from the 1982 regression c13 {0.93 + c12 (B/LR)^0.92497 ...}.
  // The 1984 regression used here gives 1.18508 for this hull (and reproduces the 1984
  // paper's own example exactly, see below): the two regressions differ by 2.5 % here.
  EXPECT_NEAR(k1, 1.18508, 1e-5);
  EXPECT_NEAR(k1, 1.156, 0.03);
  // Published: CA 0.000352 with 0.006 (L+100)^-0.16 - 0.00205 (c4 = 0.04 removes the bulb
  // term). Here the later constants 0.00546 and 0.002: 0.000186. Undoing the change of
  // constants gives the paper's figure.
  EXPECT_NEAR(ca, 0.00018627, 1e-8);
  EXPECT_NEAR(ca + (0.006 - 0.00546) * std::pow(305.0, -0.16) - 0.00005, 0.000352, 5e-7);
  EXPECT_TRUE(s.hull->ErrorText().empty()) << s.hull->ErrorText();

  // Holtrop (1984), the twin-screw fast ship.
  Ship fast;
  testing::EnterHoltrop1984(*fast.hull);
  ASSERT_TRUE(CalcHoltropFormFactor(k1, *fast.hull));
  EXPECT_NEAR(k1, 1.297, 5e-4);  // Holtrop (1984): 1+k1 1.297
}

// The fullness term a = 0.4 (CP - 0.9) above CP 0.9 enters the length of run (and through
// it the form factor), but not the half entrance angle. Hull: CP 0.95, CM 0.99, lcb 0, L/B 6, B/T 2.5.
TEST(HullEstimateTest, FullnessTermAboveCp09) {
  Ship s;
  const double L = 120.0, B = 20.0, T = 8.0, cm = 0.99, cp = 0.95, cwp = 0.97, vol = cp * cm * L * B * T;
  EnterHull(*s.hull, L, B, T, vol, cm, cwp, 0.0);
  double lr = 0, ie = 0;
  ASSERT_TRUE(CalcHoltropLengthOfRun(lr, *s.hull) && CalcHoltropHalfEntranceAngle(ie, *s.hull));
  EXPECT_NEAR(lr, 1.0 - 0.95 + 0.02, 1e-9);  // LR/L = 1 - CP + a
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
    EnterHull(*s.hull, L, B, T, cb * L * B * T, 0.98, 0.8, 0.0);
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
  for (double cb : {0.5, 0.8}) EXPECT_NEAR(ca(0.05, cb, 6.0), base, 1e-12) << cb;
}

// A missing centre of buoyancy stops the estimates that use it: the words move from the hull
// to the calculation error state, and the form factor falls back to 1. While an estimate
// runs its name is the progress text; the failing one's stays (the form factor fails in its
// length of run), and the caller's text is back after a success.
TEST(HullEstimateTest, MissingLcbStopsTheHoltropEstimates) {
  Ship s;
  EnterHoltropMennen1982(*s.hull);
  s.hull->XBuoyancyFwdTr(kM, 0.0);
  SetCalcLocation("caller");
  double v = -99.0;
  EXPECT_TRUE(CalcHoltropCorrelationAllowance(v, *s.hull));  // does not use the centre
  EXPECT_EQ(GetCalcLocation(), "caller");
  EXPECT_FALSE(CalcHoltropFormFactor(v, *s.hull));
  EXPECT_EQ(v, 1.0);
  EXPECT_EQ(GetCalcLocation(), "Holtrop length of run");
  EXPECT_NE(GetCalcCause().find("\tXCB fwd transom\r\n"), std::string::npos) << GetCalcCause();
  EXPECT_TRUE(CalcErrorFoundFlag() && s.hull->ErrorText().empty());
}

// Names are matched without regard to case; both centres share one list.
TEST(HullEstimateListTest, ItemsByName) {
  EstimateItem item = EstimateItem::FormFactor;
  EXPECT_TRUE(EstimateItemFromName("angleHALFentdeg", item) && item == EstimateItem::HalfEntranceAngle);
  EXPECT_TRUE(EstimateItemFromName("XGravityFwdTr", item) && item == EstimateItem::LongitudinalCentre);
  EXPECT_TRUE(EstimateItemFromName("xbuoyancyfwdtr", item = {}) && item == EstimateItem::LongitudinalCentre);
  EXPECT_FALSE(EstimateItemFromName("Displacement", item));
}

// On an empty hull every list has its rows, raises nothing, leaves the hull's stack and
// the caller's progress text alone, and shows empty proposals (a constant needs no data).
// Without any links at all the lists still answer.
TEST(HullEstimateListTest, EmptyHullGivesEmptyRows) {
  Ship s;
  clsVXHull bare;
  clsVXITTC78Expansion settings;
  for (const std::string& name : EstimateItemNames()) {
    EstimateItem item{};
    ASSERT_TRUE(EstimateItemFromName(name, item)) << name;
    SetCalcLocation("caller");
    std::vector<EstimateRow> rows;
    ASSERT_NO_THROW(rows = EstimateList(item, *s.hull, s.ittc78, 0.0));
    EXPECT_FALSE(rows.empty()) << name;
    for (const EstimateRow& r : rows)
      EXPECT_TRUE(r.label == "Planing [typical]" || (r.value == 0.0 && r.text.empty())) << r.label;
    EXPECT_TRUE(s.hull->ErrorText().empty() && !CalcErrorFoundFlag()) << name;
    EXPECT_EQ(GetCalcLocation(), "caller");
    EXPECT_NO_THROW(EXPECT_EQ(EstimateList(item, bare, settings, 0.3).size(), rows.size()));
  }
  double canoe = -1.0;  // the canoe diameter has no list
  CalcHullCanoeDiameter(canoe, *s.hull);
  EXPECT_EQ(canoe, 0.0);
}

// One proposal of each list on the 1982 example ship, in the item's unit (SI here) and
// format; the form factors of the other regressions against values computed independently
// from the published formulas.
TEST(HullEstimateListTest, ProposalsForTheExampleShip) {
  Ship s;
  EnterHoltropMennen1982(*s.hull);
  const std::string area = s.units->Format(UnitFamily::Area), length = s.units->Format(UnitFamily::Length);
  const double cb = 37500.0 / (205.0 * 32.0 * 10.0), cp = 37500.0 / (205.0 * 313.6);
  struct Row {
    EstimateItem item;
    const char* label;
    double value, tol;
    std::string format;
  } const rows[] = {
      // Holtrop & Mennen (1982) publish iE = 12.08 deg for this ship.
      {EstimateItem::HalfEntranceAngle, "Holtrop (1982)", 12.0775, 1e-4, "0.00"},
      {EstimateItem::WaterplaneArea, "Series 60", (0.86 * cp + 0.18) * 205.0 * 32.0, 0.01, area},
      {EstimateItem::LongitudinalCentre, "6% aft of mid-LWL", 0.44 * 205.0, 1e-9, length},
      {EstimateItem::MaxSectionArea, "Typical large ship", 320.0 / (1.0 + std::pow(1.0 - cb, 3.5)), 0.01,
       area},
      // Holtrop & Mennen (1982) publish S = 7381.45 m2 for this ship.
      {EstimateItem::WettedSurface, "Holtrop", 7381.45, 0.01, area},
      // ITTC-1978: (105 (150e-6 / 205)^(1/3) - 0.64) 1e-3.
      {EstimateItem::CorrelationAllowance, "Basic", 0.00030616838, 1e-11, ""},
      {EstimateItem::FormFactor, "Kostov", 1.3104835, 1e-6, ""},
      {EstimateItem::FormFactor, "BSRA Series", 1.1841110, 1e-6, ""},
      {EstimateItem::FormFactor, "Hamburg EWB Series", 1.0833394, 1e-6, ""},
  };
  for (const Row& r : rows) {
    const auto list = EstimateList(r.item, *s.hull, s.ittc78, 0.25);
    const auto e =
        std::find_if(list.begin(), list.end(), [&](const EstimateRow& x) { return x.label == r.label; });
    ASSERT_NE(e, list.end()) << r.label;
    EXPECT_NEAR(e->value, r.value, r.tol) << r.label;
    EXPECT_EQ(e->text, FormatNumber(e->value, r.format)) << r.label;
  }
  double canoe = 0;
  EXPECT_TRUE(CalcHullCanoeDiameter(canoe, *s.hull));
  EXPECT_NEAR(canoe, 28.259084, 1e-6);
  EXPECT_TRUE(s.hull->ErrorText().empty()) << s.hull->ErrorText();
}

}  // namespace
}  // namespace velmar
