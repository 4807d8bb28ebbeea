// ITTC-78 expansion settings: the label and key tables and the field table.
#include "resistance/ittc78.h"

namespace velmar {

const LabelList kHullFrictionLineLabels = {
    {"ITTC-57", "Schoenherr", "Hughes", "Grigson", "Prandtl-Schlichting", "Froude"},
    {"ITTC57", "Schoenherr", "Hughes", "Grigson", "PrandtlSchlichting", "Froude"}};
const LabelList kRudderLocationLabels = {{"Behind propeller", "Free stream"},
                                         {"BehindPropeller", "FreeStream"}};
const LabelList kHullHydrodynamicTypeLabels = {{"Undefined", "ITTC-78 (CT)", "Planing"},
                                               {"Undefined", "ITTC78CT", "Planing"}};

namespace {
const FieldDesc kITTC78Fields[] = {
#include "core/fields_table.h"
#include "resistance/ittc78_fields.def"
};
}  // namespace

clsVXITTC78Expansion::clsVXITTC78Expansion(std::shared_ptr<clsVXUnits> units)
    : DataClass(kITTC78Fields, std::move(units)) {}

std::shared_ptr<clsVXITTC78Expansion> clsVXITTC78Expansion::CopyClass() const {
  auto copy = std::make_shared<clsVXITTC78Expansion>(Units());
  copy->CopyDataFrom(*this);
  return copy;
}

}  // namespace velmar
