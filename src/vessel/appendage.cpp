// Appendage data: the field table and the forwards to the hull.
#include "vessel/appendage.h"

#include <stdexcept>

#include "core/constants.h"
#include "core/format.h"

namespace velmar {

const LabelList kAppendageDefinitionLabels = {{"Percentage", "Simple", "Component"},
                                              {"Percentage", "Simple", "Component"}};
const LabelList kRudderTypeLabels = {{"Balanced foil", "Balanced plate", "Aft of skeg", "Aft of stern"},
                                     {"BalancedFoil", "BalancedPlate", "AftOfSkeg", "AftOfStern"}};
const LabelList kSkegKeelTypeLabels = {{"Skeg", "Keel"}, {"Skeg", "Keel"}};

namespace {
const FieldDesc kAppendageFields[] = {
#include "core/fields_table.h"
#include "vessel/appendage_fields.def"
};
}  // namespace

clsVXAppendage::clsVXAppendage(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water,
                               std::shared_ptr<clsVXHull> hull)
    : DataClass(kAppendageFields, std::move(units)), water_(std::move(water)), hull_(std::move(hull)) {}

void clsVXAppendage::SetLinkedClasses(std::shared_ptr<clsVXUnits> units,
                                      std::shared_ptr<clsVXWaterProperties> water,
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

clsVXHull& clsVXAppendage::LinkedHull() const {
  if (!hull_) throw std::logic_error("Hull link not set");
  return *hull_;
}

int clsVXAppendage::PropulsorCountPerHull() const {
  const int count = LinkedHull().PropulsorCountPerHull();
  if (count < 0) Push("Appendage shaft count");
  return count;
}

void clsVXAppendage::PropulsorCountPerHull(int value) { LinkedHull().PropulsorCountPerHull(value); }

std::string clsVXAppendage::PropulsorCountPerHullFormatted() const {
  return FormatNumber(PropulsorCountPerHull(), "0");
}

std::string clsVXAppendage::PropulsorCountPerHullFieldName() const {
  return std::string(FieldIndent) + "Count:";
}

double clsVXAppendage::AngleShaftDeg() const { return LinkedHull().AngleShaftDeg(); }

void clsVXAppendage::AngleShaftDeg(double value) { LinkedHull().AngleShaftDeg(value); }

std::string clsVXAppendage::AngleShaftDegFormatted() const { return FormatNumber(AngleShaftDeg(), "0.00"); }

std::string clsVXAppendage::AngleShaftDegFieldName() const {
  return std::string(FieldIndent) + "Shaft angle to WL:";
}

double clsVXAppendage::PropellerDiameterMax(int unit) const {
  return LinkedHull().PropellerDiameterMax(unit);
}

void clsVXAppendage::PropellerDiameterMax(int unit, double value) {
  LinkedHull().PropellerDiameterMax(unit, value);
}

std::string clsVXAppendage::PropellerDiameterMaxFormatted() const {
  const double value = PropellerDiameterMax(kCurrent);
  return FormatNumber(value, Units() ? Units()->PropLengthFormat() : std::string());
}

std::string clsVXAppendage::PropellerDiameterMaxFieldName() const {
  return std::string(FieldIndent) + "Max prop diameter:";
}

}  // namespace velmar
