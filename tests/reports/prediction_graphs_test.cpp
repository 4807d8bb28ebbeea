// Prediction graphs: the preset lists, the axis fields, the two reference efficiencies, and
// every preset of every example built after Calculate without a warning.
#include "reports/prediction_graphs.h"

#include <gtest/gtest.h>

#include "app/calculate.h"
#include "app/file_commands.h"
#include "core/speed_performance.h"
#include "core/test_support.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"

namespace velmar {
namespace {

std::vector<std::string> Names(PresetList list) {
  std::vector<std::string> out;
  for (const GraphPreset* p : PresetsOf(list)) out.push_back(p ? p->name : "(gap)");
  return out;
}

TEST(PredictionGraphs, PresetListsInTheirOrder) {
  const std::pair<PresetList, std::vector<std::string>> cases[] = {
      {PresetList::Resistance,
       {"Custom", "SPEED:RBARE", "SPEED:RTOTAL", "SPEED:PETOTAL", "[Confidence: RBARE]", "[ITTC-78 coefs]"}},
      {PresetList::Propeller,
       {"Custom", "SPEED:EFFO", "SPEED:PSPROP", "SPEED:PBPROP", "SPEED:RPMENG", "[Engine load]", "[Towpull]",
        "[Confidence: PBTOTAL]", "[Confidence: EFFO]", "[Propeller coefs]", "[Pitch map]"}},
      {PresetList::Waterjet,
       {"Custom", "SPEED:EFFO", "SPEED:PSPROP", "SPEED:PBPROP", "SPEED:RPMENG", "[Confidence: PBTOTAL]",
        "[Engine load]", "[Towpull]", "[Waterjet]"}},
  };
  for (const auto& [list, names] : cases) EXPECT_EQ(Names(list), names);
  // Every column a preset names exists.
  for (const GraphPreset& p : GraphPresets()) {
    if (p.kind == GraphPresetKind::Custom) continue;
    EXPECT_GE(clsVXSpeedPerformance::ColumnIndex(p.x), 0) << p.name;
    for (const char* y : p.y) EXPECT_GE(clsVXSpeedPerformance::ColumnIndex(y), 0) << p.name << " " << y;
  }
  EXPECT_EQ(FindPreset("engine load"), FindPreset("[Engine load]"));
  EXPECT_EQ(FindPreset("speed:rtotal")->y.front(), std::string("DragTotal"));
  EXPECT_EQ(FindPreset("SPEED:NOTHING"), nullptr);
}

TEST(PredictionGraphs, AxisFields) {
  const std::pair<int, const char*> cases[] = {{0, "Speed"},
                                               {4, "PowerEffectiveTotal"},
                                               {12, "PropulsorEfficiency"},
                                               {23, "TransportFactor"},
                                               {34, "CoefPropulsorJ"},
                                               {42, "CoefPropulsorReynolds"},
                                               {47, "ThrustDeductionAlignmentMultiplier"}};
  for (const auto& [field, column] : cases) EXPECT_STREQ(GraphFieldColumn(field), column);
  for (int f = 0; f < kGraphFieldCount; ++f)
    EXPECT_GE(clsVXSpeedPerformance::ColumnIndex(GraphFieldColumn(f)), 0) << f;
  EXPECT_EQ(GraphFieldFromName("effoa"), 13);
  EXPECT_EQ(GraphFieldFromName("PropulsorRPM"), 17);
  EXPECT_EQ(GraphFieldFromName("RBARE"), -1);  // a preset column, not an axis field
}

TEST(PredictionGraphs, GraphModes) {
  CustomGraphOptions options;
  options.graphs = {CustomGraph{3, 0, 9}, CustomGraph{0, 0, 13}};
  struct Case {
    GraphMode mode;
    std::vector<const char*> presets;  // "" for a custom pair
    bool customOpen;
  };
  const Case cases[] = {
      {GraphMode::Standard, {"SPEED:PBPROP"}, false},
      {GraphMode::Single, {"[Engine load]"}, false},
      {GraphMode::Multiple, {"SPEED:PBPROP", ""}, false},
      {GraphMode::Custom, {"SPEED:PBPROP", ""}, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(GraphModeCaption(c.mode));
    const auto requests = GraphRequestsFor(c.mode, options, PresetList::Propeller, 5, Mode::Propulsion);
    ASSERT_EQ(requests.size(), c.presets.size());
    for (size_t i = 0; i < requests.size(); ++i) {
      EXPECT_STREQ(requests[i].preset ? requests[i].preset->name : "", c.presets[i]);
      EXPECT_EQ(requests[i].customOpen, c.customOpen);
    }
    if (c.presets.size() == 2) {
      EXPECT_EQ(requests[1].yColumns,
                std::vector<int>{clsVXSpeedPerformance::ColumnIndex("OverallPropulsiveEfficiency")});
    }
  }
  EXPECT_EQ(DefaultGraphImageName("cargo ship.vxvl"), "cargo ship");
  EXPECT_EQ(DefaultGraphImageName("old.vl5"), "old.vl5");
}

TEST(PredictionGraphs, ReferenceEfficiencies) {
  // Momentum theory: CT = 8 KT / (pi J^2) = 3 gives 2 / (1 + 2).
  EXPECT_NEAR(IdealEfficiency(3.0 * 3.14159265358979 / 8.0), 2.0 / 3.0, 1e-9);
  EXPECT_NEAR(IdealEfficiency(0.0), 1.0, 1e-12);
  // A real propeller stays below the ideal and above a poor one; the lighter the loading,
  // the better both.
  for (double loading : {0.3, 0.8, 1.5}) {
    const double best = BestPracticeEfficiency(loading, 4, 0.55);
    EXPECT_GT(best, 0.35) << loading;
    EXPECT_LT(best, IdealEfficiency(loading)) << loading;
  }
  EXPECT_GT(BestPracticeEfficiency(0.3, 4, 0.55), BestPracticeEfficiency(1.5, 4, 0.55));
}

struct PredictionGraphExamples : ::testing::Test {
  void SetUp() override { testing::FreshApp(); }
  void Open(const std::string& name) { ASSERT_TRUE(OpenCommand(testing::ExamplePath(name)).done) << name; }
  GraphBuild Build(const GraphPreset* preset, Mode mode) {
    GraphRequest r;
    r.preset = preset;
    r.mode = mode;
    r.xColumn = 0;
    r.yColumns = {clsVXSpeedPerformance::ColumnIndex("PowerEffectiveTotal")};
    return BuildPredictionGraph(r, {{&App().primary, App().primary.Project->FileName}});
  }
};

TEST_F(PredictionGraphExamples, EveryPresetOfEveryExample) {
  for (const char* example :
       {"cargo_ship_si.vxvl", "cargo_ship_cpp_si.vxvl", "catamaran_ferry.vxvl",
        "catamaran_ferry_waterjet.vxvl", "patrol_vessel_imperial.vxvl", "planing_craft_si.vxvl"}) {
    SCOPED_TRACE(example);
    testing::FreshApp();
    Open(example);
    for (Mode mode : {Mode::Resistance, Mode::Propulsion}) {
      App().CurrentMode = mode;
      RunCalculate();
      for (const GraphPreset* p : PresetsOf(PresetListFor(App().primary, mode))) {
        SCOPED_TRACE(p->name);
        GraphBuild b = Build(p, mode);
        EXPECT_TRUE(b.warnings.empty()) << b.warnings.front().second;
        EXPECT_TRUE(b.drawn);
        int lines = 0;
        for (int i = 0; i < b.graph.DataSeriesCount(); ++i) lines += !b.graph.Series(i).x.empty();
        EXPECT_GT(lines, 0);
        EXPECT_LT(b.graph.YAxis().min, b.graph.YAxis().max);
      }
    }
  }
}

TEST_F(PredictionGraphExamples, EmptyTableAndMissingEngine) {
  Open("cargo_ship_si.vxvl");
  App().primary.SpeedPerformance->count(0);
  GraphBuild empty = Build(FindPreset("SPEED:RTOTAL"), Mode::Resistance);
  EXPECT_TRUE(empty.warnings.empty());
  EXPECT_EQ(empty.graph.DataSeriesCount(), 0);

  App().primary.Engine->ClearAllData();
  GraphBuild engine = Build(FindPreset("[Engine load]"), Mode::Propulsion);
  ASSERT_EQ(engine.warnings.size(), 1u);
  EXPECT_EQ(engine.warnings[0].second,
            "Engine Load plot requires an engine component. Define an Engine file in the Propulsion data.");
  EXPECT_FALSE(engine.drawn);
  EXPECT_EQ(engine.graph.DataSeriesCount(), 0);
}

TEST_F(PredictionGraphExamples, ConfidenceBandHoldsTheChosenMethod) {
  Open("cargo_ship_si.vxvl");
  RunCalculate();
  GraphBuild b = Build(FindPreset("[Confidence: RBARE]"), Mode::Resistance);
  ASSERT_EQ(b.graph.DataSeriesCount(), 2);
  const GraphSeries& band = b.graph.Series(0);
  const GraphSeries& chosen = b.graph.Series(1);
  ASSERT_EQ(band.kind, SeriesKind::Area);
  ASSERT_EQ(band.x.size(), chosen.y.size());
  bool spread = false;
  for (size_t i = 0; i < band.x.size(); ++i) {
    EXPECT_LE(band.yLow[i], chosen.y[i]);
    EXPECT_GE(band.y[i], chosen.y[i]);
    spread = spread || band.y[i] > band.yLow[i] * 1.01;
  }
  EXPECT_TRUE(spread) << "more than one hull method holds for the cargo ship";
  EXPECT_NE(b.graph.Title().find("spread of"), std::string::npos);
}

TEST_F(PredictionGraphExamples, CompareFileInPresentUnits) {
  // A file in other units is drawn in the units of the open project.
  Open("patrol_vessel_imperial.vxvl");
  RunCalculate();
  ModelSet imperial = App().primary;
  testing::FreshApp();  // the calculated project would ask to be saved first
  Open("cargo_ship_si.vxvl");
  RunCalculate();
  std::vector<double> own, converted;
  const int drag = clsVXSpeedPerformance::ColumnIndex("DragTotal");
  GetGraphFieldData(imperial, drag, *imperial.Units, own);
  GetGraphFieldData(imperial, drag, *App().primary.Units, converted);
  ASSERT_EQ(own.size(), converted.size());
  const double factor = App().primary.Units->Convert(UnitFamily::Force, 1.0, kCurrent,
                                                     imperial.Units->Index(UnitFamily::Force));
  EXPECT_NE(factor, 1.0);
  for (size_t i = 0; i < own.size(); ++i) EXPECT_NEAR(converted[i], own[i] * factor, 1e-9 * own[i]);
  GraphRequest r;
  r.preset = FindPreset("SPEED:RTOTAL");
  GraphBuild b = BuildPredictionGraph(r, {{&App().primary, "cargo"}, {&imperial, "patrol"}});
  ASSERT_EQ(b.graph.DataSeriesCount(), 2);
  EXPECT_EQ(b.graph.Series(1).legend, "RTOTAL - patrol");
  EXPECT_EQ(b.graph.Series(1).pen.dash, DashStyle::Dash);
}

}  // namespace
}  // namespace velmar
