#include "propulsion/propulsion_settings.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace velmar {
namespace {

class PropulsionSettingsTest : public ::testing::Test {
 protected:
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units);
  clsVXPropulsion prop{units, nullptr, nullptr, hull};
};

// The file keys that differ from a plain spelling of the label are the ones files hold.
TEST_F(PropulsionSettingsTest, FileKeysAsFilesHoldThem) {
  const struct {
    const char* field;
    size_t index;
    const char* key;
  } cases[] = {
      {"PropulsionInteractionEnabled", 3, "Enter"},  // a key without a user label
      {"PropulsionInteractionMethod", 10, "Blount/Fox"},
      {"CavCriteriaMethod", 3, " 5%CavLine"},  // the leading blank is kept
      {"KTKQFileIndex", 1, "User defined"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(prop.Fields()[prop.FieldIndex(c.field)].labels->keys.at(c.index), c.key) << c.field;
  EXPECT_EQ(prop.LabelOf(prop.FieldIndex("CavCriteriaMethod"), 3), " 5% cav line");
}

TEST_F(PropulsionSettingsTest, CaptionsWithUnitsFollowTheirOwnLengthUnit) {
  units->LengthIndex(kM);
  units->PropLengthIndex(kMm);
  EXPECT_EQ(prop.PropellerDiameterMaxFieldNameWithUnits(), "  Max prop diam [mm]:");
  EXPECT_EQ(prop.PropellerTunnelRecessDepthFieldNameWithUnits(), "  Recess depth [m]:");
}

TEST_F(PropulsionSettingsTest, FileIndexLabels) {
  struct Case {
    int stored, index;
    const char* description;
    const char* label;
  } cases[] = {
      {0, -1, "Main engine", "None defined"},  // the stored index 0
      {1, 0, "Main engine", "None defined"},  {1, -1, "Main engine", "Main engine"},
      {0, 1, "", "Click to define..."},       {1, -1, "", "Click to define..."},
  };
  for (const Case& c : cases) {
    prop.EngineFileIndex(c.stored);
    prop.WaterjetFileIndex(c.stored);
    prop.KTKQFileIndex(c.stored);
    EXPECT_EQ(prop.EngineFileLabel(c.index, c.description), c.label);
    EXPECT_EQ(prop.WaterjetFileLabel(c.index, c.description), c.label);
    EXPECT_EQ(prop.KTKQFileLabel(c.index, c.description), c.label);
  }
}

TEST_F(PropulsionSettingsTest, CopyIsIndependentWithTheSameLinks) {
  prop.GearRatio(2.5);
  const auto copy = prop.CopyClass();
  EXPECT_EQ(copy->Units(), units);
  EXPECT_EQ(copy->Hull(), hull);
  copy->GearRatio(1.0);
  copy->PropulsionInteractionDefinedSource("Trials");
  EXPECT_EQ(prop.GearRatio(), 2.5);
  EXPECT_EQ(prop.PropulsionInteractionDefinedSource(), "Manual");

  prop.ClearAllData();
  EXPECT_EQ(prop.AddedMassMult(), 0.0);
  EXPECT_EQ(prop.PropulsionInteractionDefinedSource(), "");
  EXPECT_EQ(copy->PropulsionInteractionDefinedSource(), "Trials");
}

TEST_F(PropulsionSettingsTest, UnitChangeConvertsTheRatedPowerOnly) {
  prop.EngineRatedPower(kCurrent, 1000.0);  // hp
  prop.EngineRatedRPM(1800.0);
  const auto old = units->CopyClass();
  units->PowerIndex(kKW);
  prop.ConvertAllData(*units, *old);
  EXPECT_NEAR(prop.EngineRatedPower(kCurrent), 745.699872, 1e-6);
  EXPECT_EQ(prop.EngineRatedRPM(), 1800.0);
}

TEST_F(PropulsionSettingsTest, ShaftItemsAreOneStoreWithTheHull) {
  prop.PropulsorCountPerHull(2);
  prop.AngleShaftDeg(7.25);
  prop.PropellerTunnelRecessDepth(kFt, 0.5);
  EXPECT_EQ(hull->PropulsorCountPerHull(), 2);
  EXPECT_EQ(hull->AngleShaftDeg(), 7.25);
  EXPECT_EQ(hull->PropellerTunnelRecessDepth(kFt), 0.5);
  EXPECT_FALSE(prop.ErrorsFound());

  hull->PropulsorCountPerHull(0);
  EXPECT_EQ(prop.PropulsorCountPerHull(), 0);
  EXPECT_EQ(prop.ErrorText(), "\tShaft count\r\n");

  clsVXPropulsion unlinked;
  EXPECT_THROW(unlinked.AngleShaftDeg(), std::logic_error);
}

}  // namespace
}  // namespace velmar
