// The rows of the six entry tables. Rows follow the order of the fields in their class; a
// field that two tables show (the rudder location, the displacement) is the same field.
#include "ui/entry_groups.h"

#include <stdexcept>

#include "app/application.h"

namespace velmar {
namespace {

using O = EntryObject;

std::vector<EntryRow> Rows(O object, std::initializer_list<const char*> fields) {
  std::vector<EntryRow> rows;
  for (const char* f : fields) rows.push_back({object, f});
  return rows;
}

std::vector<EntryRow> Join(std::initializer_list<std::vector<EntryRow>> parts) {
  std::vector<EntryRow> rows;
  for (const auto& p : parts) rows.insert(rows.end(), p.begin(), p.end());
  return rows;
}

std::vector<EntryRow> SpeedCells() {
  static const char* const kCells[] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"};
  std::vector<EntryRow> rows;
  for (const char* c : kCells) rows.push_back({O::Speed, c});
  return rows;
}

std::vector<EntryTable> BuildTables() {
  std::vector<EntryTable> t;
  t.push_back({EntryCommand::Condition,
               "Edit: Condition",
               {
                   {"Project",
                    {{O::Project, "FileName", "File name:", true},
                     {O::Project, "Description", "Description:"},
                     {O::Project, "ProjectID", "Project ID:"},
                     {O::Project, "Source", "Source:", true},
                     {O::Project, "LastModified", "Last modified:", true}}},
                   {"Summary",
                    Join({Rows(O::Hull, {"HullConfigType", "HullHydrodynamicDataSet", "HullPropulsorType"}),
                          Rows(O::HullCoefficient, {"CoefBlock", "CoefPrismatic", "CoefLwlBwlRatio",
                                                    "CoefBwlTvolRatio", "CoefLwlVol"})})},
                   {"Water properties", Rows(O::Water, {"WaterDefinitionIndex", "Density", "Viscosity"})},
                   {"Speeds", SpeedCells()},
                   {"Design condition",
                    {{O::Speed, "Design", "Design speed:"},
                     {O::Hull, "Displacement"},
                     {O::Hull, "DraftSubmergedMax"},
                     {O::Water, "Temperature", "Water temperature:"}}},
               }});
  t.push_back({EntryCommand::Hull,
               "Edit: Hull",
               {
                   {"Hull",
                    Join({Rows(O::Hull, {"HullConfigType", "HullHydrodynamicDataSet", "ChineType"}),
                          {{O::Resistance, "HullDragEnabled", "Hull drag:"},
                           {O::Resistance, "HullDragTechnique"},
                           {O::Resistance, "HullDragMethod"},
                           {O::Resistance, "HullDragExpansionDetail"},
                           {O::Resistance, "HullDragFormFactorKMultEnabled"},
                           {O::Resistance, "HullDragCatamaranInterferenceEnabled"}}})},
                   {"General",
                    Rows(O::Hull, {"Displacement", "LengthWL", "BeamWLMax", "DraftSubmergedMax", "DemihullSpacing",
                                   "WettedSurface", "AreaSectMax", "AreaWaterplane", "XBuoyancyFwdTr",
                                   "XAreaWaterplaneFwdTr", "XGravityFwdTr", "ZGravityBelowWL", "RadiusLonglMetacenter",
                                   "PropulsorCountPerHull", "AngleShaftDeg", "PropellerDiameterMax",
                                   "XPropulsorFwdTr", "ZPropulsorBelowWL"})},
                   {"ITTC-78 (CT)",
                    Join({Rows(O::Hull, {"BulbAreaSect", "ZBulbAreaSectBelowWL", "XBulbNoseFwdTr", "AreaSectAtTr",
                                         "BeamWLAtTr", "ImmersionDraftAtTr", "AngleHalfEntDeg", "BowShapeFactor",
                                         "SternShapeFactor"}),
                          Rows(O::ITTC78, {"HullFormFactor", "HullFrictionLine", "CorrelationAllowance",
                                           "HullRoughnessMM"}),
                          {{O::Resistance, "HullDragRoughnessEnabled", "Roughness corr:"},
                           {O::ITTC78, "ModelLengthWL", "Model length on WL:"}}})},
                   {"Planing",
                    Join({Rows(O::Hull, {"LengthProjPlaningBottom", "AreaProjPlaningBottom"}),
                          {{O::Hull, "FwdStationXPositionFwdTr"},
                           {O::Hull, "FwdStationChineBeam", "Fwd chine beam:"},
                           {O::Hull, "FwdStationAngleDeadriseDeg", "Fwd deadrise:"},
                           {O::Hull, "FwdStationZChineHeightBelowWL", "Fwd chine ht below WL:"},
                           {O::Hull, "AftStationXPositionFwdTr"},
                           {O::Hull, "AftStationChineBeam", "Aft chine beam:"},
                           {O::Hull, "AftStationAngleDeadriseDeg", "Aft deadrise:"},
                           {O::Hull, "AftStationZChineHeightBelowWL", "Aft chine ht below WL:"}},
                          Rows(O::Hull, {"TransomLiftDeviceType", "TransomLiftDeviceCount",
                                         "TransomLiftDeviceChordDepth", "TransomLiftDeviceSpan",
                                         "TransomLiftDeviceDeflectionDeg", "PropellerTunnelEffectiveDiameter",
                                         "PropellerTunnelRecessDepth"}),
                          Rows(O::Resistance, {"HullDragPlaningHumpMultiplierEnabled", "HullDragSprayCorrEnabled"})})},
               }});
  t.push_back(
      {EntryCommand::Appendage,
       "Edit: Appendage",
       {
           {"Appendage",
            Join({{{O::Resistance, "AppendageDragEnabled"}, {O::Resistance, "AppendageDragMethod", "Method:"}},
                  Rows(O::Appendage, {"AppendageDefinition", "PercentageHullDrag", "XAppendageFwdTr",
                                      "ZAppendageBelowWL"})})},
           {"Planing influence", Rows(O::Resistance, {"HullDragPlaningPropulsorLiftCorrEnabled"})},
           {"Rudder",
            Join({Rows(O::Appendage, {"RudderCount", "RudderType", "RudderRootChord", "RudderTipChord", "RudderSpan",
                                      "RudderTCRatio", "RudderPlateThickness", "RudderLESweepAngleDeg",
                                      "RudderProjectedArea", "RudderWettedSurface"}),
                  Rows(O::ITTC78, {"RudderLocation"})})},
           {"Skeg/Keel",
            Rows(O::Appendage, {"SkegKeelCount", "SkegKeelType", "SkegMeanLength", "SkegMeanWidth", "SkegHeightAft",
                                "SkegHeightMid", "SkegHeightFwd", "KeelRootChord", "KeelTipChord", "KeelSpan",
                                "KeelTCRatio", "KeelLESweepAngleDeg", "KeelBulbLength", "KeelBulbDiameter",
                                "SkegKeelProjectedArea", "SkegKeelWettedSurface"})},
           {"Shafting",
            Rows(O::Appendage, {"ShaftLength", "ShaftDiameter", "ShaftWettedSurface", "ShaftHullBossingLength",
                                "ShaftHullBossingDiameter", "ShaftHullBossingWettedSurface"})},
           {"Strut (per shaft line)",
            Rows(O::Appendage, {"StrutCount", "StrutRootChord", "StrutTipChord", "StrutSpan", "StrutTCRatio",
                                "StrutProjectedArea", "StrutWettedSurface", "StrutPalmDepth", "StrutPalmWidth",
                                "ShaftStrutBossingLength", "ShaftStrutBossingDiameter",
                                "ShaftStrutBossingWettedSurface"})},
           {"Stabilizer",
            Rows(O::Appendage, {"StabilizerCount", "StabilizerRootChord", "StabilizerTipChord", "StabilizerSpan",
                                "StabilizerTCRatio", "StabilizerLESweepAngleDeg", "StabilizerProjectedArea",
                                "StabilizerWettedSurface", "StabilizerDynamicMultiplier"})},
           {"Bilge keel",
            Rows(O::Appendage, {"BilgeKeelCount", "BilgeKeelMeanLength", "BilgeKeelMeanBaseWidth",
                                "BilgeKeelMeanProjection", "BilgeKeelWettedSurface"})},
           {"Tunnel thruster", Rows(O::Appendage, {"TunnelThrusterCount", "TunnelThrusterDiameter"})},
           {"Sonar dome", Rows(O::Appendage, {"SonarDomeCount", "SonarDomeWettedSurface"})},
           {"Miscellaneous", Rows(O::Appendage, {"MiscAppendageCount", "MiscAppendageDragArea", "MiscAppendageDragCoef"})},
       }});
  t.push_back({EntryCommand::Environment,
               "Edit: Environment",
               {
                   {"Wind",
                    Join({{{O::Resistance, "WindDragEnabled"}, {O::Resistance, "WindDragMethod", "Method:"}},
                          Rows(O::Environment, {"WindSpeed", "WindAngleOffBowDeg", "WindGradientCorr",
                                                "WindLengthOverall", "WindXAreaFwdMidship", "WindProfilePerimeter",
                                                "WindMastGroupCount", "WindVesselType", "WindDataSet"})})},
                   {"Exposed hull",
                    Rows(O::Environment, {"WindHullProfileArea", "WindHullTransverseArea", "WindHullZAreaAboveWL"})},
                   {"Superstructure",
                    Rows(O::Environment, {"WindSuperstructureProfileArea", "WindSuperstructureTransverseArea",
                                          "WindSuperstructureZAreaAboveWL", "WindSuperstructureHeightAboveWL",
                                          "WindSuperstructureShape"})},
                   {"Seas",
                    Join({{{O::Resistance, "SeasDragEnabled"}, {O::Resistance, "SeasDragMethod", "Method:"}},
                          Rows(O::Environment, {"SeasSignificantWaveHeight", "SeasModalWavePeriodSec",
                                                "SeasWaveAngleOffBowDeg", "SeasLengthBowWL",
                                                "SeasRadiusGyrationPitchRatio", "SeasBeaufortNumber",
                                                "SeasLoadingCondition"})})},
                   {"Shallow/channel",
                    Join({{{O::Resistance, "ChannelDragEnabled"}, {O::Resistance, "ChannelDragMethod", "Method:"}},
                          Rows(O::Environment, {"ShallowWaterType", "ShallowWaterDepth", "ShallowWaterChannelWidth",
                                                "ShallowWaterChannelSideSlopeAngleDeg",
                                                "ShallowWaterChannelHullGirth"})})},
               }});
  t.push_back({EntryCommand::Margin,
               "Edit: Margin",
               {{"Margin", Rows(O::Resistance, {"MarginDragEnabled", "MarginDragBasis", "MarginDragPercentage"})}}});
  t.push_back(
      {EntryCommand::Propulsor,
       "Edit: Propulsor",
       {
           {"Propulsor",
            Join({Rows(O::Propulsion, {"PropulsorCalcType"}),
                  {{O::Propulsion, "PropulsionInteractionEnabled", "Interaction:"},
                   {O::Propulsion, "PropulsionInteractionTechnique"},
                   {O::Propulsion, "PropulsionInteractionMethod"}},
                  Rows(O::PropellerSeries, {"Series"}),
                  Rows(O::Propeller, {"PropellerType", "BladeCount", "ExpAreaRatio", "Diameter", "PitchMean",
                                      "HubDiameter", "HubImmersion", "Chord07R", "TCRatio07R", "BladeRoughnessMM",
                                      "CupDrop"}),
                  Rows(O::PropellerSeries, {"NozzleLengthDiameterRatio"})})},
           {"Engine/gear",
            Join({{{O::Propulsion, "EngineFileIndex", "", true},
                   {O::Engine, "Description", "", true},
                   {O::Engine, "MaxRatedRPM", "", true},
                   {O::Engine, "MaxRatedPower", "", true}},
                  Rows(O::Propulsion, {"AnalysisTypeMethod", "FixedEngineRPM", "GearRatio", "GearEfficiency",
                                       "ShaftEfficiency", "CPPMethod", "AddedMassMult", "EngineControlEnabled",
                                       "EngineLimitToRPMPerSec"})})},
           {"Propeller options",
            Join({Rows(O::Propulsion, {"ViscousScaleCorrEnabled", "DuctedPropCorrEnabled", "PropellerTunnelCorrEnabled",
                                       "CavCriteriaMethod", "AngleRiseOfRunDeg"}),
                  Rows(O::PropellerSeries, {"ScaleCorrection", "CavBreakdownEnabled", "ObliqueAngleCorrEnabled",
                                            "KTMultiplier", "KQMultiplier", "KTKQCorrection"}),
                  Rows(O::PropellerSizing, {"PropellerSizingIdentity", "ReferenceThrustPerPropeller",
                                            "ReferenceThrustDesignPoint", "ReferencePowerBrakePerPropeller",
                                            "ReferencePowerDesignPoint", "ReferenceEngineRPM",
                                            "ReferenceEngineRPMDesignPoint"})})},
       }});
  return t;
}

}  // namespace

const std::vector<EntryTable>& EntryTables() {
  static const std::vector<EntryTable> tables = BuildTables();
  return tables;
}

const EntryTable& EntryTableOf(EntryCommand command) {
  for (const EntryTable& t : EntryTables())
    if (t.command == command) return t;
  throw std::out_of_range("no entry table");
}

DataClass* EntryClass(const ModelSet& s, EntryObject object) {
  switch (object) {
    case O::Water:
      return s.WaterProperties.get();
    case O::Hull:
      return s.Hull.get();
    case O::Appendage:
      return s.Appendage.get();
    case O::Environment:
      return s.Environment.get();
    case O::ITTC78:
      return s.ITTC78.get();
    case O::Resistance:
      return s.Resistance.get();
    case O::Propulsion:
      return s.Propulsion.get();
    case O::Propeller:
      return s.Propeller.get();
    case O::PropellerSeries:
      return s.PropellerSeries.get();
    case O::PropellerSizing:
      return s.PropellerSizing.get();
    case O::Engine:
      return s.Engine.get();
    case O::Project:
    case O::HullCoefficient:
    case O::Speed:
      return nullptr;
  }
  return nullptr;
}

bool IsPropulsionData(EntryObject object) {
  switch (object) {
    case O::Propulsion:
    case O::Propeller:
    case O::PropellerSeries:
    case O::PropellerSizing:
    case O::Engine:
      return true;
    default:
      return false;
  }
}

}  // namespace velmar
