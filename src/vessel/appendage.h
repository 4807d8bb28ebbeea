// clsVXAppendage: everything attached to the hull (shafts and bossings, struts, rudders,
// skegs or keels, stabilizers, bilge keels, tunnel thrusters, sonar domes, miscellaneous).
#pragma once

#include "core/data_class.h"
#include "core/water.h"
#include "vessel/hull.h"

namespace velmar {

extern const LabelList kAppendageDefinitionLabels;

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

 private:
  std::shared_ptr<clsVXWaterProperties> water_;
  std::shared_ptr<clsVXHull> hull_;
};

}  // namespace velmar
