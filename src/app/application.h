// The application state: the one open project as a fixed set of long-lived objects, the
// reference sets beside it, the process-wide flags, and the commands that rebuild the set
// (New), change the units and keep the Calculate button up to date.
#pragma once

#include <string>

#include "core/model_set.h"
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

// Creates the members of a set of the given kind, each with its defaults, and wires them.
ModelSet MakeModelSet(SetKind kind);
// Wires the members of a set to each other as shared links.
void SetLinkedClasses(ModelSet& set);

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


// The Units command after the dialog: `selection` holds the indices and formats chosen
// (nullptr when the dialog was cancelled). Converts every class of the primary set.
// Returns true when the units changed.
bool ApplyUnitsCommand(const clsVXUnits* selection);

}  // namespace velmar
