// Appendage data.
#include "vessel/appendage.h"

namespace velmar {

const LabelList kAppendageDefinitionLabels = {{"Percentage", "Simple", "Component"},
                                              {"Percentage", "Simple", "Component"}};

namespace {
const FieldDesc kAppendageFields[] = {
#include "core/fields_table.h"
#include "vessel/appendage_fields.def"
};
}  // namespace

clsVXAppendage::clsVXAppendage(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water,
                               std::shared_ptr<clsVXHull> hull)
    : DataClass(kAppendageFields, std::move(units)), water_(std::move(water)), hull_(std::move(hull)) {}

void clsVXAppendage::SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water,
                                      std::shared_ptr<clsVXHull> hull) {
  Units(std::move(units));
  water_ = std::move(water);
  hull_ = std::move(hull);
}

std::shared_ptr<clsVXAppendage> clsVXAppendage::CopyClass() const {
  auto copy = std::make_shared<clsVXAppendage>(Units(), water_, hull_);
  copy->CopyDataFrom(*this);
  return copy;
}

}  // namespace velmar
