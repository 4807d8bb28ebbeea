// The report commands' share of the window program: the report options from the settings
// ("Prepared by", the page of symbols), the types Save report offers, and the print of a
// report on a printer through the same page layout as the PDF.
#pragma once

#include <string>

#include "app/settings_store.h"
#include "reports/report.h"

class QPrinter;

namespace velmar {

// `Report/PreparedBy` (default "Enter name here...") and `Report/ShowSymbolsValuesPage`:
// the stored text "Omit" leaves the page out, any other keeps it.
ReportOptions ReportOptionsFromSettings(const SettingsStore& settings);

// The filter of "Save report as...": PDF, HTML and CSV, and the extension taken when the
// name has none.
extern const char* const kSaveReportFilter;
inline constexpr const char* kSaveReportDefaultExtension = ".pdf";

// Prints the report on the printer that the print dialog set up; the number of pages printed
// (0 with the reason when the printer cannot be painted on).
int PrintReport(const ReportDocument& doc, QPrinter& printer, std::string* error = nullptr);

}  // namespace velmar
