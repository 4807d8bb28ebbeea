// A graph block of a report painted into an image, for the back ends that place pictures.
#pragma once

#include <QImage>

#include "reports/report_document.h"

namespace velmar {

// The graph at its size times `scale`, on white.
QImage RenderReportGraph(const ReportGraph& graph, double scale);

}  // namespace velmar
