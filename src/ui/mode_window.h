// A mode window: the entry table of the chosen Edit group on the left, the results table of
// the mode on the right with the graph or report pane below it.
#pragma once

#include <QPointer>
#include <optional>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QWidget>

#include "core/model_set.h"
#include "reports/report.h"
#include "ui/entry_groups.h"

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
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
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
  // The pane below the results shows the mode's standard graph, or a report.
  void ShowGraph();
  void ShowReport(ReportKind kind, const QString& caption);
  bool ShowsReport() const { return report_.has_value(); }
  GraphView* Graph() const { return graph_; }
  QTextBrowser* Report() const { return reportView_; }

 signals:
  void Edited();

 private:
  void FitColumns();
  void RedrawPane();

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
  QStackedWidget* graphPane_;
  GraphView* graph_;
  QTextBrowser* reportView_;
  std::optional<ReportKind> report_;
};

}  // namespace velmar
