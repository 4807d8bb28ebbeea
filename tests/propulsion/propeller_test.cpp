#include "propulsion/propeller.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "propulsion/propeller_series.h"
#include "propulsion/propeller_sizing.h"

namespace velmar {
namespace {

struct Objects {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXPropeller> propeller = std::make_shared<clsVXPropeller>(units);
  clsVXPropellerSeries series{units, water, propeller};
  clsVXPropellerSizing sizing{units};
};

TEST(PropellerGeometryTest, HubDiameterRatio) {
  Objects o;
  // Diameter, hub diameter, ratio and its text; no ratio (and no division) without a
  // positive diameter.
  struct Case {
    double diameter, hub, ratio;
    const char* text;
  } cases[] = {{10.0, 2.0, 0.2, "0.20"},
               {1.6, 0.3125, 0.1953125, "0.195313"},
               {0.0, 2.0, 0.0, "0.00"},
               {-1.0, 2.0, 0.0, "0.00"}};
  for (const auto& c : cases) {
    o.propeller->Diameter(kCurrent, c.diameter), o.propeller->HubDiameter(kCurrent, c.hub);
    EXPECT_DOUBLE_EQ(o.propeller->HubDiameterRatio(), c.ratio);
    EXPECT_EQ(o.propeller->HubDiameterRatioFormatted(), c.text);
  }
  EXPECT_FALSE(o.propeller->ErrorsFound());
}

TEST(PropellerSeriesTest, LimitsByBladeCount) {
  struct Case {
    int series, z;
    std::array<double, 7> limits;  // EAR min, max, P/D min, max, J min, max, J zero factor
  } cases[] = {
      {0, 4, {0.30, 1.05, 0.5, 1.4, 0.05, 1.5, 1.0}},    // one range for every count
      {3, 3, {0.65, 0.65, 0.5, 1.4, 0.05, 1.5, 0.75}},   // a range of its own
      {3, 6, {0.55, 0.70, 0.5, 1.4, 0.05, 1.5, 0.75}},   // a count the series lacks: the 4-blade range
      {10, 4, {0.50, 0.75, 0.6, 1.4, 0.01, 0.02, 1.0}},  // the last series
  };
  for (const auto& c : cases) {
    const auto l = GetPropellerSeriesLimits(c.series, c.z);
    ASSERT_TRUE(l);
    EXPECT_EQ((std::array{l->EARMin, l->EARMax, l->PDMin, l->PDMax, l->JMin, l->JMax, l->JZeroFactor}),
              c.limits)
        << "series " << c.series << ", Z " << c.z;
  }
  EXPECT_FALSE(GetPropellerSeriesLimits(-1, 4));
  EXPECT_FALSE(GetPropellerSeriesLimits(11, 4));
}

TEST(PropellerDataTest, KTKQTableResizesAndGuardsItsRows) {
  clsVXPropeller p;
  p.KTKQCount(3);
  p.KTKQThrustCoef(2, 0.15);
  p.KTKQCount(4);  // existing rows stay, new rows are 0
  EXPECT_EQ(p.KTKQThrustCoefArray(), (std::vector<double>{0.0, 0.0, 0.15, 0.0}));
  EXPECT_EQ(p.KTKQTorqueCoefArray().size(), 4u);
  EXPECT_THROW(p.KTKQTorqueCoef(4), std::out_of_range);
  EXPECT_THROW(p.KTKQPitchRatio(-1, 1.0), std::out_of_range);
}

TEST(PropellerDataTest, CopyClassIsIndependentAndKeepsTheLinks) {
  Objects o;
  auto& p = *o.propeller;
  p.KTKQCount(2);
  p.KTKQThrustCoef(1, 0.2);
  p.Diameter(kCurrent, 0.0);
  p.Diameter(kCurrent);  // stacks a word that the copy must not carry
  const auto copy = p.CopyClass();
  EXPECT_EQ(copy->Units(), o.units);
  EXPECT_EQ(copy->ErrorText(), "");
  p.KTKQThrustCoef(1, 0.3);
  EXPECT_EQ(copy->KTKQThrustCoefArray(), (std::vector<double>{0.0, 0.2}));
  // Clearing the data empties the KTKQ table too.
  p.ClearAllData();
  EXPECT_EQ(p.KTKQCount(), 0);
  EXPECT_EQ(copy->KTKQCount(), 2);

  const auto s = o.series.CopyClass();
  EXPECT_EQ(s->WaterProperties(), o.water);
  EXPECT_EQ(s->Propeller(), o.propeller);
}

// Propeller lengths follow the propeller length unit only; forces and powers their own.
TEST(PropellerDataTest, ConvertAllDataConvertsQuantitiesOnly) {
  Objects o;
  o.units->SigDigits(10);
  auto& p = *o.propeller;
  p.Diameter(kCurrent, 10.0), p.BladeRoughnessMM(0.03);
  o.sizing.ReferenceThrustPerPropeller(kCurrent, 1000.0);
  const auto old = o.units->CopyClass();
  o.units->PropLengthIndex(kM);
  o.units->LengthIndex(kIn);  // the hull length unit has no say here
  o.units->ForceIndex(kN);
  p.ConvertAllData(*o.units, *old);
  o.sizing.ConvertAllData(*o.units, *old);
  EXPECT_DOUBLE_EQ(p.Diameter(kCurrent), 3.048);
  EXPECT_EQ(p.BladeRoughnessMM(), 0.03);
  EXPECT_DOUBLE_EQ(o.sizing.ReferenceThrustPerPropeller(kCurrent), 4448.221615);  // 10 significant digits
}

}  // namespace
}  // namespace velmar
