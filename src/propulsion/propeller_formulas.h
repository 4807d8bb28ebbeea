// The small formulas of the propeller analysis: pressures, cavitation numbers, blade loading,
// projected area, recommended blade area by Keller, Burrill and van Manen, nozzle breakdown,
// tip speed check and chord. Plain functions in ft, slug, s and psi; none of them fails: a
// guard that does not hold gives 0.
#pragma once

namespace velmar {

// Static pressure at the shaft in psi: rho g H / 144 plus 14.45 psi, the atmospheric less the
// vapour pressure. H is the immersion of the shaft in ft.
double CalcStaticPressure(double rho, double H);
// Dynamic pressure of a speed V in psi.
double CalcDynamicPressureV(double rho, double V);
// Dynamic pressure of the section at 0.7 R in psi, from the advance speed and rate n (1/s).
double CalcDynamicPressure07R(double rho, double Va, double n, double D);
// Cavitation numbers on the advance speed, on the 0.7 R section speed and on n D.
double CalcSigmaV(double rho, double Va, double H);
double CalcSigma07R(double rho, double Va, double n, double D, double H);
double CalcSigmaN(double rho, double n, double D, double H);
// Projected over disc area from the expanded area ratio, as Burrill's diagram uses it; P is
// the pitch, in the unit of D.
double CalcProjectedAreaRatio(int Z, double EAR, double D, double P);
// Burrill's thrust loading coefficient at 0.7 R on the projected area.
double CalcTau07R(double KT, double Va, double n, int Z, double EAR, double D, double P);
// Recommended expanded area ratios; T thrust in lbf, p static pressure in psi, q dynamic
// pressure at 0.7 R in psi, Pd delivered power in hp. `count` is the propellers per hull,
// `method` the cavitation criterion (2: 10 % line, 3: 5 % line), `series` the series index.
double CalcKellerEAR(double T, double Va, double n, double D, int Z, int count, double p);
double CalcBurrillEAR(int method, double P, double D, int Z, double T, double sigma, double q);
double CalcManenEAR(int series, double rho, double n, double D, double Pd, double p);
// Cavitation number below which the nozzle flow breaks down.
double CalcNozzleBreakdownSigma(double KQ, double EAR);
// Check code of the tip speed (ft/s): 0 none, 1 above the limit, 2 above 1.1 times the limit.
int CalcTipSpeedCheck(double tipSpeed, int analysisType, int series, int Z);
// Blade chord at 0.7 R in the unit of D.
double CalcPropellerChord(int series, double D, double EAR, int Z);

}  // namespace velmar
