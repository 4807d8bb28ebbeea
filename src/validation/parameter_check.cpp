// The parameter check frame: the rows of a method's ranges are compared with the vessel at
// the design speed, the statuses follow from the rows, and the rule letters then raise them
// and write the note. The ranges themselves are data (method_ranges.cpp).
#include "validation/parameter_check.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/constants.h"
#include "core/format.h"
#include "core/helpers.h"
#include "validation/method_ranges.h"
#include "propulsion/propeller.h"
#include "vessel/appendage.h"
#include "vessel/environment.h"
#include "resistance/hull_estimates.h"

namespace velmar {

using validation::DItem;
using validation::Lim;
using validation::Limit;
using validation::MethodRange;
using validation::Param;
using validation::RangeRow;
using validation::RowWhen;
using validation::Rule;

static_assert(validation::kLastCheckId == kCheckIdLast);

namespace {

// Two middle dots between the limits of a range.
constexpr const char* kRangeDots = "\u00B7\u00B7";

// Holtrop's lambda limit: LM = 0.08 k + (79 f - 18.6)^-0.0807.
constexpr double kLambdaExponent = -0.0807;

// What one check reads: the project's classes, the mode and the design row.
struct Ctx {
  const ModelSet& set;
  const clsVXHull& hull;
  bool resistance;
  int designRow;
  double speedMs;  // design speed, m/s

  double Froude(clsVXSpeedPerformance::Field f) const {
    return set.SpeedPerformance->Raw(designRow, FieldId(f));
  }
  double FN() const { return Froude(clsVXSpeedPerformance::Field::CoefFroudeLength); }
  // Chine beam at the centre of gravity in `unit`.
  double Bpx(int unit) const { return hull.CalcEffectiveChineBeam(hull.XGravityFwdTr(unit), unit); }
  double Depth() const { return set.Environment->ShallowWaterDepth(kM); }
  double AtAx() const { return hull.CoefAtAxRatio(); }
  double Cvol() const { return hull.CoefLwlVol(); }
};

double Ratio(double a, double b) { return b > 0.0 && a > 0.0 ? a / b : 0.0; }

// ---- Parameters -----------------------------------------------------------------------------

// A parameter: the two symbol sources its name is built from (a class field, a hull
// coefficient or a fixed text; the second, if any, after "/"), its default format, and its
// value.
struct ParamInfo {
  Param param;
  const char* first;
  const char* second;
  const char* format;
  double (*value)(const Ctx&);
};

using F = clsVXSpeedPerformance::Field;
using enum Param;

// clang-format off
constexpr ParamInfo kParams[] = {
    {None, "", nullptr, "0.00", [](const Ctx&) { return 0.0; }},
    {FN, "FN [design]", nullptr, "0.00", [](const Ctx& c) { return c.FN(); }},
    {FV, "FV [design]", nullptr, "0.00", [](const Ctx& c) { return c.Froude(F::CoefFroudeVolume); }},
    {FNB, "FNB [design]", nullptr, "0.00", [](const Ctx& c) { return c.Froude(F::CoefFroudeChineBeam); }},
    {FNLP, "FNLP [design]", nullptr, "0.00", [](const Ctx& c) { return c.Froude(F::CoefFroudeChineLength); }},
    {FNH, "FNH [design]", nullptr, "0.00", [](const Ctx& c) {
       const double h = c.Depth();
       return h > 0.0 ? c.speedMs / std::sqrt(GravitySI * h) : 0.0;
     }},
    {SPEED, "SPEED [des]", nullptr, "0.00",
     [](const Ctx& c) { return c.set.SpeedPerformance->Speed(c.designRow, kCurrent); }},
    {CVOL, "CoefLwlVol", nullptr, "0.00", [](const Ctx& c) { return c.Cvol(); }},
    {CP, "CoefPrismatic", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefPrismatic(); }},
    {CB, "CoefBlock", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefBlock(); }},
    {CX, "CoefAreaSectMax", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefAreaSectMax(); }},
    {CWP, "CoefWaterplane", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefWaterplane(); }},
    {CVP, "CoefVerticalPrismatic", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefVerticalPrismatic(); }},
    {CVOLp, "CoefLpVol", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefLpVol(); }},
    {VOLB, "CoefVolBwl", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefVolBwl(); }},
    {VOLBp, "CoefVolBpx", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefVolBpx(); }},
    {LPBPX, "CoefLpBpxRatio", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefLpBpxRatio(); }},
    {LWLBWL, "LengthWL", "BeamWLMax", "0.00", [](const Ctx& c) { return c.hull.CoefLwlBwlRatio(); }},
    {BWLT, "BeamWLMax", "DraftSubmergedMax", "0.00", [](const Ctx& c) { return c.hull.CoefBwlTvolRatio(); }},
    {BWLTasLWLBWL, "BeamWLMax", "DraftSubmergedMax", "0.00", [](const Ctx& c) { return c.hull.CoefLwlBwlRatio(); }},
    {XCBLWL, "XBuoyancyFwdTr", "LengthWL", "0.000", [](const Ctx& c) { return c.hull.CoefLCBLwlRatio(); }},
    {IE, "AngleHalfEntDeg", nullptr, "0.0", [](const Ctx& c) { return c.hull.AngleHalfEntDeg(); }},
    {ATRAX, "CoefAtAxRatio", nullptr, "0.00", [](const Ctx& c) { return c.AtAx(); }},
    {BTRBWL, "BeamWLAtTr", "BeamWLMax", "0.00", [](const Ctx& c) { return c.hull.CoefBtBxRatio(); }},
    {TTRT, "ImmersionDraftAtTr", "DraftSubmergedMax", "0.00", [](const Ctx& c) { return c.hull.CoefTtTvolRatio(); }},
    {ABTAX, "BulbAreaSect", "AreaSectMax", "0.00", [](const Ctx& c) { return c.hull.CoefAbulbAxRatio(); }},
    {CPCWP, "CoefPrismatic", "CoefWaterplane", "0.00",
     [](const Ctx& c) { return Ratio(c.hull.CoefPrismatic(), c.hull.CoefWaterplane()); }},
    {APVOL, "AreaProjPlaningBottom", "DisplacementVolume", "0.00", [](const Ctx& c) { return c.hull.CoefApVolRatio(); }},
    {XCGLP, "XGravityFwdTr", "LengthProjPlaningBottom", "0.00", [](const Ctx& c) { return c.hull.CoefLCGLpRatio(); }},
    {LPAP, "LengthProjPlaningBottom", "AreaProjPlaningBottom", "0.00", [](const Ctx& c) { return c.hull.CoefLpApRatio(); }},
    {XCGBPX, "XGravityFwdTr", "EffectiveChineBeam", "0.00", [](const Ctx& c) { return c.hull.CoefLCGBpRatio(); }},
    {Deadrise, "EffectiveAngleDeadrise", nullptr, "0.00",
     [](const Ctx& c) { return c.hull.CalcEffectiveAngleDeadriseDeg(c.hull.XGravityFwdTr(kFt), kFt); }},
    {Lambda, "CoefLambda", nullptr, "0.00", [](const Ctx& c) { return c.hull.CoefLambda(); }},
    {VOLBL2, "DisplacementVolume", "(BL^2)", "0.00", [](const Ctx& c) {
       const double len = c.hull.LengthWL(kM);
       return Ratio(c.hull.DisplacementVolume(kM), c.hull.BeamWLMax(kM) * len * len);
     }},
    {HSLWL, "SeasSignificantWaveHeight", "LengthWL", "0.00",
     [](const Ctx& c) { return Ratio(c.set.Environment->SeasSignificantWaveHeight(kM), c.hull.LengthWL(kM)); }},
    {HSBPX, "SeasSignificantWaveHeight", "EffectiveChineBeam", "0.00",
     [](const Ctx& c) { return Ratio(c.set.Environment->SeasSignificantWaveHeight(kM), c.Bpx(kM)); }},
    // The hydraulic radius: the channel section over the hull girth.
    {AXRH, "AreaSectMax", "RH", "0.00", [](const Ctx& c) {
       const clsVXEnvironment& e = *c.set.Environment;
       const double girth = e.ShallowWaterChannelHullGirth(kM);
       const double rh = girth > 0.0 ? e.CalcChannelAreaSect(kM2) / girth : 0.0;
       return rh != 0.0 ? c.hull.AreaSectMax(kM2) / rh : 0.0;
     }},
    {AXH, "AreaSectMax", "ShallowWaterDepth", "0.00",
     [](const Ctx& c) { return Ratio(c.hull.AreaSectMax(kM2), c.Depth() * c.Depth()); }},
    {HT, "ShallowWaterDepth", "DraftSubmergedMax", "0.00",
     [](const Ctx& c) { return Ratio(c.Depth(), c.hull.DraftSubmergedMax(kM)); }},
    {LWLH, "LengthWL", "ShallowWaterDepth", "0.00", [](const Ctx& c) { return Ratio(c.hull.LengthWL(kM), c.Depth()); }},
    {WaveAngle, "SeasWaveAngleOffBowDeg", nullptr, "0.0",
     [](const Ctx& c) { return c.set.Environment->SeasWaveAngleOffBowDeg(); }},
    {HSSqrtL, "SeasSignificantWaveHeight", "sqrt(LWL/100)", "0.00", [](const Ctx& c) {
       return Ratio(c.set.Environment->SeasSignificantWaveHeight(kM), std::sqrt(c.hull.LengthWL(kM) / 100.0));
     }},
};
// clang-format on
static_assert(std::size(kParams) == static_cast<size_t>(Param::Count));

constexpr bool ParamsInOrder() {
  for (size_t i = 0; i < std::size(kParams); ++i)
    if (static_cast<size_t>(kParams[i].param) != i) return false;
  return true;
}
static_assert(ParamsInOrder());

// The hull coefficients by name, for their symbols.
struct CoefName {
  const char* name;
  clsVXHull::Coef coef;
};
#define VX_COEF_NAME(N, ...) {#N, clsVXHull::Coef::N},
constexpr CoefName kCoefNames[] = {VX_HULL_COEFS(VX_COEF_NAME)};
#undef VX_COEF_NAME

// The symbol of a source: a hull coefficient, a hull or environment field, one of the
// hull's derived quantities, or the text itself.
std::string SymbolText(const Ctx& c, std::string_view source) {
  if (source == "DisplacementVolume") return c.hull.DisplacementVolumeSymbol();
  if (source == "EffectiveChineBeam") return c.hull.EffectiveChineBeamSymbol();
  if (source == "EffectiveAngleDeadrise") return c.hull.EffectiveAngleDeadriseSymbol();
  for (const CoefName& n : kCoefNames)
    if (source == n.name) return c.hull.CoefficientSymbol(n.coef);
  if (const int f = c.hull.FieldIndex(source); f >= 0) return c.hull.SymbolOf(f);
  if (const int f = c.set.Environment->FieldIndex(source); f >= 0) return c.set.Environment->SymbolOf(f);
  return std::string(source);
}

std::string ParamName(const Ctx& c, const ParamInfo& p) {
  std::string name = SymbolText(c, p.first);
  if (p.second) name += "/" + SymbolText(c, p.second);
  return name;
}

// ---- Computed limits ------------------------------------------------------------------------

double CriticalFroude(const Ctx& c) { return CalcCriticalFroudeNumber(c.hull); }

struct Npl {
  double fvn = 3.0, cvl = 4.5, cvh = 8.3;
};
Npl NplLimits(const Ctx& c) {
  const double cv = c.Cvol(), l = c.hull.CoefLwlBwlRatio();
  Npl n;
  if (cv > 0.0 && l > 0.0) {
    n.fvn = RoundToSigDigits(std::min(3.0, 0.714 * cv - 0.103 * l - 0.872), 3);
    n.cvl = RoundToSigDigits(std::max(4.5, 0.7657 * l + 1.4324), 3);
    n.cvh = RoundToSigDigits(std::min(8.3, 0.1534 * l * l * l - 1.9906 * l * l + 8.732 * l - 5.9683), 3);
  }
  return n;
}

// Savitsky's beam Froude numbers: the range of the lift coefficient's data, moved up for a
// heavily loaded bottom (load coefficient c above 0.5).
std::pair<double, double> SavitskyLimits(const Ctx& c) {
  double lo = 0.6, hi = 13.0;
  const double bpx = c.Bpx(kFt);
  const double v = c.speedMs / 0.3048;
  if (bpx > 0.0 && v > 0.0) {
    const double load = 2.0 * GravityFt * c.hull.DisplacementVolume(kFt) / (v * v * bpx * bpx);
    if (load > 0.5) {
      const double s = std::sqrt(load / 0.5);
      hi = std::min(13.0, RoundToSigDigits(13.0 * s + 0.1, 3));
      lo = std::max(0.6, RoundToSigDigits(0.6 * s - 0.1, 3));
    }
  }
  return {lo, hi};
}

// Holtrop's upper lambda and Froude number. In resistance mode the Froude number is also
// held below the critical one and below the speed at which lambda reaches its limit.
double HoltropTransomFactor(const Ctx& c) { return 1.0 - 0.8 * c.AtAx(); }
double HoltropLambdaLimit(const Ctx& c) {
  const double f = std::max(0.25, c.FN());
  return 0.08 * HoltropTransomFactor(c) + std::pow(79.0 * f - 18.6, kLambdaExponent);
}
double HoltropFroudeLimit(const Ctx& c) {
  if (!c.resistance) return 0.8;
  double fnh = std::min(0.8, CriticalFroude(c));
  const double lambda = c.hull.CoefLambda();
  const double excess = lambda - 0.08 * HoltropTransomFactor(c);
  if (lambda > 0.0 && excess > 0.0)
    fnh = std::min(fnh, (std::pow(excess, 1.0 / kLambdaExponent) + 18.6) / 79.0);
  return fnh;
}

double LimitValue(const Ctx& c, const Limit& l) {
  switch (l.kind) {
    case Lim::Const:
      return l.v;
    case Lim::MinFNC:
      return c.resistance ? std::min(l.v, CriticalFroude(c)) : l.v;
    case Lim::TL:
      return c.AtAx() > 0.0 ? 0.01 : 0.0;
    case Lim::FVM: {
      const double cv = c.Cvol();
      return c.resistance && cv > 0.0 ? std::min(2.0, CriticalFroude(c) * std::sqrt(cv)) : 2.0;
    }
    case Lim::FVN:
      return NplLimits(c).fvn;
    case Lim::CVL:
      return NplLimits(c).cvl;
    case Lim::CVH:
      return NplLimits(c).cvh;
    case Lim::FBL:
      return SavitskyLimits(c).first;
    case Lim::FBH:
      return SavitskyLimits(c).second;
    case Lim::LM:
      return HoltropLambdaLimit(c);
    case Lim::FNH:
      return HoltropFroudeLimit(c);
    case Lim::Knots:
      return c.set.Units->ConvertUnitSpeed(l.v, kCurrent, kKt);
  }
  return l.v;
}

// ---- Rules ----------------------------------------------------------------------------------

struct State {
  int speed = kCheckOK, param = kCheckOK, method = kCheckOK;
  std::string note;
  bool dFired = false;        // D found data missing: R, C3 and W stay silent
  bool transomFails = false;  // an A or I test of the method holds: D stays silent
};

// Rules on ParameterStatus apply while it is not Fail.
bool RaiseParam(State& s, int status, const char* note = nullptr) {
  if (s.param == kCheckFail) return false;
  s.param = std::max(s.param, status);
  if (note) s.note = note;
  return true;
}

// MethodStatus is what the last rule that fired wrote.
bool SetMethod(State& s, int status, const char* note = nullptr) {
  s.method = status;
  if (note) s.note = note;
  return true;
}

bool IsPlaningSet(const Ctx& c) { return c.hull.HullHydrodynamicDataSet() == 2; }
bool HasBulb(const Ctx& c) { return c.hull.BulbAreaSect(kM2) > 0.0; }

bool TransomTestHolds(const Ctx& c, const validation::RuleRef& r) {
  switch (r.rule) {
    case Rule::A:
      return c.AtAx() < r.arg;
    case Rule::ALe:
      return c.AtAx() <= r.arg;
    case Rule::I:
      return c.AtAx() < 0.3 || c.AtAx() > 0.7;
    default:
      return false;
  }
}

// Any of the listed items not positive; the transom items count only with an immersed transom.
bool DataMissing(const Ctx& c, unsigned items) {
  const clsVXHull& h = c.hull;
  const bool transom = c.AtAx() > 0.0;
  return ((items & validation::kDCX) && !(h.CoefAreaSectMax() > 0.0)) ||
         ((items & validation::kDIE) && !(h.AngleHalfEntDeg() > 0.0)) ||
         ((items & validation::kDCWP) && !(h.CoefWaterplane() > 0.0)) ||
         ((items & validation::kDTransomBTR) && transom && !(h.CoefBtBxRatio() > 0.0)) ||
         ((items & validation::kDTransomTTR) && transom && !(h.CoefTtTvolRatio() > 0.0)) ||
         ((items & validation::kDXCG) && !(h.XGravityFwdTr(kM) > 0.0)) ||
         ((items & validation::kDAP) && !(h.AreaProjPlaningBottom(kM2) > 0.0)) ||
         ((items & validation::kDLP) && !(h.LengthProjPlaningBottom(kM) > 0.0));
}

bool RuleD(const Ctx& c, State& s, unsigned items) {
  if (s.transomFails || !DataMissing(c, items)) return false;
  s.dFired = true;
  return SetMethod(s, kCheckMissing, "Warning: Required hull data is missing.");
}

// Holtrop's half entrance angle estimate, on a copy of the hull so that no word reaches the
// calculation error state; none when the hull lacks its inputs.
std::optional<double> HoltropEntranceEstimate(const clsVXHull& hull) {
  const auto copy = hull.CopyClass();
  copy->CoefLCBLwlRatio();
  copy->CoefLwlVol();
  copy->CoefWaterplane();
  copy->CoefLwlBwlRatio();
  copy->CoefPrismatic();
  if (copy->ErrorsFound()) return std::nullopt;
  double angle = 0.0;
  if (!CalcHoltropHalfEntranceAngle(angle, *copy) || !(angle > 0.0)) return std::nullopt;
  return angle;
}

bool RuleP(const Ctx& c, State& s) {
  if (c.resistance || c.set.Propulsion->PropulsorCalcType() != 3) return false;
  return SetMethod(s, kCheckFail, "Fail: Method is for propellers only.");
}

// Holtrop's own rules; step 1, the parameter status from the rows, is the frame's.
void RuleHoltrop(const Ctx& c, State& s, bool fullEvaluation) {
  if (!fullEvaluation) {
    s.param = kCheckOK;
    return;
  }
  if (!c.resistance) {
    RuleP(c, s);
    return;
  }
  const double fn = c.FN(), atAx = c.AtAx();
  if (s.param != kCheckFail) {
    if ((atAx > 0.8 && fn > 0.25 && c.Cvol() < 4.4) || 1.2 * HoltropLambdaLimit(c) < c.hull.CoefLambda()) {
      s.param = kCheckFail;
      s.note = "Fail: Unreliable for these parameters.";
    } else if (atAx > 0.35) {
      s.note = "Note: May underpredict for hulls with significant immersed transom area.";
    }
  }
  if (RuleD(c, s, validation::kDCX | validation::kDCWP | validation::kDIE)) return;
  if (fn > 0.35 && fn < 0.55) {
    const std::optional<double> estimate = HoltropEntranceEstimate(c.hull);
    if (estimate && c.hull.AngleHalfEntDeg() > *estimate + 5.0)
      SetMethod(s, kCheckUncertain,
                "Warning: May overpredict at FN 0.35-0.55 if IE greatly exceeds Holtrop estimate.");
  }
}

// ParameterStatus of an appendage method from the definition of the appendages, by the kind
// of method: Percentage, Simple, Component.
void SetParamByDefinition(const Ctx& c, State& s, const int (&byDefinition)[3]) {
  const int d = c.set.Appendage->AppendageDefinition();
  s.param = d >= 0 && d <= 2 ? byDefinition[d] : kCheckOK;
}

// Applies one rule; true when it fired (for the chains, where the first that fires ends).
bool ApplyRule(const Ctx& c, State& s, const validation::RuleRef& r, bool fullEvaluation) {
  const clsVXHull& h = c.hull;
  const clsVXAppendage& a = *c.set.Appendage;
  const int chine = h.ChineType();
  const int propulsors = h.PropulsorCountPerHull();
  const bool propulsion = !c.resistance;
  switch (r.rule) {
    case Rule::None:
      return false;
    case Rule::b:
      return HasBulb(c) && RaiseParam(s, kCheckUncertain, "Warning: Cannot evaluate bulbs.");
    case Rule::b0:
      return c.resistance && HasBulb(c) && RaiseParam(s, kCheckUncertain, "Warning: Cannot evaluate bulbs.");
    case Rule::B:
      return HasBulb(c) && RaiseParam(s, kCheckFail, "Fail: Cannot evaluate bulbs.");
    case Rule::V:
      return c.Cvol() < 0.95 * 4.73 &&
             RaiseParam(s, kCheckUncertain, "Warning: Considered unreliable for very low CVOL.");
    case Rule::K: {
      const double r2 = Ratio(h.CoefPrismatic(), h.CoefWaterplane());
      return (r2 < 0.798 || r2 > 0.842) &&
             RaiseParam(s, kCheckFail, "Fail: Outside of critical CP/CWP valid range.");
    }
    case Rule::X:
      return h.CoefAreaSectMax() < 0.9 &&
             RaiseParam(s, kCheckFail, "Fail: Max section area is too low for the method.");
    case Rule::O: {
      // Two tests: the transom in resistance mode, and apart from it the entrance angle,
      // whose failure stands even over a failed parameter status.
      bool fired = false;
      if (c.resistance && c.AtAx() > 0.5)
        fired = SetMethod(s, kCheckUncertain, "Warning: Immersed transom area exceeds range of data set.");
      if (h.AngleHalfEntDeg() > 40.0) {
        s.param = kCheckFail;
        s.note = "Fail: Prediction is unreliable at very high half entrance angles.";
        fired = true;
      }
      return fired;
    }
    case Rule::G:
      return c.resistance && h.CoefBwlTvolRatio() > 4.0 &&
             RaiseParam(s, kCheckUncertain, "Warning: Inconsistent at light drafts.");
    case Rule::E:
      return chine == 1 && RaiseParam(s, kCheckUncertain, "Warning: Known errors with hard chine hulls.");
    case Rule::N:
    case Rule::N1:
      return RaiseParam(s, kCheckUncertain);
    case Rule::S:
      return propulsors > 1 && RaiseParam(s, kCheckUncertain, "Note: Based on single-screw hulls.");
    case Rule::R:
      return !s.dFired && chine == 1 &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed from round bilge hulls.");
    case Rule::R2:
      return chine == 1 &&
             RaiseParam(s, kCheckUncertain, "Warning: Method developed from round bilge hulls.");
    case Rule::C2:
      return chine == 0 && RaiseParam(s, kCheckUncertain, "Warning: Method developed from hard chine hulls.");
    case Rule::C3:
      return !s.dFired && chine == 0 &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed from hard chine hulls.");
    case Rule::W:
      return !s.dFired && chine == 0 &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed for prismatic hard chine hulls.");
    case Rule::D:
      return RuleD(c, s, r.items);
    case Rule::T: {
      const double atAx = c.AtAx();
      if (!(atAx > 0.0)) {
        s.method = kCheckOK;
        return false;
      }
      const bool fail = atAx > 0.2;
      return SetMethod(
          s, fail ? kCheckFail : kCheckUncertain,
          fail ? "Fail: Cannot evaluate transom sterns." : "Warning: Cannot evaluate transom sterns.");
    }
    case Rule::A:
    case Rule::ALe:
      return TransomTestHolds(c, r) &&
             SetMethod(s, kCheckFail, "Fail: Method data set has significant immersed transom area.");
    case Rule::I:
      return TransomTestHolds(c, r) &&
             SetMethod(s, kCheckFail, "Fail: Method data set has incompatible immersed transom area.");
    case Rule::L:
      return SetMethod(s, kCheckUncertain, "Warning: Method is typically less reliable than other methods.");
    case Rule::Y:
      return SetMethod(s, kCheckUncertain, s.note.empty() ? "Warning: Method is very simplistic." : nullptr);
    case Rule::J:
      if (s.note.empty()) s.note = "Note: For merchant cargo vessels.";
      return true;
    case Rule::P:
      return RuleP(c, s);
    case Rule::Q:
      return propulsion && propulsors > 1 &&
             SetMethod(s, kCheckUncertain, "Warning: Method is for single-screw propellers.");
    case Rule::U:
      return propulsion && propulsors < 2 &&
             SetMethod(s, kCheckUncertain, "Warning: Method is for multi-screw propellers.");
    case Rule::Holtrop:
      RuleHoltrop(c, s, fullEvaluation);
      return false;
    case Rule::Pd:
      return !(h.PropellerDiameterMax(kCurrent) > 0.0) &&
             SetMethod(s, kCheckFail, "Error: Propeller diameter required.");
    case Rule::Sh:
      return h.HullPropulsorType() != 0 &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed conventional shaft-driven propellers.");
    case Rule::Pl:
      return h.HullHydrodynamicDataSet() == 1 &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed for planing craft.");
    case Rule::Tw:
      return propulsors < 2 && SetMethod(s, kCheckUncertain, "Note: Based on twin-screw hulls.");
    case Rule::Np:
      return IsPlaningSet(c) &&
             SetMethod(s, kCheckUncertain, "Warning: Method not suitable for planing craft.");
    case Rule::Nq:
      return IsPlaningSet(c) &&
             RaiseParam(s, kCheckUncertain, "Warning: Method is not suitable for planing craft.");
    case Rule::Up:
      return IsPlaningSet(c) &&
             SetMethod(s, kCheckUncertain, "Warning: Method has been shown to underpredict at high speeds.");
    case Rule::Tr:
      return h.AreaSectAtTr(kM2) > 0.0 &&
             SetMethod(s, kCheckUncertain, "Warning: Method based on transom stern vessels.");
    case Rule::Kb:
      return (a.KeelBulbDiameter(kM) > 0.0 || a.KeelBulbLength(kM) > 0.0) &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed without keel bulb.");
    case Rule::Sp:
      return (a.StrutPalmDepth(kM) > 0.0 || a.StrutPalmWidth(kM) > 0.0) &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed without strut plam.");
    case Rule::Sd:
      return a.SonarDomeCount() > 0 &&
             SetMethod(s, kCheckUncertain, "Warning: Method developed without sonar dome.");
    case Rule::Hs:
      return !(c.set.Environment->SeasSignificantWaveHeight(kM) > 0.0) &&
             SetMethod(s, kCheckFail, "Fail: Significant wave height required.");
    case Rule::Hd:
      return !(c.Depth() > 0.0) && SetMethod(s, kCheckMissing, "Missing: Channel depth required.");
    case Rule::DSimpleDefinition:
      return a.AppendageDefinition() == 1 && RuleD(c, s, r.items);
    case Rule::NoTransomArea:
      return !(c.AtAx() > 0.0) &&
             SetMethod(s, kCheckUncertain, "Warning: Method data set has immersed transom area.");
    case Rule::NoTransomStern:
      return !(h.AreaSectAtTr(kM2) > 0.0) &&
             SetMethod(s, kCheckUncertain, "Warning: Method based on transom stern vessels.");
    case Rule::WaterjetOnly:
      return c.set.Propulsion->PropulsorCalcType() != 3 &&
             SetMethod(s, kCheckFail, "Fail: For waterjets only.");
    case Rule::Note:
      s.note = r.text;
      return true;
    case Rule::DefinitionPercentage:
      SetParamByDefinition(c, s, {kCheckOK, kCheckFail, kCheckUncertain});
      return false;
    case Rule::DefinitionSimple:
      SetParamByDefinition(c, s, {kCheckFail, kCheckOK, kCheckUncertain});
      return false;
    case Rule::DefinitionComponent:
      SetParamByDefinition(c, s, {kCheckFail, kCheckUncertain, kCheckOK});
      return false;
    case Rule::ParameterUncertain:
      s.param = kCheckUncertain;
      return false;
    case Rule::MethodUncertain:
      s.method = kCheckUncertain;
      return false;
    case Rule::Wa: {
      const clsVXEnvironment& e = *c.set.Environment;
      const double front = e.WindHullTransverseArea(kM2) + e.WindSuperstructureTransverseArea(kM2);
      const double profile = e.WindHullProfileArea(kM2) + e.WindSuperstructureProfileArea(kM2);
      return !(front > 0.0 && profile > 0.0) &&
             SetMethod(s, kCheckMissing, "Missing: Windage areas required.");
    }
    case Rule::Wl:
      return !(c.set.Environment->WindLengthOverall(kM) > 0.0) &&
             SetMethod(s, kCheckMissing, "Missing: Length overall required.");
    case Rule::Bn:
      return !(c.set.Environment->SeasBeaufortNumber() > 0.0) &&
             SetMethod(s, kCheckMissing, "Missing: Beaufort number required.");
  }
  return false;
}

// ---- The frame ------------------------------------------------------------------------------

bool RowStands(const Ctx& c, RowWhen when) {
  switch (when) {
    case RowWhen::Always:
      return true;
    case RowWhen::ResistanceMode:
      return c.resistance;
    case RowWhen::PlaningSet:
      return IsPlaningSet(c);
    case RowWhen::NotPlaningSet:
      return !IsPlaningSet(c);
  }
  return true;
}

// Half of n rounded to a whole number, ties to even.
int HalfRoundedToEven(int n) {
  const int half = n / 2;
  return n % 2 != 0 && half % 2 != 0 ? half + 1 : half;
}

bool HasRule(const MethodRange& m, Rule rule) {
  return std::any_of(m.rules.begin(), m.rules.end(),
                     [rule](const validation::RuleRef& r) { return r.rule == rule; });
}

void AddFixedRow(std::vector<ParameterCheckRow>& rows, const char* name, int status) {
  rows.push_back({name, "", "", status});
}

State RunMethod(const Ctx& c, const MethodRange& m, std::vector<ParameterCheckRow>& rows,
                bool leaveOutSpeedRow, bool fullEvaluation) {
  State s;
  int rowCount = 0, inRange = 0, parameterRows = 0;
  const bool speedTable = IsSpeedParam(m.rows[0].param);
  bool speedRow = false;
  for (size_t i = 0; i < m.rows.size() && m.rows[i].param != Param::None; ++i) {
    const RangeRow& r = m.rows[i];
    if (!RowStands(c, r.when)) continue;
    const ParamInfo& p = kParams[static_cast<size_t>(r.param)];
    const bool isSpeed = i == 0 && speedTable;
    if (isSpeed && leaveOutSpeedRow) continue;
    const double value = p.value(c);
    const double lo = LimitValue(c, r.lower), hi = LimitValue(c, r.upper);
    const std::string name = ParamName(c, p);
    const char* format = r.format ? r.format : p.format;
    if (isSpeed) {
      int speedInRange = 0;
      s.speed = AddParameterCheckRow(name, value, format, lo, hi, r.lowerTolerance, r.upperTolerance, rows,
                                     rowCount, speedInRange, r.zeroIsValue);
      speedRow = true;
    } else {
      AddParameterCheckRow(name, value, format, lo, hi, r.lowerTolerance, r.upperTolerance, rows, rowCount,
                           inRange, r.zeroIsValue);
      ++parameterRows;
    }
  }
  if (!speedRow && parameterRows == 0) AddFixedRow(rows, "None given", kCheckOK);
  // All parameter rows in range: OK; at least half of all rows (the speed row counted): Uncertain.
  if (inRange == parameterRows)
    s.param = kCheckOK;
  else
    s.param = inRange >= HalfRoundedToEven(rowCount) ? kCheckUncertain : kCheckFail;

  s.transomFails = std::any_of(m.rules.begin(), m.rules.end(),
                               [&c](const validation::RuleRef& r) { return TransomTestHolds(c, r); });
  for (const validation::RuleRef& r : m.rules) {
    if (r.rule == Rule::None) break;
    if (ApplyRule(c, s, r, fullEvaluation) && m.chain) break;
  }
  return s;
}

}  // namespace

std::string ParameterCheckLabel(int status) {
  switch (status) {
    case kCheckOK:
      return "OK";
    case kCheckUncertain:
      return "Uncertain";
    case kCheckFail:
      return "Fail";
    case kCheckMissing:
      return "Missing";
    default:
      return "";
  }
}

int AddParameterCheckRow(std::string_view name, double value, std::string_view format, double lowerLimit,
                         double upperLimit, double lowerTolerance, double upperTolerance,
                         std::vector<ParameterCheckRow>& rows, int& rowCount, int& inRangeCount,
                         bool zeroIsValue) {
  int status;
  if (value >= lowerLimit * lowerTolerance && value <= upperLimit * upperTolerance) {
    status = kCheckOK;
    ++inRangeCount;
  } else {
    status = value == 0.0 && !zeroIsValue ? kCheckMissing : kCheckFail;
  }
  ++rowCount;
  rows.push_back({std::string(name),
                  FormatNumber(lowerLimit, format) + kRangeDots + FormatNumber(upperLimit, format),
                  FormatNumber(value, format), status});
  return status;
}

int RateCheckStatuses(int speedStatus, int parameterStatus, int methodStatus) {
  // Points by status: OK, Uncertain, Fail, Missing. A missing value costs less as a
  // parameter status than as a speed or method status.
  static constexpr int kSpeedOrMethod[] = {2, 1, 0, 1};
  static constexpr int kParameter[] = {2, 1, 0, 2};
  auto points = [](const int(&table)[4], int status) {
    return status >= 0 && status <= 3 ? table[status] : 0;
  };
  return points(kSpeedOrMethod, speedStatus) + points(kParameter, parameterStatus) +
         points(kSpeedOrMethod, methodStatus);
}

double CalcCriticalFroudeNumber(const clsVXHull& hull) {
  const double cwp = std::clamp(hull.CoefWaterplane(), 0.69, 0.73);
  const double cp = std::clamp(hull.CoefPrismatic(), 0.527, 0.608);
  const double a = std::clamp(hull.CoefAtAxRatio(), 0.0, 0.294);
  const double byWaterplane = 0.02346 / (0.7481 - cwp);
  const double byPrismatic = 1.0 / (40.0 - 114.1 * cp + 81.52 * cp * cp);
  const double byTransom = (16.22 * a + 0.401) / (13.31 * a + 1.0 - 10.85 * a * a);
  return std::min({byWaterplane, byPrismatic, byTransom});
}

double CalcCriticalFroudeNumber() { return CalcCriticalFroudeNumber(*App().primary.Hull); }

bool DesignSpeed(const clsVXSpeedPerformance& sp, int unit, double& speed) {
  speed = 0.0;
  try {
    const int row = sp.DesignSpeedIndex();
    if (row < 0 || row >= sp.count()) return false;
    if (!(sp.Raw(row, FieldId(clsVXSpeedPerformance::Field::Speed)) > 0.0)) return false;
    speed = sp.Speed(row, unit);
    return true;
  } catch (...) {
    return false;  // no unit table: no speed to check at
  }
}

int CheckMethodParameters(const ModelSet& set, Mode mode, int checkId, std::vector<ParameterCheckRow>& rows,
                          int& speedStatus, int& parameterStatus, int& methodStatus, std::string& note,
                          bool fullEvaluation) {
  try {
    double speedMs = 0.0;
    const bool linked =
        set.SpeedPerformance && set.Hull && set.Appendage && set.Environment && set.Propulsion && set.Units;
    if (!linked || !DesignSpeed(*set.SpeedPerformance, kMPerSec, speedMs)) return 0;
    clsVXSpeedPerformance& sp = *set.SpeedPerformance;
    const clsVXHull& hull = *set.Hull;
    const int row = sp.DesignSpeedIndex();
    const bool leaveOutSpeedRow = speedStatus == -1;

    // The design row's Froude numbers, each on a length in metres that is there.
    auto store = [&](F column, double length) {
      if (length > 0.0) sp.Write(row, FieldId(column), kCurrent, speedMs / std::sqrt(GravitySI * length));
    };
    store(F::CoefFroudeLength, hull.LengthWL(kM));
    store(F::CoefFroudeVolume, std::cbrt(hull.DisplacementVolume(kM)));
    store(F::CoefFroudeChineBeam, hull.CalcEffectiveChineBeam(hull.XGravityFwdTr(kM), kM));
    store(F::CoefFroudeChineLength, hull.LengthProjPlaningBottom(kM));

    note.clear();
    rows.clear();
    const MethodRange* m = validation::FindMethodRange(checkId);
    if (checkId == kCheckIdNone || !m) {
      const int status = checkId == kCheckIdNone ? kCheckUncertain : kCheckFail;
      AddFixedRow(rows, checkId == kCheckIdNone ? "None given" : "Not coded", status);
      speedStatus = parameterStatus = methodStatus = status;
      return RateCheckStatuses(status, status, status);
    }
    const Ctx c{set, hull, mode == Mode::Resistance, row, speedMs};
    const State s = RunMethod(c, *m, rows, leaveOutSpeedRow && HasRule(*m, Rule::Holtrop), fullEvaluation);
    speedStatus = s.speed;
    parameterStatus = s.param;
    methodStatus = s.method;
    note = s.note;
    return RateCheckStatuses(s.speed, s.param, s.method);
  } catch (...) {
    // A missing link or unit table: the check cannot be made, which is no error of the vessel.
    speedStatus = parameterStatus = methodStatus = kCheckFail;
    return 0;
  }
}

int CheckMethodParameters(int checkId, std::vector<ParameterCheckRow>& rows, int& speedStatus,
                          int& parameterStatus, int& methodStatus, std::string& note, bool fullEvaluation) {
  return CheckMethodParameters(App().primary, App().CurrentMode, checkId, rows, speedStatus, parameterStatus,
                               methodStatus, note, fullEvaluation);
}

void ClearCheckErrorStacks(const ModelSet& set) {
  if (set.Hull) set.Hull->ClearErrorStack();
  if (set.Appendage) set.Appendage->ClearErrorStack();
  if (set.Environment) set.Environment->ClearErrorStack();
  if (set.Propulsion) set.Propulsion->ClearErrorStack();
  if (set.SpeedPerformance) set.SpeedPerformance->ClearErrorStack();
}

MethodCheck CheckMethod(const ModelSet& set, Mode mode, int checkId, bool fullEvaluation) {
  MethodCheck r;
  r.checkId = checkId;
  double speed = 0.0;
  if (!set.SpeedPerformance || !DesignSpeed(*set.SpeedPerformance, kCurrent, speed)) return r;
  int speedStatus = kCheckOK, parameterStatus = kCheckOK, methodStatus = kCheckOK;
  r.rating = CheckMethodParameters(set, mode, checkId, r.rows, speedStatus, parameterStatus, methodStatus,
                                   r.note, fullEvaluation);
  r.speedStatus = speedStatus;
  r.parameterStatus = parameterStatus;
  r.methodStatus = methodStatus;
  ClearCheckErrorStacks(set);
  return r;
}

void ShowCheckRows(const std::vector<ParameterCheckRow>& rows,
                   std::vector<std::array<std::string, 4>>& table) {
  table.clear();
  for (const ParameterCheckRow& r : rows)
    table.push_back({r.name, r.range, r.value,
                     r.status == kCheckFail      ? "Range"
                     : r.status == kCheckMissing ? "Missing"
                                                 : ""});
}

// The list at the project's design Froude number on LWL (0 without a design speed or a length),
// each proposal from a data set with the rows and the note of that data set's check.
std::vector<EstimateRow> EstimateList(EstimateItem item, const ModelSet& set, Mode mode) {
  try {
    double designFn = 0.0, speed = 0.0;
    if (DesignSpeed(*set.SpeedPerformance, kFtPerSec, speed)) {
      const double len = set.Hull->Raw(set.Hull->FieldIndex("LengthWL"));
      if (len > 0.0)
        designFn = speed / std::sqrt(GravityFt * set.Units->ConvertUnitLength(len, kFt, kCurrent));
    }
    std::vector<EstimateRow> rows = EstimateList(item, *set.Hull, *set.ITTC78, designFn);
    for (EstimateRow& row : rows) {
      if (!row.checkId) continue;
      MethodCheck check = CheckMethod(set, mode, *row.checkId, true);
      row.checkRows = std::move(check.rows);
      row.checkNote = std::move(check.note);
    }
    return rows;
  } catch (...) {
    return {};  // a set without its members: no proposals
  }
}

}  // namespace velmar
