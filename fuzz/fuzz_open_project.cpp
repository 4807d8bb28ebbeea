// Fuzz target of the project reader and writer: the input is written to a file, opened as a
// project over a fresh one, and the project is saved to a second file and opened again. Any
// file must open or be refused with a message; anything that opens must save; and what was
// saved must be a fixed point: opened and saved again it gives the same bytes.
#include "app/application.h"
#include "app/file_commands.h"
#include "files/project_file.h"
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  velmar::fuzz::Silence();
  static const velmar::fuzz::Folder folder("velmar-fuzz-");
  static const std::filesystem::path in = folder.File("input.vxvl"), out = folder.File("saved.vxvl"),
                                     again = folder.File("again.vxvl");
  velmar::fuzz::WriteBytes(in, data, size);
  std::error_code ec;
  std::filesystem::remove(out, ec);
  std::filesystem::remove(again, ec);
  // A fixed clock, so that the last-modified text of both saves is the same.
  velmar::SetProjectFileClock([] { return velmar::DateTime{2024, 3, 5, 14, 7, 0}; });
  velmar::NewProject();
  const velmar::OpenResult r = velmar::OpenProjectFile(in);
  if (!r.opened) {
    if (r.message.empty()) __builtin_trap();
    return 0;
  }
  // Save As: merged from the input, the project's own file.
  velmar::SetProjectNamesFromPath(in);
  if (velmar::SaveProjectFile(out, in) != 1) __builtin_trap();
  velmar::NewProject();
  if (!velmar::OpenProjectFile(out).opened) __builtin_trap();
  if (velmar::SaveProjectFile(again, out) != 1) __builtin_trap();
  if (velmar::fuzz::Bytes(out) != velmar::fuzz::Bytes(again)) __builtin_trap();
  return 0;
}
