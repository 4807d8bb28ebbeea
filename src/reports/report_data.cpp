// The data reports: each input group as rows of label and value in sections. The rows come
// from the data classes' field tables (caption, unit, format of each row); a section names a
// run of fields in table order, and fields without a caption are working fields that no
// report shows.
#include <algorithm>
#include <stdexcept>

#include "core/format.h"
#include "core/speed_performance.h"
#include "core/units.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"
#include "reports/report_sections.h"
#include "vessel/appendage.h"
#include "vessel/environment.h"
#include "vessel/hull.h"

namespace velmar {

std::string FieldValueText(const DataClass& c, int field, const char* format) {
  const FieldDesc& d = c.Fields()[field];
  switch (d.kind) {
    case FieldKind::Enum:
      return c.LabelOf(field);
    case FieldKind::Text:
      return c.TextOf(field);
    case FieldKind::Int:
      return FormatNumber(c.Raw(field), format ? format : "0");
    case FieldKind::Real:
      return FormatNumber(c.Raw(field), format ? format : d.format);
    case FieldKind::Quantity:
      break;
  }
  const clsVXUnits* units = c.Units().get();
  if (!units) return FormatNumber(c.Raw(field), format ? format : d.format);
  const UnitFamily shown = d.family == UnitFamily::Volume ? UnitFamily::Length : d.family;
  std::string text = FormatNumber(c.Raw(field), format      ? format
                                                : *d.format ? d.format
                                                            : units->Format(shown).c_str());
  try {
    text += " " + units->Label(d.family);
  } catch (const std::out_of_range&) {
  }
  return text;
}

void AddFieldRow(ReportDocument& doc, const DataClass& c, const char* name, const char* format) {
  const int i = c.FieldIndex(name);
  if (i < 0) return;
  const char* label = c.Fields()[i].label;
  doc.AddLabelValue(*label ? label : name, FieldValueText(c, i, format));
}

void AddHeadingRow(ReportDocument& doc, std::string text) {
  doc.AddRow({{std::move(text), ReportStyle::Heading, 2}});
}

namespace {

enum class Source { Hull, Appendage, Environment };

const DataClass* SourceOf(const ModelSet& s, Source src) {
  switch (src) {
    case Source::Hull:
      return s.Hull.get();
    case Source::Appendage:
      return s.Appendage.get();
    case Source::Environment:
      return s.Environment.get();
  }
  return nullptr;
}

// A section lists where its runs of fields start; a run ends where the next run of any
// section starts in table order, so that a field added to a table joins the run it follows.
struct DataSection {
  const char* heading;
  std::vector<const char*> runs;
  // The field whose label stands as a second heading instead of a row.
  const char* kindField = nullptr;
};
struct DataReport {
  const char* title;
  Source source;
  std::vector<DataSection> sections;
};

const DataReport kHullData = {"Hull data",
                              Source::Hull,
                              {{"General", {"HullConfigType", "XGravityFwdTr", "RadiusLonglMetacenter"}},
                               {"Planing", {"LengthProjPlaningBottom"}},
                               {"Propeller diameter", {"PropulsorCountPerHull", "XPropulsorFwdTr"}}}};

const DataReport kAppendageData = {"Appendage data",
                                   Source::Appendage,
                                   {{"General", {"AppendageDefinition", "PercentageHullDrag"}},
                                    {"Planing influence", {"XAppendageFwdTr"}},
                                    {"Shafting", {"ShaftLength"}},
                                    {"Strut (per shaft line)", {"StrutCount"}},
                                    {"Rudder", {"RudderCount"}},
                                    {"Skeg/Keel", {"SkegKeelCount"}},
                                    {"Stabilizer", {"StabilizerCount"}},
                                    {"Bilge keel", {"BilgeKeelCount"}},
                                    {"Tunnel thruster", {"TunnelThrusterCount"}},
                                    {"Sonar dome", {"SonarDomeCount"}},
                                    {"Miscellaneous", {"MiscAppendageCount"}}}};

const DataReport kEnvironmentData = {"Environment data",
                                     Source::Environment,
                                     {{"Wind", {"WindSpeed"}},
                                      {"Exposed hull", {"WindHullProfileArea"}},
                                      {"Superstructure", {"WindSuperstructureProfileArea"}},
                                      {"Seas", {"SeasSignificantWaveHeight"}},
                                      {"Shallow/channel", {"ShallowWaterDepth"}, "ShallowWaterType"}}};

int FieldOf(const DataClass& c, const char* name) {
  const int i = c.FieldIndex(name);
  if (i < 0) throw std::logic_error(std::string("report field ") + name);
  return i;
}

// Rows of the run from `first` to the next start. A run that opens with a count of 0 (no
// struts, no rudders) shows the count alone.
void AddRun(ReportDocument& doc, const DataClass& c, int first, const std::vector<int>& starts,
            const char* kindField) {
  const auto next = std::upper_bound(starts.begin(), starts.end(), first);
  const int end = next == starts.end() ? static_cast<int>(c.Fields().size()) : *next;
  for (int i = first; i < end; ++i) {
    const FieldDesc& d = c.Fields()[i];
    if (!*d.label || (kindField && std::string_view(d.name) == kindField)) continue;
    doc.AddLabelValue(d.label, FieldValueText(c, i));
    if (i == first && d.kind == FieldKind::Int && std::string_view(d.name).ends_with("Count") &&
        c.Raw(i) == 0.0)
      return;
  }
}

void WriteDataReport(ReportContext& rc, const DataReport& report) {
  const DataClass& c = *SourceOf(rc.set, report.source);
  std::vector<int> starts;
  for (const DataSection& s : report.sections)
    for (const char* run : s.runs) starts.push_back(FieldOf(c, run));
  std::sort(starts.begin(), starts.end());
  rc.doc.AddTitle(report.title);
  rc.doc.AddTable(ReportTableKind::LabelValue);
  for (const DataSection& s : report.sections) {
    AddHeadingRow(rc.doc, s.heading);
    if (s.kindField) AddHeadingRow(rc.doc, c.LabelOf(FieldOf(c, s.kindField)));
    for (const char* run : s.runs) AddRun(rc.doc, c, FieldOf(c, run), starts, s.kindField);
  }
}

}  // namespace

void ReportHullData(ReportContext& rc) { WriteDataReport(rc, kHullData); }
void ReportAppendageData(ReportContext& rc) { WriteDataReport(rc, kAppendageData); }
void ReportEnvironmentData(ReportContext& rc) { WriteDataReport(rc, kEnvironmentData); }

// The propulsor: propulsion settings, propeller or waterjet, series options, engine and gear,
// and the design condition.
void ReportPropulsorData(ReportContext& rc) {
  const ModelSet& s = rc.set;
  ReportDocument& doc = rc.doc;
  const clsVXPropulsion& p = *s.Propulsion;
  doc.AddTitle("Propulsor data");
  doc.AddTable(ReportTableKind::LabelValue);
  AddHeadingRow(doc, "Propulsor");
  AddFieldRow(doc, p, "PropulsorCalcType");
  const bool waterjet = p.PropulsorCalcType() == 3;
  if (waterjet) {
    doc.AddLabelValue("Waterjet data:", p.WaterjetFileLabel(-1, s.Waterjet ? s.Waterjet->Description() : ""));
    if (s.Waterjet)
      for (const FieldDesc& d : s.Waterjet->Fields())
        if (*d.label) AddFieldRow(doc, *s.Waterjet, d.name);
  } else {
    const clsVXPropeller& prop = *s.Propeller;
    AddFieldRow(doc, prop, "PropellerType");
    for (int i = prop.FieldIndex("BladeCount"); i <= prop.FieldIndex("CupDrop"); ++i) {
      const FieldDesc& d = prop.Fields()[i];
      if (!*d.label) continue;
      std::string text = FieldValueText(prop, i);
      // The pitch also as a ratio to the diameter.
      if (std::string_view(d.name) == "PitchMean" && prop.Raw(prop.FieldIndex("Diameter")) > 0.0)
        text += " [P/D " + FormatNumber(prop.Raw(i) / prop.Raw(prop.FieldIndex("Diameter")), "0.0000") + "]";
      doc.AddLabelValue(d.label, text);
    }
    const std::string ktkq = p.KTKQFileLabel(-1, prop.Description());
    doc.AddLabelValue("KTKQ file:", ktkq.empty() ? "None defined" : ktkq);
  }
  AddHeadingRow(doc, "Engine/gear");
  doc.AddLabelValue("Engine data:", p.EngineFileLabel(-1, s.Engine ? s.Engine->Description() : ""));
  if (s.Engine)
    for (const char* f : {"MaxRatedRPM", "MaxRatedPower", "ParasiticLoad"}) AddFieldRow(doc, *s.Engine, f);
  for (const char* f : {"GearEfficiency", "GearRatio", "ShaftEfficiency"}) AddFieldRow(doc, p, f);
  if (!waterjet && s.PropellerSeries) {
    AddHeadingRow(doc, "Propeller options");
    for (const FieldDesc& d : s.PropellerSeries->Fields())
      if (*d.label) AddFieldRow(doc, *s.PropellerSeries, d.name);
    if (const char* note = PropellerSeriesNote(s.PropellerSeries->Series())) doc.AddLabelValue("Note:", note);
  }
  AddHeadingRow(doc, "Design condition");
  const clsVXSpeedPerformance& sp = *s.SpeedPerformance;
  const int row = sp.DesignSpeedIndex();
  std::string speed = "None";
  if (row >= 0 && row < sp.count() && sp.Raw(row, 0) > 0.0)
    speed = sp.FormattedOf(row, 0) + " " + s.Units->Label(UnitFamily::Speed);
  doc.AddLabelValue("Design speed:", speed);
  AddFieldRow(doc, p, "AnalysisTypeMethod");
  AddFieldRow(doc, p, "CavCriteriaMethod");
}

}  // namespace velmar
