// velmar-cli size: the propeller sizing window's logic from the command line. The resistance
// is calculated first (as Calculate in Resistance mode does), then the interaction
// coefficients of the propulsion prediction, which give the design point its wake, thrust
// deduction and relative-rotative efficiency; then the sizing, its report, and the project
// saved with the sized propeller when asked.
#include <CLI/CLI.hpp>
#include <iostream>

#include "app/application.h"
#include "app/calculate.h"
#include "cli/commands.h"
#include "core/diagnostics.h"
#include "core/helpers.h"
#include "files/project_file.h"
#include "propulsion/propeller_sizing_run.h"
#include "propulsion/propulsion_driver.h"

namespace velmar::cli {
namespace {

struct SizeOptions {
  std::string path, out;
  bool keepResistance = false;
};

void RunSize(const SizeOptions& o) {
  OpenResult opened;
  if (!OpenInput(o.path, opened)) return;
  ModelSet& p = App().primary;
  if (p.Propulsion->PropulsorCalcType() == 3)
    return Fail(kExitUsage, "the project's propulsor is a waterjet; there is no propeller to size");
  if (!o.keepResistance) {
    App().CurrentMode = Mode::Resistance;
    const CalculateResult r = RunCalculate();
    if (r.warningShown) std::cerr << StripControlChars(r.warning, true) << "\n";
    if (!r.ok) return Fail(kExitFailed, "the resistance prediction failed; nothing was sized");
  }
  ResetCalcErrorState();
  if (!PreparePropulsionPrediction(*p.WaterProperties, *p.Hull, *p.ITTC78, *p.Propulsion, *p.Propeller,
                                   *p.PropellerSeries, *p.SpeedPerformance)) {
    std::cerr << StripControlChars(GetCalcCause(), true) << "\n";
    return Fail(kExitFailed, "the interaction coefficients of the design point could not be found");
  }
  const PropellerSizingReport report =
      ApplyPropellerSizing(*p.WaterProperties, *p.Hull, *p.Propulsion, *p.Propeller, *p.PropellerSeries,
                           *p.PropellerSizing, *p.SpeedPerformance);
  std::cout << PropellerSizingReportText(report, *p.Units);
  if (!report.ran)
    return Fail(kExitUsage, "no propeller sizing is set in the project (PropellerSizingIdentity)");
  if (!report.ok) return SetExitCode(kExitFailed);
  if (!o.out.empty() && SaveProjectFile(o.out) != 1)
    return Fail(kExitUsage, "the project could not be saved to \"" + o.out + "\"");
}

}  // namespace

void DefineSize(CLI::App& size) {
  static SizeOptions o;
  size.add_option("FILE", o.path, "Project file (*.vxvl)")->required();
  size.add_flag("--keep-resistance", o.keepResistance, "take the drag columns as stored in the file");
  size.add_option("-o,--output", o.out, "Save the project with the sized propeller to this file");
  size.callback([] { RunSize(o); });
}

}  // namespace velmar::cli
