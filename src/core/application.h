// The application state: the one open project as a fixed set of long-lived objects, the
// reference sets beside it, the process-wide flags, and the commands that rebuild the set
// (New), change the units and keep the Calculate button up to date.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/project.h"
#include "core/speed_performance.h"
#include "core/units.h"
#include "core/water.h"
#include "files/task_list.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propeller_sizing.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "vessel/appendage.h"
#include "vessel/environment.h"
#include "vessel/hull.h"

namespace velmar {

// One set of model objects, wired among itself by SetLinkedClasses. Members a set does not
// hold stay empty (the reference propeller set has no hull).
struct ModelSet {
  std::shared_ptr<clsVXProject> Project;
  std::shared_ptr<clsVXUnits> Units;
  std::shared_ptr<clsVXWaterProperties> WaterProperties;
  std::shared_ptr<clsVXHull> Hull;
  std::shared_ptr<clsVXAppendage> Appendage;
  std::shared_ptr<clsVXEnvironment> Environment;
  std::shared_ptr<clsVXITTC78Expansion> ITTC78;
  std::shared_ptr<clsVXResistance> Resistance;
  std::shared_ptr<clsVXPropulsion> Propulsion;
  std::shared_ptr<clsVXPropeller> Propeller;
  std::shared_ptr<clsVXPropellerSeries> PropellerSeries;
  std::shared_ptr<clsVXPropellerSizing> PropellerSizing;
  std::shared_ptr<clsVXEngine> Engine;
  std::shared_ptr<clsVXWaterjet> Waterjet;
  std::shared_ptr<clsVXSpeedPerformance> SpeedPerformance;
  std::shared_ptr<clsVXTaskList> TaskList;
};

// Which members a set is made of.
enum class SetKind {
  Primary,        // the open project
  ReferenceShip,  // RefShipResistance and RefShipPropulsion
  ReferenceProp,  // RefPropeller
  Compare,        // a second project overlaid on a graph
};

// Creates the members of a set of the given kind, each with its defaults, and wires them.
ModelSet MakeModelSet(SetKind kind);
// Wires the members of a set to each other as shared links.
void SetLinkedClasses(ModelSet& set);

enum class Mode : int { Resistance = 0, Propulsion = 1 };

struct Application {
  ModelSet primary;
  ModelSet RefShipResistance;
  ModelSet RefShipPropulsion;
  ModelSet RefPropeller;
  std::unique_ptr<ModelSet> compare;  // created on demand by CompareProject()

  bool NeedCalculateResistance = true;
  bool NeedCalculatePropulsion = false;
  bool ProjectDirty = false;
  bool PropulsionSizingChanged = false;
  Mode CurrentMode = Mode::Resistance;

  // Reads a template project over a fresh project's defaults. Empty until the project reader
  // is installed; NewProject calls it when the options name an existing template.
  std::function<bool(const std::string& path)> LoadTemplateFile;
  // Options that NewProject consults.
  bool TemplateEnabled = false;
  std::string TemplateFile;

  // Receives the trace labels of NewProject ("mM:CNP01" ...); stores nothing by default.
  std::function<void(std::string_view)> Trace;
};

// The process-wide application state.
Application& App();

// Builds a fresh project: releases and recreates every set, wires them, sets the source
// text, file name and significant digits, resets the Calculate flags and reads the template.
void NewProject();
// The second project of a graph overlay, created on first use.
ModelSet& CompareProject();

// ClearErrorStack on every class of the primary set, in the program's order.
void ClearErrorStacks();

// The Calculate toolbar image and the state of button 5 (the command that needs a hull drag
// table) and its menu entry.
struct CalculateButtonState {
  std::string image;  // "Calculate" or "NeedCalculate"
  bool button5Enabled = false;
  bool button5Changed = true;  // false: button 5 keeps the state it had
};
// Stores the two flags as a pair (not merged), marks the project dirty and refreshes the
// button.
void SetNeedCalculate(bool resistance, bool propulsion);
CalculateButtonState RefreshCalculateButton();

// "Velmar 1.00.0000": the product word and the version as major, minor and revision.
std::string ProgramVersionText();

// The Units command after the dialog: `selection` holds the indices and formats chosen
// (nullptr when the dialog was cancelled). Converts every class of the primary set.
// Returns true when the units changed.
bool ApplyUnitsCommand(const clsVXUnits* selection);

}  // namespace velmar
