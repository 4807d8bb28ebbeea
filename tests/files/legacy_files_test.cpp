// Legacy files: the hand-written files of tests/data/legacy import with the items and values
// that tests/data/legacy/expected.txt gives; a project written in the legacy form reads back
// as the same model; damaged and cut-off files end with a message, never a crash.
#include "files/legacy_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "files/file_ini.h"
#include "files/file_json.h"
#include "project_fixture.h"

namespace velmar::testing {
namespace {

using Objects = std::map<std::string, DataClass*, std::less<>>;

Objects ObjectsOf(const ModelSet& s) {
  return {{"Water", s.WaterProperties.get()},
          {"Hull", s.Hull.get()},
          {"Appendage", s.Appendage.get()},
          {"Environment", s.Environment.get()},
          {"Resistance", s.Resistance.get()},
          {"ITTC78", s.ITTC78.get()},
          {"Propulsion", s.Propulsion.get()},
          {"Propeller", s.Propeller.get()},
          {"PropellerSeries", s.PropellerSeries.get()},
          {"PropellerSizing", s.PropellerSizing.get()},
          {"Engine", s.Engine.get()},
          {"Waterjet", s.Waterjet.get()}};
}

// A value named "Object.Field", "Object.Field[i]" or "Waterjet.Field[series:point]", as text.
std::string ValueOf(const ModelSet& s, const std::string& path) {
  const size_t dot = path.find('.'), open = path.find('[');
  const std::string obj = path.substr(0, dot);
  const std::string field =
      path.substr(dot + 1, open == std::string::npos ? std::string::npos : open - dot - 1);
  const int i = open == std::string::npos ? 0 : std::atoi(path.c_str() + open + 1);
  const size_t colon = path.find(':');
  const int p = colon == std::string::npos ? 0 : std::atoi(path.c_str() + colon + 1);
  auto num = [](double v) { return FileNumberText(v); };
  if (obj == "Project") {
    const clsVXProject& pr = *s.Project;
    return field == "Source" ? pr.Source : field == "Description" ? pr.Description : pr.LastModified;
  }
  if (obj == "Units") {
    if (field.ends_with("Format"))
      return s.Units->FormatText(FamilyFromName(field.substr(0, field.size() - 6)));
    return num(s.Units->Index(FamilyFromName(field)));
  }
  if (obj == "SpeedPerformance") {
    const clsVXSpeedPerformance& sp = *s.SpeedPerformance;
    if (field == "Count") return num(sp.count());
    if (field == "DesignSpeedIndex") return num(sp.DesignSpeedIndex());
    return num(sp.Raw(i, clsVXSpeedPerformance::ColumnIndex(field)));
  }
  if (obj == "TaskList") {
    if (field == "Count") return num(s.TaskList->TaskCount());
    const TaskRecord& t = s.TaskList->Task(i);
    return field == "Status" ? t.Status : field == "Type" ? t.Type : field == "Task" ? t.Task : t.Notes;
  }
  if (obj == "Engine")
    for (const auto& c : clsVXEngine::Curves())
      if (field == c.name) return num(s.Engine->CurveValue(c.id, i));
  if (obj == "Waterjet") {
    const clsVXWaterjet& w = *s.Waterjet;
    if (field == "Power") return num(w.PowerSeries(i).Power);
    if (field == "PerformanceCount") return num(w.PerformanceCount(i));
    if (field == "Speed") return num(w.Speed(i, p, kCurrent));
    if (field == "Thrust") return num(w.Thrust(i, p, kCurrent));
  }
  const DataClass* c = ObjectsOf(s).at(obj);
  const int f = c->FieldIndex(field);
  EXPECT_GE(f, 0) << path;
  return c->Fields()[static_cast<size_t>(f)].kind == FieldKind::Text ? c->TextOf(f) : num(c->Raw(f));
}

// Numbers equal to 1e-9 relative; texts equal.
void ExpectValue(const std::string& actual, const std::string& expected, const std::string& what) {
  char* end = nullptr;
  const double e = std::strtod(expected.c_str(), &end);
  if (!expected.empty() && *end == '\0') {
    const double a = std::strtod(actual.c_str(), nullptr);
    EXPECT_NEAR(a, e, 1e-9 * std::max(1.0, std::fabs(e))) << what;
  } else {
    EXPECT_EQ(actual, expected) << what;
  }
}

std::string Unescaped(std::string s) {
  for (size_t at; (at = s.find("\\n")) != std::string::npos;) s.replace(at, 2, "\r\n");
  return s;
}

// The numbered tags Name1, Name2, ... of the block read.
std::vector<std::string> Numbered(clsVXFileINI& ini, const std::string& name) {
  std::vector<std::string> values;
  bool failed = false;
  std::string errors;
  for (int k = 1; ini.HasTag(name + std::to_string(k)); ++k)
    values.push_back(ini.GetStringFromBlockTag(name + std::to_string(k), failed, errors));
  return values;
}

LegacyReport Import(const fs::path& path, const std::string& kind) {
  ModelSet& s = App().primary;
  if (kind == "engine") return ImportLegacyEngineFile(path, *s.Engine);
  if (kind == "waterjet") return ImportLegacyWaterjetFile(path, *s.Waterjet);
  const std::map<std::string, LegacyFileKind> kinds = {{"project", LegacyFileKind::Project},
                                                       {"model", LegacyFileKind::Model},
                                                       {"ship", LegacyFileKind::ShipObject},
                                                       {"hull", LegacyFileKind::HullOnly},
                                                       {"results", LegacyFileKind::Results}};
  return ImportLegacyFile(path, s, kinds.at(kind));
}

class LegacyFilesTest : public ProjectTest {};

TEST_F(LegacyFilesTest, CorpusFilesImportWithTheirItemsAndValues) {
  clsVXFileINI expected;
  ASSERT_TRUE(expected.ReadFile(DataPath("legacy/expected.txt")));
  ASSERT_GE(expected.BlockNames().size(), 12u);
  for (const std::string& name : expected.BlockNames()) {
    SCOPED_TRACE(name);
    bool found = false, failed = false;
    std::string errors;
    expected.ReadBlock(name, found);
    const std::string kind = expected.GetStringFromBlockTag("Kind", failed, errors);
    FreshProject();
    hooks().messages.clear();
    const std::string units =
        expected.HasTag("ProjectUnits") ? expected.GetStringFromBlockTag("ProjectUnits", failed, errors) : "";
    if (!units.empty()) ApplyUnitPreset(*s().Units, units == "SI" ? UnitPreset::SI : UnitPreset::Imperial);
    std::map<std::string, std::string> defaults;
    for (const std::string& path : Numbered(expected, "Default")) defaults[path] = ValueOf(s(), path);

    const LegacyReport r = Import(DataPath("legacy/" + name), kind);
    if (expected.HasTag("Refused")) {
      EXPECT_FALSE(r.ok);
      EXPECT_TRUE(r.message.starts_with(expected.GetStringFromBlockTag("Refused", failed, errors)))
          << r.message;
      continue;
    }
    ASSERT_TRUE(r.ok) << r.message;
    for (const std::string& item : Numbered(expected, "Item")) {
      const bool listed = std::ranges::any_of(
          r.items, [&](const LegacyReport::Item& i) { return (i.block + ": " + i.text).starts_with(item); });
      EXPECT_TRUE(listed) << item << "\n" << r.ItemsText();
    }
    for (const std::string& block : Numbered(expected, "Absent"))
      EXPECT_TRUE(std::ranges::none_of(r.items, [&](const auto& i) { return i.block == block; }))
          << block << "\n"
          << r.ItemsText();
    for (const std::string& value : Numbered(expected, "Value")) {
      const size_t eq = value.find('=');
      ExpectValue(ValueOf(s(), value.substr(0, eq)), Unescaped(value.substr(eq + 1)), value);
    }
    for (const auto& [path, value] : defaults) EXPECT_EQ(ValueOf(s(), path), value) << path;
    std::vector<std::string> shown;
    for (const auto& m : hooks().messages) shown.push_back(m.text);
    EXPECT_EQ(shown, Numbered(expected, "Message"));
    if (expected.HasTag("Warning")) {
      ShowLegacyImportWarning(r, LegacyKindOfPath(name));
      ASSERT_FALSE(hooks().messages.empty());
      EXPECT_EQ(hooks().messages.back().title, "File Import Warning");
      const std::string word =
          "latest " + expected.GetStringFromBlockTag("Warning", failed, errors) + " file";
      EXPECT_NE(hooks().messages.back().text.find(word), std::string::npos) << word;
    }
    // A legacy project serves as a reference ship through its results.
    if (kind == "results") {
      ASSERT_TRUE(LoadReferenceShipData(DataPath("legacy/" + name), App().RefShipResistance));
      EXPECT_EQ(App().RefShipResistance.SpeedPerformance->count(), s().SpeedPerformance->count());
    }
  }
}

// Every class, the units, the speed table and the tasks of two sets alike.
void ExpectSameProject(const ModelSet& a, const ModelSet& b, const std::string& what) {
  const Objects oa = ObjectsOf(a), ob = ObjectsOf(b);
  for (const auto& [name, obj] : oa)
    if (name != "Waterjet") ExpectSameFields(*obj, *ob.at(name), what + " " + name);
  for (UnitFamily f : AllUnitFamilies()) {
    EXPECT_EQ(a.Units->Index(f), b.Units->Index(f)) << what;
    EXPECT_EQ(a.Units->FormatText(f), b.Units->FormatText(f)) << what;
  }
  for (const auto& c : clsVXEngine::Curves())
    EXPECT_EQ(a.Engine->CurveArray(c.id), b.Engine->CurveArray(c.id)) << what;
  const clsVXSpeedPerformance &sa = *a.SpeedPerformance, &sb = *b.SpeedPerformance;
  ASSERT_EQ(sa.count(), sb.count()) << what;
  EXPECT_EQ(sa.DesignSpeedIndex(), sb.DesignSpeedIndex()) << what;
  for (const std::string_view tag : SpeedPerformanceFileColumns())
    for (int r = 0; r < sa.count(); ++r)
      EXPECT_EQ(sa.Raw(r, clsVXSpeedPerformance::ColumnIndex(tag)),
                sb.Raw(r, clsVXSpeedPerformance::ColumnIndex(tag)))
          << what << " " << tag;
  ASSERT_EQ(a.TaskList->TaskCount(), b.TaskList->TaskCount()) << what;
  for (int i = 0; i < a.TaskList->TaskCount(); ++i)
    EXPECT_EQ(TaskRowText(a.TaskList->Task(i)), TaskRowText(b.TaskList->Task(i)));
  EXPECT_EQ(a.Project->Description, b.Project->Description) << what;
}

ModelSet Copy(const ModelSet& s) {
  ModelSet c = s;
  c.WaterProperties = s.WaterProperties->CopyClass();
  c.Hull = s.Hull->CopyClass();
  c.Appendage = s.Appendage->CopyClass();
  c.Environment = s.Environment->CopyClass();
  c.Resistance = s.Resistance->CopyClass();
  c.ITTC78 = s.ITTC78->CopyClass();
  c.Propulsion = s.Propulsion->CopyClass();
  c.Propeller = s.Propeller->CopyClass();
  c.PropellerSeries = s.PropellerSeries->CopyClass();
  c.PropellerSizing = s.PropellerSizing->CopyClass();
  c.Engine = s.Engine->CopyClass();
  c.Units = s.Units->CopyClass();
  c.SpeedPerformance = std::make_shared<clsVXSpeedPerformance>(*s.SpeedPerformance);
  c.TaskList = std::make_shared<clsVXTaskList>(*s.TaskList);
  c.Project = s.Project->CopyClass();
  return c;
}

// The filled project and the examples: exported, imported into a new project, they are the
// same model, and exported again they give the same bytes.
TEST_F(LegacyFilesTest, ExportThenImportGivesTheSameModel) {
  std::vector<std::string> sources = {""};
  for (const auto& e : fs::directory_iterator(ExamplePath("")))
    if (e.path().extension() == ".vxvl") sources.push_back(e.path().filename().string());
  for (const std::string& source : sources) {
    SCOPED_TRACE(source.empty() ? "filled project" : source);
    FreshProject();
    if (source.empty())
      FillProject();
    else
      ASSERT_TRUE(OpenProjectFile(ExamplePath(source)).opened);
    const ModelSet before = Copy(s());
    const LegacyReport out = ExportLegacyProject(dir / "a.vl5", s());
    ASSERT_TRUE(out.ok) << out.message;
    EXPECT_TRUE(out.items.empty()) << out.ItemsText();
    FreshProject();
    const LegacyReport in = ImportLegacyFile(dir / "a.vl5", s(), LegacyFileKind::Project);
    ASSERT_TRUE(in.ok) << in.message;
    EXPECT_TRUE(in.items.empty()) << in.ItemsText();
    ExpectSameProject(before, s(), source);
    EXPECT_EQ(s().Project->Source, ProgramVersionText());
    ASSERT_TRUE(ExportLegacyProject(dir / "b.vl5", s()).ok);
    EXPECT_EQ(ReadBytes(dir / "a.vl5"), ReadBytes(dir / "b.vl5"));
  }
}

TEST_F(LegacyFilesTest, EngineAndWaterjetFilesRoundTrip) {
  ASSERT_TRUE(ReadEngineFile(ExamplePath("cargo_ship.engn"), *s().Engine));
  ASSERT_TRUE(OpenProjectFile(ExamplePath("catamaran_ferry_waterjet.vxvl")).opened);
  ASSERT_TRUE(ReadEngineFile(ExamplePath("cargo_ship.engn"), *s().Engine));
  const auto engine = s().Engine->CopyClass();
  const auto jet = s().Waterjet->CopyClass();
  ASSERT_GT(jet->PowerSeriesCount(), 1);
  ASSERT_TRUE(ExportLegacyEngineFile(dir / "e.eng", *engine).ok);
  ASSERT_TRUE(ExportLegacyWaterjetFile(dir / "w.jet", *jet).ok);
  EXPECT_TRUE(ImportLegacyEngineFile(dir / "e.eng", *s().Engine).items.empty());
  EXPECT_TRUE(ImportLegacyWaterjetFile(dir / "w.jet", *s().Waterjet).items.empty());
  ExpectSameFields(*engine, *s().Engine, "Engine", [](std::string_view n) { return n == "ImportFilePath"; });
  for (const auto& c : clsVXEngine::Curves())
    EXPECT_EQ(engine->CurveArray(c.id), s().Engine->CurveArray(c.id));
  const clsVXWaterjet& w = *s().Waterjet;
  for (int i = 0; i < static_cast<int>(w.Fields().size()); ++i) {
    if (w.Fields()[i].kind == FieldKind::Text) continue;
    EXPECT_NEAR(w.Raw(i), jet->Raw(i), 1e-9 * std::max(1.0, std::fabs(jet->Raw(i)))) << w.Fields()[i].name;
  }
  for (int k = 0; k < jet->PowerSeriesCount(); ++k) {
    EXPECT_EQ(w.SpeedArray(k), jet->SpeedArray(k));
    EXPECT_EQ(w.ThrustArray(k), jet->ThrustArray(k));
  }
  for (int i = 0; i < jet->ImpellerCount(); ++i) EXPECT_EQ(w.Impeller(i).values, jet->Impeller(i).values);
  // The .wjet side file both ways, over a waterjet that holds other records before.
  ASSERT_TRUE(WriteWaterjetFile(dir / "w.wjet", *jet));
  s().Waterjet->AddPerformancePoint(1e6, 1, 1, 0);
  ASSERT_TRUE(ReadWaterjetFile(dir / "w.wjet", *s().Waterjet));
  EXPECT_EQ(s().Waterjet->PowerSeriesCount(), jet->PowerSeriesCount());
  EXPECT_FALSE(ReadWaterjetFile(dir / "none.wjet", *s().Waterjet));
  EXPECT_EQ(s().Waterjet->PowerSeriesCount(), jet->PowerSeriesCount());
}

// Every corpus file cut at many places and every kind of import: a report, never a crash.
TEST_F(LegacyFilesTest, CutFilesGiveAReportAndNoCrash) {
  for (const auto& e : fs::directory_iterator(DataPath("legacy"))) {
    const std::string bytes = ReadBytes(e.path());
    for (size_t n = 0; n < bytes.size(); n += 23) {
      WriteBytes(dir / "cut.vl5", bytes.substr(0, n));
      for (const char* kind : {"project", "ship", "hull", "engine", "waterjet"}) {
        FreshProject();
        const LegacyReport r = Import(dir / "cut.vl5", kind);
        EXPECT_TRUE(r.ok || !r.message.empty()) << e.path() << " " << n << " " << kind;
      }
    }
  }
}

TEST(SectionFileTest, FailedWritesAreNamed) {
  clsVXFileINI ini;
  bool failed = false;
  std::string errors;
  const std::vector<std::string> labels = {"Off", "On"}, items = {"a", "b,c"};
  ini.SetFloatToBlockTag("Speed", NAN, failed, errors);
  ini.SetStringToBlockTag("Name", "two\r\nlines", failed, errors);
  ini.SetStringArrayToBlockTag("List", items, failed, errors);
  ini.SetIndexToBlockTag("Mode", 2, labels, failed, errors);
  ini.SetMultiStringToBlockTag("Notes", "two\r\nlines", failed, errors);
  EXPECT_TRUE(failed);
  EXPECT_EQ(errors, "Speed tag error.\r\nName tag error.\r\nList tag error.\r\n[Mode] tag error.");
  bool ok = false;
  ini.WriteBlock("Jet", ok);
  EXPECT_EQ(ini.WriteText(), "[Jet]\r\nNotes=two\\nlines\r\n\r\n");
}

}  // namespace
}  // namespace velmar::testing
