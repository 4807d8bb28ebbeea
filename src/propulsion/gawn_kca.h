// The Gawn-Burrill KCA series (three blades, segmental sections) in the regression of
// Radojcic: open-water thrust and torque coefficients with their first and second derivatives.
#pragma once

#include "propulsion/series_polynomial.h"

namespace velmar {

// The developed over disc area ratio x of the series for an expanded area ratio: the inverse
// of AE/A0 = 0.34 x (2.75 + x/3).
double GawnDevelopedAreaRatio(double EAR);

// KT and KQ at (J, P/D, AE/A0); `d` may be null, else it is overwritten with the derivatives,
// those in the area ratio with regard to AE/A0. False (with a text) only for a non-finite
// result.
bool CalcKTGawnKCA(double& KT, double J, double PD, double EAR, DerivativeArray* d = nullptr);
bool CalcKQGawnKCA(double& KQ, double J, double PD, double EAR, DerivativeArray* d = nullptr);

}  // namespace velmar
