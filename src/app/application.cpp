// The application state and the commands that rebuild it.
#include "app/application.h"

#include <filesystem>

#include "core/diagnostics.h"
#include "core/format.h"
#include "core/ui_hooks.h"

namespace velmar {

ModelSet MakeModelSet(SetKind kind) {
  // Which classes each kind of set holds: the open project all of them; a reference ship the
  // ten of a ship object file; a reference propeller four; a compared project thirteen.
  const bool primary = kind == SetKind::Primary;
  const bool compare = kind == SetKind::Compare;
  const bool ship = kind != SetKind::ReferenceProp;
  ModelSet s;
  s.Project = std::make_shared<clsVXProject>();
  s.Units = std::make_shared<clsVXUnits>();
  s.WaterProperties = std::make_shared<clsVXWaterProperties>();
  if (ship) {
    s.Hull = std::make_shared<clsVXHull>();
    s.Appendage = std::make_shared<clsVXAppendage>();
    s.Environment = std::make_shared<clsVXEnvironment>();
    s.Resistance = std::make_shared<clsVXResistance>();
    s.ITTC78 = std::make_shared<clsVXITTC78Expansion>();
    s.SpeedPerformance = std::make_shared<clsVXSpeedPerformance>();
  }
  s.Propeller = std::make_shared<clsVXPropeller>();
  if (primary || compare) {
    s.Propulsion = std::make_shared<clsVXPropulsion>();
    s.PropellerSeries = std::make_shared<clsVXPropellerSeries>();
    s.PropellerSizing = std::make_shared<clsVXPropellerSizing>();
  }
  if (primary) {
    s.Waterjet = std::make_shared<clsVXWaterjet>();
    s.Engine = std::make_shared<clsVXEngine>();
    s.TaskList = std::make_shared<clsVXTaskList>();
  }
  SetLinkedClasses(s);
  return s;
}

void SetLinkedClasses(ModelSet& s) {
  if (s.WaterProperties) s.WaterProperties->SetLinkedClasses(s.Units);
  if (s.Hull) s.Hull->SetLinkedClasses(s.Units, s.WaterProperties);
  if (s.Appendage) s.Appendage->SetLinkedClasses(s.Units, s.WaterProperties, s.Hull);
  if (s.Environment) s.Environment->SetLinkedClasses(s.Units, s.WaterProperties);
  if (s.Propeller) {
    s.Propeller->SetLinkedClasses(s.Units);
    s.Propeller->BladeCount(4);
  }
  if (s.ITTC78) s.ITTC78->SetLinkedClasses(s.Units);
  if (s.Propulsion) s.Propulsion->SetLinkedClasses(s.Units, s.WaterProperties, s.Propeller, s.Hull);
  if (s.PropellerSeries) s.PropellerSeries->SetLinkedClasses(s.Units, s.WaterProperties, s.Propeller);
  if (s.PropellerSizing) s.PropellerSizing->SetLinkedClasses(s.Units);
  if (s.Engine) s.Engine->SetLinkedClasses(s.Units);
  if (s.Waterjet) s.Waterjet->SetLinkedClasses(s.Units);
  if (s.SpeedPerformance) s.SpeedPerformance->SetLinkedClasses(s.Units, s.WaterProperties);
}

void NewProject() {
  Application& app = App();
  int step = 0;
  auto trace = [&] {
    ++step;
    if (app.Trace) app.Trace("mM:CNP" + FormatNumber(step, "00"));
  };
  // 1. Release everything.
  app.primary = ModelSet{};
  trace();
  app.RefShipResistance = ModelSet{};
  app.RefShipPropulsion = ModelSet{};
  app.RefPropeller = ModelSet{};
  app.compare.reset();
  trace();
  // 2. and 4. New instances with their defaults, wired as shared links.
  app.primary = MakeModelSet(SetKind::Primary);
  trace();
  app.RefShipResistance = MakeModelSet(SetKind::ReferenceShip);
  app.RefShipPropulsion = MakeModelSet(SetKind::ReferenceShip);
  app.RefPropeller = MakeModelSet(SetKind::ReferenceProp);
  trace();
  // 5. Identity of the new project.
  app.primary.Project->Source = ProgramVersionText();
  app.primary.Project->FileName = "untitled.vxvl";
  // 6.
  app.primary.Units->SigDigits(10);
  // 7. The pair of flags, then the state of a fresh project.
  SetNeedCalculate(true, false);
  app.NeedCalculateResistance = true;
  app.ProjectDirty = false;
  app.NeedCalculatePropulsion = false;
  ResetCalcErrorState();
  // 8. The template, when the options name one that exists.
  if (app.TemplateEnabled && !app.TemplateFile.empty() && app.TemplateFile != "None defined" &&
      app.LoadTemplateFile) {
    std::error_code ec;
    if (std::filesystem::exists(app.TemplateFile, ec)) app.LoadTemplateFile(app.TemplateFile);
  }
}

ModelSet& CompareProject() {
  Application& app = App();
  if (!app.compare) {
    app.compare = std::make_unique<ModelSet>(MakeModelSet(SetKind::Compare));
    app.compare->SpeedPerformance->count(1);
    app.compare->Units->SigDigits(10);
  }
  return *app.compare;
}

void ClearErrorStacks() {
  ModelSet& s = App().primary;
  if (s.WaterProperties) s.WaterProperties->ClearErrorStack();
  if (s.Hull) s.Hull->ClearErrorStack();
  if (s.Appendage) s.Appendage->ClearErrorStack();
  if (s.Environment) s.Environment->ClearErrorStack();
  if (s.Propeller) s.Propeller->ClearErrorStack();
  if (s.Propulsion) s.Propulsion->ClearErrorStack();
  if (s.PropellerSeries) s.PropellerSeries->ClearErrorStack();
  if (s.PropellerSizing) s.PropellerSizing->ClearErrorStack();
  if (s.SpeedPerformance) s.SpeedPerformance->ClearErrorStack();
  if (s.Engine) s.Engine->ClearErrorStack();
  if (s.SpeedPerformance) s.SpeedPerformance->ClearErrorStack();  // twice, as the program always did
}

void SetNeedCalculate(bool resistance, bool propulsion) {
  Application& app = App();
  app.NeedCalculateResistance = resistance;
  app.NeedCalculatePropulsion = propulsion;
  app.ProjectDirty = true;
  RefreshCalculateButton();
}

CalculateButtonState RefreshCalculateButton() {
  const Application& app = App();
  // The hull drag technique of the resistance settings: 0 prediction, 1 aligned prediction.
  const int technique = app.primary.Resistance ? app.primary.Resistance->HullDragTechnique() : 0;
  const bool techniqueHasTable = technique == 0 || technique == 1;
  CalculateButtonState st;
  if (app.CurrentMode == Mode::Propulsion) {
    if (app.NeedCalculateResistance || app.NeedCalculatePropulsion) {
      st.image = "NeedCalculate";
      st.button5Enabled = false;
    } else {
      st.image = "Calculate";
      st.button5Enabled = true;
      st.button5Changed = techniqueHasTable;
    }
  } else if (app.NeedCalculateResistance) {
    st.image = "NeedCalculate";
    st.button5Enabled = false;
  } else {
    st.image = "Calculate";
    st.button5Enabled = techniqueHasTable;
    st.button5Changed = techniqueHasTable;
  }
  Hooks().SetCalculateButton(st.image,
                             st.button5Changed ? std::optional<bool>(st.button5Enabled) : std::nullopt);
  return st;
}

bool ApplyUnitsCommand(const clsVXUnits* selection) {
  ModelSet& s = App().primary;
  const std::shared_ptr<clsVXUnits> oldUnits = s.Units->CopyClass();
  if (!selection) {
    s.Units->UnitsFormReturn(2);
    return false;
  }
  for (UnitFamily f : AllUnitFamilies()) {
    s.Units->SetIndex(f, selection->Index(f));
    s.Units->SetFormat(f, selection->FormatText(f));
  }
  s.Units->UnitsFormReturn(1);
  const clsVXUnits& now = *s.Units;
  if (s.WaterProperties) s.WaterProperties->ConvertAllData(now, *oldUnits);
  if (s.Hull) s.Hull->ConvertAllData(now, *oldUnits);
  if (s.Appendage) s.Appendage->ConvertAllData(now, *oldUnits);
  if (s.Environment) s.Environment->ConvertAllData(now, *oldUnits);
  if (s.Propeller) s.Propeller->ConvertAllData(now, *oldUnits);
  if (s.Resistance) s.Resistance->ConvertAllData(now, *oldUnits);
  if (s.Propulsion) s.Propulsion->ConvertAllData(now, *oldUnits);
  if (s.PropellerSeries) s.PropellerSeries->ConvertAllData(now, *oldUnits);
  if (s.PropellerSizing) s.PropellerSizing->ConvertAllData(now, *oldUnits);
  if (s.SpeedPerformance) s.SpeedPerformance->ConvertAllData(now, *oldUnits);
  if (s.Engine) s.Engine->ConvertAllData(now, *oldUnits);
  if (s.ITTC78) s.ITTC78->ConvertAllData(now, *oldUnits);
  // The waterjet is not converted by the Units command: its side file keeps its own units.
  Hooks().RefreshResults();
  return true;
}

}  // namespace velmar
