// frmVXUnits: one row per unit family with its unit and its display format as lists, the
// presets "SI" and "Imperial", OK and Cancel. It works on the copy it is given; the Units
// command converts the project when the dialog is accepted.
#pragma once

#include <QDialog>

class QTableWidget;

namespace velmar {

class clsVXUnits;

class UnitsDialog : public QDialog {
  Q_OBJECT

 public:
  UnitsDialog(clsVXUnits& units, QWidget* parent = nullptr);
  QTableWidget* Table() const { return table_; }

 private:
  void Fill();
  void Store();

  clsVXUnits& units_;
  QTableWidget* table_;
};

}  // namespace velmar
