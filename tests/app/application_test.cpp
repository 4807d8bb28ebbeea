// The application state: New, linked classes, the Calculate flags and button, the Units
// command, and the calculation error state with its warning box.
#include "app/application.h"
#include "core/format.h"

#include <gtest/gtest.h>

#include "core/diagnostics.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "core/test_support.h"

namespace velmar {
namespace {

struct AppTest : ::testing::Test {
  void SetUp() override { testing::FreshApp(); }
};

TEST_F(AppTest, NewProjectBuildsAWiredFreshProject) {
  std::vector<std::string> trace;
  App().Trace = [&](std::string_view label) { trace.emplace_back(label); };
  App().ProjectDirty = true;
  NewProject();
  ModelSet& p = App().primary;
  EXPECT_EQ(p.Project->FileName, "untitled.vxvl");
  EXPECT_EQ(p.Project->Source, ProgramVersionText());
  EXPECT_EQ(p.Units->SigDigits(), 10);
  EXPECT_TRUE(App().NeedCalculateResistance);
  EXPECT_FALSE(App().NeedCalculatePropulsion);
  EXPECT_FALSE(App().ProjectDirty);
  ASSERT_FALSE(trace.empty());
  EXPECT_EQ(trace.front(), "mM:CNP01");
  // Every class reads the one Units object of its set.
  EXPECT_EQ(p.Hull->Units(), p.Units);
  EXPECT_EQ(p.Appendage->Hull(), p.Hull);
  EXPECT_EQ(p.SpeedPerformance->WaterProperties(), p.WaterProperties);
  EXPECT_NE(App().RefShipResistance.Units, p.Units);  // a reference ship keeps its own units
  EXPECT_FALSE(App().RefPropeller.Hull);
  p.Hull->LengthWL(kCurrent, 100.0);
  p.Units->LengthIndex(kM);
  EXPECT_DOUBLE_EQ(p.Hull->LengthWL(kFt), RoundToSigDigits(100.0 / 0.3048, 10));
}

TEST_F(AppTest, TemplateIsReadOnlyWhenEnabledNamedAndPresent) {
  int reads = 0;
  App().LoadTemplateFile = [&](const std::string&) { return ++reads, true; };
  struct Case {
    bool enabled;
    std::string file;
    int reads;
  };
  const Case cases[] = {{false, __FILE__, 0},
                        {true, "None defined", 0},
                        {true, "/no/such/template.vxvl", 0},
                        {true, "", 0},
                        {true, __FILE__, 1}};
  for (const Case& c : cases) {
    reads = 0;
    App().TemplateEnabled = c.enabled;
    App().TemplateFile = c.file;
    NewProject();
    EXPECT_EQ(reads, c.reads) << c.file;
  }
  App().LoadTemplateFile = nullptr;
}

TEST_F(AppTest, CompareProjectIsMadeOnDemand) {
  EXPECT_FALSE(App().compare);
  ModelSet& c = CompareProject();
  EXPECT_EQ(c.SpeedPerformance->count(), 1);
  EXPECT_EQ(c.Units->SigDigits(), 10);
  EXPECT_EQ(&CompareProject(), &c);
  NewProject();
  EXPECT_FALSE(App().compare);
}

TEST_F(AppTest, NeedCalculatePairIsStoredNotMerged) {
  struct Case {
    Mode mode;
    bool resistance, propulsion;
    const char* image;
    bool button5;
  };
  const Case cases[] = {
      {Mode::Resistance, true, false, "NeedCalculate", false},
      {Mode::Resistance, false, true, "Calculate", true},
      {Mode::Propulsion, false, true, "NeedCalculate", false},
      {Mode::Propulsion, true, false, "NeedCalculate", false},
      {Mode::Propulsion, false, false, "Calculate", true},
  };
  for (const Case& c : cases) {
    App().CurrentMode = c.mode;
    SetNeedCalculate(true, false);
    SetNeedCalculate(c.resistance, c.propulsion);  // the second call replaces the first
    EXPECT_EQ(App().NeedCalculateResistance, c.resistance);
    EXPECT_TRUE(App().ProjectDirty);
    const CalculateButtonState st = RefreshCalculateButton();
    EXPECT_EQ(st.image, c.image);
    EXPECT_EQ(st.button5Enabled, c.button5);
  }
}

TEST_F(AppTest, UnitsCommandConvertsTheWholeModel) {
  ModelSet& p = App().primary;
  p.WaterProperties->SetWaterPropertiesToStandardValues(0);
  p.Hull->LengthWL(kCurrent, 328.0);
  p.SpeedPerformance->count(1);
  p.SpeedPerformance->Speed(0, kCurrent, 10.0);
  EXPECT_FALSE(ApplyUnitsCommand(nullptr));  // Cancel
  EXPECT_EQ(p.Hull->LengthWL(kCurrent), 328.0);
  clsVXUnits si = *p.Units;
  ApplyUnitPreset(si, UnitPreset::SI);
  ASSERT_TRUE(ApplyUnitsCommand(&si));
  EXPECT_EQ(p.Units->UnitsFormReturn(), 1);
  EXPECT_DOUBLE_EQ(p.Hull->LengthWL(kCurrent), 99.9744);
  EXPECT_DOUBLE_EQ(p.WaterProperties->Density(kCurrent), 1026.016115);
  EXPECT_EQ(p.SpeedPerformance->Speed(0, kCurrent), 10.0);  // knots in both presets
  EXPECT_EQ(p.Units->LengthFormat(), "0.000");
}

TEST_F(AppTest, CalcErrorStateComposesOnceAndClears) {
  SetCalcLocation("CalcResistance button");
  EXPECT_FALSE(CalcErrorsPending());
  AddCalcError("first");
  SetCalcLocation("next step");  // a location change loses an uncomposed cause
  EXPECT_FALSE(CalcErrorsPending());
  App().primary.SpeedPerformance->count(2);
  App().primary.SpeedPerformance->Speed(1, kCurrent, 12.5);
  App().primary.SpeedPerformance->SpeedIndex(1);
  AddCalcError("Hull drag");
  EXPECT_TRUE(CalcErrorFoundFlag());
  EXPECT_TRUE(CalcErrorsPending());
  EXPECT_EQ(GetCalcErrorText(), "\tnext step\r\n\r\nCause: \r\n\tHull drag\r\n\r\n\r\nSpeed: 12.5\r\n");
  EXPECT_FALSE(CalcErrorsPending());
  EXPECT_EQ(GetCalcErrorText(), "\tnext step\r\n\r\nCause: \r\n\tHull drag\r\n\r\n\r\nSpeed: 12.5\r\n");
  // A class stack goes in as it stands and is the error text at once; no speed line.
  SetCalcLocation("Reading hull");
  AddCalcErrors("\tLength on waterline\r\n");
  EXPECT_EQ(GetCalcErrorText(), "\tLength on waterline\r\n\r\n");
  EXPECT_TRUE(CalcErrorsPending());
  EXPECT_EQ(GetCalcErrorText(), "\tReading hull\r\n\r\nCause: \r\n\tLength on waterline\r\n\r\n\r\n");
  // A location too long for a short string, kept as a literal or copied from a text that is
  // gone when the cause is composed.
  for (const bool copied : {false, true}) {
    if (copied) {
      SetCalcLocation(std::string("Propulsion interaction prediction"));
    } else {
      SetCalcLocation("Propulsion interaction prediction");
    }
    AddCalcError("Hull drag");
    EXPECT_TRUE(CalcErrorsPending());
    EXPECT_EQ(GetCalcErrorText().substr(0, 36), "\tPropulsion interaction prediction\r\n") << copied;
    EXPECT_EQ(GetCalcLocation(), "Propulsion interaction prediction");
  }
}

TEST_F(AppTest, ShowWarningComposesTheBoxText) {
  int help = -1;
  const std::string text = ShowWarning(1, "Speed error", "Speed [120] exceeds allowable range.", 12.0, &help);
  EXPECT_EQ(help, 0);
  EXPECT_EQ(
      text,
      "DATA ERROR: \r\nSpeed error\r\n\r\nLOCATION: \r\nSpeed [120] exceeds allowable range.\r\n\r\nSPEED: "
      "\r\n12");
  ASSERT_EQ(DefaultHeadlessHooks().messages.size(), 1u);
  EXPECT_EQ(DefaultHeadlessHooks().messages[0].title, "Warning!");
  EXPECT_EQ(ComposeWarningText(0, "Resistance prediction", "", -1.0),
            "WARNING: \r\nResistance prediction\r\n\r\nLOCATION: \r\n");
}

}  // namespace
}  // namespace velmar
