// Back ends of the report document that need nothing beyond the standard library: HTML
// (self-contained, graphs inline as SVG), CSV (the tables), plain text and Rich Text Format.
#pragma once

#include <functional>
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

// A graph as the bytes of a PNG picture, or empty; drawing pictures needs the render library.
using ReportPictureFn = std::function<std::string(const ReportGraph&)>;
// Rich Text Format: A4 pages, tables whose head rows repeat on every page, graphs as the
// pictures `picture` gives (only their captions without it), the identity and page number at
// the foot.
std::string WriteReportRtf(const ReportDocument& doc, const ReportPictureFn& picture = {});

// The file name of graph block `index` in the RichText flavour.
std::string ReportGraphResourceName(int index);

}  // namespace velmar
