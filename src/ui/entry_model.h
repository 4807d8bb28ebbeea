// One table model for every entry table: the rows of an EntryTable (entry_groups.h), each
// shown with the caption, value and unit its field row gives, and every edit sent through
// the class's own write with the rules of entry_rules.h. Enumerations are edited as lists of
// their labels; the last edit can be undone.
#pragma once

#include <QAbstractTableModel>
#include <optional>
#include <string>
#include <vector>

#include "ui/entry_groups.h"

namespace velmar {

class EntryTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kCaption, kValue, kUnit, kColumnCount };
  static constexpr int kChoicesRole = Qt::UserRole + 1;  // QStringList: the labels of an enumeration
  static constexpr int kHeadingRole = Qt::UserRole + 2;  // bool: a group heading line

  explicit EntryTableModel(QObject* parent = nullptr);

  void SetTable(EntryCommand command);
  EntryCommand Table() const { return command_; }
  QString Title() const;
  // The project was replaced or converted: every line is read again, the undo is dropped.
  void Reload();
  // The model row of a field (-1 when the table does not show it).
  int RowOf(EntryObject object, std::string_view field) const;

  bool CanUndo() const { return undo_.has_value(); }
  bool UndoLastEdit();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

 signals:
  // A value reached the project (the window refreshes the Calculate button and the title).
  void Edited();

 private:
  struct Line {
    const EntryGroup* group;
    const EntryRow* row;  // nullptr: the group's heading
  };
  // What an edit replaced: every value of the row's object, so that a rule that changed
  // other fields of it (the water type) is undone as well.
  struct Snapshot {
    EntryObject object;
    std::vector<double> values;
    std::vector<std::string> texts;
    int designSpeed = 0;
  };

  QString Caption(const EntryRow& row) const;
  QString ValueText(const EntryRow& row) const;
  QString UnitText(const EntryRow& row) const;
  QStringList Choices(const EntryRow& row) const;
  int ChoiceIndex(const EntryRow& row) const;
  bool ReadOnly(const EntryRow& row) const;
  bool Apply(const EntryRow& row, const QVariant& value);
  Snapshot Take(EntryObject object) const;
  void Restore(const Snapshot& s);
  void AfterEdit(const EntryRow& row);

  EntryCommand command_ = EntryCommand::Condition;
  std::vector<Line> lines_;
  std::optional<Snapshot> undo_;
};

}  // namespace velmar
