// Subcommands of velmar-cli. Each registers itself on the CLI11 app and records its exit
// code: 0 success, 1 a prediction failed, 2 a usage or file error.
#pragma once

#include <exception>
#include <string>

namespace CLI {
class App;
}

namespace velmar {
struct OpenResult;
}

namespace velmar::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

void RegisterCommands(CLI::App& app);
void RegisterBatchCommands(CLI::App& app);
void RegisterCalcCommands(CLI::App& app);
void RegisterFileCommands(CLI::App& app);
void RegisterLegacyCommands(CLI::App& app);
void RegisterGraphCommands(CLI::App& app);
void RegisterSizingCommands(CLI::App& app);
void RegisterValidationCommands(CLI::App& app);
void RegisterReportCommands(CLI::App& app);
void RegisterIgesCommands(CLI::App& app);
void RegisterEngineCommands(CLI::App& app);
int ExitCode();
void SetExitCode(int code);
// Prints "velmar-cli: " and a one-line message to standard error and sets the exit code.
void Fail(int code, const std::string& message);
// Runs a command's body: a fault of the engine ends the command with one line rather than an
// abort.
template <class F>
void Guarded(F f) {
  try {
    f();
  } catch (const std::exception& e) {
    Fail(kExitUsage, std::string("internal error: ") + e.what());
  }
}
// Opens `path` into a fresh project (NewProject, then OpenProjectFile). False, with a
// one-line message and exit code 2, when it does not exist or is not a project.
bool OpenInput(const std::string& path, OpenResult& result);

}  // namespace velmar::cli
