// Task records, their sort key and the standard task lists.
#include "files/task_list.h"

#include <algorithm>
#include <iterator>

namespace velmar {

namespace {

constexpr std::string_view kTypes[] = {"File", "Data", "Calc", "Report", "Other"};

constexpr std::string_view kListNames[] = {"None", "Standard speed prediction", "Quick propeller sizing",
                                           "Sea trial analysis", "Model test entry"};

// One row of a standard list: type, title (its number is part of the title), notes.
struct StandardRow {
  std::string_view type, task, notes;
};

// Notes shared by rows of the same step in several lists.
constexpr std::string_view kNewProject =
    "Start a new project, or open a template project, and give it a description. [File : New project]";
constexpr std::string_view kUnits =
    "Choose the units and number formats for data entry and results. [Edit : Units]";
constexpr std::string_view kSupporting =
    "Collect the hull form, hydrostatic, appendage, propulsor and engine data of the vessel. "
    "[Tools : Station distribution]";
constexpr std::string_view kCondition =
    "Define the loading condition, the water properties and the speeds of the prediction. [Edit : Condition]";
constexpr std::string_view kHull = "Define vessel hull data. Use estimates where needed. [Edit : Hull]";
constexpr std::string_view kAppendage =
    "Define the appendages, or the share of hull drag that they add. [Edit : Appendages]";
constexpr std::string_view kEnvironment =
    "Define wind, seas and shallow or restricted water, where they apply. [Edit : Environment]";
constexpr std::string_view kResistanceParameters =
    "Choose the hull drag method and the ITTC-78 expansion settings. Check the validity range of the method. "
    "[View : Resistance mode]";
constexpr std::string_view kRunResistance =
    "Calculate drag and effective power at every speed. [Analysis : Calculate]";
constexpr std::string_view kResistanceReports =
    "Review, print or save the resistance reports. [Tools : Report]";
constexpr std::string_view kResistanceGraphs = "Review and save the resistance graphs. [Tools : Graph]";
constexpr std::string_view kPropulsor =
    "Define the propulsor: propeller geometry and series, or the waterjet data, and the engine. [Edit : "
    "Propulsor]";
constexpr std::string_view kPropulsionParameters =
    "Choose the hull-propulsor interaction method, the drive train and the cavitation criterion. "
    "[View : Propulsion mode]";
constexpr std::string_view kRunPropulsion =
    "Calculate propulsor performance, cavitation, engine load and fuel rate at every speed. [Analysis : "
    "Calculate]";
constexpr std::string_view kBackup =
    "Save the project and keep a copy in a safe place. [File : Save project as]";

constexpr StandardRow kSpeedPrediction[] = {
    {"File", "01. Create new project", kNewProject},
    {"Data", "02. Configure units", kUnits},
    {"Data", "03. Prepare supporting data", kSupporting},
    {"Data", "04. Enter Condition data", kCondition},
    {"Data", "05. Enter Hull data", kHull},
    {"Data", "06. Enter Appendage data", kAppendage},
    {"Data", "07. Enter Environment data", kEnvironment},
    {"Data", "08. Enter Margin data", "Define the design margin added to the total drag. [Edit : Margin]"},
    {"Data", "09. Set Resistance parameters", kResistanceParameters},
    {"Calc", "10. Run Resistance prediction", kRunResistance},
    {"Report", "11. Create Resistance reports", kResistanceReports},
    {"Report", "12. Create Resistance graphs", kResistanceGraphs},
    {"Data", "13. Enter Propulsor data", kPropulsor},
    {"Data", "14. Set Propulsion parameters", kPropulsionParameters},
    {"Calc", "15. Run Propulsion analysis", kRunPropulsion},
    {"Calc", "16. Run propeller sizing",
     "Size the propeller for the design point, then run the propulsion analysis again. [Edit : Propulsor]"},
    {"File", "17. Backup files", kBackup},
};

constexpr StandardRow kQuickSizing[] = {
    {"File", "01. Create new project", kNewProject},
    {"Data", "02. Configure units", kUnits},
    {"Data", "03. Enter Condition data", kCondition},
    {"Data", "04. Switch to Propulsion Mode",
     "Proceed directly into Propulsion Mode to perform the quick sizing. [View : Propulsion mode]"},
    {"Data", "05. Set Hull-Propulsor parameters",
     "Choose defined hull-propulsor coefficients, or an interaction method. [View : Propulsion mode]"},
    {"Data", "06. Set System Analysis parameters",
     "Set the propulsor count, gear ratio, transmission efficiency and the analysis type. [View : Propulsion "
     "mode]"},
    {"Data", "07. Edit Propulsion results for WFT, THD, EFFR",
     "Type the total drag, wake fraction, thrust deduction and relative rotative efficiency at each speed. "
     "[Analysis : Edit results mode]"},
    {"Data", "08. Enter Propulsor data", kPropulsor},
    {"Calc", "09. Choose propeller sizing method",
     "Choose what is sized (RPM, diameter, pitch, blade area) and the design point. [Edit : Propulsor]"},
    {"Calc", "10. Run Propulsion analysis", kRunPropulsion},
    {"Report", "11. Create Propulsion reports",
     "Review, print or save the propulsion reports. [Tools : Report]"},
    {"Report", "12. Create Propulsion graphs", "Review and save the propulsion graphs. [Tools : Graph]"},
    {"File", "13. Backup files", kBackup},
};

constexpr StandardRow kSeaTrial[] = {
    {"File", "01. Create new project", kNewProject},
    {"Data", "02. Configure units", kUnits},
    {"Data", "03. Prepare supporting data", kSupporting},
    {"Data", "04. Enter Condition data", kCondition},
    {"Data", "05. Enter Hull data", kHull},
    {"Data", "06. Enter Appendage data", kAppendage},
    {"Data", "07. Enter Environment data", kEnvironment},
    {"Data", "08. Omit Margin data",
     "Leave the margin at zero: the trial is compared with the prediction without margin. [Edit : Margin]"},
    {"Data", "09. Set Resistance parameters", kResistanceParameters},
    {"Calc", "10. Run Resistance prediction", kRunResistance},
    {"Report", "11. Create Resistance reports", kResistanceReports},
    {"Report", "12. Create Resistance graphs", kResistanceGraphs},
    {"Data", "13. Enter Propulsor data", kPropulsor},
    {"Data", "14. Set Propulsion parameters", kPropulsionParameters},
    {"Calc", "15. Enter trial data",
     "Type the measured speeds, shaft power and RPM of the trial runs into the results table. "
     "[Analysis : Edit results mode]"},
    {"Calc", "16. Run Propulsion analysis", kRunPropulsion},
    {"File", "17. Backup files", kBackup},
};

constexpr StandardRow kModelTest[] = {
    {"File", "01. Create new project", kNewProject},
    {"Data", "02. Prepare supporting data", kSupporting},
    {"Data", "03. Configure units", kUnits},
    {"Data", "04. Enter Condition data", kCondition},
    {"Data", "05. Enter Hull data", kHull},
    {"Data", "06. Enter Appendage data", kAppendage},
    {"Data", "07. Enter Propulsor data", kPropulsor},
    {"Data", "08. Set Resistance parameters",
     "Choose the scaled-from-test hull drag technique and the model scale. [View : Resistance mode]"},
    {"Calc", "09. Enter test data",
     "Type the model resistance test results into the results table. [Analysis : Edit results mode]"},
    {"Calc", "10. Run Resistance prediction",
     "Expand the model test results to the full-size vessel. [Analysis : Calculate]"},
    {"Report", "11. Create Resistance reports", kResistanceReports},
    {"Data", "12. Set Propulsion parameters", kPropulsionParameters},
    {"Calc", "13. Enter test data",
     "Type the hull-porpulsor coefficients of the self-propulsion test into the results table. "
     "[Analysis : Edit results mode]"},
    {"File", "14. Save ship object file",
     "Export the vessel as a common ship object, for use as a reference ship. [File : Export]"},
    {"File", "15. Backup file", kBackup},
};

constexpr std::span<const StandardRow> kLists[] = {{}, kSpeedPrediction, kQuickSizing, kSeaTrial, kModelTest};
static_assert(std::size(kLists) == std::size(kListNames));

}  // namespace

int TaskTypeIndex(std::string_view type) {
  for (size_t i = 0; i < std::size(kTypes); ++i) {
    if (type == kTypes[i]) return static_cast<int>(i);
  }
  return -1;
}

int TaskSortKey(std::string_view status, std::string_view type, int sortMode, int key) {
  int s = 0;
  if (status == "Done") {
    s = 1;
  } else if (status != "ToDo") {
    return key;
  }
  if (sortMode == 1) return 54 - TaskTypeIndex(type) - 10 * s;
  if (sortMode == 2) return 50 - 10 * s;
  return key;
}

std::string TaskRowText(const TaskRecord& task) {
  return task.Status + "|" + task.Type + "|" + task.Task + "|" + task.Notes;
}

TaskRecord TaskFromRowText(std::string_view row) {
  TaskRecord t;
  std::string* fields[] = {&t.Status, &t.Type, &t.Task};
  for (std::string* f : fields) {
    const size_t bar = row.find('|');
    *f = std::string(row.substr(0, bar));
    row = bar == std::string_view::npos ? std::string_view{} : row.substr(bar + 1);
  }
  t.Notes = std::string(row);
  return t;
}

std::span<const std::string_view> StandardTaskListNames() { return kListNames; }

std::vector<std::string> StandardTaskListRows(int index) {
  std::vector<std::string> rows;
  if (index < 0 || index >= static_cast<int>(std::size(kLists))) return rows;
  for (const StandardRow& r : kLists[index]) {
    rows.push_back(TaskRowText({"ToDo", std::string(r.type), std::string(r.task), std::string(r.notes)}));
  }
  return rows;
}

bool clsVXTaskList::AddTask(TaskRecord task) {
  if (count_ >= kMaxTaskCount) return false;
  tasks_[static_cast<size_t>(count_++)] = std::move(task);
  return true;
}

bool clsVXTaskList::DeleteTask(int row) {
  if (row < 0 || row >= count_) return false;
  std::move(tasks_.begin() + row + 1, tasks_.begin() + count_, tasks_.begin() + row);
  tasks_[static_cast<size_t>(--count_)] = TaskRecord{};
  return true;
}

void clsVXTaskList::ClearAllData() {
  tasks_.fill(TaskRecord{});
  count_ = 0;
}

void clsVXTaskList::SetSortKeys(int sortMode) {
  for (int i = 0; i < count_; ++i) {
    TaskRecord& t = tasks_[static_cast<size_t>(i)];
    t.SortKey = TaskSortKey(t.Status, t.Type, sortMode, t.SortKey);
  }
}

void clsVXTaskList::Sort(int sortMode) {
  SetSortKeys(sortMode);
  std::stable_sort(tasks_.begin(), tasks_.begin() + count_,
                   [](const TaskRecord& a, const TaskRecord& b) { return a.SortKey > b.SortKey; });
}

void clsVXTaskList::LoadStandardList(int index) {
  ClearAllData();
  for (const std::string& row : StandardTaskListRows(index)) AddTask(TaskFromRowText(row));
}

}  // namespace velmar
