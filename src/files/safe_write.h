// Writing a file so that the user's data survives whatever happens: the new text goes to a
// temporary file beside the target and replaces it by a rename, so the old file stands until
// the new one is complete. A read-only target is refused, a symbolic link is written through
// to its target, the target keeps its permissions and owner, and a folder that cannot take a
// new file (but holds a writable target) is served by a write in place after a backup copy.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace velmar {

struct SafeWriteResult {
  bool ok = false;
  std::string message;  // why it failed, in the product's words; empty on success
};

// Writes `bytes` to `path` as above. On failure the file that stood at `path` is unchanged
// (or restored from its backup copy, which the message then names).
SafeWriteResult WriteFileSafely(const std::filesystem::path& path, std::string_view bytes);

// True when the file exists and no one may write it (no write permission bit set). This is
// what users call a read-only file, also for a process that could override it.
bool IsReadOnlyFile(const std::filesystem::path& path);

}  // namespace velmar
