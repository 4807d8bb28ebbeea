// The sections of the reports, as the frame calls them; internal to src/reports.
#pragma once

#include <string>
#include <vector>

#include "core/data_class.h"
#include "core/model_set.h"
#include "reports/report_document.h"

namespace velmar {

// What a report collects while its sections run: the result columns shown, for the symbols.
struct ReportContext {
  const ModelSet& set;
  ReportDocument& doc;
  bool propulsion = false;
  std::vector<int> columnsShown;
};

// The text of one field of a data class: the label of an enumeration, a text as it stands,
// a number in its format (or `format` when given) with its unit label behind a quantity.
std::string FieldValueText(const DataClass& c, int field, const char* format = nullptr);
// A label and value row for the named field; nothing when the name is unknown.
void AddFieldRow(ReportDocument& doc, const DataClass& c, const char* name, const char* format = nullptr);
// A heading row inside a label and value table.
void AddHeadingRow(ReportDocument& doc, std::string text);

void ReportAnalysisParameters(ReportContext& rc);
void ReportMethodCheck(ReportContext& rc);
void ReportResultsCt(ReportContext& rc);
void ReportResultsPlaning(ReportContext& rc);
void ReportPropulsionResults(ReportContext& rc);
void ReportMarksLegend(ReportContext& rc);
void ReportSymbols(ReportContext& rc);  // resistance or propulsion symbols, by rc.propulsion

void ReportHullData(ReportContext& rc);
void ReportAppendageData(ReportContext& rc);
void ReportEnvironmentData(ReportContext& rc);
void ReportPropulsorData(ReportContext& rc);

}  // namespace velmar
