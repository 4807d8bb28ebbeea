// A lean reference for BM_CalculateResistance10Speeds: the same ten-speed prediction of the
// Holtrop & Mennen (1982) example ship, with the same method choices, written as one plain
// function over doubles in SI units. No units, reads, checks, error stacks or rounding of
// stored values: what is left is the arithmetic itself, the floor under the engine's time.
// Before timing, the engine calculates the same project and both must agree.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "bench_support.h"

namespace velmar {
namespace {

// The engine works in feet, slugs and seconds with these constants; here they are in SI.
constexpr double kMPerFt = 0.3048;
constexpr double kG = 32.174 * kMPerFt;                                               // gravity, m/s2
constexpr double kRhoFresh = 1.9384 * 14.5939029372 / (kMPerFt * kMPerFt * kMPerFt);  // basin water, kg/m3
constexpr double kNuFresh = 1.22603e-5 * kMPerFt * kMPerFt;                           // basin water, m2/s
constexpr double kGStd = 9.80665;                // weight of a kilogram, N
constexpr double kModelLength = 20.0 * kMPerFt;  // Holtrop's model, m

// What EnterTenSpeedProject enters, in SI.
struct LeanShip {
  double rho = 1026.0, nu = 1.1892e-6;  // standard salt water, 15 degC
  double dispKg = 37500.0 * 1026.0, L = 205.0, B = 32.0, T = 10.0, AX = 0.98 * 32.0 * 10.0;
  double AWP = 0.75 * 205.0 * 32.0, S = 7381.45, ABT = 20.0, Z = 6.0, AT = 16.0;
  double XB = 102.5 - 0.0075 * 205.0, iE = 12.08, sternFactor = 1.0;
  int shafts = 2;
  double shaftAngleDeg = 4.0, shaftS = 6.0, strutBossingS = 1.2, strutS = 4.0;
  int strutCount = 1, rudderCount = 2;
  double rudderS = 25.0;  // rudder type 0: 1 + k2 = 2.5
  int bilgeKeelCount = 2;
  double bilgeKeelS = 60.0;
  int thrusterCount = 1;
  double thrusterD = 2.0;
  double k1 = 1.156, ca = 0.00035, roughnessMM = 0.15, marginPercent = 10.0;
  double speedKt[10] = {8.0, 10.0, 12.0, 14.0, 16.0, 18.0, 20.0, 22.0, 24.0, 26.0};
};

// ITTC-1957 model-ship correlation line (8th ITTC, Madrid 1957): CF = 0.075 / (log10 Rn - 2)^2.
double CfITTC57(double rn) {
  const double d = std::log10(rn) - 2.0;
  return 0.075 / (d * d);
}

// Total drag (N) and effective power (W) at the ten speeds.
[[gnu::noinline]] void LeanResistance(const LeanShip& s, double dragN[10], double powerW[10]) {
  // Once per run: the hull's ratios and the speed-independent Holtrop coefficients.
  const double vol = s.dispKg / s.rho, W = s.dispKg * kGStd;
  const double Cp = vol / (s.L * s.AX), Cm = s.AX / (s.B * s.T), Cw = s.AWP / (s.L * s.B);
  const double LB = s.L / s.B, BL = 1.0 / LB, TB = s.T / s.B, LT = s.L / s.T;
  const double AtAx = s.AT / s.AX;

  // Form factor 1 + k1, Holtrop (1984), c14 = 1 + 0.011 Cstern; length of run LR/L of
  // Holtrop & Mennen (1982) (the fullness term is 0 below CP 0.9).
  const double lr = 1.0 - Cp + 0.06 * Cp * ((s.XB / s.L - 0.5) * 100.0) / (4.0 * Cp - 1.0);
  const double c14 = 1.0 + 0.011 * (10.0 * s.sternFactor);
  const double k1Model = 0.93 + 0.487118 * c14 * std::pow(BL, 1.06806) * std::pow(1.0 / LT, 0.46106) *
                                    std::pow(1.0 / lr, 0.121563) * std::pow(s.L * s.L * s.L / vol, 0.36486) *
                                    std::pow(1.0 - Cp, -0.604247);

  // Wave resistance coefficients, Holtrop (1984), for Fn up to 0.4 (every speed here is below):
  // bulb c3, c2; c7 for 0.11 < B/L < 0.25; c5 of the transom; c15 for L^3/Vol below 512;
  // c16 for CP below 0.8; c1, m1 and lambda for L/B below 12.
  const double ABT15 = std::pow(s.ABT, 1.5);
  const double c3 = 0.56 * ABT15 / (s.B * s.T * (0.31 * std::sqrt(s.ABT) + s.Z));
  const double c2 = std::exp(-1.89 * std::sqrt(c3));
  const double c7 = BL, c5 = 1.0 - 0.8 * AtAx, c15 = -1.69385;
  const double c16 = 8.07981 * Cp - 13.8673 * Cp * Cp + 6.984388 * Cp * Cp * Cp;
  const double c1 =
      2223105.0 * std::pow(c7, 3.78613) * std::pow(TB, 1.07961) * std::pow(90.0 - s.iE, -1.37565);
  const double m1 = 0.0140407 * LT - 1.75254 * std::cbrt(vol) / s.L - 4.79323 * BL - c16;
  const double lambda = 1.446 * Cp - 0.03 * LB;

  // Roughness allowance, ITTC-78 (Bowden and Davison 1974), of the standard 0.15 mm and of the
  // hull's roughness: dCF = (44 ((ks / L)^(1/3) - 10 Rn^(-1/3)) + 0.125) 1e-3.
  const double stdTerm = std::pow(0.00015 / s.L, 1.0 / 3.0);
  const double roughTerm = std::pow(0.001 * s.roughnessMM / s.L, 1.0 / 3.0);

  // Holtrop's appendages with a form factor: sum of (1 + k2) S; the shaft's 1 + k2 from its angle.
  const double shaftK = 1.2 - 0.03 * s.shaftAngleDeg + 0.011 * s.shaftAngleDeg * s.shaftAngleDeg;
  const double modelLengthPow = std::pow(kModelLength, 1.5);

  for (int i = 0; i < 10; ++i) {
    const double V = s.speedKt[i] * (1852.0 / 3600.0);
    const double Fn = V / std::sqrt(kG * s.L), Rn = V * s.L / s.nu;

    // The model: Holtrop's total coefficient of a 20 ft model in fresh water at the ship's Fn,
    // CT = (1 + k1) CF + (RW + RB + RTR) / (0.5 rho S V^2), Holtrop & Mennen (1982), Holtrop (1984).
    const double rnModel = modelLengthPow * Fn * std::sqrt(kG) / kNuFresh;
    const double cfModel = CfITTC57(rnModel);
    const double m4 = c15 * 0.4 * std::exp(-0.034 * std::pow(Fn, -3.29));
    const double rw =
        c1 * c2 * c5 * W * std::exp(m1 * std::pow(Fn, -0.9) + m4 * std::cos(lambda * std::pow(Fn, -2.0)));
    // Bulb, Holtrop (1984).
    const double hF = std::max(s.B * s.T * Cp * Cm * (136.0 - 316.3 * Fn) * Fn * Fn * Fn / s.L, -0.01 * s.L);
    const double hW = std::min(V * V * s.iE / (400.0 * kG), 0.01 * s.L);
    const double fni = V / std::sqrt((s.Z - 0.25 * std::sqrt(s.ABT) + hF + hW) * kG);
    const double e = std::max(std::max(1.5 * s.Z - 0.5 * s.T + hF, 0.56 * std::sqrt(s.ABT)), 0.1 * s.T);
    const double pb = 0.56 * std::sqrt(s.ABT) / e;
    const double rb =
        0.11 * std::exp(-3.0 / (pb * pb)) * fni * fni * fni * ABT15 * kRhoFresh * kG / (1.0 + fni * fni);
    // Immersed transom, Holtrop & Mennen (1982).
    const double fnt = V / std::sqrt(2.0 * kG * s.AT / (s.B + s.B * Cw));
    const double c6 = fnt < 5.0 ? 0.2 * (1.0 - 0.2 * fnt) : 0.0;
    const double rtr = 0.5 * c6 * kRhoFresh * s.AT * V * V;
    const double ctModel = k1Model * cfModel + (rw + rb + rtr) / (0.5 * kRhoFresh * s.S * V * V);
    // Its residuary part over the given form factor (no speed correction), at least 1e-6.
    const double crModel = std::max(ctModel - ((s.k1 - 1.0) + 1.0) * cfModel, 1e-6);

    // ITTC-78 expansion to the ship: CT = CR + dCF (over the standard) + CA + (1 + k) CF.
    const double cf = CfITTC57(Rn);
    const double rnTerm = std::pow(Rn, -1.0 / 3.0);
    const double dCFstd = (stdTerm - 10.0 * rnTerm) * 0.044 + 0.000125;
    const double dCF = (roughTerm - 10.0 * rnTerm) * 0.044 + 0.000125 - dCFstd;
    const double q = 0.5 * s.rho * s.S * V * V;
    const double bareHull = q * (crModel + dCF + s.ca + ((s.k1 - 1.0) + 1.0) * cf);

    // Holtrop's component appendages, RAPP = 0.5 rho V^2 (CF (1 + k2) + CA) S per kind, in the
    // order of the engine's sum (the hull bossing, without wetted surface, adds nothing), and
    // the tunnel thruster, 0.5 rho V^2 pi D^2 0.015 per thruster.
    const double qa = 0.5 * s.rho * V * V;
    double app = (cf * shaftK + s.ca) * qa * (s.shaftS * s.shafts);
    app += (cf * 3.5 + s.ca) * qa * (s.strutBossingS * s.shafts);
    app += (cf * 4.0 + s.ca) * qa * (s.strutS * s.strutCount * s.shafts);
    app += (cf * 2.5 + s.ca) * qa * (s.rudderS * s.rudderCount);
    app += (cf * 1.4 + s.ca) * qa * (s.bilgeKeelS * s.bilgeKeelCount);
    app +=
        0.5 * s.rho * V * V * (2.0 * 0.0075 * std::numbers::pi) * s.thrusterD * s.thrusterD * s.thrusterCount;

    // The margin is a share of the bare-hull drag; the effective power is RT V.
    dragN[i] = bareHull + app + 0.01 * s.marginPercent * bareHull;
    powerW[i] = dragN[i] * V;
  }
}

void BM_LeanResistance10Speeds(benchmark::State& state) {
  LeanShip ship;
  double drag[10], power[10];
  // The engine's stored values of the same project are the answer the lean version must give.
  bench::EnterTenSpeedProject();
  if (!RunCalculate().ok) {
    state.SkipWithError("the resistance prediction failed");
    return;
  }
  LeanResistance(ship, drag, power);
  const clsVXSpeedPerformance& sp = *App().primary.SpeedPerformance;
  double maxRelDiff = 0.0;
  for (int i = 0; i < 10; ++i) {
    const double want[2] = {sp.DragTotal(i, kN), sp.PowerEffectiveTotal(i, kW)}, got[2] = {drag[i], power[i]};
    for (int k = 0; k < 2; ++k) {
      const double relDiff = std::fabs(got[k] - want[k]) / std::fabs(want[k]);
      maxRelDiff = std::max(maxRelDiff, relDiff);
      if (relDiff < 1e-5) continue;
      char text[160];
      std::snprintf(text, sizeof text, "%s at %g kt: lean %.9g, engine %.9g",
                    k == 0 ? "drag (N)" : "power (W)", ship.speedKt[i], got[k], want[k]);
      state.SkipWithError(text);
      return;
    }
  }
  state.counters["maxRelDiff"] = maxRelDiff;
  for (auto _ : state) {
    benchmark::DoNotOptimize(ship);  // the inputs are unknown to the compiler at every run
    LeanResistance(ship, drag, power);
    benchmark::DoNotOptimize(drag);
    benchmark::DoNotOptimize(power);
  }
}
BENCHMARK(BM_LeanResistance10Speeds);

}  // namespace
}  // namespace velmar
