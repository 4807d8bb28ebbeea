// The Calculate and Clear Results commands: the order of a run, its one warning, the flags
// and button 5 after success and failure, the propulsion sizing question, and which columns
// Clear Results keeps.
#include "core/calculate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../resistance/example_ship.h"
#include "core/application.h"
#include "core/diagnostics.h"
#include "core/ui_hooks.h"

namespace velmar {
namespace {

// Headless hooks that also write down every call, in order.
struct RecordingHooks : HeadlessHooks {
  std::vector<std::string> calls;
  std::vector<bool> button5;
  void BusyPointer(bool on) override { calls.push_back(on ? "busy" : "normal"); }
  void Breathe() override { calls.push_back("breathe"); }
  void EndCellEdit() override { calls.push_back("end edit"); }
  void RefreshResults() override { calls.push_back("refresh"); }
  void SnapshotGraph() override { calls.push_back("snapshot"); }
  void ShowModeView(int mode) override { calls.push_back("view " + std::to_string(mode)); }
  void EnableHullDragTableCommand(bool enabled) override {
    calls.push_back("button 5");
    button5.push_back(enabled);
  }
  void ShowMessage(std::string_view title, std::string_view text, int helpContext) override {
    calls.push_back("warning");
    HeadlessHooks::ShowMessage(title, text, helpContext);
  }
  void SetCalculateButton(std::string_view image, bool) override { calls.push_back(std::string(image)); }
};

struct CalculateTest : ::testing::Test {
  void SetUp() override {
    testing::EnterExampleShip({10.0, 15.0, 20.0});
    SetHooks(&hooks);
  }
  void TearDown() override { SetHooks(nullptr); }
  clsVXSpeedPerformance& sp() { return *App().primary.SpeedPerformance; }

  RecordingHooks hooks;
};

TEST_F(CalculateTest, ResistanceRunCallsTheHooksInOrderAndResetsTheFlags) {
  const CalculateResult r = RunCalculate();
  EXPECT_TRUE(r.ok);
  EXPECT_TRUE(hooks.messages.empty());
  const std::vector<std::string> expected = {"end edit", "busy",     "snapshot", "breathe",
                                             "busy",     "normal",   "breathe",  "normal",
                                             "refresh",  "button 5", "Calculate"};
  EXPECT_EQ(hooks.calls, expected);
  EXPECT_FALSE(App().NeedCalculateResistance);
  EXPECT_TRUE(App().NeedCalculatePropulsion);
  EXPECT_TRUE(App().ProjectDirty);
  EXPECT_GT(sp().DragTotal(2, kCurrent), sp().DragTotal(0, kCurrent));
}

TEST_F(CalculateTest, FailedRunShowsOneWarningKeepsEarlierRowsAndResetsTheFlagsAllTheSame) {
  ASSERT_TRUE(RunCalculate().ok);
  const double before = sp().DragTotal(1, kCurrent);
  hooks.calls.clear();
  App().primary.Hull->LengthWL(kCurrent, 0.0);
  SetNeedCalculate(true, false);
  const CalculateResult r = RunCalculate();
  EXPECT_FALSE(r.ok);
  ASSERT_EQ(hooks.messages.size(), 1u);
  EXPECT_EQ(hooks.messages[0].text, r.warning);
  // The hull's word, under the step that failed, in the box of the resistance prediction.
  EXPECT_EQ(r.warning, ComposeWarningText(0, "Resistance prediction",
                                          "\tITTC-78 (CT) drag prediction\r\n\r\nCause: \r\n\tLength on "
                                          "waterline\r\n\r\n\r\n",
                                          -1.0));
  EXPECT_EQ(sp().DragTotal(1, kCurrent), before);
  EXPECT_FALSE(App().NeedCalculateResistance);
  EXPECT_TRUE(App().NeedCalculatePropulsion);
  // The next run starts clean: with the length back, no warning remains.
  App().primary.Hull->LengthWL(kM, 205.0);
  EXPECT_FALSE(RunCalculate().warningShown);
}

TEST_F(CalculateTest, WarningCasesOfTheResistanceRun) {
  struct Case {
    const char* name;
    void (*setup)();
    bool ok;
    const char* message;  // "" : the box is shown with an empty message; nullptr: no box
  };
  const Case cases[] = {
      {"empty speed table", [] { App().primary.SpeedPerformance->count(0); }, true, nullptr},
      {"planing route", [] { App().primary.ITTC78->HullHydrodynamicType(2); }, false, ""},
      {"speed of 0", [] { App().primary.SpeedPerformance->Speed(1, kCurrent, 0.0); }, false, "\tSpeed\r\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SetUp();
    // A failure before leaves its text behind; it must not be shown again.
    App().primary.Hull->LengthWL(kCurrent, 0.0);
    RunCalculate();
    App().primary.Hull->LengthWL(kM, 205.0);
    hooks.messages.clear();
    c.setup();
    const CalculateResult r = RunCalculate();
    EXPECT_EQ(r.ok, c.ok);
    EXPECT_EQ(r.warningShown, c.message != nullptr);
    EXPECT_EQ(hooks.messages.size(), c.message ? 1u : 0u);
    if (c.message && !*c.message) {
      EXPECT_EQ(r.warning, ComposeWarningText(0, "Resistance prediction", "", -1.0));
    } else if (c.message) {
      EXPECT_NE(r.warning.find(c.message), std::string::npos) << r.warning;
    }
  }
}

TEST_F(CalculateTest, PropulsionRunReportsThatThePredictionIsMissing) {
  App().CurrentMode = Mode::Propulsion;
  App().PropulsionSizingChanged = true;  // cleared without a question in this mode
  const CalculateResult r = RunCalculate();
  EXPECT_FALSE(App().PropulsionSizingChanged);
  EXPECT_TRUE(hooks.questions.empty());
  EXPECT_FALSE(r.ok);
  EXPECT_NE(
      r.warning.find("\tCalcPropulsion button\r\n\r\nCause: \r\n\tPropulsion prediction is not available "
                     "in this version of the program.\r\n"),
      std::string::npos)
      << r.warning;
  EXPECT_EQ(r.warning.find("Speed:"), std::string::npos);
  EXPECT_FALSE(App().NeedCalculateResistance);
  EXPECT_FALSE(App().NeedCalculatePropulsion);
}

TEST_F(CalculateTest, ChangedSizingAsksWhetherToCalculateThePropulsionInstead) {
  for (Answer answer : {Answer::No, Answer::Yes}) {
    SCOPED_TRACE(answer == Answer::Yes ? "Yes" : "No");
    SetUp();
    hooks.questions.clear();
    hooks.calls.clear();
    App().PropulsionSizingChanged = true;
    hooks.scriptedAnswers = {answer};
    const CalculateResult r = RunCalculate();
    ASSERT_EQ(hooks.questions.size(), 1u);
    EXPECT_EQ(hooks.questions[0].title, "Propulsion Sizing");
    EXPECT_FALSE(App().PropulsionSizingChanged);
    if (answer == Answer::Yes) {
      EXPECT_EQ(App().CurrentMode, Mode::Propulsion);
      EXPECT_EQ(hooks.calls.at(1), "view 1");
      EXPECT_NE(r.warning.find("Propulsion prediction"), std::string::npos);
      EXPECT_EQ(sp().DragTotal(0, kCurrent), 0.0);  // the resistance did not run
    } else {
      EXPECT_EQ(App().CurrentMode, Mode::Resistance);
      EXPECT_TRUE(r.ok);
      EXPECT_GT(sp().DragTotal(0, kCurrent), 0.0);
    }
  }
}

TEST_F(CalculateTest, ButtonFiveNeedsACalculatedHullDragTable) {
  struct Case {
    int enabled, technique;
    bool button5;
  };
  const Case cases[] = {{1, 1, true}, {1, 2, false}, {0, 0, false}, {2, 1, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.enabled << " " << c.technique);
    hooks.button5.clear();
    App().primary.Resistance->HullDragEnabled(c.enabled);
    App().primary.Resistance->HullDragTechnique(c.technique);
    const CalculateResult r = RunCalculate();  // fails or not: the button follows the settings
    EXPECT_EQ(r.hullDragTableCommandEnabled, c.button5);
    EXPECT_EQ(hooks.button5, std::vector<bool>{c.button5});
  }
}

TEST_F(CalculateTest, ClearResultsZeroesTheListedColumnsAndKeepsTheRest) {
  using F = clsVXSpeedPerformance::Field;
  ASSERT_TRUE(RunCalculate().ok);
  sp().WakeFraction(0, 0.2);
  sp().PropulsorRPM(0, 120.0);
  sp().TipSpeedCheck(0, 2);
  sp().CoefFroudeChineLength(0, 0.7);  // not in either list
  const std::vector<F> kept = {F::Speed, F::DragBareHullResiduary, F::TipSpeedCheck,
                               F::CoefFroudeChineLength};
  std::vector<double> before;
  for (F f : kept) before.push_back(sp().Raw(0, FieldId(f)));
  ClearResults();
  for (size_t i = 0; i < kept.size(); ++i) {
    EXPECT_EQ(sp().Raw(0, FieldId(kept[i])), before[i]) << sp().Column(FieldId(kept[i])).name;
    EXPECT_NE(before[i], 0.0) << sp().Column(FieldId(kept[i])).name;
  }
  for (F f : {F::CoefFroudeLength, F::DragBareHull, F::DragTotal, F::PowerEffectiveTotal, F::WakeFraction,
              F::PropulsorRPM}) {
    for (int row = 0; row < sp().count(); ++row) EXPECT_EQ(sp().Raw(row, FieldId(f)), 0.0) << row;
  }
  EXPECT_EQ(hooks.calls.back(), "refresh");
}

}  // namespace
}  // namespace velmar
