// Cross-checks of the entry tables.
#include "ui/entry_rules.h"

#include <string_view>

#include "app/application.h"
#include "core/data_class.h"
#include "core/format.h"
#include "core/helpers.h"

namespace velmar {
namespace {

bool Is(const EntryRow& row, EntryObject object, std::string_view field) {
  return row.object == object && field == row.field;
}

std::string LabelOf(const DataClass& c, const char* field) { return c.LabelOf(c.FieldIndex(field)); }

int IndexOf(const DataClass& c, const char* field) { return static_cast<int>(c.Raw(c.FieldIndex(field))); }

void HullChecks(const EntryRow& row, std::vector<EntryWarning>& out) {
  const clsVXHull& hull = *App().primary.Hull;
  const bool catamaran = hull.HullConfigType() == 1;
  const bool chineBeam = Is(row, EntryObject::Hull, "FwdStationChineBeam") ||
                         Is(row, EntryObject::Hull, "AftStationChineBeam");
  const bool chineHeight = Is(row, EntryObject::Hull, "FwdStationZChineHeightBelowWL") ||
                           Is(row, EntryObject::Hull, "AftStationZChineHeightBelowWL");
  const double value = hull.Raw(hull.FieldIndex(row.field));
  if (chineBeam && value > hull.Raw(hull.FieldIndex("BeamWLMax")))
    out.push_back({"Hull Warning", catamaran ? "Warning! Chine beam cannot should not exceed beam WL."
                                             : "Warning! Chine beam should not exceed max Beam WL."});
  if (chineHeight && value > hull.Raw(hull.FieldIndex("DraftSubmergedMax")))
    out.push_back({"Hull Warning", catamaran ? "Warning! Chine height below WL should not exceed max molded draft."
                                             : "Chine height below WL cannot exceed max molded draft."});
  // Doubtful entries: the read check of the field just typed, on a copy so that the
  // project's own error stack is left for the next Calculate.
  if (row.object == EntryObject::Hull) {
    auto copy = hull.CopyClass();
    copy->ClearErrorStack();
    copy->Read(copy->FieldIndex(row.field));
    if (copy->ErrorsFound()) {
      std::string text = "Warning: The following data may be incorrect. ";
      for (const std::string& line : SplitDelimited(StripControlChars(copy->Errors(), true), "\r\n"))
        if (!Trim(line).empty()) text += "\n" + Trim(line);
      out.push_back({"Data warning", text});
    }
  }
}

// Which appendage definition a drag method works from.
std::string DefinitionFor(const std::string& method) {
  if (method.find("(Simple") != std::string::npos) return "Simple";
  if (method == "Percentage") return "Percentage";
  return "Component";
}

void AppendageChecks(const EntryRow& row, std::vector<EntryWarning>& out) {
  if (!Is(row, EntryObject::Appendage, "AppendageDefinition") &&
      !Is(row, EntryObject::Resistance, "AppendageDragMethod") &&
      !Is(row, EntryObject::Resistance, "AppendageDragEnabled"))
    return;
  const clsVXResistance& r = *App().primary.Resistance;
  const clsVXAppendage& a = *App().primary.Appendage;
  if (IndexOf(r, "AppendageDragEnabled") != 1) return;  // only a calculated drag uses a method
  const std::string definition = LabelOf(a, "AppendageDefinition");
  const std::string method = LabelOf(r, "AppendageDragMethod");
  if (DefinitionFor(method) != definition)
    out.push_back({"Warning!", "Warning! Appendage definition [" + definition +
                                   "] is incompatible with prediction method [" + method + "]."});
}

void PropulsorChecks(const EntryRow& row, std::vector<EntryWarning>& out) {
  const ModelSet& s = App().primary;
  const clsVXPropulsion& p = *s.Propulsion;
  const std::string ducted = LabelOf(p, "DuctedPropCorrEnabled");
  const bool ductedOn = IndexOf(p, "DuctedPropCorrEnabled") == 1;
  const bool typeOrCorr = Is(row, EntryObject::Hull, "HullPropulsorType") ||
                          Is(row, EntryObject::Propulsion, "DuctedPropCorrEnabled");
  // A surface-piercing propeller has no duct.
  if (typeOrCorr && s.Hull->HullPropulsorType() == 1 && ductedOn)
    out.push_back({"Warning!", "Warning! Propulsor type [" + LabelOf(*s.Hull, "HullPropulsorType") +
                                   "] is selected with Ducted correction [" + ducted +
                                   "]. It is recommended that Ducted correction [Off] for this propulsor type."});
  if (Is(row, EntryObject::PropellerSeries, "Series") || Is(row, EntryObject::Propulsion, "DuctedPropCorrEnabled")) {
    const std::string series = LabelOf(*s.PropellerSeries, "Series");
    const bool ductedSeries = series.rfind("Kaplan", 0) == 0;  // the Kaplan series run in a nozzle
    if (ductedSeries != ductedOn)
      out.push_back({"Warning!", "Warning! Propulsor series [" + series + "] is selected with Ducted correction [" +
                                     ducted + "]. It is recommended that Ducted correction [" +
                                     (ductedSeries ? "On" : "Off") + "] for this series."});
  }
  if (Is(row, EntryObject::Propulsion, "PropulsorCalcType") || Is(row, EntryObject::Hull, "HullPropulsorType")) {
    const bool jetInPropulsion = IndexOf(p, "PropulsorCalcType") == 3;
    const bool jetInCondition = s.Hull->HullPropulsorType() == 2;
    if (jetInPropulsion != jetInCondition)
      out.push_back({"Warning!", "Warning! Propulsor type in propulsion [" + LabelOf(p, "PropulsorCalcType") +
                                     "] is different than Propulsor type in condition [" +
                                     LabelOf(*s.Hull, "HullPropulsorType") + "]."});
  }
}

}  // namespace

std::string RefusalText(const FieldDesc& field, double value) {
  if (value == 0.0 || !FailsCheck(field, value)) return {};
  const std::string name = *field.word ? field.word : field.name;
  std::string range;
  switch (field.check) {
    case Check::NotPositive:
      range = "a value above 0";
      break;
    case Check::Negative:
      range = "a value of 0 or more";
      break;
    case Check::BelowOne:
      range = "a value of 1 or more";
      break;
    case Check::Outside:
      range = "a value from " + FormatNumber(field.lo, "0.0##") + " to " + FormatNumber(field.hi, "0.0##");
      break;
    case Check::None:
      break;
  }
  return name + ": " + FormatNumber(value, "") + " is not accepted; enter " + range + ".";
}

std::vector<EntryWarning> CrossChecks(EntryCommand table, const EntryRow& row) {
  std::vector<EntryWarning> out;
  if (table == EntryCommand::Hull) HullChecks(row, out);
  if (table == EntryCommand::Appendage) AppendageChecks(row, out);
  PropulsorChecks(row, out);
  return out;
}

}  // namespace velmar
