// clsVXEnvironment: the surroundings that add drag: wind, seas, shallow or restricted water.
#pragma once

#include "core/data_class.h"
#include "core/water.h"

namespace velmar {

extern const LabelList kWindGradientCorrLabels;

class clsVXEnvironment : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "vessel/environment_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "vessel/environment_fields.def"

  explicit clsVXEnvironment(std::shared_ptr<clsVXUnits> units = nullptr,
                            std::shared_ptr<clsVXWaterProperties> water = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water);
  std::shared_ptr<clsVXEnvironment> CopyClass() const;

 private:
  std::shared_ptr<clsVXWaterProperties> water_;
};

}  // namespace velmar
