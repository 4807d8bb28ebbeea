// The PDF back end of the report document, through Qt's rich-text layout and PDF writer:
// A4 pages, a page break where the frame asks for one, graphs painted from their drawing (or
// left out when a graph has none), and the report identity with the page number at the foot
// of every page. Needs no display.
#pragma once

#include <string>

class QPagedPaintDevice;

#include "reports/report_document.h"

namespace velmar {

// Writes `doc` to `path`; false with a message when the file cannot be written.
bool WriteReportPdf(const ReportDocument& doc, const std::string& path, std::string* error = nullptr);

// Lays `doc` out on the pages of `device` (a PDF writer, a printer) with its page layout and
// paints every page with the report identity and page number at its foot. Returns the number
// of pages painted; 0, with the reason, when the device cannot be painted on.
int PaintReportPages(const ReportDocument& doc, QPagedPaintDevice& device, std::string* error = nullptr);

// The report in the type of the file's extension: .pdf, .html (.htm), .csv, .rtf or .txt. False,
// with the reason, for another type or a file that cannot be written.
bool IsReportFileType(const std::string& extension);  // without the dot, any case
bool WriteReportFile(const ReportDocument& doc, const std::string& path, std::string* error = nullptr);

}  // namespace velmar
