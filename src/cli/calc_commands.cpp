// velmar-cli calc, influence and estimate: open a project, run the engine exactly as the
// window program's commands do (headless hooks: questions take their default answer,
// warnings go to standard error), and print the results.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include "app/application.h"
#include "app/calculate.h"
#include "app/file_commands.h"
#include "app/variants.h"
#include "cli/commands.h"
#include "cli/result_output.h"
#include "core/constants.h"
#include "core/format.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/project_file.h"
#include "propulsion/propeller_sizing_run.h"
#include "propulsion/propulsion_driver.h"
#include "resistance/hull_estimates.h"
#include "resistance/parameter_influence.h"
#include "resistance/resistance_driver.h"
#include "validation/parameter_check.h"

namespace velmar::cli {
namespace {

bool OpenForCommand(const std::string& path) {
  OpenResult result;
  return OpenInput(path, result);
}

// The readable table of a propulsion run in groups, so that each stays legible in 120
// columns; every group starts with the speed. CSV and JSON carry every column.
struct ColumnGroup {
  const char* title;
  std::vector<const char*> names;
};
const std::vector<ColumnGroup>& PropulsionGroups() {
  static const std::vector<ColumnGroup> groups = {
      {"Resistance",
       {"Speed", "CoefFroudeLength", "DragBareHull", "DragAppendages", "DragMargin", "DragTotal",
        "PowerEffectiveTotal"}},
      {"Hull-propulsor interaction", {"Speed", "WakeFraction", "ThrustDeduction", "RelRotEfficiency"}},
      {"Propeller",
       {"Speed", "PropulsorRPM", "EngineRPM", "CPMeanPitch", "CoefPropulsorJ", "CoefPropulsorKT",
        "CoefPropulsorKQ", "PropulsorEfficiency", "OverallPropulsiveEfficiency", "PropulsorThrust",
        "PropulsorTorque"}},
      {"Power",
       {"Speed", "PowerEffectiveTotal", "PowerDeliveredPerProp", "PowerShaftPerProp", "PowerBrakePerProp",
        "PowerShaftTotal", "PowerBrakeTotal", "TotalDeliveredThrust", "TotalNetTowpull", "TransportFactor"}},
      {"Loading and cavitation",
       {"Speed", "CoefPropulsorKTJ2", "CoefPropulsorCP", "SigmaV", "Sigma07R", "PercentCavAverage",
        "PercentCavPeak", "RecommendedEAR", "MeanBladePressure", "MinPitchFaceCav", "TipSpeed"}},
      {"Engine", {"Speed", "EngineRPM", "PowerBrakePerProp", "PercentEngineLoadFactor", "FuelRatePerEngine"}},
  };
  return groups;
}

std::vector<int> ColumnsOf(const std::vector<const char*>& names) {
  std::vector<int> cols;
  for (const char* n : names) cols.push_back(clsVXSpeedPerformance::ColumnIndex(n));
  return cols;
}

void PrintTable(const clsVXSpeedPerformance& sp, const clsVXUnits& units, const std::vector<int>& cols) {
  std::vector<std::vector<std::string>> cells(static_cast<size_t>(sp.count()) + 2);
  for (int c : cols) {
    const FieldDesc& d = clsVXSpeedPerformance::Column(c);
    cells[0].push_back(*d.symbol ? d.symbol : d.name);
    const std::string u = UnitLabel(d, units);
    cells[1].push_back(u.empty() ? "-" : "[" + u + "]");
    // A coefficient without a format of its own shows like its neighbours, to six decimals;
    // the cavitation and loading results carry the marks of their checks.
    const bool plain = !*d.format && d.family == UnitFamily::None;
    for (int r = 0; r < sp.count(); ++r)
      cells[static_cast<size_t>(r) + 2].push_back(plain ? FormatNumber(sp.Raw(r, c), "0.000000")
                                                        : sp.FormattedOf(r, c, true));
  }
  std::vector<size_t> width(cols.size(), 0);
  for (const auto& row : cells)
    for (size_t i = 0; i < row.size(); ++i) width[i] = std::max(width[i], row[i].size());
  for (const auto& row : cells) {
    for (size_t i = 0; i < row.size(); ++i)
      std::cout << std::string(width[i] - row[i].size() + (i ? 2 : 0), ' ') << row[i];
    std::cout << "\n";
  }
}

struct CalcOptions {
  std::string path, mode = "resistance", format = "table", out, columns;
  bool keepResistance = false;
  bool size = false;       // --size: the sizing step sizes the propeller (propulsion mode)
  bool modeGiven = false;  // --mode was on the command line
};

void RunCalc(const CalcOptions& o) {
  if (o.size && o.modeGiven && !EqualsNoCase(o.mode, "propulsion"))
    return Fail(kExitUsage, "--size goes with --mode propulsion");
  const bool propulsion = o.size || EqualsNoCase(o.mode, "propulsion");
  if (!propulsion && !EqualsNoCase(o.mode, "resistance"))
    return Fail(kExitUsage, "unknown mode \"" + o.mode + "\"; use resistance or propulsion");
  if (!EqualsNoCase(o.format, "table") && !EqualsNoCase(o.format, "csv") && !EqualsNoCase(o.format, "json"))
    return Fail(kExitUsage, "unknown format \"" + o.format + "\"; use table, csv or json");
  if (o.keepResistance && !propulsion)
    return Fail(kExitUsage, "--keep-resistance goes with --mode propulsion");
  std::vector<int> cols;
  if (!o.columns.empty() && !ParseColumns(o.columns, cols)) return;
  if (!OpenForCommand(o.path)) return;
  // Propulsion mode takes the drag columns as they stand; a user calculates the resistance
  // first, and so does this command unless told to keep the stored drags.
  bool ok = true;
  std::string warning;
  auto calculate = [&](Mode mode) {
    App().CurrentMode = mode;
    const CalculateResult result = RunCalculate();
    if (result.warningShown) {
      std::cerr << StripControlChars(result.warning, true) << "\n";
      warning += (warning.empty() ? "" : "\r\n\r\n") + result.warning;
    }
    ok = ok && result.ok;
    return result.ok;
  };
  // --size: the sizing step of the propulsion run sizes the propeller, and a question whether
  // to calculate the propulsion after a change of the sizing is answered Yes.
  PropellerSizingHooks sizingHooks;
  if (o.size) SetHooks(&sizingHooks);
  if (!propulsion || !o.keepResistance) calculate(Mode::Resistance);
  if (propulsion && ok) calculate(Mode::Propulsion);
  if (o.size) SetHooks(nullptr);
  if (o.size && propulsion && ok && sizingHooks.reports.empty())
    std::cerr << "velmar-cli: --size: the project sets no propeller sizing; nothing was sized\n";
  for (const PropellerSizingReport& r : sizingHooks.reports) {
    (EqualsNoCase(o.format, "table") ? std::cout : std::cerr)
        << PropellerSizingReportText(r, *App().primary.Units);
    ok = ok && r.ok;
  }

  const ModelSet& p = App().primary;
  const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  const clsVXUnits& units = *p.Units;
  if (cols.empty() && !EqualsNoCase(o.format, "table")) cols = PredictionColumns(propulsion);

  if (EqualsNoCase(o.format, "json")) {
    // The whole document is built first, in one buffer of about its size, and written at once.
    std::string json;
    json.reserve(256 + (static_cast<size_t>(sp.count()) + 1) * cols.size() * 48);
    json += "{\"mode\": ";
    AppendJsonString(json, propulsion ? "propulsion" : "resistance");
    json += ", \"ok\": ";
    json += ok ? "true" : "false";
    json += ", \"warning\": ";
    AppendJsonString(json, warning);
    json += ", \"units\": {";
    bool first = true;
    for (int c : cols) {
      const FieldDesc& d = clsVXSpeedPerformance::Column(c);
      if (d.family == UnitFamily::None) continue;
      if (!first) json += ", ";
      AppendJsonString(json, d.name);
      json += ": ";
      AppendJsonString(json, UnitLabel(d, units));
      first = false;
    }
    json += "}, \"rows\": [";
    // The keys of the columns, each with the separator before it and the colon behind, are
    // written once, one after the other, and copied into every row.
    std::string keys;
    std::vector<size_t> keyEnds(cols.size());
    for (size_t i = 0; i < cols.size(); ++i) {
      if (i) keys += ", ";
      AppendJsonString(keys, clsVXSpeedPerformance::Column(cols[i]).name);
      keys += ": ";
      keyEnds[i] = keys.size();
    }
    for (int r = 0; r < sp.count(); ++r) {
      json += r ? ", {" : "{";
      for (size_t i = 0, at = 0; i < cols.size(); at = keyEnds[i++]) {
        json.append(keys, at, keyEnds[i] - at);
        AppendJsonNumber(json, sp.Raw(r, cols[i]));
      }
      json += "}";
    }
    json += "]}\n";
    std::cout << json;
  } else if (EqualsNoCase(o.format, "csv")) {
    for (size_t i = 0; i < cols.size(); ++i)
      std::cout << (i ? "," : "") << clsVXSpeedPerformance::Column(cols[i]).name;
    std::cout << "\n";
    for (size_t i = 0; i < cols.size(); ++i)
      std::cout << (i ? "," : "") << UnitLabel(clsVXSpeedPerformance::Column(cols[i]), units);
    std::cout << "\n";
    for (int r = 0; r < sp.count(); ++r) {
      for (size_t i = 0; i < cols.size(); ++i) std::cout << (i ? "," : "") << Full(sp.Raw(r, cols[i]));
      std::cout << "\n";
    }
  } else {
    std::cout << (propulsion ? "Propulsion" : "Resistance") << " prediction of " << p.Project->FileName
              << "\n";
    if (!cols.empty()) {
      std::cout << "\n";
      PrintTable(sp, units, cols);
    } else if (!propulsion) {
      std::vector<int> shown;
      for (int c : ResistanceResultColumns())
        if (*clsVXSpeedPerformance::Column(c).symbol) shown.push_back(c);
      std::cout << "\n";
      PrintTable(sp, units, shown);
    } else {
      // The operating pitch means something for a controllable-pitch propeller only.
      const int cpPitch = clsVXSpeedPerformance::ColumnIndex("CPMeanPitch");
      const bool cpp = p.Propeller->PropellerType() == 1;
      for (const ColumnGroup& g : PropulsionGroups()) {
        std::vector<int> shown = ColumnsOf(g.names);
        if (!cpp) std::erase(shown, cpPitch);
        std::cout << "\n" << g.title << "\n";
        PrintTable(sp, units, shown);
      }
    }
  }

  std::string error;
  if (!o.out.empty() && SaveProjectAs(o.out, &error) != 1)
    return Fail(kExitUsage,
                "the project could not be saved to \"" + o.out + "\"" + (error.empty() ? "" : ": " + error));
  if (!ok) SetExitCode(kExitFailed);
}

void RunInfluence(const std::string& path) {
  if (!OpenForCommand(path)) return;
  const ParameterInfluence pi = BuildParameterInfluence();
  if (!pi.refusal.empty()) {
    std::cerr << "Sensitivity analysis: " << pi.refusal << "\n";
    return SetExitCode(kExitFailed);
  }
  std::cout << "Parameter influence - " << pi.title << "\n";
  if (pi.designSpeed && pi.basisOk)
    std::cout << "Bare-hull drag at the design speed: "
              << FormatNumber(pi.basisDrag, App().primary.Units->ForceFormat()) << " "
              << App().primary.Units->GetUnitForceLabel(kCurrent) << "\n";
  else if (!pi.designSpeed)
    std::cout << "The speed table has no design speed.\n";
  else
    std::cerr << StripControlChars(pi.warning, true) << "\n";
  std::cout << "\nPercent change of drag for one percent change of the parameter ('*': stronger than "
               "proportional)\n";
  size_t w = 0;
  for (const auto& r : pi.rows) w = std::max(w, Trim(r.caption).size());
  for (const auto& r : pi.rows) {
    const std::string caption = Trim(r.caption);
    std::cout << "  " << caption << std::string(w - caption.size() + 2, ' ') << r.valueText
              << (r.strongerThanProportional ? " *" : "") << "\n";
  }
  if (!pi.basisOk && pi.designSpeed) SetExitCode(kExitFailed);
}

void RunEstimate(const std::string& path, const std::string& itemName) {
  EstimateItem item;
  if (!EstimateItemFromName(itemName, item)) {
    std::string names;
    for (const std::string& n : EstimateItemNames()) names += (names.empty() ? "" : ", ") + n;
    return Fail(kExitUsage, "unknown estimate item \"" + itemName + "\"; the items are " + names);
  }
  if (!OpenForCommand(path)) return;
  // Each proposal taken from a method's data set is followed by the rows of that method's
  // parameter check at the design speed, and its note.
  const std::vector<EstimateRow> rows = EstimateList(item, App().primary, App().CurrentMode);
  size_t w = 0;
  for (const auto& r : rows) w = std::max(w, r.label.size());
  for (const auto& r : rows) {
    std::cout << r.label << std::string(w - r.label.size() + 2, ' ') << (r.text.empty() ? "---" : r.text)
              << "\n";
    for (const ParameterCheckRow& c : r.checkRows)
      std::cout << "    " << c.name << "  " << c.range << "  " << c.value
                << (c.status == kCheckFail      ? "  Range"
                    : c.status == kCheckMissing ? "  Missing"
                                                : "")
                << "\n";
    if (!r.checkNote.empty()) std::cout << "    " << r.checkNote << "\n";
  }
}

}  // namespace

void DefineCalc(CLI::App& calc) {
  static CalcOptions o;
  calc.add_option("FILE", o.path, "Project file (*.vxvl)")->required();
  calc.add_option("--mode", o.mode,
                  "resistance, or propulsion (Calculate in Resistance mode, then in Propulsion mode)")
      ->capture_default_str();
  calc.add_flag("--keep-resistance", o.keepResistance,
                "with --mode propulsion: take the drag columns as stored in the file");
  calc.add_flag("--size", o.size, "size the propeller at the sizing step of the propulsion prediction");
  calc.add_option("--format", o.format, "table, csv or json")->capture_default_str();
  calc.add_option("--columns", o.columns, "comma-separated column names (as in the csv header) to print");
  calc.add_option("-o,--output", o.out, "Save the project with its results to this file");
  calc.callback([&calc] {
    o.modeGiven = calc.count("--mode") > 0;
    RunCalc(o);
  });
}

void DefineInfluence(CLI::App& influence) {
  static std::string path;
  influence.add_option("FILE", path, "Project file (*.vxvl)")->required();
  influence.callback([] { RunInfluence(path); });
}

void DefineEstimate(CLI::App& estimate) {
  static std::string path, item;
  estimate.add_option("FILE", path, "Project file (*.vxvl)")->required();
  estimate.add_option("ITEM", item, "HalfEntranceAngle, WaterplaneArea, WettedSurface, FormFactor, ...")
      ->required();
  estimate.callback([] { RunEstimate(path, item); });
}

}  // namespace velmar::cli
