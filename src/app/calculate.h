// The Calculate and Clear Results commands: the order in which a run commits edits, clears
// the error stacks, runs the prediction of the current mode, shows its warning once and
// resets the Calculate flags; and the clearing of the computed columns of the speed table.
#pragma once

#include <string>

namespace velmar {

struct CalculateResult {
  bool ok = false;                           // the prediction of the mode returned success
  bool warningShown = false;                 // a warning box was shown at the end of the run
  std::string warning;                       // its text (as composed by ShowWarning)
  bool hullDragTableCommandEnabled = false;  // the state given to toolbar button 5
};

// The Calculate command in App().CurrentMode. A resistance run after a change of the
// propeller sizing may, on the user's Yes, switch to the propulsion mode and calculate there
// instead; the result is then that run's.
CalculateResult RunCalculate();

// The Clear Results command: the propulsion columns, then the resistance columns, to 0 in
// every row. Speed, the residuary and single-hull drags, the check columns and all columns
// not listed keep their values.
void ClearResults();

}  // namespace velmar
