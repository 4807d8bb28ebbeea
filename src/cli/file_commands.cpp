// velmar-cli info, new, save, convert-units and export-ship: the file commands of the window
// program, headless. Questions take their default answer (the open warning's is No). A file
// that is missing, is not a project or cannot be written gives one line and exit code 2; an
// output is only ever written through the project writer, whole or not at all.
#include "app/file_commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <random>
#include <stdexcept>

#include "app/application.h"
#include "cli/commands.h"
#include "core/format.h"
#include "core/helpers.h"
#include "files/file_json.h"
#include "files/project_file.h"

namespace velmar::cli {
namespace {

namespace fs = std::filesystem;

// A message of the engine as one line.
std::string OneLine(std::string_view text) {
  std::string s(text);
  std::replace(s.begin(), s.end(), '\r', ' ');
  std::replace(s.begin(), s.end(), '\n', ' ');
  return Trim(StripControlChars(s, false));
}

// Fail for a command that goes no further.
bool Refuse(const std::string& message) {
  Fail(kExitUsage, message);
  return false;
}

bool IsFile(const std::string& path) {
  std::error_code ec;
  return fs::is_regular_file(path, ec);
}

// The top-level keys of a file's tree, or nothing when it has no object at its root.
std::vector<std::string> BlocksOf(const std::string& path) {
  clsVXFileJSON file;
  file.ReadFile(path);
  const JsonObject root = file.ParsedObject();
  return root ? root->Keys() : std::vector<std::string>{};
}

// An output that exists is merged into (projects) or replaced (ship files); a file there
// that is neither is somebody else's and is left alone.
bool OutputMayBeWritten(const std::string& out) {
  std::error_code ec;
  if (!fs::exists(out, ec)) return true;
  if (!IsFile(out)) return Refuse(Quoted(out) + " is not a file");
  if (fs::file_size(out, ec) == 0) return true;
  for (const std::string& block : BlocksOf(out))
    if (EqualsNoCase(block, "Project") || EqualsNoCase(block, "Units") || EqualsNoCase(block, "Hull"))
      return true;
  return Refuse(Quoted(out) + " exists and is not a Velmar project; it is left as it is");
}

bool SamePath(const std::string& a, const std::string& b) {
  std::error_code ec;
  if (fs::exists(a, ec) && fs::exists(b, ec)) return fs::equivalent(a, b, ec);
  return fs::weakly_canonical(a, ec) == fs::weakly_canonical(b, ec);
}

// Saves the project under `out`, which becomes its name and place, as Save As does: what its
// own file holds and this version does not write is carried over.
bool Save(const std::string& out) {
  std::string error;
  if (SaveProjectAs(out, &error) == 1) return true;
  return Refuse("the project could not be written to " + Quoted(out) +
                (error.empty() ? "" : ": " + OneLine(error)));
}

// Blocks and tags of `path` that the program does not write itself: what a merge kept.
std::vector<std::string> KeptByMerge(const std::string& path) {
  std::error_code ec;
  const fs::path fresh =
      fs::temp_directory_path(ec) / ("velmar-cli-" + std::to_string(std::random_device{}()) + ".vxvl");
  std::vector<std::string> kept;
  if (ec || SaveProjectFile(fresh, fs::path{}) != 1) return kept;
  clsVXFileJSON written, own;
  written.ReadFile(path);
  own.ReadFile(fresh);
  fs::remove(fresh, ec);
  const JsonObject root = written.ParsedObject(), ownRoot = own.ParsedObject();
  if (!root || !ownRoot) return kept;
  for (const std::string& block : root->Keys()) {
    if (!ownRoot->Exists(block)) {
      kept.push_back(block);
      continue;
    }
    const JsonObject tags = root->item(block).Object(), ownTags = ownRoot->item(block).Object();
    if (!tags || !ownTags) continue;
    for (const std::string& tag : tags->Keys())
      if (!ownTags->Exists(tag)) kept.push_back(block + "." + tag);
  }
  return kept;
}

// ---- info ---------------------------------------------------------------------------------

// The unit of a field as the project shows it.
std::string UnitOf(const DataClass& obj, const FieldDesc& d) {
  if (d.family == UnitFamily::Volume) return obj.Units()->Label(UnitFamily::Length) + "3";
  if (d.family != UnitFamily::None) return obj.Units()->Label(d.family);
  return std::string_view(d.name).ends_with("Deg") ? "deg" : "";
}

std::string Caption(const FieldDesc& d) {
  std::string s = d.label;
  if (!s.empty() && s.back() == ':') s.pop_back();
  return s.empty() ? d.name : s;
}

// Rows of symbol, caption, value and unit, aligned in columns.
using Rows = std::vector<std::array<std::string, 4>>;

void PrintRows(const Rows& rows) {
  std::array<size_t, 4> w{};
  for (const auto& r : rows)
    for (size_t i = 0; i < 4; ++i) w[i] = std::max(w[i], r[i].size());
  for (const auto& r : rows) {
    std::string line = "  " + r[0] + std::string(w[0] - r[0].size() + 2, ' ') + r[1] +
                       std::string(w[1] - r[1].size() + 2, ' ') + std::string(w[2] - r[2].size(), ' ') +
                       r[2] + (r[3].empty() ? "" : " " + r[3]);
    std::cout << line << "\n";
  }
}

// Which preset the selection equals: "SI", "Imperial", or "mixed".
std::string UnitSystem(const clsVXUnits& units) {
  for (const auto& [preset, name] :
       {std::pair{UnitPreset::SI, "SI"}, std::pair{UnitPreset::Imperial, "Imperial"}}) {
    clsVXUnits p;
    ApplyUnitPreset(p, preset);
    bool same = true;
    for (UnitFamily f : AllUnitFamilies()) same = same && p.Index(f) == units.Index(f);
    if (same) return name;
  }
  return "mixed";
}

void RunInfo(const std::string& path) {
  OpenResult r;
  if (!OpenInput(path, r)) return;
  const ModelSet& p = App().primary;
  const clsVXUnits& u = *p.Units;
  const clsVXHull& h = *p.Hull;
  std::cout << "File:          " << path << "\n"
            << "Source:        " << p.Project->Source << "\n"
            << "Description:   " << p.Project->Description << "\n"
            << "ID:            " << p.Project->ProjectID << "\n"
            << "Last modified: " << p.Project->LastModified << "\n"
            << "Units:         " << UnitSystem(u) << " (length " << u.Label(UnitFamily::Length) << ", weight "
            << u.Label(UnitFamily::Weight) << ", force " << u.Label(UnitFamily::Force) << ", power "
            << u.Label(UnitFamily::Power) << ", speed " << u.Label(UnitFamily::Speed) << ", propeller "
            << u.Label(UnitFamily::PropLength) << ")\n"
            << "Hull:          " << h.LabelOf(h.FieldIndex("HullConfigType")) << ", "
            << h.LabelOf(h.FieldIndex("HullPropulsorType")) << " x "
            << FormatNumber(h.Raw(h.FieldIndex("PropulsorCountPerHull")), "0") << " per hull\n"
            << "Water:         " << p.WaterProperties->WaterDefinitionLabel() << ", "
            << p.WaterProperties->FormattedOf(p.WaterProperties->FieldIndex("Density")) << " "
            << u.Label(UnitFamily::Density) << "\n";

  std::cout << "\nPrincipal particulars\n";
  Rows rows;
  auto field = [&](const char* name) {
    const int i = h.FieldIndex(name);
    const FieldDesc& d = h.Fields()[static_cast<size_t>(i)];
    rows.push_back({d.symbol, Caption(d), h.FormattedOf(i), UnitOf(h, d)});
  };
  field("Displacement");
  rows.push_back({h.DisplacementVolumeSymbol(), "Displacement volume",
                  FormatNumber(h.DisplacementVolume(kCurrent), u.LengthFormat()),
                  u.Label(UnitFamily::Length) + "3"});
  for (const char* name : {"LengthWL", "BeamWLMax", "DraftSubmergedMax"}) field(name);
  if (h.LabelOf(h.FieldIndex("HullConfigType")) != "Monohull") field("DemihullSpacing");
  for (const char* name : {"WettedSurface", "AreaSectMax", "AreaWaterplane", "XBuoyancyFwdTr",
                           "XAreaWaterplaneFwdTr", "BulbAreaSect", "AreaSectAtTr", "AngleHalfEntDeg"})
    field(name);
  PrintRows(rows);

  std::cout << "\nForm coefficients\n";
  using C = clsVXHull::Coef;
  static const std::pair<C, const char*> kCoefs[] = {
      {C::CoefBlock, "Block coefficient"},
      {C::CoefPrismatic, "Prismatic coefficient"},
      {C::CoefAreaSectMax, "Midship section coefficient"},
      {C::CoefWaterplane, "Waterplane coefficient"},
      {C::CoefLwlBwlRatio, "Length-beam ratio"},
      {C::CoefBwlTvolRatio, "Beam-draft ratio"},
      {C::CoefLwlVol, "Slenderness, LWL / VOL^(1/3)"},
      {C::CoefWettedSurfaceCS, "Wetted surface coefficient, S / (VOL LWL)^(1/2)"},
      {C::CoefAtAxRatio, "Transom area ratio"},
      {C::CoefAbtAxRatio, "Bulb area ratio"},
  };
  rows.clear();
  for (const auto& [c, text] : kCoefs)
    rows.push_back({h.CoefficientSymbol(c), text, h.CoefficientFormatted(c), ""});
  rows.push_back({"XCB/LWL", "Centre of buoyancy forward of the transom, fraction of LWL",
                  h.CoefficientFormatted(C::CoefLCBLwlRatio), ""});
  PrintRows(rows);

  const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  const int speed = clsVXSpeedPerformance::ColumnIndex("Speed");
  std::cout << "\nSpeeds:        " << sp.count();
  if (sp.count() > 0) {
    std::cout << ", " << sp.FormattedOf(0, speed) << " to " << sp.FormattedOf(sp.count() - 1, speed) << " "
              << u.Label(UnitFamily::Speed);
    const int design = sp.DesignSpeedIndex();
    if (design >= 0 && design < sp.count())
      std::cout << "; design speed " << sp.FormattedOf(design, speed) << " " << u.Label(UnitFamily::Speed);
  }
  int open = 0;
  for (int i = 0; i < p.TaskList->TaskCount(); ++i) open += p.TaskList->Task(i).Status != "Done";
  std::cout << "\nTasks:         " << p.TaskList->TaskCount() << " (" << open << " to do)\n";

  if (!r.current) {
    std::string text = r.warningText;
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    std::cout << "\nThe file is not in the current format; saving it updates it.\n" << text;
    if (!text.empty() && text.back() != '\n') std::cout << "\n";
  }
}

// ---- new, save, convert-units, export-ship --------------------------------------------------

void RunNew(const std::string& out, const std::string& templatePath) {
  std::error_code ec;
  if (fs::exists(out, ec))
    return Fail(kExitUsage, Quoted(out) + " exists already; a new project is not merged into it");
  Application& app = App();
  app.TemplateEnabled = !templatePath.empty();
  app.TemplateFile = templatePath;
  bool loaded = true;
  if (!templatePath.empty()) {
    if (!IsFile(templatePath))
      return Fail(kExitUsage, "the template " + Quoted(templatePath) + " does not exist");
    InstallProjectFileHooks();
    auto reader = app.LoadTemplateFile;
    app.LoadTemplateFile = [&loaded, reader](const std::string& path) {
      return loaded = reader && reader(path);
    };
  }
  NewProject();
  app.LoadTemplateFile = nullptr;
  if (!loaded) return Fail(kExitUsage, "the template " + Quoted(templatePath) + " is not a Velmar project");
  if (!Save(out)) return;
  std::cout << "Created " << Quoted(out)
            << (templatePath.empty() ? "" : " from the template " + Quoted(templatePath)) << "\n";
}

void RunSave(const std::string& path, std::string out) {
  if (out.empty()) out = path;
  OpenResult r;
  if (!OutputMayBeWritten(out) || !OpenInput(path, r) || !Save(out)) return;
  const std::vector<std::string> kept = KeptByMerge(out);
  std::cout << "Saved " << Quoted(out) << (r.current ? "" : ", updated to the current format");
  if (!kept.empty()) {
    std::cout << "; kept " << kept.size() << " block" << (kept.size() == 1 ? "" : "s")
              << " or tags that this version does not write:";
    for (size_t i = 0; i < kept.size(); ++i) std::cout << (i ? ", " : " ") << kept[i];
  }
  std::cout << "\n";
}

void RunConvertUnits(const std::string& path, const std::string& system, const std::string& out) {
  UnitPreset preset;
  if (EqualsNoCase(system, "si"))
    preset = UnitPreset::SI;
  else if (EqualsNoCase(system, "imperial"))
    preset = UnitPreset::Imperial;
  else
    return Fail(kExitUsage, "unknown unit system \"" + system + "\"; use si or imperial");
  // Tags this version does not know would keep their numbers in the old units beside the
  // new Units block, so the converted project never merges into its own input.
  if (SamePath(path, out)) return Fail(kExitUsage, "the output would replace the input; choose another name");
  OpenResult r;
  if (!OutputMayBeWritten(out) || !OpenInput(path, r)) return;
  clsVXUnits selection = *App().primary.Units;
  ApplyUnitPreset(selection, preset);
  ApplyUnitsCommand(&selection);
  // What this version does not know cannot be converted: it is left out, and said so.
  const std::vector<std::string> left = KeptByMerge(path);
  SetProjectNamesFromPath(out);
  std::string error;
  if (SaveProjectFile(out, fs::path{}, &error) != 1)
    return Fail(kExitUsage, "the project could not be written to " + Quoted(out) + ": " + OneLine(error));
  std::cout << "Converted " << Quoted(path) << " to " << (preset == UnitPreset::SI ? "SI" : "Imperial")
            << " units: " << Quoted(out);
  if (!left.empty()) {
    std::cout << "; left out " << left.size() << " block" << (left.size() == 1 ? "" : "s")
              << " or tags that this version does not know (their numbers cannot be converted):";
    for (size_t i = 0; i < left.size(); ++i) std::cout << (i ? ", " : " ") << left[i];
  }
  std::cout << "\n";
}

void RunExportShip(const std::string& path, const std::string& out) {
  if (SamePath(path, out)) return Fail(kExitUsage, "the output would replace the input; choose another name");
  OpenResult r;
  if (!OutputMayBeWritten(out) || !OpenInput(path, r)) return;
  if (ExportCommonShipObject(out) != 1)
    return Fail(kExitUsage, "the ship could not be written to " + Quoted(out));
  std::cout << "Exported the ship of " << Quoted(path) << " to " << Quoted(out) << "\n";
}

}  // namespace

// Opens `path` into a fresh project. False, with the message given, when it cannot be opened.
bool OpenInput(const std::string& path, OpenResult& result) {
  std::error_code ec;
  if (!fs::exists(path, ec)) return Refuse(Quoted(path) + " does not exist");
  if (!IsFile(path)) return Refuse(Quoted(path) + " is not a file");
  NewProject();
  result = OpenProjectFile(path);
  if (!result.opened) {
    const std::string why = OneLine(result.message);
    return Refuse(why.empty() ? Quoted(path) + " is not a Velmar project" : why);
  }
  if (!result.unknownLabels.empty()) {
    std::string text = result.unknownLabels;
    std::erase(text, '\r');
    std::cerr << "warning: " << text << "\n";
  }
  // As the Open command does: the project is the file it was opened from.
  SetProjectNamesFromPath(path);
  return true;
}

void DefineInfo(CLI::App& info) {
  static std::string path;
  info.add_option("FILE", path, "Project file (*.vxvl)")->required();
  info.callback([] { Guarded([] { RunInfo(path); }); });
}

void DefineNew(CLI::App& create) {
  static std::string out, templatePath;
  create.add_option("-o,--output", out, "The new project file (*.vxvl); must not exist")->required();
  create.add_option("--template", templatePath, "A project whose data the new project starts from");
  create.callback([] { Guarded([] { RunNew(out, templatePath); }); });
}

void DefineSave(CLI::App& save) {
  static std::string path, out;
  save.add_option("FILE", path, "Project file (*.vxvl)")->required();
  save.add_option("-o,--output", out, "Where to save (default: FILE itself)");
  save.callback([] { Guarded([] { RunSave(path, out); }); });
}

void DefineConvertUnits(CLI::App& convert) {
  static std::string path, system, out;
  convert.add_option("FILE", path, "Project file (*.vxvl)")->required();
  convert.add_option("--to", system, "si or imperial")->required();
  convert.add_option("-o,--output", out, "The converted project file")->required();
  convert.callback([] { Guarded([] { RunConvertUnits(path, system, out); }); });
}

void DefineExportShip(CLI::App& ship) {
  static std::string path, out;
  ship.add_option("FILE", path, "Project file (*.vxvl)")->required();
  ship.add_option("-o,--output", out, "The ship file (*.ship)")->required();
  ship.callback([] { Guarded([] { RunExportShip(path, out); }); });
}

}  // namespace velmar::cli
