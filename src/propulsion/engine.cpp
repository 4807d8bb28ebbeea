// Engine data, its curve tables and the lookups on them.
#include "propulsion/engine.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <stdexcept>

#include "core/curve_fit.h"
#include "core/diagnostics.h"
#include "core/format.h"

namespace velmar {

namespace {

const FieldDesc kEngineFields[] = {
#include "core/fields_table.h"
#include "propulsion/engine_fields.def"
};

using E = clsVXEngine;
using C = clsVXEngine::Curve;

#define VX_ENGINE_DESC(N, KIND, FAM, OBJ, TAG) \
  E::CurveDesc{C::N, #N, UnitFamily::FAM, #OBJ, TAG, E::Field::OBJ##Count},
constexpr E::CurveDesc kCurves[] = {VX_ENGINE_CURVES(VX_ENGINE_DESC)};
#undef VX_ENGINE_DESC

const E::CurveDesc& Desc(C c) { return kCurves[static_cast<size_t>(c)]; }

// The lookups. The y of the net lookup is the power less the parasitic load. The four lookups on
// the maximum-power curve share one failure text.
struct Lookup {
  C x, y;
  bool net;
  int method;  // of CurveFit: 0 linear, 1 cubic spline
  const char* failure;
};

constexpr const char* kMaxPowerFailure = "getting max power from max power RPM";
constexpr Lookup kMaxPowerFromRPM{C::MaxPowerRPM, C::MaxPowerPower, false, 0, kMaxPowerFailure};
constexpr Lookup kRPMFromMaxPower{C::MaxPowerPower, C::MaxPowerRPM, false, 0, kMaxPowerFailure};
constexpr Lookup kNetMaxPowerFromRPM{C::MaxPowerRPM, C::MaxPowerPower, true, 0, kMaxPowerFailure};
constexpr Lookup kFuelRateFromMaxPowerRPM{C::MaxPowerRPM, C::MaxPowerFuelRate, false, 0, kMaxPowerFailure};
constexpr Lookup kRPMFromDefinedLoadPower{C::DefinedLoadPower, C::DefinedLoadRPM, false, 1,
                                          "getting RPM from defined load power"};
constexpr Lookup kFuelRateFromDefinedLoadPower{C::DefinedLoadPower, C::DefinedLoadFuelRate, false, 1,
                                               "getting fuel rate from defined load power"};

// The x and y lists of a lookup, read in xUnit and yUnit.
void ReadLists(const E& e, const Lookup& l, int xUnit, int yUnit, std::vector<double>& xs,
               std::vector<double>& ys) {
  xs = e.CurveArray(l.x, xUnit);
  ys = l.net ? e.NetMaxPowerPowerLessParasiticArray(yUnit) : e.CurveArray(l.y, yUnit);
}

// Prepares the fit of a lookup on its two lists, read in xUnit and yUnit. False when the
// spline cannot be set up.
bool PrepareFit(const E& e, const Lookup& l, int xUnit, int yUnit, CurveFitTable& fit) {
  std::vector<double> xs, ys;
  ReadLists(e, l, xUnit, yUnit, xs, ys);
  std::string location, cause;
  return fit.Prepare(l.method, static_cast<int>(xs.size()), xs, ys, location, cause);
}

// Fits y at `arg` through the points of two lists, read in xUnit and yUnit, or by the fit
// `lists` prepared from them before.
double Evaluate(const E& e, const Lookup& l, double arg, int xUnit, int yUnit, EngineCurveLists* lists) {
  if (!(arg > 0.0)) return 0.0;
  try {
    CurveFitTable ownFit;
    const CurveFitTable* fit = &ownFit;
    bool prepared = false;
    if (lists) {
      auto it = std::find_if(lists->entries.begin(), lists->entries.end(), [&](const auto& entry) {
        return entry.lookup == &l && entry.xUnit == xUnit && entry.yUnit == yUnit;
      });
      if (it == lists->entries.end()) {
        EngineCurveLists::Entry entry{&l, xUnit, yUnit, {}, false};
        entry.prepared = PrepareFit(e, l, xUnit, yUnit, entry.fit);
        it = lists->entries.insert(it, std::move(entry));
      }
      fit = &it->fit;
      prepared = it->prepared;
    } else {
      prepared = PrepareFit(e, l, xUnit, yUnit, ownFit);
    }
    if (!prepared) {
      AddCalcError(l.failure);
      return 0.0;
    }
    return fit->At(arg);
  } catch (const std::exception&) {
    AddCalcError(l.failure);
    return 0.0;
  }
}

// A point of a curve in the plane of the engine graph: RPM across, power up.
struct Point {
  double rpm, power;
};

// The crossing of the lines through a1-a2 and b1-b2; none for parallel lines.
bool CrossingOfTwoLines(Point a1, Point a2, Point b1, Point b2, Point& out) {
  const double dax = a2.rpm - a1.rpm, day = a2.power - a1.power;
  const double dbx = b2.rpm - b1.rpm, dby = b2.power - b1.power;
  const double den = dax * dby - day * dbx;
  if (den == 0.0) return false;
  const double t = ((b1.rpm - a1.rpm) * dby - (b1.power - a1.power) * dbx) / den;
  out = {a1.rpm + t * dax, a1.power + t * day};
  return true;
}

// Whether p lies within the box of segment s1-s2 (so on the segment, p being on its line),
// with a relative allowance for the rounding of the crossing.
bool WithinSegment(Point p, Point s1, Point s2) {
  auto within = [](double v, double a, double b) {
    const double tol = 1e-9 * std::max({std::fabs(a), std::fabs(b), 1.0});
    return v >= std::min(a, b) - tol && v <= std::max(a, b) + tol;
  };
  return within(p.rpm, s1.rpm, s2.rpm) && within(p.power, s1.power, s2.power);
}

}  // namespace

std::span<const E::CurveDesc> clsVXEngine::Curves() { return kCurves; }

clsVXEngine::clsVXEngine(std::shared_ptr<clsVXUnits> units) : DataClass(kEngineFields, std::move(units)) {
  for (auto& c : curves_) c.assign(kEngineCurvePoints, 0.0);
}

std::shared_ptr<clsVXEngine> clsVXEngine::CopyClass() const {
  auto copy = std::make_shared<clsVXEngine>(Units());
  copy->CopyDataFrom(*this);
  copy->curves_ = curves_;
  return copy;
}

void clsVXEngine::ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits) {
  DataClass::ConvertAllData(newUnits, oldUnits);
  for (const CurveDesc& d : kCurves) {
    if (d.family == UnitFamily::None) continue;
    const int from = oldUnits.Index(d.family);
    for (double& v : curves_[static_cast<size_t>(d.id)]) v = Units()->Convert(d.family, v, kCurrent, from);
  }
}

void clsVXEngine::ClearAllData() {
  DataClass::ClearAllData();
  for (auto& c : curves_) std::fill(c.begin(), c.end(), 0.0);
}

double clsVXEngine::CurveValue(Curve c, int i, int unit) const {
  const CurveDesc& d = Desc(c);
  const double v = curves_[static_cast<size_t>(c)].at(static_cast<size_t>(i));
  if (d.family == UnitFamily::None || unit == kCurrent) return v;
  if (!Units()) throw std::logic_error("Units link not set");
  return Units()->Convert(d.family, v, unit, kCurrent);
}

void clsVXEngine::CurveValue(Curve c, int i, int unit, double value) {
  const CurveDesc& d = Desc(c);
  if (d.family != UnitFamily::None && unit != kCurrent) {
    if (!Units()) throw std::logic_error("Units link not set");
    value = Units()->Convert(d.family, value, kCurrent, unit);
  }
  curves_[static_cast<size_t>(c)].at(static_cast<size_t>(i)) = value;
}

std::string clsVXEngine::CurveValueFormatted(Curve c, int i, int unit) const {
  const CurveDesc& d = Desc(c);
  const double v = CurveValue(c, i, unit);
  if (d.family == UnitFamily::None || !Units())
    return FormatNumber(v, d.family == UnitFamily::None ? "0.0" : "");
  return FormatNumber(v, Units()->Format(d.family));
}

int clsVXEngine::CurveCount(Curve c) const {
  return std::clamp(static_cast<int>(Raw(FieldId(Desc(c).count))), 0, kEngineCurvePoints);
}

std::vector<double> clsVXEngine::CurveArray(Curve c, int unit) const {
  const int n = CurveCount(c);
  std::vector<double> out(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) out[static_cast<size_t>(i)] = CurveValue(c, i, unit);
  return out;
}

double clsVXEngine::MaxPowerNetPower(int i, int unit) const {
  return MaxPowerPower(i, unit) - ParasiticLoad(unit);
}

std::vector<double> clsVXEngine::NetMaxPowerPowerLessParasiticArray(int unit) const {
  std::vector<double> out = MaxPowerPowerArray(unit);
  const double parasitic = ParasiticLoad(unit);
  for (double& v : out) v -= parasitic;
  return out;
}

double clsVXEngine::GetMaxPowerFromRPM(double rpm, int powerUnit, EngineCurveLists* lists) const {
  return Evaluate(*this, kMaxPowerFromRPM, rpm, kCurrent, powerUnit, lists);
}

double clsVXEngine::GetRPMFromMaxPower(double power, int powerUnit, EngineCurveLists* lists) const {
  return Evaluate(*this, kRPMFromMaxPower, power, powerUnit, kCurrent, lists);
}

double clsVXEngine::GetNetMaxPowerFromRPM(double rpm, int powerUnit, EngineCurveLists* lists) const {
  return Evaluate(*this, kNetMaxPowerFromRPM, rpm, kCurrent, powerUnit, lists);
}

double clsVXEngine::GetFuelRateFromMaxPowerRPM(double rpm, int fuelUnit, EngineCurveLists* lists) const {
  return Evaluate(*this, kFuelRateFromMaxPowerRPM, rpm, kCurrent, fuelUnit, lists);
}

double clsVXEngine::GetRPMFromDefinedLoadPower(double power, int powerUnit, EngineCurveLists* lists) const {
  return Evaluate(*this, kRPMFromDefinedLoadPower, power, powerUnit, kCurrent, lists);
}

double clsVXEngine::GetFuelRateFromDefinedLoadPower(double power, int fuelUnit, int powerUnit,
                                                    EngineCurveLists* lists) const {
  return Evaluate(*this, kFuelRateFromDefinedLoadPower, power, powerUnit, fuelUnit, lists);
}

bool clsVXEngine::GetIntersectionOfMaxPowerAndDefinedLoadCurves(double& rpm, double& power,
                                                                int powerUnit) const {
  SetCalcLocation("Intersection of max power and defined load curves");
  rpm = 0.0;
  power = 0.0;
  try {
    const std::vector<double> dr = DefinedLoadRPMArray(), dp = DefinedLoadPowerArray(powerUnit);
    const std::vector<double> mr = MaxPowerRPMArray(), mp = MaxPowerPowerArray(powerUnit);
    for (size_t i = 0; i + 1 < dr.size(); ++i) {
      const Point d1{dr[i], dp[i]}, d2{dr[i + 1], dp[i + 1]};
      for (size_t j = 0; j + 1 < mr.size(); ++j) {
        const Point m1{mr[j], mp[j]}, m2{mr[j + 1], mp[j + 1]};
        // Parallel segments have no single crossing; the walk goes on with the next pair.
        Point p{};
        if (!CrossingOfTwoLines(d1, d2, m1, m2, p)) continue;
        if (WithinSegment(p, d1, d2) && WithinSegment(p, m1, m2)) {
          rpm = p.rpm;
          power = p.power;
          return true;
        }
      }
    }
  } catch (const std::exception&) {
    AddCalcError("finding intersection of two lines");
  }
  return false;
}

}  // namespace velmar
