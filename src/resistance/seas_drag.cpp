// Added resistance in waves by STAWAVE-1, STAWAVE-2 and Kwon's speed loss.
#include "resistance/seas_drag.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/constants.h"
#include "core/diagnostics.h"

namespace velmar {
namespace {

bool Fail(const std::string& text) {
  AddCalcError(text);
  return false;
}

// Kwon's speed reduction coefficient C_U = a + b Fr + c Fr^2 by block coefficient (Kwon 2008,
// Table 2). The C_B 0.75 to 0.85 rows hold for laden or normal condition, or for ballast.
struct KwonRow {
  double cb, a, b, c;
};
constexpr KwonRow kKwonNormal[] = {
    {0.55, 1.7, -1.4, -7.4},    {0.60, 2.2, -2.5, -9.7},   {0.65, 2.6, -3.7, -11.6}, {0.70, 3.1, -5.3, -12.4},
    {0.75, 2.4, -10.6, -9.5},   {0.80, 2.6, -13.1, -15.1}, {0.85, 3.1, -18.7, 28.0},
};
constexpr KwonRow kKwonBallast[] = {
    {0.55, 1.7, -1.4, -7.4},  {0.60, 2.2, -2.5, -9.7},   {0.65, 2.6, -3.7, -11.6}, {0.70, 3.1, -5.3, -12.4},
    {0.75, 2.6, -12.5, -13.5}, {0.80, 3.0, -16.3, -21.6}, {0.85, 3.4, -20.9, 31.8},
};

// The published table gives C_U at seven block coefficients and says nothing between them: the
// value is interpolated on a straight line between the two neighbours and held at the ends.
// Below C_B 0.75 the table has no ballast rows, and the normal ones stand for ballast too.
double KwonCU(double cb, double fn, bool ballast) {
  const auto& rows = ballast ? kKwonBallast : kKwonNormal;
  auto cu = [fn](const KwonRow& r) { return r.a + r.b * fn + r.c * fn * fn; };
  const size_t n = std::size(rows);
  if (cb <= rows[0].cb) return cu(rows[0]);
  for (size_t i = 1; i < n; ++i) {
    if (cb <= rows[i].cb) {
      const double t = (cb - rows[i - 1].cb) / (rows[i].cb - rows[i - 1].cb);
      return cu(rows[i - 1]) + t * (cu(rows[i]) - cu(rows[i - 1]));
    }
  }
  return cu(rows[n - 1]);
}

// The weather direction factor, tabulated as 2 C_beta by sector: head 0-30, bow 30-60, beam
// 60-150, following 150-180 degrees.
double KwonCBeta(double bn, double angleDeg) {
  double a = std::fmod(std::fabs(angleDeg), 360.0);
  if (a > 180.0) a = 360.0 - a;
  double twice;
  if (a <= 30.0)
    twice = 2.0;
  else if (a <= 60.0)
    twice = 1.7 - 0.03 * (bn - 4.0) * (bn - 4.0);
  else if (a <= 150.0)
    twice = 0.9 - 0.06 * (bn - 6.0) * (bn - 6.0);
  else
    twice = 0.4 - 0.03 * (bn - 8.0) * (bn - 8.0);
  return 0.5 * twice;
}

}  // namespace

double Stawave1(const WaveShip& s, double waveHeight) {
  return s.rho * s.g * waveHeight * waveHeight * s.beam * std::sqrt(s.beam / s.bowLength) / 16.0;
}

Stawave2Transfer Stawave2Regular(const WaveShip& s, double omega, double speed) {
  Stawave2Transfer r;
  const double L = s.length, B = s.beam, T = s.draft, g = s.g;
  const double fr = speed / std::sqrt(g * L);
  // Motion part: r_AW of the non-dimensional frequency; nothing at rest (the Fr^1.5 factor).
  if (fr > 0.0) {
    const double wbar = std::sqrt(L / g) * std::cbrt(s.kyy) / (1.17 * std::pow(fr, -0.143)) * omega;
    const double a1 = 60.3 * std::pow(s.cb, 1.34);
    const double b1 = wbar < 1.0 ? 11.0 : -8.5;
    const double d1 = wbar < 1.0 ? 14.0 : -566.0 * std::pow(L / B, -2.66);
    const double raw = std::pow(wbar, b1) * std::exp(b1 / d1 * (1.0 - std::pow(wbar, d1))) * a1 *
                       std::pow(fr, 1.5) * std::exp(-3.5 * fr);
    r.motion = 4.0 * s.rho * g * B * B / L * raw;
  }
  // Reflection part, with the modified Bessel functions of order 1 at 1.5 k T.
  const double x = 1.5 * omega * omega / g * T;
  const double i1 = std::cyl_bessel_i(1.0, x), k1 = std::cyl_bessel_k(1.0, x);
  const double f1 = 0.692 * std::pow(speed / std::sqrt(T * g), 0.769) + 1.81 * std::pow(s.cb, 6.95);
  const double alpha1 = Pi * Pi * i1 * i1 / (Pi * Pi * i1 * i1 + k1 * k1) * f1;
  r.reflection = 0.5 * s.rho * g * B * alpha1;
  return r;
}

Stawave2Transfer Stawave2Irregular(const WaveShip& s, double waveHeight, double t01, double speed) {
  // Modified Pierson-Moskowitz spectrum (ITTC 1978) of the wind sea.
  const double t4 = t01 * t01 * t01 * t01;
  const double A = 173.0 * waveHeight * waveHeight / t4, Bs = 691.0 / t4;
  constexpr double kLo = 0.2, kHi = 4.0;
  constexpr int kPanels = 800;
  const double h = (kHi - kLo) / kPanels;
  Stawave2Transfer sum;
  for (int i = 0; i <= kPanels; ++i) {
    const double w = kLo + i * h;
    const double spectrum = A / std::pow(w, 5.0) * std::exp(-Bs / (w * w * w * w));
    const double weight = (i == 0 || i == kPanels) ? 1.0 : (i % 2 ? 4.0 : 2.0);
    const Stawave2Transfer t = Stawave2Regular(s, w, speed);
    sum.motion += weight * t.motion * spectrum;
    sum.reflection += weight * t.reflection * spectrum;
  }
  sum.motion *= 2.0 * h / 3.0;
  sum.reflection *= 2.0 * h / 3.0;
  return sum;
}

double MeanPeriodFromModal(double tp) { return tp * std::pow(691.0 / 1.25, 0.25) / (2.0 * Pi); }

KwonSpeedLoss KwonPercentSpeedLoss(double bn, double angleDeg, double fn, double cb, double volume,
                                   int condition) {
  KwonSpeedLoss k;
  k.cBeta = KwonCBeta(bn, angleDeg);
  k.cU = KwonCU(cb, fn, condition == kSeasBallast);
  const double bn65 = std::pow(bn, 6.5), v23 = std::pow(volume, 2.0 / 3.0);
  switch (condition) {
    case kSeasBallast:
      k.cForm = 0.7 * bn + bn65 / (2.7 * v23);
      break;
    case kSeasContainerShip:
      k.cForm = 0.7 * bn + bn65 / (22.0 * v23);
      break;
    default:
      k.cForm = 0.5 * bn + bn65 / (2.7 * v23);
      break;
  }
  k.percent = k.cBeta * k.cU * k.cForm;
  return k;
}

bool SpeedLossDrag(double calmDrag, double speed, const std::function<double(double)>& lossAt, double& drag) {
  drag = 0.0;
  if (!(speed > 0.0)) return true;
  // The speed made under the condition at the power of calm-water speed vc, less the speed
  // sought: its root nearest to `speed` is bracketed stepwise from there, then bisected.
  auto excess = [&](double vc) { return vc * (1.0 - lossAt(vc)) - speed; };
  double lo = speed, hi = speed;
  if (excess(speed) < 0.0) {
    while (excess(hi) < 0.0) {
      lo = hi;
      hi *= 1.05;
      if (hi > 10.0 * speed) return false;
    }
  } else {
    while (excess(lo) > 0.0) {
      hi = lo;
      lo *= 0.95;
      if (lo < 0.1 * speed) return false;
    }
  }
  for (int i = 0; i < 200 && hi - lo > 1e-12 * speed; ++i) {
    const double mid = 0.5 * (lo + hi);
    (excess(mid) < 0.0 ? lo : hi) = mid;
  }
  const double ratio = 0.5 * (lo + hi) / speed;
  drag = calmDrag * (ratio * ratio * ratio - 1.0);
  return true;
}

bool CalcSeasDrag(double& dragN, clsVXEnvironment& environment, const clsVXHull& hull,
                  clsVXWaterProperties& water, const clsVXResistance& resistance, double speedFtPerSec,
                  double calmDragN) {
  SetCalcLocation("Sea-state drag prediction");
  dragN = 0.0;
  const int method = resistance.SeasDragMethod();
  const std::string label = resistance.SeasDragMethodLabel(method);
  if (method < kSeasStawave1) return Fail("Sea-state drag method not available: " + label);
  WaveShip s;
  s.length = hull.LengthWL(kM);
  s.beam = hull.BeamWLMax(kM);
  s.draft = hull.DraftSubmergedMax(kM);
  s.cb = hull.CoefBlock();
  s.volume = hull.DisplacementVolume(kM);
  s.rho = water.Density(kKgPerM3);
  s.kyy = environment.SeasRadiusGyrationPitchRatio();
  s.bowLength = environment.SeasLengthBowWL(kM);
  const double hs = environment.SeasSignificantWaveHeight(kM);
  const double tp = environment.SeasModalWavePeriodSec();
  const double bn = environment.SeasBeaufortNumber();
  const double angle = environment.SeasWaveAngleOffBowDeg();
  const int condition = environment.SeasLoadingCondition();
  if (environment.ErrorsFound()) {
    AddCalcErrors(environment.Errors());
    return false;
  }
  if (water.ErrorsFound()) {
    AddCalcErrors(water.Errors());
    return false;
  }
  const double speed = speedFtPerSec * 0.3048;
  switch (method) {
    case kSeasStawave1:
      if (!(s.bowLength > 0.0)) return Fail("Sea-state drag (" + label + ") needs: Bow length on waterline");
      dragN = Stawave1(s, hs);
      return true;
    case kSeasStawave2: {
      if (!(s.kyy > 0.0)) return Fail("Sea-state drag (" + label + ") needs: Pitch radius of gyration ratio");
      if (hs > 0.0 && !(tp > 0.0)) return Fail("Sea-state drag (" + label + ") needs: Modal wave period");
      if (!(hs > 0.0)) return true;
      const Stawave2Transfer r = Stawave2Irregular(s, hs, MeanPeriodFromModal(tp), speed);
      dragN = r.motion + r.reflection;
      return true;
    }
    case kSeasKwon: {
      auto loss = [&](double vc) {
        const double fn = vc / std::sqrt(GravitySI * s.length);
        return 0.01 * KwonPercentSpeedLoss(bn, angle, fn, s.cb, s.volume, condition).percent;
      };
      if (!SpeedLossDrag(calmDragN, speed, loss, dragN))
        return Fail("Sea-state drag (" + label + "): no calm-water speed of equal power");
      return true;
    }
    default:
      return Fail("Sea-state drag method not available: " + label);
  }
}

}  // namespace velmar
