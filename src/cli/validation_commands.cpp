// velmar-cli check and expert: how well each prediction method fits a project's vessel at its
// design speed (rating, the three statuses, the note and the parameter rows), the Method
// Expert's ranked list of one family, and the acceptance of a method from it.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <stdexcept>

#include "app/file_commands.h"
#include "cli/commands.h"
#include "cli/result_output.h"
#include "core/format.h"
#include "core/helpers.h"
#include "files/project_file.h"
#include "validation/method_expert.h"

namespace velmar::cli {
namespace {

std::string Json(std::string_view s) { return JsonString(s); }

std::string Number(double v) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.17g", v);
  return buf;
}

const char* FamilyTitle(MethodFamily f) { return MethodFamilyTitle(f); }

const char* ModeName(Mode m) { return m == Mode::Propulsion ? "propulsion" : "resistance"; }

std::string FamilyNames() {
  std::string s;
  for (MethodFamily f : kMethodFamilies) s += (s.empty() ? "" : ", ") + std::string(MethodFamilyName(f));
  return s;
}

// Characters on screen: the middle dots of a range take two bytes and one column.
size_t Width(const std::string& s) {
  return static_cast<size_t>(std::count_if(s.begin(), s.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

using Cells = std::vector<std::vector<std::string>>;

// The width of each column: its widest cell.
std::vector<size_t> Widths(const Cells& cells) {
  std::vector<size_t> w;
  for (const auto& row : cells) {
    w.resize(std::max(w.size(), row.size()), 0);
    for (size_t i = 0; i < row.size(); ++i) w[i] = std::max(w[i], Width(row[i]));
  }
  return w;
}

// One line of a table padded to the widths; `right` marks the right-aligned columns.
void PrintLine(const std::vector<std::string>& row, const std::vector<size_t>& w,
               const std::vector<bool>& right, const std::string& indent) {
  std::string line = indent;
  for (size_t i = 0; i < row.size(); ++i) {
    const std::string pad(w[i] - Width(row[i]), ' ');
    line += (i ? "  " : "") + (i < right.size() && right[i] ? pad + row[i] : row[i] + pad);
  }
  while (!line.empty() && line.back() == ' ') line.pop_back();
  std::cout << line << "\n";
}

// The parameter rows of a check: name, range, value and the flag of a failed or missing row.
void PrintRows(const std::vector<ParameterCheckRow>& rows) {
  std::vector<std::array<std::string, 4>> table;
  ShowCheckRows(rows, table);
  Cells cells = {{"Parameter", "Range", "Value", ""}};
  for (const auto& r : table) cells.push_back({r[0], r[1], r[2], r[3]});
  const std::vector<size_t> w = Widths(cells);
  for (const auto& row : cells) PrintLine(row, w, {false, true, true, false}, "        ");
}

// A list of methods under its heading (cells[0]), each line followed by its parameter rows
// (and the note line of the Expert) when `rows` is set.
void PrintMethods(const Cells& cells, const std::vector<bool>& right, const std::string& indent,
                  const std::vector<MethodEvaluation>& methods, bool rows, bool noteLine) {
  const std::vector<size_t> w = Widths(cells);
  for (size_t i = 0; i < cells.size(); ++i) {
    if (rows && i > 1) std::cout << "\n";
    PrintLine(cells[i], w, right, indent);
    if (!rows || i == 0) continue;
    PrintRows(methods[i - 1].rows);
    if (noteLine) std::cout << "        " << MethodExpertNoteLine(methods[i - 1].note) << "\n";
  }
}

std::string RowsJson(const std::vector<ParameterCheckRow>& rows) {
  std::string s = "[";
  for (size_t i = 0; i < rows.size(); ++i)
    s += (i ? ", " : "") + std::string("{\"name\": ") + Json(rows[i].name) +
         ", \"range\": " + Json(rows[i].range) + ", \"value\": " + Json(rows[i].value) +
         ", \"status\": " + Json(ParameterCheckLabel(rows[i].status)) + "}";
  return s + "]";
}

std::string EvaluationJson(const MethodEvaluation& e) {
  return "\"index\": " + std::to_string(e.methodIndex) + ", \"label\": " + Json(e.label) +
         ", \"checkId\": " + std::to_string(e.checkId) + ", \"rating\": " + std::to_string(e.rating) +
         ", \"speedStatus\": " + Json(ParameterCheckLabel(e.speedStatus)) +
         ", \"parameterStatus\": " + Json(ParameterCheckLabel(e.parameterStatus)) +
         ", \"methodStatus\": " + Json(ParameterCheckLabel(e.methodStatus)) + ", \"note\": " + Json(e.note) +
         ", \"rows\": " + RowsJson(e.rows);
}

bool ParseFormat(const std::string& format, bool& json) {
  json = EqualsNoCase(format, "json");
  if (json || EqualsNoCase(format, "table")) return true;
  Fail(kExitUsage, "unknown format \"" + format + "\"; use table or json");
  return false;
}

// Opens the project; false (exit 2, or 1 without a design speed) when it cannot be checked.
bool OpenWithDesignSpeed(const std::string& path, double& designSpeed) {
  OpenResult opened;
  if (!OpenInput(path, opened)) return false;
  if (DesignSpeed(*App().primary.SpeedPerformance, kCurrent, designSpeed)) return true;
  Fail(kExitFailed,
       "\"" + path +
           "\" has no design speed (no design row with a speed above 0): the methods are checked "
           "at the design speed, so nothing can be rated");
  return false;
}

std::string SpeedText(double speed) {
  const clsVXUnits& u = *App().primary.Units;
  return FormatNumber(speed, u.Format(UnitFamily::Speed)) + " " + u.Label(UnitFamily::Speed);
}

// ---- check ----------------------------------------------------------------------------------

struct CheckOptions {
  std::string path, family, method, format = "table";
  bool rows = false;
};

void RunCheck(const CheckOptions& o) {
  bool json = false;
  if (!ParseFormat(o.format, json)) return;
  std::vector<MethodFamily> families(std::begin(kMethodFamilies), std::end(kMethodFamilies));
  if (!o.family.empty()) {
    MethodFamily f;
    if (!MethodFamilyFromName(o.family, f))
      return Fail(kExitUsage, "unknown family \"" + o.family + "\"; the families are " + FamilyNames());
    families = {f};
  }
  // With a method: only the families that hold it, and only that method.
  if (!o.method.empty()) {
    std::erase_if(families, [&](MethodFamily f) { return MethodFamilyIndex(f, o.method) < 0; });
    if (families.empty()) {
      return Fail(kExitUsage, "no method \"" + o.method + "\"" +
                                  (o.family.empty() ? std::string() : " among the " + o.family + " methods") +
                                  "; see velmar-cli check FILE for the labels");
    }
  }
  double designSpeed = 0.0;
  if (!OpenWithDesignSpeed(o.path, designSpeed)) return;
  const ModelSet& p = App().primary;
  const bool showRows = o.rows || !o.method.empty();

  if (json) {
    std::cout << "{\"file\": " << Json(p.Project->FileName) << ", \"designSpeed\": " << Number(designSpeed)
              << ", \"speedUnit\": " << Json(p.Units->Label(UnitFamily::Speed)) << ", \"families\": [";
  } else {
    std::cout << "Method check of " << p.Project->FileName << " at the design speed "
              << SpeedText(designSpeed) << "\n";
  }
  bool firstFamily = true;
  for (MethodFamily f : families) {
    const Mode mode = MethodFamilyMode(f);
    std::vector<MethodEvaluation> list = EvaluateMethods(f, p, mode);
    if (!o.method.empty()) {
      const int index = MethodFamilyIndex(f, o.method);
      std::erase_if(list, [index](const MethodEvaluation& e) { return e.methodIndex != index; });
    }
    const int selected = SelectedMethod(p, f);
    if (json) {
      std::cout << (firstFamily ? "" : ", ") << "{\"family\": " << Json(MethodFamilyName(f))
                << ", \"mode\": " << Json(ModeName(mode)) << ", \"selected\": " << selected
                << ", \"methods\": [";
      for (size_t i = 0; i < list.size(); ++i)
        std::cout << (i ? ", " : "") << "{" << EvaluationJson(list[i]) << "}";
      std::cout << "]}";
    } else {
      std::cout << "\n"
                << FamilyTitle(f) << " methods (" << ModeName(mode) << " mode; * the project's method)\n";
      Cells cells = {{"#", "Method", "Rating", "Speed", "Parameters", "Method", "Note"}};
      for (const MethodEvaluation& e : list)
        cells.push_back({std::to_string(e.methodIndex) + (e.methodIndex == selected ? "*" : " "), e.label,
                         std::to_string(e.rating), ParameterCheckLabel(e.speedStatus),
                         ParameterCheckLabel(e.parameterStatus), ParameterCheckLabel(e.methodStatus),
                         e.note});
      PrintMethods(cells, {true, false, true}, "  ", list, showRows, false);
    }
    firstFamily = false;
  }
  if (json) std::cout << "]}\n";
}

// ---- expert ---------------------------------------------------------------------------------

struct ExpertOptions {
  std::string path, family, out, format = "table";
  int apply = -1;
  bool rows = false;
};

void RunExpert(const ExpertOptions& o) {
  bool json = false;
  if (!ParseFormat(o.format, json)) return;
  MethodFamily f;
  if (!MethodFamilyFromName(o.family, f))
    return Fail(kExitUsage, "unknown family \"" + o.family + "\"; the families are " + FamilyNames());
  const bool applying = o.apply >= 0;
  if (applying && o.apply >= MethodFamilyCount(f))
    return Fail(kExitUsage, "--apply takes a method index of the " + std::string(MethodFamilyName(f)) +
                                " list, 0 to " + std::to_string(MethodFamilyCount(f) - 1));
  if (applying != !o.out.empty())
    return Fail(kExitUsage, "--apply and -o go together: the chosen method is saved to the output file");

  double designSpeed = 0.0;
  if (!OpenWithDesignSpeed(o.path, designSpeed)) return;
  const ModelSet& p = App().primary;
  const MethodExpertList list = BuildMethodExpertList(f, p);
  const int selected = SelectedMethod(p, f);

  if (json) {
    std::cout << "{\"file\": " << Json(p.Project->FileName) << ", \"family\": " << Json(MethodFamilyName(f))
              << ", \"mode\": " << Json(ModeName(list.mode)) << ", \"designSpeed\": " << Number(designSpeed)
              << ", \"speedUnit\": " << Json(p.Units->Label(UnitFamily::Speed))
              << ", \"selected\": " << selected << ", \"methods\": [";
    for (size_t i = 0; i < list.methods.size(); ++i) {
      const MethodEvaluation& e = list.methods[i];
      const RgbColour c = MethodRatingColour(e.rating);
      std::cout << (i ? ", " : "") << "{\"rank\": " << i + 1 << ", " << EvaluationJson(e)
                << ", \"colour\": " << Json(MethodRatingColourName(e.rating)) << ", \"rgb\": [" << c.red
                << ", " << c.green << ", " << c.blue << "]}";
    }
    std::cout << "]";
  } else {
    std::cout << "Method Expert: " << FamilyTitle(f) << " methods for " << p.Project->FileName
              << " at the design speed " << SpeedText(designSpeed) << " (" << ModeName(list.mode)
              << " mode)\n\n";
    Cells cells = {{"Rank", "Method", "Rating", "Colour", "Speed", "Parameters", "Method", "Index", "Note"}};
    for (size_t i = 0; i < list.methods.size(); ++i) {
      const MethodEvaluation& e = list.methods[i];
      cells.push_back({std::to_string(i + 1), e.label, std::to_string(e.rating),
                       MethodRatingColourName(e.rating), ParameterCheckLabel(e.speedStatus),
                       ParameterCheckLabel(e.parameterStatus), ParameterCheckLabel(e.methodStatus),
                       std::to_string(e.methodIndex) + (e.methodIndex == selected ? "*" : " "), e.note});
    }
    PrintMethods(cells, {true, false, true, false, false, false, false, true}, "", list.methods, o.rows,
                 true);
    std::cout << "\n* the project's method. Apply one with --apply INDEX -o OUT.vxvl\n";
  }

  if (applying) {
    MethodExpertResult& result = MethodExpertSelection();
    result = {1, o.apply};
    ApplyMethodExpertResult(f, result, p);
    if (SaveProjectAs(o.out) != 1) {
      if (json) std::cout << "}\n";
      return Fail(kExitUsage, "the project could not be saved to \"" + o.out + "\"");
    }
    if (json)
      std::cout << ", \"applied\": {\"index\": " << o.apply
                << ", \"label\": " << Json(MethodFamilyLabel(f, o.apply)) << ", \"output\": " << Json(o.out)
                << "}";
    else
      std::cout << "Applied " << MethodFamilyName(f) << " method " << o.apply << " \""
                << MethodFamilyLabel(f, o.apply) << "\"; saved to " << o.out << "\n";
  }
  if (json) std::cout << "}\n";
}

}  // namespace

void DefineCheck(CLI::App& check) {
  static CheckOptions c;
  check.add_option("FILE", c.path, "Project file (*.vxvl)")->required();
  check.add_option("--family", c.family,
                   "hull, appendage, wind, seas, channel or interaction (default: all)");
  check.add_option("--method", c.method, "one method by its label, e.g. \"Holtrop\"; prints its rows");
  check.add_flag("--rows", c.rows, "print the parameter rows of every method");
  check.add_option("--format", c.format, "table or json (json always carries the rows)")
      ->capture_default_str();
  check.callback([] { Guarded([] { RunCheck(c); }); });
}

void DefineExpert(CLI::App& expert) {
  static ExpertOptions e;
  expert.add_option("FILE", e.path, "Project file (*.vxvl)")->required();
  expert.add_option("--family", e.family, "hull, appendage, wind, seas, channel or interaction")->required();
  expert.add_option("--apply", e.apply, "take the method of this index (the Index column) as the project's");
  expert.add_option("-o,--output", e.out, "with --apply: save the project with the method taken");
  expert.add_flag("--rows", e.rows, "print the parameter rows and the note of every method");
  expert.add_option("--format", e.format, "table or json (json always carries the rows)")
      ->capture_default_str();
  expert.callback([] { Guarded([] { RunExpert(e); }); });
}

}  // namespace velmar::cli
