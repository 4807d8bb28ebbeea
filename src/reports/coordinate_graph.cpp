// The coordinate graph: nice ranges, axes, world-to-viewport mapping, series, legend.
#include "reports/coordinate_graph.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/helpers.h"
#include "core/spline_fit.h"
#include "reports/svg_surface.h"

namespace velmar {
namespace {

constexpr double kLegendRow = 255.0;        // one legend row, viewport units
constexpr double kLegendBottomGap = 800.0;  // a bottom legend ends this far above the plot bottom
const Font kAxisFont{8.75};
const Font kTitleFont{10.0, true};

PointF Px(PointF viewport) { return {viewport.x / kTwipsPerPixel, viewport.y / kTwipsPerPixel}; }
RectF Px(const RectF& r) {
  return {r.left / kTwipsPerPixel, r.top / kTwipsPerPixel, r.width / kTwipsPerPixel,
          r.height / kTwipsPerPixel};
}

// The decimal magnitude of a bound, Int(log10 |x|) with |x| clamped from below.
int Magnitude(double x) { return static_cast<int>(std::floor(std::log10(std::max(std::fabs(x), 1e-16)))); }

// A 16-bit integer as the rule keeps its counters.
int Int16(double v) { return static_cast<int>(std::clamp(v, -32768.0, 32767.0)); }

// A bound moved outward by 10, 5 or 1 by its size, when the flag is set.
int MoveOut(int v, int flag, int sign) {
  const int a = std::abs(v);
  return v + sign * flag * (a >= 60 ? 10 : a >= 10 ? 5 : 1);
}

bool Drawn(const GraphSeries& s) { return s.kind != SeriesKind::Off && !s.x.empty(); }

}  // namespace

const char* LineStyleLabel(LineStyle style) {
  static const char* kLabels[] = {"Spline & Markers", "Polyline & Markers", "Spline", "Polyline", "Markers"};
  return kLabels[static_cast<int>(style)];
}

const char* LegendPositionLabel(int position) {
  static const char* kLabels[] = {"Top right", "Top left", "Bottom right", "Bottom left", "Full width"};
  return position >= 0 && position <= 4 ? kLabels[position] : "";
}

double NiceRange(double min, double max) {
  const int sLow = min < 0 ? 1 : 0, sHigh = max > 0 ? 1 : 0;
  const int e = std::max(Magnitude(min), Magnitude(max)) - 1;
  const double p = std::pow(10.0, e);
  const double a = max / p, b = min / p;
  int top = Int16(std::ceil(a + 1e-6 + (a - b) * 0.05));
  if (a <= 0 && top >= 1) top = 0;
  int bot = Int16(std::floor(b - 1e-6 - (a - b) * 0.05));
  if (b >= 0 && bot < 0) bot = 0;
  top = MoveOut(top, sHigh, 1);
  bot = MoveOut(bot, sLow, -1);
  const int d = std::abs(top - bot);
  const int step = d <= 10 ? 2 : d <= 20 ? 4 : d <= 50 ? 10 : d <= 100 ? 20 : d <= 200 ? 50 : 100;
  return p * step / 10.0;
}

std::string TickLabel(double value) {
  const double v = RoundToSigDigits(value, 6);
  if (v == 0.0 || !std::isfinite(v)) return "0";
  const int e = Magnitude(v);
  if ((e >= -9 && e <= -5) || e >= 6) {
    double mantissa = v / std::pow(10.0, e);
    int exponent = e;
    mantissa = std::round(mantissa * 10.0) / 10.0;
    if (std::fabs(mantissa) >= 10.0) mantissa /= 10.0, ++exponent;
    char buf[16];
    std::snprintf(buf, sizeof buf, "%.1f", mantissa);
    return std::string(buf) + (exponent < 0 ? "e-" : "e+") + std::to_string(std::abs(exponent));
  }
  char buf[40];
  const auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed);
  return std::string(buf, r.ptr);
}

// --- series ---------------------------------------------------------------------------------

void clsVXCoordinateGraph::ClearDataSeries(int index) {
  if (index < 0 || index >= DataSeriesCount()) return;
  GraphSeries& s = Series(index);
  s.x.clear(), s.y.clear(), s.yLow.clear(), s.markerLabels.clear();
  s.kind = SeriesKind::Off;
}

int clsVXCoordinateGraph::AddDataSeries(GraphSeries series) {
  series_.push_back(std::move(series));
  return DataSeriesCount() - 1;
}

void clsVXCoordinateGraph::SetLineData(int index, std::vector<double> x, std::vector<double> y) {
  GraphSeries& s = Series(index);
  const size_t n = std::min(x.size(), y.size());
  x.resize(n), y.resize(n);
  s.x = std::move(x), s.y = std::move(y);
}

void clsVXCoordinateGraph::SetAreaData(int index, std::vector<double> x, std::vector<double> yLow,
                                       std::vector<double> yHigh) {
  GraphSeries& s = Series(index);
  const size_t n = std::min({x.size(), yLow.size(), yHigh.size()});
  x.resize(n), yLow.resize(n), yHigh.resize(n);
  s.kind = SeriesKind::Area;
  s.x = std::move(x), s.y = std::move(yHigh), s.yLow = std::move(yLow);
}

void clsVXCoordinateGraph::SetLineLabelData(int index, std::string text, int point) {
  Series(index).lineLabel = std::move(text);
  Series(index).lineLabelPoint = point;
}

void clsVXCoordinateGraph::SetLineStyle(int index, LineStyle style, const Pen& pen) {
  Series(index).lineStyle = style;
  Series(index).pen = pen;
}

void clsVXCoordinateGraph::SetMarkerStyle(int index, MarkerShape shape, double size, const Brush& fill) {
  GraphSeries& s = Series(index);
  s.marker = shape, s.markerSize = size, s.markerFill = fill;
}

void clsVXCoordinateGraph::SetAreaStyle(int index, const Brush& brush, const Pen& outline) {
  Series(index).areaBrush = brush;
  Series(index).pen = outline;
}

Argb clsVXCoordinateGraph::DefaultSeriesColour(int index) {
  static const Argb kPalette[] = {Rgb(0x1f, 0x4e, 0x9c), Rgb(0xc0, 0x39, 0x2b), Rgb(0x2e, 0x8b, 0x57),
                                  Rgb(0xd4, 0x81, 0x1b), Rgb(0x7b, 0x3f, 0xa0), Rgb(0x1a, 0x9c, 0xa8),
                                  Rgb(0x8c, 0x56, 0x4b), Rgb(0xd6, 0x4f, 0xa8)};
  return kPalette[static_cast<size_t>(std::max(index, 0)) % std::size(kPalette)];
}

std::vector<std::string> clsVXCoordinateGraph::GetLegendLabel() const {
  std::vector<std::string> labels;
  for (const GraphSeries& s : series_)
    if (s.kind == SeriesKind::Line && !s.legend.empty()) labels.push_back(s.legend);
  if (legendPosition_ == kLegendBottomRight || legendPosition_ == kLegendBottomLeft)
    std::reverse(labels.begin(), labels.end());
  return labels;
}

// --- window ---------------------------------------------------------------------------------

void clsVXCoordinateGraph::SetWindow(const RectF& window) {
  window_ = window;
  ApplyMargins();
}

void clsVXCoordinateGraph::SetPercentWindow(double left, double right, double top, double bottom) {
  margins_ = {left, right, top, bottom};
  percentMargins_ = true;
  ApplyMargins();
}

void clsVXCoordinateGraph::SetPlotMargins(double left, double right, double top, double bottom) {
  margins_ = {left, right, top, bottom};
  percentMargins_ = false;
  ApplyMargins();
}

void clsVXCoordinateGraph::ApplyMargins() {
  const double w = window_.width, h = window_.height;
  // Fractions become whole viewport units, as the window's integers hold them.
  auto m = [&](int i, double size) {
    return percentMargins_ ? std::nearbyint(size * margins_[static_cast<size_t>(i)])
                           : margins_[static_cast<size_t>(i)];
  };
  const double left = window_.left + m(0, w), right = window_.right() - m(1, w);
  const double top = window_.top + m(2, h), bottom = window_.bottom() - m(3, h);
  plot_ = {left, top, std::max(right - left, 1.0), std::max(bottom - top, 1.0)};
}

// --- axes -----------------------------------------------------------------------------------

bool clsVXCoordinateGraph::DetectAxisBounds(double& xMin, double& xMax, double& yMin, double& yMax) const {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  xMin = yMin = kInf, xMax = yMax = -kInf;
  auto take = [](double v, bool log, double& lo, double& hi) {
    if (!std::isfinite(v) || (log && v <= 0)) return;
    lo = std::min(lo, v), hi = std::max(hi, v);
  };
  for (const GraphSeries& s : series_) {
    if (!Drawn(s)) continue;
    for (size_t i = 0; i < s.x.size(); ++i) {
      const bool xOk = std::isfinite(s.x[i]) && !(XAxis().log && s.x[i] <= 0);
      if (!xOk) continue;
      take(s.x[i], XAxis().log, xMin, xMax);
      if (i < s.y.size()) take(s.y[i], YAxis().log, yMin, yMax);
      if (i < s.yLow.size()) take(s.yLow[i], YAxis().log, yMin, yMax);
    }
  }
  const bool found = xMin <= xMax && yMin <= yMax;
  if (!found) xMin = xMax = yMin = yMax = 0.0;
  return found;
}

void clsVXCoordinateGraph::NiceAxis(GraphAxis& a, double min, double max) const {
  if (a.log) {
    const double lo = std::floor(std::log10(std::max(min, 1e-16)));
    double hi = std::ceil(std::log10(std::max(max, 1e-16)));
    if (hi <= lo) hi = lo + 1;
    a.min = std::pow(10.0, lo), a.max = std::pow(10.0, hi), a.major = 10.0, a.minor = 9;
    return;
  }
  const double interval = NiceRange(min, max);
  a.minor = 5;
  a.major = interval * 5;
  if (min > a.major) min -= a.major;
  a.max = std::nearbyint(max / a.major + 0.499999999999999) * a.major;
  a.min = std::nearbyint(min / a.major - 0.499999999999999) * a.major;
}

void clsVXCoordinateGraph::AutoAxes(bool force, bool keepMinimum, double xMin, double xMax, double yMin,
                                    double yMax) {
  if (force || yMin == yMax || (yMax - yMin > 0.1 && yMax - yMin < 0.5)) yMin *= 0.5, yMax *= 1.5;
  if (force || xMin == xMax) xMin *= 0.5, xMax *= 1.5;
  const double bounds[2][2] = {{xMin, xMax}, {yMin, yMax}};
  for (int i = 0; i < 2; ++i) {
    GraphAxis& a = axes_[static_cast<size_t>(i)];
    if (!a.fixed) NiceAxis(a, bounds[i][0], bounds[i][1]);
  }
  if (xMin == 0 && xMax == 0 && yMin == 0 && yMax == 0 && !series_.empty()) series_[0].kind = SeriesKind::Off;
  for (GraphAxis& a : axes_) {
    if (!a.log && a.max - a.min == 0) a.max = a.min + 10, a.major = 0.2 * 5, a.minor = 5;
    if (keepMinimum || a.fixed || a.log || a.min >= 0)
      a.cross = a.min;
    else
      a.cross = a.max >= 0 ? 0.0 : a.max;
  }
}

void clsVXCoordinateGraph::AutoAxes(bool force, bool keepMinimum) {
  double x0, x1, y0, y1;
  DetectAxisBounds(x0, x1, y0, y1);
  AutoAxes(force, keepMinimum, x0, x1, y0, y1);
}

void clsVXCoordinateGraph::EqualAxes(bool force, bool keepMinimum, double xMin, double xMax, double yMin,
                                     double yMax) {
  const double w = plot_.width, h = plot_.height;
  // Grows the axis of the smaller scale so that a world unit is as long on both.
  auto equalise = [&](double& x0, double& x1, double& y0, double& y1) {
    const double sx = (x1 - x0) / w, sy = (y1 - y0) / h;
    if (sx <= 0 || sy <= 0) return;
    if (sx < sy) {
      const double added = (y1 - y0) * w / h - (x1 - x0);
      x0 -= 0.49 * added, x1 += 0.49 * added;
    } else if (sy < sx) {
      const double added = (x1 - x0) * h / w - (y1 - y0);
      y0 -= 0.49 * added, y1 += 0.49 * added;
    }
  };
  equalise(xMin, xMax, yMin, yMax);
  AutoAxes(force, keepMinimum, xMin, xMax, yMin, yMax);
  equalise(XAxis().min, XAxis().max, YAxis().min, YAxis().max);
}

void clsVXCoordinateGraph::FixAxis(GraphAxis& axis, double min, double max, double major) {
  axis.fixed = true;
  axis.min = min, axis.max = max;
  axis.minor = 5;
  axis.major = major > 0 ? major : NiceRange(min, max) * 5;
  axis.cross = min;
}

void clsVXCoordinateGraph::GetWorldAxisExtents(double& xMin, double& xMax, double& yMin, double& yMax) const {
  xMin = XAxis().min, xMax = XAxis().max, yMin = YAxis().min, yMax = YAxis().max;
}

// --- mapping --------------------------------------------------------------------------------

// The position of a value along an axis as a fraction of its extent.
double clsVXCoordinateGraph::ToAxis(const GraphAxis& a, double v) const {
  if (a.log) {
    const double lo = std::log10(std::max(a.min, 1e-16)), hi = std::log10(std::max(a.max, 1e-16));
    return hi == lo ? 0.0 : (std::log10(std::max(v, 1e-16)) - lo) / (hi - lo);
  }
  return a.max == a.min ? 0.0 : (v - a.min) / (a.max - a.min);
}

double clsVXCoordinateGraph::FromAxis(const GraphAxis& a, double t) const {
  if (a.log) {
    const double lo = std::log10(std::max(a.min, 1e-16)), hi = std::log10(std::max(a.max, 1e-16));
    return std::pow(10.0, lo + t * (hi - lo));
  }
  return a.min + t * (a.max - a.min);
}

PointF clsVXCoordinateGraph::GetViewportPositionFromWorldCoordinates(double x, double y) const {
  return {plot_.left + ToAxis(XAxis(), x) * plot_.width, plot_.bottom() - ToAxis(YAxis(), y) * plot_.height};
}

void clsVXCoordinateGraph::GetWorldCoordinatesFromViewportPosition(PointF v, double& x, double& y) const {
  x = FromAxis(XAxis(), (v.x - plot_.left) / plot_.width);
  y = FromAxis(YAxis(), (plot_.bottom() - v.y) / plot_.height);
}

// --- drawing --------------------------------------------------------------------------------

RectF clsVXCoordinateGraph::LegendBox() const {
  const size_t n = GetLegendLabel().size();
  if (!legendOn_ || n == 0) return {};
  const double span = plot_.width, inset = 0.04 * span;
  const double height = static_cast<double>(n) * kLegendRow;
  const bool right = legendPosition_ == kLegendTopRight || legendPosition_ == kLegendBottomRight;
  const bool bottom = legendPosition_ == kLegendBottomRight || legendPosition_ == kLegendBottomLeft;
  const double width = legendPosition_ == kLegendFullWidth ? span - 2 * inset : 0.4 * span;
  const double left = right ? plot_.right() - inset - width : plot_.left + inset;
  const double top = bottom ? plot_.bottom() - kLegendBottomGap - height : plot_.top + kLegendRow;
  return {left, top, width, height};
}

std::vector<double> clsVXCoordinateGraph::Ticks(const GraphAxis& a, bool minor) const {
  std::vector<double> ticks;
  if (a.log) {
    for (double decade = a.min; decade <= a.max * (1 + 1e-9); decade *= 10)
      for (int k = 1; k <= (minor ? 9 : 1); ++k)
        if (decade * k <= a.max * (1 + 1e-9)) ticks.push_back(decade * k);
    return ticks;
  }
  const double step = minor ? a.major / std::max(a.minor, 1) : a.major;
  if (!(step > 0) || (a.max - a.min) / step > 1000) return ticks;
  for (double k = std::ceil(a.min / step - 1e-9);; k += 1) {
    const double v = k * step;
    if (v > a.max + step * 1e-9) break;
    ticks.push_back(std::fabs(v) < step * 1e-9 ? 0.0 : v);
  }
  return ticks;
}

void clsVXCoordinateGraph::CreateGraph(DrawingSurface& s) const {
  const Pen frame{Rgb(0x33, 0x33, 0x33), 1.0};
  const Pen grid{Rgb(0xd8, 0xd8, 0xd8), 0.6, DashStyle::Dot};
  const Argb text = Rgb(0x22, 0x22, 0x22);
  const RectF plot = Px(plot_);
  s.DrawRectangle(plot, Pen{kNoColour}, Brush{Rgb(255, 255, 255)});
  // Grid at the major ticks, then the frame.
  for (double v : Ticks(XAxis(), false)) {
    const double x = Px(GetViewportPositionFromWorldCoordinates(v, YAxis().min)).x;
    s.DrawLine({x, plot.top}, {x, plot.bottom()}, grid);
  }
  for (double v : Ticks(YAxis(), false)) {
    const double y = Px(GetViewportPositionFromWorldCoordinates(XAxis().min, v)).y;
    s.DrawLine({plot.left, y}, {plot.right(), y}, grid);
  }
  s.DrawRectangle(plot, frame, Brush{});
  // The axes where they cross, with their ticks; the labels stand along the plot's edges.
  const PointF origin = Px(GetViewportPositionFromWorldCoordinates(XAxis().cross, YAxis().cross));
  s.DrawLine({plot.left, origin.y}, {plot.right(), origin.y}, frame);
  s.DrawLine({origin.x, plot.top}, {origin.x, plot.bottom()}, frame);
  for (bool minor : {true, false}) {
    const double len = minor ? 2.5 : 5.0;
    for (double v : Ticks(XAxis(), minor)) {
      const double x = Px(GetViewportPositionFromWorldCoordinates(v, 0)).x;
      s.DrawLine({x, origin.y}, {x, origin.y - len}, frame);
      if (!minor) s.DrawText({x, plot.bottom() + 4}, TickLabel(v), TextAnchor::Top, kAxisFont, text);
    }
    for (double v : Ticks(YAxis(), minor)) {
      const double y = Px(GetViewportPositionFromWorldCoordinates(0, v)).y;
      s.DrawLine({origin.x, y}, {origin.x + len, y}, frame);
      if (!minor) s.DrawText({plot.left - 5, y}, TickLabel(v), TextAnchor::Right, kAxisFont, text);
    }
  }
  const double lineHeight = s.TextHeight(kAxisFont);
  s.DrawText({plot.left + plot.width / 2, plot.bottom() + 6 + lineHeight * 1.3}, XAxis().caption,
             TextAnchor::Top, kAxisFont, text);
  s.DrawText({Px(window_).left + 4, plot.top + plot.height / 2}, YAxis().caption, TextAnchor::Top, kAxisFont,
             text, 90.0);
  s.DrawText({plot.left + plot.width / 2, plot.top - 4}, title_, TextAnchor::Bottom, kTitleFont, text);
}

namespace {

void DrawMarker(DrawingSurface& s, PointF c, const GraphSeries& series) {
  const double r = series.markerSize / 2;
  const Pen pen{series.pen.colour, std::max(series.pen.width * 0.75, 1.0)};
  switch (series.marker) {
    case MarkerShape::Circle:
      s.DrawEllipse({c.x - r, c.y - r, 2 * r, 2 * r}, pen, series.markerFill);
      break;
    case MarkerShape::Square:
      s.DrawRectangle({c.x - r, c.y - r, 2 * r, 2 * r}, pen, series.markerFill);
      break;
    case MarkerShape::Triangle: {
      const PointF p[] = {{c.x, c.y - r}, {c.x + r, c.y + r}, {c.x - r, c.y + r}};
      s.DrawPolygon(p, pen, series.markerFill);
      break;
    }
    case MarkerShape::Diamond: {
      const PointF p[] = {{c.x, c.y - r}, {c.x + r, c.y}, {c.x, c.y + r}, {c.x - r, c.y}};
      s.DrawPolygon(p, pen, series.markerFill);
      break;
    }
    case MarkerShape::Cross:
      s.DrawLine({c.x - r, c.y - r}, {c.x + r, c.y + r}, pen);
      s.DrawLine({c.x - r, c.y + r}, {c.x + r, c.y - r}, pen);
      break;
  }
}

// A smooth curve through the points (x rising), sampled from the spline's Bezier spans; the
// points themselves when they cannot carry one.
std::vector<std::pair<double, double>> SplinePoints(const std::vector<double>& x,
                                                    const std::vector<double>& y) {
  std::vector<std::pair<double, double>> out;
  const int n = static_cast<int>(x.size());
  bool rising = n >= 3;
  for (int i = 1; i < n && rising; ++i) rising = x[static_cast<size_t>(i)] > x[static_cast<size_t>(i) - 1];
  if (!rising) {
    for (int i = 0; i < n; ++i) out.emplace_back(x[static_cast<size_t>(i)], y[static_cast<size_t>(i)]);
    return out;
  }
  clsVXSplineFit fit;
  fit.count(n);
  for (int i = 0; i < n; ++i) fit.x(i, x[static_cast<size_t>(i)]), fit.y(i, y[static_cast<size_t>(i)]);
  fit.MakeControlWithLinearSections(0, 0, 0, 0, 2);
  const int controls = fit.ControlCount();
  out.emplace_back(fit.ControlX(0), fit.ControlY(0));
  for (int k = 0; k + 3 < controls; k += 3) {
    for (int j = 1; j <= 12; ++j) {
      const double t = j / 12.0, u = 1 - t;
      const double b0 = u * u * u, b1 = 3 * u * u * t, b2 = 3 * u * t * t, b3 = t * t * t;
      out.emplace_back(b0 * fit.ControlX(k) + b1 * fit.ControlX(k + 1) + b2 * fit.ControlX(k + 2) +
                           b3 * fit.ControlX(k + 3),
                       b0 * fit.ControlY(k) + b1 * fit.ControlY(k + 1) + b2 * fit.ControlY(k + 2) +
                           b3 * fit.ControlY(k + 3));
    }
  }
  return out;
}

}  // namespace

void clsVXCoordinateGraph::PlotDataSeries(DrawingSurface& s, int index) const {
  const GraphSeries& series = Series(index);
  if (!Drawn(series)) return;
  auto at = [&](double x, double y) { return Px(GetViewportPositionFromWorldCoordinates(x, y)); };
  auto finite = [&](size_t i, const std::vector<double>& ys) {
    return i < ys.size() && std::isfinite(series.x[i]) && std::isfinite(ys[i]);
  };
  if (series.kind == SeriesKind::Area) {
    std::vector<PointF> polygon;
    for (size_t i = 0; i < series.x.size(); ++i)
      if (finite(i, series.y)) polygon.push_back(at(series.x[i], series.y[i]));
    for (size_t i = series.x.size(); i-- > 0;)
      if (finite(i, series.yLow)) polygon.push_back(at(series.x[i], series.yLow[i]));
    s.DrawPolygon(polygon, series.pen, series.areaBrush);
    return;
  }
  const bool line = series.lineStyle != LineStyle::Markers;
  const bool markers = series.lineStyle == LineStyle::SplineMarkers ||
                       series.lineStyle == LineStyle::PolylineMarkers ||
                       series.lineStyle == LineStyle::Markers;
  const bool spline =
      (series.lineStyle == LineStyle::Spline || series.lineStyle == LineStyle::SplineMarkers) &&
      !XAxis().log && !YAxis().log;
  // A gap in the data (a value that is not finite) breaks the line.
  std::vector<double> rx, ry;
  auto flush = [&] {
    if (rx.size() >= 2 && line) {
      std::vector<PointF> points;
      if (spline)
        for (auto [x, y] : SplinePoints(rx, ry)) points.push_back(at(x, y));
      else
        for (size_t i = 0; i < rx.size(); ++i) points.push_back(at(rx[i], ry[i]));
      s.DrawPolyline(points, series.pen);
    }
    rx.clear(), ry.clear();
  };
  for (size_t i = 0; i < series.x.size(); ++i) {
    if (!finite(i, series.y) || (XAxis().log && series.x[i] <= 0) || (YAxis().log && series.y[i] <= 0)) {
      flush();
      continue;
    }
    rx.push_back(series.x[i]), ry.push_back(series.y[i]);
  }
  flush();
  const Argb text = series.pen.colour;
  for (size_t i = 0; i < series.x.size(); ++i) {
    if (!finite(i, series.y)) continue;
    const PointF p = at(series.x[i], series.y[i]);
    if (markers) DrawMarker(s, p, series);
    if (i < series.markerLabels.size() && !series.markerLabels[i].empty())
      s.DrawText({p.x + series.markerSize, p.y - series.markerSize / 2}, series.markerLabels[i],
                 TextAnchor::BottomLeft, kAxisFont, text);
  }
  if (!series.lineLabel.empty()) {
    const size_t n = series.x.size();
    const size_t i = series.lineLabelPoint >= 0 && static_cast<size_t>(series.lineLabelPoint) < n
                         ? static_cast<size_t>(series.lineLabelPoint)
                         : n - 1;
    if (finite(i, series.y)) {
      const PointF p = at(series.x[i], series.y[i]);
      s.DrawText({p.x + 4, p.y}, series.lineLabel, TextAnchor::BottomLeft, kAxisFont, text);
    }
  }
}

void clsVXCoordinateGraph::PlotLegend(DrawingSurface& s) const {
  const RectF box = LegendBox();
  if (box.width <= 0) return;
  const RectF px = Px(box);
  s.DrawRectangle(px, Pen{Rgb(0x99, 0x99, 0x99), 0.8}, Brush{Rgb(255, 255, 255, 235)});
  std::vector<const GraphSeries*> rows;
  for (const GraphSeries& series : series_)
    if (series.kind == SeriesKind::Line && !series.legend.empty()) rows.push_back(&series);
  if (legendPosition_ == kLegendBottomRight || legendPosition_ == kLegendBottomLeft)
    std::reverse(rows.begin(), rows.end());
  const double row = kLegendRow / kTwipsPerPixel, sample = 22.0;
  const double textWidth = px.width - sample - 12;
  for (size_t i = 0; i < rows.size(); ++i) {
    const GraphSeries& series = *rows[i];
    const double y = px.top + row * (static_cast<double>(i) + 0.5);
    if (series.lineStyle != LineStyle::Markers)
      s.DrawLine({px.left + 4, y}, {px.left + 4 + sample, y}, series.pen);
    if (series.lineStyle == LineStyle::SplineMarkers || series.lineStyle == LineStyle::PolylineMarkers ||
        series.lineStyle == LineStyle::Markers)
      DrawMarker(s, {px.left + 4 + sample / 2, y}, series);
    // A label longer than the box is shortened with "...".
    std::string label = series.legend;
    while (label.size() > 4 && s.TextWidth(label, kAxisFont) > textWidth)
      label = label.substr(0, label.size() - 4) + "...";
    s.DrawText({px.left + sample + 8, y}, label, TextAnchor::Left, kAxisFont, Rgb(0x22, 0x22, 0x22));
  }
}

void clsVXCoordinateGraph::Refresh(DrawingSurface& s) {
  SetWindow({0, 0, s.Width() * kTwipsPerPixel, s.Height() * kTwipsPerPixel});
  s.Clear(Rgb(255, 255, 255));
  CreateGraph(s);
  const RectF clip = Px(plot_);
  s.SetClip(&clip);
  for (int i = 0; i < DataSeriesCount(); ++i) {
    if (!Drawn(Series(i))) continue;
    s.BeginGroup(Series(i).kind == SeriesKind::Area ? "series area" : "series");
    PlotDataSeries(s, i);
  }
  s.BeginGroup("");
  s.SetClip(nullptr);
  if (legendOn_) PlotLegend(s);
  if (!note_.empty())
    s.DrawText({clip.left + clip.width / 2, clip.top + clip.height / 2}, note_, TextAnchor::Centre,
               kTitleFont, Rgb(0x80, 0x80, 0x80));
}

std::string GraphSvg(clsVXCoordinateGraph& graph, double width, double height) {
  SvgSurface svg(width, height);
  graph.Refresh(svg);
  return svg.Document();
}

}  // namespace velmar
