// The analysis types other than the free run, the controllable-pitch propeller and the
// waterjet, each on an example: constructed answers that tie a run to a free run (the free
// run's RPM given back, the free run's pitch recovered at its RPM), the engine's power curve
// met at full power, the equations of motion scaled by the mass, and the failure texts.
#include "propulsion/analysis_types.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "app/application.h"
#include "app/calculate.h"
#include "core/constants.h"
#include "core/diagnostics.h"
#include "files/project_file.h"
#include "propulsion/rpm_solution.h"
#include "propulsion/waterjet_analysis.h"

namespace velmar {
namespace {

const std::filesystem::path kExamples = std::filesystem::path(VELMAR_TEST_DATA) / ".." / ".." / "examples";

ModelSet& Open(const char* name) {
  App().PropulsionSizingChanged = false;
  NewProject();
  EXPECT_TRUE(OpenProjectFile(kExamples / name).opened);
  return App().primary;
}

// Calculate in Resistance mode, then in Propulsion mode; the warning text of a failure.
std::string Predict() {
  App().CurrentMode = Mode::Resistance;
  CalculateResult r = RunCalculate();
  if (!r.ok) return r.warning;
  App().CurrentMode = Mode::Propulsion;
  r = RunCalculate();
  return r.ok ? "" : r.warning.empty() ? "failed" : r.warning;
}

std::vector<double> Column(const clsVXSpeedPerformance& sp, const char* name) {
  std::vector<double> v;
  for (int i = 0; i < sp.count(); ++i) v.push_back(sp.Raw(i, clsVXSpeedPerformance::ColumnIndex(name)));
  return v;
}

constexpr int kTowing = 1, kFixedRPM = 2, kAcceleration = 3, kDefined = 4;

// Fixed engine RPM and Defined given the free run's RPM row by row reproduce the free run:
// the same thrust, and no net force left (the free run's thrust tolerance).
TEST(AnalysisTypes, TheFreeRunsRPMGivenBackLeavesNoNetForce) {
  ModelSet& p = Open("patrol_vessel_imperial.vxvl");
  ASSERT_EQ(Predict(), "");
  clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  const std::vector<double> rpm = Column(sp, "PropulsorRPM"), thrust = Column(sp, "PropulsorThrust");
  const int props = 2;
  // Defined: every row's RPM as the free run left it.
  p.Propulsion->AnalysisTypeMethod(kDefined);
  ASSERT_EQ(Predict(), "");
  for (int i = 0; i < sp.count(); ++i) {
    EXPECT_DOUBLE_EQ(sp.PropulsorThrust(i, kCurrent), thrust[i]) << i;
    EXPECT_NEAR(sp.TotalNetTowpull(i, kLbf), 0.0, props * RPMSolutionTolerance(thrust[i])) << i;
  }
  // A row without its RPM stops the run.
  sp.PropulsorRPM(3, 0.0);
  EXPECT_NE(Predict().find("Defined propulsor RPM"), std::string::npos);
  // Fixed engine RPM at the free run's RPM of one row: that row balances, slower rows pull.
  const int k = 5;
  p.Propulsion->AnalysisTypeMethod(kFixedRPM);
  p.Propulsion->FixedEngineRPM(rpm[k] * p.Propulsion->GearRatio());
  ASSERT_EQ(Predict(), "");
  EXPECT_NEAR(sp.TotalNetTowpull(k, kLbf), 0.0, props * RPMSolutionTolerance(thrust[k]));
  for (int i = 0; i < sp.count(); ++i) {
    EXPECT_NEAR(sp.PropulsorRPM(i), rpm[k], 1e-9);
    if (i > 0) {
      EXPECT_LT(sp.TotalNetTowpull(i, kLbf), sp.TotalNetTowpull(i - 1, kLbf)) << i;
    }
  }
  // Without the engine RPM the run fails with its chain.
  p.Propulsion->FixedEngineRPM(0.0);
  const std::string warning = Predict();
  EXPECT_NE(warning.find("Fixed engine RPM"), std::string::npos) << warning;
  EXPECT_NE(warning.find("propulsion fixed engine RPM analysis calculation"), std::string::npos) << warning;
}

// Towing: at each speed the engine gives its maximum power at the RPM where the propeller
// absorbs it, or turns at its rated RPM with less; the pull falls with speed.
TEST(AnalysisTypes, TowingRunsTheEngineOnItsPowerCurve) {
  ModelSet& p = Open("patrol_vessel_imperial.vxvl");
  p.Propulsion->AnalysisTypeMethod(kTowing);
  ASSERT_EQ(Predict(), "");
  const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  for (int i = 0; i < sp.count(); ++i) {
    SCOPED_TRACE(i);
    const double engineRPM = sp.EngineRPM(i), available = EngineAvailablePower(*p.Engine, engineRPM);
    if (engineRPM < p.Engine->MaxRatedRPM() - 1e-6)
      EXPECT_NEAR(sp.PowerBrakePerProp(i, kHp), available, 1e-6 * available);
    else
      EXPECT_LE(sp.PowerBrakePerProp(i, kHp), available * (1 + 1e-9));
    if (i > 0) {
      EXPECT_LT(sp.TotalNetTowpull(i, kLbf), sp.TotalNetTowpull(i - 1, kLbf));
    }
  }
  EXPECT_GT(sp.TotalNetTowpull(0, kLbf), 0.0);
  // No engine data: no power curve to run on.
  p.Propulsion->EngineFileIndex(0);
  EXPECT_NE(Predict().find("Engine maximum power curve"), std::string::npos);
}

// Acceleration: the time to each speed grows with it; twice the mass takes exactly twice the
// time and distance (the equation of motion scales with the mass); the time agrees with the
// trapezoid rule on 1/a from the table; a limited RPM rise is slower.
TEST(AnalysisTypes, AccelerationTimesFollowTheEquationOfMotion) {
  ModelSet& p = Open("patrol_vessel_imperial.vxvl");
  p.Propulsion->AnalysisTypeMethod(kAcceleration);
  ASSERT_EQ(Predict(), "");
  clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  const std::vector<double> time = Column(sp, "AccelTimeSecs"), distance = Column(sp, "AccelDistance");
  const std::vector<double> g = Column(sp, "AccelGravities"), v = Column(sp, "Speed");
  int reached = 1;
  while (reached < sp.count() && time[reached] > 0.0) ++reached;
  ASSERT_GE(reached, 5);
  double trapezoid = 0.0;
  for (int i = 1; i < reached; ++i) {
    EXPECT_GT(time[i], time[i - 1]);
    EXPECT_GT(distance[i], distance[i - 1]);
    const double dv = (v[i] - v[i - 1]) * 1.6878098571;  // kt to ft/s
    trapezoid += 0.5 * dv * (1.0 / g[i - 1] + 1.0 / g[i]) / GravityFt;
  }
  EXPECT_NEAR(time[reached - 1], trapezoid, 0.03 * trapezoid);
  for (int i = reached; i < sp.count(); ++i) EXPECT_LE(g[i], 0.0);  // not reached: no force left

  p.Propulsion->AddedMassMult(2.0);
  ASSERT_EQ(Predict(), "");
  for (int i = 1; i < reached; ++i) {
    EXPECT_NEAR(sp.AccelTimeSecs(i), 2.0 * time[i], 1e-9 * time[i]);
    EXPECT_NEAR(sp.AccelDistance(i, kCurrent), 2.0 * distance[i], 1e-9 * distance[i]);
  }
  sp.Speed(2, kCurrent, sp.Speed(1, kCurrent));  // speeds must rise
  EXPECT_NE(Predict().find("Acceleration needs the speeds in rising order"), std::string::npos);
  sp.Speed(2, kCurrent, v[2]);
  p.Propulsion->AddedMassMult(1.0);
  p.Propulsion->EngineControlEnabled(1);
  p.Propulsion->EngineLimitToRPMPerSec(20.0);
  ASSERT_EQ(Predict(), "");
  EXPECT_NEAR(sp.AccelGravities(0), 0.0, 1e-6);  // steady running at the first speed
  for (int i = 1; i < reached; ++i) EXPECT_GT(sp.AccelTimeSecs(i), time[i]) << i;
}

// A controllable-pitch propeller at the RPM of the fixed-pitch free run finds the fixed
// pitch again; its other two methods meet the thrust, the defined-load one on the engine's
// defined-load curve.
TEST(ControllablePitch, RecoversTheFixedPitchAndMeetsTheThrustByEveryMethod) {
  ModelSet& fpp = Open("cargo_ship_si.vxvl");
  ASSERT_EQ(Predict(), "");
  const double pitch = fpp.Propeller->PitchMean(kFt);
  const std::vector<double> rpm = Column(*fpp.SpeedPerformance, "PropulsorRPM");
  const int k = 7;
  ModelSet& p = Open("cargo_ship_cpp_si.vxvl");
  p.Propulsion->FixedEngineRPM(rpm[k]);
  ASSERT_EQ(Predict(), "");
  EXPECT_NEAR(p.SpeedPerformance->CPMeanPitch(k, kFt), pitch, 2e-4 * pitch);
  for (int method : {0, 1, 2}) {
    SCOPED_TRACE(method);
    p.Propulsion->CPPMethod(method);
    p.Propulsion->FixedEngineRPM(104.0);
    ASSERT_EQ(Predict(), "");
    const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
    for (int i = 0; i < sp.count(); ++i) {
      const double drag = sp.DragTotal(i, kLbf);
      EXPECT_NEAR(sp.PropulsorThrust(i, kLbf) * (1 - sp.ThrustDeduction(i)), drag, 2e-3 * drag) << i;
      const double PD = sp.CPMeanPitch(i, kFt) / p.Propeller->Diameter(kFt);
      EXPECT_GT(PD, 0.45);
      EXPECT_LT(PD, 1.54);
      if (method == 0) {
        EXPECT_NEAR(sp.PropulsorRPM(i), 104.0, 1e-9);
      }
      if (method == 2) {
        EXPECT_NEAR(sp.EngineRPM(i),
                    p.Engine->GetRPMFromDefinedLoadPower(sp.PowerBrakePerProp(i, kCurrent), kCurrent),
                    0.01 * sp.EngineRPM(i))
            << i;
      }
    }
  }
  // The checks of the branch, each a chain under the free run.
  struct Case {
    const char* text;
    std::function<void()> spoil;
  };
  const Case cases[] = {
      {"Gear ratio", [&] { p.Propulsion->GearRatio(0.0); }},
      {"Fixed engine RPM", [&] { p.Propulsion->CPPMethod(0), p.Propulsion->FixedEngineRPM(0.0); }},
      {"Relative-rotative efficiency",
       [&] { p.Propulsion->PropulsionInteractionEnabled(2), p.SpeedPerformance->RelRotEfficiency(0, 0.0); }},
      {"getting RPM from defined load power", [&] { p.Propulsion->CPPMethod(2), p.Engine->DefinedLoadCount(0); }},
  };
  for (const Case& c : cases) {
    Open("cargo_ship_cpp_si.vxvl");
    c.spoil();
    const std::string warning = Predict();
    EXPECT_NE(warning.find(c.text), std::string::npos) << warning;
    EXPECT_NE(warning.find("calculating equilibrium RPM for given thrust requirement"), std::string::npos);
  }
}

// The waterjet's curves read both ways: a point of the data comes back exactly, thrust and
// power invert each other between and beyond the curves, the impeller turns at its rated RPM
// at its rated power, and the cavitation zone shows where the data put it.
TEST(Waterjet, CurvesReadBothWaysAndTheFreeRunCarriesTheDrag) {
  ModelSet& p = Open("catamaran_ferry_waterjet.vxvl");
  const clsVXWaterjet& jet = *p.Waterjet;
  const double V30 = 30.0 * 1.6878098571, V5 = 5.0 * 1.6878098571;
  WaterjetPoint a, b;
  ASSERT_TRUE(WaterjetThrustForPower(jet, V30, jet.Power(3, kHp), a));
  EXPECT_NEAR(a.thrust, jet.Thrust(3, 6, kLbf), 1e-9 * a.thrust);  // 1840 kW at 30 kn
  EXPECT_NEAR(a.rpm, 1000.0, 1e-9);
  for (double power : {200.0, 800.0, 2000.0, 3000.0}) {
    ASSERT_TRUE(WaterjetThrustForPower(jet, V30, power, a));
    ASSERT_TRUE(WaterjetPowerForThrust(jet, V30, a.thrust, b));
    EXPECT_NEAR(b.power, power, 1e-9 * power);
    EXPECT_NEAR(WaterjetPowerForRPM(jet, V30, b.rpm), power, 1e-9 * power);
  }
  ASSERT_TRUE(WaterjetThrustForPower(jet, V5, jet.Power(3, kHp), a));
  EXPECT_EQ(a.cavZone, 2);  // inside the zone of the data
  ASSERT_TRUE(WaterjetThrustForPower(jet, V5, 0.5 * (jet.Power(1, kHp) + jet.Power(2, kHp)), a));
  EXPECT_EQ(a.cavZone, 1);  // between a curve in the zone and one outside
  ASSERT_TRUE(WaterjetThrustForPower(jet, V30, jet.Power(3, kHp), a));
  EXPECT_EQ(a.cavZone, 0);

  // The free run: thrust carries the drag, the engine stays within its rating at the design
  // speed, and the efficiencies are those of a jet.
  ASSERT_EQ(Predict(), "");
  const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  for (int i = 0; i < sp.count(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_NEAR(sp.PropulsorThrust(i, kLbf) * 2.0, sp.DragTotal(i, kLbf), 1e-9 * sp.DragTotal(i, kLbf));
    EXPECT_GT(sp.PropulsorEfficiency(i), 0.5);
    EXPECT_LT(sp.PropulsorEfficiency(i), 0.8);
    EXPECT_GT(sp.PropulsorRPM(i), 0.0);
    EXPECT_GT(sp.FuelRatePerEngine(i, kCurrent), 0.0);
    if (i > 0) {
      EXPECT_GT(sp.PowerBrakePerProp(i, kHp), sp.PowerBrakePerProp(i - 1, kHp));
    }
  }
  EXPECT_LT(sp.PercentEngineLoadFactor(sp.DesignSpeedIndex()), 100.0);

  // Every analysis type runs on the waterjet; without thrust curves the free run fails.
  for (int type : {kTowing, kFixedRPM, kAcceleration}) {
    p.Propulsion->AnalysisTypeMethod(type);
    p.Propulsion->FixedEngineRPM(1800.0);
    EXPECT_EQ(Predict(), "") << type;
    EXPECT_GT(sp.PropulsorThrust(0, kLbf), 0.0) << type;
  }
  p.Waterjet->ImpellerCount(0), p.Waterjet->MaxRatedRPM(0.0);  // no impeller and no rating
  EXPECT_NE(Predict().find("Waterjet impeller RPM data"), std::string::npos);
  p.Propulsion->AnalysisTypeMethod(0);
  p.Waterjet->PowerSeriesCount(0);
  const std::string warning = Predict();
  EXPECT_NE(warning.find("Waterjet thrust data do not cover the speed"), std::string::npos) << warning;
}

}  // namespace
}  // namespace velmar
