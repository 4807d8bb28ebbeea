#include "ui/waterjet_window.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <filesystem>

#include "app/application.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/legacy_files.h"
#include "files/project_file.h"
#include "propulsion/waterjet.h"
#include "ui/engine_window.h"

namespace velmar {
namespace {

using PL = clsVXWaterjet::PointList;
using IV = clsVXWaterjet::ImpellerValue;

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The main figures, by field, with their captions.
struct ScalarRow {
  const char* field;
  const char* caption;
};
const ScalarRow kScalars[] = {
    {"Description", "Description:"},         {"ImpellerDiameter", "Impeller diameter:"},
    {"MaxRatedRPM", "Max (rated) RPM:"},     {"MaxRatedPower", "Max (rated) power:"},
    {"ShaftAngleDeg", "Shaft angle [deg]:"}, {"ZShaftAboveBottomAtTr", "Shaft height at TR:"},
};

// The impeller columns after the name.
const IV kImpellerColumns[] = {IV::ImpellerSpeed, IV::ImpellerPower, IV::ImpellerRPM};

QString UnitOf(const clsVXWaterjet& w, UnitFamily family) {
  return w.Units() && family != UnitFamily::None ? " [" + Q(w.Units()->Label(family)) + "]" : QString();
}

QTableWidget* Table(int rows, const QStringList& heads, QWidget* parent) {
  auto* t = new QTableWidget(rows, static_cast<int>(heads.size()), parent);
  t->setObjectName(heads.front());
  t->setHorizontalHeaderLabels(heads);
  t->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  t->verticalHeader()->setDefaultSectionSize(t->fontMetrics().height() + 6);
  t->setSelectionBehavior(QAbstractItemView::SelectRows);
  return t;
}

}  // namespace

WaterjetWindow::WaterjetWindow(QWidget* parent) : QDialog(parent), jet_(App().primary.Waterjet->CopyClass()) {
  setObjectName("frmVXWaterjet");
  setWindowTitle("Waterjet data");
  const clsVXWaterjet& w = *jet_;

  auto* form = new QFormLayout;
  for (int i = 0; i < 6; ++i) {
    const int field = w.FieldIndex(kScalars[i].field);
    scalars_[i] = new QLineEdit(this);
    scalars_[i]->setObjectName(kScalars[i].field);
    form->addRow(kScalars[i].caption + UnitOf(w, w.Fields()[field].family), scalars_[i]);
    connect(scalars_[i], &QLineEdit::editingFinished, this, [this, i] { ReadScalar(i); });
  }

  series_ = Table(kWaterjetMaxPowerSeries, {"Power" + UnitOf(w, UnitFamily::Power), "Points"}, this);
  points_ = Table(
      kWaterjetMaxPoints,
      {"Speed" + UnitOf(w, UnitFamily::Speed), "Thrust" + UnitOf(w, UnitFamily::Force), "Cavitation"}, this);
  impellers_ = Table(
      kWaterjetMaxImpellers,
      {"Impeller", "Speed" + UnitOf(w, UnitFamily::Speed), "Power" + UnitOf(w, UnitFamily::Power), "RPM"},
      this);
  connect(series_, &QTableWidget::cellChanged, this, &WaterjetWindow::ReadSeries);
  connect(points_, &QTableWidget::cellChanged, this, &WaterjetWindow::ReadPoint);
  connect(impellers_, &QTableWidget::cellChanged, this, &WaterjetWindow::ReadImpeller);
  connect(series_, &QTableWidget::currentCellChanged, this, [this] {
    if (!filling_) FillPoints();
  });

  auto* seriesBox = new QGroupBox("Power series", this);
  auto* seriesLayout = new QHBoxLayout(seriesBox);
  seriesLayout->addWidget(series_, 2);
  seriesLayout->addWidget(points_, 3);
  auto* impellerBox = new QGroupBox("Impellers", this);
  (new QVBoxLayout(impellerBox))->addWidget(impellers_);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  QPushButton* sort = buttons->addButton("Sort", QDialogButtonBox::ActionRole);
  sort->setToolTip("Order the power series by power and the points of each by speed");
  QPushButton* removeSeries = buttons->addButton("Remove series", QDialogButtonBox::ActionRole);
  QPushButton* removeImpeller = buttons->addButton("Remove impeller", QDialogButtonBox::ActionRole);
  import_ = buttons->addButton("Import...", QDialogButtonBox::ActionRole);
  import_->setToolTip("Read a waterjet file (*.wjet) or a legacy waterjet file");
  QPushButton* exportButton = buttons->addButton("Export...", QDialogButtonBox::ActionRole);
  exportButton->setToolTip("Write this waterjet to a waterjet file (*.wjet)");
  connect(sort, &QPushButton::clicked, this, &WaterjetWindow::Sort);
  connect(removeSeries, &QPushButton::clicked, this, &WaterjetWindow::RemoveSeries);
  connect(removeImpeller, &QPushButton::clicked, this, &WaterjetWindow::RemoveImpeller);
  connect(import_, &QPushButton::clicked, this, &WaterjetWindow::Import);
  connect(exportButton, &QPushButton::clicked, this, [this] {
    const std::string path = Hooks().AskFilePath("Save Waterjet File", "Waterjet files (*.wjet)", true);
    if (!path.empty() && !WriteWaterjetFile(path, *jet_))
      Hooks().ShowMessage("Waterjet data", "The waterjet file could not be written.", 0);
  });
  connect(buttons, &QDialogButtonBox::accepted, this, &WaterjetWindow::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(seriesBox, 3);
  layout->addWidget(impellerBox, 2);
  layout->addWidget(buttons);
  resize(820, 760);
  Fill();
  series_->setCurrentCell(0, 0);
}

WaterjetWindow::~WaterjetWindow() = default;

void WaterjetWindow::Fill() {
  filling_ = true;
  const clsVXWaterjet& w = *jet_;
  for (int i = 0; i < 6; ++i) scalars_[i]->setText(FieldText(w, w.FieldIndex(kScalars[i].field)));
  const int seriesCount = w.PowerSeriesCount();
  for (int s = 0; s < kWaterjetMaxPowerSeries; ++s) {
    const bool held = s < seriesCount;
    SetCell(series_, s, 0, held ? Q(w.PowerFormatted(s, kCurrent)) : QString());
    QTableWidgetItem* count =
        SetCell(series_, s, 1, held ? QString::number(w.PerformanceCount(s)) : QString());
    count->setFlags(count->flags() & ~Qt::ItemIsEditable);
  }
  const int impellerCount = w.ImpellerCount();
  for (int i = 0; i < kWaterjetMaxImpellers; ++i) {
    const bool held = i < impellerCount;
    SetCell(impellers_, i, 0, held ? Q(w.ImpellerName(i)) : QString());
    for (int c = 0; c < 3; ++c)
      SetCell(impellers_, i, c + 1, held ? Q(w.ImpellerValueFormatted(kImpellerColumns[c], i)) : QString());
  }
  filling_ = false;
  FillPoints();
}

void WaterjetWindow::FillPoints() {
  filling_ = true;
  const int s = std::max(0, series_->currentRow());
  const bool held = s < jet_->PowerSeriesCount();
  const int n = held ? jet_->PerformanceCount(s) : 0;
  for (int p = 0; p < kWaterjetMaxPoints; ++p) {
    SetCell(points_, p, 0, p < n ? Q(jet_->PointValueFormatted(PL::Speed, s, p)) : QString());
    SetCell(points_, p, 1, p < n ? Q(jet_->PointValueFormatted(PL::Thrust, s, p)) : QString());
    QTableWidgetItem* cav = SetCell(points_, p, 2, QString());
    cav->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    cav->setCheckState(p < n && jet_->CavZoneStatus(s, p) ? Qt::Checked : Qt::Unchecked);
  }
  filling_ = false;
}

void WaterjetWindow::Changed() {
  changed_ = true;
  const int row = series_->currentRow();
  Fill();
  series_->setCurrentCell(std::max(0, row), 0);
}

void WaterjetWindow::ReadScalar(int i) {
  if (WriteFieldText(*jet_, jet_->FieldIndex(kScalars[i].field), scalars_[i]->text().toStdString()))
    Changed();
}

// A value typed below the last held row extends the table to that row.
void WaterjetWindow::ReadSeries(int row, int column) {
  if (filling_ || column != 0) return;
  const double v = TextToDouble(series_->item(row, 0)->text().toStdString());
  jet_->Power(row, kCurrent, v);
  if (row >= jet_->PowerSeriesCount()) jet_->PowerSeriesCount(row + 1);
  Changed();
}

void WaterjetWindow::ReadPoint(int row, int column) {
  if (filling_) return;
  const int s = std::max(0, series_->currentRow());
  if (s >= jet_->PowerSeriesCount()) jet_->PowerSeriesCount(s + 1);
  if (column == 2)
    jet_->CavZoneStatus(s, row, points_->item(row, 2)->checkState() == Qt::Checked ? 1 : 0);
  else
    jet_->SetPointValue(column == 0 ? PL::Speed : PL::Thrust, s, row, kCurrent,
                        TextToDouble(points_->item(row, column)->text().toStdString()));
  if (row >= jet_->PerformanceCount(s)) jet_->PerformanceCount(s, row + 1);
  Changed();
}

void WaterjetWindow::ReadImpeller(int row, int column) {
  if (filling_) return;
  const QString text = impellers_->item(row, column)->text();
  if (column == 0)
    jet_->ImpellerName(row, text.toStdString());
  else
    jet_->SetImpellerValue(kImpellerColumns[column - 1], row, kCurrent, TextToDouble(text.toStdString()));
  if (row >= jet_->ImpellerCount()) jet_->ImpellerCount(row + 1);
  Changed();
}

void WaterjetWindow::Sort() {
  jet_->Sort();
  Changed();
}

void WaterjetWindow::RemoveSeries() {
  if (jet_->RemovePowerSeries(series_->currentRow())) Changed();
}

void WaterjetWindow::RemoveImpeller() {
  if (jet_->RemoveImpeller(impellers_->currentRow())) Changed();
}

void WaterjetWindow::Import() {
  const std::string path = Hooks().AskFilePath("Open Waterjet File",
                                               "Waterjet files (*.wjet);;Legacy waterjet files (*.*)", false);
  if (path.empty()) return;
  auto read = jet_->CopyClass();
  // A *.wjet holds the Waterjet block; any other file is read as a legacy waterjet file.
  if (EqualsNoCase(std::filesystem::path(path).extension().string(), ".wjet")) {
    if (!ReadWaterjetFile(path, *read)) {
      Hooks().ShowMessage(
          "Waterjet Import",
          "A data error has occurred in the file. The entire file was processed, but some data may "
          "not have been read.",
          0);
      return;
    }
  } else {
    const LegacyReport r = ImportLegacyWaterjetFile(path, *read);
    if (!r.ok) {
      Hooks().ShowMessage("Waterjet Import", r.message, 0);
      return;
    }
    if (!r.items.empty()) Hooks().ShowMessage("Waterjet Import", r.ItemsText(), 0);
  }
  read->ImportFilePath(std::filesystem::path(path).filename().string());
  jet_ = read;
  Changed();
}

void WaterjetWindow::accept() {
  if (changed_) {
    *App().primary.Waterjet = *jet_;
    SetNeedCalculate(false, true);
  }
  QDialog::accept();
}

}  // namespace velmar
