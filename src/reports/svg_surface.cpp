// SVG back end of the drawing surface.
#include "reports/svg_surface.h"

#include <charconv>
#include <cmath>

namespace velmar {
namespace {

// Coordinates to two decimals: enough for a pixel grid, and short.
std::string Num(double v) {
  if (!std::isfinite(v)) v = 0.0;
  char buf[32];
  const auto r =
      std::to_chars(buf, buf + sizeof buf, std::round(v * 100.0) / 100.0, std::chars_format::general);
  return std::string(buf, r.ptr);
}

std::string Points(std::span<const PointF> points) {
  std::string s;
  for (const PointF& p : points) s += (s.empty() ? "" : " ") + Num(p.x) + "," + Num(p.y);
  return s;
}

std::string Base64(const std::vector<unsigned char>& data) {
  static const char* kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  for (size_t i = 0; i < data.size(); i += 3) {
    unsigned v = static_cast<unsigned>(data[i]) << 16;
    if (i + 1 < data.size()) v |= static_cast<unsigned>(data[i + 1]) << 8;
    if (i + 2 < data.size()) v |= data[i + 2];
    out += kAlphabet[(v >> 18) & 63];
    out += kAlphabet[(v >> 12) & 63];
    out += i + 1 < data.size() ? kAlphabet[(v >> 6) & 63] : '=';
    out += i + 2 < data.size() ? kAlphabet[v & 63] : '=';
  }
  return out;
}

// A 32-bit top-down BMP: the one picture format that needs no compressor.
std::vector<unsigned char> Bmp(const ArgbImage& image) {
  std::vector<unsigned char> out;
  auto put = [&](unsigned v, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<unsigned char>((v >> (8 * i)) & 255));
  };
  const unsigned size = static_cast<unsigned>(image.width * image.height * 4);
  out.push_back('B');
  out.push_back('M');
  put(54 + size, 4), put(0, 4), put(54, 4);
  put(40, 4), put(static_cast<unsigned>(image.width), 4), put(static_cast<unsigned>(-image.height), 4);
  put(1, 2), put(32, 2), put(0, 4), put(size, 4), put(3780, 4), put(3780, 4), put(0, 4), put(0, 4);
  for (Argb p : image.pixels) put(p, 4);  // little-endian ARGB is BMP's B, G, R, A
  return out;
}

const char* DashArray(const Pen& pen) {
  switch (pen.dash) {
    case DashStyle::Dash:
      return "6,3";
    case DashStyle::Dot:
      return "1.5,2.5";
    case DashStyle::DashDot:
      return "6,3,1.5,3";
    case DashStyle::Solid:
      break;
  }
  return nullptr;
}

std::string Opacity(const char* attribute, Argb c) {
  return AlphaOf(c) == 255 ? "" : std::string(" ") + attribute + "=\"" + Num(AlphaOf(c) / 255.0) + "\"";
}

}  // namespace

std::string XmlEscape(std::string_view text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

SvgSurface::SvgSurface(double width, double height) : width_(width), height_(height) {}

std::string SvgSurface::Stroke(const Pen& pen) const {
  if (!pen.Visible()) return " stroke=\"none\"";
  std::string s = " stroke=\"" + HexOfColour(pen.colour) + "\" stroke-width=\"" + Num(pen.width) + "\"" +
                  Opacity("stroke-opacity", pen.colour);
  if (const char* dash = DashArray(pen)) s += std::string(" stroke-dasharray=\"") + dash + "\"";
  return s;
}

std::string SvgSurface::Fill(const Brush& brush) const {
  if (!brush.Visible()) return " fill=\"none\"";
  return " fill=\"" + HexOfColour(brush.colour) + "\"" + Opacity("fill-opacity", brush.colour);
}

void SvgSurface::Clear(Argb colour) {
  body_.str("");
  groupOpen_ = clipOpen_ = false;
  DrawRectangle({0, 0, width_, height_}, Pen{kNoColour}, Brush{colour});
}

void SvgSurface::DrawLine(PointF a, PointF b, const Pen& pen) {
  if (!pen.Visible()) return;
  body_ << "<line x1=\"" << Num(a.x) << "\" y1=\"" << Num(a.y) << "\" x2=\"" << Num(b.x) << "\" y2=\""
        << Num(b.y) << "\"" << Stroke(pen) << "/>\n";
}

void SvgSurface::DrawPolyline(std::span<const PointF> points, const Pen& pen) {
  if (!pen.Visible() || points.size() < 2) return;
  body_ << "<polyline points=\"" << Points(points) << "\" fill=\"none\"" << Stroke(pen)
        << " stroke-linejoin=\"round\"/>\n";
}

void SvgSurface::DrawPolygon(std::span<const PointF> points, const Pen& pen, const Brush& brush) {
  if (points.size() < 2 || (!pen.Visible() && !brush.Visible())) return;
  body_ << "<polygon points=\"" << Points(points) << "\"" << Fill(brush) << Stroke(pen) << "/>\n";
}

void SvgSurface::DrawRectangle(const RectF& r, const Pen& pen, const Brush& brush) {
  if (!pen.Visible() && !brush.Visible()) return;
  body_ << "<rect x=\"" << Num(r.left) << "\" y=\"" << Num(r.top) << "\" width=\"" << Num(r.width)
        << "\" height=\"" << Num(r.height) << "\"" << Fill(brush) << Stroke(pen) << "/>\n";
}

void SvgSurface::DrawEllipse(const RectF& r, const Pen& pen, const Brush& brush) {
  if (!pen.Visible() && !brush.Visible()) return;
  body_ << "<ellipse cx=\"" << Num(r.left + r.width / 2) << "\" cy=\"" << Num(r.top + r.height / 2)
        << "\" rx=\"" << Num(r.width / 2) << "\" ry=\"" << Num(r.height / 2) << "\"" << Fill(brush)
        << Stroke(pen) << "/>\n";
}

void SvgSurface::DrawText(PointF at, std::string_view text, TextAnchor anchor, const Font& font, Argb colour,
                          double angleDeg) {
  if (text.empty() || AlphaOf(colour) == 0) return;
  static const char* kAnchors[] = {"start", "middle", "end"};
  const int col = static_cast<int>(anchor) % 3, row = static_cast<int>(anchor) / 3;
  const double px = font.pointSize * 96.0 / 72.0;
  // The baseline below the anchor: the top of the box lies an ascent above it.
  const double baseline = row == 0 ? 0.92 * px : row == 1 ? 0.35 * px : -0.25 * px;
  body_ << "<text x=\"" << Num(at.x) << "\" y=\"" << Num(at.y + baseline) << "\" text-anchor=\""
        << kAnchors[col] << "\" font-family=\"" << XmlEscape(font.family) << ", sans-serif\" font-size=\""
        << Num(px) << "\"" << (font.bold ? " font-weight=\"bold\"" : "") << " fill=\"" << HexOfColour(colour)
        << "\"" << Opacity("fill-opacity", colour);
  if (angleDeg != 0.0)
    body_ << " transform=\"rotate(" << Num(-angleDeg) << " " << Num(at.x) << " " << Num(at.y) << ")\"";
  body_ << ">" << XmlEscape(text) << "</text>\n";
}

void SvgSurface::DrawImage(const RectF& target, const ArgbImage& image) {
  if (image.width <= 0 || image.height <= 0 ||
      image.pixels.size() != static_cast<size_t>(image.width) * static_cast<size_t>(image.height))
    return;
  body_ << "<image x=\"" << Num(target.left) << "\" y=\"" << Num(target.top) << "\" width=\""
        << Num(target.width) << "\" height=\"" << Num(target.height)
        << "\" preserveAspectRatio=\"none\" href=\"data:image/bmp;base64," << Base64(Bmp(image)) << "\"/>\n";
}

void SvgSurface::SetClip(const RectF* clip) {
  BeginGroup("");
  if (clipOpen_) body_ << "</g>\n";
  clipOpen_ = clip != nullptr;
  if (!clip) return;
  const std::string id = "clip" + std::to_string(++clipCount_);
  body_ << "<clipPath id=\"" << id << "\"><rect x=\"" << Num(clip->left) << "\" y=\"" << Num(clip->top)
        << "\" width=\"" << Num(clip->width) << "\" height=\"" << Num(clip->height) << "\"/></clipPath>\n"
        << "<g clip-path=\"url(#" << id << ")\">\n";
}

void SvgSurface::BeginGroup(const std::string& className) {
  if (groupOpen_) body_ << "</g>\n";
  groupOpen_ = !className.empty();
  if (groupOpen_) body_ << "<g class=\"" << XmlEscape(className) << "\">\n";
}

std::string SvgSurface::Document() const {
  std::string out =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" "
      "width=\"" +
      Num(width_) + "\" height=\"" + Num(height_) + "\" viewBox=\"0 0 " + Num(width_) + " " + Num(height_) +
      "\">\n" + body_.str();
  if (groupOpen_) out += "</g>\n";
  if (clipOpen_) out += "</g>\n";
  return out + "</svg>\n";
}

}  // namespace velmar
