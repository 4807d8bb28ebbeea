// Graphs as pictures through QPainter.
#include "render/graph_image.h"

#include <QPageSize>
#include <QPdfWriter>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "render/qpainter_surface.h"

namespace velmar {
namespace {

std::string Extension(const std::string& path) {
  std::string e = std::filesystem::path(path).extension().string();
  if (!e.empty() && e[0] == '.') e.erase(0, 1);
  std::transform(e.begin(), e.end(), e.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return e;
}

bool Fail(std::string* error, std::string text) {
  if (error) *error = std::move(text);
  return false;
}

}  // namespace

void PaintGraph(clsVXCoordinateGraph& graph, QPainter& painter, double width, double height) {
  EnsureGuiApplication();
  QPainterSurface surface(painter, width, height);
  graph.Refresh(surface);
}

QImage RenderGraphImage(clsVXCoordinateGraph& graph, int width, int height, double scale) {
  EnsureGuiApplication();
  QImage image(std::max(1, static_cast<int>(width * scale)), std::max(1, static_cast<int>(height * scale)),
               QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(scale, scale);
  PaintGraph(graph, painter, width, height);
  painter.end();
  return image;
}

bool IsGraphFileType(const std::string& extension) {
  static const char* kTypes[] = {"png", "jpg", "jpeg", "bmp", "pdf", "svg"};
  return std::find(std::begin(kTypes), std::end(kTypes), extension) != std::end(kTypes);
}

bool SaveGraphFile(clsVXCoordinateGraph& graph, const std::string& path, int width, int height,
                   std::string* error) {
  const std::string type = Extension(path);
  if (!IsGraphFileType(type))
    return Fail(error, "unknown picture type \"" + type + "\"; use png, jpg, bmp, pdf or svg");
  if (type == "svg") {
    const std::string svg = GraphSvg(graph, width, height);
    std::ofstream out(path, std::ios::binary);
    out << svg;
    return out.good() ? true : Fail(error, "cannot write \"" + path + "\"");
  }
  if (type == "pdf") {
    EnsureGuiApplication();
    QPdfWriter pdf(QString::fromStdString(path));
    constexpr int kDpi = 300;
    pdf.setResolution(kDpi);
    // A page the size of the picture: 96 surface pixels to the inch.
    pdf.setPageSize(QPageSize(QSizeF(width / 96.0 * 72.0, height / 96.0 * 72.0), QPageSize::Point));
    pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
    pdf.setTitle(QString::fromStdString(graph.Title()));
    QPainter painter;
    if (!painter.begin(&pdf)) return Fail(error, "cannot write \"" + path + "\"");
    painter.scale(kDpi / 96.0, kDpi / 96.0);
    PaintGraph(graph, painter, width, height);
    return painter.end() ? true : Fail(error, "cannot write \"" + path + "\"");
  }
  const QImage image = RenderGraphImage(graph, width, height);
  const char* format = type == "png" ? "PNG" : type == "bmp" ? "BMP" : "JPEG";
  if (!image.save(QString::fromStdString(path), format, type == "png" || type == "bmp" ? -1 : 92))
    return Fail(error, "cannot write \"" + path + "\"");
  return true;
}

}  // namespace velmar
