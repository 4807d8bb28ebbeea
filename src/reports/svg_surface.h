// The engine's own back end of the drawing surface: an SVG 1.1 document, written as text,
// with nothing beyond the standard library.
#pragma once

#include <sstream>
#include <string>

#include "reports/drawing_surface.h"

namespace velmar {

class SvgSurface final : public DrawingSurface {
 public:
  SvgSurface(double width, double height);

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

  // Marks the elements that follow as one group with this class (a graph series); an empty
  // name closes the open group.
  void BeginGroup(const std::string& className) override;
  // The whole document.
  std::string Document() const;

 private:
  std::string Stroke(const Pen& pen) const;
  std::string Fill(const Brush& brush) const;
  double width_, height_;
  std::ostringstream body_;
  bool groupOpen_ = false;
  bool clipOpen_ = false;
  int clipCount_ = 0;
};

// Escapes &, <, >, " for text and attribute values.
std::string XmlEscape(std::string_view text);

}  // namespace velmar
