// What the fuzz targets share: silent dialogs, a private folder in the temporary folder for the
// files a target writes, and the bytes of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include "core/ui_hooks.h"

namespace velmar::fuzz {

// Questions take their default answer and messages are dropped, so memory stays flat over
// millions of runs.
class SilentHooks : public UIHooks {
 public:
  Answer Ask(std::string_view, std::string_view, bool, Answer a) override { return a; }
  void ShowMessage(std::string_view, std::string_view, int) override {}
};

// Installs the silent dialogs once per process.
inline void Silence() {
  static SilentHooks hooks;
  SetHooks(&hooks);
}

// A folder of this process in the temporary folder, removed at exit; `File` names a file in it.
class Folder {
 public:
  explicit Folder(std::string_view prefix)
      : dir_(std::filesystem::temp_directory_path() /
             (std::string(prefix) + std::to_string(std::random_device{}()))) {
    std::filesystem::create_directories(dir_);
  }
  ~Folder() {
    std::error_code ec;
    std::filesystem::remove_all(dir_, ec);
  }
  std::filesystem::path File(std::string_view name) const { return dir_ / name; }

 private:
  std::filesystem::path dir_;
};

inline void WriteBytes(const std::filesystem::path& p, const uint8_t* data, size_t size) {
  std::ofstream f(p, std::ios::binary | std::ios::trunc);
  f.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

inline std::string Bytes(const std::filesystem::path& p) {
  std::ifstream f(p, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(f)), {});
}

}  // namespace velmar::fuzz
