#include "ui/sizing_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/application.h"
#include "core/diagnostics.h"
#include "core/helpers.h"
#include "propulsion/propeller_sizing_run.h"
#include "propulsion/propulsion_driver.h"

namespace velmar {
namespace {

// The settings the window edits, by field of clsVXPropellerSizing, with their captions.
struct SettingRow {
  const char* field;
  const char* caption;
};
const SettingRow kSettings[] = {
    {"PropellerSizingIdentity", "Propeller sizing:"},
    {"GearRatioSolution", "Gear ratio (RPM):"},
    {"ExpAreaRatioSolution", "Expanded area ratio:"},
    {"DiameterSolution", "Diameter:"},
    {"PitchMeanSolution", "Mean pitch:"},
};

}  // namespace

SizingDialog::SizingDialog(bool prepare, QWidget* parent) : QDialog(parent), prepare_(prepare) {
  setObjectName("frmPropellerSizing");
  setWindowTitle("Propeller sizing");
  clsVXPropellerSizing& sizing = *App().primary.PropellerSizing;
  auto* form = new QFormLayout;
  for (const SettingRow& s : kSettings) {
    const int field = sizing.FieldIndex(s.field);
    auto* combo = new QComboBox(this);
    combo->setObjectName(s.field);
    for (const std::string& label : sizing.Fields()[field].labels->labels)
      combo->addItem(QString::fromStdString(label));
    combo->setCurrentIndex(static_cast<int>(sizing.Raw(field)));
    connect(combo, &QComboBox::currentIndexChanged, this, [field](int index) {
      App().primary.PropellerSizing->Write(field, kCurrent, index);
      SetNeedCalculate(false, true);
    });
    form->addRow(s.caption, combo);
    settings_.push_back(combo);
  }
  report_ = new QPlainTextEdit(this);
  report_->setReadOnly(true);
  report_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  report_->setPlaceholderText(
      "The design point is the design speed of the condition, with the reference thrust, power and RPM of "
      "the propulsor table. Size propeller solves the quantities set to Size.");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* size = buttons->addButton("Size propeller", QDialogButtonBox::ActionRole);
  size->setObjectName("cmdSize");
  connect(size, &QPushButton::clicked, this, &SizingDialog::SizePropeller);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(new QLabel("Result:", this));
  layout->addWidget(report_, 1);
  layout->addWidget(buttons);
  resize(560, 520);
}

bool SizingDialog::SizePropeller() {
  ModelSet& p = App().primary;
  if (prepare_) {
    ResetCalcErrorState();
    if (!PreparePropulsionPrediction(*p.WaterProperties, *p.Hull, *p.ITTC78, *p.Propulsion, *p.Propeller,
                                     *p.PropellerSeries, *p.SpeedPerformance)) {
      report_->setPlainText("The interaction coefficients of the design point could not be found:\n" +
                            QString::fromStdString(StripControlChars(GetCalcCause(), true)));
      return false;
    }
  }
  const PropellerSizingReport r =
      ApplyPropellerSizing(*p.WaterProperties, *p.Hull, *p.Propulsion, *p.Propeller, *p.PropellerSeries,
                           *p.PropellerSizing, *p.SpeedPerformance);
  report_->setPlainText(QString::fromStdString(PropellerSizingReportText(r, *p.Units)));
  if (r.ok) {
    sized_ = true;
    // Opened from the entry table, the new propeller leaves the propulsion results stale; in
    // a running prediction the analysis that follows uses it at once.
    if (prepare_) SetNeedCalculate(false, true);
  }
  return r.ok;
}

}  // namespace velmar
