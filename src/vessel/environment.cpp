// Environment data and the channel geometry.
#include "vessel/environment.h"

namespace velmar {

const LabelList kWindGradientCorrLabels = {{"Off", "On"}, {"Off", "On"}};

namespace {
const FieldDesc kEnvironmentFields[] = {
#include "core/fields_table.h"
#include "vessel/environment_fields.def"
};
}  // namespace

clsVXEnvironment::clsVXEnvironment(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water)
    : DataClass(kEnvironmentFields, std::move(units)), water_(std::move(water)) {}

void clsVXEnvironment::SetLinkedClasses(std::shared_ptr<clsVXUnits> units,
                                        std::shared_ptr<clsVXWaterProperties> water) {
  Units(std::move(units));
  water_ = std::move(water);
}

std::shared_ptr<clsVXEnvironment> clsVXEnvironment::CopyClass() const {
  auto copy = std::make_shared<clsVXEnvironment>(Units(), water_);
  copy->CopyDataFrom(*this);
  return copy;
}

}  // namespace velmar
