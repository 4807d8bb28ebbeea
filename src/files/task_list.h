// The task list of a project: up to 30 tasks that lead the user through a piece of work,
// each with a status, a type, a title and notes; their sort key; and the four standard
// lists that a new list can start from.
//
// File forms, for the block reader and writer: block `TaskList` holds `Count` (integer) and
// then one object per task keyed by its number as text, each with the texts `Status`,
// `Type`, `Task` and `Notes`. An older form of the block holds `Status`, `Type`, `Task` and
// `Notes` as four parallel lists and is read by a second routine. A project without the
// block gives the usual "Missing: " line and an empty list. The task list file `*.task` holds
// this block alone (import dialog "Open Bladescan File", filter "Task list files (*.task)";
// export dialog "Save task list file", filter "task list files (*.task)"; failures under
// "Task list import error": "An error occured importing the task list file." and "An error
// occured exporting the task list file.").
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmar {

inline constexpr int kMaxTaskCount = 30;

struct TaskRecord {
  std::string Status;  // "ToDo" or "Done"
  std::string Type;    // "File", "Data", "Calc", "Report" or "Other"
  std::string Task;    // the title
  std::string Notes;   // ends with the command to use, in brackets: "[Edit : Hull]"
  int SortKey = 0;
};

// 0 "File", 1 "Data", 2 "Calc", 3 "Report", 4 "Other"; -1 for any other text.
int TaskTypeIndex(std::string_view type);

// The key that orders the tasks when sorted descending. With s = 1 for "Done" and 0 for
// "ToDo" and t = TaskTypeIndex(type): sort mode 1 (by status, then type) gives 54 - t - 10 s,
// sort mode 2 (by status) 50 - 10 s. Any other status, or another mode, returns `key`
// unchanged. Open tasks thus stand before finished ones in both modes.
int TaskSortKey(std::string_view status, std::string_view type, int sortMode, int key);

// A task as one row text: Status, Type, Task and Notes joined by "|", and back. Missing
// fields of a row read empty; a "|" inside the notes stays with the notes.
std::string TaskRowText(const TaskRecord& task);
TaskRecord TaskFromRowText(std::string_view row);

// The choices of the standard lists: "None", "Standard speed prediction", "Quick propeller
// sizing", "Sea trial analysis", "Model test entry".
std::span<const std::string_view> StandardTaskListNames();
// The row texts of a standard list by its index in StandardTaskListNames(), every row with
// status "ToDo"; none for "None" or an unknown index.
std::vector<std::string> StandardTaskListRows(int index);

class clsVXTaskList {
 public:
  int TaskCount() const { return count_; }
  // Row 0 to kMaxTaskCount - 1 of the fixed table; a row beyond is a run-time fault.
  const TaskRecord& Task(int row) const { return tasks_.at(static_cast<size_t>(row)); }
  TaskRecord& Task(int row) { return tasks_.at(static_cast<size_t>(row)); }

  // Appends a task; false, with nothing added, when the list is full.
  bool AddTask(TaskRecord task);
  // Removes a held row; the rows behind it move up. False for a row that is not held.
  bool DeleteTask(int row);
  void ClearAllData();

  // Recomputes the key of every held task for a sort mode (1 or 2).
  void SetSortKeys(int sortMode);
  // Sets the keys and orders the tasks by key, descending; equal keys keep their order.
  void Sort(int sortMode);

  // Replaces the list with the rows of a standard list, all "ToDo"; "None" (0) empties it.
  void LoadStandardList(int index);

 private:
  int count_ = 0;
  std::array<TaskRecord, kMaxTaskCount> tasks_{};
};

}  // namespace velmar
