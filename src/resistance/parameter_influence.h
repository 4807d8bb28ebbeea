// Parameter influence: how strongly the predicted bare-hull drag at the design speed reacts
// to each hull parameter. One parameter of a copy of the hull is changed by one part in a
// thousand at a time and the drag prediction runs on the copy; the project is not changed.
#pragma once

#include <string>
#include <vector>

namespace velmar {

struct ParameterInfluenceRow {
  std::string caption;    // the hull field's caption, e.g. "  Length on WL:"
  std::string valueText;  // the influence as "0.000", or "---" when it cannot be computed
  // A magnitude above 1: the drag changes by more than the parameter does (in percent).
  // The window shows such rows in blue (0xFF0000 in the table's blue-green-red order),
  // the others in grey (0x808080).
  bool strongerThanProportional = false;
  double value = 0.0;  // percent change of drag per percent change of the parameter
};

struct ParameterInfluence {
  std::string title;  // the label of the hull drag method in use
  // The command is refused for the techniques without a prediction to vary: the message
  // shown under "Sensitivity analysis" (empty when the experiment ran).
  std::string refusal;
  bool designSpeed = false;                 // the table has a design speed above 0
  bool basisOk = false;                     // the prediction of the unchanged hull succeeded
  std::string warning;                      // the warning box text when the basis failed
  std::string basisCause;                   // the calculation error text of that failure
  double basisDrag = 0.0;                   // D0: DragBareHull at the design speed, current unit
  std::vector<ParameterInfluenceRow> rows;  // thirteen, in the window's order
};

// The experiment on the open project. Scale from test and Defined techniques are refused
// with their message. Without a design speed every row is "---"; when the
// basis prediction fails, the warning "Basis hull resistance prediction" is shown under
// "Parameter influence" and every row is "---".
ParameterInfluence BuildParameterInfluence();

}  // namespace velmar
