// The QPainter back end: pictures that are not blank, every file type, and velmar-cli graph
// end to end (offscreen, no display).
#include "render/graph_image.h"

#include <gtest/gtest.h>

#include <QColor>

#include "cli/cli_run.h"
#include "core/test_support.h"

namespace velmar {
namespace {

clsVXCoordinateGraph TwoLines() {
  clsVXCoordinateGraph g;
  g.TitleGraph("Two lines");
  for (int i = 0; i < 2; ++i) {
    GraphSeries s;
    s.legend = i ? "second" : "first";
    s.pen = Pen{clsVXCoordinateGraph::DefaultSeriesColour(i), 2.0};
    s.x = {0, 5, 10, 15};
    s.y = {0, 10.0 * (i + 1), 30.0 * (i + 1), 70.0 * (i + 1)};
    g.AddDataSeries(s);
  }
  g.AutoAxes();
  return g;
}

// The share of pixels that are not white, and of those near a colour.
std::pair<double, double> Ink(const QImage& image, Argb colour) {
  long ink = 0, near = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) {
      const QColor c = image.pixelColor(x, y);
      if (c.red() < 250 || c.green() < 250 || c.blue() < 250) ++ink;
      if (std::abs(c.red() - RedOf(colour)) + std::abs(c.green() - GreenOf(colour)) +
              std::abs(c.blue() - BlueOf(colour)) <
          40)
        ++near;
    }
  const double n = static_cast<double>(image.width()) * image.height();
  return {ink / n, near / n};
}

TEST(GraphImage, PaintsAxesTextAndSeries) {
  clsVXCoordinateGraph g = TwoLines();
  const QImage image = RenderGraphImage(g, 600, 400);
  ASSERT_EQ(image.width(), 600);
  const auto [ink, series] = Ink(image, clsVXCoordinateGraph::DefaultSeriesColour(1));
  EXPECT_GT(ink, 0.02);
  EXPECT_LT(ink, 0.5);
  EXPECT_GT(series, 0.001);
  clsVXCoordinateGraph empty;
  EXPECT_LT(Ink(RenderGraphImage(empty, 600, 400), Rgb(0, 0, 0)).first, ink);
}

TEST(GraphImage, EveryFileType) {
  const testing::TempDir dir;
  const std::pair<const char*, std::string> cases[] = {
      {"g.png", "\x89PNG"}, {"g.jpg", "\xff\xd8"}, {"g.bmp", "BM"}, {"g.pdf", "%PDF"}, {"g.svg", "<?xml"}};
  for (const auto& [name, magic] : cases) {
    clsVXCoordinateGraph g = TwoLines();
    std::string error;
    ASSERT_TRUE(SaveGraphFile(g, (dir / name).string(), 500, 300, &error)) << name << ": " << error;
    EXPECT_EQ(testing::ReadBytes(dir / name).substr(0, magic.size()), magic) << name;
  }
  clsVXCoordinateGraph g = TwoLines();
  std::string error;
  EXPECT_FALSE(SaveGraphFile(g, (dir / "g.gif").string(), 500, 300, &error));
  EXPECT_NE(error.find("gif"), std::string::npos);
}

TEST(GraphImage, CliGraph) {
  using velmar::testing::Cli;
  const testing::TempDir dir;
  const std::string cargo = testing::ExamplePath("cargo_ship_si.vxvl").string();
  const std::string ferry = testing::ExamplePath("catamaran_ferry.vxvl").string();
  struct Case {
    std::string args;
    int code;
    size_t series;        // groups in the SVG written
    const char* message;  // part of the output
  };
  const Case cases[] = {
      {"--preset SPEED:RTOTAL -o " + (dir / "a.svg").string(), 0, 1, ""},
      {"--preset SPEED:RTOTAL --compare " + ferry + " -o " + (dir / "b.svg").string(), 0, 2, ""},
      {"--x SPEED --y PETOTAL,PBTOTAL -o " + (dir / "c.svg").string(), 0, 2, ""},
      {"--preset \"[Towpull]\" -o " + (dir / "d.svg").string(), 0, 3, ""},
      {"--preset SPEED:NONE -o " + (dir / "e.svg").string(), 2, 0, "unknown preset"},
      {"--x SPEED --y NOTHING -o " + (dir / "f.svg").string(), 2, 0, "unknown field"},
      {"--preset SPEED:RTOTAL -o " + (dir / "g.gif").string(), 2, 0, "unknown picture type"},
      {"--preset SPEED:RTOTAL --size 10 -o " + (dir / "h.svg").string(), 2, 0, "--size"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args);
    const auto run = Cli("graph " + cargo + " " + c.args);
    EXPECT_EQ(run.code, c.code) << run.out;
    EXPECT_NE(run.out.find(c.message), std::string::npos) << run.out;
    if (c.series == 0) continue;
    const std::string out = c.args.substr(c.args.rfind(' ') + 1);
    const std::string svg = testing::ReadBytes(out);
    size_t n = 0;
    for (size_t at = svg.find("<g class=\"series\">"); at != std::string::npos;
         at = svg.find("<g class=\"series\">", at + 1))
      ++n;
    EXPECT_EQ(n, c.series);
  }
  const auto png =
      Cli("graph " + cargo + " --preset SPEED:PBPROP --size 640x480 -o " + (dir / "p.png").string());
  ASSERT_EQ(png.code, 0) << png.out;
  QImage image(QString::fromStdString((dir / "p.png").string()));
  EXPECT_EQ(image.width(), 640);
  EXPECT_GT(Ink(image, Rgb(0, 0, 0)).first, 0.02);
}

}  // namespace
}  // namespace velmar
