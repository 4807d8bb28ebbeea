// The mode windows.
#include "ui/mode_window.h"

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <algorithm>

#include "app/application.h"
#include "app/settings_store.h"
#include "render/report_graph_image.h"
#include "reports/report_writers.h"
#include "ui/graph_pane.h"

#include "ui/entry_model.h"
#include "ui/results_model.h"

namespace velmar {

QWidget* EntryDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
  const QStringList choices = index.data(EntryTableModel::kChoicesRole).toStringList();
  QWidget* editor = nullptr;
  if (!choices.isEmpty()) {
    auto* combo = new QComboBox(parent);
    combo->addItems(choices);
    editor = combo;
  } else {
    editor = QStyledItemDelegate::createEditor(parent, option, index);
  }
  open_ = editor;
  return editor;
}

void EntryDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (auto* combo = qobject_cast<QComboBox*>(editor)) {
    combo->setCurrentIndex(index.data(Qt::EditRole).toInt());
    return;
  }
  QStyledItemDelegate::setEditorData(editor, index);
}

void EntryDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
  if (auto* combo = qobject_cast<QComboBox*>(editor)) {
    model->setData(index, combo->currentIndex(), Qt::EditRole);
    return;
  }
  QStyledItemDelegate::setModelData(editor, model, index);
}

void EntryDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  if (open_ == editor) open_ = nullptr;
  QStyledItemDelegate::destroyEditor(editor, index);
}

void EntryDelegate::EndEdit() {
  if (!open_) return;
  QWidget* editor = open_;
  open_ = nullptr;
  emit commitData(editor);
  emit closeEditor(editor, QAbstractItemDelegate::NoHint);
}

namespace {
QLabel* Caption(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QFont f = label->font();
  f.setBold(true);
  label->setFont(f);
  label->setContentsMargins(4, 2, 4, 2);
  return label;
}
}  // namespace

ModeWindow::ModeWindow(Mode mode, QWidget* parent)
    : QWidget(parent),
      mode_(mode),
      entry_(new EntryTableModel(this)),
      results_(new ResultsTableModel(mode, this)),
      entryView_(new QTableView(this)),
      resultsView_(new QTableView(this)),
      entryDelegate_(new EntryDelegate(this)),
      resultsDelegate_(new EntryDelegate(this)),
      entryTitle_(Caption(entry_->Title(), this)),
      resultsTitle_(Caption(mode == Mode::Resistance ? "Results: Resistance" : "Results: Propulsion", this)),
      paneTitle_(Caption("Graph: Standard", this)),
      graphPane_(new QStackedWidget(this)),
      graph_(new GraphView(graphPane_)),
      reportView_(new QTextBrowser(graphPane_)) {
  setObjectName(mode == Mode::Resistance ? "frmModeResistance" : "frmModePropulsion");
  entryView_->setObjectName("dtbEntryTable");
  resultsView_->setObjectName("dtbViewEdit");

  entryView_->setModel(entry_);
  entryView_->setItemDelegate(entryDelegate_);
  entryView_->verticalHeader()->hide();
  entryView_->verticalHeader()->setDefaultSectionSize(entryView_->fontMetrics().height() + 8);
  entryView_->setSelectionMode(QAbstractItemView::SingleSelection);
  entryView_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
  entryView_->setWordWrap(false);
  auto* undo = new QAction(tr("Undo last edit"), entryView_);
  undo->setShortcut(QKeySequence::Undo);
  undo->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(undo, &QAction::triggered, entry_, [this] { entry_->UndoLastEdit(); });
  entryView_->addAction(undo);
  entryView_->setContextMenuPolicy(Qt::ActionsContextMenu);

  resultsView_->setModel(results_);
  resultsView_->setItemDelegate(resultsDelegate_);
  resultsView_->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
  resultsView_->verticalHeader()->setDefaultSectionSize(resultsView_->fontMetrics().height() + 8);
  resultsView_->setWordWrap(false);

  graphPane_->addWidget(graph_);
  graphPane_->addWidget(reportView_);
  reportView_->setObjectName("rptView");

  auto* left = new QWidget(this);
  auto* leftLayout = new QVBoxLayout(left);
  leftLayout->setContentsMargins(0, 0, 0, 0);
  leftLayout->setSpacing(2);
  leftLayout->addWidget(entryTitle_);
  leftLayout->addWidget(entryView_);

  auto* top = new QWidget(this);
  auto* topLayout = new QVBoxLayout(top);
  topLayout->setContentsMargins(0, 0, 0, 0);
  topLayout->setSpacing(2);
  topLayout->addWidget(resultsTitle_);
  topLayout->addWidget(resultsView_);

  auto* bottom = new QWidget(this);
  auto* bottomLayout = new QVBoxLayout(bottom);
  bottomLayout->setContentsMargins(0, 0, 0, 0);
  bottomLayout->setSpacing(2);
  bottomLayout->addWidget(paneTitle_);
  bottomLayout->addWidget(graphPane_);

  auto* right = new QSplitter(Qt::Vertical, this);
  right->addWidget(top);
  right->addWidget(bottom);
  right->setStretchFactor(0, 0);
  right->setStretchFactor(1, 1);
  right->setSizes({340, 500});

  auto* split = new QSplitter(Qt::Horizontal, this);
  split->addWidget(left);
  split->addWidget(right);
  split->setStretchFactor(0, 0);
  split->setStretchFactor(1, 1);
  split->setSizes({460, 900});

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(split);

  connect(entry_, &EntryTableModel::Edited, this, [this] {
    FitColumns();
    emit Edited();
  });
  connect(results_, &ResultsTableModel::Edited, this, &ModeWindow::Edited);
  FitColumns();
}

void ModeWindow::FitColumns() {
  entryView_->resizeColumnsToContents();
  // Room for the longest label of a list when it opens in the value column.
  entryView_->setColumnWidth(EntryTableModel::kValue,
                             std::clamp(entryView_->columnWidth(EntryTableModel::kValue) + 16, 150, 240));
  entryView_->horizontalHeader()->setStretchLastSection(true);
  resultsView_->resizeColumnsToContents();
}

void ModeWindow::ShowTable(EntryCommand command) {
  EndCellEdits();
  entry_->SetTable(command);
  entryTitle_->setText(entry_->Title());
  FitColumns();
}

void ModeWindow::Rebuild() {
  EndCellEdits();
  entry_->Reload();
  results_->Reload();
  FitColumns();
  RedrawPane();
}

void ModeWindow::RefreshResults() {
  results_->Reload();
  entry_->Reload();
  FitColumns();
  RedrawPane();
}

void ModeWindow::ShowGraph() {
  report_.reset();
  RedrawPane();
}

void ModeWindow::ShowReport(ReportKind kind, const QString& caption) {
  report_ = kind;
  paneTitle_->setText(caption);
  RedrawPane();
}

void ModeWindow::RedrawPane() {
  if (!report_) {
    paneTitle_->setText("Graph: Standard");
    graph_->Build(mode_);
    graphPane_->setCurrentWidget(graph_);
    return;
  }
  ReportOptions options;
  options.symbols = true;
  // The report reads through the checks: it is built from copies of the results and hull.
  ModelSet set = App().primary;
  set.SpeedPerformance = set.SpeedPerformance->CopyClass();
  set.Hull = set.Hull->CopyClass();
  const ReportDocument doc = BuildReport(set, *report_, options);
  QTextDocument* text = reportView_->document();
  int graph = 0;
  for (const ReportBlock& b : doc.blocks) {
    if (b.kind != ReportBlockKind::Graph) continue;
    text->addResource(QTextDocument::ImageResource, QUrl(QString::fromStdString(ReportGraphResourceName(graph++))),
                      RenderReportGraph(b.graph, 1.0));
  }
  reportView_->setHtml(QString::fromStdString(WriteReportHtml(doc, HtmlFlavour::RichText)));
  graphPane_->setCurrentWidget(reportView_);
}

void ModeWindow::EndCellEdits() {
  resultsDelegate_->EndEdit();
  entryDelegate_->EndEdit();
}

void ModeWindow::SetEditResultsMode(bool on) {
  resultsDelegate_->EndEdit();
  results_->SetEditMode(on);
  resultsView_->setEditTriggers(on ? QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                         QAbstractItemView::AnyKeyPressed
                                   : QAbstractItemView::NoEditTriggers);
  FitColumns();
}


}  // namespace velmar
