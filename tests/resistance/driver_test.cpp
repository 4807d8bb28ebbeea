// The resistance prediction driver on the Holtrop & Mennen (1982) example ship: the sums and
// identities of the drag and power columns, the Off/Calc/Lock/Enter states of each column,
// the ITTC-78 expansion switches and the failures that stop the speed loop.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "app/application.h"
#include "core/diagnostics.h"
#include "example_ship.h"
#include "resistance/channel_drag.h"
#include "resistance/resistance_driver.h"
#include "resistance/seas_drag.h"
#include "resistance/wind_drag.h"

namespace velmar {
namespace {

using testing::EnterExampleShip;
using F = clsVXSpeedPerformance::Field;

ModelSet& P() { return App().primary; }
clsVXResistance& Res() { return *App().primary.Resistance; }
clsVXSpeedPerformance& SP() { return *App().primary.SpeedPerformance; }

// A run that must succeed; a failure shows the cause text as the Calculate command composes it.
void Predict() { EXPECT_TRUE(CalcResistancePrediction()) << testing::CalcCause(); }

// Every column of a row, for comparing two runs.
std::vector<double> RowOf(int row) {
  std::vector<double> v;
  for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c) v.push_back(SP().Raw(row, c));
  return v;
}

// The appendages read the shaft count of the hull: no shafts must not stop the hull method at
// the next speed. The standard roughness gives no roughness allowance, a rougher hull one.
TEST(ResistanceDriverTest, ColumnsObeyTheirDefiningIdentitiesAtEverySpeed) {
  EnterExampleShip({5.0, 10.0, 15.0, 20.0, 25.0, 30.0});
  P().Hull->PropulsorCountPerHull(0);
  Res().HullDragRoughnessEnabled(1);
  Predict();
  const double S = P().Hull->WettedSurface(kFt2), rho = P().WaterProperties->Density(kSlugPerFt3);
  for (int row = 0; row < SP().count(); ++row) {
    SCOPED_TRACE(row);
    const double V = SP().Speed(row, kFtPerSec), ct = SP().CoefDragBareHull(row);
    EXPECT_NEAR(ct,
                SP().CoefDragBareHullResiduary(row) + SP().CoefDragBareHullRoughness(row) +
                    SP().CoefDragBareHullCorrAllowance(row) + SP().CoefDragBareHullViscous(row),
                1e-15);
    // With the ITTC-78 expansion on, 1+k scales the friction at ship scale.
    EXPECT_NEAR(SP().CoefDragBareHullViscous(row), 1.156 * SP().CoefDragBareHullFriction(row), 1e-15);
    const double bare = SP().DragBareHull(row, kLbf);
    EXPECT_NEAR(bare, 0.5 * rho * S * V * V * ct, 1e-8 * bare);
    // Effective power in horsepower: drag in pounds force times speed in ft/s over 550.
    const double pe = SP().PowerEffectiveTotal(row, kHp);
    EXPECT_NEAR(pe, SP().DragTotal(row, kLbf) * V / 550.0, 1e-9 * pe);
    EXPECT_GT(SP().DragAppendages(row, kCurrent), 0.0);
    EXPECT_LT(std::fabs(SP().CoefDragBareHullRoughness(row)), 1e-18);
  }
  P().ITTC78->HullRoughnessMM(0.3);
  Predict();
  EXPECT_GT(SP().CoefDragBareHullRoughness(0), 1e-5);
}

// Each case spoils the example ship; `cause` is "" for a failure without a message, and
// `rowsComputed` counts the rows of the three that the run filled before it stopped.
TEST(ResistanceDriverTest, FailuresStopTheLoopWithTheirWordsAndKeepLaterRows) {
  auto fails = [](void (*spoil)(), const std::string& cause, int rowsComputed) {
    SCOPED_TRACE(cause);
    EnterExampleShip({10.0, 15.0, 20.0});
    for (int row = 0; row < 3; ++row) SP().DragTotal(row, kCurrent, -7.0);  // stale results
    spoil();
    EXPECT_FALSE(CalcResistancePrediction());
    EXPECT_EQ(CalcErrorsPending(), !cause.empty());
    EXPECT_NE(GetCalcErrorText().find(cause), std::string::npos) << GetCalcErrorText();
    for (int row = 0; row < 3; ++row) {
      const double total = SP().Raw(row, FieldId(F::DragTotal));
      EXPECT_EQ(total > 0.0 ? 1 : total == -7.0 ? 0 : -1, row < rowsComputed ? 1 : 0) << row;
    }
  };
  fails([] { P().Hull->LengthWL(kCurrent, 0.0); }, "Length on waterline", 0);
  // Several missing items: their words, and those of the coefficients they spoil, in the order
  // the method reads them.
  fails([] { P().Hull->AreaWaterplane(kCurrent, 0.0), P().Hull->XBuoyancyFwdTr(kCurrent, 0.0); },
        "XCB fwd transom\r\n\tWaterplane area\r\n\tCWP\r\n", 0);
  fails([] { SP().Speed(2, kCurrent, 0.0); }, "Speed", 2);
  fails([] { P().ITTC78->HullHydrodynamicType(0); }, "Hydrodynamic hull type is undefined", 0);
  fails([] { P().ITTC78->HullHydrodynamicType(2); },
        "Hull drag method not available for the Planing scope: Holtrop", 0);
  fails([] { Res().HullDragMethod(21); }, "Hull drag method not available: Simple Ship", 0);
  fails([] { Res().HullDragTechnique(1); }, "Length on waterline", 0);  // an empty reference ship
  // The appendage step reads the shaft angle from the hull: its word, pushed at the first row,
  // stops the hull method at the next one.
  fails([] { P().Hull->AngleShaftDeg(50.0); }, "Shaft angle", 1);
  // A length unit whose factor is 0 makes the conversion fault; the guard reports it.
  fails([] { P().Units->SetCustomData(UnitFamily::Length, "bad", 0.0), P().Units->LengthIndex(4); },
        "Run-time error: Division by zero", 0);
}

// A run reads the hull and the appendages once, at its first row: each row of a run equals,
// bit for bit, the row of a run of that speed alone (below Fn 0.04, on the hump spline, above).
TEST(ResistanceDriverTest, RowsOfARunEqualRunsOfOneSpeed) {
  const std::vector<double> speeds{1.0, 15.0, 25.0, 40.0, 55.0};
  EnterExampleShip(speeds);
  Predict();
  std::vector<std::vector<double>> rows;
  for (int row = 0; row < SP().count(); ++row) rows.push_back(RowOf(row));
  for (size_t i = 0; i < speeds.size(); ++i) {
    EnterExampleShip({speeds[i]});
    Predict();
    EXPECT_EQ(RowOf(0), rows[i]) << speeds[i] << " kt";
  }
}

TEST(ResistanceDriverTest, HullDragTechniquesStatesAndTwinHull) {
  EnterExampleShip({18.0});
  Predict();
  const std::vector<double> plain = RowOf(0);
  // Aligned prediction: the reference ship only needs a complete hull; no alignment is
  // defined, so its multiplier is 1 and the row is the plain prediction's.
  clsVXHull& ref = *App().RefShipResistance.Hull;
  ref.Displacement(kKg, 1000.0), ref.LengthWL(kFt, 20.0), ref.WettedSurface(kFt2, 60.0);
  Res().HullDragTechnique(1);
  Predict();
  EXPECT_EQ(SP().CoefDragBareHullResiduaryAlignmentMultiplier(0), 1.0);
  SP().CoefDragBareHullResiduaryAlignmentMultiplier(0, 0.0);
  EXPECT_EQ(RowOf(0), plain);

  // Twin hull: the hull and appendage drags double, the single hull's drag and CT do not. The
  // interference reads S/L; no interference formula is part of the program: factor 1.
  P().Hull->HullConfigType(1), P().Hull->DemihullSpacing(kM, 60.0);
  Res().HullDragCatamaranInterferenceEnabled(1);
  Predict();
  for (F f : {F::DragBareHullIndividual, F::CoefDragBareHull, F::DragBareHull, F::DragAppendages}) {
    const double hulls = f == F::DragBareHull || f == F::DragAppendages ? 2.0 : 1.0;
    EXPECT_DOUBLE_EQ(SP().Raw(0, FieldId(f)), hulls * plain[FieldId(f)]) << SP().Column(FieldId(f)).name;
  }
  P().Hull->HullConfigType(0);

  // Lock: CR and the bare-hull drag stay as they stand; the total is summed anew.
  Res().HullDragEnabled(2), SP().CoefDragBareHullResiduary(0, 0.0123), SP().DragBareHull(0, kCurrent, 1000.0);
  Predict();
  EXPECT_EQ(SP().CoefDragBareHullResiduary(0), 0.0123);
  EXPECT_DOUBLE_EQ(SP().DragTotal(0, kCurrent), 1000.0 + plain[FieldId(F::DragAppendages)]);

  // Off: the bare-hull columns are 0 and the speed counts as inside the method's range.
  Res().HullDragEnabled(0), SP().DragBareHullSpeedCheck(0, 2);
  Predict();
  for (F f : {F::CoefDragBareHullResiduary, F::DragBareHull, F::CoefDragBareHullResiduaryAlignmentMultiplier})
    EXPECT_EQ(SP().Raw(0, FieldId(f)), 0.0) << SP().Column(FieldId(f)).name;
  EXPECT_EQ(SP().DragBareHullSpeedCheck(0), 1);
}

// Each of these runs with a form factor of 1 at both scales and no roughness allowance, so
// all give the same row: the expansion off, a form factor of 1, roughness off, no roughness
// given, and a missing form factor, which is set to 1 in the project.
TEST(ResistanceDriverTest, FormFactorAndRoughnessSwitchesThatLeaveTheRow) {
  std::vector<double> reference;
  for (const auto& [expansion, k1, rough, mm] :
       {std::tuple{0, 1.4, 0, 0.3}, {1, 1.0, 0, 0.3}, {1, 1.0, 1, 0.0}, {1, 0.0, 0, 0.3}}) {
    EnterExampleShip({16.0});
    Res().HullDragITTC78ExpansionEnabled(expansion), P().ITTC78->HullFormFactor(k1);
    Res().HullDragRoughnessEnabled(rough), P().ITTC78->HullRoughnessMM(mm);
    Predict();
    if (reference.empty()) reference = RowOf(0);
    EXPECT_EQ(RowOf(0), reference) << expansion << " " << k1 << " " << rough << " " << mm;
  }
  EXPECT_EQ(P().ITTC78->HullFormFactor(), 1.0);
}

TEST(ResistanceDriverTest, ModelResiduaryCoefficientNeverFallsBelowOneMillionth) {
  EnterExampleShip();
  ModelSet& p = P();
  auto cr = [&p](double fn, double crMult, double kMult) {
    double ct = 0.0, crModel = 0.0;
    int check = -1;
    EXPECT_TRUE(CalcModelCtCr(ct, crModel, check, fn, *p.Hull, *p.ITTC78, *p.Resistance, crMult, kMult));
    return crModel;
  };
  // A large ship form factor takes more viscous drag off the model than the model has.
  p.ITTC78->HullFormFactor(3.0);
  EXPECT_EQ(cr(0.15, 1.0, 1.0), 1e-6);
  // Multipliers of 0 or less count as 1; a residuary above the floor is scaled by its multiplier.
  p.ITTC78->HullFormFactor(1.156);
  EXPECT_GT(cr(0.25, 0.0, -1.0), 1e-6);
  EXPECT_DOUBLE_EQ(cr(0.25, 2.0, 1.0), 2.0 * cr(0.25, 0.0, -1.0));
}

// Off (0) gives 0, Calc (1) computes (calm air, no waves and deep water: 0), Lock (2) and
// Enter (3) keep the column; a Calc margin of basis 0 is on the hull drag alone.
TEST(ResistanceDriverTest, AppendageAddedDragAndMarginFollowTheirEnabledStates) {
  const F added[] = {F::DragWind, F::DragSeas, F::DragChannel, F::DragMargin};
  for (const auto& [enabled, basis] : {std::pair{0, 1}, {1, 0}, {1, 1}, {2, 0}, {3, 1}}) {
    SCOPED_TRACE(::testing::Message() << "enabled " << enabled << " basis " << basis);
    EnterExampleShip({20.0});
    Res().WindDragEnabled(enabled), Res().SeasDragEnabled(enabled), Res().ChannelDragEnabled(enabled);
    Res().WindDragMethod(kWindITTCDataSet), Res().SeasDragMethod(kSeasKwon), Res().ChannelDragMethod(kChannelLackenby);
    P().Environment->WindHullTransverseArea(kCurrent, 100.0);
    P().Environment->ShallowWaterDepth(kCurrent, 1000.0);
    Res().MarginDragEnabled(enabled), Res().MarginDragBasis(basis), Res().MarginDragPercentage(8.0);
    if (enabled != 1) Res().AppendageDragEnabled(enabled), SP().DragAppendages(0, kCurrent, 5.0);
    for (int i = 0; i < 4; ++i) SP().Write(0, FieldId(added[i]), kCurrent, 11.0 * (i + 1));
    Predict();
    const bool kept = enabled >= 2;
    const double bare = SP().DragBareHull(0, kCurrent), app = SP().DragAppendages(0, kCurrent);
    EXPECT_TRUE(enabled == 1 || app == (kept ? 5.0 : 0.0)) << app;
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(SP().Read(0, FieldId(added[i]), kCurrent), kept ? 11.0 * (i + 1) : 0.0);
    const double sum = bare + app + (kept ? 66.0 : 0.0);
    const double margin = kept ? 44.0 : enabled == 1 ? 0.08 * (basis == 0 ? bare : sum) : 0.0;
    EXPECT_NEAR(SP().DragMargin(0, kCurrent), margin, 1e-9 * bare);
    EXPECT_NEAR(SP().DragTotal(0, kCurrent), sum + margin, 1e-9 * bare);
  }
}

}  // namespace
}  // namespace velmar
