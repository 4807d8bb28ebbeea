// The propulsion prediction as a whole: the published powering point of Holtrop & Mennen
// (1982), the balance of thrust and drag on every example, the RPM solution on constructed
// answers, and a failed run that reports its chain and loses nothing.
#include "propulsion/propulsion_driver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "../cli/cli_run.h"
#include "app/application.h"
#include "app/calculate.h"
#include "core/diagnostics.h"
#include "files/project_file.h"
#include "propulsion/rpm_solution.h"

namespace velmar {
namespace {

const std::filesystem::path kExamples = std::filesystem::path(VELMAR_TEST_DATA) / ".." / ".." / "examples";

ModelSet& OpenExample(const char* name) {
  App().PropulsionSizingChanged = false;
  NewProject();
  EXPECT_TRUE(OpenProjectFile(kExamples / name).opened);
  return App().primary;
}

CalculateResult Calculate(Mode mode) {
  App().CurrentMode = mode;
  return RunCalculate();
}

// Holtrop & Mennen (1982), the worked example at 25 kn: R 1793.26 kN, w 0.2584, t 0.1747,
// etaR 0.9931 give a thrust of 2172.75 kN; the paper's propeller turns at n = 1.6594 Hz with
// etaO 0.6461 and absorbs PD = 32 621 kW, and Keller's criterion asks for AE/A0 0.7393. The
// example's pitch ratio was chosen to give the paper's KT at the paper's J, so n is close by
// construction; etaO, PD and the blade area are independent checks of the torque side, the
// units and the cavitation criterion. The paper read its charts by hand, hence the margins.
TEST(PropulsionPrediction, ReproducesThePublishedPoweringPointOfHoltropAndMennen1982) {
  ModelSet& p = OpenExample("cargo_ship_si.vxvl");
  clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  sp.count(1);
  sp.Speed(0, kKt, 25.0);
  sp.DragTotal(0, kKN, 1793.26);
  sp.WakeFraction(0, 0.2584);
  sp.ThrustDeduction(0, 0.1747);
  sp.RelRotEfficiency(0, 0.9931);
  p.Propulsion->PropulsionInteractionEnabled(2);  // Lock: the paper's factors stand
  p.PropellerSeries->ScaleCorrection(3);          // Part ITTC: the paper's own scale correction
  const CalculateResult r = Calculate(Mode::Propulsion);
  ASSERT_TRUE(r.ok) << r.warning;
  EXPECT_NEAR(sp.PropulsorThrust(0, kKN), 2172.75, 0.15);  // 1793.26 / 0.8253 = 2172.86
  EXPECT_NEAR(sp.PropulsorRPM(0) / 60.0, 1.6594, 0.0020);
  EXPECT_NEAR(sp.PropulsorEfficiency(0), 0.6461, 0.010);
  EXPECT_NEAR(sp.PowerDeliveredPerProp(0, kKW), 32621.0, 0.025 * 32621.0);
  EXPECT_NEAR(sp.RecommendedEAR(0), 0.7393, 0.01);
}

// On every example, after Calculate in both modes: the thrust of all propulsors less the
// thrust deduction carries the total drag (the solution's tolerance), and the operating point
// is a plausible one.
TEST(PropulsionPrediction, ThrustCarriesTheDragOnEveryExample) {
  for (const char* name : {"cargo_ship_si.vxvl", "patrol_vessel_imperial.vxvl", "catamaran_ferry.vxvl"}) {
    SCOPED_TRACE(name);
    ModelSet& p = OpenExample(name);
    ASSERT_TRUE(Calculate(Mode::Resistance).ok);
    const CalculateResult r = Calculate(Mode::Propulsion);
    ASSERT_TRUE(r.ok) << r.warning;
    const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
    const int propulsors = p.Hull->PropulsorCountPerHull() * (p.Hull->HullConfigType() == 0 ? 1 : 2);
    for (int i = 0; i < sp.count(); ++i) {
      SCOPED_TRACE(i);
      const double drag = sp.DragTotal(i, kLbf);
      const double carried = sp.PropulsorThrust(i, kLbf) * (1.0 - sp.ThrustDeduction(i)) * propulsors;
      EXPECT_NEAR(carried, drag, RPMSolutionTolerance(drag / propulsors) * propulsors + 1e-6 * drag);
      EXPECT_GT(sp.CoefPropulsorJ(i), 0.3);
      EXPECT_LT(sp.CoefPropulsorJ(i), 1.2);
      EXPECT_GT(sp.PropulsorEfficiency(i), 0.4);
      EXPECT_LT(sp.PropulsorEfficiency(i), 0.75);
      EXPECT_GT(sp.PowerBrakeTotal(i, kHp), sp.PowerEffectiveTotal(i, kHp));
      if (p.Propulsion->EngineFileIndex() == 1) {
        EXPECT_GT(sp.FuelRatePerEngine(i, kCurrent), 0.0);
        EXPECT_GT(sp.PercentEngineLoadFactor(i), 0.0);
      }
    }
  }
}

// Constructed answers: the thrust of a chosen rate is solved back to that rate within the
// solution's own stopping rule (|T(n) - T| <= tolerance, so n within half its relative size).
TEST(RPMSolution, RecoversTheRateThatGaveTheThrust) {
  ModelSet& p = OpenExample("patrol_vessel_imperial.vxvl");
  clsVXPropeller& prop = *p.Propeller;
  struct Case {
    int z;
    double ear, pd, rpm, vaFtPerSec;
  };
  for (const Case& c : {Case{4, 0.85, 1.2, 300.0, 30.0}, Case{3, 0.5, 0.8, 150.0, 10.0},
                        Case{5, 0.75, 1.0, 420.0, 25.0}, Case{4, 0.6, 1.4, 90.0, 18.0}}) {
    SCOPED_TRACE(c.rpm);
    prop.BladeCount(c.z);
    prop.ExpAreaRatio(c.ear);
    prop.PitchMean(kFt, c.pd * prop.Diameter(kFt));
    const double D = prop.Diameter(kFt), n = c.rpm / 60.0;
    double KT = 0, KQ = 0, sa = 0, ta = 0, sp = 0, tp = 0;
    ASSERT_NE(CalcPropulsorKTKQ(KT, KQ, *p.WaterProperties, *p.Propulsion, prop, *p.PropellerSeries, n,
                                c.vaFtPerSec, D, c.ear, 1, 0.0, sa, ta, sp, tp),
              0);
    const double thrust = KT * p.WaterProperties->Density(kSlugPerFt3) * n * n * std::pow(D, 4.0);
    double rpm = 0.0, pitch = 0.0;
    ASSERT_EQ(CalcRPMForGivenThrust(rpm, thrust, *p.WaterProperties, *p.Propulsion, prop, *p.PropellerSeries,
                                    c.vaFtPerSec, 1.0, pitch, *p.Engine),
              kRPMSolved)
        << GetCalcCause();
    EXPECT_NEAR(rpm, c.rpm, c.rpm * 0.5 * RPMSolutionTolerance(thrust) / thrust + 1e-9);
    EXPECT_EQ(pitch, prop.PitchMean(kFt));  // a pitch of 0 stands for the propeller's own
  }
  // The tolerance ladder: 1e-5 T, but never below 1 lbf, and 0.1 lbf for small thrusts.
  for (const auto& [t, tol] : {std::pair{0.0, 0.1}, {50.0, 0.1}, {150.0, 1.0}, {1e5, 1.0}, {2e5, 2.0}})
    EXPECT_EQ(RPMSolutionTolerance(t), tol) << t;
}

// A propeller without a diameter: exit code 1, the whole chain of contexts in the warning,
// nothing saved over the input, and the project saved elsewhere still holds every input.
TEST(PropulsionPrediction, AMissingDiameterFailsWithItsChainAndLosesNothing) {
  const auto dir = std::filesystem::temp_directory_path() / "velmar_propulsion_failure";
  std::filesystem::create_directories(dir);
  std::ifstream in(kExamples / "cargo_ship_si.vxvl", std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), {});
  text.replace(text.find("\"Diameter\": 8000"), 16, "\"Diameter\": 0");
  const auto input = dir / "no_diameter.vxvl", output = dir / "out.vxvl";
  std::ofstream(input, std::ios::binary) << text;
  std::filesystem::remove(output);

  const testing::CliRun r =
      testing::Cli("calc " + input.string() + " --mode propulsion -o " + output.string(), " 2>&1 >/dev/null");
  EXPECT_EQ(r.code, 1);
  const std::regex chain(
      "Propeller diameter[^]*calculating equilibrium RPM for given thrust requirement[^]*"
      "propulsion free-run analysis calculation");
  EXPECT_TRUE(std::regex_search(r.out, chain)) << r.out;
  std::ifstream again(input, std::ios::binary);
  EXPECT_EQ(std::string((std::istreambuf_iterator<char>(again)), {}), text);

  NewProject();
  ASSERT_TRUE(OpenProjectFile(output).opened);
  const ModelSet& p = App().primary;
  EXPECT_EQ(p.Propeller->Diameter(kCurrent), 0.0);
  EXPECT_NEAR(p.Propeller->PitchMean(kCurrent), 8296.0, 1e-9);
  EXPECT_GT(p.SpeedPerformance->DragTotal(0, kCurrent), 0.0);  // the resistance run stands
  std::filesystem::remove_all(dir);
}

// The readable table of a propulsion run fits in 120 columns and names its groups.
TEST(PropulsionPrediction, TheCommandLineTableStaysLegible) {
  const testing::CliRun r =
      testing::Cli("calc " + (kExamples / "patrol_vessel_imperial.vxvl").string() + " --mode propulsion");
  ASSERT_EQ(r.code, 0) << r.out;
  std::istringstream lines(r.out);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 120u) << line;
  for (const char* group :
       {"Hull-propulsor interaction", "Propeller", "Power", "Loading and cavitation", "Engine"})
    EXPECT_NE(r.out.find(std::string("\n") + group + "\n"), std::string::npos) << group;
}

}  // namespace
}  // namespace velmar
