// clsVXITTC78Expansion: the settings of the model-to-ship expansion of the ITTC-78 method
// (form factor, friction line, correlation allowance, hull roughness, model length), the
// rudder location the propulsion corrections use, and which hydrodynamic route (displacement
// CT or planing) the resistance prediction takes.
#pragma once

#include "core/data_class.h"

namespace velmar {

extern const LabelList kHullFrictionLineLabels;
extern const LabelList kRudderLocationLabels;
extern const LabelList kHullHydrodynamicTypeLabels;

class clsVXITTC78Expansion : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "resistance/ittc78_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "resistance/ittc78_fields.def"

  explicit clsVXITTC78Expansion(std::shared_ptr<clsVXUnits> units = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units) { Units(std::move(units)); }
  std::shared_ptr<clsVXITTC78Expansion> CopyClass() const;
};

}  // namespace velmar
