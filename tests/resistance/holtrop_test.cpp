// The Holtrop method's behaviour: the speed bands, the spline over the hump, the limits it
// takes its inputs to, and its failures. The published examples: holtrop_paper_test.cpp.
#include "resistance/holtrop.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "../vessel/hull_model.h"
#include "core/constants.h"
#include "core/diagnostics.h"
#include "core/spline_fit.h"
#include "resistance/friction.h"

namespace velmar {
namespace {

using testing::EnterHoltrop1984;
using testing::EnterHoltropMennen1982;
using testing::EnterHull;

// A hull in SI units and the papers' water.
struct Ship : testing::HullModel {
  explicit Ship(void (*enter)(clsVXHull&) = nullptr) : HullModel(UnitPreset::SI, true) {
    if (enter) enter(*hull);
  }
  HoltropTerms Terms(double fn) const {
    HoltropTerms t;
    EXPECT_TRUE(CalcHoltropTerms(t, *hull, fn)) << fn << GetCalcCause();
    return t;
  }
};

TEST(HoltropDragTest, SpeedCheckBandsModelAndTheLowSpeedWaveTerms) {
  Ship s(EnterHoltropMennen1982);
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
    Ship s(fast ? EnterHoltrop1984 : EnterHoltropMennen1982);
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
  Ship s;
  EnterHull(*s.hull, 20.0, 10.0, 2.0, 220.0, 0.9, 0.85, -1.0, 260.0, 40.0);
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
    Ship s(EnterHoltropMennen1982);
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
  fails([](Ship& s) { EnterHull(*s.hull, 100.0, 10.0, 5.0, 900.0, 0.9, 0.7, 0.0, 1200.0, 10.0); }, 0.3,
        "Holtrop coef dblCoefPrismatic");
  fails([](Ship& s) { EnterHull(*s.hull, 100.0, 10.0, 5.0, 1350.0, 0.9, 0.7, -20.0, 1200.0, 10.0); }, 0.3,
        "Holtrop length of run ratio");
  fails([](Ship&) {}, 0.0, "Division by zero");
  fails([](Ship& s) { s.hull->AngleHalfEntDeg(95.0); }, 0.3, "Invalid procedure call or argument");
}

}  // namespace
}  // namespace velmar
