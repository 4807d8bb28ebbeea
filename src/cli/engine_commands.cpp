// velmar-cli engine-graph: the graph of the engine data window (maximum-power and defined-load
// curves, less parasitic, rated point) of a project's engine or of an engine file, written as
// an SVG picture (the window draws the same graph on screen).
#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>

#include "app/application.h"
#include "cli/commands.h"
#include "core/helpers.h"
#include "files/project_file.h"
#include "files/safe_write.h"
#include "reports/engine_graph.h"

namespace velmar::cli {
namespace {

struct EngineGraphOptions {
  std::string path, out, size = "900x600";
};

void RunEngineGraph(const EngineGraphOptions& o) {
  int width = 0, height = 0;
  if (std::sscanf(o.size.c_str(), "%dx%d", &width, &height) != 2 || width < 100 || height < 100)
    return Fail(kExitUsage, "--size wants WxH, e.g. 900x600");
  // An engine file is read into a new project, whose units it takes as held.
  if (EqualsNoCase(std::filesystem::path(o.path).extension().string(), ".engn")) {
    NewProject();
    if (!ReadEngineFile(o.path, *App().primary.Engine))
      return Fail(kExitUsage, "\"" + o.path + "\" is not an engine file");
  } else {
    OpenResult opened;
    if (!OpenInput(o.path, opened)) return;
  }
  clsVXCoordinateGraph graph = EngineDataGraph(*App().primary.Engine);
  const SafeWriteResult written = WriteFileSafely(o.out, GraphSvg(graph, width, height));
  if (!written.ok) Fail(kExitUsage, written.message);
}

}  // namespace

void DefineEngineGraph(CLI::App& cmd) {
  static EngineGraphOptions o;
  cmd.add_option("FILE", o.path, "Project file (*.vxvl) or engine file (*.engn)")->required();
  cmd.add_option("-o,--output", o.out, "SVG picture to write")->required();
  cmd.add_option("--size", o.size, "Width x height in pixels")->capture_default_str();
  cmd.callback([] { RunEngineGraph(o); });
}

}  // namespace velmar::cli
