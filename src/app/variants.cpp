// Variants of a project: copies, fields by name, one prediction, the sweep grid.
#include "app/variants.h"

#include <charconv>
#include <cmath>

#include "app/application.h"
#include "app/calculate.h"
#include "app/file_commands.h"
#include "core/format.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "propulsion/propulsion_driver.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

template <class T>
std::shared_ptr<T> Copy(const std::shared_ptr<T>& p) {
  return p ? p->CopyClass() : nullptr;
}

// The data-class members of a set in the order of ProjectClassNames().
constexpr std::string_view kClassNames[] = {
    "Hull",       "Appendage",       "Environment",     "WaterProperties", "Resistance", "ITTC78",
    "Propulsion", "Propeller",       "PropellerSeries", "PropellerSizing", "Engine",     "Waterjet",
};

DataClass* Member(const ModelSet& s, int member) {
  switch (member) {
    case 0: return s.Hull.get();
    case 1: return s.Appendage.get();
    case 2: return s.Environment.get();
    case 3: return s.WaterProperties.get();
    case 4: return s.Resistance.get();
    case 5: return s.ITTC78.get();
    case 6: return s.Propulsion.get();
    case 7: return s.Propeller.get();
    case 8: return s.PropellerSeries.get();
    case 9: return s.PropellerSizing.get();
    case 10: return s.Engine.get();
    case 11: return s.Waterjet.get();
    default: return nullptr;
  }
}

constexpr int kSpeedColumn = static_cast<int>(clsVXSpeedPerformance::Field::Speed);

bool ParseNumber(std::string_view text, double& v) {
  const std::string t = Trim(text);
  const auto r = std::from_chars(t.data(), t.data() + t.size(), v);
  return !t.empty() && r.ec == std::errc() && r.ptr == t.data() + t.size();
}

}  // namespace

ModelSet CopyModelSet(const ModelSet& s) {
  ModelSet c;
  c.Project = Copy(s.Project);
  c.Units = Copy(s.Units);
  c.WaterProperties = Copy(s.WaterProperties);
  c.Hull = Copy(s.Hull);
  c.Appendage = Copy(s.Appendage);
  c.Environment = Copy(s.Environment);
  c.ITTC78 = Copy(s.ITTC78);
  c.Resistance = Copy(s.Resistance);
  c.Propulsion = Copy(s.Propulsion);
  c.Propeller = Copy(s.Propeller);
  c.PropellerSeries = Copy(s.PropellerSeries);
  c.PropellerSizing = Copy(s.PropellerSizing);
  c.Engine = Copy(s.Engine);
  c.Waterjet = Copy(s.Waterjet);
  c.SpeedPerformance = Copy(s.SpeedPerformance);
  if (s.TaskList) c.TaskList = std::make_shared<clsVXTaskList>(*s.TaskList);
  // Wiring gives a propeller its default blade count; the copy keeps the original's.
  const int blades = c.Propeller ? c.Propeller->BladeCount() : 0;
  SetLinkedClasses(c);
  if (c.Propeller) c.Propeller->BladeCount(blades);
  return c;
}

Application CopyProjectState(const Application& a) {
  Application c;
  c.primary = CopyModelSet(a.primary);
  c.RefShipResistance = CopyModelSet(a.RefShipResistance);
  c.RefShipPropulsion = CopyModelSet(a.RefShipPropulsion);
  c.RefPropeller = CopyModelSet(a.RefPropeller);
  c.NeedCalculateResistance = a.NeedCalculateResistance;
  c.NeedCalculatePropulsion = a.NeedCalculatePropulsion;
  c.ProjectDirty = a.ProjectDirty;
  c.PropulsionSizingChanged = a.PropulsionSizingChanged;
  c.CurrentMode = a.CurrentMode;
  c.LoadTemplateFile = a.LoadTemplateFile;
  c.TemplateEnabled = a.TemplateEnabled;
  c.TemplateFile = a.TemplateFile;
  return c;
}

std::span<const std::string_view> ProjectClassNames() { return kClassNames; }
DataClass* ProjectClass(ModelSet& set, int member) { return Member(set, member); }
const DataClass* ProjectClass(const ModelSet& set, int member) {
  return Member(set, member);
}

bool FindProjectField(const ModelSet& set, std::string_view path, ProjectField& out, std::string& error) {
  const std::string p = Trim(path);
  if (p == "Speed" || p == "SpeedPerformance.Speed") {
    out = {"Speed", ProjectField::kSpeed, kSpeedColumn};
    return true;
  }
  const size_t dot = p.find('.');
  const std::string_view cls = dot == std::string::npos ? std::string_view() : std::string_view(p).substr(0, dot);
  const std::string_view name = dot == std::string::npos ? std::string_view(p) : std::string_view(p).substr(dot + 1);
  std::vector<ProjectField> found;
  bool classKnown = cls.empty();
  for (int m = 0; m < static_cast<int>(std::size(kClassNames)); ++m) {
    if (!cls.empty() && !EqualsNoCase(cls, kClassNames[m])) continue;
    classKnown = true;
    const DataClass* c = ProjectClass(set, m);
    const int f = c ? c->FieldIndex(name) : -1;
    if (f >= 0) found.push_back({std::string(kClassNames[m]) + "." + std::string(name), m, f});
  }
  if (!classKnown) {
    std::string names;
    for (std::string_view n : kClassNames) names += (names.empty() ? "" : ", ") + std::string(n);
    error = "unknown class \"" + std::string(cls) + "\"; the classes are " + names;
    return false;
  }
  if (found.empty()) {
    error = "no field \"" + p + "\" (fields are named as in the project file, e.g. LengthWL, Propeller.Diameter)";
    return false;
  }
  if (found.size() > 1) {
    error = "\"" + p + "\" is a field of several classes; write one of " + found[0].name;
    for (size_t i = 1; i < found.size(); ++i) error += ", " + found[i].name;
    return false;
  }
  if (ProjectClass(set, found[0].member)->Fields()[found[0].field].kind == FieldKind::Text) {
    error = "\"" + found[0].name + "\" is a text, not a number";
    return false;
  }
  out = found[0];
  return true;
}

std::string SetProjectField(ModelSet& set, const ProjectField& f, double value) {
  if (f.IsSpeed()) {
    clsVXSpeedPerformance& sp = *set.SpeedPerformance;
    const FieldDesc& d = clsVXSpeedPerformance::Column(kSpeedColumn);
    // A speed cell takes no more than 100 kt, as the design condition table does.
    const double knots = set.Units->Convert(UnitFamily::Speed, value, kKt, kCurrent);
    if (FailsCheck(d, value) || !std::isfinite(value) || knots > 100.0) return d.word;
    sp.count(1);
    sp.SpeedIndex(0);
    sp.DesignSpeedIndex(0);
    sp.Write(0, kSpeedColumn, kCurrent, value);
    return {};
  }
  DataClass& c = *ProjectClass(set, f.member);
  const FieldDesc& d = c.Fields()[f.field];
  if (FailsCheck(d, value) || !std::isfinite(value)) return *d.word ? d.word : d.name;
  if (d.kind == FieldKind::Enum && d.labels &&
      (value < 0 || value >= static_cast<double>(d.labels->labels.size())))
    return *d.word ? d.word : d.name;
  c.Write(f.field, kCurrent, value);
  return {};
}

double GetProjectField(const ModelSet& set, const ProjectField& f) {
  if (f.IsSpeed()) return set.SpeedPerformance->count() > 0 ? set.SpeedPerformance->Raw(0, kSpeedColumn) : 0.0;
  return ProjectClass(set, f.member)->Raw(f.field);
}

bool OpenProject(const std::filesystem::path& path, std::string& why) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    why = "\"" + path.string() + "\" " + (std::filesystem::exists(path, ec) ? "is not a file" : "does not exist");
    return false;
  }
  NewProject();
  const OpenResult r = OpenProjectFile(path);
  if (!r.opened) {
    why = OneLineWarning(r.message);
    if (why.empty()) why = "\"" + path.string() + "\" is not a Velmar project";
    return false;
  }
  SetProjectNamesFromPath(path);
  return true;
}

PredictionRun RunPrediction(bool propulsion) {
  PredictionRun run;
  run.ok = true;
  auto calculate = [&](Mode mode) {
    App().CurrentMode = mode;
    const CalculateResult r = RunCalculate();
    if (r.warningShown) run.warning += (run.warning.empty() ? "" : "\r\n\r\n") + r.warning;
    run.ok = run.ok && r.ok;
  };
  calculate(Mode::Resistance);
  if (propulsion && run.ok) calculate(Mode::Propulsion);
  return run;
}

std::vector<int> PredictionColumns(bool propulsion) {
  std::vector<int> cols = ResistanceResultColumns();
  if (propulsion)
    for (int c : PropulsionResultColumns())
      if (std::find(cols.begin(), cols.end(), c) == cols.end()) cols.push_back(c);
  return cols;
}

std::string OneLineWarning(std::string_view warning) {
  std::string out, line;
  auto flush = [&] {
    const std::string t = Trim(line);
    if (!t.empty()) out += (out.empty() ? "" : " ") + t;
    line.clear();
  };
  for (char c : warning) {
    if (c == '\r' || c == '\n') {
      flush();
    } else {
      line += c == '\t' ? ' ' : c;
    }
  }
  flush();
  return out;
}

bool ParseSweepAxis(const ModelSet& set, std::string_view text, SweepAxis& out, std::string& error) {
  const size_t eq = text.find('=');
  const std::vector<std::string> parts =
      eq == std::string_view::npos ? std::vector<std::string>{} : SplitDelimited(text.substr(eq + 1), ":");
  double n = 0;
  if (parts.size() != 3 || !ParseNumber(parts[0], out.from) || !ParseNumber(parts[1], out.to) ||
      !ParseNumber(parts[2], n) || n < 1 || n != std::floor(n) || n > 1e9) {
    error = "\"" + std::string(text) + "\" is not FIELD=FROM:TO:N (N a whole number of values, 1 or more)";
    return false;
  }
  out.count = static_cast<int>(n);
  return FindProjectField(set, text.substr(0, eq), out.field, error);
}

std::int64_t SweepGrid::Size() const {
  std::int64_t n = 1;
  for (const SweepAxis& a : axes) n *= a.count;
  return n;
}

std::int64_t SweepGrid::ShardSize() const {
  const std::int64_t n = Size();
  return n < shard ? 0 : (n - shard) / shards + 1;
}

void SweepGrid::Values(std::int64_t index, std::vector<double>& out) const {
  out.resize(axes.size());
  for (size_t i = axes.size(); i-- > 0;) {
    out[i] = axes[i].Value(static_cast<int>(index % axes[i].count));
    index /= axes[i].count;
  }
}

void RunVariant(const SweepGrid& grid, std::int64_t index, const ModelSet& base, bool propulsion,
                VariantRun& out) {
  grid.Values(index, out.values);
  App().primary = CopyModelSet(base);
  out.calculated = false;
  out.run = {};
  for (size_t a = 0; a < out.values.size(); ++a) {
    const std::string word = SetProjectField(App().primary, grid.axes[a].field, out.values[a]);
    if (!word.empty()) {
      out.run.warning = "DATA ERROR: " + word + " (" + grid.axes[a].field.name + " = " +
                        FormatNumber(out.values[a], "") + ")";
      return;
    }
  }
  out.calculated = true;
  out.run = RunPrediction(propulsion);
}

bool ParseShard(std::string_view text, int& shard, int& shards, std::string& error) {
  const size_t slash = text.find('/');
  double k = 0, n = 0;
  if (slash == std::string_view::npos || !ParseNumber(text.substr(0, slash), k) ||
      !ParseNumber(text.substr(slash + 1), n) || k != std::floor(k) || n != std::floor(n) || k < 1 || k > n ||
      n > 1e9) {
    error = "\"" + std::string(text) + "\" is not K/N with 1 <= K <= N";
    return false;
  }
  shard = static_cast<int>(k);
  shards = static_cast<int>(n);
  return true;
}

int DefaultThreadCount() { return std::max(1u, std::thread::hardware_concurrency()); }

}  // namespace velmar
