// The results sections: analysis parameters, the prediction method check, the result tables
// of resistance and propulsion, the marks' legend and the symbols. The columns, their
// grouping captions and the cases where a column does not apply are tables below; texts,
// symbols, units and numbers come from the model classes.
#include <algorithm>
#include <stdexcept>

#include "core/format.h"
#include "core/project.h"
#include "core/speed_performance.h"
#include "core/units.h"
#include "core/water.h"
#include "propulsion/propeller.h"
#include "propulsion/propulsion_settings.h"
#include "reports/report_sections.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "validation/method_expert.h"
#include "vessel/hull.h"

namespace velmar {
namespace {

using SP = clsVXSpeedPerformance;

// When a column means something; otherwise its cells show "---".
enum class Applies : unsigned char {
  Always,
  ControllablePitch,   // a CPP
  Towing,              // analysis type Towing
  Acceleration,        // analysis type Acceleration
  AlignedHullDrag,     // hull drag by aligned prediction
  AlignedInteraction,  // interaction by aligned prediction
  Propeller,           // any propulsor but a waterjet
};

constexpr int kTechniqueAligned = 1;
constexpr int kAnalysisTowing = 1, kAnalysisAcceleration = 3;
constexpr int kPropellerCPP = 1;
constexpr int kPropulsorWaterjet = 3;
constexpr int kHydroPlaning = 2;
constexpr int kCalc = 1;

struct ColumnSpec {
  const char* name;
  const char* unit = nullptr;    // unit text instead of the family's ("[RPM]")
  const char* format = nullptr;  // format instead of the column's
  Applies applies = Applies::Always;
};
struct GroupSpec {
  const char* caption;
  std::vector<ColumnSpec> columns;
};
using TableSpec = std::vector<GroupSpec>;
struct ResultsSpec {
  const char* title;
  std::vector<TableSpec> tables;
};

const TableSpec& ResistancePowerTable() {
  static const TableSpec t = {{"RESISTANCE AND EFFECTIVE POWER",
                               {{"Speed"},
                                {"DragBareHull"},
                                {"DragAppendages"},
                                {"DragWind"},
                                {"DragSeas"},
                                {"DragChannel"},
                                {"DragMargin"},
                                {"DragTotal"},
                                {"PowerEffectiveBareHull"},
                                {"PowerEffectiveTotal"}}}};
  return t;
}

const ResultsSpec& ResultsCt() {
  static const ResultsSpec s = {
      "Prediction results",
      {{{"SPEED COEFS", {{"Speed"}, {"CoefFroudeLength"}, {"CoefFroudeVolume"}, {"CoefReynoldsLength"}}},
        {"ITTC-78 COEFS",
         {{"CoefDragBareHullFriction"},
          {"CoefDragBareHullViscous", nullptr, "0.000000"},
          {"CoefDragBareHullResiduary"},
          {"CoefDragBareHullRoughness"},
          {"CoefDragBareHullCorrAllowance"},
          {"CoefDragBareHull"}}}},
       ResistancePowerTable(),
       {{"OTHER",
         {{"Speed"},
          {"CoefDragBareHullResiduaryTelfer"},
          {"CoefDragBareHullTelfer"},
          {"CoefDragBareHullWeightRatio"},
          {"CoefDragBareHullResiduaryAlignmentMultiplier", nullptr, nullptr, Applies::AlignedHullDrag}}}}}};
  return s;
}

const ResultsSpec& ResultsPlaning() {
  static const ResultsSpec s = {
      "Prediction results",
      {{{"SPEED COEFS", {{"Speed"}, {"CoefFroudeVolume"}, {"CoefFroudeChineBeam"}, {"CoefReynoldsLength"}}},
        {"PLANING COEFS",
         {{"CoefDragBareHullFriction"},
          {"DynamicTrimDeg", "[deg]"},
          {"CoefPlaningLkeelLpRatio"},
          {"CoefPlaningLift", nullptr, "0.000"},
          {"CoefPlaningHumpSpeedMultiplier", nullptr, "0.000"},
          {"CoefDragBareHull", nullptr, "0.000000"},
          {"DynamicZGravityBelowWL", nullptr, "0.00"}}}},
       ResistancePowerTable(),
       {{"OTHER",
         {{"Speed"},
          {"CoefDragBareHullWeightRatio"},
          {"CoefDragBareHullResiduaryAlignmentMultiplier", nullptr, nullptr, Applies::AlignedHullDrag}}}}}};
  return s;
}

const ResultsSpec& ResultsSystem() {
  static const ResultsSpec s = {
      "Prediction results [System]",
      {{{"HULL-PROPULSOR",
         {{"Speed"}, {"PowerEffectiveTotal"}, {"WakeFraction"}, {"ThrustDeduction"}, {"RelRotEfficiency"}}},
        {"ENGINE",
         {{"EngineRPM", "[RPM]"},
          {"PowerBrakePerProp"},
          {"FuelRatePerEngine"},
          {"PercentEngineLoadFactor", "[%]"}}}},
       {{"POWER DELIVERY",
         {{"Speed"},
          {"PropulsorRPM", "[RPM]"},
          {"PropulsorTorque"},
          {"PowerDeliveredPerProp"},
          {"PowerShaftPerProp"},
          {"PowerShaftTotal"},
          {"PowerBrakeTotal"},
          {"TransportFactor"},
          {"CPMeanPitch", nullptr, nullptr, Applies::ControllablePitch},
          {"DragMargin"}}}},
       {{"EFFICIENCY", {{"Speed"}, {"PropulsorEfficiency"}, {"OverallPropulsiveEfficiency"}}},
        {"THRUST",
         {{"PropulsorThrust"},
          {"TotalDeliveredThrust"},
          {"TotalNetTowpull", nullptr, nullptr, Applies::Towing}}},
        {"ACCELERATION",
         {{"AccelGravities", "[Gs]", nullptr, Applies::Acceleration},
          {"AccelTimeSecs", "[sec]", nullptr, Applies::Acceleration},
          {"AccelDistance", nullptr, nullptr, Applies::Acceleration}}},
        {"OTHER",
         {{"WakeFractionAlignmentMultiplier", nullptr, nullptr, Applies::AlignedInteraction},
          {"ThrustDeductionAlignmentMultiplier", nullptr, nullptr, Applies::AlignedInteraction},
          {"RelRotEfficiencyAlignmentMultiplier", nullptr, nullptr, Applies::AlignedInteraction}}}}}};
  return s;
}

const ResultsSpec& ResultsPropulsor() {
  static const ResultsSpec s = {"Prediction results [Propulsor]",
                                {{{"PROPULSOR COEFS",
                                   {{"Speed"},
                                    {"CoefPropulsorJ", nullptr, nullptr, Applies::Propeller},
                                    {"CoefPropulsorKT", nullptr, nullptr, Applies::Propeller},
                                    {"CoefPropulsorKQ", nullptr, nullptr, Applies::Propeller},
                                    {"CoefPropulsorKTJ2", nullptr, "0.0000", Applies::Propeller},
                                    {"CoefPropulsorKQJ3", nullptr, "0.00000", Applies::Propeller},
                                    {"CoefPropulsorCTH", nullptr, "0.0000"},
                                    {"CoefPropulsorCP", nullptr, "0.0000"},
                                    {"CoefPropulsorReynolds", nullptr, nullptr, Applies::Propeller}}}},
                                 {{"CAVITATION",
                                   {{"Speed"},
                                    {"SigmaV"},
                                    {"SigmaN"},
                                    {"Sigma07R"},
                                    {"PercentCavAverage", "[%]"},
                                    {"PercentCavPeak", "[%]"},
                                    {"RecommendedEAR"},
                                    {"MinPitchFaceCav"},
                                    {"TipSpeed"},
                                    {"MeanBladePressure"}}}}}};
  return s;
}

bool AppliesTo(Applies a, const ModelSet& set) {
  switch (a) {
    case Applies::Always:
      return true;
    case Applies::ControllablePitch:
      return set.Propeller && set.Propeller->PropellerType() == kPropellerCPP;
    case Applies::Towing:
      return set.Propulsion && set.Propulsion->AnalysisTypeMethod() == kAnalysisTowing;
    case Applies::Acceleration:
      return set.Propulsion && set.Propulsion->AnalysisTypeMethod() == kAnalysisAcceleration;
    case Applies::AlignedHullDrag:
      return set.Resistance && set.Resistance->HullDragTechnique() == kTechniqueAligned;
    case Applies::AlignedInteraction:
      return set.Propulsion && set.Propulsion->PropulsionInteractionTechnique() == kTechniqueAligned;
    case Applies::Propeller:
      return set.Propulsion && set.Propulsion->PropulsorCalcType() != kPropulsorWaterjet;
  }
  return true;
}

std::string UnitText(const clsVXUnits& units, UnitFamily f) {
  if (f == UnitFamily::None) return "";
  try {
    return "[" + units.Label(f) + "]";
  } catch (const std::out_of_range&) {
    return "";
  }
}

// The " *" of a value predicted outside the speed range of its method's data set. The check
// columns hold 0 below, 1 within, 2 above the range, and are written only by a prediction.
std::string RangeMark(const ModelSet& set, const SP& sp, int row, int column) {
  if (sp.Raw(row, column) == 0.0) return "";  // not predicted: nothing to judge
  static const int bareHull = SP::ColumnIndex("DragBareHull");
  static const int wake = SP::ColumnIndex("WakeFraction");
  static const int thd = SP::ColumnIndex("ThrustDeduction");
  static const int effr = SP::ColumnIndex("RelRotEfficiency");
  if (column == bareHull && set.Resistance && set.Resistance->HullDragEnabled() == kCalc &&
      set.Resistance->HullDragTechnique() <= kTechniqueAligned && sp.DragBareHullSpeedCheck(row) != 1)
    return " *";
  if ((column == wake || column == thd || column == effr) && set.Propulsion &&
      set.Propulsion->PropulsionInteractionEnabled() == kCalc &&
      set.Propulsion->PropulsionInteractionTechnique() == 0 &&
      sp.HullPropulsorInteractionSpeedCheck(row) != 1)
    return " *";
  return "";
}

void AddResultsTable(ReportContext& rc, const TableSpec& layout) {
  const SP& sp = *rc.set.SpeedPerformance;
  const clsVXUnits& units = *rc.set.Units;
  ReportBlock& table = rc.doc.AddTable(ReportTableKind::Results, 3);
  std::vector<ReportCell> captions, symbols, unitRow;
  struct Shown {
    int column;
    const ColumnSpec* columnSpec;
    bool applies;
  };
  std::vector<Shown> shown;
  for (const GroupSpec& g : layout) {
    captions.push_back({g.caption, ReportStyle::GroupCaption, static_cast<int>(g.columns.size())});
    for (const ColumnSpec& c : g.columns) {
      const int column = SP::ColumnIndex(c.name);
      if (column < 0) throw std::logic_error(std::string("report column ") + c.name);
      const FieldDesc& d = SP::Column(column);
      symbols.push_back({d.symbol, ReportStyle::Symbol});
      unitRow.push_back({c.unit ? c.unit : UnitText(units, d.family), ReportStyle::Unit});
      shown.push_back({column, &c, AppliesTo(c.applies, rc.set)});
      if (std::find(rc.columnsShown.begin(), rc.columnsShown.end(), column) == rc.columnsShown.end())
        rc.columnsShown.push_back(column);
    }
  }
  table.rows.push_back({captions});
  table.rows.push_back({symbols});
  table.rows.push_back({unitRow});
  static const int speed = SP::ColumnIndex("Speed");
  for (int r = 0; r < sp.count(); ++r) {
    ReportRow row;
    for (const Shown& s : shown) {
      std::string text;
      if (!s.applies) {
        text = "---";
      } else if (s.column == speed) {
        text = sp.FormattedOf(r, s.column);
        if (r == sp.DesignSpeedIndex()) text = "+ " + text + " +";
      } else if (s.columnSpec->format) {
        text = FormatNumber(sp.Raw(r, s.column), s.columnSpec->format);
      } else {
        const FieldDesc& d = SP::Column(s.column);
        // A coefficient without a format of its own shows like its neighbours.
        text = !*d.format && d.family == UnitFamily::None ? FormatNumber(sp.Raw(r, s.column), "0.000000")
                                                          : sp.FormattedOf(r, s.column, true);
        text += RangeMark(rc.set, sp, r, s.column);
      }
      row.cells.push_back({std::move(text), ReportStyle::Number});
    }
    table.rows.push_back(std::move(row));
  }
}

void WriteResults(ReportContext& rc, const ResultsSpec& results) {
  rc.doc.AddTitle(results.title);
  for (const TableSpec& t : results.tables) AddResultsTable(rc, t);
}

// The marks and their meaning, as the legend prints them.
struct MarkRow {
  const char* mark;
  const char* meaning;
  bool propulsionOnly;
};
constexpr MarkRow kMarks[] = {
    {"+ =", "Design speed indicator", false},
    {"* =", nullptr, false},
    {"! =", "Exceeds recommended cavitation criteria [warning]", true},
    {"!! =", "Substantially exceeds recommended cavitation criteria [critical]", true},
    {"!!! =", "Thrust breakdown is indicated [severe]", true},
    {"--- =", "Insignificant or not applicable", false},
};

void AddLegendRows(ReportContext& rc) {
  for (const MarkRow& m : kMarks) {
    if (m.propulsionOnly && !rc.propulsion) continue;
    const char* meaning = m.meaning       ? m.meaning
                          : rc.propulsion ? "Exceeds recommended parameter limit"
                                          : "Exceeds parameter limit";
    rc.doc.AddRow({{m.mark, ReportStyle::Legend}, {meaning, ReportStyle::Legend}});
  }
}

}  // namespace

void ReportAnalysisParameters(ReportContext& rc) {
  const ModelSet& s = rc.set;
  ReportDocument& doc = rc.doc;
  doc.AddTitle("Analysis parameters");
  doc.AddTable(ReportTableKind::LabelValue);
  const bool planing = s.ITTC78->HullHydrodynamicType() == kHydroPlaning;
  doc.AddLabelValue("Analysis type:", planing ? "Planing" : "ITTC-78 (CT)");
  AddFieldRow(doc, *s.Resistance, "HullDragMethod");
  AddFieldRow(doc, *s.Resistance, "HullDragTechnique");
  AddHeadingRow(doc, "ITTC-78 (v2008)");
  doc.AddLabelValue("Model LWL:", FieldValueText(*s.ITTC78, s.ITTC78->FieldIndex("ModelLengthWL"), "0.0##"));
  AddFieldRow(doc, *s.ITTC78, "HullFrictionLine");
  AddFieldRow(doc, *s.ITTC78, "HullFormFactor", "0.000");
  AddFieldRow(doc, *s.ITTC78, "CorrelationAllowance", "0.000000");
  AddFieldRow(doc, *s.ITTC78, "HullRoughnessMM", "0.00");
  if (s.Hull->HullConfigType() == 1) {
    AddHeadingRow(doc, "Catamaran");
    AddFieldRow(doc, *s.Hull, "DemihullSpacing");
    AddFieldRow(doc, *s.Resistance, "HullDragCatamaranInterferenceEnabled");
  }
  AddHeadingRow(doc, "Added drag");
  const clsVXResistance& r = *s.Resistance;
  // Each added drag: its state, and its method when it is calculated.
  struct Added {
    const char* enabled;
    const char* method;
  };
  static constexpr Added kAdded[] = {{"AppendageDragEnabled", "AppendageDragMethod"},
                                     {"WindDragEnabled", "WindDragMethod"},
                                     {"SeasDragEnabled", "SeasDragMethod"},
                                     {"ChannelDragEnabled", "ChannelDragMethod"}};
  for (const Added& a : kAdded) {
    const int e = r.FieldIndex(a.enabled), m = r.FieldIndex(a.method);
    std::string text = r.LabelOf(e);
    if (static_cast<int>(r.Raw(e)) == kCalc) text += " [" + r.LabelOf(m) + "]";
    doc.AddLabelValue(r.Fields()[e].label, text);
  }
  doc.AddLabelValue("Margin:", r.MarginDragEnabledLabel() == "Off"
                                   ? std::string("Off")
                                   : r.MarginDragBasisLabel() + " [" +
                                         FormatNumber(r.Raw(r.FieldIndex("MarginDragPercentage")), "0.0#") +
                                         "%]");
  if (rc.propulsion) {
    const clsVXPropulsion& p = *s.Propulsion;
    AddHeadingRow(doc, "Hull-propulsor interaction");
    for (const char* f : {"PropulsionInteractionEnabled", "PropulsionInteractionTechnique"})
      AddFieldRow(doc, p, f);
    doc.AddLabelValue("Method:", p.PropulsionInteractionMethodLabel());
    AddHeadingRow(doc, "Corrections");
    for (const char* f : {"ViscousScaleCorrEnabled", "DuctedPropCorrEnabled", "PropellerTunnelCorrEnabled"})
      AddFieldRow(doc, p, f);
    AddHeadingRow(doc, "System analysis");
    for (const char* f : {"AnalysisTypeMethod", "PropulsorCalcType", "CavCriteriaMethod"})
      AddFieldRow(doc, p, f);
    if (p.AnalysisTypeMethod() == 2) AddFieldRow(doc, p, "FixedEngineRPM");
    if (s.Propeller && s.Propeller->PropellerType() == kPropellerCPP) AddFieldRow(doc, p, "CPPMethod");
  }
  AddHeadingRow(doc, "Water properties");
  const clsVXWaterProperties& w = *s.WaterProperties;
  for (int i = 0; i < static_cast<int>(w.Fields().size()); ++i)
    if (*w.Fields()[i].label) AddFieldRow(doc, w, w.Fields()[i].name);
}

void ReportMethodCheck(ReportContext& rc) {
  const MethodFamily family = rc.propulsion ? MethodFamily::Interaction : MethodFamily::Hull;
  const int method = SelectedMethod(rc.set, family);
  const MethodCheck check = CheckMethod(rc.set, rc.propulsion ? Mode::Propulsion : Mode::Resistance,
                                        MethodFamilyCheckId(family, method));
  rc.doc.AddTitle("Prediction method check [" + MethodFamilyLabel(family, method) + "]");
  rc.doc.AddTable(ReportTableKind::Check, 1);
  rc.doc.AddRow(
      {{"Parameters", ReportStyle::Heading}, {"Value", ReportStyle::Symbol}, {"Range", ReportStyle::Symbol}});
  for (const ParameterCheckRow& r : check.rows)
    rc.doc.AddRow(
        {{r.name, ReportStyle::Label},
         {r.value + (r.status == kCheckFail || r.status == kCheckMissing ? " *" : ""), ReportStyle::Number},
         {r.range, ReportStyle::Number}});
  if (!check.note.empty()) rc.doc.AddRow({{check.note, ReportStyle::Label, 3}});
}

void ReportResultsCt(ReportContext& rc) { WriteResults(rc, ResultsCt()); }
void ReportResultsPlaning(ReportContext& rc) { WriteResults(rc, ResultsPlaning()); }
void ReportPropulsionResults(ReportContext& rc) {
  WriteResults(rc, ResultsSystem());
  WriteResults(rc, ResultsPropulsor());
}

void ReportMarksLegend(ReportContext& rc) {
  rc.doc.AddTable(ReportTableKind::Legend);
  AddLegendRows(rc);
}

void ReportSymbols(ReportContext& rc) {
  rc.doc.AddTitle("Symbols and values");
  rc.doc.AddTable(ReportTableKind::Legend);
  static const int reynolds = SP::ColumnIndex("CoefReynoldsLength");
  static const int propReynolds = SP::ColumnIndex("CoefPropulsorReynolds");
  static const int viscous = SP::ColumnIndex("CoefDragBareHullViscous");
  static const int effective = SP::ColumnIndex("PowerEffectiveTotal");
  const bool planing = rc.set.ITTC78->HullHydrodynamicType() == kHydroPlaning;
  for (int c : rc.columnsShown) {
    const FieldDesc& d = SP::Column(c);
    std::string description = d.description;
    if (c == reynolds) description = SP::CoefReynoldsLengthSymbolDescription(planing);
    if (c == propReynolds) description = "Propeller Reynolds number at 0.7R";
    if (c == effective) description = SP::PowerEffectiveTotalSymbolDescription(rc.propulsion);
    rc.doc.AddRow({{std::string(d.symbol) + " =", ReportStyle::Legend}, {description, ReportStyle::Legend}});
    if (c == viscous)
      rc.doc.AddRow(
          {{"CV/CF =", ReportStyle::Legend},
           {"Viscous/frictional resistance coefficient ratio [dynamic form factor]", ReportStyle::Legend}});
  }
  AddLegendRows(rc);
}

}  // namespace velmar
