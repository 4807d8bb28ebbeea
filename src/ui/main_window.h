// frmVelmar, the main window: the menu tree, the three toolbars, the two mode windows, the
// status texts, the recent list, drag and drop of a project, and the commands, each routed to
// the engine functions that the command line uses as well.
#pragma once

#include <QHash>
#include <QMainWindow>
#include <memory>
#include <optional>
#include <string>

#include "app/settings_store.h"
#include "core/model_set.h"
#include "reports/report.h"
#include "ui/entry_groups.h"

class QAction;
class QLabel;
class QMenu;
class QStackedWidget;
class QToolBar;

namespace velmar {

class ModeWindow;
class QtHooks;
class TaskListPane;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `hooks` (not owned) answers the engine's questions; it is installed for the life of the
  // window. `settings` keeps the recent list, the options and the window geometry.
  MainWindow(SettingsStore& settings, QtHooks& hooks, QWidget* parent = nullptr);
  ~MainWindow() override;

  // The menu command or toolbar button by its name ("mnuFileOpen", "tlbCalculate").
  QAction* Command(const QString& name) const { return actions_.value(name); }
  ModeWindow* CurrentModeWindow() const;
  ModeWindow* ModeWindowOf(Mode mode) const;

  // Opens a project file as the Open command does, without the dialog.
  bool OpenFile(const QString& path);
  void SetMode(Mode mode);
  void ShowEntryTable(EntryCommand command);
  QString ModeText() const;
  TaskListPane* TaskList() const { return tasks_; }
  // Runs the command of a menu by its captions without "&" and "...", as the notes of a task
  // name it ("Edit", "Hull"); a submenu runs its first command. False when there is none.
  bool RunMenuCommand(const QString& menu, const QString& item);
  // The propeller sizing window in a propulsion prediction that sizes.
  void ShowPropellerSizing();

  // Hooks of the engine.
  void EndCellEdits();
  void RefreshResults();
  void SetCalculateButton(const std::string& image, std::optional<bool> button5Enabled);
  // Title, both mode windows, the recent list and the Calculate button after the project
  // was replaced.
  void RebuildAll();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QAction* AddCommand(QMenu* menu, const QString& name, const QString& caption, void (MainWindow::*slot)());
  QAction* AddPending(QMenu* menu, const QString& name, const QString& caption, const QString& reason);
  void BuildMenus();
  void BuildToolbars();
  void UpdateRecentMenu();
  void UpdateTitle();
  void ShowFileResult(const struct FileCommandResult& r);
  // Why a command of a part that is not in this build is disabled.
  void Disable(QAction* action, const QString& reason);

  // Commands.
  void FileNew();
  void FileOpen();
  void FileSave();
  void FileSaveAs();
  void FileImport();
  void FileExport();
  void ExportPropellerCad();
  void FileExit();
  void OpenRecent(int index);
  void EditUnits();
  void EditCondition() { ShowEntryTable(EntryCommand::Condition); }
  void EditHull() { ShowEntryTable(EntryCommand::Hull); }
  void EditAppendage() { ShowEntryTable(EntryCommand::Appendage); }
  void EditEnvironment() { ShowEntryTable(EntryCommand::Environment); }
  void EditMargin() { ShowEntryTable(EntryCommand::Margin); }
  void EditPropulsor() { ShowEntryTable(EntryCommand::Propulsor); }
  void ViewResistance() { SetMode(Mode::Resistance); }
  void ViewPropulsion() { SetMode(Mode::Propulsion); }
  void Calculate();
  void ClearAllResults();
  void EditResultsMode();
  void ParameterInfluence();
  void MethodExpert();
  void GraphStandard();
  void GraphSaveAs();
  void GraphCustom();
  void GraphOptions();
  void ReportGraph();
  void ReportPrint();
  void ReportShort();
  void ReportLong();
  void ReportSaveAs();
  ReportKind ReportOf(bool withData) const;
  // The data windows, from the context menu of the entry table.
  void EntryEstimates();
  void EngineData();
  void WaterjetData();
  void PropellerSizing();
  void BuildDataWindowCommands();
  void ToolsOptions();
  void HelpAbout();

  SettingsStore& settings_;
  QtHooks& hooks_;
  QHash<QString, QAction*> actions_;
  QAction* recent_[4] = {};
  QStackedWidget* modes_ = nullptr;
  ModeWindow* resistance_ = nullptr;
  ModeWindow* propulsion_ = nullptr;
  QLabel* modeLabel_ = nullptr;
  TaskListPane* tasks_ = nullptr;
  bool editResults_ = false;
};

}  // namespace velmar
