// The data windows driven as a user would, under the offscreen platform: each opened from its
// command, acted on, and the project seen to change: the task list, the hull estimates, the
// propeller sizing, the engine data and the waterjet data.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>

#include "app/application.h"
#include "core/units.h"
#include "files/legacy_files.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/waterjet.h"
#include "ui/engine_window.h"
#include "ui/entry_model.h"
#include "ui/estimates_dialog.h"
#include "ui/main_window.h"
#include "ui/mode_window.h"
#include "ui/qt_hooks.h"
#include "ui/sizing_dialog.h"
#include "ui/startup.h"
#include "ui/task_list_pane.h"
#include "ui/waterjet_window.h"

using namespace velmar;

namespace {

// Answers Yes/No and file dialogs from a script; boxes are recorded, not shown.
class ScriptedHooks : public QtHooks {
 public:
  Answer Ask(std::string_view, std::string_view, bool, Answer a) override {
    if (answers.empty()) return a;
    a = answers.front();
    answers.pop_front();
    return a;
  }
  void ShowMessage(std::string_view title, std::string_view, int) override { messages.emplace_back(title); }
  std::string AskFilePath(std::string_view, std::string_view, bool) override {
    if (paths.empty()) return {};
    std::string p = paths.front();
    paths.pop_front();
    return p;
  }
  std::deque<Answer> answers;
  std::deque<std::string> paths;
  std::vector<std::string> messages;
};

// Acts on the modal window of type W as soon as it is shown, then closes it with OK (or Cancel).
template <class W>
void WhenShown(std::function<void(W&)> act, bool accept = true) {
  QTimer::singleShot(0, [act, accept] {
    auto* w = qobject_cast<W*>(QApplication::activeModalWidget());
    if (!w) return WhenShown<W>(act, accept);  // not shown yet
    act(*w);  // a failed check returns from here, and the window closes all the same
    if (accept)
      w->accept();
    else
      w->reject();
  });
}

QString Example(const char* name) { return QString(VELMAR_EXAMPLES) + "/" + name; }

}  // namespace

class DataWindowsTest : public QObject {
  Q_OBJECT

 private:
  MemorySettingsStore settings_;
  ScriptedHooks hooks_;
  std::unique_ptr<MainWindow> window_;

  void Open(const char* example) {
    window_ = StartUp({"velmar", Example(example)}, settings_, hooks_);
    window_->show();
    App().ProjectDirty = false;
  }
  void Run(const char* command) { window_->Command(command)->trigger(); }
  // Puts the cursor of the entry table on a field's value.
  void SelectEntry(EntryCommand table, EntryObject object, const char* field) {
    window_->ShowEntryTable(table);
    ModeWindow* w = window_->CurrentModeWindow();
    w->EntryView()->setCurrentIndex(
        w->Entry()->index(w->Entry()->RowOf(object, field), EntryTableModel::kValue));
  }

 private slots:
  void cleanup() { window_.reset(); }

  void taskListFromStandardListToCommand() {
    Open("cargo_ship_si.vxvl");
    TaskListPane* pane = window_->TaskList();
    QCOMPARE(pane->Model()->rowCount(), 17);
    QTemporaryDir dir;
    const std::string file = dir.filePath("quick.task").toStdString();
    // New list over a full list: the overwrite question, then a standard list, which is
    // exported and read back through the task list file.
    hooks_.answers = {Answer::Yes};
    hooks_.paths = {file, file};
    WhenShown<TaskPromptDialog>([](TaskPromptDialog& p) {
      p.Choice()->setCurrentIndex(2);  // "Quick propeller sizing"
      *App().primary.TaskList = p.Result();
      p.Export();
      p.Choice()->setCurrentIndex(0);
      p.Import();
      QCOMPARE(p.Result().TaskCount(), 13);
    });
    pane->findChild<QAction*>("mnuTaskListPopupNew")->trigger();
    QCOMPARE(pane->Model()->rowCount(), 13);
    QVERIFY(App().ProjectDirty);
    // A task ticked off sorts behind every open task.
    pane->ToggleStatus(0);
    const auto cell = [pane](int row, int column) {
      return pane->Model()->index(row, column).data().toString();
    };
    QCOMPARE(cell(12, TaskTableModel::kStatus), QString("Done"));
    QCOMPARE(cell(12, TaskTableModel::kTask), QString("01. Create new project"));
    // A double click on a task runs the command of its notes.
    for (int row = 0; row < 13; ++row)
      if (cell(row, TaskTableModel::kTask) == "04. Switch to Propulsion Mode")
        emit pane->View()->doubleClicked(pane->Model()->index(row, TaskTableModel::kTask));
    QCOMPARE(App().CurrentMode, Mode::Propulsion);
    QVERIFY(window_->RunMenuCommand("Edit", "Hull"));
    QCOMPARE(window_->CurrentModeWindow()->Entry()->Table(), EntryCommand::Hull);
    QVERIFY(!window_->RunMenuCommand("Edit", "Nothing"));
    // Delete the selected task; emptied, the table shows its prompt.
    pane->View()->setCurrentIndex(pane->Model()->index(0, 0));
    pane->findChild<QAction*>("mnuTaskListPopupDelete")->trigger();
    QCOMPARE(App().primary.TaskList->TaskCount(), 12);
    App().primary.TaskList->ClearAllData();
    pane->Fill();
    QCOMPARE(pane->Model()->index(0, TaskTableModel::kTask).data().toString(),
             QString("Right-click to add a task..."));
  }

  void estimateTypedIntoTheHullCell() {
    Open("cargo_ship_si.vxvl");
    SelectEntry(EntryCommand::Hull, EntryObject::Hull, "AreaWaterplane");
    double chosen = 0;
    WhenShown<EstimatesDialog>([&chosen](EstimatesDialog& d) {
      QCOMPARE(d.Proposals()->item(0, 0)->text(), QString("Series 60"));
      d.Proposals()->setCurrentCell(2, 0);  // "Webb cargo ship"
      chosen = *d.Chosen();
    });
    Run("mnuEntryEstimates");
    QVERIFY(chosen > 0);
    QCOMPARE(App().primary.Hull->AreaWaterplane(kCurrent), chosen);
    QVERIFY(App().NeedCalculateResistance);
    // A proposal from a method's data set shows that method's check rows.
    SelectEntry(EntryCommand::Hull, EntryObject::Hull, "WettedSurface");
    int checkRows = 0;
    WhenShown<EstimatesDialog>(
        [&checkRows](EstimatesDialog& d) {
          for (int r = 0; r < d.Proposals()->rowCount(); ++r)
            if (d.Proposals()->item(r, 0)->text() == "Holtrop") d.Proposals()->setCurrentCell(r, 0);
          checkRows = d.CheckRows()->rowCount();
        },
        false);
    Run("mnuEntryEstimates");
    QVERIFY(checkRows > 0);
  }

  void sizingWritesThePropeller() {
    Open("patrol_vessel_sizing.vxvl");
    const double before = App().primary.Propeller->Diameter(kCurrent);
    QString report;
    WhenShown<SizingDialog>([&report](SizingDialog& d) {
      QVERIFY(d.SizePropeller());
      report = d.Report()->toPlainText();
    });
    Run("mnuEntryPropellerSizing");
    QVERIFY2(report.contains("sized"), qPrintable(report));
    QVERIFY(App().primary.Propeller->Diameter(kCurrent) != before);
    QVERIFY(App().NeedCalculatePropulsion);
  }

  void engineCurvesEditedAndDrawn() {
    Open("cargo_ship_si.vxvl");
    int series = 0;
    hooks_.answers = {Answer::No};  // no export of the changes
    WhenShown<EngineWindow>([&series](EngineWindow& w) {
      series = w.GraphView()->Graph()->DataSeriesCount();
      // A sixth point extends the maximum-power curve.
      w.MaxPowerTable()->item(5, 0)->setText("115");
      w.MaxPowerTable()->item(5, 1)->setText("48500");
      QCOMPARE(w.Engine().CurveCount(clsVXEngine::Curve::MaxPowerRPM), 6);
    });
    Run("mnuEntryEngineData");
    QCOMPARE(series, 4);  // performance, less parasitic, defined load, rated point
    QCOMPARE(App().primary.Engine->MaxPowerCount(), 6);
    QCOMPARE(App().primary.Engine->MaxPowerPower(5, kCurrent), 48500.0);
    QVERIFY(App().NeedCalculatePropulsion);
  }

  void waterjetSortedImportedAndKept() {
    Open("catamaran_ferry_waterjet.vxvl");
    const int count = App().primary.Waterjet->PowerSeriesCount();
    const double lowest = App().primary.Waterjet->Power(0, kCurrent);
    QTemporaryDir dir;
    const std::string legacy = dir.filePath("ferry.jet").toStdString();
    QVERIFY(ExportLegacyWaterjetFile(legacy, *App().primary.Waterjet).ok);
    hooks_.paths = {legacy};
    WhenShown<WaterjetWindow>([&](WaterjetWindow& w) {
      w.SeriesTable()->item(0, 0)->setText("5000");  // the first series now has the most power
      w.Sort();
      QCOMPARE(w.Waterjet().Power(count - 1, kCurrent), 5000.0);
      w.Import();  // the legacy file brings the maker's data back
      QCOMPARE(w.Waterjet().PowerSeriesCount(), count);
      QCOMPARE(w.Waterjet().Power(0, kCurrent), lowest);
      w.SeriesTable()->setCurrentCell(0, 0);
      w.RemoveSeries();
    });
    Run("mnuEntryWaterjetData");
    const clsVXWaterjet& jet = *App().primary.Waterjet;
    QCOMPARE(jet.PowerSeriesCount(), count - 1);
    QVERIFY(jet.Power(0, kCurrent) > lowest);
    QVERIFY(App().NeedCalculatePropulsion);
  }
};

QTEST_MAIN(DataWindowsTest)
#include "data_windows_test.moc"
