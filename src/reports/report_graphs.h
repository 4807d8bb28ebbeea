// Graph blocks of the reports: the prediction graphs placed after the results.
#pragma once

#include "core/model_set.h"
#include "reports/report_document.h"

namespace velmar {

enum class ReportGraphKind { Resistance, Propulsion };

// Adds the graph "Predicted resistance" or "Predicted propulsion" of the set as a graph
// block; nothing when the set has no results to draw.
void AddPredictionGraph(const ModelSet& set, ReportDocument& doc, ReportGraphKind kind);

}  // namespace velmar
