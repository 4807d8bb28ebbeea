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
#include "vessel/hull_reads.h"

namespace velmar {
namespace {

constexpr double g = GravityFt;
constexpr double kModelLengthFt = 20.0;

bool Fail(const char* text) {
  AddCalcError(text);
  return false;
}

// c17 and m3 of the wave formula above Fn 0.4, from the hull as read (L/B held at 2.6 or more).
// Formed once per reading, by its first speed above Fn 0.4; a run below it spends nothing on them.
void FormHighSpeedWaveTerms(HoltropHull& h) {
  if (h.highSpeedFormed) return;
  const double L = h.L, Vol = h.Vol, Cm = h.Cm, LB = h.LB;
  const double BL = 1.0 / LB, TB = 1.0 / h.BT;
  h.c17 = 6919.3 * std::pow(Cm, -1.3346) * std::pow(Vol / (L * L * L), 2.00977) * std::pow(LB - 2.0, 1.40692);
  h.m3 = -7.2035 * std::pow(BL, 0.326869) * std::pow(TB, 0.605375);
  h.highSpeedFormed = true;
}

}  // namespace

bool ReadHoltropHull(HoltropHull& h, const clsVXHull& hull) {
  HullReads r(hull);
  return ReadHoltropHull(h, r);
}

bool ReadHoltropHull(HoltropHull& h, HullReads& r) {
  SetCalcLocation("Holtrop bare-hull drag");
  h = HoltropHull{};
  const clsVXHull& hull = r.Hull();
  try {
    // 1-2. Hull data in feet, pounds and cubic feet; any missing item stops the method. The
    // stern coefficient enters through the form factor.
    // Each item is read once, the coefficients included (HullReads).
    h.L = r.LengthWL(kFt), h.B = r.BeamWLMax(kFt), h.T = r.DraftSubmergedMax(kFt);
    h.W = r.Displacement(kLb), h.Vol = r.DisplacementVolume(kFt), h.S = r.WettedSurface(kFt2);
    h.XB = r.XBuoyancyFwdTr(kFt), h.ABT = r.BulbAreaSect(kFt2), h.Z = r.ZBulbAreaSectBelowWL(kFt);
    h.AT = r.AreaSectAtTr(kFt2), h.iE = r.AngleHalfEntDeg(), h.Cp = r.CoefPrismatic();
    h.LVol = r.CoefLwlVol(), h.LT = r.CoefLwlTvolRatio(), h.BT = r.CoefBwlTvolRatio();
    h.LB = r.CoefLwlBwlRatio();
    h.Cw = r.CoefWaterplane(), h.Cm = r.CoefAreaSectMax(), h.AtAx = r.CoefAtAxRatio();
    if (PassHullErrors(hull)) return false;

    // 3-4. Very beamy hulls are taken at L/B 2.6, the lower end of the regression.
    h.LB = std::max(h.LB, 2.6);
    const double L = h.L, B = h.B, T = h.T, Vol = h.Vol, ABT = h.ABT, Z = h.Z, iE = h.iE, Cp = h.Cp;
    const double LVol = h.LVol, LT = h.LT, LB = h.LB;
    const double BL = 1.0 / LB, TB = 1.0 / h.BT, LVol3 = LVol * LVol * LVol;
    h.lcb = (h.XB - 0.5 * L) * 100.0 / L;

    // 5. Form factor. When it fails, its text stays in the calculation error state, and the
    // method goes on with 1 + k = 1.
    h.formFactorOk = CalcHoltropFormFactor(h.k1, r);
    if (!h.formFactorOk) h.k1 = 1.0;

    // 10. Bulb factor c2, Holtrop (1984): c3 = 0.56 ABT^1.5 / (B T (0.31 sqrt(ABT) + TF - hB)).
    // Its failure (and those of c7 and the length of run) is the speed part's to report, in
    // the order of the steps.
    if (ABT > 0.0) {
      h.ABT15 = std::pow(ABT, 1.5);
      h.c3 = 0.56 * h.ABT15 / (B * T * (0.31 * std::sqrt(ABT) + Z));
      if (h.c3 > 0.0) h.c2 = std::exp(-1.89 * std::sqrt(h.c3));
    }
    // 11-19. Coefficients of the wave resistance, Holtrop (1984).
    h.c7 = BL < 0.11 ? 0.229577 * std::cbrt(BL) : (BL > 0.25 ? 0.5 - 0.0625 * LB : BL);
    h.c5 = 1.0 - 0.8 * h.AtAx;
    h.c15 = LVol3 < 512.0 ? -1.69385 : (LVol3 >= 1726.91 ? 0.0 : -1.69385 + (std::cbrt(LVol3) - 8.0) / 2.36);
    h.c16 = Cp < 0.8 ? 8.07981 * Cp - 13.8673 * Cp * Cp + 6.984388 * Cp * Cp * Cp : 1.73014 - 0.7067 * Cp;
    h.c1 = 2223105.0 * std::pow(h.c7, 3.78613) * std::pow(TB, 1.07961) * std::pow(90.0 - iE, -1.37565);
    h.m1 = 0.0140407 * LT - 1.75254 * std::cbrt(Vol) / L - 4.79323 * BL - h.c16;
    h.lambda = LB < 12.0 ? 1.446 * Cp - 0.03 * LB : 1.446 * Cp - 0.36;

    // 24. The length of run; the form factor of step 5 has used it, and the stern coefficient
    // through c14 = 1 + 0.011 Cstern.
    const double a = Cp > 0.9 ? (Cp - 0.9) * 0.4 : 0.0;
    h.lr = 1.0 - Cp + a + 0.06 * Cp * h.lcb / (4.0 * Cp - 1.0);
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

bool CalcHoltropTermsAt(HoltropTerms& t, HoltropHull& h, double fn, FrictionITTC57Memo* modelFriction) {
  // The location is the method's, set by ReadHoltropHull (and put back by the form factor) or
  // by the run at a later speed. A failed form factor has left its own text and location in
  // the calculation error state; the speed part of the same reading goes on under them.
  // `t` is fresh (its callers construct or reset it), so it is not cleared again here.
  try {
    const double L = h.L, B = h.B, T = h.T, W = h.W, S = h.S, ABT = h.ABT, Z = h.Z, AT = h.AT, iE = h.iE;
    const double Cp = h.Cp, Cw = h.Cw, Cm = h.Cm, LVol = h.LVol;
    t.k1 = h.k1;

    // 6-8. Speed, speed range and the model's friction (ITTC-1957, basin water).
    double V = fn * std::sqrt(g * L);
    t.speedCheck = fn < 0.06 ? 0 : (fn <= 0.8 ? 1 : 2);
    const double rnModel = std::pow(kModelLengthFt, 1.5) * fn * std::sqrt(g) / StdViscosityFresh;
    t.cfModel = modelFriction ? modelFriction->At(rnModel) : CalcFrictionITTC57(rnModel);

    // 9. The wave terms are computed at Fn 0.04 at least, and scaled down in step 26.
    const double fnIn = fn;
    if (fn < 0.04) {
      if (fnIn == 0.0) return Fail("Division by zero");
      fn = 0.04;
      V = V * fn / fnIn;
    }

    // 10-19. The hull's coefficients, with their checks.
    if (ABT > 0.0) {
      t.c3 = h.c3;
      if (!(t.c3 > 0.0)) return Fail("Holtrop coef C3");
      t.c2 = h.c2;
    }
    t.c7 = h.c7;
    if (t.c7 < 0.0) return Fail("Holtrop coef C7");
    t.c5 = h.c5, t.c15 = h.c15, t.c16 = h.c16, t.c1 = h.c1, t.m1 = h.m1;
    if (fn > 0.4) {
      FormHighSpeedWaveTerms(h);
      t.c17 = h.c17, t.m3 = h.m3;
    }
    t.lambda = h.lambda;

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
      t.rb = 0.11 * std::exp(-3.0 / (pb * pb)) * fni * fni * fni * h.ABT15 * StdDensityFresh * g /
             (1.0 + fni * fni);
    }
    // 23. Immersed transom, Holtrop & Mennen (1982): FnT = V / sqrt(2 g AT / (B + B CWP)),
    // c6 = 0.2 (1 - 0.2 FnT) below FnT 5, RTR = 0.5 rho V^2 AT c6.
    if (AT > 0.0) {
      const double fnt = V / std::sqrt(2.0 * g * AT / (B + B * Cw));
      const double c6 = fnt < 5.0 ? 0.2 * (1.0 - 0.2 * fnt) : 0.0;
      t.rtr = 0.5 * c6 * StdDensityFresh * AT * V * V;
    }

    // 24. The length of run must exist.
    if (Cp < 0.25) return Fail("Holtrop coef dblCoefPrismatic");
    if (!(h.lr > 0.0)) return Fail("Holtrop length of run ratio");

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

bool CalcHoltropTerms(HoltropTerms& t, const clsVXHull& hull, double fn) {
  HoltropHull h;
  t = HoltropTerms{};
  return ReadHoltropHull(h, hull) && CalcHoltropTermsAt(t, h, fn);
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

bool CalcHullDragHoltropRun(double& ctModel, double& modelLength, int& speedCheck, HoltropRun& run,
                            const clsVXHull& hull, double fn, FrictionITTC57Memo& modelFriction) {
  HoltropTerms t;
  bool ok = false;
  if (run.read && run.hull.formFactorOk) {
    // The hull's values are those the first speed read. A word that another step has pushed on
    // the hull's error stack since stops the method here, as a fresh reading would.
    SetCalcLocation("Holtrop bare-hull drag");
    ok = !PassHullErrors(hull) && CalcHoltropTermsAt(t, run.hull, fn, &modelFriction);
  } else {
    run.read = run.reads ? ReadHoltropHull(run.hull, *run.reads) : ReadHoltropHull(run.hull, hull);
    run.reads = nullptr;
    ok = run.read && CalcHoltropTermsAt(t, run.hull, fn, &modelFriction);
  }
  ctModel = ok ? t.k1 * t.cfModel + t.cw : 0.0;
  modelLength = kModelLengthFt;
  speedCheck = t.speedCheck;
  return ok;
}

}  // namespace velmar
