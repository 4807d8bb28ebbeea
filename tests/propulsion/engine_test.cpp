#include "propulsion/engine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <vector>

#include "core/diagnostics.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "propulsion/engine_fuel.h"

namespace velmar {
namespace {

// A conversion rounds to the 10 significant digits of the units object.
double R(double v) { return RoundToSigDigits(v, 10); }

constexpr double kHpToKW = 0.745699871582;
constexpr double kGalToL = 3.785;

using Points = std::vector<double>;

class EngineTest : public ::testing::Test {
 protected:
  void SetUp() override {
    units->SigDigits(10), ResetCalcErrorState();
    engine.ClearAllData(), SetHooks(nullptr);
    hooks = HeadlessHooks{};
  }
  // Points in the held units, in the order given: RPM, power and fuel, which follow each other
  // in clsVXEngine::Curve from `rpmList` on.
  void SetCurve(clsVXEngine::Curve rpmList, const std::vector<Points>& columns) {
    const int n = static_cast<int>(columns[0].size());
    rpmList == kMax ? engine.MaxPowerCount(n) : engine.DefinedLoadCount(n);
    for (size_t k = 0; k < 3; ++k)
      for (int i = 0; i < n; ++i)
        engine.CurveValue(clsVXEngine::Curve(int(rpmList) + int(k)), i, kCurrent, columns[k][size_t(i)]);
  }
  static constexpr auto kMax = clsVXEngine::Curve::MaxPowerRPM, kLoad = clsVXEngine::Curve::DefinedLoadRPM;

  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  clsVXEngine engine{units};
  HeadlessHooks& hooks = DefaultHeadlessHooks();
};

TEST_F(EngineTest, MaxPowerLookupsInterpolateLinearlyAndExtendTheEnds) {
  // Out of RPM order on purpose: the lookups sort their copies.
  SetCurve(kMax, {{1500, 1000, 2000}, {400, 200, 500}, {18, 10, 24}});
  engine.ParasiticLoad(kCurrent, 20.0);
  EXPECT_NEAR(engine.GetMaxPowerFromRPM(1250, kCurrent), 300, 1e-6);
  EXPECT_NEAR(engine.GetMaxPowerFromRPM(800, kCurrent), 120, 1e-6);   // below the table
  EXPECT_NEAR(engine.GetMaxPowerFromRPM(2500, kCurrent), 600, 1e-6);  // above the table
  EXPECT_NEAR(engine.GetRPMFromMaxPower(450, kCurrent), 1750, 1e-6);
  EXPECT_NEAR(engine.GetNetMaxPowerFromRPM(1250, kCurrent), 280, 1e-6);
  EXPECT_NEAR(engine.GetFuelRateFromMaxPowerRPM(1750, kLPerH), 21 * kGalToL, 1e-6);
  EXPECT_EQ(engine.GetMaxPowerFromRPM(0, kCurrent), 0.0);  // no argument, no lookup
  EXPECT_FALSE(CalcErrorsPending());
}

TEST_F(EngineTest, DefinedLoadLookupsUseTheCubicSpline) {
  // Natural spline through (0,0), (1,1), (2,0) scaled by 100 across and 1000 up: d1 = -3,
  // so y(0.5) = 0.5 + 0.375 * 3 / 6 = 0.6875, and past the end the line with the end
  // slope -1.5 gives y(2.5) = -0.75.
  SetCurve(kLoad, {{1000, 2000, 1000}, {100, 200, 300}, {10, 20, 30}});
  for (const auto& [power, rpm] : {std::pair{150.0, 1687.5}, {200.0, 2000.0}, {350.0, 250.0}})
    EXPECT_NEAR(engine.GetRPMFromDefinedLoadPower(power, kCurrent), rpm, 1e-9) << power;
  // A spline through points on a line is that line.
  EXPECT_NEAR(engine.GetFuelRateFromDefinedLoadPower(250, kLPerH), 25.0 * kGalToL, 1e-9);
  EXPECT_NEAR(engine.GetFuelRateFromDefinedLoadPower(250 * kHpToKW, kCurrent, kKW), 25.0, 1e-6);
  EXPECT_FALSE(CalcErrorsPending());

  SetCurve(kLoad, {{1000, 1100, 1500}, {100, 100, 300}, {1, 2, 3}});  // a repeated power
  EXPECT_EQ(engine.GetRPMFromDefinedLoadPower(200, kCurrent), 0.0);
  ASSERT_TRUE(CalcErrorsPending());
  EXPECT_NE(GetCalcErrorText().find("getting RPM from defined load power"), std::string::npos);
}

TEST_F(EngineTest, IntersectionOfTheCurves) {
  // max power: 100 + 0.2 (n - 1000); defined load: 50 + 0.35 (n - 1000); they cross at
  // n - 1000 = 1000 / 3 in the first segment of both.
  SetCurve(kMax, {{1000, 2000, 3000}, {100, 300, 400}, {0, 0, 0}});
  SetCurve(kLoad, {{1000, 2000}, {50, 400}, {0, 0}});
  double rpm = -1, power = -1;
  ASSERT_TRUE(engine.GetIntersectionOfMaxPowerAndDefinedLoadCurves(rpm, power, kCurrent));
  EXPECT_NEAR(rpm, 1000 + 1000.0 / 3, 1e-9);
  EXPECT_NEAR(power, 100 + 200.0 / 3, 1e-9);
  // The defined load stays below the limit: no crossing within the segments.
  SetCurve(kLoad, {{1000, 3000}, {10, 50}, {0, 0}});
  EXPECT_FALSE(engine.GetIntersectionOfMaxPowerAndDefinedLoadCurves(rpm, power, kCurrent));
  EXPECT_EQ(std::pair(rpm, power), std::pair(0.0, 0.0));
}

TEST_F(EngineTest, CopyClearAndConvertTheCurves) {
  SetCurve(kMax, {{1000, 2000}, {200, 500}, {10, 24}});
  auto copy = engine.CopyClass();
  copy->MaxPowerPower(1, kCurrent, 999.0);
  EXPECT_EQ(engine.MaxPowerPower(1, kCurrent), 500.0);
  EXPECT_THROW(engine.DefinedLoadRPM(kEngineCurvePoints, 1.0), std::out_of_range);

  // Power and fuel are converted, points beyond the count too; RPM is not.
  SetCurve(kLoad, {{900, 1800}, {100, 400}, {5, 20}});
  engine.MaxPowerPower(kEngineCurvePoints - 1, kCurrent, 7.0);
  const auto old = units->CopyClass();
  units->PowerIndex(kKW), units->FuelRateIndex(kLPerH);
  engine.ConvertAllData(*units, *old);
  EXPECT_DOUBLE_EQ(engine.MaxPowerPower(kEngineCurvePoints - 1, kCurrent), R(7 * kHpToKW));
  EXPECT_DOUBLE_EQ(engine.DefinedLoadFuelRate(0, kCurrent), R(5 * kGalToL));
  EXPECT_EQ(engine.MaxPowerRPM(1), 2000.0);
  EXPECT_EQ(copy->MaxPowerPowerArray(), (Points{200, 999}));
}

// A usable engine: rated point, max-power line P = 100 + 0.2 (n - 1000), fuel 10 + (n - 1000) / 100,
// and defined-load points on the line n = 1500 + 10 (P - 100), fuel 6 + 0.06 (P - 100), so that
// the spline through them is that line.
class EngineFuelTest : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    engine.MaxRatedPower(kCurrent, 300), engine.MaxRatedRPM(2000);
    SetCurve(kMax, {{1000, 2000}, {100, 300}, {10, 20}});
    SetLoad({1500, 2000, 2500}), engine.DefinedLoadCount(0);
  }
  void SetLoad(const Points& rpm) {
    const Points power{100, 150, 200}, fuel{6, 9, 12};
    SetCurve(kLoad, {rpm,
                     {power.begin(), power.begin() + long(rpm.size())},
                     {fuel.begin(), fuel.begin() + long(rpm.size())}});
  }
};

TEST_F(EngineFuelTest, CheckAsksAndDropsBadPoints) {
  struct Row {
    const char* name;
    void (*spoil)(clsVXEngine&);
    bool ok;
    const char* message;
  } rows[] = {
      {"good", [](clsVXEngine&) {}, true, nullptr},
      {"no rated power", [](clsVXEngine& e) { e.MaxRatedPower(kCurrent, 0); }, false,
       "Engine Data CheckThe engine performance data requires a rated point. The calculation cannont proceed "
       "without a valid max rated power."},
      {"one point", [](clsVXEngine& e) { e.MaxPowerCount(1); }, false, "performance data requires atleast 2"},
      {"one load point", [](clsVXEngine& e) { e.DefinedLoadCount(1); }, false,
       "load data requires atleast 2"},
      {"zero fuel", [](clsVXEngine& e) { e.MaxPowerFuelRate(0, kCurrent, 0); }, true, nullptr},
  };
  for (const Row& r : rows) {
    SetUp();
    r.spoil(engine);
    EXPECT_EQ(CheckEngineData(engine), r.ok) << r.name;
    EXPECT_EQ(engine.Description(), "Untitled Engine Object");
    EXPECT_TRUE(hooks.questions.empty()) << r.name;
    ASSERT_EQ(hooks.messages.size(), r.message ? 1u : 0u) << r.name;
    if (!r.message) continue;
    EXPECT_NE((hooks.messages[0].title + hooks.messages[0].text).find(r.message), std::string::npos);
  }
  double rate = 0;
  engine.MaxRatedRPM(0);
  EXPECT_FALSE(CalcEngineFuelRate(rate, engine, 1500, 100, kCurrent, kCurrent, 0));
  ASSERT_TRUE(CalcErrorsPending());
  EXPECT_NE(GetCalcErrorText().find("Engine data is not fully defined"), std::string::npos);

  // A zero RPM or a power not above 0 is dropped; a negative RPM or fuel rate is asked about
  // but kept. "No" stops the check and leaves the points.
  SetUp(), SetCurve(kMax, {{1000, 0, 1500, -5, 2000}, {100, 200, -1, 300, 400}, {10, 20, 30, -1, 40}});
  hooks.scriptedAnswers = {Answer::No};
  EXPECT_FALSE(CheckEngineData(engine));
  EXPECT_EQ(engine.MaxPowerCount(), 5);
  EXPECT_TRUE(CheckEngineData(engine));
  EXPECT_EQ(hooks.questions.size(), 2u);
  EXPECT_EQ(engine.MaxPowerCount(), 3);
  EXPECT_EQ(engine.MaxPowerRPMArray(), (Points{1000, -5, 2000}));
  EXPECT_EQ(engine.MaxPowerFuelRate(1, kCurrent), -1.0);
  EXPECT_EQ(engine.MaxPowerPower(3, kCurrent), 0.0);  // past the count: cleared
}

TEST_F(EngineFuelTest, RateFromEitherCurve) {
  constexpr double kNone = -2;  // the call fails
  struct Row {
    const char* name;
    Points loadRpm;
    double rpm, power;
    int method, fuelUnit;
    double rate;
  } rows[] = {
      {"top of map scaled", {}, 1500, 100, 0, kCurrent, 15.0 / 200 * 100},
      {"fuel unit", {}, 1500, 100, 2, kLPerH, 15 * kGalToL / 200 * 100},
      {"two load points", {1500, 2000}, 1500, 100, 4, kCurrent, 7.5},
      {"no RPM", {}, 0, 100, 0, kCurrent, -1},
      {"no RPM, towing", {}, 0, 100, 1, kCurrent, kNone},
      // P = 150: R1 = 2000, R2 = 1250, F2 = 12.5, Gap = 750, defined rate 9.
      {"blend", {1500, 2000, 2500}, 1800, 150, 0, kCurrent, 9 + 3.5 * std::pow(200.0 / 750, 3)},
      {"below the limit RPM", {1500, 2000, 2500}, 1200, 150, 0, kCurrent, 12.5},
      {"gap within a tenth", {1500, 2000, 2500}, 8000, 150, 0, kCurrent, 9},
      {"above the top power", {1500, 2000, 2500}, 1800, 350, 0, kCurrent, 21},
      {"no power", {1500, 2000, 2500}, 1800, 0, 0, kCurrent, -1},
      // R1 = 1100 below R2 = 1250: no blend although the gap exceeds a tenth of 1000.
      {"load left of the limit", {1000, 1100, 1200}, 1000, 150, 0, kCurrent, 9},
  };
  for (const Row& r : rows) {
    SetUp();
    if (!r.loadRpm.empty()) SetLoad(r.loadRpm);
    double rate = 0;
    const bool ok = CalcEngineFuelRate(rate, engine, r.rpm, r.power, r.fuelUnit, kCurrent, r.method);
    EXPECT_NEAR(ok ? rate : kNone, r.rate, 1e-9) << r.name;
  }
}

}  // namespace
}  // namespace velmar
