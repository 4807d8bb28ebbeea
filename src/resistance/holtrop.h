// The Holtrop bare-hull method: the total drag coefficient of a 20 ft model in fresh water
// at the vessel's Froude number, which the ITTC-78 expansion turns into ship drag.
#pragma once

#include "resistance/friction.h"
#include "vessel/hull.h"
#include "vessel/hull_reads.h"

namespace velmar {

// Fills the model's total coefficient, the model length (ft) and the speed check (0 below,
// 1 inside, 2 above the method's speed range). Returns true on success; failures go to the
// calculation error state.
bool CalcHullDragHoltrop(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                         double fn);

// The terms of one evaluation, in feet, pounds force and seconds: the coefficients of
// Holtrop (1984) under their published names, and the resistances of the vessel's hull form
// (rw from the wave formulas or the hump spline; rb the bulb, rtr the immersed transom, both
// in the basin's fresh water), at the clamped Froude number. c17 and m3 are 0 at Fn 0.4 and
// below, where the wave formula does not take them.
struct HoltropTerms {
  double k1 = 1.0, cfModel = 0.0, cw = 0.0;
  double c1 = 0.0, c2 = 1.0, c3 = 0.0, c5 = 1.0, c7 = 0.0, c15 = 0.0, c16 = 0.0, c17 = 0.0;
  double m1 = 0.0, m3 = 0.0, lambda = 0.0;
  double rw = 0.0, rb = 0.0, rtr = 0.0;
  int speedCheck = 1;
};
// CalcHullDragHoltrop with its terms: ctModel = k1 cfModel + cw.
bool CalcHoltropTerms(HoltropTerms& terms, const clsVXHull& hull, double fn);

// What the method takes of the hull, in feet, pounds force and seconds, read and converted
// once: the hull data (L/B already held at 2.6 or more), ABT^1.5 of a bulb, the form factor
// and every coefficient that does not depend on the speed. Their checks (c3, c7, the length of run) are
// made by the speed part, in the order of the method's steps. c17 and m3, which only the wave
// formula above Fn 0.4 takes, are formed by the first speed of the reading that needs them
// (`highSpeedFormed`); until then they are 0.
struct HoltropHull {
  double L = 0.0, B = 0.0, T = 0.0, W = 0.0, Vol = 0.0, S = 0.0, XB = 0.0, ABT = 0.0, Z = 0.0, AT = 0.0;
  double iE = 0.0, Cp = 0.0, LVol = 0.0, LT = 0.0, BT = 0.0, LB = 0.0, Cw = 0.0, Cm = 0.0, AtAx = 0.0;
  double ABT15 = 0.0, lcb = 0.0, lr = 0.0, k1 = 1.0;
  bool formFactorOk = true;
  double c1 = 0.0, c2 = 1.0, c3 = 0.0, c5 = 1.0, c7 = 0.0, c15 = 0.0, c16 = 0.0, c17 = 0.0;
  double m1 = 0.0, m3 = 0.0, lambda = 0.0;
  bool highSpeedFormed = false;
};
// Reads the hull; false (texts in the calculation error state) when an item is missing. A
// failed form factor is no failure: 1 + k is then 1 and its text stays in the error state.
bool ReadHoltropHull(HoltropHull& h, const clsVXHull& hull);
// The same through reads of the hull that a caller has begun (and kept, see HullReads).
bool ReadHoltropHull(HoltropHull& h, HullReads& reads);
// The speed part: the terms at Froude number `fn` of a hull read by ReadHoltropHull (which it
// completes with c17 and m3 above Fn 0.4). The model's friction is taken through
// `modelFriction` when given. `terms` comes in as a fresh HoltropTerms{}: the terms that the
// steps taken do not reach keep those values.
bool CalcHoltropTermsAt(HoltropTerms& terms, HoltropHull& h, double fn,
                        FrictionITTC57Memo* modelFriction = nullptr);

// The hull part kept for a whole run of speeds: the first speed reads it, the later ones
// reuse it. A hull whose form factor failed is read again at every speed, so that each speed
// reports that failure as it always has.
// `reads`, when given, holds what the caller has read of the hull before the run's first speed;
// that speed reads on through it (a later reading starts afresh).
struct HoltropRun {
  HoltropHull hull;
  bool read = false;
  HullReads* reads = nullptr;
};
// CalcHullDragHoltrop over a run; the model's friction is left in `modelFriction`, where the
// expansion of the same speed finds it.
bool CalcHullDragHoltropRun(double& ctModel, double& modelLength, int& speedCheck, HoltropRun& run,
                            const clsVXHull& hull, double fn, FrictionITTC57Memo& modelFriction);

}  // namespace velmar
