// Hull data and its form coefficients.
#include "vessel/hull.h"

namespace velmar {

const LabelList kHullConfigTypeLabels = {{"Monohull", "Catamaran"}, {"Monohull", "Catamaran"}};

namespace {
const FieldDesc kHullFields[] = {
#include "core/fields_table.h"
#include "vessel/hull_fields.def"
};
}  // namespace

clsVXHull::clsVXHull(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water)
    : DataClass(kHullFields, std::move(units)), water_(std::move(water)) {}

void clsVXHull::SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water) {
  Units(std::move(units));
  water_ = std::move(water);
}

std::shared_ptr<clsVXHull> clsVXHull::CopyClass() const {
  auto copy = std::make_shared<clsVXHull>(Units(), water_);
  copy->CopyDataFrom(*this);
  return copy;
}

}  // namespace velmar
