// The Method Expert window.
#include "ui/method_expert_dialog.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QTableWidget>
#include <QVBoxLayout>
#include <array>

#include "app/application.h"
#include "core/format.h"
#include "core/speed_performance.h"
#include "core/units.h"
#include "ui/entry_model.h"

namespace velmar {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// Where each family's method selector stands in the entry tables.
struct Selector {
  MethodFamily family;
  EntryObject object;
  const char* field;
};
constexpr Selector kSelectors[] = {
    {MethodFamily::Hull, EntryObject::Resistance, "HullDragMethod"},
    {MethodFamily::Appendage, EntryObject::Resistance, "AppendageDragMethod"},
    {MethodFamily::Wind, EntryObject::Resistance, "WindDragMethod"},
    {MethodFamily::Seas, EntryObject::Resistance, "SeasDragMethod"},
    {MethodFamily::Channel, EntryObject::Resistance, "ChannelDragMethod"},
    {MethodFamily::Interaction, EntryObject::Propulsion, "PropulsionInteractionMethod"},
};

// Data roles of the list's first column: the method index and the check id of the row.
constexpr int kMethodIndexRole = Qt::UserRole + 1;
constexpr int kCheckIdRole = Qt::UserRole + 2;

QTableWidget* Table(const QStringList& heads, const char* name, QWidget* parent) {
  auto* t = new QTableWidget(0, static_cast<int>(heads.size()), parent);
  t->setObjectName(name);
  t->setHorizontalHeaderLabels(heads);
  t->verticalHeader()->hide();
  t->verticalHeader()->setDefaultSectionSize(t->fontMetrics().height() + 6);
  t->setEditTriggers(QAbstractItemView::NoEditTriggers);
  t->setSelectionBehavior(QAbstractItemView::SelectRows);
  t->setSelectionMode(QAbstractItemView::SingleSelection);
  t->setWordWrap(false);
  return t;
}

}  // namespace

bool MethodExpertDialog::FamilyOfEntryRow(const EntryTableModel& model, int row, MethodFamily& family) {
  for (const Selector& s : kSelectors)
    if (row >= 0 && model.RowOf(s.object, s.field) == row) {
      family = s.family;
      return true;
    }
  return false;
}

MethodExpertDialog::MethodExpertDialog(MethodFamily family, QWidget* parent)
    : QDialog(parent),
      list_(BuildMethodExpertList(family, App().primary)),
      methods_(Table({"Method", "Speed", "Parameters", "Method"}, "lstMethods", this)),
      parameters_(Table({"Parameter", "Range", "Value", ""}, "dtbParameters", this)),
      note_(new QLabel(this)) {
  setObjectName("frmMethodExpert");
  setWindowTitle(QString("Method Expert: %1 methods").arg(MethodFamilyTitle(family)));

  // "OK", "Cancel" and "Help" stand in the window's menu bar.
  auto* bar = new QMenuBar(this);
  QAction* ok = bar->addAction("OK");
  ok->setObjectName("mnuOK");
  connect(ok, &QAction::triggered, this, &MethodExpertDialog::TakeCurrent);
  QAction* cancel = bar->addAction("Cancel");
  cancel->setObjectName("mnuCancel");
  connect(cancel, &QAction::triggered, this, &QDialog::reject);
  QAction* help = bar->addAction("Help");
  help->setObjectName("mnuHelp");
  help->setEnabled(false);
  help->setToolTip("Not in this version: the help pages (the user guide is in docs/).");

  const clsVXUnits& units = *App().primary.Units;
  double speed = 0.0;
  auto* heading = new QLabel(this);
  heading->setObjectName("lblHeading");
  heading->setText(list_.designSpeed && DesignSpeed(*App().primary.SpeedPerformance, kCurrent, speed)
                       ? Q("Ranked for the design speed " +
                           FormatNumber(speed, units.Format(UnitFamily::Speed)) + " " +
                           units.Label(UnitFamily::Speed) + ", best first.")
                       : QString("No design speed: every method rates 0 and is listed in red."));

  methods_->setRowCount(static_cast<int>(list_.methods.size()));
  int r = 0;
  for (const MethodEvaluation& e : list_.methods) {
    const RgbColour c = MethodRatingColour(e.rating);
    const QString cells[] = {Q(e.label), Q(ParameterCheckLabel(e.speedStatus)),
                             Q(ParameterCheckLabel(e.parameterStatus)),
                             Q(ParameterCheckLabel(e.methodStatus))};
    for (int col = 0; col < 4; ++col) {
      auto* item = new QTableWidgetItem(cells[col]);
      if (col == 0) {
        item->setForeground(QColor(c.red, c.green, c.blue));
        item->setData(kMethodIndexRole, e.methodIndex);
        item->setData(kCheckIdRole, e.checkId);
        item->setToolTip(QString("Rating %1 of 6").arg(e.rating));
      }
      methods_->setItem(r, col, item);
    }
    ++r;
  }
  methods_->resizeColumnsToContents();
  methods_->horizontalHeader()->setStretchLastSection(true);
  connect(methods_, &QTableWidget::currentCellChanged, this, [this](int row) { ShowDetails(row); });
  connect(methods_, &QTableWidget::cellDoubleClicked, this, [this] { TakeCurrent(); });

  note_->setObjectName("lblNote");
  note_->setWordWrap(true);
  note_->setFrameShape(QFrame::StyledPanel);

  auto* layout = new QVBoxLayout(this);
  layout->setMenuBar(bar);
  layout->addWidget(heading);
  layout->addWidget(methods_, 3);
  layout->addWidget(parameters_, 2);
  layout->addWidget(note_);
  resize(640, 640);
  if (!list_.methods.empty()) methods_->setCurrentCell(0, 0);
  ShowDetails(methods_->currentRow());
}

QString MethodExpertDialog::NoteLine() const { return note_->text(); }

void MethodExpertDialog::ShowDetails(int row) {
  MethodCheck check;
  if (row >= 0 && list_.designSpeed) {
    // The rows of the method under the cursor, checked again on the project as it stands.
    check = CheckMethod(App().primary, list_.mode, methods_->item(row, 0)->data(kCheckIdRole).toInt());
  }
  std::vector<std::array<std::string, 4>> table;
  ShowCheckRows(check.rows, table);
  parameters_->setRowCount(static_cast<int>(table.size()));
  for (int i = 0; i < static_cast<int>(table.size()); ++i)
    for (int col = 0; col < 4; ++col) {
      auto* item = new QTableWidgetItem(Q(table[static_cast<size_t>(i)][static_cast<size_t>(col)]));
      if (col == 1 || col == 2) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      parameters_->setItem(i, col, item);
    }
  parameters_->resizeColumnsToContents();
  parameters_->horizontalHeader()->setStretchLastSection(true);
  note_->setText(Q(MethodExpertNoteLine(check.note)));
}

void MethodExpertDialog::TakeCurrent() {
  const int row = methods_->currentRow();
  if (row < 0) return;
  MethodExpertSelection() = {1, methods_->item(row, 0)->data(kMethodIndexRole).toInt()};
  accept();
}

bool MethodExpertDialog::Run(MethodFamily family, QWidget* parent) {
  MethodExpertSelection() = {};
  MethodExpertDialog dialog(family, parent);
  dialog.exec();
  if (!ApplyMethodExpertResult(family, MethodExpertSelection(), App().primary)) return false;
  if (family == MethodFamily::Interaction)
    SetNeedCalculate(false, true);
  else
    SetNeedCalculate(true, false);
  return true;
}

}  // namespace velmar
