// clsVXEnvironment: the surroundings that add drag: wind, seas, shallow or restricted water,
// with the cross-section geometry of a dredged channel and the sea-state proposals.
#pragma once

#include <span>

#include "core/data_class.h"
#include "core/water.h"

namespace velmar {

extern const LabelList kWindGradientCorrLabels;
extern const LabelList kWindSuperstructureShapeLabels;
extern const LabelList kShallowWaterTypeLabels;
// Vessel types of Blendermann's wind load parameters, and the ship types and loading
// conditions of the ITTC wind coefficient data sets; the wind methods hold their numbers in
// the same order.
extern const LabelList kWindVesselTypeLabels;
extern const LabelList kWindDataSetLabels;
// Loading conditions of Kwon's speed loss.
extern const LabelList kSeasLoadingConditionLabels;
enum SeasLoadingCondition { kSeasLaden = 0, kSeasBallast = 1, kSeasContainerShip = 2 };

// One proposal of the sea-state value lists: significant wave height in feet and modal
// wave period in seconds.
struct SeaStateProposal {
  const char* label;
  double waveHeightFt;
  double modalPeriodSec;
};

// Sea states 2 to 9, mildest first.
std::span<const SeaStateProposal> SeaStateProposals();

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

  // Wetted cross-section of the channel (trapezoid, or rectangle for sides of 90 degrees or
  // more), in the area unit `unit`.
  double CalcChannelAreaSect(int unit) const;
  // Wetted girth of the channel section (bottom plus both sides). Note that the rectangular
  // branch converts its metres through the area family: outside metric units the two
  // branches do not agree, and callers rely on that.
  double CalcChannelGirth(int unit) const;

 private:
  std::shared_ptr<clsVXWaterProperties> water_;
};

}  // namespace velmar
