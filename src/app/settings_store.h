// The per-user settings of the program (theme, template, report layout, recent files): keys
// with text values under the root Software\Corvenith\Velmar. The window program keeps them
// in its platform's settings store; the engine and the command line use an INI file or
// memory.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace velmar {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  // The value of `name` under the key `key` (a path below the root such as "RecentFiles"),
  // or `fallback` when there is none.
  virtual std::string Get(std::string_view key, std::string_view name,
                          std::string_view fallback = {}) const = 0;
  virtual void Set(std::string_view key, std::string_view name, std::string_view value) = 0;
  virtual void Remove(std::string_view key, std::string_view name) = 0;
};

// Settings held in memory only (tests, one-off command-line runs).
class MemorySettingsStore : public SettingsStore {
 public:
  std::string Get(std::string_view key, std::string_view name, std::string_view fallback = {}) const override;
  void Set(std::string_view key, std::string_view name, std::string_view value) override;
  void Remove(std::string_view key, std::string_view name) override;

 protected:
  std::map<std::string, std::map<std::string, std::string>> values_;
};

// Settings in an INI file ([key] sections, name=value lines), read at construction and
// written back safely after each change.
class IniSettingsStore : public MemorySettingsStore {
 public:
  explicit IniSettingsStore(std::filesystem::path path);
  void Set(std::string_view key, std::string_view name, std::string_view value) override;
  void Remove(std::string_view key, std::string_view name) override;
  const std::filesystem::path& Path() const { return path_; }

 private:
  void Save() const;
  std::filesystem::path path_;
};

// The user's data folder of the program: $VELMAR_DATA_DIR when set, else
// $XDG_DATA_HOME/Velmar, else ~/.local/share/Velmar (created on demand by its users).
std::filesystem::path ApplicationDataFolder();

}  // namespace velmar
