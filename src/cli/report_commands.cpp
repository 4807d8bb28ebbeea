// velmar-cli report: a report of a project as PDF, HTML, CSV, RTF or plain text, chosen by the
// extension of the output file. Calculate runs first, as the window program's report
// commands find the results current, unless --no-calc keeps the stored results.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "app/application.h"
#include "app/calculate.h"
#include "cli/commands.h"
#include "core/format.h"
#include "core/helpers.h"
#include "files/project_file.h"
#include "files/safe_write.h"
#include "reports/report.h"
#include "reports/report_writers.h"
#if VELMAR_HAVE_RENDER
#include "render/report_pdf.h"
#endif

namespace velmar::cli {
namespace {

struct ReportCommandOptions {
  std::string path, kind = "resistance", out, date, preparedBy;
  bool symbols = false, noCalc = false;
};

// "2026-11-23 21:45" (or with a T) as the report's date and time.
bool ParseDate(const std::string& text, DateTime& t) {
  return std::sscanf(text.c_str(), "%d-%d-%d%*1[ T]%d:%d", &t.year, &t.month, &t.day, &t.hour, &t.minute) ==
             5 &&
         t.month >= 1 && t.month <= 12 && t.day >= 1 && t.day <= 31 && t.hour >= 0 && t.hour < 24 &&
         t.minute >= 0 && t.minute < 60;
}

bool Calculate(Mode mode) {
  App().CurrentMode = mode;
  const CalculateResult result = RunCalculate();
  if (result.warningShown) std::cerr << StripControlChars(result.warning, true) << "\n";
  return result.ok;
}

void RunReport(const ReportCommandOptions& o) {
  ReportKind kind;
  if (!ReportKindFromName(o.kind, kind))
    return Fail(kExitUsage, "unknown report kind \"" + o.kind +
                                "\"; use resistance, full-resistance, full-propulsion or data");
  std::string ext = std::filesystem::path(o.out).extension().string();
  for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (ext != ".pdf" && ext != ".html" && ext != ".htm" && ext != ".csv" && ext != ".rtf" && ext != ".txt")
    return Fail(kExitUsage, "the output \"" + o.out + "\" must end in .pdf, .html, .csv, .rtf or .txt");
  ReportOptions options;
  options.symbols = o.symbols;
  options.preparedBy = o.preparedBy;
  if (!o.date.empty() && !ParseDate(o.date, options.when))
    return Fail(kExitUsage, "--date \"" + o.date + "\" is not of the form YYYY-MM-DD HH:MM");
  OpenResult opened;
  if (!OpenInput(o.path, opened)) return;
  // The data report shows input only; the results reports calculate the resistance and, for
  // the propulsion report, then the propulsion on it.
  bool ok = true;
  if (!o.noCalc && kind != ReportKind::Data) {
    ok = Calculate(Mode::Resistance);
    if (ok && kind == ReportKind::FullPropulsion) ok = Calculate(Mode::Propulsion);
  }
  App().CurrentMode = kind == ReportKind::FullPropulsion ? Mode::Propulsion : Mode::Resistance;
  const ReportDocument doc = BuildReport(App().primary, kind, options);
  std::string error;
#if VELMAR_HAVE_RENDER
  if (!WriteReportFile(doc, o.out, &error)) return Fail(kExitFailed, error);
#else
  if (ext == ".pdf") return Fail(kExitFailed, "this build has no PDF output (Qt 6 Gui was not found)");
  const std::string text = ext == ".csv"   ? WriteReportCsv(doc)
                           : ext == ".txt" ? WriteReportText(doc)
                           : ext == ".rtf" ? WriteReportRtf(doc)
                                           : WriteReportHtml(doc);
  const SafeWriteResult written = WriteFileSafely(o.out, text);
  if (!written.ok)
    return Fail(kExitFailed, "the report could not be written to \"" + o.out + "\": " + written.message);
#endif
  if (!ok) SetExitCode(kExitFailed);
}

}  // namespace

void DefineReport(CLI::App& report) {
  static ReportCommandOptions o;
  report.add_option("FILE", o.path, "Project file (*.vxvl)")->required();
  report.add_option("--kind", o.kind, "resistance, full-resistance, full-propulsion or data")
      ->capture_default_str();
  report.add_flag("--symbols", o.symbols, "close the results with the symbols and the marks' legend");
  report.add_flag("--no-calc", o.noCalc, "report the results stored in the file, without Calculate");
  report.add_option("--date", o.date, "date and time the report shows, YYYY-MM-DD HH:MM (default: now)");
  report.add_option("--prepared-by", o.preparedBy, "name for \"Prepared by\" in the report heading");
  report.add_option("-o,--output", o.out, "Output file: .pdf, .html, .csv, .rtf or .txt")->required();
  report.callback([] { RunReport(o); });
}

}  // namespace velmar::cli
