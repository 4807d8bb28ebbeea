// Friction lines of the ITTC-78 expansion and the speed-dependent form factor multiplier.
#pragma once

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
// Multiplier of (1+k) - 1 at model scale; 1 unless `enabled` is 1.
double CalcFormFactorKMultiplier(double fn, int enabled);

}  // namespace velmar
