// The propulsion prediction driver. The prediction itself is not part of this version: the
// driver says so and fails, and the table keeps its columns.
#include "propulsion/propulsion_driver.h"

#include "core/diagnostics.h"

namespace velmar {

bool CalcPropulsionPrediction(clsVXWaterProperties& /*water*/, clsVXHull& /*hull*/,
                              clsVXITTC78Expansion& /*ittc78*/, clsVXResistance& /*resistance*/,
                              clsVXPropulsion& /*propulsion*/, clsVXPropeller& /*propeller*/,
                              clsVXPropellerSeries& /*propellerSeries*/, clsVXWaterjet& /*waterjet*/,
                              clsVXEngine& /*engine*/, clsVXSpeedPerformance& /*speedPerformance*/) {
  AddCalcError("Propulsion prediction is not available in this version of the program.");
  SetCalcErrorAtSpeed(false);  // the message belongs to no speed row
  return false;
}

}  // namespace velmar
