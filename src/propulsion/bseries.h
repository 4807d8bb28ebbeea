// The Wageningen B-screw series: open-water thrust and torque coefficients with their first and
// second derivatives, and the full-scale correction of its section drag.
#pragma once

#include "propulsion/series_polynomial.h"

namespace velmar {

// Wageningen B-series (Oosterveld & van Oossanen 1975) at Rn = 2e6; `d` may be null, else it
// is overwritten with the derivatives. False (with a text) only for a non-finite result.
bool CalcKTBSeries(double& KT, double J, double PD, double EAR, int Z, DerivativeArray* d = nullptr);
bool CalcKQBSeries(double& KQ, double J, double PD, double EAR, int Z, DerivativeArray* d = nullptr);
// The same sums, bare: they may not be finite, and nothing is reported.
double BSeriesKTSum(double J, double PD, double EAR, int Z, DerivativeArray* d = nullptr);
double BSeriesKQSum(double J, double PD, double EAR, int Z, DerivativeArray* d = nullptr);

// The section-drag correction from the B-series charts to a full-scale propeller.
struct BSeriesScaleCorrection {
  double chord = 0.0;  // c0.75, m
  double tc = 0.0;     // thickness over chord used
  double dCD = 0.0;    // section drag difference, chart less ship
  double dKT = 0.0;    // KT(ship) = KT(chart) - dKT
  double dKQ = 0.0;    // KQ(ship) = KQ(chart) - dKQ
};
// D and the roughness in metres. A thickness ratio or roughness not above 0 takes the
// estimate of Holtrop & Mennen (1982). False when the chord or the drag bracket leaves the
// range of the logarithm and power (a blade too small for its roughness).
bool CalcBSeriesScaleCorrection(BSeriesScaleCorrection& r, double PD, double EAR, int Z, double D, double tc,
                                double roughness);

// The correction in two parts: what does not depend on P/D (the chord, t/c, the section drag
// difference and the solidity c0.75 Z / D), found by CalcBSeriesSectionDrag, and dKT and dKQ
// from it at a P/D. Together they give what CalcBSeriesScaleCorrection gives, bit for bit.
struct BSeriesSectionDrag {
  double chord = 0.0, tc = 0.0, dCD = 0.0, solidity = 0.0;
};
bool CalcBSeriesSectionDrag(BSeriesSectionDrag& s, double EAR, int Z, double D, double tc, double roughness);
bool FinishBSeriesScaleCorrection(BSeriesScaleCorrection& r, const BSeriesSectionDrag& s, double PD);

// The Reynolds-number correction of the regression: KT(Rn) = KT + dKT, KQ(Rn) = KQ + dKQ for
// a section Reynolds number at 0.75R above 2e6 (the charts' own). False for Rn not above 0.
bool CalcBSeriesReynoldsCorrection(double& dKT, double& dKQ, double J, double PD, double EAR, int Z,
                                   double Rn);

}  // namespace velmar
