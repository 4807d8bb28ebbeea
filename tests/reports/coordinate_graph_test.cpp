// The coordinate graph against hand-worked cases: nice ranges, automatic axes, the map
// between world and viewport, the legend box, tick labels, and the SVG it draws.
#include "reports/coordinate_graph.h"

#include <gtest/gtest.h>

#include "reports/svg_surface.h"

namespace velmar {
namespace {

size_t Count(const std::string& text, const std::string& what) {
  size_t n = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

// Worked by hand through the rule: exponent, top and bottom counters, step of the decade.
TEST(CoordinateGraph, NiceRangeAndAutoAxes) {
  struct Case {
    double min, max;  // data bounds (y)
    double interval;  // NiceRange of the bounds as AutoAxes widens them
    double axisMin, axisMax, major, cross;
  };
  const Case cases[] = {
      // e = -1, p = 0.1, top 98 -> 108, bot 0, d 108: step 50.
      {0.0, 9.3, 0.5, 0.0, 10.0, 2.5, 0.0},
      // Flat at 0: the axis gets a span of 10 with an interval of 0.2.
      {0.0, 0.0, 0.0, 0.0, 10.0, 1.0, 0.0},
      // e = 1, p = 10, top 11 -> 16, d 16: step 4.
      {0.0, 100.0, 4.0, 0.0, 100.0, 20.0, 0.0},
      // Both signs: top 76 -> 86, bot -36 -> -41, d 127: step 50; crosses at 0.
      {-3.0, 7.0, 0.5, -5.0, 7.5, 2.5, 0.0},
      // The minimum above one major step is lowered by one: 10 -> 8.
      {10.0, 16.0, 0.4, 8.0, 16.0, 2.0, 8.0},
      // A range between 0.1 and 0.5 is widened to 0.275 .. 1.05 first.
      {0.55, 0.7, 0.04, 0.0, 1.2, 0.2, 0.0},
      // Both negative: crosses at the maximum.
      {-40.0, -12.0, 1.0, -40.0, -10.0, 5.0, -10.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.min << " .. " << c.max);
    clsVXCoordinateGraph g;
    g.AutoAxes(false, false, 0.0, 1.0, c.min, c.max);
    if (c.interval > 0) {
      const bool widened = c.max - c.min > 0.1 && c.max - c.min < 0.5;
      EXPECT_NEAR(NiceRange(widened ? c.min * 0.5 : c.min, widened ? c.max * 1.5 : c.max), c.interval, 1e-12);
    }
    EXPECT_NEAR(g.YAxis().min, c.axisMin, 1e-9);
    EXPECT_NEAR(g.YAxis().max, c.axisMax, 1e-9);
    EXPECT_NEAR(g.YAxis().major, c.major, 1e-9);
    EXPECT_NEAR(g.YAxis().cross, c.cross, 1e-9);
  }
}

TEST(CoordinateGraph, FixedAxisKeepsItsExtents) {
  clsVXCoordinateGraph g;
  g.FixAxis(g.YAxis(), 0.0, 2.0);
  g.AutoAxes(false, false, 0.0, 9.3, 0.3, 0.8);
  EXPECT_EQ(g.YAxis().min, 0.0);
  EXPECT_EQ(g.YAxis().max, 2.0);
  EXPECT_EQ(g.XAxis().max, 10.0);
}

// Window 9000 x 6000 with margins 1250, 500, 375, 1000: the plot spans x 1250 .. 8500 and
// y 375 .. 5000 (7250 x 4625).
TEST(CoordinateGraph, WorldViewportMapping) {
  struct Case {
    bool logX;
    double x, y;
    double vx, vy;
  };
  const Case cases[] = {
      {false, 0.0, 0.0, 1250.0, 5000.0},
      {false, 10.0, 100.0, 8500.0, 375.0},
      {false, 5.0, 50.0, 4875.0, 2687.5},
      {true, 1.0, 0.0, 1250.0, 5000.0},
      {true, 10.0, 25.0, 1250.0 + 7250.0 / 3, 5000.0 - 4625.0 / 4},
      {true, 1000.0, 100.0, 8500.0, 375.0},
      {true, -5.0, 0.0, 1250.0 - 7250.0 * 16.0 / 3, 5000.0},  // clamped to 1e-16 before log10
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.x << ", " << c.y << (c.logX ? " log" : ""));
    clsVXCoordinateGraph g;
    g.SetWindow({0, 0, 9000, 6000});
    g.SetPlotMargins(1250, 500, 375, 1000);
    g.XAxis().log = c.logX;
    g.FixAxis(g.XAxis(), c.logX ? 1.0 : 0.0, c.logX ? 1000.0 : 10.0);
    g.FixAxis(g.YAxis(), 0.0, 100.0);
    const PointF v = g.GetViewportPositionFromWorldCoordinates(c.x, c.y);
    EXPECT_NEAR(v.x, c.vx, 1e-6);
    EXPECT_NEAR(v.y, c.vy, 1e-6);
    if (c.x > 0) {
      double x = 0, y = 0;
      g.GetWorldCoordinatesFromViewportPosition(v, x, y);
      EXPECT_NEAR(x, c.x, 1e-9 * c.x);
      EXPECT_NEAR(y, c.y, 1e-9);
    }
  }
}

TEST(CoordinateGraph, PercentWindowRoundsToWholeUnits) {
  clsVXCoordinateGraph g;
  g.SetWindow({0, 0, 1001, 600});
  g.SetPercentWindow(0.1, 0.05, 0.1, 0.2);  // 100.1 -> 100, 50.05 -> 50, 60, 120
  const RectF p = g.GetCurrentPlotBounds();
  EXPECT_EQ(p.left, 100);
  EXPECT_EQ(p.right(), 951);
  EXPECT_EQ(p.top, 60);
  EXPECT_EQ(p.bottom(), 480);
}

// The same plot; three labelled lines (an unlabelled one and a band do not count).
TEST(CoordinateGraph, LegendBoxAndOrder) {
  struct Case {
    int position;
    RectF box;
    const char* first;
  };
  const Case cases[] = {
      {kLegendTopRight, {5310, 630, 2900, 765}, "a"},     {kLegendTopLeft, {1540, 630, 2900, 765}, "a"},
      {kLegendBottomRight, {5310, 3435, 2900, 765}, "c"}, {kLegendBottomLeft, {1540, 3435, 2900, 765}, "c"},
      {kLegendFullWidth, {1540, 630, 6670, 765}, "a"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(LegendPositionLabel(c.position));
    clsVXCoordinateGraph g;
    g.SetWindow({0, 0, 9000, 6000});
    g.SetPlotMargins(1250, 500, 375, 1000);
    g.SetLegend(true, c.position);
    for (const char* label : {"a", "", "b", "c"}) {
      GraphSeries s;
      s.legend = label;
      g.AddDataSeries(s);
    }
    GraphSeries band;
    band.kind = SeriesKind::Area;
    band.legend = "band";
    g.AddDataSeries(band);
    const RectF box = g.LegendBox();
    EXPECT_NEAR(box.left, c.box.left, 1e-9);
    EXPECT_NEAR(box.top, c.box.top, 1e-9);
    EXPECT_NEAR(box.width, c.box.width, 1e-9);
    EXPECT_NEAR(box.height, c.box.height, 1e-9);
    ASSERT_EQ(g.GetLegendLabel().size(), 3u);
    EXPECT_EQ(g.GetLegendLabel().front(), c.first);
  }
  clsVXCoordinateGraph off;
  off.SetLegend(false, 0);
  GraphSeries labelled;
  labelled.legend = "a";
  off.AddDataSeries(labelled);
  EXPECT_EQ(off.LegendBox().width, 0.0);
}

TEST(CoordinateGraph, TickLabels) {
  const std::pair<double, const char*> cases[] = {
      {0.0, "0"},         {0.5, "0.5"},
      {2.5, "2.5"},       {100.0, "100"},
      {0.1 + 0.2, "0.3"}, {-7.5, "-7.5"},
      {0.0001, "0.0001"}, {123456.7, "123457"},
      {1e-6, "1.0e-6"},   {2.5e-5, "2.5e-5"},
      {-3e-9, "-3.0e-9"}, {1.5e6, "1.5e+6"},
      {2e7, "2.0e+7"},    {1e-10, "0.0000000001"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(TickLabel(value), text) << value;
}

TEST(CoordinateGraph, SvgHoldsOneGroupPerDrawnSeries) {
  clsVXCoordinateGraph g;
  g.TitleGraph("Drag <total> & power");
  for (int i = 0; i < 3; ++i) {
    GraphSeries s;
    s.legend = "S" + std::to_string(i);
    s.lineStyle = LineStyle::SplineMarkers;
    s.pen.colour = clsVXCoordinateGraph::DefaultSeriesColour(i);
    s.x = {1, 2, 3, 4};
    s.y = {1.0 + i, 2.0 + i, 4.0 + i, 8.0 + i};
    g.AddDataSeries(s);
  }
  g.ClearDataSeries(1);
  const int band = g.AddDataSeries({});
  g.SetAreaData(band, {1, 2, 3}, {0, 1, 2}, {2, 3, 4});
  g.AutoAxes();
  const std::string svg = GraphSvg(g, 600, 400);
  EXPECT_EQ(svg.rfind("<?xml", 0), 0u);
  EXPECT_EQ(Count(svg, "<g class=\"series\">"), 2u);
  EXPECT_EQ(Count(svg, "<g class=\"series area\">"), 1u);
  EXPECT_EQ(Count(svg, "<g"), Count(svg, "</g>"));
  EXPECT_NE(svg.find("Drag &lt;total&gt; &amp; power"), std::string::npos);
  EXPECT_EQ(Count(svg, ">S0<") + Count(svg, ">S2<"), 2u);  // legend rows
  EXPECT_EQ(Count(svg, ">S1<"), 0u);
}

}  // namespace
}  // namespace velmar
