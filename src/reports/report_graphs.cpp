// Graph blocks of the reports: the prediction graph of a mode as the mode window first shows
// it (total resistance, or brake power per propulsor, over speed).
#include "reports/report_graphs.h"

#include "core/project.h"
#include "core/speed_performance.h"
#include "reports/prediction_graphs.h"

namespace velmar {

void AddPredictionGraph(const ModelSet& set, ReportDocument& doc, ReportGraphKind kind) {
  if (!set.SpeedPerformance || set.SpeedPerformance->count() < 1) return;
  const bool resistance = kind == ReportGraphKind::Resistance;
  GraphRequest request;
  request.preset = FindPreset(resistance ? "SPEED:RTOTAL" : "SPEED:PBPROP");
  if (!request.preset) return;
  request.mode = resistance ? Mode::Resistance : Mode::Propulsion;
  const GraphBuild build =
      BuildPredictionGraph(request, {GraphSource{&set, set.Project ? set.Project->FileName : std::string()}});
  if (!build.drawn) return;
  doc.AddGraph(MakeReportGraph(build.graph, resistance ? "Predicted resistance" : "Predicted propulsion"));
}

}  // namespace velmar
