// The right-hand pane of a mode window below the results: the prediction graphs of the mode
// (one, or the custom set in a grid) drawn through the QPainter back end, or a report. Both are built from a
// copy of the data when the results change, never while painting, so that a repaint during a
// run reads nothing of the project.
#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "core/model_set.h"
#include "reports/prediction_graphs.h"

class QLabel;
class QStackedWidget;
class QTextBrowser;

namespace velmar {

class clsVXCoordinateGraph;

class GraphView : public QWidget {
  Q_OBJECT

 public:
  explicit GraphView(QWidget* parent = nullptr);
  ~GraphView() override;
  // Builds the charts of the graph mode from the project as it stands: the mode's standard
  // graph, the preset `singlePreset` of the mode's list, or the custom set of the program's
  // graph settings (with the compare files). False when no chart could be drawn (the reason
  // is shown in its place).
  bool Build(Mode mode, GraphMode graphMode = GraphMode::Standard, int singlePreset = 1);
  // The active graph: the one last clicked when the pane shows several.
  clsVXCoordinateGraph* Graph() const;
  int GraphCount() const { return static_cast<int>(cells_.size()); }
  int ActiveIndex() const { return active_; }
  void SetActive(int index);
  // The size of one chart on the pane, in pixels.
  QSize GraphSize() const;
  // The caption of the active chart ("SPEED:RTOTAL", "Custom").
  QString GraphCaption() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  struct Cell {
    std::unique_ptr<clsVXCoordinateGraph> graph;
    QString reason;  // why the chart is empty
    QString caption;
  };
  QRect CellRect(int index) const;

  std::vector<Cell> cells_;
  int active_ = 0;
};

}  // namespace velmar
