// velmar-cli: the headless front end. Each subcommand drives the engine the way the window
// program does and prints plain text. Argument errors give one line and exit code 2.
#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/commands.h"
#include "app/application.h"
#include "core/format.h"

int main(int argc, char** argv) {
  using namespace velmar;
  CLI::App app{"Velmar: ship resistance and propulsion prediction, headless front end", "velmar-cli"};
  app.set_version_flag("--version", ProgramVersionText());
  app.require_subcommand(0, 1);
  cli::RegisterCommands(app);
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
  return cli::ExitCode();
}
