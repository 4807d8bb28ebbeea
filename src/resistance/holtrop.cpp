// The Holtrop bare-hull method in this system's form: the wave, bulb and transom resistance of
// Holtrop & Mennen (1982) as revised by Holtrop (1984), turned into the total coefficient of
// a 20 ft model in fresh water at the vessel's Froude number. The ITTC-78 expansion takes the
// model's viscous part off again and scales the remainder to the ship, so every prediction
// method feeds the same expansion. Units: feet, pounds force, seconds.
#include "resistance/holtrop.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "core/spline_fit.h"
#include "resistance/friction.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

constexpr double g = GravityFt;
constexpr double kModelLengthFt = 20.0;

bool Fail(const char* text) {
  AddCalcError(text);
  return false;
}

}  // namespace

bool CalcHoltropTerms(HoltropTerms& t, const clsVXHull& hull, double fn) {
  SetCalcLocation("Holtrop bare-hull drag");
  t = HoltropTerms{};
  try {
    // 1-2. Hull data in feet, pounds and cubic feet; any missing item stops the method. The
    // stern coefficient enters through the form factor.
    const double L = hull.LengthWL(kFt), B = hull.BeamWLMax(kFt), T = hull.DraftSubmergedMax(kFt);
    const double W = hull.Displacement(kLb), Vol = hull.DisplacementVolume(kFt), S = hull.WettedSurface(kFt2);
    const double XB = hull.XBuoyancyFwdTr(kFt), ABT = hull.BulbAreaSect(kFt2),
                 Z = hull.ZBulbAreaSectBelowWL(kFt);
    const double AT = hull.AreaSectAtTr(kFt2), iE = hull.AngleHalfEntDeg(), Cp = hull.CoefPrismatic();
    const double LVol = hull.CoefLwlVol(), LT = hull.CoefLwlTvolRatio(), BT = hull.CoefBwlTvolRatio();
    double LB = hull.CoefLwlBwlRatio();
    const double Cw = hull.CoefWaterplane(), Cm = hull.CoefAreaSectMax(), AtAx = hull.CoefAtAxRatio();
    if (PassHullErrors(hull)) return false;

    // 3-4. Very beamy hulls are taken at L/B 2.6, the lower end of the regression.
    LB = std::max(LB, 2.6);
    const double BL = 1.0 / LB, TB = 1.0 / BT, LVol3 = LVol * LVol * LVol;
    const double lcb = (XB - 0.5 * L) * 100.0 / L;

    // 5-8. Form factor, speed, speed range and the model's friction (ITTC-1957, basin water).
    if (!CalcHoltropFormFactor(t.k1, hull)) t.k1 = 1.0;
    double V = fn * std::sqrt(g * L);
    t.speedCheck = fn < 0.06 ? 0 : (fn <= 0.8 ? 1 : 2);
    const double rnModel = std::pow(kModelLengthFt, 1.5) * fn * std::sqrt(g) / StdViscosityFresh;
    t.cfModel = CalcFrictionITTC57(rnModel);

    // 9. The wave terms are computed at Fn 0.04 at least, and scaled down in step 26.
    const double fnIn = fn;
    if (fn < 0.04) {
      if (fnIn == 0.0) return Fail("Division by zero");
      fn = 0.04;
      V = V * fn / fnIn;
    }

    // 10. Bulb factor c2, Holtrop (1984): c3 = 0.56 ABT^1.5 / (B T (0.31 sqrt(ABT) + TF - hB)).
    t.c2 = 1.0;
    if (ABT > 0.0) {
      t.c3 = 0.56 * std::pow(ABT, 1.5) / (B * T * (0.31 * std::sqrt(ABT) + Z));
      if (!(t.c3 > 0.0)) return Fail("Holtrop coef C3");
      t.c2 = std::exp(-1.89 * std::sqrt(t.c3));
    }
    // 11-19. Coefficients of the wave resistance, Holtrop (1984).
    t.c7 = BL < 0.11 ? 0.229577 * std::cbrt(BL) : (BL > 0.25 ? 0.5 - 0.0625 * LB : BL);
    if (t.c7 < 0.0) return Fail("Holtrop coef C7");
    t.c5 = 1.0 - 0.8 * AtAx;
    t.c15 = LVol3 < 512.0 ? -1.69385 : (LVol3 >= 1726.91 ? 0.0 : -1.69385 + (std::cbrt(LVol3) - 8.0) / 2.36);
    t.c16 = Cp < 0.8 ? 8.07981 * Cp - 13.8673 * Cp * Cp + 6.984388 * Cp * Cp * Cp : 1.73014 - 0.7067 * Cp;
    t.c1 = 2223105.0 * std::pow(t.c7, 3.78613) * std::pow(TB, 1.07961) * std::pow(90.0 - iE, -1.37565);
    t.m1 = 0.0140407 * LT - 1.75254 * std::cbrt(Vol) / L - 4.79323 * BL - t.c16;
    t.c17 =
        6919.3 * std::pow(Cm, -1.3346) * std::pow(Vol / (L * L * L), 2.00977) * std::pow(LB - 2.0, 1.40692);
    t.m3 = -7.2035 * std::pow(BL, 0.326869) * std::pow(TB, 0.605375);
    t.lambda = LB < 12.0 ? 1.446 * Cp - 0.03 * LB : 1.446 * Cp - 0.36;

    // 20. Wave resistance below Fn 0.4 and above Fn 0.55, with m4 = 0.4 c15 exp(-0.034 Fn^-3.29).
    auto waveTerm = [&t](double f, double m) {
      const double m4 = t.c15 * 0.4 * std::exp(-0.034 * std::pow(f, -3.29));
      return std::exp(m * std::pow(f, -0.9) + m4 * std::cos(t.lambda * std::pow(f, -2.0)));
    };
    auto rwLow = [&](double f) { return t.c1 * t.c2 * t.c5 * W * waveTerm(f, t.m1); };
    auto rwHigh = [&](double f) { return t.c17 * t.c2 * t.c5 * W * waveTerm(f, t.m3); };

    // 21. Between the two ranges a spline across the hump, through three points of each
    // formula and a hump point (xh, yh) that moves with the slenderness L/Vol^(1/3). The
    // seventh point, at Fn 0.39, is computed and deliberately left out of the fit.
    if (fn <= 0.4) {
      t.rw = rwLow(fn);
    } else if (fn >= 0.55) {
      t.rw = rwHigh(fn);
    } else {
      const double xh = 0.53 - 0.11 * std::exp(-900.0 * std::pow(LVol, -3.5));
      const double yh = (1.0 + 0.0015 * LVol * LVol) * rwHigh(0.55) * xh * xh / (0.55 * 0.55);
      const double xs[7] = {0.56, 0.551, 0.55, xh, 0.4, 0.399, 0.39};
      const double ys[7] = {rwHigh(0.56), rwHigh(0.551), rwHigh(0.55), yh,
                            rwLow(0.4),   rwLow(0.399),  rwLow(0.39)};
      clsVXSplineFit hump;
      hump.count(6);
      hump.BaseShift(0);
      for (int i = 0; i < 6; ++i) {
        hump.x(i, xs[i]);
        hump.y(i, ys[i]);
      }
      hump.MakeControlWithLinearSections(kFreeEnd, kFreeEnd, kFreeEnd, kFreeEnd, 2);
      hump.EvalAtX(fn, t.rw);
    }

    // 22. Bulb, Holtrop (1984): immersion of the bulb with the bow wave height hF and the wave
    // height hW, Fni = V / sqrt(g (TF - hB - 0.25 sqrt(ABT) + hF + hW)),
    // PB = 0.56 sqrt(ABT) / (TF - 1.5 hB + hF), RB = 0.11 exp(-3 PB^-2) Fni^3 ABT^1.5 rho g / (1 + Fni^2).
    if (ABT > 0.0) {
      const double hF = std::max(B * T * Cp * Cm * (136.0 - 316.3 * fn) * fn * fn * fn / L, -0.01 * L);
      const double hW = std::min(V * V * iE / (400.0 * g), 0.01 * L);
      const double d = (Z - 0.25 * std::sqrt(ABT) + hF + hW) * g;
      if (!(d > 0.0)) return Fail("Holtrop bulb centroid coef");
      const double fni = V / std::sqrt(d);
      double e = 1.5 * Z - 0.5 * T + hF;
      e = std::max(e, 0.56 * std::sqrt(ABT));
      e = std::max(e, 0.1 * T);
      const double pb = 0.56 * std::sqrt(ABT) / e;
      t.rb = 0.11 * std::exp(-3.0 / (pb * pb)) * fni * fni * fni * std::pow(ABT, 1.5) * StdDensityFresh * g /
             (1.0 + fni * fni);
    }
    // 23. Immersed transom, Holtrop & Mennen (1982): FnT = V / sqrt(2 g AT / (B + B CWP)),
    // c6 = 0.2 (1 - 0.2 FnT) below FnT 5, RTR = 0.5 rho V^2 AT c6.
    if (AT > 0.0) {
      const double fnt = V / std::sqrt(2.0 * g * AT / (B + B * Cw));
      const double c6 = fnt < 5.0 ? 0.2 * (1.0 - 0.2 * fnt) : 0.0;
      t.rtr = 0.5 * c6 * StdDensityFresh * AT * V * V;
    }

    // 24. The length of run must exist; the form factor of step 5 has used it, and the stern
    // coefficient through c14 = 1 + 0.011 Cstern.
    if (Cp < 0.25) return Fail("Holtrop coef dblCoefPrismatic");
    const double a = Cp > 0.9 ? (Cp - 0.9) * 0.4 : 0.0;
    const double lr = 1.0 - Cp + a + 0.06 * Cp * lcb / (4.0 * Cp - 1.0);
    if (!(lr > 0.0)) return Fail("Holtrop length of run ratio");

    // 25-26. Wave coefficient on the basin's water; below Fn 0.04 it falls as Fn^4.
    t.cw = (t.rw + t.rb + t.rtr) / (0.5 * StdDensityFresh * S * V * V);
    if (fnIn < fn) t.cw *= std::pow(fnIn / fn, 4.0);
    const double ct = t.k1 * t.cfModel + t.cw;
    if (!std::isfinite(ct)) return Fail(std::isnan(ct) ? "Invalid procedure call or argument" : "Overflow");
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

// 27. The model's total coefficient.
bool CalcHullDragHoltrop(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                         double fn) {
  HoltropTerms t;
  const bool ok = CalcHoltropTerms(t, hull, fn);
  ctModel = ok ? t.k1 * t.cfModel + t.cw : 0.0;
  modelLength = kModelLengthFt;
  speedCheck = t.speedCheck;
  return ok;
}

}  // namespace velmar
