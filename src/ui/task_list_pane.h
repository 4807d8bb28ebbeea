// The task list beside the mode windows (dtbTaskList): the project's tasks with status, type,
// title and notes, its pop-up menu (New, Add, Edit, Delete), the standard lists and the task
// list file (*.task) in frmTaskPrompt, one task in frmTaskEdit. A double click on the status
// ticks a task off; on another cell it runs the command that the notes name in brackets.
#pragma once

#include <QAbstractTableModel>
#include <QDialog>
#include <QWidget>
#include <utility>

#include "files/task_list.h"

class QComboBox;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QTableView;

namespace velmar {

// The command a task's notes end with: "[Edit : Hull]" gives ("Edit", "Hull"); empty texts
// when the notes name none.
std::pair<QString, QString> TaskCommandOf(const std::string& notes);

// The open project's task list as a table; with no tasks, the single prompt row.
class TaskTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kStatus, kType, kTask, kNotes, kColumnCount };
  using QAbstractTableModel::QAbstractTableModel;
  // The list was replaced or changed: read it again.
  void Reload();
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
};

class TaskListPane : public QWidget {
  Q_OBJECT

 public:
  explicit TaskListPane(QWidget* parent = nullptr);

  TaskTableModel* Model() const { return model_; }
  QTableView* View() const { return view_; }
  QMenu* Popup() const { return popup_; }
  // The project was replaced: the table shows its list, sorted by the chosen sort mode.
  void Fill();
  // 1: by status, then type; 2: by status.
  int SortMode() const;

  // The pop-up commands, on the selected task.
  void NewList();
  void AddTask();
  void EditTask();
  void DeleteTask();
  // Ticks the task of `row` off, or opens it again.
  void ToggleStatus(int row);

 signals:
  // A task list change that the project must save.
  void Changed();
  // The command named in a task's notes, by its menu and caption.
  void CommandRequested(const QString& menu, const QString& item);

 private:
  int SelectedTask() const;
  void AfterChange();
  void Activated(const QModelIndex& index);

  TaskTableModel* model_;
  QTableView* view_;
  QComboBox* sort_;
  QMenu* popup_;
};

// frmTaskEdit: one task's status, type, "Task:" and "Notes:".
class TaskEditDialog : public QDialog {
  Q_OBJECT

 public:
  TaskEditDialog(const TaskRecord& task, QWidget* parent = nullptr);
  TaskRecord Result() const;
  QLineEdit* TaskEdit() const { return task_; }

 private:
  QComboBox* status_;
  QComboBox* type_;
  QLineEdit* task_;
  QPlainTextEdit* notes_;
  int key_;
};

// frmTaskPrompt: "Select task list." from the standard lists, a preview of its rows, and the
// import and export of a task list file.
class TaskPromptDialog : public QDialog {
  Q_OBJECT

 public:
  explicit TaskPromptDialog(QWidget* parent = nullptr);
  QComboBox* Choice() const { return choice_; }
  // The list the user chose (standard or imported).
  const clsVXTaskList& Result() const { return list_; }
  void Import();
  void Export();

 private:
  void ShowList();

  QComboBox* choice_;
  QListWidget* rows_;
  clsVXTaskList list_;
};

}  // namespace velmar
