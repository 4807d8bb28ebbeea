// Hull-propulsor interaction: the Taylor wake fraction w, the thrust deduction t and the
// relative-rotative efficiency etaR of every speed, with the corrections for a ducted
// propeller, a propeller in a tunnel stern and the viscous scale effect on the wake.
// Everything is in feet, pounds force, slugs and seconds.
#pragma once

#include "core/speed_performance.h"
#include "core/water.h"
#include "propulsion/interaction_methods.h"
#include "propulsion/propeller.h"
#include "propulsion/propulsion_settings.h"
#include "resistance/ittc78.h"
#include "vessel/hull.h"

namespace velmar {

// Writes the Froude numbers on length and volume and the Reynolds number of every row, and,
// as PropulsionInteractionEnabled says, w, t and etaR (Off: 0, 0, 1; Calc: predicted; Lock:
// left as they stand). Returns true on success; failures leave their chain of texts in the
// calculation error state and keep the rows written before.
bool PredictPropulsionInteractionCoefs(clsVXWaterProperties& water, clsVXHull& hull,
                                       clsVXITTC78Expansion& ittc78, clsVXPropulsion& propulsion,
                                       clsVXPropeller& propeller, clsVXSpeedPerformance& speedPerformance);

// w, t and etaR of one speed by the selected PropulsionInteractionMethod, with the duct and
// tunnel corrections when they are on. referenceLength (ft) is the length of the method's
// basis vessel; speedCheck is 0 below, 1 inside and 2 above the method's Froude range. `run`,
// when given, keeps the method's reads from one speed of a run to the next.
bool PredictPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                  int& speedCheck, double Fn, double Fv, clsVXWaterProperties& water,
                                  clsVXHull& hull, clsVXITTC78Expansion& ittc78, clsVXPropeller& propeller,
                                  clsVXPropulsion& propulsion, PropulsionInteractionRun* run = nullptr);

// The wake of a ducted propeller: w times 0.5 to 0.7 for one propulsor, by the stern shape
// factor, and times 0.6 for more. A w not above 0 stays.
bool CalcWakeFractionDuctCorrection(double& w, int propulsorCount, double sternShapeFactor);

// The factors of a propeller in a tunnel stern, from the volumetric Froude number, the recess
// depth over the tunnel's effective diameter and the tunnel's excess over the propeller
// diameter (all lengths in one unit). Without a positive value for each, nothing changes.
bool CalcPropulsionTunnelCorrection(double& w, double& t, double& etaR, double Fv, double diameter,
                                    double effectiveDiameter, double recessDepth);

// Lifts a wake fraction found for a basis vessel of referenceLength (ft) to the ship at Rn
// by the ITTC-78 wake scaling. It may lower the wake, never raise it. k is the factor 1+k.
bool CalcWakeFractionScaleCorrection(double& w, double t, double referenceLength, double Rn, double Fn,
                                     double CA, double k, int rudderLocation);

}  // namespace velmar
