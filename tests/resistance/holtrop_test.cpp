#include "resistance/holtrop.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "core/spline_fit.h"
#include "resistance/friction.h"

namespace velmar {
namespace {

constexpr double kLbfToKN = 4.4482216152605e-3;
constexpr double kSalt = 1025.0;  // kg/m3, the papers' sea water
// Over the basin's fresh water, StdDensityFresh slug/ft3 = 999.0 kg/m3.
constexpr double kSaltOverFresh = kSalt / (StdDensityFresh * 515.378818);

enum class Paper { None, HoltropMennen1982, Holtrop1984 };

// SI units (SigDigits 10) and water of exactly 1025 kg/m3, so that the displacement weight
// W = rho g Vol is the papers' own; the hull of one of the papers' ships, or none.
struct Ship {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units, water);

  explicit Ship(Paper paper) {
    ApplyUnitPreset(*units, UnitPreset::SI), units->SigDigits(10);
    water->WaterDefinitionIndex(3);  // custom water
    water->Density(kKgPerM3, kSalt), water->Viscosity(kM2PerSec, 1.18831e-6);
    ResetCalcErrorState();
    if (paper == Paper::HoltropMennen1982) {
      // Single-screw ship: bulb 20 m2 with its centre 4 m above the keel, transom 16 m2, Cstern 10.
      Enter(205.0, 32.0, 10.0, 37500.0, 0.98, 0.75, -0.75, 7381.45, 12.08);
      hull->BulbAreaSect(kM2, 20.0), hull->ZBulbAreaSectBelowWL(kM, 6.0);
      hull->AreaSectAtTr(kM2, 16.0), hull->SternShapeFactor(1.0);
    } else if (paper == Paper::Holtrop1984) {
      // Twin-screw fast ship: no bulb, transom 10 m2, Cstern 0, mean draft.
      Enter(50.0, 12.0, 3.2, 900.0, 0.78, 0.80, -4.5, 584.9, 25.0);
      hull->AreaSectAtTr(kM2, 10.0);
    }
  }
  // Main particulars in metres; lcb in percent of L forward of mid-length; S, iE as given.
  void Enter(double L, double B, double T, double vol, double cm, double cwp, double lcb, double s,
             double ie) {
    clsVXHull& h = *hull;
    h.Displacement(kKg, vol * kSalt), h.LengthWL(kM, L), h.BeamWLMax(kM, B), h.DraftSubmergedMax(kM, T);
    h.AreaSectMax(kM2, cm * B * T), h.AreaWaterplane(kM2, cwp * L * B);
    h.XBuoyancyFwdTr(kM, L * (0.5 + lcb / 100.0)), h.WettedSurface(kM2, s), h.AngleHalfEntDeg(ie);
  }
  double FnOfKnots(double kn) const {
    return kn * 6076.12 / 3600.0 / std::sqrt(GravityFt * hull->LengthWL(kFt));
  }
  HoltropTerms Terms(double fn) const {
    HoltropTerms t;
    EXPECT_TRUE(CalcHoltropTerms(t, *hull, fn)) << fn << GetCalcCause();
    return t;
  }
};

TEST(HoltropDragTest, SpeedCheckBandsModelAndTheLowSpeedWaveTerms) {
  Ship s(Paper::HoltropMennen1982);
  for (const auto& [fn, band] : {std::pair{0.0599, 0}, {0.06, 1}, {0.8, 1}, {0.8001, 2}}) {
    double ct = 0, lm = 0;
    int check = -1;
    ASSERT_TRUE(CalcHullDragHoltrop(ct, lm, check, *s.hull, fn)) << fn << GetCalcCause();
    EXPECT_EQ(check, band) << fn;
    EXPECT_EQ(lm, 20.0);
    // CT of the 20 ft model: its ITTC-57 friction times the form factor, plus CW.
    const HoltropTerms t = s.Terms(fn);
    const double rn = std::pow(20.0, 1.5) * fn * std::sqrt(GravityFt) / StdViscosityFresh;
    EXPECT_DOUBLE_EQ(t.cfModel, CalcFrictionITTC57(rn));
    EXPECT_DOUBLE_EQ(ct, t.k1 * t.cfModel + t.cw);
  }
  // Below Fn 0.04 the wave terms are those of Fn 0.04, CW scaled by Fn^4; friction stays at
  // the true speed.
  const HoltropTerms low = s.Terms(0.03), ref = s.Terms(0.04);
  EXPECT_NEAR(low.cw, ref.cw * std::pow(0.03 / 0.04, 4.0), 1e-12 * ref.cw);
  EXPECT_EQ(low.rw, ref.rw);
  EXPECT_NE(low.cfModel, ref.cfModel);
}

// Up to Fn 0.4 the low-speed wave formula, from 0.55 the high-speed one; between them the
// spline through (0.56, 0.551, 0.55) of the high-speed formula, the hump point (xh, yh) and
// (0.4, 0.399) of the low-speed one; the point at 0.39 is not part of the fit.
//
// CT is continuous where the spline takes over. The spline interpolates its end points,
// and EvalAtX solves for x to 1e-7 of the span, so a step of eps in Fn may move CW by about
// the local slope times (eps + 1e-7 x span): with slope estimated by the secant over 0.01
// and a factor 10 for curvature, that bounds the jump.
TEST(HoltropDragTest, HumpSplineBetweenFn04And055IsContinuous) {
  for (bool fast : {false, true}) {
    Ship s(fast ? Paper::Holtrop1984 : Paper::HoltropMennen1982);
    const double lvol = s.hull->CoefLwlVol();
    auto cw = [&s](double fn) { return s.Terms(fn).cw; };
    const double eps = 1e-7;
    for (double edge : {0.4, 0.55}) {
      const double slope = std::fabs(cw(edge + 0.005) - cw(edge - 0.005)) / 0.01;
      const double tol = 10.0 * slope * (eps + 1e-7 * 0.15);
      EXPECT_NEAR(cw(edge + eps), cw(edge), tol) << edge << " " << fast;
      EXPECT_NEAR(cw(edge - eps), cw(edge), tol) << edge << " " << fast;
    }
    const double xh = 0.53 - 0.11 * std::exp(-900.0 * std::pow(lvol, -3.5));
    const double yh = (1.0 + 0.0015 * lvol * lvol) * s.Terms(0.55).rw * xh * xh / (0.55 * 0.55);
    EXPECT_NEAR(s.Terms(xh).rw, yh, 1e-6 * yh) << fast;  // the curve passes through the hump point
    clsVXSplineFit fit;
    fit.count(6);
    const double xs[6] = {0.56, 0.551, 0.55, xh, 0.4, 0.399};
    for (int i = 0; i < 6; ++i) fit.x(i, xs[i]), fit.y(i, i == 3 ? yh : s.Terms(xs[i]).rw);
    fit.MakeControlWithLinearSections(kFreeEnd, kFreeEnd, kFreeEnd, kFreeEnd, 2);
    double expected = 0;
    ASSERT_TRUE(fit.EvalAtX(0.47, expected));
    EXPECT_NEAR(s.Terms(0.47).rw, expected, 1e-9 * expected) << fast;
  }
}

// A beamy hull (L/B 2.0) is computed as L/B 2.6: c7 = 0.5 - 0.0625 x 2.6, lambda and c17
// with 2.6 (c17 would vanish at 2.0). Without bulb and transom their terms are 0 (c5 1).
TEST(HoltropDragTest, BeamyHullTakenAtLB26WithoutBulbOrTransom) {
  Ship s(Paper::None);
  s.Enter(20.0, 10.0, 2.0, 220.0, 0.9, 0.85, -1.0, 260.0, 40.0);
  const HoltropTerms t = s.Terms(0.6);
  const double cp = s.hull->CoefPrismatic(), cm = s.hull->CoefAreaSectMax();
  EXPECT_NEAR(t.c7, 0.5 - 0.0625 * 2.6, 1e-12);
  EXPECT_NEAR(t.lambda, 1.446 * cp - 0.03 * 2.6, 1e-12);
  EXPECT_NEAR(t.c17,
              6919.3 * std::pow(cm, -1.3346) * std::pow(220.0 / 8000.0, 2.00977) * std::pow(0.6, 1.40692),
              1e-9 * t.c17);
  EXPECT_EQ((std::array{t.c3, t.c5, t.rb, t.rtr}), (std::array{0.0, 1.0, 0.0, 0.0}));
}

TEST(HoltropDragTest, FailuresReportTheirText) {
  auto fails = [](void (*edit)(Ship&), double fn, const std::string& cause) {
    Ship s(Paper::HoltropMennen1982);
    edit(s);
    double ct = -1, lm = 0;
    int check = -1;
    EXPECT_FALSE(CalcHullDragHoltrop(ct, lm, check, *s.hull, fn)) << cause;
    EXPECT_EQ(ct, 0.0) << cause;
    EXPECT_NE(GetCalcCause().find("\t" + cause + "\r\n"), std::string::npos) << GetCalcCause();
    EXPECT_EQ(GetCalcLocation(), "Holtrop bare-hull drag") << cause;
  };
  fails([](Ship& s) { s.hull->XBuoyancyFwdTr(kM, 0.0); }, 0.3, "XCB fwd transom");
  // Bulb centre at the waterline: its immersion is negative at low speed.
  fails([](Ship& s) { s.hull->ZBulbAreaSectBelowWL(kM, 0.0); }, 0.1, "Holtrop bulb centroid coef");
  // CP 0.2 (CB 0.18, CM 0.9); then CP 0.3 with the centre of buoyancy 20 % L aft of mid-length.
  fails([](Ship& s) { s.Enter(100.0, 10.0, 5.0, 900.0, 0.9, 0.7, 0.0, 1200.0, 10.0); }, 0.3,
        "Holtrop coef dblCoefPrismatic");
  fails([](Ship& s) { s.Enter(100.0, 10.0, 5.0, 1350.0, 0.9, 0.7, -20.0, 1200.0, 10.0); }, 0.3,
        "Holtrop length of run ratio");
  fails([](Ship&) {}, 0.0, "Division by zero");
  fails([](Ship& s) { s.hull->AngleHalfEntDeg(95.0); }, 0.3, "Invalid procedure call or argument");
}

// ---- The published examples, term by term ----------------------------------------------
//
// The method returns CT of a 20 ft model in fresh water: CT = (1+k1) CF(model) + CW, with
// CW = (RW + RB + RTR) / (0.5 rho_fresh S V^2). RW carries the vessel's own weight W (salt
// water here), RB and RTR are formed with the basin's fresh water. The ITTC-78 expansion then
// removes (1+k1) CF(model), adds the ship's friction and allowances, and multiplies the
// remainder by 0.5 rho_salt S V^2: the ship gets RW x rho_salt / rho_fresh (2.6 % above the
// paper's RW, because W already holds the salt water density), and RB, RTR as published.
// The terms are therefore compared with the papers before that expansion: RW as it stands,
// RB and RTR scaled from fresh to salt water.

// Holtrop & Mennen (1982) at 25 kn (Fn 0.2868).
TEST(HoltropDragTest, HoltropMennenExampleAt25Knots) {
  Ship s(Paper::HoltropMennen1982);
  const double fn = s.FnOfKnots(25.0);
  const HoltropTerms t = s.Terms(fn);
  // Published coefficients, to their printed digits.
  EXPECT_NEAR(t.c1, 1.398, 5e-4);
  EXPECT_NEAR(t.c2, 0.7595, 5e-5);
  EXPECT_NEAR(t.c3, 0.02119, 5e-6);
  EXPECT_NEAR(t.c5, 0.9592, 5e-5);
  EXPECT_NEAR(t.c7, 0.1561, 5e-5);
  EXPECT_NEAR(t.m1, -2.1274, 5e-5);
  EXPECT_NEAR(t.c15, -1.69385, 1e-9);
  EXPECT_NEAR(t.lambda, 0.6513, 5e-5);
  // RW: published 557.11 kN with the 1982 term m2 = c15 CP^2 exp(-0.1 Fn^-2) = -0.17087;
  // the 1984 revision uses m4 = 0.4 c15 exp(-0.034 Fn^-3.29) = -0.0854 instead, which gives
  // 554.06 kN here (Fn 0.28684 with g = 32.174 ft/s2). Exchanging the term reproduces the
  // paper to 0.13 kN; the rest is g (9.81 in the paper) in Fn and W, 0.1 % allowed.
  const double rw = t.rw * kLbfToKN;
  EXPECT_NEAR(rw, 554.06, 0.05);
  const double m4 = t.c15 * 0.4 * std::exp(-0.034 * std::pow(fn, -3.29));
  EXPECT_NEAR(rw * std::exp((-0.17087 - m4) * std::cos(t.lambda / (fn * fn))), 557.11, 0.55);
  // RB: published 0.049 kN with the 1982 bulb (PB 0.6261, Fni 1.5084). The 1984 bulb adds
  // the bow wave height hF and the wave height hW to the immersion (PB 0.506, Fni 1.63), and
  // exp(-3 PB^-2) falls from 4.7e-4 to 8e-6: 0.0009 kN. Either is negligible at 557 kN.
  EXPECT_NEAR(t.rb * kLbfToKN * kSaltOverFresh, 0.000938, 0.00003);
  // RTR: FnT 5.43 is above 5, c6 = 0: published 0.00 kN.
  EXPECT_EQ(t.rtr, 0.0);
  // 1+k1: 1.185 from the 1984 regression against the paper's 1.156 (see the estimates).
  EXPECT_NEAR(t.k1, 1.18508, 1e-5);
}

// Holtrop (1984), fast twin-screw ship, 25 to 35 kn (Fn 0.58 to 0.81, all on the high-speed
// formula). Published RW and RTR in kN, rounded to whole kN.
TEST(HoltropDragTest, HoltropFastShipTable) {
  Ship s(Paper::Holtrop1984);
  const double rows[][3] = {{25, 475, 25}, {27, 512, 16}, {29, 539, 2},
                            {31, 564, 0},  {33, 590, 0},  {35, 618, 0}};
  for (const auto& [kn, rw, rtr] : rows) {
    const HoltropTerms t = s.Terms(s.FnOfKnots(kn));
    // Half a kN of rounding, and g 9.81 of the paper against 9.80665 (0.04 %).
    EXPECT_NEAR(t.rw * kLbfToKN, rw, 0.75) << kn;
    // RTR falls steeply towards c6 = 0 at FnT 5: computed 24.8, 15.4 and 2.2 kN against
    // the published 25, 16 and 2 (the paper's rounding and g); 0.75 kN allowed.
    EXPECT_NEAR(t.rtr * kLbfToKN * kSaltOverFresh, rtr, 0.75) << kn;
    EXPECT_TRUE(rtr != 0.0 || t.rtr == 0.0) << kn;
    EXPECT_NEAR(t.k1, 1.297, 5e-4);  // published 1+k1
  }
}

}  // namespace
}  // namespace velmar
