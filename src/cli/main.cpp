// velmar-cli: the headless front end. Each subcommand drives the engine the way the window
// program does and prints plain text. Argument errors give one line and exit code 2.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "app/application.h"
#include "cli/commands.h"
#include "core/format.h"
#include "files/project_file.h"

// The heap is left as the C library sets it up: a calc touches some 300 KB of it, and on the
// machines measured its small pages cost less than a transparent huge page, all 2 MB of which
// the system clears at the first write (docs/performance.md).

namespace {

// A command is over once its output is out. Taking the project and the argument parser apart
// would only cost time, so the process ends here; the output is flushed first. Under the
// sanitizers the program ends the usual way, so that their leak check sees everything freed.
int Leave(int code) {
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  std::cout.flush();
  std::cerr.flush();
  if (std::fflush(nullptr) == 0) _exit(code);
#endif
  return code;
}

}  // namespace

#ifdef VELMAR_FRAME_INDEX
// The start-up code of a static program hands its unwind frames to these two (the linker
// directs the calls here, CMakeLists.txt). Nothing is registered, so an exception finds its
// frame through the sorted index in the program header instead of sorting all frames first.
extern "C" void __wrap___register_frame_info(const void*, void*) {}
extern "C" void* __wrap___deregister_frame_info(const void*) { return nullptr; }
#endif

#ifdef VELMAR_RENDER_HELPER
#include <unistd.h>

#include <cstring>
#include <filesystem>

namespace {

// PNG, JPEG, BMP and PDF are drawn by the Qt back end, whose shared libraries would be loaded
// on every run of this program, also for a calc that is over in a millisecond. This program
// has no Qt; it starts the same command in its sibling that has the back end, from the same
// folder. Without the sibling the command runs here and draws SVG and the text reports only.
void HandDrawingCommandsOver(char** argv) {
  const char* command = nullptr;
  for (char** a = argv + 1; *a && !command; ++a)
    if (**a != '-') command = *a;
  if (!command || (std::strcmp(command, "graph") != 0 && std::strcmp(command, "report") != 0)) return;
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return;
  const std::string helper = (self.parent_path() / VELMAR_RENDER_HELPER).string();
  if (access(helper.c_str(), X_OK) == 0) execv(helper.c_str(), argv);
}

}  // namespace
#endif

int main(int argc, char** argv) {
  using namespace velmar;
#ifdef VELMAR_RENDER_HELPER
  HandDrawingCommandsOver(argv);
#endif
  KeepOpenedDocuments(true);
  CLI::App app{"Velmar: ship resistance and propulsion prediction, headless front end", "velmar-cli"};
  app.set_version_flag("--version", ProgramVersionText());
  app.require_subcommand(0, 1);
  cli::RegisterCommands(app, argc, argv);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForVersion& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::cerr << "velmar-cli: " << e.what() << "\n";
    return cli::kExitUsage;
  }
  if (app.get_subcommands().empty()) {
    std::cout << app.help();
    return 0;
  }
  return Leave(cli::ExitCode());
}
