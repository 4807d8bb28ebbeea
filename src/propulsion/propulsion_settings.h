// clsVXPropulsion: every setting of the propulsion prediction: the propulsor model, how the
// hull-propulsor interaction is obtained, the analysis type, the cavitation criterion, the
// drive train and the engine's rated point. Shaft count, shaft angle, largest propeller
// diameter and the tunnel dimensions belong to the hull; this class only forwards them.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "core/data_class.h"
#include "core/water.h"
#include "vessel/hull.h"

namespace velmar {

class clsVXPropeller;

extern const LabelList kPropulsorCalcTypeLabels;
extern const LabelList kPropulsionInteractionMethodLabels;
extern const LabelList kViscousScaleCorrMethodLabels;
extern const LabelList kCavCriteriaMethodLabels;
extern const LabelList kAnalysisTypeMethodLabels;
extern const LabelList kCPPMethodLabels;
extern const LabelList kEngineControlEnabledLabels;
extern const LabelList kPropulsionFileIndexLabels;

class clsVXPropulsion : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "propulsion/propulsion_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "propulsion/propulsion_fields.def"

  explicit clsVXPropulsion(std::shared_ptr<clsVXUnits> units = nullptr,
                           std::shared_ptr<clsVXWaterProperties> water = nullptr,
                           std::shared_ptr<clsVXPropeller> propeller = nullptr,
                           std::shared_ptr<clsVXHull> hull = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water,
                        std::shared_ptr<clsVXPropeller> propeller, std::shared_ptr<clsVXHull> hull);
  const std::shared_ptr<clsVXWaterProperties>& WaterProperties() const { return water_; }
  const std::shared_ptr<clsVXPropeller>& Propeller() const { return propeller_; }
  const std::shared_ptr<clsVXHull>& Hull() const { return hull_; }
  std::shared_ptr<clsVXPropulsion> CopyClass() const;

  // The label of an engine, waterjet or KTKQ file index (-1: the stored one): "None defined"
  // for 0; otherwise `description`, the Description of the engine, waterjet or propeller
  // object, or "Click to define..." while that is empty.
  std::string EngineFileLabel(int index, std::string_view description) const;
  std::string WaterjetFileLabel(int index, std::string_view description) const;
  std::string KTKQFileLabel(int index, std::string_view description) const;

  // Forwards to the linked hull, so that both entry tables edit one stored value. The hull's
  // read checks push on the hull's stack; a shaft count below 1 also pushes "Shaft count"
  // here.
  int PropulsorCountPerHull() const;
  void PropulsorCountPerHull(int value);
  std::string PropulsorCountPerHullFormatted() const;
  std::string PropulsorCountPerHullFieldName() const;
  double AngleShaftDeg() const;
  void AngleShaftDeg(double value);
  std::string AngleShaftDegFormatted() const;
  std::string AngleShaftDegFieldName() const;
  double PropellerDiameterMax(int unit) const;
  void PropellerDiameterMax(int unit, double value);
  std::string PropellerDiameterMaxFormatted(int unit = kCurrent) const;
  std::string PropellerDiameterMaxFieldName() const;
  std::string PropellerDiameterMaxFieldNameWithUnits() const;
  double PropellerTunnelEffectiveDiameter(int unit) const;
  void PropellerTunnelEffectiveDiameter(int unit, double value);
  std::string PropellerTunnelEffectiveDiameterFormatted(int unit = kCurrent) const;
  std::string PropellerTunnelEffectiveDiameterFieldName() const;
  std::string PropellerTunnelEffectiveDiameterFieldNameWithUnits() const;
  double PropellerTunnelRecessDepth(int unit) const;
  void PropellerTunnelRecessDepth(int unit, double value);
  std::string PropellerTunnelRecessDepthFormatted(int unit = kCurrent) const;
  std::string PropellerTunnelRecessDepthFieldName() const;
  std::string PropellerTunnelRecessDepthFieldNameWithUnits() const;

 private:
  clsVXHull& LinkedHull() const;
  std::string FileLabel(Field field, int index, std::string_view description) const;

  std::shared_ptr<clsVXWaterProperties> water_;
  std::shared_ptr<clsVXPropeller> propeller_;
  std::shared_ptr<clsVXHull> hull_;
};

}  // namespace velmar
