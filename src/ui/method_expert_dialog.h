// frmMethodExpert: the methods of one family ranked for the present hull and design speed,
// each row coloured by its rating, the parameter table and note of the method under the
// cursor, and "OK" to take the method as the project's. The list and the rows come from the
// engine's Method Expert, as `velmar-cli expert` prints them.
#pragma once

#include <QDialog>

#include "validation/method_expert.h"

class QLabel;
class QTableWidget;

namespace velmar {

class EntryTableModel;

class MethodExpertDialog : public QDialog {
  Q_OBJECT

 public:
  MethodExpertDialog(MethodFamily family, QWidget* parent = nullptr);

  // Opens the window for the family; on "OK" stores the method taken through
  // ApplyMethodExpertResult and marks the results stale. True when a method was stored.
  static bool Run(MethodFamily family, QWidget* parent);

  // The family whose method selector is the entry table's current row; false for another row.
  static bool FamilyOfEntryRow(const EntryTableModel& model, int row, MethodFamily& family);

  QTableWidget* Methods() const { return methods_; }
  QTableWidget* Parameters() const { return parameters_; }
  QString NoteLine() const;
  // "OK": the method of the current row with return code 1.
  void TakeCurrent();

 private:
  void ShowDetails(int row);

  MethodExpertList list_;
  QTableWidget* methods_;
  QTableWidget* parameters_;
  QLabel* note_;
};

}  // namespace velmar
