#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"

namespace velmar {
namespace {

// The tags of a class's file block as its table gives them: the rows without kNotInFile.
std::vector<std::string> BlockTags(const DataClass& c) {
  std::vector<std::string> tags;
  for (const FieldDesc& d : c.Fields())
    if (!(d.flags & kNotInFile)) tags.emplace_back(d.Tag());
  return tags;
}

struct LabelCase {
  const char* field;
  int index;
  const char* label;  // nullptr: a file key without a user label
  const char* key;
};

void ExpectLabels(const DataClass& c, const std::vector<LabelCase>& cases) {
  for (const LabelCase& lc : cases) {
    SCOPED_TRACE(testing::Message() << lc.field << "[" << lc.index << "]");
    const int id = c.FieldIndex(lc.field);
    ASSERT_GE(id, 0);
    const LabelList* list = c.Fields()[id].labels;
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->keys.at(lc.index), lc.key);
    if (lc.label) {
      EXPECT_EQ(c.LabelOf(id, lc.index), lc.label);
    } else {
      EXPECT_EQ(list->labels.size(), static_cast<size_t>(lc.index));
    }
  }
}

void ExpectCaptions(const DataClass& c, const std::vector<std::pair<const char*, const char*>>& cases) {
  for (const auto& [field, caption] : cases) {
    const int id = c.FieldIndex(field);
    ASSERT_GE(id, 0) << field;
    EXPECT_EQ(c.FieldNameOf(id), std::string("  ") + caption) << field;
  }
}

// ---- clsVXResistance --------------------------------------------------------------------------

TEST(ResistanceSettingsTest, NewObjectDefaults) {
  const clsVXResistance r;
  for (size_t i = 0; i < r.Fields().size(); ++i) {
    const std::string name = r.Fields()[i].name;
    EXPECT_EQ(r.Raw(static_cast<int>(i)), name == "HullDragExpansionDetail" ? 1.0 : 0.0) << name;
  }
  EXPECT_EQ(r.HullDragExpansionDetailLabel(), "Custom");
  EXPECT_EQ(r.HullDragReferenceShip(), "");
  EXPECT_EQ(r.HullDragDefinedSource(), "Manual");
}

TEST(ResistanceSettingsTest, RowsFollowTheFileBlock) {
  const std::vector<std::string> block = {"HullDragEnabled",
                                          "HullDragTechnique",
                                          "HullDragMethod",
                                          "HullDragReferenceShip",
                                          "HullDragDefinedSource",
                                          "HullDragExpansionDetail",
                                          "HullDragITTC78ExpansionEnabled",
                                          "HullDragRoughnessEnabled",
                                          "HullDragFormFactorKMultEnabled",
                                          "HullDragMethodCheckVessel",
                                          "HullDragMethodCheckSpeed",
                                          "HullDragMethodCheckDetails",
                                          "HullDragPlaningHumpMultiplierEnabled",
                                          "HullDragPlaningHumpMultiplierApplyFactor",
                                          "HullDragPlaningPropulsorLiftCorrEnabled",
                                          "HullDragPlaningPropulsorLiftCorrApplyFactor",
                                          "HullDragSprayCorrEnabled",
                                          "HullDragSprayCorrApplyFactor",
                                          "HullDragCatamaranInterferenceEnabled",
                                          "AppendageDragEnabled",
                                          "AppendageDragMethod",
                                          "WindDragEnabled",
                                          "WindDragMethod",
                                          "SeasDragEnabled",
                                          "SeasDragMethod",
                                          "ChannelDragEnabled",
                                          "ChannelDragMethod",
                                          "MarginDragEnabled",
                                          "MarginDragBasis",
                                          "MarginDragPercentage"};
  const clsVXResistance r;
  EXPECT_EQ(BlockTags(r), block);
  // An unknown appendage method reads as the Holtrop component method.
  const FieldDesc& method = r.Fields()[r.FieldIndex("AppendageDragMethod")];
  EXPECT_EQ(method.labels->keys.at(method.fallback), "HoltropComponent");
}

TEST(ResistanceSettingsTest, LabelsAndKeys) {
  const clsVXResistance r;
  ExpectLabels(r, {
                      {"HullDragEnabled", 2, "Lock", "Lock"},
                      {"HullDragEnabled", 3, nullptr, "Enter"},
                      {"AppendageDragEnabled", 3, "Enter", "Enter"},
                      {"MarginDragEnabled", 1, "Calc", "Calc"},
                      {"HullDragTechnique", 1, "Aligned prediction", "AlignedPrediction"},
                      {"HullDragTechnique", 2, "Scale from test", "ScaleFromTest"},
                      {"HullDragMethod", 0, "Holtrop", "Holtrop"},
                      {"HullDragMethod", 8, "Delft Series (1/2/3)", "DelftSeries123"},
                      {"HullDragMethod", 21, "Simple Ship", "SimpleShip"},
                      {"HullDragMethod", 30, "SSPA Cargo Series", "SSPACargoSeriesSeries"},
                      {"HullDragMethod", 32, "Savitsky", "Savitsky"},
                      {"HullDragMethod", 35, "Series 65B", "Series65B"},
                      {"HullDragExpansionDetail", 0, "Standard", "Standard"},
                      {"HullDragMethodCheckDetails", 3, "Missing", "Missing"},
                      {"HullDragPlaningHumpMultiplierApplyFactor", 1, "Apply half (std)", "ApplyHalf"},
                      {"HullDragPlaningPropulsorLiftCorrApplyFactor", 0, "Apply full (std)", "ApplyFull"},
                      {"HullDragSprayCorrApplyFactor", 1, "Apply half (with deflector)", "ApplyHalf"},
                      {"AppendageDragMethod", 4, "Fung (Simple CPP)", "FungSimple CPP"},
                      {"AppendageDragMethod", 8, "Teeters (Sailboat)", "TeetersSailboat"},
                      {"WindDragMethod", 2, "Iwai", "Iwai"},
                      {"SeasDragMethod", 3, "Fridsma Series", "FridsmaSeries"},
                      {"ChannelDragMethod", 2, "Sturtzel-Graff", "SturtzelGraff"},
                      {"MarginDragBasis", 1, "Hull + added drag", "HullPlusAddedDrag"},
                  });
  // Every list has a key per label; only the hull drag states carry the key "Enter" alone.
  for (const FieldDesc& d : r.Fields()) {
    if (!d.labels) continue;
    const size_t extra = std::string(d.name) == "HullDragEnabled" ? 1 : 0;
    EXPECT_EQ(d.labels->keys.size(), d.labels->labels.size() + extra) << d.name;
  }
  EXPECT_EQ(kHullDragMethodLabels.labels.size(), 36u);
  EXPECT_EQ(kAppendageDragMethodLabels.labels.size(), 9u);
  EXPECT_EQ(kSeasDragMethodLabels.labels.size(), 5u);
}

TEST(ResistanceSettingsTest, Captions) {
  const clsVXResistance r;
  ExpectCaptions(r, {{"HullDragEnabled", ""},
                     {"HullDragTechnique", "Technique:"},
                     {"HullDragMethod", "Prediction:"},
                     {"HullDragExpansionDetail", "Expansion:"},
                     {"HullDragRoughnessEnabled", "Roughness [mm]:"},
                     {"HullDragFormFactorKMultEnabled", "Speed corr:"},
                     {"HullDragPlaningHumpMultiplierEnabled", "Speed hump corr:"},
                     {"HullDragPlaningPropulsorLiftCorrEnabled", "Propulsor lift corr:"},
                     {"HullDragSprayCorrEnabled", "Spray drag corr:"},
                     {"HullDragCatamaranInterferenceEnabled", "Interference:"},
                     {"AppendageDragEnabled", "Appendage:"},
                     {"WindDragEnabled", "Wind:"},
                     {"SeasDragEnabled", "Seas:"},
                     {"ChannelDragEnabled", "Shallow/channel:"},
                     {"MarginDragEnabled", "Margin:"},
                     {"MarginDragBasis", "Basis:"},
                     {"MarginDragPercentage", "Design margin:"}});
  EXPECT_EQ(r.HullDragDefinedSourceFieldName(), "  Source:");
  EXPECT_EQ(r.HullDragReferenceShipFieldName(), "  Reference ship:");
}

TEST(ResistanceSettingsTest, CopyIsIndependentAndClearEmptiesTexts) {
  clsVXResistance r;
  r.HullDragMethod(32);
  r.MarginDragPercentage(8.0);
  r.HullDragReferenceShip("ref.ship");
  const auto copy = r.CopyClass();
  copy->HullDragMethod(0);
  copy->MarginDragPercentage(3.0);
  copy->HullDragReferenceShip("other.ship");
  copy->HullDragDefinedSource("Tank test");
  EXPECT_EQ(r.HullDragMethod(), 32);
  EXPECT_EQ(r.MarginDragPercentage(), 8.0);
  EXPECT_EQ(r.HullDragReferenceShip(), "ref.ship");
  EXPECT_EQ(r.HullDragDefinedSource(), "Manual");
  EXPECT_EQ(copy->HullDragMethodLabel(), "Holtrop");

  r.ClearAllData();
  EXPECT_EQ(r.HullDragExpansionDetail(), 0);
  EXPECT_EQ(r.HullDragDefinedSource(), "");
  EXPECT_EQ(copy->HullDragDefinedSource(), "Tank test");
}

TEST(ResistanceSettingsTest, UnitChangeLeavesEverythingAsItIs) {
  clsVXResistance r;  // no Units link at all
  r.MarginDragPercentage(12.5);
  r.AppendageDragMethod(5);
  clsVXUnits oldUnits;
  clsVXUnits newUnits;
  newUnits.LengthIndex(kM);
  newUnits.PowerIndex(kKW);
  r.ConvertAllData(newUnits, oldUnits);
  EXPECT_EQ(r.MarginDragPercentage(), 12.5);
  EXPECT_EQ(r.AppendageDragMethod(), 5);
}

// ---- clsVXITTC78Expansion ---------------------------------------------------------------------

class ITTC78Test : public ::testing::Test {
 protected:
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  clsVXITTC78Expansion ittc{units};
};

TEST_F(ITTC78Test, NewObjectIsAllZeroAndRowsFollowTheFileBlock) {
  for (size_t i = 0; i < ittc.Fields().size(); ++i) EXPECT_EQ(ittc.Raw(static_cast<int>(i)), 0.0);
  EXPECT_EQ(ittc.HullHydrodynamicTypeLabel(), "Undefined");
  EXPECT_EQ(BlockTags(ittc),
            (std::vector<std::string>{"HullFormFactor", "HullFrictionLine", "CorrelationAllowance",
                                      "HullRoughnessMM", "RudderLocation", "ModelLengthWL",
                                      "HullHydrodynamicType"}));
}

TEST_F(ITTC78Test, LabelsKeysAndCaptions) {
  ExpectLabels(ittc, {{"HullFrictionLine", 0, "ITTC-57", "ITTC57"},
                      {"HullFrictionLine", 4, "Prandtl-Schlichting", "PrandtlSchlichting"},
                      {"HullFrictionLine", 5, "Froude", "Froude"},
                      {"RudderLocation", 0, "Behind propeller", "BehindPropeller"},
                      {"RudderLocation", 1, "Free stream", "FreeStream"},
                      {"HullHydrodynamicType", 1, "ITTC-78 (CT)", "ITTC78CT"},
                      {"HullHydrodynamicType", 2, "Planing", "Planing"}});
  ExpectCaptions(ittc, {{"HullFormFactor", "Hull form factor:"},
                        {"HullFrictionLine", "Friction line:"},
                        {"CorrelationAllowance", "Corr allowance:"},
                        {"HullRoughnessMM", "Roughness [mm]:"},
                        {"RudderLocation", "Rudder location:"},
                        {"ModelLengthWL", "Length on WL:"},
                        {"HullHydrodynamicType", "Scope:"}});
}

TEST_F(ITTC78Test, CopyIsIndependentWithTheSameUnits) {
  ittc.HullFormFactor(1.15);
  ittc.RudderLocation(1);
  const auto copy = ittc.CopyClass();
  EXPECT_EQ(copy->Units(), units);
  copy->HullFormFactor(1.3);
  copy->RudderLocation(0);
  EXPECT_EQ(ittc.HullFormFactor(), 1.15);
  EXPECT_EQ(ittc.RudderLocationLabel(), "Free stream");
  EXPECT_EQ(copy->HullFormFactor(), 1.3);
}

TEST_F(ITTC78Test, UnitChangeConvertsTheModelLengthOnly) {
  ittc.ModelLengthWL(kCurrent, 20.0);  // ft
  ittc.HullRoughnessMM(0.15);
  ittc.HullFormFactor(1.2);
  ittc.CorrelationAllowance(0.0004);
  const auto old = units->CopyClass();
  units->LengthIndex(kM);
  ittc.ConvertAllData(*units, *old);
  EXPECT_DOUBLE_EQ(ittc.ModelLengthWL(kCurrent), 6.096);
  EXPECT_EQ(ittc.HullRoughnessMM(), 0.15);  // millimetres whatever the length unit
  EXPECT_EQ(ittc.HullFormFactor(), 1.2);
  EXPECT_EQ(ittc.CorrelationAllowance(), 0.0004);
}

}  // namespace
}  // namespace velmar
