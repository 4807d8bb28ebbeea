// frmVXEngine: the engine data of the project, edited on a copy: the rated point, the
// maximum-power curve and the defined-load curve with their fuel rates, and the graph of both
// curves (EngineDataGraph) drawn as the data is typed. The engine file (*.engn) is read and
// written here. OK puts the copy into the project, after asking whether to export the changes.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

class QLineEdit;
class QTableWidget;
class QTableWidgetItem;

namespace velmar {

class DataClass;
class clsVXEngine;
class clsVXCoordinateGraph;

// Shared by the engine and waterjet windows, which edit copies of field-table classes.
// A field as the window shows it: a text as it stands, a number in its format.
QString FieldText(const DataClass& obj, int field);
// Stores typed text in a field (a number through TextToDouble, in the held unit) without the
// read check's words; false when the value stays as it was.
bool WriteFieldText(DataClass& obj, int field, const std::string& text);
// Writes a cell's text, keeping its item: a refill may run inside the item's own change signal.
QTableWidgetItem* SetCell(QTableWidget* table, int row, int column, const QString& text);

// The graph of an engine, drawn to the widget's size.
class EngineGraphView : public QWidget {
  Q_OBJECT

 public:
  explicit EngineGraphView(QWidget* parent = nullptr);
  ~EngineGraphView() override;
  void Build(const clsVXEngine& engine);
  clsVXCoordinateGraph* Graph() const { return graph_.get(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::unique_ptr<clsVXCoordinateGraph> graph_;
};

class EngineWindow : public QDialog {
  Q_OBJECT

 public:
  explicit EngineWindow(QWidget* parent = nullptr);
  ~EngineWindow() override;

  const clsVXEngine& Engine() const { return *engine_; }
  QTableWidget* MaxPowerTable() const { return maxPower_; }
  QTableWidget* DefinedLoadTable() const { return definedLoad_; }
  QLineEdit* Scalar(int i) const { return scalars_[i]; }
  EngineGraphView* GraphView() const { return graph_; }
  bool Changed() const { return changed_; }

  void Import();
  // Asks to export a changed copy, then puts it into the project.
  void accept() override;

 private:
  void Fill();
  void ReadScalar(int i);
  void ReadCell(QTableWidget* table, int row, int column);
  void Redraw();

  std::shared_ptr<clsVXEngine> engine_;
  QLineEdit* scalars_[4] = {};
  QLineEdit* importPath_;
  QTableWidget* maxPower_;
  QTableWidget* definedLoad_;
  EngineGraphView* graph_;
  bool changed_ = false;
  bool filling_ = false;
};

}  // namespace velmar
