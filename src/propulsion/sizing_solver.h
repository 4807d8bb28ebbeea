// The propeller sizing solver: among rotation rate, diameter, mean pitch and expanded area
// ratio, the free unknowns are found so that the design thrust or power is met at the best
// open-water efficiency, with the blade area on the selected cavitation criterion. The
// propeller sizing window and the controllable-pitch branch of the RPM solution both use it.
// Units: ft, lbf, hp, slug, s; rates n in revolutions per second.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/water.h"
#include "propulsion/bseries.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"

namespace velmar {

struct SeriesModelInputs;  // propulsion/propeller_series_model.h

// What the design point fixes (the Mode of the solver; PropellerSizingIdentity 1 to 3).
inline constexpr int kSizeByPower = 1;
inline constexpr int kSizeByThrust = 2;
inline constexpr int kSizeByTotalDrag = 3;

// The design point and which quantities are sized (flag 1) or kept (flag 0).
struct SizingProblem {
  double DMax = 0.0;  // largest diameter, ft
  double V = 0.0;     // advance speed, ft/s
  double etaR = 0.0;  // relative-rotative efficiency
  double T = 0.0;     // thrust per propulsor, lbf (by thrust, by total drag)
  double P = 0.0;     // delivered power per propulsor, hp (by power)
  int Mode = kSizeByThrust;
  int RateFlag = 0, DiameterFlag = 0, PitchFlag = 0, EARFlag = 0;
  // Newton passes allowed at each tolerance before it is relaxed (1e-4, 1e-3, 1e-2).
  int maxPasses = 20;
  // When given, the series model's inputs of a prediction run: read after the first
  // evaluation that succeeds if they are not yet, then used by every later one.
  SeriesModelInputs* inputs = nullptr;
};

// The propeller: the starting values going in (kept quantities as given), the solution
// coming out. n in 1/s, D and Pitch in ft; Eta is the open-water efficiency at the solution.
struct SizingPoint {
  double n = 0.0, D = 0.0, Pitch = 0.0, EAR = 0.0, Eta = 0.0;
};

// Why a run of the solver stopped.
enum class SizingStop {
  kNone,         // not run
  kConverged,    // every step within the tolerance
  kInputs,       // an input check failed
  kModel,        // the propeller model failed
  kSeriesLimit,  // the pitch converged on a bound of the series
  kMaxPasses,    // the tolerance ladder was exhausted
  kSingular,     // the Newton system had no solution
  kCancelled,    // the user's stop
};

// What the solver did, for the window, the command line and the tests.
struct SizingSummary {
  int result = 0;  // 0 failure, 1 success, 6 success with thrust breakdown
  SizingStop stop = SizingStop::kNone;
  int passes = 0;                     // Newton passes of the run that gave the answer
  int totalPasses = 0;                // Newton passes of all runs
  int runs = 0;                       // runs of CalcOptimumPropeller
  double tolerance = 0.0;             // the tolerance the answer met
  std::array<double, 3> finalStep{};  // last steps of J, P/D and EAR
  bool smallMaxDiameter = false;      // the diameter was set to DMax before solving
  bool diameterAtMax = false;         // the answer's diameter is DMax
  int gearRatioPasses = 0;            // passes of the search for the best rate
  std::vector<std::string> warnings;  // texts stacked without a failure
};
std::string SizingStopText(SizingStop stop);

// One solution for the flags of `problem`: Newton's method on the demand, the stationary
// efficiency and the blade-area equations. Returns 0 on failure (with its text on the
// calculation error state), else 1, or 6 when the propeller model indicated thrust breakdown.
int CalcOptimumPropeller(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                         clsVXPropellerSeries& propellerSeries, const SizingProblem& problem,
                         SizingPoint& point, SizingSummary* summary = nullptr);

// The sizing: a maximum diameter that is small for the power is taken at once; a solved
// diameter above the maximum is replaced by the maximum; with the rate and the diameter both
// sized, the rate of best efficiency is searched. Returns 0 on failure, else the result of
// the solution that stands.
int SizePropeller(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                  clsVXPropellerSeries& propellerSeries, const SizingProblem& problem, SizingPoint& point,
                  SizingSummary* summary = nullptr);

// ---- The Newton system, exposed for its tests --------------------------------------------

// The residuals and Jacobian of the sizing equations with respect to x = (J, P/D, EAR):
//   F1 = K - C J^m                    demand (K = KT by thrust, KQ by power)
//   F2 = a dF1/dPD - b dF1/dJ          efficiency stationary along F1 = 0, with
//        a = d ln(eta)/dJ, b = d ln(eta)/dPD, eta = J KT / (2 pi KQ)
//   F3 = EAR - target                 blade area (the target held for the step)
// `kt` and `kq` are the DerivativeArray of KT and KQ at the point.
struct SizingEquations {
  std::array<double, 3> F{};
  std::array<std::array<double, 3>, 3> dF{};  // dF[i][j] = dFi/dxj
};
SizingEquations SizingSystem(double J, double KT, double KQ, const DerivativeArray& kt,
                             const DerivativeArray& kq, bool byPower, double C, int m, double EAR,
                             double target);

// Solves the rows `equations` of dF dx = -F for the unknowns `unknowns` (indices into x) by
// Cramer's rule; both lists have the same length (0 to 3). False for a singular system.
bool SolveSizingStep(const SizingEquations& e, const std::vector<int>& equations,
                     const std::vector<int>& unknowns, std::array<double, 3>& dx);

}  // namespace velmar
