#include "core/speed_performance.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "vessel/speed_entry.h"
#include "core/ui_hooks.h"
#include "vessel/hull.h"

namespace velmar {
namespace {

class SpeedPerformanceTest : public ::testing::Test {
 protected:
  static int Col(const char* name) { return clsVXSpeedPerformance::ColumnIndex(name); }

  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  clsVXSpeedPerformance sp{units, water};
  clsVXHull hull{units, water};  // for the speeds from the entry cells
};

TEST_F(SpeedPerformanceTest, RowsResizeKeepingWhatRemainsAndRowMinusOneIsTheCurrentRow) {
  sp.count(5);
  for (int row = 0; row < 5; ++row) sp.DragTotal(row, kCurrent, 10.0 + row);
  sp.count(3);
  sp.count(5);
  EXPECT_EQ(sp.DragTotal(2, kCurrent), 12.0);
  EXPECT_EQ(sp.DragTotal(3, kCurrent), 0.0);  // a row cut off comes back empty
  sp.SpeedIndex(2);
  sp.Speed(-1, kCurrent, 14.0);
  EXPECT_EQ(sp.Speed(2, kCurrent), 14.0);
  for (int row : {5, -2}) EXPECT_THROW(sp.Speed(row, kCurrent, 1.0), std::out_of_range) << row;
  sp.count(-1);
  EXPECT_THROW(sp.Raw(0, 0), std::out_of_range);
}

TEST_F(SpeedPerformanceTest, EveryColumnIsFoundByItsExactName) {
  const auto columns = clsVXSpeedPerformance::Columns();
  for (size_t i = 0; i < columns.size(); ++i) {
    const std::string name = columns[i].name;
    int first = 0;
    while (name != columns[static_cast<size_t>(first)].name) ++first;
    EXPECT_EQ(Col(name.c_str()), first) << name;
    EXPECT_EQ(Col((name + "x").c_str()), -1) << name;
  }
  for (const char* other : {"", "speed", "SPEED", "Speed "}) EXPECT_EQ(Col(other), -1) << other;
}

TEST_F(SpeedPerformanceTest, FormattedTextsWithDashesAndMarks) {
  using Others = std::vector<std::pair<const char*, double>>;  // further columns of the row
  const Others breakdown = {{"PropellerBreakdownCheck", 1}, {"PercentCavAverageCheck", 2}};
  const Others keel12 = {{"LengthWettedMean", 10}, {"LengthWettedKeel", 12}};
  struct Case {
    const char* column;
    double value;
    Others others;
    bool showMarks;
    const char* expected;
  };
  const Case cases[] = {
      {"PercentCavAverage", 1.9, breakdown, true, "---"},  // the dash wins over any mark
      {"PercentCavAverage", 2.0, {}, true, "2.0"},
      {"PercentCavAverage", 12.34, {{"PercentCavAverageCheck", 2}}, true, "12.3 !!"},
      {"PercentCavAverage", 12.34, {{"PercentCavAverageCheck", 1}}, true, "12.3 !"},
      {"PercentCavAverage", 12.34, breakdown, true, "12.3 !!!"},
      {"TransportFactor", 1000.0, {}, true, "1000.0"},
      {"TransportFactor", 1000.1, {}, false, "---"},
      // Keel/chine ratio above 1, or a negative chine length 2 Lm - Lk.
      {"CoefPlaningLkeelLpRatio", 1.2, keel12, true, "1.200 !"},
      {"CoefPlaningLkeelLpRatio", 1.2, keel12, false, "1.200"},
      {"CoefPlaningLkeelLpRatio", 1.0, {{"LengthWettedMean", 10}, {"LengthWettedKeel", 20}}, true, "1.000"},
      {"CPMeanPitch", 1.0, {{"MinPitchFaceCavCheck", 2}}, true, "1.000"},  // no rule: marks ignored
      {"TipSpeed", 123.44, {{"TipSpeedCheck", 2}}, true, "123.4 !!"},      // the family's format, marked
  };
  units->PropLengthFormat("0.000");
  units->TipSpeedFormat("0.0");
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.column) + " " + std::to_string(c.value));
    sp.count(0);
    sp.count(1);
    sp.SetRaw(0, Col(c.column), c.value);
    for (const auto& [name, v] : c.others) sp.SetRaw(0, Col(name), v);
    EXPECT_EQ(sp.FormattedOf(0, Col(c.column), c.showMarks), c.expected);
  }
}

TEST_F(SpeedPerformanceTest, ConvertAllDataConvertsTheQuantityColumnsOfEveryRow) {
  sp.count(2);
  for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c) sp.SetRaw(0, c, 1.0), sp.SetRaw(1, c, 1.0);
  const clsVXUnits old = *units;
  for (UnitFamily f : AllUnitFamilies()) units->SetIndex(f, 1);
  sp.ConvertAllData(*units, old);
  for (const char* name : {"Speed", "PowerBrakeTotal", "PropulsorTorque"})
    EXPECT_NE(sp.Raw(1, Col(name)), 1.0) << name;
  EXPECT_EQ(sp.Raw(1, Col("CoefFroudeLength")), 1.0);
  EXPECT_NEAR(sp.DragTotal(1, kCurrent), 4.4482216, 1e-6);  // 1 lbf in N
}

TEST_F(SpeedPerformanceTest, TipSpeedConvertsByTheSpeedUnitNotItsOwn) {
  sp.count(1);
  sp.TipSpeed(0, kCurrent, 100.0);
  const clsVXUnits old = *units;
  units->TipSpeedIndex(kTipMPerSec);
  units->SpeedIndex(kMPerSec);
  sp.ConvertAllData(*units, old);
  EXPECT_NEAR(sp.TipSpeed(0, kCurrent), 100.0 * 1852.0 / 3600.0, 1e-9);  // knots to m/s
}

TEST_F(SpeedPerformanceTest, CopyClassCopiesRowsAndIndices) {
  sp.count(2);
  sp.DesignSpeedIndex(1);
  sp.DragTotal(1, kCurrent, 5.0);
  const auto copy = sp.CopyClass();
  sp.DragTotal(1, kCurrent, 6.0);
  EXPECT_EQ(copy->DesignSpeedIndex(), 1);
  EXPECT_EQ(copy->DragTotal(1, kCurrent), 5.0);
  EXPECT_EQ(copy->Units(), units);
}

// ---- Speeds from the entry cells ------------------------------------------------------------

TEST_F(SpeedPerformanceTest, NonZeroEntryCellsBecomeSortedRowsKeepingOtherColumns) {
  sp.count(5);
  for (int row = 0; row < 5; ++row) sp.DragTotal(row, kCurrent, 100.0 + row);
  SetSpeedsFromEntry(sp, hull, {12.0, 0.0, 8.0, 0.0, 20.0, 0.0, 0.0, 0.0, 0.0, 15.5}, false);
  ASSERT_EQ(sp.count(), 4);
  for (int row = 0; row < 4; ++row)
    EXPECT_EQ(sp.Speed(row, kCurrent), (std::vector{8.0, 12.0, 15.5, 20.0}[row]));
  EXPECT_EQ(sp.DragTotal(3, kCurrent), 103.0);
  SetSpeedsFromEntry(sp, hull, {}, false);
  EXPECT_EQ(sp.count(), 0);
}

TEST_F(SpeedPerformanceTest, EntrySpeedsAbove100KnotsAreDroppedWithAWarning) {
  // 60 m/s is 116.6 kt: the limit is in knots whatever the display unit.
  for (const auto& [unit, cell, shown] : std::vector<std::tuple<int, double, const char*>>{
           {kKt, 100.0, nullptr},
           {kKt, 120.0, "Speed [120] exceeds allowable range."},
           {kMPerSec, 60.0, "Speed [60] exceeds allowable range."}}) {
    DefaultHeadlessHooks().messages.clear();
    units->SpeedIndex(unit);
    SetSpeedsFromEntry(sp, hull, {10.0, cell}, false);
    EXPECT_EQ(sp.count(), shown ? 1 : 2) << cell;
    ASSERT_EQ(DefaultHeadlessHooks().messages.size(), shown ? 1u : 0u) << cell;
    for (const auto& m : DefaultHeadlessHooks().messages) EXPECT_NE(m.text.find(shown), std::string::npos);
  }
}

TEST_F(SpeedPerformanceTest, FroudeEntriesByLengthOrByVolume) {
  hull.LengthWL(kFt, 100.0);
  hull.Displacement(kLT, 100.0);
  water->Density(kSlugPerFt3, 1.9905);
  units->SpeedIndex(kMPerSec);
  // FN sqrt(g LWL) for data sets other than 2, FV sqrt(g V^(1/3)) with V = 100 LT x 2240 / (g rho).
  for (const auto& [dataSet, froude, knots] :
       std::vector<std::tuple<int, double, double>>{{1, 0.6, 20.1641658}, {2, 1.0, 13.0936003}}) {
    hull.HullHydrodynamicDataSet(dataSet);
    SetSpeedsFromEntry(sp, hull, {froude}, true);
    ASSERT_EQ(sp.count(), 1);
    EXPECT_NEAR(sp.Speed(0, kKt), knots, 1e-6) << dataSet;
  }
}

}  // namespace
}  // namespace velmar
