// clsVXPropeller: the geometry of one propeller (blade count, diameter, pitch, blade area,
// hub, sections, skew, material) and the KTKQ data of a user-defined propeller, whose label
// is the propeller's Description.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/data_class.h"

namespace velmar {

extern const LabelList kPropellerTypeLabels;

// Columns of the KTKQ data: one row per open-water point, all dimensionless. Every column
// has the same accessors (see below); rows are indexed from 0 to KTKQCount() - 1.
#define VX_PROPELLER_KTKQ_COLUMNS(C) \
  C(KTKQPitchRatio)                  \
  C(KTKQAdvanceCoef)                 \
  C(KTKQThrustCoef)                  \
  C(KTKQTorqueCoef)

class clsVXPropeller : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "propulsion/propeller_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "propulsion/propeller_fields.def"

#define VX_KTKQ_ENUM(N) N,
  enum class KTKQColumn { VX_PROPELLER_KTKQ_COLUMNS(VX_KTKQ_ENUM) Count };
#undef VX_KTKQ_ENUM

  explicit clsVXPropeller(std::shared_ptr<clsVXUnits> units = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units) { Units(std::move(units)); }
  std::shared_ptr<clsVXPropeller> CopyClass() const;
  // Every number to 0, every text and the KTKQ data empty.
  void ClearAllData() override;

  // Hub diameter over diameter, from the stored values (both in the propeller length unit);
  // 0 when the diameter is not positive. Reports nothing.
  double HubDiameterRatio() const;
  std::string HubDiameterRatioSymbol() const { return "DH/D"; }
  std::string HubDiameterRatioFormatted() const;

  // KTKQ data. Setting the count resizes every column, new rows 0. A row index outside the
  // table throws std::out_of_range.
  int KTKQCount() const { return static_cast<int>(ktkq_[0].size()); }
  void KTKQCount(int count);
  void ClearKTKQData() { KTKQCount(0); }
  double KTKQValue(KTKQColumn column, int row) const { return Column(column).at(static_cast<size_t>(row)); }
  void KTKQValue(KTKQColumn column, int row, double value) {
    Column(column).at(static_cast<size_t>(row)) = value;
  }
  const std::vector<double>& KTKQArray(KTKQColumn column) const { return Column(column); }
#define VX_KTKQ_ACCESSORS(N)                                              \
  double N(int row) const { return KTKQValue(KTKQColumn::N, row); }       \
  void N(int row, double value) { KTKQValue(KTKQColumn::N, row, value); } \
  const std::vector<double>& N##Array() const { return KTKQArray(KTKQColumn::N); }
  VX_PROPELLER_KTKQ_COLUMNS(VX_KTKQ_ACCESSORS)
#undef VX_KTKQ_ACCESSORS

 private:
  const std::vector<double>& Column(KTKQColumn c) const { return ktkq_.at(static_cast<size_t>(c)); }
  std::vector<double>& Column(KTKQColumn c) { return ktkq_.at(static_cast<size_t>(c)); }

  std::array<std::vector<double>, static_cast<size_t>(KTKQColumn::Count)> ktkq_;
};

}  // namespace velmar
