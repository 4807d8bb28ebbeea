// The resistance prediction driver on the Holtrop & Mennen (1982) example ship: the sums and
// identities of the drag and power columns, the Off/Calc/Lock/Enter states of each column,
// the ITTC-78 expansion switches and the failures that stop the speed loop.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/application.h"
#include "core/diagnostics.h"
#include "core/helpers.h"
#include "example_ship.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

using testing::EnterExampleShip;
using F = clsVXSpeedPerformance::Field;

ModelSet& P() { return App().primary; }
clsVXSpeedPerformance& SP() { return *App().primary.SpeedPerformance; }

// A run that must succeed; a failure shows the cause text as the Calculate command composes it.
void Predict() {
  const bool ok = CalcResistancePrediction();
  CalcErrorsPending();
  EXPECT_TRUE(ok) << GetCalcErrorText();
}

// Every column of a row, for comparing two runs.
std::vector<double> RowOf(int row) {
  std::vector<double> v;
  for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c) v.push_back(SP().Raw(row, c));
  return v;
}

TEST(ResistanceDriverTest, ExampleShipAt25KnotsComesCloseToThePublishedResistance) {
  EnterExampleShip({25.0});
  Predict();
  // Holtrop & Mennen (1982), example at 25 kn: RF 869.63 kN x (1+k1) 1.156, RAPP 8.83 kN,
  // RW 557.11 kN, RB 0.049 kN, RTR 0.00 kN, RA 221.98 kN, total 1793.26 kN. This program
  // takes the wave part through a 20 ft model and a correlation allowance of its own, so the
  // total is expected within a few percent only; holtrop_paper_test.cpp explains each term.
  EXPECT_NEAR(SP().DragTotal(0, kKN), 1793.4, 0.05 * 1793.4);
  EXPECT_NEAR(SP().DragAppendages(0, kKN), 8.83, 0.2 * 8.83);
  EXPECT_NEAR(SP().CoefDragBareHullFriction(0), 0.001390, 0.000005);  // 0.075 / (log10 Rn - 2)^2
  EXPECT_EQ(SP().DragBareHullSpeedCheck(0), 1);
}

TEST(ResistanceDriverTest, ColumnsObeyTheirDefiningIdentitiesAtEverySpeed) {
  EnterExampleShip({5.0, 10.0, 15.0, 20.0, 25.0, 30.0});
  P().Resistance->MarginDragEnabled(1);
  P().Resistance->MarginDragPercentage(10.0);
  Predict();
  const double L = P().Hull->LengthWL(kFt), S = P().Hull->WettedSurface(kFt2);
  const double rho = P().WaterProperties->Density(kSlugPerFt3);
  for (int row = 0; row < SP().count(); ++row) {
    SCOPED_TRACE(row);
    const double V = SP().Speed(row, kFtPerSec);
    EXPECT_NEAR(SP().CoefFroudeLength(row), V / std::sqrt(32.174 * L), 1e-12);
    const double ct = SP().CoefDragBareHull(row);
    EXPECT_NEAR(ct,
                SP().CoefDragBareHullResiduary(row) + SP().CoefDragBareHullRoughness(row) +
                    SP().CoefDragBareHullCorrAllowance(row) + SP().CoefDragBareHullViscous(row),
                1e-15);
    const double bare = SP().DragBareHull(row, kLbf);
    EXPECT_NEAR(bare, 0.5 * rho * S * V * V * ct, 1e-8 * bare);
    EXPECT_NEAR(SP().DragMargin(row, kCurrent), 0.1 * SP().DragBareHull(row, kCurrent), 1e-9);
    EXPECT_DOUBLE_EQ(SP().DragTotal(row, kCurrent),
                     SP().DragBareHull(row, kCurrent) + SP().DragAppendages(row, kCurrent) +
                         SP().DragWind(row, kCurrent) + SP().DragSeas(row, kCurrent) +
                         SP().DragChannel(row, kCurrent) + SP().DragMargin(row, kCurrent));
    // Effective power in horsepower: drag in pounds force times speed in ft/s over 550.
    const double pe = SP().PowerEffectiveTotal(row, kHp);
    EXPECT_NEAR(pe, SP().DragTotal(row, kLbf) * V / 550.0, 1e-9 * pe);
    const double peBare = SP().PowerEffectiveBareHull(row, kHp);
    EXPECT_NEAR(peBare, bare * V / 550.0, 1e-9 * peBare);
    EXPECT_NEAR(SP().CoefDragBareHullWeightRatio(row),
                SP().DragBareHullIndividual(row, kN) / (37500.0 * 1026.0 * 9.80665), 1e-12);
    EXPECT_NEAR(SP().CoefDragBareHullTelfer(row) / ct, 0.5 * S * L / P().Hull->DisplacementVolume(kFt), 1e-9);
  }
}

TEST(ResistanceDriverTest, FailuresStopTheLoopWithTheirWordsAndKeepLaterRows) {
  struct Case {
    const char* name;
    void (*spoil)();
    const char* cause;  // "" for a failure without a message
    int rowsComputed;   // rows of the three that the run filled before it stopped
  };
  const Case cases[] = {
      {"hull length", [] { P().Hull->LengthWL(kCurrent, 0.0); }, "Length on waterline", 0},
      {"water",
       [] {
         P().WaterProperties->WaterDefinitionIndex(3);  // custom water without a density
         P().WaterProperties->Density(kCurrent, 0.0);
       },
       "Water density", 0},
      {"third speed", [] { SP().Speed(2, kCurrent, 0.0); }, "Speed", 2},
      {"hull type", [] { P().ITTC78->HullHydrodynamicType(0); }, "Hydrodynamic hull type is undefined", 0},
      {"planing route", [] { P().ITTC78->HullHydrodynamicType(2); }, "", 0},
      {"hull method", [] { P().Resistance->HullDragMethod(5); },
       "Hull drag method not available: Delft Series (1)", 0},
      {"appendage method", [] { P().Resistance->AppendageDragMethod(6); },
       "Appendage drag method not available: Kirkman (Component)", 0},
      {"empty reference ship", [] { P().Resistance->HullDragTechnique(1); }, "Length on waterline", 0},
      // A length unit whose factor is 0 makes the conversion fault; the guard reports it.
      {"unit fault",
       [] {
         P().Units->SetCustomData(UnitFamily::Length, "bad", 0.0);
         P().Units->LengthIndex(4);
       },
       "Run-time error: Division by zero", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EnterExampleShip({10.0, 15.0, 20.0});
    for (int row = 0; row < 3; ++row) SP().DragTotal(row, kCurrent, -7.0);  // stale results
    c.spoil();
    EXPECT_FALSE(CalcResistancePrediction());
    EXPECT_EQ(CalcErrorsPending(), *c.cause != '\0');
    EXPECT_NE(GetCalcErrorText().find(c.cause), std::string::npos) << GetCalcErrorText();
    for (int row = 0; row < 3; ++row) {
      const double total = SP().Raw(row, FieldId(F::DragTotal));
      EXPECT_EQ(total > 0.0 ? 1 : total == -7.0 ? 0 : -1, row < c.rowsComputed ? 1 : 0) << row;
    }
  }
}

TEST(ResistanceDriverTest, QuietCasesRunThrough) {
  EnterExampleShip({});  // an empty table runs without a message
  EXPECT_TRUE(CalcResistancePrediction());
  EXPECT_FALSE(CalcErrorsPending());
  // A missing form factor is set to 1 in the project.
  EnterExampleShip();
  P().ITTC78->HullFormFactor(0.0);
  Predict();
  EXPECT_EQ(P().ITTC78->HullFormFactor(), 1.0);
  // The appendages read the shaft count of the hull; no shafts must not stop the hull method
  // at the next speed.
  EnterExampleShip({15.0, 20.0, 25.0});
  P().Hull->PropulsorCountPerHull(0);
  Predict();
  for (int row = 0; row < 3; ++row) EXPECT_GT(SP().DragAppendages(row, kCurrent), 0.0) << row;
}

TEST(ResistanceDriverTest, HullAndAppendageDragStates) {
  EnterExampleShip({18.0});
  Predict();
  const double calcTotal = SP().DragTotal(0, kCurrent), appendages = SP().DragAppendages(0, kCurrent);

  // Lock: CR and the bare-hull drag stay as they stand; the total is summed anew.
  P().Resistance->HullDragEnabled(2);
  SP().CoefDragBareHullResiduary(0, 0.0123);
  SP().DragBareHull(0, kCurrent, 1000.0);
  Predict();
  EXPECT_EQ(SP().CoefDragBareHullResiduary(0), 0.0123);
  EXPECT_DOUBLE_EQ(SP().DragTotal(0, kCurrent), 1000.0 + appendages);

  // Off: the bare-hull columns are 0 and the speed counts as inside the method's range.
  P().Resistance->HullDragEnabled(0);
  SP().DragBareHullSpeedCheck(0, 2);
  Predict();
  for (F f : {F::CoefDragBareHullResiduary, F::DragBareHull, F::CoefDragBareHullResiduaryAlignmentMultiplier})
    EXPECT_EQ(SP().Raw(0, FieldId(f)), 0.0) << SP().Column(FieldId(f)).name;
  EXPECT_EQ(SP().DragBareHullSpeedCheck(0), 1);

  // Appendages Off give 0; Lock and Enter keep the column.
  for (int enabled : {0, 2, 3}) {
    P().Resistance->AppendageDragEnabled(enabled);
    SP().DragAppendages(0, kCurrent, 5.0);
    Predict();
    EXPECT_EQ(SP().DragTotal(0, kCurrent), enabled == 0 ? 0.0 : 5.0) << enabled;
  }

  // Calc again gives the first result.
  P().Resistance->HullDragEnabled(1);
  P().Resistance->AppendageDragEnabled(1);
  Predict();
  EXPECT_DOUBLE_EQ(SP().DragTotal(0, kCurrent), calcTotal);
}

TEST(ResistanceDriverTest, TwinHullDoublesTheHullAndAppendageDragsButNotTheSingleHull) {
  EnterExampleShip({12.0, 22.0});
  Predict();
  const std::vector<double> mono[] = {RowOf(0), RowOf(1)};
  P().Hull->HullConfigType(1);
  P().Hull->DemihullSpacing(kM, 60.0);                      // the interference reads S/L
  P().Resistance->HullDragCatamaranInterferenceEnabled(1);  // no interference formula: factor 1
  Predict();
  for (int row : {0, 1}) {
    auto at = [&](F f) { return mono[row][static_cast<size_t>(FieldId(f))]; };
    auto now = [&](F f) { return SP().Raw(row, FieldId(f)); };
    EXPECT_DOUBLE_EQ(now(F::DragBareHullIndividual), at(F::DragBareHullIndividual));
    EXPECT_DOUBLE_EQ(now(F::CoefDragBareHull), at(F::CoefDragBareHull));
    for (F f : {F::DragBareHull, F::DragAppendages}) EXPECT_NEAR(now(f), 2.0 * at(f), 1e-9 * at(f));
  }
}

TEST(ResistanceDriverTest, FormFactorCountsAsOneWithoutTheExpansion) {
  // Each of these runs with a form factor of 1 at both scales.
  const std::pair<int, double> cases[] = {{0, 1.156}, {0, 1.4}, {1, 1.0}};
  std::vector<double> reference;
  for (const auto& [expansion, k1] : cases) {
    SCOPED_TRACE(::testing::Message() << expansion << " " << k1);
    EnterExampleShip({16.0});
    P().Resistance->HullDragITTC78ExpansionEnabled(expansion);
    P().ITTC78->HullFormFactor(k1);
    Predict();
    EXPECT_DOUBLE_EQ(SP().CoefDragBareHullViscous(0), SP().CoefDragBareHullFriction(0));
    if (reference.empty()) reference = RowOf(0);
    EXPECT_EQ(RowOf(0), reference);
  }
  // With the expansion on, 1+k scales the friction at ship scale.
  EnterExampleShip({16.0});
  Predict();
  EXPECT_NEAR(SP().CoefDragBareHullViscous(0), 1.156 * SP().CoefDragBareHullFriction(0), 1e-15);
}

TEST(ResistanceDriverTest, ModelResiduaryCoefficientNeverFallsBelowOneMillionth) {
  EnterExampleShip();
  ModelSet& p = P();
  double ct = 0.0, cr = 0.0, ct2 = 0.0, cr2 = 0.0;
  int check = -1;
  // A large ship form factor takes more viscous drag off the model than the model has.
  p.ITTC78->HullFormFactor(3.0);
  ASSERT_TRUE(CalcModelCtCr(ct, cr, check, 0.15, *p.Hull, *p.ITTC78, *p.Resistance, 1.0, 1.0));
  EXPECT_EQ(cr, 1e-6);
  EXPECT_EQ(check, 1);
  // A multiplier of 0 counts as 1; a residuary above the floor is scaled by the multiplier.
  p.ITTC78->HullFormFactor(1.156);
  ASSERT_TRUE(CalcModelCtCr(ct, cr, check, 0.25, *p.Hull, *p.ITTC78, *p.Resistance, 0.0, -1.0));
  ASSERT_TRUE(CalcModelCtCr(ct2, cr2, check, 0.25, *p.Hull, *p.ITTC78, *p.Resistance, 2.0, 1.0));
  EXPECT_GT(cr, 1e-6);
  EXPECT_DOUBLE_EQ(cr2, 2.0 * cr);
  EXPECT_EQ(ct, ct2);
}

TEST(ResistanceDriverTest, RoughnessAllowanceOnlyAboveTheStandardRoughness) {
  struct Case {
    int enabled;
    double mm;
    bool positive;  // else 0
  };
  for (const Case& c : {Case{1, 0.0, false}, Case{1, 0.15, false}, Case{1, 0.3, true}, Case{0, 0.3, false}}) {
    SCOPED_TRACE(::testing::Message() << c.enabled << " " << c.mm);
    EnterExampleShip({20.0});
    P().Resistance->HullDragRoughnessEnabled(c.enabled);
    P().ITTC78->HullRoughnessMM(c.mm);
    Predict();
    const double dcf = SP().CoefDragBareHullRoughness(0);
    EXPECT_TRUE(c.positive ? dcf > 1e-5 : std::fabs(dcf) < 1e-18) << dcf;
  }
}

TEST(ResistanceDriverTest, AddedDragAndMarginFollowTheirEnabledStates) {
  struct Case {
    int enabled, basis;
    bool kept;      // Lock and Enter keep the columns
    bool hullOnly;  // Calc on the hull drag alone
  };
  const Case cases[] = {{0, 0, false, false}, {0, 1, false, false}, {1, 0, false, true},
                        {1, 1, false, false}, {2, 0, true, false},  {3, 1, true, false}};
  const F added[] = {F::DragWind, F::DragSeas, F::DragChannel, F::DragMargin};
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << "enabled " << c.enabled << " basis " << c.basis);
    EnterExampleShip({20.0});
    clsVXResistance& r = *P().Resistance;
    r.WindDragEnabled(c.enabled), r.SeasDragEnabled(c.enabled), r.ChannelDragEnabled(c.enabled);
    r.MarginDragEnabled(c.enabled), r.MarginDragBasis(c.basis), r.MarginDragPercentage(8.0);
    for (int i = 0; i < 4; ++i) SP().Write(0, FieldId(added[i]), kCurrent, 11.0 * (i + 1));
    Predict();
    const double bare = SP().DragBareHull(0, kCurrent), app = SP().DragAppendages(0, kCurrent);
    double sum = bare + app;
    for (int i = 0; i < 3; ++i) {
      const double v = SP().Read(0, FieldId(added[i]), kCurrent);
      EXPECT_EQ(v, c.kept ? 11.0 * (i + 1) : 0.0) << i;
      sum += v;
    }
    double margin = 0.0;
    if (c.kept)
      margin = 44.0;
    else if (c.enabled == 1)
      margin = 0.08 * (c.hullOnly ? bare : sum);
    EXPECT_NEAR(SP().DragMargin(0, kCurrent), margin, 1e-9 * bare);
    EXPECT_NEAR(SP().DragTotal(0, kCurrent), sum + margin, 1e-9 * bare);
  }
}

TEST(ResistanceDriverTest, AlignedPredictionWithoutAlignmentEqualsThePrediction) {
  EnterExampleShip({20.0});
  Predict();
  const std::vector<double> plain = RowOf(0);
  // The reference ship only needs a complete hull; its data do not change the numbers.
  clsVXHull& ref = *App().RefShipResistance.Hull;
  ref.Displacement(kKg, 1000.0);
  ref.LengthWL(kFt, 20.0);
  ref.WettedSurface(kFt2, 60.0);
  P().Resistance->HullDragTechnique(1);
  Predict();
  EXPECT_EQ(SP().CoefDragBareHullResiduaryAlignmentMultiplier(0), 1.0);
  EXPECT_EQ(SP().CoefDragBareHullResiduary(0), plain[FieldId(F::CoefDragBareHullResiduary)]);
  EXPECT_EQ(SP().DragTotal(0, kCurrent), plain[FieldId(F::DragTotal)]);
  // Defined: the residuary coefficient in the table is taken as it stands.
  P().Resistance->HullDragTechnique(3);
  SP().CoefDragBareHullResiduary(0, 0.002);
  Predict();
  EXPECT_NEAR(SP().CoefDragBareHull(0),
              0.002 + SP().CoefDragBareHullViscous(0) + SP().CoefDragBareHullCorrAllowance(0) +
                  SP().CoefDragBareHullRoughness(0),
              1e-15);
}

}  // namespace
}  // namespace velmar
