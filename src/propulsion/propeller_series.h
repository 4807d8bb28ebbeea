// clsVXPropellerSeries: the choice of standard propeller series and the corrections applied
// to its thrust and torque coefficients; beside it the validity limits of each series.
#pragma once

#include <optional>

#include "core/data_class.h"
#include "core/water.h"
#include "propulsion/propeller.h"

namespace velmar {

extern const LabelList kPropellerSeriesLabels;
extern const LabelList kScaleCorrectionLabels;
extern const LabelList kKTKQCorrectionLabels;
extern const LabelList kCRPRudderLocationLabels;

// The data set of a series: expanded area ratio, pitch ratio and advance coefficient
// ranges, and the factor that relates the advance coefficient of zero thrust to P/D.
struct PropellerSeriesLimits {
  double EARMin = 0.0, EARMax = 0.0;
  double PDMin = 0.0, PDMax = 0.0;
  double JMin = 0.0, JMax = 0.0;
  double JZeroFactor = 0.0;
};

// What the user is told about the coefficients of `series` (a single source, say), or nullptr.
const char* PropellerSeriesNote(int series);
// Limits of `series` (an index of kPropellerSeriesLabels) for a propeller of `bladeCount`
// blades; none for an unknown series. The EAR range of some Kaplan series depends on the
// blade count; any count without its own range takes the series' general one.
std::optional<PropellerSeriesLimits> GetPropellerSeriesLimits(int series, int bladeCount);

class clsVXPropellerSeries : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "propulsion/propeller_series_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "propulsion/propeller_series_fields.def"

  explicit clsVXPropellerSeries(std::shared_ptr<clsVXUnits> units = nullptr,
                                std::shared_ptr<clsVXWaterProperties> water = nullptr,
                                std::shared_ptr<clsVXPropeller> propeller = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water,
                        std::shared_ptr<clsVXPropeller> propeller);
  const std::shared_ptr<clsVXWaterProperties>& WaterProperties() const { return water_; }
  void WaterProperties(std::shared_ptr<clsVXWaterProperties> water) { water_ = std::move(water); }
  const std::shared_ptr<clsVXPropeller>& Propeller() const { return propeller_; }
  void Propeller(std::shared_ptr<clsVXPropeller> propeller) { propeller_ = std::move(propeller); }
  std::shared_ptr<clsVXPropellerSeries> CopyClass() const;

 private:
  std::shared_ptr<clsVXWaterProperties> water_;
  std::shared_ptr<clsVXPropeller> propeller_;
};

}  // namespace velmar
