// Propeller sizing settings.
#include "propulsion/propeller_sizing.h"

namespace velmar {

const LabelList kPropellerSizingIdentityLabels = {{"No sizing", "By power", "By thrust", "By total drag"},
                                                  {"NoSizing", "ByPower", "ByThrust", "ByTotalDrag"}};
const LabelList kSizingSolutionLabels = {{"Keep", "Size"}, {"Keep", "Size"}};

namespace {
const FieldDesc kPropellerSizingFields[] = {
#include "core/fields_table.h"
#include "propulsion/propeller_sizing_fields.def"
};
}  // namespace

clsVXPropellerSizing::clsVXPropellerSizing(std::shared_ptr<clsVXUnits> units)
    : DataClass(kPropellerSizingFields, std::move(units)) {}

std::shared_ptr<clsVXPropellerSizing> clsVXPropellerSizing::CopyClass() const {
  auto copy = std::make_shared<clsVXPropellerSizing>(Units());
  copy->CopyDataFrom(*this);
  return copy;
}

}  // namespace velmar
