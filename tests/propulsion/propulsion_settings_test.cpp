#include "propulsion/propulsion_settings.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace velmar {
namespace {

class PropulsionSettingsTest : public ::testing::Test {
 protected:
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units);
  clsVXPropulsion prop{units, nullptr, nullptr, hull};
};

TEST_F(PropulsionSettingsTest, NewObjectDefaults) {
  for (size_t i = 0; i < prop.Fields().size(); ++i) {
    const std::string name = prop.Fields()[i].name;
    EXPECT_EQ(prop.Raw(static_cast<int>(i)), name == "AddedMassMult" ? 1.0 : 0.0) << name;
  }
  EXPECT_EQ(prop.PropulsionInteractionReferenceShip(), "");
  EXPECT_EQ(prop.PropulsionInteractionDefinedSource(), "Manual");
}

TEST_F(PropulsionSettingsTest, RowsFollowTheFileBlock) {
  const std::vector<std::string> block = {"PropulsionInteractionEnabled",
                                          "PropulsionInteractionTechnique",
                                          "PropulsionInteractionMethod",
                                          "PropulsionInteractionReferenceShip",
                                          "PropulsionInteractionDefinedSource",
                                          "ViscousScaleCorrEnabled",
                                          "ViscousScaleCorrMethod",
                                          "RoughnessEnabled",
                                          "DuctedPropCorrEnabled",
                                          "PropellerTunnelCorrEnabled",
                                          "AnalysisTypeMethod",
                                          "CavCriteriaMethod",
                                          "FixedEngineRPM",
                                          "PropulsorCalcType",
                                          "AngleRiseOfRunDeg",
                                          "GearEfficiency",
                                          "GearRatio",
                                          "ShaftEfficiency",
                                          "EngineFileIndex",
                                          "WaterjetFileIndex",
                                          "KTKQFileIndex",
                                          "CPPMethod",
                                          "AddedMassMult",
                                          "EngineControlEnabled",
                                          "EngineLimitToRPMPerSec"};
  std::vector<std::string> tags, notInFile;
  for (size_t i = 0; i < prop.Fields().size(); ++i) {
    const FieldDesc& d = prop.Fields()[i];
    (d.flags & kNotInFile ? notInFile : tags).emplace_back(d.Tag());
  }
  EXPECT_EQ(tags, block);
  EXPECT_EQ(notInFile, (std::vector<std::string>{"EngineRatedPower", "EngineRatedRPM"}));
}

TEST_F(PropulsionSettingsTest, LabelsAndKeys) {
  struct Case {
    const char* field;
    int index;
    const char* label;  // nullptr: a file key without a user label
    const char* key;
  } cases[] = {
      {"PropulsorCalcType", 1, "Aligned series", "AlignedPropellerSeries"},
      {"PropulsorCalcType", 3, "Waterjet data", "WaterjetData"},
      {"PropulsionInteractionEnabled", 2, "Lock", "Lock"},
      {"PropulsionInteractionEnabled", 3, nullptr, "Enter"},
      {"PropulsionInteractionTechnique", 2, "Scale from test", "ScaleFromTest"},
      {"PropulsionInteractionMethod", 2, "SSPA Cargo Series", "SSPACargoSeries"},
      {"PropulsionInteractionMethod", 6, "Holtrop", "Holtrop"},
      {"PropulsionInteractionMethod", 10, "Blount/Fox", "Blount/Fox"},
      {"PropulsionInteractionMethod", 11, "Simple Waterjet", "SimpleWaterjet"},
      {"ViscousScaleCorrMethod", 1, "Standard", "Standard"},
      {"DuctedPropCorrEnabled", 1, "On", "On"},
      {"CavCriteriaMethod", 0, "Keller eqn", "Keller"},
      {"CavCriteriaMethod", 2, "10% cav line", "10%CavLine"},
      {"CavCriteriaMethod", 3, " 5% cav line", " 5%CavLine"},
      {"AnalysisTypeMethod", 2, "Fixed engine RPM", "FixedEngineRPM"},
      {"AnalysisTypeMethod", 4, "Defined", "Defined"},
      {"CPPMethod", 2, "Defined load", "DefinedLoad"},
      {"EngineControlEnabled", 1, "Limit RPM rate", "LimitRPMRate"},
      {"EngineFileIndex", 0, "None defined", "None defined"},
      {"KTKQFileIndex", 1, "User defined", "User defined"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.field << "[" << c.index << "]");
    const int id = prop.FieldIndex(c.field);
    ASSERT_GE(id, 0);
    const LabelList& list = *prop.Fields()[id].labels;
    EXPECT_EQ(list.keys.at(c.index), c.key);
    if (c.label) {
      EXPECT_EQ(prop.LabelOf(id, c.index), c.label);
    } else {
      EXPECT_EQ(list.labels.size(), static_cast<size_t>(c.index));
    }
  }
  EXPECT_EQ(kPropulsionInteractionMethodLabels.labels.size(), 12u);
  EXPECT_EQ(kPropulsionInteractionMethodLabels.keys.size(), 12u);
}

TEST_F(PropulsionSettingsTest, Captions) {
  const std::pair<const char*, const char*> rows[] = {
      {"PropulsorCalcType", "Propulsor type:"},
      {"PropulsionInteractionEnabled", "Prediction:"},
      {"PropulsionInteractionTechnique", "Technique:"},
      {"PropulsionInteractionMethod", "Prediction:"},
      {"ViscousScaleCorrEnabled", "Viscous scale corr:"},
      {"ViscousScaleCorrMethod", ""},
      {"DuctedPropCorrEnabled", "Ducted prop corr:"},
      {"PropellerTunnelCorrEnabled", "Tunnel stern corr:"},
      {"CavCriteriaMethod", "Cavitation criteria:"},
      {"AnalysisTypeMethod", "Analysis type:"},
      {"CPPMethod", "CPP method:"},
      {"EngineControlEnabled", "RPM constraint:"},
      {"EngineFileIndex", "Engine data:"},
      {"AddedMassMult", "Mass multiplier:"},
      {"EngineLimitToRPMPerSec", "Limit [RPM/s]:"},
      {"FixedEngineRPM", "Engine RPM:"},
      {"EngineRatedPower", "Rated power:"},
      {"EngineRatedRPM", "Rated RPM:"},
      {"ShaftEfficiency", "Shaft efficiency:"},
      {"GearEfficiency", "Gear efficiency:"},
      {"GearRatio", "Gear ratio:"},
      {"AngleRiseOfRunDeg", "Added rise of run:"},
  };
  for (const auto& [field, caption] : rows) {
    EXPECT_EQ(prop.FieldNameOf(prop.FieldIndex(field)), std::string("  ") + caption) << field;
  }
  units->LengthIndex(kM);
  units->PropLengthIndex(kMm);
  const std::pair<std::string, const char*> forwards[] = {
      {prop.PropulsionInteractionDefinedSourceFieldName(), "  Source:"},
      {prop.PropulsionInteractionReferenceShipFieldName(), "  Reference ship:"},
      {prop.PropulsorCountPerHullFieldName(), "  Count:"},
      {prop.PropellerDiameterMaxFieldName(), "  Max prop diam:"},
      {prop.PropellerDiameterMaxFieldNameWithUnits(), "  Max prop diam [mm]:"},
      {prop.PropellerTunnelEffectiveDiameterFieldName(), "  Effective diam:"},
      {prop.PropellerTunnelEffectiveDiameterFieldNameWithUnits(), "  Effective diam [m]:"},
      {prop.PropellerTunnelRecessDepthFieldName(), "  Recess depth:"},
      {prop.PropellerTunnelRecessDepthFieldNameWithUnits(), "  Recess depth [m]:"},
  };
  for (const auto& [text, expected] : forwards) EXPECT_EQ(text, expected);
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
  prop.PropulsionInteractionMethod(6);
  prop.GearRatio(2.5);
  prop.PropulsionInteractionReferenceShip("ref.ship");
  const auto copy = prop.CopyClass();
  EXPECT_EQ(copy->Units(), units);
  EXPECT_EQ(copy->Hull(), hull);
  copy->PropulsionInteractionMethod(0);
  copy->GearRatio(1.0);
  copy->PropulsionInteractionReferenceShip("");
  copy->PropulsionInteractionDefinedSource("Trials");
  EXPECT_EQ(prop.PropulsionInteractionMethodLabel(), "Holtrop");
  EXPECT_EQ(prop.GearRatio(), 2.5);
  EXPECT_EQ(prop.PropulsionInteractionReferenceShip(), "ref.ship");
  EXPECT_EQ(prop.PropulsionInteractionDefinedSource(), "Manual");

  prop.ClearAllData();
  EXPECT_EQ(prop.AddedMassMult(), 0.0);
  EXPECT_EQ(prop.PropulsionInteractionDefinedSource(), "");
  EXPECT_EQ(copy->PropulsionInteractionDefinedSource(), "Trials");
}

TEST_F(PropulsionSettingsTest, UnitChangeConvertsTheRatedPowerOnly) {
  prop.EngineRatedPower(kCurrent, 1000.0);  // hp
  prop.EngineRatedRPM(1800.0);
  prop.FixedEngineRPM(1500.0);
  prop.AddedMassMult(1.1);
  const auto old = units->CopyClass();
  units->PowerIndex(kKW);
  units->LengthIndex(kM);
  prop.ConvertAllData(*units, *old);
  EXPECT_NEAR(prop.EngineRatedPower(kCurrent), 745.699872, 1e-6);
  EXPECT_NEAR(prop.EngineRatedPower(kHp), 1000.0, 1e-6);
  EXPECT_EQ(prop.EngineRatedRPM(), 1800.0);
  EXPECT_EQ(prop.FixedEngineRPM(), 1500.0);
  EXPECT_EQ(prop.AddedMassMult(), 1.1);
}

TEST_F(PropulsionSettingsTest, ShaftItemsAreOneStoreWithTheHull) {
  prop.PropulsorCountPerHull(2);
  prop.AngleShaftDeg(7.25);
  prop.PropellerDiameterMax(kFt, 4.0);
  prop.PropellerTunnelRecessDepth(kFt, 0.5);
  EXPECT_EQ(hull->PropulsorCountPerHull(), 2);
  EXPECT_EQ(hull->AngleShaftDeg(), 7.25);
  EXPECT_EQ(hull->PropellerTunnelRecessDepth(kFt), 0.5);
  EXPECT_EQ(prop.AngleShaftDegFormatted(), "7.25");
  EXPECT_EQ(prop.PropulsorCountPerHullFormatted(), "2");
  EXPECT_FALSE(prop.ErrorsFound());

  hull->PropulsorCountPerHull(0);
  EXPECT_EQ(prop.PropulsorCountPerHull(), 0);
  EXPECT_EQ(prop.ErrorText(), "\tShaft count\r\n");

  clsVXPropulsion unlinked;
  EXPECT_THROW(unlinked.AngleShaftDeg(), std::logic_error);
}

}  // namespace
}  // namespace velmar
