// Guldhammer, H.E. and Harvald, Sv.Aa. (1974) "Ship Resistance: Effect of Form and Principal
// Dimensions", Akademisk Forlag, Copenhagen: the residuary resistance charts, here in the
// regression of Kristensen, H.O. and Lützen, M. (2012) "Prediction of Resistance and Propulsion
// Power of Ships", Technical University of Denmark, Project 2010-56, Work Package 2, Report 04.
// The diagram regression and the breadth-draught correction are corroborated by three public
// implementations and reproduce a published example to seven digits; the bulb correction is
// single source. Kristensen & Lützen's LCB correction is left out: as transcribed it cannot act
// below Fn 0.7 and is taken to be mis-transcribed.
#include "resistance/guldhammer_harvald.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "core/diagnostics.h"
#include "resistance/hull_method_support.h"
#include "resistance/hull_estimates.h"

namespace velmar {
namespace {

// The speed range of the method's data set, as the program's method catalogue gives it.
constexpr double kFnLower = 0.05, kFnUpper = 0.33;

bool Fail(const char* text) {
  AddCalcError(text);
  return false;
}

}  // namespace

HarvaldTerms CalcHarvaldResiduary(double m, double fn, double cp, double bt, HarvaldBulbForm bulb) {
  HarvaldTerms t;
  // Diagram value of the standard hull (B/T 2.5, standard LCB, no bulb).
  const double a0 = 1.35 - 0.23 * m + 0.012 * m * m;
  const double a1 = 0.0011 * std::pow(m, 9.1);
  const double n1 = 2.0 * m - 3.7;
  t.e = (a0 + 1.5 * std::pow(fn, 1.8) + a1 * std::pow(fn, n1)) * (0.98 + 2.5 / std::pow(m - 2.0, 4.0)) +
        std::pow(m - 5.0, 4.0) * std::pow(fn - 0.1, 4.0);
  const double b1 = 7.0 - 0.09 * m * m;
  const double b2 = (5.0 * cp - 2.5) * (5.0 * cp - 2.5);
  const double b3 = std::pow(600.0 * (fn - 0.315) * (fn - 0.315) + 1.0, 1.5);
  t.g = b1 * b2 / b3;
  t.h = std::exp(80.0 * (fn - (0.04 + 0.59 * cp) - 0.015 * (m - 5.0)));
  t.k = 180.0 * std::pow(fn, 3.7) * std::exp(20.0 * cp - 16.0);
  t.diagram = t.e + t.g + t.h + t.k;
  // Breadth-draught correction.
  t.breadthDraught = 0.16 * (bt - 2.5);
  t.crAfterBT = (t.diagram + t.breadthDraught) / 1000.0;
  // Bulb correction (single source): an allowance for bulk forms, a percentage for the others
  // that turns into an increase above Fn 0.36.
  switch (bulb) {
    case HarvaldBulbForm::BulkCargo:
      t.cr = t.crAfterBT + std::max(-0.4, -0.1 - 1.6 * fn) / 1000.0;
      break;
    case HarvaldBulbForm::OtherTypes:
      t.cr = t.crAfterBT * (1.0 + std::max(-50.0, 250.0 * fn - 90.0) / 100.0);
      break;
    case HarvaldBulbForm::None:
      t.cr = t.crAfterBT;
      break;
  }
  return t;
}

bool CalcHullDragAndersen(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull,
                          double fn) {
  SetCalcLocation("Andersen bare-hull drag");
  ctModel = 0.0;
  modelLength = 0.0;
  speedCheck = SpeedCheckOf(fn, kFnLower, kFnUpper);
  try {
    // M, Fn and CP all on the waterline length.
    const double m = hull.CoefLwlVol(), cp = hull.CoefPrismatic(), bt = hull.CoefBwlTvolRatio();
    const double abt = hull.BulbAreaSect(kFt2);
    if (PassHullErrors(hull)) return false;
    // (M - 2)^4 divides: the regression holds for 4 <= M <= 8.
    if (!(m > 2.0)) return Fail("Andersen coef L/VOL^(1/3)");
    if (!(fn > 0.0)) return Fail("Froude number [LWL]");
    // Above the data set the H term grows by a factor e for every 0.0125 in Fn: there the
    // residuary coefficient of the top speed stands.
    const double fnData = std::min(fn, kFnUpper);
    const HarvaldTerms t = CalcHarvaldResiduary(
        m, fnData, cp, bt, abt > 0.0 ? HarvaldBulbForm::OtherTypes : HarvaldBulbForm::None);
    if (!ShipScaleModelCt(t.cr, hull, fn, ctModel, modelLength)) return false;
    if (!std::isfinite(ctModel)) return Fail("Overflow");
    return true;
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
}

}  // namespace velmar
