// The results table of a mode window: one row a speed, the columns the mode's prediction
// writes, with their symbols and units as heads, their formats and their check marks, the
// design speed marked "+ ... +". In Edit results mode the columns whose drag or interaction
// is set to Lock or Enter take typed values, which the Defined techniques read.
#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <vector>

#include "core/model_set.h"

namespace velmar {

class clsVXSpeedPerformance;

class ResultsTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit ResultsTableModel(Mode mode, QObject* parent = nullptr);

  Mode TableMode() const { return mode_; }
  void SetEditMode(bool on);
  bool EditMode() const { return edit_; }
  // The speed table or the settings changed: rows and columns are read again.
  void Reload();
  // The speed table column shown in `column` (an index of clsVXSpeedPerformance).
  int SpeedColumnOf(int column) const { return columns_.at(static_cast<size_t>(column)); }
  int ColumnOf(std::string_view name) const;
  // Whether the column takes typed values in Edit results mode under the current settings.
  bool IsEditColumn(int column) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

 signals:
  void Edited();

 private:
  Mode mode_;
  bool edit_ = false;
  std::vector<int> columns_;
  // The table as it stood at the last reload. Views paint from this copy: a formatted read
  // runs the column's check, and a check that fails pushes its word on the table's error
  // stack, which a run in progress (the event loop breathes during a Calculate) would then
  // report as its own.
  std::shared_ptr<clsVXSpeedPerformance> shown_;
};

}  // namespace velmar
