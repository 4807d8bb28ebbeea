// Wind drag: the wind resistance coefficient of the vessel by relative wind angle, from the
// Fujiwara regression, Isherwood's regression, Blendermann's load functions or an ITTC data
// set, and the wind resistance increase of the speed-trial procedure that makes DragWind.
#pragma once

#include "resistance/resistance_settings.h"
#include "vessel/environment.h"
#include "vessel/hull.h"

namespace velmar {

// Indexes of WindDragMethod. Taylor, Hughes and Iwai have no published coefficients in the
// program and fail with "not available".
enum WindDragMethodIndex {
  kWindTaylor = 0,
  kWindHughes = 1,
  kWindIwai = 2,
  kWindFujiwara = 3,
  kWindIsherwood = 4,
  kWindBlendermann = 5,
  kWindITTCDataSet = 6,
};

// The windage of the vessel above the waterline, in metres and square metres.
struct Windage {
  double lengthOA = 0.0;
  double beam = 0.0;
  double areaFront = 0.0;          // A_XV: transverse projected area, hull and superstructure
  double areaProfile = 0.0;        // A_LV: lateral projected area, hull and superstructure
  double areaSuperProfile = 0.0;   // A_OD (A_SS): lateral area of the superstructure
  double xCentroidFwdMid = 0.0;    // C_MC: centroid of A_LV forward of midship
  double zCentroid = 0.0;          // H_C: centroid of A_LV above the waterline
  double heightTop = 0.0;          // H_BR: top of the superstructure above the waterline
  double perimeter = 0.0;          // S: perimeter of the lateral projection
  int mastGroups = 0;              // M
  int vesselType = 0;              // index of kWindVesselTypeLabels (Blendermann)
  int dataSet = 0;                 // index of kWindDataSetLabels (ITTC)
};

// Air density of the speed-trial procedure at 15 degC, kg/m3.
inline constexpr double kAirDensity = 1.225;

// The wind resistance coefficient C_AA of `method` at the relative wind angle `angleDeg` off
// the bow (0 head wind, mirrored above 180): the longitudinal force over 0.5 rho_A V_R^2 A_XV,
// positive for a resistance. False for a method without coefficients.
bool WindResistanceCoefficient(int method, const Windage& w, double angleDeg, double& caa);

// The wind resistance increase over still air of ITTC Recommended Procedure 7.5-04-01-01.1
// (2017) and ISO 15016:2015: R_AA = 0.5 rho_A A_XV (C_AA(psi_WR) V_WR^2 - C_AA(0) V^2), from the
// true wind `windSpeed` at `windAngleDeg` off the bow and the ship speed `shipSpeed` (m/s);
// newtons.
bool WindResistanceIncrease(int method, const Windage& w, double windSpeed, double windAngleDeg,
                            double shipSpeed, double& drag);

// The windage of the project: areas and heights of hull and superstructure summed, the
// length overall and the extra inputs of the environment, the beam of the hull.
Windage WindageOf(clsVXEnvironment& environment, const clsVXHull& hull);

// DragWind of one speed (ft/s), in newtons, by the method selected in `resistance`. False with
// the text in the calculation error state when the method is not available, an input is
// negative or one that the method needs is missing.
bool CalcWindDrag(double& dragN, clsVXEnvironment& environment, const clsVXHull& hull,
                  const clsVXResistance& resistance, double speedFtPerSec);

}  // namespace velmar
