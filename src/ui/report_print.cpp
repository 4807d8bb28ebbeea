// Report options, the Save report types and the print of a report.
#include "ui/report_print.h"

#include <QPrinter>

#include "render/report_pdf.h"

namespace velmar {

const char* const kSaveReportFilter =
    "Adobe Portable Document (*.pdf);;Comma Separated Values (*.csv);;Rich Text Format (*.rtf);;"
    "Hypertext Markup Language (*.html)";

ReportOptions ReportOptionsFromSettings(const SettingsStore& settings) {
  ReportOptions o;
  o.preparedBy = settings.Get("Report", "PreparedBy", "Enter name here...");
  o.symbols = settings.Get("Report", "ShowSymbolsValuesPage", "Show") != "Omit";
  return o;
}

int PrintReport(const ReportDocument& doc, QPrinter& printer, std::string* error) {
  // The layout of the PDF: 96 layout units an inch, so that a printed page breaks where the
  // saved PDF does.
  printer.setResolution(96);
  printer.setDocName(QString::fromStdString(doc.title));
  return PaintReportPages(doc, printer, error);
}

}  // namespace velmar
