// clsVXCoordinateGraph: an x-y chart from plain arrays of doubles. Axes with nice ticks
// (linear or logarithmic), data series as lines, markers or filled bands, a title, axis
// captions, a legend and line labels; the map between world coordinates (data) and viewport
// coordinates (twips on the window, 15 to a pixel). It knows nothing of ships and draws only
// through a DrawingSurface.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/error_stack.h"
#include "reports/drawing_surface.h"

namespace velmar {

// Viewport units per pixel of a surface at 96 dpi (twips).
inline constexpr double kTwipsPerPixel = 15.0;

enum class SeriesKind { Off = 0, Line = 1, Area = 2 };
// "Spline & Markers", "Polyline & Markers", "Spline", "Polyline", "Markers".
enum class LineStyle { SplineMarkers = 0, PolylineMarkers = 1, Spline = 2, Polyline = 3, Markers = 4 };
const char* LineStyleLabel(LineStyle style);
enum class MarkerShape { Circle, Square, Triangle, Diamond, Cross };

// "Top right", "Top left", "Bottom right", "Bottom left"; 4 spans the plot's width.
enum LegendPosition : int {
  kLegendTopRight = 0,
  kLegendTopLeft = 1,
  kLegendBottomRight = 2,
  kLegendBottomLeft = 3,
  kLegendFullWidth = 4
};
const char* LegendPositionLabel(int position);

struct GraphSeries {
  SeriesKind kind = SeriesKind::Line;
  LineStyle lineStyle = LineStyle::PolylineMarkers;
  Pen pen;
  MarkerShape marker = MarkerShape::Circle;
  double markerSize = 6.0;  // pixels
  Brush markerFill{Rgb(255, 255, 255)};
  Brush areaBrush;  // the band of an Area series
  std::string legend;
  std::vector<double> x, y;
  std::vector<double> yLow;               // lower edge of an Area series (y is the upper)
  std::string lineLabel;                  // text written beside one point of the line
  int lineLabelPoint = -1;                // that point; -1: the last
  std::vector<std::string> markerLabels;  // a text beside each marker (may be shorter than x)
};

struct GraphAxis {
  double min = 0.0, max = 10.0;
  double major = 1.0;  // tick interval x minor divisions
  int minor = 5;
  double cross = 0.0;  // where the other axis crosses this one
  bool fixed = false;  // kept against AutoAxes
  bool log = false;
  std::string caption;
};

// The tick interval of a range by the program's nice-range rule (10, 20, 50 steps of a decade).
double NiceRange(double min, double max);
// A tick value as the axis shows it: six significant digits, plain decimals, or a mantissa
// "0.0" with "e-"/"e+" and the exponent when the exponent is -9 to -5 or 6 and above.
std::string TickLabel(double value);

class clsVXCoordinateGraph {
 public:
  void ClearErrorStack() { errors_.Clear(); }
  bool ErrorsFound() { return errors_.ErrorsFound(); }
  std::string Errors() { return errors_.Take(); }
  void Errors(std::string_view message) { errors_.Push(message); }

  // Series.
  void ClearDataSeries(int index);  // empties one series and switches it off
  void ClearAllDataSeries() { series_.clear(); }
  int DataSeriesCount() const { return static_cast<int>(series_.size()); }
  int AddDataSeries(GraphSeries series);  // returns its index
  GraphSeries& Series(int index) { return series_.at(static_cast<size_t>(index)); }
  const GraphSeries& Series(int index) const { return series_.at(static_cast<size_t>(index)); }
  void SetLineData(int index, std::vector<double> x, std::vector<double> y);
  void SetAreaData(int index, std::vector<double> x, std::vector<double> yLow, std::vector<double> yHigh);
  void SetLegendData(int index, std::string label) { Series(index).legend = std::move(label); }
  void SetLineLabelData(int index, std::string text, int point = -1);
  void SetLineStyle(int index, LineStyle style, const Pen& pen);
  void SetMarkerStyle(int index, MarkerShape shape, double size, const Brush& fill);
  void SetAreaStyle(int index, const Brush& brush, const Pen& outline);
  // The colour of series `index` when none is given: a fixed palette, in turn.
  static Argb DefaultSeriesColour(int index);

  // Texts and options.
  void TitleGraph(std::string title) { title_ = std::move(title); }
  const std::string& Title() const { return title_; }
  GraphAxis& XAxis() { return axes_[0]; }
  GraphAxis& YAxis() { return axes_[1]; }
  const GraphAxis& XAxis() const { return axes_[0]; }
  const GraphAxis& YAxis() const { return axes_[1]; }
  void SetLegend(bool on, int position) {
    legendOn_ = on;
    legendPosition_ = position;
  }
  bool IsLegendEnabled() const { return legendOn_; }
  int GetLegendPosition() const { return legendPosition_; }
  // The legend texts in drawing order (series of kind Line with a label).
  std::vector<std::string> GetLegendLabel() const;
  // A text drawn in the middle of an empty chart ("No data").
  void SetNote(std::string note) { note_ = std::move(note); }

  // Window and plot rectangle, in viewport units.
  void SetWindow(const RectF& window);
  const RectF& Window() const { return window_; }
  // Plot margins as fractions of the window (left, right, top, bottom).
  void SetPercentWindow(double left, double right, double top, double bottom);
  // Plot margins in viewport units.
  void SetPlotMargins(double left, double right, double top, double bottom);
  void SetWin2PlotRatio(double ratio) { win2PlotRatio_ = ratio; }
  double Win2PlotRatio() const { return win2PlotRatio_; }
  const RectF& GetCurrentPlotBounds() const { return plot_; }

  // Axes.
  // The extents of the visible data of all series; false when there is none.
  bool DetectAxisBounds(double& xMin, double& xMax, double& yMin, double& yMax) const;
  // Nice extents, steps and crossings for the given bounds (force: widen both ranges first;
  // keepMinimum: each axis crosses at the other's minimum). Fixed axes keep their extents.
  void AutoAxes(bool force, bool keepMinimum, double xMin, double xMax, double yMin, double yMax);
  // AutoAxes on the bounds of the data.
  void AutoAxes(bool force = false, bool keepMinimum = false);
  // Equal scale on both axes: the axis with the smaller scale grows about its middle.
  void EqualAxes(bool force, bool keepMinimum, double xMin, double xMax, double yMin, double yMax);
  // Fixes an axis at the given extents and major step (0: a nice step).
  void FixAxis(GraphAxis& axis, double min, double max, double major = 0.0);
  void GetWorldAxisExtents(double& xMin, double& xMax, double& yMin, double& yMax) const;

  // Mapping between world and viewport coordinates through the plot rectangle.
  PointF GetViewportPositionFromWorldCoordinates(double x, double y) const;
  void GetWorldCoordinatesFromViewportPosition(PointF viewport, double& x, double& y) const;

  // Where the legend box lies, in viewport units (empty when there is no legend to draw).
  RectF LegendBox() const;

  // Draws the whole chart on the surface: the window becomes the surface's size.
  void Refresh(DrawingSurface& surface);

 private:
  double ToAxis(const GraphAxis& a, double v) const;
  double FromAxis(const GraphAxis& a, double t) const;
  void NiceAxis(GraphAxis& a, double min, double max) const;
  void ApplyMargins();
  void CreateGraph(DrawingSurface& s) const;
  void PlotDataSeries(DrawingSurface& s, int index) const;
  void PlotLegend(DrawingSurface& s) const;
  std::vector<double> Ticks(const GraphAxis& a, bool minor) const;

  ErrorStack errors_;
  std::vector<GraphSeries> series_;
  std::array<GraphAxis, 2> axes_;
  std::string title_, note_;
  bool legendOn_ = true;
  int legendPosition_ = kLegendTopRight;
  RectF window_{0, 0, 9000, 6000};
  std::array<double, 4> margins_{1250, 500, 375, 1000};  // left, right, top, bottom
  bool percentMargins_ = false;
  RectF plot_;
  double win2PlotRatio_ = 1.0;
};

// The graph as an SVG document of width x height pixels; each drawn series is one group of
// class "series" (a band: "series area").
std::string GraphSvg(clsVXCoordinateGraph& graph, double width, double height);

}  // namespace velmar
