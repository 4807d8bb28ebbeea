// Hull-propulsor interaction: the driver over the speed table, the dispatch to the methods
// (interaction_methods.cpp) and the ducted-propeller, tunnel-stern and wake scale corrections. Lengths in ft,
// speeds in ft/s, areas in ft2, densities in slug/ft3, viscosities in ft2/s.
#include "propulsion/interaction.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/constants.h"
#include "core/curve_fit.h"
#include "core/diagnostics.h"
#include "resistance/friction.h"

namespace velmar {
namespace {

constexpr double g = GravityFt;
constexpr int kHoltropMethod = 6;  // PropulsionInteractionMethod "Holtrop"
constexpr int kTechniquePrediction = 0;
constexpr int kInteractionOff = 0, kInteractionCalc = 1;

bool Fail(const std::string& text) {
  AddCalcError(text);
  return false;
}

// Hands the error stack of a data object to the calculation error state, if it has one.
template <class Data>
bool PassErrors(Data& data) {
  if (!data.ErrorsFound()) return false;
  AddCalcErrors(data.Errors());
  return true;
}

bool AllFinite(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// The tunnel-stern factors on w, t and etaR. Each table has one row per recess ratio
// 100 RecessDepth / EffectiveDiameter (1, 40, 60, 100) and one column per volumetric Froude
// number (1, 2, 3, 4).
using TunnelTable = double[4][4];
constexpr TunnelTable kTunnelWake = {
    {0.94, 0.94, 0.94, 0.94}, {0.93, 0.95, 0.96, 0.96}, {0.89, 0.91, 0.91, 0.91}, {0.88, 0.92, 0.93, 0.93}};
constexpr TunnelTable kTunnelThrust = {
    {0.97, 0.97, 0.97, 0.97}, {0.91, 0.95, 0.98, 0.99}, {0.95, 0.96, 0.97, 0.98}, {0.96, 1.00, 1.01, 1.02}};
constexpr TunnelTable kTunnelRelRot = {
    {1.07, 1.07, 1.07, 1.07}, {0.95, 0.93, 0.90, 0.86}, {0.95, 0.90, 0.88, 0.87}, {1.00, 0.93, 0.91, 0.90}};

// The tables are coarse samples of smooth trends, so they are read through the natural cubic
// spline, which passes through every tabulated point and runs on as a straight line past
// Fv 4 or a ratio of 100.
constexpr int kTunnelFitMethod = 1;

// One factor at (Fv, ratio): a fit along Fv in each ratio row, then one across the rows.
bool TunnelFactor(double& factor, const TunnelTable& table, double Fv, double ratio) {
  const std::vector<double> fvPoints = {1.0, 2.0, 3.0, 4.0};
  const std::vector<double> ratioPoints = {1.0, 40.0, 60.0, 100.0};
  std::vector<double> atFv(4, 0.0);
  std::string location, cause;
  for (size_t row = 0; row < 4; ++row) {
    const std::vector<double> values(std::begin(table[row]), std::end(table[row]));
    if (!CurveFit(kTunnelFitMethod, atFv[row], 4, fvPoints, values, Fv, location, cause))
      return Fail("curve fit of Fv");
  }
  if (!CurveFit(kTunnelFitMethod, factor, 4, ratioPoints, atFv, ratio, location, cause))
    return Fail("curve fit of tunnel ratio");
  return true;
}

}  // namespace

bool PredictPropulsionInteractionCoefs(clsVXWaterProperties& water, clsVXHull& hull,
                                       clsVXITTC78Expansion& ittc78, clsVXPropulsion& propulsion,
                                       clsVXPropeller& propeller, clsVXSpeedPerformance& speedPerformance) {
  SetCalcLocation("Propulsion interaction coefs prediction");
  clsVXSpeedPerformance& sp = speedPerformance;
  try {
    // 1. The density and the bulb nose position are read for their checks only: no step of
    // the interaction uses them.
    water.Density(kSlugPerFt3);
    const double nu = water.Viscosity(kFt2PerSec);
    if (PassErrors(water)) return false;
    const double vol = hull.DisplacementVolume(kFt);
    const double L = hull.LengthWL(kFt);
    hull.XBulbNoseFwdTr(kFt);
    if (PassErrors(hull)) return false;

    // 2. The factor 1+k of the wake scaling.
    double k = ittc78.HullFormFactor();
    if (k == 0.0 || propulsion.ViscousScaleCorrEnabled() == 0) k = 1.0;

    // The values of the last row computed are carried to the next: a technique without a
    // calculation of its own receives them (zero at the start of the run).
    double w = 0.0, t = 0.0, etaR = 0.0, referenceLength = 0.0;
    int speedCheck = 0;
    PropulsionInteractionRun run;
    const double lengthRoot = std::sqrt(g * L), volumeRoot = std::sqrt(g * std::pow(vol, 1.0 / 3.0));
    for (int i = 0; i < sp.count(); ++i) {
      // 3. The similarity numbers, written whatever the interaction setting.
      sp.SpeedIndex(i);
      const double V = sp.Speed(i, kFtPerSec);
      const double Fn = V / lengthRoot;
      const double Fv = V / volumeRoot;
      const double Rn = V * L / nu;
      if (PassErrors(sp)) return false;
      if (!AllFinite({Fn, Fv, Rn})) return Fail("Division by zero");
      sp.CoefFroudeLength(i, Fn);
      sp.CoefFroudeVolume(i, Fv);
      sp.CoefReynoldsLength(i, Rn);

      // 4. The interaction coefficients.
      switch (propulsion.PropulsionInteractionEnabled()) {
        case kInteractionOff:
          w = 0.0;
          t = 0.0;
          etaR = 1.0;
          break;
        case kInteractionCalc:
          if (propulsion.PropulsionInteractionTechnique() == kTechniquePrediction) {
            if (!PredictPropulsionInteraction(w, t, etaR, referenceLength, speedCheck, Fn, Fv, water, hull,
                                              ittc78, propeller, propulsion, &run))
              return Fail("predicting propulsion interaction coefficients");
            sp.HullPropulsorInteractionSpeedCheck(i, speedCheck);
          }
          // Holtrop's factors are ship-scale already; every other method gives the wake of
          // its basis vessel.
          if (propulsion.ViscousScaleCorrEnabled() == 1 &&
              propulsion.PropulsionInteractionMethod() != kHoltropMethod) {
            const double ca = ittc78.CorrelationAllowance();
            const int rudderLocation = ittc78.RudderLocation();
            if (!CalcWakeFractionScaleCorrection(w, t, referenceLength, Rn, Fn, ca, k, rudderLocation))
              return Fail("viscous scale correction for wake fraction");
          }
          break;
        default:  // Lock: the columns keep what stands in them
          continue;
      }
      sp.WakeFraction(i, w);
      sp.ThrustDeduction(i, t);
      sp.RelRotEfficiency(i, etaR);
    }
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

bool PredictPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                  int& speedCheck, double Fn, double Fv, clsVXWaterProperties& water,
                                  clsVXHull& hull, clsVXITTC78Expansion& ittc78, clsVXPropeller& propeller,
                                  clsVXPropulsion& propulsion, PropulsionInteractionRun* run) {
  SetCalcLocation("Propulsion interaction prediction");
  (void)ittc78;  // none of the methods in use reads the expansion settings
  try {
    // 1. Read at the first speed of a run (a read that passed its check passes again and
    // pushes nothing); the error stacks are looked at every time.
    const bool kept = run && run->driverRead;
    double nu = 0.0, L = 0.0;
    if (kept) {
      nu = run->nu;
      L = run->driverL;
    } else {
      water.Density(kSlugPerFt3);
      nu = water.Viscosity(kFt2PerSec);
    }
    if (PassErrors(water)) return false;
    if (!kept) {
      hull.DisplacementVolume(kFt);
      L = hull.LengthWL(kFt);
    }
    if (PassErrors(hull)) return false;
    const int count = kept ? run->driverCount : std::max(propulsion.PropulsorCountPerHull(), 1);

    // 2.-3. The ship's Reynolds number on LWL, from Fn.
    const double L15 = kept ? run->L15 : std::pow(L, 1.5);
    const double Rn = L15 * Fn * std::sqrt(g) / nu;
    speedCheck = 1;

    // 4.-5. The method.
    const int method = kept ? run->method : propulsion.PropulsionInteractionMethod();
    bool ok = false;
    if (const PropulsionInteractionFunction calc = FindPropulsionInteractionMethod(method))
      ok = calc(w, t, etaR, referenceLength, speedCheck, hull, propeller, propulsion, Fn, Rn, run);
    else
      AddCalcError("Propulsion interaction method not available: " +
                   propulsion.PropulsionInteractionMethodLabel());
    if (etaR < 0.0) etaR = 1.0;
    if (!ok) return Fail("individual propulsion interaction coefficient calculation");

    // 6. Ducted propeller.
    const int ducted = kept ? run->ducted : propulsion.DuctedPropCorrEnabled();
    if (ducted == 1) {
      if (!CalcWakeFractionDuctCorrection(w, count, hull.SternShapeFactor()))
        return Fail("duct correction for wake fraction");
    }
    // 7. Tunnel stern, with the propeller's own diameter when it has one.
    const int tunnel = kept ? run->tunnel : propulsion.PropellerTunnelCorrEnabled();
    if (run && !kept) {
      run->driverRead = true;
      run->nu = nu;
      run->driverL = L;
      run->driverCount = count;
      run->L15 = L15;
      run->method = method;
      run->ducted = ducted;
      run->tunnel = tunnel;
    }
    if (tunnel == 1) {
      double D = propeller.Diameter(kFt);
      if (!(D > 0.0)) {
        D = hull.PropellerDiameterMax(kFt);
        if (!(D > 0.0)) D = 0.0;
      }
      const double effectiveDiameter = hull.PropellerTunnelEffectiveDiameter(kFt);
      const double recessDepth = hull.PropellerTunnelRecessDepth(kFt);
      if (!CalcPropulsionTunnelCorrection(w, t, etaR, Fv, D, effectiveDiameter, recessDepth))
        return Fail("tunnel correction for wake fraction");
    }
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

bool CalcWakeFractionDuctCorrection(double& w, int propulsorCount, double sternShapeFactor) {
  SetCalcLocation("Wake fraction duct correction");
  if (!(w > 0.0)) return true;
  // A count below 1 is read as one propulsor, as everywhere else in the prediction.
  const double f = propulsorCount > 1 ? 0.6 : std::clamp(0.1 * (sternShapeFactor + 1.0) + 0.5, 0.5, 0.7);
  const double corrected = f * w;
  if (!std::isfinite(corrected)) return Fail("calculating wake fraction duct correction");
  w = corrected;
  return true;
}

bool CalcPropulsionTunnelCorrection(double& w, double& t, double& etaR, double Fv, double diameter,
                                    double effectiveDiameter, double recessDepth) {
  SetCalcLocation("Propulsion interaction tunnel correction");
  if (!(Fv > 0.0 && diameter > 0.0 && effectiveDiameter > 0.0 && recessDepth > 0.0)) return true;
  // 1. The recess in percent of the tunnel diameter, and the tunnel's excess over the
  // propeller in percent of the propeller diameter on each side.
  const double ratio = 100.0 * recessDepth / effectiveDiameter;
  const double excess = 100.0 * (effectiveDiameter - diameter) / (2.0 * diameter);
  try {
    // 2.-3.
    double Fw = 0.0, Ft = 0.0, Fr = 0.0;
    if (!TunnelFactor(Fw, kTunnelWake, Fv, ratio)) return false;
    if (!TunnelFactor(Ft, kTunnelThrust, Fv, ratio)) return false;
    if (!TunnelFactor(Fr, kTunnelRelRot, Fv, ratio)) return false;
    // 4.
    w = 1.0 - (1.0 - w) * (excess / 120.0 + Fw);
    t = 1.0 - (1.0 - t) * (excess / 230.0 + Ft);
    etaR = etaR * (excess / 230.0 + Fr);
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

// ITTC (1978) performance prediction method, wake scaling:
//   wS = (t + 0.04) + (wM - t - 0.04) ((1+k) CFS + dCF) / ((1+k) CFM),
// 0.04 standing for the rudder behind the propeller. Here the "model" is the basis vessel of
// the interaction method at the same Froude number, in standard fresh water; the ship's
// allowance is the correlation allowance CA of the expansion.
bool CalcWakeFractionScaleCorrection(double& w, double t, double referenceLength, double Rn, double Fn,
                                     double CA, double k, int rudderLocation) {
  SetCalcLocation("Wake fraction scale correction");
  if (!(w > 0.0 && t > 0.0 && referenceLength > 0.0 && Rn > 0.0 && k > 0.0)) return true;
  try {
    const double rnRef = std::pow(referenceLength, 1.5) * Fn * std::sqrt(g) / StdViscosityFresh;
    const double ref = k * CalcFrictionITTC57(rnRef);
    if (!(ref > 0.0) || rnRef == Rn) return true;
    const double ship = k * CalcFrictionITTC57(Rn) + CA;
    const double delta = rudderLocation == 0 ? 0.04 : 0.0;
    const double wNew = (t + delta) + (w - t - delta) * ship / ref;
    if (!std::isfinite(wNew)) return Fail("calculating wake fraction scale correction");
    if (wNew < w) w = wNew;
    return true;
  } catch (const std::exception&) {
    return Fail("calculating wake fraction scale correction");
  }
}

}  // namespace velmar
