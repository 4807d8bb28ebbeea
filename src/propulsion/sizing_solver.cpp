// The propeller sizing solver. The free unknowns are the advance coefficient J (free when
// the rate or the diameter is sized), the pitch ratio P/D and the expanded area ratio. Three
// equations tie them: the demand (the propeller gives the design thrust or absorbs the design
// power), efficiency stationary along the demand curve (which picks the best propeller among
// those that meet the demand), and the blade area on the cavitation criterion. Newton's
// method solves them with the analytic Jacobian of docs/propeller-sizing.md, built from the
// first and second derivatives of KT and KQ that the series model returns.
#include "propulsion/sizing_solver.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "propulsion/propeller_formulas.h"
#include "propulsion/propeller_series_model.h"
#include "propulsion/propulsion_driver.h"

namespace velmar {
namespace {

constexpr int kJ = 0, kPD = 1, kEAR = 2;
constexpr int kCRP = 2;  // PropellerType of a contra-rotating pair: two blade rows

int Fail(const char* text) {
  AddCalcError(text);
  return 0;
}

template <class Object>
bool PassErrors(Object& object) {
  if (!object.ErrorsFound()) return false;
  AddCalcErrors(object.Errors());
  return true;
}

// The starting power of the design point: the power itself, or the thrust power over an
// efficiency that grows with speed (0.28 + 0.013 V - 0.000087 V^2, V in ft/s, at most 0.7).
double StartingPower(const SizingProblem& q) {
  if (q.Mode == kSizeByPower) return q.P;
  const double eta = std::min(0.28 + 0.013 * q.V - 0.000087 * q.V * q.V, 0.7);
  return q.V * q.T / (550.0 * q.etaR * eta);
}

// The propeller model at one point, with the values the iteration needs.
struct ModelPoint {
  int result = 0;
  double KT = 0.0, KQ = 0.0, KTc = 0.0, KQc = 0.0, tau = 0.0, sigma = 0.0;
  DerivativeArray kt{}, kq{};
};

class Model {
 public:
  Model(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
        clsVXPropellerSeries& series, double V, bool cup, SeriesModelInputs* inputs)
      : water_(water),
        propulsion_(propulsion),
        propeller_(propeller),
        series_(series),
        V_(V),
        cup_(cup),
        inputs_(inputs) {}

  // KT and KQ with the cup and the derivative arrays; without the cup for the cavitation
  // criteria when the propeller has one.
  bool At(double n, double D, double EAR, double pitch, ModelPoint& p) {
    double sa = 0.0, ta = 0.0;
    p.result = Evaluate(n, D, EAR, 1, pitch, p.KT, p.KQ, sa, ta, &p.kt, &p.kq);
    if (p.result == 0) return false;
    p.KTc = p.KT;
    p.KQc = p.KQ;
    p.tau = ta;
    p.sigma = sa;
    if (cup_) {
      const int r = Evaluate(n, D, EAR, 0, pitch, p.KTc, p.KQc, sa, ta, nullptr, nullptr);
      if (r == 0) return false;
      if (r == 6) p.result = 6;
      p.tau = ta;
      p.sigma = sa;
    }
    return true;
  }

  // Open-water efficiency at a point, without the derivatives.
  bool Eta(double n, double D, double EAR, double pitch, double& eta) {
    double KT = 0.0, KQ = 0.0, sa = 0.0, ta = 0.0;
    if (Evaluate(n, D, EAR, 1, pitch, KT, KQ, sa, ta, nullptr, nullptr) == 0) return false;
    eta = V_ / (n * D) * KT / (2.0 * Pi * KQ);
    return true;
  }

 private:
  // CalcPropulsorKTKQ, or with the run's inputs its plain evaluation where that applies. Within
  // the solver nothing reads the water, propulsion or propeller after their check, so their
  // error stacks stay empty; the calculation location is set as the full evaluation leaves it.
  int Evaluate(double n, double D, double EAR, int cupFlag, double pitch, double& KT, double& KQ, double& sa,
               double& ta, DerivativeArray* kt, DerivativeArray* kq) {
    const bool withInputs = inputs_ && inputs_->read;
    QuickSeriesResult q;
    if (withInputs && QuickSeriesKTKQ(*inputs_, n, V_, D, EAR, cupFlag, pitch, kQuickKQ | kQuickCavitation, q,
                                      kt, kq, true)) {
      KT = q.KT;
      KQ = q.KQ;
      sa = q.sigma;
      ta = q.tau;
      return 1;
    }
    double sp = 0.0, tp = 0.0;
    const int r = CalcPropulsorKTKQ(KT, KQ, water_, propulsion_, propeller_, series_, n, V_, D, EAR, cupFlag,
                                    pitch, sa, ta, sp, tp, kt, kq, withInputs ? inputs_ : nullptr);
    if (r != 0 && inputs_ && !withInputs)
      ReadSeriesModelInputs(*inputs_, water_, propulsion_, propeller_, series_);
    return r;
  }

  clsVXWaterProperties& water_;
  clsVXPropulsion& propulsion_;
  clsVXPropeller& propeller_;
  clsVXPropellerSeries& series_;
  double V_;
  bool cup_;
  SeriesModelInputs* inputs_;
};

// A new value outside [lo, hi] has its step cut to half the distance to the bound it
// crossed.
double LimitStep(double x, double dx, double lo, double hi) {
  if (x + dx < lo) return 0.5 * (lo - x);
  if (x + dx > hi) return 0.5 * (hi - x);
  return dx;
}

double Det2(double a, double b, double c, double d) { return a * d - b * c; }

}  // namespace

std::string SizingStopText(SizingStop stop) {
  switch (stop) {
    case SizingStop::kNone:
      return "not run";
    case SizingStop::kConverged:
      return "converged";
    case SizingStop::kInputs:
      return "input missing";
    case SizingStop::kModel:
      return "propeller model failed";
    case SizingStop::kSeriesLimit:
      return "pitch on a series limit";
    case SizingStop::kMaxPasses:
      return "maximum passes";
    case SizingStop::kSingular:
      return "singular system";
    case SizingStop::kCancelled:
      return "stopped by the user";
  }
  return "";
}

SizingEquations SizingSystem(double J, double KT, double KQ, const DerivativeArray& kt,
                             const DerivativeArray& kq, bool byPower, double C, int m, double EAR,
                             double target) {
  // Derivative orders in the arrays: 0 J, 1 PD, 2 EAR, 3 JJ, 4 PP, 5 EE, 6 JP, 7 JE, 8 PE.
  static constexpr int kSecond[3][3] = {{3, 6, 7}, {6, 4, 8}, {7, 8, 5}};
  const double K = byPower ? KQ : KT;
  const DerivativeArray& dK = byPower ? kq : kt;
  SizingEquations e;

  // F1 and its first and second derivatives (the demand curve C J^m carries J only).
  const double Jm = std::pow(J, m);
  std::array<double, 3> g{dK[0] - m * C * Jm / J, dK[1], dK[2]};
  std::array<std::array<double, 3>, 3> gg{};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) gg[i][j] = dK[kSecond[i][j]];
  gg[kJ][kJ] -= m * (m - 1) * C * Jm / (J * J);
  e.F[0] = K - C * Jm;
  e.dF[0] = g;

  // ln(eta) = ln J + ln KT - ln KQ - ln(2 pi): first derivatives L[i], second LL[i][j].
  auto logFirst = [](double f, const DerivativeArray& d, int i) { return d[i] / f; };
  auto logSecond = [](double f, const DerivativeArray& d, int i, int j) {
    return d[kSecond[i][j]] / f - d[i] * d[j] / (f * f);
  };
  std::array<double, 3> L{};
  std::array<std::array<double, 3>, 3> LL{};
  for (int i = 0; i < 3; ++i) {
    L[i] = logFirst(KT, kt, i) - logFirst(KQ, kq, i);
    for (int j = 0; j < 3; ++j) LL[i][j] = logSecond(KT, kt, i, j) - logSecond(KQ, kq, i, j);
  }
  L[kJ] += 1.0 / J;
  LL[kJ][kJ] -= 1.0 / (J * J);

  // F2 = a g_P - b g_J with a = L_J, b = L_P: the gradients of ln(eta) and F1 in the
  // (J, P/D) plane are parallel.
  const double a = L[kJ], b = L[kPD];
  e.F[1] = a * g[kPD] - b * g[kJ];
  for (int j = 0; j < 3; ++j)
    e.dF[1][j] = LL[kJ][j] * g[kPD] + a * gg[kPD][j] - LL[kPD][j] * g[kJ] - b * gg[kJ][j];

  // F3: the target is re-evaluated at every pass and held during the step.
  e.F[2] = EAR - target;
  e.dF[2] = {0.0, 0.0, 1.0};
  return e;
}

bool SolveSizingStep(const SizingEquations& e, const std::vector<int>& equations,
                     const std::vector<int>& unknowns, std::array<double, 3>& dx) {
  dx = {0.0, 0.0, 0.0};
  const size_t N = unknowns.size();
  if (N != equations.size() || N > 3) return false;
  if (N == 0) return true;
  auto A = [&](size_t r, size_t c) { return e.dF[equations[r]][unknowns[c]]; };
  auto B = [&](size_t r) { return -e.F[equations[r]]; };
  std::array<double, 3> x{};
  if (N == 1) {
    if (A(0, 0) == 0.0) return false;
    x[0] = B(0) / A(0, 0);
  } else if (N == 2) {
    const double det = Det2(A(0, 0), A(0, 1), A(1, 0), A(1, 1));
    if (det == 0.0) return false;
    x[0] = Det2(B(0), A(0, 1), B(1), A(1, 1)) / det;
    x[1] = Det2(A(0, 0), B(0), A(1, 0), B(1)) / det;
  } else {
    // Cramer's rule: the determinant with column c replaced by the right-hand side.
    auto det3 = [&](int replaced) {
      auto m = [&](size_t r, size_t c) { return static_cast<int>(c) == replaced ? B(r) : A(r, c); };
      return m(0, 0) * Det2(m(1, 1), m(1, 2), m(2, 1), m(2, 2)) -
             m(0, 1) * Det2(m(1, 0), m(1, 2), m(2, 0), m(2, 2)) +
             m(0, 2) * Det2(m(1, 0), m(1, 1), m(2, 0), m(2, 1));
    };
    const double det = det3(-1);
    if (det == 0.0) return false;
    for (int c = 0; c < 3; ++c) x[static_cast<size_t>(c)] = det3(c) / det;
  }
  for (size_t i = 0; i < N; ++i) {
    if (!std::isfinite(x[i])) return false;
    dx[static_cast<size_t>(unknowns[i])] = x[i];
  }
  return true;
}

namespace {

// The guard of the two entry points: a run-time fault becomes its text and result 0.
template <class Body>
int Guarded(Body body) {
  try {
    return body();
  } catch (const std::exception& e) {
    AddCalcError(std::string("Run-time error: ") + e.what());
  } catch (...) {
    AddCalcError("Run-time error");
  }
  return 0;
}

int OptimumPropeller(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                     clsVXPropellerSeries& propellerSeries, const SizingProblem& q, SizingPoint& point,
                     SizingSummary* summary) {
  SizingSummary local;
  SizingSummary& s = summary ? *summary : local;
  ++s.runs;
  s.passes = 0;
  s.stop = SizingStop::kInputs;
  // 1.
  if (CalcCancelFlag()) {
    s.stop = SizingStop::kCancelled;
    return Fail("Calculation break");
  }
  // 2. Every missing input is named before the function ends.
  const bool byPower = q.Mode == kSizeByPower;
  bool missing = false;
  auto need = [&](bool ok, const char* text) {
    if (!ok) {
      AddCalcError(text);
      missing = true;
    }
  };
  need(q.V > 0.0, "Design speed missing");
  need(q.etaR > 0.0, "Design relative-rotative efficiency missing");
  if (!byPower) need(q.T > 0.0, "Design thrust missing");
  if (byPower) need(q.P > 0.0, "Design power missing");
  if (!q.RateFlag) need(point.n > 0.0, "Design RPM missing");
  if (!q.DiameterFlag) need(point.D > 0.0, "Diameter missing");
  if (q.DiameterFlag) need(q.DMax > 0.0, "Max diameter missing");
  if (!q.PitchFlag) need(point.Pitch > 0.0, "Design pitch missing");
  if (!q.EARFlag) need(point.EAR > 0.0, "Design EAR missing");
  if (missing) return 0;

  // 3. Water, settings, propeller and the limits of its series.
  const double rho = water.Density(kSlugPerFt3);
  if (PassErrors(water)) return 0;
  const int count = std::max(propulsion.PropulsorCountPerHull(), 1);
  const int calcType = propulsion.PropulsorCalcType();
  const int cavMethod = propulsion.CavCriteriaMethod();
  if (PassErrors(propulsion)) return 0;
  const int type = propeller.PropellerType();
  const int Z = propeller.BladeCount();
  const double cup = propeller.CupDrop(kFt);
  const double H = propeller.HubImmersion(kFt);
  if (PassErrors(propeller)) return 0;
  const int series = propellerSeries.Series();
  const auto limits = GetPropellerSeriesLimits(series, Z);
  if (!limits) return Fail("Propeller series limits");

  s.stop = SizingStop::kModel;
  Model model(water, propulsion, propeller, propellerSeries, q.V, cup > 0.0, q.inputs);
  const double V = q.V;

  // 4. Bounds; a sized blade area starts in the middle of the series' range.
  const double pdLo = 0.9 * limits->PDMin, pdHi = 1.1 * limits->PDMax;
  const double jzf = limits->JZeroFactor > 0.0 ? limits->JZeroFactor : 1.0;
  double n = point.n, D = point.D, EAR = point.EAR;
  if (q.EARFlag) EAR = (limits->EARMin + limits->EARMax) * 0.5;

  // 5.-6. Starting power and rate; the rate for the diameter given, else for the largest.
  const double Pw = StartingPower(q);
  if (q.RateFlag) {
    const double Ds = D > 0.0 ? D : q.DMax;
    if (byPower)
      n = std::pow(std::pow(Pw, 0.2) * (60.0 - 1.55 * Z) / Ds, 5.0 / 3.0) / 60.0;
    else
      n = std::pow(std::pow(q.T, 0.25) * (11.496 - 0.28 * Z) / Ds, 2.0) / 60.0;
  }
  // A kept pitch keeps the pitch ratio of the propeller as given; with the diameter sized
  // and no diameter given, the ratio to the starting diameter.
  const double keptPD = !q.PitchFlag && point.D > 0.0 ? point.Pitch / point.D : 0.0;
  // 7. Starting J: with the diameter sized, from the Bp-delta optimum line.
  double J = 0.0;
  if (q.DiameterFlag) {
    const double B = 222.1 * n * std::sqrt(Pw) / std::pow(V, 2.5);
    J = std::min(2.3571 / std::pow(B, 0.44366), limits->JMax);
    D = V / (n * J);
  } else {
    J = V / (n * D);
  }
  // 8. Starting P/D: the best open-water efficiency at the starting J, scanning upward.
  double PD = 0.0;
  if (q.PitchFlag) {
    PD = std::max(J / jzf, pdLo);
    double eta = 0.0, next = 0.0;
    if (!model.Eta(n, D, EAR, PD * D, eta)) return Fail("KTKQ calculation");
    while (PD < limits->PDMax) {
      if (!model.Eta(n, D, EAR, (PD + 0.01) * D, next)) return Fail("KTKQ calculation");
      if (!(next > eta)) break;
      PD += 0.01;
      eta = next;
    }
  } else {
    PD = keptPD > 0.0 ? keptPD : point.Pitch / D;
  }

  // The demand curve: the coefficient the design point asks for is C J^m at fixed n (the
  // diameter sized: m = 4 by thrust, 5 by power) or at fixed D (the rate sized: 2 or 3).
  const bool jFree = q.RateFlag || q.DiameterFlag;
  const int m = byPower ? (q.DiameterFlag || !q.RateFlag ? 5 : 3) : (q.DiameterFlag || !q.RateFlag ? 4 : 2);
  std::vector<int> equations, unknowns;
  if (jFree) unknowns.push_back(kJ);
  if (q.PitchFlag) unknowns.push_back(kPD);
  if (q.EARFlag) unknowns.push_back(kEAR);
  if (jFree || q.PitchFlag) equations.push_back(0);
  if (jFree && q.PitchFlag) equations.push_back(1);
  if (q.EARFlag) equations.push_back(2);

  // 9. Newton iteration with the tolerance ladder 1e-4, 1e-3, 1e-2.
  const double R = type == kCRP ? 2.0 : 1.0;
  const double p0 = CalcStaticPressure(rho, H);
  double tol = 0.0001;
  int passes = 1;
  int result = 1;
  bool extremeCavitation = false;
  double radius = 0.05, lastPD = 0.0;
  std::array<double, 3> dx{};
  for (;;) {
    // a. The model at the present point.
    ModelPoint mp;
    if (!model.At(n, D, EAR, PD * D, mp)) return Fail("KTKQ calculation");
    result = mp.result;
    // b.
    if (mp.tau < 0.01 && !extremeCavitation) {
      extremeCavitation = true;
      AddCalcError("Extreme cavitation");
      s.warnings.emplace_back("Extreme cavitation");
    }
    // c. Nozzle thrust, and the blade rows that share the load.
    double KTN = 0.0;
    if (!CalcNozzleKTN(KTN, propeller, propellerSeries, calcType, n, V, D, EAR, PD * D))
      return Fail("KTN calculation");
    const double TN = KTN * rho * n * n * D * D * D * D;
    // d. Thrust and power of one blade row for the cavitation criterion.
    const double eta0 = J * mp.KT / (2.0 * Pi * mp.KQ);
    double Tc = 0.0, Pd = 0.0;
    if (byPower) {
      Pd = (mp.KQc / mp.KQ) * q.P / R;
      Tc = Pd * 550.0 * q.etaR * eta0 / V;
    } else {
      Tc = (mp.KTc / mp.KT) * (q.T - TN) / R;
      Pd = V * Tc / (550.0 * q.etaR * eta0);
    }
    // e. The blade area the criterion asks for, within the series' range.
    double target = 0.0;
    switch (cavMethod) {
      case 0:
        target = CalcKellerEAR(Tc, V, n, D, Z, count, p0);
        break;
      case 1:
        target = CalcManenEAR(series, rho, n, D, Pd, p0);
        break;
      default:
        target = CalcBurrillEAR(cavMethod, PD * D, D, Z, Tc, CalcSigma07R(rho, V, n, D, H),
                                CalcDynamicPressure07R(rho, V, n, D));
        break;
    }
    target = std::clamp(target, limits->EARMin, limits->EARMax);
    // f.-g. The Newton step of the free unknowns.
    const double Kreq = byPower ? 550.0 * q.etaR * q.P / (2.0 * Pi * rho * n * n * n * std::pow(D, 5.0))
                                : q.T / (rho * n * n * D * D * D * D);
    const double C = Kreq / std::pow(J, m);
    const SizingEquations eq = SizingSystem(J, mp.KT, mp.KQ, mp.kt, mp.kq, byPower, C, m, EAR, target);
    if (!SolveSizingStep(eq, equations, unknowns, dx)) {
      s.stop = SizingStop::kSingular;
      return Fail("Propeller sizing [singular]");
    }
    // With J and P/D both free the Newton step must climb: along the demand curve the slope
    // of ln(eta) per unit P/D is sigma = -F2/g_J and its curvature about -(dF2/dPD)/g_J.
    // Where the step goes downhill, or the curve is not concave (the step would seek a
    // minimum or has nothing to seek), a step uphill of the present step radius replaces it,
    // J following the linearised demand.
    if (jFree && q.PitchFlag) {
      const double gJ = eq.dF[0][kJ], gP = eq.dF[0][kPD], gE = eq.dF[0][kEAR];
      if (gJ != 0.0) {
        const double sigma = -eq.F[1] / gJ;
        const double curvature = -(eq.dF[1][kPD] - eq.dF[1][kJ] * gP / gJ) / gJ;
        if (curvature >= 0.0 || dx[kPD] * sigma < 0.0) {
          dx[kPD] = sigma > 0.0 ? radius : -radius;
          dx[kJ] = -(eq.F[0] + gP * dx[kPD] + gE * dx[kEAR]) / gJ;
        }
      }
    }
    // h. Step control. Far from the answer the full Newton step of the efficiency condition
    // overshoots (the optimum is flat, so its derivative is small): the step is shortened,
    // direction kept, to the step radius in J and P/D (0.05 at first) and 0.1 in EAR. A P/D
    // step that turns back halves the radius, one that goes on widens it again: so the
    // iteration closes in on the optimum it has passed. Then each new value outside its
    // bound has its step cut to half the distance to the bound, and the dependent
    // quantities follow.
    if (q.PitchFlag && dx[kPD] != 0.0 && lastPD != 0.0)
      radius = dx[kPD] * lastPD < 0.0 ? 0.5 * radius : std::min(0.05, 1.5 * radius);
    const double shrink =
        std::max({1.0, std::fabs(dx[kJ]) / radius, std::fabs(dx[kPD]) / radius, std::fabs(dx[kEAR]) / 0.1});
    for (double& d : dx) d /= shrink;
    lastPD = dx[kPD];
    if (q.EARFlag) dx[kEAR] = LimitStep(EAR, dx[kEAR], limits->EARMin, limits->EARMax);
    if (jFree) dx[kJ] = LimitStep(J, dx[kJ], limits->JMin, jzf * PD);
    if (q.PitchFlag) dx[kPD] = LimitStep(PD, dx[kPD], std::max(J / jzf, pdLo), pdHi);
    J += dx[kJ];
    PD += dx[kPD];
    EAR += dx[kEAR];
    if (q.DiameterFlag)
      D = V / (n * J);
    else
      n = V / (J * D);
    s.passes++;
    s.totalPasses++;
    s.finalStep = dx;
    s.tolerance = tol;
    // j. The tolerance ladder (i follows it).
    if (++passes >= q.maxPasses) {
      if (tol == 0.0001) {
        tol = 0.001;
      } else if (tol == 0.001) {
        tol = 0.01;
      } else {
        s.stop = SizingStop::kMaxPasses;
        return Fail("Propeller sizing [max iterations]");
      }
      passes = 1;
      s.tolerance = tol;
    }
    // i. A pitch that creeps toward a bound of the series (tested with the tolerance in
    // force, so that a relaxed tolerance does not take the creep for convergence).
    if (q.PitchFlag && std::fabs(dx[kPD]) < tol && (PD - std::max(J / jzf, pdLo) < tol || pdHi - PD < tol)) {
      s.stop = SizingStop::kSeriesLimit;
      return Fail("Pitch is converging on a series limit. Manually set pitch to exceed the limit.");
    }
    // k.
    if (CalcCancelFlag()) {
      s.stop = SizingStop::kCancelled;
      return Fail("Calculation break");
    }
    // l.
    if (std::fabs(dx[kJ]) <= tol && std::fabs(dx[kPD]) <= tol && std::fabs(dx[kEAR]) <= tol) {
      // Steps shortened against a bound of J also come to nothing: the demand must be met.
      if ((jFree || q.PitchFlag) && std::fabs(eq.F[0]) > 0.05 * Kreq) {
        s.stop = SizingStop::kSeriesLimit;
        return Fail("Design point out of reach of the series");
      }
      break;
    }
  }
  point.n = n;
  point.D = D;
  point.Pitch = PD * D;
  point.EAR = EAR;
  if (!model.Eta(n, D, EAR, PD * D, point.Eta)) return Fail("KTKQ calculation");
  s.stop = SizingStop::kConverged;
  s.result = result;
  return result;
}

}  // namespace

int CalcOptimumPropeller(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                         clsVXPropellerSeries& propellerSeries, const SizingProblem& problem,
                         SizingPoint& point, SizingSummary* summary) {
  SetCalcLocation("calculating optimum propeller parameters");
  return Guarded([&] {
    return OptimumPropeller(water, propulsion, propeller, propellerSeries, problem, point, summary);
  });
}

namespace {

// One solution at the given flags, with the rules for the largest diameter: a small one for
// the power is taken at once, and a solved diameter above it is replaced by it.
struct Trial {
  int result = 0;
  SizingPoint point;
  int passes = 0;
  double tolerance = 0.0;
  std::array<double, 3> finalStep{};
};

// `rateAtMax`: with the diameter at its largest and the pitch kept, the rate is sized to
// meet the demand (the trials of the rate search hold the rate otherwise).
Trial SolveWithDiameterRules(clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                             clsVXPropeller& propeller, clsVXPropellerSeries& series, SizingProblem q,
                             const SizingPoint& start, SizingSummary& s, bool rateAtMax = false) {
  Trial t;
  t.point = start;
  // At the largest diameter a kept pitch keeps its ratio to the diameter given.
  auto holdLargestDiameter = [&] {
    if (!q.PitchFlag && start.D > 0.0) t.point.Pitch = start.Pitch * q.DMax / start.D;
    q.DiameterFlag = 0;
    if (rateAtMax && !q.PitchFlag) q.RateFlag = 1;
  };
  // 1. The power per square foot of the largest disc tells whether it is small.
  if (q.DiameterFlag && q.DMax > 0.0 && q.V > 0.0 && q.etaR > 0.0 &&
      StartingPower(q) / (q.DMax * q.DMax) > 100.0) {
    t.point.D = q.DMax;
    holdLargestDiameter();
    s.smallMaxDiameter = true;
  }
  // 2.
  t.result = CalcOptimumPropeller(water, propulsion, propeller, series, q, t.point, &s);
  if (t.result == 0 && (!q.DiameterFlag || s.stop == SizingStop::kInputs || s.stop == SizingStop::kCancelled))
    return t;
  // 3. Too large a diameter, or an overloaded blade: the largest diameter, held. So is a
  // diameter that the iteration could not find (it ran off the series toward a disc larger
  // than the largest).
  if (q.DiameterFlag && (t.result == 0 || t.point.D > q.DMax || t.result == 6 || t.point.EAR > 2.0)) {
    t.point = start;
    t.point.D = q.DMax;
    s.warnings.clear();
    holdLargestDiameter();
    t.result = CalcOptimumPropeller(water, propulsion, propeller, series, q, t.point, &s);
    if (t.result != 0 && !q.RateFlag && !q.PitchFlag) {
      // Nothing is left to meet the demand: the propeller stands, short of the design point.
      static const char* const kText =
          "The largest diameter cannot meet the design point with rate and pitch kept.";
      AddCalcError(kText);
      s.warnings.emplace_back(kText);
    }
  }
  s.diameterAtMax = t.result != 0 && !q.DiameterFlag && t.point.D == q.DMax;
  t.passes = s.passes;
  t.tolerance = s.tolerance;
  t.finalStep = s.finalStep;
  return t;
}

int SizeWithRules(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                  clsVXPropellerSeries& propellerSeries, const SizingProblem& problem, SizingPoint& point,
                  SizingSummary* summary) {
  SizingSummary local;
  SizingSummary& s = summary ? *summary : local;
  s = SizingSummary{};
  // 1.-3.
  Trial best = SolveWithDiameterRules(water, propulsion, propeller, propellerSeries, problem, point, s);
  if (best.result == 0) return Fail("propeller sizing");
  // 4.
  auto warnCavitation = [&](const Trial& t) {
    if (t.result != 6 && !(t.point.EAR > 2.0)) return;
    static const char* const kText = "Excessive cavitation is indicated. Thrust breakdown is likely.";
    AddCalcError(kText);
    if (std::find(s.warnings.begin(), s.warnings.end(), kText) == s.warnings.end())
      s.warnings.emplace_back(kText);
  };
  warnCavitation(best);

  // 5. The rate of best efficiency, when the rate and the diameter are both sized: each
  // trial holds the rate and sizes the diameter (at most the largest). With the diameter
  // kept, the Newton iteration has already found the best rate for it.
  if (problem.RateFlag && problem.DiameterFlag) {
    SizingProblem fixedRate = problem;
    fixedRate.RateFlag = 0;
    SizingSummary trialSummary;
    auto runAt = [&](double n) {
      SizingPoint start = point;
      start.n = n;
      trialSummary = SizingSummary{};
      Trial t = SolveWithDiameterRules(water, propulsion, propeller, propellerSeries, fixedRate, start,
                                       trialSummary, true);
      s.totalPasses += trialSummary.totalPasses;
      s.runs += trialSummary.runs;
      return t;
    };
    auto eta = [](const Trial& t) {
      return t.result == 0 ? -std::numeric_limits<double>::infinity() : t.point.Eta;
    };
    const double n1 = best.point.n;
    double step = 0.05 * n1;
    Trial lo = runAt(n1 - step), mid = best, hi = runAt(n1 + step);
    // The three rates must bracket a maximum, strictly on one side at least; otherwise they
    // walk toward the better side (upward when both are alike) with steps that double.
    auto bracketed = [&] {
      return eta(mid) >= eta(lo) && eta(mid) >= eta(hi) && (eta(mid) > eta(lo) || eta(mid) > eta(hi));
    };
    for (int walks = 0; !bracketed() && walks < 10; ++walks) {
      step *= 2.0;
      if (eta(lo) > eta(hi)) {
        if (lo.point.n - step <= 0.0) break;
        hi = mid;
        mid = lo;
        lo = runAt(mid.point.n - step);
      } else {
        lo = mid;
        mid = hi;
        hi = runAt(mid.point.n + step);
      }
    }
    if (!bracketed()) {
      // No maximum within reach: the best rate seen stands (the largest diameter usually
      // fixes the propeller whatever the rate).
      AddCalcError("Gear ratio solution [data]");
      s.warnings.emplace_back("Gear ratio solution [data]");
      for (const Trial* t : {&lo, &hi})
        if (eta(*t) > eta(mid)) mid = *t;
    } else {
      // A parabola through the three points gives the next rate; where its vertex leaves
      // the interval, the larger side is halved. The best point stays in the middle.
      double tol = 0.01;
      for (int pass = 1; pass <= 40; ++pass) {
        if (pass == 21) tol = 0.1;
        const double n0 = lo.point.n, nm = mid.point.n, n2 = hi.point.n;
        if (std::max(nm - n0, n2 - nm) <= tol * nm) break;
        const double e0 = eta(lo), em = eta(mid), e2 = eta(hi);
        const double num = (nm - n0) * (nm - n0) * (em - e2) - (nm - n2) * (nm - n2) * (em - e0);
        const double den = (nm - n0) * (em - e2) - (nm - n2) * (em - e0);
        double nv = den != 0.0 ? nm - 0.5 * num / den : nm;
        if (!(nv > n0 && nv < n2) || std::fabs(nv - nm) < 1e-6 * nm)
          nv = nm - n0 > n2 - nm ? 0.5 * (n0 + nm) : 0.5 * (nm + n2);
        Trial t = runAt(nv);
        ++s.gearRatioPasses;
        if (eta(t) > em) {
          (nv < nm ? hi : lo) = mid;
          mid = t;
        } else {
          (nv < nm ? lo : hi) = t;
        }
      }
    }
    if (mid.result == 0) return Fail("propeller sizing");
    best = mid;
    s.diameterAtMax = best.point.D == problem.DMax;
    warnCavitation(best);
  }
  point = best.point;
  s.result = best.result;
  s.passes = best.passes;
  s.tolerance = best.tolerance;
  s.finalStep = best.finalStep;
  return best.result;
}

}  // namespace

int SizePropeller(clsVXWaterProperties& water, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                  clsVXPropellerSeries& propellerSeries, const SizingProblem& problem, SizingPoint& point,
                  SizingSummary* summary) {
  SetCalcLocation("sizing propeller");
  return Guarded(
      [&] { return SizeWithRules(water, propulsion, propeller, propellerSeries, problem, point, summary); });
}

}  // namespace velmar
