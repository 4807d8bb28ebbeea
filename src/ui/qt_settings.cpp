#include "ui/qt_settings.h"

namespace velmar {
namespace {
QString Path(std::string_view key, std::string_view name) {
  const QString n = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  if (key.empty()) return n;
  return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())) + "/" + n;
}
}  // namespace

QtSettingsStore::QtSettingsStore() : settings_(QSettings::NativeFormat, QSettings::UserScope, "Corvenith", "Velmar") {}

std::string QtSettingsStore::Get(std::string_view key, std::string_view name, std::string_view fallback) const {
  const QVariant v = settings_.value(Path(key, name));
  if (!v.isValid()) return std::string(fallback);
  return v.toString().toStdString();
}

void QtSettingsStore::Set(std::string_view key, std::string_view name, std::string_view value) {
  settings_.setValue(Path(key, name), QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())));
  settings_.sync();
}

void QtSettingsStore::Remove(std::string_view key, std::string_view name) {
  settings_.remove(Path(key, name));
  settings_.sync();
}

}  // namespace velmar
