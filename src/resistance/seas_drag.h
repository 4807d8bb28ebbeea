// Added resistance in waves: STAWAVE-1 and STAWAVE-2 of the speed-trial procedure, and Kwon's
// speed loss in wind and waves turned into a drag; the speed-loss conversion is shared with
// the shallow-water methods.
#pragma once

#include <functional>

#include "core/constants.h"
#include "core/water.h"
#include "resistance/resistance_settings.h"
#include "vessel/environment.h"
#include "vessel/hull.h"

namespace velmar {

// Indexes of SeasDragMethod. The first five have no published coefficients in the program and
// fail with "not available".
enum SeasDragMethodIndex {
  kSeasSmallNavalSeries = 0,
  kSeasAertssen = 1,
  kSeasHoggard = 2,
  kSeasFridsmaSeries = 3,
  kSeasWorkboat = 4,
  kSeasStawave1 = 5,
  kSeasStawave2 = 6,
  kSeasKwon = 7,
};

// What the wave methods read of ship and sea, SI units (m, m/s, kg/m3, s).
struct WaveShip {
  double length = 0.0;  // L_PP, taken as the waterline length
  double beam = 0.0;
  double draft = 0.0;   // T_M
  double cb = 0.0;
  double kyy = 0.25;    // pitch radius of gyration over L_PP
  double bowLength = 0.0;  // L_BWL: fore end to 95 % of the beam on the waterline
  double volume = 0.0;     // displacement volume, m3
  double rho = 1025.0;
  double g = GravitySI;
};

// STAWAVE-1 (ITTC 7.5-04-01-01.1, 2017; ISO 15016:2015): mean added resistance of the wave
// reflected at the bow, R_AWL = rho g H^2 B sqrt(B / L_BWL) / 16, newtons.
double Stawave1(const WaveShip& s, double waveHeight);

// STAWAVE-2 (ITTC 7.5-04-01-01.1, 2014 form): the regular-wave added resistance per square
// amplitude (N/m2) at circular frequency `omega` and speed `speed`, split into the motion and
// reflection parts.
struct Stawave2Transfer {
  double motion = 0.0, reflection = 0.0;
};
Stawave2Transfer Stawave2Regular(const WaveShip& s, double omega, double speed);
// Mean added resistance in a modified Pierson-Moskowitz sea of significant height `waveHeight`
// and mean period `t01`: 2 times the integral of the transfer function over the spectrum,
// Simpson's rule on 0.2 to 4.0 rad/s with 800 panels. Newtons, as motion and reflection.
Stawave2Transfer Stawave2Irregular(const WaveShip& s, double waveHeight, double t01, double speed);
// Mean period T01 of the modified Pierson-Moskowitz spectrum with modal period `tp`: the peak
// of A/w^5 exp(-B/w^4) lies at w^4 = 4B/5, with B = 691/T01^4.
double MeanPeriodFromModal(double tp);

// Kwon (2008): percentage speed loss dV/V = C_beta C_U C_Form at Beaufort number `bn`, weather
// `angleDeg` off the bow, Froude number `fn` (at the calm-water speed), block coefficient `cb`,
// displacement volume `volume` (m3) and loading condition (SeasLoadingCondition).
struct KwonSpeedLoss {
  double cBeta = 0.0, cU = 0.0, cForm = 0.0, percent = 0.0;
};
KwonSpeedLoss KwonPercentSpeedLoss(double bn, double angleDeg, double fn, double cb, double volume,
                                   int condition);

// The added drag at speed `speed` of a speed loss at constant power: with the admiralty
// relation, power with the cube of speed, the ship that makes `speed` in the condition needs the
// calm-water power of Vc = speed / (1 - x(Vc)), so its drag is calmDrag (Vc / speed)^3. `lossAt`
// gives the fraction x at a calm-water speed; Vc is the root nearest to `speed` of Vc (1 -
// x(Vc)) = speed. False when there is none between 0.1 and 10 times the speed (the loss grows
// faster than the speed, as Lackenby's does towards the critical depth Froude number).
bool SpeedLossDrag(double calmDrag, double speed, const std::function<double(double)>& lossAt, double& drag);

// DragSeas of one speed (ft/s) in newtons by the method selected in `resistance`;
// `calmDragN` is the calm-water drag of the row (bare hull and appendages, newtons). False with
// the text in the calculation error state.
bool CalcSeasDrag(double& dragN, clsVXEnvironment& environment, const clsVXHull& hull,
                  clsVXWaterProperties& water, const clsVXResistance& resistance, double speedFtPerSec,
                  double calmDragN);

}  // namespace velmar
