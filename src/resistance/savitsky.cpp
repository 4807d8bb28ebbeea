// Savitsky, D. (1964) "Hydrodynamic design of planing hulls", Marine Technology 1(1), 71-95:
//   lift     C_L0 = tau^1.1 (0.0120 lambda^0.5 + 0.0055 lambda^2.5 / C_V^2)
//            C_Lbeta = C_L0 - 0.0065 beta C_L0^0.60 = Delta / (0.5 rho V^2 b^2)
//   wetted   L_K + L_C = 2 lambda b,  L_K - L_C = b tan(beta) / (pi tan(tau))
//   pressure L_p = lambda b (0.75 - 1 / (5.21 C_V^2 / lambda^2 + 2.39))
//   friction V_1 = V sqrt(1 - C_Lbeta,d / (lambda cos tau)), the dynamic part
//            C_L0,d = 0.0120 lambda^0.5 tau^1.1 taken through the deadrise correction;
//            D_f = 0.5 rho V_1^2 (lambda b^2 / cos beta) (C_F + Delta C_F), C_F at V_1 lambda b / nu
//   simple case (all forces through the CG, thrust horizontal): L_p = LCG,
//            D = Delta tan tau + D_f / cos tau
//   general case: the trim is the root of the moment about the CG,
//            Delta (c cos(tau + eps) / cos eps - f sin tau / cos eps)
//            + D_f (a - c tan eps - f / cos eps) = 0,  c = LCG - L_p,  a = VCG - (b/4) tan beta,
//            D = T cos(tau + eps),  T = (Delta sin tau + D_f) / cos eps,
//   the exact rearrangement of N c + D_f a - T f = 0 (Savitsky's printed form is its small-angle
//   case).
// Angles in degrees inside the empirical fits, in radians in the trigonometry. The lift, centre
// of pressure and mean bottom speed are corroborated by several public implementations; the
// L_K - L_C relation is single source.
#include "resistance/savitsky.h"

#include <cmath>
#include <exception>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "resistance/friction.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

constexpr int kBisections = 200;

// The root of `f` between `lo` and `hi`, where f(lo) and f(hi) differ in sign.
template <class F>
double Bisect(F f, double lo, double hi) {
  const bool riseAtHi = f(hi) > 0.0;
  for (int i = 0; i < kBisections; ++i) {
    const double mid = 0.5 * (lo + hi);
    if (mid <= lo || mid >= hi) break;
    ((f(mid) > 0.0) == riseAtHi ? hi : lo) = mid;
  }
  return 0.5 * (lo + hi);
}

// An upper bound for a root of a rising function `f` with f(lo) < 0, by doubling from `start`;
// 0 when there is none in reach.
template <class F>
double UpperBracket(F f, double start) {
  double hi = start;
  for (int i = 0; i < 80; ++i, hi *= 2.0)
    if (f(hi) > 0.0) return hi;
  return 0.0;
}

// The zero-deadrise coefficient of a lift coefficient with deadrise: the root c of
// c - 0.0065 beta c^0.6 = clBeta. f(0) < 0 and f rises beyond its only minimum.
double FlatPlateLift(double clBeta, double beta) {
  auto f = [&](double c) { return c - 0.0065 * beta * std::pow(c, 0.6) - clBeta; };
  const double hi = UpperBracket(f, clBeta + 1.0);
  return hi > 0.0 ? Bisect(f, 0.0, hi) : 0.0;
}

double PressureCentre(double lambda, double beam, double cv) {
  return lambda * beam * (0.75 - 1.0 / (5.21 * cv * cv / (lambda * lambda) + 2.39));
}

// The wetted length that gives `cl0` at trim `trimDeg`: 0.0120 lambda^0.5 + 0.0055
// lambda^2.5 / C_V^2 rises with lambda.
double LengthOfLift(double cl0, double trimDeg, double cv) {
  const double target = cl0 / std::pow(trimDeg, 1.1);
  auto f = [&](double l) { return 0.0120 * std::sqrt(l) + 0.0055 * std::pow(l, 2.5) / (cv * cv) - target; };
  const double hi = UpperBracket(f, 1.0);
  return hi > 0.0 ? Bisect(f, 0.0, hi) : 0.0;
}

// Everything that follows from a wetted length and a trim: lengths, mean bottom speed and
// friction. False when the mean bottom speed would be imaginary.
bool WettedBottom(const SavitskyInput& in, double lambda, double trimDeg, SavitskyResult& r) {
  const double beta = in.deadriseDeg, b = in.beam;
  const double tau = trimDeg * DegToRad, cosBeta = std::cos(beta * DegToRad);
  r.lambda = lambda;
  r.trimDeg = trimDeg;
  r.pressureCentre = PressureCentre(lambda, b, r.cv);
  const double spread = b * std::tan(beta * DegToRad) / (Pi * std::tan(tau));
  r.keelLength = lambda * b + 0.5 * spread;
  r.chineLength = lambda * b - 0.5 * spread;
  const double cl0d = 0.0120 * std::sqrt(lambda) * std::pow(trimDeg, 1.1);
  const double clBetaD = cl0d - 0.0065 * beta * std::pow(cl0d, 0.6);
  const double radicand = 1.0 - clBetaD / (lambda * std::cos(tau));
  if (!(radicand >= 0.0)) return false;
  r.meanBottomSpeed = in.speed * std::sqrt(radicand);
  const double wettedLength = lambda * b;
  r.reynolds = r.meanBottomSpeed * wettedLength / in.viscosity;
  r.cf =
      in.friction ? in.friction(r.reynolds, wettedLength, r.meanBottomSpeed) : CalcFrictionITTC57(r.reynolds);
  r.frictionDrag = 0.5 * in.density * r.meanBottomSpeed * r.meanBottomSpeed * (lambda * b * b / cosBeta) *
                   (r.cf + in.frictionAllowance);
  return true;
}

// The general case at trim `trimDeg`: the moment about the centre of gravity, with the result
// filled in; false when the trim gives no wetted bottom.
bool GeneralMoment(const SavitskyInput& in, double trimDeg, SavitskyResult& r, double& moment) {
  const double lambda = LengthOfLift(r.cl0, trimDeg, r.cv);
  if (!(lambda > 0.0) || !WettedBottom(in, lambda, trimDeg, r)) return false;
  const double tau = trimDeg * DegToRad, eps = in.thrustAngleDeg * DegToRad;
  const double c = in.lcg - r.pressureCentre;
  const double a = in.vcg - 0.25 * in.beam * std::tan(in.deadriseDeg * DegToRad);
  const double f = in.thrustOffset;
  moment = in.weight * (c * std::cos(tau + eps) / std::cos(eps) - f * std::sin(tau) / std::cos(eps)) +
           r.frictionDrag * (a - c * std::tan(eps) - f / std::cos(eps));
  const double thrust = (in.weight * std::sin(tau) + r.frictionDrag) / std::cos(eps);
  r.drag = thrust * std::cos(tau + eps);
  r.frictionShare = r.frictionDrag * std::cos(tau + eps) / std::cos(eps);
  return true;
}

}  // namespace

bool CalcSavitskyEquilibrium(const SavitskyInput& in, SavitskyResult& out, std::string& failure) {
  out = SavitskyResult{};
  if (!(in.weight > 0.0 && in.beam > 0.0 && in.speed > 0.0 && in.density > 0.0 && in.viscosity > 0.0 &&
        in.gravity > 0.0 && in.lcg > 0.0)) {
    failure = "Savitsky planing inputs";
    return false;
  }
  out.cv = in.speed / std::sqrt(in.gravity * in.beam);
  out.clBeta = in.weight / (0.5 * in.density * in.speed * in.speed * in.beam * in.beam);
  out.cl0 = FlatPlateLift(out.clBeta, in.deadriseDeg);
  if (!(out.cl0 > 0.0)) {
    failure = "Savitsky lift coefficient";
    return false;
  }

  if (!in.generalCase) {
    // The wetted length whose centre of pressure stands at the centre of gravity (L_p rises
    // with lambda from 0), then the trim that gives the lift at that length.
    auto f = [&](double l) { return PressureCentre(l, in.beam, out.cv) - in.lcg; };
    const double hi = UpperBracket(f, 1.0);
    if (!(hi > 0.0)) {
      failure = "Savitsky wetted length";
      return false;
    }
    const double lambda = Bisect(f, 0.0, hi);
    const double trimDeg =
        std::pow(out.cl0 / (0.0120 * std::sqrt(lambda) + 0.0055 * std::pow(lambda, 2.5) / (out.cv * out.cv)),
                 1.0 / 1.1);
    if (!WettedBottom(in, lambda, trimDeg, out)) {
      failure = "Savitsky mean bottom velocity";
      return false;
    }
    const double tau = trimDeg * DegToRad;
    out.frictionShare = out.frictionDrag / std::cos(tau);
    out.drag = in.weight * std::tan(tau) + out.frictionShare;
    return true;
  }

  // General case: the first change of sign of the moment from small trims upward, then
  // bisection (the moment is usually monotonic between 1 and 15 degrees; a secant step alone
  // can fail where the wetted length runs to 0).
  constexpr double kTrimStep = 0.25, kTrimMax = 30.0;
  double lo = 0.0, loMoment = 0.0;
  bool haveLo = false;
  for (double t = kTrimStep; t <= kTrimMax + 1e-9; t += kTrimStep) {
    double m = 0.0;
    SavitskyResult r = out;
    if (!GeneralMoment(in, t, r, m)) {
      haveLo = false;
      continue;
    }
    if (haveLo && (m > 0.0) != (loMoment > 0.0)) {
      auto moment = [&](double trim) {
        SavitskyResult s = out;
        double mm = 0.0;
        GeneralMoment(in, trim, s, mm);
        return mm;
      };
      const double trimDeg = Bisect(moment, lo, t);
      double m0 = 0.0;
      if (!GeneralMoment(in, trimDeg, out, m0)) break;
      return true;
    }
    lo = t;
    loMoment = m;
    haveLo = true;
  }
  failure = "Savitsky running trim";
  return false;
}

// Blount, D.L. and Fox, D.L. (1976) "Small-craft power prediction", Marine Technology 13(1),
// 14-45. SINGLE SOURCE (one public script, matching the published form as remembered by the
// collector); the paper's range of validity is not confirmed.
double CalcBlountFoxMultiplier(double fnv, double lcgOverBeam) {
  return 0.98 + 2.0 * std::pow(lcgOverBeam, 1.45) * std::exp(-2.0 * (fnv - 0.85)) -
         3.0 * lcgOverBeam * std::exp(-3.0 * (fnv - 0.85));
}

bool CalcHullDragSavitsky(SavitskyRow& row, const clsVXHull& hull, const SavitskyOptions& o,
                          double speedFtS) {
  SetCalcLocation("Savitsky planing drag");
  row = SavitskyRow{};
  try {
    // The stations: without an aft station (its chine beam not given) the forward station
    // describes the whole bottom, and the station functions are not asked.
    const bool aftStation = hull.Raw(FieldId(clsVXHull::Field::AftStationChineBeam)) > 0.0;
    SavitskyInput in;
    in.weight = hull.Displacement(kLb);  // pounds of mass weigh as many pounds force
    const double vol = hull.DisplacementVolume(kFt);
    in.lcg = hull.XGravityFwdTr(kFt);
    row.beam = aftStation ? hull.CalcEffectiveChineBeam(in.lcg, kFt) : hull.FwdStationChineBeam(kFt);
    row.deadriseDeg = aftStation ? hull.CalcEffectiveAngleDeadriseDeg(0.5 * in.lcg, kFt)
                                 : hull.FwdStationAngleDeadriseDeg();
    if (o.thrustLine) {
      // The centre of gravity above the keel at the LCG: the chine's depth there plus the rise
      // of the chine above the keel, less the centre's depth below the waterline.
      const double deadriseAtG =
          aftStation ? hull.CalcEffectiveAngleDeadriseDeg(in.lcg, kFt) : hull.FwdStationAngleDeadriseDeg();
      const double chineDepth = aftStation ? hull.CalcEffectiveZChineHeightBelowWL(in.lcg, kFt)
                                           : hull.FwdStationZChineHeightBelowWL(kFt);
      const double zg = hull.ZGravityBelowWL(kFt);
      in.vcg = chineDepth + 0.5 * row.beam * std::tan(deadriseAtG * DegToRad) - zg;
      // The thrust line through the propulsor, rising forward at the shaft angle to the
      // waterline; epsilon is that angle less the keel's static trim, f the distance of the
      // centre of gravity above the line.
      const double shaftDeg = hull.AngleShaftDeg();
      const double s = shaftDeg * DegToRad;
      const double xp = hull.XPropulsorFwdTr(kFt), zp = hull.ZPropulsorBelowWL(kFt);
      const double keelTrimDeg = aftStation ? hull.CalcStaticEffectiveBaselineTrimAngleDeg() : 0.0;
      in.generalCase = true;
      in.thrustAngleDeg = o.thrustFactor * (shaftDeg - keelTrimDeg);
      in.thrustOffset = o.thrustFactor * ((zp - zg) * std::cos(s) - (in.lcg - xp) * std::sin(s));
    }
    if (PassHullErrors(hull)) return false;

    in.beam = row.beam;
    in.deadriseDeg = row.deadriseDeg;
    in.speed = speedFtS;
    in.density = o.density;
    in.viscosity = o.viscosity;
    in.gravity = GravityFt;
    in.frictionAllowance = o.frictionAllowance;
    in.friction = o.friction;
    std::string failure;
    if (!CalcSavitskyEquilibrium(in, row.equilibrium, failure)) {
      AddCalcError(failure);
      return false;
    }
    const SavitskyResult& r = row.equilibrium;
    row.speedCheck = r.cv < 0.6 ? 0 : (r.cv <= 13.0 ? 1 : 2);
    row.fnv = speedFtS / std::sqrt(GravityFt * std::cbrt(vol));
    // The multiplier's range is not confirmed; below FnV 1.0 it loses its meaning (it turns
    // negative near 0.85 for small LCG/B), and there it is 1.
    if (o.humpMultiplier && row.fnv >= 1.0) {
      const double m = CalcBlountFoxMultiplier(row.fnv, in.lcg / row.beam);
      row.humpMultiplier = 1.0 + o.humpFactor * (m - 1.0);
    }
    row.drag = r.drag * row.humpMultiplier;
    row.wettedArea = r.lambda * row.beam * row.beam / std::cos(row.deadriseDeg * DegToRad);
    if (!std::isfinite(row.drag)) {
      AddCalcError("Overflow");
      return false;
    }
    return true;
  } catch (const std::exception& e) {
    AddCalcError(e.what());
    return false;
  }
}

}  // namespace velmar
