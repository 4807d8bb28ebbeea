// The groups of the entry tables: for each command of the Edit menu the table title and its
// row groups, each row naming a field of a data class by its name in the class's field
// table. Captions, units, formats and read checks come from the field table itself; this list
// only chooses and orders the rows. Plain C++ (no Qt), so that tests can walk it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmar {

class DataClass;
struct ModelSet;

// Where a row's value lives.
enum class EntryObject {
  Project,          // clsVXProject texts: FileName, Description, ProjectID, Source, LastModified
  HullCoefficient,  // a derived form coefficient of the hull (read only): the Coef name
  Speed,            // speed cell "1".."10" of the design condition, or "Design" for the design speed
  Water,
  Hull,
  Appendage,
  Environment,
  ITTC78,
  Resistance,
  Propulsion,
  Propeller,
  PropellerSeries,
  PropellerSizing,
  Engine,
};

struct EntryRow {
  EntryObject object;
  const char* field;
  const char* caption = "";  // replaces the field's own caption (fields without one, or shared)
  bool readOnly = false;
};

struct EntryGroup {
  const char* heading;
  std::vector<EntryRow> rows;
};

enum class EntryCommand { Condition, Hull, Appendage, Environment, Margin, Propulsor };

struct EntryTable {
  EntryCommand command;
  const char* title;  // "Edit: Hull"
  std::vector<EntryGroup> groups;
};

const std::vector<EntryTable>& EntryTables();
const EntryTable& EntryTableOf(EntryCommand command);

// The data class a row's field belongs to (nullptr for the project, the coefficients and the
// speed cells, which are not field-table classes).
DataClass* EntryClass(const ModelSet& set, EntryObject object);

// Whether an edit of this object's data leaves the resistance results stale, or only the
// propulsion results (propulsor, engine and propeller data).
bool IsPropulsionData(EntryObject object);

}  // namespace velmar
