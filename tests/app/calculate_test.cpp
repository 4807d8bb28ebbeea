// The Calculate and Clear Results commands: the order of a run, its one warning, the flags
// and button 5 after success and failure, the propulsion sizing question, and which columns
// Clear Results keeps.
#include "app/calculate.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "../resistance/example_ship.h"  // brings the application, diagnostics and hooks

namespace velmar {
namespace {

// Headless hooks that also write down every call, in order, each closed by ";".
struct RecordingHooks : HeadlessHooks {
  std::string calls;
  void BusyPointer(bool on) override { calls += on ? "busy;" : "normal;"; }
  void Breathe() override { calls += "breathe;"; }
  void EndCellEdit() override { calls += "end edit;"; }
  void RefreshResults() override { calls += "refresh;"; }
  void SnapshotGraph() override { calls += "snapshot;"; }
  void ShowModeView(int mode) override { calls += "view " + std::to_string(mode) + ";"; }
  void EnableHullDragTableCommand(bool on) override { calls += on ? "button 5 on;" : "button 5 off;"; }
  void SetCalculateButton(std::string_view image, std::optional<bool> button5) override {
    (calls += image) += button5 ? (*button5 ? "+5;" : "-5;") : ";";
  }
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

TEST_F(CalculateTest, ResistanceRunCallsTheHooksInOrder) {
  EXPECT_TRUE(RunCalculate().ok);
  EXPECT_EQ(hooks.calls,
            "end edit;busy;snapshot;breathe;busy;normal;breathe;normal;refresh;button 5 on;Calculate+5;");
}

// A warning box shows once, at the end of the run, with the text gathered in this run only;
// a failure keeps the rows written before and resets the Calculate flags all the same.
TEST_F(CalculateTest, WarningsAndFlagsOfTheResistanceRun) {
  struct Case {
    const char* name;
    void (*setup)();
    const char* message;  // nullptr: no box, and the run succeeds
  };
  const Case cases[] = {
      {"empty speed table", [] { App().primary.SpeedPerformance->count(0); }, nullptr},
      // The hull's word, under the step that failed.
      {"no waterline length", [] { App().primary.Hull->LengthWL(kCurrent, 0.0); },
       "\tITTC-78 (CT) drag prediction\r\n\r\nCause: \r\n\tLength on waterline\r\n\r\n\r\n"},
      // A method that the planing route does not carry stops the run before its first row.
      {"planing route", [] { App().primary.ITTC78->HullHydrodynamicType(2); },
       "\tPlaning drag prediction\r\n\r\nCause: \r\n\tHull drag method not available for the Planing scope: "
       "Holtrop\r\n\r\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SetUp();
    // A failure before leaves its text behind; the next run must not show it again.
    App().primary.Hull->LengthWL(kCurrent, 0.0);
    RunCalculate();
    App().primary.Hull->LengthWL(kM, 205.0);
    ASSERT_FALSE(RunCalculate().warningShown);
    const double before = sp().DragTotal(1, kCurrent);
    hooks.messages.clear();
    c.setup();
    SetNeedCalculate(true, false);
    const CalculateResult r = RunCalculate();
    EXPECT_EQ(r.ok, c.message == nullptr);
    EXPECT_EQ(r.warning, c.message ? ComposeWarningText(0, "Resistance prediction", c.message, -1.0) : "");
    ASSERT_EQ(hooks.messages.size(), c.message ? 1u : 0u);
    for (const auto& m : hooks.messages) EXPECT_EQ(m.text, r.warning);
    EXPECT_TRUE(!c.message || sp().DragTotal(1, kCurrent) == before);  // rows written earlier stay
    EXPECT_TRUE(!App().NeedCalculateResistance && App().NeedCalculatePropulsion);
  }
}

// A changed sizing is asked about in the resistance mode, and cleared unasked in the
// propulsion mode. The propulsion run (which fails here: no propeller) leaves neither
// Calculate flag set.
TEST_F(CalculateTest, ChangedSizingAsksWhetherToCalculateThePropulsionInstead) {
  for (const auto& [mode, answer] : std::vector<std::pair<Mode, Answer>>{
           {Mode::Resistance, Answer::No}, {Mode::Resistance, Answer::Yes}, {Mode::Propulsion, Answer::No}}) {
    SetUp();
    hooks = RecordingHooks();
    App().CurrentMode = mode;
    App().PropulsionSizingChanged = true;
    hooks.scriptedAnswers = {answer};
    const CalculateResult r = RunCalculate();
    const bool asked = mode == Mode::Resistance, propulsion = !asked || answer == Answer::Yes;
    EXPECT_FALSE(App().PropulsionSizingChanged);
    ASSERT_EQ(hooks.questions.size(), asked ? 1u : 0u);
    EXPECT_EQ(hooks.calls.starts_with("end edit;view 1;"), asked && propulsion);
    // The fixture has no propeller: a propulsion run fails and says so under its own title.
    EXPECT_EQ(r.warning.find("\r\nPropulsion prediction\r\n") != std::string::npos, propulsion) << r.warning;
    EXPECT_EQ(App().NeedCalculatePropulsion, !propulsion);
    EXPECT_EQ(sp().DragTotal(0, kCurrent) > 0.0, !propulsion);  // the resistance ran
  }
}

TEST_F(CalculateTest, ButtonFiveNeedsACalculatedHullDragTable) {
  // Drag enabled (1 calculated, 0 off, 2 locked), technique (0 prediction, 1 aligned
  // prediction, 2 scaled from a test).
  for (auto [enabled, technique] : std::vector<std::pair<int, int>>{{1, 0}, {1, 1}, {1, 2}, {0, 0}, {2, 1}}) {
    App().primary.Resistance->HullDragEnabled(enabled);
    App().primary.Resistance->HullDragTechnique(technique);
    const bool on = enabled == 1 && technique <= 1;
    RunCalculate();  // fails or not: the button follows the settings
    // The Calculate button then follows the technique alone, and leaves button 5 as it is
    // for a technique without a drag table.
    const std::string tail =
        std::string(on ? "5 on;" : "5 off;") + "Calculate" + (technique <= 1 ? "+5;" : ";");
    EXPECT_TRUE(hooks.calls.ends_with(tail)) << enabled << technique << hooks.calls;
  }
}

TEST_F(CalculateTest, ClearResultsZeroesTheListedColumnsAndKeepsTheRest) {
  using F = clsVXSpeedPerformance::Field;
  ASSERT_TRUE(RunCalculate().ok);
  sp().WakeFraction(0, 0.2);
  sp().TipSpeedCheck(0, 2);
  const auto before = sp().CopyClass();
  ClearResults();
  // Speed, the residuary drag (in neither list) and the check columns stay.
  for (F f : {F::Speed, F::DragBareHullResiduary, F::TipSpeedCheck})
    EXPECT_EQ(sp().Raw(0, FieldId(f)), before->Raw(0, FieldId(f))) << FieldId(f);
  for (F f : {F::CoefFroudeLength, F::DragBareHull, F::DragTotal, F::PowerEffectiveTotal, F::WakeFraction})
    for (int row = 0; row < sp().count(); ++row) EXPECT_EQ(sp().Raw(row, FieldId(f)), 0.0) << FieldId(f);
  EXPECT_TRUE(hooks.calls.ends_with("refresh;"));
}

}  // namespace
}  // namespace velmar
