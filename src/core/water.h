// clsVXWaterProperties: density and kinematic viscosity of the water the vessel floats in,
// computed from the water type and temperature, or typed by the user (Custom).
#pragma once

#include "core/data_class.h"

namespace velmar {

extern const LabelList kWaterDefinitionLabels;

class clsVXWaterProperties : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "core/water_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "core/water_fields.def"

  explicit clsVXWaterProperties(std::shared_ptr<clsVXUnits> units = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units) { Units(std::move(units)); }
  std::shared_ptr<clsVXWaterProperties> CopyClass() const;

  // The label of a water type (-1: the selected one) and its write into the label table.
  std::string WaterDefinitionLabel(int index = -1) const;
  void WaterDefinitionLabel(int index, std::string label);
  std::string WaterDefinitionLabelFieldName() const { return WaterDefinitionIndexFieldName(); }

  // Stores the index unless it is -1, sets Temperature to 0 and recomputes the water.
  void SetWaterPropertiesToStandardValues(int index);
  // Density and viscosity of the selected type at the stored temperature, in the selected
  // units; Custom leaves both outputs untouched. Returns true.
  bool CalcDensityAndViscosity(double& density, double& viscosity) const;

  double CalcStandardDensitySalt(double dT) const;
  double CalcStandardDensityFresh(double dT) const;
  double CalcStandardViscositySalt(double dT) const;
  double CalcStandardViscosityFresh(double dT) const;
  // 15 degC minus the stored temperature in degC; 0 when no temperature is given.
  double TemperatureDifference() const;

 private:
  std::vector<std::string> labels_;
};

}  // namespace velmar
