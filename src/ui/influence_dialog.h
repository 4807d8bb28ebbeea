// frmSensitivity: the parameter influence of the engine's experiment on the hull, shown as a
// table of "Parameter" and "Value", the stronger-than-proportional rows in blue.
#pragma once

#include <QDialog>

namespace velmar {

class InfluenceDialog : public QDialog {
  Q_OBJECT

 public:
  // Runs the experiment and shows the window, or the refusal of the technique.
  static void Run(QWidget* parent);

 private:
  explicit InfluenceDialog(QWidget* parent);
};

}  // namespace velmar
