// Runs velmar-cli for the end-to-end tests: output (stdout and stderr together, or apart)
// and exit code.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace velmar::testing {

struct CliRun {
  std::string out;
  int code;
};

// `args` go through the shell; `stderrTo` is appended to the command (" 2>&1" by default).
inline CliRun Cli(const std::string& args, const std::string& stderrTo = " 2>&1") {
  const std::string cmd = std::string(VELMAR_CLI_PATH) + " " + args + stderrTo;
  FILE* p = popen(cmd.c_str(), "r");
  std::string out;
  std::array<char, 4096> buf{};
  size_t n;
  while ((n = fread(buf.data(), 1, buf.size(), p)) > 0) out.append(buf.data(), n);
  const int status = pclose(p);
  return {out, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

}  // namespace velmar::testing
