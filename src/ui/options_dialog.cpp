#include "ui/options_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/application.h"
#include "app/settings_store.h"
#include "core/format.h"
#include "core/helpers.h"

namespace velmar {
namespace {

struct MarginUnit {
  int code;
  const char* label;
  double perInch;  // units in one inch
};
constexpr MarginUnit kMarginUnits[] = {
    {1, "Twips", 1440.0}, {5, "Inches", 1.0}, {4, "Feet", 1.0 / 12.0},
    {6, "Millimetres", 25.4}, {7, "Centimetres", 2.54}, {8, "Metres", 0.0254},
};
const char* const kMarginNames[] = {"MarginTop", "MarginLeft", "MarginRight", "MarginBottom"};
const char* const kMarginCaptions[] = {"Top:", "Left:", "Right:", "Bottom:"};
const char* const kMessagingKeys[] = {"MAPIControl", "MAPIDirect", "MAPICDO", "NotDefined"};

QString Q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

double InchesPerUnit(int unitsIndex) {
  for (const MarginUnit& u : kMarginUnits)
    if (u.code == unitsIndex) return 1.0 / u.perInch;
  return 1.0;
}

ReportPage ReadReportPage(const SettingsStore& settings) {
  ReportPage page;
  const std::string code = settings.Get("Report", "UnitsIndex", "5");
  page.unitsIndex = static_cast<int>(TextToInteger(code));
  bool known = false;
  for (const MarginUnit& u : kMarginUnits) known = known || u.code == page.unitsIndex;
  if (!known) {
    page.unitsIndex = 5;
    return page;  // an unknown unit: the margins are the defaults
  }
  double* margins[] = {&page.top, &page.left, &page.right, &page.bottom};
  for (int i = 0; i < 4; ++i) {
    const std::string v = settings.Get("Report", kMarginNames[i]);
    if (!v.empty()) *margins[i] = TextToDouble(v) * InchesPerUnit(page.unitsIndex);
  }
  return page;
}

void ApplyStartupOptions(const SettingsStore& settings) {
  App().TemplateEnabled = EqualsNoCase(settings.Get("Template", "TemplateEnabled", "Off"), "On");
  App().TemplateFile = settings.Get("Template", "TemplateFile", "None defined");
}

OptionsDialog::OptionsDialog(SettingsStore& settings, QWidget* parent)
    : QDialog(parent),
      settings_(settings),
      theme_(new QComboBox(this)),
      templateEnabled_(new QCheckBox("Start a new project from the template", this)),
      templateFile_(new QLineEdit(this)),
      preparedBy_(new QLineEdit(this)),
      symbolsPage_(new QComboBox(this)),
      layout_(new QComboBox(this)),
      marginUnit_(new QComboBox(this)),
      messaging_(new QComboBox(this)),
      resolveName_(new QComboBox(this)) {
  setObjectName("frmOptions");
  setWindowTitle("Options");
  auto* tabs = new QTabWidget(this);

  auto* ui = new QWidget(tabs);
  auto* uiForm = new QFormLayout(ui);
  theme_->addItems({"Sky", "Silver", "Forest"});
  theme_->setCurrentIndex(std::clamp(static_cast<int>(TextToInteger(settings_.Get("", "Theme", "0"))), 0, 2));
  uiForm->addRow("Theme:", theme_);
  templateEnabled_->setChecked(EqualsNoCase(settings_.Get("Template", "TemplateEnabled", "Off"), "On"));
  uiForm->addRow(templateEnabled_);
  templateFile_->setText(Q(settings_.Get("Template", "TemplateFile", "None defined")));
  auto* browse = new QPushButton("Browse...", ui);
  connect(browse, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getOpenFileName(this, "Template project", QString(), "Corvenith Velmar (*.vxvl)");
    if (!path.isEmpty()) templateFile_->setText(path);
  });
  auto* row = new QHBoxLayout;
  row->addWidget(templateFile_);
  row->addWidget(browse);
  uiForm->addRow("Template:", row);
  tabs->addTab(ui, "Interface");

  auto* reports = new QWidget(tabs);
  auto* reportForm = new QFormLayout(reports);
  preparedBy_->setText(Q(settings_.Get("Report", "PreparedBy", "Enter name here...")));
  reportForm->addRow("Prepared by:", preparedBy_);
  symbolsPage_->addItems({"Show", "Omit"});
  symbolsPage_->setCurrentIndex(settings_.Get("Report", "ShowSymbolsValuesPage", "Show") == "Omit" ? 1 : 0);
  reportForm->addRow("Symbols and values page:", symbolsPage_);
  layout_->addItems({"Letter/Portrait", "A4/Portrait", "User defined"});
  layout_->setCurrentIndex(std::clamp(static_cast<int>(TextToInteger(settings_.Get("Report", "StandardLayoutIndex", "0"))), 0, 2));
  reportForm->addRow("Default layout:", layout_);
  const ReportPage page = ReadReportPage(settings_);
  for (const MarginUnit& u : kMarginUnits) marginUnit_->addItem(u.label, u.code);
  marginUnit_->setCurrentIndex(marginUnit_->findData(page.unitsIndex));
  reportForm->addRow("Margin unit:", marginUnit_);
  const double inches[] = {page.top, page.left, page.right, page.bottom};
  for (int i = 0; i < 4; ++i) {
    margins_[i] = new QDoubleSpinBox(reports);
    margins_[i]->setDecimals(3);
    margins_[i]->setRange(0.0, 100000.0);
    margins_[i]->setValue(inches[i] / InchesPerUnit(page.unitsIndex));
    reportForm->addRow(kMarginCaptions[i], margins_[i]);
  }
  // A change of the unit shows the same margins in the new unit.
  connect(marginUnit_, &QComboBox::currentIndexChanged, this, [this, last = page.unitsIndex](int) mutable {
    const int code = marginUnit_->currentData().toInt();
    for (QDoubleSpinBox* m : margins_) m->setValue(m->value() * InchesPerUnit(last) / InchesPerUnit(code));
    last = code;
  });
  tabs->addTab(reports, "Reports");

  auto* email = new QWidget(tabs);
  auto* emailForm = new QFormLayout(email);
  messaging_->addItems({"MAPI/Control", "MAPI/Direct", "MAPI/CDO", "Not defined"});
  const std::string key = settings_.Get("Email", "EmailMessaging", "NotDefined");
  for (int i = 0; i < 4; ++i)
    if (key == kMessagingKeys[i]) messaging_->setCurrentIndex(i);
  emailForm->addRow("Messaging:", messaging_);
  resolveName_->addItems({"Yes", "No"});
  resolveName_->setCurrentIndex(settings_.Get("Email", "EmailResolveName", "Yes") == "No" ? 1 : 0);
  emailForm->addRow("Resolve name:", resolveName_);
  tabs->addTab(email, "Email");

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs);
  layout->addWidget(buttons);
  resize(520, 380);
}

void OptionsDialog::Apply() {
  settings_.Set("", "Theme", std::to_string(theme_->currentIndex()));
  settings_.Set("Template", "TemplateEnabled", templateEnabled_->isChecked() ? "On" : "Off");
  const std::string file = Trim(templateFile_->text().toStdString());
  settings_.Set("Template", "TemplateFile", file.empty() ? "None defined" : file);
  settings_.Set("Report", "PreparedBy", preparedBy_->text().toStdString());
  settings_.Set("Report", "ShowSymbolsValuesPage", symbolsPage_->currentText().toStdString());
  settings_.Set("Report", "StandardLayoutIndex", std::to_string(layout_->currentIndex()));
  settings_.Set("Report", "UnitsIndex", std::to_string(marginUnit_->currentData().toInt()));
  for (int i = 0; i < 4; ++i)
    settings_.Set("Report", kMarginNames[i], FormatNumber(margins_[i]->value(), "0.0##############"));
  settings_.Set("Email", "EmailMessaging", kMessagingKeys[messaging_->currentIndex()]);
  settings_.Set("Email", "EmailResolveName", resolveName_->currentText().toStdString());
  ApplyStartupOptions(settings_);
}

}  // namespace velmar
