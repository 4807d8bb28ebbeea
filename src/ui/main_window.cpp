// The main window and its commands.
#include "ui/main_window.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QByteArray>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <filesystem>

#include "app/application.h"
#include "app/calculate.h"
#include "app/file_commands.h"
#include "core/format.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/safe_write.h"
#include "render/graph_image.h"
#include "render/report_pdf.h"
#include "reports/prediction_graphs.h"
#include "reports/report_writers.h"
#include "ui/entry_model.h"
#include "ui/graph_pane.h"
#include "ui/influence_dialog.h"
#include "ui/mode_window.h"
#include "ui/options_dialog.h"
#include "ui/qt_hooks.h"
#include "ui/results_model.h"
#include "ui/units_dialog.h"

namespace velmar {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

const char* const kLaterVersion = "Not in this version: ";

// The Calculate button's two images: a calm dot when the results stand, an amber one when
// the data changed since the last run.
QIcon CalculateIcon(bool needCalculate) {
  QPixmap pm(16, 16);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(QColor(0x33, 0x33, 0x33), 1));
  p.setBrush(needCalculate ? QColor(0xf0, 0x9a, 0x1a) : QColor(0x3a, 0xa5, 0x5d));
  p.drawEllipse(QRectF(2.5, 2.5, 11, 11));
  return QIcon(pm);
}

}  // namespace

MainWindow::MainWindow(SettingsStore& settings, QtHooks& hooks, QWidget* parent)
    : QMainWindow(parent), settings_(settings), hooks_(hooks) {
  setObjectName("frmVelmar");
  hooks_.SetWindow(this);
  SetHooks(&hooks_);
  setAcceptDrops(true);

  modes_ = new QStackedWidget(this);
  resistance_ = new ModeWindow(Mode::Resistance, modes_);
  propulsion_ = new ModeWindow(Mode::Propulsion, modes_);
  modes_->addWidget(resistance_);
  modes_->addWidget(propulsion_);
  setCentralWidget(modes_);
  for (ModeWindow* w : {resistance_, propulsion_})
    connect(w, &ModeWindow::Edited, this, [this] {
      UpdateTitle();
      RefreshCalculateButton();
      // The other mode window shows the same data.
      ModeWindowOf(App().CurrentMode == Mode::Resistance ? Mode::Propulsion : Mode::Resistance)->Rebuild();
    });

  BuildMenus();
  BuildToolbars();
  modeLabel_ = new QLabel(this);
  modeLabel_->setMinimumWidth(160);
  statusBar()->addPermanentWidget(modeLabel_);

  const QByteArray geometry = QByteArray::fromBase64(QByteArray::fromStdString(settings_.Get("Window", "Geometry")));
  if (geometry.isEmpty() || !restoreGeometry(geometry)) resize(1440, 900);
  SetMode(App().CurrentMode);
  RebuildAll();
}

MainWindow::~MainWindow() {
  hooks_.SetWindow(nullptr);
  SetHooks(nullptr);
}

QAction* MainWindow::AddCommand(QMenu* menu, const QString& name, const QString& caption,
                                void (MainWindow::*slot)()) {
  auto* a = new QAction(caption, this);
  a->setObjectName(name);
  connect(a, &QAction::triggered, this, [this, slot] {
    // A toolbar button or menu command first stores the value being typed.
    EndCellEdits();
    (this->*slot)();
  });
  if (menu) menu->addAction(a);
  actions_.insert(name, a);
  return a;
}

QAction* MainWindow::AddPending(QMenu* menu, const QString& name, const QString& caption, const QString& reason) {
  auto* a = new QAction(caption, this);
  a->setObjectName(name);
  Disable(a, reason);
  if (menu) menu->addAction(a);
  actions_.insert(name, a);
  return a;
}

void MainWindow::Disable(QAction* action, const QString& reason) {
  action->setEnabled(false);
  action->setStatusTip(kLaterVersion + reason);
  action->setToolTip(action->iconText() + " - " + kLaterVersion + reason);
}

void MainWindow::BuildMenus() {
  QMenuBar* bar = menuBar();
  QMenu* file = bar->addMenu("&File");
  file->setObjectName("mnuFile");
  AddCommand(file, "mnuFileNew", "&New project", &MainWindow::FileNew)->setShortcut(QKeySequence::New);
  AddCommand(file, "mnuFileOpen", "&Open project...", &MainWindow::FileOpen)->setShortcut(QKeySequence::Open);
  AddCommand(file, "mnuFileSave", "&Save project", &MainWindow::FileSave)->setShortcut(QKeySequence::Save);
  AddCommand(file, "mnuFileSaveAs", "Save project &as...", &MainWindow::FileSaveAs);
  file->addSeparator();
  AddPending(file, "mnuFileImport", "&Import...", "the legacy project, model and ship object import.");
  AddPending(file, "mnuFileExport", "Expor&t...", "the legacy project and ship object export.");
  file->addSeparator();
  AddCommand(file, "mnuFileExit", "E&xit", &MainWindow::FileExit)->setShortcut(QKeySequence::Quit);
  file->addSeparator();
  for (int i = 0; i < kRecentFileCount; ++i) {
    auto* a = new QAction(this);
    a->setObjectName(QString("mnuRecentFile%1").arg(i + 1));
    connect(a, &QAction::triggered, this, [this, i] { OpenRecent(i); });
    file->addAction(a);
    recent_[i] = a;
    actions_.insert(a->objectName(), a);
  }

  QMenu* edit = bar->addMenu("&Edit");
  edit->setObjectName("mnuEdit");
  AddCommand(edit, "mnuEditUnits", "&Units...", &MainWindow::EditUnits);
  edit->addSeparator();
  AddCommand(edit, "mnuEditCondition", "&Condition", &MainWindow::EditCondition);
  AddCommand(edit, "mnuEditHull", "&Hull", &MainWindow::EditHull);
  AddCommand(edit, "mnuEditAppendage", "&Appendages", &MainWindow::EditAppendage);
  AddCommand(edit, "mnuEditEnvironment", "En&vironment", &MainWindow::EditEnvironment);
  AddCommand(edit, "mnuEditMargin", "&Margin", &MainWindow::EditMargin);
  AddCommand(edit, "mnuEditPropulsor", "&Propulsor", &MainWindow::EditPropulsor);

  QMenu* view = bar->addMenu("&View");
  view->setObjectName("mnuView");
  auto* modes = new QActionGroup(this);
  for (QAction* a : {AddCommand(view, "mnuViewResistance", "&Resistance mode", &MainWindow::ViewResistance),
                     AddCommand(view, "mnuViewPropulsion", "&Propulsion mode", &MainWindow::ViewPropulsion)}) {
    a->setCheckable(true);
    modes->addAction(a);
  }

  QMenu* analysis = bar->addMenu("&Analysis");
  analysis->setObjectName("mnuAnalysis");
  AddCommand(analysis, "mnuAnalysisCalculate", "&Calculate: Resistance", &MainWindow::Calculate)
      ->setShortcut(Qt::Key_F5);
  AddCommand(analysis, "mnuAnalysisClearResults", "Clear &all results", &MainWindow::ClearAllResults);
  analysis->addSeparator();
  AddCommand(analysis, "mnuAnalysisEditResultsMode", "&Edit results mode", &MainWindow::EditResultsMode)
      ->setCheckable(true);
  analysis->addSeparator();
  AddCommand(analysis, "mnuAnalysisResistanceSensitivity", "&Parameter influence...",
             &MainWindow::ParameterInfluence);

  QMenu* tools = bar->addMenu("&Tools");
  tools->setObjectName("mnuTools");
  const QString notBuilt = "this analysis is not built yet.";
  AddPending(tools, "mnuToolsVesselAnalysisStationDistribution", "&Station distribution...", notBuilt);
  QMenu* vessel = tools->addMenu("&Vessel analysis");
  vessel->setObjectName("mnuToolsVesselAnalysis");
  QMenu* quick = vessel->addMenu("&Quick-calc reports");
  quick->setObjectName("mnuToolsVesselAnalysisQuickCalc");
  int n = 0;
  for (const char* c : {"&Dynamic stability [Planing]", "&Dynamic trim", "S&hallow water sinkage and trim [ITTC-78 (CT)]",
                        "&Synchronous pitching [ITTC-78 (CT)]"})
    AddPending(quick, QString("mnuToolsQuickCalc%1").arg(++n), c, notBuilt);
  AddPending(vessel, "mnuToolsDragReduction", "&Drag reduction [ITTC-78 (CT)]...", notBuilt);
  AddPending(vessel, "mnuToolsInitialTrim", "&Effect of initial trim [ITTC-78 (CT)]...", notBuilt);
  QMenu* prop = tools->addMenu("&Propulsion analysis");
  prop->setObjectName("mnuToolsPropulsionAnalysis");
  AddPending(prop, "mnuToolsBladeScan", "&Blade scan analysis...", notBuilt);
  AddPending(prop, "mnuToolsHydroacoustic", "&Hydroacoustic analysis...", notBuilt);
  AddPending(prop, "mnuToolsBenchmark", "&Benchmark vessels...", notBuilt);
  QMenu* special = tools->addMenu("&Special predictions");
  special->setObjectName("mnuToolsSpecialPredictions");
  AddPending(special, "mnuToolsSubmarine", "&Submarine/SWATH", notBuilt);
  AddPending(special, "mnuToolsBargeTrain", "&Barge train resistance...", notBuilt);
  QMenu* util = tools->addMenu("&Utilities");
  util->setObjectName("mnuToolsUtilities");
  AddPending(util, "mnuToolsTunnelThruster", "&Tunnel thruster sizing...", notBuilt);
  AddPending(util, "mnuToolsUtilitiesExportVaneloftShape", "&Export propeller CAD shape...",
             "the IGES export of the propeller.");
  tools->addSeparator();
  QMenu* graph = tools->addMenu("&Graph");
  graph->setObjectName("mnuToolsGraph");
  AddCommand(graph, "mnuToolsGraphSingle", "&Standard", &MainWindow::GraphStandard);
  AddPending(graph, "mnuToolsGraphMultiple", "&Custom", "the custom graphs and their options window.");
  AddPending(graph, "mnuToolsGraphOptions", "&Custom graph options...", "the custom graph options window.");
  AddCommand(graph, "mnuToolsGraphSaveAs", "&Save graph as...", &MainWindow::GraphSaveAs);
  QMenu* report = tools->addMenu("&Report");
  report->setObjectName("mnuToolsReport");
  AddCommand(report, "mnuToolsReportShort", "&Results", &MainWindow::ReportShort);
  AddCommand(report, "mnuToolsReportLong", "&Data and results", &MainWindow::ReportLong);
  AddPending(report, "mnuToolsReportGraph", "&Active graph", "the report of the active graph.");
  AddCommand(report, "mnuToolsReportSaveAs", "Save report &as...", &MainWindow::ReportSaveAs);
  tools->addSeparator();
  AddCommand(tools, "mnuToolsOptions", "&Options...", &MainWindow::ToolsOptions);

  QMenu* help = bar->addMenu("&Help");
  help->setObjectName("mnuHelp");
  const QString noHelp = "the help pages (the user guide is in docs/).";
  AddPending(help, "mnuHelpContents", "&Contents...", noHelp);
  AddPending(help, "mnuHelpSearch", "&Search...", noHelp);
  AddPending(help, "mnuHelpTutorial", "&Tutorial...", noHelp);
  help->addSeparator();
  const QString noUpdate = "an update service; no address is configured for this build.";
  AddPending(help, "mnuHelpCheckForUpdate", "Check for &updates...", noUpdate);
  AddPending(help, "mnuHelpUpdateVelmar", "&Download latest version...", noUpdate);
  help->addSeparator();
  AddCommand(help, "mnuHelpAbout", "&About Velmar...", &MainWindow::HelpAbout);

  // Status tips of the working commands.
  const std::pair<const char*, const char*> tips[] = {
      {"mnuFileNew", "Start a new project"},
      {"mnuFileOpen", "Open a project file (*.vxvl)"},
      {"mnuFileSave", "Save the project"},
      {"mnuFileSaveAs", "Save the project under a new name"},
      {"mnuFileExit", "Close the program"},
      {"mnuEditUnits", "Choose the units and formats of the project"},
      {"mnuEditCondition", "Edit the condition: project, water, speeds, design condition"},
      {"mnuEditHull", "Edit the hull data and the hull drag method"},
      {"mnuEditAppendage", "Edit the appendages and their drag method"},
      {"mnuEditEnvironment", "Edit wind, seas and shallow water or channel"},
      {"mnuEditMargin", "Edit the resistance margin"},
      {"mnuEditPropulsor", "Edit the propulsor, engine and gear"},
      {"mnuViewResistance", "Show the resistance prediction"},
      {"mnuViewPropulsion", "Show the propulsion prediction"},
      {"mnuAnalysisCalculate", "Run the prediction of the current mode"},
      {"mnuAnalysisClearResults", "Set all computed results to zero"},
      {"mnuAnalysisEditResultsMode", "Type results into the columns set to Lock or Enter"},
      {"mnuAnalysisResistanceSensitivity", "How strongly the hull drag reacts to each hull parameter"},
      {"mnuToolsOptions", "Settings of the program"},
      {"mnuToolsGraphSingle", "Show the standard graph of the mode"},
      {"mnuToolsGraphSaveAs", "Save the graph as a picture"},
      {"mnuToolsReportShort", "Show the results report of the mode"},
      {"mnuToolsReportLong", "Show the data and results report of the mode"},
      {"mnuToolsReportSaveAs", "Save the report on show as PDF or CSV"},
      {"mnuHelpAbout", "Program version"},
  };
  for (const auto& [name, tip] : tips) actions_.value(name)->setStatusTip(tip);
}

void MainWindow::BuildToolbars() {
  struct Button {
    const char* key;
    const char* command;  // the menu command it shares, or empty for one of its own
    const char* text;
  };
  const auto build = [this](const char* name, std::initializer_list<Button> buttons) {
    QToolBar* bar = addToolBar(name);
    bar->setObjectName(name);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setMovable(false);
    for (const Button& b : buttons) {
      QAction* a = *b.command ? actions_.value(b.command) : nullptr;
      if (!a) {
        a = AddPending(nullptr, QString("tlb") + b.key, b.text,
                       QString(b.key) == "ShowAsCoefs" ? "the hull data shown as coefficients."
                                                       : "this command of the toolbar.");
      }
      a->setIconText(b.text);
      bar->addAction(a);
      actions_.insert(QString("tlb") + b.key, a);
    }
  };
  build("tlbMainMode", {{"New", "mnuFileNew", "New"},
                        {"Open", "mnuFileOpen", "Open"},
                        {"Save", "mnuFileSave", "Save"},
                        {"ModeResistance", "mnuViewResistance", "Resistance"},
                        {"ModePropulsion", "mnuViewPropulsion", "Propulsion"}});
  build("tlbMainEdit", {{"Units", "mnuEditUnits", "Units"},
                        {"ShowAsCoefs", "", "Coefs"},
                        {"EditCondition", "mnuEditCondition", "Condition"},
                        {"EditHull", "mnuEditHull", "Hull"},
                        {"EditAppendages", "mnuEditAppendage", "Appendages"},
                        {"EditEnvironment", "mnuEditEnvironment", "Environment"},
                        {"EditMargin", "mnuEditMargin", "Margin"},
                        {"EditPropulsor", "mnuEditPropulsor", "Propulsor"}});
  addToolBarBreak();
  build("tlbMainProcess", {{"Calculate", "mnuAnalysisCalculate", "Calculate"},
                           {"EditResults", "mnuAnalysisEditResultsMode", "Edit results"},
                           {"Sensitivity", "mnuAnalysisResistanceSensitivity", "Influence"},
                           {"GraphType", "mnuToolsGraphSingle", "Graph"},
                           {"GraphOptions", "mnuToolsGraphOptions", "Graph options"},
                           {"SaveGraph", "mnuToolsGraphSaveAs", "Save graph"},
                           {"ReportType", "mnuToolsReportShort", "Report"},
                           {"SaveReport", "mnuToolsReportSaveAs", "Save report"},
                           {"Help", "mnuHelpContents", "Help"}});
}

ModeWindow* MainWindow::CurrentModeWindow() const { return ModeWindowOf(App().CurrentMode); }

ModeWindow* MainWindow::ModeWindowOf(Mode mode) const {
  return mode == Mode::Propulsion ? propulsion_ : resistance_;
}

QString MainWindow::ModeText() const { return modeLabel_->text(); }

void MainWindow::SetMode(Mode mode) {
  EndCellEdits();
  App().CurrentMode = mode;
  const bool propulsion = mode == Mode::Propulsion;
  actions_.value("mnuAnalysisCalculate")->setText(propulsion ? "&Calculate: Propulsion" : "&Calculate: Resistance");
  actions_.value("mnuAnalysisCalculate")->setIconText("Calculate");
  actions_.value(propulsion ? "mnuViewPropulsion" : "mnuViewResistance")->setChecked(true);
  modeLabel_->setText(propulsion ? "Mode: Propulsion" : "Mode: Resistance");
  ModeWindow* w = ModeWindowOf(mode);
  w->SetEditResultsMode(editResults_);
  w->Rebuild();
  modes_->setCurrentWidget(w);
  RefreshCalculateButton();
}

void MainWindow::ShowEntryTable(EntryCommand command) { CurrentModeWindow()->ShowTable(command); }

void MainWindow::EndCellEdits() {
  if (!resistance_) return;
  // The results table first (when Edit results mode is on), then the entry table.
  CurrentModeWindow()->EndCellEdits();
  ModeWindowOf(App().CurrentMode == Mode::Resistance ? Mode::Propulsion : Mode::Resistance)->EndCellEdits();
}

void MainWindow::RefreshResults() {
  if (!resistance_) return;
  resistance_->RefreshResults();
  propulsion_->RefreshResults();
}

void MainWindow::SetCalculateButton(const std::string& image, std::optional<bool> button5Enabled) {
  if (!image.empty()) {
    QAction* calc = actions_.value("mnuAnalysisCalculate");
    calc->setIcon(CalculateIcon(image == "NeedCalculate"));
    calc->setToolTip(image == "NeedCalculate" ? "Calculate (the data changed since the last run)" : "Calculate");
  }
  if (button5Enabled) actions_.value("mnuAnalysisResistanceSensitivity")->setEnabled(*button5Enabled);
}

void MainWindow::UpdateTitle() { setWindowTitle(Q(WindowTitle("Velmar"))); }

void MainWindow::UpdateRecentMenu() {
  const std::vector<std::string> list = RecentFiles(settings_);
  for (int i = 0; i < kRecentFileCount; ++i) {
    const QString path = Q(list[static_cast<size_t>(i)]);
    recent_[i]->setVisible(!path.isEmpty());
    recent_[i]->setText(QString("&%1 %2").arg(i + 1).arg(path));
    recent_[i]->setStatusTip(path);
  }
}

void MainWindow::RebuildAll() {
  UpdateTitle();
  UpdateRecentMenu();
  resistance_->Rebuild();
  propulsion_->Rebuild();
  RefreshCalculateButton();
}

void MainWindow::ShowFileResult(const FileCommandResult& r) {
  if (!r.message.empty()) hooks_.ShowMessage(r.title, r.message, 0);
  RebuildAll();
}

bool MainWindow::OpenFile(const QString& path) {
  const FileCommandResult r = OpenCommand(path.toStdString(), &settings_);
  ShowFileResult(r);
  return r.done;
}

void MainWindow::FileNew() { ShowFileResult(NewCommand(&settings_)); }

void MainWindow::FileOpen() { ShowFileResult(OpenCommand({}, &settings_)); }

void MainWindow::FileSave() { ShowFileResult(SaveCommand(&settings_)); }

void MainWindow::FileSaveAs() { ShowFileResult(SaveAsCommand({}, &settings_)); }

void MainWindow::FileExit() {
  QCoreApplication::processEvents();
  close();
}

void MainWindow::OpenRecent(int index) { ShowFileResult(OpenRecentCommand(index, settings_)); }

void MainWindow::EditUnits() {
  const std::shared_ptr<clsVXUnits> copy = App().primary.Units->CopyClass();
  UnitsDialog dialog(*copy, this);
  ApplyUnitsCommand(dialog.exec() == QDialog::Accepted ? copy.get() : nullptr);
  RebuildAll();
}

void MainWindow::Calculate() {
  statusBar()->showMessage(App().CurrentMode == Mode::Propulsion ? "Calculating propulsion..."
                                                                   : "Calculating resistance...");
  RunCalculate();
  RefreshResults();
  RefreshCalculateButton();
  statusBar()->clearMessage();
}

void MainWindow::ClearAllResults() {
  ClearResults();
  RefreshResults();
}

void MainWindow::EditResultsMode() {
  editResults_ = !editResults_;
  actions_.value("mnuAnalysisEditResultsMode")->setChecked(editResults_);
  resistance_->SetEditResultsMode(editResults_);
  propulsion_->SetEditResultsMode(editResults_);
}

void MainWindow::ParameterInfluence() {
  InfluenceDialog::Run(this);
}

void MainWindow::GraphStandard() { CurrentModeWindow()->ShowGraph(); }

void MainWindow::GraphSaveAs() {
  GraphView* view = CurrentModeWindow()->Graph();
  CurrentModeWindow()->ShowGraph();
  if (!view->Graph()) {
    hooks_.ShowMessage("Save graph", "There is no graph to save: calculate first.", 0);
    return;
  }
  std::string filter;
  for (const std::string& t : SaveGraphFileTypes()) filter += (filter.empty() ? "" : ";;") + t;
  std::string path = hooks_.AskFilePath(kSaveGraphDialogTitle, filter, true);
  if (path.empty()) return;
  if (std::filesystem::path(path).extension().empty()) path += ".jpg";
  std::string error;
  if (!SaveGraphFile(*view->Graph(), path, view->width(), view->height(), &error))
    hooks_.ShowMessage("Save graph", error, 0);
}

ReportKind MainWindow::ReportOf(bool withData) const {
  if (App().CurrentMode == Mode::Propulsion) return ReportKind::FullPropulsion;
  return withData ? ReportKind::FullResistance : ReportKind::Resistance;
}

void MainWindow::ReportShort() { CurrentModeWindow()->ShowReport(ReportOf(false), "Report: Results"); }

void MainWindow::ReportLong() { CurrentModeWindow()->ShowReport(ReportOf(true), "Report: Data & Results"); }

void MainWindow::ReportSaveAs() {
  std::string path = hooks_.AskFilePath("Save file...", "Adobe Portable Document (*.pdf);;Comma Separated Values (*.csv)", true);
  if (path.empty()) return;
  if (std::filesystem::path(path).extension().empty()) path += ".pdf";
  if (IsReadOnlyFile(path)) {
    hooks_.ShowMessage("Read-Only Error", "The report could not be saved. The selected file is Read-only.", 0);
    return;
  }
  ReportOptions options;
  options.symbols = settings_.Get("Report", "ShowSymbolsValuesPage", "Show") != "Omit";
  ModelSet set = App().primary;
  set.SpeedPerformance = set.SpeedPerformance->CopyClass();
  set.Hull = set.Hull->CopyClass();
  const ReportDocument doc = BuildReport(set, ReportOf(CurrentModeWindow()->ShowsReport()), options);
  std::string error;
  bool ok = false;
  if (EqualsNoCase(std::filesystem::path(path).extension().string(), ".csv")) {
    const SafeWriteResult r = WriteFileSafely(path, WriteReportCsv(doc));
    ok = r.ok;
    error = r.message;
  } else {
    ok = WriteReportPdf(doc, path, &error);
  }
  if (!ok) hooks_.ShowMessage("Save report", "The report could not be saved. " + error, 0);
}

void MainWindow::ToolsOptions() {
  OptionsDialog dialog(settings_, this);
  if (dialog.exec() == QDialog::Accepted) dialog.Apply();
}

void MainWindow::HelpAbout() {
  QMessageBox::about(this, "About Velmar",
                     Q("Velmar " + ProgramVersionText() +
                       "\n\nShip resistance and propulsion prediction.\nCorvenith"));
}

void MainWindow::closeEvent(QCloseEvent* event) {
  EndCellEdits();
  if (App().ProjectDirty) {
    const Answer a = Hooks().Ask("Save Project?",
                                 "The design " + App().primary.Project->FileName +
                                     " has been changed.\rWould you like to save the design?",
                                 true, Answer::Cancel);
    if (a == Answer::Cancel || (a == Answer::Yes && !SaveCommand(&settings_).done)) {
      event->ignore();
      return;
    }
  }
  App().primary.Project->WriteProjectTrackerLog();
  settings_.Set("Window", "Geometry", saveGeometry().toBase64().toStdString());
  event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile() && QFileInfo(url.toLocalFile()).suffix().compare("vxvl", Qt::CaseInsensitive) == 0) {
      event->acceptProposedAction();
      return;
    }
  }
}

void MainWindow::dropEvent(QDropEvent* event) {
  for (const QUrl& url : event->mimeData()->urls()) {
    const QString path = url.toLocalFile();
    if (QFileInfo(path).suffix().compare("vxvl", Qt::CaseInsensitive) == 0) {
      event->acceptProposedAction();
      OpenFile(path);
      return;
    }
  }
}

}  // namespace velmar
