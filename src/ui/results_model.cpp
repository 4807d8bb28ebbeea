// The results table model.
#include "ui/results_model.h"

#include <QBrush>
#include <QColor>
#include <algorithm>

#include "app/application.h"
#include "core/format.h"
#include "core/helpers.h"
#include "propulsion/propulsion_driver.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The setting that puts a result column under the user's hand: the column and the
// Off/Calc/Lock/Enter field of the settings that governs it.
struct EditColumn {
  const char* column;
  bool propulsion;
  const char* enabled;
  const char* technique;  // a Defined technique (3) also reads the typed column
};
constexpr EditColumn kEditColumns[] = {
    {"DragBareHull", false, "HullDragEnabled", "HullDragTechnique"},
    {"DragAppendages", false, "AppendageDragEnabled", ""},
    {"DragWind", false, "WindDragEnabled", ""},
    {"DragSeas", false, "SeasDragEnabled", ""},
    {"DragChannel", false, "ChannelDragEnabled", ""},
    {"DragMargin", false, "MarginDragEnabled", ""},
    {"WakeFraction", true, "PropulsionInteractionEnabled", "PropulsionInteractionTechnique"},
    {"ThrustDeduction", true, "PropulsionInteractionEnabled", "PropulsionInteractionTechnique"},
    {"RelRotEfficiency", true, "PropulsionInteractionEnabled", "PropulsionInteractionTechnique"},
};

}  // namespace

ResultsTableModel::ResultsTableModel(Mode mode, QObject* parent) : QAbstractTableModel(parent), mode_(mode) {
  Reload();
}

void ResultsTableModel::Reload() {
  beginResetModel();
  shown_ = App().primary.SpeedPerformance->CopyClass();
  columns_.clear();
  const std::vector<int> all =
      mode_ == Mode::Resistance ? ResistanceResultColumns() : PropulsionResultColumns();
  // Working columns of the drivers have no symbol and no place in a table.
  for (int c : all)
    if (*clsVXSpeedPerformance::Column(c).symbol) columns_.push_back(c);
  endResetModel();
}

void ResultsTableModel::SetEditMode(bool on) {
  beginResetModel();
  edit_ = on;
  endResetModel();
}

int ResultsTableModel::ColumnOf(std::string_view name) const {
  const int c = clsVXSpeedPerformance::ColumnIndex(name);
  const auto it = std::find(columns_.begin(), columns_.end(), c);
  return it == columns_.end() ? -1 : static_cast<int>(it - columns_.begin());
}

bool ResultsTableModel::IsEditColumn(int column) const {
  const FieldDesc& d = clsVXSpeedPerformance::Column(SpeedColumnOf(column));
  const ModelSet& s = App().primary;
  for (const EditColumn& e : kEditColumns) {
    if (std::string_view(d.name) != e.column) continue;
    const DataClass& settings = e.propulsion ? static_cast<const DataClass&>(*s.Propulsion)
                                             : static_cast<const DataClass&>(*s.Resistance);
    const int state = static_cast<int>(settings.Raw(settings.FieldIndex(e.enabled)));
    const bool defined = *e.technique && settings.Raw(settings.FieldIndex(e.technique)) == 3.0;
    return state >= 2 || defined;
  }
  return false;
}

int ResultsTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !shown_ ? 0 : shown_->count();
}

int ResultsTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ResultsTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
  if (section < 0 || section >= static_cast<int>(columns_.size())) return {};
  const FieldDesc& d = clsVXSpeedPerformance::Column(SpeedColumnOf(section));
  if (role == Qt::ToolTipRole) return QString(d.description);
  std::string unit;
  if (d.family != UnitFamily::None)
    unit = "[" + App().primary.Units->Label(d.family) + "]";
  else if (std::string_view(d.name).find("RPM") != std::string_view::npos)
    unit = "[RPM]";
  else if (std::string_view(d.name).rfind("Percent", 0) == 0)
    unit = "[%]";
  else if (std::string_view(d.name) == "DynamicTrimDeg")
    unit = "[deg]";
  else
    unit = "[-]";
  return Q(std::string(d.symbol) + "\n" + unit);
}

QVariant ResultsTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const clsVXSpeedPerformance& sp = *shown_;
  const int r = index.row();
  const int c = SpeedColumnOf(index.column());
  const FieldDesc& d = clsVXSpeedPerformance::Column(c);
  switch (role) {
    case Qt::DisplayRole: {
      // A coefficient without a format of its own shows like its neighbours.
      const bool plain = !*d.format && d.family == UnitFamily::None;
      std::string text = plain ? FormatNumber(sp.Raw(r, c), "0.000000") : sp.FormattedOf(r, c, true);
      if (std::string_view(d.name) == "Speed" && r == sp.DesignSpeedIndex()) text = "+ " + text + " +";
      return Q(text);
    }
    case Qt::EditRole:
      return Q(FormatNumber(sp.Raw(r, c), ""));
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::BackgroundRole:
      if (edit_ && IsEditColumn(index.column())) return QBrush(QColor(0xff, 0xf3, 0xc4));
      return {};
    default:
      return {};
  }
}

Qt::ItemFlags ResultsTableModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (edit_ && IsEditColumn(index.column())) f |= Qt::ItemIsEditable;
  return f;
}

bool ResultsTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
  const std::string text = value.toString().toStdString();
  if (text.find_first_of("0123456789") == std::string::npos) return false;
  const double v = TextToDouble(text);
  App().primary.SpeedPerformance->Write(index.row(), SpeedColumnOf(index.column()), kCurrent, v);
  shown_->Write(index.row(), SpeedColumnOf(index.column()), kCurrent, v);
  // Typed results feed the next run of their mode.
  if (mode_ == Mode::Resistance)
    SetNeedCalculate(true, false);
  else
    SetNeedCalculate(false, true);
  emit dataChanged(index, index);
  emit Edited();
  return true;
}

}  // namespace velmar
