// The example projects in examples/: each opens as a current file, holds every tag the
// writer writes (a save adds nothing and changes nothing), and the cargo ship still has the
// particulars of its published source. The engine and task list side files read whole.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "files/file_json.h"
#include "files/project_file.h"
#include "project_fixture.h"

namespace velmar::testing {
namespace {

// Every block and tag of `a` is in `b` with an equal value, and the other way round; the
// identity tags that a save sets are left out.
void ExpectSameTree(const JsonValue& a, const JsonValue& b, const std::string& where) {
  const JsonObject oa = a.Object(), ob = b.Object();
  if (oa || ob) {
    ASSERT_TRUE(oa && ob) << where;
    EXPECT_EQ(oa->Keys(), ob->Keys()) << where;
    for (const std::string& key : oa->Keys())
      if (key != "LastModified" && key != "Source" && ob->Exists(key))
        ExpectSameTree(oa->item(key), ob->item(key), where + "." + key);
    return;
  }
  if (const JsonList* la = a.List()) {
    const JsonList* lb = b.List();
    ASSERT_TRUE(lb && lb->size() == la->size()) << where;
    for (size_t i = 0; i < la->size(); ++i)
      ExpectSameTree((*la)[i], (*lb)[i], where + "[" + std::to_string(i) + "]");
  } else if (a.Text() || b.Text()) {
    EXPECT_EQ(a.ToText(), b.ToText()) << where;
  } else {
    EXPECT_EQ(a.ToDouble(), b.ToDouble()) << where;
  }
}

TEST(Examples, OpenAsCurrentFilesAndSaveUnchanged) {
  TempDir dir;
  for (const char* name : {"cargo_ship_si.vxvl", "patrol_vessel_imperial.vxvl", "catamaran_ferry.vxvl"}) {
    FreshProject();
    const OpenResult r = OpenProjectFile(ExamplePath(name));
    ASSERT_TRUE(r.opened) << name << ": " << r.message;
    EXPECT_TRUE(r.current) << name << ":\n" << r.warningText;
    EXPECT_TRUE(DefaultHeadlessHooks().questions.empty()) << name;
    ASSERT_EQ(SaveProjectFile(dir / name), 1) << name;
    clsVXFileJSON example, saved;
    example.ReadFile(ExamplePath(name));
    saved.ReadFile(dir / name);
    EXPECT_FALSE(example.ErrorsFound()) << example.GetParserErrors();
    ExpectSameTree(example.Parsed(), saved.Parsed(), name);
  }
}

// Holtrop & Mennen (1982), the example ship: L 205 m, B 32 m, T 10 m, volume 37500 m3,
// CM 0.98, CWP 0.75, lcb -0.75 % L, S 7381.45 m2, ABT 20 m2, AT 16 m2, iE 12.08 deg,
// Cstern 10.
TEST(Examples, CargoShipHasTheParticularsOfThePublishedExample) {
  FreshProject();
  ASSERT_TRUE(OpenProjectFile(ExamplePath("cargo_ship_si.vxvl")).opened);
  const clsVXHull& h = *App().primary.Hull;
  struct Case {
    const char* what;
    double value, expected, tolerance;
  };
  const Case cases[] = {
      {"LWL m", h.LengthWL(kM), 205.0, 1e-9},
      {"volume m3", h.DisplacementVolume(kCurrent), 37500.0, 1e-6},
      {"CB", h.CoefBlock(), 37500.0 / (205.0 * 32.0 * 10.0), 1e-9},
      {"CM", h.CoefAreaSectMax(), 0.98, 1e-9},
      {"CWP", h.CoefWaterplane(), 0.75, 1e-9},
      {"lcb % L fwd of midships", 100.0 * (h.XBuoyancyFwdTr(kM) / 205.0 - 0.5), -0.75, 1e-9},
      {"S m2", h.WettedSurface(kM2), 7381.45, 1e-9},
      {"ABT m2", h.BulbAreaSect(kM2), 20.0, 1e-9},
      {"hB m above keel", h.DraftSubmergedMax(kM) - h.ZBulbAreaSectBelowWL(kM), 4.0, 1e-9},
      {"AT m2", h.AreaSectAtTr(kM2), 16.0, 1e-9},
      {"iE deg", h.AngleHalfEntDeg(), 12.08, 1e-9},
      {"Cstern", h.CalcHoltropSternCoef(), 10.0, 1e-9},
  };
  for (const Case& c : cases) EXPECT_NEAR(c.value, c.expected, c.tolerance) << c.what;
}

TEST(Examples, SideFilesReadWhole) {
  FreshProject();
  ASSERT_TRUE(OpenProjectFile(ExamplePath("cargo_ship_si.vxvl")).opened);
  clsVXEngine engine(App().primary.Units);
  ASSERT_TRUE(ReadEngineFile(ExamplePath("cargo_ship.engn"), engine));
  EXPECT_TRUE(DefaultHeadlessHooks().messages.empty());
  const clsVXEngine& inProject = *App().primary.Engine;
  ExpectSameFields(engine, inProject, "Engine");
  for (const auto& c : clsVXEngine::Curves())
    for (int i = 0; i < kEngineCurvePoints; ++i)
      EXPECT_EQ(engine.CurveValue(c.id, i), inProject.CurveValue(c.id, i));

  clsVXTaskList tasks;
  ASSERT_TRUE(ReadTaskFile(ExamplePath("standard.task"), tasks));
  const std::vector<std::string> rows = StandardTaskListRows(1);
  ASSERT_EQ(tasks.TaskCount(), static_cast<int>(rows.size()));
  for (int i = 0; i < tasks.TaskCount(); ++i)
    EXPECT_EQ(TaskRowText(tasks.Task(i)), rows[static_cast<size_t>(i)]);
}

}  // namespace
}  // namespace velmar::testing
