// velmar-cli graph: open a project (and the files to compare with it), run Calculate in the
// mode the graph needs, build a preset or custom prediction graph and write it as a picture.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/application.h"
#include "app/calculate.h"
#include "cli/commands.h"
#include "core/helpers.h"
#include "files/project_file.h"
#include "propulsion/propulsion_driver.h"
#include "reports/prediction_graphs.h"
#include "resistance/resistance_driver.h"
#ifdef VELMAR_HAVE_RENDER
#include "render/graph_image.h"
#include "render/report_pdf.h"
#endif
#include "reports/report.h"

namespace velmar::cli {
namespace {

struct GraphOptions {
  std::string path, preset, x, y, out, size = "900x600", mode = "auto", lineStyle, legend, report, preparedBy;
  std::vector<std::string> compare;
  bool noCalc = false, listPresets = false;
};

bool ParseSize(const std::string& text, int& w, int& h) {
  const auto parts = SplitDelimited(EqualsNoCase(text, "") ? "" : text, "x");
  if (parts.size() != 2) return false;
  w = static_cast<int>(TextToInteger(parts[0]));
  h = static_cast<int>(TextToInteger(parts[1]));
  return w >= 50 && h >= 50 && w <= 10000 && h <= 10000;
}

// A column by its name or symbol (any case).
int ColumnByName(const std::string& name) {
  const int f = GraphFieldFromName(name);
  if (f >= 0) return clsVXSpeedPerformance::ColumnIndex(GraphFieldColumn(f));
  for (int c = 0; c < clsVXSpeedPerformance::kColumnCount; ++c) {
    const FieldDesc& d = clsVXSpeedPerformance::Column(c);
    if (EqualsNoCase(d.name, name) || (*d.symbol && EqualsNoCase(d.symbol, name))) return c;
  }
  return -1;
}

bool Calculate(bool propulsion) {
  bool ok = true;
  for (Mode mode : {Mode::Resistance, Mode::Propulsion}) {
    if (mode == Mode::Propulsion && !propulsion) break;
    App().CurrentMode = mode;
    const CalculateResult result = RunCalculate();
    if (result.warningShown) std::cerr << StripControlChars(result.warning, true) << "\n";
    ok = ok && result.ok;
    if (!ok) break;
  }
  App().CurrentMode = propulsion ? Mode::Propulsion : Mode::Resistance;
  return ok;
}

void ListPresets() {
  static const char* kLists[] = {"Resistance mode", "Propulsion mode, propeller",
                                 "Propulsion mode, waterjet"};
  for (int l = 0; l < 3; ++l) {
    std::cout << kLists[l] << "\n";
    const auto presets = PresetsOf(static_cast<PresetList>(l));
    for (size_t i = 0; i < presets.size(); ++i) std::cout << "  " << i << "  " << presets[i]->name << "\n";
  }
  std::cout << "Axis fields (--x, --y)\n";
  for (int f = 0; f < kGraphFieldCount; ++f) {
    const int c = clsVXSpeedPerformance::ColumnIndex(GraphFieldColumn(f));
    std::cout << "  " << f << "  " << GraphFieldColumn(f) << "  " << clsVXSpeedPerformance::Column(c).symbol
              << "\n";
  }
}

void RunGraph(const GraphOptions& o) {
  if (o.listPresets) return ListPresets();
  if (o.path.empty() || (o.out.empty() && o.report.empty()))
    return Fail(kExitUsage, "graph needs FILE and -o OUT (or --report REPORT)");
  GraphRequest request;
  const GraphPreset* preset = nullptr;
  if (!o.preset.empty()) {
    if (!o.x.empty() || !o.y.empty()) return Fail(kExitUsage, "--preset and --x/--y exclude each other");
    preset = FindPreset(o.preset);
    if (!preset)
      return Fail(kExitUsage, "unknown preset \"" + o.preset + "\" (see velmar-cli graph --list-presets)");
    request.preset = preset;
  } else {
    if (o.x.empty() || o.y.empty())
      return Fail(kExitUsage, "give --preset NAME, or --x FIELD and --y FIELD[,FIELD]");
    request.xColumn = ColumnByName(o.x);
    if (request.xColumn < 0) return Fail(kExitUsage, "unknown field \"" + o.x + "\"");
    for (const std::string& name : SplitDelimited(o.y, ",")) {
      const int c = ColumnByName(Trim(name));
      if (c < 0) return Fail(kExitUsage, "unknown field \"" + Trim(name) + "\"");
      request.yColumns.push_back(c);
    }
  }
  int width = 0, height = 0;
  if (!ParseSize(o.size, width, height)) return Fail(kExitUsage, "--size wants WxH, e.g. 900x600");
  const std::string type = [&] {
    std::string e = std::filesystem::path(o.out.empty() ? "graph.svg" : o.out).extension().string();
    std::transform(e.begin(), e.end(), e.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return e;
  }();
#ifdef VELMAR_HAVE_RENDER
  if (!IsGraphFileType(type.empty() ? "" : type.substr(1)))
    return Fail(kExitUsage, "unknown picture type \"" + type + "\"; use .png, .svg, .pdf, .jpg or .bmp");
#else
  if (type != ".svg") return Fail(kExitUsage, "this build writes .svg only (Qt 6 was not found)");
#endif
  if (o.lineStyle.size()) {
    const int i = FindInList(o.lineStyle, LineStyleLabels()) - 1;
    if (i < 0) return Fail(kExitUsage, "unknown line style \"" + o.lineStyle + "\"");
    request.lineStyle = static_cast<LineStyle>(i);
  }
  if (o.legend.size()) {
    if (EqualsNoCase(o.legend, "off")) {
      request.legendOn = false;
    } else {
      const int i = FindInList(o.legend, LegendPositionLabels()) - 1;
      if (i < 0) return Fail(kExitUsage, "unknown legend position \"" + o.legend + "\"");
      request.legendPosition = i;
    }
  }
  // The mode: by the preset's list, or for a custom graph by whether a field is written by a
  // propulsion run only.
  bool propulsion = false;
  if (EqualsNoCase(o.mode, "propulsion")) {
    propulsion = true;
  } else if (!EqualsNoCase(o.mode, "resistance")) {
    if (!EqualsNoCase(o.mode, "auto")) return Fail(kExitUsage, "unknown mode \"" + o.mode + "\"");
    if (preset) {
      propulsion = preset->kind != GraphPresetKind::Custom && PresetNeedsPropulsion(*preset);
    } else {
      const std::vector<int> resistance = ResistanceResultColumns();
      for (int c : request.yColumns)
        if (std::find(resistance.begin(), resistance.end(), c) == resistance.end()) propulsion = true;
    }
  }
  request.mode = propulsion ? Mode::Propulsion : Mode::Resistance;
  if (o.compare.size() > static_cast<size_t>(CustomGraphOptions::kCompareFileCount))
    return Fail(kExitUsage, "at most four files to compare");

  // The compare files first: each is opened and calculated in turn, and its objects are kept
  // when the next file replaces the project.
  bool ok = true;
  std::vector<ModelSet> kept;
  std::vector<std::string> labels;
  for (const std::string& file : o.compare) {
    OpenResult r;
    if (!OpenInput(file, r)) return;
    if (!o.noCalc) ok = Calculate(propulsion) && ok;
    kept.push_back(App().primary);
    labels.push_back(App().primary.Project->FileName);
  }
  OpenResult r;
  if (!OpenInput(o.path, r)) return;
  if (!o.noCalc) ok = Calculate(propulsion) && ok;
  App().CurrentMode = request.mode;
  std::vector<GraphSource> sources{{&App().primary, App().primary.Project->FileName}};
  for (size_t i = 0; i < kept.size(); ++i) sources.push_back({&kept[i], labels[i]});

  GraphBuild build = BuildPredictionGraph(request, sources);
  for (const auto& [title, message] : build.warnings) std::cerr << title << ": " << message << "\n";
  if (!build.drawn) return SetExitCode(kExitFailed);
  std::string error;
#ifdef VELMAR_HAVE_RENDER
  if (!o.report.empty()) {
    // The report of the graph, as the window's "Report: Graph" writes it.
    ReportOptions options;
    options.preparedBy = o.preparedBy;
    const ReportDocument doc =
        BuildGraphReport(App().primary, request.mode, build.graph, preset ? preset->name : "Custom", options);
    if (!WriteReportFile(doc, o.report, &error)) return Fail(kExitFailed, error);
  }
  if (!o.out.empty() && !SaveGraphFile(build.graph, o.out, width, height, &error))
    return Fail(kExitUsage, error);
#else
  if (!o.report.empty()) return Fail(kExitUsage, "this build writes no graph report (Qt 6 was not found)");
  std::ofstream out(o.out, std::ios::binary);
  out << GraphSvg(build.graph, width, height);
  if (!out.good()) return Fail(kExitUsage, "cannot write \"" + o.out + "\"");
#endif
  if (!ok) SetExitCode(kExitFailed);
}

}  // namespace

void DefineGraph(CLI::App& graph) {
  static GraphOptions o;
  graph.add_option("FILE", o.path, "Project file (*.vxvl)");
  graph.add_option("--preset", o.preset,
                   "Preset, e.g. SPEED:RTOTAL or \"[Engine load]\" (see --list-presets)");
  graph.add_option("--x", o.x, "Field of the x axis (name or symbol)");
  graph.add_option("--y", o.y, "Fields of the y axis, comma-separated");
  graph.add_option("--compare", o.compare, "Up to four project files drawn in the same chart")
      ->expected(1, 4);
  graph.add_option("-o,--output", o.out, "Picture to write: .png, .svg, .pdf, .jpg or .bmp");
  graph.add_option("--report", o.report, "Also write the report of the graph: .pdf, .html, .csv, .rtf or .txt");
  graph.add_option("--prepared-by", o.preparedBy, "with --report: name for \"Prepared by\" in its heading");
  graph.add_option("--size", o.size, "Width x height in pixels")->capture_default_str();
  graph.add_option("--mode", o.mode, "auto, resistance or propulsion")->capture_default_str();
  graph.add_option("--line-style", o.lineStyle,
                   "Spline & Markers, Polyline & Markers, Spline, Polyline, Markers");
  graph.add_option("--legend", o.legend, "Top right, Top left, Bottom right, Bottom left, or off");
  graph.add_flag("--no-calc", o.noCalc, "Draw the results stored in the file without calculating");
  graph.add_flag("--list-presets", o.listPresets, "List the presets and axis fields, and exit");
  graph.callback([] { RunGraph(o); });
}

}  // namespace velmar::cli
