// velmar: the window program. Options:
//   FILE                  a project (*.vxvl) to open at start
//   --screenshots DIR     write the pictures of the window and the entry tables, then quit
//   --startup-time        print the time from start to the shown window, then quit
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>

#include "app/file_commands.h"
#include "ui/main_window.h"
#include "ui/qt_hooks.h"
#include "ui/qt_settings.h"
#include "ui/startup.h"

namespace {

// Unattended runs answer questions with their default and print the boxes.
class UnattendedHooks : public velmar::QtHooks {
 public:
  velmar::Answer Ask(std::string_view, std::string_view, bool, velmar::Answer defaultAnswer) override {
    return defaultAnswer;
  }
  void ShowMessage(std::string_view title, std::string_view text, int) override {
    std::fprintf(stderr, "velmar: %.*s: %.*s\n", static_cast<int>(title.size()), title.data(),
                 static_cast<int>(text.size()), text.data());
  }
};

}  // namespace

int main(int argc, char** argv) {
  QElapsedTimer clock;
  clock.start();
  QApplication app(argc, argv);
  QApplication::setOrganizationName("Corvenith");
  QApplication::setApplicationName("Velmar");
  QApplication::setApplicationDisplayName("Velmar");
  QApplication::setDesktopFileName("velmar");
  QApplication::setWindowIcon(velmar::ProgramIcon());
  velmar::InstallCrashHandler();

  const QStringList args = QApplication::arguments();
  const int shotsAt = static_cast<int>(args.indexOf("--screenshots"));
  const bool unattended = shotsAt > 0 || args.contains("--startup-time");
  velmar::QtSettingsStore settings;
  UnattendedHooks quietHooks;
  velmar::QtHooks hooks;
  velmar::QtHooks& used = unattended ? quietHooks : hooks;
  QStringList startArgs = args;
  if (shotsAt > 0 && shotsAt + 1 < args.size()) startArgs.removeAt(shotsAt + 1);
  auto window = velmar::StartUp(startArgs, settings, used);
  window->show();
  if (args.contains("--startup-time")) {
    QCoreApplication::processEvents();
    std::printf("velmar: window shown %lld ms after start\n", static_cast<long long>(clock.elapsed()));
    return 0;
  }
  if (shotsAt > 0) {
    if (shotsAt + 1 >= args.size()) {
      std::fprintf(stderr, "velmar: --screenshots needs a folder\n");
      return 2;
    }
    const int n = velmar::WriteScreenshots(*window, args.at(shotsAt + 1));
    std::printf("velmar: %d pictures written to %s\n", n, qPrintable(args.at(shotsAt + 1)));
    return n > 0 ? 0 : 1;
  }
  return app.exec();
}
