// The resistance prediction driver and the ITTC-78 (CT) route.
#include "resistance/resistance_driver.h"

#include <cmath>
#include <limits>

#include "core/constants.h"
#include "core/helpers.h"
#include "core/model_set.h"
#include "core/ui_hooks.h"
#include "resistance/appendage_drag.h"
#include "resistance/channel_drag.h"
#include "resistance/dsyhs.h"
#include "resistance/friction.h"
#include "resistance/guldhammer_harvald.h"
#include "resistance/holtrop.h"
#include "resistance/mercier_savitsky.h"
#include "resistance/savitsky.h"
#include "resistance/seas_drag.h"
#include "resistance/van_oortmerssen.h"
#include "resistance/wind_drag.h"

namespace velmar {
namespace {

using Col = clsVXSpeedPerformance::Field;

// The bare-hull columns a row gets as 0 when the hull drag is off.
constexpr Col kBareHullOffColumns[] = {
    Col::CoefDragBareHullFriction,
    Col::CoefDragBareHullViscous,
    Col::CoefDragBareHullResiduary,
    Col::CoefDragBareHullRoughness,
    Col::CoefDragBareHullCorrAllowance,
    Col::CoefDragBareHull,
    Col::CoefDragBareHullWavemakingTransverse,
    Col::CoefDragBareHullWavemakingDivergent,
    Col::CoefDragBareHullResiduaryTelfer,
    Col::CoefDragBareHullTelfer,
    Col::CoefDragBareHullWeightRatio,
    Col::DragBareHullResiduary,
    Col::DragBareHullIndividual,
    Col::DragBareHull,
    Col::CoefDragBareHullResiduaryAlignmentMultiplier,
    Col::WakeFractionAlignmentMultiplier,
    Col::ThrustDeductionAlignmentMultiplier,
    Col::RelRotEfficiencyAlignmentMultiplier,
};

// The hull drag methods of the ITTC-78 (CT) route: each gives the total coefficient of its model
// at the ship's Froude number, the model's length and the speed check. The methods whose
// catalogue entry has no row here are not part of the program (their ids, labels and
// parameter ranges are).
using HullDragMethodFn = bool (*)(double& ctModel, double& modelLength, int& speedCheck,
                                  const clsVXHull& hull, double fn);
template <int kMethod>
bool DelftSeries(double& ctModel, double& modelLength, int& speedCheck, const clsVXHull& hull, double fn) {
  return CalcHullDragDelftSeries(kMethod, ctModel, modelLength, speedCheck, hull, fn);
}
// What a method keeps of the hull from one speed of a run to the next (read once, at the
// first speed that needs it).
struct HullDragRun {
  HoltropRun holtrop;
  // The model's length (ft) and its power 1.5, of the rows so far.
  double modelLength = std::numeric_limits<double>::quiet_NaN(), modelLengthPow = 0.0;
  // The ITTC-1957 line at the model's Reynolds number, shared by the method and the expansion.
  FrictionITTC57Memo modelFriction;
};
// A method whose hull part is read once per run has a `calcRun` besides its `calc`.
using HullDragRunFn = bool (*)(double& ctModel, double& modelLength, int& speedCheck, HullDragRun& run,
                               const clsVXHull& hull, double fn);
// A method that sets its own location before anything else (`ownLocation`) replaces the model
// step's at once, so the model step leaves its own out.
struct HullDragMethodRow {
  int method;
  HullDragMethodFn calc;
  HullDragRunFn calcRun = nullptr;
  bool ownLocation = false;
};
bool HoltropRunRow(double& ctModel, double& modelLength, int& speedCheck, HullDragRun& run,
                   const clsVXHull& hull, double fn) {
  return CalcHullDragHoltropRun(ctModel, modelLength, speedCheck, run.holtrop, hull, fn, run.modelFriction);
}
constexpr HullDragMethodRow kModelMethods[] = {
    {kHullDragHoltrop, CalcHullDragHoltrop, HoltropRunRow, true},
    {kHullDragOortmerssen, CalcHullDragOortmerssen},
    {kHullDragDelftSeries1, DelftSeries<kHullDragDelftSeries1>},
    {kHullDragDelftSeries12, DelftSeries<kHullDragDelftSeries12>},
    {kHullDragDelftSeries2, DelftSeries<kHullDragDelftSeries2>},
    {kHullDragDelftSeries123, DelftSeries<kHullDragDelftSeries123>},
    {kHullDragDelftSeries23, DelftSeries<kHullDragDelftSeries23>},
    {kHullDragMercier, CalcHullDragMercier},
    {kHullDragAndersen, CalcHullDragAndersen},
};

const HullDragMethodRow* ModelMethod(int method) {
  for (const HullDragMethodRow& r : kModelMethods)
    if (r.method == method) return &r;
  return nullptr;
}

// Standard hull roughness of the ITTC-78 method, in metres.
constexpr double kStdRoughnessM = 0.00015;

// Roughness allowance of the ITTC-78 performance prediction method (ITTC 1978, Bowden and
// Davison 1974): dCF = (44 ((ks / L)^(1/3) - 10 Rn^(-1/3)) + 0.125) 1e-3, ks and L in metres.
// It takes its two powers, (ks / L)^(1/3) and Rn^(-1/3), which a run forms once per ship and
// once per row.
double RoughnessLengthTerm(double ksM, double lengthM) { return std::pow(ksM / lengthM, 1.0 / 3.0); }
double RoughnessReynoldsTerm(double rn) { return std::pow(rn, -1.0 / 3.0); }
double RoughnessAllowance(double lengthTerm, double reynoldsTerm) {
  return (lengthTerm - 10.0 * reynoldsTerm) * 0.044 + 0.000125;
}

// Two hulls drag twice as much as one.
int HullCount(const clsVXHull& hull) { return hull.HullConfigType() == 0 ? 1 : 2; }

// 1.0 unless the expansion is on and the form factor is given.
double ExpansionFormFactor(const clsVXITTC78Expansion& ittc78, const clsVXResistance& resistance) {
  const double k1 = ittc78.HullFormFactor();
  return resistance.HullDragITTC78ExpansionEnabled() == 0 || k1 == 0.0 ? 1.0 : k1;
}

// The settings of a run are read once, before its rows: no setting changes within a run, and
// the words their checks push go to the settings' own stacks, which no step reads.

// What the model step takes of the settings: the ship's form factor 1+k, the hull drag method,
// the friction line and whether the form factor is corrected for speed.
// `calc` is the method's row in the method table, null for a method without one.
struct ModelSettings {
  double k1;
  int method, frictionLine, kMultEnabled;
  const HullDragMethodRow* calc;
};
ModelSettings ReadModelSettings(const clsVXITTC78Expansion& ittc78, const clsVXResistance& resistance) {
  ModelSettings m{ExpansionFormFactor(ittc78, resistance), resistance.HullDragMethod(), ittc78.HullFrictionLine(),
                  resistance.HullDragFormFactorKMultEnabled(), nullptr};
  m.calc = ModelMethod(m.method);
  return m;
}

// What FinishRow takes of the settings: the Enabled states of the appendage, added and margin
// drags, and the margin's basis and percentage when it is calculated.
struct FinishSettings {
  int appendage, wind, seas, channel, margin, marginBasis = 0;
  double marginPercentage = 0.0;
};
FinishSettings ReadFinishSettings(const clsVXResistance& resistance) {
  FinishSettings f{resistance.AppendageDragEnabled(), resistance.WindDragEnabled(),
                   resistance.SeasDragEnabled(), resistance.ChannelDragEnabled(),
                   resistance.MarginDragEnabled()};
  if (f.margin == kDragCalc) {
    f.marginBasis = resistance.MarginDragBasis();
    f.marginPercentage = resistance.MarginDragPercentage();
  }
  return f;
}

// The conversions of the speed, drag and power columns that every row makes, prepared once
// per run: speed in ft/s, drags written in lbf and read in lbf and N, powers written in hp.
struct RowUnits {
  UnitScale speedFtS, fromLbf, toLbf, toN, fromHp;
  explicit RowUnits(const clsVXUnits* u)
      : speedFtS(u, UnitFamily::Speed, kFtPerSec, kCurrent),
        fromLbf(u, UnitFamily::Force, kCurrent, kLbf),
        toLbf(u, UnitFamily::Force, kLbf, kCurrent),
        toN(u, UnitFamily::Force, kN, kCurrent),
        fromHp(u, UnitFamily::Power, kCurrent, kHp) {}
};

// One added-drag column (wind, seas, channel): Off gives 0, Calc the method's drag in newtons,
// Lock and Enter keep what stands in the column.
template <class Calc>
bool AddedDragColumn(clsVXSpeedPerformance& sp, int row, Col column, int enabled, Calc calc) {
  if (enabled == kDragOff) sp.Write(row, FieldId(column), kCurrent, 0.0);
  if (enabled != kDragCalc) return true;
  double dragN = 0.0;
  if (!calc(dragN)) return false;
  sp.Write(row, FieldId(column), kN, dragN);
  return true;
}

// What every speed row needs of the ship, read once before the loop: water (slug/ft3,
// ft2/s), volume (ft3), displacement (kg), length (ft and m), wetted surface (ft2), the
// ship's form factor 1+k and the number of hulls; sqrt(g Vol^(1/3)) of the volumetric Froude
// number; the settings of the bare-hull steps and the length terms of the roughness allowances
// (standard and, when it is on, the hull's).
struct ShipRow {
  double rho, nu, vol, dispKg, L, LMetres, S, k1;
  int hullCount;
  double froudeVolumeRoot;
  int hullDrag, technique, expansionDetail;
  bool catamaranInterference, roughness;
  double correlationAllowance, stdRoughnessTerm, roughnessTerm;
  ModelSettings model;
  const RowUnits* units;
};

bool ModelCtCr(double& ctModel, double& crModel, int& speedCheck, double fnLength, clsVXHull& hull,
               const clsVXResistance& resistance, const ModelSettings& settings, double crMultiplier,
               double kMultiplier, HullDragRun* run);

// The bare-hull steps of one row (HullDragEnabled "Calc"); `run` keeps the model method's hull
// part from row to row; an ITTC-1957 friction line is taken through `shipFriction`, which the
// appendages of the row share.
bool CalcBareHullRow(const ShipRow& ship, int row, double V, double Fn, double Rn, clsVXHull& hull,
                     const clsVXResistance& resistance, clsVXSpeedPerformance& sp, HullDragRun& run,
                     FrictionITTC57Memo& shipFriction) {
  // 1. Speed correction of the form factor at ship scale.
  double kMult = ship.model.kMultEnabled == 1 ? 1.0 / (1.0 + 140.0 * std::pow(Fn, 5.0)) : 1.0;
  // 2. Catamaran interference.
  double factor = 1.0, kCat = 1.0;
  if (ship.catamaranInterference) {
    if (!CalcCatamaranInterference(hull.CoefLwlBwlRatio(), hull.CoefSLwlRatio(), factor, kCat)) return false;
  }
  kMult *= factor;
  // 3.-5. Correlation and roughness allowances.
  const double rnTerm = RoughnessReynoldsTerm(Rn);
  const double dCFstd = RoughnessAllowance(ship.stdRoughnessTerm, rnTerm);
  const double ca =
      ship.expansionDetail != 0 ? ship.correlationAllowance : (5.68 - 0.6 * Log10(Rn)) * 0.001 + dCFstd;
  sp.CoefDragBareHullCorrAllowance(row, ca);
  double dCFrough = 0.0;
  if (ship.roughness) dCFrough = RoughnessAllowance(ship.roughnessTerm, rnTerm) - dCFstd;
  sp.CoefDragBareHullRoughness(row, dCFrough);
  // 6.-8. Dynamic pressure, friction and viscous coefficients.
  const double q = 0.5 * ship.rho * ship.S * V * V;
  const double cf = ship.model.frictionLine == kFrictionITTC57
                        ? shipFriction.At(Rn)
                        : CalcFrictionLine(Rn, ship.model.frictionLine, ship.L, V, 0.0);
  sp.CoefDragBareHullFriction(row, cf);
  sp.CoefDragBareHullViscous(row, ((ship.k1 - 1.0) * kMult + 1.0) * cf);
  // 9. The residuary coefficient. The prediction takes it from the model step; an aligned
  // prediction does the same and scales it by the alignment multiplier. How that multiplier
  // follows from the reference ship is not defined in this program, so it is 1. Scale from
  // test and Defined use the residuary coefficient that stands in the table (entered, or
  // kept from the test); scale from test also marks its multiplier 1.
  const int technique = ship.technique;
  if (technique == kTechniquePrediction || technique == kTechniqueAlignedPrediction) {
    double ctModel = 0.0, crModel = 0.0;
    int speedCheck = 1;
    if (!RunGuarded([&] {
          return ModelCtCr(ctModel, crModel, speedCheck, Fn, hull, resistance, ship.model, factor, kCat,
                           &run);
        }))
      return false;
    if (technique == kTechniqueAlignedPrediction) {
      sp.CoefDragBareHullResiduaryAlignmentMultiplier(row, 1.0);
      crModel *= sp.CoefDragBareHullResiduaryAlignmentMultiplier(row);
    }
    sp.CoefDragBareHullResiduary(row, crModel);
    sp.DragBareHullSpeedCheck(row, speedCheck);
  } else if (technique == kTechniqueScaleFromTest) {
    sp.CoefDragBareHullResiduaryAlignmentMultiplier(row, 1.0);
  }
  // 10.-15. Totals, drags, power and the dimensionless ratios.
  const double cr = sp.CoefDragBareHullResiduary(row);
  const double ct = cr + sp.CoefDragBareHullRoughness(row) + sp.CoefDragBareHullCorrAllowance(row) +
                    sp.CoefDragBareHullViscous(row);
  sp.CoefDragBareHull(row, ct);
  const RowUnits& u = *ship.units;
  sp.WriteIn(row, FieldId(Col::DragBareHullResiduary), u.fromLbf, q * cr);
  sp.WriteIn(row, FieldId(Col::DragBareHullIndividual), u.fromLbf, q * ct);
  sp.DragBareHull(row, kCurrent, sp.DragBareHullIndividual(row, kCurrent) * ship.hullCount);
  sp.WriteIn(row, FieldId(Col::PowerEffectiveBareHull), u.fromHp,
             sp.ReadIn(row, FieldId(Col::DragBareHull), u.toLbf) * V / 550.0);
  const double telfer = 0.5 * ship.S * ship.L / ship.vol;  // from CT to Telfer's coefficient
  sp.CoefDragBareHullResiduaryTelfer(row, cr * telfer);
  sp.CoefDragBareHullTelfer(row, ct * telfer);
  sp.CoefDragBareHullWeightRatio(
      row, ship.dispKg > 0.0
               ? sp.ReadIn(row, FieldId(Col::DragBareHullIndividual), u.toN) / (ship.dispKg * GravitySI)
               : 0.0);
  return true;
}

// What follows the bare hull in every row, whichever the route: the appendage drag, the added
// drags, the margin, the total and its effective power. `appendages` keeps the appendages of
// the component method from row to row.
bool FinishRow(const FinishSettings& settings, const RowUnits& units, int hullCount, int row, double V,
               clsVXWaterProperties& water,
               clsVXHull& hull, clsVXAppendage& appendage, clsVXEnvironment& environment,
               clsVXITTC78Expansion& ittc78, clsVXResistance& resistance, clsVXSpeedPerformance& sp,
               AppendageRun& appendages) {
  switch (settings.appendage) {
    case kDragOff:
      sp.DragAppendages(row, kCurrent, 0.0);
      break;
    case kDragCalc: {
      double drag = 0.0;
      appendages.speed = V;
      if (!CalcAppendageDrag(drag, water, hull, appendage, ittc78, resistance, sp, row, &appendages))
        return false;
      sp.WriteIn(row, FieldId(Col::DragAppendages), units.fromLbf, drag * hullCount);
      break;
    }
    default:
      break;
  }

  // The seas drag takes the calm-water drag in newtons; only a row that calculates it converts
  // the two drags (the total below reads them again, pushing the same words in the same order).
  if (!AddedDragColumn(sp, row, Col::DragWind, settings.wind,
                       [&](double& d) { return CalcWindDrag(d, environment, hull, resistance, V); }) ||
      !AddedDragColumn(sp, row, Col::DragSeas, settings.seas,
                       [&](double& d) {
                         const double calmN = sp.DragBareHull(row, kN) + sp.DragAppendages(row, kN);
                         return CalcSeasDrag(d, environment, hull, water, resistance, V, calmN);
                       }) ||
      !AddedDragColumn(sp, row, Col::DragChannel, settings.channel, [&](double& d) {
        return CalcChannelDrag(d, environment, hull, ittc78, resistance, sp, row, V, water.Density(kKgPerM3));
      }))
    return false;
  // The margin follows its own Enabled state: Off gives 0, Calc takes the percentage of
  // the hull drag alone or of the hull and added drags, Lock and Enter keep the column.
  switch (settings.margin) {
    case kDragOff:
      sp.DragMargin(row, kCurrent, 0.0);
      break;
    case kDragCalc: {
      double basis = sp.DragBareHull(row, kCurrent);
      if (settings.marginBasis == 1) {
        basis += sp.DragAppendages(row, kCurrent) + sp.DragWind(row, kCurrent) + sp.DragSeas(row, kCurrent) +
                 sp.DragChannel(row, kCurrent);
      }
      sp.DragMargin(row, kCurrent, 0.01 * settings.marginPercentage * basis);
      break;
    }
    default:
      break;
  }

  sp.DragTotal(row, kCurrent,
               sp.DragBareHull(row, kCurrent) + sp.DragAppendages(row, kCurrent) +
                   sp.DragWind(row, kCurrent) + sp.DragSeas(row, kCurrent) + sp.DragChannel(row, kCurrent) +
                   sp.DragMargin(row, kCurrent));
  sp.WriteIn(row, FieldId(Col::PowerEffectiveTotal), units.fromHp,
             sp.ReadIn(row, FieldId(Col::DragTotal), units.toLbf) * V / 550.0);
  return true;
}

bool DragPredictionCT(clsVXWaterProperties& water, clsVXHull& hull, clsVXAppendage& appendage,
                      clsVXEnvironment& environment, clsVXITTC78Expansion& ittc78,
                      clsVXResistance& resistance, clsVXSpeedPerformance& sp) {
  SetCalcLocation("ITTC-78 (CT) drag prediction");
  ShipRow ship{};
  ship.rho = water.Density(kSlugPerFt3);
  ship.nu = water.Viscosity(kFt2PerSec);
  if (water.ErrorsFound()) {
    AddCalcErrors(water.Errors());
    return false;
  }
  // The Holtrop method reads on through these reads at the first speed (HoltropRun).
  HullReads hullReads(hull);
  ship.vol = hullReads.DisplacementVolume(kFt);
  ship.dispKg = hullReads.Displacement(kKg);
  ship.L = hullReads.LengthWL(kFt);
  ship.LMetres = hullReads.LengthWL(kM);
  ship.S = hullReads.WettedSurface(kFt2);
  if (hull.ErrorsFound()) {
    AddCalcErrors(hull.Errors());
    return false;
  }
  ship.hullCount = HullCount(hull);
  ship.froudeVolumeRoot = std::sqrt(GravityFt * std::pow(ship.vol, 1.0 / 3.0));
  ship.hullDrag = resistance.HullDragEnabled();
  if (ship.hullDrag == kDragCalc) {
    ship.catamaranInterference =
        hull.HullConfigType() == 1 && resistance.HullDragCatamaranInterferenceEnabled() == 1;
    ship.expansionDetail = resistance.HullDragExpansionDetail();
    if (ship.expansionDetail != 0) ship.correlationAllowance = ittc78.CorrelationAllowance();
    ship.stdRoughnessTerm = RoughnessLengthTerm(kStdRoughnessM, ship.LMetres);
    ship.roughness = resistance.HullDragRoughnessEnabled() == 1 && ittc78.HullRoughnessMM() > 0.0;
    if (ship.roughness)
      ship.roughnessTerm = RoughnessLengthTerm(0.001 * ittc78.HullRoughnessMM(), ship.LMetres);
    ship.model = ReadModelSettings(ittc78, resistance);
  }
  ship.k1 = ExpansionFormFactor(ittc78, resistance);
  const FinishSettings finish = ReadFinishSettings(resistance);

  // The reference ship of an aligned prediction or a scale from test must be complete; its
  // numbers would feed the alignment, which this program does not define.
  const int technique = ship.technique = resistance.HullDragTechnique();
  if (technique == kTechniqueAlignedPrediction || technique == kTechniqueScaleFromTest) {
    const std::shared_ptr<clsVXHull>& ref = App().RefShipResistance.Hull;
    if (!ref) {
      AddCalcError("Reference ship");
      return false;
    }
    ref->DisplacementVolume(kFt);
    ref->LengthWL(kFt);
    ref->LengthWL(kM);
    ref->WettedSurface(kFt2);
    if (ref->ErrorsFound()) {
      AddCalcErrors(ref->Errors());
      return false;
    }
  }

  const RowUnits units(sp.Units().get());
  ship.units = &units;
  HullDragRun run;
  run.holtrop.reads = &hullReads;
  AppendageRun appendages;
  for (int row = 0; row < sp.count(); ++row) {
    sp.SpeedIndex(row);
    const double V = sp.ReadIn(row, FieldId(Col::Speed), units.speedFtS);
    const double Fn = V / std::sqrt(GravityFt * ship.L);
    const double Rn = V * ship.L / ship.nu;
    if (sp.ErrorsFound()) {
      AddCalcErrors(sp.Errors());
      return false;
    }
    sp.CoefFroudeLength(row, Fn);
    sp.CoefFroudeVolume(row, V / ship.froudeVolumeRoot);
    sp.CoefReynoldsLength(row, Rn);

    switch (ship.hullDrag) {
      case kDragOff:
        sp.DragBareHullSpeedCheck(row, 1);
        for (Col c : kBareHullOffColumns) sp.Write(row, FieldId(c), kCurrent, 0.0);
        break;
      case kDragCalc:
        if (!CalcBareHullRow(ship, row, V, Fn, Rn, hull, resistance, sp, run, appendages.shipFriction))
          return false;
        break;
      default:  // Lock (and the file's Enter): the columns stay as they are
        break;
    }

    if (!FinishRow(finish, units, ship.hullCount, row, V, water, hull, appendage, environment, ittc78, resistance,
                   sp, appendages))
      return false;
  }
  return true;
}

// The planing columns a row gets as 0 when the hull drag is off, besides the bare-hull ones.
constexpr Col kPlaningOffColumns[] = {
    Col::CoefFroudeChineBeam,
    Col::DynamicTrimDeg,
    Col::LengthWettedKeel,
    Col::LengthWettedMean,
    Col::CoefPlaningLift,
    Col::CoefPlaningLkeelLpRatio,
    Col::CoefPlaningHumpSpeedMultiplier,
    Col::DragEquilibriumPlaning,
    Col::EffectiveChineBeam,
    Col::EffectiveAngleDeadriseDeg,
};

// What every row of a planing prediction needs of the hull: volume (ft3), displacement (kg),
// waterline and projected chine lengths (ft, 0 when not given) and the number of hulls.
struct PlaningShip {
  double rho, nu, vol, dispKg, L, LP;
  int hullCount;
};

// The bare-hull steps of one planing row (HullDragEnabled "Calc"), by the Savitsky method. All
// coefficients refer to the dynamic pressure on the wetted bottom, q = 0.5 rho V^2 lambda b^2 /
// cos(beta): CT is the drag, CV the bottom friction with its allowances and CR the rest (the
// pressure drag and the hump correction). CF, CA and dCF are the friction line and the
// allowances that make the friction.
bool PlaningBareHullRow(const PlaningShip& ship, int row, double V, clsVXHull& hull,
                        clsVXITTC78Expansion& ittc78, clsVXResistance& resistance,
                        clsVXSpeedPerformance& sp) {
  SavitskyOptions o;
  o.density = ship.rho;
  o.viscosity = ship.nu;
  const int line = ittc78.HullFrictionLine();
  o.friction = [line](double rn, double length, double speed) {
    return CalcFrictionLine(rn, line, length, speed, 0.0);
  };
  // Correlation allowance: the user's in the custom expansion, else Savitsky's recommended
  // friction allowance of 0.0004.
  const double ca = resistance.HullDragExpansionDetail() != 0 ? ittc78.CorrelationAllowance() : 0.0004;
  o.frictionAllowance = ca;
  o.humpMultiplier = resistance.HullDragPlaningHumpMultiplierEnabled() == 1;
  o.humpFactor = resistance.HullDragPlaningHumpMultiplierApplyFactor() == 1 ? 0.5 : 1.0;
  o.thrustLine = resistance.HullDragPlaningPropulsorLiftCorrEnabled() == 1;
  o.thrustFactor = resistance.HullDragPlaningPropulsorLiftCorrApplyFactor() == 1 ? 0.5 : 1.0;
  SavitskyRow r;
  if (!CalcHullDragSavitsky(r, hull, o, V)) return false;
  // The roughness allowance depends on the wetted length and Reynolds number of the solution:
  // a second equilibrium takes it in.
  double dCFrough = 0.0;
  if (resistance.HullDragRoughnessEnabled() == 1 && ittc78.HullRoughnessMM() > 0.0) {
    const double lengthM = r.equilibrium.lambda * r.beam * 0.3048;
    const double rn = r.equilibrium.reynolds;
    const double rnTerm = RoughnessReynoldsTerm(rn);
    dCFrough = RoughnessAllowance(RoughnessLengthTerm(0.001 * ittc78.HullRoughnessMM(), lengthM), rnTerm) -
               RoughnessAllowance(RoughnessLengthTerm(kStdRoughnessM, lengthM), rnTerm);
    o.frictionAllowance = ca + dCFrough;
    if (!CalcHullDragSavitsky(r, hull, o, V)) return false;
  }
  const SavitskyResult& e = r.equilibrium;
  sp.CoefReynoldsLength(row, e.reynolds);
  sp.CoefFroudeChineBeam(row, e.cv);
  sp.EffectiveChineBeam(row, kFt, r.beam);
  sp.EffectiveAngleDeadriseDeg(row, r.deadriseDeg);
  sp.DynamicTrimDeg(row, e.trimDeg);
  sp.LengthWettedKeel(row, kFt, e.keelLength);
  sp.LengthWettedMean(row, kFt, e.lambda * r.beam);
  sp.CoefPlaningLift(row, e.clBeta);
  sp.CoefPlaningLkeelLpRatio(row, ship.LP > 0.0 ? e.keelLength / ship.LP : 0.0);
  sp.CoefPlaningHumpSpeedMultiplier(row, r.humpMultiplier);
  sp.DragEquilibriumPlaning(row, kLbf, e.drag);
  sp.DragBareHullSpeedCheck(row, r.speedCheck);

  const double q = 0.5 * ship.rho * V * V * r.wettedArea;
  const double ct = r.drag / q, cv = e.frictionShare / q;
  sp.CoefDragBareHullFriction(row, e.cf);
  sp.CoefDragBareHullRoughness(row, dCFrough);
  sp.CoefDragBareHullCorrAllowance(row, ca);
  sp.CoefDragBareHullViscous(row, cv);
  sp.CoefDragBareHullResiduary(row, ct - cv);
  sp.CoefDragBareHull(row, ct);
  sp.CoefDragBareHullWavemakingTransverse(row, 0.0);
  sp.CoefDragBareHullWavemakingDivergent(row, 0.0);
  sp.DragBareHullResiduary(row, kLbf, q * (ct - cv));
  sp.DragBareHullIndividual(row, kLbf, r.drag);
  sp.DragBareHull(row, kCurrent, sp.DragBareHullIndividual(row, kCurrent) * ship.hullCount);
  sp.PowerEffectiveBareHull(row, kHp, sp.DragBareHull(row, kLbf) * V / 550.0);
  // Telfer's coefficients rest on a waterline length, which a planing hull does not run on.
  sp.CoefDragBareHullResiduaryTelfer(row, 0.0);
  sp.CoefDragBareHullTelfer(row, 0.0);
  sp.CoefDragBareHullWeightRatio(
      row, ship.dispKg > 0.0 ? sp.DragBareHullIndividual(row, kN) / (ship.dispKg * GravitySI) : 0.0);
  return true;
}

// A failure of the settings, before any speed row: its text names no speed.
bool FailBeforeRows(const std::string& text) {
  AddCalcError(text);
  SetCalcErrorAtSpeed(false);
  return false;
}

bool DragPredictionPlaning(clsVXWaterProperties& water, clsVXHull& hull, clsVXAppendage& appendage,
                           clsVXEnvironment& environment, clsVXITTC78Expansion& ittc78,
                           clsVXResistance& resistance, clsVXSpeedPerformance& sp) {
  SetCalcLocation("Planing drag prediction");
  PlaningShip ship{};
  ship.rho = water.Density(kSlugPerFt3);
  ship.nu = water.Viscosity(kFt2PerSec);
  if (water.ErrorsFound()) {
    AddCalcErrors(water.Errors());
    return false;
  }
  // Only the prediction by Savitsky's method is part of the planing route.
  const bool calc = resistance.HullDragEnabled() == kDragCalc;
  if (calc) {
    const int method = resistance.HullDragMethod();
    if (method != kHullDragSavitsky) {
      return FailBeforeRows("Hull drag method not available for the Planing scope: " +
                            resistance.HullDragMethodLabel(method));
    }
    if (resistance.HullDragTechnique() != kTechniquePrediction) {
      return FailBeforeRows("Hull drag technique not available for the Planing scope: " +
                            resistance.HullDragTechniqueLabel(resistance.HullDragTechnique()));
    }
    // Savitsky's spray area comes from a chart; no formula for it is part of the program.
    if (resistance.HullDragSprayCorrEnabled() == 1) {
      return FailBeforeRows("Spray drag correction not available");
    }
    if (resistance.HullDragCatamaranInterferenceEnabled() == 1 && hull.HullConfigType() == 1) {
      return FailBeforeRows("Catamaran interference not available for the Planing scope");
    }
  }
  using F = clsVXHull::Field;
  ship.vol = hull.DisplacementVolume(kFt);
  ship.dispKg = hull.Displacement(kKg);
  ship.L = hull.Raw(FieldId(F::LengthWL)) > 0.0 ? hull.LengthWL(kFt) : 0.0;
  ship.LP = hull.Raw(FieldId(F::LengthProjPlaningBottom)) > 0.0 ? hull.LengthProjPlaningBottom(kFt) : 0.0;
  if (hull.ErrorsFound()) {
    AddCalcErrors(hull.Errors());
    return false;
  }
  ship.hullCount = HullCount(hull);
  const FinishSettings finish = ReadFinishSettings(resistance);

  const RowUnits units(sp.Units().get());
  AppendageRun appendages;
  for (int row = 0; row < sp.count(); ++row) {
    sp.SpeedIndex(row);
    const double V = sp.ReadIn(row, FieldId(Col::Speed), units.speedFtS);
    if (sp.ErrorsFound()) {
      AddCalcErrors(sp.Errors());
      return false;
    }
    sp.CoefFroudeLength(row, ship.L > 0.0 ? V / std::sqrt(GravityFt * ship.L) : 0.0);
    sp.CoefFroudeVolume(row, V / std::sqrt(GravityFt * std::pow(ship.vol, 1.0 / 3.0)));
    sp.CoefFroudeChineLength(row, ship.LP > 0.0 ? V / std::sqrt(GravityFt * ship.LP) : 0.0);

    switch (resistance.HullDragEnabled()) {
      case kDragOff:
        sp.DragBareHullSpeedCheck(row, 1);
        sp.CoefReynoldsLength(row, ship.L > 0.0 ? V * ship.L / ship.nu : 0.0);
        for (Col c : kBareHullOffColumns) sp.Write(row, FieldId(c), kCurrent, 0.0);
        for (Col c : kPlaningOffColumns) sp.Write(row, FieldId(c), kCurrent, 0.0);
        break;
      case kDragCalc:
        if (!PlaningBareHullRow(ship, row, V, hull, ittc78, resistance, sp)) return false;
        break;
      default:  // Lock (and the file's Enter): the columns stay as they are
        break;
    }
    if (!FinishRow(finish, units, ship.hullCount, row, V, water, hull, appendage, environment, ittc78, resistance,
                   sp, appendages))
      return false;
  }
  return true;
}

bool ModelCtCr(double& ctModel, double& crModel, int& speedCheck, double fnLength, clsVXHull& hull,
               const clsVXResistance& resistance, const ModelSettings& settings, double crMultiplier,
               double kMultiplier, HullDragRun* run) {
  const int method = settings.method;
  const HullDragMethodRow* calc = settings.calc;
  if (!calc || !calc->ownLocation) SetCalcLocation("ITTC-78 (CT) model Ct and Cr prediction");
  const double k1 = settings.k1;
  if (crMultiplier <= 0.0) crMultiplier = 1.0;
  if (kMultiplier <= 0.0) kMultiplier = 1.0;
  speedCheck = 1;
  double modelLength = 0.0;
  if (!calc) {
    AddCalcError(method == kHullDragSavitsky  // a method of the planing route
                     ? "Hull drag method needs the Planing scope: " + resistance.HullDragMethodLabel(method)
                     : "Hull drag method not available: " + resistance.HullDragMethodLabel(method));
    return false;
  }
  const bool modelOk = run && calc->calcRun
                           ? calc->calcRun(ctModel, modelLength, speedCheck, *run, hull, fnLength)
                           : calc->calc(ctModel, modelLength, speedCheck, hull, fnLength);
  if (!modelOk) return false;
  // The model runs at the ship's Froude number in fresh basin water. A method's model has one
  // length for the whole run, so a run raises it to the power 1.5 once.
  double lengthPow = 0.0;
  if (run && run->modelLength == modelLength) {
    lengthPow = run->modelLengthPow;
  } else {
    lengthPow = std::pow(modelLength, 1.5);
    if (run) run->modelLength = modelLength, run->modelLengthPow = lengthPow;
  }
  const double rnModel = lengthPow * fnLength * std::sqrt(GravityFt) / StdViscosityFresh;
  const double vModel = rnModel * StdViscosityFresh / modelLength;
  const double cfModel = run && settings.frictionLine == kFrictionITTC57
                             ? run->modelFriction.At(rnModel)
                             : CalcFrictionLine(rnModel, settings.frictionLine, modelLength, vModel, 0.0);
  const double kMultModel = CalcFormFactorKMultiplier(fnLength, settings.kMultEnabled);
  const double cvModel = (kMultiplier * kMultModel * (k1 - 1.0) + 1.0) * cfModel;
  crModel = crMultiplier * (ctModel - cvModel);
  if (crModel < 1e-6) {
    crModel = 1e-6;
    ctModel = cvModel + crModel;
  }
  return true;
}

}  // namespace

bool CalcResistancePrediction() {
  SetCalcLocation("Building Resistance prediction");
  Hooks().BusyPointer(true);
  const bool ok = RunGuarded([] {
    ModelSet& p = App().primary;
    if (p.ITTC78->HullFormFactor() <= 0.0) p.ITTC78->HullFormFactor(1.0);  // kept in the project
    switch (p.ITTC78->HullHydrodynamicType()) {
      case kHydroITTC78CT:
        return CalcDragPredictionCT(*p.WaterProperties, *p.Hull, *p.Appendage, *p.Environment, *p.ITTC78,
                                    *p.Resistance, *p.SpeedPerformance);
      case kHydroPlaning:
        return CalcDragPredictionPlaning(*p.WaterProperties, *p.Hull, *p.Appendage, *p.Environment, *p.ITTC78,
                                         *p.Resistance, *p.SpeedPerformance);
      default:
        AddCalcError("Hydrodynamic hull type is undefined");
        return false;
    }
  });
  Hooks().BusyPointer(false);
  return ok;
}

bool CalcDragPredictionCT(clsVXWaterProperties& water, clsVXHull& hull, clsVXAppendage& appendage,
                          clsVXEnvironment& environment, clsVXITTC78Expansion& ittc78,
                          clsVXResistance& resistance, clsVXSpeedPerformance& speedPerformance) {
  return RunGuarded([&] {
    return DragPredictionCT(water, hull, appendage, environment, ittc78, resistance, speedPerformance);
  });
}

bool CalcDragPredictionPlaning(clsVXWaterProperties& water, clsVXHull& hull, clsVXAppendage& appendage,
                               clsVXEnvironment& environment, clsVXITTC78Expansion& ittc78,
                               clsVXResistance& resistance, clsVXSpeedPerformance& speedPerformance) {
  return RunGuarded([&] {
    return DragPredictionPlaning(water, hull, appendage, environment, ittc78, resistance, speedPerformance);
  });
}

bool CalcModelCtCr(double& ctModel, double& crModel, int& speedCheck, double fnLength, clsVXHull& hull,
                   clsVXITTC78Expansion& ittc78, clsVXResistance& resistance, double crMultiplier,
                   double kMultiplier) {
  return RunGuarded([&] {
    return ModelCtCr(ctModel, crModel, speedCheck, fnLength, hull, resistance,
                     ReadModelSettings(ittc78, resistance), crMultiplier, kMultiplier, nullptr);
  });
}

// No published interference formula is part of the program: the two hulls of a catamaran
// count as two independent monohulls (factor and kCat 1).
bool CalcCatamaranInterference(double /*lwlBwlRatio*/, double /*sLwlRatio*/, double& factor, double& kCat) {
  factor = 1.0;
  kCat = 1.0;
  return true;
}

std::vector<int> ResistanceResultColumns() {
  static const char* const kNames[] = {
      "Speed",
      "CoefFroudeLength",
      "CoefFroudeVolume",
      "CoefReynoldsLength",
      "CoefDragBareHullFriction",
      "CoefDragBareHullViscous",
      "CoefDragBareHullResiduary",
      "CoefDragBareHullRoughness",
      "CoefDragBareHullCorrAllowance",
      "CoefDragBareHull",
      "CoefDragBareHullResiduaryTelfer",
      "CoefDragBareHullTelfer",
      "CoefDragBareHullWeightRatio",
      "DragBareHullResiduary",
      "DragBareHullIndividual",
      "DragBareHull",
      "DragAppendages",
      "DragWind",
      "DragSeas",
      "DragChannel",
      "DragMargin",
      "DragTotal",
      "PowerEffectiveBareHull",
      "PowerEffectiveTotal",
      "DragBareHullSpeedCheck",
  };
  // A planing run adds its running attitude and equilibrium.
  static const char* const kPlaningNames[] = {
      "CoefFroudeChineBeam",     "DynamicTrimDeg",
      "LengthWettedKeel",        "LengthWettedMean",
      "CoefPlaningLkeelLpRatio", "CoefPlaningLift",
      "EffectiveChineBeam",      "EffectiveAngleDeadriseDeg",
      "DragEquilibriumPlaning",  "CoefPlaningHumpSpeedMultiplier",
  };
  std::vector<int> columns;
  for (const char* name : kNames) columns.push_back(clsVXSpeedPerformance::ColumnIndex(name));
  const auto& ittc78 = App().primary.ITTC78;
  if (ittc78 && ittc78->HullHydrodynamicType() == kHydroPlaning)
    for (const char* name : kPlaningNames) columns.push_back(clsVXSpeedPerformance::ColumnIndex(name));
  return columns;
}

}  // namespace velmar
