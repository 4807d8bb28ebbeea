// Unit conversion, significant-digit rounding, formats and presets.
#include "core/units.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/helpers.h"
#include "core/test_support.h"

namespace velmar {
namespace {

// The family named in a table row, and the index of a unit label in its base family.
UnitFamily Family(const std::string& name) {
  if (name == "Volume") return UnitFamily::Volume;
  if (name == "PropLengthSq") return UnitFamily::PropLengthSq;
  return name == "PropLengthCube" ? UnitFamily::PropLengthCube : FamilyFromName(name);
}
int UnitIndex(UnitFamily f, const std::string& label) {
  const UnitFamily base = f == UnitFamily::Volume  ? UnitFamily::Length
                          : f > UnitFamily::Volume ? UnitFamily::PropLength
                                                   : f;
  const auto& labels = FamilyInfo(base).labels;
  const auto at = std::find(labels.begin(), labels.end(), label);
  EXPECT_NE(at, labels.end()) << label;
  return static_cast<int>(at - labels.begin());
}

TEST(Units, ConversionsAtTenSignificantDigits) {
  clsVXUnits u;
  u.SigDigits(10);
  for (const auto& row : testing::ReadTable("unit_conversions.txt", 5)) {
    const UnitFamily f = Family(row[0]);
    const double got = u.Convert(f, row.Num(1), UnitIndex(f, row[3]), UnitIndex(f, row[2])),
                 want = row.Num(4);
    EXPECT_NEAR(got, want, std::fabs(want) * 1e-12) << row.where;
  }
}

TEST(Units, RoundingAppliesOnlyWhenSigDigitsIsSet) {
  clsVXUnits u;
  ASSERT_EQ(u.SigDigits(), -1);
  EXPECT_DOUBLE_EQ(u.ConvertUnitLength(1.0, kFt, kM), 1.0 / 0.3048);
  u.SigDigits(10);
  EXPECT_DOUBLE_EQ(u.ConvertUnitLength(1.0, kFt, kM), 3.280839895);
  // Rounding takes place also when source and target are the same unit.
  EXPECT_DOUBLE_EQ(u.ConvertUnitLength(1.23456789012345, kFt, kFt), 1.234567890);
  // -1 stands for the selected unit on both sides.
  u.LengthIndex(kM);
  EXPECT_DOUBLE_EQ(u.ConvertUnitLength(10.0, kCurrent, kFt), 3.048);
  EXPECT_DOUBLE_EQ(u.ConvertUnitLength(3.048, kFt, kCurrent), 10.0);
}

TEST(Units, RoundToSigDigits) {
  for (const auto& row : testing::ReadTable("round_sig_digits.txt", 4)) {
    std::string format;
    EXPECT_DOUBLE_EQ(RoundToSigDigits(row.Num(0), static_cast<int>(row.Num(1)), &format), row.Num(2))
        << row.where;
    EXPECT_EQ(format, row[3]) << row.where;
  }
}

TEST(Units, BadIndicesAndCustomUnits) {
  clsVXUnits u;
  EXPECT_THROW(u.ConvertUnitLength(1.0, 5, 0), std::out_of_range);
  EXPECT_THROW(u.ConvertUnitTemperature(1.0, 2, 0), std::out_of_range);
  // A custom entry whose factor is still 0 divides by zero; the caller's guard reports it.
  EXPECT_THROW(u.ConvertUnitLength(1.0, 0, 4), std::domain_error);
  u.SetUnitLengthCustomData("fathom", 1.0 / 6.0);
  EXPECT_NEAR(u.ConvertUnitLength(6.0, 4, kFt), 1.0, 1e-15);
  EXPECT_EQ(u.GetUnitLengthLabel(4), "fathom");
  EXPECT_EQ(u.GetUnitLengthLabel(kCurrent), "ft");
  EXPECT_THROW(u.GetUnitTemperatureLabel(2), std::out_of_range);
}

// The format is the default of the selected unit (custom entry included) until the user
// sets one; clearing the units keeps it.
TEST(Units, FormatsFollowSelectionUntilTheUserSetsOne) {
  clsVXUnits u;
  for (const auto& [index, format] : {std::pair{0, "0.00"}, {3, "0"}, {4, "0.000"}}) {
    u.LengthIndex(index);
    EXPECT_EQ(u.LengthFormat(), format) << index;
  }
  u.LengthFormat("0.0");
  u.LengthIndex(1);
  EXPECT_EQ(u.LengthFormat(), "0.0");
  u.ClearAllData();  // indices back to 0, formats and custom data kept
  EXPECT_EQ(u.LengthIndex(), 0);
  EXPECT_EQ(u.LengthFormat(), "0.0");
  EXPECT_EQ(u.SigDigits(), -1);
  EXPECT_EQ(u.UnitsFormReturn(), 2);
}

}  // namespace
}  // namespace velmar
