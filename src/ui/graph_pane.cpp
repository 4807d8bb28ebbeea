#include "ui/graph_pane.h"

#include <QPainter>

#include "app/application.h"
#include "render/graph_image.h"
#include "reports/prediction_graphs.h"

namespace velmar {

GraphView::GraphView(QWidget* parent) : QWidget(parent) {
  setObjectName("picGraph");
  setMinimumHeight(220);
}

GraphView::~GraphView() = default;

bool GraphView::Build(Mode mode) {
  const ModelSet& primary = App().primary;
  // The graph reads its columns through their checks: it reads copies, so that the words of
  // an empty table do not land on the project's stacks.
  ModelSet set = primary;
  set.SpeedPerformance = primary.SpeedPerformance->CopyClass();
  set.Hull = primary.Hull->CopyClass();
  const std::vector<GraphRequest> requests =
      GraphRequestsFor(GraphMode::Standard, CustomGraphOptions{}, PresetListFor(set, mode), 1, mode);
  graph_.reset();
  reason_.clear();
  if (requests.empty()) {
    reason_ = "No graph for this mode.";
  } else {
    GraphBuild build = BuildPredictionGraph(requests.front(), {GraphSource{&set, primary.Project->FileName}});
    if (build.drawn)
      graph_ = std::make_unique<clsVXCoordinateGraph>(std::move(build.graph));
    else
      reason_ = build.warnings.empty() ? QString("No graph: the table holds no results to draw.")
                                       : QString::fromStdString(build.warnings.front().second);
  }
  update();
  return graph_ != nullptr;
}

void GraphView::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  if (graph_) {
    PaintGraph(*graph_, p, width(), height());
    return;
  }
  p.setPen(QColor(0x60, 0x60, 0x60));
  p.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, reason_);
}

}  // namespace velmar
