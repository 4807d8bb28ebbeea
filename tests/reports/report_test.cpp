// The reports of the cargo-ship example: the frames of each kind in order, the numbers of
// the result tables as the speed table formats them, the marks, and the data report rows as
// the field tables give them.
#include "reports/report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "../core/test_support.h"
#include "app/application.h"
#include "app/calculate.h"
#include "core/speed_performance.h"
#include "core/units.h"
#include "files/project_file.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "vessel/hull.h"

namespace velmar {
namespace {

class CargoShipReport : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::FreshApp();
    ASSERT_TRUE(OpenProjectFile(testing::ExamplePath("cargo_ship_si.vxvl")).opened);
    App().CurrentMode = Mode::Resistance;
    ASSERT_TRUE(RunCalculate().ok);
  }
  void CalculatePropulsion() {
    App().CurrentMode = Mode::Propulsion;
    ASSERT_TRUE(RunCalculate().ok);
  }
  static ReportDocument Build(ReportKind kind, bool symbols = false) {
    ReportOptions o;
    o.symbols = symbols;
    o.when = {2024, 3, 5, 14, 7, 30};
    return BuildReport(App().primary, kind, o);
  }
};

std::vector<std::string> Titles(const ReportDocument& doc) {
  std::vector<std::string> t;
  for (const ReportBlock& b : doc.blocks)
    if (b.kind == ReportBlockKind::Title) t.push_back(b.text);
  return t;
}

int PageBreaks(const ReportDocument& doc) {
  return static_cast<int>(std::count_if(doc.blocks.begin(), doc.blocks.end(), [](const ReportBlock& b) {
    return b.kind == ReportBlockKind::PageBreak;
  }));
}

// The results table whose first group caption is `caption`.
const ReportBlock* ResultsTable(const ReportDocument& doc, const std::string& caption) {
  for (const ReportBlock& b : doc.blocks)
    if (b.kind == ReportBlockKind::Table && b.tableKind == ReportTableKind::Results &&
        b.rows[0].cells[0].text == caption)
      return &b;
  return nullptr;
}

int ColumnOf(const ReportBlock& t, const std::string& symbol) {
  const auto& cells = t.rows[1].cells;
  for (size_t i = 0; i < cells.size(); ++i)
    if (cells[i].text == symbol) return static_cast<int>(i);
  return -1;
}

TEST_F(CargoShipReport, EachKindRunsItsFramesInOrder) {
  struct Case {
    ReportKind kind;
    bool symbols;
    std::vector<std::string> titles;  // a title ending in '[' is matched as a prefix
    int frames;
  };
  const std::vector<Case> cases = {
      {ReportKind::Resistance,
       false,
       {"Analysis parameters", "Prediction method check [", "Prediction results"},
       1},
      {ReportKind::FullResistance,
       true,
       {"Analysis parameters", "Prediction method check [", "Prediction results", "Hull data",
        "Appendage data", "Environment data", "Symbols and values"},
       4},
      {ReportKind::FullPropulsion,
       false,
       {"Analysis parameters", "Prediction method check [", "Prediction results [System]",
        "Prediction results [Propulsor]", "Hull data", "Propulsor data"},
       2},
      {ReportKind::Data, true, {"Hull data", "Appendage data", "Environment data", "Propulsor data"}, 3},
  };
  CalculatePropulsion();
  for (const Case& c : cases) {
    SCOPED_TRACE(ReportKindName(c.kind));
    const ReportDocument doc = Build(c.kind, c.symbols);
    std::vector<std::string> titles = Titles(doc);
    // Graph captions are not titles; drop nothing else.
    ASSERT_EQ(titles.size(), c.titles.size());
    for (size_t i = 0; i < titles.size(); ++i) {
      if (c.titles[i].back() == '[')
        EXPECT_EQ(titles[i].rfind(c.titles[i], 0), 0u) << titles[i];
      else
        EXPECT_EQ(titles[i], c.titles[i]);
    }
    EXPECT_EQ(PageBreaks(doc), c.frames);
    // Every frame opens with the heading and closes with the report identity.
    EXPECT_EQ(doc.blocks.front().tableKind, ReportTableKind::Frame);
    EXPECT_EQ(doc.blocks[doc.blocks.size() - 2].rows[0].cells[1].text, "20240305-1407");
  }
}

TEST_F(CargoShipReport, ResultCellsAreTheSpeedTableTextsWithTheDesignSpeedMarked) {
  const ReportDocument doc = Build(ReportKind::Resistance);
  const ReportBlock* t = ResultsTable(doc, "RESISTANCE AND EFFECTIVE POWER");
  ASSERT_NE(t, nullptr);
  const clsVXSpeedPerformance& sp = *App().primary.SpeedPerformance;
  ASSERT_EQ(static_cast<int>(t->rows.size()), 3 + sp.count());
  const int total = ColumnOf(*t, "RTOTAL");
  ASSERT_GT(total, 0);
  EXPECT_EQ(t->rows[2].cells[total].text, "[" + App().primary.Units->Label(UnitFamily::Force) + "]");
  for (int r = 0; r < sp.count(); ++r) {
    const auto& row = t->rows[3 + r].cells;
    EXPECT_EQ(row[total].text, sp.DragTotalFormatted(r));
    const std::string speed = sp.SpeedFormatted(r);
    EXPECT_EQ(row[0].text, r == sp.DesignSpeedIndex() ? "+ " + speed + " +" : speed);
  }
}

TEST_F(CargoShipReport, ColumnsThatDoNotApplyShowDashes) {
  CalculatePropulsion();
  ASSERT_NE(App().primary.Propeller->PropellerType(), 1) << "the example has a fixed-pitch propeller";
  const ReportDocument doc = Build(ReportKind::FullPropulsion);
  struct Case {
    const char* caption;
    const char* symbol;
  };
  for (const Case& c :
       {Case{"POWER DELIVERY", "CPPITCH"}, Case{"EFFICIENCY", "ACCEL"}, Case{"EFFICIENCY", "NETTOW"}}) {
    SCOPED_TRACE(c.symbol);
    const ReportBlock* t = ResultsTable(doc, c.caption);
    ASSERT_NE(t, nullptr);
    const int col = ColumnOf(*t, c.symbol);
    ASSERT_GE(col, 0);
    for (size_t r = 3; r < t->rows.size(); ++r) EXPECT_EQ(t->rows[r].cells[col].text, "---");
  }
}

TEST_F(CargoShipReport, DataRowsComeFromTheFieldTables) {
  const ReportDocument doc = Build(ReportKind::Data);
  const clsVXHull& hull = *App().primary.Hull;
  const std::string unit = App().primary.Units->Label(UnitFamily::Length);
  bool found = false;
  std::vector<std::string> headings;
  for (const ReportBlock& b : doc.blocks)
    for (const ReportRow& r : b.rows) {
      if (r.cells[0].style == ReportStyle::Heading) headings.push_back(r.cells[0].text);
      if (r.cells.size() == 2 && r.cells[0].text == "Length on WL:" && !found) {
        EXPECT_EQ(r.cells[1].text, hull.LengthWLFormatted() + " " + unit);
        found = true;
      }
      // Working fields without a caption never show.
      EXPECT_NE(r.cells[0].text, "LengthOfAftRun");
    }
  EXPECT_TRUE(found);
  for (const char* h : {"General", "Planing", "Propeller diameter", "Rudder", "Skeg/Keel", "Wind", "Seas",
                        "Shallow/channel", "Propulsor", "Engine/gear", "Design condition"})
    EXPECT_NE(std::find(headings.begin(), headings.end(), h), headings.end()) << h;

  // A propeller series whose coefficients have one source only says so under the series.
  clsVXPropellerSeries& series = *App().primary.PropellerSeries;
  series.SetRaw(series.FieldIndex("Series"), 2);  // Gawn KCA
  std::string note;
  for (const ReportBlock& b : Build(ReportKind::Data).blocks)
    for (const ReportRow& r : b.rows)
      if (r.cells.size() == 2 && r.cells[0].text == "Note:") note = r.cells[1].text;
  EXPECT_EQ(note, "Coefficients from a single source, unconfirmed.");
}

}  // namespace
}  // namespace velmar
