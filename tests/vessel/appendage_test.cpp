#include "vessel/appendage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "../core/test_support.h"
#include "core/ui_hooks.h"

namespace velmar {
namespace {

class AppendageTest : public ::testing::Test {
 protected:
  void SetUp() override { DefaultHeadlessHooks().messages.clear(); }
  int Id(const char* name) const {
    const int i = app.FieldIndex(name);
    EXPECT_GE(i, 0) << name;
    return i;
  }
  static std::string Stacked(const std::string& word) { return word.empty() ? "" : "\t" + word + "\r\n"; }

  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXHull> hull = std::make_shared<clsVXHull>(units);
  clsVXAppendage app{units, nullptr, hull};
};

TEST_F(AppendageTest, ReadChecksPushTheirWords) {
  for (const auto& r : testing::ReadTable("appendage_read_checks.txt", 3)) {
    app.ClearErrorStack();
    app.SetRaw(Id(r[0].c_str()), r.Num(1));
    EXPECT_DOUBLE_EQ(app.Read(Id(r[0].c_str())), r.Num(1)) << r.where;
    EXPECT_EQ(app.ErrorText(), Stacked(r[2])) << r.where;
  }
}

TEST_F(AppendageTest, NoSonarDomeIsLegalButEveryOtherCountMustBeOneOrMore) {
  for (int i = 0; i < static_cast<int>(app.Fields().size()); ++i) {
    const FieldDesc& d = app.Fields()[i];
    if (d.kind != FieldKind::Int) continue;
    SCOPED_TRACE(d.name);
    app.ClearErrorStack();
    app.Read(i);
    EXPECT_EQ(!app.ErrorText().empty(), std::string(d.name) != "SonarDomeCount");
  }
}

// The four thickness ratios carry the entry warning of the field machinery.
TEST_F(AppendageTest, ThicknessRatioWarnsOnFirstEntryOutsideRange) {
  auto& messages = DefaultHeadlessHooks().messages;
  for (const char* field : {"StrutTCRatio", "RudderTCRatio", "KeelTCRatio", "StabilizerTCRatio"}) {
    messages.clear();
    app.Write(Id(field), kCurrent, 0.31);
    EXPECT_DOUBLE_EQ(app.Raw(Id(field)), 0.31);
    ASSERT_EQ(messages.size(), 1u) << field;
    EXPECT_TRUE(messages[0].text.ends_with("Entry is outside of valid range [0.0\u00b7\u00b70.3]")) << field;
  }
}

TEST_F(AppendageTest, ShaftItemsAreOneStoreWithTheHull) {
  app.PropulsorCountPerHull(2);
  app.PropellerDiameterMax(kM, 0.9144);
  EXPECT_EQ(hull->PropulsorCountPerHull(), 2);
  EXPECT_NEAR(hull->PropellerDiameterMax(kFt), 3.0, 1e-12);
  hull->PropellerDiameterMax(kFt, 4.0);
  EXPECT_NEAR(app.CopyClass()->PropellerDiameterMax(kM), 1.2192, 1e-12);

  // No shaft is legal for the appendage; a negative count pushes its own word here.
  for (const auto& [count, word] :
       std::vector<std::pair<int, std::string>>{{0, ""}, {-1, "Appendage shaft count"}}) {
    app.ClearErrorStack();
    hull->PropulsorCountPerHull(count);
    EXPECT_EQ(app.PropulsorCountPerHull(), count);
    EXPECT_EQ(app.ErrorText(), Stacked(word));
  }
}

TEST_F(AppendageTest, UnitsChangedAndBackRestoreEveryLengthAndArea) {
  ApplyUnitPreset(*units, UnitPreset::Imperial);
  app.AppendageDefinition(2);
  hull->PropellerDiameterMax(kFt, 2.5);
  const int n = static_cast<int>(app.Fields().size());
  for (int i = 0; i < n; ++i) {
    if (app.Fields()[i].kind != FieldKind::Enum) app.SetRaw(i, 1.25 + 0.5 * i);
  }
  auto change = [&](UnitPreset preset) {
    const auto old = units->CopyClass();
    ApplyUnitPreset(*units, preset);
    app.ConvertAllData(*units, *old);
  };
  // Length and area fields scale by ft and ft2 in metres, the others keep their numbers.
  auto check = [&](bool metric) {
    for (int i = 0; i < n; ++i) {
      const FieldDesc& d = app.Fields()[i];
      if (d.kind == FieldKind::Enum) continue;
      const double v = 1.25 + 0.5 * i;
      const double factor = !metric                          ? 1.0
                            : d.family == UnitFamily::Length ? 0.3048
                            : d.family == UnitFamily::Area   ? 0.3048 * 0.3048
                                                             : 1.0;
      EXPECT_NEAR(app.Raw(i), v * factor, 1e-12 * v) << d.name;
    }
  };
  change(UnitPreset::SI);
  check(true);
  EXPECT_EQ(app.AppendageDefinition(), 2);
  EXPECT_DOUBLE_EQ(hull->Raw(hull->FieldIndex("PropellerDiameterMax")), 2.5);  // the hull converts its own
  change(UnitPreset::Imperial);
  check(false);
}

}  // namespace
}  // namespace velmar
