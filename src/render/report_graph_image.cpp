// A graph block of a report painted into an image.
#include "render/report_graph_image.h"

#include <QPainter>

#include "render/qpainter_surface.h"

namespace velmar {

QImage RenderReportGraph(const ReportGraph& graph, double scale) {
  QImage image(static_cast<int>(graph.width * scale), static_cast<int>(graph.height * scale),
               QImage::Format_RGB32);
  image.fill(Qt::white);
  if (graph.draw) {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.scale(scale, scale);
    QPainterSurface surface(painter, graph.width, graph.height);
    graph.draw(surface);
  }
  return image;
}

}  // namespace velmar
