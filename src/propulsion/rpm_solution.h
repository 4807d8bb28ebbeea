// The rotation rate at which a propeller gives a required thrust: a bracket search in steps
// of 6 RPM, then a regula falsi on the law that thrust goes with the rate squared.
#pragma once

#include "core/water.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"

namespace velmar {

struct SeriesModelInputs;  // propulsion/propeller_series_model.h

// What the RPM solution reads of the water, the drive train, the propeller and its series,
// read at the first speed of a run and kept for the later ones. Those still look at the
// objects' error stacks where the reads stood: a read that passed its check passes again and
// pushes nothing.
struct RPMSolutionReads {
  bool read = false;
  double rho = 0.0, D = 0.0, pitchMean = 0.0, EAR = 0.0;
  int calcType = 0, Z = 0, series = 0, propellerType = 0;
};

// Results of CalcRPMForGivenThrust.
enum RPMSolutionResult : int {
  kRPMFailed = 0,   // a failure text is on the calculation error state
  kRPMSolved = 1,   // `rpm` holds the solution
  kRPMStopped = 3,  // stopped early (50 passes, or the user's stop): `rpm` is left as given
};

// `thrust` per propulsor in lbf, `advanceSpeed` in ft/s, `rpm` in 1/min, `meanPitch` in ft
// (0: the propeller's mean pitch). A controllable-pitch propeller returns its solved pitch
// through `meanPitch`. `inputs`, when given, holds the series model's inputs from one call to
// the next (a prediction run over its speeds); they are read after the first evaluation of the
// propeller model that succeeds.
int CalcRPMForGivenThrust(double& rpm, double thrust, clsVXWaterProperties& water,
                          clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                          clsVXPropellerSeries& propellerSeries, double advanceSpeed, double etaR,
                          double& meanPitch, clsVXEngine& engine, SeriesModelInputs* inputs = nullptr,
                          RPMSolutionReads* reads = nullptr);

// The thrust tolerance of the solution for a required thrust T (lbf): 1e-5 T, but 0.1 lbf
// below 100 lbf and 1 lbf above when that is less than 1 lbf.
double RPMSolutionTolerance(double thrust);

}  // namespace velmar
