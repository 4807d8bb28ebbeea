#include "vessel/environment.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmar {
namespace {

class EnvironmentTest : public ::testing::Test {
 protected:
  void SetUp() override { ApplyUnitPreset(*units, UnitPreset::SI); }
  void Channel(double depth, double width, double slopeDeg) {
    env.ShallowWaterDepth(kCurrent, depth);
    env.ShallowWaterChannelWidth(kCurrent, width);
    env.ShallowWaterChannelSideSlopeAngleDeg(slopeDeg);
  }

  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  clsVXEnvironment env{units};
};

TEST_F(EnvironmentTest, EveryNumberPushesItsOwnWordWhenNegativeOnly) {
  for (int i = 0; i < static_cast<int>(env.Fields().size()); ++i) {
    const FieldDesc& d = env.Fields()[i];
    if (d.kind == FieldKind::Enum) continue;
    SCOPED_TRACE(d.name);
    env.ClearErrorStack();
    env.SetRaw(i, 0.0);
    env.Read(i);
    EXPECT_EQ(env.ErrorText(), "");
    env.SetRaw(i, -1.0);
    env.Read(i);
    ASSERT_STRNE(d.word, "");
    EXPECT_EQ(env.ErrorText(), std::string("\t") + d.word + "\r\n");
  }
}

TEST_F(EnvironmentTest, ChannelSectionAndGirthInMetres) {
  struct Case {
    double depth, width, slopeDeg;
    double area, girth;  // m2 and m
    const char* why;
  } const cases[] = {
      {2, 20, 90, 40.0, 24.0, "vertical sides at exactly 90 deg"},
      {2, 20, 120, 40.0, 24.0, "beyond 90 deg is vertical too"},
      {2, 20, 89.9, 39.993019, 23.993025, "89.9 deg is still a trapezoid"},
      {2, 20, 10, 33.071797, 21.071797, "10 deg computes as 30"},
      {2, 20, 0, 33.071797, 21.071797, "0 deg computes as 30, no division by zero"},
      {10, 20, 30, 26.794919, 40.0, "negative bottom: girth clamps it, area does not"},
      {10, 10, 30, -73.205081, 40.0, "deep narrow trapezoid gives a negative area"},
      {0, 20, 45, 0.0, 20.0, "no depth: girth is the width alone"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    Channel(c.depth, c.width, c.slopeDeg);
    EXPECT_NEAR(env.CalcChannelAreaSect(kM2), c.area, 1e-5);
    EXPECT_NEAR(env.CalcChannelGirth(kM), c.girth, 1e-5);
  }
}

// The rectangular girth goes out through the area family, the trapezoid girth through the
// length family: in feet they differ by a factor 1/0.3048, in metres they agree.
TEST_F(EnvironmentTest, RectangularGirthConvertsAsAreaOutsideMetricUnits) {
  ApplyUnitPreset(*units, UnitPreset::Imperial);
  Channel(10.0, 100.0, 89.9);
  EXPECT_NEAR(env.CalcChannelGirth(kFt), 119.965124, 1e-3);  // trapezoid, plain length conversion
  Channel(10.0, 100.0, 90.0);
  EXPECT_NEAR(env.CalcChannelGirth(kFt), 120.0 / 0.3048, 1e-3);  // 36.576 m taken as m2, given in ft2
  EXPECT_NEAR(env.CalcChannelAreaSect(kCurrent), 1000.0, 1e-9);  // ft2
  EXPECT_NEAR(env.CalcChannelAreaSect(kM2), 1000.0 * 0.3048 * 0.3048, 1e-9);
}

}  // namespace
}  // namespace velmar
