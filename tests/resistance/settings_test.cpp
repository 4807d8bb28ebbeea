// The settings of a resistance prediction: the file keys of its selections and the unit
// change of the ITTC-78 expansion settings.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"

namespace velmar {
namespace {

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
}

// The model length is a length; the roughness is in millimetres whatever the length unit.
TEST(ITTC78Test, UnitChangeConvertsTheModelLengthOnly) {
  const auto units = std::make_shared<clsVXUnits>();
  clsVXITTC78Expansion ittc{units};
  ittc.ModelLengthWL(kCurrent, 20.0);  // ft
  ittc.HullRoughnessMM(0.15);
  ittc.CorrelationAllowance(0.0004);
  const auto old = units->CopyClass();
  units->LengthIndex(kM);
  ittc.ConvertAllData(*units, *old);
  EXPECT_DOUBLE_EQ(ittc.ModelLengthWL(kCurrent), 6.096);
  EXPECT_EQ(ittc.HullRoughnessMM(), 0.15);
  EXPECT_EQ(ittc.CorrelationAllowance(), 0.0004);
}

}  // namespace
}  // namespace velmar
