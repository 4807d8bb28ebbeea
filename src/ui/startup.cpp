// Start-up, icon and screenshots.
#include "ui/startup.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QPainter>
#include <QPainterPath>
#include <QTableView>
#include <QTableWidget>
#include <algorithm>
#include <cstdio>

#include "app/application.h"
#include "app/calculate.h"
#include "app/file_commands.h"
#include "files/project_file.h"
#include "propulsion/propeller_sizing.h"
#include "ui/engine_window.h"
#include "ui/entry_model.h"
#include "ui/estimates_dialog.h"
#include "ui/sizing_dialog.h"
#include "ui/task_list_pane.h"
#include "ui/waterjet_window.h"
#include "ui/graph_options_dialog.h"
#include "ui/main_window.h"
#include "ui/method_expert_dialog.h"
#include "ui/mode_window.h"
#include "ui/options_dialog.h"
#include "ui/qt_hooks.h"

namespace velmar {

QString ProjectArgument(const QString& argument) {
  QString path = argument.trimmed();
  path.remove('"');
  if (path.isEmpty()) return {};
  const QFileInfo info(path);
  if (!info.isFile() || info.suffix().toLower() != "vxvl") return {};
  return info.absoluteFilePath();
}

std::unique_ptr<MainWindow> StartUp(const QStringList& arguments, SettingsStore& settings, QtHooks& hooks) {
  // 1. Theme and template options.
  ApplyStartupOptions(settings);
  InstallProjectFileHooks();
  // 2. The help file is not shipped: its commands are disabled instead of warning at each start.
  // 3. A fresh project.
  NewProject();
  auto window = std::make_unique<MainWindow>(settings, hooks);
  // 4. The project on the command line (the first argument that is not an option).
  for (const QString& arg : arguments.mid(1)) {
    if (arg.startsWith("--")) continue;
    const QString path = ProjectArgument(arg);
    if (!path.isEmpty()) window->OpenFile(path);
    break;
  }
  // 5. Title, resistance mode, recent list.
  window->SetMode(Mode::Resistance);
  window->RebuildAll();
  window->setWindowIcon(ProgramIcon());
  return window;
}

QIcon ProgramIcon() {
  QIcon icon;
  for (int size : {16, 32, 48, 64, 128, 256}) {
    QPixmap pm(size, size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 64.0, size / 64.0);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x1f, 0x4e, 0x79));
    p.drawRoundedRect(QRectF(2, 2, 60, 60), 12, 12);
    // A hull in profile over a wave line.
    QPainterPath hull;
    hull.moveTo(10, 30);
    hull.lineTo(54, 30);
    hull.cubicTo(50, 40, 44, 44, 34, 44);
    hull.lineTo(16, 44);
    hull.cubicTo(12, 42, 10, 36, 10, 30);
    p.setBrush(QColor(0xf2, 0xf2, 0xf2));
    p.drawPath(hull);
    p.setBrush(QColor(0xf0, 0x9a, 0x1a));
    p.drawRect(QRectF(20, 20, 16, 10));
    QPen wave(QColor(0x7f, 0xc8, 0xf0), 3);
    p.setPen(wave);
    p.setBrush(Qt::NoBrush);
    QPainterPath w;
    w.moveTo(6, 50);
    w.cubicTo(16, 44, 22, 56, 32, 50);
    w.cubicTo(42, 44, 48, 56, 58, 50);
    p.drawPath(w);
    icon.addPixmap(pm);
  }
  return icon;
}

namespace {

bool Save(const QPixmap& pm, const QString& path, int& count) {
  if (!pm.save(path, "PNG")) {
    std::fprintf(stderr, "velmar: could not write %s\n", qPrintable(path));
    return false;
  }
  ++count;
  return true;
}

// One entry table on its own, tall enough for every row.
QPixmap EntryTablePicture(EntryCommand command) {
  EntryTableModel model;
  model.SetTable(command);
  QTableView view;
  view.setModel(&model);
  view.verticalHeader()->hide();
  view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 8);
  view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.resizeColumnsToContents();
  view.setColumnWidth(EntryTableModel::kValue, std::clamp(view.columnWidth(EntryTableModel::kValue) + 16, 150, 240));
  int width = 2 * view.frameWidth();
  for (int c = 0; c < model.columnCount(); ++c) width += view.columnWidth(c);
  int height = 2 * view.frameWidth() + view.horizontalHeader()->sizeHint().height();
  for (int r = 0; r < model.rowCount(); ++r) height += view.rowHeight(r);
  view.resize(width, height);
  view.show();
  QCoreApplication::processEvents();
  return view.grab();
}

const char* FileNameOf(EntryCommand c) {
  switch (c) {
    case EntryCommand::Condition:
      return "entry-condition.png";
    case EntryCommand::Hull:
      return "entry-hull.png";
    case EntryCommand::Appendage:
      return "entry-appendage.png";
    case EntryCommand::Environment:
      return "entry-environment.png";
    case EntryCommand::Margin:
      return "entry-margin.png";
    case EntryCommand::Propulsor:
      return "entry-propulsor.png";
  }
  return "entry.png";
}

}  // namespace

int WriteScreenshots(MainWindow& window, const QString& folder) {
  QDir().mkpath(folder);
  int count = 0;
  window.resize(1440, 900);
  window.show();
  QCoreApplication::processEvents();

  window.SetMode(Mode::Resistance);
  window.ShowEntryTable(EntryCommand::Hull);
  RunCalculate();
  window.RefreshResults();
  QCoreApplication::processEvents();
  Save(window.grab(), folder + "/main-resistance.png", count);

  window.SetMode(Mode::Propulsion);
  window.ShowEntryTable(EntryCommand::Propulsor);
  RunCalculate();
  window.RefreshResults();
  QCoreApplication::processEvents();
  Save(window.grab(), folder + "/main-propulsion.png", count);

  for (const EntryTable& t : EntryTables()) Save(EntryTablePicture(t.command), folder + "/" + FileNameOf(t.command), count);

  // The data windows, each shown without its own event loop.
  const auto grab = [&](QWidget& w, const char* file) {
    w.show();
    QCoreApplication::processEvents();
    Save(w.grab(), folder + "/" + file, count);
    w.close();
  };
  Save(window.TaskList()->grab(), folder + "/task-list.png", count);
  EstimatesDialog estimates(EstimateItem::WettedSurface, "Wetted surface:", &window);
  estimates.Proposals()->setCurrentCell(5, 0);  // "Holtrop", with its check rows
  grab(estimates, "estimates.png");
  // Sized by total drag for a new diameter and pitch, on the drag of the resistance run above.
  ModelSet& p = App().primary;
  p.PropellerSizing->PropellerSizingIdentity(3);
  p.PropellerSizing->DiameterSolution(1);
  p.PropellerSizing->PitchMeanSolution(1);
  SizingDialog sizing(true, &window);
  sizing.SizePropeller();
  grab(sizing, "propeller-sizing.png");
  EngineWindow engine(&window);
  grab(engine, "engine-data.png");
  WaterjetWindow waterjet(&window);
  grab(waterjet, "waterjet-data.png");
  // The analysis windows: the Method Expert on the hull drag methods, the custom graph
  // options, the custom set of graphs and the report of the active graph.
  window.SetMode(Mode::Resistance);
  RunCalculate();
  window.RefreshResults();
  const auto shoot = [&](QWidget& w, const QString& file) {
    w.show();
    QCoreApplication::processEvents();
    Save(w.grab(), folder + "/" + file, count);
    w.close();
  };
  MethodExpertDialog expert(MethodFamily::Hull, &window);
  shoot(expert, "method-expert.png");
  GraphOptionsDialog graphOptions(Mode::Resistance, &window);
  shoot(graphOptions, "graph-options.png");
  window.CurrentModeWindow()->SetGraphMode(GraphMode::Multiple);
  QCoreApplication::processEvents();
  Save(window.grab(), folder + "/main-graph-custom.png", count);
  window.CurrentModeWindow()->ShowGraphReport();
  QCoreApplication::processEvents();
  Save(window.grab(), folder + "/main-report-graph.png", count);
  window.CurrentModeWindow()->SetGraphMode(GraphMode::Standard);
  return count;
}

}  // namespace velmar
