#include "ui/engine_window.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <filesystem>

#include "app/application.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/legacy_files.h"
#include "files/project_file.h"
#include "propulsion/engine.h"
#include "render/graph_image.h"
#include "reports/engine_graph.h"

namespace velmar {
namespace {

using Curve = clsVXEngine::Curve;

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The scalar fields of the form, in their order.
const char* const kScalars[] = {"Description", "MaxRatedRPM", "MaxRatedPower", "ParasiticLoad"};

// The columns of the two curve tables; the net power of the maximum-power curve is shown,
// not typed.
const Curve kMaxPowerColumns[] = {Curve::MaxPowerRPM, Curve::MaxPowerPower, Curve::MaxPowerFuelRate};
const Curve kDefinedLoadColumns[] = {Curve::DefinedLoadRPM, Curve::DefinedLoadPower,
                                     Curve::DefinedLoadFuelRate};

QString UnitOf(const clsVXEngine& e, UnitFamily family) {
  return e.Units() && family != UnitFamily::None ? " [" + Q(e.Units()->Label(family)) + "]" : QString();
}

QTableWidget* CurveTable(const QStringList& heads, QWidget* parent) {
  auto* t = new QTableWidget(kEngineCurvePoints, static_cast<int>(heads.size()), parent);
  t->setHorizontalHeaderLabels(heads);
  t->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  t->verticalHeader()->setDefaultSectionSize(t->fontMetrics().height() + 6);
  return t;
}

// The count of a curve: the points down to the last row that holds a value.
int FilledRows(const clsVXEngine& e, std::span<const Curve> columns) {
  int count = 0;
  for (int i = 0; i < kEngineCurvePoints; ++i)
    for (Curve c : columns)
      if (e.CurveValue(c, i) != 0.0) count = i + 1;
  return count;
}

}  // namespace

QString FieldText(const DataClass& obj, int field) {
  return Q(obj.Fields()[field].kind == FieldKind::Text ? obj.TextOf(field) : obj.FormattedOf(field));
}

bool WriteFieldText(DataClass& obj, int field, const std::string& text) {
  if (obj.Fields()[field].kind == FieldKind::Text) {
    if (obj.TextOf(field) == text) return false;
    obj.SetText(field, text);
    return true;
  }
  const double v = TextToDouble(text);
  if (obj.Raw(field) == v) return false;
  obj.Write(field, kCurrent, v);
  return true;
}

QTableWidgetItem* SetCell(QTableWidget* table, int row, int column, const QString& text) {
  QTableWidgetItem* item = table->item(row, column);
  if (!item) table->setItem(row, column, item = new QTableWidgetItem);
  item->setText(text);
  return item;
}

// ---- The graph --------------------------------------------------------------------------

EngineGraphView::EngineGraphView(QWidget* parent) : QWidget(parent) {
  setObjectName("picEngineGraph");
  setMinimumSize(360, 260);
}

EngineGraphView::~EngineGraphView() = default;

void EngineGraphView::Build(const clsVXEngine& engine) {
  graph_ = std::make_unique<clsVXCoordinateGraph>(EngineDataGraph(engine));
  update();
}

void EngineGraphView::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  if (graph_) PaintGraph(*graph_, p, width(), height());
}

// ---- The window -------------------------------------------------------------------------

EngineWindow::EngineWindow(QWidget* parent) : QDialog(parent), engine_(App().primary.Engine->CopyClass()) {
  setObjectName("frmVXEngine");
  setWindowTitle("Engine data");
  const clsVXEngine& e = *engine_;

  auto* form = new QFormLayout;
  importPath_ = new QLineEdit(this);
  importPath_->setReadOnly(true);
  form->addRow(Q(e.FieldNameOf(e.FieldIndex("ImportFilePath"))), importPath_);
  for (int i = 0; i < 4; ++i) {
    const int field = e.FieldIndex(kScalars[i]);
    scalars_[i] = new QLineEdit(this);
    scalars_[i]->setObjectName(kScalars[i]);
    form->addRow(Q(e.FieldNameOf(field)) + UnitOf(e, e.Fields()[field].family), scalars_[i]);
    connect(scalars_[i], &QLineEdit::editingFinished, this, [this, i] { ReadScalar(i); });
  }

  maxPower_ = CurveTable(
      {"RPM", "Power" + UnitOf(e, UnitFamily::Power), "Fuel rate" + UnitOf(e, UnitFamily::FuelRate),
       "Less parasitic" + UnitOf(e, UnitFamily::Power)},
      this);
  definedLoad_ = CurveTable(
      {"RPM", "Power" + UnitOf(e, UnitFamily::Power), "Fuel rate" + UnitOf(e, UnitFamily::FuelRate)}, this);
  for (QTableWidget* t : {maxPower_, definedLoad_})
    connect(t, &QTableWidget::cellChanged, this,
            [this, t](int row, int column) { ReadCell(t, row, column); });

  auto* maxBox = new QGroupBox("Performance curve (max power)", this);
  (new QVBoxLayout(maxBox))->addWidget(maxPower_);
  auto* loadBox = new QGroupBox("Defined load curve", this);
  (new QVBoxLayout(loadBox))->addWidget(definedLoad_);
  graph_ = new EngineGraphView(this);

  auto* left = new QWidget(this);
  auto* leftLayout = new QVBoxLayout(left);
  leftLayout->setContentsMargins(0, 0, 0, 0);
  leftLayout->addLayout(form);
  leftLayout->addWidget(maxBox, 1);
  leftLayout->addWidget(loadBox, 1);
  auto* split = new QSplitter(this);
  split->addWidget(left);
  split->addWidget(graph_);
  split->setStretchFactor(1, 1);
  split->setSizes({500, 560});

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  QPushButton* import = buttons->addButton("Import...", QDialogButtonBox::ActionRole);
  import->setToolTip("Read an engine file (*.engn) or a legacy engine file (*.eng)");
  QPushButton* exportButton = buttons->addButton("Export...", QDialogButtonBox::ActionRole);
  exportButton->setToolTip("Write this engine to an engine file (*.engn)");
  connect(import, &QPushButton::clicked, this, &EngineWindow::Import);
  connect(exportButton, &QPushButton::clicked, this, [this] {
    const std::string path = Hooks().AskFilePath("Save Engine File", "Engine files (*.engn)", true);
    if (!path.empty()) WriteEngineFile(path, *engine_);
  });
  connect(buttons, &QDialogButtonBox::accepted, this, &EngineWindow::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(split, 1);
  layout->addWidget(buttons);
  resize(1060, 640);
  Fill();
}

EngineWindow::~EngineWindow() = default;

void EngineWindow::Fill() {
  filling_ = true;
  const clsVXEngine& e = *engine_;
  importPath_->setText(Q(e.ImportFilePath()));
  for (int i = 0; i < 4; ++i) scalars_[i]->setText(FieldText(e, e.FieldIndex(kScalars[i])));
  const auto fillTable = [&e](QTableWidget* t, std::span<const Curve> columns, Curve count) {
    const int n = e.CurveCount(count);
    for (int i = 0; i < kEngineCurvePoints; ++i)
      for (int c = 0; c < static_cast<int>(columns.size()); ++c)
        SetCell(t, i, c, i < n ? Q(e.CurveValueFormatted(columns[static_cast<size_t>(c)], i)) : QString());
  };
  fillTable(maxPower_, kMaxPowerColumns, Curve::MaxPowerRPM);
  fillTable(definedLoad_, kDefinedLoadColumns, Curve::DefinedLoadRPM);
  const int n = e.CurveCount(Curve::MaxPowerRPM);
  for (int i = 0; i < kEngineCurvePoints; ++i) {
    QTableWidgetItem* net = SetCell(
        maxPower_, i, 3,
        i < n ? Q(FormatNumber(e.MaxPowerNetPower(i, kCurrent), e.Units() ? e.Units()->PowerFormat() : "0.0"))
              : QString());
    net->setFlags(net->flags() & ~Qt::ItemIsEditable);
    net->setForeground(QColor(0x60, 0x60, 0x60));
  }
  filling_ = false;
  Redraw();
}

void EngineWindow::Redraw() { graph_->Build(*engine_); }

void EngineWindow::ReadScalar(int i) {
  if (!WriteFieldText(*engine_, engine_->FieldIndex(kScalars[i]), scalars_[i]->text().toStdString())) return;
  changed_ = true;
  Fill();
}

void EngineWindow::ReadCell(QTableWidget* table, int row, int column) {
  if (filling_ || column > 2) return;
  const bool max = table == maxPower_;
  const std::span<const Curve> columns =
      max ? std::span<const Curve>(kMaxPowerColumns) : std::span<const Curve>(kDefinedLoadColumns);
  engine_->CurveValue(columns[static_cast<size_t>(column)], row, kCurrent,
                      TextToDouble(table->item(row, column)->text().toStdString()));
  // The count of the curve follows the rows filled in.
  engine_->Write(engine_->FieldIndex(max ? "MaxPowerCount" : "DefinedLoadCount"), kCurrent,
                 FilledRows(*engine_, columns));
  changed_ = true;
  Fill();
}

void EngineWindow::Import() {
  const std::string path =
      Hooks().AskFilePath("Open Engine File", "Engine files (*.engn);;Legacy engine files (*.eng)", false);
  if (path.empty()) return;
  auto read = engine_->CopyClass();
  // A *.engn holds the Engine block; any other file is read as a legacy engine file.
  if (EqualsNoCase(std::filesystem::path(path).extension().string(), ".engn")) {
    if (!ReadEngineFile(path, *read)) return;  // the reader has said why
  } else {
    const LegacyReport r = ImportLegacyEngineFile(path, *read);
    if (!r.ok) {
      Hooks().ShowMessage("Engine data", r.message, 0);
      return;
    }
    if (!r.items.empty())
      Hooks().ShowMessage(
          "Engine data",
          "A data error has occurred in the file. The entire file was processed, but some data may "
          "not have been read.\r\n\r\n" +
              r.ItemsText(),
          0);
  }
  read->ImportFilePath(std::filesystem::path(path).filename().string());
  engine_ = read;
  changed_ = true;
  Fill();
}

void EngineWindow::accept() {
  if (changed_ &&
      Hooks().Ask("Engine data", "Engine data has changed. Do you want to export a copy of the changes?",
                  false, Answer::No) == Answer::Yes) {
    const std::string path = Hooks().AskFilePath("Save Engine File", "Engine files (*.engn)", true);
    if (!path.empty()) WriteEngineFile(path, *engine_);
  }
  if (changed_) {
    *App().primary.Engine = *engine_;
    SetNeedCalculate(false, true);
  }
  QDialog::accept();
}

}  // namespace velmar
