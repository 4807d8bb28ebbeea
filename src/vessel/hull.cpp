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
#include "vessel/hull_reads.h"

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
using R = HullReads;
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
double ReadInput(R& r, In in) {
  switch (static_cast<D>(in.id)) {
    case D::Vol:
      return r.DisplacementVolume(kCurrent);
    case D::Bpx:
      return Bpx(r.Hull(), kCurrent);
    case D::Cp:
      return r.CoefPrismatic();
    case D::LB:
      return r.CoefLwlBwlRatio();
  }
  return r.Read(static_cast<F>(in.id), kCurrent);
}

// Every input is read, so that each reports, and all of them must be positive.
bool InputsPositive(R& r, std::span<const In> inputs) {
  bool ok = true;
  for (const In in : inputs) {
    if (in.id != kNoInput && !(ReadInput(r, in) > 0.0)) ok = false;
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
double Vol(R& r) { return r.DisplacementVolume(kFt); }
double L(R& r) { return r.LengthWL(kFt); }
double B(R& r) { return r.BeamWLMax(kFt); }
double T(R& r) { return r.DraftSubmergedMax(kFt); }
double AX(R& r) { return r.AreaSectMax(kFt2); }
double LP(R& r) { return r.LengthProjPlaningBottom(kFt); }

struct CoefRow {
  C id;
  Test test;
  double limit;
  const char* word;  // empty: the symbol
  const char* symbol;
  std::array<In, 4> inputs;  // must all be positive, else the result is 0
  double (*formula)(R&);
  C tested = C::Count;  // the coefficient whose value is tested, if not this one
};

// clang-format off
constexpr CoefRow kCoefs[] = {
    {C::CoefBlock, NotPosOrAbove, 1.1, "CB coefficient", "CB",
     {F::Displacement, F::LengthWL, F::DraftSubmergedMax, F::BeamWLMax},
     [](R& r) { return Vol(r) / (L(r) * B(r) * T(r)); }},
    {C::CoefPrismatic, NotPosOrAbove, 1.1, "CP coefficient", "CP",
     {F::Displacement, F::LengthWL, F::AreaSectMax},
     [](R& r) { return Vol(r) / (L(r) * AX(r)); }},
    {C::CoefVerticalPrismatic, NotPosOrAbove, 1.1, "CVP coefficient", "CVP",
     {F::Displacement, F::DraftSubmergedMax, F::AreaWaterplane},
     [](R& r) { return Vol(r) / (T(r) * r.AreaWaterplane(kFt2)); }},
    {C::CoefAreaSectMax, NotPosOrAbove, 1.1, "", "CX", {F::AreaSectMax, F::DraftSubmergedMax, F::BeamWLMax},
     [](R& r) { return AX(r) / (T(r) * B(r)); }},
    {C::CoefWaterplane, NotPosOrAbove, 1.1, "", "CWP", {F::AreaWaterplane, F::LengthWL, F::BeamWLMax},
     [](R& r) { return r.AreaWaterplane(kFt2) / (L(r) * B(r)); }},
    {C::CoefLwlBwlRatio, NotPos, 0.0, "", "LWL/BWL", {F::LengthWL, F::BeamWLMax},
     [](R& r) { return L(r) / B(r); }},
    {C::CoefBwlTvolRatio, NotPos, 0.0, "", "BWL/T", {F::BeamWLMax, F::DraftSubmergedMax},
     [](R& r) { return B(r) / T(r); }},
    {C::CoefLwlTvolRatio, NotPos, 0.0, "LWL/T ratio", "", {F::LengthWL, F::DraftSubmergedMax},
     [](R& r) { return L(r) / T(r); }},
    {C::CoefSLwlRatio, NotPos, 0.0, "S/LWL ratio", "", {F::DemihullSpacing, F::LengthWL},
     [](R& r) { return r.DemihullSpacing(kFt) / L(r); }},
    // Holtrop & Mennen (1982): lambda = 1.446 CP - 0.03 LWL/BWL.
    {C::CoefLambda, NotPos, 0.0, "Lambda coefficient", "Lambda", {D::Cp, D::LB},
     [](R& r) { return 1.446 * r.CoefPrismatic() - 0.03 * r.CoefLwlBwlRatio(); }},
    {C::CoefWettedSurfaceFroudeCWS, NotPos, 0.0, "", "CWS", {F::Displacement, F::WettedSurface},
     [](R& r) { return r.WettedSurface(kFt2) / std::pow(Vol(r), 2.0 / 3.0); }},
    {C::CoefWettedSurfaceCS, NotPos, 0.0, "", "CS", {F::LengthWL, F::Displacement, F::WettedSurface},
     [](R& r) { return r.WettedSurface(kFt2) / std::sqrt(Vol(r) * L(r)); }},
    {C::CoefAtAxRatio, NegOrAbove, 1.1, "", "ATR/AX", {F::AreaSectAtTr, F::AreaSectMax},
     [](R& r) { return r.AreaSectAtTr(kFt2) / AX(r); }},
    // Two bulb ratios: the silent one is shown to the user, the other reports a bad ratio.
    {C::CoefAbtAxRatio, Never, 0.0, "", "ABT/AX", {F::BulbAreaSect, F::AreaSectMax},
     [](R& r) { return r.BulbAreaSect(kFt2) / AX(r); }},
    {C::CoefAbulbAxRatio, NegOrAbove, 1.1, "ABT/AX ratio", "", {F::BulbAreaSect, F::AreaSectMax},
     [](R& r) { return r.BulbAreaSect(kFt2) / AX(r); }},
    {C::CoefBtBxRatio, NegOrAbove, 1.1, "BT/BWL ratio", "", {F::BeamWLAtTr, F::BeamWLMax},
     [](R& r) { return r.BeamWLAtTr(kFt) / B(r); }},
    {C::CoefTtTvolRatio, NegOrAbove, 1.1, "TTR/T ratio", "", {F::ImmersionDraftAtTr, F::DraftSubmergedMax},
     [](R& r) { return r.ImmersionDraftAtTr(kFt) / T(r); }},
    {C::CoefLwlVol, NotPos, 0.0, "CVOL coefficient", "CVOL", {F::LengthWL, D::Vol},
     [](R& r) { return L(r) / std::cbrt(Vol(r)); }},
    {C::CoefVolBwl, NotPos, 0.0, "VOLB coefficient", "VOLB", {F::BeamWLMax, D::Vol},
     [](R& r) { return Vol(r) / std::pow(B(r), 3); }},
    {C::CoefVolBpx, NotPos, 0.0, "VOLBp coefficient", "VOLBp", {D::Bpx, D::Vol},
     [](R& r) { return Vol(r) / std::pow(Bpx(r.Hull(), kFt), 3); }},
    // Tests CVOL, not its own value.
    {C::CoefLpVol, NotPos, 0.0, "CVOLp coefficient", "CVOLp", {F::LengthProjPlaningBottom, D::Vol},
     [](R& r) { return LP(r) / std::cbrt(Vol(r)); }, C::CoefLwlVol},
    {C::CoefLCBLwlRatio, NotPosOrAbove, 1.0, "XCB/LWL ratio", "", {F::XBuoyancyFwdTr, F::LengthWL},
     [](R& r) { return r.XBuoyancyFwdTr(kFt) / L(r); }},
    {C::CoefLCFLwlRatio, NotPosOrAbove, 1.0, "XCF/LWL ratio", "", {F::XAreaWaterplaneFwdTr, F::LengthWL},
     [](R& r) { return r.XAreaWaterplaneFwdTr(kFt) / L(r); }},
    {C::CoefLCGBpRatio, NotPos, 0.0, "XCG/BPX ratio", "", {F::XGravityFwdTr, D::Bpx},
     [](R& r) { return r.XGravityFwdTr(kFt) / Bpx(r.Hull(), kFt); }},
    {C::CoefLCGLpRatio, NotPos, 0.0, "XCG/Lp ratio", "", {F::XGravityFwdTr, F::LengthProjPlaningBottom},
     [](R& r) { return r.XGravityFwdTr(kFt) / LP(r); }},
    {C::CoefApVolRatio, NotPos, 0.0, "Ap:Vol ratio", "", {F::AreaProjPlaningBottom, F::Displacement},
     [](R& r) { return r.AreaProjPlaningBottom(kFt2) / std::pow(Vol(r), 2.0 / 3.0); }},
    {C::CoefLpApRatio, NotPos, 0.0, "Lp:Ap ratio", "", {F::LengthProjPlaningBottom, F::AreaProjPlaningBottom},
     [](R& r) { return LP(r) * LP(r) / r.AreaProjPlaningBottom(kFt2); }},
    {C::CoefLpBpxRatio, NotPos, 0.0, "LP/BPX ratio", "LP/BPX", {F::LengthProjPlaningBottom, D::Bpx},
     [](R& r) { return LP(r) / Bpx(r.Hull(), kFt); }},
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

double clsVXHull::DisplacementVolume(int unit) const { return HullReads(*this).DisplacementVolume(unit); }

double clsVXHull::Coefficient(Coef c) const { return HullReads(*this).Coefficient(c); }

std::string clsVXHull::CoefficientSymbol(Coef c) const { return kCoefs[static_cast<size_t>(c)].symbol; }

std::string clsVXHull::CoefficientFormatted(Coef c) const { return FormatNumber(Coefficient(c), "0.000"); }

double clsVXHull::InverseOf(Inverse f, double coef) const {
  const InverseRow& s = kInverses[static_cast<size_t>(f)];
  double v = 0.0;
  R reads(*this);
  if (InputsPositive(reads, s.inputs) && coef > 0.0) {
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

// ---- HullReads ----------------------------------------------------------------------------

double HullReads::FirstRead(clsVXHull::Field f, int unit) {
  const int slot = unit + 1;
  if (slot < 0 || slot >= kUnitSlots) return hull_.Read(FieldId(f), unit);
  const size_t at = static_cast<size_t>(FieldId(f)) * kUnitSlots + static_cast<size_t>(slot);
  fields_[at] = hull_.Read(FieldId(f), unit);
  haveField_[at] = true;
  return fields_[at];
}

// Displacement over the density of the linked water (kg/m3, 0 without water).
double HullReads::DisplacementVolume(int unit) {
  const int slot = unit + 1;
  const bool keep = slot >= 0 && slot < kUnitSlots;
  if (keep && haveVolume_[slot]) return volumes_[slot];
  if (!haveDensity_) {
    density_ = DensityKg(hull_);
    haveDensity_ = true;
  }
  const double kg = Read(F::Displacement, kKg);
  const double v = density_ > 0.0 ? hull_.Units()->ConvertUnitLength3(kg / density_, unit, kM) : 0.0;
  if (keep) {
    volumes_[slot] = v;
    haveVolume_[slot] = true;
  }
  return v;
}

double HullReads::FirstCoefficient(clsVXHull::Coef c) {
  const size_t at = static_cast<size_t>(c);
  const CoefRow& s = kCoefs[at];
  const double v = InputsPositive(*this, s.inputs) ? s.formula(*this) : 0.0;
  const double tested = s.tested == C::Count ? v : Coefficient(s.tested);
  // The error stack of a hull is pushed on by its const reads; Errors(text) is its push.
  if (Fails(s.test, s.limit, tested)) const_cast<H&>(hull_).Errors(*s.word ? s.word : s.symbol);
  coefs_[at] = v;
  haveCoef_[at] = true;
  return v;
}

}  // namespace velmar
