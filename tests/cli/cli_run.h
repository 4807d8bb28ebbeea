// Runs velmar-cli for the end-to-end tests: output (stdout and stderr together, or apart)
// and exit code; example projects as arguments and edited copies of them.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

#include "../core/test_support.h"

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

inline bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The path of an example project as an argument.
inline std::string Example(const std::string& name) { return ExamplePath(name).string(); }

// `text` with its first `from` replaced by `to`.
inline std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// A copy of an example in `dir` with its first `from` replaced by `to`; its path.
inline std::string EditedCopy(const TempDir& dir, const std::string& name, const std::string& from,
                              const std::string& to) {
  WriteBytes(dir / name, Replaced(ReadBytes(ExamplePath(name)), from, to));
  return (dir / name).string();
}

}  // namespace velmar::testing
