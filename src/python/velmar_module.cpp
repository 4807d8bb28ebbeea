// The Python module `velmar`: open a project, change its fields by their property names (in
// the project's units, refused values raise ValueError with the field's word), calculate,
// save, and sweep a grid of variants over threads.
//
// Each Project owns a whole project state (the open project and its reference sets). A call
// that runs the engine installs that state as the calling thread's application for the
// duration of the call, so several projects can be open in one interpreter.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/application.h"
#include "app/file_commands.h"
#include "app/variants.h"
#include "core/format.h"
#include "core/helpers.h"
#include "core/speed_performance.h"
#include "core/units.h"

namespace py = pybind11;

namespace velmar::python {
namespace {

// The calling thread's application is `state` while this lives.
class Installed {
 public:
  explicit Installed(Application& state) : state_(state) { std::swap(App(), state_); }
  ~Installed() { std::swap(App(), state_); }
  Installed(const Installed&) = delete;
  Installed& operator=(const Installed&) = delete;

 private:
  Application& state_;
};

// A table of results: numeric columns by name, one row per speed (and variant). A sweep's
// rows also carry their own Ok and Warning.
struct Results {
  std::string mode;
  bool ok = true;
  std::string warning;
  std::vector<std::string> columns;
  std::vector<double> values;  // row-major
  std::vector<std::string> units;
  bool rowStatus = false;
  std::vector<bool> rowOk;
  std::vector<std::string> rowWarning;

  size_t Rows() const { return columns.empty() ? 0 : values.size() / columns.size(); }

  py::dict Row(py::ssize_t i) const {
    const auto n = static_cast<py::ssize_t>(Rows());
    if (i < 0) i += n;
    if (i < 0 || i >= n) throw py::index_error("row out of range");
    py::dict d;
    const size_t r = static_cast<size_t>(i);
    for (size_t c = 0; c < columns.size(); ++c) d[py::str(columns[c])] = values[r * columns.size() + c];
    if (rowStatus) {
      d["Ok"] = static_cast<bool>(rowOk[r]);
      d["Warning"] = rowWarning[r];
    }
    return d;
  }

  // A column as a NumPy array when NumPy is importable, else a list.
  py::object Column(const std::string& name) const {
    if (rowStatus && name == "Ok") return py::cast(std::vector<bool>(rowOk.begin(), rowOk.end()));
    if (rowStatus && name == "Warning") return py::cast(rowWarning);
    const auto it = std::find(columns.begin(), columns.end(), name);
    if (it == columns.end()) throw py::key_error(name);
    const size_t c = static_cast<size_t>(it - columns.begin());
    std::vector<double> col(Rows());
    for (size_t r = 0; r < col.size(); ++r) col[r] = values[r * columns.size() + c];
    try {
      return py::module_::import("numpy").attr("asarray")(py::cast(col));
    } catch (const py::error_already_set&) {
      return py::cast(col);
    }
  }

  void AddRows(const clsVXSpeedPerformance& sp, const std::vector<int>& cols, const std::vector<double>& lead) {
    for (int r = 0; r < sp.count(); ++r) {
      values.insert(values.end(), lead.begin(), lead.end());
      for (int c : cols) values.push_back(sp.Raw(r, c));
    }
  }
};

std::vector<int> ColumnsOf(const std::optional<std::vector<std::string>>& names, bool propulsion) {
  if (!names) return PredictionColumns(propulsion);
  std::vector<int> cols;
  for (const std::string& n : *names) {
    const int c = clsVXSpeedPerformance::ColumnIndex(n);
    if (c < 0) throw py::key_error("no result column \"" + n + "\"");
    cols.push_back(c);
  }
  return cols;
}

bool PropulsionMode(const std::string& mode) {
  if (EqualsNoCase(mode, "propulsion")) return true;
  if (EqualsNoCase(mode, "resistance")) return false;
  throw py::value_error("unknown mode \"" + mode + "\"; use resistance or propulsion");
}

void SetColumnHeads(Results& r, const std::vector<int>& cols, const clsVXUnits& units) {
  for (int c : cols) {
    const FieldDesc& d = clsVXSpeedPerformance::Column(c);
    r.columns.emplace_back(d.name);
    r.units.push_back(d.family == UnitFamily::None ? "" : units.Label(d.family, kCurrent));
  }
}

py::object FieldValue(const ModelSet& set, const ProjectField& f) {
  if (f.IsSpeed()) return py::float_(GetProjectField(set, f));
  const DataClass& c = *ProjectClass(set, f.member);
  const FieldDesc& d = c.Fields()[f.field];
  switch (d.kind) {
    case FieldKind::Text:
      return py::str(c.TextOf(f.field));
    case FieldKind::Int:
    case FieldKind::Enum:
      return py::int_(static_cast<long>(c.Raw(f.field)));
    default:
      return py::float_(c.Raw(f.field));
  }
}

class Project;

// The fields of one data class of a project, as attributes.
class Fields {
 public:
  Fields(std::shared_ptr<Application> state, int member) : state_(std::move(state)), member_(member) {}

  ProjectField Find(const std::string& name) const {
    ProjectField f;
    f.member = member_;
    f.field = Class().FieldIndex(name);
    if (f.field < 0)
      throw py::attribute_error(std::string(ProjectClassNames()[static_cast<size_t>(member_)]) +
                                " has no field \"" + name + "\"");
    f.name = std::string(ProjectClassNames()[static_cast<size_t>(member_)]) + "." + name;
    return f;
  }
  py::object Get(const std::string& name) const { return FieldValue(state_->primary, Find(name)); }
  void Set(const std::string& name, const py::object& value) {
    const ProjectField f = Find(name);
    if (Class().Fields()[f.field].kind == FieldKind::Text) {
      Class().SetText(f.field, py::cast<std::string>(value));
      return;
    }
    const std::string word = SetProjectField(state_->primary, f, py::cast<double>(value));
    if (!word.empty())
      throw py::value_error(word + ": " + py::str(value).cast<std::string>() + " is refused for " + f.name);
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const FieldDesc& d : Class().Fields()) names.emplace_back(d.name);
    return names;
  }
  std::string Unit(const std::string& name) const {
    const FieldDesc& d = Class().Fields()[Find(name).field];
    return d.family == UnitFamily::None ? "" : state_->primary.Units->Label(d.family, kCurrent);
  }

 private:
  DataClass& Class() const {
    DataClass* c = ProjectClass(state_->primary, member_);
    if (!c) throw py::attribute_error("the project holds no such class");
    return *c;
  }
  std::shared_ptr<Application> state_;
  int member_;
};

class Project {
 public:
  explicit Project(const std::string& path) : state_(std::make_shared<Application>()) {
    Installed in(*state_);
    std::string why;
    if (!OpenProject(path, why)) throw py::value_error(why);
  }

  Fields Class(int member) const { return Fields(state_, member); }
  const std::shared_ptr<Application>& State() const { return state_; }

  ProjectField Find(const std::string& path) const {
    ProjectField f;
    std::string error;
    if (!FindProjectField(state_->primary, path, f, error)) throw py::key_error(error);
    return f;
  }
  py::object Get(const std::string& path) const { return FieldValue(state_->primary, Find(path)); }
  void Set(const std::string& path, const py::object& value) {
    const ProjectField f = Find(path);
    if (f.IsSpeed()) {
      const std::string word = SetProjectField(state_->primary, f, py::cast<double>(value));
      if (!word.empty()) throw py::value_error(word + ": " + py::str(value).cast<std::string>() + " is refused");
      return;
    }
    Class(f.member).Set(f.name.substr(f.name.find('.') + 1), value);
  }

  std::vector<double> Speeds() const {
    const clsVXSpeedPerformance& sp = *state_->primary.SpeedPerformance;
    std::vector<double> v;
    for (int r = 0; r < sp.count(); ++r) v.push_back(sp.Raw(r, 0));
    return v;
  }
  // The speed table becomes these speeds, in the project's speed unit; each is checked as a
  // speed cell is.
  void SetSpeeds(const std::vector<double>& speeds) {
    if (speeds.empty() || speeds.size() > static_cast<size_t>(kMaxSpeedCount))
      throw py::value_error("a project holds 1 to " + std::to_string(kMaxSpeedCount) + " speeds");
    const FieldDesc& d = clsVXSpeedPerformance::Column(0);
    for (double s : speeds) {
      const double knots = state_->primary.Units->Convert(UnitFamily::Speed, s, kKt, kCurrent);
      if (FailsCheck(d, s) || !std::isfinite(s) || knots > 100.0)
        throw py::value_error(std::string(d.word) + ": " + FormatNumber(s, "") + " is refused");
    }
    clsVXSpeedPerformance& sp = *state_->primary.SpeedPerformance;
    sp.count(0);
    sp.count(static_cast<int>(speeds.size()));
    sp.SpeedIndex(0);
    sp.DesignSpeedIndex(std::min(sp.DesignSpeedIndex(), sp.count() - 1));
    for (int r = 0; r < sp.count(); ++r) sp.Write(r, 0, kCurrent, speeds[static_cast<size_t>(r)]);
  }

  Results Calculate(const std::string& mode, const std::optional<std::vector<std::string>>& columns) {
    const bool propulsion = PropulsionMode(mode);
    const std::vector<int> cols = ColumnsOf(columns, propulsion);
    Installed in(*state_);
    const PredictionRun run = RunPrediction(propulsion);
    Results r;
    r.mode = propulsion ? "propulsion" : "resistance";
    r.ok = run.ok;
    r.warning = run.warning;
    SetColumnHeads(r, cols, *App().primary.Units);
    r.AddRows(*App().primary.SpeedPerformance, cols, {});
    return r;
  }

  void Save(const std::string& path) {
    Installed in(*state_);
    std::string error;
    if (SaveProjectAs(path, &error) != 1) throw py::value_error("cannot save \"" + path + "\": " + error);
  }

  std::string Units(const std::string& path) const {
    const ProjectField f = Find(path);
    const FieldDesc& d =
        f.IsSpeed() ? clsVXSpeedPerformance::Column(f.field) : ProjectClass(state_->primary, f.member)->Fields()[f.field];
    return d.family == UnitFamily::None ? "" : state_->primary.Units->Label(d.family, kCurrent);
  }

 private:
  std::shared_ptr<Application> state_;
};

// velmar.sweep(project, vary, mode, jobs, shard, columns)
Results Sweep(const py::object& source, const py::object& vary,
              const std::string& mode, std::optional<int> jobs, std::optional<std::string> shard,
              const std::optional<std::vector<std::string>>& columns) {
  const Project project = py::isinstance<Project>(source) ? source.cast<Project>()
                                                          : Project(py::str(source).cast<std::string>());
  const bool propulsion = PropulsionMode(mode);
  std::vector<int> cols = ColumnsOf(columns, propulsion);
  const Application& opened = *project.State();
  SweepGrid grid;
  std::string error;
  if (shard && !ParseShard(*shard, grid.shard, grid.shards, error)) throw py::value_error(error);
  Results r;
  r.mode = propulsion ? "propulsion" : "resistance";
  r.rowStatus = true;
  for (const auto item : py::dict(vary)) {
    const std::string name = py::str(item.first);
    const auto t = item.second.cast<std::tuple<double, double, int>>();
    SweepAxis a;
    a.from = std::get<0>(t);
    a.to = std::get<1>(t);
    a.count = std::get<2>(t);
    if (a.count < 1) throw py::value_error(name + ": the number of values is 1 or more");
    if (!FindProjectField(opened.primary, name, a.field, error)) throw py::key_error(error);
    grid.axes.push_back(a);
    r.columns.push_back(name);
    r.units.push_back(project.Units(name));
  }
  // A varied speed is the first speed column already.
  for (const SweepAxis& a : grid.axes)
    if (a.field.IsSpeed()) std::erase(cols, a.field.field);
  r.columns.emplace_back("Variant");
  r.units.emplace_back("");
  SetColumnHeads(r, cols, *opened.primary.Units);

  const std::int64_t count = grid.ShardSize();
  std::function<std::function<void(std::int64_t, Results&)>()> makeWorker = [&] {
    App() = CopyProjectState(opened);
    auto base = std::make_shared<ModelSet>(CopyModelSet(opened.primary));
    return std::function<void(std::int64_t, Results&)>(
        [&, base, run = VariantRun()](std::int64_t j, Results& out) mutable {
          out = Results{};
          const std::int64_t variant = grid.Variant(j);
          RunVariant(grid, variant, *base, propulsion, run);
          std::vector<double> lead = run.values;
          lead.push_back(static_cast<double>(variant));
          const clsVXSpeedPerformance& sp = *App().primary.SpeedPerformance;
          const size_t rows = run.calculated ? static_cast<size_t>(std::max(sp.count(), 1)) : 1;
          if (run.calculated && sp.count() > 0) {
            out.AddRows(sp, cols, lead);
          } else {
            out.values = lead;
            out.values.resize(lead.size() + cols.size(), std::numeric_limits<double>::quiet_NaN());
          }
          out.rowOk.assign(rows, run.run.ok);
          out.rowWarning.assign(rows, OneLineWarning(run.run.warning));
        });
  };
  std::function<void(std::int64_t, Results&)> sink = [&](std::int64_t, Results& part) {
    r.values.insert(r.values.end(), part.values.begin(), part.values.end());
    r.rowOk.insert(r.rowOk.end(), part.rowOk.begin(), part.rowOk.end());
    r.rowWarning.insert(r.rowWarning.end(), part.rowWarning.begin(), part.rowWarning.end());
  };
  {
    py::gil_scoped_release release;
    QuietHooks hooks;
    SetHooks(&hooks);
    try {
      RunOrdered<Results>(count, jobs.value_or(DefaultThreadCount()), makeWorker, sink);
    } catch (...) {
      SetHooks(nullptr);
      throw;
    }
    SetHooks(nullptr);
  }
  for (size_t i = 0; i < r.rowOk.size(); ++i)
    if (!r.rowOk[i]) {
      r.ok = false;
      if (r.warning.empty()) r.warning = r.rowWarning[i];
    }
  return r;
}

}  // namespace
}  // namespace velmar::python

PYBIND11_MODULE(velmar, m) {
  using namespace velmar;
  using namespace velmar::python;
  m.doc() = "Ship resistance and propulsion prediction: projects, predictions and sweeps of variants";

  py::class_<Results>(m, "Results", "Rows of a prediction: r[i] is a dict, r[\"DragTotal\"] a column")
      .def_readonly("mode", &Results::mode)
      .def_readonly("ok", &Results::ok)
      .def_readonly("warning", &Results::warning)
      .def_property_readonly("columns", [](const Results& r) {
        std::vector<std::string> c = r.columns;
        if (r.rowStatus) c.insert(c.end(), {"Ok", "Warning"});
        return c;
      })
      .def_property_readonly("units",
                             [](const Results& r) {
                               py::dict d;
                               for (size_t i = 0; i < r.columns.size(); ++i)
                                 if (!r.units[i].empty()) d[py::str(r.columns[i])] = r.units[i];
                               return d;
                             })
      .def_property_readonly("rows",
                             [](const Results& r) {
                               py::list l;
                               for (size_t i = 0; i < r.Rows(); ++i) l.append(r.Row(static_cast<py::ssize_t>(i)));
                               return l;
                             })
      .def("__len__", &Results::Rows)
      .def("__getitem__", &Results::Row)
      .def("__getitem__", &Results::Column)
      .def("__iter__",
           [](const Results& r) {
             py::list l;
             for (size_t i = 0; i < r.Rows(); ++i) l.append(r.Row(static_cast<py::ssize_t>(i)));
             return py::iter(l);
           })
      .def("__repr__", [](const Results& r) {
        return "<velmar.Results " + r.mode + ", " + std::to_string(r.Rows()) + " rows" + (r.ok ? "" : ", with warnings") +
               ">";
      });

  py::class_<Fields>(m, "Fields", "The fields of one data class, read and written as attributes")
      .def("__getattr__", &Fields::Get)
      .def("__setattr__", &Fields::Set)
      .def("__dir__", &Fields::Names)
      .def("unit", &Fields::Unit, "The unit label of a field in the project's units");

  auto project = py::class_<Project>(m, "Project", "A project opened from a file (*.vxvl)");
  const char* const attributes[] = {"hull",       "appendage", "environment",      "water",
                                    "resistance", "ittc78",    "propulsion",       "propeller",
                                    "propeller_series", "propeller_sizing", "engine", "waterjet"};
  for (size_t i = 0; i < std::size(attributes); ++i)
    project.def_property_readonly(attributes[i],
                                  [i](const Project& p) { return p.Class(static_cast<int>(i)); });
  project
      .def_property("speeds", &Project::Speeds, &Project::SetSpeeds,
                    "The speeds of the speed table, in the project's speed unit")
      .def("__getitem__", &Project::Get, "A field by its name, e.g. p[\"Propeller.Diameter\"]")
      .def("__setitem__", &Project::Set)
      .def("unit", &Project::Units, "The unit label of a field in the project's units")
      .def("calculate", &Project::Calculate, py::arg("mode") = "resistance", py::arg("columns") = py::none(),
           "Calculate: resistance, or propulsion (the resistance first)")
      .def("save", &Project::Save, py::arg("path"), "Save the project under this path");

  m.def("open", [](const std::string& path) { return Project(path); }, py::arg("path"),
        "Open a project file (*.vxvl)");
  m.def("sweep", &Sweep, py::arg("project"), py::arg("vary"), py::arg("mode") = "resistance",
        py::arg("jobs") = py::none(), py::arg("shard") = py::none(), py::arg("columns") = py::none(),
        "Calculate the full grid of variants: vary maps field names to (from, to, count)");
}
