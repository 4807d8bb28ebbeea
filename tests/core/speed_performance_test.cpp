#include "core/speed_performance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/speed_entry.h"
#include "core/ui_hooks.h"
#include "vessel/hull.h"

namespace velmar {
namespace {

using Field = clsVXSpeedPerformance::Field;

class SpeedPerformanceTest : public ::testing::Test {
 protected:
  int Col(const char* name) {
    const int c = clsVXSpeedPerformance::ColumnIndex(name);
    EXPECT_GE(c, 0) << name;
    return c;
  }
  // Every column of every row set to `v`.
  void FillAll(double v) {
    for (int row = 0; row < sp.count(); ++row) {
      for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c) sp.SetRaw(row, c, v);
    }
  }
  // Names of the columns whose row-0 value is no longer `v`.
  std::set<std::string> ChangedFrom(double v) {
    std::set<std::string> changed;
    for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c) {
      if (sp.Raw(0, c) != v) changed.insert(clsVXSpeedPerformance::Column(c).name);
    }
    return changed;
  }

  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  std::shared_ptr<clsVXWaterProperties> water = std::make_shared<clsVXWaterProperties>(units);
  clsVXSpeedPerformance sp{units, water};
};

TEST_F(SpeedPerformanceTest, CountResizesKeepingTheRowsThatRemain) {
  sp.count(5);
  for (int row = 0; row < 5; ++row) sp.DragTotal(row, kCurrent, 10.0 + row);
  sp.count(3);
  sp.count(5);
  const double expected[] = {10.0, 11.0, 12.0, 0.0, 0.0};
  for (int row = 0; row < 5; ++row) EXPECT_EQ(sp.DragTotal(row, kCurrent), expected[row]) << "row " << row;

  sp.count(-1);
  EXPECT_EQ(sp.count(), -1);
  EXPECT_THROW(sp.Raw(0, 0), std::out_of_range);
}

TEST_F(SpeedPerformanceTest, RowMinusOneIsTheCurrentRowAndOthersOutsideThrow) {
  sp.count(3);
  sp.SpeedIndex(2);
  sp.Speed(-1, kCurrent, 14.0);
  sp.PropulsorRPM(-1, 300.0);
  EXPECT_EQ(sp.Speed(2, kCurrent), 14.0);
  EXPECT_EQ(sp.PropulsorRPM(2), 300.0);

  for (int row : {3, -2, 100}) {
    EXPECT_THROW(sp.Speed(row, kCurrent), std::out_of_range) << row;
    EXPECT_THROW(sp.Speed(row, kCurrent, 1.0), std::out_of_range) << row;
  }
  sp.SpeedIndex(3);
  EXPECT_THROW(sp.DragTotal(-1, kCurrent), std::out_of_range);
}

TEST_F(SpeedPerformanceTest, ReadsOfMissingSpeedAndFroudeNumbersPushTheirWords) {
  sp.count(1);
  struct Case {
    const char* column;
    const char* word;  // nullptr: no read test
  };
  const Case cases[] = {
      {"Speed", "Speed"},
      {"CoefFroudeVolume", "Froude number [VOL]"},
      {"CoefFroudeLength", "Froude number [LWL]"},
      {"DragTotal", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.column);
    sp.ClearErrorStack();
    sp.SetRaw(0, Col(c.column), 0.5);
    sp.Read(0, Col(c.column), kCurrent);
    EXPECT_FALSE(sp.ErrorsFound());
    sp.SetRaw(0, Col(c.column), 0.0);
    EXPECT_EQ(sp.Read(0, Col(c.column), kCurrent), 0.0);
    EXPECT_EQ(sp.Errors(), c.word ? std::string("\t") + c.word + "\r\n" : "");
  }
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
      {"PercentCavAverage", 1.9, {}, false, "---"},
      {"PercentCavAverage", 1.9, breakdown, true, "---"},
      {"PercentCavAverage", 2.0, {}, true, "2.0"},
      {"PercentCavAverage", 12.34, {{"PercentCavAverageCheck", 2}}, true, "12.3 !!"},
      {"PercentCavAverage", 12.34, {{"PercentCavAverageCheck", 1}}, true, "12.3 !"},
      {"PercentCavAverage", 12.34, breakdown, true, "12.3 !!!"},
      {"PercentCavAverage", 12.34, {{"NozzleBreakdownCheck", 1}}, true, "12.3"},
      {"PercentCavPeak", 1.99, {}, true, "---"},
      {"PercentCavPeak", 30.0, breakdown, true, "30.0"},
      {"RecommendedEAR", 0.5, {{"RecommendedEARCheck", 1}}, true, "0.500 !"},
      {"TransportFactor", 1000.0, {}, true, "1000.0"},
      {"TransportFactor", 1000.1, {}, false, "---"},
      {"CoefPlaningLkeelLpRatio", 1.2, keel12, true, "1.200 !"},
      {"CoefPlaningLkeelLpRatio", 1.2, keel12, false, "1.200"},
      {"CoefPlaningLkeelLpRatio", 1.0, {{"LengthWettedMean", 10}, {"LengthWettedKeel", 20}}, true, "1.000"},
      {"CPMeanPitch", 1.0, {{"MinPitchFaceCavCheck", 2}}, true, "1.000"},  // no rule: marks ignored
  };
  units->PropLengthFormat("0.000");
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.column) + " " + std::to_string(c.value));
    sp.count(0);
    sp.count(1);
    sp.SetRaw(0, Col(c.column), c.value);
    for (const auto& [name, v] : c.others) sp.SetRaw(0, Col(name), v);
    EXPECT_EQ(sp.FormattedOf(0, Col(c.column), c.showMarks), c.expected);
  }

  // Family-formatted columns take their check's mark after the family's text.
  units->TipSpeedFormat("0.0");
  units->PressureFormat("0.00");
  sp.count(1);
  sp.TipSpeed(0, kCurrent, 123.44);
  sp.TipSpeedCheck(0, 2);
  sp.MeanBladePressure(0, kCurrent, 9.5);
  sp.MeanBladePressureCheck(0, 1);
  sp.MinPitchFaceCav(0, kCurrent, 0.75);
  sp.MinPitchFaceCavCheck(0, 2);
  EXPECT_EQ(sp.TipSpeedFormatted(0, true), "123.4 !!");
  EXPECT_EQ(sp.MeanBladePressureFormatted(0, true), "9.50 !");
  EXPECT_EQ(sp.MinPitchFaceCavFormatted(-1, true), "0.750 !!");
}

TEST_F(SpeedPerformanceTest, PlaningSymbolsDeviate) {
  EXPECT_EQ(clsVXSpeedPerformance::CoefReynoldsLengthSymbolDescription(true),
            "Reynolds number [LM] by mean planing length");
  EXPECT_EQ(clsVXSpeedPerformance::CoefPropulsorJSymbol(true), "JH");
  EXPECT_EQ(clsVXSpeedPerformance::CoefPropulsorJSymbol(false), "J");
}

TEST_F(SpeedPerformanceTest, ConvertAllDataConvertsTheQuantityColumns) {
  clsVXUnits none = *units;
  units->ForceIndex(kN);
  sp.ConvertAllData(*units, none);  // no rows: nothing to do
  EXPECT_EQ(sp.count(), 0);
  EXPECT_FALSE(sp.ErrorsFound());
  *units = none;

  sp.count(2);
  FillAll(1.0);
  const clsVXUnits old = *units;
  for (UnitFamily f : AllUnitFamilies()) units->SetIndex(f, 1);
  sp.ConvertAllData(*units, old);
  // Spot checks of the families; TipSpeed follows the speed unit (below).
  const std::set<std::string> changed = ChangedFrom(1.0);
  EXPECT_EQ(changed.size(), 33u);
  for (const char* name :
       {"Speed", "TipSpeed", "DragTotal", "PowerBrakeTotal", "CPMeanPitch", "PropulsorTorque"}) {
    EXPECT_TRUE(changed.count(name)) << name;
  }
  EXPECT_FALSE(changed.count("CoefFroudeLength"));
  for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c) EXPECT_EQ(sp.Raw(1, c), sp.Raw(0, c));
  EXPECT_NEAR(sp.DragTotal(0, kCurrent), 4.4482216, 1e-6);  // 1 lbf in N
}

TEST_F(SpeedPerformanceTest, TipSpeedFollowsTheSpeedUnitNotItsOwn) {
  sp.count(1);
  sp.TipSpeed(0, kCurrent, 100.0);

  clsVXUnits old = *units;
  units->TipSpeedIndex(kTipMPerSec);
  sp.ConvertAllData(*units, old);
  EXPECT_EQ(sp.TipSpeed(0, kCurrent), 100.0);

  old = *units;
  units->SpeedIndex(kMPerSec);
  sp.ConvertAllData(*units, old);
  EXPECT_NEAR(sp.TipSpeed(0, kCurrent), 100.0 * 1852.0 / 3600.0, 1e-9);
}

TEST_F(SpeedPerformanceTest, ZeroArraysClearTheirColumnsOnly) {
  struct Case {
    void (clsVXSpeedPerformance::*zero)();
    size_t count;       // columns cleared
    const char* among;  // one of them
  };
  const Case cases[] = {
      {&clsVXSpeedPerformance::ZeroBareHullPropertiesArrays, 21, "DynamicTrimDeg"},
      {&clsVXSpeedPerformance::ZeroEnginePropertiesArrays, 2, "FuelRatePerEngine"},
  };
  for (const Case& c : cases) {
    sp.count(2);
    FillAll(7.0);
    (sp.*c.zero)();
    const std::set<std::string> cleared = ChangedFrom(7.0);
    EXPECT_EQ(cleared.size(), c.count);
    EXPECT_TRUE(cleared.count(c.among));
    EXPECT_FALSE(cleared.count("Speed"));
    for (int col = 0; col < clsVXSpeedPerformance::kColumnCount; ++col)
      EXPECT_EQ(sp.Raw(1, col), sp.Raw(0, col));
  }
}

TEST_F(SpeedPerformanceTest, CopyClassCopiesRowsAndIndices) {
  sp.count(2);
  sp.SpeedIndex(1);
  sp.DesignSpeedIndex(1);
  sp.DragTotal(1, kCurrent, 5.0);
  const auto copy = sp.CopyClass();
  sp.DragTotal(1, kCurrent, 6.0);
  EXPECT_EQ(copy->DesignSpeedIndex(), 1);
  EXPECT_EQ(copy->DragTotal(1, kCurrent), 5.0);
  EXPECT_EQ(copy->Units(), units);
}

// ---- Speeds from the entry cells ------------------------------------------------------------

class SpeedEntryTest : public SpeedPerformanceTest {
 protected:
  void SetUp() override { DefaultHeadlessHooks().messages.clear(); }
  std::vector<double> Speeds() {
    std::vector<double> v;
    for (int row = 0; row < sp.count(); ++row) v.push_back(sp.Raw(row, FieldId(Field::Speed)));
    return v;
  }
  clsVXHull hull{units, water};
};

TEST_F(SpeedEntryTest, NonZeroCellsBecomeSortedRowsKeepingOtherColumns) {
  sp.count(5);
  for (int row = 0; row < 5; ++row) {
    sp.Speed(row, kCurrent, 30.0 + row);
    sp.DragTotal(row, kCurrent, 100.0 + row);
  }
  SetSpeedsFromEntry(sp, hull, {12.0, 0.0, 8.0, 0.0, 20.0, 0.0, 0.0, 0.0, 0.0, 15.5}, false);
  EXPECT_EQ(Speeds(), (std::vector<double>{8.0, 12.0, 15.5, 20.0}));
  EXPECT_EQ(sp.DragTotal(0, kCurrent), 100.0);
  EXPECT_TRUE(DefaultHeadlessHooks().messages.empty());

  SetSpeedsFromEntry(sp, hull, {}, false);
  EXPECT_EQ(sp.count(), 0);
}

TEST_F(SpeedEntryTest, SpeedsAbove100KnotsAreDroppedWithAWarning) {
  struct Case {
    int speedUnit;
    double cell;
    bool dropped;
    const char* shown;
  };
  const Case cases[] = {
      {kKt, 100.0, false, ""},
      {kKt, 120.0, true, "Speed [120] exceeds allowable range."},
      {kMPerSec, 51.4, false, ""},  // 99.9 kt
      {kMPerSec, 60.0, true, "Speed [60] exceeds allowable range."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.cell);
    DefaultHeadlessHooks().messages.clear();
    units->SpeedIndex(c.speedUnit);
    SetSpeedsFromEntry(sp, hull, {10.0, c.cell}, false);
    EXPECT_EQ(sp.count(), c.dropped ? 1 : 2);
    ASSERT_EQ(DefaultHeadlessHooks().messages.size(), c.dropped ? 1u : 0u);
    if (c.dropped) {
      EXPECT_NE(DefaultHeadlessHooks().messages[0].text.find(c.shown), std::string::npos);
    }
  }
}

TEST_F(SpeedEntryTest, FroudeEntriesByLengthOrByVolume) {
  hull.LengthWL(kFt, 100.0);
  hull.Displacement(kLT, 100.0);
  water->Density(kSlugPerFt3, 1.9905);
  struct Case {
    int dataSet;
    double froude;
    double knots;  // FN sqrt(g LWL) or FV sqrt(g V^(1/3)), V = 100 LT x 2240 / (g rho)
  };
  const Case cases[] = {{0, 0.3, 10.0820829}, {1, 0.6, 20.1641658}, {2, 1.0, 13.0936003}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.dataSet);
    hull.HullHydrodynamicDataSet(c.dataSet);
    units->SpeedIndex(kMPerSec);
    SetSpeedsFromEntry(sp, hull, {c.froude}, true);
    ASSERT_EQ(sp.count(), 1);
    EXPECT_NEAR(sp.Speed(0, kKt), c.knots, 1e-6);
  }
}

}  // namespace
}  // namespace velmar
