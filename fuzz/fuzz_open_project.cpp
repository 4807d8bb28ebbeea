// Fuzz target of the project reader and writer: the input is written to a file, opened as a
// project over a fresh one, and the project is saved to a second file and opened again. Any
// file must open or be refused with a message; anything that opens must save; and what was
// saved must be a fixed point: opened and saved again it gives the same bytes.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include "app/file_commands.h"
#include "app/application.h"
#include "core/ui_hooks.h"
#include "files/project_file.h"

namespace {

// Questions take their default answer and messages are dropped, so memory stays flat.
class SilentHooks : public velmar::UIHooks {
 public:
  velmar::Answer Ask(std::string_view, std::string_view, bool, velmar::Answer a) override { return a; }
  void ShowMessage(std::string_view, std::string_view, int) override {}
};

// Two files of this process in the temporary folder, removed at exit.
struct Paths {
  std::filesystem::path dir, in, out, again;
  Paths() {
    dir = std::filesystem::temp_directory_path() / ("velmar-fuzz-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(dir);
    in = dir / "input.vxvl";
    out = dir / "saved.vxvl";
    again = dir / "again.vxvl";
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
  std::error_code ec;
  std::filesystem::remove(paths.out, ec);
  std::filesystem::remove(paths.again, ec);
  // A fixed clock, so that the last-modified text of both saves is the same.
  velmar::SetProjectFileClock([] { return velmar::DateTime{2024, 3, 5, 14, 7, 0}; });
  velmar::NewProject();
  const velmar::OpenResult r = velmar::OpenProjectFile(paths.in);
  if (!r.opened) {
    if (r.message.empty()) __builtin_trap();
    return 0;
  }
  // Save As: merged from the input, the project's own file.
  velmar::SetProjectNamesFromPath(paths.in);
  if (velmar::SaveProjectFile(paths.out, paths.in) != 1) __builtin_trap();
  velmar::NewProject();
  if (!velmar::OpenProjectFile(paths.out).opened) __builtin_trap();
  if (velmar::SaveProjectFile(paths.again, paths.out) != 1) __builtin_trap();
  if (Bytes(paths.out) != Bytes(paths.again)) __builtin_trap();
  return 0;
}
