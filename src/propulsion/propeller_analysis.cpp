// The propeller analysis of one speed row. The thrust and power for the cavitation criteria
// are those of the propeller without its cup; a contra-rotating pair shares them between its
// two blade rows.
#include "propulsion/propeller_analysis.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <stdexcept>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "propulsion/propeller_formulas.h"
#include "propulsion/propeller_series_model.h"
#include "propulsion/propulsion_driver.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

using Col = clsVXSpeedPerformance::Field;

constexpr int kCRP = 2;  // PropellerType "CRP (Simple)"
constexpr int kCycloidal = 9;
constexpr int kAnalysisTowing = 1;

bool IsNozzleSeries(int series) { return (series >= 3 && series <= 7) || series == 10; }
bool IsOpenSeries(int series) { return series >= 0 && series <= 2; }
bool IsSPOrCycloidal(int series) { return series == 8 || series == 9; }

// A quotient whose divisor may be zero: the fault the program reports instead of carrying
// an infinity into the table.
double Quotient(double a, double b) {
  if (b == 0.0) throw std::domain_error("Division by zero");
  return a / b;
}

// Allowed mean blade pressure (psi) of an open propeller at `speedKt`: 0.25 V + 4, held
// within 6.5 and 10; 7 psi for a towing propeller.
double MeanBladePressureLimit(int series, int analysisType, double speedKt) {
  if (IsOpenSeries(series)) {
    if (analysisType == kAnalysisTowing) return 7.0;
    if (speedKt < 10.0) return 6.5;
    if (speedKt > 24.0) return 10.0;
    return 0.25 * speedKt + 4.0;
  }
  if (IsNozzleSeries(series)) return 8.5;
  return -1.0;
}

double PercentCavLimit(int series, int cavMethod) {
  if (IsSPOrCycloidal(series)) return -1.0;
  return cavMethod == 2 ? 10.0 : cavMethod == 3 ? 5.0 : 20.0;
}

// The recommended blade area is checked against itself less 0.005, a comparison kept as the
// program has always made it: a positive area never raises a flag.
int RecommendedEARCheckCode(double value, int series) {
  const double limit = IsSPOrCycloidal(series) ? -1.0 : value - 0.005;
  if (limit == -1.0) return 0;
  if (0.9 * limit > value) return 2;
  if (value < limit) return 1;
  return 0;
}

bool Analysis(int hullCount, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
              clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries, clsVXSpeedPerformance& sp,
              int row, double rpm, double va, double meanPitch, const SeriesModelInputs* inputs,
              PropellerAnalysisReads* reads) {
  SetCalcLocation("Calculating propeller analysis");
  PropellerAnalysisReads own;
  PropellerAnalysisReads& r = reads ? *reads : own;
  const bool kept = r.read;
  // 1. Water, settings and propeller; a drive train value that is not positive counts as 1.
  if (!kept) {
    r.rho = water.Density(kSlugPerFt3);
    r.nu = water.Viscosity(kFt2PerSec);
  }
  const double rho = r.rho, nu = r.nu;
  if (water.ErrorsFound()) {
    AddCalcErrors(water.Errors());
    return false;
  }
  if (!kept) {
    r.calcType = propulsion.PropulsorCalcType();
    r.countPerHull = propulsion.PropulsorCountPerHull();
    r.gearRatio = propulsion.GearRatio();
    r.gearEff = propulsion.GearEfficiency();
    r.shaftEff = propulsion.ShaftEfficiency();
    r.cavMethod = propulsion.CavCriteriaMethod();
  }
  const int calcType = r.calcType, countPerHull = r.countPerHull, cavMethod = r.cavMethod;
  double gearRatio = r.gearRatio, gearEff = r.gearEff, shaftEff = r.shaftEff;
  if (propulsion.ErrorsFound()) {
    AddCalcErrors(propulsion.Errors());
    return false;
  }
  if (!kept) {
    r.Z = propeller.BladeCount();
    r.D = propeller.Diameter(kFt);
    r.pitchMean = propeller.PitchMean(kFt);
    r.EAR = propeller.ExpAreaRatio();
    r.H = propeller.HubImmersion(kFt);
  }
  const int Z = r.Z;
  const double D = r.D, pitchMean = r.pitchMean, EAR = r.EAR, H = r.H;
  if (propeller.ErrorsFound()) {
    AddCalcErrors(propeller.Errors());
    return false;
  }
  r.read = true;
  if (!(gearRatio > 0.0)) gearRatio = 1.0;
  if (!(gearEff > 0.0)) gearEff = 1.0;
  if (!(shaftEff > 0.0)) shaftEff = 1.0;
  if (meanPitch == 0.0) meanPitch = pitchMean;

  // 2. The row's interaction coefficients and drag.
  double w = sp.WakeFraction(row);
  const double t = sp.ThrustDeduction(row);
  double etaR = sp.RelRotEfficiency(row);
  const double R = sp.DragTotal(row, kLbf);
  const double speedKt = sp.Speed(row, kKt);
  if (w > 1.0) w = 0.99;
  if (!(etaR > 0.0)) etaR = 1.0;

  // 3.
  if ((calcType == 0 || calcType == 1) && !r.seriesRead) {
    r.series = propellerSeries.Series();
    r.seriesRead = true;
  }
  const int series = (calcType == 0 || calcType == 1) ? r.series : 0;

  // 4.-6. Coefficients with the cup, efficiencies.
  const double n = rpm / 60.0;
  // With the run's inputs the plain evaluation stands in for the full one where it applies: the
  // error stacks of the water, propulsion and propeller were checked after their reads above.
  double KT = 0.0, KQ = 0.0, sigmaAvg = 0.0, tauAvg = 0.0, sigmaPeak = 0.0, tauPeak = 0.0;
  // Without a cup both evaluations are the same one: the first gives the cavitation pair too.
  QuickSeriesResult quick;
  const bool cupless = inputs && !(inputs->cup > 0.0);
  const bool quickWithCup =
      inputs && QuickSeriesKTKQ(*inputs, n, va, D, EAR, 1, meanPitch,
                                kQuickKQ | (cupless ? kQuickCavitation : 0), quick, nullptr, nullptr, true);
  if (quickWithCup) {
    KT = quick.KT;
    KQ = quick.KQ;
  }
  if ((!quickWithCup &&
       CalcPropulsorKTKQ(KT, KQ, water, propulsion, propeller, propellerSeries, n, va, D, EAR, 1, meanPitch,
                         sigmaAvg, tauAvg, sigmaPeak, tauPeak, nullptr, nullptr, inputs) == 0) ||
      !(KQ > 0.0)) {
    AddCalcError("propulsor KTKQ calculation");
    return false;
  }
  const double J = va / (n * D);
  const double etaO = J * KT / (2.0 * Pi * KQ);
  const double etaH = Quotient(1.0 - t, 1.0 - w);
  sp.CoefPropulsorJ(row, J);
  sp.CoefPropulsorKT(row, KT);
  sp.CoefPropulsorKQ(row, KQ);
  sp.PropulsorEfficiency(row, etaO);
  sp.QuasiPropulsiveEfficiency(row, etaO * etaH * etaR);
  sp.OverallPropulsiveEfficiency(row, sp.QuasiPropulsiveEfficiency(row) * shaftEff);

  // 7.-8. Thrust, torque and powers. The delivered thrust counts the propulsors of one hull.
  const double D4 = D * D * D * D;
  const double T = KT * rho * n * n * D4;
  const double Td = (1.0 - t) * T * countPerHull;
  const double Q = KQ * rho * n * n * D4 * D;
  const double Pd = 2.0 * Pi * Q * n / (550.0 * etaR);
  const double Ps = Pd / shaftEff;
  const double Pb = Ps / gearEff;
  sp.PropulsorRPM(row, rpm);
  sp.EngineRPM(row, rpm * gearRatio);
  sp.PropulsorThrust(row, kLbf, T);
  sp.TotalDeliveredThrust(row, kLbf, Td);
  sp.TotalNetTowpull(row, kLbf, Td - R);
  sp.PropulsorTorque(row, kLbfFt, Q);
  sp.PowerDeliveredPerProp(row, kHp, Pd);
  sp.PowerShaftPerProp(row, kHp, Ps);
  sp.PowerBrakePerProp(row, kHp, Pb);
  sp.PowerShaftTotal(row, kHp, Ps * countPerHull * hullCount);
  sp.PowerBrakeTotal(row, kHp, Pb * countPerHull * hullCount);

  // 9. Loading coefficients; none for a waterjet or a cycloidal propeller.
  if (calcType == 3 || series == kCycloidal) {
    sp.CoefPropulsorKTJ2(row, 0.0);
    sp.CoefPropulsorKQJ3(row, 0.0);
    sp.CoefPropulsorCTH(row, 0.0);
    sp.CoefPropulsorCP(row, 0.0);
    sp.CoefPropulsorReynolds(row, 0.0);
  } else {
    sp.CoefPropulsorKTJ2(row, KT / (J * J));
    sp.CoefPropulsorKQJ3(row, KQ / (J * J * J));
    sp.CoefPropulsorCTH(row, 8.0 * T / (Pi * D * D * rho * va * va));
    sp.CoefPropulsorCP(row, 4400.0 * Pd / (Pi * D * D * rho * va * va * va));
    sp.CoefPropulsorReynolds(
        row, CalcPropellerChord(series, D, EAR, Z) * va * std::sqrt(std::pow(2.35619 / J, 2.0) + 1.0) / nu);
  }

  // 10. Coefficients without the cup, and the cavitation numbers of the mean and peak blade.
  sp.PropellerBreakdownCheck(row, 0);
  double KTc = 0.0, KQc = 0.0;
  int result = 1;
  if ((quickWithCup && cupless) ||
      (inputs && QuickSeriesKTKQ(*inputs, n, va, D, EAR, 0, meanPitch, kQuickKQ | kQuickCavitation, quick,
                                 nullptr, nullptr, true))) {
    KTc = quick.KT;
    KQc = quick.KQ;
    sigmaAvg = sigmaPeak = quick.sigma;
    tauAvg = tauPeak = quick.tau;
  } else {
    result = CalcPropulsorKTKQ(KTc, KQc, water, propulsion, propeller, propellerSeries, n, va, D, EAR, 0,
                               meanPitch, sigmaAvg, tauAvg, sigmaPeak, tauPeak, nullptr, nullptr, inputs);
  }
  if (result == 0) {
    AddCalcError("KTKQ calculation");
    return false;
  }
  if (result == 6) sp.PropellerBreakdownCheck(row, 1);
  if (!(KQc > 0.0)) {
    AddCalcError("Negative KQ");
    return false;
  }

  // 11. Nozzle thrust and nozzle breakdown.
  double KTN = 0.0;
  if (!CalcNozzleKTN(KTN, propeller, propellerSeries, calcType, n, va, D, EAR, meanPitch)) {
    AddCalcError("KTN calculation");
    return false;
  }
  double TN = 0.0;
  sp.NozzleBreakdownCheck(row, 0);
  if (KTN > 0.0) {
    TN = KTN * rho * n * n * D4;
    const double sigmaN = CalcSigmaN(rho, n, D, H);
    if (sigmaN > 0.0 && CalcNozzleBreakdownSigma(KQ, EAR) > sigmaN) sp.NozzleBreakdownCheck(row, 1);
  }

  // 12.-13. Blade loads for the cavitation criteria and the mean blade pressure.
  const double A0 = Pi * D * D / 4.0;
  if (!r.typeRead) {
    r.propellerType = propeller.PropellerType();
    r.typeRead = true;
  }
  const double units = r.propellerType == kCRP ? 2.0 : 1.0;
  const double Tb = (KTc * rho * n * n * D4 - TN) / units;
  const double Pc = 2.0 * Pi * KQc * rho * n * n * n * D4 * D / (550.0 * etaR) / units;
  double bladePressure = Tb / (144.0 * EAR * A0);
  if (bladePressure < 0.0) bladePressure = 0.0;

  // 14. Percent back cavitation of the peak and the mean blade position.
  // In axial inflow both positions are the same one.
  const double cavPeak = PercentBackCavitation(sigmaPeak, tauPeak);
  const bool samePosition =
      std::bit_cast<std::uint64_t>(sigmaAvg) == std::bit_cast<std::uint64_t>(sigmaPeak) &&
      std::bit_cast<std::uint64_t>(tauAvg) == std::bit_cast<std::uint64_t>(tauPeak);
  const double cavAverage = samePosition ? cavPeak : PercentBackCavitation(sigmaAvg, tauAvg);

  // 15.-16. Blade area recommended by the selected criterion.
  const double p = CalcStaticPressure(rho, H);
  const double q = CalcDynamicPressure07R(rho, va, n, D);
  double recommendedEAR = 0.0;
  switch (cavMethod) {
    case 0: {  // Keller
      const double K = countPerHull == 1 ? 0.2 : 0.1 - J / 15.0;
      recommendedEAR = (1.3 + 0.3 * Z) * Tb / (D * D * 144.0 * p) + K;
      break;
    }
    case 1: {  // van Manen's line
      const double C = IsNozzleSeries(series) ? 1771.0 : 2475.0;
      recommendedEAR = Pc * C / (D * D * D * n * (144.0 * p - 0.5 * D * 0.8 * GravityFt * rho));
      break;
    }
    case 2:
    case 3: {  // the 10 % and 5 % back-cavitation lines
      if (sigmaAvg > 0.0) {
        const double x = cavMethod == 2 ? 2.395 : 3.045;
        const double tauLine = std::pow(sigmaAvg, 1.0 / 3.0) * std::pow(0.87, 1.0 / sigmaAvg) / x;
        const double y = Tb / ((1.067 - 0.229 * meanPitch / D) * q * A0 * tauLine * 144.0);
        recommendedEAR = 0.34 * y * (y / Z + 2.75);
      }
      break;
    }
    default:
      break;
  }

  // 17.-19. Cavitation columns, face-cavitation pitch, tip speed.
  sp.CoefPropulsorKTN(row, KTN);
  sp.PercentCavAverage(row, cavAverage);
  sp.PercentCavPeak(row, cavPeak);
  sp.SigmaV(row, CalcSigmaV(rho, va, H));
  sp.SigmaN(row, CalcSigmaN(rho, n, D, H));
  sp.Sigma07R(row, CalcSigma07R(rho, va, n, D, H));
  sp.MinPitchFaceCav(row, kFt, 0.0);
  if (KT > 0.0 && J > 0.0)
    sp.MinPitchFaceCav(row, kFt, D * J * (1.0 + std::sqrt(8.0 * KT / (Pi * J * J) + 1.0)) / 2.0);
  const double tipSpeed = Pi * D * n;
  sp.TipSpeed(row, kTipFtPerSec, tipSpeed);
  sp.RecommendedEAR(row, recommendedEAR);
  sp.MeanBladePressure(row, kPsi, bladePressure);

  // 20. Check codes.
  if (calcType == 3) {
    sp.TipSpeedCheck(row, 0);
    sp.PercentCavAverageCheck(row, 0);
    sp.RecommendedEARCheck(row, 0);
    sp.MeanBladePressureCheck(row, 0);
    sp.MinPitchFaceCavCheck(row, 0);
    return true;
  }
  if (!r.analysisTypeRead) {
    r.analysisType = propulsion.AnalysisTypeMethod();
    r.analysisTypeRead = true;
  }
  const int analysisType = r.analysisType;
  sp.MinPitchFaceCavCheck(row, 0);
  sp.TipSpeedCheck(row, CalcTipSpeedCheck(tipSpeed, analysisType, series, Z));
  sp.PercentCavAverageCheck(row, LimitCheckCode(cavAverage, PercentCavLimit(series, cavMethod)));
  sp.RecommendedEARCheck(row, RecommendedEARCheckCode(recommendedEAR, series));
  sp.MeanBladePressureCheck(
      row, LimitCheckCode(bladePressure, MeanBladePressureLimit(series, analysisType, speedKt)));
  return true;
}

}  // namespace

double PercentBackCavitation(double sigma, double tau) {
  if (!(tau > 0.0)) return 0.0;
  const double x = std::pow(sigma, 1.0 / 3.0) * std::pow(0.87, 1.0 / sigma) / tau;
  if (x < 0.905) return 100.0;
  if (x > 4.16) return 2.0;
  return 87.27 / (x * x) + 1.231 * x - 8.16;
}

int LimitCheckCode(double value, double limit) {
  if (limit == -1.0) return 0;
  if (value > 1.1 * limit) return 2;
  if (value > limit) return 1;
  return 0;
}

bool CalcPropellerAnalysis(int hullCount, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                           clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                           clsVXSpeedPerformance& speedPerformance, int speedIndex, double rpm, double va,
                           double meanPitch, const SeriesModelInputs* inputs, PropellerAnalysisReads* reads) {
  return RunGuarded([&] {
    return Analysis(hullCount, water, propulsion, propeller, propellerSeries, speedPerformance, speedIndex,
                    rpm, va, meanPitch, inputs, reads);
  });
}

}  // namespace velmar
