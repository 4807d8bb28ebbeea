// The list of subcommands and their registration; the subcommands units, convert and water.
#include "cli/commands.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <stdexcept>
#include <string_view>

#include "core/format.h"
#include "core/helpers.h"
#include "core/units.h"
#include "core/water.h"

namespace velmar::cli {
namespace {

int g_exit = kExitOk;

void UsageError(const std::string& message) { Fail(kExitUsage, message); }

// The index of a unit label in a family, exact first, then without regard to case; -1.
int UnitIndex(const clsVXUnits& units, UnitFamily f, const std::string& label) {
  const int n = static_cast<int>(FamilyInfo(f).labels.size());
  for (int i = 0; i < n; ++i)
    if (units.Label(f, i) == label) return i;
  for (int i = 0; i < n; ++i)
    if (EqualsNoCase(units.Label(f, i), label)) return i;
  return -1;
}

std::string UnitList(const clsVXUnits& units, UnitFamily f) {
  std::string s;
  for (size_t i = 0; i < FamilyInfo(f).labels.size(); ++i)
    s += (i ? ", " : "") + units.Label(f, static_cast<int>(i));
  return s;
}

void RunUnits() {
  clsVXUnits units;
  for (UnitFamily f : AllUnitFamilies()) {
    const UnitFamilyInfo& info = FamilyInfo(f);
    std::cout << info.name << "\n";
    for (size_t i = 0; i < info.labels.size(); ++i) {
      std::cout << "  " << i << "  " << info.labels[i];
      for (size_t pad = info.labels[i].size(); pad < 10; ++pad) std::cout << ' ';
      if (!info.factors.empty()) std::cout << "  factor " << FormatNumber(info.factors[i], "");
      std::cout << "  format " << info.defaultFormats[i] << "\n";
    }
  }
  std::cout << "\nA factor is how many of the unit make one of the family's first unit.\n"
               "Temperature converts by degF = 1.8 x degC + 32.\n";
}

void RunConvert(const std::string& valueText, const std::string& familyName, const std::string& from,
                const std::string& to) {
  const UnitFamily f = FamilyFromName(familyName);
  if (f == UnitFamily::None) {
    UsageError("unknown unit family \"" + familyName + "\" (see velmar-cli units)");
    return;
  }
  clsVXUnits units;
  units.SigDigits(10);
  const int fromIndex = UnitIndex(units, f, from);
  const int toIndex = UnitIndex(units, f, to);
  if (fromIndex < 0 || toIndex < 0) {
    UsageError("unknown " + std::string(FamilyInfo(f).name) + " unit \"" + (fromIndex < 0 ? from : to) +
               "\"; the units are " + UnitList(units, f));
    return;
  }
  const std::string t = Trim(valueText);
  char* end = nullptr;
  const double value = std::strtod(t.c_str(), &end);
  if (t.empty() || end != t.c_str() + t.size()) {
    UsageError("\"" + valueText + "\" is not a number");
    return;
  }
  std::cout << FormatNumber(units.Convert(f, value, toIndex, fromIndex), "") << "\n";
}

void RunWater(const std::string& type, double temperature, const std::string& system) {
  static const std::vector<std::string> kTypes = {"salt", "fresh", "brackish"};
  const int typeIndex = FindInList(type, kTypes) - 1;
  if (typeIndex < 0) {
    UsageError("unknown water type \"" + type + "\"; the types are salt, fresh, brackish");
    return;
  }
  auto units = std::make_shared<clsVXUnits>();
  units->SigDigits(10);
  if (EqualsNoCase(system, "si")) {
    ApplyUnitPreset(*units, UnitPreset::SI);
  } else if (EqualsNoCase(system, "imperial")) {
    ApplyUnitPreset(*units, UnitPreset::Imperial);
  } else {
    UsageError("unknown unit system \"" + system + "\"; use si or imperial");
    return;
  }
  clsVXWaterProperties water(units);
  water.SetWaterPropertiesToStandardValues(typeIndex);
  water.Temperature(kCurrent, temperature);
  double density = 0.0, viscosity = 0.0;
  water.CalcDensityAndViscosity(density, viscosity);
  water.Density(kCurrent, density);
  water.Viscosity(kCurrent, viscosity);
  const std::string tempText = temperature == 0.0 ? "not given (15 \u00b0C)"
                                                  : FormatNumber(temperature, "0.0##") + " " +
                                                        units->GetUnitTemperatureLabel(kCurrent);
  std::cout << "Water type:   " << water.WaterDefinitionLabel() << "\n"
            << "Temperature:  " << tempText << "\n"
            << "Density:      " << FormatNumber(density, "0.0000####") << " "
            << units->GetUnitDensityLabel(kCurrent) << "\n"
            << "Viscosity:    " << FormatNumber(viscosity, "0.00000e+0") << " "
            << units->GetUnitViscosityLabel(kCurrent) << "\n";
}

}  // namespace

int ExitCode() { return g_exit; }
void SetExitCode(int code) { g_exit = code; }
void Fail(int code, const std::string& message) {
  std::cerr << "velmar-cli: " << message << "\n";
  g_exit = code;
}

void DefineUnits(CLI::App& units) { units.callback(RunUnits); }

void DefineConvert(CLI::App& convert) {
  static std::string value, family, from, to;
  convert.add_option("VALUE", value, "The number to convert")->required();
  convert.add_option("FAMILY", family, "Unit family, e.g. Length, Area, Speed")->required();
  convert.add_option("FROM", from, "Unit label to convert from, e.g. ft2")->required();
  convert.add_option("TO", to, "Unit label to convert to, e.g. mm2")->required();
  convert.callback([] { RunConvert(value, family, from, to); });
}

void DefineWater(CLI::App& water) {
  static std::string type = "salt", system = "si";
  static double temperature = 0.0;
  water.add_option("--type", type, "salt, fresh or brackish")->capture_default_str();
  water
      .add_option("--temperature", temperature,
                  "Water temperature in degC (si) or degF (imperial); 0 means 15 degC")
      ->capture_default_str();
  water.add_option("--units", system, "si or imperial")->capture_default_str();
  water.callback([] { RunWater(type, temperature, system); });
}

namespace {

// Every command, in the order of the help's list: its name, its line in that list and what
// adds its options and its action.
struct Command {
  const char* name;
  const char* description;
  void (*define)(CLI::App&);
};

constexpr Command kCommands[] = {
    {"calc", "Open a project, run Calculate and print the results", DefineCalc},
    {"influence", "Parameter influence of the hull on the bare-hull drag", DefineInfluence},
    {"estimate", "Proposed values of one hull item", DefineEstimate},
    {"batch", "Calculate many projects in parallel: one line per project and speed, the file name first",
     DefineBatch},
    {"sweep", "Calculate the full grid of variants of one project: the varied values first on each line",
     DefineSweep},
    {"info", "Source, units, principal particulars and form coefficients of a project", DefineInfo},
    {"new", "Write a new project, from a template project if one is given", DefineNew},
    {"save", "Open a project and save it, merging into the file that is there", DefineSave},
    {"convert-units", "Change the units of a project and save it under a new name", DefineConvertUnits},
    {"export-ship", "Write the ship of a project as a common ship object (*.ship)", DefineExportShip},
    {"import-legacy",
     "Read a project of an older version (*.vl5, *.mdl) or a *.vxf file into a new project file",
     DefineImportLegacy},
    {"export-legacy", "Write a project in the legacy project form (*.vl5)", DefineExportLegacy},
    {"export-iges", "Write the propeller of a project as an IGES surface model (*.igs)", DefineExportIges},
    {"graph", "Calculate a project and write a prediction graph as a picture", DefineGraph},
    {"size",
     "Size the propeller for the design point of the project's sizing settings and print before and after",
     DefineSize},
    {"engine-graph", "Draw the engine curves of a project or an engine file (*.engn)", DefineEngineGraph},
    {"check", "Rate the prediction methods for the project's vessel at its design speed, with their rows",
     DefineCheck},
    {"expert", "The Method Expert: one family's methods ranked for the vessel", DefineExpert},
    {"report", "Write a report of a project as PDF, HTML, CSV, RTF or plain text", DefineReport},
    {"units", "List the unit families with their units, factors and default formats", DefineUnits},
    {"convert", "Convert a value between two units of a family", DefineConvert},
    {"water", "Density and viscosity of standard water", DefineWater},
};

const Command* CommandNamed(std::string_view name) {
  for (const Command& c : kCommands)
    if (name == c.name) return &c;
  return nullptr;
}

// The commands the arguments name. CLI11 takes an argument equal to a registered command's
// name for that command wherever it stands; behind a "--" it may or may not, so a "--" before
// the first command counts as naming another one.
struct NamedCommands {
  const Command* first = nullptr;
  bool others = false;  // another command is named as well
};

NamedCommands CommandsNamed(int argc, const char* const* argv) {
  NamedCommands named;
  for (int i = 1; i < argc; ++i) {
    if (!named.first && std::string_view(argv[i]) == "--") named.others = true;
    const Command* c = CommandNamed(argv[i]);
    if (!c) continue;
    if (named.first && c != named.first) named.others = true;
    if (!named.first) named.first = c;
  }
  return named;
}

void Add(CLI::App& app, const Command& c, bool withOptions) {
  CLI::App& command = *app.add_subcommand(c.name, c.description);
  if (withOptions) c.define(command);
}

}  // namespace

// A run builds the options of its own command only: building those of every command took a
// fifth of a calc's instructions. A line that names no command runs none, and its help lists
// the commands by name and line only; a line that names two is judged with all of them, as
// it always was.
void RegisterCommands(CLI::App& app, int argc, const char* const* argv) {
  const NamedCommands named = CommandsNamed(argc, argv);
  if (named.first && !named.others) return Add(app, *named.first, true);
  for (const Command& c : kCommands) Add(app, c, named.others);
}

}  // namespace velmar::cli
