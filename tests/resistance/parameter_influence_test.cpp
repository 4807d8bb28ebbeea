// Parameter influence on the Holtrop & Mennen (1982) example ship: the rows, the steps of the
// areas that may be 0, the cases without a result, and that the project stays as it was.
#include "resistance/parameter_influence.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "app/application.h"
#include "core/diagnostics.h"
#include "core/format.h"
#include "core/ui_hooks.h"
#include "example_ship.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

ModelSet& P() { return App().primary; }

double BareHullDrag() {
  EXPECT_TRUE(CalcResistancePrediction());
  return P().SpeedPerformance->DragBareHull(0, kCurrent);
}

TEST(ParameterInfluenceTest, RowsOfTheHoltropPrediction) {
  testing::EnterExampleShip({15.0, 25.0});
  P().SpeedPerformance->DesignSpeedIndex(1);
  const ParameterInfluence pi = BuildParameterInfluence();
  EXPECT_TRUE(pi.designSpeed);
  ASSERT_TRUE(pi.basisOk);
  EXPECT_TRUE(DefaultHeadlessHooks().messages.empty());
  ASSERT_EQ(pi.rows.size(), 13u);
  for (const ParameterInfluenceRow& r : pi.rows) {
    SCOPED_TRACE(r.caption);
    EXPECT_EQ(r.valueText, FormatNumber(r.value, "0.000"));
    EXPECT_EQ(r.strongerThanProportional, std::fabs(r.value) > 1.0);
  }
  // The basis is the bare-hull drag of the design speed, 25 kn.
  testing::EnterExampleShip({25.0});
  EXPECT_DOUBLE_EQ(pi.basisDrag, BareHullDrag());
  // A heavier ship makes more waves; more wetted surface adds friction, which is only a part
  // of the drag.
  EXPECT_GT(pi.rows[0].value, 0.0);
  EXPECT_GT(pi.rows[4].value, 0.0);
  EXPECT_LT(pi.rows[4].value, 1.0);
  EXPECT_EQ(pi.rows[11].value, 0.0);  // the Holtrop method has no bow shape factor
}

TEST(ParameterInfluenceTest, AreasThatMayBeZeroStepByAThousandthOfAReference) {
  auto enter = [] {
    testing::EnterExampleShip({25.0});
    P().Hull->AreaSectAtTr(kCurrent, 0.0);
    P().Hull->BulbAreaSect(kCurrent, 0.0);
  };
  enter();
  const ParameterInfluence pi = BuildParameterInfluence();
  ASSERT_TRUE(pi.basisOk);
  EXPECT_EQ(pi.rows[8].valueText, "0.000");  // no bulb: its reference is 0, the copy unchanged
  // No transom: the step is a thousandth of 0.1 AX, the effect of a small transom; the same
  // change made by hand on the project.
  enter();
  const double d0 = BareHullDrag();
  EXPECT_EQ(d0, pi.basisDrag);
  P().Hull->AreaSectAtTr(kCurrent, 0.001 * 0.1 * P().Hull->AreaSectMax(kCurrent));
  const double byHand = (BareHullDrag() - d0) * 1000.0 / d0;
  ASSERT_NE(byHand, 0.0);
  EXPECT_NEAR(pi.rows[9].value, byHand, 1e-9 * std::fabs(byHand));
}

// Without a design speed or a basis every row is a dash; other hull types have no influence.
TEST(ParameterInfluenceTest, RowsWithoutAResult) {
  struct Case {
    const char* name;
    void (*setup)();
    bool designSpeed;
    const char* text;
    size_t messages;  // the failed basis shows its warning
  };
  const Case cases[] = {
      {"empty table", [] { P().SpeedPerformance->count(0); }, false, "---", 0},
      {"index past the table", [] { P().SpeedPerformance->DesignSpeedIndex(3); }, false, "---", 0},
      {"negative index", [] { P().SpeedPerformance->DesignSpeedIndex(-1); }, false, "---", 0},
      {"design speed 0", [] { P().SpeedPerformance->Speed(0, kCurrent, 0.0); }, false, "---", 0},
      {"failed basis", [] { P().Hull->LengthWL(kCurrent, 0.0); }, true, "---", 1},
      // The basis runs the ITTC-78 route all the same.
      {"planing hull", [] { P().ITTC78->HullHydrodynamicType(2); }, true, "0.000", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    testing::EnterExampleShip({25.0});
    c.setup();
    const ParameterInfluence pi = BuildParameterInfluence();
    EXPECT_EQ(pi.designSpeed, c.designSpeed);
    ASSERT_EQ(pi.rows.size(), 13u);
    for (const ParameterInfluenceRow& r : pi.rows) EXPECT_EQ(r.valueText, c.text) << r.caption;
    ASSERT_EQ(DefaultHeadlessHooks().messages.size(), c.messages);
    if (c.messages == 0) continue;
    EXPECT_FALSE(pi.basisOk);
    EXPECT_EQ(pi.warning,
              ComposeWarningText(0, "Parameter influence", "Basis hull resistance prediction", -1.0));
    EXPECT_EQ(pi.warning, DefaultHeadlessHooks().messages[0].text);
    EXPECT_NE(pi.basisCause.find("Length on waterline"), std::string::npos);
  }
}

TEST(ParameterInfluenceTest, ProjectObjectsAreNotChanged) {
  testing::EnterExampleShip({15.0, 25.0});
  // A shaft count of 0 and missing appendage sizes would push words if read on the project.
  P().Hull->PropulsorCountPerHull(0);
  P().SpeedPerformance->DesignSpeedIndex(1);
  App().NeedCalculateResistance = true;
  App().ProjectDirty = false;
  auto snapshot = [] {
    const ModelSet& p = P();
    std::vector<double> v;
    std::string words;
    for (const DataClass* c :
         std::initializer_list<const DataClass*>{p.Hull.get(), p.Appendage.get(), p.WaterProperties.get(),
                                                 p.ITTC78.get(), p.Resistance.get(), p.Environment.get()}) {
      for (int i = 0; i < static_cast<int>(c->Fields().size()); ++i) v.push_back(c->Raw(i));
      words += c->ErrorText();
    }
    for (int row = 0; row < p.SpeedPerformance->count(); ++row)
      for (int col = 0; col < clsVXSpeedPerformance::kColumnCount; ++col)
        v.push_back(p.SpeedPerformance->Raw(row, col));
    return std::make_pair(v, words);
  };
  const auto before = snapshot();
  ASSERT_TRUE(BuildParameterInfluence().basisOk);
  EXPECT_EQ(snapshot(), before);
  EXPECT_TRUE(App().NeedCalculateResistance);
  EXPECT_FALSE(App().ProjectDirty);
  EXPECT_EQ(P().SpeedPerformance->SpeedIndex(), 0);
}

}  // namespace
}  // namespace velmar

namespace velmar {
namespace {

// A drag scaled from a test or entered by hand has no prediction to vary: the command is
// refused with its message, and nothing is computed.
TEST(ParameterInfluenceTest, TechniquesWithoutAPredictionAreRefused) {
  for (const auto& [technique, refusal] : std::vector<std::pair<int, std::string>>{
           {kTechniqueScaleFromTest,
            "Sensitivity analysis is not available for Scaled from test resistance techniques."},
           {kTechniqueDefined, "Sensitivity analysis is not available for Defined resistance techniques."},
           {kTechniqueAlignedPrediction, ""}}) {
    testing::EnterExampleShip({25.0});
    App().primary.Resistance->HullDragTechnique(technique);
    const ParameterInfluence pi = BuildParameterInfluence();
    EXPECT_EQ(pi.refusal, refusal);
    if (!refusal.empty()) {
      EXPECT_EQ(DefaultHeadlessHooks().messages.back().title, "Sensitivity analysis");
      EXPECT_FALSE(pi.designSpeed);
    }
  }
}

}  // namespace
}  // namespace velmar
