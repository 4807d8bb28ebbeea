// Subcommands of velmar-cli. Each registers itself on the CLI11 app and records its exit
// code: 0 success, 1 a prediction failed, 2 a usage or file error.
#pragma once

namespace CLI {
class App;
}

namespace velmar::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

void RegisterCommands(CLI::App& app);
int ExitCode();

}  // namespace velmar::cli
