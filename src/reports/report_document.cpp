// The report document's building operations.
#include "reports/report_document.h"

#include <algorithm>

namespace velmar {

int ReportBlock::ColumnCount() const {
  int n = 0;
  for (const ReportRow& r : rows) {
    int w = 0;
    for (const ReportCell& c : r.cells) w += std::max(1, c.span);
    n = std::max(n, w);
  }
  return n;
}

void ReportDocument::AddTitle(std::string text, ReportStyle style) {
  ReportBlock b;
  b.kind = ReportBlockKind::Title;
  b.style = style;
  b.text = std::move(text);
  blocks.push_back(std::move(b));
}

ReportBlock& ReportDocument::AddTable(ReportTableKind kind, int headerRows) {
  ReportBlock b;
  b.kind = ReportBlockKind::Table;
  b.tableKind = kind;
  b.headerRows = headerRows;
  blocks.push_back(std::move(b));
  return blocks.back();
}

ReportRow& ReportDocument::AddRow(std::vector<ReportCell> cells) {
  if (blocks.empty() || blocks.back().kind != ReportBlockKind::Table) AddTable(ReportTableKind::LabelValue);
  blocks.back().rows.push_back(ReportRow{std::move(cells)});
  return blocks.back().rows.back();
}

void ReportDocument::AddLabelValue(std::string label, std::string value) {
  AddRow({{std::move(label), ReportStyle::Label}, {std::move(value), ReportStyle::Value}});
}

void ReportDocument::AddGraph(ReportGraph graph) {
  ReportBlock b;
  b.kind = ReportBlockKind::Graph;
  b.graph = std::move(graph);
  blocks.push_back(std::move(b));
}

void ReportDocument::AddPageBreak() {
  ReportBlock b;
  b.kind = ReportBlockKind::PageBreak;
  blocks.push_back(std::move(b));
}

}  // namespace velmar
