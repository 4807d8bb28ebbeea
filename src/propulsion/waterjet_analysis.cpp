// The waterjet in the prediction. A maker gives, for a few power settings, the thrust of one
// jet over ship speed; the inlet's wake and the jet's losses are inside those curves, so the
// jet is read at ship speed. Between the power curves the thrust goes as a power of the
// power (log-log interpolation), which is what an ideal jet does at a fixed speed (thrust
// ~ power^(2/3) at zero speed) and follows the maker's curves closely where they are dense.
// The impeller follows the pump affinity laws: at fixed geometry P ~ RPM^3.
#include "propulsion/waterjet_analysis.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/constants.h"
#include "core/diagnostics.h"

namespace velmar {
namespace {

// One power curve read at the ship speed: its power, its thrust there, and how many of the
// maker's points around the speed lie in the cavitation zone.
struct CurveAt {
  double power = 0.0, thrust = 0.0;
  int cavPoints = 0, points = 0;
};

// The thrust of power series s at ship speed V (ft/s): linear between its points, the end
// segments carried on beyond them. The two points used carry their cavitation zone.
bool ThrustOfSeriesAt(const clsVXWaterjet& jet, int s, double V, CurveAt& c) {
  const int count = std::clamp(jet.PerformanceCount(s), 0, kWaterjetMaxPoints);
  if (count < 1) return false;
  struct Pt {
    double v, t;
    int cav;
  };
  std::vector<Pt> pts;
  for (int p = 0; p < count; ++p)
    pts.push_back({jet.Speed(s, p, kFtPerSec), jet.Thrust(s, p, kLbf), jet.CavZoneStatus(s, p)});
  std::stable_sort(pts.begin(), pts.end(), [](const Pt& a, const Pt& b) { return a.v < b.v; });
  c.power = jet.Power(s, kHp);
  if (count == 1) {
    c.thrust = pts[0].t;
    c.cavPoints = pts[0].cav != 0;
    c.points = 1;
    return true;
  }
  size_t k = 0;
  while (k + 2 < pts.size() && V > pts[k + 1].v) ++k;
  const Pt &a = pts[k], &b = pts[k + 1];
  c.thrust = b.v == a.v ? a.t : a.t + (V - a.v) * (b.t - a.t) / (b.v - a.v);
  c.cavPoints = (a.cav != 0) + (b.cav != 0);
  c.points = 2;
  return true;
}

// The power curves with a positive power and a positive thrust at V, by power.
std::vector<CurveAt> CurvesAt(const clsVXWaterjet& jet, double V) {
  std::vector<CurveAt> curves;
  const int count = std::clamp(jet.PowerSeriesCount(), 0, kWaterjetMaxPowerSeries);
  for (int s = 0; s < count; ++s) {
    CurveAt c;
    if (ThrustOfSeriesAt(jet, s, V, c) && c.power > 0.0 && c.thrust > 0.0) curves.push_back(c);
  }
  std::stable_sort(curves.begin(), curves.end(),
                   [](const CurveAt& a, const CurveAt& b) { return a.power < b.power; });
  return curves;
}

// The pair of curves to interpolate between: the one whose key range holds x, else the
// outer pair on x's side. `key` picks thrust or power.
template <class Key>
size_t PairFor(const std::vector<CurveAt>& curves, double x, Key key) {
  size_t k = 0;
  while (k + 2 < curves.size() && x > key(curves[k + 1])) ++k;
  return k;
}

// log y = log ya + (log x - log xa) (log yb - log ya) / (log xb - log xa); with one curve,
// or two with the same x, the exponent `single`.
double LogLog(double x, double xa, double ya, double xb, double yb, double single) {
  const double dx = std::log(xb) - std::log(xa);
  const double slope = dx != 0.0 ? (std::log(yb) - std::log(ya)) / dx : single;
  return ya * std::exp(slope * (std::log(x) - std::log(xa)));
}

int CavZone(const CurveAt& a, const CurveAt* b) {
  const int flagged = a.cavPoints + (b ? b->cavPoints : 0);
  const int points = a.points + (b ? b->points : 0);
  return flagged == 0 ? 0 : flagged == points ? 2 : 1;
}

bool NoCurves() {
  AddCalcError("Waterjet thrust data do not cover the speed");
  return false;
}

// The constant k of RPM = k P^(1/3) at ship speed V.
double ImpellerConstant(const clsVXWaterjet& jet, double V) {
  auto k = [](double rpm, double power) { return rpm > 0.0 && power > 0.0 ? rpm / std::cbrt(power) : 0.0; };
  const int i = jet.ImpellerIndex();
  if (jet.ImpellerCount() > 0 && i >= 0 && i < std::min(jet.ImpellerCount(), kWaterjetMaxImpellers)) {
    const double k1 = k(jet.ImpellerRPM(i), jet.ImpellerPower(i, kHp));
    const double k2 = k(jet.ImpellerCorrectedRPM(i), jet.ImpellerCorrectedPower(i, kHp));
    const double v1 = jet.ImpellerSpeed(i, kFtPerSec), v2 = jet.ImpellerCorrectedSpeed(i, kFtPerSec);
    if (k1 > 0.0 && jet.SpeedCorrection() == 1 && k2 > 0.0 && v2 != v1) {
      const double f = std::clamp((V - v1) / (v2 - v1), 0.0, 1.0);
      return k1 + f * (k2 - k1);
    }
    if (k1 > 0.0) return k1;
  }
  return k(jet.MaxRatedRPM(), jet.MaxRatedPower(kHp));
}

}  // namespace

bool WaterjetPowerForThrust(const clsVXWaterjet& waterjet, double V, double thrust, WaterjetPoint& point) {
  point = WaterjetPoint{};
  const std::vector<CurveAt> curves = CurvesAt(waterjet, V);
  if (curves.empty()) return NoCurves();
  point.thrust = thrust;
  if (thrust > 0.0) {
    const CurveAt& a = curves[PairFor(curves, thrust, [](const CurveAt& c) { return c.thrust; })];
    const CurveAt* b = curves.size() > 1 ? &a + 1 : nullptr;
    point.power = b ? LogLog(thrust, a.thrust, a.power, b->thrust, b->power, 1.5)
                    : LogLog(thrust, a.thrust, a.power, a.thrust, a.power, 1.5);
    point.cavZone = CavZone(a, b);
  }
  point.rpm = WaterjetRPMForPower(waterjet, V, point.power);
  return true;
}

bool WaterjetThrustForPower(const clsVXWaterjet& waterjet, double V, double power, WaterjetPoint& point) {
  point = WaterjetPoint{};
  const std::vector<CurveAt> curves = CurvesAt(waterjet, V);
  if (curves.empty()) return NoCurves();
  point.power = power;
  if (power > 0.0) {
    const CurveAt& a = curves[PairFor(curves, power, [](const CurveAt& c) { return c.power; })];
    const CurveAt* b = curves.size() > 1 ? &a + 1 : nullptr;
    point.thrust = b ? LogLog(power, a.power, a.thrust, b->power, b->thrust, 1.0 / 1.5)
                     : LogLog(power, a.power, a.thrust, a.power, a.thrust, 1.0 / 1.5);
    point.cavZone = CavZone(a, b);
  }
  point.rpm = WaterjetRPMForPower(waterjet, V, power);
  return true;
}

double WaterjetRPMForPower(const clsVXWaterjet& waterjet, double V, double power) {
  return power > 0.0 ? ImpellerConstant(waterjet, V) * std::cbrt(power) : 0.0;
}

double WaterjetPowerForRPM(const clsVXWaterjet& waterjet, double V, double rpm) {
  const double k = ImpellerConstant(waterjet, V);
  return k > 0.0 && rpm > 0.0 ? std::pow(rpm / k, 3.0) : 0.0;
}

bool CalcWaterjetAnalysis(int hullCount, clsVXPropulsion& propulsion, clsVXWaterjet& waterjet,
                          clsVXSpeedPerformance& sp, int row, const WaterjetPoint& point) {
  SetCalcLocation("Calculating waterjet analysis");
  using Col = clsVXSpeedPerformance::Field;
  const int countPerHull = std::max(propulsion.PropulsorCountPerHull(), 1);
  double gearRatio = propulsion.GearRatio();
  double gearEff = propulsion.GearEfficiency();
  double shaftEff = propulsion.ShaftEfficiency();
  if (propulsion.ErrorsFound()) {
    AddCalcErrors(propulsion.Errors());
    return false;
  }
  if (!(gearRatio > 0.0)) gearRatio = 1.0;
  if (!(gearEff > 0.0)) gearEff = 1.0;
  if (!(shaftEff > 0.0)) shaftEff = 1.0;
  const int jets = countPerHull * std::max(hullCount, 1);
  const double V = sp.Speed(row, kFtPerSec);
  const double t = sp.ThrustDeduction(row);
  const double R = sp.DragTotal(row, kLbf);

  const double T = point.thrust, Pd = point.power, rpm = point.rpm, n = rpm / 60.0;
  const double Ps = Pd / shaftEff, Pb = Ps / gearEff;
  const double etaJet = Pd > 0.0 ? T * V / (550.0 * Pd) : 0.0;
  const double qpc = (1.0 - t) * etaJet;
  const double Td = (1.0 - t) * T * jets;
  sp.PropulsorRPM(row, rpm);
  sp.EngineRPM(row, rpm * gearRatio);
  sp.PropulsorThrust(row, kLbf, T);
  sp.TotalDeliveredThrust(row, kLbf, Td);
  sp.TotalNetTowpull(row, kLbf, Td - R);
  sp.PropulsorTorque(row, kLbfFt, n > 0.0 ? 550.0 * Pd / (2.0 * Pi * n) : 0.0);
  sp.PowerDeliveredPerProp(row, kHp, Pd);
  sp.PowerShaftPerProp(row, kHp, Ps);
  sp.PowerBrakePerProp(row, kHp, Pb);
  sp.PowerShaftTotal(row, kHp, Ps * jets);
  sp.PowerBrakeTotal(row, kHp, Pb * jets);
  sp.PropulsorEfficiency(row, etaJet);
  sp.QuasiPropulsiveEfficiency(row, qpc);
  sp.OverallPropulsiveEfficiency(row, qpc * shaftEff);
  const double D = waterjet.ImpellerDiameter(kFt);
  sp.TipSpeed(row, kTipFtPerSec, D > 0.0 ? Pi * D * n : 0.0);
  // The open-propeller coefficients and criteria mean nothing for a jet.
  for (Col c : {Col::CoefPropulsorJ, Col::CoefPropulsorKT, Col::CoefPropulsorKQ, Col::CoefPropulsorKTN,
                Col::CoefPropulsorKTJ2, Col::CoefPropulsorKQJ3, Col::CoefPropulsorCTH, Col::CoefPropulsorCP,
                Col::CoefPropulsorReynolds, Col::SigmaV, Col::SigmaN, Col::Sigma07R, Col::PercentCavAverage,
                Col::PercentCavPeak, Col::RecommendedEAR, Col::MeanBladePressure, Col::MinPitchFaceCav,
                Col::CPMeanPitch})
    sp.SetRaw(row, FieldId(c), 0.0);
  sp.TipSpeedCheck(row, 0);
  sp.RecommendedEARCheck(row, 0);
  sp.MeanBladePressureCheck(row, 0);
  sp.MinPitchFaceCavCheck(row, 0);
  sp.NozzleBreakdownCheck(row, 0);
  sp.PercentCavAverageCheck(row, point.cavZone);
  sp.PropellerBreakdownCheck(row, point.cavZone == 2 ? 1 : 0);
  return true;
}

}  // namespace velmar
