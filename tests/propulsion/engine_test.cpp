#include "propulsion/engine.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "core/diagnostics.h"
#include "core/helpers.h"

namespace velmar {
namespace {

// A conversion rounds to the 10 significant digits of the units object.
double R(double v) { return RoundToSigDigits(v, 10); }

constexpr double kHpToKW = 0.745699871582;
constexpr double kGalToL = 3.785;

using Points = std::vector<double>;

class EngineTest : public ::testing::Test {
 protected:
  void SetUp() override { units->SigDigits(10), ResetCalcErrorState(); }
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
}

TEST_F(EngineTest, EmptyAndShortTablesAndAFailedSpline) {
  EXPECT_EQ(engine.GetMaxPowerFromRPM(1000, kCurrent), 0.0);
  EXPECT_EQ(engine.GetFuelRateFromDefinedLoadPower(100, kCurrent), 0.0);
  SetCurve(kMax, {{1200}, {350}, {15}});
  EXPECT_EQ(engine.GetMaxPowerFromRPM(3000, kCurrent), 350.0);  // one point: its value everywhere
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
  // One defined-load point is no curve.
  SetCurve(kLoad, {{1500}, {200}, {0}});
  EXPECT_FALSE(engine.GetIntersectionOfMaxPowerAndDefinedLoadCurves(rpm, power, kCurrent));
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

  engine.ClearAllData();
  EXPECT_EQ(engine.MaxPowerPower(1, kCurrent), 0.0);
  EXPECT_EQ(copy->MaxPowerPowerArray(), (Points{200, 999}));
}

}  // namespace
}  // namespace velmar
