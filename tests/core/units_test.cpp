// Unit conversion, significant-digit rounding, formats and presets.
#include "core/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "core/helpers.h"

namespace velmar {
namespace {

TEST(Units, ConversionsAtTenSignificantDigits) {
  clsVXUnits u;
  u.SigDigits(10);
  struct Case {
    UnitFamily family;
    double value;
    int to, from;
    double expected;
  };
  const Case cases[] = {
      {UnitFamily::Length, 1.0, kM, kFt, 0.3048},
      {UnitFamily::Length, 1.0, kFt, kM, 3.280839895},
      {UnitFamily::Speed, 10.0, kFtPerSec, kKt, 16.87809857},
      {UnitFamily::Speed, 1.0, kMPerSec, kKt, 0.5144444444},
      // The square-millimetre factor is a quotient: one square foot is 10763910.42 mm2.
      {UnitFamily::Area, 1.0, kMm2, kFt2, 10763910.42},
      {UnitFamily::Area, 1.0, kM2, kFt2, 0.09290304},
      {UnitFamily::Weight, 1.0, kKg, kLT, 1016.046909},
      {UnitFamily::Force, 1000.0, kKN, kLbf, 4.448221615},
      {UnitFamily::Power, 1.0, kKW, kHp, 0.7456998716},
      {UnitFamily::Torque, 1.0, kNm, kLbfFt, 1.355817948},
      {UnitFamily::Torque, 1.0, kOzIn, kLbfFt, 192.0},
      {UnitFamily::Density, 1.9905, kKgPerM3, kSlugPerFt3, 1025.861501},
      {UnitFamily::Viscosity, 1.0, kFt2PerSec, kM2PerSec, 10.76391042},
      {UnitFamily::Temperature, 59.0, kDegC, kDegF, 15.0},
      {UnitFamily::Temperature, 15.0, kDegF, kDegC, 59.0},
      {UnitFamily::Temperature, 15.0, kDegC, kDegC, 15.0},
      {UnitFamily::Volume, 1.0, kM, kFt, 0.02831684659},
      {UnitFamily::PropLengthSq, 1.0, kMm, kFt, 92903.04},
      {UnitFamily::PropLengthCube, 1.0, kIn, kFt, 1728.0},
  };
  for (const Case& c : cases) {
    const double got = u.Convert(c.family, c.value, c.to, c.from);
    EXPECT_NEAR(got, c.expected, std::fabs(c.expected) * 1e-12)
        << static_cast<int>(c.family) << " " << c.value;
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
  struct Case {
    double value;
    int digits;
    double expected;
    const char* format;
  };
  const Case cases[] = {
      {0.000123456, 3, 0.000123, "#########0.000000"},  // e = -3: the first 3 + 11 + 3 characters
      {123456.0, 3, 123000.0, "#########0"},
      {-2.5, 1, -3.0, "#########0"},
      {2.5, 1, 3.0, "#########0"},
      {0.0, 5, 0.0, ""},
      {12.0, 0, 0.0, ""},
      {999.96, 4, 1000.0, "#########0.0"},
      {1.0, 3, 1.0, "#########0.00"},
  };
  for (const Case& c : cases) {
    std::string format;
    EXPECT_DOUBLE_EQ(RoundToSigDigits(c.value, c.digits, &format), c.expected) << c.value << " " << c.digits;
    EXPECT_EQ(format, c.format) << c.value;
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
  EXPECT_EQ(u.GetUnitTorqueLabel(kNm), "N\u00b7m");
  EXPECT_EQ(u.GetUnitTemperatureLabel(kDegC), "\u00b0C");
  EXPECT_THROW(u.GetUnitTemperatureLabel(2), std::out_of_range);
}

TEST(Units, FormatsFollowSelectionUntilTheUserSetsOne) {
  clsVXUnits u;
  struct Case {
    UnitFamily family;
    int index;
    const char* format;
  };
  const Case cases[] = {
      {UnitFamily::Length, 0, "0.00"},        {UnitFamily::Length, 3, "0"},
      {UnitFamily::Length, 4, "0.000"},       {UnitFamily::Speed, 2, "0.000"},
      {UnitFamily::Torque, 2, "0"},           {UnitFamily::Pressure, 2, "0.00"},
      {UnitFamily::Density, 0, "0.0000"},     {UnitFamily::Viscosity, 1, "0.00000e+0"},
      {UnitFamily::PropLength, 1, "0.00000"}, {UnitFamily::TipSpeed, 4, "0.00"},
      {UnitFamily::Temperature, 1, "0"},
  };
  for (const Case& c : cases) {
    u.SetIndex(c.family, c.index);
    EXPECT_EQ(u.Format(c.family), c.format) << FamilyInfo(c.family).name << " " << c.index;
  }
  u.LengthFormat("0.0");
  EXPECT_EQ(u.LengthFormat(), "0.0");
  u.ClearAllData();  // indices back to 0, formats and custom data kept
  EXPECT_EQ(u.LengthIndex(), 0);
  EXPECT_EQ(u.LengthFormat(), "0.0");
  EXPECT_EQ(u.SigDigits(), -1);
  EXPECT_EQ(u.UnitsFormReturn(), 2);
}

TEST(Units, PresetsKeepKnots) {
  clsVXUnits u;
  ApplyUnitPreset(u, UnitPreset::SI);
  EXPECT_EQ(u.LengthIndex(), kM);
  EXPECT_EQ(u.PropLengthIndex(), kMm);
  EXPECT_EQ(u.ForceIndex(), kKN);
  EXPECT_EQ(u.SpeedIndex(), kKt);
  EXPECT_EQ(u.AreaFormat(), "0.0");
  ApplyUnitPreset(u, UnitPreset::Imperial);
  EXPECT_EQ(u.LengthIndex(), kFt);
  EXPECT_EQ(u.SpeedIndex(), kKt);
  EXPECT_EQ(u.TemperatureFormat(), "0.0");
}

}  // namespace
}  // namespace velmar
