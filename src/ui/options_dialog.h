// frmOptions: the settings that live outside a project, per user, in the settings store:
// interface theme, new-project template, report header and page, e-mail. OK writes every
// value, Cancel none.
#pragma once

#include <QDialog>
#include <string>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;

namespace velmar {

class SettingsStore;

// The page of the reports as the settings hold it: margins in inches.
struct ReportPage {
  int unitsIndex = 5;  // 1 twips, 5 inches, 4 feet, 6 millimetres, 7 centimetres, 8 metres
  double top = 0.6, left = 0.6, right = 0.6, bottom = 0.6;  // inches
};
// Reads the page settings: an unknown unit code reads as inches, a margin without a value
// takes 0.6 inch.
ReportPage ReadReportPage(const SettingsStore& settings);
// The factor from the unit of `unitsIndex` to inches (1 for an unknown code).
double InchesPerUnit(int unitsIndex);

// Reads Theme and Template into the application state (start-up and after OK).
void ApplyStartupOptions(const SettingsStore& settings);

class OptionsDialog : public QDialog {
  Q_OBJECT

 public:
  OptionsDialog(SettingsStore& settings, QWidget* parent = nullptr);
  // Writes every value (the OK of the dialog).
  void Apply();

 private:
  SettingsStore& settings_;
  QComboBox* theme_;
  QCheckBox* templateEnabled_;
  QLineEdit* templateFile_;
  QLineEdit* preparedBy_;
  QComboBox* symbolsPage_;
  QComboBox* layout_;
  QComboBox* marginUnit_;
  QDoubleSpinBox* margins_[4];
  QComboBox* messaging_;
  QComboBox* resolveName_;
};

}  // namespace velmar
