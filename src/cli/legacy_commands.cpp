// velmar-cli import-legacy and export-legacy: projects of older versions (*.vl5, *.mdl) and
// of the sibling program (*.vxf) to a project file, and a project to the legacy form. What an
// import could not read is printed as the File Import Warning; the output is written whole
// or not at all.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "app/application.h"
#include "app/file_commands.h"
#include "cli/commands.h"
#include "files/legacy_files.h"

namespace velmar::cli {
namespace {

namespace fs = std::filesystem;

void PrintItems(const LegacyReport& r, const std::string& head) {
  if (r.items.empty()) return;
  std::string text = r.ItemsText();
  std::erase(text, '\r');
  std::cout << head << "\n" << text;
}

void RunImport(const std::string& path, const std::string& out) {
  std::error_code ec;
  if (fs::exists(out, ec))
    return Fail(kExitUsage, Quoted(out) + " exists already; an import is not merged into it");
  NewProject();
  const LegacyFileKind kind = LegacyKindOfPath(path);
  const LegacyReport r = ImportLegacyFile(path, App().primary, kind);
  if (!r.ok) return Fail(kExitUsage, r.message);
  std::string error;
  if (SaveProjectAs(out, &error) != 1)
    return Fail(kExitUsage,
                "the project could not be written to " + Quoted(out) + (error.empty() ? "" : ": " + error));
  std::cout << "Imported " << Quoted(path) << " to " << Quoted(out) << "\n";
  PrintItems(r, "File Import Warning: these items could not be read and keep the values of a new project:");
}

void RunExport(const std::string& path, const std::string& out) {
  std::error_code ec;
  if (fs::exists(path, ec) && fs::exists(out, ec) && fs::equivalent(path, out, ec))
    return Fail(kExitUsage, "the output would replace the input; choose another name");
  OpenResult opened;
  if (!OpenInput(path, opened)) return;
  const LegacyReport r = ExportLegacyProject(out, App().primary);
  if (!r.ok) return Fail(kExitUsage, "the project could not be written to " + Quoted(out) + ": " + r.message);
  std::cout << "Exported " << Quoted(path) << " to " << Quoted(out) << "\n";
  PrintItems(r, "File Export Error: these items could not be written:");
}

}  // namespace

void DefineImportLegacy(CLI::App& import) {
  static std::string path, out;
  import.add_option("FILE", path, "Legacy file (*.vl5, *.mdl, *.vxf)")->required();
  import.add_option("-o,--output", out, "The new project file (*.vxvl); must not exist")->required();
  import.callback([] { Guarded([] { RunImport(path, out);
});
}  // namespace velmar::cli
);
}

void DefineExportLegacy(CLI::App& exp) {
  static std::string path, out;
  exp.add_option("FILE", path, "Project file (*.vxvl)")->required();
  exp.add_option("-o,--output", out, "The legacy project file (*.vl5)")->required();
  exp.callback([] { Guarded([] { RunExport(path, out); }); });
}

}  // namespace velmar::cli
