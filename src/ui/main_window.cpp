// The main window and its commands.
#include "ui/main_window.h"

#include <QAction>
#include <QDockWidget>
#include <QActionGroup>
#include <QApplication>
#include <QByteArray>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
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
#include <span>
#include <tuple>
#ifdef VELMAR_HAVE_PRINT
#include <QPrintDialog>
#include <QPrinter>
#endif

#include "app/application.h"
#include "app/calculate.h"
#include "app/file_commands.h"
#include "core/format.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/iges_export.h"
#include "files/safe_write.h"
#include "render/graph_image.h"
#include "render/report_pdf.h"
#include "reports/prediction_graphs.h"
#include "reports/report_writers.h"
#include "ui/entry_model.h"
#include "ui/graph_pane.h"
#include "ui/influence_dialog.h"
#include "ui/graph_options_dialog.h"
#include "ui/method_expert_dialog.h"
#include "ui/report_print.h"
#include "ui/mode_window.h"
#include "ui/options_dialog.h"
#include "ui/qt_hooks.h"
#include "ui/engine_window.h"
#include "ui/estimates_dialog.h"
#include "ui/sizing_dialog.h"
#include "ui/task_list_pane.h"
#include "ui/waterjet_window.h"
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
  // The graph popup of both panes, and the report options of the settings.
  for (ModeWindow* w : {resistance_, propulsion_}) {
    for (const auto& [name, caption, slot] :
         {std::tuple{"mnuGraphPopupSaveGraphAs", "Save graph as...", &MainWindow::GraphSaveAs},
          std::tuple{"mnuGraphPopupOptions", "Standard graph", &MainWindow::GraphStandard},
          std::tuple{"mnuGraphPopUpMultiple", "Custom graph...", &MainWindow::GraphOptions}}) {
      QAction* a = actions_.value(name);
      if (!a) a = AddCommand(nullptr, name, caption, slot);
      w->Graph()->addAction(a);
    }
    w->Graph()->setContextMenuPolicy(Qt::ActionsContextMenu);
    w->SetReportOptions(ReportOptionsFromSettings(settings_));
  }
  // The method selectors of the entry tables open the Method Expert from their context menu.
  for (ModeWindow* w : {resistance_, propulsion_}) w->EntryView()->addAction(actions_.value("mnuAnalysisMethodExpert"));
  BuildDataWindowCommands();
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
  AddCommand(file, "mnuFileImport", "&Import...", &MainWindow::FileImport);
  AddCommand(file, "mnuFileExport", "Expor&t...", &MainWindow::FileExport);
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
  AddCommand(analysis, "mnuAnalysisMethodExpert", "&Method Expert...", &MainWindow::MethodExpert);

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
  AddCommand(util, "mnuToolsUtilitiesExportVaneloftShape", "&Export propeller CAD shape...",
             &MainWindow::ExportPropellerCad);
  tools->addSeparator();
  QMenu* graph = tools->addMenu("&Graph");
  graph->setObjectName("mnuToolsGraph");
  AddCommand(graph, "mnuToolsGraphSingle", "&Standard", &MainWindow::GraphStandard);
  AddCommand(graph, "mnuToolsGraphMultiple", "&Custom", &MainWindow::GraphCustom);
  AddCommand(graph, "mnuToolsGraphOptions", "&Custom graph options...", &MainWindow::GraphOptions);
  AddCommand(graph, "mnuToolsGraphSaveAs", "&Save graph as...", &MainWindow::GraphSaveAs);
  QMenu* report = tools->addMenu("&Report");
  report->setObjectName("mnuToolsReport");
  AddCommand(report, "mnuToolsReportShort", "&Results", &MainWindow::ReportShort);
  AddCommand(report, "mnuToolsReportLong", "&Data and results", &MainWindow::ReportLong);
  AddCommand(report, "mnuToolsReportGraph", "&Active graph", &MainWindow::ReportGraph);
  AddCommand(report, "mnuToolsReportSaveAs", "Save report &as...", &MainWindow::ReportSaveAs);
  AddCommand(report, "mnuToolsReportPrint", "&Print...", &MainWindow::ReportPrint)->setShortcut(QKeySequence::Print);
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
      {"mnuAnalysisMethodExpert", "Rank the methods of the selected method row for this vessel and take one"},
      {"mnuToolsOptions", "Settings of the program"},
      {"mnuToolsGraphSingle", "Show the standard graph of the mode"},
      {"mnuToolsGraphSaveAs", "Save the graph as a picture"},
      {"mnuToolsReportShort", "Show the results report of the mode"},
      {"mnuToolsReportLong", "Show the data and results report of the mode"},
      {"mnuToolsReportSaveAs", "Save the report on show as PDF, HTML or CSV"},
      {"mnuToolsGraphMultiple", "Show every graph of the custom set"},
      {"mnuToolsGraphOptions", "Choose the graphs of the custom set, their lines, legend and compare files"},
      {"mnuToolsReportGraph", "Show the report of the active graph"},
      {"mnuToolsReportPrint", "Print the report on show"},
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
  if (tasks_) tasks_->Fill();
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

namespace {
// The types of a file dialog as one filter text, and the index of the type chosen.
QString FilterText(std::span<const char* const> types) {
  QStringList list;
  for (const char* t : types) list << t;
  return list.join(";;");
}
int FilterIndex(std::span<const char* const> types, const QString& chosen) {
  for (size_t i = 0; i < types.size(); ++i)
    if (chosen == types[i]) return static_cast<int>(i);
  return 0;
}
}  // namespace

// The dialog is the window's; what the chosen type means is the engine's ImportCommand.
void MainWindow::FileImport() {
  QString type;
  const QString path =
      QFileDialog::getOpenFileName(this, "Open file...", QString(), FilterText(kImportFileTypes), &type);
  if (path.isEmpty()) return;
  const auto kind = static_cast<ImportKind>(FilterIndex(kImportFileTypes, type));
  ShowFileResult(ImportCommand(path.toStdString(), kind, &settings_));
}

void MainWindow::FileExport() {
  QString type;
  QString path = QFileDialog::getSaveFileName(this, "Save file...", QString(), FilterText(kExportFileTypes), &type);
  if (path.isEmpty()) return;
  if (QFileInfo(path).suffix().isEmpty()) path += FilterIndex(kExportFileTypes, type) == 0 ? ".vl5" : ".ship";
  ShowFileResult(ExportCommand(path.toStdString()));
}

void MainWindow::ExportPropellerCad() {
  statusBar()->showMessage(kIGESStatusText);
  ShowFileResult(ExportPropellerCadCommand({}));
  statusBar()->clearMessage();
}

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

void MainWindow::MethodExpert() {
  // The family of the method selector under the cursor; else the mode's main method.
  ModeWindow* w = CurrentModeWindow();
  MethodFamily family = App().CurrentMode == Mode::Propulsion ? MethodFamily::Interaction : MethodFamily::Hull;
  MethodExpertDialog::FamilyOfEntryRow(*w->Entry(), w->EntryView()->currentIndex().row(), family);
  if (!MethodExpertDialog::Run(family, this)) return;
  UpdateTitle();
  resistance_->Rebuild();
  propulsion_->Rebuild();
}

void MainWindow::ParameterInfluence() {
  InfluenceDialog::Run(this);
}

void MainWindow::GraphStandard() { CurrentModeWindow()->SetGraphMode(GraphMode::Standard); }

void MainWindow::GraphCustom() { CurrentModeWindow()->SetGraphMode(GraphMode::Multiple); }

void MainWindow::GraphOptions() {
  if (GraphOptionsDialog::Run(App().CurrentMode, this)) CurrentModeWindow()->SetGraphMode(GraphMode::Custom);
}

void MainWindow::GraphSaveAs() {
  ModeWindow* w = CurrentModeWindow();
  if (w->ShowsReport()) w->ShowGraph();
  GraphView* view = w->Graph();
  if (!view->Graph()) {
    hooks_.ShowMessage("Save graph", "There is no graph to save: calculate first.", 0);
    return;
  }
  // The product's JPEG and Bitmap, and PNG and SVG beside them.
  std::vector<std::string> types = SaveGraphFileTypes();
  types.insert(types.end(), {"PNG (*.png)", "Scalable Vector Graphics (*.svg)"});
  std::string filter;
  for (const std::string& t : types) filter += (filter.empty() ? "" : ";;") + t;
  std::string path = hooks_.AskFilePath(kSaveGraphDialogTitle, filter, true);
  if (path.empty()) return;
  if (std::filesystem::path(path).extension().empty()) path += ".jpg";
  std::string error;
  const QSize size = view->GraphSize();
  if (!SaveGraphFile(*view->Graph(), path, size.width(), size.height(), &error))
    hooks_.ShowMessage("Save graph", error, 0);
}

ReportKind MainWindow::ReportOf(bool withData) const {
  if (App().CurrentMode == Mode::Propulsion) return ReportKind::FullPropulsion;
  return withData ? ReportKind::FullResistance : ReportKind::Resistance;
}

void MainWindow::ReportShort() { CurrentModeWindow()->ShowReport(ReportOf(false), "Report: Results"); }

void MainWindow::ReportLong() { CurrentModeWindow()->ShowReport(ReportOf(true), "Report: Data & Results"); }

void MainWindow::ReportGraph() { CurrentModeWindow()->ShowGraphReport(); }

void MainWindow::ReportSaveAs() {
  std::string path = hooks_.AskFilePath("Save file...", kSaveReportFilter, true);
  if (path.empty()) return;
  if (std::filesystem::path(path).extension().empty()) path += kSaveReportDefaultExtension;
  if (IsReadOnlyFile(path)) {
    hooks_.ShowMessage("Read-Only Error", "The report could not be saved. The selected file is Read-only.", 0);
    return;
  }
  std::string error;
  if (!WriteReportFile(CurrentModeWindow()->CurrentReport(), path, &error))
    hooks_.ShowMessage("Save report", "The report could not be saved. " + error, 0);
}

void MainWindow::ReportPrint() {
#ifdef VELMAR_HAVE_PRINT
  const ReportDocument doc = CurrentModeWindow()->CurrentReport();
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, this);
  dialog.setWindowTitle("Print report");
  if (dialog.exec() != QDialog::Accepted) return;
  std::string error;
  if (PrintReport(doc, printer, &error) == 0) hooks_.ShowMessage("Print report", "The report was not printed: " + error, 0);
#else
  hooks_.ShowMessage("Print report", "This build has no printing; save the report as PDF instead.", 0);
#endif
}

void MainWindow::ToolsOptions() {
  OptionsDialog dialog(settings_, this);
  if (dialog.exec() != QDialog::Accepted) return;
  dialog.Apply();
  for (ModeWindow* w : {resistance_, propulsion_}) w->SetReportOptions(ReportOptionsFromSettings(settings_));
}

void MainWindow::HelpAbout() {
  QMessageBox::about(this, "About Velmar",
                     Q("Velmar " + ProgramVersionText() +
                       "\n\nShip resistance and propulsion prediction.\nCorvenith"));
}

void MainWindow::BuildDataWindowCommands() {
  // The task list stands beside both mode windows.
  tasks_ = new TaskListPane(this);
  auto* dock = new QDockWidget("Task list", this);
  dock->setObjectName("dockTaskList");
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  dock->setWidget(tasks_);
  addDockWidget(Qt::RightDockWidgetArea, dock);
  resizeDocks({dock}, {330}, Qt::Horizontal);
  connect(tasks_, &TaskListPane::Changed, this, &MainWindow::UpdateTitle);
  connect(tasks_, &TaskListPane::CommandRequested, this, [this](const QString& menu, const QString& item) {
    if (!RunMenuCommand(menu, item)) statusBar()->showMessage("No command " + menu + " : " + item + ".", 5000);
  });

  // The data windows open from the context menu of the entry table, on the row they serve.
  const std::pair<QAction*, const char*> commands[] = {
      {AddCommand(nullptr, "mnuEntryEstimates", "&Estimates...", &MainWindow::EntryEstimates),
       "Proposed values for the hull item of the selected row"},
      {AddCommand(nullptr, "mnuEntryPropellerSizing", "Propeller &sizing...", &MainWindow::PropellerSizing),
       "Size the propeller for the design point and write it to the propeller data"},
      {AddCommand(nullptr, "mnuEntryEngineData", "E&ngine data...", &MainWindow::EngineData),
       "The engine's rated point and curves, and the engine file (*.engn)"},
      {AddCommand(nullptr, "mnuEntryWaterjetData", "&Waterjet data...", &MainWindow::WaterjetData),
       "The waterjet's impellers and power series, and the waterjet file (*.wjet)"},
  };
  for (const auto& [action, tip] : commands) {
    action->setStatusTip(tip);
    for (ModeWindow* w : {resistance_, propulsion_}) w->EntryView()->addAction(action);
  }
}

// The estimate item of the selected entry row, with the row's caption; false for a row that
// has no estimates.
namespace {
bool EstimateOfRow(const EntryTableModel& model, int row, EstimateItem& item, QString& caption) {
  if (row < 0) return false;
  for (const EntryGroup& g : EntryTableOf(model.Table()).groups)
    for (const EntryRow& r : g.rows)
      if (model.RowOf(r.object, r.field) == row &&
          (r.object == EntryObject::Hull || r.object == EntryObject::ITTC78) &&
          EstimateItemFromName(r.field, item)) {
        caption = model.index(row, EntryTableModel::kCaption).data().toString();
        return true;
      }
  return false;
}
}  // namespace

void MainWindow::EntryEstimates() {
  ModeWindow* w = CurrentModeWindow();
  const QModelIndex current = w->EntryView()->currentIndex();
  EstimateItem item;
  QString caption;
  if (!EstimateOfRow(*w->Entry(), current.row(), item, caption)) {
    statusBar()->showMessage("Estimates are offered on the rows of the hull table that have them: waterplane area, "
                             "LCB and LCG, LCF, max section area, wetted surface, half entrance angle, form factor "
                             "and correlation allowance.",
                             8000);
    return;
  }
  EstimatesDialog dialog(item, caption, this);
  if (dialog.exec() != QDialog::Accepted || !dialog.Chosen()) return;
  // The value enters the cell as a typed value does.
  w->Entry()->setData(w->Entry()->index(current.row(), EntryTableModel::kValue), *dialog.Chosen());
}

void MainWindow::PropellerSizing() {
  SizingDialog dialog(true, this);
  dialog.exec();
  RebuildAll();
}

void MainWindow::ShowPropellerSizing() {
  SizingDialog dialog(false, this);
  dialog.exec();
}

void MainWindow::EngineData() {
  EngineWindow window(this);
  if (window.exec() == QDialog::Accepted) RebuildAll();
}

void MainWindow::WaterjetData() {
  WaterjetWindow window(this);
  if (window.exec() == QDialog::Accepted) RebuildAll();
}

bool MainWindow::RunMenuCommand(const QString& menu, const QString& item) {
  const auto plain = [](QString text) {
    text.remove('&');
    if (text.endsWith("...")) text.chop(3);
    return text.trimmed();
  };
  for (QAction* top : menuBar()->actions()) {
    if (!top->menu() || plain(top->text()).compare(menu, Qt::CaseInsensitive) != 0) continue;
    for (QAction* a : top->menu()->actions()) {
      // "Calculate" stands for "Calculate: Resistance" and "Calculate: Propulsion".
      const QString text = plain(a->text());
      if (a->isSeparator() ||
          (text.compare(item, Qt::CaseInsensitive) != 0 && !text.startsWith(item + ":", Qt::CaseInsensitive)))
        continue;
      if (a->menu() && !a->menu()->actions().isEmpty()) a = a->menu()->actions().front();
      if (!a->isEnabled()) {
        statusBar()->showMessage(a->statusTip(), 8000);
        return true;
      }
      a->trigger();
      return true;
    }
  }
  return false;
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
