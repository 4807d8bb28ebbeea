// The waterjet data window: the maker's data of the project's waterjet, edited on a copy: the
// unit's main figures, the impellers, and the power series with their points of thrust over
// speed and cavitation zone. Sort orders the series by power and the points by speed; rows
// are removed with the class's own RemoveImpeller and RemovePowerSeries; the waterjet file
// (*.wjet) is read and written here. OK puts the copy into the project.
#pragma once

#include <QDialog>
#include <memory>

class QLineEdit;
class QPushButton;
class QTableWidget;

namespace velmar {

class clsVXWaterjet;

class WaterjetWindow : public QDialog {
  Q_OBJECT

 public:
  explicit WaterjetWindow(QWidget* parent = nullptr);
  ~WaterjetWindow() override;

  const clsVXWaterjet& Waterjet() const { return *jet_; }
  QTableWidget* SeriesTable() const { return series_; }
  QTableWidget* PointTable() const { return points_; }
  QTableWidget* ImpellerTable() const { return impellers_; }
  QPushButton* ImportButton() const { return import_; }

  void Sort();
  void Import();
  void RemoveSeries();
  void RemoveImpeller();
  void accept() override;

 private:
  void Fill();
  void FillPoints();
  void ReadScalar(int i);
  void ReadSeries(int row, int column);
  void ReadPoint(int row, int column);
  void ReadImpeller(int row, int column);
  void Changed();

  std::shared_ptr<clsVXWaterjet> jet_;
  QLineEdit* scalars_[6] = {};
  QTableWidget* series_;
  QTableWidget* points_;
  QTableWidget* impellers_;
  QPushButton* import_;
  bool filling_ = false;
  bool changed_ = false;
};

}  // namespace velmar
