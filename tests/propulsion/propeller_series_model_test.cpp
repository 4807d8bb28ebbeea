#include "propulsion/propeller_series_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "propulsion/gawn_kca.h"
#include "propulsion/propeller_formulas.h"

namespace velmar {
namespace {

double KTB(double J, double PD, double EAR, int Z, DerivativeArray* d = nullptr) {
  double k = 0.0;
  EXPECT_TRUE(CalcKTBSeries(k, J, PD, EAR, Z, d));
  return k;
}
double KQB(double J, double PD, double EAR, int Z, DerivativeArray* d = nullptr) {
  double k = 0.0;
  EXPECT_TRUE(CalcKQBSeries(k, J, PD, EAR, Z, d));
  return k;
}

// The open-water polynomials of each series on the check values of the literature shelf, and
// their nine derivatives against central differences at each check point (J = 0 added for the
// powers of zero).
TEST(SeriesPolynomialsTest, CheckValuesAndDerivatives) {
  using Coef = std::function<double(double J, double PD, double EAR, int Z, DerivativeArray* d)>;
  struct Point {
    double J, PD, EAR;
    int Z;
    double KT, KQ, tol;
  };
  std::vector<Point> bseries, gawn;
  auto lines = [](const char* file, char separator) {
    std::ifstream in(std::string(VELMAR_TEST_DATA) + "/" + file);
    EXPECT_TRUE(in) << file;
    std::vector<std::vector<double>> rows;
    for (std::string line; std::getline(in, line);) {
      if (line.empty() || line[0] == '#' || line[0] == 'Z') continue;  // comments, the CSV header
      std::replace(line.begin(), line.end(), separator, ' ');
      std::istringstream s(line);
      std::vector<double>& row = rows.emplace_back();
      for (double v; s >> v;) row.push_back(v);
    }
    return rows;
  };
  // Oosterveld & van Oossanen (1975), to 8 decimals: Z, EAR, PD, J, KT, KQ.
  for (const auto& r : lines("bseries_check_values.csv", ','))
    bseries.push_back({r[3], r[2], r[1], static_cast<int>(r[0]), r[4], r[5], 1e-8});
  ASSERT_EQ(bseries.size(), 12u);
  // Radojcic's Gawn KCA regression, to 6 decimals, at the developed area ratio x of each row:
  // AE/A0 = 0.935 x + 0.1133 x^2 is the ratio that the program takes to that x. The program's
  // own x of the row's AE/A0 is the true inverse.
  for (const auto& r : lines("gawn_kca_check_values.txt", ' ')) {
    EXPECT_NEAR(GawnDevelopedAreaRatio(r[2]), r[4], 5e-7) << "AE/A0 " << r[2];
    gawn.push_back({r[0], r[1], 0.935 * r[3] + 0.1133 * r[3] * r[3], 3, r[5], r[6], 6e-7});
  }
  ASSERT_EQ(gawn.size(), 4u);

  auto gawnKT = [](double J, double PD, double EAR, int, DerivativeArray* d) {
    double k = 0.0;
    EXPECT_TRUE(CalcKTGawnKCA(k, J, PD, EAR, d));
    return k;
  };
  auto gawnKQ = [](double J, double PD, double EAR, int, DerivativeArray* d) {
    double k = 0.0;
    EXPECT_TRUE(CalcKQGawnKCA(k, J, PD, EAR, d));
    return k;
  };
  bseries.push_back({0.0, 1.0, 0.7, 5, NAN, NAN, 0});
  gawn.push_back({0.0, 1.2, 0.9, 3, NAN, NAN, 0});
  const struct {
    const char* series;
    std::vector<Point>& points;
    Coef kt, kq;
  } families[] = {{"B Series", bseries, KTB, KQB}, {"Gawn KCA", gawn, gawnKT, gawnKQ}};

  const double h = 1e-4;
  for (const auto& family : families) {
    for (const Point& x : family.points) {
      SCOPED_TRACE(std::string(family.series) + " J " + std::to_string(x.J) + " PD " + std::to_string(x.PD));
      for (const auto& [f, expected] : {std::pair{&family.kt, x.KT}, std::pair{&family.kq, x.KQ}}) {
        DerivativeArray d;
        const double value = (*f)(x.J, x.PD, x.EAR, x.Z, &d);
        if (!std::isnan(expected)) {
          EXPECT_NEAR(value, expected, x.tol);
        }
        auto g = [&](double dj, double dp, double de) {
          return (*f)(x.J + dj, x.PD + dp, x.EAR + de, x.Z, nullptr);
        };
        const double g0 = g(0, 0, 0);
        EXPECT_EQ(g0, value);  // the derivatives do not change the sum
        auto first = [&](double a, double b, double c) { return (g(a, b, c) - g(-a, -b, -c)) / (2 * h); };
        auto second = [&](double a, double b, double c) {
          return (g(a, b, c) - 2 * g0 + g(-a, -b, -c)) / (h * h);
        };
        auto mixed = [&](double a, double b, double c, double a2, double b2, double c2) {
          return (g(a + a2, b + b2, c + c2) - g(a - a2, b - b2, c - c2) - g(a2 - a, b2 - b, c2 - c) +
                  g(-a - a2, -b - b2, -c - c2)) /
                 (4 * h * h);
        };
        const DerivativeArray fd = {
            first(h, 0, 0),          first(0, h, 0),          first(0, 0, h),
            second(h, 0, 0),         second(0, h, 0),         second(0, 0, h),
            mixed(h, 0, 0, 0, h, 0), mixed(h, 0, 0, 0, 0, h), mixed(0, h, 0, 0, 0, h)};
        for (size_t i = 0; i < d.size(); ++i) EXPECT_NEAR(d[i], fd[i], 1e-5) << "derivative " << i;
      }
    }
  }
}

// Reynolds-number correction of the regression: the shelf's check values for B4-70, P/D 1.0.
TEST(BSeriesTest, ReynoldsCorrectionCheckValues) {
  const struct {
    double Rn, J, dKT, dKQ;
  } cases[] = {
      {2e6, 0.3, 1.748229e-05, -6.266177e-09}, {2e6, 0.6, -7.325986e-05, -3.099816e-06},
      {1e7, 0.3, 1.585835e-04, -7.948153e-04}, {1e7, 0.6, 3.640660e-04, -8.017512e-04},
      {1e8, 0.3, 3.745250e-04, -1.628934e-03}, {1e8, 0.6, 1.046023e-03, -1.642630e-03},
      {1e9, 0.3, 6.070312e-04, -2.106371e-03}, {1e9, 0.6, 1.794239e-03, -2.128315e-03},
  };
  for (const auto& c : cases) {
    double dKT = 0, dKQ = 0;
    ASSERT_TRUE(CalcBSeriesReynoldsCorrection(dKT, dKQ, c.J, 1.0, 0.70, 4, c.Rn));
    EXPECT_NEAR(dKT, c.dKT, 1e-6 * std::abs(c.dKT)) << c.Rn << " " << c.J;
    EXPECT_NEAR(dKQ, c.dKQ, 1e-6 * std::abs(c.dKQ)) << c.Rn << " " << c.J;
  }
}

// Holtrop & Mennen (1982) section-drag correction: the literature shelf's three check values.
TEST(BSeriesTest, ScaleCorrectionCheckValues) {
  const struct {
    double EAR, D;
    int Z;
    double PD, chord, tc, dCD, dKT, dKQ;
  } cases[] = {
      {0.60, 6.0, 4, 0.9, 1.8657, 0.04341534, 0.00033333919, -0.00011194397, 0.00010365182},
      {0.7393, 8.0, 4, 1.0, 3.0651378, 0.035234957, 0.0009564875, -0.0004397649, 0.00036647075},
      {0.45, 3.0, 3, 0.8, 0.93285, 0.047435279, -0.00070972701, 0.00015889652, -0.00016551721},
  };
  for (const auto& c : cases) {
    BSeriesScaleCorrection r;
    ASSERT_TRUE(CalcBSeriesScaleCorrection(r, c.PD, c.EAR, c.Z, c.D, 0.0, 0.0));
    EXPECT_NEAR(r.chord, c.chord, 1e-7 * std::abs(c.chord));
    EXPECT_NEAR(r.tc, c.tc, 1e-7 * std::abs(c.tc));
    EXPECT_NEAR(r.dCD, c.dCD, 1e-7 * std::abs(c.dCD));
    EXPECT_NEAR(r.dKT, c.dKT, 1e-7 * std::abs(c.dKT));
    EXPECT_NEAR(r.dKQ, c.dKQ, 1e-7 * std::abs(c.dKQ));
  }
}

TEST(PropellerFormulasTest, KellerReproducesPublishedCheckValue) {
  // T = 1000 kN, D = 6 m, Z = 4, h = 5 m, p0 - pv = 99047 Pa, rho g = 1025 * 9.81: 0.665061.
  const double p = (99047.0 + 1025.0 * 9.81 * 5.0) / 6894.757293168;  // psi
  EXPECT_NEAR(CalcKellerEAR(1e6 / 4.4482216152605, 1.0, 1.0, 6.0 / 0.3048, 4, 1, p), 0.665061, 1e-6);
  EXPECT_EQ(CalcKellerEAR(1000.0, 0.0, 1.0, 6.0, 4, 1, 20.0), 0.0);  // every input must be above 0
}

// The EAR of a Burrill line, put back through the projected area, loads the blade with the
// line's own tau: the two formulas invert each other (to the 0.34 ~ 1/2.94 rounding).
TEST(PropellerFormulasTest, BurrillEARInvertsTau) {
  const double rho = 1.9905, Va = 20.0, n = 3.0, D = 12.0, P = 11.0, KT = 0.2, H = 10.0;
  const double T = KT * rho * n * n * std::pow(D, 4), q = CalcDynamicPressure07R(rho, Va, n, D);
  const double sigma = CalcSigma07R(rho, Va, n, D, H);
  for (const auto& [method, x] : {std::pair{2, 2.395}, std::pair{3, 3.045}}) {
    const double EAR = CalcBurrillEAR(method, P, D, 4, T, sigma, q);
    const double line = std::cbrt(sigma) * std::pow(0.87, 1.0 / sigma) / x;
    EXPECT_NEAR(CalcTau07R(KT, Va, n, 4, EAR, D, P) / line, 1.0, 1e-3) << method;
  }
}

TEST(PropellerFormulasTest, TipSpeedCheckLimits) {
  const struct {
    double tip;
    int analysis, series, Z, code;
  } cases[] = {
      {190, 0, 0, 5, 2},  {160, 0, 0, 5, 1}, {150, 0, 0, 5, 0},  // limit 150, 1.1 limit 165
      {176, 0, 2, 4, 1},  {175, 0, 2, 4, 0},                     // 175 up to four blades
      {122, 1, 1, 4, 2},                                         // towing: 110
      {105, 0, 10, 4, 1}, {500, 0, 9, 4, 0},                     // Kaplan 100; cycloidal none
  };
  for (const auto& c : cases) EXPECT_EQ(CalcTipSpeedCheck(c.tip, c.analysis, c.series, c.Z), c.code) << c.tip;
}

class PropellerSeriesModelTest : public ::testing::Test {
 public:
  void SetUp() override {
    ResetCalcErrorState();
    water->Density(kSlugPerFt3, 1.9905);
    water->Viscosity(kFt2PerSec, 1.27908e-5);
    propeller->BladeCount(4);
    propeller->Diameter(kFt, 10.0);
    propeller->PitchMean(kFt, 10.0);
    propeller->ExpAreaRatio(0.7);
    propeller->HubImmersion(kFt, 8.0);
  }
  int Axial(double& KT, double& KQ, double Va, double EAR, int cupFlag = 0, DerivativeArray* dkt = nullptr) {
    double s, sv, t;
    return CalcPropellerSeriesAxial(KT, KQ, *water, *propeller, series, 0, n, Va, 10.0, EAR, cupFlag, 10.0, s,
                                    sv, t, dkt, nullptr);
  }
  // The cavitation pairs go to `cav`: sigma and tau of the mean, then of the peak.
  int Performance(double& KT, double& KQ) {
    return CalcPropellerSeriesPerformance(KT, KQ, *water, propulsion, *propeller, series, n, Va, 10.0, 0.7, 0,
                                          10.0, nullptr, nullptr, cav[0], cav[1], cav[2], cav[3]);
  }

  const double n = 2.0, Va = 12.0, J = Va / (n * 10.0);
  double cav[4] = {};
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXPropeller> propeller = std::make_shared<clsVXPropeller>(units);
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units);
  clsVXPropellerSeries series{units, water, propeller};
  clsVXPropulsion propulsion{units, water, propeller, hull};
};

// Each correction against the B-series polynomials themselves at the corrected point.
TEST_F(PropellerSeriesModelTest, AxialCorrections) {
  const double kt = KTB(J, 1.0, 0.7, 4), kq = KQB(J, 1.0, 0.7, 4), PDc = 1.0 * (0.21 + 10.0) / 10.0;
  const double r = 0.85 * kt / (J * J);
  BSeriesScaleCorrection sc;
  ASSERT_TRUE(CalcBSeriesScaleCorrection(sc, 1.0, 0.7, 4, 10.0 * 0.3048, 0.0, 0.0));
  // The B-series Reynolds correction at the section Reynolds number on the chord at 0.75R.
  double dKT = 0.0, dKQ = 0.0;
  const double Rn = 2.073 * 0.7 * 10.0 / 4 * std::hypot(Va, 0.75 * Pi * n * 10.0) / 1.27908e-5;
  ASSERT_TRUE(CalcBSeriesReynoldsCorrection(dKT, dKQ, J, 1.0, 0.7, 4, Rn));
  const struct {
    const char* name;
    std::function<void(PropellerSeriesModelTest&)> setup;
    double Va, EAR;
    int cupFlag;
    double KT, KQ, arrayFactor;
  } cases[] = {
      {"plain; multiplier -1 is 1", [](auto& t) { t.series.KTMultiplier(-1.0); }, Va, 0.7, 0, kt, kq, 1.0},
      {"EAR 0 is the propeller's", [](auto&) {}, Va, 0.0, 0, kt, kq, 1.0},
      {"Va 0", [](auto&) {}, 0.0, 0.7, 0, KTB(1e-6 / 20.0, 1.0, 0.7, 4), KQB(1e-6 / 20.0, 1.0, 0.7, 4), 1.0},
      {"multipliers", [](auto& t) { t.series.KTMultiplier(1.2), t.series.KQMultiplier(0.9); }, Va, 0.7, 0,
       1.2 * kt, 0.9 * kq, 1.2},
      {"cup 0.01 ft", [](auto& t) { t.propeller->CupDrop(kFt, 0.01); }, Va, 0.7, 1, KTB(J, PDc, 0.7, 4),
       KQB(J, PDc, 0.7, 4), 1.0},
      {"cup without the flag", [](auto& t) { t.propeller->CupDrop(kFt, 0.01); }, Va, 0.7, 0, kt, kq, 1.0},
      {"CRP behind a rudder", [](auto& t) { t.propeller->PropellerType(2); }, Va, 0.7, 0,
       2 * 0.85 * kt * (1.85 * r + 1) / (1.7 * r + 1.07), 2 * 0.85 * kq * (2 * r + 0.94) / (2 * r + 1), 1.7},
      {"CRP in free stream", [](auto& t) { t.propeller->PropellerType(2), t.series.CRPRudderLocation(1); },
       Va, 0.7, 0, 2 * 0.85 * kt * (1.85 * r + 1) / (1.7 * r + 1.07), 2 * 0.85 * kq, 1.7},
      {"B Series scale correction (Reynolds)", [](auto& t) { t.series.ScaleCorrection(1); }, Va, 0.7, 0,
       kt + dKT, kq + dKQ, 1.0},
      {"Part ITTC scale correction", [](auto& t) { t.series.ScaleCorrection(3); }, Va, 0.7, 0, kt - sc.dKT,
       kq - sc.dKQ, 1.0},
      {"B Series scale correction, none at the charts' Rn 2e6 and below",
       [](auto& t) { t.series.ScaleCorrection(1), t.water->Viscosity(kFt2PerSec, 1e-4); }, Va, 0.7, 0, kt, kq,
       1.0},
  };
  for (const auto& c : cases) {
    SetUp();
    series.KTMultiplier(1.0), series.KQMultiplier(1.0), series.ScaleCorrection(0),
        series.CRPRudderLocation(0);
    propeller->CupDrop(kFt, 0.0), propeller->PropellerType(0);
    c.setup(*this);
    double KT, KQ;
    DerivativeArray d, dB;
    ASSERT_EQ(Axial(KT, KQ, c.Va, c.EAR, c.cupFlag, &d), 1) << c.name << GetCalcCause();
    EXPECT_NEAR(KT, c.KT, 1e-12) << c.name;
    EXPECT_NEAR(KQ, c.KQ, 1e-12) << c.name;
    KTB(c.Va > 0 ? J : 1e-6 / 20.0, 1.0, 0.7, 4, &dB);
    EXPECT_NEAR(d[0], c.arrayFactor * dB[0], 1e-12) << c.name;

    // The plain evaluation of a run gives the same bits where it takes the case, with or
    // without KQ and the derivatives, and leaves the location where the full one does.
    SeriesModelInputs in;
    ReadSeriesModelInputs(in, *water, propulsion, *propeller, series);
    double s = 0.0, sv = 0.0, tau = 0.0;
    ASSERT_EQ(CalcPropellerSeriesAxial(KT, KQ, *water, *propeller, series, 0, n, c.Va, 10.0, c.EAR, c.cupFlag,
                                       10.0, s, sv, tau, &d, &dB),
              1);
    for (int needs : {0, kQuickKQ | kQuickCavitation}) {
      QuickSeriesResult q;
      DerivativeArray qd{}, qdB{};
      SetCalcLocation("elsewhere");
      const bool arrays = needs != 0;
      if (!QuickSeriesKTKQ(in, n, c.Va, 10.0, c.EAR, c.cupFlag, 10.0, needs, q, arrays ? &qd : nullptr,
                           arrays ? &qdB : nullptr, true)) {
        EXPECT_TRUE(c.EAR == 0.0 || propeller->PropellerType() == 2 || series.ScaleCorrection() == 1)
            << c.name;
        EXPECT_EQ(GetCalcLocation(), "elsewhere") << c.name;
        continue;
      }
      EXPECT_EQ(q.KT, KT) << c.name;
      EXPECT_EQ(GetCalcLocation(), "propeller series axial performance calculation") << c.name;
      if (!arrays) {
        // KT alone by the rate's plan, where the plan takes the case.
        double kt = 0.0;
        if (QuickSeriesKT(PrepareQuickSeriesKT(in, c.Va, 10.0, c.EAR, c.cupFlag, 10.0), n, kt))
          EXPECT_EQ(kt, KT) << c.name;
        else
          EXPECT_EQ(c.cupFlag, 1) << c.name;
        continue;
      }
      EXPECT_EQ(q.KQ, KQ) << c.name;
      EXPECT_EQ(q.sigma, s) << c.name;
      EXPECT_EQ(q.tau, tau) << c.name;
      EXPECT_EQ(qd, d) << c.name;
      EXPECT_EQ(qdB, dB) << c.name;
    }
  }
}

// Gawn KCA takes the same route with its own polynomials and derivatives.
TEST_F(PropellerSeriesModelTest, GawnKCAThroughTheSeriesModel) {
  series.Series(2);
  propeller->BladeCount(3);
  double KT, KQ, kt, kq;
  DerivativeArray d, dq, expected, expectedQ;
  double s, sv, t;
  ASSERT_EQ(CalcPropellerSeriesAxial(KT, KQ, *water, *propeller, series, 0, n, Va, 10.0, 0.7, 0, 10.0, s, sv,
                                     t, &d, &dq),
            1)
      << GetCalcCause();
  ASSERT_TRUE(CalcKTGawnKCA(kt, J, 1.0, 0.7, &expected));
  ASSERT_TRUE(CalcKQGawnKCA(kq, J, 1.0, 0.7, &expectedQ));
  EXPECT_EQ(KT, kt);
  EXPECT_EQ(KQ, kq);
  EXPECT_EQ(d, expected);
  EXPECT_EQ(dq, expectedQ);
}

TEST_F(PropellerSeriesModelTest, UnavailableCombinationsFailWithTheirName) {
  const struct {
    int series, scaleCorrection;
    const char* cause;
  } cases[] = {
      {1, 0, "Propeller series not available: Gawn AEW"},
      {0, 2, "Scale correction not available: Equiv profile on B Series"},
      {0, 4, "Scale correction not available: Full ITTC on B Series"},
      {2, 1, "Scale correction not available: B Series on Gawn KCA"},
  };
  for (const auto& c : cases) {
    ResetCalcErrorState();
    series.Series(c.series), series.ScaleCorrection(c.scaleCorrection);
    double KT, KQ;
    EXPECT_EQ(Axial(KT, KQ, Va, 0.7), 0);
    EXPECT_NE(GetCalcCause().find(c.cause), std::string::npos) << GetCalcCause();
  }
  double KT, KQ, s, t;
  EXPECT_EQ(CalcPropellerSeriesPerformance(KT, KQ, *water, propulsion, *propeller, series, 0.0, Va, 10.0, 0.7,
                                           0, 10.0, nullptr, nullptr, s, t, s, t),
            0);
  EXPECT_NE(GetCalcCause().find("Propulsor RPM"), std::string::npos);
}

// Four blades at 0, 90, 180 and 270 degrees: two at the shaft rate, one faster, one slower,
// and the torque side force leaning the thrust by the shaft angle.
TEST_F(PropellerSeriesModelTest, ObliqueFlowBladeSum) {
  series.ObliqueAngleCorrEnabled(1);
  propulsion.AngleShaftDeg(8.0);
  const double th = 8.0 * DegToRad, vx = Va * std::cos(th), vy = Va * std::sin(th);
  double sumKT = 0.0, sumKQ = 0.0, side = 0.0, peak[2] = {1.0, 0.0};
  for (int k = 0; k < 4; ++k) {
    const double a = k * Pi / 2, nk = n + vy * std::sin(a) / (0.7 * Pi * 10.0), W = (nk / n) * (nk / n);
    const double kt = KTB(vx / (nk * 10.0), 1.0, 0.7, 4), kq = KQB(vx / (nk * 10.0), 1.0, 0.7, 4);
    sumKT += kt * W, sumKQ += kq * W;
    side += 2 * Pi * kq * W * std::sin(a) / (0.35 * 4);
    // The most loaded position: the largest tau/sigma of the blade's own axial point.
    const double sigma = CalcSigma07R(1.9905, vx, nk, 10.0, 8.0),
                 tau = CalcTau07R(kt, vx, nk, 4, 0.7, 10.0, 10.0);
    if (tau / sigma > peak[1] / peak[0]) peak[0] = sigma, peak[1] = tau;
  }
  double KT, KQ;
  ASSERT_EQ(Performance(KT, KQ), 1) << GetCalcCause();
  EXPECT_NEAR(KT, sumKT / 4 * std::cos(th) - side / 4 * std::sin(th), 1e-12);
  EXPECT_NEAR(KQ, sumKQ / 4, 1e-12);
  EXPECT_DOUBLE_EQ(cav[0], CalcSigma07R(1.9905, vx, n, 10.0, 8.0));
  EXPECT_DOUBLE_EQ(cav[1], CalcTau07R(KT, vx, n, 4, 0.7, 10.0, 10.0));
  EXPECT_DOUBLE_EQ(cav[2], peak[0]);
  EXPECT_DOUBLE_EQ(cav[3], peak[1]);

  // A rise of run also sums the blades for the shaft angle alone and keeps the smaller
  // coefficients: upward flow loads the propeller more, so the shaft angle's stand; downward
  // flow unloads it, and its own stand.
  double KT2, KQ2;
  propulsion.AngleRiseOfRunDeg(4.0);
  ASSERT_EQ(Performance(KT2, KQ2), 1);
  EXPECT_DOUBLE_EQ(KT2, KT);
  EXPECT_DOUBLE_EQ(KQ2, KQ);
  propulsion.AngleRiseOfRunDeg(-4.0);
  ASSERT_EQ(Performance(KT2, KQ2), 1);
  EXPECT_LT(KT2, KT);
  EXPECT_LT(KQ2, KQ);

  // Switched off, the shaft angle is ignored.
  series.ObliqueAngleCorrEnabled(0);
  ASSERT_EQ(Performance(KT, KQ), 1);
  EXPECT_DOUBLE_EQ(KT, KTB(J, 1.0, 0.7, 4));
}

TEST(PropellerSeriesChecksTest, MessagesAndWrittenBackCount) {
  clsVXPropellerSeries series;
  // The blade count check returns its result plus ten times the count it writes back.
  auto count = [](int z) {
    return [z](const clsVXPropellerSeries& s, std::string& m) mutable {
      return CheckSeriesBladeCount(s, z, m) + 10 * z;
    };
  };
  const struct {
    int series;
    std::function<int(const clsVXPropellerSeries&, std::string&)> check;
    int result;
    const char* message;
  } cases[] = {
      {0, count(8), 40, "B Series is limited to 2-7 blades."},
      {0, count(2), 20, "B Series equations are generally considered incorrect for 2 bladed propellers."},
      {2, count(4), 30, "Gawn KCA is limited to 3 blades."},
      {0, count(7), 71, ""},
      {0, [](auto& s, auto& m) { return CheckSeriesEAR(s, 1.0, 4, m); }, 1, ""},
      {0, [](auto& s, auto& m) { return CheckSeriesEAR(s, 1.01, 4, m); }, 0,
       "B Series data set for 4 bladed propellers is 0.40-1.00 EAR."},
      {5, [](auto& s, auto& m) { return CheckSeriesEAR(s, 0.99, 5, m); }, 0,
       "Kaplan 33 data set is 1.00 EAR."},
      {10, [](auto& s, auto& m) { return CheckSeriesEAR(s, 0.52, 4, m); }, 0,
       "Kaplan Cylinder data set for 4 bladed propellers is 0.55-0.70 EAR."},
      {9, [](auto& s, auto& m) { return CheckSeriesPD(s, 2.83, m); }, 1, ""},
      {9, [](auto& s, auto& m) { return CheckSeriesPD(s, 2.84, m); }, 0,
       "Cycloidal data set is 1.57-2.83 P/D rato."},
      {8, [](auto& s, auto& m) { return CheckSeriesImmersion(s, -0.4, 10.0, m); }, 0,
       "SP Series data set is 0.47-0.58 H/D blade immersion ratio."},
      {8, [](auto& s, auto& m) { return CheckSeriesImmersion(s, 0.5, 10.0, m); }, 1, ""},
      {0, [](auto& s, auto& m) { return CheckSeriesImmersion(s, 4.9, 10.0, m); }, 0,
       "B Series data set is for full propeller immersion."},
  };
  for (const auto& c : cases) {
    series.Series(c.series);
    std::string message = "stale";
    EXPECT_EQ(c.check(series, message), c.result) << c.message;
    EXPECT_EQ(message, c.message);
  }
}

}  // namespace
}  // namespace velmar
