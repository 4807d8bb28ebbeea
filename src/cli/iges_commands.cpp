// velmar-cli export-iges: the propeller of a project as an IGES surface model, as the
// window's "Export propeller CAD shape" command writes it. A propeller that cannot be
// exported gives the program's own refusal text and exit code 2.
#include <CLI/CLI.hpp>
#include <iostream>

#include "app/application.h"
#include "cli/commands.h"
#include "core/format.h"
#include "files/iges_export.h"
#include "files/project_file.h"
#include "propulsion/propeller.h"
#include "propulsion/propulsion_settings.h"

namespace velmar::cli {
namespace {

void RunExportIges(const std::string& path, const std::string& out) {
  OpenResult opened;
  if (!OpenInput(path, opened)) return;
  const ModelSet& p = App().primary;
  const std::string refusal = CheckPropellerForIGES(*p.Propeller, *p.Propulsion);
  if (!refusal.empty()) return Fail(kExitUsage, refusal);
  const int unit = p.Units->PropLengthIndex();
  const BladeGeometryInput in = IGESBladeInput(*p.Propeller);
  const IGESExportResult r = ExportPropellerIGES(out, in, unit);
  if (!r.ok) return Fail(kExitUsage, "the propeller could not be written to \"" + out + "\": " + r.message);
  std::cout << "Exported the propeller of \"" << path << "\" to \"" << out << "\": " << in.bladeCount
            << " blades, diameter " << FormatNumber(in.diameter, "0.0###") << " "
            << p.Units->Label(UnitFamily::PropLength) << ", " << r.bladeSurfaces << " blade surfaces and "
            << r.hubSurfaces << " hub surfaces\n";
}

}  // namespace

void DefineExportIges(CLI::App& cmd) {
  static std::string path, out;
  cmd.add_option("FILE", path, "Project file (*.vxvl)")->required();
  cmd.add_option("-o,--output", out, "The IGES file (*.igs)")->required();
  cmd.callback([] {
    try {
      RunExportIges(path, out);
    } catch (const std::exception& e) {
      Fail(kExitUsage, std::string("internal error: ") + e.what());
    }
  });
}

}  // namespace velmar::cli
