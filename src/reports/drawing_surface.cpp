// Colour texts, text box anchors and the plain text estimate of the drawing surface.
#include "reports/drawing_surface.h"

#include <cstdio>

namespace velmar {

Argb ColourFromHex(std::string_view hex) {
  if (!hex.empty() && hex.front() == '#') hex.remove_prefix(1);
  if (hex.size() != 6) return Rgb(0, 0, 0);
  unsigned value = 0;
  for (char c : hex) {
    int d = c >= '0' && c <= '9'   ? c - '0'
            : c >= 'a' && c <= 'f' ? c - 'a' + 10
            : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                   : -1;
    if (d < 0) return Rgb(0, 0, 0);
    value = value * 16 + static_cast<unsigned>(d);
  }
  return 0xFF000000u | value;
}

std::string HexOfColour(Argb c) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "#%02x%02x%02x", RedOf(c), GreenOf(c), BlueOf(c));
  return buf;
}

PointF AnchorOffset(TextAnchor anchor, double width, double height) {
  const int col = static_cast<int>(anchor) % 3;  // left, centre, right
  const int row = static_cast<int>(anchor) / 3;  // top, middle, bottom
  return {-width * col / 2.0, -height * row / 2.0};
}

double DrawingSurface::TextWidth(std::string_view text, const Font& font) const {
  size_t glyphs = 0;
  for (char c : text)
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++glyphs;  // UTF-8 lead bytes only
  return static_cast<double>(glyphs) * 0.55 * font.pointSize * 96.0 / 72.0 * (font.bold ? 1.08 : 1.0);
}

double DrawingSurface::TextHeight(const Font& font) const { return 1.2 * font.pointSize * 96.0 / 72.0; }

}  // namespace velmar
