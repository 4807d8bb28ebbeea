// The propeller sizing window's logic: design point, solver, write-back, report.
#include "propulsion/propeller_sizing_run.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "core/model_set.h"
#include "core/diagnostics.h"
#include "core/format.h"
#include "core/helpers.h"

namespace velmar {
namespace {

// A stored quantity in `unit`, without the read check: a value that the sizing replaces may
// well be missing, and a pushed word would stop the prediction that follows.
double Unchecked(const DataClass& object, const char* name, int unit) {
  const int field = object.FieldIndex(name);
  const double raw = object.Raw(field);
  const UnitFamily family = object.Fields()[field].family;
  return family == UnitFamily::None || !object.Units() ? raw
                                                       : object.Units()->Convert(family, raw, unit, kCurrent);
}

bool Fail(PropellerSizingReport& report, const char* text) {
  AddCalcError(text);
  report.errors = GetCalcCause();
  return false;
}

bool Size(PropellerSizingReport& report, clsVXWaterProperties& water, clsVXHull& hull,
          clsVXPropulsion& propulsion, clsVXPropeller& propeller, clsVXPropellerSeries& series,
          clsVXPropellerSizing& sizing, clsVXSpeedPerformance& sp) {
  SetCalcLocation("Propeller sizing");
  const int mode = report.identity;
  // The design speed row and its interaction coefficients.
  if (sp.count() < 1) return Fail(report, "Design speed missing");
  const int row = std::clamp(sp.DesignSpeedIndex(), 0, sp.count() - 1);
  report.designRow = row;
  sp.SpeedIndex(row);
  const double V = sp.Speed(row, kFtPerSec);
  const double w = sp.WakeFraction(row), t = sp.ThrustDeduction(row), etaR = sp.RelRotEfficiency(row);
  report.speed = sp.Speed(row, kCurrent);
  // Drive train and propulsors.
  const int hulls = hull.HullConfigType() == 0 ? 1 : 2;
  const int propulsors = std::max(propulsion.PropulsorCountPerHull(), 1) * hulls;
  const double gearRatio = propulsion.GearRatio();
  double gearEff = propulsion.GearEfficiency(), shaftEff = propulsion.ShaftEfficiency();
  if (!(gearEff > 0.0)) gearEff = 1.0;
  if (!(shaftEff > 0.0)) shaftEff = 1.0;
  // The design point.
  report.engineRPM = sizing.ReferenceEngineRPM() * sizing.ReferenceEngineRPMDesignPoint();
  SizingProblem q{.V = (1.0 - w) * V, .etaR = etaR, .Mode = mode};
  if (mode == kSizeByPower) {
    report.power = sizing.ReferencePowerBrakePerPropeller(kHp) * sizing.ReferencePowerDesignPoint();
    q.P = report.power * gearEff * shaftEff;
  } else if (mode == kSizeByThrust) {
    report.thrust = sizing.ReferenceThrustPerPropeller(kLbf) * sizing.ReferenceThrustDesignPoint();
    q.T = report.thrust;
  } else {
    report.thrust = sp.DragTotal(row, kLbf) / ((1.0 - t) * propulsors);
    q.T = report.thrust;
  }
  for (DataClass* object : {static_cast<DataClass*>(&sizing), static_cast<DataClass*>(&propulsion)})
    if (object->ErrorsFound()) {
      AddCalcErrors(object->Errors());
      return Fail(report, "propeller sizing design point");
    }
  if (sp.ErrorsFound()) {
    AddCalcErrors(sp.Errors());
    return Fail(report, "propeller sizing design point");
  }
  q.RateFlag = sizing.GearRatioSolution();
  q.DiameterFlag = sizing.DiameterSolution();
  q.PitchFlag = sizing.PitchMeanSolution();
  q.EARFlag = sizing.ExpAreaRatioSolution();
  if (!q.RateFlag && !(gearRatio > 0.0)) return Fail(report, "Gear ratio");
  if (q.DiameterFlag) q.DMax = Unchecked(hull, "PropellerDiameterMax", kFt);

  // The propeller as it stands; a kept pitch keeps its pitch ratio.
  SizingPoint point;
  point.n = q.RateFlag ? 0.0 : report.engineRPM / gearRatio / 60.0;
  point.D = Unchecked(propeller, "Diameter", kFt);
  point.Pitch = Unchecked(propeller, "PitchMean", kFt);
  point.EAR = propeller.ExpAreaRatio();
  SizingPoint before = point;
  if (q.RateFlag && gearRatio > 0.0) before.n = report.engineRPM / gearRatio / 60.0;
  if (SizePropeller(water, propulsion, propeller, series, q, point, &report.summary) == 0) {
    report.errors = GetCalcCause();
    return false;
  }

  // The solution into the propeller and the drive train.
  const clsVXUnits& units = *propeller.Units();
  auto length = [&](double ft) { return units.ConvertUnitPropLength(ft, kCurrent, kFt); };
  const double gearAfter = q.RateFlag ? report.engineRPM / (60.0 * point.n) : gearRatio;
  if (q.DiameterFlag) propeller.Diameter(kFt, point.D);
  if (q.DiameterFlag || q.PitchFlag) propeller.PitchMean(kFt, point.Pitch);
  if (q.EARFlag) propeller.ExpAreaRatio(point.EAR);
  if (q.RateFlag) propulsion.GearRatio(gearAfter);
  report.quantities = {
      {"Diameter", "Diameter", UnitFamily::PropLength, length(before.D), length(point.D),
       q.DiameterFlag != 0},
      {"PitchMean", "Mean pitch", UnitFamily::PropLength, length(before.Pitch), length(point.Pitch),
       q.PitchFlag || q.DiameterFlag},
      {"ExpAreaRatio", "Expanded area ratio", UnitFamily::None, before.EAR, point.EAR, q.EARFlag != 0},
      {"GearRatio", "Gear ratio", UnitFamily::None, gearRatio, gearAfter, q.RateFlag != 0},
      {"PropulsorRPM", "Propeller RPM", UnitFamily::None, before.n * 60.0, point.n * 60.0, q.RateFlag != 0},
  };
  report.efficiency = point.Eta;
  App().PropulsionSizingChanged = true;
  return true;
}

std::string Fixed(double v, const char* pattern) { return FormatNumber(v, pattern); }

}  // namespace

PropellerSizingReport ApplyPropellerSizing(clsVXWaterProperties& water, clsVXHull& hull,
                                           clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                           clsVXPropellerSeries& propellerSeries,
                                           clsVXPropellerSizing& sizing,
                                           clsVXSpeedPerformance& speedPerformance) {
  PropellerSizingReport report;
  report.identity = sizing.PropellerSizingIdentity();
  if (report.identity < kSizeByPower || report.identity > kSizeByTotalDrag) {
    report.ok = true;  // no sizing: nothing to do
    return report;
  }
  report.ran = true;
  try {
    report.ok = Size(report, water, hull, propulsion, propeller, propellerSeries, sizing, speedPerformance);
  } catch (const std::exception& e) {
    AddCalcError(std::string("Run-time error: ") + e.what());
    report.errors = GetCalcCause();
    report.ok = false;
  }
  return report;
}

std::string PropellerSizingReportText(const PropellerSizingReport& r, const clsVXUnits& units) {
  std::ostringstream out;
  if (!r.ran) {
    out << "Propeller sizing: no sizing is set (PropellerSizingIdentity \"No sizing\").\n";
    return out.str();
  }
  out << "Propeller sizing " << kPropellerSizingIdentityLabels.labels[static_cast<size_t>(r.identity)]
      << ", design speed " << FormatNumber(r.speed, units.SpeedFormat()) << " "
      << units.Label(UnitFamily::Speed) << " (row " << r.designRow + 1 << ")\n";
  if (r.identity == kSizeByPower)
    out << "  Brake power per propeller  "
        << FormatNumber(units.ConvertUnitPower(r.power, kCurrent, kHp), units.PowerFormat()) << " "
        << units.Label(UnitFamily::Power) << "\n";
  else
    out << "  Thrust per propeller  "
        << FormatNumber(units.ConvertUnitForce(r.thrust, kCurrent, kLbf), units.ForceFormat()) << " "
        << units.Label(UnitFamily::Force) << "\n";
  out << "  Engine RPM  " << Fixed(r.engineRPM, "0.0") << "\n";
  if (!r.ok) {
    out << "  The sizing failed; the propeller is unchanged:\n" << StripControlChars(r.errors, true);
    return out.str();
  }
  std::vector<std::array<std::string, 4>> rows = {{"", "before", "after", ""}};
  for (const SizedQuantity& q : r.quantities) {
    const bool length = q.family == UnitFamily::PropLength;
    const std::string format = length                     ? units.PropLengthFormat()
                               : q.name == "ExpAreaRatio" ? "0.0000"
                               : q.name == "GearRatio"    ? "0.000"
                                                          : "0.0";
    const std::string caption = q.caption + (length ? " [" + units.Label(UnitFamily::PropLength) + "]" : "");
    rows.push_back(
        {caption, FormatNumber(q.before, format), FormatNumber(q.after, format), q.sized ? "sized" : ""});
  }
  size_t w0 = 0, w1 = 0, w2 = 0;
  for (const auto& row : rows) {
    w0 = std::max(w0, row[0].size());
    w1 = std::max(w1, row[1].size());
    w2 = std::max(w2, row[2].size());
  }
  for (const auto& row : rows)
    out << "  " << row[0] << std::string(w0 - row[0].size() + 2, ' ') << std::string(w1 - row[1].size(), ' ')
        << row[1] << "  " << std::string(w2 - row[2].size(), ' ') << row[2] << (row[3].empty() ? "" : "  ")
        << row[3] << "\n";
  out << "  Open-water efficiency  " << Fixed(r.efficiency, "0.0000") << "\n";
  const SizingSummary& s = r.summary;
  out << "  Solver: " << SizingStopText(s.stop) << " after " << s.passes << " passes (tolerance "
      << FormatNumber(s.tolerance, "0.0####") << "), " << s.runs << " runs, " << s.totalPasses
      << " passes in all";
  if (s.gearRatioPasses > 0) out << ", " << s.gearRatioPasses << " steps of the rate search";
  out << "\n";
  if (s.smallMaxDiameter) out << "  The largest diameter is small for the power: taken at once.\n";
  if (s.diameterAtMax) out << "  The diameter is the largest the hull allows.\n";
  for (const std::string& warning : s.warnings) out << "  Warning: " << warning << "\n";
  return out.str();
}

Answer PropellerSizingHooks::Ask(std::string_view title, std::string_view text, bool withCancel,
                                 Answer defaultAnswer) {
  if (title == "Propulsion Sizing") {
    questions.push_back({std::string(title), std::string(text)});
    return Answer::Yes;
  }
  return HeadlessHooks::Ask(title, text, withCancel, defaultAnswer);
}

void PropellerSizingHooks::ShowPropellerSizing() {
  ModelSet& p = App().primary;
  reports.push_back(ApplyPropellerSizing(*p.WaterProperties, *p.Hull, *p.Propulsion, *p.Propeller,
                                         *p.PropellerSeries, *p.PropellerSizing, *p.SpeedPerformance));
}

}  // namespace velmar
