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

// Series file keys are the labels without blanks.
TEST(PropellerFieldsTest, SeriesKeysAreTheLabelsWithoutBlanks) {
  ASSERT_EQ(kPropellerSeriesLabels.keys.size(), kPropellerSeriesLabels.labels.size());
  for (size_t i = 0; i < kPropellerSeriesLabels.labels.size(); ++i) {
    std::string label = kPropellerSeriesLabels.labels[i];
    std::erase(label, ' ');
    EXPECT_EQ(kPropellerSeriesLabels.keys[i], label);
  }
}

TEST(PropellerFieldsTest, ReadChecksOfEachTable) {
  Objects o;
  struct Case {
    DataClass& c;
    const char* field;
    const char* word;  // pushed when the stored value is 0; "" for none
  } cases[] = {
      {*o.propeller, "BladeCount", ""},
      {*o.propeller, "PitchOfRecord", "Propeller pitch of record"},
      {*o.propeller, "MaterialYieldStrength", "Material yield strength"},
      {o.series, "KTMultiplier", ""},
      {o.sizing, "ReferenceEngineRPMDesignPoint", "Reference engine RPM design point"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.field);
    const int i = c.c.FieldIndex(c.field);
    ASSERT_GE(i, 0);
    c.c.ClearErrorStack();
    c.c.SetRaw(i, 0.0);
    EXPECT_EQ(c.c.Read(i), 0.0);
    EXPECT_EQ(c.c.ErrorText(), *c.word ? std::string("\t") + c.word + "\r\n" : "");
    c.c.ClearErrorStack();
    c.c.SetRaw(i, 0.001);
    c.c.Read(i);
    EXPECT_EQ(c.c.ErrorText(), "");
  }
}

TEST(PropellerGeometryTest, HubDiameterRatio) {
  struct Case {
    double diameter, hub, ratio;
    const char* text;
  } cases[] = {
      {10.0, 2.0, 0.2, "0.20"}, {3.0, 1.0, 1.0 / 3.0, "0.333333"}, {1.6, 0.3125, 0.1953125, "0.195313"},
      {0.0, 2.0, 0.0, "0.00"},   // no diameter: no ratio, no division
      {-1.0, 2.0, 0.0, "0.00"},  // nor for a negative one
  };
  Objects o;
  for (const auto& c : cases) {
    o.propeller->Diameter(kCurrent, c.diameter);
    o.propeller->HubDiameter(kCurrent, c.hub);
    o.propeller->ClearErrorStack();
    EXPECT_DOUBLE_EQ(o.propeller->HubDiameterRatio(), c.ratio);
    EXPECT_EQ(o.propeller->HubDiameterRatioFormatted(), c.text);
    EXPECT_FALSE(o.propeller->ErrorsFound());
  }
}

TEST(PropellerSeriesTest, LimitsByBladeCount) {
  struct Case {
    int series, z;
    std::array<double, 7> limits;  // EAR min, max, P/D min, max, J min, max, J zero factor
  } cases[] = {
      {0, 4, {0.30, 1.05, 0.5, 1.4, 0.05, 1.5, 1.0}},  {3, 3, {0.65, 0.65, 0.5, 1.4, 0.05, 1.5, 0.75}},
      {3, 4, {0.55, 0.70, 0.5, 1.4, 0.05, 1.5, 0.75}}, {3, 5, {0.65, 0.95, 0.5, 1.4, 0.05, 1.5, 0.75}},
      {3, 6, {0.55, 0.70, 0.5, 1.4, 0.05, 1.5, 0.75}}, {4, 3, {0.50, 0.80, 0.6, 1.5, 0.05, 1.5, 0.75}},
      {7, 5, {0.55, 1.00, 0.6, 1.5, 0.05, 1.5, 0.75}},  // a count the series lacks: the 4-blade range
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
  p.KTKQAdvanceCoef(2, 0.8);
  p.KTKQThrustCoef(2, 0.15);
  EXPECT_EQ(p.KTKQAdvanceCoefArray(), (std::vector<double>{0.0, 0.0, 0.8}));
  p.KTKQCount(4);  // existing rows stay, new rows are 0
  EXPECT_EQ(p.KTKQThrustCoefArray(), (std::vector<double>{0.0, 0.0, 0.15, 0.0}));
  EXPECT_EQ(p.KTKQTorqueCoefArray().size(), 4u);
  EXPECT_THROW(p.KTKQTorqueCoef(4), std::out_of_range);
  EXPECT_THROW(p.KTKQPitchRatio(-1, 1.0), std::out_of_range);
  p.ClearKTKQData();
  EXPECT_EQ(p.KTKQCount(), 0);
}

TEST(PropellerDataTest, CopyClassIsIndependentAndKeepsTheLinks) {
  Objects o;
  auto& p = *o.propeller;
  p.Description("Test wheel");
  p.KTKQCount(2);
  p.KTKQThrustCoef(1, 0.2);
  p.Diameter(kCurrent, 0.0);
  p.Diameter(kCurrent);  // stacks a word that the copy must not carry
  p.Diameter(kCurrent, 1.2);

  const auto copy = p.CopyClass();
  EXPECT_EQ(copy->Units(), o.units);
  EXPECT_EQ(copy->ErrorText(), "");
  p.Description("changed");
  p.Diameter(kCurrent, 2.0);
  p.KTKQThrustCoef(1, 0.3);
  EXPECT_EQ(copy->Description(), "Test wheel");
  EXPECT_EQ(copy->Diameter(kCurrent), 1.2);
  EXPECT_EQ(copy->KTKQThrustCoefArray(), (std::vector<double>{0.0, 0.2}));

  const auto s = o.series.CopyClass();
  EXPECT_EQ(s->WaterProperties(), o.water);
  EXPECT_EQ(s->Propeller(), o.propeller);

  p.ClearAllData();
  EXPECT_EQ(p.ImportFilePath(), "");
  EXPECT_EQ(p.KTKQCount(), 0);
  EXPECT_EQ(copy->KTKQCount(), 2);
}

// Propeller lengths follow the propeller length unit only; forces and powers their own.
TEST(PropellerDataTest, ConvertAllDataConvertsQuantitiesOnly) {
  Objects o;
  o.units->SigDigits(10);
  auto& p = *o.propeller;
  p.Diameter(kCurrent, 10.0);
  p.HubDiameter(kCurrent, 2.0);
  p.BladeRoughnessMM(0.03);
  p.MaterialDensity(7600.0);
  o.sizing.ReferenceThrustPerPropeller(kCurrent, 1000.0);
  o.sizing.ReferencePowerBrakePerPropeller(kCurrent, 500.0);

  const auto old = o.units->CopyClass();
  o.units->PropLengthIndex(kM);
  o.units->LengthIndex(kIn);  // the hull length unit has no say here
  o.units->ForceIndex(kN);
  o.units->PowerIndex(kKW);
  p.ConvertAllData(*o.units, *old);
  o.sizing.ConvertAllData(*o.units, *old);

  EXPECT_DOUBLE_EQ(p.Diameter(kCurrent), 3.048);
  EXPECT_DOUBLE_EQ(p.HubDiameterRatio(), 0.2);
  EXPECT_EQ(p.BladeRoughnessMM(), 0.03);
  EXPECT_EQ(p.MaterialDensity(), 7600.0);
  EXPECT_DOUBLE_EQ(o.sizing.ReferenceThrustPerPropeller(kCurrent), 4448.221615);  // 10 significant digits
  EXPECT_DOUBLE_EQ(o.sizing.ReferencePowerBrakePerPropeller(kCurrent), 372.8499358);
}

}  // namespace
}  // namespace velmar
