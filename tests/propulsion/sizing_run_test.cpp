// The sizing window's logic and its command-line forms: the propeller written back meets the
// design point that the settings describe, a Calculate with the sizing hooks predicts with
// the sized propeller, and `velmar-cli size` / `calc --size` report and save it.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "../cli/cli_run.h"
#include "app/application.h"
#include "app/calculate.h"
#include "core/constants.h"
#include "files/project_file.h"
#include "propulsion/propeller_sizing_run.h"
#include "propulsion/propulsion_driver.h"

namespace velmar {
namespace {

const std::filesystem::path kExamples = std::filesystem::path(VELMAR_TEST_DATA) / ".." / ".." / "examples";

// For each way of sizing, with diameter, pitch and blade area sized: a Calculate under the
// sizing hooks sizes at its sizing step, and the propeller it leaves, run at the design
// point's RPM, gives the design thrust or absorbs the design power (by total drag: the
// free run then turns at the design RPM at the design speed).
TEST(PropellerSizingRun, TheSizedPropellerMeetsItsDesignPoint) {
  for (int mode : {kSizeByPower, kSizeByThrust, kSizeByTotalDrag}) {
    SCOPED_TRACE(mode);
    App().PropulsionSizingChanged = false;
    NewProject();
    ASSERT_TRUE(OpenProjectFile(kExamples / "patrol_vessel_sizing.vxvl").opened);
    ModelSet& p = App().primary;
    p.PropellerSizing->PropellerSizingIdentity(mode);
    PropellerSizingHooks hooks;
    SetHooks(&hooks);
    App().CurrentMode = Mode::Resistance;
    ASSERT_TRUE(RunCalculate().ok);
    App().CurrentMode = Mode::Propulsion;
    const CalculateResult r = RunCalculate();
    SetHooks(nullptr);
    ASSERT_TRUE(r.ok) << r.warning;
    ASSERT_EQ(hooks.reports.size(), 1u);
    const PropellerSizingReport& report = hooks.reports[0];
    ASSERT_TRUE(report.ok) << report.errors;
    EXPECT_TRUE(App().PropulsionSizingChanged);
    EXPECT_LE(p.Propeller->Diameter(kFt), p.Hull->PropellerDiameterMax(kFt) + 1e-9);

    // The written propeller at the design point.
    const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
    const int row = sp.DesignSpeedIndex();
    const double n = report.engineRPM / p.Propulsion->GearRatio() / 60.0;
    const double D = p.Propeller->Diameter(kFt), va = (1 - sp.WakeFraction(row)) * sp.Speed(row, kFtPerSec);
    double KT = 0, KQ = 0, sa = 0, ta = 0, spk = 0, tpk = 0;
    ASSERT_NE(
        CalcPropulsorKTKQ(KT, KQ, *p.WaterProperties, *p.Propulsion, *p.Propeller, *p.PropellerSeries, n, va,
                          D, p.Propeller->ExpAreaRatio(), 1, p.Propeller->PitchMean(kFt), sa, ta, spk, tpk),
        0);
    const double rho = p.WaterProperties->Density(kSlugPerFt3);
    if (mode == kSizeByPower) {
      const double Pd = 2 * Pi * KQ * rho * n * n * n * std::pow(D, 5) / (550 * sp.RelRotEfficiency(row));
      const double losses = p.Propulsion->GearEfficiency() * p.Propulsion->ShaftEfficiency();
      EXPECT_NEAR(Pd, report.power * losses, 1e-3 * Pd);
    } else {
      EXPECT_NEAR(KT * rho * n * n * std::pow(D, 4), report.thrust, 1e-3 * report.thrust);
    }
    if (mode == kSizeByTotalDrag) {
      EXPECT_NEAR(sp.EngineRPM(row), report.engineRPM, 1e-3 * report.engineRPM);
    }
  }
}

// The sized rate becomes the gear ratio between the engine's design RPM and the propeller.
TEST(PropellerSizingRun, ASizedRateBecomesTheGearRatio) {
  NewProject();
  ASSERT_TRUE(OpenProjectFile(kExamples / "patrol_vessel_sizing.vxvl").opened);
  ModelSet& p = App().primary;
  p.PropellerSizing->GearRatioSolution(1);
  p.PropellerSizing->DiameterSolution(0);
  p.PropellerSizing->PitchMeanSolution(0);
  App().CurrentMode = Mode::Resistance;
  ASSERT_TRUE(RunCalculate().ok);
  ASSERT_TRUE(PreparePropulsionPrediction(*p.WaterProperties, *p.Hull, *p.ITTC78, *p.Propulsion, *p.Propeller,
                                          *p.PropellerSeries, *p.SpeedPerformance));
  const PropellerSizingReport r =
      ApplyPropellerSizing(*p.WaterProperties, *p.Hull, *p.Propulsion, *p.Propeller, *p.PropellerSeries,
                           *p.PropellerSizing, *p.SpeedPerformance);
  ASSERT_TRUE(r.ok) << r.errors;
  const SizedQuantity& rpm = r.quantities.back();
  ASSERT_EQ(rpm.name, "PropulsorRPM");
  EXPECT_NEAR(p.Propulsion->GearRatio(), r.engineRPM / rpm.after, 1e-12);
  EXPECT_NE(p.Propulsion->GearRatio(), 2.9);
}

// The command line: `size` prints before and after with units and saves the sized
// propeller; `calc --size` sizes and then predicts; a sizing that fails changes nothing.
TEST(PropellerSizingRun, CommandLineSizesReportsAndSaves) {
  const auto dir = std::filesystem::temp_directory_path() / "velmar_sizing_cli";
  std::filesystem::create_directories(dir);
  const std::string example = (kExamples / "patrol_vessel_sizing.vxvl").string(),
                    out = (dir / "sized.vxvl").string();
  testing::CliRun r = testing::Cli("size " + example + " -o " + out);
  ASSERT_EQ(r.code, 0) << r.out;
  for (const char* text : {"Propeller sizing By power", "Diameter [ft]", "Mean pitch [ft]", "before", "after",
                           "Open-water efficiency", "sized"})
    EXPECT_NE(r.out.find(text), std::string::npos) << text << "\n" << r.out;
  NewProject();
  ASSERT_TRUE(OpenProjectFile(out).opened);
  EXPECT_NEAR(App().primary.Propeller->Diameter(kFt), 8.5, 1e-9);  // the hull's largest

  r = testing::Cli("calc " + example + " --size");
  ASSERT_EQ(r.code, 0) << r.out;
  EXPECT_LT(r.out.find("Propeller sizing"), r.out.find("Propulsion prediction of")) << r.out;
  EXPECT_EQ(testing::Cli("calc " + example + " --size --mode resistance").code, 2);

  // A reference power no propeller of the series can absorb at that RPM within 8.5 ft.
  std::ifstream in(example, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), {});
  text.replace(text.find("\"ReferencePowerBrakePerPropeller\": 6700"), 39,
               "\"ReferencePowerBrakePerPropeller\": 67000");
  const auto spoilt = dir / "spoilt.vxvl";
  std::ofstream(spoilt, std::ios::binary) << text;
  r = testing::Cli("size " + spoilt.string() + " -o " + out);
  EXPECT_EQ(r.code, 1) << r.out;
  EXPECT_NE(r.out.find("The sizing failed; the propeller is unchanged"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("propeller sizing"), std::string::npos) << r.out;
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace velmar
