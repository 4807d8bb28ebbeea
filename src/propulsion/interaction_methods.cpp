// The hull-propulsor interaction methods: Holtrop's statistical factors, van Oortmerssen's
// regression for small ships and the "Simple Ship" of Taylor's wake fraction. Lengths in ft,
// areas in ft2; lcb is in percent of LWL forward of 0.5 LWL.
#include "propulsion/interaction_methods.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

#include "core/diagnostics.h"
#include "resistance/friction.h"
#include "resistance/hull_estimates.h"
#include "resistance/hull_method_support.h"

namespace velmar {
namespace {

bool Fail(const std::string& text) {
  AddCalcError(text);
  return false;
}

bool AllFinite(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// Runs the body of a method under its progress text: a run-time fault, or a factor that is no
// number, ends it with the method's failure text.
template <class Body>
bool RunMethod(const char* location, const char* fault, const double& w, const double& t, const double& etaR,
               Body body) {
  SetCalcLocation(location);
  try {
    if (!body()) return false;
    if (!AllFinite({w, t, etaR})) return Fail(fault);
    return true;
  } catch (const std::exception&) {
    return Fail(fault);
  }
}

// The propeller diameter of the regressions: the hull's largest, 0.7 T when none is given.
double InteractionDiameter(clsVXPropulsion& propulsion, double T) {
  const double D = propulsion.PropellerDiameterMax(kFt);
  return D > 0.0 ? D : 0.7 * T;
}

// Holtrop (1984), single screw:
//   t = 0.25014 (B/L)^0.28956 (sqrt(B T) / D)^0.2624 / (1 - CP + 0.0225 lcb)^0.01762
//       + 0.0015 Cstern,
// CP at most 0.85, the top of the regression's data.
double HoltropSingleScrewThrustDeduction(double L, double B, double T, double D, double CP, double lcb,
                                         double Cstern) {
  CP = std::min(CP, 0.85);
  return 0.25014 * std::pow(B / L, 0.28956) * std::pow(std::sqrt(B * T) / D, 0.2624) /
             std::pow(1.0 - CP + 0.0225 * lcb, 0.01762) +
         0.0015 * Cstern;
}

}  // namespace

// Holtrop & Mennen (1982), "An approximate power prediction method", Int. Shipbuilding
// Progress 29, and Holtrop (1984), "A statistical re-analysis of resistance and propulsion
// data", Int. Shipbuilding Progress 31. T_A is the hull's draft, lcb is in percent of LWL
// forward of 0.5 LWL, CV = (1+k1) CF + CA is the ship's viscous resistance coefficient.
bool CalcHoltropPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                      int& speedCheck, clsVXHull& hull, clsVXPropeller& propeller,
                                      clsVXPropulsion& propulsion, double Fn, double Rn,
                                      PropulsionInteractionRun* run) {
  const char* const fault = "calculating Holtrop propulsion interaction";
  return RunMethod("Holtrop propulsion interaction", fault, w, t, etaR, [&] {
    PropulsionInteractionRun once;
    PropulsionInteractionRun& in = run ? *run : once;
    if (!in.read) {
      in.L = hull.LengthWL(kFt);
      in.B = hull.BeamWLMax(kFt);
      in.T = hull.DraftSubmergedMax(kFt);
      in.S = hull.WettedSurface(kFt2);
      in.XB = hull.XBuoyancyFwdTr(kFt);
      in.CP = hull.CoefPrismatic();
      in.CB = hull.CoefBlock();
      in.CM = hull.CoefAreaSectMax();
      in.Cstern = hull.CalcHoltropSternCoef();
    }
    if (PassHullErrors(hull)) return false;
    const double L = in.L, B = in.B, T = in.T, S = in.S, XB = in.XB, CB = in.CB, CM = in.CM,
                 Cstern = in.Cstern;
    double CP = in.CP;

    // 1.-5. Ratios, the regression's upper CP, the propulsor count and diameter.
    const double LT = L / T, BT = B / T;
    const double lcb = 100.0 * (XB - 0.5 * L) / L;
    CP = std::min(CP, 0.85);
    if (!in.read) {
      in.count = std::max(propulsion.PropulsorCountPerHull(), 1);
      in.D = InteractionDiameter(propulsion, T);
    }
    const int count = in.count;
    const double D = in.D;
    referenceLength = L;

    // 6. Blade area and pitch ratio, with the values of a typical propeller when missing.
    if (!in.read) {
      in.EAR = propeller.ExpAreaRatio();
      if (!(in.EAR > 0.0)) in.EAR = 0.75;
      const double pitch = propeller.PitchMean(kFt), diameter = propeller.Diameter(kFt);
      in.PD = pitch > 0.0 && diameter > 0.0 ? pitch / diameter : 1.0;
      in.read = true;
    }
    const double EAR = in.EAR, PD = in.PD;

    // 7. The speed range of the regression.
    speedCheck = Fn < 0.06 ? 0 : (Fn <= 0.8 ? 1 : 2);

    // 8.-9. CV with the ITTC-1957 line, the Holtrop (1984) 1+k1 and Holtrop's CA. Below
    // Fn 0.05 the friction is held at its value for Fn 0.05.
    if (Fn < 0.05) {
      if (Fn == 0.0) return Fail(fault);
      Rn = Rn * 0.05 / Fn;
    }
    const double CF = CalcFrictionITTC57(Rn);
    double FF = in.FF, CA = in.CA;
    if (!in.formFactorKept) {
      in.formFactorKept = CalcHoltropFormFactor(FF, hull);
      if (!in.formFactorKept) FF = 1.0;
      in.FF = FF;
    }
    if (!in.allowanceKept) {
      in.allowanceKept = CalcHoltropCorrelationAllowance(CA, hull);
      if (!in.allowanceKept) CA = 0.0;
      in.CA = CA;
    }
    const double CV = FF * CF + CA;

    if (count == 1) {
      // 10. Single screw, Holtrop (1984) for w and t, Holtrop & Mennen (1982) for etaR. Only
      // CV depends on the speed; the rest is kept from the first speed.
      if (!in.singleScrewKept) {
        const double c8 = BT < 5.0 ? BT * S / (L * D) : (7.0 * BT - 25.0) * S / (L * D * (BT - 3.0));
        const double c9 = c8 < 28.0 ? c8 : 32.0 - 16.0 / (c8 - 24.0);
        // The papers take c11 = T/D below T/D 2 and the cubic above it; the program has
        // always used the cubic below 2 and T/D above it. Both meet at T/D 2.
        const double TD = T / D;
        const double c11 = TD < 2.0 ? TD * TD * TD / 12.0 + 4.0 / 3.0 : TD;
        const double c19 = CP < 0.7 ? 0.12997 / (0.95 - CB) - 0.11056 / (0.95 - CP)
                                    : 0.18567 / (1.3571 - CM) - 0.71276 + 0.38648 * CP;
        const double c20 = 1.0 + 0.015 * Cstern;
        const double CP1 = std::min(1.45 * CP - 0.315 - 0.0225 * lcb, 0.95);
        in.c9c20 = c9 * c20;
        in.c11k = 0.93405 * c11;
        in.oneLessCP1 = 1.0 - CP1;
        in.wFlow = 0.27915 * c20 * std::sqrt(B / ((1.0 - CP1) * L));
        in.wForm = c19 * c20;
        in.tSingle = HoltropSingleScrewThrustDeduction(L, B, T, D, CP, lcb, Cstern);
        in.etaRSingle = 0.9922 - 0.05908 * EAR + 0.07424 * (CP - 0.0225 * lcb);
        in.singleScrewKept = true;
      }
      w = in.c9c20 * CV * LT * (0.050776 + in.c11k * CV / in.oneLessCP1) + in.wFlow + in.wForm;
      t = in.tSingle;
      etaR = in.etaRSingle;
    } else {
      // 11. Twin screw, Holtrop & Mennen (1982), for two propulsors and more.
      w = 0.3095 * CB + 10.0 * CV * CB - 0.23 * D / std::sqrt(B * T);
      t = 0.325 * CB - 0.1885 * D / std::sqrt(B * T);
      etaR = 0.9737 + 0.111 * (CP - 0.0225 * lcb) - 0.06325 * PD;
    }
    return true;
  });
}

// van Oortmerssen, G. (1971) "A power prediction method and its application to small ships",
// International Shipbuilding Progress 18(207), 397-415, the propulsion factors of 93 tug and
// trawler models of MARIN as one linear regression each:
//   t, w, etaR = sum e[k] z[k],   z = [1, CP, CP^2, Fn CP, Fn^2 CP, lcb CP, L/B, L/D].
// SINGLE SOURCE: the 24 coefficients come from one public transcription, and an errata paper
// (Helmore) says the publication has errors; whether the table carries their corrections is
// not known. The length is the waterline length throughout (the paper's is the mean of Lpp and
// LWL), lcb forward positive, as in the method's resistance regression (van_oortmerssen.h).
// The factors are read as the ship's own, so the basis vessel is the ship itself and the wake
// scaling only moves them by the difference between the ship's water and the basin's. Outside
// the data set's Fn 0.05 to 0.5 the factors of its nearer end stand.
namespace {

constexpr double kOortmerssenFnLower = 0.05, kOortmerssenFnUpper = 0.5;

constexpr std::string_view kOortmerssenCsv =
#include "propulsion/tables/van_oortmerssen_propulsion.csv.inc"
    ;

const CoefTable& OortmerssenCoefficients() {
  static const CoefTable table = ParseCoefTable(kOortmerssenCsv);
  return table;
}

}  // namespace

bool CalcOortmerssenPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                          int& speedCheck, clsVXHull& hull, clsVXPropeller& propeller,
                                          clsVXPropulsion& propulsion, double Fn, double Rn,
                                          PropulsionInteractionRun* /*run*/) {
  const char* const fault = "calculating Oortmerssen propulsion interaction";
  (void)propeller;  // the regression knows the propeller by its diameter only
  (void)Rn;
  return RunMethod("Oortmerssen propulsion interaction", fault, w, t, etaR, [&] {
    const double L = hull.LengthWL(kFt), T = hull.DraftSubmergedMax(kFt);
    const double lcb = (hull.CoefLCBLwlRatio() - 0.5) * 100.0, CP = hull.CoefPrismatic();
    const double LB = hull.CoefLwlBwlRatio();
    if (PassHullErrors(hull)) return false;
    const double D = InteractionDiameter(propulsion, T);
    referenceLength = L;
    speedCheck = SpeedCheckOf(Fn, kOortmerssenFnLower, kOortmerssenFnUpper);
    const double fn = std::clamp(Fn, kOortmerssenFnLower, kOortmerssenFnUpper);
    const double z[] = {1.0, CP, CP * CP, fn * CP, fn * fn * CP, lcb * CP, LB, L / D};
    const CoefTable& e = OortmerssenCoefficients();
    auto sum = [&](std::string_view name) {
      const size_t column = static_cast<size_t>(e.Column(name));
      double s = 0.0;
      for (size_t k = 0; k < std::size(z); ++k) s += e.rows.at(k).at(column) * z[k];
      return s;
    };
    t = sum("t");
    w = sum("w");
    etaR = sum("etaR");
    return true;
  });
}

// "Simple Ship": Taylor's wake fraction of single-screw ships, w = 0.5 CB - 0.05, as quoted by
// Molland et al., Ship Resistance and Propulsion, section 8.8. SINGLE SOURCE (one public
// module citing the textbook). Taylor gives the wake alone; the thrust deduction is the
// single-screw one of Holtrop (1984), which asks for the main dimensions, CP, the LCB and the
// stern shape only, and etaR is taken as 1. The relation is for single-screw ships: with more
// propulsors the method fails rather than give a wake that twin-screw hulls do not have. The
// basis vessel is the ship itself; the data set's speeds are Fn 0.05 to 0.4.
bool CalcSimpleShipPropulsionInteraction(double& w, double& t, double& etaR, double& referenceLength,
                                         int& speedCheck, clsVXHull& hull, clsVXPropeller& propeller,
                                         clsVXPropulsion& propulsion, double Fn, double Rn,
                                         PropulsionInteractionRun* /*run*/) {
  const char* const fault = "calculating Simple Ship propulsion interaction";
  (void)propeller;
  (void)Rn;
  return RunMethod("Simple Ship propulsion interaction", fault, w, t, etaR, [&] {
    if (propulsion.PropulsorCountPerHull() > 1)
      return Fail("Simple Ship wake fraction is for single-screw ships");
    const double L = hull.LengthWL(kFt), B = hull.BeamWLMax(kFt), T = hull.DraftSubmergedMax(kFt);
    const double XB = hull.XBuoyancyFwdTr(kFt), CB = hull.CoefBlock(), CP = hull.CoefPrismatic();
    const double Cstern = hull.CalcHoltropSternCoef();
    if (PassHullErrors(hull)) return false;
    const double lcb = 100.0 * (XB - 0.5 * L) / L;
    referenceLength = L;
    speedCheck = SpeedCheckOf(Fn, 0.05, 0.4);
    w = 0.5 * CB - 0.05;
    t = HoltropSingleScrewThrustDeduction(L, B, T, InteractionDiameter(propulsion, T), CP, lcb, Cstern);
    etaR = 1.0;
    return true;
  });
}

PropulsionInteractionFunction FindPropulsionInteractionMethod(int method) {
  static constexpr struct {
    int method;  // PropulsionInteractionMethod
    PropulsionInteractionFunction calc;
  } kMethods[] = {
      {0, CalcSimpleShipPropulsionInteraction},   // Simple Ship
      {5, CalcOortmerssenPropulsionInteraction},  // Oortmerssen
      {6, CalcHoltropPropulsionInteraction},      // Holtrop
  };
  for (const auto& row : kMethods)
    if (row.method == method) return row.calc;
  return nullptr;
}

}  // namespace velmar
