// QPainter back end of the drawing surface.
#include "render/qpainter_surface.h"

#include <unistd.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPolygonF>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace velmar {
namespace {

QColor ToQColor(Argb c) { return QColor(RedOf(c), GreenOf(c), BlueOf(c), AlphaOf(c)); }

QPen ToQPen(const Pen& pen) {
  if (!pen.Visible()) return QPen(Qt::NoPen);
  QPen q(ToQColor(pen.colour), pen.width);
  static const Qt::PenStyle kStyles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
  q.setStyle(kStyles[static_cast<int>(pen.dash)]);
  q.setJoinStyle(Qt::RoundJoin);
  q.setCapStyle(Qt::FlatCap);
  return q;
}

QFont ToQFont(const Font& font) {
  QFont q(QString::fromStdString(font.family));
  q.setPointSizeF(font.pointSize);
  q.setBold(font.bold);
  return q;
}

QPolygonF ToPolygon(std::span<const PointF> points) {
  QPolygonF polygon;
  polygon.reserve(static_cast<qsizetype>(points.size()));
  for (const PointF& p : points) polygon << QPointF(p.x, p.y);
  return polygon;
}

QRectF ToQRect(const RectF& r) { return QRectF(r.left, r.top, r.width, r.height); }

// Point sizes are meant at 96 dpi whatever the device: a PDF or an image of another density
// must show the same picture.
QFont DeviceFont(const Font& font, const QPaintDevice* device) {
  QFont q = ToQFont(font);
  const int dpi = device ? device->logicalDpiY() : 96;
  if (dpi > 0) q.setPointSizeF(font.pointSize * 96.0 / dpi);
  return q;
}

}  // namespace

void EnsureGuiApplication() {
  if (QCoreApplication::instance()) return;
  if (!std::getenv("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The platform asks for a private runtime folder and warns when none is named; a headless
  // run names the one it would take.
  if (!std::getenv("XDG_RUNTIME_DIR")) {
    const std::filesystem::path dir =
        std::filesystem::temp_directory_path() / ("runtime-" + std::to_string(getuid()));
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    std::filesystem::permissions(dir, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::replace, ec);
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(dir.string()));
  }
  static int argc = 1;
  static char name[] = "velmar";
  static char* argv[] = {name, nullptr};
  static QGuiApplication* app = new QGuiApplication(argc, argv);
  (void)app;
}

QPainterSurface::QPainterSurface(QPainter& painter, double width, double height)
    : painter_(painter), width_(width), height_(height) {
  painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
}

void QPainterSurface::Use(const Pen& pen, const Brush& brush) {
  painter_.setPen(ToQPen(pen));
  painter_.setBrush(brush.Visible() ? QBrush(ToQColor(brush.colour)) : QBrush(Qt::NoBrush));
}

void QPainterSurface::Clear(Argb colour) {
  painter_.fillRect(QRectF(0, 0, width_, height_), ToQColor(colour));
}

void QPainterSurface::DrawLine(PointF a, PointF b, const Pen& pen) {
  if (!pen.Visible()) return;
  painter_.setPen(ToQPen(pen));
  painter_.drawLine(QPointF(a.x, a.y), QPointF(b.x, b.y));
}

void QPainterSurface::DrawPolyline(std::span<const PointF> points, const Pen& pen) {
  if (!pen.Visible() || points.size() < 2) return;
  painter_.setPen(ToQPen(pen));
  painter_.drawPolyline(ToPolygon(points));
}

void QPainterSurface::DrawPolygon(std::span<const PointF> points, const Pen& pen, const Brush& brush) {
  if (points.size() < 2) return;
  Use(pen, brush);
  painter_.drawPolygon(ToPolygon(points));
}

void QPainterSurface::DrawRectangle(const RectF& r, const Pen& pen, const Brush& brush) {
  Use(pen, brush);
  painter_.drawRect(ToQRect(r));
}

void QPainterSurface::DrawEllipse(const RectF& r, const Pen& pen, const Brush& brush) {
  Use(pen, brush);
  painter_.drawEllipse(ToQRect(r));
}

void QPainterSurface::DrawText(PointF at, std::string_view text, TextAnchor anchor, const Font& font,
                               Argb colour, double angleDeg) {
  if (text.empty()) return;
  const QString q = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  const QFont f = DeviceFont(font, painter_.device());
  const QFontMetricsF metrics(f, painter_.device());
  const double w = metrics.horizontalAdvance(q), h = metrics.height();
  const PointF offset = AnchorOffset(anchor, w, h);
  painter_.save();
  painter_.setFont(f);
  painter_.setPen(ToQColor(colour));
  painter_.translate(at.x, at.y);
  if (angleDeg != 0.0) painter_.rotate(-angleDeg);
  painter_.drawText(QPointF(offset.x, offset.y + metrics.ascent()), q);
  painter_.restore();
}

void QPainterSurface::DrawImage(const RectF& target, const ArgbImage& image) {
  if (image.width <= 0 || image.height <= 0 ||
      image.pixels.size() != static_cast<size_t>(image.width) * static_cast<size_t>(image.height))
    return;
  const QImage q(reinterpret_cast<const uchar*>(image.pixels.data()), image.width, image.height,
                 image.width * 4, QImage::Format_ARGB32);
  painter_.drawImage(ToQRect(target), q);
}

void QPainterSurface::SetClip(const RectF* clip) {
  if (clip)
    painter_.setClipRect(ToQRect(*clip));
  else
    painter_.setClipping(false);
}

double QPainterSurface::TextWidth(std::string_view text, const Font& font) const {
  const QFontMetricsF metrics(DeviceFont(font, painter_.device()), painter_.device());
  return metrics.horizontalAdvance(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

double QPainterSurface::TextHeight(const Font& font) const {
  return QFontMetricsF(DeviceFont(font, painter_.device()), painter_.device()).height();
}

}  // namespace velmar
