// velmar-cli batch and sweep: many predictions in parallel, one output line per project (or
// variant) and speed. Each worker thread holds a project of its own; the lines come out in
// input order. A project or variant that fails gives its warning in its lines and the others
// go on.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "app/application.h"
#include "app/variants.h"
#include "cli/commands.h"
#include "cli/result_output.h"
#include "core/helpers.h"
#include "core/speed_performance.h"
#include "core/units.h"

namespace velmar::cli {
namespace {

namespace fs = std::filesystem;

struct RunOptions {
  std::string mode = "resistance", format, out, columns;
  int threads = 0;  // 0: the hardware concurrency
};

// What every line holds: leading cells that name the project or variant, then ok, the
// warning and the result columns in the units of `units`.
struct LineFormat {
  bool jsonl = false;
  bool propulsion = false;
  std::vector<int> cols;
  std::shared_ptr<clsVXUnits> units;  // of the output; nullptr: each project's own
};

bool ParseRunOptions(const RunOptions& o, LineFormat& f) {
  f.propulsion = EqualsNoCase(o.mode, "propulsion");
  if (!f.propulsion && !EqualsNoCase(o.mode, "resistance")) {
    Fail(kExitUsage, "unknown mode \"" + o.mode + "\"; use resistance or propulsion");
    return false;
  }
  f.jsonl = EqualsNoCase(o.format, "jsonl");
  if (!f.jsonl && !EqualsNoCase(o.format, "csv")) {
    Fail(kExitUsage, "unknown format \"" + o.format + "\"; use csv or jsonl");
    return false;
  }
  if (o.threads < 0) {
    Fail(kExitUsage, "-j takes the number of threads, 1 or more");
    return false;
  }
  if (!o.columns.empty()) return ParseColumns(o.columns, f.cols);
  f.cols = PredictionColumns(f.propulsion);
  return true;
}

// The header of a csv output: names, then units (the leading cells' units given).
std::string CsvHeader(const LineFormat& f, const std::vector<std::string>& lead,
                      const std::vector<std::string>& leadUnits) {
  std::string names, units;
  for (size_t i = 0; i < lead.size(); ++i) {
    names += CsvText(lead[i]) + ",";
    units += CsvText(leadUnits[i]) + ",";
  }
  names += "Ok,Warning";
  units += ",";
  for (int c : f.cols) {
    const FieldDesc& d = clsVXSpeedPerformance::Column(c);
    names += std::string(",") + d.name;
    units += "," + (f.units ? CsvText(UnitLabel(d, *f.units)) : "");
  }
  return names + "\n" + units + "\n";
}

// The lines of one project after its run (`sp` nullptr: it was not calculated). The leading
// cells come ready-made: "a,b," for csv, "\"A\": a, \"B\": b, " for JSON Lines.
void AppendLines(std::string& out, const LineFormat& f, std::string_view lead, bool ok,
                 const std::string& warning, clsVXSpeedPerformance* sp) {
  // Results in the output's units when the project's own differ.
  if (sp && f.units) {
    const clsVXUnits& own = *sp->Units();
    bool same = true;
    for (UnitFamily u : AllUnitFamilies()) same = same && own.Index(u) == f.units->Index(u);
    if (!same) {
      const std::shared_ptr<clsVXUnits> ownUnits = sp->Units();
      sp->SetLinkedClasses(f.units, sp->WaterProperties());
      sp->ConvertAllData(*f.units, *ownUnits);
    }
  }
  const std::string w = OneLineWarning(warning);
  const std::string okText = ok ? "true" : "false";
  const int rows = sp ? sp->count() : 0;
  for (int r = 0; r < std::max(rows, 1); ++r) {
    if (f.jsonl) {
      out += "{";
      out += lead;
      out += "\"Ok\": " + okText + ", \"Warning\": " + JsonString(w);
      if (r < rows)
        for (int c : f.cols) {
          out += ", \"";
          out += clsVXSpeedPerformance::Column(c).name;
          out += "\": ";
          AppendJsonNumber(out, sp->Raw(r, c));
        }
      out += "}\n";
    } else {
      out += lead;
      out += okText + "," + CsvText(w);
      for (int c : f.cols) {
        out += ",";
        if (r < rows) AppendFull(out, sp->Raw(r, c));
      }
      out += "\n";
    }
  }
}

// Standard output, or a temporary file beside OUT that takes its name at the end, so that
// OUT is never left half-written.
class Output {
 public:
  explicit Output(const std::string& path) : path_(path) {
    if (path_.empty()) return;
    temp_ = path_ + ".partial";
    file_.open(temp_, std::ios::binary | std::ios::trunc);
    if (!file_) Fail(kExitUsage, "cannot write \"" + temp_ + "\"");
  }
  bool ok() const { return path_.empty() || static_cast<bool>(file_); }
  void Write(std::string_view text) {
    if (path_.empty()) {
      std::fwrite(text.data(), 1, text.size(), stdout);
    } else {
      file_.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
  }
  // False (reported) when the output could not be completed.
  bool Finish() {
    if (path_.empty()) return std::fflush(stdout) == 0;
    file_.close();
    std::error_code ec;
    if (!file_ || (fs::rename(temp_, path_, ec), ec)) {
      fs::remove(temp_, ec);
      Fail(kExitUsage, "cannot write \"" + path_ + "\"");
      return false;
    }
    return true;
  }

 private:
  std::string path_, temp_;
  std::ofstream file_;
};

// Runs `count` items with the hooks of worker threads in force and writes their texts in
// order. The exit code becomes 1 when any item failed.
void RunToOutput(std::int64_t count, int threads, Output& output, const std::string& header,
                 const std::function<std::function<void(std::int64_t, std::string&)>()>& makeWorker,
                 const std::vector<char>* failed = nullptr) {
  QuietHooks hooks;
  SetHooks(&hooks);
  output.Write(header);
  try {
    RunOrdered<std::string>(count, threads > 0 ? threads : DefaultThreadCount(), makeWorker,
                            [&](std::int64_t, std::string& text) { output.Write(text); });
  } catch (const std::exception& e) {
    SetHooks(nullptr);
    return Fail(kExitFailed, std::string("the run stopped: ") + e.what());
  }
  SetHooks(nullptr);
  if (!output.Finish()) return;
  if (failed && std::find(failed->begin(), failed->end(), 1) != failed->end()) SetExitCode(kExitFailed);
}

struct BatchOptions : RunOptions {
  std::vector<std::string> files;
};

void RunBatch(const BatchOptions& o) {
  LineFormat f;
  if (!ParseRunOptions(o, f)) return;
  // The results are given in the units of the first project that opens.
  for (const std::string& path : o.files) {
    std::string why;
    if (OpenProject(path, why)) {
      f.units = App().primary.Units->CopyClass();
      break;
    }
  }
  Output output(o.out);
  if (!output.ok()) return;
  std::vector<char> failed(o.files.size(), 0);
  auto makeWorker = [&] {
    return std::function<void(std::int64_t, std::string&)>([&](std::int64_t i, std::string& text) {
      const std::string& path = o.files[static_cast<size_t>(i)];
      text.clear();
      const std::string lead = f.jsonl ? "\"File\": " + JsonString(path) + ", " : CsvText(path) + ",";
      std::string why;
      if (!OpenProject(path, why)) {
        failed[static_cast<size_t>(i)] = 1;
        return AppendLines(text, f, lead, false, why, nullptr);
      }
      const PredictionRun run = RunPrediction(f.propulsion);
      failed[static_cast<size_t>(i)] = run.ok ? 0 : 1;
      AppendLines(text, f, lead, run.ok, run.warning, App().primary.SpeedPerformance.get());
    });
  };
  const std::string header = f.jsonl ? "" : CsvHeader(f, {"File"}, {""});
  RunToOutput(static_cast<std::int64_t>(o.files.size()), o.threads, output, header, makeWorker, &failed);
}

struct SweepOptions : RunOptions {
  std::string path, shard;
  std::vector<std::string> vary;
};

void RunSweep(const SweepOptions& o) {
  LineFormat f;
  if (!ParseRunOptions(o, f)) return;
  std::string why;
  if (!OpenProject(o.path, why)) return Fail(kExitUsage, why);
  SweepGrid grid;
  if (!o.shard.empty() && !ParseShard(o.shard, grid.shard, grid.shards, why)) return Fail(kExitUsage, why);
  const ModelSet& base = App().primary;
  std::vector<std::string> names, leadUnits;
  for (const std::string& v : o.vary) {
    SweepAxis a;
    if (!ParseSweepAxis(base, v, a, why)) return Fail(kExitUsage, "--vary: " + why);
    const FieldDesc& d = a.field.IsSpeed() ? clsVXSpeedPerformance::Column(a.field.field)
                                           : ProjectClass(base, a.field.member)->Fields()[a.field.field];
    // The column is named as the user wrote the field.
    names.push_back(Trim(v.substr(0, v.find('='))));
    leadUnits.push_back(d.kind == FieldKind::Quantity ? UnitLabel(d, *base.Units) : "");
    grid.axes.push_back(a);
    // A varied speed is the first speed column already.
    if (a.field.IsSpeed()) std::erase(f.cols, a.field.field);
  }
  if (grid.Size() > (std::int64_t{1} << 40)) return Fail(kExitUsage, "the grid has too many variants");
  names.push_back("Variant");
  leadUnits.push_back("");
  f.units = base.Units->CopyClass();  // one project: its own units throughout
  Output output(o.out);
  if (!output.ok()) return;

  // Every worker starts from a copy of the opened project and calculates each variant on a
  // fresh copy of it, so nothing a run writes reaches the next variant.
  const Application& opened = App();
  std::vector<char> failed(static_cast<size_t>(grid.ShardSize()), 0);
  auto makeWorker = [&] {
    App() = CopyProjectState(opened);
    auto state = std::make_shared<Application>(CopyProjectState(opened));
    return std::function<void(std::int64_t, std::string&)>(
        [&, state, run = VariantRun()](std::int64_t j, std::string& text) mutable {
          text.clear();
          const std::int64_t variant = grid.Variant(j);
          RunVariant(grid, variant, state->primary, f.propulsion, run);
          std::string lead;
          for (size_t a = 0; a < run.values.size(); ++a) {
            if (f.jsonl) {
              lead += JsonString(names[a]) + ": ";
              AppendJsonNumber(lead, run.values[a]);
              lead += ", ";
            } else {
              AppendFull(lead, run.values[a]);
              lead += ",";
            }
          }
          lead += f.jsonl ? "\"Variant\": " + std::to_string(variant) + ", " : std::to_string(variant) + ",";
          failed[static_cast<size_t>(j)] = run.run.ok ? 0 : 1;
          AppendLines(text, f, lead, run.run.ok, run.run.warning,
                      run.calculated ? App().primary.SpeedPerformance.get() : nullptr);
        });
  };
  RunToOutput(grid.ShardSize(), o.threads, output, f.jsonl ? "" : CsvHeader(f, names, leadUnits), makeWorker,
              &failed);
}

void AddRunOptions(CLI::App* cmd, RunOptions& o) {
  cmd->add_option("-j,--jobs", o.threads, "Worker threads (default: one per processor core)");
  cmd->add_option("--mode", o.mode,
                  "resistance, or propulsion (Calculate in Resistance mode, then in Propulsion mode)")
      ->capture_default_str();
  cmd->add_option("--format", o.format, "csv or jsonl (JSON Lines: one object per line)")->required();
  cmd->add_option("--columns", o.columns, "comma-separated result columns (as in the csv header)");
  cmd->add_option("-o,--output", o.out, "Write the lines to this file instead of standard output");
}

}  // namespace

void DefineBatch(CLI::App& batch) {
  static BatchOptions b;
  batch.add_option("FILE", b.files, "Project files (*.vxvl)")->required();
  AddRunOptions(&batch, b);
  batch.callback([] { RunBatch(b); });
}

void DefineSweep(CLI::App& sweep) {
  static SweepOptions s;
  sweep.add_option("FILE", s.path, "Project file (*.vxvl)")->required();
  sweep
      .add_option(
          "--vary", s.vary,
          "FIELD=FROM:TO:N: N values of a field (LengthWL, BeamWLMax, Propeller.Diameter, Speed, ...) "
          "in the project's units; repeat for more fields")
      ->required();
  sweep.add_option("--shard", s.shard, "K/N: compute only the K-th of N interleaved shards of the grid");
  AddRunOptions(&sweep, s);
  sweep.callback([] { RunSweep(s); });
}

}  // namespace velmar::cli
