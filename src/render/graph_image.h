// Graphs as pictures through QPainter: an image, a painter of the caller's (screen, report
// page), or a file whose type follows its extension (png, jpg/jpeg, bmp, pdf; svg from the
// engine's own back end).
#pragma once

#include <QImage>
#include <QPainter>
#include <string>

#include "reports/coordinate_graph.h"

namespace velmar {

// Draws the graph in a box of width x height surface pixels on the painter.
void PaintGraph(clsVXCoordinateGraph& graph, QPainter& painter, double width, double height);
// The graph as an image of (width x scale) x (height x scale) pixels, on white.
QImage RenderGraphImage(clsVXCoordinateGraph& graph, int width, int height, double scale = 1.0);
// The extensions SaveGraphFile writes, lower case, without the dot.
bool IsGraphFileType(const std::string& extension);
// Writes the graph to `path` in the type of its extension. False, with the reason, when the
// type is unknown or the file cannot be written.
bool SaveGraphFile(clsVXCoordinateGraph& graph, const std::string& path, int width, int height,
                   std::string* error = nullptr);

}  // namespace velmar
