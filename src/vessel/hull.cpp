// Hull data and its form coefficients. The coefficients and the inverse functions are rows
// of two tables: the inputs that must be positive, the formula, the range test and the word.
#include "vessel/hull.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <span>

#include "core/constants.h"
#include "core/format.h"
#include "core/helpers.h"

namespace velmar {

const LabelList kHullConfigTypeLabels = {{"Monohull", "Catamaran"}, {"Monohull", "Catamaran"}};
const LabelList kHullHydrodynamicDataSetLabels = {{"Undefined", "ITTC-78 (CT)", "Planing"},
                                                  {"Undefined", "ITTC78CT", "Planing"}};
const LabelList kChineTypeLabels = {{"Round/multiple", "Single/hard"}, {"RoundMultiple", "SingleHard"}};
const LabelList kHullPropulsorTypeLabels = {{"Propeller", "SPP", "Waterjet", "Horizontal tow"},
                                            {"Propeller", "SPP", "Waterjet", "HorizontalTow"}};
const LabelList kTransomLiftDeviceTypeLabels = {{"Flap", "Wedge", "Interceptor"},
                                                {"Flap", "Wedge", "Interceptor"}};

namespace {

const FieldDesc kHullFields[] = {
#include "core/fields_table.h"
#include "vessel/hull_fields.def"
};

using H = clsVXHull;
using F = clsVXHull::Field;
using C = clsVXHull::Coef;
using I = clsVXHull::Inverse;

// ---- Inputs -------------------------------------------------------------------------------

// Quantities a guard tests besides the stored fields.
enum class D { Vol = -2, Bpx = -3, Cp = -4, LB = -5 };
constexpr int kNoInput = -1;

// One input of a guard: a stored field or a derived quantity; default: no input.
struct In {
  int id = kNoInput;
  constexpr In() = default;
  constexpr In(F f) : id(static_cast<int>(f)) {}
  constexpr In(D d) : id(static_cast<int>(d)) {}
};

// Chine beam at the centre of gravity.
double Bpx(const H& h, int unit) { return h.CalcEffectiveChineBeam(h.XGravityFwdTr(unit), unit); }

// Density of the linked water in kg/m3; 0 without water.
double DensityKg(const H& h) { return h.WaterProperties() ? h.WaterProperties()->Density(kKgPerM3) : 0.0; }

// An input as stored; each read pushes the word of its own check.
double ReadInput(const H& h, In in) {
  switch (static_cast<D>(in.id)) {
    case D::Vol:
      return h.DisplacementVolume(kCurrent);
    case D::Bpx:
      return Bpx(h, kCurrent);
    case D::Cp:
      return h.CoefPrismatic();
    case D::LB:
      return h.CoefLwlBwlRatio();
  }
  return h.Read(in.id, kCurrent);
}

// Every input is read, so that each reports, and all of them must be positive.
bool InputsPositive(const H& h, std::span<const In> inputs) {
  bool ok = true;
  for (const In in : inputs) {
    if (in.id != kNoInput && !(ReadInput(h, in) > 0.0)) ok = false;
  }
  return ok;
}

// Range tests of the results; a result that fails pushes the row's word.
enum class Test : unsigned char {
  Never,
  NotPos,           // <= 0
  NotPosOrAbove,    // <= 0 or > limit
  NegOrAbove,       // < 0 or > limit
  NotPosOrAtLeast,  // <= 0 or >= limit
};
using enum Test;

bool Fails(Test t, double limit, double v) {
  switch (t) {
    case Never:
      return false;
    case NotPos:
      return v <= 0.0;
    case NotPosOrAbove:
      return v <= 0.0 || v > limit;
    case NegOrAbove:
      return v < 0.0 || v > limit;
    case NotPosOrAtLeast:
      return v <= 0.0 || v >= limit;
  }
  return false;
}

template <class Row, size_t N>
constexpr bool InEnumOrder(const Row (&table)[N]) {
  for (size_t i = 0; i < N; ++i) {
    if (static_cast<size_t>(table[i].id) != i) return false;
  }
  return true;
}

// ---- Form coefficients --------------------------------------------------------------------

// The formulas read their inputs in feet, square feet and cubic feet, so that every
// coefficient is formed in one coherent system whatever the display units.
double Vol(const H& h) { return h.DisplacementVolume(kFt); }
double L(const H& h) { return h.LengthWL(kFt); }
double B(const H& h) { return h.BeamWLMax(kFt); }
double T(const H& h) { return h.DraftSubmergedMax(kFt); }
double AX(const H& h) { return h.AreaSectMax(kFt2); }
double LP(const H& h) { return h.LengthProjPlaningBottom(kFt); }

struct CoefRow {
  C id;
  Test test;
  double limit;
  const char* word;  // empty: the symbol
  const char* symbol;
  std::array<In, 4> inputs;  // must all be positive, else the result is 0
  double (*formula)(const H&);
  C tested = C::Count;  // the coefficient whose value is tested, if not this one
};

// clang-format off
constexpr CoefRow kCoefs[] = {
    {C::CoefBlock, NotPosOrAbove, 1.1, "CB coefficient", "CB",
     {F::Displacement, F::LengthWL, F::DraftSubmergedMax, F::BeamWLMax},
     [](const H& h) { return Vol(h) / (L(h) * B(h) * T(h)); }},
    {C::CoefPrismatic, NotPosOrAbove, 1.1, "CP coefficient", "CP",
     {F::Displacement, F::LengthWL, F::AreaSectMax},
     [](const H& h) { return Vol(h) / (L(h) * AX(h)); }},
    {C::CoefVerticalPrismatic, NotPosOrAbove, 1.1, "CVP coefficient", "CVP",
     {F::Displacement, F::DraftSubmergedMax, F::AreaWaterplane},
     [](const H& h) { return Vol(h) / (T(h) * h.AreaWaterplane(kFt2)); }},
    {C::CoefAreaSectMax, NotPosOrAbove, 1.1, "", "CX", {F::AreaSectMax, F::DraftSubmergedMax, F::BeamWLMax},
     [](const H& h) { return AX(h) / (T(h) * B(h)); }},
    {C::CoefWaterplane, NotPosOrAbove, 1.1, "", "CWP", {F::AreaWaterplane, F::LengthWL, F::BeamWLMax},
     [](const H& h) { return h.AreaWaterplane(kFt2) / (L(h) * B(h)); }},
    {C::CoefLwlBwlRatio, NotPos, 0.0, "", "LWL/BWL", {F::LengthWL, F::BeamWLMax},
     [](const H& h) { return L(h) / B(h); }},
    {C::CoefBwlTvolRatio, NotPos, 0.0, "", "BWL/T", {F::BeamWLMax, F::DraftSubmergedMax},
     [](const H& h) { return B(h) / T(h); }},
    {C::CoefLwlTvolRatio, NotPos, 0.0, "LWL/T ratio", "", {F::LengthWL, F::DraftSubmergedMax},
     [](const H& h) { return L(h) / T(h); }},
    {C::CoefSLwlRatio, NotPos, 0.0, "S/LWL ratio", "", {F::DemihullSpacing, F::LengthWL},
     [](const H& h) { return h.DemihullSpacing(kFt) / L(h); }},
    // Holtrop & Mennen (1982): lambda = 1.446 CP - 0.03 LWL/BWL.
    {C::CoefLambda, NotPos, 0.0, "Lambda coefficient", "Lambda", {D::Cp, D::LB},
     [](const H& h) { return 1.446 * h.CoefPrismatic() - 0.03 * h.CoefLwlBwlRatio(); }},
    {C::CoefWettedSurfaceFroudeCWS, NotPos, 0.0, "", "CWS", {F::Displacement, F::WettedSurface},
     [](const H& h) { return h.WettedSurface(kFt2) / std::pow(Vol(h), 2.0 / 3.0); }},
    {C::CoefWettedSurfaceCS, NotPos, 0.0, "", "CS", {F::LengthWL, F::Displacement, F::WettedSurface},
     [](const H& h) { return h.WettedSurface(kFt2) / std::sqrt(Vol(h) * L(h)); }},
    {C::CoefAtAxRatio, NegOrAbove, 1.1, "", "ATR/AX", {F::AreaSectAtTr, F::AreaSectMax},
     [](const H& h) { return h.AreaSectAtTr(kFt2) / AX(h); }},
    // Two bulb ratios: the silent one is shown to the user, the other reports a bad ratio.
    {C::CoefAbtAxRatio, Never, 0.0, "", "ABT/AX", {F::BulbAreaSect, F::AreaSectMax},
     [](const H& h) { return h.BulbAreaSect(kFt2) / AX(h); }},
    {C::CoefAbulbAxRatio, NegOrAbove, 1.1, "ABT/AX ratio", "", {F::BulbAreaSect, F::AreaSectMax},
     [](const H& h) { return h.BulbAreaSect(kFt2) / AX(h); }},
    {C::CoefBtBxRatio, NegOrAbove, 1.1, "BT/BWL ratio", "", {F::BeamWLAtTr, F::BeamWLMax},
     [](const H& h) { return h.BeamWLAtTr(kFt) / B(h); }},
    {C::CoefTtTvolRatio, NegOrAbove, 1.1, "TTR/T ratio", "", {F::ImmersionDraftAtTr, F::DraftSubmergedMax},
     [](const H& h) { return h.ImmersionDraftAtTr(kFt) / T(h); }},
    {C::CoefLwlVol, NotPos, 0.0, "CVOL coefficient", "CVOL", {F::LengthWL, D::Vol},
     [](const H& h) { return L(h) / std::cbrt(Vol(h)); }},
    {C::CoefVolBwl, NotPos, 0.0, "VOLB coefficient", "VOLB", {F::BeamWLMax, D::Vol},
     [](const H& h) { return Vol(h) / std::pow(B(h), 3); }},
    {C::CoefVolBpx, NotPos, 0.0, "VOLBp coefficient", "VOLBp", {D::Bpx, D::Vol},
     [](const H& h) { return Vol(h) / std::pow(Bpx(h, kFt), 3); }},
    // Tests CVOL, not its own value.
    {C::CoefLpVol, NotPos, 0.0, "CVOLp coefficient", "CVOLp", {F::LengthProjPlaningBottom, D::Vol},
     [](const H& h) { return LP(h) / std::cbrt(Vol(h)); }, C::CoefLwlVol},
    {C::CoefLCBLwlRatio, NotPosOrAbove, 1.0, "XCB/LWL ratio", "", {F::XBuoyancyFwdTr, F::LengthWL},
     [](const H& h) { return h.XBuoyancyFwdTr(kFt) / L(h); }},
    {C::CoefLCFLwlRatio, NotPosOrAbove, 1.0, "XCF/LWL ratio", "", {F::XAreaWaterplaneFwdTr, F::LengthWL},
     [](const H& h) { return h.XAreaWaterplaneFwdTr(kFt) / L(h); }},
    {C::CoefLCGBpRatio, NotPos, 0.0, "XCG/BPX ratio", "", {F::XGravityFwdTr, D::Bpx},
     [](const H& h) { return h.XGravityFwdTr(kFt) / Bpx(h, kFt); }},
    {C::CoefLCGLpRatio, NotPos, 0.0, "XCG/Lp ratio", "", {F::XGravityFwdTr, F::LengthProjPlaningBottom},
     [](const H& h) { return h.XGravityFwdTr(kFt) / LP(h); }},
    {C::CoefApVolRatio, NotPos, 0.0, "Ap:Vol ratio", "", {F::AreaProjPlaningBottom, F::Displacement},
     [](const H& h) { return h.AreaProjPlaningBottom(kFt2) / std::pow(Vol(h), 2.0 / 3.0); }},
    {C::CoefLpApRatio, NotPos, 0.0, "Lp:Ap ratio", "", {F::LengthProjPlaningBottom, F::AreaProjPlaningBottom},
     [](const H& h) { return LP(h) * LP(h) / h.AreaProjPlaningBottom(kFt2); }},
    {C::CoefLpBpxRatio, NotPos, 0.0, "LP/BPX ratio", "LP/BPX", {F::LengthProjPlaningBottom, D::Bpx},
     [](const H& h) { return LP(h) / Bpx(h, kFt); }},
};
// clang-format on
static_assert(std::size(kCoefs) == static_cast<size_t>(C::Count) && InEnumOrder(kCoefs));

// ---- Inverse functions --------------------------------------------------------------------

// Square metres to the current area unit, and kilograms to the current weight unit.
double AreaFromM2(const H& h, double m2) { return h.Units()->ConvertUnitArea(m2, kCurrent, kM2); }
double WeightFromKg(const H& h, double kg) { return h.Units()->ConvertUnitWeight(kg, kCurrent, kKg); }
// The reference of CS, sqrt(volume x LWL), in metres.
double SqrtVolLMetric(const H& h) { return std::sqrt(h.DisplacementVolume(kM) * h.LengthWL(kM)); }

struct InverseRow {
  I id;
  Test test;
  double limit;
  const char* word;
  std::array<In, 3> inputs;  // must all be positive, as must the coefficient
  double (*formula)(const H&, double);
  bool round = true;  // to 6 significant digits
};

// clang-format off
constexpr InverseRow kInverses[] = {
    // Tests the displacement against the limits of CB: a diagnostic of the entry.
    {I::GetDisplacementFromCb, NotPosOrAtLeast, 1.1, "CB coefficient",
     {F::LengthWL, F::BeamWLMax, F::DraftSubmergedMax}, [](const H& h, double c) {
       return WeightFromKg(h, h.LengthWL(kM) * h.BeamWLMax(kM) * h.DraftSubmergedMax(kM) * c * DensityKg(h));
     }},
    {I::GetDisplacementFromCvol, Never, 0.0, "", {F::LengthWL}, [](const H& h, double c) {
       const double m3 = h.Units()->ConvertUnitLength3(std::pow(h.LengthWL(kFt) / c, 3), kM, kFt);
       return WeightFromKg(h, m3 * DensityKg(h));
     }},
    {I::GetWettedSurfaceFromCoefCS, NotPos, 0.0, "CS coefficient", {F::LengthWL, D::Vol},
     [](const H& h, double c) { return AreaFromM2(h, c * SqrtVolLMetric(h)); }},
    // The surface comes in the current unit and is converted as if it were in square metres:
    // the two agree in metric units only, and callers rely on exactly this. Not rounded.
    {I::GetCoefCSFromWettedSurface, NotPos, 0.0, "Wetted surface and coefficient", {F::LengthWL, D::Vol},
     [](const H& h, double s) { return AreaFromM2(h, s) / SqrtVolLMetric(h); }, false},
    {I::GetBeamWLMaxFromLBRatio, NotPos, 0.0, "LWL/BWL ratio", {F::LengthWL},
     [](const H& h, double r) { return h.LengthWL(kCurrent) / r; }},
    {I::GetDraftSubmergedMaxFromBTRatio, NotPos, 0.0, "BWL/T ratio", {F::BeamWLMax},
     [](const H& h, double r) { return h.BeamWLMax(kCurrent) / r; }},
    {I::GetDemihullSpacingFromSLRatio, NotPos, 0.0, "S/LWL ratio", {F::LengthWL},
     [](const H& h, double r) { return h.LengthWL(kCurrent) * r; }},
    {I::GetXBuoyancyFwdTrFromLCBLRatio, NotPos, 0.0, "XCB/LWL ratio", {F::LengthWL},
     [](const H& h, double r) { return h.LengthWL(kCurrent) * r; }},
    {I::GetXWaterplaneFwdTrFromLCFLRatio, NotPos, 0.0, "XCF/LWL ratio", {F::LengthWL},
     [](const H& h, double r) { return h.LengthWL(kCurrent) * r; }},
    {I::GetBulbAreaSectFromAbtAxRatio, Never, 0.0, "", {F::AreaSectMax},
     [](const H& h, double r) { return h.AreaSectMax(kCurrent) * r; }},
    {I::GetAreaSectAtTrFromAtAxRatio, NotPos, 0.0, "AT/AX ratio", {F::AreaSectMax},
     [](const H& h, double r) { return h.AreaSectMax(kCurrent) * r; }},
    {I::GetMaxSectionAreaFromCx, NotPos, 0.0, "Max sectional area coef", {F::BeamWLMax, F::DraftSubmergedMax},
     [](const H& h, double c) { return AreaFromM2(h, h.BeamWLMax(kM) * h.DraftSubmergedMax(kM) * c); }},
    {I::GetWaterplaneAreaFromCw, NotPos, 0.0, "Waterplane coef", {F::LengthWL, F::BeamWLMax},
     [](const H& h, double c) { return AreaFromM2(h, h.LengthWL(kM) * h.BeamWLMax(kM) * c); }},
    {I::GetXGravityFwdTrFromLCGLPRatio, NotPos, 0.0, "XCG/LP ratio", {F::LengthProjPlaningBottom},
     [](const H& h, double r) { return h.LengthProjPlaningBottom(kCurrent) * r; }},
};
// clang-format on
static_assert(std::size(kInverses) == static_cast<size_t>(I::Count) && InEnumOrder(kInverses));

// ---- Stations -----------------------------------------------------------------------------

// The straight line through (x1, y1) and (x2, y2) at x, unclamped; y1 when x1 equals x2.
double Interpolate(double x, double x1, double y1, double x2, double y2) {
  return x1 == x2 ? y1 : y1 + (y2 - y1) * (x - x1) / (x2 - x1);
}

// A station quantity at x: the forward value without an aft station, else the line through
// both stations.
double StationValue(const H& h, double x, int unit, F fwd, F aft) {
  const double yf = h.Read(FieldId(fwd), unit);
  if (!(h.AftStationChineBeam(unit) > 0.0)) return yf;
  return Interpolate(x, h.FwdStationXPositionFwdTr(unit), yf, h.AftStationXPositionFwdTr(unit),
                     h.Read(FieldId(aft), unit));
}

// Rise of the chine above the keel at both stations (half the chine beam times the tangent
// of the deadrise) and the distance between the stations, as stored; none without an aft
// station or with both stations at one position.
struct Rises {
  double fwd, aft, dx;
};

std::optional<Rises> StationRises(const H& h) {
  const double dx = h.FwdStationXPositionFwdTr(kCurrent) - h.AftStationXPositionFwdTr(kCurrent);
  const double aftBeam = h.AftStationChineBeam(kCurrent);
  if (!(aftBeam > 0.0) || dx == 0.0) return std::nullopt;
  return Rises{0.5 * h.FwdStationChineBeam(kCurrent) * std::tan(DegToRad * h.FwdStationAngleDeadriseDeg()),
               0.5 * aftBeam * std::tan(DegToRad * h.AftStationAngleDeadriseDeg()), dx};
}

std::string CaptionWithUnits(const H& h, const char* name) {
  return std::string(FieldIndent) + name + " [" + h.Units()->GetUnitLengthLabel(kCurrent) + "]:";
}

}  // namespace

clsVXHull::clsVXHull(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water)
    : DataClass(kHullFields, std::move(units)), water_(std::move(water)) {}

void clsVXHull::SetLinkedClasses(std::shared_ptr<clsVXUnits> units,
                                 std::shared_ptr<clsVXWaterProperties> water) {
  Units(std::move(units));
  water_ = std::move(water);
}

std::shared_ptr<clsVXHull> clsVXHull::CopyClass() const {
  auto copy = std::make_shared<clsVXHull>(Units(), water_);
  copy->CopyDataFrom(*this);
  return copy;
}

std::string clsVXHull::FieldNameOf(int field) const {
  if (field == FieldId(Field::TransomLiftDeviceChordDepth)) {
    return TransomLiftDeviceType() == 2 ? "    Depth:" : "    Chord length:";
  }
  return DataClass::FieldNameOf(field);
}

std::string clsVXHull::PropellerTunnelEffectiveDiameterFieldNameWithUnits() const {
  return CaptionWithUnits(*this, "Effective diam");
}

std::string clsVXHull::PropellerTunnelRecessDepthFieldNameWithUnits() const {
  return CaptionWithUnits(*this, "Recess depth");
}

double clsVXHull::DisplacementVolume(int unit) const {
  const double density = DensityKg(*this);
  const double kg = Displacement(kKg);
  if (!(density > 0.0)) return 0.0;
  return Units()->ConvertUnitLength3(kg / density, unit, kM);
}

double clsVXHull::Coefficient(Coef c) const {
  const CoefRow& s = kCoefs[static_cast<size_t>(c)];
  const double v = InputsPositive(*this, s.inputs) ? s.formula(*this) : 0.0;
  const double tested = s.tested == Coef::Count ? v : Coefficient(s.tested);
  if (Fails(s.test, s.limit, tested)) Push(*s.word ? s.word : s.symbol);
  return v;
}

std::string clsVXHull::CoefficientSymbol(Coef c) const { return kCoefs[static_cast<size_t>(c)].symbol; }

std::string clsVXHull::CoefficientFormatted(Coef c) const { return FormatNumber(Coefficient(c), "0.000"); }

double clsVXHull::InverseOf(Inverse f, double coef) const {
  const InverseRow& s = kInverses[static_cast<size_t>(f)];
  double v = 0.0;
  if (InputsPositive(*this, s.inputs) && coef > 0.0) {
    v = s.formula(*this, coef);
    if (s.round) v = RoundToSigDigits(v, 6);
  }
  if (Fails(s.test, s.limit, v)) Push(s.word);
  return v;
}

double clsVXHull::CalcEffectiveChineBeam(double x, int unit) const {
  const double fwd = FwdStationChineBeam(unit);
  const double aft = AftStationChineBeam(unit);
  if (!(aft > 0.0)) return fwd;
  const double xFwd = FwdStationXPositionFwdTr(unit);
  if (x >= xFwd) return std::max(fwd, aft);
  return Interpolate(x, xFwd, fwd, AftStationXPositionFwdTr(unit), aft);
}

double clsVXHull::CalcEffectiveAngleDeadriseDeg(double x, int unit) const {
  return StationValue(*this, x, unit, Field::FwdStationAngleDeadriseDeg, Field::AftStationAngleDeadriseDeg);
}

double clsVXHull::CalcEffectiveZChineHeightBelowWL(double x, int unit) const {
  return StationValue(*this, x, unit, Field::FwdStationZChineHeightBelowWL,
                      Field::AftStationZChineHeightBelowWL);
}

double clsVXHull::CalcEffectiveChineWarpDeg() const {
  const auto r = StationRises(*this);
  return r ? std::atan((r->fwd - r->aft) / r->dx) / DegToRad : 0.0;
}

double clsVXHull::CalcStaticEffectiveBaselineTrimAngleDeg() const {
  const auto r = StationRises(*this);
  if (!r) return 0.0;
  const double keelFwd = r->fwd + FwdStationZChineHeightBelowWL(kCurrent);
  const double keelAft = r->aft + AftStationZChineHeightBelowWL(kCurrent);
  return std::atan((keelAft - keelFwd) / r->dx) / DegToRad;
}

}  // namespace velmar
