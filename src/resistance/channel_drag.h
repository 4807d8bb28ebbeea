// Shallow-water drag: Lackenby's speed loss, Raven's correction of the speed-trial procedure
// and Karpov's increased speed, each turned into the added drag of DragChannel.
#pragma once

#include "core/constants.h"
#include "core/speed_performance.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "vessel/environment.h"
#include "vessel/hull.h"

namespace velmar {

// Indexes of ChannelDragMethod. The first three have no published formula in the program and
// fail with "not available".
enum ChannelDragMethodIndex {
  kChannelLandweber = 0,
  kChannelSchlichting = 1,
  kChannelSturtzelGraff = 2,
  kChannelLackenby = 3,
  kChannelRaven = 4,
  kChannelKarpov = 5,
};

// Lackenby (1963), "The effect of shallow water on ship speed": the fraction of speed lost at
// equal power, dV/V = 0.1242 (A_M/h^2 - 0.05) + 1 - tanh(g h / V^2)^0.5, and 0 for A_M/h^2
// below 0.05; V the deep-water speed (m/s), A_M (m2), h (m).
double LackenbySpeedLoss(double areaSectMax, double depth, double speed, double g = GravitySI);

// Raven (2016) as adopted by ITTC 7.5-04-01-01.1 (2017): the increase of the viscous resistance
// and the sinkage factor on the power. SI units.
struct RavenCorrection {
  double viscousRatio = 0.0;  // dR_V / R_V,deep = 0.57 (T/h)^1.79
  double frh = 0.0, frhd = 0.0;
  double sinkage = 0.0;       // s, m
  double volumeRatio = 0.0;   // dnabla / nabla, at most 0.05
  double rSink = 1.0;         // (1 + dnabla/nabla)^(2/3)
};
// False when the depth or the 0.3 L reference depth Froude number reaches 1 (no sinkage).
bool RavenCorrectionOf(double speed, double lpp, double draft, double depth, double volume, double awp,
                       RavenCorrection& r, double g = GravitySI);

// Karpov's alpha of the depth Froude number and h/T, by the polynomial fits; V2 = V / alpha.
double KarpovAlpha(double frh, double hT);

// DragChannel of speed row `row` (speed in ft/s) in newtons by the method selected in
// `resistance`, from the bare-hull and appendage columns already in the row. False with the
// text in the calculation error state.
bool CalcChannelDrag(double& dragN, clsVXEnvironment& environment, clsVXHull& hull,
                     clsVXITTC78Expansion& ittc78, clsVXResistance& resistance, clsVXSpeedPerformance& sp,
                     int row, double speedFtPerSec, double waterDensity);

}  // namespace velmar
