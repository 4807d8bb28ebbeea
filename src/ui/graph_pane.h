// The right-hand pane of a mode window below the results: the prediction graph of the mode
// drawn through the QPainter back end, or a report of the project. Both are built from a
// copy of the data when the results change, never while painting, so that a repaint during a
// run reads nothing of the project.
#pragma once

#include <QWidget>
#include <memory>
#include <string>

#include "core/model_set.h"

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
  // Builds the mode's standard graph from the project as it stands. False when no graph
  // could be drawn (the reason is shown in its place).
  bool Build(Mode mode);
  clsVXCoordinateGraph* Graph() const { return graph_.get(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::unique_ptr<clsVXCoordinateGraph> graph_;
  QString reason_;
};

}  // namespace velmar
