#include "propulsion/waterjet.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <stdexcept>
#include <string>
#include <tuple>
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
  void AddSeries(double power, const std::vector<std::array<double, 3>>& points) {
    const int s = jet.PowerSeriesCount();
    jet.PowerSeriesCount(s + 1), jet.Power(s, kCurrent, power), jet.PerformanceCount(s, int(points.size()));
    int p = 0;
    for (const auto& [v, t, cav] : points)
      jet.Speed(s, p, kCurrent, v), jet.Thrust(s, p, kCurrent, t), jet.CavZoneStatus(s, p++, int(cav));
  }
  // Appends impellers named by one letter each; impeller X gets 1000 + (X - 'A') RPM.
  void AddImpellers(const std::string& names) {
    for (char n : names) {
      const int i = jet.ImpellerCount();
      jet.ImpellerCount(i + 1), jet.ImpellerName(i, std::string(1, n)), jet.ImpellerRPM(i, 1000.0 + n - 'A');
    }
  }

  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  clsVXWaterjet jet{units};
};

TEST_F(WaterjetTest, SortAndRemovePowerSeriesWithinTheFixedLimits) {
  AddSeries(300, {{20, 2, 1}, {10, 1, 0}, {30, 3, 0}});
  AddSeries(100, {{10, 1, 0}, {5, 2, 1}, {10, 3, 0}});  // equal speeds keep their order
  AddSeries(200, {{7, 70, 1}});
  jet.Sort();
  for (int s = 0; s < 3; ++s) EXPECT_EQ(jet.Power(s, kCurrent), 100.0 * (s + 1));
  // Records move whole, with their own point counts.
  EXPECT_EQ(jet.SpeedArray(0), (Points{5, 10, 10}));
  EXPECT_EQ(jet.ThrustArray(0), (Points{2, 1, 3}));
  EXPECT_EQ(jet.SpeedArray(1), (Points{7}));
  EXPECT_EQ(jet.SpeedArray(2), (Points{10, 20, 30}));
  for (int p = 0; p < 3; ++p) EXPECT_EQ(jet.CavZoneStatus(2, p), p == 1 ? 1 : 0) << p;

  // Removing moves the records behind up and clears the last place.
  EXPECT_TRUE(jet.RemovePowerSeries(1));
  ASSERT_EQ(jet.PowerSeriesCount(), 2);
  EXPECT_EQ(jet.SpeedArray(1), (Points{10, 20, 30}));
  EXPECT_EQ(jet.PerformanceCount(2), 0);
  EXPECT_FALSE(jet.RemovePowerSeries(2));

  EXPECT_NO_THROW(jet.Speed(kWaterjetMaxPowerSeries - 1, kWaterjetMaxPoints - 1, kCurrent));
  EXPECT_THROW(jet.Speed(kWaterjetMaxPowerSeries, 0, kCurrent), std::out_of_range);
  EXPECT_THROW(jet.Thrust(0, kWaterjetMaxPoints, kCurrent), std::out_of_range);
  EXPECT_THROW(jet.ImpellerName(kWaterjetMaxImpellers), std::out_of_range);
}

TEST_F(WaterjetTest, RemoveImpellerMovesTheRestUpAndKeepsTheSelectionInRange) {
  // Impellers held, the selected and the removed index; the impellers and selection after.
  const std::tuple<const char*, int, int, const char*, int> cases[] = {
      {"ABC", 2, 0, "BC", 1},  {"ABC", 0, 1, "AC", 0},   {"ABC", 2, 2, "AB", 1},
      {"ABC", 2, 3, "ABC", 2}, {"ABC", 2, -1, "ABC", 2}, {"A", 0, 0, "", 0}};
  for (const auto& [held, selected, index, after, selectedAfter] : cases) {
    SCOPED_TRACE(::testing::Message() << held << " " << selected << " " << index);
    jet.ClearAllData();
    AddImpellers(held);
    jet.ImpellerIndex(selected);
    EXPECT_EQ(jet.RemoveImpeller(index), std::strlen(after) < std::strlen(held));
    EXPECT_EQ(jet.ImpellerIndex(), selectedAfter);
    std::string names;
    for (int i = 0; i < jet.ImpellerCount(); ++i) names += jet.ImpellerName(i);
    EXPECT_EQ(names, after);
    // The numbers travel with their record; the place left behind is cleared.
    for (size_t i = 0; i < std::strlen(held); ++i)
      EXPECT_EQ(jet.ImpellerRPM(static_cast<int>(i)), i < names.size() ? 1000.0 + names[i] - 'A' : 0.0);
  }
}

TEST_F(WaterjetTest, CopyIsIndependentAndConvertAllDataConvertsEveryTable) {
  AddSeries(1000, {{20, 5000, 0}, {30, 4000, 0}});
  AddImpellers("A");
  jet.ImpellerSpeed(0, kCurrent, 35.0), jet.ImpellerDiameter(kCurrent, 2.0);
  auto copy = jet.CopyClass();
  copy->Thrust(0, 1, kCurrent, 99.0), copy->ImpellerName(0, "Z");
  EXPECT_EQ(jet.ThrustArray(0), (Points{5000, 4000}));
  EXPECT_EQ(jet.ImpellerName(0), "A");

  // SI: kW, mm propeller lengths; knots stay, so speeds go to m/s here.
  const auto old = units->CopyClass();
  ApplyUnitPreset(*units, UnitPreset::SI), units->SpeedIndex(kMPerSec);
  jet.ConvertAllData(*units, *old);
  constexpr double kt = 1852.0 / 3600.0, kW = 0.745699871582;
  EXPECT_DOUBLE_EQ(jet.Power(0, kCurrent), R(1000 * kW));
  EXPECT_DOUBLE_EQ(jet.Speed(0, 1, kCurrent), R(30 * kt));
  EXPECT_DOUBLE_EQ(jet.ImpellerSpeed(0, kCurrent), R(35 * kt));
  EXPECT_DOUBLE_EQ(jet.ImpellerDiameter(kCurrent), R(609.6));
}

}  // namespace
}  // namespace velmar
