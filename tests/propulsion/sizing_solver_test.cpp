// The propeller sizing solver: the Jacobian against finite differences, constructed answers
// for every sizing mode and flag combination (a known propeller's thrust or power at a
// design point, its sized quantities erased and recovered), efficiency optima that no
// neighbouring point on the demand curve beats, and every failure text.
#include "propulsion/sizing_solver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "app/application.h"
#include "core/constants.h"
#include "core/diagnostics.h"
#include "files/project_file.h"
#include "propulsion/propulsion_driver.h"

namespace velmar {
namespace {

const std::filesystem::path kExamples = std::filesystem::path(VELMAR_TEST_DATA) / ".." / ".." / "examples";

// The Jacobian of the sizing equations is the derivative of their residuals: central
// differences of F at (J, P/D, EAR) +- h, with the B-series polynomials and C, m and the
// blade-area target held, agree with the analytic entries.
TEST(SizingSystem, JacobianMatchesFiniteDifferences) {
  struct Case {
    bool byPower;
    int m, Z;
    double J, PD, EAR;
  };
  for (const Case& c : {Case{false, 4, 4, 0.7, 1.1, 0.7}, Case{false, 2, 3, 0.5, 0.8, 0.5},
                        Case{true, 5, 5, 0.9, 1.3, 0.9}, Case{true, 3, 4, 0.6, 1.0, 0.55}}) {
    SCOPED_TRACE(c.m);
    auto at = [&](double J, double PD, double EAR) {
      double KT = 0, KQ = 0;
      DerivativeArray kt{}, kq{};
      EXPECT_TRUE(CalcKTBSeries(KT, J, PD, EAR, c.Z, &kt) && CalcKQBSeries(KQ, J, PD, EAR, c.Z, &kq));
      return SizingSystem(J, KT, KQ, kt, kq, c.byPower, 0.3, c.m, EAR, 0.6);
    };
    const SizingEquations e = at(c.J, c.PD, c.EAR);
    const double h = 1e-5;
    for (int j = 0; j < 3; ++j) {
      std::array<double, 3> up{c.J, c.PD, c.EAR}, down = up;
      up[j] += h;
      down[j] -= h;
      const SizingEquations eu = at(up[0], up[1], up[2]), ed = at(down[0], down[1], down[2]);
      for (int i = 0; i < 3; ++i) {
        const double fd = (eu.F[i] - ed.F[i]) / (2 * h);
        EXPECT_NEAR(e.dF[i][j], fd, 1e-6 * (1.0 + std::fabs(fd))) << "dF" << i + 1 << "/dx" << j;
      }
    }
  }
}

// The patrol vessel's propeller on clean B-series charts (no scale correction, cup or
// oblique flow), so that the derivative arrays are those of the model.
class Sizing : public ::testing::Test {
 protected:
  void SetUp() override {
    NewProject();
    ASSERT_TRUE(OpenProjectFile(kExamples / "patrol_vessel_imperial.vxvl").opened);
    p = &App().primary;
    p->PropellerSeries->ScaleCorrection(0);
    p->PropellerSeries->ObliqueAngleCorrEnabled(0);
    ResetCalcErrorState();
  }
  int Size(const SizingProblem& q, SizingPoint& pt, SizingSummary* s = nullptr) {
    return SizePropeller(*p->WaterProperties, *p->Propulsion, *p->Propeller, *p->PropellerSeries, q, pt, s);
  }
  int Optimum(const SizingProblem& q, SizingPoint& pt) {
    return CalcOptimumPropeller(*p->WaterProperties, *p->Propulsion, *p->Propeller, *p->PropellerSeries, q,
                                pt);
  }
  // KT and KQ of a propeller at the design point's advance speed.
  void Coefficients(const SizingPoint& pt, double& KT, double& KQ) {
    double sa = 0, ta = 0, sp = 0, tp = 0;
    ASSERT_NE(CalcPropulsorKTKQ(KT, KQ, *p->WaterProperties, *p->Propulsion, *p->Propeller,
                                *p->PropellerSeries, pt.n, kVa, pt.D, pt.EAR, 1, pt.Pitch, sa, ta, sp, tp),
              0);
  }
  double Thrust(const SizingPoint& pt) {
    double KT = 0, KQ = 0;
    Coefficients(pt, KT, KQ);
    return KT * kRho * pt.n * pt.n * std::pow(pt.D, 4);
  }
  double Power(const SizingPoint& pt) {
    double KT = 0, KQ = 0;
    Coefficients(pt, KT, KQ);
    return 2 * Pi * KQ * kRho * std::pow(pt.n, 3) * std::pow(pt.D, 5) / (550 * kEtaR);
  }

  static constexpr double kVa = 30.0, kEtaR = 0.98, kRho = 1.99077;
  ModelSet* p = nullptr;
};

// Every mode and every combination of sized quantities. The known propeller (8 ft, P/D 1.1,
// 300 RPM, its blade area on Burrill's 10 % line) gives the design thrust or power. Where the
// demand and the criterion fix the answer, the sizing recovers the propeller; where the
// efficiency is optimised, the answer meets the demand, and a step of the pitch ratio or of
// the rate along the demand curve, in either direction, finds no better propeller.
TEST_F(Sizing, RecoversTheKnownPropellerOrItsOptimumForEveryModeAndFlagSet) {
  const SizingPoint known{5.0, 8.0, 8.8, 0.7, 0.0};
  for (int mode : {kSizeByPower, kSizeByThrust, kSizeByTotalDrag}) {
    // The blade area of the known propeller on the criterion at its own thrust or power:
    // a few rounds, since the thrust depends a little on the blade area.
    SizingPoint own = known;
    SizingProblem q{.DMax = 9.0, .V = kVa, .etaR = kEtaR, .Mode = mode, .EARFlag = 1};
    for (int round = 0; round < 8; ++round) {
      q.T = Thrust(own), q.P = Power(own);
      ASSERT_NE(Size(q, own), 0) << GetCalcCause();
    }
    const double T0 = Thrust(own), P0 = Power(own);
    q.T = T0, q.P = P0;
    for (int flags = 0; flags < 16; ++flags) {
      q.RateFlag = flags & 1, q.DiameterFlag = (flags >> 1) & 1, q.PitchFlag = (flags >> 2) & 1;
      q.EARFlag = (flags >> 3) & 1;
      SCOPED_TRACE(::testing::Message()
                   << "mode " << mode << " rate " << q.RateFlag << " diameter " << q.DiameterFlag << " pitch "
                   << q.PitchFlag << " EAR " << q.EARFlag);
      // The sized quantities are erased; a kept pitch keeps the pitch ratio of the
      // propeller as given, so its diameter stays to tell that ratio.
      SizingPoint pt = own;
      if (q.RateFlag) pt.n = 0;
      if (q.DiameterFlag && q.PitchFlag) pt.D = 0;
      if (q.PitchFlag) pt.Pitch = 0;
      if (q.EARFlag) pt.EAR = 0;
      SizingSummary s;
      ASSERT_NE(Size(q, pt, &s), 0) << GetCalcCause();
      EXPECT_EQ(s.stop, SizingStop::kConverged);
      // The demand is met.
      if (mode == kSizeByPower)
        EXPECT_NEAR(Power(pt), P0, 1e-3 * P0);
      else
        EXPECT_NEAR(Thrust(pt), T0, 1e-3 * T0);
      const bool jFree = q.RateFlag || q.DiameterFlag;
      if (!(q.RateFlag && q.DiameterFlag) && !(jFree && q.PitchFlag)) {
        // Nothing to optimise: the known propeller comes back.
        EXPECT_NEAR(pt.n, own.n, 1e-3 * own.n);
        EXPECT_NEAR(pt.D, own.D, 1e-3 * own.D);
        EXPECT_NEAR(pt.Pitch / pt.D, own.Pitch / own.D, 1e-3);
        EXPECT_NEAR(pt.EAR, own.EAR, 1e-3);
        continue;
      }
      // An optimum: neighbours on the demand curve are not better. Pitch ratio steps when it
      // is sized with J free; rate steps when rate and diameter are both sized (a neighbour
      // that would need more than the largest diameter is off the curve).
      SizingProblem held = q;
      held.EARFlag = 0;
      int compared = 0;
      for (double f : {0.97, 1.03}) {
        SizingPoint nb = pt;
        SizingProblem h = held;
        if (q.RateFlag && q.DiameterFlag)
          nb.n = pt.n * f, h.RateFlag = 0;
        else
          nb.Pitch = pt.Pitch * f, h.PitchFlag = 0;
        if (Size(h, nb) == 0) continue;
        const double demand = mode == kSizeByPower ? Power(nb) / P0 : Thrust(nb) / T0;
        if (std::fabs(demand - 1.0) > 1e-3) continue;
        ++compared;
        EXPECT_LE(nb.Eta, pt.Eta + 1e-6) << "at factor " << f;
      }
      EXPECT_GE(compared, 1);
    }
  }
}

// With rate and diameter both sized the best rate lies where the largest diameter binds;
// the search over the rate lands on the rate that a sizing of rate and pitch finds for that
// diameter.
TEST_F(Sizing, TheRateSearchMeetsTheOptimumOfTheLargestDiameter) {
  SizingProblem q{
      .DMax = 7.5, .V = kVa, .etaR = kEtaR, .T = 30000.0, .RateFlag = 1, .DiameterFlag = 1, .PitchFlag = 1};
  q.EARFlag = 0;
  SizingPoint pt{0, 0, 0, 0.7, 0}, direct{0, 7.5, 0, 0.7, 0};
  SizingSummary s;
  ASSERT_NE(Size(q, pt, &s), 0) << GetCalcCause();
  EXPECT_TRUE(s.diameterAtMax);
  EXPECT_GT(s.gearRatioPasses, 0);
  q.DiameterFlag = 0;
  ASSERT_NE(Size(q, direct), 0) << GetCalcCause();
  EXPECT_EQ(pt.D, 7.5);
  EXPECT_NEAR(pt.n, direct.n, 0.01 * direct.n);  // the search's own tolerance
  EXPECT_NEAR(pt.Eta, direct.Eta, 1e-4);
}

// Every failure text of the solver, each from a design point spoilt in one way.
TEST_F(Sizing, FailuresNameTheirCause) {
  const SizingProblem base{
      .DMax = 9.0, .V = kVa, .etaR = kEtaR, .T = 20000.0, .P = 1000.0, .Mode = kSizeByThrust};
  const SizingPoint good{5.0, 8.0, 8.8, 0.7, 0.0};
  struct Case {
    const char* text;
    std::function<void(SizingProblem&, SizingPoint&)> spoil;
    bool fails = true;
  };
  const Case cases[] = {
      {"Design speed missing", [](auto& q, auto&) { q.V = 0; }},
      {"Design relative-rotative efficiency missing", [](auto& q, auto&) { q.etaR = 0; }},
      {"Design thrust missing", [](auto& q, auto&) { q.T = 0, q.Mode = kSizeByTotalDrag; }},
      {"Design power missing", [](auto& q, auto&) { q.P = 0, q.Mode = kSizeByPower; }},
      {"Design RPM missing", [](auto&, auto& pt) { pt.n = 0; }},
      {"Diameter missing", [](auto&, auto& pt) { pt.D = 0; }},
      {"Max diameter missing", [](auto& q, auto&) { q.DMax = 0, q.DiameterFlag = 1; }},
      {"Design pitch missing", [](auto&, auto& pt) { pt.Pitch = 0; }},
      {"Design EAR missing", [](auto&, auto& pt) { pt.EAR = 0; }},
      {"Pitch is converging on a series limit. Manually set pitch to exceed the limit.",
       [](auto& q, auto&) { q.T = 200000.0, q.PitchFlag = 1; }},
      {"Propeller sizing [max iterations]",
       [](auto& q, auto&) { q.PitchFlag = 1, q.RateFlag = 1, q.maxPasses = 2; }},
      {"KTKQ calculation", [this](auto&, auto&) { p->PropellerSeries->Series(1); }},
      {"Design point out of reach of the series", [](auto& q, auto&) { q.T = 1e9, q.RateFlag = 1; }},
      {"Extreme cavitation", [](auto& q, auto&) { q.T = 6000, q.RateFlag = 1; }, false},
      {"The largest diameter cannot meet the design point with rate and pitch kept.",
       [](auto& q, auto&) { q.DMax = 5, q.DiameterFlag = 1; }, false},
      {"Excessive cavitation is indicated. Thrust breakdown is likely.",
       [](auto& q, auto& pt) { pt.EAR = 2.1, q.PitchFlag = 1; }, false},
      {"Gear ratio solution [data]", [](auto& q, auto&) { q.DMax = 3, q.RateFlag = q.DiameterFlag = 1; },
       false},
      {"Calculation break", [](auto&, auto&) { SetCalcCancelFlag(true); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    SetUp();
    SizingProblem q = base;
    SizingPoint pt = good;
    c.spoil(q, pt);
    SizingSummary s;
    const int r = Size(q, pt, &s);
    SetCalcCancelFlag(false);
    const std::string cause = GetCalcCause();
    if (c.fails) {
      EXPECT_EQ(r, 0);
      EXPECT_NE(cause.find(c.text), std::string::npos) << cause;
      EXPECT_NE(cause.find("propeller sizing"), std::string::npos) << cause;
    } else {
      // A warning: the solution stands, and the summary keeps the text (the calculation
      // state loses it at the next progress text).
      EXPECT_NE(r, 0) << cause;
      EXPECT_NE(std::find(s.warnings.begin(), s.warnings.end(), c.text), s.warnings.end());
    }
  }
}

}  // namespace
}  // namespace velmar
