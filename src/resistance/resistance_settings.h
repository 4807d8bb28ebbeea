// clsVXResistance: which drag components a resistance prediction computes and by which
// method: hull drag with its expansion and corrections, appendage, wind, seas, shallow water
// or channel, and the design margin. A settings object without links and without quantities.
#pragma once

#include <array>
#include <span>
#include <string>

#include "core/data_class.h"

namespace velmar {

extern const LabelList kDragEnabledLabels;  // Off, Calc, Lock, Enter
extern const LabelList kHullDragMethodLabels;
extern const LabelList kHullDragExpansionDetailLabels;
extern const LabelList kHullDragMethodCheckLabels;
extern const LabelList kHumpMultiplierApplyFactorLabels;
extern const LabelList kPropulsorLiftCorrApplyFactorLabels;
extern const LabelList kSprayCorrApplyFactorLabels;
extern const LabelList kAppendageDragMethodLabels;
extern const LabelList kWindDragMethodLabels;
extern const LabelList kSeasDragMethodLabels;
extern const LabelList kChannelDragMethodLabels;
extern const LabelList kMarginDragBasisLabels;

class clsVXResistance : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "resistance/resistance_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "resistance/resistance_fields.def"

  clsVXResistance();
  // The class has no linked classes.
  void SetLinkedClasses() {}
  std::shared_ptr<clsVXResistance> CopyClass() const;
  // The settings hold no quantity: a change of units leaves them as they are.
  void ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits) override;
};

}  // namespace velmar
