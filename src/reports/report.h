// The reports of a project: results, full resistance, full propulsion and data, each built
// as frames (heading, sections, footer) into a ReportDocument that any back end writes.
#pragma once

#include <string>
#include <string_view>

#include "core/format.h"
#include "core/model_set.h"
#include "reports/report_document.h"

namespace velmar {

class clsVXCoordinateGraph;

enum class ReportKind {
  Resistance,      // resistance results
  FullResistance,  // results, hull data, appendage and environment data
  FullPropulsion,  // propulsion results, hull and propulsor data
  Data,            // the data reports of every input group
};

// "resistance", "full-resistance", "full-propulsion", "data".
const char* ReportKindName(ReportKind kind);
bool ReportKindFromName(std::string_view name, ReportKind& kind);

struct ReportOptions {
  bool symbols = false;                     // close the results with "Symbols and values"
  std::string applicationTitle = "Velmar";  // the name behind the version in the footer
  DateTime when = Now();                    // date and time of the heading and report id
  std::string preparedBy;                   // "Prepared by" of the heading; no row when empty
  // The graphs placed after the results, when the graph library supplies them; a report
  // without them simply has no graph block.
  bool graphs = true;
};

// Builds the report of `kind` from the model set as it stands (run Calculate first). Reads
// that fail their checks push words on the classes' error stacks; the stacks that the
// method checks fill are cleared again.
ReportDocument BuildReport(const ModelSet& set, ReportKind kind, const ReportOptions& options = {});

// "Report: Graph", the report of the graph on show in `mode`: the analysis parameters (the
// propulsor data for the preset "[Propeller coefs]"), the graph as drawn, and its series as a
// table, under the heading and footer of every report.
ReportDocument BuildGraphReport(const ModelSet& set, Mode mode, const clsVXCoordinateGraph& graph,
                                std::string_view presetName, const ReportOptions& options = {});

}  // namespace velmar
