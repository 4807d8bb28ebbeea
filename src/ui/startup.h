// The start-up of the window program: options read, a new project built, the project named on
// the command line opened, and the main window made. Also the program's icon and the
// screenshots of `make screenshots`.
#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <memory>

namespace velmar {

class MainWindow;
class QtHooks;
class SettingsStore;

// The project file named by the command-line argument: trimmed, without its double quotes;
// empty unless it is an existing file with the extension vxvl (any case).
QString ProjectArgument(const QString& argument);

// The start-up sequence up to a window ready to be shown.
std::unique_ptr<MainWindow> StartUp(const QStringList& arguments, SettingsStore& settings, QtHooks& hooks);

// The program icon, drawn (so that it needs no image plugin).
QIcon ProgramIcon();

// Pictures of the main window in both modes (calculated) and of every entry table, written
// to `folder` as PNG files. Returns the number of files written.
int WriteScreenshots(MainWindow& window, const QString& folder);

}  // namespace velmar
