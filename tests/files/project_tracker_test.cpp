// The project tracker log: which sessions are logged, the line, and reading the log back.
#include "files/project_tracker.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "project_fixture.h"

namespace velmar {
namespace {

using namespace velmar::testing;

class ProjectTrackerTest : public ::testing::Test {
 protected:
  void SetUp() override { ::setenv("VELMAR_TRACKER_DIR", (dir / "shared").c_str(), 1); }
  void TearDown() override { ::unsetenv("VELMAR_TRACKER_DIR"); }
  std::string Log() { return ReadBytes(dir / "shared" / "ProjectTracker.log"); }
  TempDir dir;
};

TEST_F(ProjectTrackerTest, OnlyNamedSessionsOfFiveMinutesAreLogged) {
  struct Case {
    const char* fileName;
    int minutes;
    bool logged;
  } cases[] = {
      {"hull.vxvl", 5, true},       {"hull.vxvl", 4, false},      {"hull.vxvl", 125, true},
      {"untitled.vxvl", 30, false}, {"Untitled.VXVL", 30, false}, {"", 30, false},
  };
  for (const Case& c : cases) {
    clsVXProject p;
    p.FileName = c.fileName;
    const std::string before = Log();
    const std::time_t start = std::time(nullptr) - 60 * c.minutes - 2;
    p.SessionStart = start;
    EXPECT_EQ(p.WriteProjectTrackerLog(), c.logged) << c.fileName << " " << c.minutes;
    EXPECT_EQ(Log().size() > before.size(), c.logged) << c.fileName << " " << c.minutes;
    // Logged or not, a new session starts: a short one doesn't add up with the next.
    EXPECT_GE(p.SessionStart, start + 60 * c.minutes);
    EXPECT_FALSE(p.WriteProjectTrackerLog());
  }
}

TEST_F(ProjectTrackerTest, TheLineHoldsTenFieldsAndReadsBack) {
  clsVXProject p;
  p.FileName = "hull.vxvl";
  p.FileFolder = "/ships";
  p.ProjectID = "PB|7";
  p.Source = "Velmar 1.00.0000";
  p.Description = "Patrol\r\nboat \xc3\xa9";
  p.SessionStart = std::time(nullptr) - 3600 - 61 * 5;
  ASSERT_TRUE(p.WriteProjectTrackerLog());
  const std::string log = Log();
  ASSERT_GE(log.size(), 2u);
  EXPECT_EQ(log.substr(log.size() - 2), "\r\n");
  EXPECT_NE(log.find("boat \xe9"), std::string::npos);  // the log is single-byte text

  clsVXProject other = p;
  other.FileName = "other.vxvl";
  other.SessionStart -= 600;
  ASSERT_TRUE(other.WriteProjectTrackerLog());
  p.SessionStart -= 600;
  ASSERT_TRUE(p.WriteProjectTrackerLog());
  std::ofstream(dir / "shared" / "ProjectTracker.log", std::ios::app) << "a line without separators\n";

  ASSERT_EQ(p.ReadProjectTrackerHistory(), 2);
  const std::vector<std::string>& f = p.ProjectTrackerHistoryString(0);
  ASSERT_EQ(f.size(), 10u);
  EXPECT_EQ(f[1].size(), 10u);  // yyyy-mm-dd
  EXPECT_EQ(f[6].size(), 8u);   // hh:mm:ss
  EXPECT_EQ(f, (std::vector<std::string>{"Active", f[1], "PB 7", "Velmar 1.00.0000", "hull.vxvl",
                                         "Patrol  boat \xc3\xa9", f[6], f[7], "01:05", "/ships"}));
  EXPECT_EQ(p.ReadProjectTrackerFiles(), 2);
  EXPECT_EQ(p.ProjectTrackerFilesString(0)[4], "hull.vxvl");
  EXPECT_EQ(p.ProjectTrackerFilesString(1)[4], "other.vxvl");
}

}  // namespace
}  // namespace velmar
