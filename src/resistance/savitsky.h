// The "Savitsky" hull drag method of the planing route: the running trim, wetted lengths and
// equilibrium drag of a prismatic planing hull by Savitsky (1964), and the hump-speed
// multiplier of Blount & Fox (1976).
#pragma once

#include <functional>
#include <string>

#include "vessel/hull.h"

namespace velmar {

// One equilibrium, in any consistent units (the planing route uses ft, lbf, slug, s).
struct SavitskyInput {
  double weight = 0.0;       // Delta, force
  double beam = 0.0;         // b, mean chine beam
  double deadriseDeg = 0.0;  // beta
  double lcg = 0.0;          // centre of gravity forward of the transom, along the keel
  double speed = 0.0;        // V
  double density = 0.0, viscosity = 0.0, gravity = 0.0;
  double frictionAllowance = 0.0;  // Delta CF added to the friction line
  // CF of the friction line at Reynolds number rn for a wetted length and speed (some lines
  // need them); ITTC-1957 when empty.
  std::function<double(double rn, double length, double speed)> friction;
  // Savitsky's general case: thrust inclined thrustAngleDeg (epsilon) to the keel, at the
  // normal distance thrustOffset (f) below the centre of gravity, which stands vcg above the
  // keel. Otherwise all forces act through the centre of gravity and the thrust is horizontal.
  bool generalCase = false;
  double vcg = 0.0, thrustAngleDeg = 0.0, thrustOffset = 0.0;
};

struct SavitskyResult {
  double cv = 0.0;                             // speed coefficient V / sqrt(g b)
  double clBeta = 0.0;                         // load coefficient Delta / (0.5 rho V^2 b^2)
  double cl0 = 0.0;                            // the flat-plate lift coefficient of the same lift
  double lambda = 0.0;                         // mean wetted length over beam
  double trimDeg = 0.0;                        // tau
  double keelLength = 0.0, chineLength = 0.0;  // L_K, L_C (L_C < 0: dry chines)
  double pressureCentre = 0.0;                 // L_p forward of the transom
  double meanBottomSpeed = 0.0;                // V_1
  double reynolds = 0.0, cf = 0.0;             // of the bottom, on the mean wetted length
  double frictionDrag = 0.0;                   // D_f along the keel
  double drag = 0.0;                           // horizontal resistance D
  double frictionShare = 0.0;                  // the part of D that D_f makes
};

// Solves the equilibrium. Returns false with the reason in `failure` when none exists (no
// wetted length puts the centre of pressure at the centre of gravity, the trim has no root,
// or the mean bottom speed would be imaginary).
bool CalcSavitskyEquilibrium(const SavitskyInput& in, SavitskyResult& out, std::string& failure);

// Blount & Fox (1976) hump-speed multiplier M of the Savitsky drag, from the volumetric Froude
// number and the ratio of the centre of gravity forward of the transom to the chine beam.
double CalcBlountFoxMultiplier(double fnv, double lcgOverBeam);

// The method on the hull of the project, at one speed, in ft, lbf, slug and s.
struct SavitskyOptions {
  double density = 0.0, viscosity = 0.0;  // of the project's water
  double frictionAllowance = 0.0;         // Delta CF: correlation and roughness allowances
  std::function<double(double rn, double length, double speed)> friction;  // the expansion's line
  bool humpMultiplier = false;  // apply the Blount & Fox multiplier
  double humpFactor = 1.0;      // 1: M as it stands; 0.5: half of its departure from 1
  bool thrustLine = false;      // general case with the propulsor's thrust line
  double thrustFactor = 1.0;    // 1: the shaft line as it stands; 0.5: half its inclination and offset
};
struct SavitskyRow {
  SavitskyResult equilibrium;
  double beam = 0.0, deadriseDeg = 0.0;  // chine beam (BPX) and deadrise used
  double fnv = 0.0;                      // V / sqrt(g Vol^(1/3))
  double humpMultiplier = 1.0;           // as applied
  double drag = 0.0;                     // equilibrium drag times the multiplier, one hull
  double wettedArea = 0.0;               // lambda b^2 / cos beta
  int speedCheck = 1;                    // of C_V against the lift fit's 0.6 to 13
};
// The chine beam is BPX, the beam at the centre of gravity; the deadrise is the mean of the
// transom's and the centre of gravity's (their value at half the LCG), Savitsky's deadrise at
// mid wetted length as commonly taken. The general case takes the thrust line through the
// propulsor at the shaft angle, relative to the keel's static trim, and the centre of gravity
// above the keel at the LCG. Returns false with the text in the calculation error state.
bool CalcHullDragSavitsky(SavitskyRow& row, const clsVXHull& hull, const SavitskyOptions& options,
                          double speedFtS);

}  // namespace velmar
