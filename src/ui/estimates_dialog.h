// frmEstimate: the proposed values of one hull item, each with its source, and below them the
// parameter check of the proposal's method as the Method Expert shows it. The proposals and
// the checks are the engine's (EstimateList), the same that `velmar-cli estimate` prints; the
// window only lets the user pick one, which is then typed into the entry cell it came from.
#pragma once

#include <QDialog>
#include <optional>
#include <vector>

#include "resistance/hull_estimates.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace velmar {

class EstimatesDialog : public QDialog {
  Q_OBJECT

 public:
  // `caption` names the item in the title ("Wetted surface:").
  EstimatesDialog(EstimateItem item, const QString& caption, QWidget* parent = nullptr);

  QTableWidget* Proposals() const { return proposals_; }
  QTableWidget* CheckRows() const { return checks_; }
  // The value of the chosen proposal, when it has one.
  std::optional<double> Chosen() const;

 private:
  void ShowCheck(int row);

  std::vector<EstimateRow> rows_;
  QTableWidget* proposals_;
  QTableWidget* checks_;
  QLabel* note_;
  QPushButton* ok_ = nullptr;
};

}  // namespace velmar
