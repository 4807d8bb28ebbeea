#include "ui/task_list_pane.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>
#include <QVBoxLayout>

#include "app/application.h"
#include "core/ui_hooks.h"
#include "files/project_file.h"

namespace velmar {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

clsVXTaskList& Tasks() { return *App().primary.TaskList; }

const char* const kTypes[] = {"File", "Data", "Calc", "Report", "Other"};
const char* const kPrompt = "Right-click to add a task...";

}  // namespace

std::pair<QString, QString> TaskCommandOf(const std::string& notes) {
  // The last bracket of the notes: "[Menu : Command]".
  static const QRegularExpression re(R"(\[\s*([^\]:]+?)\s*:\s*([^\]]+?)\s*\][^\[]*$)");
  const QRegularExpressionMatch m = re.match(Q(notes));
  if (!m.hasMatch()) return {};
  return {m.captured(1), m.captured(2)};
}

// ---- The table --------------------------------------------------------------------------

void TaskTableModel::Reload() {
  beginResetModel();
  endResetModel();
}

int TaskTableModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid() || !App().primary.TaskList) return 0;
  return std::max(1, Tasks().TaskCount());
}

int TaskTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QVariant TaskTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (Tasks().TaskCount() == 0) {
    if (role == Qt::DisplayRole && index.column() == kTask) return QString(kPrompt);
    if (role == Qt::ForegroundRole) return QColor(0x80, 0x80, 0x80);
    return {};
  }
  const TaskRecord& t = Tasks().Task(index.row());
  const bool done = t.Status == "Done";
  switch (role) {
    case Qt::DisplayRole:
      switch (index.column()) {
        case kStatus:
          return Q(t.Status);
        case kType:
          return Q(t.Type);
        case kTask:
          return Q(t.Task);
        case kNotes:
          return Q(t.Notes);
      }
      return {};
    case Qt::ToolTipRole:
      return Q(t.Notes);
    case Qt::ForegroundRole:
      return done ? QColor(0x80, 0x80, 0x80) : QColor(0x00, 0x00, 0x00);
    case Qt::CheckStateRole:
      if (index.column() == kStatus) return done ? Qt::Checked : Qt::Unchecked;
      return {};
  }
  return {};
}

QVariant TaskTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  static const char* const heads[] = {"Status", "Type", "Task", "Notes"};
  if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < kColumnCount)
    return QString(heads[section]);
  return {};
}

// ---- The pane ---------------------------------------------------------------------------

TaskListPane::TaskListPane(QWidget* parent) : QWidget(parent) {
  setObjectName("dtbTaskList");
  model_ = new TaskTableModel(this);
  view_ = new QTableView(this);
  view_->setModel(model_);
  view_->verticalHeader()->hide();
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setSelectionMode(QAbstractItemView::SingleSelection);
  view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view_->setWordWrap(false);
  view_->horizontalHeader()->setStretchLastSection(true);
  view_->setContextMenuPolicy(Qt::CustomContextMenu);

  sort_ = new QComboBox(this);
  sort_->addItems({"Sort by status and type", "Sort by status"});

  popup_ = new QMenu("TaskList Popup", this);
  popup_->setObjectName("mnuTaskListPopup");
  const auto add = [this](const char* name, const char* caption, void (TaskListPane::*slot)()) {
    QAction* a = popup_->addAction(caption, this, slot);
    a->setObjectName(name);
    addAction(a);
    return a;
  };
  add("mnuTaskListPopupNew", "New list...", &TaskListPane::NewList)
      ->setStatusTip("Start the task list from a standard list or a task list file");
  popup_->addSeparator();
  add("mnuTaskListPopupAdd", "Add...", &TaskListPane::AddTask)
      ->setStatusTip("Add a task at the end of the list");
  add("mnuTaskListPopupEdit", "Edit", &TaskListPane::EditTask)->setStatusTip("Edit the selected task");
  add("mnuTaskListPopupDelete", "Delete", &TaskListPane::DeleteTask)
      ->setStatusTip("Delete the selected task");

  connect(view_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    const bool held = SelectedTask() >= 0;
    for (const char* name : {"mnuTaskListPopupEdit", "mnuTaskListPopupDelete"})
      findChild<QAction*>(name)->setEnabled(held);
    popup_->exec(view_->viewport()->mapToGlobal(at));
  });
  connect(view_, &QAbstractItemView::doubleClicked, this, &TaskListPane::Activated);
  connect(sort_, &QComboBox::currentIndexChanged, this, [this] { Fill(); });

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(sort_);
  layout->addWidget(view_);
  Fill();
}

int TaskListPane::SortMode() const { return sort_->currentIndex() == 1 ? 2 : 1; }

void TaskListPane::Fill() {
  if (App().primary.TaskList) Tasks().Sort(SortMode());
  model_->Reload();
  view_->resizeColumnToContents(TaskTableModel::kStatus);
  view_->resizeColumnToContents(TaskTableModel::kType);
  view_->setColumnWidth(TaskTableModel::kTask, 230);
}

int TaskListPane::SelectedTask() const {
  const QModelIndex i = view_->currentIndex();
  return i.isValid() && i.row() < Tasks().TaskCount() ? i.row() : -1;
}

void TaskListPane::AfterChange() {
  App().ProjectDirty = true;
  Fill();
  emit Changed();
}

void TaskListPane::Activated(const QModelIndex& index) {
  if (!index.isValid() || index.row() >= Tasks().TaskCount()) {
    AddTask();
    return;
  }
  if (index.column() == TaskTableModel::kStatus) {
    ToggleStatus(index.row());
    return;
  }
  const auto [menu, item] = TaskCommandOf(Tasks().Task(index.row()).Notes);
  if (!menu.isEmpty()) emit CommandRequested(menu, item);
}

void TaskListPane::ToggleStatus(int row) {
  if (row < 0 || row >= Tasks().TaskCount()) return;
  TaskRecord& t = Tasks().Task(row);
  t.Status = t.Status == "Done" ? "ToDo" : "Done";
  AfterChange();
}

void TaskListPane::NewList() {
  const bool empty = Tasks().TaskCount() == 0;
  const Answer a =
      empty
          ? Hooks().Ask("Task list", "Do you want to set up your task list from a set of standard lists?",
                        false, Answer::Yes)
          : Hooks().Ask(" Task list",
                        "Do you want to overwrite the current task list with a standard task list from a set "
                        "of standard lists?",
                        false, Answer::No);
  if (a != Answer::Yes) return;
  TaskPromptDialog prompt(this);
  if (prompt.exec() != QDialog::Accepted) return;
  *App().primary.TaskList = prompt.Result();
  AfterChange();
}

void TaskListPane::AddTask() {
  if (Tasks().TaskCount() >= kMaxTaskCount) {
    Hooks().ShowMessage("Task list",
                        "The task list holds " + std::to_string(kMaxTaskCount) +
                            " tasks, its most. Delete a task before adding another.",
                        0);
    return;
  }
  TaskEditDialog dialog(TaskRecord{"ToDo", "Data", "", "", 0}, this);
  dialog.setWindowTitle("Add task");
  if (dialog.exec() != QDialog::Accepted) return;
  Tasks().AddTask(dialog.Result());
  AfterChange();
}

void TaskListPane::EditTask() {
  const int row = SelectedTask();
  if (row < 0) return;
  TaskEditDialog dialog(Tasks().Task(row), this);
  if (dialog.exec() != QDialog::Accepted) return;
  Tasks().Task(row) = dialog.Result();
  AfterChange();
}

void TaskListPane::DeleteTask() {
  const int row = SelectedTask();
  if (row < 0 || !Tasks().DeleteTask(row)) return;
  AfterChange();
}

// ---- frmTaskEdit ------------------------------------------------------------------------

TaskEditDialog::TaskEditDialog(const TaskRecord& task, QWidget* parent)
    : QDialog(parent), key_(task.SortKey) {
  setObjectName("frmTaskEdit");
  setWindowTitle("Edit task");
  status_ = new QComboBox(this);
  status_->addItems({"ToDo", "Done"});
  status_->setCurrentIndex(task.Status == "Done" ? 1 : 0);
  type_ = new QComboBox(this);
  type_->setEditable(true);  // a type of another text is kept as it stands
  for (const char* t : kTypes) type_->addItem(t);
  type_->setCurrentText(Q(task.Type));
  task_ = new QLineEdit(Q(task.Task), this);
  notes_ = new QPlainTextEdit(Q(task.Notes), this);
  auto* form = new QFormLayout;
  form->addRow("Status:", status_);
  form->addRow("Type:", type_);
  form->addRow("Task:", task_);
  form->addRow("Notes:", notes_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(buttons);
  resize(460, 280);
}

TaskRecord TaskEditDialog::Result() const {
  return TaskRecord{status_->currentText().toStdString(), type_->currentText().trimmed().toStdString(),
                    task_->text().toStdString(), notes_->toPlainText().toStdString(), key_};
}

// ---- frmTaskPrompt ----------------------------------------------------------------------

TaskPromptDialog::TaskPromptDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmTaskPrompt");
  setWindowTitle("Task list");
  choice_ = new QComboBox(this);
  for (std::string_view name : StandardTaskListNames()) choice_->addItem(Q(std::string(name)));
  rows_ = new QListWidget(this);
  auto* import = new QPushButton("Import...", this);
  auto* exportButton = new QPushButton("Export...", this);
  import->setToolTip("Read a task list file (*.task)");
  exportButton->setToolTip("Write the project's task list to a task list file (*.task)");
  connect(import, &QPushButton::clicked, this, &TaskPromptDialog::Import);
  connect(exportButton, &QPushButton::clicked, this, &TaskPromptDialog::Export);
  connect(choice_, &QComboBox::currentIndexChanged, this, [this](int index) {
    list_.LoadStandardList(index);
    ShowList();
  });
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->addButton(import, QDialogButtonBox::ActionRole);
  buttons->addButton(exportButton, QDialogButtonBox::ActionRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("Select task list.", this));
  layout->addWidget(choice_);
  layout->addWidget(rows_);
  layout->addWidget(buttons);
  resize(440, 460);
  ShowList();
}

void TaskPromptDialog::ShowList() {
  rows_->clear();
  for (int i = 0; i < list_.TaskCount(); ++i)
    rows_->addItem(Q(list_.Task(i).Type + ": " + list_.Task(i).Task));
}

void TaskPromptDialog::Import() {
  const std::string path = Hooks().AskFilePath("Open Bladescan File", "Task list files (*.task)", false);
  if (path.empty()) return;
  clsVXTaskList read;
  if (!ReadTaskFile(path, read)) return;  // the reader has said why
  list_ = read;
  choice_->blockSignals(true);
  choice_->setCurrentIndex(0);
  choice_->blockSignals(false);
  ShowList();
}

void TaskPromptDialog::Export() {
  std::string path = Hooks().AskFilePath("Save task list file", "task list files (*.task)", true);
  if (path.empty()) return;
  if (!QString::fromStdString(path).endsWith(".task", Qt::CaseInsensitive)) path += ".task";
  WriteTaskFile(path, Tasks());  // says so when it fails
}

}  // namespace velmar
