// The rules that stand between a typed value and the data classes: the refusal of a value
// that fails its field's read check, and the cross-checks run after an edit (chine beam and
// height of the hull table, the doubtful hull data, appendage definition against the drag
// method, propulsor type and series against the ducted correction). Plain C++: each rule
// returns the boxes to show, and the entry table shows them through the UI hooks.
#pragma once

#include <string>
#include <vector>

#include "ui/entry_groups.h"

namespace velmar {

struct FieldDesc;

struct EntryWarning {
  std::string title, text;
};

// The text of the box that refuses `value` for the field, or empty when the value may be
// stored. 0 is always accepted (it stands for "not given"); any other value must pass the
// field's read check.
std::string RefusalText(const FieldDesc& field, double value);

// The cross-checks after an edit of `row` in `table`, on the open project.
std::vector<EntryWarning> CrossChecks(EntryCommand table, const EntryRow& row);

}  // namespace velmar
