// Holtrop's two published examples, by the method's own terms and through the whole
// resistance prediction: the Holtrop method's 20 ft model in fresh water, the ITTC-78
// expansion to the ship and the appendages by the component method. The ship's drag is
// split into the terms the papers publish and every remaining difference is put down to its
// cause:
//
//  - 1+k1: the program evaluates the Holtrop (1984) regression; Holtrop & Mennen (1982)
//    print the 1982 one (1.156 where the 1984 regression gives 1.18508).
//  - Wave term: the model's CW = (RW + RB + RTR) / (0.5 rho_fresh S V^2), with RW formed from
//    the ship's own displacement weight (salt water) and RB, RTR formed with the basin's
//    fresh water. The expansion multiplies CR by 0.5 rho_salt S V^2, so the ship gets RB and
//    RTR as published and RW x rho_salt / rho_fresh = 1025 / 999.01 = 1.02602.
//    For the 1982 ship the 1984 m4 term also replaces the 1982 m2 term.
//  - Correlation allowance: both papers apply CA to S + S_APP (the 1982 RA of 221.98 kN is
//    0.0003524 x q x 7431.45 m2; on S alone it would be 220.5 kN). The program applies CA to S
//    in the hull drag and to S_APP in the component appendage drag, so the hull's CA term is
//    the paper's RA x S / (S + S_APP) and the appendage drag is RAPP plus the rest of RA.
//
// Both ships run in the papers' sea water, 1025 kg/m3 and 1.18831e-6 m2/s (15 degC), with the
// ITTC-57 line, no roughness allowance and no speed correction of the form factor. Standard
// salt water (1026 kg/m3) would raise every term by a further 0.1 %.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "../core/test_support.h"
#include "../vessel/hull_model.h"
#include "app/application.h"
#include "core/constants.h"
#include "core/diagnostics.h"
#include "example_ship.h"
#include "resistance/holtrop.h"
#include "resistance/resistance_driver.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

using testing::EnterExampleShip;

constexpr double kSalt = testing::kPaperDensity;                // kg/m3, both papers
constexpr double kFresh = StdDensityFresh * 515.3788183931961;  // kg/m3 of the basin, 999.01
constexpr double kSaltOverFresh = kSalt / kFresh;               // 1.02602
constexpr double kKnToMS = 1852.0 / 3600.0;
constexpr double kLbfToKN = 4.4482216152605e-3;

ModelSet& P() { return App().primary; }
clsVXSpeedPerformance& SP() { return *App().primary.SpeedPerformance; }

// A proposal of the estimate list, as a user picks it for the hull of the open project.
double Proposal(EstimateItem item, const std::string& label) {
  for (const EstimateRow& r : EstimateList(item, *P().Hull, *P().ITTC78, 0.0)) {
    if (r.label == label) return r.value;
  }
  ADD_FAILURE() << "no proposal " << label;
  return 0.0;
}

// The expansion as the comparison runs it: ITTC-57, 1+k1 and CA as given, CA taken from the
// settings (expansion detail "Custom"), no roughness allowance, no speed correction of 1+k.
void SetExpansion(double formFactor, double ca) {
  P().ITTC78->HullFrictionLine(0);
  P().ITTC78->HullFormFactor(formFactor);
  P().ITTC78->CorrelationAllowance(ca);
  P().Resistance->HullDragITTC78ExpansionEnabled(1);
  P().Resistance->HullDragExpansionDetail(1);
  P().Resistance->HullDragRoughnessEnabled(0);
  P().Resistance->HullDragFormFactorKMultEnabled(0);
}

// The ship's drag of one row in kN, split as the papers split it, with the coefficients
// behind it. q S = 0.5 rho S V^2 follows from the bare-hull drag and its coefficient.
struct ShipTerms {
  double friction;     // (1+k1) CF q S: the papers' RF (1+k1)
  double residuary;    // CR q S: the papers' RW + RB + RTR
  double correlation;  // CA q S: the papers' RA, on the hull's surface only
  double appendages;   // the component method: RAPP plus CA on the appendages' surface
  double total;
  double k1, cf, ca, cr;
  int speedCheck;
};
ShipTerms Terms(int row) {
  const double qS = SP().DragBareHullIndividual(row, kKN) / SP().CoefDragBareHull(row);
  const double cf = SP().CoefDragBareHullFriction(row), viscous = SP().CoefDragBareHullViscous(row);
  const double ca = SP().CoefDragBareHullCorrAllowance(row);
  EXPECT_EQ(SP().CoefDragBareHullRoughness(row), 0.0);
  return {viscous * qS,
          SP().DragBareHullResiduary(row, kKN),
          ca * qS,
          SP().DragAppendages(row, kKN),
          SP().DragTotal(row, kKN),
          viscous / cf,
          cf,
          ca,
          SP().CoefDragBareHullResiduary(row),
          SP().DragBareHullSpeedCheck(row)};
}

// ---- Holtrop & Mennen (1982), single-screw ship, 25 kn ---------------------------------------
//
// The example ship of example_ship.h in the paper's water, the rudder of 50 m2 aft of the
// stern (1+k2 1.50, the paper's appendage term), 1+k1 as the user takes it from the estimate
// list ("Holtrop [ITTC57]", the 1984 regression: 1.18508) and the paper's CA 0.000352.
//
// Why 1+k1 from the estimate list and not the paper's 1.156: the method builds the model's CT
// with its own 1984 form factor, and the model step takes (1+k1) CFm off again with the
// factor of the settings. With the same factor on both sides the viscous part cancels and CR
// is the method's CW alone, so the residuary term is the wave term and nothing else. With
// 1.156 typed in, CR keeps (1.18508 - 1.156) CFm of the 20 ft model's friction (53 kN, see
// the next test): the friction term would match the paper but the residuary would not.
void EnterShip1982(double formFactor, double ca) {
  EnterExampleShip({25.0});
  testing::UsePaperWater(*P().WaterProperties);
  testing::EnterHoltropMennen1982(*P().Hull);  // weighed in it
  SetExpansion(formFactor, ca);
  if (formFactor == 0.0) P().ITTC78->HullFormFactor(Proposal(EstimateItem::FormFactor, "Holtrop [ITTC57]"));
}

// Published: RF 869.63 kN (CF 0.001390), 1+k1 1.156, RAPP 8.83, RW 557.11 (m2 -0.17087,
// lambda 0.6513, c15 -1.69385 at Fn 0.2868), RB 0.049, RTR 0.00, RA 221.98, total 1793.26 kN.
//
// Expected program terms, from the paper's numbers (kN):
//   friction     869.63 x 1.18508                                         = 1030.58
//   residuary    557.11 x exp((m4 - m2) cos(lambda Fn^-2)) x 1.02602 + RB  = 568.48
//                  m4 = 0.4 c15 exp(-0.034 Fn^-3.29) = -0.08547, cos(...) = -0.06411:
//                  the 1984 m4 lowers RW by 0.55 % to 554.07, the fresh/salt ratio raises it
//                  by 2.60 %; the 1984 bulb gives RB 0.0009 kN for the 1982 bulb's 0.049
//                  (its immersion includes the bow wave height hF and the wave height hW)
//   correlation  221.98 x 7381.45 / 7431.45 x 0.000352 / 0.00035236          = 220.27
//                  the paper's RA holds CA 0.00035236 = 221.98 kN / (q 7431.45 m2), q =
//                  0.5 x 1025 x 12.8611^2; the program carries the printed 0.000352
//   appendages   8.83 + 221.98 x 50 / 7431.45                               = 10.32
//   total                                                                  = 1829.65
// against the paper's 1793.26: +2.0 %, of which +25.3 kN is the 1984 form factor, +11.3 kN
// the wave term (-3.0 kN m4, +14.4 kN density), -0.05 kN the bulb.
TEST(HoltropPaperTest, SingleScrewShip1982At25KnotsTermByTerm) {
  EnterShip1982(0.0, 0.000352);
  ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
  const ShipTerms t = Terms(0);

  // With 1+k1 the method's own, the model's viscous part cancels: CR is the model's CW.
  const double fn = SP().CoefFroudeLength(0);
  HoltropTerms m;
  ASSERT_TRUE(CalcHoltropTerms(m, *P().Hull, fn)) << testing::CalcCause();
  EXPECT_NEAR(t.cr, m.cw, 1e-12 * m.cw);
  EXPECT_EQ(t.speedCheck, 1);

  // The method's own terms, of the 20 ft model before the expansion. Published coefficients
  // to their printed digits:
  for (const auto& [name, value, published, tolerance] : {std::tuple{"c1", m.c1, 1.398, 5e-4},
                                                          {"c2", m.c2, 0.7595, 5e-5},
                                                          {"c3", m.c3, 0.02119, 5e-6},
                                                          {"c5", m.c5, 0.9592, 5e-5},
                                                          {"c7", m.c7, 0.1561, 5e-5},
                                                          {"m1", m.m1, -2.1274, 5e-5},
                                                          {"c15", m.c15, -1.69385, 1e-9},
                                                          {"lambda", m.lambda, 0.6513, 5e-5}})
    EXPECT_NEAR(value, published, tolerance) << name;
  // RW with the 1984 m4 is 554.06 kN (Fn 0.28684 with g = 32.174 ft/s2); exchanging m4 for
  // the paper's m2 reproduces its 557.11 to 0.13 kN, the rest is g (9.81 in the paper) in Fn
  // and W: 0.1 % allowed. The 1984 bulb gives RB 0.000938 kN in salt water, and RTR is 0
  // (FnT 5.43 is above 5, c6 = 0: published 0.00 kN).
  const double rw = m.rw * kLbfToKN, m4 = m.c15 * 0.4 * std::exp(-0.034 * std::pow(fn, -3.29));
  EXPECT_NEAR(rw, 554.06, 0.05);
  EXPECT_NEAR(rw * std::exp((-0.17087 - m4) * std::cos(m.lambda / (fn * fn))), 557.11, 0.55);
  EXPECT_NEAR(m.rb * kLbfToKN * kSaltOverFresh, 0.000938, 0.00003);
  EXPECT_EQ(m.rtr, 0.0);

  struct Row {
    const char* term;
    double program, published, expected, tolerance;
    const char* why;
  } const rows[] = {
      // 0.075 / (log10 Rn - 2)^2 at Rn 2.2187e9; printed to four figures.
      {"CF", t.cf, 0.001390, 0.001390, 5e-7, "printed digits"},
      // The 1984 regression on the paper's inputs (c14 = 1.11 for Cstern 10); the 1982
      // formula, c13 (0.93 + c12 (B/LR)^0.92497 (0.95 - CP)^-0.521448 ...), gives 1.1564.
      {"1+k1", t.k1, 1.156, 1.18508, 1e-5, "1984 regression"},
      {"CA", t.ca, 0.000352, 0.000352, 1e-12, "entered"},
      // RF is printed to 0.01 kN; the paper's own roundings of speed and viscosity leave
      // 0.001 % between its RF and 0.075 / (log10 Rn - 2)^2 q S: 0.01 % allowed.
      {"RF (1+k1)", t.friction, 869.63 * 1.156, 869.63 * 1.18508, 0.0001 * 1030.6, "1984 1+k1"},
      // The m4 exchange is taken at the printed Fn 0.2868; at the program's 0.28684 it is
      // 0.02 % larger. RW itself is printed to 0.01 kN: 0.05 % allowed.
      {"RW + RB + RTR", t.residuary, 557.11 + 0.049, 568.48, 0.0005 * 568.5, "m4, rho_salt / rho_fresh"},
      // RA and its implied CA to the paper's 0.01 kN: 0.01 % allowed.
      {"RA on S", t.correlation, 221.98, 220.27, 0.0001 * 220.3, "RA on S + S_APP, CA digits"},
      // RAPP 8.83 printed to 0.01 kN (8.836 from the paper's inputs) and the CA digits on
      // 1.49 kN: 0.02 kN allowed.
      {"RAPP + RA on S_APP", t.appendages, 8.83, 10.32, 0.02, "CA on S_APP"},
      // The sum of the tolerances above.
      {"total", t.total, 1793.26, 1829.65, 0.103 + 0.284 + 0.022 + 0.02, "sum of the terms"},
  };
  for (const Row& r : rows) {
    EXPECT_NEAR(r.program, r.expected, r.tolerance)
        << r.term << ": paper " << r.published << ", program " << r.program << " (" << r.why << ")";
  }
}

// How the settings a user may choose move the 1982 result away from the paper, each change
// isolated against the run above: the change of each term in kN, computed from the paper's
// inputs (q S = 0.5 x 1025 x 12.8611^2 x 7381.45 = 625.738 MN, q S_APP = 4.2386 MN,
// CF 0.00138978, 20 ft model at Fn 0.28684: Rn 1.18696e7, CFm 0.00291263).
TEST(HoltropPaperTest, SingleScrewShip1982SettingsThatMoveTheResult) {
  EnterShip1982(0.0, 0.000352);
  ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
  const ShipTerms base = Terms(0);

  struct Row {
    const char* what;
    double formFactor;  // 0: the estimate list's Holtrop value
    int detail;         // expansion detail: 0 standard CA formula, 1 the settings' CA
    double ca;          // the settings' CA; -1: the estimate list's Holtrop proposal
    double expectedCa;
    double dFriction, dResiduary, dCorrelation, dAppendages;
  } const rows[] = {
      // The paper's 1.156 typed in: the friction term is the paper's RF (1+k1), 1.156 /
      // 1.18508 of the run above (-0.02908 CF q S); the model step takes 1.156 CFm off a
      // model CT built with 1.18508 CFm, and CR keeps 0.02908 x 0.00291263 x 625.738 MN.
      {"1+k1 1.156 typed in", 1.156, 1, 0.000352, 0.000352, -25.290, +53.001, 0.0, 0.0},
      // The estimate list's Holtrop CA, 0.00546 (L + 100)^-0.16 - 0.002 = 0.00018627 (the
      // CB term vanishes for T/L above 0.04); the paper's 0.006 and 0.00205 give 0.0003525.
      // The change acts on the hull (q S) and on the rudder (q S_APP) alike.
      {"Holtrop CA of the estimate list", 0.0, 1, -1.0, 0.000186274, 0.0, 0.0, -103.701, -0.7024},
      // The standard CA of expansion detail "Standard": (5.68 - 0.6 log10 Rn) 1e-3 plus the
      // ITTC-78 allowance for 150 um, (44 ((ks/L)^(1/3) - 10 Rn^(-1/3)) + 0.125) 1e-3 at
      // Rn 2.21872e9: 0.0000723 + 0.0001842.
      {"standard CA", 0.0, 0, 0.000352, 0.000256475, 0.0, 0.0, -59.774, -0.4049},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.what);
    EnterShip1982(r.formFactor, r.ca);
    if (r.ca < 0.0) P().ITTC78->CorrelationAllowance(Proposal(EstimateItem::CorrelationAllowance, "Holtrop"));
    P().Resistance->HullDragExpansionDetail(r.detail);
    ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
    const ShipTerms t = Terms(0);
    // The expected changes are exact consequences of the paper's inputs; what remains is the
    // storage of the inputs to ten digits and their conversion through feet: 1e-5 relative
    // of the term, 0.002 kN at least.
    auto tol = [](double term) { return std::max(0.002, 1e-5 * term); };
    EXPECT_NEAR(t.ca, r.expectedCa, 1e-9);
    EXPECT_NEAR(t.friction - base.friction, r.dFriction, tol(base.friction));
    EXPECT_NEAR(t.residuary - base.residuary, r.dResiduary, tol(base.residuary));
    EXPECT_NEAR(t.correlation - base.correlation, r.dCorrelation, tol(base.correlation));
    EXPECT_NEAR(t.appendages - base.appendages, r.dAppendages, tol(base.appendages));
    EXPECT_NEAR(t.total - base.total, r.dFriction + r.dResiduary + r.dCorrelation + r.dAppendages,
                tol(base.total));
  }
}

// ---- Holtrop (1984), twin-screw fast ship, 25 to 35 kn ---------------------------------------
//
// The fast ship of hull_model.h. The appendages of 50 m2 with 1+k2 3.0 are entered as the
// twin-screw set they stand for: two balanced foil rudders of 12.5 m2 (1+k2 2.5) and two
// shaft bossings of 12.5 m2 (1+k2 3.5), whose equivalent (2.5 x 25 + 3.5 x 25) / 50 is 3.0.
// CA is the paper's 0.00064 (the 1982 formula; the estimate list's later constants would give
// 0.000449). 1+k1 again from the estimate list: the 1984 regression gives 1.29699.
void EnterFastShip1984(const std::vector<double>& speedsKt) {
  EnterExampleShip(speedsKt);
  testing::UsePaperWater(*P().WaterProperties);
  testing::EnterHoltrop1984(*P().Hull);
  P().Hull->PropulsorCountPerHull(2);
  clsVXAppendage& a = *P().Appendage;
  a.RudderCount(2);
  a.RudderType(0);  // balanced foil, 1+k2 2.5
  a.RudderWettedSurface(kM2, 12.5);
  a.ShaftHullBossingWettedSurface(kM2, 12.5);  // per shaft, 1+k2 3.5
  SetExpansion(0.0, 0.00064);
  P().ITTC78->HullFormFactor(Proposal(EstimateItem::FormFactor, "Holtrop [ITTC57]"));
}

// The published table is tests/data/holtrop_1984_fast_ship.txt. The method's own RW and RTR
// (of the 20 ft model, before the expansion), and the program's terms against the paper:
//   1+k1         the same 1984 regression: 1.29699
//   residuary    RW x 1.02602 + RTR (the fresh/salt ratio on RW only; no bulb)
//   appendages   RAPP + CA q S_APP: the paper counts the latter in its RA
//   total        paper total + 0.02602 RW: 12.4 kN (1.9 %) at 25 kn, 16.1 kN (1.7 %) at 35 kn
// At 35 kn Fn is 0.813, above the method's range (0.8): the speed check says so.
TEST(HoltropPaperTest, FastShip1984From25To35Knots) {
  const auto rows = testing::ReadTable("holtrop_1984_fast_ship.txt", 5);
  std::vector<double> speeds;
  for (const auto& r : rows) speeds.push_back(r.Num(0));
  EnterFastShip1984(speeds);
  ASSERT_TRUE(CalcResistancePrediction()) << testing::CalcCause();
  for (int row = 0; row < SP().count(); ++row) {
    const auto& p = rows[static_cast<size_t>(row)];
    const double kn = p.Num(0), rw = p.Num(1), rapp = p.Num(2), rtr = p.Num(3), total = p.Num(4);
    SCOPED_TRACE(p.where);
    // The method: half a kN of rounding, and g 9.81 of the paper against 9.80665 (0.04 %).
    // RTR falls steeply towards c6 = 0 at FnT 5: computed 24.8, 15.4 and 2.2 kN against the
    // published 25, 16 and 2 (the paper's rounding and g); 0.75 kN allowed.
    HoltropTerms m;
    ASSERT_TRUE(CalcHoltropTerms(m, *P().Hull, SP().CoefFroudeLength(row))) << testing::CalcCause();
    EXPECT_NEAR(m.rw * kLbfToKN, rw, 0.75);
    EXPECT_NEAR(m.rtr * kLbfToKN * kSaltOverFresh, rtr, 0.75);
    EXPECT_TRUE(rtr != 0.0 || m.rtr == 0.0);

    const ShipTerms t = Terms(row);
    const double v = kn * kKnToMS;
    const double caOnAppendages = 0.00064 * 0.5 * kSalt * v * v * 50.0 / 1000.0;
    // 1+k1 printed to three decimals.
    EXPECT_NEAR(t.k1, 1.297, 5e-4);
    EXPECT_NEAR(t.ca, 0.00064, 1e-12);
    // Half a kN of rounding on RW (times the density ratio) and on a published RTR (a zero
    // RTR is exact: FnT above 5), and the paper's g of 9.81 in W and Fn (0.04 % of RW).
    const double rwTol = 0.5 * kSaltOverFresh + 0.0004 * rw;
    EXPECT_NEAR(t.residuary, rw * kSaltOverFresh + rtr, rwTol + (rtr > 0 ? 0.5 : 0.0))
        << "paper RW + RTR " << rw + rtr;
    // Half a kN of rounding on RAPP (the same formula: at 35 kn it computes to 39.496 kN and
    // is printed 39), and 0.05 % for the paper's speed and viscosity digits.
    EXPECT_NEAR(t.appendages, rapp + caOnAppendages, 0.5 + 0.0005 * rapp) << "paper RAPP " << rapp;
    // The total is rounded from unrounded terms: half a kN, the density ratio's part of the
    // RW rounding and the paper's g in RW.
    EXPECT_NEAR(t.total, total + (kSaltOverFresh - 1.0) * rw,
                0.5 + 0.5 * (kSaltOverFresh - 1.0) + 0.0004 * rw)
        << "paper total " << total;
    EXPECT_EQ(t.speedCheck, kn > 34.0 ? 2 : 1);
  }
}

}  // namespace
}  // namespace velmar
