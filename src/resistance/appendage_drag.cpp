// Appendage drag by percentage and by the Holtrop component method.
#include "resistance/appendage_drag.h"

#include <iterator>
#include <tuple>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "resistance/friction.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

// The flow at the row: friction line and correlation allowance of the hull, dynamic
// pressure 0.5 rho V^2 (lbf/ft2), speed (ft/s) and density (slug/ft3).
struct Flow {
  double cf, ca, q, v, rho;
};

using Kind = AppendageRun::Kind;

// One kind of appendage of the component method. A kind with a form factor adds
// (CF (1+k2) + CA) q S with S its total wetted surface in ft2; the others read their inputs
// (readOwn) and give their own drag from them.
struct Component {
  const char* name;
  bool (*present)(const clsVXAppendage&);
  double (*formFactor)(const clsVXAppendage&);
  double (*surfaceFt2)(const clsVXAppendage&);
  void (*readOwn)(const clsVXAppendage&, Kind&) = nullptr;
  double (*ownDrag)(const Kind&, const Flow&) = nullptr;
};

// The shaft count belongs to the hull, whose read check takes a count below 1 as missing and
// pushes its word on the hull's stack. For the appendages no shafts is legal, and that word
// would stop the hull drag method at the next speed; so the stored count is read as it is.
int Shafts(const clsVXAppendage& a) {
  if (!a.Hull()) return a.PropulsorCountPerHull();
  return static_cast<int>(a.Hull()->Raw(FieldId(clsVXHull::Field::PropulsorCountPerHull)));
}
bool HasShafts(const clsVXAppendage& a) { return Shafts(a) > 0; }
// Whether there are appendages of a kind: its count as stored. A count of 0 is legal here, so
// the word its read check would push is no error; the step clears the appendage's stack at its
// end, and nothing reads the stack before.
template <clsVXAppendage::Field kCount>
bool Has(const clsVXAppendage& a) {
  return static_cast<int>(a.Raw(FieldId(kCount))) > 0;
}
using AF = clsVXAppendage::Field;
double Fixed(AppendageFormFactorKind k) { return AppendageFormFactor(k); }

// In the order of the sum (it fixes the rounding of the total).
const Component kComponents[] = {
    {"Shafting", HasShafts,
     [](const clsVXAppendage& a) { return AppendageFormFactorShaft(a.AngleShaftDeg()); },
     [](const clsVXAppendage& a) { return a.ShaftWettedSurface(kFt2) * Shafts(a); }, nullptr},
    {"Strut bossing", HasShafts,
     [](const clsVXAppendage&) { return Fixed(AppendageFormFactorKind::Bossing); },
     [](const clsVXAppendage& a) { return a.ShaftStrutBossingWettedSurface(kFt2) * Shafts(a); }, nullptr},
    {"Hull bossing", HasShafts, [](const clsVXAppendage&) { return Fixed(AppendageFormFactorKind::Bossing); },
     [](const clsVXAppendage& a) { return a.ShaftHullBossingWettedSurface(kFt2) * Shafts(a); }, nullptr},
    {"Struts", [](const clsVXAppendage& a) { return Has<AF::StrutCount>(a) && HasShafts(a); },
     [](const clsVXAppendage&) { return Fixed(AppendageFormFactorKind::Strut); },
     [](const clsVXAppendage& a) {
       return (a.StrutPalmWidth(kFt) * a.StrutPalmDepth(kFt) + a.StrutWettedSurface(kFt2)) * a.StrutCount() *
              Shafts(a);
     },
     nullptr},
    {"Rudders", Has<AF::RudderCount>,
     [](const clsVXAppendage& a) { return AppendageFormFactorRudder(a.RudderType()); },
     [](const clsVXAppendage& a) { return a.RudderWettedSurface(kFt2) * a.RudderCount(); }, nullptr},
    {"Skegs and keels", Has<AF::SkegKeelCount>,
     [](const clsVXAppendage& a) { return AppendageFormFactorSkegKeel(a.SkegKeelType()); },
     [](const clsVXAppendage& a) { return a.SkegKeelWettedSurface(kFt2) * a.SkegKeelCount(); }, nullptr},
    {"Stabilizers", Has<AF::StabilizerCount>,
     [](const clsVXAppendage& a) { return AppendageFormFactorStabilizer(a.StabilizerDynamicMultiplier()); },
     [](const clsVXAppendage& a) { return a.StabilizerWettedSurface(kFt2) * a.StabilizerCount(); }, nullptr},
    {"Bilge keels", Has<AF::BilgeKeelCount>,
     [](const clsVXAppendage&) { return Fixed(AppendageFormFactorKind::BilgeKeel); },
     [](const clsVXAppendage& a) { return a.BilgeKeelWettedSurface(kFt2) * a.BilgeKeelCount(); }, nullptr},
    {"Tunnel thrusters", Has<AF::TunnelThrusterCount>, nullptr, nullptr,
     [](const clsVXAppendage& a, Kind& in) {
       in.x = a.TunnelThrusterDiameter(kFt);
       in.count = a.TunnelThrusterCount();
     },
     [](const Kind& in, const Flow& f) { return CalcTunnelThrusterDrag(f.v, f.rho, in.x) * in.count; }},
    {"Sonar domes", Has<AF::SonarDomeCount>,
     [](const clsVXAppendage&) { return Fixed(AppendageFormFactorKind::SonarDome); },
     [](const clsVXAppendage& a) { return a.SonarDomeWettedSurface(kFt2) * a.SonarDomeCount(); }, nullptr},
    {"Miscellaneous", Has<AF::MiscAppendageCount>, nullptr, nullptr,
     [](const clsVXAppendage& a, Kind& in) {
       in.x = a.MiscAppendageDragCoef();
       in.y = a.MiscAppendageDragArea(kFt2);
       in.count = a.MiscAppendageCount();
     },
     [](const Kind& in, const Flow& f) { return f.q * in.x * in.y * in.count; }},
};

bool AppendagePercentage(double& drag, clsVXAppendage& appendage, clsVXSpeedPerformance& sp, int row) {
  SetCalcLocation("Percentage appendage drag prediction");
  const double hullDrag = sp.DragBareHullIndividual(row, kLbf);
  if (sp.ErrorsFound()) {
    AddCalcErrors(sp.Errors());
    return false;
  }
  const double percentage = appendage.PercentageHullDrag();
  drag = percentage > 0.0 ? 0.01 * percentage * hullDrag : 0.0;
  appendage.ClearErrorStack();
  return true;
}

static_assert(std::size(kComponents) == std::tuple_size_v<decltype(AppendageRun::kinds)>);

// The kinds of appendage as they stand: present, form factor and surface, or own inputs.
void ReadComponents(const clsVXAppendage& appendage, AppendageRun& run) {
  run.presentCount = 0;
  for (size_t i = 0; i < std::size(kComponents); ++i) {
    const Component& c = kComponents[i];
    Kind& kind = run.kinds[i];
    kind = Kind{};
    kind.present = c.present(appendage);
    if (!kind.present) continue;
    run.present[static_cast<size_t>(run.presentCount++)] = static_cast<unsigned char>(i);
    if (c.readOwn) {
      c.readOwn(appendage, kind);
    } else {
      kind.k = c.formFactor(appendage);
      kind.S = c.surfaceFt2(appendage);
    }
  }
  run.read = true;
}

// The sum over the kinds; `read` is the run's (`single` false) or a single row's own.
bool ComponentSum(double& drag, clsVXWaterProperties& water, clsVXAppendage& appendage,
                  clsVXSpeedPerformance& sp, int row, AppendageRun& read, bool single) {
  SetCalcLocation("Holtrop Form Factor appendage drag prediction");
  // The water and the appendages do not change within a run: a run reads them at its first
  // row. A later row still looks at the water's error stack, where a word another step has
  // pushed since stops it as a fresh reading would.
  const bool reuse = !single && read.read;
  const double rho = reuse ? read.rho : water.Density(kSlugPerFt3);
  if (water.ErrorsFound()) {
    AddCalcErrors(water.Errors());
    return false;
  }
  // The caller of a run has read the row's speed already; its check passed then.
  const double v = single ? sp.Speed(row, kFtPerSec) : read.speed;
  const double rn = sp.CoefReynoldsLength(row);
  const double ca = sp.CoefDragBareHullCorrAllowance(row);
  if (sp.ErrorsFound()) {
    AddCalcErrors(sp.Errors());
    return false;
  }
  const Flow flow{single ? CalcFrictionITTC57(rn) : read.shipFriction.At(rn), ca, 0.5 * rho * v * v, v, rho};
  if (!reuse) {
    ReadComponents(appendage, read);
    read.rho = rho;
  }
  double sum = 0.0;
  for (int j = 0; j < read.presentCount; ++j) {
    const size_t i = read.present[static_cast<size_t>(j)];
    const Kind& kind = read.kinds[i];
    sum += kComponents[i].ownDrag ? kComponents[i].ownDrag(kind, flow)
                                  : (flow.cf * kind.k + flow.ca) * flow.q * kind.S;
  }
  drag = sum;
  // Counts of 0 and missing sizes of absent appendages have pushed their words; they are no
  // error here.
  appendage.ClearErrorStack();
  return true;
}

// A row of a run takes the run's appendages; a single row reads its own.
bool AppendageHoltropComponent(double& drag, clsVXWaterProperties& water, clsVXAppendage& appendage,
                               clsVXSpeedPerformance& sp, int row, AppendageRun* run) {
  if (run) return ComponentSum(drag, water, appendage, sp, row, *run, false);
  AppendageRun once;
  return ComponentSum(drag, water, appendage, sp, row, once, true);
}

}  // namespace

bool CalcAppendageDrag(double& drag, clsVXWaterProperties& water, clsVXHull& /*hull*/,
                       clsVXAppendage& appendage, clsVXITTC78Expansion& /*ittc78*/,
                       clsVXResistance& resistance, clsVXSpeedPerformance& speedPerformance, int row,
                       AppendageRun* run) {
  drag = 0.0;
  // The methods run under this guard, which reports a fault as their own guards would.
  return RunGuarded([&] {
    const int method = resistance.AppendageDragMethod();
    switch (method) {
      case kAppendagePercentage:  // each method sets its own location
        return AppendagePercentage(drag, appendage, speedPerformance, row);
      case kAppendageHoltropComponent:
        return AppendageHoltropComponent(drag, water, appendage, speedPerformance, row, run);
      default:
        // The location text names the wind drag, as the program always has. Only the ids,
        // labels and parameter ranges of the other methods are part of the program.
        SetCalcLocation("wind drag prediction");
        AddCalcError("Appendage drag method not available: " + resistance.AppendageDragMethodLabel(method));
        return false;
    }
  });
}

bool CalcAppendagePercentage(double& drag, clsVXAppendage& appendage, clsVXSpeedPerformance& speedPerformance,
                             int row) {
  return RunGuarded([&] { return AppendagePercentage(drag, appendage, speedPerformance, row); });
}

bool CalcAppendageHoltropComponent(double& drag, clsVXWaterProperties& water, clsVXAppendage& appendage,
                                   clsVXSpeedPerformance& speedPerformance, int row, AppendageRun* run) {
  return RunGuarded(
      [&] { return AppendageHoltropComponent(drag, water, appendage, speedPerformance, row, run); });
}

double CalcTunnelThrusterDrag(double speed, double density, double diameter) {
  return 0.5 * density * speed * speed * (2.0 * 0.0075 * Pi) * diameter * diameter;
}

double AppendageFormFactor(AppendageFormFactorKind kind) {
  switch (kind) {
    case AppendageFormFactorKind::Stabilizer:
      return 2.8;
    case AppendageFormFactorKind::BilgeKeel:
      return 1.4;
    case AppendageFormFactorKind::Bossing:
      return 3.5;
    case AppendageFormFactorKind::Other:
      return 2.0;
    case AppendageFormFactorKind::Strut:
      return 4.0;
    case AppendageFormFactorKind::SonarDome:
      return 2.7;
  }
  return 2.0;
}

double AppendageFormFactorShaft(double angleShaftDeg) {
  return 1.2 - 0.03 * angleShaftDeg + 0.011 * angleShaftDeg * angleShaftDeg;
}

double AppendageFormFactorRudder(int rudderType) {
  switch (rudderType) {
    case 1:
      return 3.5;  // balanced plate
    case 2:
      return 1.35;  // aft of skeg
    case 3:
      return 1.5;  // aft of stern
    default:
      return 2.5;  // balanced foil and any other
  }
}

double AppendageFormFactorSkegKeel(int skegKeelType) { return skegKeelType == 0 ? 1.75 : 2.8; }

double AppendageFormFactorStabilizer(double dynamicMultiplier) {
  const double f = AppendageFormFactor(AppendageFormFactorKind::Stabilizer);
  return dynamicMultiplier > 1.0 ? f * dynamicMultiplier : f;
}

}  // namespace velmar
