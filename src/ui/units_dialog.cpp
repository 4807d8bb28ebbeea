#include "ui/units_dialog.h"

#include <QComboBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include "core/helpers.h"
#include "core/units.h"

namespace velmar {
namespace {

QStringList FormatsOf(UnitFamily f) {
  if (f == UnitFamily::Viscosity) return {"0.000e+0", "0.0000e+0", "0.00000e+0"};
  return {"0", "0.0", "0.00", "0.000", "0.0000", "0.00000", "0.000000"};
}

}  // namespace

UnitsDialog::UnitsDialog(clsVXUnits& units, QWidget* parent)
    : QDialog(parent), units_(units), table_(new QTableWidget(kUnitFamilyCount, 2, this)) {
  setObjectName("frmVXUnits");
  setWindowTitle("Units");
  auto* bar = new QToolBar(this);
  bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
  bar->addAction("SI", this, [this] {
    Store();
    ApplyUnitPreset(units_, UnitPreset::SI);
    Fill();
  })->setObjectName("SI");
  bar->addAction("Imperial", this, [this] {
    Store();
    ApplyUnitPreset(units_, UnitPreset::Imperial);
    Fill();
  })->setObjectName("Imperial");
  bar->addSeparator();
  bar->addAction("OK", this, [this] {
    Store();
    units_.UnitsFormReturn(1);
    accept();
  })->setObjectName("OK");
  bar->addAction("Cancel", this, &QDialog::reject)->setObjectName("Cancel");

  table_->setHorizontalHeaderLabels({"Unit", "Format"});
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 12);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  Fill();
  table_->resizeColumnsToContents();

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(bar);
  layout->addWidget(table_);
  resize(440, 560);
}

void UnitsDialog::Fill() {
  int row = 0;
  QStringList keys;
  for (UnitFamily f : UnitsDialogOrder()) {
    keys << FamilyInfo(f).dialogKey;
    auto* unit = new QComboBox(table_);
    for (int i = 0; i < units_.LabelCount(f); ++i)
      unit->addItem(QString::fromStdString("[" + units_.Label(f, i) + "]"));
    unit->setCurrentIndex(units_.Index(f));
    auto* format = new QComboBox(table_);
    QStringList formats = FormatsOf(f);
    const QString current = QString::fromStdString(units_.Format(f));
    if (!formats.contains(current)) formats << current;
    format->addItems(formats);
    format->setCurrentText(current);
    table_->setCellWidget(row, 0, unit);
    table_->setCellWidget(row, 1, format);
    ++row;
  }
  table_->setVerticalHeaderLabels(keys);
}

void UnitsDialog::Store() {
  int row = 0;
  for (UnitFamily f : UnitsDialogOrder()) {
    units_.SetIndex(f, qobject_cast<QComboBox*>(table_->cellWidget(row, 0))->currentIndex());
    units_.SetFormat(f, qobject_cast<QComboBox*>(table_->cellWidget(row, 1))->currentText().toStdString());
    ++row;
  }
}

}  // namespace velmar
