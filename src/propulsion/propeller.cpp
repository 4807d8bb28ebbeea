// Propeller geometry data and its KTKQ table.
#include "propulsion/propeller.h"

#include "core/format.h"

namespace velmar {

const LabelList kPropellerTypeLabels = {{"FPP", "CPP", "CRP (Simple)"}, {"FPP", "CPP", "CRPSimple"}};

namespace {
const FieldDesc kPropellerFields[] = {
#include "core/fields_table.h"
#include "propulsion/propeller_fields.def"
};
}  // namespace

clsVXPropeller::clsVXPropeller(std::shared_ptr<clsVXUnits> units)
    : DataClass(kPropellerFields, std::move(units)) {}

std::shared_ptr<clsVXPropeller> clsVXPropeller::CopyClass() const {
  auto copy = std::make_shared<clsVXPropeller>(Units());
  copy->CopyDataFrom(*this);
  copy->ktkq_ = ktkq_;
  return copy;
}

void clsVXPropeller::ClearAllData() {
  DataClass::ClearAllData();
  ClearKTKQData();
}

double clsVXPropeller::HubDiameterRatio() const {
  const double d = Raw(FieldId(Field::Diameter));
  return d > 0.0 ? Raw(FieldId(Field::HubDiameter)) / d : 0.0;
}

std::string clsVXPropeller::HubDiameterRatioFormatted() const {
  return FormatNumber(HubDiameterRatio(), "0.00####");
}

void clsVXPropeller::KTKQCount(int count) {
  for (auto& column : ktkq_) column.resize(count > 0 ? static_cast<size_t>(count) : 0, 0.0);
}

}  // namespace velmar
