#include "ui/influence_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/ui_hooks.h"
#include "resistance/parameter_influence.h"

namespace velmar {

InfluenceDialog::InfluenceDialog(QWidget* parent) : QDialog(parent) { setObjectName("frmSensitivity"); }

void InfluenceDialog::Run(QWidget* parent) {
  const ParameterInfluence result = BuildParameterInfluence();
  if (!result.refusal.empty()) {
    Hooks().ShowMessage("Sensitivity analysis", result.refusal, 0);
    return;
  }
  InfluenceDialog dialog(parent);
  dialog.setWindowTitle(QString::fromStdString(result.title));
  auto* table = new QTableWidget(static_cast<int>(result.rows.size()), 2, &dialog);
  table->setHorizontalHeaderLabels({"Parameter", "Value"});
  table->verticalHeader()->hide();
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  int r = 0;
  for (const ParameterInfluenceRow& row : result.rows) {
    auto* caption = new QTableWidgetItem(QString::fromStdString(row.caption));
    auto* value = new QTableWidgetItem(QString::fromStdString(row.valueText));
    value->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setForeground(row.strongerThanProportional ? QColor(0x00, 0x00, 0xff) : QColor(0x80, 0x80, 0x80));
    table->setItem(r, 0, caption);
    table->setItem(r, 1, value);
    ++r;
  }
  table->resizeColumnsToContents();
  table->horizontalHeader()->setStretchLastSection(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
  connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(table);
  layout->addWidget(buttons);
  dialog.resize(380, 480);
  dialog.exec();
}

}  // namespace velmar
