// Shallow-water drag by Lackenby, Raven and Karpov.
#include "resistance/channel_drag.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/diagnostics.h"
#include "resistance/resistance_driver.h"
#include "resistance/seas_drag.h"

namespace velmar {
namespace {

bool Fail(const std::string& text) {
  AddCalcError(text);
  return false;
}

struct KarpovBand {
  bool aboveFrh04;
  double hTFrom, hTTo;
  double c[7];
};
constexpr KarpovBand kKarpov[] = {
#include "resistance/tables/karpov_alpha_fits.inc"
};

}  // namespace

double LackenbySpeedLoss(double areaSectMax, double depth, double speed, double g) {
  const double m = areaSectMax / (depth * depth);
  if (m < 0.05) return 0.0;
  return 0.1242 * (m - 0.05) + 1.0 - std::sqrt(std::tanh(g * depth / (speed * speed)));
}

bool RavenCorrectionOf(double speed, double lpp, double draft, double depth, double volume, double awp,
                       RavenCorrection& r, double g) {
  r = RavenCorrection{};
  r.viscousRatio = 0.57 * std::pow(draft / depth, 1.79);
  r.frh = speed / std::sqrt(g * depth);
  r.frhd = speed / std::sqrt(g * 0.3 * lpp);
  if (!(r.frh < 1.0) || !(r.frhd < 1.0)) return false;
  auto term = [](double f) { return f * f / std::sqrt(1.0 - f * f); };
  r.sinkage = 1.46 * volume / (lpp * lpp) * (term(r.frh) - term(r.frhd));
  r.volumeRatio = std::min(r.sinkage * awp / volume, 0.05);
  r.rSink = std::pow(1.0 + r.volumeRatio, 2.0 / 3.0);
  return true;
}

double KarpovAlpha(double frh, double hT) {
  const bool above = frh > 0.4;
  for (const KarpovBand& b : kKarpov) {
    if (b.aboveFrh04 != above || hT < b.hTFrom || hT >= b.hTTo) continue;
    if (above && b.hTFrom >= 8.5 && frh <= 0.6) return 1.0;
    double alpha = 0.0;
    for (int k = 6; k >= 0; --k) alpha = alpha * frh + b.c[k];
    return alpha;
  }
  return 1.0;
}

bool CalcChannelDrag(double& dragN, clsVXEnvironment& environment, clsVXHull& hull,
                     clsVXITTC78Expansion& ittc78, clsVXResistance& resistance, clsVXSpeedPerformance& sp,
                     int row, double speedFtPerSec, double waterDensity) {
  SetCalcLocation("Shallow-water drag prediction");
  dragN = 0.0;
  const int method = resistance.ChannelDragMethod();
  const std::string label = resistance.ChannelDragMethodLabel(method);
  if (method < kChannelLackenby) return Fail("Shallow-water drag method not available: " + label);
  // The three methods are for open shallow water; none gives the effect of the channel's banks.
  if (environment.ShallowWaterType() == 1)
    return Fail("Restricted channel not available: " + label + " is for open shallow water");
  const double h = environment.ShallowWaterDepth(kM);
  if (environment.ErrorsFound()) {
    AddCalcErrors(environment.Errors());
    return false;
  }
  if (!(h > 0.0)) return Fail("Shallow-water drag (" + label + ") needs: Water depth");
  const double V = speedFtPerSec * 0.3048;
  if (!(V > 0.0)) return true;
  const double bareHull = sp.DragBareHull(row, kN);
  const double calm = bareHull + sp.DragAppendages(row, kN);
  const double g = GravitySI;

  switch (method) {
    case kChannelLackenby: {
      const double am = hull.AreaSectMax(kM2);
      if (!SpeedLossDrag(calm, V, [&](double vDeep) { return LackenbySpeedLoss(am, h, vDeep, g); }, dragN))
        return Fail("Shallow-water drag (" + label + "): no deep-water speed of equal power at depth Froude number " +
                    std::to_string(V / std::sqrt(g * h)));
      return true;
    }
    case kChannelRaven: {
      // The trial correction takes the deep-water power as P / r_sink - dR_V V / eta_D; turned
      // round, the shallow-water drag is r_sink (R_deep + dR_V), R_V the viscous part of the
      // bare hull (its share CV / CT of the bare-hull drag).
      RavenCorrection r;
      if (!RavenCorrectionOf(V, hull.LengthWL(kM), hull.DraftSubmergedMax(kM), h, hull.DisplacementVolume(kM),
                             hull.AreaWaterplane(kM2), r, g)) {
        return Fail("Shallow-water drag (" + label + "): depth Froude number " + std::to_string(r.frh) +
                    " or length Froude number over 0.3 L at or above 1");
      }
      const double ct = sp.CoefDragBareHull(row);
      const double viscous = ct > 0.0 ? bareHull * sp.CoefDragBareHullViscous(row) / ct : 0.0;
      dragN = r.rSink * (calm + r.viscousRatio * viscous) - calm;
      return true;
    }
    case kChannelKarpov: {
      // Karpov: the components other than friction and appendages take the speed V2 = V /
      // alpha. Of the predicted bare hull that is the residuary part, whose coefficient the
      // hull method gives at the Froude number of V2.
      if (ittc78.HullHydrodynamicType() != kHydroITTC78CT || resistance.HullDragEnabled() != kDragCalc ||
          (resistance.HullDragTechnique() != kTechniquePrediction &&
           resistance.HullDragTechnique() != kTechniqueAlignedPrediction)) {
        return Fail("Shallow-water drag (" + label + ") needs the predicted hull drag of the ITTC-78 (CT) route");
      }
      const double T = hull.DraftSubmergedMax(kM), L = hull.LengthWL(kM), S = hull.WettedSurface(kM2);
      const double alpha = KarpovAlpha(V / std::sqrt(g * h), T > 0.0 ? h / T : 0.0);
      if (!(alpha > 0.0)) return Fail("Shallow-water drag (" + label + "): no speed factor for this depth");
      const double v2 = V / alpha;
      double ct2 = 0.0, cr2 = 0.0;
      int speedCheck = 1;
      if (!CalcModelCtCr(ct2, cr2, speedCheck, v2 / std::sqrt(g * L), hull, ittc78, resistance, 1.0, 1.0))
        return false;
      const double cr = sp.CoefDragBareHullResiduary(row);
      const int hulls = hull.HullConfigType() == 0 ? 1 : 2;
      dragN = 0.5 * waterDensity * S * (v2 * v2 * cr2 - V * V * cr) * hulls;
      return true;
    }
    default:
      return Fail("Shallow-water drag method not available: " + label);
  }
}

}  // namespace velmar
