// The drawing surface: the few operations that graph logic draws through (lines, polylines,
// polygons, rectangles, ellipses, anchored text, solid pens and brushes, clearing, an image
// blit). Back ends: SvgSurface here in the engine, QPainterSurface in src/render.
// Coordinates are pixels at 96 per inch, x to the right and y downwards.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmar {

// 32-bit ARGB; an alpha of 0 means "nothing" (no outline, no fill).
using Argb = std::uint32_t;
constexpr Argb Rgb(int r, int g, int b, int a = 255) {
  return (static_cast<Argb>(a & 255) << 24) | (static_cast<Argb>(r & 255) << 16) |
         (static_cast<Argb>(g & 255) << 8) | static_cast<Argb>(b & 255);
}
inline constexpr Argb kNoColour = 0;
constexpr int AlphaOf(Argb c) { return static_cast<int>(c >> 24); }
constexpr int RedOf(Argb c) { return static_cast<int>((c >> 16) & 255); }
constexpr int GreenOf(Argb c) { return static_cast<int>((c >> 8) & 255); }
constexpr int BlueOf(Argb c) { return static_cast<int>(c & 255); }
// "333333" or "#333333" (RRGGBB) to an opaque colour; black for a text that is not one.
Argb ColourFromHex(std::string_view hex);
// "#rrggbb".
std::string HexOfColour(Argb c);

enum class DashStyle { Solid, Dash, Dot, DashDot };

struct Pen {
  Argb colour = Rgb(0, 0, 0);
  double width = 1.0;
  DashStyle dash = DashStyle::Solid;
  bool Visible() const { return AlphaOf(colour) != 0 && width > 0.0; }
};

struct Brush {
  Argb colour = kNoColour;
  bool Visible() const { return AlphaOf(colour) != 0; }
};

struct PointF {
  double x = 0.0, y = 0.0;
  bool operator==(const PointF&) const = default;
};

struct RectF {
  double left = 0.0, top = 0.0, width = 0.0, height = 0.0;
  double right() const { return left + width; }
  double bottom() const { return top + height; }
};

// Which point of the text's box sits at the given position.
enum class TextAnchor { TopLeft, Top, TopRight, Left, Centre, Right, BottomLeft, Bottom, BottomRight };

struct Font {
  double pointSize = 8.75;
  bool bold = false;
  std::string family = "DejaVu Sans";
};

// An image for the blit: `pixels` holds width x height ARGB values row by row.
struct ArgbImage {
  int width = 0, height = 0;
  std::vector<Argb> pixels;
};

class DrawingSurface {
 public:
  virtual ~DrawingSurface() = default;

  virtual double Width() const = 0;
  virtual double Height() const = 0;

  virtual void Clear(Argb colour) = 0;
  virtual void DrawLine(PointF a, PointF b, const Pen& pen) = 0;
  virtual void DrawPolyline(std::span<const PointF> points, const Pen& pen) = 0;
  // Fill first, then the outline; an invisible pen or brush is left out.
  virtual void DrawPolygon(std::span<const PointF> points, const Pen& pen, const Brush& brush) = 0;
  virtual void DrawRectangle(const RectF& r, const Pen& pen, const Brush& brush) = 0;
  virtual void DrawEllipse(const RectF& r, const Pen& pen, const Brush& brush) = 0;
  // UTF-8 text; `angleDeg` turns it counter-clockwise about `at`.
  virtual void DrawText(PointF at, std::string_view text, TextAnchor anchor, const Font& font, Argb colour,
                        double angleDeg = 0.0) = 0;
  virtual void DrawImage(const RectF& target, const ArgbImage& image) = 0;
  // Limits the drawing that follows to `clip`; nullptr lifts the limit.
  virtual void SetClip(const RectF* clip) = 0;
  // Marks what follows as one named group (a graph series) for back ends that keep structure;
  // an empty name ends the group. Painting back ends ignore it.
  virtual void BeginGroup(const std::string& name) { (void)name; }

  // Text measuring. The base estimate (an average glyph of 0.55 em) serves back ends without
  // font metrics; a painting back end answers from its fonts.
  virtual double TextWidth(std::string_view text, const Font& font) const;
  virtual double TextHeight(const Font& font) const;
};

// The offset of a text box of `width` x `height` from its anchor point to its top-left corner.
PointF AnchorOffset(TextAnchor anchor, double width, double height);

}  // namespace velmar
