// Hull-propulsor interaction: every method on the check ships of its source, the branches of
// Holtrop's regression, the three corrections and the settings of the driver.
#include "propulsion/interaction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

#include "app/application.h"
#include "core/constants.h"
#include "core/diagnostics.h"

namespace velmar {
namespace {

// A hull as the rows of interaction_factors.txt give it, in the papers' sea water; by default
// the single-screw example ship of Holtrop & Mennen (1982) with D 8 m at 25 kn.
struct ShipRow {
  std::string method = "Holtrop";
  double L = 205, B = 32, T = 10, vol = 37500, CM = 0.98, lcb = -0.75, S = 7381.45, Cstern = 10;
  int count = 1;
  double D = 8.0, EAR = 0.7393, PD = 1.136, Fn = 0.2868412125;
};

struct Ship {
  ModelSet p = MakeModelSet(SetKind::Primary);
  clsVXHull& h = *p.Hull;
  clsVXSpeedPerformance& sp = *p.SpeedPerformance;

  explicit Ship(const ShipRow& r = {}) {
    ApplyUnitPreset(*p.Units, UnitPreset::SI);
    p.WaterProperties->WaterDefinitionIndex(3);  // Custom
    p.WaterProperties->Density(kKgPerM3, 1025.0);
    p.WaterProperties->Viscosity(kM2PerSec, 1.18831e-6);
    h.Displacement(kKg, r.vol * 1025.0);
    h.LengthWL(kM, r.L);
    h.BeamWLMax(kM, r.B);
    h.DraftSubmergedMax(kM, r.T);
    h.AreaSectMax(kM2, r.CM * r.B * r.T);
    h.WettedSurface(kM2, r.S);
    h.XBuoyancyFwdTr(kM, r.L * (0.5 + r.lcb / 100.0));
    h.SternShapeFactor(r.Cstern / 10.0);
    h.PropulsorCountPerHull(r.count);
    h.PropellerDiameterMax(kM, r.D);
    p.Propeller->ExpAreaRatio(r.EAR);
    p.Propeller->Diameter(kM, r.D);
    p.Propeller->PitchMean(kM, r.PD * r.D);
    p.Propulsion->PropulsionInteractionEnabled(1);  // Calc
    const std::vector<std::string>& keys = kPropulsionInteractionMethodLabels.keys;
    p.Propulsion->PropulsionInteractionMethod(
        static_cast<int>(std::find(keys.begin(), keys.end(), r.method) - keys.begin()));
    sp.count(1);
    sp.Speed(0, kFtPerSec, r.Fn * std::sqrt(GravityFt * r.L / 0.3048));
    ResetCalcErrorState();
  }
  bool Run() {
    return PredictPropulsionInteractionCoefs(*p.WaterProperties, h, *p.ITTC78, *p.Propulsion, *p.Propeller,
                                             sp);
  }
  // w, t, etaR of a direct call at the 1982 ship's Reynolds number.
  std::array<double, 3> Holtrop(double Fn, bool ok = true, int expectedCheck = -1, double Rn = 2.2187e9) {
    std::array<double, 3> f{};
    double ref = 0.0;
    int check = -1;
    EXPECT_EQ(CalcHoltropPropulsionInteraction(f[0], f[1], f[2], ref, check, h, *p.Propeller, *p.Propulsion,
                                               Fn, Rn),
              ok);
    EXPECT_TRUE(expectedCheck < 0 || check == expectedCheck) << "Fn " << Fn << ": " << check;
    return f;
  }
};

// Every method through the driver on the check ships of its source.
TEST(InteractionTest, MethodsOnTheirCheckShips) {
  std::ifstream in(VELMAR_TEST_DATA "/interaction_factors.txt");
  ASSERT_TRUE(in) << "data file missing";
  int rows = 0;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    ShipRow r;
    int speedCheck = 0;
    double published = 0, check = 0, expected = 0, tol = 0;
    std::string term;
    fields >> r.method >> r.L >> r.B >> r.T >> r.vol >> r.CM >> r.lcb >> r.S >> r.Cstern >> r.count >> r.D >>
        r.EAR >> r.PD >> r.Fn >> speedCheck >> term >> published >> check >> expected >> tol;
    ASSERT_TRUE(fields) << line;
    Ship ship(r);
    ASSERT_TRUE(ship.Run()) << line << GetCalcCause();
    const int column = clsVXSpeedPerformance::ColumnIndex(term == "w"   ? "WakeFraction"
                                                          : term == "t" ? "ThrustDeduction"
                                                                        : "RelRotEfficiency");
    EXPECT_NEAR(ship.sp.Read(0, column, kCurrent), expected, tol)
        << line << "\npaper " << published << ", formula " << check;
    EXPECT_EQ(ship.sp.HullPropulsorInteractionSpeedCheck(0), speedCheck) << line;
    ++rows;
  }
  EXPECT_EQ(rows, 21);
}

TEST(InteractionTest, HoltropBranches) {
  Ship ship;
  for (auto [Fn, check] : {std::pair{0.0599, 0}, {0.06, 1}, {0.8, 1}, {0.8001, 2}})
    ship.Holtrop(Fn, true, check);
  // Below Fn 0.05 the friction stays at its value for Fn 0.05; Fn 0 is a division fault.
  EXPECT_DOUBLE_EQ(ship.Holtrop(0.025, true, -1, 0.5 * 2.2187e9)[0], ship.Holtrop(0.05)[0]);
  ship.Holtrop(0.0, false);
  EXPECT_NE(GetCalcCause().find("calculating Holtrop propulsion interaction"), std::string::npos);
  // CP above 0.85 counts as 0.85 in t and etaR (w moves with CM).
  ship.h.AreaSectMax(kM2, 37500.0 / (205.0 * 0.9));
  const auto cp90 = ship.Holtrop(0.28);
  ship.h.AreaSectMax(kM2, 37500.0 / (205.0 * 0.85));
  const auto cp85 = ship.Holtrop(0.28);
  EXPECT_NEAR(cp90[1], cp85[1], 1e-9);
  EXPECT_NEAR(cp90[2], cp85[2], 1e-9);
  // Three propulsors take the twin-screw set.
  ship.h.PropulsorCountPerHull(3);
  const auto three = ship.Holtrop(0.28);
  ship.h.PropulsorCountPerHull(2);
  EXPECT_EQ(three, ship.Holtrop(0.28));
}

TEST(InteractionTest, Corrections) {
  // Ducted propeller: w, count, stern shape factor, corrected w.
  for (auto c : {std::array{0.3, 1.0, -10.0, 0.15},
                 {0.3, 1.0, 0.0, 0.18},
                 {0.3, 1.0, 10.0, 0.21},
                 {0.3, 3.0, 10.0, 0.18},
                 {-0.1, 1.0, 0.0, -0.1}}) {
    ASSERT_TRUE(CalcWakeFractionDuctCorrection(c[0], static_cast<int>(c[1]), c[2]));
    EXPECT_NEAR(c[0], c[3], 1e-12) << "count " << c[1] << " shape " << c[2];
  }
  // Tunnel stern from w 0.2, t 0.1, etaR 1 with D 1: Fv, effective D, recess, w, t, etaR. A
  // table point (Fv 2, ratio 40), the first ratio row with an excess of 10 %, a point between
  // the table points (natural cubic splines, computed apart), no recess.
  for (auto c : {std::array{2.0, 1.0, 0.4, 0.24, 0.145, 0.93},
                 {3.7, 1.2, 0.012, 0.1813333, 0.0878696, 1.1134783},
                 {2.5, 1.2, 0.6, 0.1860777, 0.0924396, 0.9402087},
                 {2.5, 1.2, 0.0, 0.2, 0.1, 1.0}}) {
    std::array f{0.2, 0.1, 1.0};
    ASSERT_TRUE(CalcPropulsionTunnelCorrection(f[0], f[1], f[2], c[0], 1.0, c[1], c[2]));
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(f[i], c[3 + i], 1e-7) << "Fv " << c[0] << " recess " << c[2];
  }
  // Wake scaling from a 20 ft basis vessel at Fn 0.25 to Rn 1e9, CA 0.0002, t 0.2: w, rudder
  // location, 1+k, scaled w. CV ratio 0.569099; a rudder behind the propeller adds 0.04 to t;
  // a wake that would rise and a missing form factor stay.
  for (auto c : {std::array{0.3, 0.0, 1.2, 0.2741460},
                 {0.3, 1.0, 1.2, 0.2569099},
                 {0.1, 0.0, 1.2, 0.1},
                 {0.3, 0.0, 0.0, 0.3}}) {
    ASSERT_TRUE(
        CalcWakeFractionScaleCorrection(c[0], 0.2, 20.0, 1e9, 0.25, 0.0002, c[2], static_cast<int>(c[1])));
    EXPECT_NEAR(c[0], c[3], 1e-7) << "rudder " << c[1] << " k " << c[2];
  }
}

TEST(InteractionTest, DriverSettings) {
  const double w = 0.27202407, t = 0.19837625, etaR = 0.99308008;  // the 1982 ship, from the data file
  struct {
    int enabled, technique, method, scaleCorr, duct;
    bool ok;
    double w, t, etaR;  // afterwards; the columns start at 0.5
  } const cases[] = {
      {0, 0, 6, 0, 0, true, 0.0, 0.0, 1.0},     // Off
      {2, 0, 6, 0, 0, true, 0.5, 0.5, 0.5},     // Lock
      {1, 3, 6, 0, 0, true, 0.0, 0.0, 0.0},     // Defined: the run's carried zeros
      {1, 0, 6, 0, 1, true, 0.7 * w, t, etaR},  // duct, Cstern 10: f 0.7
      {1, 0, 1, 0, 0, false, 0.5, 0.5, 0.5},    // Series 60 has no formula
  };
  for (const auto& c : cases) {
    Ship ship;
    clsVXPropulsion& s = *ship.p.Propulsion;
    s.PropulsionInteractionEnabled(c.enabled);
    s.PropulsionInteractionTechnique(c.technique);
    s.PropulsionInteractionMethod(c.method);
    s.ViscousScaleCorrEnabled(c.scaleCorr);
    s.DuctedPropCorrEnabled(c.duct);
    for (const char* column : {"WakeFraction", "ThrustDeduction", "RelRotEfficiency"})
      ship.sp.Write(0, clsVXSpeedPerformance::ColumnIndex(column), kCurrent, 0.5);
    EXPECT_EQ(ship.Run(), c.ok) << "enabled " << c.enabled << " technique " << c.technique;
    EXPECT_NEAR(ship.sp.CoefFroudeLength(0), 0.2868, 5e-5);  // published Fn, written in any case
    EXPECT_NEAR(ship.sp.WakeFraction(0), c.w, 1e-7);
    EXPECT_NEAR(ship.sp.ThrustDeduction(0), c.t, 1e-7);
    EXPECT_NEAR(ship.sp.RelRotEfficiency(0), c.etaR, 1e-7);
  }
  CalcErrorsPending();  // the chain of the last case, innermost first
  EXPECT_NE(GetCalcErrorText().find("\tPropulsion interaction method not available: Series 60\r\n"
                                    "\tindividual propulsion interaction coefficient calculation\r\n"
                                    "\tpredicting propulsion interaction coefficients"),
            std::string::npos);
  // Taylor's wake is a single-screw relation: Simple Ship refuses two propulsors.
  ShipRow twin;
  twin.method = "SimpleShip";
  twin.count = 2;
  Ship simple(twin);
  EXPECT_FALSE(simple.Run());
  EXPECT_NE(GetCalcCause().find("Simple Ship wake fraction is for single-screw ships"), std::string::npos)
      << GetCalcCause();

  // Holtrop's factors are ship-scale: the wake scaling leaves them alone, also in warm water,
  // where it would lower them (Rn above that of the basis vessel in standard water).
  Ship warm;
  warm.p.WaterProperties->Viscosity(kM2PerSec, 0.9e-6);
  ASSERT_TRUE(warm.Run());
  const double unscaled = warm.sp.WakeFraction(0);
  warm.p.Propulsion->ViscousScaleCorrEnabled(1);
  ASSERT_TRUE(warm.Run());
  EXPECT_EQ(warm.sp.WakeFraction(0), unscaled);
}

}  // namespace
}  // namespace velmar
