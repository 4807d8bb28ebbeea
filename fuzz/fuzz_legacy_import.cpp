// Fuzz target of the legacy readers and writer: the input is written to a file and imported
// as a legacy project, a file of the sibling program, a hull, an engine file and a waterjet
// file, each over a fresh project. Any file must import or be refused with a message; an
// imported project must export; and what was exported must be a fixed point: imported and
// exported again it gives the same bytes.
#include "app/application.h"
#include "files/legacy_files.h"
#include "files/project_file.h"
#include "fuzz_support.h"
#include "propulsion/engine.h"
#include "propulsion/waterjet.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  velmar::fuzz::Silence();
  static const velmar::fuzz::Folder folder("velmar-fuzz-legacy-");
  static const std::filesystem::path in = folder.File("input.vl5"), out = folder.File("exported.vl5"),
                                     again = folder.File("again.vl5");
  velmar::fuzz::WriteBytes(in, data, size);
  // A fixed clock, so that the date of both exports is the same.
  velmar::SetProjectFileClock([] { return velmar::DateTime{2024, 3, 5, 14, 7, 0}; });
  using velmar::LegacyFileKind;
  for (LegacyFileKind kind :
       {LegacyFileKind::ShipObject, LegacyFileKind::HullOnly, LegacyFileKind::Results}) {
    velmar::NewProject();
    const velmar::LegacyReport r = velmar::ImportLegacyFile(in, velmar::App().primary, kind);
    if (!r.ok && r.message.empty()) __builtin_trap();
  }
  velmar::NewProject();
  velmar::ModelSet& s = velmar::App().primary;
  if (const auto r = velmar::ImportLegacyEngineFile(in, *s.Engine); !r.ok && r.message.empty())
    __builtin_trap();
  if (const auto r = velmar::ImportLegacyWaterjetFile(in, *s.Waterjet); !r.ok && r.message.empty())
    __builtin_trap();
  velmar::NewProject();
  const velmar::LegacyReport r = velmar::ImportLegacyFile(in, s, LegacyFileKind::Project);
  if (!r.ok) {
    if (r.message.empty()) __builtin_trap();
    return 0;
  }
  if (!velmar::ExportLegacyProject(out, s).ok) __builtin_trap();
  velmar::NewProject();
  if (!velmar::ImportLegacyFile(out, s, LegacyFileKind::Project).ok) __builtin_trap();
  if (!velmar::ExportLegacyProject(again, s).ok) __builtin_trap();
  if (velmar::fuzz::Bytes(out) != velmar::fuzz::Bytes(again)) __builtin_trap();
  return 0;
}
