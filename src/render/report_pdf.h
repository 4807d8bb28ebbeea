// The PDF back end of the report document, through Qt's rich-text layout and PDF writer:
// A4 pages, a page break where the frame asks for one, graphs painted from their drawing (or
// left out when a graph has none), and the report identity with the page number at the foot
// of every page. Needs no display.
#pragma once

#include <string>

#include "reports/report_document.h"

namespace velmar {

// Writes `doc` to `path`; false with a message when the file cannot be written.
bool WriteReportPdf(const ReportDocument& doc, const std::string& path, std::string* error = nullptr);

}  // namespace velmar
