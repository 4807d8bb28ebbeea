// Thrust and torque coefficients of a series propeller at an operating point, with every
// correction the series settings ask for (multipliers, contra-rotating pair, cup, nozzle,
// scale effect, oblique inflow), and the checks of a propeller against a series' data set.
// Units: n in revolutions per second, Va in ft/s, D and pitch in ft.
#pragma once

#include <string>

#include "core/water.h"
#include "propulsion/bseries.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"

namespace velmar {

// Open-water KT and KQ in axial inflow. `calcType` is the PropulsorCalcType. A D, EAR or
// pitch of 0 takes the propeller's own; J and PD of -1 are derived from Va, n, D and the pitch.
// Also gives the cavitation number at 0.7 R, the one on the advance speed and Burrill's thrust
// loading. Returns 0 failure, 1 success, 6 success with thrust breakdown.
int CalcPropellerSeriesAxial(double& KT, double& KQ, clsVXWaterProperties& water, clsVXPropeller& propeller,
                             clsVXPropellerSeries& series, int calcType, double n, double Va, double D,
                             double EAR, int cupFlag, double pitch, double& sigma, double& sigmaV,
                             double& tau, DerivativeArray* ktArray, DerivativeArray* kqArray, double J = -1.0,
                             double PD = -1.0);

// The series performance at shaft rate n and advance speed Va, with the oblique inflow of the
// shaft angle and the added rise of run when the series settings ask for it; the mean and the
// most loaded blade position give the two cavitation pairs. Returns 0, 1 or 6 as above.
int CalcPropellerSeriesPerformance(double& KT, double& KQ, clsVXWaterProperties& water,
                                   clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                   clsVXPropellerSeries& series, double n, double Va, double D, double EAR,
                                   int cupFlag, double pitch, DerivativeArray* ktArray,
                                   DerivativeArray* kqArray, double& sigmaAvg, double& tauAvg,
                                   double& sigmaPeak, double& tauPeak);

// Thrust coefficient of the nozzle of a ducted series; 0 for open propellers.
bool CalcNozzleKTN(double& KTN, clsVXPropeller& propeller, clsVXPropellerSeries& series, int calcType,
                   double n, double Va, double D, double EAR, double pitch, double J = -1.0,
                   double PD = -1.0);

// Checks of a propeller against the data set of the selected series. Each returns 1 when the
// value is inside, else 0 with `message` = the series label and the reason; they stack no
// error. The blade count check writes back the count the series is meant for.
int CheckSeriesBladeCount(const clsVXPropellerSeries& series, int& bladeCount, std::string& message);
int CheckSeriesEAR(const clsVXPropellerSeries& series, double EAR, int Z, std::string& message);
int CheckSeriesPD(const clsVXPropellerSeries& series, double PD, std::string& message);
int CheckSeriesImmersion(const clsVXPropellerSeries& series, double hubImmersion, double D,
                         std::string& message);

}  // namespace velmar
