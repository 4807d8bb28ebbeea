// The plain-text back end of the report document.
#include <algorithm>
#include <sstream>

#include "reports/report_writers.h"

namespace velmar {
namespace {

// Characters on screen: UTF-8 continuation bytes take no column.
size_t Width(std::string_view s) {
  return static_cast<size_t>(std::count_if(s.begin(), s.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

bool RightAligned(ReportStyle s) {
  return s == ReportStyle::Number || s == ReportStyle::Symbol || s == ReportStyle::Unit;
}

void WriteTable(std::ostringstream& out, const ReportBlock& b) {
  const int n = b.ColumnCount();
  std::vector<size_t> width(static_cast<size_t>(n), 0);
  for (const ReportRow& r : b.rows) {
    size_t col = 0;
    for (const ReportCell& c : r.cells) {
      if (c.span <= 1) width[col] = std::max(width[col], Width(c.text));
      col += static_cast<size_t>(std::max(1, c.span));
    }
  }
  constexpr size_t kGap = 2;
  // A spanning cell wider than its columns widens the last of them.
  for (const ReportRow& r : b.rows) {
    size_t col = 0;
    for (const ReportCell& c : r.cells) {
      const size_t span = static_cast<size_t>(std::max(1, c.span));
      if (span > 1) {
        size_t w = (span - 1) * kGap;
        for (size_t i = col; i < col + span; ++i) w += width[i];
        if (Width(c.text) > w) width[col + span - 1] += Width(c.text) - w;
      }
      col += span;
    }
  }
  for (const ReportRow& r : b.rows) {
    // A heading inside a table stands off from the rows above it.
    if (&r != &b.rows.front() && r.cells.front().style == ReportStyle::Heading) out << "\n";
    std::string line;
    size_t col = 0;
    for (const ReportCell& c : r.cells) {
      const size_t span = static_cast<size_t>(std::max(1, c.span));
      size_t w = (span - 1) * kGap;
      for (size_t i = col; i < col + span; ++i) w += width[i];
      const size_t pad = w - std::min(w, Width(c.text));
      if (col) line += std::string(kGap, ' ');
      if (c.style == ReportStyle::GroupCaption) {
        const std::string dashes(pad / 2, '-');
        line += dashes + c.text + std::string(pad - pad / 2, '-');
      } else if (RightAligned(c.style)) {
        line += std::string(pad, ' ') + c.text;
      } else {
        line += c.text + std::string(pad, ' ');
      }
      col += span;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << "\n";
  }
  out << "\n";
}

}  // namespace

std::string WriteReportText(const ReportDocument& doc) {
  std::ostringstream out;
  for (const ReportBlock& b : doc.blocks) {
    if (b.kind == ReportBlockKind::PageBreak && &b == &doc.blocks.back()) break;
    switch (b.kind) {
      case ReportBlockKind::Title:
        out << b.text << "\n"
            << std::string(Width(b.text), b.style == ReportStyle::Heading ? '-' : '=') << "\n";
        break;
      case ReportBlockKind::Table:
        WriteTable(out, b);
        break;
      case ReportBlockKind::Graph:
        out << "[graph: " << b.graph.caption << "]\n\n";
        break;
      case ReportBlockKind::PageBreak:
        out << std::string(72, '=') << "\n\n";
        break;
    }
  }
  return out.str();
}

}  // namespace velmar
