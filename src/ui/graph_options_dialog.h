// frmCustomGraphOptions: the custom graph set of a mode (each graph a preset of the mode's
// list, or a pair of axis fields for "Custom"), the line style and legend, and up to four
// project files drawn beside the active job. What the options mean is the engine's
// (GraphRequestsFor, BuildPredictionGraph); the window only fills the record.
#pragma once

#include <QDialog>
#include <array>
#include <string>
#include <vector>

#include "core/model_set.h"
#include "reports/prediction_graphs.h"

class QComboBox;
class QLineEdit;
class QTableWidget;

namespace velmar {

// The graph settings of the running program: the custom set of each mode, the graph mode and
// preset on show, and the compare files with the results read from them.
struct GraphSettings {
  std::array<CustomGraphOptions, 2> options;  // by Mode
  std::array<GraphMode, 2> graphMode{GraphMode::Standard, GraphMode::Standard};
  std::array<int, 2> singlePreset{1, 1};  // the preset of "Graph: Single" in the mode's list
  std::vector<ModelSet> compare;          // the compare files' units, water and speed table
  std::vector<std::string> compareLabels;
};
GraphSettings& ProgramGraphSettings();
// The compare files as graph sources (after the active job).
std::vector<GraphSource> CompareSources();

class GraphOptionsDialog : public QDialog {
  Q_OBJECT

 public:
  // Up to this many graphs in a custom set (a grid of two by two in the pane).
  static constexpr int kMaxGraphs = 4;

  GraphOptionsDialog(Mode mode, QWidget* parent = nullptr);
  // Shows the window; on OK stores the options and turns the mode's pane to "Graph: Custom".
  static bool Run(Mode mode, QWidget* parent);

  QTableWidget* Graphs() const { return graphs_; }
  // The preset, X and Y choosers of a graph row.
  QComboBox* Chooser(int row, int column) const;
  QComboBox* LineStyleBox() const { return lineStyle_; }
  QComboBox* LegendBox() const { return legend_; }
  QComboBox* PositionBox() const { return position_; }
  QLineEdit* CompareFile(int i) const { return files_[static_cast<size_t>(i)]; }
  void AddGraph(const CustomGraph& graph);
  void RemoveGraph();
  // Writes the window's values into the program's record and reads the compare files.
  void Apply();

 private:
  void UpdateAxisChoosers(int row);

  Mode mode_;
  QTableWidget* graphs_;
  QComboBox* lineStyle_;
  QComboBox* legend_;
  QComboBox* position_;
  std::array<QLineEdit*, CustomGraphOptions::kCompareFileCount> files_{};
};

}  // namespace velmar
