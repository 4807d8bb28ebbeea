#include "ui/graph_pane.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "app/application.h"
#include "render/graph_image.h"
#include "reports/prediction_graphs.h"
#include "ui/graph_options_dialog.h"

namespace velmar {

GraphView::GraphView(QWidget* parent) : QWidget(parent) {
  setObjectName("picGraph");
  setMinimumHeight(220);
}

GraphView::~GraphView() = default;

bool GraphView::Build(Mode mode, GraphMode graphMode, int singlePreset) {
  const ModelSet& primary = App().primary;
  // The graph reads its columns through their checks: it reads copies, so that the words of
  // an empty table do not land on the project's stacks.
  ModelSet set = primary;
  set.SpeedPerformance = primary.SpeedPerformance->CopyClass();
  set.Hull = primary.Hull->CopyClass();
  const PresetList list = PresetListFor(set, mode);
  const GraphSettings& settings = ProgramGraphSettings();
  const std::vector<GraphRequest> requests =
      GraphRequestsFor(graphMode, settings.options[static_cast<size_t>(mode)], list, singlePreset, mode);
  std::vector<GraphSource> sources{GraphSource{&set, primary.Project->FileName}};
  // The compare files belong to the custom graphs.
  if (graphMode == GraphMode::Multiple || graphMode == GraphMode::Custom) {
    const std::vector<GraphSource> compare = CompareSources();
    sources.insert(sources.end(), compare.begin(), compare.end());
  }
  cells_.clear();
  for (const GraphRequest& r : requests) {
    Cell cell;
    cell.caption = r.preset ? QString(r.preset->name) : QString("Custom");
    GraphBuild build = BuildPredictionGraph(r, sources);
    if (build.drawn)
      cell.graph = std::make_unique<clsVXCoordinateGraph>(std::move(build.graph));
    else
      cell.reason = build.warnings.empty() ? QString("No graph: the table holds no results to draw.")
                                           : QString::fromStdString(build.warnings.front().second);
    cells_.push_back(std::move(cell));
  }
  if (cells_.empty()) cells_.push_back(Cell{nullptr, "No graph for this mode.", {}});
  active_ = std::clamp(active_, 0, GraphCount() - 1);
  update();
  for (const Cell& c : cells_)
    if (c.graph) return true;
  return false;
}

clsVXCoordinateGraph* GraphView::Graph() const {
  return active_ < GraphCount() ? cells_[static_cast<size_t>(active_)].graph.get() : nullptr;
}

QString GraphView::GraphCaption() const {
  return active_ < GraphCount() ? cells_[static_cast<size_t>(active_)].caption : QString();
}

void GraphView::SetActive(int index) {
  if (index < 0 || index >= GraphCount()) return;
  active_ = index;
  update();
}

// One chart fills the pane; two stand side by side; three or four in two rows.
QRect GraphView::CellRect(int index) const {
  const int n = GraphCount();
  const int columns = n > 1 ? 2 : 1;
  const int rows = (n + columns - 1) / columns;
  const int w = width() / columns, h = height() / std::max(rows, 1);
  return QRect((index % columns) * w, (index / columns) * h, w, h);
}

QSize GraphView::GraphSize() const { return CellRect(active_).size(); }

void GraphView::mousePressEvent(QMouseEvent* event) {
  for (int i = 0; i < GraphCount(); ++i)
    if (CellRect(i).contains(event->position().toPoint())) SetActive(i);
  QWidget::mousePressEvent(event);
}

void GraphView::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  for (int i = 0; i < GraphCount(); ++i) {
    const Cell& c = cells_[static_cast<size_t>(i)];
    const QRect r = CellRect(i);
    p.save();
    if (c.graph) {
      p.translate(r.topLeft());
      PaintGraph(*c.graph, p, r.width(), r.height());
    } else {
      p.setPen(QColor(0x60, 0x60, 0x60));
      p.drawText(r, Qt::AlignCenter | Qt::TextWordWrap, c.reason);
    }
    p.restore();
    // The active chart of several is framed: Save graph and the graph report take it.
    if (GraphCount() > 1 && i == active_) {
      p.setPen(QPen(QColor(0x33, 0x33, 0x33), 1, Qt::DotLine));
      p.setBrush(Qt::NoBrush);
      p.drawRect(r.adjusted(1, 1, -2, -2));
    }
  }
}

}  // namespace velmar
