#include "propulsion/waterjet.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "core/helpers.h"

namespace velmar {
namespace {

// A conversion rounds to the 10 significant digits of the units object.
double R(double v) { return RoundToSigDigits(v, 10); }

using Points = std::vector<double>;

class WaterjetTest : public ::testing::Test {
 protected:
  void SetUp() override { units->SigDigits(10); }
  // Appends a power series with its points (speed, thrust, cavitation zone).
  void AddSeries(double power, const Points& speed, const Points& thrust, const std::vector<int>& cav) {
    const int s = jet.PowerSeriesCount();
    jet.PowerSeriesCount(s + 1);
    jet.Power(s, kCurrent, power);
    jet.PerformanceCount(s, static_cast<int>(speed.size()));
    for (size_t p = 0; p < speed.size(); ++p) {
      jet.Speed(s, static_cast<int>(p), kCurrent, speed[p]);
      jet.Thrust(s, static_cast<int>(p), kCurrent, thrust[p]);
      jet.CavZoneStatus(s, static_cast<int>(p), cav[p]);
    }
  }
  void AddImpellers(const std::vector<std::string>& names) {
    for (const std::string& n : names) {
      const int i = jet.ImpellerCount();
      jet.ImpellerCount(i + 1);
      jet.ImpellerName(i, n);
      jet.ImpellerRPM(i, 1000.0 + i);
    }
  }

  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  clsVXWaterjet jet{units};
};

TEST_F(WaterjetTest, SortOrdersSeriesByPowerAndPointsBySpeed) {
  jet.Sort();  // nothing held: nothing happens
  EXPECT_EQ(jet.PowerSeriesCount(), 0);

  AddSeries(300, {20, 10, 30}, {2, 1, 3}, {1, 0, 0});
  AddSeries(100, {10, 5, 10}, {1, 2, 3}, {0, 1, 0});  // equal speeds keep their order
  AddSeries(200, {7}, {70}, {1});
  jet.Sort();
  ASSERT_EQ(jet.PowerSeriesCount(), 3);
  EXPECT_EQ((Points{jet.Power(0, kCurrent), jet.Power(1, kCurrent), jet.Power(2, kCurrent)}),
            (Points{100, 200, 300}));
  // Records move whole, with their own point counts.
  EXPECT_EQ(jet.SpeedArray(0), (Points{5, 10, 10}));
  EXPECT_EQ(jet.ThrustArray(0), (Points{2, 1, 3}));
  EXPECT_EQ(jet.SpeedArray(1), (Points{7}));
  EXPECT_EQ(jet.SpeedArray(2), (Points{10, 20, 30}));
  for (int p = 0; p < 3; ++p) EXPECT_EQ(jet.CavZoneStatus(2, p), p == 1 ? 1 : 0) << p;
}

TEST_F(WaterjetTest, RemoveImpellerMovesTheRestUp) {
  struct Case {
    int index;
    bool removed;
    std::vector<std::string> names;
  } cases[] = {
      {0, true, {"B", "C"}},       {1, true, {"A", "C"}},        {2, true, {"A", "B"}},
      {3, false, {"A", "B", "C"}}, {-1, false, {"A", "B", "C"}},
  };
  for (const Case& c : cases) {
    jet.ClearAllData();
    AddImpellers({"A", "B", "C"});
    EXPECT_EQ(jet.RemoveImpeller(c.index), c.removed) << c.index;
    std::vector<std::string> names;
    for (int i = 0; i < jet.ImpellerCount(); ++i) names.push_back(jet.ImpellerName(i));
    EXPECT_EQ(names, c.names) << c.index;
    // The numbers travel with their record; the place left behind is cleared.
    EXPECT_EQ(jet.ImpellerRPM(0), c.index == 0 ? 1001.0 : 1000.0) << c.index;
    if (c.removed) {
      EXPECT_EQ(jet.ImpellerRPM(2), 0.0);
    }
  }
}

TEST_F(WaterjetTest, RemovingTheSelectedImpellerKeepsTheSelectionInRange) {
  struct Case {
    int count, selected, removed, expected;
  } cases[] = {{3, 2, 2, 1}, {3, 2, 0, 1}, {3, 0, 1, 0}, {1, 0, 0, 0}};
  for (const Case& c : cases) {
    jet.ClearAllData();
    AddImpellers(std::vector<std::string>(static_cast<size_t>(c.count), "X"));
    jet.ImpellerIndex(c.selected);
    jet.RemoveImpeller(c.removed);
    EXPECT_EQ(jet.ImpellerIndex(), c.expected) << c.selected << " " << c.removed;
  }
}

TEST_F(WaterjetTest, RemovePowerSeriesAndTheFixedLimits) {
  AddSeries(100, {1}, {10}, {0});
  AddSeries(200, {2, 3}, {20, 30}, {0, 1});
  AddSeries(300, {4}, {40}, {1});
  EXPECT_TRUE(jet.RemovePowerSeries(1));
  ASSERT_EQ(jet.PowerSeriesCount(), 2);
  EXPECT_EQ(jet.Power(1, kCurrent), 300);
  EXPECT_EQ(jet.SpeedArray(1), (Points{4}));
  EXPECT_EQ(jet.PerformanceCount(2), 0);  // cleared
  EXPECT_FALSE(jet.RemovePowerSeries(2));

  EXPECT_NO_THROW(jet.Speed(kWaterjetMaxPowerSeries - 1, kWaterjetMaxPoints - 1, kCurrent));
  EXPECT_THROW(jet.Speed(kWaterjetMaxPowerSeries, 0, kCurrent), std::out_of_range);
  EXPECT_THROW(jet.Thrust(0, kWaterjetMaxPoints, kCurrent), std::out_of_range);
  EXPECT_THROW(jet.ImpellerName(kWaterjetMaxImpellers), std::out_of_range);
}

TEST_F(WaterjetTest, CopyIsIndependent) {
  AddSeries(100, {1, 2}, {10, 20}, {0, 1});
  AddImpellers({"A"});
  auto copy = jet.CopyClass();
  EXPECT_EQ(copy->Units(), units);
  copy->Thrust(0, 1, kCurrent, 99.0);
  copy->ImpellerName(0, "Z");
  EXPECT_EQ(jet.ThrustArray(0), (Points{10, 20}));
  EXPECT_EQ(jet.ImpellerName(0), "A");
}

TEST_F(WaterjetTest, ConvertAllDataConvertsEveryTable) {
  AddSeries(1000, {20, 30}, {5000, 4000}, {0, 0});
  AddImpellers({"A"});
  jet.ImpellerSpeed(0, kCurrent, 35.0);
  jet.ImpellerCorrectedPower(0, kCurrent, 800.0);
  jet.ImpellerDiameter(kCurrent, 2.0);
  const auto old = units->CopyClass();
  ApplyUnitPreset(*units, UnitPreset::SI);  // kW, kN, mm propeller lengths; knots stay
  units->SpeedIndex(kMPerSec);
  jet.ConvertAllData(*units, *old);
  constexpr double kt = 1852.0 / 3600.0, kW = 0.745699871582, kN = 0.00444822161526;
  EXPECT_DOUBLE_EQ(jet.Power(0, kCurrent), R(1000 * kW));
  EXPECT_DOUBLE_EQ(jet.Speed(0, 1, kCurrent), R(30 * kt));
  EXPECT_DOUBLE_EQ(jet.Thrust(0, 0, kCurrent), R(5000 * kN));
  EXPECT_DOUBLE_EQ(jet.ImpellerSpeed(0, kCurrent), R(35 * kt));
  EXPECT_DOUBLE_EQ(jet.ImpellerCorrectedPower(0, kCurrent), R(800 * kW));
  EXPECT_DOUBLE_EQ(jet.ImpellerDiameter(kCurrent), R(609.6));
  EXPECT_EQ(jet.ImpellerRPM(0), 1000.0);
}

}  // namespace
}  // namespace velmar
