// Open and save of whole projects: the round trip of every field, merging into the file that
// is there, the one warning of an older file, files that are no project, failed saves, the
// common ship object, reference ships, the template, the version rules and the error save.
#include "files/project_file.h"

#include <gtest/gtest.h>

#include <set>

#include "files/block_io.h"
#include "project_fixture.h"

namespace velmar {
namespace {

using namespace velmar::testing;

class ProjectFileTest : public ::testing::Test {
 protected:
  void SetUp() override { FreshProject(); }
  void TearDown() override {
    SetProjectFileClock(nullptr);
    App().TemplateEnabled = false;
    App().TemplateFile.clear();
    App().LoadTemplateFile = nullptr;
  }
  ModelSet& s() { return App().primary; }
  HeadlessHooks& hooks() { return DefaultHeadlessHooks(); }

  // The tree of a file on disk.
  static JsonObject Tree(const fs::path& path) {
    clsVXFileJSON file;
    file.ReadFile(path);
    return file.ParsedObject();
  }
  // Rewrites a file after `edit` changed its tree.
  static void EditFile(const fs::path& path, const std::function<void(const JsonObject&)>& edit) {
    clsVXFileJSON file;
    file.ReadFile(path);
    edit(file.ParsedObject());
    ASSERT_TRUE(file.WriteFile(path));
  }

  TempDir dir;
};

// The data classes a project file holds field by field.
std::vector<const DataClass*> Classes(const ModelSet& m) {
  return {m.WaterProperties.get(), m.Hull.get(),      m.Appendage.get(),
          m.Environment.get(),     m.ITTC78.get(),    m.Resistance.get(),
          m.Propulsion.get(),      m.Propeller.get(), m.PropellerSeries.get(),
          m.PropellerSizing.get(), m.Engine.get()};
}

TEST_F(ProjectFileTest, EveryFieldOfEveryClassSurvivesSaveAndOpen) {
  FillProject();
  const ModelSet saved = s();  // the objects themselves: NewProject below replaces the set
  const fs::path path = dir / "patrol.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);

  FreshProject();
  const OpenResult r = OpenProjectFile(path);
  ASSERT_TRUE(r.opened) << r.message;
  EXPECT_TRUE(r.current) << r.warningText;
  EXPECT_TRUE(hooks().questions.empty());

  const clsVXProject& p = *s().Project;
  EXPECT_EQ(p.Description, saved.Project->Description);
  EXPECT_EQ(p.ProjectID, saved.Project->ProjectID);
  EXPECT_EQ(p.FilePath, "/ships/patrol.vxvl");
  EXPECT_EQ(p.LastModified, "05-Mar-24 14:07");
  EXPECT_EQ(saved.Project->LastModified, p.LastModified);
  for (UnitFamily f : AllUnitFamilies()) {
    EXPECT_EQ(s().Units->Index(f), saved.Units->Index(f)) << FamilyInfo(f).name;
    EXPECT_EQ(s().Units->FormatText(f), saved.Units->FormatText(f)) << FamilyInfo(f).name;
  }
  const std::vector<const DataClass*> now = Classes(s()), then = Classes(saved);
  for (size_t i = 0; i < now.size(); ++i)
    ExpectSameFields(*now[i], *then[i], std::to_string(i),
                     [](std::string_view n) { return n == "HullDragDefinedSource"; });
  EXPECT_EQ(s().Resistance->HullDragDefinedSource(), "Manual");  // written, never read
  for (const auto& c : clsVXEngine::Curves())
    for (int i = 0; i < kEngineCurvePoints; ++i)
      EXPECT_EQ(s().Engine->CurveValue(c.id, i), saved.Engine->CurveValue(c.id, i)) << c.name << i;

  const clsVXSpeedPerformance& sp = *s().SpeedPerformance;
  ASSERT_EQ(sp.count(), 3);
  EXPECT_EQ(sp.DesignSpeedIndex(), 1);
  for (std::string_view tag : SpeedPerformanceFileColumns())
    for (int r = 0; r < 3; ++r) {
      const int col = clsVXSpeedPerformance::ColumnIndex(tag);
      EXPECT_EQ(sp.Raw(r, col), saved.SpeedPerformance->Raw(r, col)) << tag << " row " << r;
    }
  ASSERT_EQ(s().TaskList->TaskCount(), saved.TaskList->TaskCount());
  for (int i = 0; i < s().TaskList->TaskCount(); ++i) {
    const TaskRecord &a = s().TaskList->Task(i), &b = saved.TaskList->Task(i);
    EXPECT_EQ(TaskRowText(a), TaskRowText(b)) << i;
  }
}

// Every column of the file is a column of the table, once; mode 1 ends after the
// hull-propulsor coefficients.
TEST_F(ProjectFileTest, SpeedPerformanceFileColumnsNameTableColumnsOnce) {
  std::set<int> seen;
  for (std::string_view tag : SpeedPerformanceFileColumns()) {
    const int col = clsVXSpeedPerformance::ColumnIndex(tag);
    EXPECT_GE(col, 0) << tag;
    EXPECT_TRUE(seen.insert(col).second) << tag;
  }
  EXPECT_EQ(SpeedPerformanceFileColumns(1).back(), "RelRotEfficiency");
}

// The file of tests/data was written by this program; an unknown block between the blocks, a
// Waterjet block and unknown tags in Hull were added by hand. Opening and saving it over
// itself gives the same bytes: nothing moved, nothing got lost.
TEST_F(ProjectFileTest, SavingOverAFileKeepsUnknownBlocksAndTagsInPlace) {
  const fs::path golden = fs::path(VELMAR_TEST_DATA) / "merge_golden.vxvl";
  const fs::path path = dir / "merge.vxvl";
  fs::copy_file(golden, path);
  const OpenResult r = OpenProjectFile(path);
  ASSERT_TRUE(r.opened && r.current) << r.message << r.warningText;
  ASSERT_EQ(SaveProjectFile(path), 1);
  EXPECT_EQ(ReadBytes(path), ReadBytes(golden));
}

TEST_F(ProjectFileTest, AMissingBlockGivesOneLineAndOneQuestion) {
  FillProject();
  const ModelSet saved = s();
  const fs::path path = dir / "old.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);
  EditFile(path, [](const JsonObject& root) { root->Remove("Environment"); });

  for (Answer answer : {Answer::No, Answer::Yes}) {
    FreshProject();
    hooks().scriptedAnswers = {answer};
    const OpenResult r = OpenProjectFile(path);
    ASSERT_TRUE(r.opened);
    EXPECT_FALSE(r.current);
    EXPECT_EQ(r.warningText, "Missing: \"Environment\" [Group]");
    EXPECT_EQ(hooks().questions.size(), 1u);
    // Yes shows the lines found.
    ASSERT_EQ(hooks().messages.size(), answer == Answer::Yes ? 1u : 0u);
    if (answer == Answer::Yes) {
      EXPECT_NE(hooks().messages[0].text.find("Missing: \"Environment\" [Group]"), std::string::npos);
    }
    // The file stays loaded either way.
    ExpectSameFields(*s().Hull, *saved.Hull, "Hull");
    EXPECT_EQ(s().Environment->Raw(0), 0.0);
  }
}

TEST_F(ProjectFileTest, FilesThatAreNoProjectLeaveTheNewProject) {
  fs::create_directories(dir / "folder.vxvl");
  WriteBytes(dir / "empty.vxvl", "");
  WriteBytes(dir / "list.vxvl", "[1, 2, 3]");
  WriteBytes(dir / "other.vxvl", "{\"Settings\": {\"Colour\": \"red\"}}");
  WriteBytes(dir / "text.vxvl", "Hull LengthWL 120");
  for (const char* name :
       {"missing.vxvl", "folder.vxvl", "empty.vxvl", "list.vxvl", "other.vxvl", "text.vxvl"}) {
    FreshProject();
    const OpenResult r = OpenProjectFile(dir / name);
    EXPECT_FALSE(r.opened) << name;
    EXPECT_EQ(r.message.find('\n'), std::string::npos) << name;
    EXPECT_NE(r.message.find(name), std::string::npos) << r.message;
    EXPECT_TRUE(hooks().questions.empty()) << name;
    EXPECT_EQ(s().Project->FileName, "untitled.vxvl") << name;
  }
}

TEST_F(ProjectFileTest, AFailedSaveReturnsZeroAndKeepsTheOldFile) {
  FillProject();
  EXPECT_EQ(SaveProjectFile(dir / "no-such-folder" / "p.vxvl"), 0);
  EXPECT_FALSE(fs::exists(dir / "no-such-folder"));

  const fs::path path = dir / "p.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);
  const std::string before = ReadBytes(path);
  s().Hull->LengthWL(kCurrent, 999.0);
  // The temporary file beside the target can't be made: a folder stands in its place.
  fs::create_directories(dir / "p.vxvl.vxtmp" / "x");
  EXPECT_EQ(SaveProjectFile(path), 0);
  EXPECT_EQ(ReadBytes(path), before);
}

TEST_F(ProjectFileTest, ASaveIntoAReadOnlyFolderKeepsTheOldFile) {
  if (::geteuid() == 0) GTEST_SKIP() << "a read-only folder doesn't stop the superuser";
  const fs::path path = dir / "p.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);
  const std::string before = ReadBytes(path);
  s().Hull->LengthWL(kCurrent, 999.0);
  fs::permissions(dir.path(), fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  EXPECT_EQ(SaveProjectFile(path), 0);
  EXPECT_EQ(ReadBytes(path), before);
}

TEST_F(ProjectFileTest, TheCommonShipObjectHoldsTheShipWithoutSettings) {
  FillProject();
  const fs::path path = dir / "patrol.ship";
  ASSERT_EQ(ExportCommonShipObject(path), 1);
  const JsonObject root = Tree(path);
  EXPECT_EQ(root->Keys(),
            (std::vector<std::string>{"Project", "Units", "WaterProperties", "Hull", "Appendage",
                                      "ITTC78Expansion", "Propeller", "SpeedPerformance"}));
  const JsonObject project = root->item("Project").Object();
  EXPECT_EQ(project->item("ID").ToText(), "");
  EXPECT_EQ(project->item("FilePath").ToText(), path.string());
  // Propeller mode 2: the block ends after Chord07R.
  EXPECT_EQ(root->item("Propeller").Object()->Keys().back(), "Chord07R");
  // SpeedPerformance mode 1: the counts and the lists up to RelRotEfficiency.
  std::vector<std::string> lists = {"Count", "DesignSpeedIndex"};
  for (std::string_view tag : SpeedPerformanceFileColumns(1)) lists.emplace_back(tag);
  EXPECT_EQ(root->item("SpeedPerformance").Object()->Keys(), lists);
  EXPECT_EQ(s().Project->Description, "Patrol boat {A} \"B\" \xc3\xa9");  // the project is untouched

  EXPECT_EQ(ExportCommonShipObject(dir / "none" / "x.ship"), 0);
}

TEST_F(ProjectFileTest, AReferenceShipReadsUnitsWaterAndSpeedTable) {
  FillProject();
  const fs::path project = dir / "ref.vxvl", ship = dir / "ref.ship";
  ASSERT_EQ(SaveProjectFile(project), 1);
  ASSERT_EQ(ExportCommonShipObject(ship), 1);
  const ModelSet saved = s();
  const int wake = clsVXSpeedPerformance::ColumnIndex("WakeFraction");
  const int power = clsVXSpeedPerformance::ColumnIndex("PowerBrakeTotal");
  struct Case {
    fs::path path;
    bool fullTable;
  };
  for (const Case& c : {Case{project, true}, Case{ship, false}}) {
    FreshProject();
    ModelSet& ref = App().RefShipResistance;
    ASSERT_TRUE(LoadReferenceShipData(c.path, ref)) << c.path;
    EXPECT_TRUE(hooks().messages.empty()) << hooks().messages.front().text;
    ExpectSameFields(*ref.WaterProperties, *saved.WaterProperties, "WaterProperties");
    ASSERT_EQ(ref.SpeedPerformance->count(), 3);
    EXPECT_EQ(ref.SpeedPerformance->Raw(2, wake), saved.SpeedPerformance->Raw(2, wake));
    EXPECT_EQ(ref.SpeedPerformance->Raw(2, power), c.fullTable ? saved.SpeedPerformance->Raw(2, power) : 0.0);
    EXPECT_EQ(s().SpeedPerformance->count(), 0);  // the open project is another set
    EXPECT_EQ(ref.Hull->Raw(0), 0.0);             // only the three blocks are read
  }
  for (const char* bad : {"none.vxvl", "old.vl5"}) {
    FreshProject();
    EXPECT_FALSE(LoadReferenceShipData(dir / bad, App().RefShipResistance));
    ASSERT_EQ(hooks().messages.size(), 1u);
    EXPECT_EQ(hooks().messages[0].text, "Error in Reference ship file.");
  }
}

TEST_F(ProjectFileTest, ATemplateGivesDataButNotIdentityResultsOrTasks) {
  FillProject();
  const fs::path path = dir / "template.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);
  const ModelSet saved = s();

  InstallProjectFileHooks();
  App().TemplateEnabled = true;
  App().TemplateFile = path.string();
  NewProject();
  ExpectSameFields(*s().Hull, *saved.Hull, "Hull");
  EXPECT_EQ(s().Project->FileName, "untitled.vxvl");
  EXPECT_EQ(s().Project->Description, "");
  EXPECT_EQ(s().TaskList->TaskCount(), 0);
  ASSERT_EQ(s().SpeedPerformance->count(), 3);
  const int speed = clsVXSpeedPerformance::ColumnIndex("Speed");
  const int drag = clsVXSpeedPerformance::ColumnIndex("DragTotal");
  EXPECT_EQ(s().SpeedPerformance->Raw(1, speed), saved.SpeedPerformance->Raw(1, speed));
  EXPECT_EQ(s().SpeedPerformance->Raw(1, drag), 0.0);
  EXPECT_FALSE(LoadTemplateFile(dir / "none.vxvl"));
}

TEST_F(ProjectFileTest, AWaterjetProjectReadsTheWaterjetInsteadOfThePropeller) {
  FillProject();
  s().Propulsion->PropulsorCalcType(3);
  const fs::path path = dir / "jet.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);
  // The propeller's blocks are written all the same; the Waterjet block only survives.
  EXPECT_TRUE(Tree(path)->Exists("Propeller"));
  EXPECT_FALSE(Tree(path)->Exists("Waterjet"));
  EditFile(path, [](const JsonObject& root) {
    root->Add("Waterjet", JsonValue(std::make_shared<clsVXHashTable>()));
    root->item("Waterjet").Object()->Add("Description", JsonValue("Jet 450"));
  });
  FreshProject();
  const OpenResult r = OpenProjectFile(path);
  ASSERT_TRUE(r.opened);
  EXPECT_EQ(s().Waterjet->Description(), "Jet 450");
  EXPECT_EQ(s().Propeller->Description(), "");  // skipped
  ASSERT_EQ(SaveProjectFile(path), 1);
  const JsonObject jet = Tree(path)->item("Waterjet").Object();
  ASSERT_TRUE(jet);
  EXPECT_EQ(jet->item("Description").ToText(), "Jet 450");
}

TEST_F(ProjectFileTest, VersionRulesSetTheSideFileIndexes) {
  struct Case {
    const char* source;
    bool descriptions;
    int engine, waterjet, ktkq;  // expected, from 0, 0, 1 before
  } cases[] = {
      {"Corvenith Velmar 2012", true, 1, 1, 1},
      {"Velmar 12.0.0", true, 1, 1, 0},
      {"Velmar 14.99.9", true, 1, 1, 0},
      {"Velmar 13.02.0100", false, 0, 0, 1},
      {"Velmar 15.0.0", true, 0, 0, 1},
      {"Velmar 11.9.9", true, 0, 0, 1},
      {"Velmar 13.0", true, 0, 0, 1},
      {"Velmar 13.0.0.1", true, 0, 0, 1},
      {"Corvenith Velmar 13.0.0", true, 0, 0, 1},  // the version is taken from character 7 on
      {"Velmar 1.00.0000", true, 0, 0, 1},
  };
  for (const Case& c : cases) {
    FreshProject();
    s().Project->Source = c.source;
    s().Propulsion->KTKQFileIndex(1);
    if (c.descriptions) {
      s().Engine->Description("E");
      s().Waterjet->Description("W");
      s().Propeller->Description("P");
    }
    ApplyProjectVersionRules();
    EXPECT_EQ(s().Propulsion->EngineFileIndex(), c.engine) << c.source;
    EXPECT_EQ(s().Propulsion->WaterjetFileIndex(), c.waterjet) << c.source;
    EXPECT_EQ(s().Propulsion->KTKQFileIndex(), c.ktkq) << c.source;
  }
}

TEST_F(ProjectFileTest, TheErrorSaveIsNamedByDateAndTime) {
  FillProject();
  const fs::path written = SaveErrorProject(dir.path());
  EXPECT_EQ(written, dir / "Error-20240305-1407.vxvl");
  EXPECT_TRUE(fs::exists(written));
  EXPECT_TRUE(hooks().messages.empty());

  EXPECT_EQ(SaveErrorProject(dir / "none"), fs::path());
  ASSERT_EQ(hooks().messages.size(), 1u);
  EXPECT_EQ(hooks().messages[0].title, "File Write Error");
}

}  // namespace
}  // namespace velmar
