// The RPM solution of a fixed-pitch propeller for a required thrust. The search brackets the
// thrust between two rates 0.1 rev/s apart and then closes in by interpolating the rate to the
// power e (thrust ~ n^e, e = 2, or 1 for the Kaplan 37 series), pulling the lower end to the
// midpoint on every pass. Every thrust evaluation runs the whole propeller model; nothing is
// cached between passes, so both ends are re-evaluated each time. A controllable-pitch
// propeller goes to the propeller sizing solver instead, which finds its pitch.
#include "propulsion/rpm_solution.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "core/constants.h"
#include "core/curve_fit.h"
#include "core/diagnostics.h"
#include "propulsion/propeller_series_model.h"
#include "propulsion/propulsion_driver.h"
#include "propulsion/sizing_solver.h"

namespace velmar {
namespace {

constexpr int kKaplan37 = 6;
constexpr int kMaxPasses = 50;

// The thrust of one propulsor at rate n (1/s): KT rho n^2 D^4. The searches below evaluate
// the same rate more than once (one bracket end becomes the other, a pass keeps an end); the
// propeller model is a pure function of the rate here, so the last rates are remembered.
class ThrustAt {
 public:
  ThrustAt(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
           clsVXPropellerSeries& series, double rho, double va, double D, double EAR, double pitch,
           const SeriesModelInputs* inputs)
      : water_(water),
        propulsion_(propulsion),
        propeller_(propeller),
        series_(series),
        rho_(rho),
        va_(va),
        D_(D),
        EAR_(EAR),
        pitch_(pitch),
        inputs_(inputs) {}

  bool operator()(double n, double& thrust) {
    for (const Known& k : known_)
      if (k.valid && k.n == n) {
        thrust = k.thrust;
        return true;
      }
    // The plan of the plain evaluation is made once the run's inputs are read.
    if (!planned_ && inputs_->read) {
      plan_ = PrepareQuickSeriesKT(*inputs_, va_, D_, EAR_, 1, pitch_);
      planned_ = true;
    }
    double KT = 0.0, KQ = 0.0;
    if (planned_ && QuickSeriesKT(plan_, n, KT, !settled_)) {
      settled_ = true;
    } else if (!Coefficients(n, KT, KQ, 0)) {
      AddCalcError("KTKQ calculation");
      return false;
    }
    thrust = KT * rho_ * n * n * D_ * D_ * D_ * D_;
    known_[next_] = {true, n, thrust};
    next_ = (next_ + 1) % known_.size();
    return true;
  }

  // KT and, with kQuickKQ in `needs`, KQ at rate n; false when the propeller model failed
  // (its texts stand on the calculation error state). With the run's inputs read, the plain
  // evaluation stands in for the full one where it applies: the error stacks of the water,
  // propulsion and propeller are empty (checked after the reads of the solution; the fields
  // the inputs hold were read without fault by the evaluation before they were read). Once an
  // evaluation has succeeded, the calculation error state stays as it left it (nothing between
  // the evaluations of the solution reports), so the later ones leave it untouched.
  bool Coefficients(double n, double& KT, double& KQ, int needs) {
    QuickSeriesResult q;
    if (inputs_->read &&
        QuickSeriesKTKQ(*inputs_, n, va_, D_, EAR_, 1, pitch_, needs, q, nullptr, nullptr, !settled_)) {
      settled_ = true;
      KT = q.KT;
      KQ = q.KQ;
      return true;
    }
    double sa = 0.0, ta = 0.0, sp = 0.0, tp = 0.0;
    const bool withInputs = inputs_->read;
    if (CalcPropulsorKTKQ(KT, KQ, water_, propulsion_, propeller_, series_, n, va_, D_, EAR_, 1, pitch_, sa,
                          ta, sp, tp, nullptr, nullptr, withInputs ? inputs_ : nullptr) == 0)
      return false;
    settled_ = withInputs;
    return true;
  }

 private:
  struct Known {
    bool valid = false;
    double n = 0.0, thrust = 0.0;
  };
  clsVXWaterProperties& water_;
  clsVXPropulsion& propulsion_;
  clsVXPropeller& propeller_;
  clsVXPropellerSeries& series_;
  double rho_, va_, D_, EAR_, pitch_;
  const SeriesModelInputs* inputs_;
  std::array<Known, 4> known_{};
  size_t next_ = 0;
  bool settled_ = false, planned_ = false;
  QuickSeriesPlan plan_;
};

// The torque of the propeller at rate n (1/s) with its pitch, for the defined-load step.
bool TorqueAt(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
              clsVXPropellerSeries& series, double n, double va, double D, double EAR, double pitch,
              double rho, double& Q) {
  double KT = 0.0, KQ = 0.0, sa = 0.0, ta = 0.0, sp = 0.0, tp = 0.0;
  if (CalcPropulsorKTKQ(KT, KQ, water, propulsion, propeller, series, n, va, D, EAR, 1, pitch, sa, ta, sp,
                        tp) == 0) {
    AddCalcError("KTKQ calculation");
    return false;
  }
  Q = KQ * rho * n * n * std::pow(D, 5.0);
  return true;
}

// A controllable-pitch propeller: the sizing solver finds the pitch (and with "Variable
// RPM" and "Defined load" the rate) at which the propeller gives the thrust. "Fixed RPM"
// turns at FixedEngineRPM over the gear; "Variable RPM" at the rate of best efficiency for
// its diameter; "Defined load" at the rate where the engine's defined-load curve gives the
// power that the best-efficiency point absorbs.
int ControllablePitch(double& rpm, double thrust, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                      clsVXPropeller& propeller, clsVXPropellerSeries& series, double va, double etaR,
                      double& meanPitch, clsVXEngine& engine, double D, double pitchMean, double EAR,
                      double rho, SeriesModelInputs* inputs) {
  if (!(etaR > 0.0)) {
    AddCalcError("Relative-rotative efficiency");
    return kRPMFailed;
  }
  const double gearRatio = propulsion.GearRatio();
  if (!(gearRatio > 0.0)) {
    AddCalcError("Gear ratio");
    return kRPMFailed;
  }
  const int method = propulsion.CPPMethod();
  const double fixedRPM = propulsion.FixedEngineRPM();
  if (method == 0 && !(fixedRPM > 0.0)) {
    AddCalcError("Fixed engine RPM");
    return kRPMFailed;
  }
  SizingProblem q{.DMax = D, .V = va, .etaR = etaR, .T = thrust, .P = 0.0, .Mode = kSizeByThrust};
  q.PitchFlag = 1;
  q.inputs = inputs;
  SizingPoint point{0.0, D, meanPitch > 0.0 ? meanPitch : pitchMean, EAR, 0.0};
  // A failed sizing has put "propeller sizing" under its cause already.
  auto size = [&](int rateFlag) {
    q.RateFlag = rateFlag;
    return SizePropeller(water, propulsion, propeller, series, q, point) != 0;
  };
  if (method == 0) {
    point.n = fixedRPM / gearRatio / 60.0;
    if (!size(0)) return kRPMFailed;
  } else {
    if (!size(1)) return kRPMFailed;
    if (method == 2) {
      // The engine's defined-load curve sets the rate for the power of that point.
      double Q = 0.0;
      if (!TorqueAt(water, propulsion, propeller, series, point.n, va, D, EAR, point.Pitch, rho, Q))
        return kRPMFailed;
      const double Pd = 2.0 * Pi * Q * point.n / (550.0 * etaR);
      double losses = propulsion.GearEfficiency() * propulsion.ShaftEfficiency();
      if (!(losses > 0.0)) losses = 1.0;
      const double engineRPM = engine.GetRPMFromDefinedLoadPower(Pd / losses, kHp);
      if (!(engineRPM > 0.0)) {
        AddCalcError("getting RPM from defined load power");
        return kRPMFailed;
      }
      point.n = engineRPM / gearRatio / 60.0;
      if (!size(0)) return kRPMFailed;
    }
  }
  rpm = point.n * 60.0;
  meanPitch = point.Pitch;
  return kRPMSolved;
}

}  // namespace

double RPMSolutionTolerance(double thrust) {
  double tol = 0.00001 * thrust;
  if (tol < 1.0) tol = thrust < 100.0 ? 0.1 : 1.0;
  return tol;
}

int CalcRPMForGivenThrust(double& rpm, double thrust, clsVXWaterProperties& water,
                          clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                          clsVXPropellerSeries& propellerSeries, double advanceSpeed, double etaR,
                          double& meanPitch, clsVXEngine& engine, SeriesModelInputs* runInputs,
                          RPMSolutionReads* reads) {
  SetCalcLocation("Calculating RPM for given thrust");
  const bool kept = reads && reads->read;
  // 1.
  if ((kept ? reads->calcType : propulsion.PropulsorCalcType()) == 3) {
    AddCalcError("Waterjets not used in propeller RPM solution");
    return kRPMFailed;
  }
  // 2. Water, drive train and propeller.
  const double rho = kept ? reads->rho : water.Density(kSlugPerFt3);
  if (water.ErrorsFound()) {
    AddCalcErrors(water.Errors());
    return kRPMFailed;
  }
  const int calcType = kept ? reads->calcType : propulsion.PropulsorCalcType();
  if (!kept) {
    propulsion.GearEfficiency();
    propulsion.ShaftEfficiency();
  }
  if (propulsion.ErrorsFound()) {
    AddCalcErrors(propulsion.Errors());
    return kRPMFailed;
  }
  const int Z = kept ? reads->Z : propeller.BladeCount();
  const double D = kept ? reads->D : propeller.Diameter(kFt);
  const double pitchMean = kept ? reads->pitchMean : propeller.PitchMean(kFt);
  const double EAR = kept ? reads->EAR : propeller.ExpAreaRatio();
  if (propeller.ErrorsFound()) {
    AddCalcErrors(propeller.Errors());
    return kRPMFailed;
  }
  // 3. Advance-coefficient limits of the propeller model.
  if (calcType == 2) {
    AddCalcError("KTKQ data are not available as a propeller model in this version of the program.");
    return kRPMFailed;
  }
  const int series = kept ? reads->series : propellerSeries.Series();
  const auto limits = GetPropellerSeriesLimits(series, Z);
  if (!limits) {
    AddCalcError("Propeller series limits");
    return kRPMFailed;
  }
  const int propellerType = kept ? reads->propellerType : propeller.PropellerType();
  if (reads && !kept) *reads = {true, rho, D, pitchMean, EAR, calcType, Z, series, propellerType};
  // 4. A controllable-pitch propeller is solved for pitch.
  if (propellerType == 1)
    return ControllablePitch(rpm, thrust, water, propulsion, propeller, propellerSeries, advanceSpeed, etaR,
                             meanPitch, engine, D, pitchMean, EAR, rho, runInputs);
  // A drag or wake that is not a number would keep the searches below from ending.
  if (!std::isfinite(thrust) || !std::isfinite(advanceSpeed)) {
    AddCalcError("Required thrust");
    return kRPMFailed;
  }

  // 5. Fixed pitch.
  if (meanPitch == 0.0) meanPitch = pitchMean;
  // The series model's inputs do not change while the rate is searched: they are read after
  // the first evaluation that succeeds, and every later one takes them from there.
  SeriesModelInputs ownInputs;
  SeriesModelInputs& inputs = runInputs ? *runInputs : ownInputs;
  ThrustAt thrustAt(water, propulsion, propeller, propellerSeries, rho, advanceSpeed, D, EAR, meanPitch,
                    &inputs);

  // 6. Start at the largest advance coefficient of the series, or at the one of zero thrust
  // when that is smaller.
  double J = limits->JMax;
  if (limits->JZeroFactor > 0.0) {
    const double jZero = limits->JZeroFactor * meanPitch / D;
    if (jZero < J) J = jZero;
  }
  // 7. Step down to the first point with positive coefficients. No lower bound: at J <= 0
  // the rate is not positive and the propeller model fails.
  double n = 0.0;
  for (;;) {
    J -= 0.01;
    n = advanceSpeed / (J * D);
    double KT = 0.0, KQ = 0.0;
    if (!thrustAt.Coefficients(n, KT, KQ, kQuickKQ)) {
      AddCalcError("KTKQ calculation");
      return kRPMFailed;
    }
    if (!inputs.read) ReadSeriesModelInputs(inputs, water, propulsion, propeller, propellerSeries);
    if (KT >= 0.0 && KQ >= 0.0) break;
  }
  // 8. Direction of the bracket search, in steps of 0.1 rev/s (6 RPM).
  double T1 = 0.0;
  if (!thrustAt(n, T1)) return kRPMFailed;
  double step = 0.1, nLo = n, nHi = n + step;
  if (T1 > thrust) {
    step = -0.1;
    nHi = n;
    nLo = n + step;
  }
  // 9. Bracket. The runaway guard compares Va D / nHi with the smallest advance coefficient,
  // not the advance coefficient itself; it only keeps the search from running away.
  double TLo = 0.0, THi = 0.0;
  for (;;) {
    if (!thrustAt(nLo, TLo) || !thrustAt(nHi, THi)) return kRPMFailed;
    if (CalcCancelFlag()) return kRPMStopped;
    if (TLo < thrust && thrust < THi) break;
    nLo += step;
    nHi += step;
    if (advanceSpeed * D / nHi <= limits->JMin || TLo <= 0.0 || THi <= 0.0) break;
  }
  // 10.-11. Regula falsi on n^e.
  const double tol = RPMSolutionTolerance(thrust);
  const double e = (kept ? series : propellerSeries.Series()) == kKaplan37 ? 1.0 : 2.0;
  // The rates raised to e, remembered as the thrusts are: an end often stays from one pass to the next.
  struct Raised {
    bool valid = false;
    std::uint64_t base = 0;  // the bits of the rate
    double power = 0.0;
  };
  std::array<Raised, 2> raised{};
  size_t nextRaised = 0;
  auto raise = [&](double x) {
    const auto bits = std::bit_cast<std::uint64_t>(x);
    for (const Raised& r : raised)
      if (r.valid && r.base == bits) return r.power;
    const double power = std::pow(x, e);
    raised[nextRaised] = {true, bits, power};
    nextRaised = (nextRaised + 1) % raised.size();
    return power;
  };
  int count = 0;
  do {
    if (!thrustAt(nLo, TLo) || !thrustAt(nHi, THi)) return kRPMFailed;
    const double y = Interpolate2Point(TLo, raise(nLo), THi, raise(nHi), thrust);
    if (y > 0.0) {
      n = std::pow(y, 1.0 / e);
      if (!thrustAt(n, T1)) return kRPMFailed;
      if (T1 < thrust) {
        nHi = std::max(n, nHi);
        nLo = std::min(n, nHi);
      } else {
        nHi = std::max(n, nLo);
        nLo = std::min(n, nLo);
      }
    }
    nLo = (nLo + nHi) * 0.5;
    if (++count == kMaxPasses) return kRPMStopped;
    if (CalcCancelFlag()) return kRPMStopped;
  } while (std::fabs(T1 - thrust) > tol);
  // 12.
  rpm = n * 60.0;
  return kRPMSolved;
}

}  // namespace velmar
