// A mode window: the entry table of the chosen Edit group on the left, the results table of
// the mode on the right with the graph or report pane below it.
#pragma once

#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QWidget>
#include <optional>

#include "core/model_set.h"
#include "reports/prediction_graphs.h"
#include "reports/report.h"
#include "ui/entry_groups.h"

class QComboBox;
class QLabel;
class QSplitter;
class QStackedWidget;
class QTextBrowser;

namespace velmar {

class EntryTableModel;
class GraphView;
class ResultsTableModel;

// Edits an enumeration as a list of its labels, a number or text as a line; remembers the
// open editor so that a command can end the edit and store what is being typed.
class EntryDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
  // Stores the open editor's value and closes it.
  void EndEdit();

 private:
  mutable QPointer<QWidget> open_;
};

class ModeWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ModeWindow(Mode mode, QWidget* parent = nullptr);

  Mode WindowMode() const { return mode_; }
  EntryTableModel* Entry() const { return entry_; }
  ResultsTableModel* Results() const { return results_; }
  QTableView* EntryView() const { return entryView_; }
  QTableView* ResultsView() const { return resultsView_; }

  void ShowTable(EntryCommand command);
  // The project was replaced, converted or calculated: both tables are read again.
  void Rebuild();
  void RefreshResults();
  void EndCellEdits();
  void SetEditResultsMode(bool on);
  // The pane below the results shows the graphs of the mode's graph mode, or a report.
  void ShowGraph();
  // Turns the pane to a graph mode; for "Graph: Single" also the preset (index in the mode's
  // list; -1 keeps the last).
  void SetGraphMode(GraphMode graphMode, int preset = -1);
  QComboBox* GraphModeBox() const { return graphMode_; }
  QComboBox* GraphPresetBox() const { return graphPreset_; }
  QString PaneCaption() const;
  void ShowReport(ReportKind kind, const QString& caption);
  // "Report: Graph": the report of the active graph of the graph mode.
  void ShowGraphReport();
  bool ShowsReport() const { return report_.has_value() || graphReport_; }
  // The report on show (the results report when the pane shows graphs), as Print and Save
  // report write it; built anew from the project as it stands.
  ReportDocument CurrentReport();
  // "Prepared by" and the page of symbols, from the options.
  void SetReportOptions(const ReportOptions& options);
  GraphView* Graph() const { return graph_; }
  QTextBrowser* Report() const { return reportView_; }

 signals:
  void Edited();

 private:
  void FitColumns();
  void RedrawPane();
  void BuildGraphs();

  Mode mode_;
  EntryTableModel* entry_;
  ResultsTableModel* results_;
  QTableView* entryView_;
  QTableView* resultsView_;
  EntryDelegate* entryDelegate_;
  EntryDelegate* resultsDelegate_;
  QLabel* entryTitle_;
  QLabel* resultsTitle_;
  QLabel* paneTitle_;
  QComboBox* graphMode_;
  QComboBox* graphPreset_;
  QStackedWidget* graphPane_;
  GraphView* graph_;
  QTextBrowser* reportView_;
  std::optional<ReportKind> report_;
  bool graphReport_ = false;
  ReportOptions reportOptions_;
};

}  // namespace velmar
