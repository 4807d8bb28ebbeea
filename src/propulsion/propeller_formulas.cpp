// The small formulas of the propeller analysis. Units: ft, slug/ft3, 1/s, lbf, hp, psi.
#include "propulsion/propeller_formulas.h"

#include <cmath>

#include "core/constants.h"

namespace velmar {
namespace {

// Atmospheric less vapour pressure at the shaft, psi.
constexpr double kAtmosphereLessVapour = 14.45;

// Burrill's projected over developed area, Ap/Ad = 1.067 - 0.229 P/D.
double ProjectedOverDeveloped(double P, double D) { return 1.067 - 0.229 * P / D; }

// The check code of a value against a limit; -1 means no limit.
int CheckCode(double value, double limit) {
  if (limit == -1.0) return 0;
  if (value > 1.1 * limit) return 2;
  return value > limit ? 1 : 0;
}

}  // namespace

double CalcStaticPressure(double rho, double H) {
  return rho * GravityFt * H / 144.0 + kAtmosphereLessVapour;
}

double CalcDynamicPressureV(double rho, double V) { return 0.5 * rho * V * V / 144.0; }

double CalcDynamicPressure07R(double rho, double Va, double n, double D) {
  const double u = 0.7 * Pi * n * D;
  return 0.5 * rho * (Va * Va + u * u) / 144.0;
}

double CalcSigmaV(double rho, double Va, double H) {
  if (!(rho > 0.0 && Va > 0.0)) return 0.0;
  return CalcStaticPressure(rho, H) / CalcDynamicPressureV(rho, Va);
}

double CalcSigma07R(double rho, double Va, double n, double D, double H) {
  const double q = CalcDynamicPressure07R(rho, Va, n, D);
  return q > 0.0 ? CalcStaticPressure(rho, H) / q : 0.0;
}

double CalcSigmaN(double rho, double n, double D, double H) {
  const double q = 0.5 * rho * (n * D) * (n * D) / 144.0;
  return q > 0.0 ? CalcStaticPressure(rho, H) / q : 0.0;
}

// Ap/A0 = (Ap/Ad) Ad/A0, with the developed ratio x = Ad/A0 recovered from the expanded one
// by x = (sqrt(2.94 EAR/Z + 1.8906) - 1.375) Z, the inverse of EAR = 0.34 x (2.75 + x/Z), the
// relation between developed and expanded area of the Gawn-Burrill series (Radojcic).
double CalcProjectedAreaRatio(int Z, double EAR, double D, double P) {
  if (!(D > 0.0 && Z >= 1)) return 0.0;
  const double radicand = 2.94 * EAR / Z + 1.8906;
  if (radicand < 0.0) return 0.0;
  return ProjectedOverDeveloped(P, D) * (std::sqrt(radicand) - 1.375) * Z;
}

// tau = T / (Ap 0.5 rho V07R^2) with V07R^2 = (Va^2 + (0.7 pi n D)^2), which in coefficients
// is 8 KT / (((0.7 pi)^2 + J^2) pi Ap/A0).
double CalcTau07R(double KT, double Va, double n, int Z, double EAR, double D, double P) {
  if (!(D > 0.0 && n > 0.0 && KT > 0.0)) return 0.0;
  const double ap = CalcProjectedAreaRatio(Z, EAR, D, P);
  if (!(ap > 0.0)) return 0.0;
  const double J = Va / (n * D);
  return 8.0 * KT / (((0.7 * Pi) * (0.7 * Pi) + J * J) * Pi * ap);
}

// Keller (1966), as applied by Holtrop & Mennen (1982): AE/A0 = (1.3 + 0.3 Z) T / (D^2 (p0 +
// rho g h - pv)) + K, with K = 0.2 for one propeller per hull; twins and more take
// K = 0.1 - J/15, inside the range 0 to 0.1 that the method gives for twin screws.
double CalcKellerEAR(double T, double Va, double n, double D, int Z, int count, double p) {
  if (!(T > 0.0 && Va > 0.0 && n > 0.0 && D > 0.0 && Z > 0 && count > 0 && p > 0.0)) return 0.0;
  const double K = count == 1 ? 0.2 : 0.1 - Va / (n * D) / 15.0;
  return (1.3 + 0.3 * Z) * T / (D * D * 144.0 * p) + K;
}

// Burrill's diagram through a cavitation line: the thrust loading allowed at sigma is
// tau = sigma^(1/3) 0.87^(1/sigma) / x (x = 2.395 on the 10 % line, 3.045 on the 5 % line);
// the projected area follows from T = tau q Ap, and the expanded area ratio from the inverse
// of CalcProjectedAreaRatio, EAR = 0.34 y (y/Z + 2.75).
double CalcBurrillEAR(int method, double P, double D, int Z, double T, double sigma, double q) {
  if (!(P > 0.0 && D > 0.0 && Z > 0 && T > 0.0 && sigma > 0.0 && q > 0.0)) return 0.0;
  if (method != 2 && method != 3) return 0.0;
  const double x = method == 2 ? 2.395 : 3.045;
  const double tauLine = std::pow(sigma, 1.0 / 3.0) * std::pow(0.87, 1.0 / sigma) / x;
  const double A0 = Pi * D * D / 4.0;
  const double divisor = ProjectedOverDeveloped(P, D) * q * A0 * tauLine * 144.0;
  if (!(divisor > 0.0)) return 0.0;
  const double y = T / divisor;
  return 0.34 * y * (y / Z + 2.75);
}

// Van Manen's blade-area line: EAR = Pd C / (D^3 n (144 p - 0.4 g rho D)), with the static
// pressure taken at 0.8 R above the shaft (0.4 g rho D = 12.87 D rho in lbf/ft2); C = 1771
// for the Kaplan series, 2475 for open propellers.
double CalcManenEAR(int series, double rho, double n, double D, double Pd, double p) {
  if (!(rho > 0.0 && n > 0.0 && D > 0.0 && Pd > 0.0 && p > 0.0)) return 0.0;
  const double C = (series >= 3 && series <= 7) || series == 10 ? 1771.0 : 2475.0;
  const double divisor = D * D * D * n * (144.0 * p - 12.87 * D * rho);
  return divisor > 0.0 ? Pd * C / divisor : 0.0;
}

double CalcNozzleBreakdownSigma(double KQ, double EAR) {
  return 3.4 - (20.4 * EAR - 8.4) * std::exp(-38.0 * KQ);
}

// Tip speed limits in ft/s: open series 110 when towing, else 150 above four blades and 175
// up to four; the Kaplan series 100; the surface-piercing and cycloidal series none.
int CalcTipSpeedCheck(double tipSpeed, int analysisType, int series, int Z) {
  double limit = -1.0;
  if (series >= 0 && series <= 2) {
    limit = analysisType == 1 ? 110.0 : (Z > 4 ? 150.0 : 175.0);
  } else if ((series >= 3 && series <= 7) || series == 10) {
    limit = 100.0;
  }
  return CheckCode(tipSpeed, limit);
}

// c07 = k EAR D / Z; k = 2.51 for the Gawn series, 2.14 for the Kaplan series, 2.16 otherwise.
double CalcPropellerChord(int series, double D, double EAR, int Z) {
  if (!(D > 0.0 && EAR > 0.0 && Z > 0)) return 0.0;
  const double k = (series == 1 || series == 2) ? 2.51 : (series >= 3 && series <= 7 ? 2.14 : 2.16);
  return k * EAR * D / Z;
}

}  // namespace velmar
