// Water density and viscosity by type and temperature.
#include "core/water.h"

#include <gtest/gtest.h>

#include "core/units.h"

namespace velmar {
namespace {

struct WaterFixture : ::testing::Test {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  clsVXWaterProperties water{units};
  void SetUp() override { units->SigDigits(10); }
  void UseSI() { ApplyUnitPreset(*units, UnitPreset::SI); }
};

TEST_F(WaterFixture, StandardValuesAtTheReferenceTemperature) {
  struct Case {
    bool si;
    int type;
    double density, viscosity;
  };
  const Case cases[] = {
      {true, 0, 1026.0, 1.1892e-6},
      {true, 1, 999.1, 1.1386e-6},
      {false, 0, 1.9908, 1.2798e-5},
      {false, 1, 1.9386, 1.2256e-5},
      {true, 2, (1026.0 + 999.1) * 0.5, (1.1892e-6 + 1.1386e-6) * 0.5},
  };
  for (const Case& c : cases) {
    ApplyUnitPreset(*units, c.si ? UnitPreset::SI : UnitPreset::Imperial);
    water.SetWaterPropertiesToStandardValues(c.type);
    EXPECT_DOUBLE_EQ(water.Density(kCurrent), c.density) << c.type;
    EXPECT_DOUBLE_EQ(water.Viscosity(kCurrent), c.viscosity) << c.type;
    EXPECT_FALSE(water.ErrorsFound());
  }
}

TEST_F(WaterFixture, TemperatureSelectsTheViscosityRange) {
  UseSI();
  water.WaterDefinitionIndex(0);
  struct Case {
    double celsius, dT, a, b, c;
  };
  // dT = 15 - t; the coefficient row changes outside -5 <= dT <= 5.
  const Case cases[] = {
      {5.0, 10.0, 0.0252599, 0.000426863, 1.8724e-5},
      {10.0, 5.0, 0.0250061, 0.000519622, 9.67183e-6},
      {20.0, -5.0, 0.0250061, 0.000519622, 9.67183e-6},
      {25.0, -10.0, 0.0248941, 0.000479131, 5.83649e-6},
  };
  for (const Case& c : cases) {
    water.Temperature(kCurrent, c.celsius);
    EXPECT_DOUBLE_EQ(water.TemperatureDifference(), c.dT);
    double density = 0, viscosity = 0;
    ASSERT_TRUE(water.CalcDensityAndViscosity(density, viscosity));
    const double expected = 1.1892e-6 * (1 + c.a * c.dT + c.b * c.dT * c.dT + c.c * c.dT * c.dT * c.dT);
    EXPECT_DOUBLE_EQ(viscosity, expected) << c.celsius;
    // Brackish is the exact mean of salt and fresh at every temperature.
    water.WaterDefinitionIndex(2);
    double bd = 0, bv = 0;
    water.CalcDensityAndViscosity(bd, bv);
    EXPECT_DOUBLE_EQ(bd, (water.CalcStandardDensitySalt(c.dT) + water.CalcStandardDensityFresh(c.dT)) * 0.5);
    EXPECT_DOUBLE_EQ(bv,
                     (water.CalcStandardViscositySalt(c.dT) + water.CalcStandardViscosityFresh(c.dT)) * 0.5);
    water.WaterDefinitionIndex(0);
  }
}

TEST_F(WaterFixture, ZeroTemperatureMeansFifteenCelsiusInEitherUnit) {
  water.WaterDefinitionIndex(0);
  water.Temperature(kCurrent, 0.0);  // 0 degF is "not given", not -17.8 degC
  EXPECT_EQ(water.TemperatureDifference(), 0.0);
  water.Temperature(kCurrent, 59.0);  // 59 degF is 15 degC
  EXPECT_NEAR(water.TemperatureDifference(), 0.0, 1e-12);
}

TEST_F(WaterFixture, CustomKeepsTypedValuesAndEmptyWaterReportsMissingValues) {
  water.Density(kCurrent, 0.0);
  water.Viscosity(kCurrent, 0.0);
  water.Density(kCurrent);
  water.Viscosity(kCurrent);
  EXPECT_TRUE(water.ErrorsFound());
  EXPECT_EQ(water.Errors(), "\tWater density\r\n\tWater viscosity\r\n");
  water.WaterDefinitionIndex(3);
  water.Density(kCurrent, 2.0);
  water.Viscosity(kCurrent, 1.3e-5);
  double d = water.Density(kCurrent), v = water.Viscosity(kCurrent);
  water.CalcDensityAndViscosity(d, v);
  EXPECT_EQ(d, 2.0);
  EXPECT_EQ(v, 1.3e-5);
  EXPECT_EQ(water.WaterDefinitionLabel(), "Custom");  // the label of the selected type
}

TEST_F(WaterFixture, UnitChangeConvertsDensityAndViscosityButNotTemperature) {
  water.SetWaterPropertiesToStandardValues(0);
  water.Temperature(kCurrent, 50.0);
  const auto old = units->CopyClass();
  ApplyUnitPreset(*units, UnitPreset::SI);
  water.ConvertAllData(*units, *old);
  EXPECT_DOUBLE_EQ(water.Density(kCurrent), 1026.016115);  // 1.9908 slug/ft3 at ten digits
  EXPECT_DOUBLE_EQ(water.Viscosity(kCurrent), 1.188973106e-6);
  EXPECT_EQ(water.Temperature(kCurrent), 50.0);
}

}  // namespace
}  // namespace velmar
