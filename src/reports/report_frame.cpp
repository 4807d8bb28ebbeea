// The report frame: each frame opens with the heading block (date, project id, description,
// file name), runs its sections and closes with the footer that identifies the report; a
// page break follows every frame. The report kinds are lists of frames.
#include <functional>
#include <string_view>

#include "core/format.h"
#include "core/project.h"
#include "core/speed_performance.h"
#include "reports/prediction_graphs.h"
#include "reports/report.h"
#include "reports/report_graphs.h"
#include "reports/report_sections.h"
#include "resistance/ittc78.h"
#include "validation/parameter_check.h"

namespace velmar {
namespace {

constexpr int kHydroPlaning = 2;

struct KindName {
  ReportKind kind;
  const char* name;
  const char* title;
};
constexpr KindName kKinds[] = {
    {ReportKind::Resistance, "resistance", "Resistance results"},
    {ReportKind::FullResistance, "full-resistance", "Full resistance report"},
    {ReportKind::FullPropulsion, "full-propulsion", "Full propulsion report"},
    {ReportKind::Data, "data", "Data report"},
};

void WriteReportHeader(ReportContext& rc, const ReportOptions& o) {
  const clsVXProject& p = *rc.set.Project;
  rc.doc.AddTable(ReportTableKind::Frame);
  rc.doc.AddRow(
      {{FormatDate(o.when, "d mmm yyyy") + " " + FormatDate(o.when, "Medium Time"), ReportStyle::Frame, 2}});
  for (const auto& [label, value] : {std::pair<const char*, const std::string&>{"Project ID", p.ProjectID},
                                     {"Description", p.Description},
                                     {"File name", p.FileName}})
    rc.doc.AddRow({{label, ReportStyle::Frame}, {value, ReportStyle::Frame}});
  if (!o.preparedBy.empty())
    rc.doc.AddRow({{"Prepared by", ReportStyle::Frame}, {o.preparedBy, ReportStyle::Frame}});
}

std::string ReportId(const ReportOptions& o) {
  return FormatDate(o.when, "yyyymmdd") + "-" + FormatDate(o.when, "hhmm");
}
std::string VersionLine(const ReportOptions& o) { return ProgramVersionText() + " " + o.applicationTitle; }

void WriteReportFooter(ReportContext& rc, const ReportOptions& o) {
  rc.doc.AddTable(ReportTableKind::Frame);
  rc.doc.AddRow({{"Report ID", ReportStyle::Frame}, {ReportId(o), ReportStyle::Frame}});
  rc.doc.AddRow({{VersionLine(o), ReportStyle::Frame, 2}});
  rc.doc.AddPageBreak();
}

using Section = std::function<void(ReportContext&)>;

void Frame(ReportContext& rc, const ReportOptions& o, std::initializer_list<Section> sections) {
  WriteReportHeader(rc, o);
  for (const Section& s : sections) s(rc);
  WriteReportFooter(rc, o);
}

void ResistanceResults(ReportContext& rc) {
  ReportAnalysisParameters(rc);
  ReportMethodCheck(rc);
  if (rc.set.ITTC78->HullHydrodynamicType() == kHydroPlaning)
    ReportResultsPlaning(rc);
  else
    ReportResultsCt(rc);
  ReportMarksLegend(rc);
}

void PropulsionResults(ReportContext& rc) {
  ReportAnalysisParameters(rc);
  ReportMethodCheck(rc);
  ReportPropulsionResults(rc);
  ReportMarksLegend(rc);
}

// The series of a graph as tables of numbers: the series that share their x values share a
// table, the x column first and one column a series, headed by its legend.
void ReportGraphData(ReportDocument& doc, const clsVXCoordinateGraph& graph) {
  std::vector<bool> done(static_cast<size_t>(graph.DataSeriesCount()), false);
  for (int i = 0; i < graph.DataSeriesCount(); ++i) {
    const GraphSeries& first = graph.Series(i);
    if (done[static_cast<size_t>(i)] || first.kind != SeriesKind::Line || first.x.empty()) continue;
    std::vector<const GraphSeries*> group;
    for (int j = i; j < graph.DataSeriesCount(); ++j) {
      const GraphSeries& s = graph.Series(j);
      if (!done[static_cast<size_t>(j)] && s.kind == SeriesKind::Line && s.x == first.x) {
        group.push_back(&s);
        done[static_cast<size_t>(j)] = true;
      }
    }
    doc.AddTable(ReportTableKind::Results, 1);
    std::vector<ReportCell> head{{graph.XAxis().caption, ReportStyle::Symbol}};
    for (const GraphSeries* s : group)
      head.push_back({s->legend.empty() ? graph.YAxis().caption : s->legend, ReportStyle::Symbol});
    doc.AddRow(head);
    for (size_t k = 0; k < first.x.size(); ++k) {
      std::vector<ReportCell> row{{FormatNumber(first.x[k], "0.0###"), ReportStyle::Number}};
      for (const GraphSeries* s : group)
        row.push_back({k < s->y.size() ? FormatNumber(s->y[k], "0.0###") : "", ReportStyle::Number});
      doc.AddRow(row);
    }
  }
}

}  // namespace

ReportDocument BuildGraphReport(const ModelSet& set, Mode mode, const clsVXCoordinateGraph& graph,
                                std::string_view presetName, const ReportOptions& o) {
  ReportDocument doc;
  doc.title = "Graph report";
  doc.identity = "Report ID " + ReportId(o) + "  " + VersionLine(o);
  const bool propulsion = mode == Mode::Propulsion;
  ReportContext rc{set, doc, propulsion, {}};
  // The propeller curve comes with the propulsor data; every other graph with the analysis
  // parameters of its mode.
  const bool propellerCurve = propulsion && presetName == "[Propeller coefs]";
  const char* caption = propellerCurve ? "Propeller coefficients curve"
                        : propulsion   ? "Predicted propulsion"
                                       : "Predicted resistance";
  Frame(rc, o,
        {propellerCurve ? Section(ReportPropulsorData) : Section(ReportAnalysisParameters),
         [&](ReportContext& c) {
           c.doc.AddTitle(caption);
           c.doc.AddGraph(MakeReportGraph(graph, caption));
           ReportGraphData(c.doc, graph);
         }});
  ClearCheckErrorStacks(set);
  return doc;
}

const char* ReportKindName(ReportKind kind) {
  for (const KindName& k : kKinds)
    if (k.kind == kind) return k.name;
  return "";
}

bool ReportKindFromName(std::string_view name, ReportKind& kind) {
  for (const KindName& k : kKinds)
    if (name == k.name) {
      kind = k.kind;
      return true;
    }
  return false;
}

ReportDocument BuildReport(const ModelSet& set, ReportKind kind, const ReportOptions& o) {
  ReportDocument doc;
  for (const KindName& k : kKinds)
    if (k.kind == kind) doc.title = k.title;
  doc.identity = "Report ID " + ReportId(o) + "  " + VersionLine(o);
  ReportContext rc{set, doc, kind == ReportKind::FullPropulsion, {}};
  const auto graph = [&](ReportGraphKind g) {
    return [&o, g](ReportContext& c) {
      if (o.graphs) AddPredictionGraph(c.set, c.doc, g);
    };
  };
  switch (kind) {
    case ReportKind::Resistance:
      Frame(rc, o, {ResistanceResults});
      break;
    case ReportKind::FullResistance:
      Frame(rc, o, {ResistanceResults, graph(ReportGraphKind::Resistance)});
      Frame(rc, o, {ReportHullData});
      Frame(rc, o, {ReportAppendageData, ReportEnvironmentData});
      break;
    case ReportKind::FullPropulsion:
      Frame(rc, o, {PropulsionResults, graph(ReportGraphKind::Propulsion)});
      Frame(rc, o, {ReportHullData, ReportPropulsorData});
      break;
    case ReportKind::Data:
      Frame(rc, o, {ReportHullData});
      Frame(rc, o, {ReportAppendageData, ReportEnvironmentData});
      Frame(rc, o, {ReportPropulsorData});
      break;
  }
  if (o.symbols && kind != ReportKind::Data) Frame(rc, o, {ReportSymbols});
  // The method checks read through the classes' checked reads; leave no words behind.
  ClearCheckErrorStacks(set);
  return doc;
}

}  // namespace velmar
