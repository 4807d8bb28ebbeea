// Subcommands of velmar-cli. Each adds its options and action to its CLI11 subcommand and
// records its exit code: 0 success, 1 a prediction failed, 2 a usage or file error.
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

// Adds the subcommands to `app`: only the one the arguments name, or all of them (see
// commands.cpp).
void RegisterCommands(CLI::App& app, int argc, const char* const* argv);
// Each command's options and action, added to its subcommand.
void DefineCalc(CLI::App& calc);
void DefineInfluence(CLI::App& influence);
void DefineEstimate(CLI::App& estimate);
void DefineBatch(CLI::App& batch);
void DefineSweep(CLI::App& sweep);
void DefineInfo(CLI::App& info);
void DefineNew(CLI::App& create);
void DefineSave(CLI::App& save);
void DefineConvertUnits(CLI::App& convert);
void DefineExportShip(CLI::App& ship);
void DefineImportLegacy(CLI::App& import);
void DefineExportLegacy(CLI::App& exp);
void DefineExportIges(CLI::App& cmd);
void DefineGraph(CLI::App& graph);
void DefineSize(CLI::App& size);
void DefineEngineGraph(CLI::App& cmd);
void DefineCheck(CLI::App& check);
void DefineExpert(CLI::App& expert);
void DefineReport(CLI::App& report);
void DefineUnits(CLI::App& units);
void DefineConvert(CLI::App& convert);
void DefineWater(CLI::App& water);
int ExitCode();
void SetExitCode(int code);
// A path in double quotes, as messages show it.
inline std::string Quoted(const std::string& path) { return "\"" + path + "\""; }
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
