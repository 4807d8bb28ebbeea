// clsVXAppendage: everything attached to the hull (shafts and bossings, struts, rudders,
// skegs or keels, stabilizers, bilge keels, tunnel thrusters, sonar domes, miscellaneous).
// The shaft count, shaft angle and largest propeller diameter belong to the hull; this class
// only forwards them, so that both entry tables edit the one stored value.
#pragma once

#include "core/data_class.h"
#include "core/water.h"
#include "vessel/hull.h"

namespace velmar {

extern const LabelList kAppendageDefinitionLabels;
extern const LabelList kRudderTypeLabels;
extern const LabelList kSkegKeelTypeLabels;

class clsVXAppendage : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "vessel/appendage_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "vessel/appendage_fields.def"

  explicit clsVXAppendage(std::shared_ptr<clsVXUnits> units = nullptr,
                          std::shared_ptr<clsVXWaterProperties> water = nullptr,
                          std::shared_ptr<clsVXHull> hull = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water,
                        std::shared_ptr<clsVXHull> hull);
  const std::shared_ptr<clsVXHull>& Hull() const { return hull_; }
  std::shared_ptr<clsVXAppendage> CopyClass() const;

  // Forwards to the linked hull. The hull's own read checks push on the hull's stack; the
  // shaft count also pushes "Appendage shaft count" here when negative (none is legal).
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
  std::string PropellerDiameterMaxFormatted() const;
  std::string PropellerDiameterMaxFieldName() const;

 private:
  clsVXHull& LinkedHull() const;

  std::shared_ptr<clsVXWaterProperties> water_;
  std::shared_ptr<clsVXHull> hull_;
};

}  // namespace velmar
