// Wind drag by the Fujiwara, Isherwood, Blendermann and ITTC data-set coefficients.
#include "resistance/wind_drag.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "resistance/hull_method_support.h"

namespace velmar {
namespace {

// The relative wind angle as the tables hold it: 0 to 180 degrees off the bow, the port and
// starboard sides alike.
double MirroredAngle(double angleDeg) {
  double a = std::fmod(std::fabs(angleDeg), 360.0);
  return a > 180.0 ? 360.0 - a : a;
}

// The one mechanism of the tabulated methods: a value given at wind angles, straight lines
// between them (as the published tables are used), held to the first and last angle.
double ByAngle(std::span<const double> angles, std::span<const double> values, double angleDeg) {
  return InterpolateNodes(angles, values, MirroredAngle(angleDeg));
}

// ---- Fujiwara, Ueno and Ikeda (2005), longitudinal force in the form of ISO 15016:2015,
// Table A-1, and ITTC 7.5-04-01-01.1 (2017) ----

// C_AA of one branch: i = 1 for head winds (0 to 90 degrees), i = 2 for stern winds.
double FujiwaraBranch(int i, const Windage& w, double psiDeg) {
  const double L = w.lengthOA, B = w.beam, hbr = w.heightTop;
  const double alv = w.areaProfile, axv = w.areaFront, aod = w.areaSuperProfile;
  double clf, cxli, calf;
  if (i == 1) {
    clf = 0.922 - 0.507 * alv / (L * B) - 1.162 * w.xCentroidFwdMid / L;
    cxli = -0.458 - 3.245 * alv / (L * hbr) + 2.313 * axv / (B * hbr);
    calf = 0.585 + 0.906 * aod / alv - 3.239 * B / L;
  } else {
    clf = -0.018 + 5.091 * B / L - 10.367 * w.zCentroid / L + 3.011 * aod / (L * L) + 0.341 * axv / (B * B);
    cxli = 1.901 - 12.727 * alv / (L * hbr) - 24.407 * axv / alv + 40.310 * B / L + 5.481 * axv / (B * hbr);
    calf = 0.314 + 1.117 * aod / alv;
  }
  const double psi = psiDeg * DegToRad, s = std::sin(psi), c = std::cos(psi);
  return clf * c + cxli * (s - 0.5 * s * c * c) * s * c + calf * s * c * c * c;
}

// The two branches do not meet at beam wind: between 90 - mu and 90 + mu, mu = 10 degrees,
// the procedure takes the straight line between them.
double FujiwaraCoefficient(const Windage& w, double angleDeg) {
  constexpr double kMu = 10.0;
  const double psi = MirroredAngle(angleDeg);
  if (psi <= 90.0 - kMu) return FujiwaraBranch(1, w, psi);
  if (psi >= 90.0 + kMu) return FujiwaraBranch(2, w, psi);
  const double lo = FujiwaraBranch(1, w, 90.0 - kMu), hi = FujiwaraBranch(2, w, 90.0 + kMu);
  return lo + (hi - lo) * (psi - (90.0 - kMu)) / (2.0 * kMu);
}

// ---- Isherwood (1972) ----

struct IsherwoodTable {
  std::vector<double> angles;
  std::array<std::vector<double>, 7> a;  // A0..A6 at each angle
};

const IsherwoodTable& Isherwood() {
  static const IsherwoodTable table = [] {
    constexpr std::string_view kCsv =
#include "resistance/tables/isherwood_cx.csv.inc"
        ;
    const CoefTable csv = ParseCoefTable(kCsv);
    IsherwoodTable t;
    for (const auto& row : csv.rows) {
      t.angles.push_back(row.at(0));
      for (size_t k = 0; k < t.a.size(); ++k) t.a[k].push_back(row.at(k + 1));
    }
    return t;
  }();
  return table;
}

// C_X = A0 + A1 2A_L/L^2 + A2 2A_T/B^2 + A3 L/B + A4 S/L + A5 C/L + A6 M, positive aft; C is the
// distance of the profile's centroid from the bow, taken as L/2 less its position forward of
// midship. The coefficients are interpolated by angle, which is the same as interpolating C_X.
double IsherwoodCoefficient(const Windage& w, double angleDeg) {
  const IsherwoodTable& t = Isherwood();
  const double L = w.lengthOA, B = w.beam;
  const double x[7] = {1.0,
                       2.0 * w.areaProfile / (L * L),
                       2.0 * w.areaFront / (B * B),
                       L / B,
                       w.perimeter / L,
                       (0.5 * L - w.xCentroidFwdMid) / L,
                       static_cast<double>(w.mastGroups)};
  double cx = 0.0;
  for (size_t k = 0; k < t.a.size(); ++k) cx += ByAngle(t.angles, t.a[k], angleDeg) * x[k];
  return cx;
}

// ---- Blendermann (1994) ----

struct BlendermannType {
  const char* name;
  double cdt, cdlBow, cdlStern, delta, kappa;
};
constexpr BlendermannType kBlendermann[] = {
#include "resistance/tables/blendermann_1994.inc"
};

// C_X = -CDl_AF cos(eps) / (1 - 0.5 delta (1 - CDl/CDt) sin^2(2 eps)), CDl = CDl_AF A_F / A_L,
// referred to A_F with x forward; CDl_AF is the head-wind value up to beam wind and the
// stern-wind value beyond. The resistance coefficient is -C_X.
double BlendermannCoefficient(const Windage& w, double angleDeg) {
  const BlendermannType& t = kBlendermann[w.vesselType];
  const double eps = MirroredAngle(angleDeg) * DegToRad;
  const double cdlAf = MirroredAngle(angleDeg) <= 90.0 ? t.cdlBow : t.cdlStern;
  const double cdl = cdlAf * w.areaFront / w.areaProfile;
  const double s2 = std::sin(2.0 * eps);
  const double den = 1.0 - 0.5 * t.delta * (1.0 - cdl / t.cdt) * s2 * s2;
  return cdlAf * std::cos(eps) / den;
}

// ---- ITTC data sets ----

struct WindDataSetTable {
  const char* name;
  std::vector<double> angles, cx;
};

const std::vector<WindDataSetTable>& DataSets() {
  static const std::vector<WindDataSetTable> sets = {
#include "resistance/tables/ittc_wind_datasets.inc"
  };
  return sets;
}

bool Fail(const std::string& text) {
  AddCalcError(text);
  return false;
}

}  // namespace

bool WindResistanceCoefficient(int method, const Windage& w, double angleDeg, double& caa) {
  caa = 0.0;
  switch (method) {
    case kWindFujiwara:
      caa = FujiwaraCoefficient(w, angleDeg);
      return true;
    case kWindIsherwood:
      caa = IsherwoodCoefficient(w, angleDeg);
      return true;
    case kWindBlendermann:
      if (w.vesselType < 0 || w.vesselType >= static_cast<int>(std::size(kBlendermann))) return false;
      caa = BlendermannCoefficient(w, angleDeg);
      return true;
    case kWindITTCDataSet: {
      if (w.dataSet < 0 || w.dataSet >= static_cast<int>(DataSets().size())) return false;
      const WindDataSetTable& t = DataSets()[w.dataSet];
      caa = -ByAngle(t.angles, t.cx, angleDeg);
      return true;
    }
    default:
      return false;
  }
}

bool WindResistanceIncrease(int method, const Windage& w, double windSpeed, double windAngleDeg,
                            double shipSpeed, double& drag) {
  drag = 0.0;
  // The relative wind: the true wind plus the head wind of the ship's own speed.
  const double a = windAngleDeg * DegToRad;
  const double head = shipSpeed + windSpeed * std::cos(a), side = windSpeed * std::sin(a);
  const double vwr = std::hypot(head, side);
  const double psiWr = std::atan2(std::fabs(side), head) / DegToRad;
  double caaRel = 0.0, caaHead = 0.0;
  if (!WindResistanceCoefficient(method, w, psiWr, caaRel) || !WindResistanceCoefficient(method, w, 0.0, caaHead))
    return false;
  drag = 0.5 * kAirDensity * w.areaFront * (caaRel * vwr * vwr - caaHead * shipSpeed * shipSpeed);
  return true;
}

Windage WindageOf(clsVXEnvironment& e, const clsVXHull& hull) {
  Windage w;
  const double aHull = e.WindHullProfileArea(kM2), aSuper = e.WindSuperstructureProfileArea(kM2);
  w.lengthOA = e.WindLengthOverall(kM);
  w.beam = hull.BeamWLMax(kM);
  w.areaFront = e.WindHullTransverseArea(kM2) + e.WindSuperstructureTransverseArea(kM2);
  w.areaProfile = aHull + aSuper;
  w.areaSuperProfile = aSuper;
  w.xCentroidFwdMid = e.WindXAreaFwdMidship(kM);
  if (w.areaProfile > 0.0) {
    w.zCentroid = (aHull * e.WindHullZAreaAboveWL(kM) + aSuper * e.WindSuperstructureZAreaAboveWL(kM)) /
                  w.areaProfile;
  }
  w.heightTop = e.WindSuperstructureHeightAboveWL(kM);
  w.perimeter = e.WindProfilePerimeter(kM);
  w.mastGroups = e.WindMastGroupCount();
  w.vesselType = e.WindVesselType();
  w.dataSet = e.WindDataSet();
  return w;
}

bool CalcWindDrag(double& dragN, clsVXEnvironment& environment, const clsVXHull& hull,
                  const clsVXResistance& resistance, double speedFtPerSec) {
  SetCalcLocation("Wind drag prediction");
  dragN = 0.0;
  const int method = resistance.WindDragMethod();
  const std::string label = resistance.WindDragMethodLabel(method);
  if (method < kWindFujiwara) return Fail("Wind drag method not available: " + label);
  // The wind speed is read as a true wind 10 m above the sea; no height correction of it
  // is part of the program.
  if (environment.WindGradientCorr() == 1) return Fail("Wind gradient correction not available");
  const Windage w = WindageOf(environment, hull);
  const double windSpeed = environment.WindSpeed(kMPerSec);
  const double windAngle = environment.WindAngleOffBowDeg();
  if (environment.ErrorsFound()) {
    AddCalcErrors(environment.Errors());
    return false;
  }
  // What each method needs beyond the frontal area.
  std::vector<const char*> missing;
  auto need = [&](bool given, const char* what) {
    if (!given) missing.push_back(what);
  };
  need(w.areaFront > 0.0, "Transverse windage area");
  if (method != kWindITTCDataSet) need(w.areaProfile > 0.0, "Profile windage area");
  if (method == kWindFujiwara || method == kWindIsherwood) {
    need(w.lengthOA > 0.0, "Length overall");
    need(w.beam > 0.0, "Max beam on waterline");
  }
  if (method == kWindFujiwara) need(w.heightTop > 0.0, "Superst top above WL");
  if (method == kWindIsherwood) need(w.perimeter > 0.0, "Profile perimeter");
  if (!missing.empty()) {
    std::string text = "Wind drag (" + label + ") needs:";
    for (const char* m : missing) text += std::string(" ") + m + ";";
    text.pop_back();
    return Fail(text);
  }
  if (!WindResistanceIncrease(method, w, windSpeed, windAngle, speedFtPerSec * 0.3048, dragN))
    return Fail("Wind drag method not available: " + label);
  return true;
}

}  // namespace velmar
