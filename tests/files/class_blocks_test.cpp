// The blocks of single classes: the repairs that make older files read as current ones, the
// two forms of the task list, the waterjet's objects, the engine's curves, and the side files.
#include <gtest/gtest.h>

#include "files/block_io.h"
#include "files/project_file.h"
#include "project_fixture.h"

namespace velmar {
namespace {

using namespace velmar::testing;

class ClassBlocksTest : public ::testing::Test {
 protected:
  void SetUp() override { FreshProject(); }
  void TearDown() override { SetProjectFileClock(nullptr); }
  ModelSet& s() { return App().primary; }
  TempDir dir;
};

struct RepairCase {
  const char* what;
  const char* text;  // the document read
  std::function<void(clsVXFileJSON&, JsonObject&, ModelSet&)> read;
  std::function<void(const ModelSet&)> check;
  const char* lineFound = nullptr;   // a line the error text must hold
  const char* lineAbsent = nullptr;  // a text no line may hold
};

template <class T>
auto Read(std::shared_ptr<T> ModelSet::*member) {
  return [member](clsVXFileJSON& f, JsonObject& r, ModelSet& s) { ReadFileBlock(f, r, *(s.*member)); };
}
auto ReadPropeller = [](clsVXFileJSON& f, JsonObject& r, ModelSet& s) {
  ReadFileBlock(f, r, *s.Propeller, 1);
};

TEST_F(ClassBlocksTest, OlderFilesAreRepairedOnReading) {
  const RepairCase cases[] = {
      {"multipliers of 0 or less read as 1, L/D as 0.5",
       R"({"PropellerSeries": {"KTMultiplier": 0, "KQMultiplier": -2, "NozzleLengthDiameterRatio": 0}})",
       Read(&ModelSet::PropellerSeries),
       [](const ModelSet& s) {
         EXPECT_EQ(s.PropellerSeries->KTMultiplier(), 1.0);
         EXPECT_EQ(s.PropellerSeries->KQMultiplier(), 1.0);
         EXPECT_EQ(s.PropellerSeries->NozzleLengthDiameterRatio(), 0.5);
         EXPECT_EQ(s.PropellerSeries->SchemaVersion(), 0);
       },
       nullptr, "SchemaVersion"},
      {"positive multipliers stay",
       R"({"PropellerSeries": {"SchemaVersion": 1, "KTMultiplier": 0.9, "NozzleLengthDiameterRatio": 0.7}})",
       Read(&ModelSet::PropellerSeries),
       [](const ModelSet& s) {
         EXPECT_EQ(s.PropellerSeries->KTMultiplier(), 0.9);
         EXPECT_EQ(s.PropellerSeries->NozzleLengthDiameterRatio(), 0.7);
       }},
      {"hub from the older ratio", R"({"Propeller": {"Diameter": 2.5, "HubDiameterRatio": 0.2}})",
       ReadPropeller, [](const ModelSet& s) { EXPECT_EQ(s.Propeller->HubDiameter(kCurrent), 0.5); }, nullptr,
       "HubDiameterRatio"},
      {"a hub diameter wins over the ratio",
       R"({"Propeller": {"Diameter": 2.5, "HubDiameter": 0.4, "HubDiameterRatio": 0.2}})", ReadPropeller,
       [](const ModelSet& s) { EXPECT_EQ(s.Propeller->HubDiameter(kCurrent), 0.4); }},
      {"no hub without a diameter", R"({"Propeller": {"HubDiameterRatio": 0.2}})", ReadPropeller,
       [](const ModelSet& s) {
         EXPECT_EQ(s.Propeller->Raw(FieldId(clsVXPropeller::Field::HubDiameter)), 0.0);
       }},
      {"propeller import path under its older tag", R"({"Propeller": {"FileNamePath": "c:\\props\\a.prop"}})",
       ReadPropeller,
       [](const ModelSet& s) { EXPECT_EQ(s.Propeller->ImportFilePath(), "c:\\props\\a.prop"); },
       "Propeller \"ImportFilePath\" [String] (found)"},
      {"interaction Enter reads as Calc", R"({"Propulsion": {"PropulsionInteractionEnabled": "enter"}})",
       Read(&ModelSet::Propulsion),
       [](const ModelSet& s) { EXPECT_EQ(s.Propulsion->PropulsionInteractionEnabled(), 1); }},
      {"defined source needs schema version 1",
       R"({"Propulsion": {"PropulsionInteractionDefinedSource": "Tank test"}})", Read(&ModelSet::Propulsion),
       [](const ModelSet& s) { EXPECT_EQ(s.Propulsion->PropulsionInteractionDefinedSource(), "Manual"); },
       nullptr, "SchemaVersion"},
      {"defined source of schema version 1",
       R"({"Propulsion": {"SchemaVersion": 1, "PropulsionInteractionDefinedSource": "Tank test"}})",
       Read(&ModelSet::Propulsion),
       [](const ModelSet& s) { EXPECT_EQ(s.Propulsion->PropulsionInteractionDefinedSource(), "Tank test"); }},
      {"an empty defined source becomes Manual",
       R"({"Propulsion": {"SchemaVersion": 1, "PropulsionInteractionDefinedSource": ""}})",
       Read(&ModelSet::Propulsion),
       [](const ModelSet& s) { EXPECT_EQ(s.Propulsion->PropulsionInteractionDefinedSource(), "Manual"); }},
      {"shaft data of older propulsion blocks go to the hull",
       R"({"Propulsion": {"PropulsorCountPerHull": 2, "AngleShaftDeg": 7.5, "PropellerDiameterMax": 1.25}})",
       Read(&ModelSet::Propulsion),
       [](const ModelSet& s) {
         EXPECT_EQ(s.Hull->PropulsorCountPerHull(), 2);
         EXPECT_EQ(s.Hull->AngleShaftDeg(), 7.5);
         EXPECT_EQ(s.Hull->PropellerDiameterMax(kCurrent), 1.25);
       },
       nullptr, "PropulsorCountPerHull"},
      {"the resistance's defined source is never read",
       R"({"Resistance": {"SchemaVersion": 1, "HullDragDefinedSource": "Tank", "AppendageDragMethod": "hadlercomponent"}})",
       Read(&ModelSet::Resistance),
       [](const ModelSet& s) {
         EXPECT_EQ(s.Resistance->HullDragDefinedSource(), "Manual");
         EXPECT_EQ(s.Resistance->AppendageDragMethod(), 7);
       }},
      {"a missing appendage drag method reads as HoltropComponent",
       R"({"Resistance": {"WindDragMethod": "Iwai"}})", Read(&ModelSet::Resistance),
       [](const ModelSet& s) {
         EXPECT_EQ(s.Resistance->AppendageDragMethod(), 5);
         EXPECT_EQ(s.Resistance->WindDragMethod(), 2);
       },
       "Resistance \"AppendageDragMethod\" [Index]"},
      {"a missing appendage definition reads as Component", R"({"Appendage": {"StrutCount": 2}})",
       Read(&ModelSet::Appendage),
       [](const ModelSet& s) { EXPECT_EQ(s.Appendage->AppendageDefinition(), 2); }},
  };
  for (const RepairCase& c : cases) {
    FreshProject();
    clsVXFileJSON file;
    file.ParseText(c.text);
    ASSERT_FALSE(file.ErrorsFound()) << c.what;
    JsonObject root;
    c.read(file, root, s());
    SCOPED_TRACE(c.what);
    c.check(s());
    if (c.lineFound) {
      EXPECT_NE(file.GetParserErrors().find(c.lineFound), std::string::npos) << file.GetParserErrors();
    }
    if (c.lineAbsent) {
      EXPECT_EQ(file.GetParserErrors().find(c.lineAbsent), std::string::npos) << file.GetParserErrors();
    }
  }
}

TEST_F(ClassBlocksTest, AMissingBlockIsOneLineAndFailsEveryLaterBlock) {
  clsVXFileJSON file;
  file.ParseText(R"({"Units": {}})");
  JsonObject root;
  EXPECT_EQ(ReadFileBlock(file, root, *s().Hull), 0);
  EXPECT_EQ(file.GetParserErrors(), "Missing: \"Hull\" [Group]");
  EXPECT_FALSE(file.HideError());
  file.ParseText(R"({"ITTC78Expansion": {"HullFormFactor": 1.2, "HullFrictionLine": "Hughes",
      "CorrelationAllowance": 0.0004, "HullRoughnessMM": 0.15, "RudderLocation": "FreeStream",
      "ModelLengthWL": 5, "HullHydrodynamicType": "Planing"}})");
  root = nullptr;
  EXPECT_EQ(ReadFileBlock(file, root, *s().ITTC78), 1);
  EXPECT_EQ(s().ITTC78->HullFrictionLine(), 2);
  EXPECT_EQ(ReadFileBlock(file, root, *s().Environment), 0);
  EXPECT_EQ(ReadFileBlock(file, root, *s().ITTC78), 0);  // the error text is the file's
}

TEST_F(ClassBlocksTest, TheTaskListReadsItsOlderForm) {
  // The older form holds one list per column; a missing block empties the list.
  const std::pair<const char*, int> cases[] = {
      {R"({"TaskList": {"Status": ["ToDo", "Done"], "Type": ["File", "Calc"], "Task": ["A", "B"],
          "Notes": ["n", "[Edit : Hull]"]}})",
       2},
      {R"({"Units": {}})", 0},
  };
  for (const auto& [text, count] : cases) {
    clsVXTaskList tasks;
    tasks.LoadStandardList(2);
    clsVXFileJSON file;
    file.ParseText(text);
    JsonObject root;
    ReadFileBlock(file, root, tasks);
    ASSERT_EQ(tasks.TaskCount(), count) << text;
    if (count) {
      EXPECT_EQ(TaskRowText(tasks.Task(1)), "Done|Calc|B|[Edit : Hull]");
    }
  }
  // More tasks than the table holds: the first 30 are kept.
  clsVXFileJSON file;
  JsonObject root;
  clsVXTaskList many;
  for (int i = 0; i < kMaxTaskCount; ++i) many.AddTask({"ToDo", "Data", "T" + std::to_string(i), ""});
  WriteFileBlock(file, root, many);
  file.SetIntegerToBlockTag(root->item("TaskList").Object(), "Count", 31);
  ChildObject(root->item("TaskList").Object(), "30", true);
  clsVXTaskList back;
  root = nullptr;
  ReadFileBlock(file, root, back);
  EXPECT_EQ(back.TaskCount(), kMaxTaskCount);
  EXPECT_EQ(back.Task(29).Task, "T29");
}

TEST_F(ClassBlocksTest, EngineCurvesAreTenPointsAndCountsAreNumbers) {
  clsVXEngine& e = *s().Engine;
  e.MaxPowerCount(3);
  for (int i = 0; i < 3; ++i) e.MaxPowerRPM(i, 1000.0 + 500.0 * i);
  clsVXFileJSON file;
  JsonObject root;
  ASSERT_EQ(WriteFileBlock(file, root, e), 1);
  std::string text;
  ASSERT_TRUE(file.WriteToString(text));
  EXPECT_NE(text.find("\"MaxPowerCount\": 3,"), std::string::npos);
  EXPECT_NE(text.find("\"RPM\": [1000,1500,2000,0,0,0,0,0,0,0]"), std::string::npos);
}

TEST_F(ClassBlocksTest, UnitsAreWrittenAsTheirLabels) {
  s().Units->TorqueIndex(1);
  s().Units->PowerIndex(3);  // the custom entry has no label in the file and reads as the first unit
  clsVXFileJSON file;
  JsonObject root;
  WriteFileBlock(file, root, *s().Units);
  EXPECT_EQ(root->item("Units").Object()->item("Torque").ToText(), "N\xc2\xb7m");
  clsVXUnits back;
  root = nullptr;
  ReadFileBlock(file, root, back);
  EXPECT_EQ(back.TorqueIndex(), 1);
  EXPECT_EQ(back.PowerIndex(), 0);
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
      jet.Thrust(k, p, kCurrent, 5000.0 - 100.0 * p);
      jet.CavZoneStatus(k, p, p % 2);
    }
    jet.ImpellerName(k, "Imp {" + std::to_string(k) + "}");
    for (int v = 0; v < clsVXWaterjet::kImpellerValueCount; ++v)
      jet.Impeller(k).values[static_cast<size_t>(v)] = v + k;
  }
  ASSERT_TRUE(WriteWaterjetFile(dir / "a.wjet", jet));
  ASSERT_TRUE(WriteEngineFile(dir / "a.engn", *s().Engine));
  ASSERT_TRUE(WriteTaskFile(dir / "a.task", *s().TaskList));
  EXPECT_EQ(ReadBytes(dir / "a.task").substr(0, 14), "{\r\n\t\"TaskList\"");

  clsVXWaterjet jetBack;
  clsVXEngine engineBack;
  clsVXTaskList tasksBack;
  ASSERT_TRUE(ReadWaterjetFile(dir / "a.wjet", jetBack));
  ASSERT_TRUE(ReadEngineFile(dir / "a.engn", engineBack));
  ASSERT_TRUE(ReadTaskFile(dir / "a.task", tasksBack));
  EXPECT_TRUE(DefaultHeadlessHooks().messages.empty());
  ExpectSameFields(jetBack, jet, "Waterjet");
  for (int k = 0; k < 2; ++k) {
    EXPECT_EQ(jetBack.PowerSeries(k).Power, jet.PowerSeries(k).Power);
    EXPECT_EQ(jetBack.PowerSeries(k).points, jet.PowerSeries(k).points);
    EXPECT_EQ(jetBack.PowerSeries(k).CavZoneStatus, jet.PowerSeries(k).CavZoneStatus);
    EXPECT_EQ(jetBack.ImpellerName(k), jet.ImpellerName(k));
    EXPECT_EQ(jetBack.Impeller(k).values, jet.Impeller(k).values);
  }
  ExpectSameFields(engineBack, *s().Engine, "Engine");
  for (const auto& c : clsVXEngine::Curves())
    EXPECT_EQ(engineBack.CurveArray(c.id), s().Engine->CurveArray(c.id)) << c.name;
  ASSERT_EQ(tasksBack.TaskCount(), s().TaskList->TaskCount());
  EXPECT_EQ(TaskRowText(tasksBack.Task(3)), TaskRowText(s().TaskList->Task(3)));
}

TEST_F(ClassBlocksTest, SideFileFailuresSpeakTheirOwnWords) {
  HeadlessHooks& h = DefaultHeadlessHooks();
  clsVXTaskList tasks;
  clsVXEngine engine;
  WriteBytes(dir / "other.task", R"({"Engine": {}})");
  EXPECT_FALSE(ReadTaskFile(dir / "other.task", tasks));
  EXPECT_FALSE(WriteTaskFile(dir / "none" / "a.task", tasks));
  ASSERT_EQ(h.messages.size(), 2u);
  EXPECT_EQ(h.messages[0].title, "Task list import error");
  EXPECT_EQ(h.messages[0].text, "An error occured importing the task list file.");
  EXPECT_EQ(h.messages[1].text, "An error occured exporting the task list file.");

  h.messages.clear();
  WriteBytes(dir / "part.engn", R"({"Engine": {"Description": "D 12", "MaxRatedRPM": 1800}})");
  EXPECT_TRUE(ReadEngineFile(dir / "part.engn", engine));
  EXPECT_EQ(engine.Description(), "D 12");
  ASSERT_EQ(h.messages.size(), 1u);
  EXPECT_NE(h.messages[0].text.find("some data may not have been read"), std::string::npos);
  EXPECT_FALSE(ReadEngineFile(dir / "none.engn", engine));
}

TEST_F(ClassBlocksTest, MoreThanTenImpellersAreCut) {
  std::string text = R"({"Waterjet": {"Impeller": {"Count": 12, "Index": 0, "SpeedCorrection": "On")";
  for (int i = 0; i < 12; ++i)
    text += ", \"" + std::to_string(i) + "\": {\"Name\": \"I" + std::to_string(i) + "\"}";
  text += "}}}";
  clsVXFileJSON file;
  file.ParseText(text);
  JsonObject root;
  clsVXWaterjet jet;
  ReadFileBlock(file, root, jet);
  EXPECT_EQ(jet.ImpellerCount(), 10);
  EXPECT_EQ(jet.SpeedCorrection(), 1);
  EXPECT_EQ(jet.ImpellerName(9), "I9");
  ASSERT_EQ(DefaultHeadlessHooks().messages.size(), 1u);
  EXPECT_EQ(DefaultHeadlessHooks().messages[0].title, "Waterjet Import");
}

}  // namespace
}  // namespace velmar
