// The QPainter back end of the drawing surface: the screen of the window program, and PNG,
// JPEG, BMP and PDF files. Shared by the window program and velmar-cli.
#pragma once

#include <QPainter>

#include "reports/drawing_surface.h"

namespace velmar {

class QPainterSurface final : public DrawingSurface {
 public:
  // Draws on `painter` in a box of width x height surface pixels; the painter's transform
  // (a scale for a denser image or a PDF page) applies on top.
  QPainterSurface(QPainter& painter, double width, double height);

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void Clear(Argb colour) override;
  void DrawLine(PointF a, PointF b, const Pen& pen) override;
  void DrawPolyline(std::span<const PointF> points, const Pen& pen) override;
  void DrawPolygon(std::span<const PointF> points, const Pen& pen, const Brush& brush) override;
  void DrawRectangle(const RectF& r, const Pen& pen, const Brush& brush) override;
  void DrawEllipse(const RectF& r, const Pen& pen, const Brush& brush) override;
  void DrawText(PointF at, std::string_view text, TextAnchor anchor, const Font& font, Argb colour,
                double angleDeg = 0.0) override;
  void DrawImage(const RectF& target, const ArgbImage& image) override;
  void SetClip(const RectF* clip) override;
  double TextWidth(std::string_view text, const Font& font) const override;
  double TextHeight(const Font& font) const override;

 private:
  void Use(const Pen& pen, const Brush& brush);
  QPainter& painter_;
  double width_, height_;
};

// Makes sure a QGuiApplication exists (fonts need one); without a display it runs on the
// offscreen platform. The window program has its own application, and this does nothing.
void EnsureGuiApplication();

}  // namespace velmar
