// clsVXPropellerSizing: how the propeller sizing runs (by power, thrust or total drag), which
// of gear ratio, blade area, diameter and pitch it solves, and the reference point it sizes
// for.
#pragma once

#include "core/data_class.h"

namespace velmar {

extern const LabelList kPropellerSizingIdentityLabels;
extern const LabelList kSizingSolutionLabels;

class clsVXPropellerSizing : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "propulsion/propeller_sizing_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "propulsion/propeller_sizing_fields.def"

  explicit clsVXPropellerSizing(std::shared_ptr<clsVXUnits> units = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units) { Units(std::move(units)); }
  std::shared_ptr<clsVXPropellerSizing> CopyClass() const;

  // The Keep/Size label of the stored choice, as the entry tables and reports show it.
  std::string GearRatioSolutionLabelFormatted() const { return GearRatioSolutionLabel(); }
  std::string ExpAreaRatioSolutionLabelFormatted() const { return ExpAreaRatioSolutionLabel(); }
  std::string DiameterSolutionLabelFormatted() const { return DiameterSolutionLabel(); }
  std::string PitchMeanSolutionLabelFormatted() const { return PitchMeanSolutionLabel(); }
};

}  // namespace velmar
