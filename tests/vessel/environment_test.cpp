#include "vessel/environment.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../core/test_support.h"

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

// The profile centroid may stand aft of midship: it is the one number without a check.
TEST_F(EnvironmentTest, EveryNumberPushesItsOwnWordWhenNegativeOnly) {
  for (int i = 0; i < static_cast<int>(env.Fields().size()); ++i) {
    const FieldDesc& d = env.Fields()[i];
    if (d.kind == FieldKind::Enum || d.check == Check::None) continue;
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
  for (const auto& r : testing::ReadTable("channel_sections.txt", 5)) {
    Channel(r.Num(0), r.Num(1), r.Num(2));
    EXPECT_NEAR(env.CalcChannelAreaSect(kM2), r.Num(3), 1e-5) << r.where;
    EXPECT_NEAR(env.CalcChannelGirth(kM), r.Num(4), 1e-5) << r.where;
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
