// The engine check before a fuel prediction and the fuel rate of one running point.
#include "propulsion/engine_fuel.h"

#include <array>
#include <cmath>
#include <exception>
#include <stdexcept>

#include "core/diagnostics.h"
#include "core/ui_hooks.h"

namespace velmar {

namespace {

constexpr const char* kCheckTitle = "Engine Data Check";
constexpr const char* kNoRatedPower =
    "The engine performance data requires a rated point. The calculation cannont proceed without a valid "
    "max rated power.";
constexpr const char* kNoRatedRPM =
    "The engine performance data requires a rated point. The calculation cannont proceed without a valid "
    "max rated RPM.";
constexpr const char* kShortMaxPower =
    "The engine performance data requires atleast 2 performance points. The calculation cannont proceed "
    "without valid power and RPM data.";
constexpr const char* kShortDefinedLoad =
    "The engine defined load data requires atleast 2 performance points. The calculation cannont proceed "
    "without valid power and RPM data.";
constexpr const char* kBadMaxPowerPoints =
    "The engine performance data requires all performance points to have a positive value for RPM, power, "
    "and fuel rate. The invalid engine performance data will be removed. Do you wish to continue?";
constexpr const char* kBadDefinedLoadPoints =
    "The engine defined load data requires all performance points to have a positive value for RPM, power, "
    "and fuel rate. The invalid defined load data will be removed. Do you wish to continue?";

using Curve = clsVXEngine::Curve;

// The RPM, power and fuel lists of one curve, which follow each other in clsVXEngine::Curve.
Curve List(Curve rpmList, int k) { return static_cast<Curve>(static_cast<int>(rpmList) + k); }

// Checks the points of one curve (given by its RPM list); when a point has an RPM or power
// not above 0 or a negative fuel rate, asks whether to go on. On Yes the points whose power
// is not above 0 or whose RPM is exactly 0 are dropped: the good ones are copied in order to
// work arrays of a full curve's length, which then replace the three lists (zeros past the
// new count), and the count is stored. False on No.
bool CheckCurvePoints(clsVXEngine& engine, Curve rpmList, const char* question, bool& asked) {
  const int n = engine.CurveCount(rpmList);
  bool bad = false;
  for (int i = 0; i < n; ++i) {
    const double rpm = engine.CurveValue(rpmList, i), power = engine.CurveValue(List(rpmList, 1), i);
    if (!(rpm > 0.0) || !(power > 0.0) || engine.CurveValue(List(rpmList, 2), i) < 0.0) bad = true;
  }
  if (!bad) return true;
  asked = true;
  if (Hooks().Ask(kCheckTitle, question, false, Answer::Yes) != Answer::Yes) return false;

  std::array<std::array<double, kEngineCurvePoints>, 3> work{};
  int kept = 0;
  for (int i = 0; i < n; ++i) {
    if (!(engine.CurveValue(List(rpmList, 1), i) > 0.0) || engine.CurveValue(rpmList, i) == 0.0) continue;
    for (int k = 0; k < 3; ++k) work[k][kept] = engine.CurveValue(List(rpmList, k), i);
    ++kept;
  }
  for (int k = 0; k < 3; ++k)
    for (int i = 0; i < kEngineCurvePoints; ++i) engine.CurveValue(List(rpmList, k), i, kCurrent, work[k][i]);
  rpmList == Curve::MaxPowerRPM ? engine.MaxPowerCount(kept) : engine.DefinedLoadCount(kept);
  return true;
}

}  // namespace

namespace {

// `asked`: a curve had bad points, so the check asked about them.
bool CheckEngine(clsVXEngine& engine, bool& asked) {
  if (engine.Description().empty()) engine.Description("Untitled Engine Object");
  bool ok = true;
  auto fail = [&ok](const char* text) {
    Hooks().ShowMessage(kCheckTitle, text, 0);
    ok = false;
  };
  try {
    if (!(engine.MaxRatedPower(kCurrent) > 0.0)) fail(kNoRatedPower);
    if (!(engine.MaxRatedRPM() > 0.0)) fail(kNoRatedRPM);
    if (!(engine.MaxPowerCount() > 1)) fail(kShortMaxPower);
    const int loadCount = engine.DefinedLoadCount();
    if (loadCount > 0 && !(loadCount > 1)) fail(kShortDefinedLoad);
    if (!CheckCurvePoints(engine, Curve::MaxPowerRPM, kBadMaxPowerPoints, asked)) ok = false;
    if (!CheckCurvePoints(engine, Curve::DefinedLoadRPM, kBadDefinedLoadPoints, asked)) ok = false;
  } catch (const std::exception&) {
    return false;
  }
  return ok;
}

}  // namespace

bool CheckEngineData(clsVXEngine& engine) {
  bool asked = false;
  return CheckEngine(engine, asked);
}

// Two ways to the rate. With no defined-load curve (at most two points) the specific
// consumption at this RPM on the maximum-power curve is scaled linearly to the power. With a
// defined-load curve its rate at the power is taken, and blended towards the rate of the
// maximum-power curve where the running point lies off the defined curve on the side of the
// power limit by more than a tenth of its RPM.
bool CalcEngineFuelRate(double& rate, clsVXEngine& engine, double rpm, double power, int fuelRateIndex,
                        int powerIndex, int analysisTypeMethod, EngineCurveLists* lists) {
  SetCalcLocation("Calculating engine fuel consumption");
  try {
    // A check that passed cleanly is not repeated within the run: the engine has not changed.
    if (!(lists && lists->checked)) {
      bool asked = false;
      if (!CheckEngine(engine, asked)) {
        AddCalcError("Engine data is not fully defined");
        return false;
      }
      if (lists && !asked) lists->checked = true;
    }

    if (!(engine.DefinedLoadCount() > 2)) {
      const double pmax = engine.GetMaxPowerFromRPM(rpm, powerIndex, lists);
      const double fmax = engine.GetFuelRateFromMaxPowerRPM(rpm, fuelRateIndex, lists);
      if (analysisTypeMethod == 1 || analysisTypeMethod == 3) {
        // Towing and acceleration divide without a guard: no power at the top of the map is
        // a fault of the calculation.
        if (pmax == 0.0) {
          AddCalcError(power * fmax == 0.0 ? "Overflow" : "Division by zero");
          return false;
        }
        rate = power * fmax / pmax;
      } else {
        rate = pmax > 0.0 ? (fmax / pmax) * power : -1.0;
      }
    } else {
      rate = engine.GetFuelRateFromDefinedLoadPower(power, fuelRateIndex, kCurrent, lists);
      if (!(power > engine.MaxPowerPower(engine.MaxPowerCount() - 1, kCurrent))) {
        const double r1 = engine.GetRPMFromDefinedLoadPower(power, powerIndex, lists);
        const double r2 = engine.GetRPMFromMaxPower(power, powerIndex, lists);
        const double f2 = engine.GetFuelRateFromMaxPowerRPM(r2, fuelRateIndex, lists);
        const double gap = std::fabs(r2 - r1);
        if (gap > 0.1 * rpm && r1 > r2) {
          if (rpm < r2) rate = f2;
          // The rate moves from the defined curve's at R1 to F2 at the power limit R2 with the
          // cube of the distance from R1.
          if (rate > 0.0 && r1 > 0.0 && r2 > 0.0 && f2 > 0.0 && gap > 0.0) {
            const double k = (f2 / rate - 1.0) / std::pow(gap, 3.0);
            rate = (1.0 + k * std::pow(std::fabs(rpm - r1), 3.0)) * rate;
          }
        }
      }
    }

    if (!(rate > 0.0)) rate = -1.0;
    return true;
  } catch (const std::out_of_range&) {
    AddCalcError("Subscript out of range");
  } catch (const std::exception& e) {
    AddCalcError(e.what());
  }
  return false;
}

}  // namespace velmar
