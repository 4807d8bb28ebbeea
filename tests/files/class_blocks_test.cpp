// The blocks of single classes: the repairs that make older files read as current ones, the
// two forms of the task list, the waterjet's objects, the engine's curves, and the side files.
#include <gtest/gtest.h>

#include "files/block_io.h"
#include "files/project_file.h"
#include "project_fixture.h"

namespace velmar {
namespace {

using namespace velmar::testing;

using ClassBlocksTest = ProjectTest;

// Reads the blocks of the classes with repairs or lists of their own; the file's error lines.
std::string ReadBlocks(ModelSet& s, const std::string& text) {
  clsVXFileJSON file;
  file.ParseText(text);
  JsonObject root;
  ReadFileBlock(file, root, *s.Appendage);
  ReadFileBlock(file, root, *s.Resistance);
  ReadFileBlock(file, root, *s.Propulsion);
  ReadFileBlock(file, root, *s.Propeller, 1);
  ReadFileBlock(file, root, *s.PropellerSeries);
  ReadFileBlock(file, root, *s.Waterjet);
  ReadFileBlock(file, root, *s.TaskList);
  return file.GetParserErrors();
}

TEST_F(ClassBlocksTest, OlderFilesAreRepairedOnReading) {
  // A file of older versions: no schema versions, older tags, values no longer allowed.
  const std::string errors = ReadBlocks(s(), R"({
      "PropellerSeries": {"KTMultiplier": 0, "KQMultiplier": 0.9, "NozzleLengthDiameterRatio": 0},
      "Propeller": {"Diameter": 2.5, "HubDiameterRatio": 0.2, "FileNamePath": "c:\\a.prop"},
      "Propulsion": {"PropulsionInteractionEnabled": "enter", "PropulsionInteractionDefinedSource": "Tank",
                     "PropulsorCountPerHull": 2, "PropellerDiameterMax": 1.25},
      "Resistance": {"HullDragDefinedSource": "Tank"}, "Appendage": {"StrutCount": 2}})");
  EXPECT_EQ(s().PropellerSeries->KTMultiplier(), 1.0);  // 0 or less reads as 1
  EXPECT_EQ(s().PropellerSeries->KQMultiplier(), 0.9);
  EXPECT_EQ(s().PropellerSeries->NozzleLengthDiameterRatio(), 0.5);
  EXPECT_EQ(s().Propeller->HubDiameter(kCurrent), 0.5);  // from the older ratio
  EXPECT_EQ(s().Propeller->ImportFilePath(), "c:\\a.prop");
  EXPECT_EQ(s().Propulsion->PropulsionInteractionEnabled(), 1);               // Enter reads as Calc
  EXPECT_EQ(s().Propulsion->PropulsionInteractionDefinedSource(), "Manual");  // read from version 1 on
  EXPECT_EQ(s().Hull->PropulsorCountPerHull(), 2);  // shaft data of older propulsion blocks
  EXPECT_EQ(s().Hull->PropellerDiameterMax(kCurrent), 1.25);
  EXPECT_EQ(s().Resistance->AppendageDragMethod(), 5);           // missing: HoltropComponent
  EXPECT_EQ(s().Resistance->HullDragDefinedSource(), "Manual");  // never read
  EXPECT_EQ(s().Appendage->AppendageDefinition(), 2);            // missing: Component
  EXPECT_NE(errors.find("Resistance \"AppendageDragMethod\" [Index]"), std::string::npos) << errors;
  for (const char* quiet : {"SchemaVersion", "HubDiameterRatio", "PropulsorCountPerHull"})
    EXPECT_EQ(errors.find(quiet), std::string::npos) << quiet;

  FreshProject();
  ReadBlocks(s(), R"({"Propeller": {"Diameter": 2.5, "HubDiameter": 0.4, "HubDiameterRatio": 0.2},
      "Propulsion": {"SchemaVersion": 1, "PropulsionInteractionDefinedSource": "Tank"},
      "Resistance": {"SchemaVersion": 1, "HullDragDefinedSource": "Tank"}})");
  EXPECT_EQ(s().Propeller->HubDiameter(kCurrent), 0.4);
  EXPECT_EQ(s().Propulsion->PropulsionInteractionDefinedSource(), "Tank");
  EXPECT_EQ(s().Resistance->HullDragDefinedSource(), "Manual");
  ReadBlocks(s(), R"({"Propulsion": {"SchemaVersion": 1, "PropulsionInteractionDefinedSource": ""}})");
  EXPECT_EQ(s().Propulsion->PropulsionInteractionDefinedSource(), "Manual");
}

TEST_F(ClassBlocksTest, TheTaskListReadsItsOlderFormAndThirtyTasks) {
  // The older form holds one list per column.
  ReadBlocks(s(), R"({"TaskList": {"Status": ["ToDo", "Done"], "Type": ["File", "Calc"], "Task": ["A", "B"],
      "Notes": ["n", "[Edit : Hull]"]}})");
  ASSERT_EQ(s().TaskList->TaskCount(), 2);
  EXPECT_EQ(TaskRowText(s().TaskList->Task(1)), "Done|Calc|B|[Edit : Hull]");
  // More tasks than the table holds: the first 30 are kept.
  std::string text = R"({"TaskList": {"Count": 31)";
  for (int i = 0; i <= kMaxTaskCount; ++i)
    text += ", \"" + std::to_string(i) + "\": {\"Task\": \"T" + std::to_string(i) + "\"}";
  ReadBlocks(s(), text + "}}");
  EXPECT_EQ(s().TaskList->TaskCount(), kMaxTaskCount);
  EXPECT_EQ(s().TaskList->Task(29).Task, "T29");
}

TEST_F(ClassBlocksTest, EngineCurvesAreTenPointsAndCountsAreNumbers) {
  clsVXEngine& e = *s().Engine;
  e.MaxPowerCount(3);
  for (int i = 0; i < 3; ++i) e.MaxPowerRPM(i, 1000.0 + 500.0 * i);
  ASSERT_TRUE(WriteEngineFile(dir / "e.engn", e));
  const std::string text = ReadBytes(dir / "e.engn");
  EXPECT_NE(text.find("\"MaxPowerCount\": 3,"), std::string::npos);
  EXPECT_NE(text.find("\"RPM\": [1000,1500,2000,0,0,0,0,0,0,0]"), std::string::npos);
}

TEST_F(ClassBlocksTest, ACustomUnitReadsAsTheFirstUnit) {
  s().Units->TorqueIndex(1);
  s().Units->PowerIndex(3);  // the custom entry has no label in the file
  clsVXFileJSON file;
  JsonObject root;
  WriteFileBlock(file, root, *s().Units);
  clsVXUnits back;
  ReadFileBlock(file, root, back);
  EXPECT_EQ(back.TorqueIndex(), 1);
  EXPECT_EQ(back.PowerIndex(), 0);
}

// A side file read back and written again gives the same bytes.
template <class T>
void ExpectSideFileRoundTrip(bool (*write)(const fs::path&, const T&), bool (*read)(const fs::path&, T&),
                             const T& obj, const TempDir& dir) {
  T back;
  ASSERT_TRUE(write(dir / "a", obj));
  ASSERT_TRUE(read(dir / "a", back));
  ASSERT_TRUE(write(dir / "b", back));
  EXPECT_EQ(ReadBytes(dir / "b"), ReadBytes(dir / "a"));
}

TEST_F(ClassBlocksTest, SideFilesRoundTrip) {
  FillProject();
  clsVXWaterjet& jet = *s().Waterjet;
  FillFields(jet, 3);
  jet.PowerSeriesCount(2);
  jet.ImpellerCount(2);
  for (int k = 0; k < 2; ++k) {
    jet.PowerSeries(k).Power = 1000.0 * (k + 1);
    jet.PowerSeries(k).PerformanceCount = 3;
    for (int p = 0; p < 3; ++p) {
      jet.Speed(k, p, kCurrent, 10.0 + p);
      jet.CavZoneStatus(k, p, p % 2);
    }
    jet.ImpellerName(k, "Imp {" + std::to_string(k) + "}");
    for (int v = 0; v < clsVXWaterjet::kImpellerValueCount; ++v)
      jet.Impeller(k).values[static_cast<size_t>(v)] = v + k;
  }
  ExpectSideFileRoundTrip(WriteWaterjetFile, ReadWaterjetFile, jet, dir);
  ExpectSideFileRoundTrip(WriteEngineFile, ReadEngineFile, *s().Engine, dir);
  ExpectSideFileRoundTrip(WriteTaskFile, ReadTaskFile, *s().TaskList, dir);
  EXPECT_TRUE(DefaultHeadlessHooks().messages.empty());
}

TEST_F(ClassBlocksTest, SideFileFailuresSpeakTheirOwnWords) {
  HeadlessHooks& h = DefaultHeadlessHooks();
  clsVXTaskList tasks;
  clsVXEngine engine;
  WriteBytes(dir / "other.task", R"({"Engine": {}})");
  EXPECT_FALSE(ReadTaskFile(dir / "other.task", tasks));
  EXPECT_FALSE(WriteTaskFile(dir / "none" / "a.task", tasks));
  ASSERT_EQ(h.messages.size(), 2u);
  EXPECT_EQ(h.messages[0].text, "An error occured importing the task list file.");
  h.messages.clear();
  WriteBytes(dir / "part.engn", R"({"Engine": {"Description": "D 12", "MaxRatedRPM": 1800}})");
  EXPECT_TRUE(ReadEngineFile(dir / "part.engn", engine));
  EXPECT_EQ(engine.Description(), "D 12");
  ASSERT_EQ(h.messages.size(), 1u);
  EXPECT_NE(h.messages[0].text.find("some data may not have been read"), std::string::npos);
}

TEST_F(ClassBlocksTest, MoreThanTenImpellersAreCut) {
  std::string text = R"({"Waterjet": {"Impeller": {"Count": 12, "Index": 0)";
  for (int i = 0; i < 12; ++i)
    text += ", \"" + std::to_string(i) + "\": {\"Name\": \"I" + std::to_string(i) + "\"}";
  ReadBlocks(s(), text + "}}}");
  EXPECT_EQ(s().Waterjet->ImpellerCount(), 10);
  EXPECT_EQ(s().Waterjet->ImpellerName(9), "I9");
  EXPECT_EQ(DefaultHeadlessHooks().messages.size(), 1u);  // the user is told
}

}  // namespace
}  // namespace velmar
