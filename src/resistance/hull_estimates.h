// Standard estimates of hull parameters from the hull's coefficients (form factors, length of
// run, half entrance angle, correlation allowance, canoe diameter), and the lists of proposed
// values that the estimate window and `velmar-cli estimate` offer for one item at a time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/check_row.h"
#include "vessel/hull.h"
#include "vessel/hull_reads.h"

namespace velmar {

bool CalcHoltropLengthOfRun(double& lrRatio, const clsVXHull& hull);
bool CalcHoltropFormFactor(double& k1, const clsVXHull& hull);
// The same from the values a method has read already (see HullReads).
bool CalcHoltropLengthOfRun(double& lrRatio, HullReads& reads);
bool CalcHoltropFormFactor(double& k1, HullReads& reads);
bool CalcHoltropHalfEntranceAngle(double& angleDeg, const clsVXHull& hull);
bool CalcHoltropCorrelationAllowance(double& ca, const clsVXHull& hull);
bool CalcKostovFormFactor(double& k1, const clsVXHull& hull);
bool CalcBSRAFormFactor(double& k1, const clsVXHull& hull);
bool CalcHamburgEWBFormFactor(double& k1, const clsVXHull& hull);
bool CalcHullCanoeDiameter(double& diameter, const clsVXHull& hull);

// When reads of `hull` have pushed words on its error stack, hands the stack to the
// calculation error state (emptying it) and returns true. The stack is the hull's mutable
// diagnostic state, so this works on a const hull, as the reads that push on it do.
// The test is inline; the hand-over goes out of line.
void HandOverHullErrors(clsVXHull& hull);
inline bool PassHullErrors(const clsVXHull& hull) {
  auto& h = const_cast<clsVXHull&>(hull);
  if (!h.ErrorsFound()) return false;
  HandOverHullErrors(h);
  return true;
}

// One proposal of an estimate list: its source label, the value (in the item's current
// unit) and the value as text in the item's format; an empty text when inputs are missing.
// A proposal taken from a method's data set names the method's check id; the list built on
// a project carries that check's rows and note too.
struct EstimateRow {
  std::string label;
  double value = 0.0;
  std::string text;
  std::optional<int> checkId;
  std::vector<ParameterCheckRow> checkRows;
  std::string checkNote;
};

// The estimate items, by the names a user types at the command line.
enum class EstimateItem {
  HalfEntranceAngle,
  WaterplaneArea,
  LongitudinalCentre,
  CentreOfWaterplane,
  MaxSectionArea,
  WettedSurface,
  CorrelationAllowance,
  FormFactor,
};

// Item by name ("HalfEntranceAngle", "AngleHalfEntDeg", ...), case-blind; false if unknown.
bool EstimateItemFromName(const std::string& name, EstimateItem& item);
const std::vector<std::string>& EstimateItemNames();

class clsVXITTC78Expansion;
// The proposals for one item. `designFn` is the design Froude number (the Max section area
// "Design lane [FN]" proposal uses it; 0 when there is none).
std::vector<EstimateRow> EstimateList(EstimateItem item, const clsVXHull& hull,
                                      const clsVXITTC78Expansion& ittc78, double designFn);

}  // namespace velmar
