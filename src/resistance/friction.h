// Friction lines of the ITTC-78 expansion and the speed-dependent form factor multiplier.
#pragma once

#include <limits>

namespace velmar {

// Friction line indices of ITTC78.HullFrictionLine.
enum FrictionLine : int {
  kFrictionITTC57 = 0,
  kFrictionSchoenherr = 1,
  kFrictionHughes = 2,
  kFrictionGrigson = 3,
  kFrictionPrandtlSchlichting = 4,
  kFrictionFroude = 5,
};

// CF of a friction line at Reynolds number rn; length (ft) and speed (ft/s) serve the lines
// that need them. 0 for an unknown line or a Reynolds number the line cannot take.
// `extra` is the transition constant A of the Prandtl-Schlichting line (0: fully turbulent);
// the other lines ignore it. Froude's line uses length and speed instead of rn.
double CalcFrictionLine(double rn, int line, double lengthFt, double speedFtS, double extra);
// ITTC-1957 model-ship correlation line; 0 for rn <= 0 and for rn = 100 exactly.
double CalcFrictionITTC57(double rn);
// The ITTC-1957 line at the Reynolds number of its last evaluation. Two steps of a speed that
// take the line at the same Reynolds number (the hull's friction and the appendages' at the
// ship's, the model method's and the expansion's at the model's) share one evaluation: the
// same function of the same number gives the same value.
struct FrictionITTC57Memo {
  double rn = std::numeric_limits<double>::quiet_NaN(), cf = 0.0;
  double At(double reynolds) {
    if (!(reynolds == rn)) rn = reynolds, cf = CalcFrictionITTC57(reynolds);
    return cf;
  }
};
// Multiplier of (1+k) - 1 at model scale; 1 unless `enabled` is 1.
double CalcFormFactorKMultiplier(double fn, int enabled);

}  // namespace velmar
