// The CSV back end of the report document: the tables of the sections, one after another.
#include <sstream>

#include "reports/report_writers.h"

namespace velmar {
namespace {

std::string Field(std::string_view s) {
  if (s.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(s);
  std::string out = "\"";
  for (char c : s) out += c == '"' ? std::string("\"\"") : std::string(1, c);
  return out + "\"";
}

}  // namespace

std::string WriteReportCsv(const ReportDocument& doc) {
  std::ostringstream out;
  std::string title;
  for (const ReportBlock& b : doc.blocks) {
    if (b.kind == ReportBlockKind::Title) title = b.text;
    if (b.kind != ReportBlockKind::Table || b.tableKind == ReportTableKind::Frame || b.rows.empty()) continue;
    if (!title.empty()) out << Field(title) << "\r\n";
    title.clear();
    for (const ReportRow& r : b.rows) {
      bool first = true;
      for (const ReportCell& c : r.cells) {
        out << (first ? "" : ",") << Field(c.text);
        first = false;
        for (int i = 1; i < c.span; ++i) out << ",";
      }
      out << "\r\n";
    }
    out << "\r\n";
  }
  return out.str();
}

}  // namespace velmar
