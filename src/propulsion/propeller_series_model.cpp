// Series propeller performance: the open-water polynomials of the selected series with the
// program's corrections, the blade-by-blade treatment of oblique inflow, and the data-set
// checks of each series. Units: ft, slug/ft3, ft2/s, 1/s, psi.
#include "propulsion/propeller_series_model.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <exception>
#include <iterator>
#include <stdexcept>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "propulsion/gawn_kca.h"
#include "propulsion/propeller_formulas.h"

namespace velmar {
namespace {

constexpr int kBSeries = 0;
constexpr const char* kAxialLocation = "propeller series axial performance calculation";
constexpr int kCRP = 2;  // PropellerType of a contra-rotating pair
constexpr int kWaterjet = 3;

// A division by zero is a run-time fault of the prediction, reported with the error handler's
// texts: "Division by zero", and "Overflow" for 0/0.
double Div(double a, double b) {
  if (b == 0.0) throw std::domain_error(a == 0.0 ? "Overflow" : "Division by zero");
  return a / b;
}

int Fail(const std::string& text) {
  AddCalcError(text);
  return 0;
}

// Ends a function with the object's error stack, if it has one.
bool PassErrors(DataClass& object) {
  if (!object.ErrorsFound()) return false;
  AddCalcErrors(object.Errors());
  return true;
}

// The guard around a function body: a fault becomes its text and result 0.
template <class Body>
int Guarded(Body body) {
  try {
    return body();
  } catch (const std::exception& e) {
    return Fail(e.what());
  } catch (...) {
    return Fail("Unknown error");
  }
}

// The label of `index` in `list`, or the number for an index outside the list.
std::string LabelOr(const LabelList& list, int index) {
  const auto& labels = list.labels;
  return index >= 0 && index < static_cast<int>(labels.size()) ? labels[index] : std::to_string(index);
}

std::string SeriesLabel(int series) { return LabelOr(kPropellerSeriesLabels, series); }

// ---- Open-water functions of each series ------------------------------------------------

// What a series' open-water functions may use.
struct SeriesPoint {
  double J, PD, EAR;
  int Z;
  double LD;  // nozzle length over diameter, 0.5 to 1.0
  double HD;  // (0.5 D + hub immersion) / D
};

using CoefFn = bool (*)(double& K, const SeriesPoint& p, DerivativeArray* d);

bool BSeriesKT(double& K, const SeriesPoint& p, DerivativeArray* d) {
  return CalcKTBSeries(K, p.J, p.PD, p.EAR, p.Z, d);
}
bool BSeriesKQ(double& K, const SeriesPoint& p, DerivativeArray* d) {
  return CalcKQBSeries(K, p.J, p.PD, p.EAR, p.Z, d);
}
// The regression holds three blades; the blade count does not enter.
bool GawnKCAKT(double& K, const SeriesPoint& p, DerivativeArray* d) {
  return CalcKTGawnKCA(K, p.J, p.PD, p.EAR, d);
}
bool GawnKCAKQ(double& K, const SeriesPoint& p, DerivativeArray* d) {
  return CalcKQGawnKCA(K, p.J, p.PD, p.EAR, d);
}

// KT, KQ and nozzle KTN of each series, in the order of kPropellerSeriesLabels. A series
// whose coefficients this program does not hold yet has none.
struct SeriesFunctions {
  CoefFn kt = nullptr, kq = nullptr, ktn = nullptr;
};
constexpr SeriesFunctions kSeriesFunctions[11] = {
    {BSeriesKT, BSeriesKQ, nullptr},  // B Series
    {},                               // Gawn AEW: no coefficients
    {GawnKCAKT, GawnKCAKQ, nullptr},  // Gawn KCA; the Kaplan and other series have none either
};

// The functions of `series` for PropulsorCalcType `calcType`, or null with the reason.
const SeriesFunctions* FunctionsOf(int calcType, int series) {
  if (calcType != 0) {
    AddCalcError("Propulsor type not available: " + LabelOr(kPropulsorCalcTypeLabels, calcType));
    return nullptr;
  }
  if (series >= 0 && series < static_cast<int>(std::size(kSeriesFunctions)) && kSeriesFunctions[series].kt)
    return &kSeriesFunctions[series];
  AddCalcError("Propeller series not available: " + SeriesLabel(series));
  return nullptr;
}

// ---- Scale correction -------------------------------------------------------------------

// The full-scale corrections of a series chart, by ScaleCorrection. Both that the program
// holds are fitted to the B-series:
// - "B Series": the Reynolds-number correction of the regression itself (Oosterveld & van
//   Oossanen 1975, Table 2 of Bernitsas, Ray & Kinley 1981), at the section Reynolds number
//   at 0.75R on the B-series chord, c0.75 sqrt(Va^2 + (0.75 pi n D)^2) / nu. The charts stand
//   for Rn 2e6, and the correction is applied above it only.
// - "Part ITTC": the section-drag correction of the ITTC (1978) performance prediction method
//   with the model-scale drag frozen, as Holtrop & Mennen (1982) apply it to the B-series
//   charts (bseries.h). "Part" because the model side is a constant, not the drag at the
//   model propeller's own Reynolds number.
// "Equiv profile" and "Full ITTC" need that model-scale drag formula, which the program does
// not hold. Units: n in 1/s, Va in ft/s, D in ft, nu in ft2/s.
constexpr int kScaleBSeries = 1, kScalePartITTC = 3;

// The same number, bit for bit (a memo's key).
bool Same(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

bool ApplyScaleCorrection(double& KT, double& KQ, const SeriesPoint& p, double nu, double n, double Va,
                          double D, double tc, double roughnessMM, int series, int method,
                          const SeriesModelInputs* in) {
  if (series == kBSeries && method == kScaleBSeries) {
    const double chord = Div(2.073 * p.EAR * D, p.Z);
    const double Rn = Div(chord * std::hypot(Va, 0.75 * Pi * n * D), nu);
    if (!(Rn > 2e6)) return true;
    double dKT = 0.0, dKQ = 0.0;
    if (!CalcBSeriesReynoldsCorrection(dKT, dKQ, p.J, p.PD, p.EAR, p.Z, Rn)) {
      AddCalcError("Invalid procedure call or argument");
      return false;
    }
    KT += dKT;
    KQ += dKQ;
    return true;
  }
  if (series == kBSeries && method == kScalePartITTC) {
    // The correction works in metres; a thickness ratio or roughness that the user gave
    // replaces the paper's estimate.
    BSeriesScaleCorrection c;
    SeriesModelInputs::ScaleCorrectionOf* kept = in ? &in->scale : nullptr;
    if (kept && kept->valid && Same(kept->PD, p.PD) && Same(kept->EAR, p.EAR) && Same(kept->D, D)) {
      c = kept->c;
    } else {
      if (!CalcBSeriesScaleCorrection(c, p.PD, p.EAR, p.Z, D * 0.3048, tc, roughnessMM * 1e-3)) {
        AddCalcError("Invalid procedure call or argument");
        return false;
      }
      if (kept) *kept = {true, p.PD, p.EAR, D, c};
    }
    KT -= c.dKT;
    KQ -= c.dKQ;
    return true;
  }
  AddCalcError("Scale correction not available: " + LabelOr(kScaleCorrectionLabels, method) + " on " +
               SeriesLabel(series));
  return false;
}

void Scale(DerivativeArray* a, double f) {
  if (a)
    for (double& x : *a) x *= f;
}

// ---- Oblique inflow ---------------------------------------------------------------------

// The blade-by-blade mean of one inflow: coefficients, derivative arrays and cavitation pairs.
struct BladeSum {
  int result = 1;
  double KT = 0.0, KQ = 0.0;
  DerivativeArray kt{}, kq{};
  double sigmaAvg = 0.0, tauAvg = 0.0, sigmaPeak = 0.0, tauPeak = 0.0;
};

}  // namespace

namespace {

// The section-drag correction of the plain evaluation, as ApplyScaleCorrection finds it: from
// the correction kept for this propeller, else from its part kept for the blade (EAR, D), else
// found anew; each found part is kept.
bool QuickScaleCorrection(const SeriesModelInputs& in, double PD, double EAR, double D,
                          BSeriesScaleCorrection& c) {
  SeriesModelInputs::ScaleCorrectionOf& kept = in.scale;
  if (kept.valid && Same(kept.PD, PD) && Same(kept.EAR, EAR) && Same(kept.D, D)) {
    c = kept.c;
    return true;
  }
  SeriesModelInputs::SectionDragOf& blade = in.sectionDrag;
  if (!(blade.valid && Same(blade.EAR, EAR) && Same(blade.D, D))) {
    BSeriesSectionDrag s;
    if (!CalcBSeriesSectionDrag(s, EAR, in.Z, D * 0.3048, in.tc, in.roughnessMM * 1e-3)) return false;
    blade = {true, EAR, D, s};
  }
  if (!FinishBSeriesScaleCorrection(c, blade.s, PD)) return false;
  kept = {true, PD, EAR, D, c};
  return true;
}

}  // namespace

// The steps of CalcPropellerSeriesAxial for the one case it takes, in the same order; every
// step that could fail or report leaves the work to the full evaluation.
bool QuickSeriesKTKQ(const SeriesModelInputs& in, double n, double Va, double D, double EAR, int cupFlag,
                     double pitch, int needs, QuickSeriesResult& r, DerivativeArray* ktArray,
                     DerivativeArray* kqArray, bool settle) {
  if (!in.read || in.calcType != 0 || in.seriesId != kBSeries || in.type == kCRP) return false;
  if (in.oblique != 0 && !(in.theta == 0.0 && in.beta == 0.0)) return false;
  if (!(n > 0.0) || D == 0.0 || EAR == 0.0 || pitch == 0.0) return false;
  if (!(Va > 0.0)) Va = 1e-06;
  const double nD = n * D;
  if (nD == 0.0) return false;
  const double J = Va / nD, PD = pitch / D;
  const int Z = in.Z;
  double ktMult = in.ktMult, kqMult = in.kqMult;
  if (!(ktMult > 0.0)) ktMult = 1.0;
  if (!(kqMult > 0.0)) kqMult = 1.0;
  const double F = 1.0;  // not a contra-rotating pair
  const bool cup = in.cup > 0.0 && cupFlag == 1 && pitch > 0.0;
  // KQ is left out only where it is surely finite (every power and product far from overflow),
  // so that the full evaluation would not have failed on it.
  const bool withKQ = (needs & kQuickKQ) || kqArray || cup;
  if (!withKQ && !(std::fabs(J) <= 1e6 && std::fabs(PD) <= 1e6 && std::fabs(EAR) <= 1e6 && Z >= -100 &&
                   Z <= 100 && kqMult <= 1e100))
    return false;

  double KT = BSeriesKTSum(J, PD, EAR, Z, ktArray);
  if (!std::isfinite(KT)) return false;
  double KQ = 0.0;
  if (withKQ) {
    KQ = BSeriesKQSum(J, PD, EAR, Z, kqArray);
    if (!std::isfinite(KQ)) return false;
  }
  KT = ktMult * KT * F;
  KQ = kqMult * KQ * F;

  if (in.scaleCorrection != 0) {
    if (in.scaleCorrection != kScalePartITTC) return false;
    BSeriesScaleCorrection c;
    if (!QuickScaleCorrection(in, PD, EAR, D, c)) return false;
    if (!withKQ && !(std::fabs(c.dKQ) <= 1e100)) return false;
    KT -= c.dKT;
    KQ -= c.dKQ;
  }

  if (needs & kQuickCavitation) {
    const double KTN = 0.0;
    r.sigma = CalcSigma07R(in.rho, Va, n, D, in.H);
    r.tau = CalcTau07R(KT - KTN, Va, n, Z, EAR, D, pitch);
  }

  if (cup) {
    const double cuppedPD = (21.0 * in.cup + pitch) * PD / pitch;
    const double kt0 = BSeriesKTSum(J, PD, EAR, Z), kt1 = BSeriesKTSum(J, cuppedPD, EAR, Z);
    const double kq0 = BSeriesKQSum(J, PD, EAR, Z), kq1 = BSeriesKQSum(J, cuppedPD, EAR, Z);
    if (!std::isfinite(kt0) || !std::isfinite(kt1) || !std::isfinite(kq0) || !std::isfinite(kq1))
      return false;
    KT += (kt1 - kt0) * ktMult * F;
    KQ += (kq1 - kq0) * kqMult * F;
  }
  Scale(ktArray, ktMult * F);
  Scale(kqArray, kqMult * F);
  if (!std::isfinite(KT) || !std::isfinite(KQ)) return false;
  r.KT = KT;
  r.KQ = KQ;
  if (settle) SetCalcLocation(kAxialLocation);
  return true;
}

QuickSeriesPlan PrepareQuickSeriesKT(const SeriesModelInputs& in, double Va, double D, double EAR,
                                     int cupFlag, double pitch) {
  QuickSeriesPlan plan;
  if (!in.read || in.calcType != 0 || in.seriesId != kBSeries || in.type == kCRP) return plan;
  if (in.oblique != 0 && !(in.theta == 0.0 && in.beta == 0.0)) return plan;
  if (D == 0.0 || EAR == 0.0 || pitch == 0.0) return plan;
  if (in.cup > 0.0 && cupFlag == 1 && pitch > 0.0) return plan;
  if (!(Va > 0.0)) Va = 1e-06;
  plan.Va = Va;
  plan.D = D;
  plan.EAR = EAR;
  plan.PD = pitch / D;
  plan.Z = in.Z;
  plan.ktMult = in.ktMult > 0.0 ? in.ktMult : 1.0;
  const double kqMult = in.kqMult > 0.0 ? in.kqMult : 1.0;
  // KQ is left out as in QuickSeriesKTKQ (J is bounded at each rate).
  if (!(std::fabs(plan.PD) <= 1e6 && std::fabs(EAR) <= 1e6 && plan.Z >= -100 && plan.Z <= 100 &&
        kqMult <= 1e100))
    return plan;
  if (in.scaleCorrection != 0) {
    if (in.scaleCorrection != kScalePartITTC) return plan;
    BSeriesScaleCorrection c;
    if (!QuickScaleCorrection(in, plan.PD, EAR, D, c)) return plan;
    if (!(std::fabs(c.dKQ) <= 1e100)) return plan;
    plan.scale = true;
    plan.dKT = c.dKT;
  }
  plan.ok = true;
  return plan;
}

bool QuickSeriesKT(const QuickSeriesPlan& plan, double n, double& KT, bool settle) {
  if (!plan.ok || !(n > 0.0)) return false;
  const double nD = n * plan.D;
  if (nD == 0.0) return false;
  const double J = plan.Va / nD;
  if (!(std::fabs(J) <= 1e6)) return false;
  double kt = BSeriesKTSum(J, plan.PD, plan.EAR, plan.Z);
  if (!std::isfinite(kt)) return false;
  const double F = 1.0;
  kt = plan.ktMult * kt * F;
  if (plan.scale) kt -= plan.dKT;
  if (!std::isfinite(kt)) return false;
  KT = kt;
  if (settle) SetCalcLocation(kAxialLocation);
  return true;
}

void ReadSeriesModelInputs(SeriesModelInputs& in, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                           clsVXPropeller& propeller, clsVXPropellerSeries& series) {
  in.rho = water.Density(kSlugPerFt3);
  in.nu = water.Viscosity(kFt2PerSec);
  in.calcType = propulsion.PropulsorCalcType();
  in.theta = propulsion.AngleShaftDeg();
  in.beta = propulsion.AngleRiseOfRunDeg();
  in.Z = propeller.BladeCount();
  in.type = propeller.PropellerType();
  in.cup = propeller.CupDrop(kFt);
  in.H = propeller.HubImmersion(kFt);
  in.tc = propeller.TCRatio07R();
  in.roughnessMM = propeller.BladeRoughnessMM();
  in.seriesId = series.Series();
  in.oblique = series.ObliqueAngleCorrEnabled();
  in.scaleCorrection = series.ScaleCorrection();
  in.breakdown = series.CavBreakdownEnabled();
  in.ktMult = series.KTMultiplier();
  in.kqMult = series.KQMultiplier();
  in.LD = series.NozzleLengthDiameterRatio();
  in.read = true;
}

int CalcPropellerSeriesAxial(double& KT, double& KQ, clsVXWaterProperties& water, clsVXPropeller& propeller,
                             clsVXPropellerSeries& series, int calcType, double n, double Va, double D,
                             double EAR, int cupFlag, double pitch, double& sigma, double& sigmaV,
                             double& tau, DerivativeArray* ktArray, DerivativeArray* kqArray, double J,
                             double PD, const SeriesModelInputs* in) {
  SetCalcLocation(kAxialLocation);
  return Guarded([&]() -> int {
    // 1. A waterjet has no open-water coefficients; nothing is computed.
    if (calcType == kWaterjet) return 1;

    // 2. Water and propeller; a D, EAR or pitch of 0 is the propeller's own.
    const double rho = in ? in->rho : water.Density(kSlugPerFt3),
                 nu = in ? in->nu : water.Viscosity(kFt2PerSec);
    const int Z = in ? in->Z : propeller.BladeCount();
    const double cup = in ? in->cup : propeller.CupDrop(kFt), H = in ? in->H : propeller.HubImmersion(kFt);
    const double tc = in ? in->tc : propeller.TCRatio07R();
    const double roughnessMM = in ? in->roughnessMM : propeller.BladeRoughnessMM();
    if (D == 0.0) D = propeller.Diameter(kFt);
    if (EAR == 0.0) EAR = propeller.ExpAreaRatio();
    if (pitch == 0.0) pitch = propeller.PitchMean(kFt);
    if (PassErrors(water) || PassErrors(propeller)) return 0;

    // 3. Series settings.
    const int seriesId = in ? in->seriesId : series.Series();
    const int scaleCorrection = in ? in->scaleCorrection : series.ScaleCorrection();
    const int breakdown = in ? in->breakdown : series.CavBreakdownEnabled();
    double ktMult = in ? in->ktMult : series.KTMultiplier(), kqMult = in ? in->kqMult : series.KQMultiplier();
    double LD = in ? in->LD : series.NozzleLengthDiameterRatio();

    // 4. Operating point. The advance speed is never 0, so that J and the cavitation number
    // on Va stay finite.
    if (!(Va > 0.0)) Va = 1e-06;
    if (J == -1.0) J = Div(Va, n * D);
    if (PD == -1.0) PD = Div(pitch, D);
    const double HD = Div(0.5 * D + H, D);

    // 5. Multipliers, the share of one row of a contra-rotating pair, the nozzle's L/D.
    if (!(ktMult > 0.0)) ktMult = 1.0;
    if (!(kqMult > 0.0)) kqMult = 1.0;
    const int type = in ? in->type : propeller.PropellerType();
    const double F = type == kCRP ? 0.85 : 1.0;
    LD = std::clamp(LD, 0.5, 1.0);

    // 6. Open-water coefficients of the series; KTN 0 without a nozzle.
    const SeriesFunctions* fn = FunctionsOf(calcType, seriesId);
    if (!fn) return 0;
    const SeriesPoint point{J, PD, EAR, Z, LD, HD};
    double KTN = 0.0;
    if (!fn->kt(KT, point, ktArray) || !fn->kq(KQ, point, kqArray)) return 0;
    if (fn->ktn && !fn->ktn(KTN, point, nullptr)) return 0;

    // 7.
    KT = ktMult * KT * F;
    KQ = kqMult * KQ * F;

    // 8. Full-scale correction of the chart's section drag.
    if (scaleCorrection != 0 && (seriesId == 0 || seriesId == 1 || seriesId == 2 || seriesId == 8)) {
      if (!ApplyScaleCorrection(KT, KQ, point, nu, n, Va, D, tc, roughnessMM, seriesId, scaleCorrection, in))
        return 0;
    }

    // 9. Cavitation numbers and the blade's own thrust loading (without the nozzle's share).
    sigma = CalcSigma07R(rho, Va, n, D, H);
    sigmaV = CalcSigmaV(rho, Va, H);
    tau = CalcTau07R(KT - KTN, Va, n, Z, EAR, D, pitch);

    // 10. Thrust breakdown by cavitation: no published reduction of the series coefficients
    // is held by this program, so the setting changes nothing and the result stays 1.
    const int result = 1;
    (void)breakdown;

    // 11. A cup acts as added pitch: PDc = (21 cup + P) / D. The open series take the
    // difference of their charts between PDc and P/D.
    if (cup > 0.0 && cupFlag == 1 && pitch > 0.0 && seriesId >= 0 && seriesId <= 2) {
      SeriesPoint cupped = point;
      cupped.PD = (21.0 * cup + pitch) * PD / pitch;
      double kt0 = 0.0, kt1 = 0.0, kq0 = 0.0, kq1 = 0.0;
      if (!fn->kt(kt0, point, nullptr) || !fn->kt(kt1, cupped, nullptr) || !fn->kq(kq0, point, nullptr) ||
          !fn->kq(kq1, cupped, nullptr))
        return 0;
      KT += (kt1 - kt0) * ktMult * F;
      KQ += (kq1 - kq0) * kqMult * F;
    }

    // 12.
    Scale(ktArray, ktMult * F);
    Scale(kqArray, kqMult * F);

    // 13. Contra-rotating pair: the aft row works in the slipstream of the forward one, with
    // r = KT/J^2 the load of the forward row; both rows together give twice the result.
    if (type == kCRP) {
      const double r = Div(KT, J * J);
      KT = KT * Div(1.85 * r + 1.0, 1.7 * r + 1.07);
      if (series.CRPRudderLocation() == 0) KQ = KQ * Div(2.0 * r + 0.94, 2.0 * r + 1.0);
      KT *= 2.0;
      KQ *= 2.0;
      Scale(ktArray, 2.0);
      Scale(kqArray, 2.0);
    }
    if (!std::isfinite(KT) || !std::isfinite(KQ))
      return Fail(std::isnan(KT) || std::isnan(KQ) ? "Invalid procedure call or argument" : "Overflow");
    return result;
  });
}

int CalcPropellerSeriesPerformance(double& KT, double& KQ, clsVXWaterProperties& water,
                                   clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                   clsVXPropellerSeries& series, double n, double Va, double D, double EAR,
                                   int cupFlag, double pitch, DerivativeArray* ktArray,
                                   DerivativeArray* kqArray, double& sigmaAvg, double& tauAvg,
                                   double& sigmaPeak, double& tauPeak, const SeriesModelInputs* in) {
  SetCalcLocation("propeller series performance calculation");
  return Guarded([&]() -> int {
    // 1.
    if (!(Va > 0.0)) Va = 1e-06;
    if (!(n > 0.0)) return Fail("Propulsor RPM");

    // 2.
    const double rho = in ? in->rho : water.Density(kSlugPerFt3);
    const int calcType = in ? in->calcType : propulsion.PropulsorCalcType();
    double theta = in ? in->theta : propulsion.AngleShaftDeg();
    double beta = in ? in->beta : propulsion.AngleRiseOfRunDeg();
    const int Z = in ? in->Z : propeller.BladeCount();
    const double H = in ? in->H : propeller.HubImmersion(kFt);
    const int seriesId = in ? in->seriesId : series.Series();
    const int oblique = in ? in->oblique : series.ObliqueAngleCorrEnabled();
    if (PassErrors(water) || PassErrors(propulsion) || PassErrors(propeller)) return 0;
    if (calcType == kWaterjet) return 1;

    double sigma = 0.0, sigmaV = 0.0, tau = 0.0;
    auto axial = [&](double& kt, double& kq, double nk, double v, DerivativeArray* a, DerivativeArray* b) {
      const int r = CalcPropellerSeriesAxial(kt, kq, water, propeller, series, calcType, nk, v, D, EAR,
                                             cupFlag, pitch, sigma, sigmaV, tau, a, b, -1.0, -1.0, in);
      if (r == 0) AddCalcError("propeller series axial performance calculation");
      return r;
    };

    // 3. Axial inflow.
    if (oblique == 0 || (theta == 0.0 && beta == 0.0)) {
      const int r = axial(KT, KQ, n, Va, ktArray, kqArray);
      if (r == 0) return 0;
      sigmaAvg = sigmaPeak = sigma;
      tauAvg = tauPeak = tau;
      return r;
    }

    // 4. Oblique inflow. Ducted, surface-piercing and cycloidal propellers take one axial
    // call; the ducted ones lose the thrust component across the shaft line.
    theta *= DegToRad;
    beta *= DegToRad;
    if (seriesId < 0 || seriesId > 2) {
      const int r = axial(KT, KQ, n, Va, ktArray, kqArray);
      if (r == 0) return 0;
      if ((seriesId >= 3 && seriesId <= 7) || seriesId == 10) KT *= std::cos(theta);
      sigmaAvg = sigmaPeak = sigma;
      tauAvg = tauPeak = tau;
      return r;
    }

    // 5. Open propellers, blade by blade: the inflow across the shaft raises the section
    // speed on one side of the disc and lowers it on the other. Each of the Z positions is an
    // axial call at its own rate nk, brought back to n by W = (nk/n)^2; the side force of the
    // torque, at 0.35 D, leans the thrust by the shaft angle.
    const bool arrays = ktArray || kqArray;
    auto sumBlades = [&](double vx, double vy, BladeSum& s) -> bool {
      double sumKT = 0.0, sumKQ = 0.0, side = 0.0, peakRatio = 0.0;
      for (int k = 0; k < Z; ++k) {
        const double a = 2.0 * Pi * k / Z;
        const double nk = n + Div(vy * std::sin(a), 0.7 * Pi * D);
        double kt = 0.0, kq = 0.0;
        DerivativeArray dkt{}, dkq{};
        const int r = axial(kt, kq, nk, vx, arrays ? &dkt : nullptr, arrays ? &dkq : nullptr);
        if (r == 0) return false;
        if (r == 6) s.result = 6;
        const double W = (nk / n) * (nk / n);
        sumKT += kt * W;
        sumKQ += kq * W;
        for (size_t i = 0; i < dkt.size(); ++i) {
          s.kt[i] += dkt[i] * W;
          s.kq[i] += dkq[i] * W;
        }
        side += 2.0 * Pi * kq * W * std::sin(a) / (0.35 * Z);
        const double ratio = Div(tau, sigma);
        if (k == 0 || ratio > peakRatio) {
          peakRatio = ratio;
          s.sigmaPeak = sigma;
          s.tauPeak = tau;
        }
      }
      const double ct = std::cos(theta), st = std::sin(theta);
      side = Div(side, Z);
      s.KT = Div(sumKT, Z) * ct - side * st;
      s.KQ = sumKQ / Z;
      for (size_t i = 0; i < s.kt.size(); ++i) {
        s.kt[i] = s.kt[i] / Z * ct;
        s.kq[i] /= Z;
      }
      s.sigmaAvg = CalcSigma07R(rho, vx, n, D, H);
      s.tauAvg = CalcTau07R(s.KT, vx, n, Z, EAR, D, pitch);
      return true;
    };

    // The rise of run adds the upward flow Va tan(beta) to the inflow.
    const double up = Va * std::tan(beta);
    BladeSum run;
    if (!sumBlades(Va * std::cos(theta) - up * std::sin(theta), Va * std::sin(theta) + up * std::cos(theta),
                   run))
      return 0;
    KT = run.KT;
    KQ = run.KQ;
    if (ktArray) *ktArray = run.kt;
    if (kqArray) *kqArray = run.kq;
    sigmaAvg = run.sigmaAvg;
    tauAvg = run.tauAvg;
    sigmaPeak = run.sigmaPeak;
    tauPeak = run.tauPeak;
    int result = run.result;

    // With a rise of run the same sum is made for the shaft angle alone, and the smaller
    // coefficients of both stand, each with its own derivatives. The cavitation pairs remain
    // those of the full inflow.
    if (beta != 0.0) {
      BladeSum level;
      if (!sumBlades(Va * std::cos(theta), Va * std::sin(theta), level)) return 0;
      if (level.result == 6) result = 6;
      if (level.KT < KT) {
        KT = level.KT;
        if (ktArray) *ktArray = level.kt;
      }
      if (level.KQ < KQ) {
        KQ = level.KQ;
        if (kqArray) *kqArray = level.kq;
      }
    }
    return result;
  });
}

bool CalcNozzleKTN(double& KTN, clsVXPropeller& propeller, clsVXPropellerSeries& series, int calcType,
                   double n, double Va, double D, double EAR, double pitch, double J, double PD) {
  SetCalcLocation("propeller series nozzle KTN calculation");
  const int result = Guarded([&]() -> int {
    KTN = 0.0;
    if (calcType == kWaterjet || calcType == 2) return 1;
    const int seriesId = series.Series();
    const double LD = std::clamp(series.NozzleLengthDiameterRatio(), 0.5, 1.0);
    if (!(Va > 0.0)) Va = 1e-06;
    if (J == -1.0) J = Div(Va, n * D);
    if (PD == -1.0) PD = Div(pitch, D);
    if (seriesId < 3 || seriesId > 7) return 1;
    const SeriesFunctions* fn = FunctionsOf(calcType, seriesId);
    if (!fn) return 0;
    if (!fn->ktn) return Fail("Nozzle thrust not available: " + SeriesLabel(seriesId));
    const double HD = Div(0.5 * D + propeller.HubImmersion(kFt), D);
    return fn->ktn(KTN, SeriesPoint{J, PD, EAR, propeller.BladeCount(), LD, HD}, nullptr) ? 1 : 0;
  });
  return result != 0;
}

// ---- Data-set checks ----------------------------------------------------------------------

namespace {

// Blade counts of each series, in index order: the accepted range and the count written back.
struct CountRule {
  int lo, hi, writeBack;
  const char* text;
};
constexpr CountRule kCountRules[] = {
    {2, 7, 4, " is limited to 2-7 blades."}, {3, 5, 4, " is limited to 3-5 blades."},
    {3, 3, 3, " is limited to 3 blades."},   {3, 5, 4, " is limited to 3-5 blades."},
    {3, 4, 4, " is limited to 3-4 blades."}, {5, 5, 5, " is limited to 5 blades."},
    {4, 4, 4, " is limited to 4 blades."},   {3, 4, 4, " is limited to 3-4 blades."},
    {4, 4, 4, " is limited to 4 blades."},   {5, 5, 5, " is limited to 5 blades."},
    {4, 4, 4, " is limited to 4 blades."},
};

// A range of a series' data set; `Z` 0 stands for every blade count without a row of its own.
struct RangeRule {
  int series, Z;
  double lo, hi;
  const char* text;
};
// clang-format off
constexpr RangeRule kEARRules[] = {
    {0, 2, 0.30, 0.60, " data set for 2 bladed propellers is 0.30-0.60 EAR."},
    {0, 3, 0.35, 0.80, " data set for 3 bladed propellers is 0.35-0.80 EAR."},
    {0, 4, 0.40, 1.00, " data set for 4 bladed propellers is 0.40-1.00 EAR."},
    {0, 5, 0.45, 1.05, " data set for 5 bladed propellers is 0.45-1.05 EAR."},
    {0, 6, 0.50, 0.95, " data set for 6 bladed propellers is 0.50-0.95 EAR."},
    {0, 7, 0.55, 0.85, " data set for 7 bladed propellers is 0.55-0.85 EAR."},
    {1, 0, 0.50, 1.10, " data set is 0.50-1.10 EAR."},
    {2, 0, 0.50, 1.10, " data set is 0.50-1.10 EAR."},
    {3, 3, 0.65, 0.65, " data set for 3 bladed propellers is 0.65 EAR."},
    {3, 5, 0.65, 0.95, " data set for 5 bladed propellers is 0.65-0.95 EAR."},
    {3, 0, 0.55, 0.70, " data set for 4 bladed propellers is 0.55-0.70 EAR."},
    {4, 3, 0.50, 0.80, " data set for 3 bladed propellers is 0.50-0.80 EAR."},
    {4, 0, 0.55, 1.00, " data set for 4 bladed propellers is 0.55-1.00 EAR."},
    {5, 0, 1.00, 1.00, " data set is 1.00 EAR."},
    {6, 0, 0.70, 0.70, " data set is 0.70 EAR."},
    {7, 3, 0.50, 0.80, " data set for 3 bladed propellers is 0.50-0.80 EAR."},
    {7, 0, 0.55, 1.00, " data set for 4 bladed propellers is 0.55-1.00 EAR."},
    {8, 0, 0.80, 0.80, " data set is 0.80 EAR."},
    {9, 0, 1.06, 1.06, " data set is 1.06 EAR."},
    // The Kaplan cylinder is checked against the 4-bladed Kaplan 19A set.
    {10, 0, 0.55, 0.70, " data set for 4 bladed propellers is 0.55-0.70 EAR."},
};
constexpr RangeRule kPDRules[] = {
    {0, 0, 0.50, 1.40, " data set is 0.50-1.40 P/D rato."},
    {1, 0, 0.60, 1.60, " data set is 0.60-1.60 P/D rato."},
    {2, 0, 0.80, 1.80, " data set is 0.80-1.80 P/D rato."},
    {3, 0, 0.50, 1.40, " data set is 0.50-1.40 P/D rato."},
    {4, 0, 0.60, 1.50, " data set is 0.60-1.50 P/D rato."},
    {5, 0, 0.50, 1.40, " data set is 0.50-1.40 P/D rato."},
    {6, 0, 0.50, 1.40, " data set is 0.50-1.40 P/D rato."},
    {7, 0, 0.60, 1.50, " data set is 0.60-1.50 P/D rato."},
    {8, 0, 0.90, 1.60, " data set is 0.90-1.60 P/D rato."},
    {9, 0, 1.57, 2.83, " data set is 1.57-2.83 P/D rato."},
    {10, 0, 0.60, 1.40, " data set is 0.60-1.40 P/D rato."},
};
// clang-format on

// The rule of `series` for `Z`: its own row first, else the row for every count; null if none.
template <size_t N>
const RangeRule* RuleOf(const RangeRule (&rules)[N], int series, int Z) {
  const RangeRule* any = nullptr;
  for (const RangeRule& r : rules) {
    if (r.series != series) continue;
    if (r.Z == Z) return &r;
    if (r.Z == 0 && !any) any = &r;
  }
  return any;
}

int CheckRange(const RangeRule* rule, int series, double value, std::string& message) {
  message.clear();
  if (!rule || (value >= rule->lo && value <= rule->hi)) return 1;
  message = SeriesLabel(series) + rule->text;
  return 0;
}

}  // namespace

int CheckSeriesBladeCount(const clsVXPropellerSeries& series, int& bladeCount, std::string& message) {
  message.clear();
  const int id = series.Series();
  if (id < 0 || id >= static_cast<int>(std::size(kCountRules))) return 1;
  const CountRule& rule = kCountRules[id];
  if (bladeCount < rule.lo || bladeCount > rule.hi) {
    message = SeriesLabel(id) + rule.text;
    bladeCount = rule.writeBack;
    return 0;
  }
  if (id == kBSeries && bladeCount == 2) {
    message = SeriesLabel(id) + " equations are generally considered incorrect for 2 bladed propellers.";
    return 0;
  }
  return 1;
}

int CheckSeriesEAR(const clsVXPropellerSeries& series, double EAR, int Z, std::string& message) {
  const int id = series.Series();
  return CheckRange(RuleOf(kEARRules, id, Z), id, EAR, message);
}

int CheckSeriesPD(const clsVXPropellerSeries& series, double PD, std::string& message) {
  const int id = series.Series();
  return CheckRange(RuleOf(kPDRules, id, 0), id, PD, message);
}

// The surface-piercing series needs its design immersion, H/D = hub immersion / D + 0.5 of
// 0.47 to 0.58; the cycloidal propeller has no check; every other series a fully immersed disc.
int CheckSeriesImmersion(const clsVXPropellerSeries& series, double hubImmersion, double D,
                         std::string& message) {
  message.clear();
  const int id = series.Series();
  if (id == 9) return 1;
  if (id == 8) {
    if (!(D > 0.0)) return 1;
    const double HD = hubImmersion / D + 0.5;
    if (HD >= 0.47 && HD <= 0.58) return 1;
    message = SeriesLabel(id) + " data set is 0.47-0.58 H/D blade immersion ratio.";
    return 0;
  }
  if (hubImmersion >= 0.5 * D) return 1;
  message = SeriesLabel(id) + " data set is for full propeller immersion.";
  return 0;
}

}  // namespace velmar
