// clsVXHull: the hull form (principal dimensions, hydrostatics, transom, bulb, planing-bottom
// stations, centres, transom lift devices, propulsor position) and the form coefficients
// derived from it.
#pragma once

#include "core/data_class.h"
#include "core/water.h"

namespace velmar {

extern const LabelList kHullConfigTypeLabels;

class clsVXHull : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "vessel/hull_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "vessel/hull_fields.def"

  explicit clsVXHull(std::shared_ptr<clsVXUnits> units = nullptr,
                     std::shared_ptr<clsVXWaterProperties> water = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water);
  const std::shared_ptr<clsVXWaterProperties>& WaterProperties() const { return water_; }
  std::shared_ptr<clsVXHull> CopyClass() const;

 private:
  std::shared_ptr<clsVXWaterProperties> water_;
};

}  // namespace velmar
