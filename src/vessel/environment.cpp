// Environment data and the channel geometry.
#include "vessel/environment.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/constants.h"

namespace velmar {

const LabelList kWindGradientCorrLabels = {{"Off", "On"}, {"Off", "On"}};
const LabelList kWindSuperstructureShapeLabels = {
    {"Box/Flat front", "Tanker/Bulker", "Container ship", "Cruise ship", "Cargo ship", "Combatant",
     "Motor yacht", "Ferry/Liner"},
    {"BoxFlat", "TankerBulker", "ContainerShip", "CruiseShip", "CargoShip", "Combatant", "MotorYacht",
     "FerryLiner"}};
const LabelList kShallowWaterTypeLabels = {{"Shallow water", "Restricted channel"},
                                           {"ShallowWater", "RestrictedChannel"}};
// clang-format off
const LabelList kWindVesselTypeLabels = Keyed({
    {"Car carrier", "CarCarrier"},
    {"Cargo vessel, loaded", "CargoVesselLoaded"},
    {"Cargo vessel, containers on deck", "CargoVesselContainers"},
    {"Container ship, loaded", "ContainerShipLoaded"},
    {"Destroyer", "Destroyer"},
    {"Diving support vessel", "DivingSupportVessel"},
    {"Drilling vessel", "DrillingVessel"},
    {"Ferry", "Ferry"},
    {"Fishing vessel", "FishingVessel"},
    {"LNG tanker", "LNGTanker"},
    {"Offshore supply vessel", "OffshoreSupplyVessel"},
    {"Passenger liner", "PassengerLiner"},
    {"Research vessel", "ResearchVessel"},
    {"Speed boat", "SpeedBoat"},
    {"Tanker, loaded", "TankerLoaded"},
    {"Tanker, ballast", "TankerBallast"},
    {"Tender", "Tender"},
});
const LabelList kWindDataSetLabels = Keyed({
    {"Tanker 280 kDWT, conventional bow, ballast", "TankerConventionalBallast"},
    {"Tanker 280 kDWT, conventional bow, laden", "TankerConventionalLaden"},
    {"Tanker 280 kDWT, spherical bow, ballast", "TankerSphericalBallast"},
    {"Container ship 6800 TEU, ballast, no containers", "ContainerBallastNoContainers"},
    {"Container ship 6800 TEU, laden with containers", "ContainerLadenContainers"},
    {"Container ship 6800 TEU, laden, lashing only", "ContainerLadenLashing"},
    {"Container ship 6800 TEU, ballast, lashing only", "ContainerBallastLashing"},
    {"Car carrier", "CarCarrier"},
    {"Cruise ferry", "CruiseFerry"},
    {"General cargo", "GeneralCargo"},
    {"Handy-size bulk carrier, heavy ballast, no cranes", "BulkHeavyBallastNoCranes"},
    {"Handy-size bulk carrier, ballast, no cranes", "BulkBallastNoCranes"},
    {"Handy-size bulk carrier, heavy ballast, cranes", "BulkHeavyBallastCranes"},
    {"Handy-size bulk carrier, ballast, cranes", "BulkBallastCranes"},
    {"LNG carrier, prismatic, extended deck", "LNGPrismaticExtendedDeck"},
    {"LNG carrier, spherical tanks", "LNGSpherical"},
    {"LNG carrier, prismatic, integrated", "LNGPrismaticIntegrated"},
    {"Multi-purpose carrier, partial containers", "MultiPurposePartialContainers"},
    {"Multi-purpose carrier, containers", "MultiPurposeContainers"},
});
// clang-format on
const LabelList kSeasLoadingConditionLabels =
    Keyed({{"Laden or normal", "Laden"}, {"Ballast", "Ballast"}, {"Container ship", "ContainerShip"}});

namespace {
const FieldDesc kEnvironmentFields[] = {
#include "core/fields_table.h"
#include "vessel/environment_fields.def"
};

constexpr std::array<SeaStateProposal, 8> kSeaStates = {{
    {"Sea state 2", 1.0, 6.3},
    {"Sea state 3", 2.9, 7.5},
    {"Sea state 4", 6.2, 8.8},
    {"Sea state 5", 10.7, 9.7},
    {"Sea state 6", 16.4, 12.4},
    {"Sea state 7", 24.6, 15.0},
    {"Sea state 8", 37.7, 16.4},
    {"Sea state 9", 45.6, 20.0},
}};

// Side slopes of 90 degrees or more are vertical walls; slopes below 30 degrees are taken as
// 30, which also keeps tan and sin away from zero.
constexpr double kVerticalSlopeDeg = 90.0;
constexpr double kMinSlopeDeg = 30.0;
}  // namespace

std::span<const SeaStateProposal> SeaStateProposals() { return kSeaStates; }

clsVXEnvironment::clsVXEnvironment(std::shared_ptr<clsVXUnits> units,
                                   std::shared_ptr<clsVXWaterProperties> water)
    : DataClass(kEnvironmentFields, std::move(units)), water_(std::move(water)) {}

void clsVXEnvironment::SetLinkedClasses(std::shared_ptr<clsVXUnits> units,
                                        std::shared_ptr<clsVXWaterProperties> water) {
  Units(std::move(units));
  water_ = std::move(water);
}

std::shared_ptr<clsVXEnvironment> clsVXEnvironment::CopyClass() const {
  auto copy = std::make_shared<clsVXEnvironment>(Units(), water_);
  copy->CopyDataFrom(*this);
  return copy;
}

// The bottom width b of the trapezoid is not limited here: a narrow, deep channel with
// gentle sides yields a small or even negative area, as the drag methods expect.
double clsVXEnvironment::CalcChannelAreaSect(int unit) const {
  const double h = ShallowWaterDepth(kM);
  const double w = ShallowWaterChannelWidth(kM);
  const double a = std::max(ShallowWaterChannelSideSlopeAngleDeg(), kMinSlopeDeg);
  double area;
  if (a < kVerticalSlopeDeg) {
    const double b = w - 2.0 * h / std::tan(a * DegToRad);
    area = h * 0.5 * (w + b);
  } else {
    area = h * w;
  }
  return Units()->ConvertUnitArea(area, unit, kM2);
}

double clsVXEnvironment::CalcChannelGirth(int unit) const {
  const double h = ShallowWaterDepth(kM);
  const double w = ShallowWaterChannelWidth(kM);
  const double a = std::max(ShallowWaterChannelSideSlopeAngleDeg(), kMinSlopeDeg);
  if (a < kVerticalSlopeDeg) {
    const double b = std::max(0.0, w - 2.0 * h / std::tan(a * DegToRad));
    return Units()->ConvertUnitLength(b + 2.0 * h / std::sin(a * DegToRad), unit, kM);
  }
  return Units()->ConvertUnitArea(2.0 * h + w, unit, kM2);
}

}  // namespace velmar
