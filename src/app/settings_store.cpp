// Settings stores: memory and INI file.
#include "app/settings_store.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "core/helpers.h"
#include "files/safe_write.h"

namespace velmar {

std::string MemorySettingsStore::Get(std::string_view key, std::string_view name,
                                     std::string_view fallback) const {
  const auto k = values_.find(std::string(key));
  if (k == values_.end()) return std::string(fallback);
  const auto v = k->second.find(std::string(name));
  return v == k->second.end() ? std::string(fallback) : v->second;
}

void MemorySettingsStore::Set(std::string_view key, std::string_view name, std::string_view value) {
  values_[std::string(key)][std::string(name)] = std::string(value);
}

void MemorySettingsStore::Remove(std::string_view key, std::string_view name) {
  const auto k = values_.find(std::string(key));
  if (k != values_.end()) k->second.erase(std::string(name));
}

IniSettingsStore::IniSettingsStore(std::filesystem::path path) : path_(std::move(path)) {
  std::ifstream in(path_);
  std::string line, section;
  while (std::getline(in, line)) {
    const std::string t = Trim(line);
    if (t.empty() || t[0] == ';' || t[0] == '#') continue;
    if (t.front() == '[' && t.back() == ']') {
      section = t.substr(1, t.size() - 2);
      continue;
    }
    const size_t eq = t.find('=');
    if (eq != std::string::npos) values_[section][Trim(t.substr(0, eq))] = Trim(t.substr(eq + 1));
  }
}

void IniSettingsStore::Set(std::string_view key, std::string_view name, std::string_view value) {
  MemorySettingsStore::Set(key, name, value);
  Save();
}

void IniSettingsStore::Remove(std::string_view key, std::string_view name) {
  MemorySettingsStore::Remove(key, name);
  Save();
}

void IniSettingsStore::Save() const {
  std::ostringstream out;
  for (const auto& [section, names] : values_) {
    out << "[" << section << "]\n";
    for (const auto& [name, value] : names) out << name << "=" << value << "\n";
  }
  std::error_code ec;
  std::filesystem::create_directories(path_.parent_path(), ec);
  WriteFileSafely(path_, out.str());  // settings are a convenience: a failed write loses nothing
}

std::filesystem::path ApplicationDataFolder() {
  if (const char* dir = std::getenv("VELMAR_DATA_DIR"); dir && *dir) return dir;
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg)
    return std::filesystem::path(xdg) / "Velmar";
  if (const char* home = std::getenv("HOME"); home && *home)
    return std::filesystem::path(home) / ".local" / "share" / "Velmar";
  return std::filesystem::temp_directory_path() / "Velmar";
}

}  // namespace velmar
