// Test support for the project file: a project with a distinct value in every field, field
// by field comparison of data classes and a fixed clock.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "../core/test_support.h"
#include "app/application.h"
#include "core/ui_hooks.h"
#include "files/project_file.h"

namespace velmar::testing {

inline DateTime FixedClock() { return {2024, 3, 5, 14, 7, 30}; }

// A fresh application state with the fixed clock.
inline void FreshProject() {
  FreshApp();
  SetProjectFileClock(&FixedClock);
}

// A fresh project with the fixed clock for each test, a folder for its files, and the
// project-wide settings a test may change put back afterwards.
class ProjectTest : public ::testing::Test {
 protected:
  void SetUp() override { FreshProject(); }
  void TearDown() override {
    SetProjectFileClock(nullptr);
    App().TemplateEnabled = false;
    App().TemplateFile.clear();
    App().LoadTemplateFile = nullptr;
  }
  static ModelSet& s() { return App().primary; }
  static HeadlessHooks& hooks() { return DefaultHeadlessHooks(); }
  TempDir dir;
};

// Distinct values for every field: label indices within the keys, small counts, numbers of
// few digits (so that the 6-digit rounding of some blocks keeps them), and texts with the
// characters the writer escapes.
inline void FillFields(DataClass& obj, int seed) {
  for (int i = 0; i < static_cast<int>(obj.Fields().size()); ++i) {
    const FieldDesc& d = obj.Fields()[i];
    switch (d.kind) {
      case FieldKind::Enum:
        obj.SetRaw(i, static_cast<double>((i + seed) % d.labels->keys.size()));
        break;
      case FieldKind::Int:
        obj.SetRaw(i, (i + seed) % 7 + 1);
        break;
      case FieldKind::Text:
        obj.SetText(i, std::string(d.name) + " {" + std::to_string(seed) + "} \"q\" 'a' \\ \xc3\xa9");
        break;
      default:
        obj.SetRaw(i, seed + 0.25 * i + 0.125);
    }
  }
}

// Every field of two objects of one class equal, but those `skip` names.
inline void ExpectSameFields(const DataClass& a, const DataClass& b, const std::string& what,
                             std::function<bool(std::string_view)> skip = nullptr) {
  for (int i = 0; i < static_cast<int>(a.Fields().size()); ++i) {
    const FieldDesc& d = a.Fields()[i];
    if (skip && skip(d.name)) continue;
    if (d.kind == FieldKind::Text)
      EXPECT_EQ(a.TextOf(i), b.TextOf(i)) << what << "." << d.name;
    else
      EXPECT_EQ(a.Raw(i), b.Raw(i)) << what << "." << d.name;
  }
}

// Fills every class of the open project. The few fields with a rule of their own hold
// values the rule keeps: a propeller calculation type, an interaction setting within Off to
// Lock, schema version 1, the engine's rated point in the propulsion settings.
inline void FillProject() {
  ModelSet& s = App().primary;
  s.Project->Description = "Patrol boat {A} \"B\" \xc3\xa9";
  s.Project->ProjectID = "PB-7|x";
  s.Project->FileName = "patrol.vxvl";
  s.Project->FileFolder = "/ships";
  s.Project->FilePath = "/ships/patrol.vxvl";
  int seed = 1;
  for (UnitFamily f : AllUnitFamilies()) {
    s.Units->SetIndex(f, seed++ % 2);
    s.Units->SetFormat(f, "0.0" + std::string(static_cast<size_t>(seed % 3), '0'));
  }
  for (DataClass* c : std::initializer_list<DataClass*>{
           s.WaterProperties.get(), s.Hull.get(), s.Appendage.get(), s.Environment.get(), s.ITTC78.get(),
           s.Resistance.get(), s.Propulsion.get(), s.Propeller.get(), s.PropellerSeries.get(),
           s.PropellerSizing.get(), s.Engine.get()})
    FillFields(*c, seed++);
  s.Propulsion->PropulsorCalcType(2);
  s.Propulsion->PropulsionInteractionEnabled(2);
  s.PropellerSeries->SchemaVersion(1);
  s.Engine->MaxPowerCount(4);
  s.Engine->DefinedLoadCount(3);
  s.Propulsion->EngineRatedRPM(s.Engine->MaxRatedRPM());
  s.Propulsion->EngineRatedPower(kCurrent, s.Engine->MaxRatedPower(kCurrent));
  for (const auto& c : clsVXEngine::Curves())
    for (int i = 0; i < kEngineCurvePoints; ++i)
      s.Engine->CurveValue(c.id, i, kCurrent, 100.0 * static_cast<int>(c.id) + i);
  clsVXSpeedPerformance& sp = *s.SpeedPerformance;
  sp.count(3);
  sp.DesignSpeedIndex(1);
  for (std::string_view tag : SpeedPerformanceFileColumns()) {
    const int col = clsVXSpeedPerformance::ColumnIndex(tag);
    const FieldDesc& d = clsVXSpeedPerformance::Column(col);
    for (int r = 0; r < 3; ++r)
      sp.SetRaw(r, col,
                d.labels ? (r + col) % static_cast<int>(d.labels->keys.size()) : 10.0 * r + 0.5 * col + 0.25);
  }
  s.TaskList->LoadStandardList(1);
  s.TaskList->Task(2).Status = "Done";
  s.TaskList->Task(3).Notes = "Braces {} and \"quotes\", tab\tend";
}

}  // namespace velmar::testing
