// The settings store of the window program: QSettings under the maker and product names, so
// that the values live in the platform's own place (the registry key Software\Corvenith\Velmar
// on Windows, ~/.config/Corvenith/Velmar.conf on Linux).
#pragma once

#include <QSettings>

#include "app/settings_store.h"

namespace velmar {

class QtSettingsStore : public SettingsStore {
 public:
  QtSettingsStore();
  std::string Get(std::string_view key, std::string_view name, std::string_view fallback = {}) const override;
  void Set(std::string_view key, std::string_view name, std::string_view value) override;
  void Remove(std::string_view key, std::string_view name) override;
  QString FileName() const { return settings_.fileName(); }

 private:
  mutable QSettings settings_;
};

}  // namespace velmar
