// The analysis windows driven from their menu commands under the offscreen platform: the
// Method Expert, the custom graph options, the graph modes and the report commands (print,
// export). Each test opens a window, acts in it, and reads the change in the project or pane.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <deque>
#include <functional>

#include "app/application.h"
#include "app/calculate.h"
#include "resistance/resistance_settings.h"
#include "ui/entry_model.h"
#include "ui/graph_options_dialog.h"
#include "ui/graph_pane.h"
#include "ui/main_window.h"
#include "ui/method_expert_dialog.h"
#include "ui/mode_window.h"
#include "ui/options_dialog.h"
#include "ui/qt_hooks.h"
#include "ui/report_print.h"
#include "ui/startup.h"
#ifdef VELMAR_HAVE_PRINT
#include <QPrinter>
#endif

using namespace velmar;

namespace {

// Records the boxes and answers the file dialogs from a script.
class ScriptedHooks : public QtHooks {
 public:
  Answer Ask(std::string_view, std::string_view, bool, Answer defaultAnswer) override {
    return defaultAnswer;
  }
  void ShowMessage(std::string_view title, std::string_view text, int) override {
    messages.push_back(std::string(title) + ": " + std::string(text));
  }
  std::string AskFilePath(std::string_view, std::string_view, bool) override {
    if (paths.empty()) return {};
    std::string p = paths.front();
    paths.pop_front();
    return p;
  }
  std::deque<std::string> paths;
  std::vector<std::string> messages;
};

const QString kCargo = QString(VELMAR_EXAMPLES) + "/cargo_ship_si.vxvl";

// Triggers the command and runs `act` on the modal window of type T that it opens.
template <class T>
bool ActInModal(QAction* command, std::function<void(T&)> act) {
  bool found = false;
  QTimer::singleShot(0, [&] {
    if (auto* w = qobject_cast<T*>(QApplication::activeModalWidget())) {
      found = true;
      act(*w);
      if (w->isVisible()) w->reject();  // a failed check leaves the window open
    } else if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
      d->reject();
    }
  });
  command->trigger();
  return found;
}

}  // namespace

class AnalysisWindowsTest : public QObject {
  Q_OBJECT

 private:
  MemorySettingsStore settings_;
  ScriptedHooks hooks_;
  std::unique_ptr<MainWindow> window_;

  void Calculated() {
    window_->SetMode(Mode::Resistance);
    RunCalculate();
    window_->RefreshResults();
  }

 private slots:
  void init() {
    window_ = StartUp({"velmar", kCargo}, settings_, hooks_);
    window_->show();
    hooks_.messages.clear();
  }
  void cleanup() { window_.reset(); }

  // The list is ranked best first and coloured by rating; the parameter table follows the
  // cursor; "OK" stores the method taken and the results become stale.
  void methodExpertRanksAndTakesAMethod() {
    App().NeedCalculateResistance = false;
    int taken = -1;
    const bool opened = ActInModal<MethodExpertDialog>(
        window_->Command("mnuAnalysisMethodExpert"), [&](MethodExpertDialog& d) {
          QTableWidget& list = *d.Methods();
          QCOMPARE(list.rowCount(), MethodFamilyCount(MethodFamily::Hull));
          const QColor byRating[] = {Qt::red, Qt::red, Qt::red, Qt::red, Qt::black, Qt::magenta, Qt::blue};
          int last = 6;
          for (int r = 0; r < list.rowCount(); ++r) {
            const int rating = list.item(r, 0)->toolTip().section(' ', 1, 1).toInt();
            QVERIFY2(rating <= last, "the list is ranked best first");
            QCOMPARE(list.item(r, 0)->foreground().color(), byRating[rating]);
            last = rating;
          }
          // Holtrop fits the cargo ship: its parameter rows show, and the note line is filled.
          QVERIFY(list.item(0, 0)->toolTip() == "Rating 6 of 6" ||
                  list.item(0, 0)->toolTip() == "Rating 5 of 6");
          QVERIFY(d.Parameters()->rowCount() > 0);
          QVERIFY(!d.NoteLine().isEmpty());
          // The last row (worst fit) is taken.
          list.setCurrentCell(list.rowCount() - 1, 0);
          taken =
              MethodFamilyIndex(MethodFamily::Hull, list.item(list.rowCount() - 1, 0)->text().toStdString());
          d.TakeCurrent();
        });
    QVERIFY(opened);
    QVERIFY(taken >= 0);
    QCOMPARE(App().primary.Resistance->HullDragMethod(), taken);
    QVERIFY(App().NeedCalculateResistance && App().ProjectDirty);

    // On the wind method row the window opens on the wind methods; Cancel stores nothing.
    window_->ShowEntryTable(EntryCommand::Environment);
    ModeWindow& w = *window_->CurrentModeWindow();
    const int windRow = w.Entry()->RowOf(EntryObject::Resistance, "WindDragMethod");
    w.EntryView()->setCurrentIndex(w.Entry()->index(windRow, 1));
    const int wind = App().primary.Resistance->WindDragMethod();
    QVERIFY(ActInModal<MethodExpertDialog>(
        window_->Command("mnuAnalysisMethodExpert"), [](MethodExpertDialog& d) {
          QCOMPARE(d.Methods()->rowCount(), MethodFamilyCount(MethodFamily::Wind));
          d.reject();
        }));
    QCOMPARE(App().primary.Resistance->WindDragMethod(), wind);
  }

  // The options window fills the custom set: a custom pair, a third graph, the line style, no
  // legend, and the project itself as a compare file; the pane turns to "Graph: Custom".
  void customGraphOptionsSetTheCustomGraphs() {
    Calculated();
    QVERIFY(
        ActInModal<GraphOptionsDialog>(window_->Command("mnuToolsGraphOptions"), [](GraphOptionsDialog& d) {
          QCOMPARE(d.Graphs()->rowCount(), 2);  // the mode's two default graphs
          QVERIFY(!d.Chooser(0, 1)->isEnabled());
          d.Chooser(0, 0)->setCurrentIndex(0);  // "Custom": the axis fields count
          QVERIFY(d.Chooser(0, 1)->isEnabled());
          d.Chooser(0, 2)->setCurrentIndex(2);  // CoefFroudeVolume
          d.AddGraph(CustomGraph{3, 0, 4});
          d.LineStyleBox()->setCurrentIndex(3);
          d.LegendBox()->setCurrentIndex(0);
          d.CompareFile(0)->setText(kCargo);
          d.accept();
        }));
    const GraphSettings& s = ProgramGraphSettings();
    const CustomGraphOptions& o = s.options[0];
    QCOMPARE(o.graphs.size(), size_t(3));
    QCOMPARE(o.graphs[0].preset, 0);
    QCOMPARE(o.graphs[0].yField, 2);
    QCOMPARE(o.lineStyle, LineStyle::Polyline);
    QVERIFY(!o.legendOn);
    QCOMPARE(s.compare.size(), size_t(1));
    ModeWindow& w = *window_->CurrentModeWindow();
    QCOMPARE(w.PaneCaption(), QString("Graph: Custom"));
    QCOMPARE(w.Graph()->GraphCount(), 3);
    // The active job and the compare file each give a line.
    QCOMPARE(w.Graph()->Graph()->DataSeriesCount(), 2);
  }

  // Standard, Single (a preset of the mode's list), Multiple; the active graph saved in the
  // four picture types.
  void graphModesAndSaveGraph() {
    Calculated();
    ModeWindow& w = *window_->CurrentModeWindow();
    emit w.GraphModeBox()->activated(static_cast<int>(GraphMode::Single));
    const int petotal = w.GraphPresetBox()->findText("SPEED:PETOTAL");
    emit w.GraphPresetBox()->activated(petotal);
    QCOMPARE(w.PaneCaption(), QString("Graph: Single"));
    QCOMPARE(w.Graph()->GraphCaption(), QString("SPEED:PETOTAL"));
    window_->Command("mnuToolsGraphMultiple")->trigger();
    QCOMPARE(w.PaneCaption(), QString("Graph: Multiple"));
    QCOMPARE(w.Graph()->GraphCount(), static_cast<int>(ProgramGraphSettings().options[0].graphs.size()));
    window_->Command("mnuToolsGraphSingle")->trigger();
    QCOMPARE(w.PaneCaption(), QString("Graph: Standard"));
    QCOMPARE(w.Graph()->GraphCaption(), QString("SPEED:RTOTAL"));

    QTemporaryDir dir;
    const char* const expected[][2] = {
        {"a.png", "\x89PNG"}, {"b.svg", "<"}, {"c", "\xff\xd8"}, {"d.bmp", "BM"}};
    for (const auto& [name, magic] : expected) {
      hooks_.paths.push_back((dir.path() + "/" + name).toStdString());
      window_->Command("mnuToolsGraphSaveAs")->trigger();
      QFile f(dir.path() + "/" + name + (QString(name) == "c" ? ".jpg" : ""));
      QVERIFY2(f.open(QIODevice::ReadOnly), name);
      QVERIFY2(f.readAll().startsWith(magic), name);
    }
    QVERIFY(hooks_.messages.empty());
  }

  // "Prepared by" of the options reaches the report heading; the report of the active graph;
  // Save report as PDF, HTML and CSV; the document that Print lays out on a printer.
  void reportsCarryPreparedByAndExport() {
    Calculated();
    settings_.Set("Report", "PreparedBy", "J. Marsh");
    QVERIFY(
        ActInModal<OptionsDialog>(window_->Command("mnuToolsOptions"), [](OptionsDialog& d) { d.accept(); }));
    window_->Command("mnuToolsReportGraph")->trigger();
    ModeWindow& w = *window_->CurrentModeWindow();
    QCOMPARE(w.PaneCaption(), QString("Report: Graph"));
    const QString shown = w.Report()->toPlainText();
    QVERIFY(shown.contains("Prepared by") && shown.contains("J. Marsh"));
    QVERIFY(shown.contains("Predicted resistance"));

    QTemporaryDir dir;
    const char* const expected[][2] = {{"r.pdf", "%PDF"}, {"r.html", "<"}, {"r.csv", ""}};
    for (const auto& [name, magic] : expected) {
      hooks_.paths.push_back((dir.path() + "/" + name).toStdString());
      window_->Command("mnuToolsReportSaveAs")->trigger();
      QFile f(dir.path() + "/" + name);
      QVERIFY2(f.open(QIODevice::ReadOnly), name);
      const QByteArray bytes = f.readAll();
      QVERIFY2(bytes.startsWith(magic) && bytes.size() > 100, name);
      if (QString(name) != "r.pdf") QVERIFY2(bytes.toLower().contains("speed"), bytes.left(400).constData());
    }
#ifdef VELMAR_HAVE_PRINT
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(dir.path() + "/printed.pdf");
    QVERIFY(PrintReport(w.CurrentReport(), printer) >= 1);
    QVERIFY(QFileInfo(dir.path() + "/printed.pdf").size() > 1000);
#endif
    QVERIFY(hooks_.messages.empty());
  }
};

QTEST_MAIN(AnalysisWindowsTest)
#include "analysis_windows_test.moc"
