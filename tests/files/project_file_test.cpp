// Open and save of whole projects: the round trip of every field, merging into the file that
// is there, the one warning of an older file, files that are no project, the
// common ship object, reference ships, the template, the version rules and the error save.
#include "files/project_file.h"

#include <gtest/gtest.h>

#include "files/block_io.h"
#include "project_fixture.h"

namespace velmar {
namespace {

using namespace velmar::testing;

class ProjectFileTest : public ProjectTest {
 protected:
  // The tree of a file on disk, written back after `edit` (if any) changed it.
  static JsonObject Tree(const fs::path& path, const std::function<void(const JsonObject&)>& edit = nullptr) {
    clsVXFileJSON file;
    file.ReadFile(path);
    if (edit) edit(file.ParsedObject());
    EXPECT_TRUE(file.WriteFile(path));
    return file.ParsedObject();
  }
  // Fills every field and saves the project as `name`.
  fs::path SavedProject(const std::string& name) {
    FillProject();
    const fs::path path = dir / name;
    EXPECT_EQ(SaveProjectFile(path), 1);
    return path;
  }

  // A cell of a set's speed table.
  static double Cell(const ModelSet& m, int row, const char* tag) {
    return m.SpeedPerformance->Raw(row, clsVXSpeedPerformance::ColumnIndex(tag));
  }
};

// Every field written is read back: opened in a fresh project and saved over itself, the file
// keeps its bytes. The resistance's defined source is written but never read, so it holds the
// value it reads as.
TEST_F(ProjectFileTest, EveryFieldOfEveryClassSurvivesSaveAndOpen) {
  FillProject();
  s().Resistance->HullDragDefinedSource("Manual");
  const fs::path path = dir / "patrol.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);
  const std::string saved = ReadBytes(path);

  FreshProject();
  const OpenResult r = OpenProjectFile(path);
  ASSERT_TRUE(r.opened) << r.message;
  EXPECT_TRUE(r.current) << r.warningText;
  ASSERT_EQ(SaveProjectFile(path), 1);
  EXPECT_EQ(ReadBytes(path), saved);
}

// The file of tests/data was written by this program; an unknown block between the blocks, a
// Waterjet block and unknown tags in Hull were added by hand. Opening and saving it over
// itself gives the same bytes: nothing moved, nothing got lost.
TEST_F(ProjectFileTest, SavingOverAFileKeepsUnknownBlocksAndTagsInPlace) {
  const fs::path golden = DataPath("merge_golden.vxvl");
  const fs::path path = dir / "merge.vxvl";
  fs::copy_file(golden, path);
  const OpenResult r = OpenProjectFile(path);
  ASSERT_TRUE(r.opened && r.current) << r.message << r.warningText;
  ASSERT_EQ(SaveProjectFile(path, path), 1);
  EXPECT_EQ(ReadBytes(path), ReadBytes(golden));
}

// A missing block is one line that hides the lines of its own tags only; the lines of an
// older file are shown after one question.
TEST_F(ProjectFileTest, AMissingBlockGivesOneLineAndOneQuestion) {
  const fs::path path = SavedProject("old.vxvl");
  Tree(path, [](const JsonObject& root) {
    root->Remove("Appendage");
    root->Remove("Environment");
    root->item("Resistance").Object()->Remove("HullDragMethod");
  });
  FreshProject();
  hooks().scriptedAnswers = {Answer::Yes};  // Yes shows the lines found
  const OpenResult r = OpenProjectFile(path);
  ASSERT_TRUE(r.opened && !r.current);
  EXPECT_EQ(r.warningText,
            "Missing: \"Appendage\" [Group]\r\nMissing: \"Environment\" [Group]\r\n"
            "Resistance \"HullDragMethod\" [Index]");
  ASSERT_EQ(hooks().messages.size(), 1u);
  EXPECT_NE(hooks().messages[0].text.find(r.warningText), std::string::npos);
  EXPECT_EQ(s().Project->ProjectID, "PB-7|x");  // the file stays loaded
}

// A method this version doesn't know (written by a newer one, or mistyped) opens as the first
// of its list with one warning naming each such choice; the file still counts as current.
TEST_F(ProjectFileTest, AnUnknownMethodOpensWithOneWarning) {
  const fs::path path = SavedProject("newer.vxvl");
  Tree(path, [](const JsonObject& root) {
    const JsonObject resistance = root->item("Resistance").Object();
    resistance->item("WindDragMethod", JsonValue(std::string("Hughes 2030")));
    resistance->item("HullDragMethod", JsonValue(std::string("holtrop")));  // any case
  });
  FreshProject();
  const OpenResult r = OpenProjectFile(path);
  ASSERT_TRUE(r.opened && r.current) << r.warningText;
  EXPECT_EQ(s().Resistance->WindDragMethod(), 0);
  EXPECT_NE(r.unknownLabels.find("Resistance \"WindDragMethod\": \"Hughes 2030\""), std::string::npos);
  EXPECT_EQ(r.unknownLabels.find("HullDragMethod"), std::string::npos);
  ASSERT_EQ(hooks().messages.size(), 1u);
  EXPECT_EQ(hooks().messages[0].text, r.unknownLabels);
}

TEST_F(ProjectFileTest, FilesThatAreNoProjectLeaveTheNewProject) {
  fs::create_directories(dir / "folder.vxvl");
  WriteBytes(dir / "other.vxvl", "{\"Settings\": {\"Colour\": \"red\"}}");
  for (const char* name : {"missing.vxvl", "folder.vxvl", "other.vxvl"}) {
    const OpenResult r = OpenProjectFile(dir / name);
    EXPECT_FALSE(r.opened) << name;
    EXPECT_EQ(r.message.find('\n'), std::string::npos) << name;
    EXPECT_NE(r.message.find(name), std::string::npos) << r.message;
    EXPECT_EQ(s().Project->FileName, "untitled.vxvl") << name;
  }
}

// The common ship object holds the ship without settings; as a reference ship it gives units,
// water and the speed table up to the hull-propulsor coefficients, a project the whole table.
TEST_F(ProjectFileTest, TheCommonShipObjectAndReferenceShips) {
  const fs::path project = SavedProject("ref.vxvl"), ship = dir / "ref.ship";
  ASSERT_EQ(ExportCommonShipObject(ship), 1);
  const JsonObject root = Tree(ship);
  EXPECT_EQ(root->Keys(),
            (std::vector<std::string>{"Project", "Units", "WaterProperties", "Hull", "Appendage",
                                      "ITTC78Expansion", "Propeller", "SpeedPerformance"}));
  EXPECT_EQ(root->item("Project").Object()->item("ID").ToText(), "");
  EXPECT_EQ(root->item("Project").Object()->item("FilePath").ToText(), ship.string());
  EXPECT_EQ(root->item("Propeller").Object()->Keys().back(), "Chord07R");  // propeller mode 2
  EXPECT_EQ(root->item("SpeedPerformance").Object()->Keys().back(), "RelRotEfficiency");

  const ModelSet saved = s();
  for (const auto& [path, fullTable] : {std::pair{project, true}, std::pair{ship, false}}) {
    FreshProject();
    ModelSet& ref = App().RefShipResistance;
    ASSERT_TRUE(LoadReferenceShipData(path, ref)) << path;
    ExpectSameFields(*ref.WaterProperties, *saved.WaterProperties, "WaterProperties");
    ASSERT_EQ(ref.SpeedPerformance->count(), 3);
    EXPECT_EQ(Cell(ref, 2, "WakeFraction"), Cell(saved, 2, "WakeFraction"));
    EXPECT_EQ(Cell(ref, 2, "PowerBrakeTotal"), fullTable ? Cell(saved, 2, "PowerBrakeTotal") : 0.0);
    EXPECT_EQ(s().SpeedPerformance->count(), 0);  // the open project is another set
    EXPECT_EQ(ref.Hull->Raw(0), 0.0);             // only the three blocks are read
  }
  EXPECT_FALSE(LoadReferenceShipData(dir / "old.vl5", App().RefShipResistance));
  ASSERT_EQ(hooks().messages.size(), 1u);
  EXPECT_EQ(hooks().messages[0].text, "Error in Reference ship file.");
}

TEST_F(ProjectFileTest, ATemplateGivesDataButNotIdentityResultsOrTasks) {
  const fs::path path = SavedProject("template.vxvl");
  const ModelSet saved = s();
  InstallProjectFileHooks();
  App().TemplateEnabled = true;
  App().TemplateFile = path.string();
  NewProject();
  ExpectSameFields(*s().Hull, *saved.Hull, "Hull");
  EXPECT_EQ(s().Project->FileName, "untitled.vxvl");
  EXPECT_EQ(s().TaskList->TaskCount(), 0);
  ASSERT_EQ(s().SpeedPerformance->count(), 3);
  EXPECT_EQ(Cell(s(), 1, "Speed"), Cell(saved, 1, "Speed"));
  EXPECT_EQ(Cell(s(), 1, "DragTotal"), 0.0);
}

TEST_F(ProjectFileTest, AWaterjetProjectReadsTheWaterjetInsteadOfThePropeller) {
  s().Propeller->Description("P");
  s().Propulsion->PropulsorCalcType(3);
  const fs::path path = dir / "jet.vxvl";
  ASSERT_EQ(SaveProjectFile(path), 1);
  // The propeller's blocks are written all the same; a Waterjet block is read in their place.
  clsVXFileJSON jet;
  jet.ParseText(R"({"Description": "Jet 450"})");
  Tree(path, [&](const JsonObject& root) { root->Add("Waterjet", JsonValue(jet.ParsedObject())); });
  FreshProject();
  ASSERT_TRUE(OpenProjectFile(path).opened);
  EXPECT_EQ(s().Waterjet->Description(), "Jet 450");
  EXPECT_EQ(s().Propeller->Description(), "");  // skipped
}

TEST_F(ProjectFileTest, VersionRulesSetTheSideFileIndexes) {
  for (const auto& r : ReadTable("project_version_rules.txt", 5)) {
    FreshProject();
    s().Project->Source = r[0];
    s().Propulsion->KTKQFileIndex(1);
    if (r[1] == "yes") {
      s().Engine->Description("E");
      s().Waterjet->Description("W");
      s().Propeller->Description("P");
    }
    ApplyProjectVersionRules();
    EXPECT_EQ(s().Propulsion->EngineFileIndex(), r.Num(2)) << r.where;
    EXPECT_EQ(s().Propulsion->WaterjetFileIndex(), r.Num(3)) << r.where;
    EXPECT_EQ(s().Propulsion->KTKQFileIndex(), r.Num(4)) << r.where;
  }
}

TEST_F(ProjectFileTest, TheErrorSaveIsNamedByDateAndTime) {
  EXPECT_EQ(SaveErrorProject(dir.path()), dir / "Error-20240305-1407.vxvl");
  EXPECT_TRUE(fs::exists(dir / "Error-20240305-1407.vxvl"));
  EXPECT_EQ(SaveErrorProject(dir / "none"), fs::path());
  ASSERT_EQ(hooks().messages.size(), 1u);
  EXPECT_EQ(hooks().messages[0].title, "File Write Error");
}

}  // namespace
}  // namespace velmar
