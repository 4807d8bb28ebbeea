#include "files/task_list.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "../core/test_support.h"

namespace velmar {
namespace {

TEST(TaskList, SortKey) {
  for (const auto& r : testing::ReadTable("task_sort_keys.txt", 5))
    EXPECT_EQ(TaskSortKey(r[0], r[1], static_cast<int>(r.Num(2)), static_cast<int>(r.Num(3))), r.Num(4))
        << r.where;
}

TEST(TaskList, DoneTasksSortBehindOpenOnesInBothModes) {
  for (int mode : {1, 2}) {
    clsVXTaskList list;
    list.AddTask({"Done", "File", "a", "", 0});
    list.AddTask({"ToDo", "Other", "b", "", 0});
    list.AddTask({"Done", "Misc", "c", "", 0});
    list.AddTask({"ToDo", "File", "d", "", 0});
    list.Sort(mode);
    std::string order;
    for (int i = 0; i < list.TaskCount(); ++i) order += list.Task(i).Task;
    // Mode 1 groups by type within a status; mode 2 keeps the entry order within a status.
    EXPECT_EQ(order, mode == 1 ? "dbca" : "bdac") << mode;
  }
}

TEST(TaskList, StandardListsAreOpenTasksOfKnownTypes) {
  ASSERT_EQ(StandardTaskListNames().size(), 5u);
  EXPECT_TRUE(StandardTaskListRows(0).empty());  // "None"
  EXPECT_TRUE(StandardTaskListRows(5).empty());
  for (int index = 1; index <= 4; ++index) {
    for (const std::string& row : StandardTaskListRows(index)) {
      const TaskRecord t = TaskFromRowText(row);
      EXPECT_EQ(t.Status, "ToDo");
      EXPECT_GE(TaskTypeIndex(t.Type), 0) << row;
      EXPECT_EQ(t.Notes.back(), ']') << row;  // the command closes the notes
    }
  }
  // Row texts are kept as they stand, a misspelt word included.
  EXPECT_NE(StandardTaskListRows(4)[12].find("hull-porpulsor"), std::string::npos);
}

TEST(TaskList, FixedTableOfThirtyTasks) {
  clsVXTaskList list;
  list.LoadStandardList(1);
  ASSERT_EQ(list.TaskCount(), 17);
  for (int i = 17; i < kMaxTaskCount; ++i) EXPECT_TRUE(list.AddTask({"ToDo", "Other", "x", "", 0}));
  EXPECT_FALSE(list.AddTask({"ToDo", "Other", "31st", "", 0}));
  EXPECT_EQ(list.TaskCount(), kMaxTaskCount);
  EXPECT_THROW(list.Task(kMaxTaskCount), std::out_of_range);

  EXPECT_TRUE(list.DeleteTask(0));
  EXPECT_EQ(list.TaskCount(), kMaxTaskCount - 1);
  EXPECT_EQ(list.Task(0).Task, "02. Configure units");
  EXPECT_EQ(list.Task(kMaxTaskCount - 1).Task, "");
  EXPECT_FALSE(list.DeleteTask(kMaxTaskCount - 1));

  list.LoadStandardList(0);  // "None" empties the list
  EXPECT_EQ(list.TaskCount(), 0);
}

// A bar in the notes stays in the notes; a short row leaves the missing cells empty.
TEST(TaskList, RowText) {
  const TaskRecord back = TaskFromRowText("Done|Calc|10. Run|Notes with | bar");
  EXPECT_EQ(back.Task + "/" + back.Notes, "10. Run/Notes with | bar");
  EXPECT_EQ(TaskRowText(back), "Done|Calc|10. Run|Notes with | bar");
  const TaskRecord shortRow = TaskFromRowText("ToDo|File");
  EXPECT_EQ(shortRow.Type + "/" + shortRow.Task, "File/");
}

}  // namespace
}  // namespace velmar
