// Parameter influence on the Holtrop & Mennen (1982) example ship: the thirteen rows, the
// steps of the areas that may be 0, the cases without a result, and that the project stays
// as it was.
#include "resistance/parameter_influence.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/application.h"
#include "core/diagnostics.h"
#include "core/format.h"
#include "example_ship.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

ModelSet& P() { return App().primary; }

const std::vector<std::string> kCaptions = {
    "  Displacement:",      "  Length on WL:", "  Max beam on WL:",      "  Max molded draft:",
    "  Wetted surface:",    "  LCB fwd TR:",   "  Max section area:",    "  Waterplane area:",
    "  Bulb section area:", "  Transom area:", "  Half entrance angle:", "  Bow shape factor:",
    "  Stern shape factor:"};

TEST(ParameterInfluenceTest, ThirteenRowsOfTheHoltropPrediction) {
  testing::EnterExampleShip({15.0, 25.0});
  P().SpeedPerformance->DesignSpeedIndex(1);
  const ParameterInfluence pi = BuildParameterInfluence();
  EXPECT_EQ(pi.title, "Holtrop");
  EXPECT_TRUE(pi.designSpeed);
  ASSERT_TRUE(pi.basisOk);
  EXPECT_TRUE(DefaultHeadlessHooks().messages.empty());
  ASSERT_EQ(pi.rows.size(), kCaptions.size());
  for (size_t i = 0; i < pi.rows.size(); ++i) {
    const ParameterInfluenceRow& r = pi.rows[i];
    SCOPED_TRACE(r.caption);
    EXPECT_EQ(r.caption, kCaptions[i]);
    EXPECT_TRUE(std::isfinite(r.value));
    EXPECT_EQ(r.valueText, FormatNumber(r.value, "0.000"));
    EXPECT_EQ(r.strongerThanProportional, std::fabs(r.value) > 1.0);
  }
  // The basis is the bare-hull drag of the design speed, 25 kn.
  testing::EnterExampleShip({25.0});
  ASSERT_TRUE(CalcResistancePrediction());
  EXPECT_DOUBLE_EQ(pi.basisDrag, P().SpeedPerformance->DragBareHull(0, kCurrent));
  // A heavier ship makes more waves; more wetted surface adds friction, which is only a part
  // of the drag.
  EXPECT_GT(pi.rows[0].value, 0.0);
  EXPECT_GT(pi.rows[4].value, 0.0);
  EXPECT_LT(pi.rows[4].value, 1.0);
  EXPECT_EQ(pi.rows[11].value, 0.0);  // the Holtrop method has no bow shape factor
}

// The example ship without bulb and transom.
void EnterShipWithoutBulbOrTransom() {
  testing::EnterExampleShip({25.0});
  P().Hull->AreaSectAtTr(kCurrent, 0.0);
  P().Hull->BulbAreaSect(kCurrent, 0.0);
}

TEST(ParameterInfluenceTest, AreasThatMayBeZeroStepByAThousandthOfAReference) {
  EnterShipWithoutBulbOrTransom();
  const ParameterInfluence pi = BuildParameterInfluence();
  ASSERT_TRUE(pi.basisOk);
  // No bulb: its reference is 0, the copy is unchanged.
  EXPECT_EQ(pi.rows[8].value, 0.0);
  EXPECT_EQ(pi.rows[8].valueText, "0.000");
  // No transom: the step is a thousandth of 0.1 AX, the effect of a small transom.
  EXPECT_NE(pi.rows[9].value, 0.0);
  // The same change made by hand on the project.
  EnterShipWithoutBulbOrTransom();
  ASSERT_TRUE(CalcResistancePrediction());
  const double d0 = P().SpeedPerformance->DragBareHull(0, kCurrent);
  EXPECT_EQ(d0, pi.basisDrag);
  P().Hull->AreaSectAtTr(kCurrent, 0.001 * 0.1 * P().Hull->AreaSectMax(kCurrent));
  ASSERT_TRUE(CalcResistancePrediction());
  const double byHand = (P().SpeedPerformance->DragBareHull(0, kCurrent) - d0) * 1000.0 / d0;
  EXPECT_NEAR(pi.rows[9].value, byHand, 1e-9 * std::fabs(byHand));
}

TEST(ParameterInfluenceTest, WithoutADesignSpeedEveryRowIsADash) {
  struct Case {
    const char* name;
    void (*setup)();
  };
  const Case cases[] = {
      {"empty table", [] { P().SpeedPerformance->count(0); }},
      {"index past the table", [] { P().SpeedPerformance->DesignSpeedIndex(3); }},
      {"negative index", [] { P().SpeedPerformance->DesignSpeedIndex(-1); }},
      {"design speed 0", [] { P().SpeedPerformance->Speed(0, kCurrent, 0.0); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    testing::EnterExampleShip({25.0});
    c.setup();
    const ParameterInfluence pi = BuildParameterInfluence();
    EXPECT_FALSE(pi.designSpeed);
    ASSERT_EQ(pi.rows.size(), 13u);
    for (const ParameterInfluenceRow& r : pi.rows) EXPECT_EQ(r.valueText, "---");
    EXPECT_TRUE(DefaultHeadlessHooks().messages.empty());
  }
}

TEST(ParameterInfluenceTest, FailedBasisShowsItsWarningAndComputesNoRow) {
  testing::EnterExampleShip({25.0});
  P().Hull->LengthWL(kCurrent, 0.0);
  const ParameterInfluence pi = BuildParameterInfluence();
  EXPECT_FALSE(pi.basisOk);
  ASSERT_EQ(DefaultHeadlessHooks().messages.size(), 1u);
  EXPECT_EQ(DefaultHeadlessHooks().messages[0].text,
            ComposeWarningText(0, "Parameter influence", "Basis hull resistance prediction", -1.0));
  EXPECT_EQ(pi.warning, DefaultHeadlessHooks().messages[0].text);
  EXPECT_NE(pi.basisCause.find("Length on waterline"), std::string::npos);
  for (const ParameterInfluenceRow& r : pi.rows) EXPECT_EQ(r.valueText, "---");
}

TEST(ParameterInfluenceTest, OtherHullTypesHaveNoInfluence) {
  testing::EnterExampleShip({25.0});
  P().ITTC78->HullHydrodynamicType(2);  // the basis runs the ITTC-78 route all the same
  const ParameterInfluence pi = BuildParameterInfluence();
  ASSERT_TRUE(pi.basisOk);
  for (const ParameterInfluenceRow& r : pi.rows) EXPECT_EQ(r.valueText, "0.000") << r.caption;
}

TEST(ParameterInfluenceTest, ProjectObjectsAreNotChanged) {
  testing::EnterExampleShip({15.0, 25.0});
  // A shaft count of 0 and missing appendage sizes would push words if read on the project.
  P().Hull->PropulsorCountPerHull(0);
  P().SpeedPerformance->DesignSpeedIndex(1);
  App().NeedCalculateResistance = true;
  App().ProjectDirty = false;
  auto snapshot = [] {
    std::vector<double> v;
    const ModelSet& p = P();
    for (const DataClass* c :
         std::initializer_list<const DataClass*>{p.Hull.get(), p.Appendage.get(), p.WaterProperties.get(),
                                                 p.ITTC78.get(), p.Resistance.get(), p.Environment.get()}) {
      for (size_t i = 0; i < c->Fields().size(); ++i) v.push_back(c->Raw(static_cast<int>(i)));
    }
    for (int row = 0; row < p.SpeedPerformance->count(); ++row) {
      for (int col = 0; col < clsVXSpeedPerformance::kColumnCount; ++col) {
        v.push_back(p.SpeedPerformance->Raw(row, col));
      }
    }
    return v;
  };
  auto stacks = [] {
    const ModelSet& p = P();
    return p.Hull->ErrorText() + p.Appendage->ErrorText() + p.WaterProperties->ErrorText() +
           p.ITTC78->ErrorText() + p.Resistance->ErrorText();
  };
  const std::vector<double> before = snapshot();
  const std::string stacksBefore = stacks();
  const ParameterInfluence pi = BuildParameterInfluence();
  ASSERT_TRUE(pi.basisOk);
  EXPECT_EQ(snapshot(), before);
  EXPECT_EQ(stacks(), stacksBefore);
  EXPECT_TRUE(App().NeedCalculateResistance);
  EXPECT_FALSE(App().ProjectDirty);
  EXPECT_EQ(P().SpeedPerformance->SpeedIndex(), 0);
}

}  // namespace
}  // namespace velmar
