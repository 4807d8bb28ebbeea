// Fuzz target of the legacy readers and writer: the input is written to a file and imported
// as a legacy project, a file of the sibling program, a hull, an engine file and a waterjet
// file, each over a fresh project. Any file must import or be refused with a message; an
// imported project must export; and what was exported must be a fixed point: imported and
// exported again it gives the same bytes.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include "app/application.h"
#include "core/ui_hooks.h"
#include "files/legacy_files.h"
#include "files/project_file.h"
#include "propulsion/engine.h"
#include "propulsion/waterjet.h"

namespace {

// Questions take their default answer and messages are dropped, so memory stays flat.
class SilentHooks : public velmar::UIHooks {
 public:
  velmar::Answer Ask(std::string_view, std::string_view, bool, velmar::Answer a) override { return a; }
  void ShowMessage(std::string_view, std::string_view, int) override {}
};

// Files of this process in the temporary folder, removed at exit.
struct Paths {
  std::filesystem::path dir, in, out, again;
  Paths() {
    dir = std::filesystem::temp_directory_path() /
          ("velmar-fuzz-legacy-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(dir);
    in = dir / "input.vl5";
    out = dir / "exported.vl5";
    again = dir / "again.vl5";
  }
  ~Paths() {
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
  }
};

std::string Bytes(const std::filesystem::path& p) {
  std::ifstream f(p, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(f)), {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static SilentHooks hooks;
  static Paths paths;
  velmar::SetHooks(&hooks);
  {
    std::ofstream f(paths.in, std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  // A fixed clock, so that the date of both exports is the same.
  velmar::SetProjectFileClock([] { return velmar::DateTime{2024, 3, 5, 14, 7, 0}; });
  using velmar::LegacyFileKind;
  for (LegacyFileKind kind :
       {LegacyFileKind::ShipObject, LegacyFileKind::HullOnly, LegacyFileKind::Results}) {
    velmar::NewProject();
    const velmar::LegacyReport r = velmar::ImportLegacyFile(paths.in, velmar::App().primary, kind);
    if (!r.ok && r.message.empty()) __builtin_trap();
  }
  velmar::NewProject();
  velmar::ModelSet& s = velmar::App().primary;
  if (const auto r = velmar::ImportLegacyEngineFile(paths.in, *s.Engine); !r.ok && r.message.empty())
    __builtin_trap();
  if (const auto r = velmar::ImportLegacyWaterjetFile(paths.in, *s.Waterjet); !r.ok && r.message.empty())
    __builtin_trap();
  velmar::NewProject();
  const velmar::LegacyReport r = velmar::ImportLegacyFile(paths.in, s, LegacyFileKind::Project);
  if (!r.ok) {
    if (r.message.empty()) __builtin_trap();
    return 0;
  }
  if (!velmar::ExportLegacyProject(paths.out, s).ok) __builtin_trap();
  velmar::NewProject();
  if (!velmar::ImportLegacyFile(paths.out, s, LegacyFileKind::Project).ok) __builtin_trap();
  if (!velmar::ExportLegacyProject(paths.again, s).ok) __builtin_trap();
  if (Bytes(paths.out) != Bytes(paths.again)) __builtin_trap();
  return 0;
}
