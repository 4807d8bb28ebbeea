// The window program driven as a user would, under the offscreen platform: open an example,
// edit through the entry table model, switch modes, calculate, save, and the rules that stand
// between a typed value and the data classes.
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <deque>

#include "app/application.h"
#include "app/calculate.h"
#include "app/file_commands.h"
#include "core/units.h"
#include "ui/entry_model.h"
#include "ui/main_window.h"
#include "ui/mode_window.h"
#include "ui/options_dialog.h"
#include "ui/qt_hooks.h"
#include "ui/results_model.h"
#include "ui/startup.h"

using namespace velmar;

namespace {

// Answers from a script and records every box instead of showing it.
class RecordingHooks : public QtHooks {
 public:
  Answer Ask(std::string_view title, std::string_view, bool, Answer defaultAnswer) override {
    asked.push_back(std::string(title));
    if (answers.empty()) return defaultAnswer;
    const Answer a = answers.front();
    answers.pop_front();
    return a;
  }
  void ShowMessage(std::string_view title, std::string_view text, int) override {
    messages.push_back({std::string(title), std::string(text)});
  }
  std::string AskFilePath(std::string_view, std::string_view, bool) override {
    if (paths.empty()) return {};
    std::string p = paths.front();
    paths.pop_front();
    return p;
  }
  bool Shown(const std::string& title, const std::string& part = {}) const {
    for (const auto& [t, text] : messages)
      if (t == title && text.find(part) != std::string::npos) return true;
    return false;
  }
  std::deque<Answer> answers;
  std::deque<std::string> paths;
  std::vector<std::string> asked;
  std::vector<std::pair<std::string, std::string>> messages;
};

const QString kCargo = QString(VELMAR_EXAMPLES) + "/cargo_ship_si.vxvl";

}  // namespace

class MainWindowTest : public QObject {
  Q_OBJECT

 private:
  MemorySettingsStore settings_;
  RecordingHooks hooks_;
  std::unique_ptr<MainWindow> window_;

  EntryTableModel& Entry() { return *window_->CurrentModeWindow()->Entry(); }
  bool Type(EntryObject o, const char* field, const QVariant& v) {
    const int row = Entry().RowOf(o, field);
    if (row < 0) qFatal("no row %s", field);
    return Entry().setData(Entry().index(row, EntryTableModel::kValue), v);
  }
  QString Shown(EntryObject o, const char* field) {
    return Entry().index(Entry().RowOf(o, field), EntryTableModel::kValue).data().toString();
  }

 private slots:
  void init() {
    hooks_.messages.clear();
    hooks_.asked.clear();
    window_ = StartUp({"velmar", "\"" + kCargo + "\""}, settings_, hooks_);
    window_->show();
    App().ProjectDirty = false;
    hooks_.messages.clear();
  }
  void cleanup() { window_.reset(); }

  void startsWithTheProjectOfTheCommandLine() {
    QCOMPARE(window_->windowTitle(), QString("Velmar - [cargo_ship_si.vxvl]"));
    QCOMPARE(window_->ModeText(), QString("Mode: Resistance"));
    QCOMPARE(QString::fromStdString(RecentFiles(settings_)[0]), QFileInfo(kCargo).absoluteFilePath());
    QVERIFY(ProjectArgument(QString(VELMAR_EXAMPLES) + "/standard.task").isEmpty());
    QVERIFY(ProjectArgument("\"" + kCargo + "\"") == QFileInfo(kCargo).absoluteFilePath());
  }

  void aTypedValueReachesTheClassOrIsRefusedWithItsWarning() {
    window_->ShowEntryTable(EntryCommand::Hull);
    clsVXHull& hull = *App().primary.Hull;
    App().NeedCalculateResistance = false;
    QVERIFY(Type(EntryObject::Hull, "LengthWL", "210"));
    QCOMPARE(hull.LengthWL(kCurrent), 210.0);
    QCOMPARE(hull.LengthWL(kFt), 688.9763780);  // the read converts: the value went in as metres
    QVERIFY(App().NeedCalculateResistance && App().ProjectDirty);
    QCOMPARE(Shown(EntryObject::Hull, "LengthWL"), QString("210.000"));

    // A negative length fails its read check: the box names the field, the value stays.
    QVERIFY(!Type(EntryObject::Hull, "LengthWL", "-5"));
    QVERIFY(hooks_.Shown("Warning!", "Length on waterline"));
    QVERIFY(!Type(EntryObject::Hull, "LengthWL", "abc"));
    QCOMPARE(hull.LengthWL(kCurrent), 210.0);
    // A deadrise outside its range is refused too; a zero (not given) is accepted.
    QVERIFY(!Type(EntryObject::Hull, "FwdStationAngleDeadriseDeg", "80"));
    QVERIFY(Type(EntryObject::Hull, "FwdStationAngleDeadriseDeg", "0"));

    // Undo takes back the last accepted edit only.
    QVERIFY(Type(EntryObject::Hull, "LengthWL", "220"));
    QVERIFY(Entry().UndoLastEdit());
    QCOMPARE(hull.LengthWL(kCurrent), 210.0);
    QVERIFY(!Entry().UndoLastEdit());
  }

  void enumerationsAndForwardedFields() {
    window_->ShowEntryTable(EntryCommand::Appendage);
    QVERIFY(!Entry().index(Entry().RowOf(EntryObject::Resistance, "AppendageDragEnabled"), 1)
                 .data(EntryTableModel::kChoicesRole)
                 .toStringList()
                 .isEmpty());
    // The rudder location shown in the appendage table is the ITTC-78 setting.
    QVERIFY(Type(EntryObject::ITTC78, "RudderLocation", 1));
    QCOMPARE(static_cast<int>(App().primary.ITTC78->RudderLocation()), 1);
    // Percentage definition against a component method, with the drag calculated.
    QVERIFY(Type(EntryObject::Resistance, "AppendageDragEnabled", 1));
    QVERIFY(Type(EntryObject::Appendage, "AppendageDefinition", 0));
    QVERIFY(hooks_.Shown("Warning!", "is incompatible with prediction method"));
    // A propulsor setting leaves the resistance results standing.
    window_->ShowEntryTable(EntryCommand::Propulsor);
    App().NeedCalculateResistance = false;
    QVERIFY(Type(EntryObject::Propeller, "BladeCount", "5"));
    QVERIFY(!App().NeedCalculateResistance && App().NeedCalculatePropulsion);
  }

  void crossChecksOfTheHullAndTheEntryRanges() {
    window_->ShowEntryTable(EntryCommand::Hull);
    const double beam = App().primary.Hull->BeamWLMax(kCurrent);
    QVERIFY(Type(EntryObject::Hull, "FwdStationChineBeam", QString::number(beam)));
    QVERIFY(!hooks_.Shown("Hull Warning"));  // equal to the beam: no warning
    QVERIFY(Type(EntryObject::Hull, "FwdStationChineBeam", QString::number(beam + 1)));
    QVERIFY(hooks_.Shown("Hull Warning", "Warning! Chine beam should not exceed max Beam WL."));
    // The first T/C ratio of an empty strut is tested against its entry range, and kept.
    window_->ShowEntryTable(EntryCommand::Appendage);
    App().primary.Appendage->StrutTCRatio(0.0);
    QVERIFY(Type(EntryObject::Appendage, "StrutTCRatio", "0.5"));
    QVERIFY(hooks_.Shown("Warning!", "Entry is outside of valid range"));
    QCOMPARE(App().primary.Appendage->StrutTCRatio(), 0.5);
    // A speed above 100 knots is dropped from the speed table.
    window_->ShowEntryTable(EntryCommand::Condition);
    QVERIFY(Type(EntryObject::Speed, "10", "150"));
    QVERIFY(hooks_.Shown("Warning!", "exceeds allowable range"));
    const clsVXSpeedPerformance& sp = *App().primary.SpeedPerformance;
    for (int r = 0; r < sp.count(); ++r) QVERIFY(sp.Speed(r, kKt) <= 100.0);
  }

  void modesAndCalculateFillTheResults() {
    App().NeedCalculatePropulsion = true;
    window_->Command("mnuViewPropulsion")->trigger();
    QCOMPARE(window_->ModeText(), QString("Mode: Propulsion"));
    QCOMPARE(window_->Command("mnuAnalysisCalculate")->text(), QString("&Calculate: Propulsion"));
    QVERIFY(App().NeedCalculatePropulsion);  // a change of mode calculates nothing
    window_->Command("tlbModeResistance")->trigger();
    QCOMPARE(App().CurrentMode, Mode::Resistance);

    // The results on screen are painted while the run lets the event loop breathe; painting
    // the cleared table must not put words on its error stack that the run then reports.
    ClearResults();
    window_->Command("mnuAnalysisCalculate")->trigger();
    const clsVXSpeedPerformance& sp = *App().primary.SpeedPerformance;
    ResultsTableModel& res = *window_->CurrentModeWindow()->Results();
    QCOMPARE(res.rowCount(), sp.count());
    const int drag = res.ColumnOf("DragTotal");
    QVERIFY(drag >= 0 && sp.Raw(0, res.SpeedColumnOf(drag)) > 0.0);
    QCOMPARE(res.index(0, drag).data().toString(), QString::fromStdString(sp.FormattedOf(0, res.SpeedColumnOf(drag))));
    QVERIFY(res.headerData(drag, Qt::Horizontal).toString().contains("[kN]"));
    QVERIFY(!App().NeedCalculateResistance);

    window_->Command("mnuViewPropulsion")->trigger();
    window_->Command("mnuAnalysisCalculate")->trigger();
    ResultsTableModel& prop = *window_->CurrentModeWindow()->Results();
    QVERIFY(sp.Raw(sp.count() - 1, prop.SpeedColumnOf(prop.ColumnOf("PropulsorRPM"))) > 0.0);
    QVERIFY(hooks_.messages.empty());
  }

  void editResultsModeOpensTheLockedColumns() {
    App().primary.Resistance->HullDragEnabled(2);  // Lock
    window_->Command("mnuAnalysisEditResultsMode")->trigger();
    ResultsTableModel& res = *window_->CurrentModeWindow()->Results();
    const int bare = res.ColumnOf("DragBareHull");
    QVERIFY(res.flags(res.index(0, bare)) & Qt::ItemIsEditable);
    QVERIFY(!(res.flags(res.index(0, res.ColumnOf("DragTotal"))) & Qt::ItemIsEditable));
    QVERIFY(res.setData(res.index(0, bare), "1234"));
    QCOMPARE(App().primary.SpeedPerformance->Raw(0, res.SpeedColumnOf(bare)), 1234.0);
    window_->Command("mnuAnalysisEditResultsMode")->trigger();
    QVERIFY(!(res.flags(res.index(0, bare)) & Qt::ItemIsEditable));
  }

  void saveReopenAndTheRecentList() {
    QTemporaryDir dir;
    const std::string path = dir.filePath("copy.vxvl").toStdString();
    window_->ShowEntryTable(EntryCommand::Hull);
    QVERIFY(Type(EntryObject::Hull, "BeamWLMax", "33"));
    hooks_.paths = {path};
    window_->Command("mnuFileSaveAs")->trigger();
    QVERIFY(QFile::exists(QString::fromStdString(path)));
    QCOMPARE(window_->windowTitle(), QString("Velmar - [copy.vxvl]"));
    QVERIFY(!App().ProjectDirty);
    QCOMPARE(RecentFiles(settings_)[0], path);

    window_->Command("mnuFileNew")->trigger();
    QCOMPARE(window_->windowTitle(), QString("Velmar - [untitled.vxvl]"));
    window_->Command("mnuRecentFile1")->trigger();
    QCOMPARE(App().primary.Hull->BeamWLMax(kCurrent), 33.0);

    // An entry whose file has gone is refused and leaves the project as it was.
    QFile::remove(QString::fromStdString(path));
    window_->Command("mnuRecentFile1")->trigger();
    QVERIFY(hooks_.Shown("File opening recent job error", "The file path has been altered or it no longer exists."));
    QCOMPARE(App().primary.Hull->BeamWLMax(kCurrent), 33.0);
  }

  void unitsCommandConvertsTheProject() {
    const double lwl = App().primary.Hull->LengthWL(kFt);
    auto units = App().primary.Units->CopyClass();
    ApplyUnitPreset(*units, UnitPreset::Imperial);
    QVERIFY(ApplyUnitsCommand(units.get()));
    window_->RebuildAll();
    window_->ShowEntryTable(EntryCommand::Hull);
    QCOMPARE(App().primary.Hull->LengthWL(kCurrent), lwl);
    const int row = Entry().RowOf(EntryObject::Hull, "LengthWL");
    QCOMPARE(Entry().index(row, EntryTableModel::kUnit).data().toString(), QString("[ft]"));
  }

  void everyCommandWorksOrSaysWhyNot() {
    for (QAction* a : window_->findChildren<QAction*>()) {
      if (!a->objectName().startsWith("mnu") || a->objectName().startsWith("mnuRecentFile")) continue;
      QVERIFY2(a->isEnabled() || !a->statusTip().isEmpty(), qPrintable(a->objectName()));
    }
  }

  void reportPageSettings() {
    MemorySettingsStore s;
    s.Set("Report", "UnitsIndex", "3");
    s.Set("Report", "MarginTop", "99");
    ReportPage page = ReadReportPage(s);
    QCOMPARE(page.unitsIndex, 5);
    QCOMPARE(page.top, 0.6);
    s.Set("Report", "UnitsIndex", "6");
    s.Set("Report", "MarginTop", "25.4");
    page = ReadReportPage(s);
    QCOMPARE(page.top, 1.0);
    QCOMPARE(page.left, 0.6);
  }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
