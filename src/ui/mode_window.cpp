// The mode windows.
#include "ui/mode_window.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
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
#include "ui/entry_model.h"
#include "ui/graph_options_dialog.h"
#include "ui/graph_pane.h"
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
      graphMode_(new QComboBox(this)),
      graphPreset_(new QComboBox(this)),
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
  // The graph mode and, for "Graph: Single", the preset of the mode's list, beside the caption.
  graphMode_->setObjectName("cboGraphMode");
  for (int m = 0; m <= static_cast<int>(GraphMode::Custom); ++m)
    graphMode_->addItem(GraphModeCaption(static_cast<GraphMode>(m)));
  graphPreset_->setObjectName("cboGraphPreset");
  graphPreset_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  connect(graphMode_, &QComboBox::activated, this,
          [this](int m) { SetGraphMode(static_cast<GraphMode>(m)); });
  connect(graphPreset_, &QComboBox::activated, this,
          [this](int i) { SetGraphMode(GraphMode::Single, graphPreset_->itemData(i).toInt()); });
  auto* paneHead = new QHBoxLayout;
  paneHead->setContentsMargins(0, 0, 0, 0);
  paneHead->addWidget(paneTitle_);
  paneHead->addStretch();
  paneHead->addWidget(graphMode_);
  paneHead->addWidget(graphPreset_);
  bottomLayout->addLayout(paneHead);
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
  graphReport_ = false;
  RedrawPane();
}

void ModeWindow::ShowReport(ReportKind kind, const QString& caption) {
  report_ = kind;
  graphReport_ = false;
  paneTitle_->setText(caption);
  RedrawPane();
}

void ModeWindow::ShowGraphReport() {
  report_.reset();
  graphReport_ = true;
  paneTitle_->setText("Report: Graph");
  RedrawPane();
}

void ModeWindow::SetGraphMode(GraphMode graphMode, int preset) {
  GraphSettings& s = ProgramGraphSettings();
  s.graphMode[static_cast<size_t>(mode_)] = graphMode;
  if (preset >= 1) s.singlePreset[static_cast<size_t>(mode_)] = preset;
  ShowGraph();
}

QString ModeWindow::PaneCaption() const { return paneTitle_->text(); }

void ModeWindow::BuildGraphs() {
  const GraphSettings& s = ProgramGraphSettings();
  const GraphMode graphMode = s.graphMode[static_cast<size_t>(mode_)];
  // The presets of the list the propulsor calls for; "Custom" (index 0) is the custom set's.
  const std::vector<const GraphPreset*> presets = PresetsOf(PresetListFor(App().primary, mode_));
  const int preset =
      std::clamp(s.singlePreset[static_cast<size_t>(mode_)], 1, static_cast<int>(presets.size()) - 1);
  graphPreset_->clear();
  for (size_t i = 1; i < presets.size(); ++i) graphPreset_->addItem(presets[i]->name, static_cast<int>(i));
  graphPreset_->setCurrentIndex(preset - 1);
  graphMode_->setCurrentIndex(static_cast<int>(graphMode));
  graph_->Build(mode_, graphMode, preset);
}

ReportDocument ModeWindow::CurrentReport() {
  // The report reads through the checks: it is built from copies of the results and hull.
  ModelSet set = App().primary;
  set.SpeedPerformance = set.SpeedPerformance->CopyClass();
  set.Hull = set.Hull->CopyClass();
  // The date and time of a report are those of its making.
  ReportOptions options = reportOptions_;
  options.when = Now();
  if (graphReport_) {
    BuildGraphs();
    const clsVXCoordinateGraph empty;
    return BuildGraphReport(set, mode_, graph_->Graph() ? *graph_->Graph() : empty,
                            graph_->GraphCaption().toStdString(), options);
  }
  return BuildReport(
      set, report_.value_or(mode_ == Mode::Propulsion ? ReportKind::FullPropulsion : ReportKind::Resistance),
      options);
}

void ModeWindow::SetReportOptions(const ReportOptions& options) {
  reportOptions_ = options;
  if (ShowsReport()) RedrawPane();
}

void ModeWindow::RedrawPane() {
  const bool report = ShowsReport();
  graphMode_->setVisible(!report);
  graphPreset_->setVisible(!report &&
                           ProgramGraphSettings().graphMode[static_cast<size_t>(mode_)] == GraphMode::Single);
  if (!report) {
    BuildGraphs();
    paneTitle_->setText(GraphModeCaption(ProgramGraphSettings().graphMode[static_cast<size_t>(mode_)]));
    graphPane_->setCurrentWidget(graph_);
    return;
  }
  const ReportDocument doc = CurrentReport();
  QTextDocument* text = reportView_->document();
  int graph = 0;
  for (const ReportBlock& b : doc.blocks) {
    if (b.kind != ReportBlockKind::Graph) continue;
    text->addResource(QTextDocument::ImageResource,
                      QUrl(QString::fromStdString(ReportGraphResourceName(graph++))),
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
