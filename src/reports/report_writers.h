// Back ends of the report document that need nothing beyond the standard library: HTML
// (self-contained, graphs inline as SVG), CSV (the tables) and plain text.
#pragma once

#include <string>

#include "reports/report_document.h"

namespace velmar {

enum class HtmlFlavour {
  Browser,   // a web page: style sheet in the head, graphs inline as SVG
  RichText,  // the subset a rich-text layout engine reads: graph i as <img src="graph:i">
};

std::string WriteReportHtml(const ReportDocument& doc, HtmlFlavour flavour = HtmlFlavour::Browser);
// Every table but the frame's heading and footer, each after a line with its section title
// and followed by an empty line; a caption over several columns stands in the first of them.
std::string WriteReportCsv(const ReportDocument& doc);
// Titles underlined, tables in aligned columns, a rule line where a page would break.
std::string WriteReportText(const ReportDocument& doc);

// The file name of graph block `index` in the RichText flavour.
std::string ReportGraphResourceName(int index);

}  // namespace velmar
