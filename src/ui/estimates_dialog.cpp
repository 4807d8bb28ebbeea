#include "ui/estimates_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/application.h"
#include "validation/parameter_check.h"

namespace velmar {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

QTableWidget* Table(const QStringList& heads, QWidget* parent) {
  auto* t = new QTableWidget(0, static_cast<int>(heads.size()), parent);
  t->setHorizontalHeaderLabels(heads);
  t->verticalHeader()->hide();
  t->setEditTriggers(QAbstractItemView::NoEditTriggers);
  t->setSelectionBehavior(QAbstractItemView::SelectRows);
  t->setSelectionMode(QAbstractItemView::SingleSelection);
  t->horizontalHeader()->setStretchLastSection(true);
  return t;
}

QTableWidgetItem* Cell(const std::string& text, bool right = false) {
  auto* item = new QTableWidgetItem(Q(text));
  if (right) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return item;
}

}  // namespace

EstimatesDialog::EstimatesDialog(EstimateItem item, const QString& caption, QWidget* parent)
    : QDialog(parent), rows_(EstimateList(item, App().primary, App().CurrentMode)) {
  setObjectName("frmEstimate");
  QString title = caption.trimmed();
  if (title.endsWith(':')) title.chop(1);
  setWindowTitle("Estimate: " + title);

  proposals_ = Table({"Source", "Value"}, this);
  proposals_->setRowCount(static_cast<int>(rows_.size()));
  for (int r = 0; r < static_cast<int>(rows_.size()); ++r) {
    const EstimateRow& e = rows_[static_cast<size_t>(r)];
    proposals_->setItem(r, 0, Cell(e.label));
    // A proposal whose inputs are missing shows empty and cannot be taken.
    proposals_->setItem(r, 1, Cell(e.text.empty() ? "---" : e.text, true));
  }
  proposals_->resizeColumnsToContents();

  checks_ = Table({"Parameter", "Range", "Value", "Status"}, this);
  note_ = new QLabel(this);
  note_->setWordWrap(true);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(proposals_, &QTableWidget::currentCellChanged, this, [this](int row) { ShowCheck(row); });
  connect(proposals_, &QTableWidget::cellDoubleClicked, this, [this] {
    if (Chosen()) accept();
  });

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("Proposed values:", this));
  layout->addWidget(proposals_, 3);
  layout->addWidget(new QLabel("Parameter check of the source:", this));
  layout->addWidget(checks_, 2);
  layout->addWidget(note_);
  layout->addWidget(buttons);
  resize(520, 560);
  if (!rows_.empty()) proposals_->setCurrentCell(0, 0);
  ShowCheck(proposals_->currentRow());
}

std::optional<double> EstimatesDialog::Chosen() const {
  const int r = proposals_->currentRow();
  if (r < 0 || r >= static_cast<int>(rows_.size()) || rows_[static_cast<size_t>(r)].text.empty()) return {};
  return rows_[static_cast<size_t>(r)].value;
}

void EstimatesDialog::ShowCheck(int row) {
  checks_->setRowCount(0);
  note_->clear();
  if (ok_) ok_->setEnabled(Chosen().has_value());
  if (row < 0 || row >= static_cast<int>(rows_.size())) return;
  const EstimateRow& e = rows_[static_cast<size_t>(row)];
  std::vector<std::array<std::string, 4>> cells;
  ShowCheckRows(e.checkRows, cells);
  checks_->setRowCount(static_cast<int>(cells.size()));
  for (int r = 0; r < static_cast<int>(cells.size()); ++r) {
    const auto& c = cells[static_cast<size_t>(r)];
    for (int col = 0; col < 4; ++col) {
      QTableWidgetItem* item = Cell(c[static_cast<size_t>(col)], col == 2);
      if (!c[3].empty()) item->setForeground(QColor(0xc0, 0x00, 0x00));
      checks_->setItem(r, col, item);
    }
  }
  checks_->resizeColumnsToContents();
  note_->setText(e.checkId ? Q(e.checkNote) : QString("This source has no data set to check against."));
}

}  // namespace velmar
