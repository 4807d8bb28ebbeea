// Propulsion settings: the label and key tables of every selection, the field table, the
// file-index labels and the forwards to the hull.
#include "propulsion/propulsion_settings.h"

#include <initializer_list>
#include <stdexcept>
#include <utility>

#include "core/constants.h"
#include "core/format.h"

namespace velmar {

const LabelList kPropulsorCalcTypeLabels = Keyed({{"Propeller series", "PropellerSeries"},
                                                  {"Aligned series", "AlignedPropellerSeries"},
                                                  {"KTKQ data", "KTKQData"},
                                                  {"Waterjet data", "WaterjetData"}});
const LabelList kPropulsionInteractionMethodLabels = Keyed({
    {"Simple Ship", "SimpleShip"},  // 0
    {"Series 60", "Series60"},
    {"SSPA Cargo Series", "SSPACargoSeries"},
    {"Andersen", "Andersen"},
    {"Simple Towboat", "SimpleTowboat"},
    {"Oortmerssen", "Oortmerssen"},  // 5
    {"Holtrop", "Holtrop"},
    {"Simple Sailboat", "SimpleSailboat"},
    {"Simple Planing", "SimplePlaning"},
    {"Series 62", "Series62"},
    {"Blount/Fox", "Blount/Fox"},  // 10
    {"Simple Waterjet", "SimpleWaterjet"},
});
const LabelList kViscousScaleCorrMethodLabels = {{"Custom", "Standard"}, {"Custom", "Standard"}};
const LabelList kCavCriteriaMethodLabels = Keyed({{"Keller eqn", "Keller"},
                                                  {"Manen line", "ManenLine"},
                                                  {"10% cav line", "10%CavLine"},
                                                  {" 5% cav line", " 5%CavLine"}});  // leading blanks kept
const LabelList kAnalysisTypeMethodLabels = Keyed({{"Free run", "FreeRun"},
                                                   {"Towing", "Towing"},
                                                   {"Fixed engine RPM", "FixedEngineRPM"},
                                                   {"Acceleration", "Acceleration"},
                                                   {"Defined", "Defined"}});
const LabelList kCPPMethodLabels =
    Keyed({{"Fixed RPM", "FixedRPM"}, {"Variable RPM", "VariableRPM"}, {"Defined load", "DefinedLoad"}});
const LabelList kEngineControlEnabledLabels = Keyed({{"None", "None"}, {"Limit RPM rate", "LimitRPMRate"}});
const LabelList kPropulsionFileIndexLabels = {{"None defined", "User defined"},
                                              {"None defined", "User defined"}};

namespace {
const FieldDesc kPropulsionFields[] = {
#include "core/fields_table.h"
#include "propulsion/propulsion_fields.def"
};

std::string Caption(const char* label) { return std::string(FieldIndent) + label; }
}  // namespace

clsVXPropulsion::clsVXPropulsion(std::shared_ptr<clsVXUnits> units,
                                 std::shared_ptr<clsVXWaterProperties> water,
                                 std::shared_ptr<clsVXPropeller> propeller, std::shared_ptr<clsVXHull> hull)
    : DataClass(kPropulsionFields, std::move(units)),
      water_(std::move(water)),
      propeller_(std::move(propeller)),
      hull_(std::move(hull)) {}

void clsVXPropulsion::SetLinkedClasses(std::shared_ptr<clsVXUnits> units,
                                       std::shared_ptr<clsVXWaterProperties> water,
                                       std::shared_ptr<clsVXPropeller> propeller,
                                       std::shared_ptr<clsVXHull> hull) {
  Units(std::move(units));
  water_ = std::move(water);
  propeller_ = std::move(propeller);
  hull_ = std::move(hull);
}

std::shared_ptr<clsVXPropulsion> clsVXPropulsion::CopyClass() const {
  auto copy = std::make_shared<clsVXPropulsion>(Units(), water_, propeller_, hull_);
  copy->CopyDataFrom(*this);
  return copy;
}

// ---- File-index labels ----------------------------------------------------------------------

std::string clsVXPropulsion::FileLabel(Field field, int index, std::string_view description) const {
  if (index == -1) index = static_cast<int>(Raw(FieldId(field)));
  if (index == 0) return "None defined";
  if (description.empty()) return "Click to define...";
  return std::string(description);
}

std::string clsVXPropulsion::EngineFileLabel(int index, std::string_view description) const {
  return FileLabel(Field::EngineFileIndex, index, description);
}

std::string clsVXPropulsion::WaterjetFileLabel(int index, std::string_view description) const {
  return FileLabel(Field::WaterjetFileIndex, index, description);
}

std::string clsVXPropulsion::KTKQFileLabel(int index, std::string_view description) const {
  return FileLabel(Field::KTKQFileIndex, index, description);
}

// ---- Forwards to the hull ---------------------------------------------------------------------

clsVXHull& clsVXPropulsion::LinkedHull() const {
  if (!hull_) throw std::logic_error("Hull link not set");
  return *hull_;
}

int clsVXPropulsion::PropulsorCountPerHull() const {
  const int count = LinkedHull().PropulsorCountPerHull();
  if (count < 1) Push("Shaft count");
  return count;
}

void clsVXPropulsion::PropulsorCountPerHull(int value) { LinkedHull().PropulsorCountPerHull(value); }

std::string clsVXPropulsion::PropulsorCountPerHullFormatted() const {
  return FormatNumber(PropulsorCountPerHull(), "0");
}

std::string clsVXPropulsion::PropulsorCountPerHullFieldName() const { return Caption("Count:"); }

double clsVXPropulsion::AngleShaftDeg() const { return LinkedHull().AngleShaftDeg(); }

void clsVXPropulsion::AngleShaftDeg(double value) { LinkedHull().AngleShaftDeg(value); }

std::string clsVXPropulsion::AngleShaftDegFormatted() const { return FormatNumber(AngleShaftDeg(), "0.00"); }

std::string clsVXPropulsion::AngleShaftDegFieldName() const { return LinkedHull().AngleShaftDegFieldName(); }

double clsVXPropulsion::PropellerDiameterMax(int unit) const {
  return LinkedHull().PropellerDiameterMax(unit);
}

void clsVXPropulsion::PropellerDiameterMax(int unit, double value) {
  LinkedHull().PropellerDiameterMax(unit, value);
}

std::string clsVXPropulsion::PropellerDiameterMaxFormatted(int unit) const {
  return LinkedHull().PropellerDiameterMaxFormatted(unit);
}

std::string clsVXPropulsion::PropellerDiameterMaxFieldName() const { return Caption("Max prop diam:"); }

std::string clsVXPropulsion::PropellerDiameterMaxFieldNameWithUnits() const {
  return Caption("Max prop diam [") + Units()->GetUnitPropLengthLabel(kCurrent) + "]:";
}

double clsVXPropulsion::PropellerTunnelEffectiveDiameter(int unit) const {
  return LinkedHull().PropellerTunnelEffectiveDiameter(unit);
}

void clsVXPropulsion::PropellerTunnelEffectiveDiameter(int unit, double value) {
  LinkedHull().PropellerTunnelEffectiveDiameter(unit, value);
}

std::string clsVXPropulsion::PropellerTunnelEffectiveDiameterFormatted(int unit) const {
  return LinkedHull().PropellerTunnelEffectiveDiameterFormatted(unit);
}

std::string clsVXPropulsion::PropellerTunnelEffectiveDiameterFieldName() const {
  return Caption("Effective diam:");
}

std::string clsVXPropulsion::PropellerTunnelEffectiveDiameterFieldNameWithUnits() const {
  return Caption("Effective diam [") + Units()->GetUnitLengthLabel(kCurrent) + "]:";
}

double clsVXPropulsion::PropellerTunnelRecessDepth(int unit) const {
  return LinkedHull().PropellerTunnelRecessDepth(unit);
}

void clsVXPropulsion::PropellerTunnelRecessDepth(int unit, double value) {
  LinkedHull().PropellerTunnelRecessDepth(unit, value);
}

std::string clsVXPropulsion::PropellerTunnelRecessDepthFormatted(int unit) const {
  return LinkedHull().PropellerTunnelRecessDepthFormatted(unit);
}

std::string clsVXPropulsion::PropellerTunnelRecessDepthFieldName() const { return Caption("Recess depth:"); }

std::string clsVXPropulsion::PropellerTunnelRecessDepthFieldNameWithUnits() const {
  return Caption("Recess depth [") + Units()->GetUnitLengthLabel(kCurrent) + "]:";
}

}  // namespace velmar
