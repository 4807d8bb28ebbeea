// The custom graph options window and the program's graph settings.
#include "ui/graph_options_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <filesystem>

#include "app/application.h"
#include "core/project.h"
#include "core/speed_performance.h"
#include "core/ui_hooks.h"
#include "files/project_file.h"

namespace velmar {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

QStringList Labels(const std::vector<std::string>& list) {
  QStringList out;
  for (const std::string& s : list) out << Q(s);
  return out;
}

enum GraphColumn { kPreset, kXField, kYField };

}  // namespace

GraphSettings& ProgramGraphSettings() {
  static GraphSettings settings = [] {
    GraphSettings s;
    for (Mode m : {Mode::Resistance, Mode::Propulsion})
      s.options[static_cast<size_t>(m)].graphs = DefaultGraphs(m);
    return s;
  }();
  return settings;
}

std::vector<GraphSource> CompareSources() {
  const GraphSettings& s = ProgramGraphSettings();
  std::vector<GraphSource> out;
  for (size_t i = 0; i < s.compare.size(); ++i) out.push_back({&s.compare[i], s.compareLabels[i]});
  return out;
}

GraphOptionsDialog::GraphOptionsDialog(Mode mode, QWidget* parent)
    : QDialog(parent),
      mode_(mode),
      graphs_(new QTableWidget(0, 3, this)),
      lineStyle_(new QComboBox(this)),
      legend_(new QComboBox(this)),
      position_(new QComboBox(this)) {
  setObjectName("frmCustomGraphOptions");
  setWindowTitle(mode == Mode::Propulsion ? "Custom graph options: Propulsion"
                                          : "Custom graph options: Resistance");
  const CustomGraphOptions& o = ProgramGraphSettings().options[static_cast<size_t>(mode)];

  graphs_->setObjectName("dtbGraphs");
  graphs_->setHorizontalHeaderLabels({"Graph", "X axis", "Y axis"});
  graphs_->verticalHeader()->setDefaultSectionSize(graphs_->fontMetrics().height() + 12);
  graphs_->setSelectionBehavior(QAbstractItemView::SelectRows);
  graphs_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  for (const CustomGraph& g : o.graphs) AddGraph(g);
  auto* add = new QPushButton("Add graph", this);
  auto* remove = new QPushButton("Remove graph", this);
  connect(add, &QPushButton::clicked, this, [this] { AddGraph(CustomGraph{}); });
  connect(remove, &QPushButton::clicked, this, &GraphOptionsDialog::RemoveGraph);
  auto* graphButtons = new QHBoxLayout;
  graphButtons->addWidget(add);
  graphButtons->addWidget(remove);
  graphButtons->addStretch();
  auto* graphBox = new QGroupBox("Graphs", this);
  auto* graphLayout = new QVBoxLayout(graphBox);
  graphLayout->addWidget(graphs_);
  graphLayout->addLayout(graphButtons);

  lineStyle_->setObjectName("cboLineStyle");
  lineStyle_->addItems(Labels(LineStyleLabels()));
  lineStyle_->setCurrentIndex(static_cast<int>(o.lineStyle));
  legend_->setObjectName("cboLegend");
  legend_->addItems(Labels(LegendOnLabels()));
  legend_->setCurrentIndex(o.legendOn ? 1 : 0);
  position_->setObjectName("cboLegendPosition");
  position_->addItems(Labels(LegendPositionLabels()));
  position_->setCurrentIndex(o.legendPosition);
  connect(legend_, &QComboBox::currentIndexChanged, position_,
          [this](int on) { position_->setEnabled(on == 1); });
  position_->setEnabled(o.legendOn);
  auto* styleBox = new QGroupBox("Lines and legend", this);
  auto* styleForm = new QFormLayout(styleBox);
  styleForm->addRow("Line style:", lineStyle_);
  styleForm->addRow("Legend:", legend_);
  styleForm->addRow("Position:", position_);

  auto* filesBox = new QGroupBox("Compare files", this);
  auto* filesForm = new QFormLayout(filesBox);
  filesForm->addRow(Q(CompareFileCaption(0)), new QLabel(Q(App().primary.Project->FileName), filesBox));
  for (int i = 0; i < CustomGraphOptions::kCompareFileCount; ++i) {
    auto* edit = new QLineEdit(filesBox);
    edit->setObjectName(QString("txtCompareFile%1").arg(i + 1));
    if (static_cast<size_t>(i) < o.compareFiles.size())
      edit->setText(Q(o.compareFiles[static_cast<size_t>(i)]));
    auto* browse = new QToolButton(filesBox);
    browse->setText("...");
    connect(browse, &QToolButton::clicked, this, [edit] {
      const std::string path = Hooks().AskFilePath("Open file...", "Corvenith Velmar (*.vxvl)", false);
      if (!path.empty()) edit->setText(Q(path));
    });
    auto* row = new QHBoxLayout;
    row->addWidget(edit);
    row->addWidget(browse);
    filesForm->addRow(Q(CompareFileCaption(i + 1)), row);
    files_[static_cast<size_t>(i)] = edit;
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* side = new QVBoxLayout;
  side->addWidget(styleBox);
  side->addWidget(filesBox);
  side->addStretch();
  auto* body = new QHBoxLayout;
  body->addWidget(graphBox, 3);
  body->addLayout(side, 2);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(body);
  layout->addWidget(buttons);
  resize(900, 420);
}

QComboBox* GraphOptionsDialog::Chooser(int row, int column) const {
  return qobject_cast<QComboBox*>(graphs_->cellWidget(row, column));
}

void GraphOptionsDialog::AddGraph(const CustomGraph& graph) {
  if (graphs_->rowCount() >= kMaxGraphs) return;
  const int row = graphs_->rowCount();
  graphs_->insertRow(row);
  // The presets of the list that the project's propulsor calls for in this mode.
  auto* preset = new QComboBox(graphs_);
  for (const GraphPreset* p : PresetsOf(PresetListFor(App().primary, mode_))) preset->addItem(p->name);
  preset->setCurrentIndex(std::clamp(graph.preset, 0, preset->count() - 1));
  const clsVXUnits& units = *App().primary.Units;
  QStringList fields;
  for (int f = 0; f < kGraphFieldCount; ++f)
    fields << Q(ColumnCaption(clsVXSpeedPerformance::ColumnIndex(GraphFieldColumn(f)), units));
  auto* x = new QComboBox(graphs_);
  x->addItems(fields);
  x->setCurrentIndex(graph.xField);
  auto* y = new QComboBox(graphs_);
  y->addItems(fields);
  y->setCurrentIndex(graph.yField);
  graphs_->setCellWidget(row, kPreset, preset);
  graphs_->setCellWidget(row, kXField, x);
  graphs_->setCellWidget(row, kYField, y);
  connect(preset, &QComboBox::currentIndexChanged, this, [this, preset] {
    for (int r = 0; r < graphs_->rowCount(); ++r)
      if (Chooser(r, kPreset) == preset) UpdateAxisChoosers(r);
  });
  UpdateAxisChoosers(row);
}

// The axis fields count only for the preset "Custom".
void GraphOptionsDialog::UpdateAxisChoosers(int row) {
  const bool custom = Chooser(row, kPreset)->currentIndex() == 0;
  Chooser(row, kXField)->setEnabled(custom);
  Chooser(row, kYField)->setEnabled(custom);
}

void GraphOptionsDialog::RemoveGraph() {
  // A custom set keeps one graph at least.
  if (graphs_->rowCount() <= 1) return;
  const int row = graphs_->currentRow();
  graphs_->removeRow(row >= 0 ? row : graphs_->rowCount() - 1);
}

void GraphOptionsDialog::Apply() {
  GraphSettings& s = ProgramGraphSettings();
  CustomGraphOptions& o = s.options[static_cast<size_t>(mode_)];
  o.graphs.clear();
  for (int r = 0; r < graphs_->rowCount(); ++r)
    o.graphs.push_back({Chooser(r, kPreset)->currentIndex(), Chooser(r, kXField)->currentIndex(),
                        Chooser(r, kYField)->currentIndex()});
  o.lineStyle = static_cast<LineStyle>(lineStyle_->currentIndex());
  o.legendOn = legend_->currentIndex() == 1;
  o.legendPosition = position_->currentIndex();
  o.compareFiles.clear();
  s.compare.clear();
  s.compareLabels.clear();
  for (QLineEdit* edit : files_) {
    const std::string path = edit->text().trimmed().toStdString();
    if (path.empty()) continue;
    o.compareFiles.push_back(path);
    // The results, units and water of the file, as the reference ship reads them.
    ModelSet set = MakeModelSet(SetKind::Compare);
    if (!LoadReferenceShipData(path, set)) continue;
    s.compare.push_back(std::move(set));
    s.compareLabels.push_back(std::filesystem::path(path).filename().string());
  }
  // The other mode's record shares the compare files.
  s.options[1 - static_cast<size_t>(mode_)].compareFiles = o.compareFiles;
  s.graphMode[static_cast<size_t>(mode_)] = GraphMode::Custom;
}

bool GraphOptionsDialog::Run(Mode mode, QWidget* parent) {
  GraphOptionsDialog dialog(mode, parent);
  if (dialog.exec() != QDialog::Accepted) return false;
  dialog.Apply();
  return true;
}

}  // namespace velmar
