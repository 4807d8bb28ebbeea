// The resistance prediction driver: walks the speed table and fills its drag and power
// columns. Whatever the hull drag method, the method supplies the total drag coefficient of a
// model; the ITTC-78 route here takes the model's viscous part off and expands the residuary
// remainder to the ship with friction line, form factor, roughness and correlation allowance.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include "core/diagnostics.h"
#include "core/speed_performance.h"
#include "core/water.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "vessel/appendage.h"
#include "vessel/environment.h"
#include "vessel/hull.h"

namespace velmar {

// States of the Enabled settings of the drag components (AppendageDragEnabled ...).
enum DragEnabledState : int { kDragOff = 0, kDragCalc = 1, kDragLock = 2, kDragEnter = 3 };
// HullDragTechnique.
enum HullDragTechniqueId : int {
  kTechniquePrediction = 0,
  kTechniqueAlignedPrediction = 1,
  kTechniqueScaleFromTest = 2,
  kTechniqueDefined = 3,
};
// HullDragMethod ids the program computes; the others are catalogue entries only.
enum HullDragMethodId : int {
  kHullDragHoltrop = 0,
  kHullDragOortmerssen = 4,
  kHullDragDelftSeries1 = 5,
  kHullDragDelftSeries12 = 6,
  kHullDragDelftSeries2 = 7,
  kHullDragDelftSeries123 = 8,
  kHullDragDelftSeries23 = 9,
  kHullDragMercier = 17,
  kHullDragAndersen = 31,
  kHullDragSavitsky = 32,  // the planing route
};
// ITTC78.HullHydrodynamicType.
enum HullHydrodynamicTypeId : int { kHydroUndefined = 0, kHydroITTC78CT = 1, kHydroPlaning = 2 };

// The columns a resistance run writes, in table order: the speed, the coefficients, the drag
// components and the powers; with the Planing scope of the open project also the running
// attitude and the equilibrium drag. Result tables, reports and velmar-cli show these.
std::vector<int> ResistanceResultColumns();

// The resistance prediction of the open project (the primary objects of App()). Returns true
// on success; failures leave their text in the calculation error state.
bool CalcResistancePrediction();

// The ITTC-78 (CT) route over every row of `speedPerformance`. Techniques 1 and 2 also read
// the hull of the reference ship (App().RefShipResistance).
bool CalcDragPredictionCT(clsVXWaterProperties& water, clsVXHull& hull, clsVXAppendage& appendage,
                          clsVXEnvironment& environment, clsVXITTC78Expansion& ittc78,
                          clsVXResistance& resistance, clsVXSpeedPerformance& speedPerformance);

// The planing route over every row of `speedPerformance`: the running trim, wetted lengths and
// equilibrium drag of the Savitsky method, with its hump and thrust-line corrections, and the
// appendage and added drags as in the ITTC-78 (CT) route.
bool CalcDragPredictionPlaning(clsVXWaterProperties& water, clsVXHull& hull, clsVXAppendage& appendage,
                               clsVXEnvironment& environment, clsVXITTC78Expansion& ittc78,
                               clsVXResistance& resistance, clsVXSpeedPerformance& speedPerformance);

// The model step: the selected hull drag method's model CT at Froude number `fnLength`, and
// the model CR left after the model's viscous part, times `crMultiplier`, never below 1e-6.
bool CalcModelCtCr(double& ctModel, double& crModel, int& speedCheck, double fnLength, clsVXHull& hull,
                   clsVXITTC78Expansion& ittc78, clsVXResistance& resistance, double crMultiplier,
                   double kMultiplier);

// Interference of the two hulls of a catamaran from L/B and S/L: a multiplier of the
// residuary and form factor terms (`factor`) and of the model form factor (`kCat`).
bool CalcCatamaranInterference(double lwlBwlRatio, double sLwlRatio, double& factor, double& kCat);

// The guard of a prediction entry point: runs `body` and turns any fault it throws (a unit
// index out of range, a zero conversion factor, a row outside the table ...) into a false
// result with the fault's text in the calculation error state. No exception leaves a module.
template <class Body>
bool RunGuarded(Body&& body) {
  try {
    return body();
  } catch (const std::exception& e) {
    AddCalcError(std::string("Run-time error: ") + e.what());
  } catch (...) {
    AddCalcError("Run-time error");
  }
  return false;
}

}  // namespace velmar
