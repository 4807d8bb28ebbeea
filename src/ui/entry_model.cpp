// The generic entry table model.
#include "ui/entry_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QStringList>
#include <array>
#include <cmath>

#include "app/application.h"
#include "core/constants.h"
#include "core/diagnostics.h"
#include "core/format.h"
#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "ui/entry_rules.h"
#include "vessel/speed_entry.h"

namespace velmar {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

std::string* ProjectText(clsVXProject& p, std::string_view field) {
  if (field == "FileName") return &p.FileName;
  if (field == "Description") return &p.Description;
  if (field == "ProjectID") return &p.ProjectID;
  if (field == "Source") return &p.Source;
  if (field == "LastModified") return &p.LastModified;
  return nullptr;
}

std::optional<clsVXHull::Coef> CoefByName(std::string_view name) {
  struct Entry {
    const char* name;
    clsVXHull::Coef coef;
  };
#define VX_COEF_ENTRY(N, ...) {#N, clsVXHull::Coef::N},
  static const Entry kCoefs[] = {VX_HULL_COEFS(VX_COEF_ENTRY)};
#undef VX_COEF_ENTRY
  for (const Entry& e : kCoefs)
    if (name == e.name) return e.coef;
  return std::nullopt;
}

int SpeedColumn() {
  static const int column = clsVXSpeedPerformance::ColumnIndex("Speed");
  return column;
}

std::string SpeedText(const clsVXSpeedPerformance& sp, int row) {
  return FormatNumber(sp.Raw(row, SpeedColumn()), sp.Units()->Format(UnitFamily::Speed));
}

std::string NumberText(const DataClass& c, int field) {
  const FieldDesc& d = c.Fields()[static_cast<size_t>(field)];
  std::string format = d.format;
  if (format.empty() && d.family != UnitFamily::None && c.Units()) {
    const UnitFamily f = d.family == UnitFamily::Volume ? UnitFamily::Length : d.family;
    format = c.Units()->Format(f);
  }
  if (format.empty() && d.kind == FieldKind::Int) format = "0";
  return FormatNumber(c.Raw(field), format.empty() ? "0.0###" : format);
}

// The text of an enumeration: its label, else its file key (an index the entry lists do not
// offer, such as "Enter" of the hull drag), else the number.
std::string EnumText(const DataClass& c, int field) {
  const FieldDesc& d = c.Fields()[static_cast<size_t>(field)];
  const auto i = static_cast<size_t>(c.Raw(field));
  if (d.labels && i < d.labels->labels.size()) return d.labels->labels[i];
  if (d.labels && i < d.labels->keys.size()) return d.labels->keys[i];
  return FormatNumber(c.Raw(field), "0");
}

bool EndsWith(std::string_view s, std::string_view tail) {
  return s.size() >= tail.size() && s.substr(s.size() - tail.size()) == tail;
}

}  // namespace

EntryTableModel::EntryTableModel(QObject* parent) : QAbstractTableModel(parent) { SetTable(command_); }

void EntryTableModel::SetTable(EntryCommand command) {
  beginResetModel();
  command_ = command;
  lines_.clear();
  for (const EntryGroup& g : EntryTableOf(command).groups) {
    lines_.push_back({&g, nullptr});
    for (const EntryRow& r : g.rows) lines_.push_back({&g, &r});
  }
  undo_.reset();
  endResetModel();
}

QString EntryTableModel::Title() const { return EntryTableOf(command_).title; }

void EntryTableModel::Reload() {
  beginResetModel();
  undo_.reset();
  endResetModel();
}

int EntryTableModel::RowOf(EntryObject object, std::string_view field) const {
  for (size_t i = 0; i < lines_.size(); ++i)
    if (lines_[i].row && lines_[i].row->object == object && field == lines_[i].row->field) return static_cast<int>(i);
  return -1;
}

int EntryTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int EntryTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumnCount; }

QVariant EntryTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  static const char* const kHeads[] = {"Item", "Value", "Unit"};
  return section >= 0 && section < kColumnCount ? QVariant(kHeads[section]) : QVariant();
}

QString EntryTableModel::Caption(const EntryRow& row) const {
  const ModelSet& s = App().primary;
  if (*row.caption) return QString::fromUtf8(FieldIndent) + row.caption;
  if (row.object == EntryObject::HullCoefficient) {
    const auto coef = CoefByName(row.field);
    return QString::fromUtf8(FieldIndent) + (coef ? Q(s.Hull->CoefficientSymbol(*coef)) : row.field) + ":";
  }
  if (row.object == EntryObject::Speed) return QString::fromUtf8(FieldIndent) + "Speed " + row.field + ":";
  const DataClass* c = EntryClass(s, row.object);
  if (!c) return row.field;
  const int f = c->FieldIndex(row.field);
  if (f < 0) return row.field;
  const std::string caption = c->FieldNameOf(f);
  return Trim(caption).empty() ? QString::fromUtf8(FieldIndent) + row.field : Q(caption);
}

QString EntryTableModel::ValueText(const EntryRow& row) const {
  const ModelSet& s = App().primary;
  switch (row.object) {
    case EntryObject::Project: {
      const std::string* t = ProjectText(*s.Project, row.field);
      return t ? Q(*t) : QString();
    }
    case EntryObject::HullCoefficient: {
      // On a copy: a coefficient reads required hull values, and a missing one must not
      // land on the project's error stack.
      const auto coef = CoefByName(row.field);
      return coef ? Q(s.Hull->CopyClass()->CoefficientFormatted(*coef)) : QString();
    }
    case EntryObject::Speed: {
      const clsVXSpeedPerformance& sp = *s.SpeedPerformance;
      if (std::string_view(row.field) == "Design") {
        const int i = sp.DesignSpeedIndex();
        return i >= 0 && i < sp.count() ? Q(SpeedText(sp, i)) : QString();
      }
      const int i = std::atoi(row.field) - 1;
      return i < sp.count() ? Q(SpeedText(sp, i)) : QString();
    }
    default:
      break;
  }
  const DataClass* c = EntryClass(s, row.object);
  const int f = c ? c->FieldIndex(row.field) : -1;
  if (f < 0) return {};
  const FieldDesc& d = c->Fields()[static_cast<size_t>(f)];
  if (d.kind == FieldKind::Text) return Q(c->TextOf(f));
  if (d.kind == FieldKind::Enum) return Q(EnumText(*c, f));
  return Q(NumberText(*c, f));
}

QString EntryTableModel::UnitText(const EntryRow& row) const {
  const ModelSet& s = App().primary;
  if (row.object == EntryObject::Speed) return "[" + Q(s.Units->Label(UnitFamily::Speed)) + "]";
  const DataClass* c = EntryClass(s, row.object);
  const int f = c ? c->FieldIndex(row.field) : -1;
  if (f < 0) return {};
  const FieldDesc& d = c->Fields()[static_cast<size_t>(f)];
  QString unit;
  if (d.family == UnitFamily::Volume)
    unit = "[" + Q(s.Units->Label(UnitFamily::Length)) + "3]";
  else if (d.family != UnitFamily::None)
    unit = "[" + Q(s.Units->Label(d.family)) + "]";
  else if (std::string_view(d.label).find('[') != std::string_view::npos)
    ;  // the caption carries its unit ("Roughness [mm]:", "Limit [RPM/s]:")
  else if (EndsWith(d.name, "Deg"))
    unit = "[deg]";
  else if (EndsWith(d.name, "Sec"))
    unit = "[sec]";
  else if (EndsWith(d.name, "MM"))
    unit = "[mm]";
  else if (std::string_view(d.name).find("RPM") != std::string_view::npos && d.kind != FieldKind::Enum)
    unit = "[RPM]";
  else if (std::string_view(d.name).find("Percentage") != std::string_view::npos)
    unit = "[%]";
  // Hull data of a catamaran is entered per demi-hull.
  if (row.object == EntryObject::Hull && d.kind == FieldKind::Quantity && s.Hull->HullConfigType() == 1 &&
      std::string_view(d.name) != "DemihullSpacing")
    unit += unit.isEmpty() ? "(per demi-hull)" : " (per demi-hull)";
  return unit;
}

QStringList EntryTableModel::Choices(const EntryRow& row) const {
  const ModelSet& s = App().primary;
  QStringList list;
  if (row.object == EntryObject::Speed) {
    if (std::string_view(row.field) != "Design") return list;
    for (int i = 0; i < s.SpeedPerformance->count(); ++i) list << Q(SpeedText(*s.SpeedPerformance, i));
    return list;
  }
  const DataClass* c = EntryClass(s, row.object);
  const int f = c ? c->FieldIndex(row.field) : -1;
  if (f < 0) return list;
  const FieldDesc& d = c->Fields()[static_cast<size_t>(f)];
  if (d.kind != FieldKind::Enum || !d.labels) return list;
  for (const std::string& l : d.labels->labels) list << Q(l);
  return list;
}

int EntryTableModel::ChoiceIndex(const EntryRow& row) const {
  const ModelSet& s = App().primary;
  if (row.object == EntryObject::Speed) return s.SpeedPerformance->DesignSpeedIndex();
  const DataClass* c = EntryClass(s, row.object);
  const int f = c ? c->FieldIndex(row.field) : -1;
  return f < 0 ? 0 : static_cast<int>(c->Raw(f));
}

bool EntryTableModel::ReadOnly(const EntryRow& row) const {
  if (row.readOnly || row.object == EntryObject::HullCoefficient) return true;
  // Density and viscosity follow the water type, except for custom water.
  if (row.object == EntryObject::Water && (std::string_view(row.field) == "Density" ||
                                           std::string_view(row.field) == "Viscosity"))
    return App().primary.WaterProperties->WaterDefinitionIndex() != 3;
  return false;
}

QVariant EntryTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= static_cast<int>(lines_.size())) return {};
  const Line& line = lines_[static_cast<size_t>(index.row())];
  if (!line.row) {
    if (role == kHeadingRole) return true;
    if (role == Qt::DisplayRole && index.column() == kCaption) return QString(line.group->heading);
    if (role == Qt::FontRole) {
      QFont f;
      f.setBold(true);
      return f;
    }
    if (role == Qt::BackgroundRole) return QBrush(QColor(0xdd, 0xe6, 0xf0));
    return {};
  }
  const EntryRow& row = *line.row;
  switch (role) {
    case Qt::DisplayRole:
      if (index.column() == kCaption) return Caption(row);
      if (index.column() == kValue) return ValueText(row);
      return UnitText(row);
    case Qt::EditRole:
      if (index.column() != kValue) return {};
      if (!Choices(row).isEmpty()) return ChoiceIndex(row);
      return ValueText(row);
    case kChoicesRole:
      return index.column() == kValue ? QVariant(Choices(row)) : QVariant();
    case kHeadingRole:
      return false;
    case Qt::TextAlignmentRole:
      if (index.column() == kValue)
        return Choices(row).isEmpty() && row.object != EntryObject::Project
                   ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                   : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
      return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
      if (index.column() == kValue && ReadOnly(row)) return QBrush(QColor(0x60, 0x60, 0x60));
      if (index.column() == kValue) {
        // The state cells of the drags: Off greyed, Lock and Enter (results typed or
        // kept) in blue.
        const DataClass* c = EntryClass(App().primary, row.object);
        const int f = c ? c->FieldIndex(row.field) : -1;
        if (f >= 0 && c->Fields()[static_cast<size_t>(f)].labels &&
            (c->Fields()[static_cast<size_t>(f)].labels == &kOffCalcLockLabels ||
             c->Fields()[static_cast<size_t>(f)].labels->labels.size() == 4) &&
            EndsWith(row.field, "Enabled")) {
          const int v = static_cast<int>(c->Raw(f));
          if (v == 0) return QBrush(QColor(0x80, 0x80, 0x80));
          if (v >= 2) return QBrush(QColor(0x00, 0x33, 0xcc));
        }
      }
      return {};
    case Qt::BackgroundRole:
      if (index.column() == kValue && !ReadOnly(row)) return QBrush(QColor(0xff, 0xff, 0xf4));
      return {};
    case Qt::ToolTipRole: {
      // A text longer than its cell shows whole in the tip.
      if (index.column() == kValue && ValueText(row).size() > 24) return ValueText(row);
      const DataClass* c = EntryClass(App().primary, row.object);
      const int f = c ? c->FieldIndex(row.field) : -1;
      if (f < 0) return {};
      const FieldDesc& d = c->Fields()[static_cast<size_t>(f)];
      return QString(d.name) + (*d.word ? QString(" - ") + d.word : QString());
    }
    default:
      return {};
  }
}

Qt::ItemFlags EntryTableModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Line& line = lines_[static_cast<size_t>(index.row())];
  Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (line.row && index.column() == kValue && !ReadOnly(*line.row)) f |= Qt::ItemIsEditable;
  return f;
}

EntryTableModel::Snapshot EntryTableModel::Take(EntryObject object) const {
  const ModelSet& s = App().primary;
  Snapshot snap{object, {}, {}, 0};
  if (object == EntryObject::Speed) {
    for (int i = 0; i < s.SpeedPerformance->count(); ++i)
      snap.values.push_back(s.SpeedPerformance->Raw(i, SpeedColumn()));
    snap.designSpeed = s.SpeedPerformance->DesignSpeedIndex();
  } else if (object == EntryObject::Project) {
    for (const char* f : {"FileName", "Description", "ProjectID", "Source", "LastModified"})
      snap.texts.push_back(*ProjectText(*s.Project, f));
  } else if (const DataClass* c = EntryClass(s, object)) {
    for (int f = 0; f < static_cast<int>(c->Fields().size()); ++f) {
      snap.values.push_back(c->Raw(f));
      snap.texts.push_back(c->TextOf(f));
    }
  }
  return snap;
}

void EntryTableModel::Restore(const Snapshot& snap) {
  const ModelSet& s = App().primary;
  if (snap.object == EntryObject::Speed) {
    std::array<double, kSpeedCells> cells{};
    for (size_t i = 0; i < snap.values.size() && i < cells.size(); ++i) cells[i] = snap.values[i];
    SetSpeedsFromEntry(*s.SpeedPerformance, *s.Hull, cells, false);
    s.SpeedPerformance->DesignSpeedIndex(snap.designSpeed);
  } else if (snap.object == EntryObject::Project) {
    size_t i = 0;
    for (const char* f : {"FileName", "Description", "ProjectID", "Source", "LastModified"})
      *ProjectText(*s.Project, f) = snap.texts[i++];
  } else if (DataClass* c = EntryClass(s, snap.object)) {
    for (int f = 0; f < static_cast<int>(snap.values.size()); ++f) {
      c->SetRaw(f, snap.values[static_cast<size_t>(f)]);
      c->SetText(f, snap.texts[static_cast<size_t>(f)]);
    }
  }
}

bool EntryTableModel::Apply(const EntryRow& row, const QVariant& value) {
  const ModelSet& s = App().primary;
  const std::string text = value.toString().toStdString();
  if (row.object == EntryObject::Project) {
    *ProjectText(*s.Project, row.field) = text;
    return true;
  }
  if (row.object == EntryObject::Speed) {
    clsVXSpeedPerformance& sp = *s.SpeedPerformance;
    if (std::string_view(row.field) == "Design") {
      const int i = value.toInt();
      if (i < 0 || i >= sp.count()) return false;
      sp.DesignSpeedIndex(i);
      return true;
    }
    std::array<double, kSpeedCells> cells{};
    for (int i = 0; i < sp.count() && i < kSpeedCells; ++i) cells[static_cast<size_t>(i)] = sp.Raw(i, SpeedColumn());
    cells[static_cast<size_t>(std::atoi(row.field) - 1)] = TextToDouble(text);
    SetSpeedsFromEntry(sp, *s.Hull, cells, false);
    if (sp.DesignSpeedIndex() >= sp.count()) sp.DesignSpeedIndex(std::max(0, sp.count() - 1));
    return true;
  }
  DataClass* c = EntryClass(s, row.object);
  const int f = c ? c->FieldIndex(row.field) : -1;
  if (f < 0) return false;
  const FieldDesc& d = c->Fields()[static_cast<size_t>(f)];
  if (d.kind == FieldKind::Text) {
    c->SetText(f, text);
    return true;
  }
  if (d.kind == FieldKind::Enum) {
    bool isIndex = false;
    int i = value.toInt(&isIndex);
    if (!isIndex || value.typeId() == QMetaType::QString) i = Choices(row).indexOf(value.toString());
    if (i < 0 || (d.labels && i >= static_cast<int>(d.labels->keys.size()))) return false;
    c->Write(f, kCurrent, i);
    return true;
  }
  // A number: text without any digit is no entry at all.
  if (text.find_first_of("0123456789") == std::string::npos) {
    ShowWarning(1, "Data entry error", (*d.word ? std::string(d.word) : std::string(d.name)) + ": \"" + text +
                                           "\" is not a number.",
                -1.0);
    return false;
  }
  const double v = TextToDouble(text);
  const std::string refusal = RefusalText(d, v);
  if (!refusal.empty()) {
    ShowWarning(1, "Data entry error", refusal, -1.0);
    return false;
  }
  c->Write(f, kCurrent, v);
  return true;
}

void EntryTableModel::AfterEdit(const EntryRow& row) {
  const ModelSet& s = App().primary;
  if (row.object == EntryObject::Water && std::string_view(row.field) == "WaterDefinitionIndex" &&
      s.WaterProperties->WaterDefinitionIndex() != 3)
    s.WaterProperties->SetWaterPropertiesToStandardValues(-1);
  if (row.object == EntryObject::Project)
    App().ProjectDirty = true;
  else if (IsPropulsionData(row.object))
    SetNeedCalculate(false, true);
  else
    SetNeedCalculate(true, false);
  for (const EntryWarning& w : CrossChecks(command_, row)) Hooks().ShowMessage(w.title, w.text, 0);
}

bool EntryTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
  const EntryRow& row = *lines_[static_cast<size_t>(index.row())].row;
  Snapshot before = Take(row.object);
  if (!Apply(row, value)) {
    emit dataChanged(index, index);
    return false;
  }
  undo_ = std::move(before);
  AfterEdit(row);
  emit dataChanged(this->index(0, 0), this->index(rowCount() - 1, kColumnCount - 1));
  emit Edited();
  return true;
}

bool EntryTableModel::UndoLastEdit() {
  if (!undo_) return false;
  const Snapshot snap = std::move(*undo_);
  undo_.reset();
  Restore(snap);
  if (snap.object == EntryObject::Project)
    App().ProjectDirty = true;
  else if (IsPropulsionData(snap.object))
    SetNeedCalculate(false, true);
  else
    SetNeedCalculate(true, false);
  emit dataChanged(index(0, 0), index(rowCount() - 1, kColumnCount - 1));
  emit Edited();
  return true;
}

}  // namespace velmar
