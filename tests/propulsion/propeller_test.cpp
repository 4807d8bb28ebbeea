#include "propulsion/propeller.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "core/format.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propeller_sizing.h"

namespace velmar {
namespace {

std::string Join(const std::vector<std::string>& words, const char* separator) {
  std::string out;
  for (const auto& w : words) out += (out.empty() ? "" : separator) + w;
  return out;
}

std::string Tags(const DataClass& c) {
  std::vector<std::string> tags;
  for (const FieldDesc& d : c.Fields()) tags.emplace_back(d.Tag());
  return Join(tags, " ");
}

// The stored numbers of a table, in row order.
std::string Values(const DataClass& c) {
  std::vector<std::string> values;
  for (int i = 0; i < static_cast<int>(c.Fields().size()); ++i) values.push_back(FormatNumber(c.Raw(i), ""));
  return Join(values, " ");
}

int Id(const DataClass& c, const char* name) {
  const int i = c.FieldIndex(name);
  EXPECT_GE(i, 0) << name;
  return i;
}

struct Objects {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  std::shared_ptr<clsVXPropeller> propeller = std::make_shared<clsVXPropeller>(units);
  clsVXPropellerSeries series{units, water, propeller};
  clsVXPropellerSizing sizing{units};
};

// The rows are read and written in this order by the project file blocks.
TEST(PropellerFieldsTest, RowsFollowTheFileBlocks) {
  Objects o;
  EXPECT_EQ(Tags(*o.propeller),
            "Description ImportFilePath BladeCount ExpAreaRatio Diameter PitchMean HubImmersion Chord07R "
            "PitchOfRecord HubDiameter "
            "TCRatio07R BladeRoughnessMM CupDrop BladeThicknessFraction MeanWidthRatio RakeAngleDeg "
            "SkewAngleTotalDeg SkewAngleMaxDeg SkewAngleMinDeg SkewAngleMinRadialPos PropellerType "
            "MaterialDensity MaterialYieldStrength");
  EXPECT_EQ(Tags(o.series),
            "SchemaVersion Series ScaleCorrection CavBreakdownEnabled ObliqueAngleCorrEnabled KTMultiplier "
            "KQMultiplier KTKQCorrection CRPRudderLocation NozzleLengthDiameterRatio");
  EXPECT_EQ(
      Tags(o.sizing),
      "PropellerSizingIdentity GearRatioSolution ExpAreaRatioSolution DiameterSolution PitchMeanSolution "
      "ReferenceThrustPerPropeller ReferencePowerBrakePerPropeller ReferenceThrustDesignPoint "
      "ReferencePowerDesignPoint ReferenceEngineRPM ReferenceEngineRPMDesignPoint");
}

TEST(PropellerFieldsTest, NewObjectsHoldTheirDefaults) {
  Objects o;
  // The blade count of a new project is set by NewProject, not by the class.
  EXPECT_EQ(Values(*o.propeller), "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0");
  EXPECT_EQ(Values(o.series), "1 0 0 0 0 1 1 1 0 0.5");
  EXPECT_EQ(Values(o.sizing), "0 0 0 0 0 0 0 0 0 0 0");
  EXPECT_EQ(o.propeller->ImportFilePath(), "untitled.prop");
  EXPECT_EQ(o.propeller->Description(), "");
  EXPECT_EQ(o.propeller->KTKQCount(), 0);
  EXPECT_EQ(o.series.KTKQCorrectionLabel(), "Custom");
  EXPECT_EQ(o.series.NozzleLengthDiameterRatioFormatted(), "0.50");
  EXPECT_EQ(o.series.KTMultiplierFormatted(), "1.000");
}

TEST(PropellerFieldsTest, LabelListsAndFileKeys) {
  struct Case {
    const LabelList& list;
    const char *labels, *keys;  // "|"-separated
  } cases[] = {
      {kPropellerTypeLabels, "FPP|CPP|CRP (Simple)", "FPP|CPP|CRPSimple"},
      {kScaleCorrectionLabels, "None|B Series|Equiv profile|Part ITTC|Full ITTC",
       "NoCorrection|BSeries|EquivProfile|PartITTC|FullITTC"},
      {kOffOnLabels, "Off|On", "Off|On"},
      {kKTKQCorrectionLabels, "Standard|Custom", "Standard|Custom"},
      {kCRPRudderLocationLabels, "BehindPropeller|NoneOrFreeStream", "BehindPropeller|NoneOrFreeStream"},
      {kPropellerSizingIdentityLabels, "No sizing|By power|By thrust|By total drag",
       "NoSizing|ByPower|ByThrust|ByTotalDrag"},
      {kSizingSolutionLabels, "Keep|Size", "Keep|Size"},
      // series keys are the labels without blanks
      {kPropellerSeriesLabels,
       "B Series|Gawn AEW|Gawn KCA|Kaplan 19A|Kaplan 19A KC|Kaplan 33|Kaplan 37|Kaplan 37 KC|SP Series|"
       "Cycloidal|Kaplan Cylinder",
       "BSeries|GawnAEW|GawnKCA|Kaplan19A|Kaplan19AKC|Kaplan33|Kaplan37|Kaplan37KC|SPSeries|Cycloidal|"
       "KaplanCylinder"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Join(c.list.labels, "|"), c.labels);
    EXPECT_EQ(Join(c.list.keys, "|"), c.keys);
  }

  Objects o;
  o.sizing.DiameterSolution(1);
  EXPECT_EQ(o.sizing.DiameterSolutionLabelFormatted(), "Size");
  EXPECT_EQ(o.sizing.PitchMeanSolutionLabelFormatted(), "Keep");
  o.propeller->PropellerType(2);
  EXPECT_EQ(o.propeller->PropellerTypeLabel(), "CRP (Simple)");
}

TEST(PropellerFieldsTest, CaptionsAndReadChecks) {
  Objects o;
  struct Case {
    DataClass& c;
    const char* field;
    const char* caption;  // without the indent
    const char* word;     // pushed when the stored value is 0; "" for none
  } cases[] = {
      {*o.propeller, "BladeCount", "Blade count:", ""},
      {*o.propeller, "Diameter", "Propeller diameter:", "Propeller diameter"},
      {*o.propeller, "PitchMean", "Propeller mean pitch:", "Propeller mean pitch"},
      {*o.propeller, "PitchOfRecord", "", "Propeller pitch of record"},
      {*o.propeller, "HubDiameter", "Prop hub diameter:", "Propeller hub diameter"},
      {*o.propeller, "ExpAreaRatio", "Expanded area ratio:", ""},
      {*o.propeller, "HubImmersion", "Hub immersion:", ""},
      {*o.propeller, "TCRatio07R", "Blade T/C [0.7R]:", ""},
      {*o.propeller, "Chord07R", "Chord 07R:", "Chord 0.7R"},
      {*o.propeller, "BladeRoughnessMM", "Roughness:", ""},
      {*o.propeller, "CupDrop", "Propeller cup:", ""},
      {*o.propeller, "PropellerType", "Propeller type:", ""},
      {*o.propeller, "MaterialDensity", "", "Material density"},
      {*o.propeller, "MaterialYieldStrength", "", "Material yield strength"},
      {o.series, "Series", "Propeller series:", ""},
      {o.series, "CavBreakdownEnabled", "Cav breakdown:", ""},
      {o.series, "ScaleCorrection", "Scale correction:", ""},
      {o.series, "KTKQCorrection", "KTKQ corrections:", ""},
      {o.series, "ObliqueAngleCorrEnabled", "Oblique angle corr:", ""},
      {o.series, "KTMultiplier", "KT multiplier:", ""},
      {o.series, "KQMultiplier", "KQ multiplier:", ""},
      {o.series, "NozzleLengthDiameterRatio", "Nozzle L/D:", ""},
      {o.sizing, "PropellerSizingIdentity", "Propeller sizing:", ""},
      {o.sizing, "ReferenceThrustPerPropeller", "Reference thrust:", "Reference thrust per propeller"},
      {o.sizing, "ReferencePowerBrakePerPropeller", "Reference power:", "Reference power per propeller"},
      {o.sizing, "ReferenceThrustDesignPoint", "Design point:", "Reference thrust design point"},
      {o.sizing, "ReferencePowerDesignPoint", "Design point:", "Reference power design point"},
      {o.sizing, "ReferenceEngineRPM", "Reference RPM:", "Reference engine RPM"},
      {o.sizing, "ReferenceEngineRPMDesignPoint", "Design point:", "Reference engine RPM design point"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.field);
    const int i = Id(c.c, c.field);
    EXPECT_EQ(c.c.FieldNameOf(i), std::string("  ") + c.caption);
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
  EXPECT_EQ(o.propeller->HubDiameterRatioSymbol(), "DH/D");
}

TEST(PropellerSeriesTest, LimitsByBladeCount) {
  struct Case {
    int series, z;
    double earMin, earMax, pdMin, pdMax, jMin, jMax, jZero;
  } cases[] = {
      {0, 4, 0.30, 1.05, 0.5, 1.4, 0.05, 1.5, 1.0},   {2, 3, 0.50, 1.10, 0.8, 1.8, 0.30, 1.9, 1.0},
      {3, 3, 0.65, 0.65, 0.5, 1.4, 0.05, 1.5, 0.75},  {3, 4, 0.55, 0.70, 0.5, 1.4, 0.05, 1.5, 0.75},
      {3, 5, 0.65, 0.95, 0.5, 1.4, 0.05, 1.5, 0.75},  {3, 6, 0.55, 0.70, 0.5, 1.4, 0.05, 1.5, 0.75},
      {4, 3, 0.50, 0.80, 0.6, 1.5, 0.05, 1.5, 0.75},  {7, 4, 0.55, 1.00, 0.6, 1.5, 0.05, 1.5, 0.75},
      {7, 5, 0.55, 1.00, 0.6, 1.5, 0.05, 1.5, 0.75},  // a count the series lacks: the 4-blade range
      {8, 4, 0.80, 0.80, 0.9, 1.6, 0.5, 1.6, 1.15},   {9, 5, 1.06, 1.06, 1.571, 2.827, 0.05, 3.0, 0.8},
      {10, 4, 0.50, 0.75, 0.6, 1.4, 0.01, 0.02, 1.0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "series " << c.series << ", Z " << c.z);
    const auto l = GetPropellerSeriesLimits(c.series, c.z);
    ASSERT_TRUE(l);
    EXPECT_EQ(l->EARMin, c.earMin);
    EXPECT_EQ(l->EARMax, c.earMax);
    EXPECT_EQ(l->PDMin, c.pdMin);
    EXPECT_EQ(l->PDMax, c.pdMax);
    EXPECT_EQ(l->JMin, c.jMin);
    EXPECT_EQ(l->JMax, c.jMax);
    EXPECT_EQ(l->JZeroFactor, c.jZero);
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
  p.ImportFilePath("C:/props/wheel.prop");
  p.Diameter(kCurrent, 1.2);
  p.BladeCount(5);
  p.PropellerType(1);
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
  p.KTKQCount(5);
  EXPECT_EQ(copy->Description(), "Test wheel");
  EXPECT_EQ(copy->ImportFilePath(), "C:/props/wheel.prop");
  EXPECT_EQ(copy->Diameter(kCurrent), 1.2);
  EXPECT_EQ(copy->BladeCount(), 5);
  EXPECT_EQ(copy->PropellerType(), 1);
  EXPECT_EQ(copy->KTKQThrustCoefArray(), (std::vector<double>{0.0, 0.2}));

  o.series.Series(3);
  const auto s = o.series.CopyClass();
  o.series.Series(0);
  EXPECT_EQ(s->Series(), 3);
  EXPECT_EQ(s->Units(), o.units);
  EXPECT_EQ(s->WaterProperties(), o.water);
  EXPECT_EQ(s->Propeller(), o.propeller);

  o.sizing.ReferenceEngineRPM(1800.0);
  const auto z = o.sizing.CopyClass();
  o.sizing.ReferenceEngineRPM(0.0);
  EXPECT_EQ(z->ReferenceEngineRPM(), 1800.0);
  EXPECT_EQ(z->Units(), o.units);

  p.ClearAllData();
  EXPECT_EQ(p.Diameter(kCurrent), 0.0);
  EXPECT_EQ(p.Description(), "");
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
  p.PitchMean(kCurrent, 12.0);
  p.HubDiameter(kCurrent, 2.0);
  p.CupDrop(kCurrent, 0.01);
  p.ExpAreaRatio(0.75);
  p.BladeRoughnessMM(0.03);
  p.MaterialDensity(7600.0);
  o.sizing.ReferenceThrustPerPropeller(kCurrent, 1000.0);
  o.sizing.ReferencePowerBrakePerPropeller(kCurrent, 500.0);
  o.sizing.ReferenceEngineRPM(1800.0);

  const auto old = o.units->CopyClass();
  o.units->PropLengthIndex(kM);
  o.units->LengthIndex(kIn);  // the hull length unit has no say here
  o.units->ForceIndex(kN);
  o.units->PowerIndex(kKW);
  p.ConvertAllData(*o.units, *old);
  o.series.ConvertAllData(*o.units, *old);
  o.sizing.ConvertAllData(*o.units, *old);

  EXPECT_DOUBLE_EQ(p.Diameter(kCurrent), 3.048);
  EXPECT_DOUBLE_EQ(p.PitchMean(kCurrent), 3.6576);
  EXPECT_DOUBLE_EQ(p.HubDiameter(kCurrent), 0.6096);
  EXPECT_DOUBLE_EQ(p.CupDrop(kCurrent), 0.003048);
  EXPECT_DOUBLE_EQ(p.Diameter(kFt), 10.0);
  EXPECT_DOUBLE_EQ(p.HubDiameterRatio(), 0.2);
  EXPECT_EQ(p.ExpAreaRatio(), 0.75);
  EXPECT_EQ(p.BladeRoughnessMM(), 0.03);
  EXPECT_EQ(p.MaterialDensity(), 7600.0);
  EXPECT_EQ(o.series.KTMultiplier(), 1.0);
  EXPECT_EQ(o.series.NozzleLengthDiameterRatio(), 0.5);
  EXPECT_DOUBLE_EQ(o.sizing.ReferenceThrustPerPropeller(kCurrent), 4448.221615);  // 10 significant digits
  EXPECT_DOUBLE_EQ(o.sizing.ReferencePowerBrakePerPropeller(kCurrent), 372.8499358);
  EXPECT_EQ(o.sizing.ReferenceEngineRPM(), 1800.0);
}

}  // namespace
}  // namespace velmar
