// frmPropellerSizing: which of gear ratio, expanded area ratio, diameter and mean pitch the
// sizing solves ("Keep" or "Size") and by what it sizes, a "Size propeller" command that runs
// the engine's sizing on the project's design point (ApplyPropellerSizing, as `velmar-cli
// size` does), and its report: the design point, each quantity before and after, the solver's
// summary. A successful sizing writes the propeller (and the gear ratio) of the project.
#pragma once

#include <QDialog>
#include <vector>

class QComboBox;
class QPlainTextEdit;
class QPushButton;

namespace velmar {

struct PropellerSizingReport;

class SizingDialog : public QDialog {
  Q_OBJECT

 public:
  // `prepare`: work out the interaction coefficients of the design point first (the window
  // opened from the entry table); without it the propulsion prediction that shows the window
  // has done so already.
  SizingDialog(bool prepare, QWidget* parent = nullptr);

  // Runs the sizing; true when the propeller took the solution.
  bool SizePropeller();
  QComboBox* Setting(int i) const { return settings_[static_cast<size_t>(i)]; }
  QPlainTextEdit* Report() const { return report_; }
  bool Sized() const { return sized_; }

 private:
  bool prepare_;
  bool sized_ = false;
  std::vector<QComboBox*> settings_;
  QPlainTextEdit* report_;
};

}  // namespace velmar
