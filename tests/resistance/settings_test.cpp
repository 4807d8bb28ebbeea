#include <gtest/gtest.h>

#include <string>

#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"

namespace velmar {
namespace {

// ---- clsVXResistance --------------------------------------------------------------------------

// The file keys that differ from a plain spelling of the label are the ones files hold.
TEST(ResistanceSettingsTest, FileKeysAsFilesHoldThem) {
  const clsVXResistance r;
  const struct {
    const char* field;
    size_t index;
    const char* key;
  } cases[] = {
      {"HullDragEnabled", 3, "Enter"},  // a key without a user label
      {"HullDragMethod", 8, "DelftSeries123"},
      {"HullDragMethod", 30, "SSPACargoSeriesSeries"},
      {"AppendageDragMethod", 4, "FungSimple CPP"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(r.Fields()[r.FieldIndex(c.field)].labels->keys.at(c.index), c.key) << c.field;
  // Every list has a key per label; only the hull drag states carry the key "Enter" alone.
  for (const FieldDesc& d : r.Fields()) {
    if (!d.labels) continue;
    const size_t extra = std::string(d.name) == "HullDragEnabled" ? 1 : 0;
    EXPECT_EQ(d.labels->keys.size(), d.labels->labels.size() + extra) << d.name;
  }
  // An unknown appendage method reads as the Holtrop component method.
  const FieldDesc& method = r.Fields()[r.FieldIndex("AppendageDragMethod")];
  EXPECT_EQ(method.labels->keys.at(method.fallback), "HoltropComponent");
}

TEST(ResistanceSettingsTest, CopyIsIndependentAndClearEmptiesTexts) {
  clsVXResistance r;
  r.HullDragMethod(32);
  r.HullDragReferenceShip("ref.ship");
  const auto copy = r.CopyClass();
  copy->HullDragMethod(0);
  copy->HullDragReferenceShip("other.ship");
  copy->HullDragDefinedSource("Tank test");
  EXPECT_EQ(r.HullDragMethod(), 32);
  EXPECT_EQ(r.HullDragReferenceShip(), "ref.ship");
  EXPECT_EQ(r.HullDragDefinedSource(), "Manual");
  EXPECT_EQ(copy->HullDragMethodLabel(), "Holtrop");

  r.ClearAllData();
  EXPECT_EQ(r.HullDragExpansionDetail(), 0);
  EXPECT_EQ(r.HullDragDefinedSource(), "");
  EXPECT_EQ(copy->HullDragDefinedSource(), "Tank test");
}

// ---- clsVXITTC78Expansion ---------------------------------------------------------------------

class ITTC78Test : public ::testing::Test {
 protected:
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  clsVXITTC78Expansion ittc{units};
};

TEST_F(ITTC78Test, CopyIsIndependentWithTheSameUnits) {
  ittc.HullFormFactor(1.15);
  ittc.RudderLocation(1);
  const auto copy = ittc.CopyClass();
  EXPECT_EQ(copy->Units(), units);
  copy->HullFormFactor(1.3);
  copy->RudderLocation(0);
  EXPECT_EQ(ittc.HullFormFactor(), 1.15);
  EXPECT_EQ(ittc.RudderLocationLabel(), "Free stream");
}

TEST_F(ITTC78Test, UnitChangeConvertsTheModelLengthOnly) {
  ittc.ModelLengthWL(kCurrent, 20.0);  // ft
  ittc.HullRoughnessMM(0.15);
  ittc.CorrelationAllowance(0.0004);
  const auto old = units->CopyClass();
  units->LengthIndex(kM);
  ittc.ConvertAllData(*units, *old);
  EXPECT_DOUBLE_EQ(ittc.ModelLengthWL(kCurrent), 6.096);
  EXPECT_EQ(ittc.HullRoughnessMM(), 0.15);  // millimetres whatever the length unit
  EXPECT_EQ(ittc.CorrelationAllowance(), 0.0004);
}

}  // namespace
}  // namespace velmar
