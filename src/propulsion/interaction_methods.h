// The hull-propulsor interaction methods: each gives, for one speed, the wake fraction w, the
// thrust deduction t and the relative-rotative efficiency etaR of the ship, the length of the
// method's basis vessel (for the wake scaling) and a speed check (0 below, 1 inside, 2 above
// the method's Froude range). Lengths in ft; Rn is the ship's Reynolds number on LWL.
#pragma once

#include "propulsion/propeller.h"
#include "propulsion/propulsion_settings.h"
#include "vessel/hull.h"

namespace velmar {

// What a method reads of the hull, the propeller and the settings, and derives from them
// alone, at the first speed of a run; the interaction driver keeps it for the later speeds,
// which then skip those reads (a read that passed its check passes again, and pushes nothing)
// but still look at the hull's error stack. Holtrop's form factor and correlation allowance
// are kept only once they have succeeded: a failure leaves its text at every speed.
struct PropulsionInteractionRun {
  bool read = false;
  double L = 0.0, B = 0.0, T = 0.0, S = 0.0, XB = 0.0, CP = 0.0, CB = 0.0, CM = 0.0, Cstern = 0.0;
  int count = 1;
  double D = 0.0, EAR = 0.0, PD = 0.0;
  bool formFactorKept = false, allowanceKept = false;
  double FF = 1.0, CA = 0.0;
  // Holtrop's single-screw terms that do not depend on the speed (c9 c20, 0.93405 c11, 1 - CP1,
  // the wake's two terms without CV, t and etaR), computed at the first speed by the same
  // arithmetic.
  bool singleScrewKept = false;
  double c9c20 = 0.0, c11k = 0.0, oneLessCP1 = 0.0, wFlow = 0.0, wForm = 0.0, tSingle = 0.0, etaRSingle = 0.0;
  // The interaction driver's reads (water, hull, settings) and L^1.5, kept once a speed has
  // passed their checks; the later speeds still look at the water's and the hull's error stacks.
  bool driverRead = false;
  double nu = 0.0, L15 = 0.0, driverL = 0.0;
  int driverCount = 1, method = 0, ducted = 0, tunnel = 0;
};

// Holtrop's statistical propulsion factors at ship scale: the single-screw set of Holtrop
// (1984) for one propulsor, the twin-screw set of Holtrop & Mennen (1982) for any other
// count. The propeller diameter is the hull's largest one (0.7 T when none is given); the
// propeller itself enters through its blade area and pitch ratio.
bool CalcHoltropPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                      int& speedCheck, clsVXHull& hull, clsVXPropeller& propeller,
                                      clsVXPropulsion& propulsion, double Fn, double Rn,
                                      PropulsionInteractionRun* run = nullptr);

// van Oortmerssen's (1971) regression of t, w and etaR for small ships (tugs, trawlers), from
// CP, the LCB, L/B, L/D and Fn. Single source.
bool CalcOortmerssenPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                          int& speedCheck, clsVXHull& hull, clsVXPropeller& propeller,
                                          clsVXPropulsion& propulsion, double Fn, double Rn,
                                          PropulsionInteractionRun* run = nullptr);

// "Simple Ship": Taylor's wake fraction of a single-screw ship from CB alone, w = 0.5 CB - 0.05,
// with Holtrop's (1984) single-screw thrust deduction and etaR 1. Fails for more than one
// propulsor.
bool CalcSimpleShipPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                         int& speedCheck, clsVXHull& hull, clsVXPropeller& propeller,
                                         clsVXPropulsion& propulsion, double Fn, double Rn,
                                         PropulsionInteractionRun* run = nullptr);

// The interaction method of a PropulsionInteractionMethod index; null for a method the
// program does not hold.
using PropulsionInteractionFunction = bool (*)(double& w, double& t, double& etaR, double& referenceLength,
                                               int& speedCheck, clsVXHull& hull, clsVXPropeller& propeller,
                                               clsVXPropulsion& propulsion, double Fn, double Rn,
                                               PropulsionInteractionRun* run);
PropulsionInteractionFunction FindPropulsionInteractionMethod(int method);

}  // namespace velmar
