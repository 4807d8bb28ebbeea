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

// What the series model reads of the water, propulsion, propeller and series settings on every
// evaluation (slug/ft3, ft2/s, degrees, ft), read once. The free-run prediction, which evaluates
// the same propeller many times at every speed, reads them after the first successful
// evaluation of its run and hands them to the later ones (the RPM solution and the analysis of
// every speed), which then check the objects' error stacks as a fresh reading would.
// The propeller's own D, EAR and pitch (taken when the caller gives 0) and the rudder location
// of a contra-rotating pair are read where they are needed.
struct SeriesModelInputs {
  double rho = 0.0, nu = 0.0, theta = 0.0, beta = 0.0, cup = 0.0, H = 0.0, tc = 0.0, roughnessMM = 0.0;
  double ktMult = 0.0, kqMult = 0.0, LD = 0.0;
  int calcType = 0, Z = 0, type = 0, seriesId = 0, oblique = 0, scaleCorrection = 0, breakdown = 0;
  bool read = false;
  // The B-series section-drag correction of the last propeller (P/D, EAR, D in ft) it was found
  // for: with the inputs above it does not depend on the operating point.
  struct ScaleCorrectionOf {
    bool valid = false;
    double PD = 0.0, EAR = 0.0, D = 0.0;
    BSeriesScaleCorrection c;
  };
  mutable ScaleCorrectionOf scale;
  // The part of that correction which does not depend on P/D, for the propeller (EAR, D in ft)
  // it was found for: the pitch solution of a controllable-pitch propeller changes P/D alone.
  struct SectionDragOf {
    bool valid = false;
    double EAR = 0.0, D = 0.0;
    BSeriesSectionDrag s;
  };
  mutable SectionDragOf sectionDrag;
};
void ReadSeriesModelInputs(SeriesModelInputs& in, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                           clsVXPropeller& propeller, clsVXPropellerSeries& series);

// What a plain evaluation (QuickSeriesKTKQ) computes besides KT: KQ, and the cavitation number
// and thrust loading at 0.7 R.
inline constexpr int kQuickKQ = 1, kQuickCavitation = 2;
struct QuickSeriesResult {
  double KT = 0.0, KQ = 0.0, sigma = 0.0, tau = 0.0;
};

// The evaluation CalcPropulsorKTKQ makes with `in` of a B-series propeller in axial inflow,
// without its reads, checks and calculation locations, and only of what `needs` asks for. It
// gives the same numbers, bit for bit. False, with nothing reported or changed, where the case
// is not that plain one or the evaluation would fail: the caller then makes the full
// evaluation, which reports as it always has. The caller answers for the error stacks of
// the water, propulsion and propeller being empty (no read of them since they were last
// checked); `settle` leaves the calculation error state as a successful full evaluation
// does, which the caller may skip when nothing has changed it since the last one.
bool QuickSeriesKTKQ(const SeriesModelInputs& in, double n, double Va, double D, double EAR, int cupFlag,
                     double pitch, int needs, QuickSeriesResult& r, DerivativeArray* ktArray = nullptr,
                     DerivativeArray* kqArray = nullptr, bool settle = false);

// The part of that plain evaluation which does not depend on the rate, for KT alone and a
// propeller without a cup in use (cupFlag 0, or no cup): the RPM solution evaluates the same
// propeller at one advance speed for many rates. `ok` false where QuickSeriesKTKQ would not
// take the case.
struct QuickSeriesPlan {
  bool ok = false, scale = false;
  double Va = 0.0, D = 0.0, EAR = 0.0, PD = 0.0, ktMult = 0.0, dKT = 0.0;
  int Z = 0;
};
QuickSeriesPlan PrepareQuickSeriesKT(const SeriesModelInputs& in, double Va, double D, double EAR,
                                     int cupFlag, double pitch);
// KT at rate n by a plan: the same bits as QuickSeriesKTKQ, false where it would be.
bool QuickSeriesKT(const QuickSeriesPlan& plan, double n, double& KT, bool settle = false);

// Open-water KT and KQ in axial inflow. `calcType` is the PropulsorCalcType. A D, EAR or
// pitch of 0 takes the propeller's own; J and PD of -1 are derived from Va, n, D and the pitch.
// Also gives the cavitation number at 0.7 R, the one on the advance speed and Burrill's thrust
// loading. Returns 0 failure, 1 success, 6 success with thrust breakdown.
int CalcPropellerSeriesAxial(double& KT, double& KQ, clsVXWaterProperties& water, clsVXPropeller& propeller,
                             clsVXPropellerSeries& series, int calcType, double n, double Va, double D,
                             double EAR, int cupFlag, double pitch, double& sigma, double& sigmaV,
                             double& tau, DerivativeArray* ktArray, DerivativeArray* kqArray, double J = -1.0,
                             double PD = -1.0, const SeriesModelInputs* inputs = nullptr);

// The series performance at shaft rate n and advance speed Va, with the oblique inflow of the
// shaft angle and the added rise of run when the series settings ask for it; the mean and the
// most loaded blade position give the two cavitation pairs. Returns 0, 1 or 6 as above.
int CalcPropellerSeriesPerformance(double& KT, double& KQ, clsVXWaterProperties& water,
                                   clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                   clsVXPropellerSeries& series, double n, double Va, double D, double EAR,
                                   int cupFlag, double pitch, DerivativeArray* ktArray,
                                   DerivativeArray* kqArray, double& sigmaAvg, double& tauAvg,
                                   double& sigmaPeak, double& tauPeak,
                                   const SeriesModelInputs* inputs = nullptr);

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
