// Parameter checks: how well a prediction method fits the vessel at hand. Each method's data
// set has limits (method_ranges.cpp); a check compares them with the hull, the propulsor and
// the design speed, and sums the three statuses it finds into a rating from 0 to 6. Purely
// advisory: no prediction consults it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/model_set.h"
#include "core/speed_performance.h"
#include "propulsion/propulsion_settings.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_settings.h"
#include "core/check_row.h"
#include "resistance/hull_estimates.h"

namespace velmar {

// The check id of "no method", and the largest id that has ranges.
inline constexpr int kCheckIdNone = -1;
inline constexpr int kCheckIdLast = 77;

// "OK", "Uncertain", "Fail", "Missing"; empty for any other code.
std::string ParameterCheckLabel(int status);

// Appends one row. The value is in range when lowerLimit x lowerTolerance <= value <=
// upperLimit x upperTolerance (status 0, inRangeCount + 1); out of range it is "Missing" (3)
// when exactly 0 and zeroIsValue is false, otherwise "Fail" (2). rowCount always grows.
// Returns the row's status.
int AddParameterCheckRow(std::string_view name, double value, std::string_view format, double lowerLimit,
                         double upperLimit, double lowerTolerance, double upperTolerance,
                         std::vector<ParameterCheckRow>& rows, int& rowCount, int& inRangeCount,
                         bool zeroIsValue);

// The rating, 0 to 6: each status gives 2 for OK, 1 for Uncertain, 0 for Fail; Missing gives
// 1 as speed or method status but 2 as parameter status.
int RateCheckStatuses(int speedStatus, int parameterStatus, int methodStatus);

// The critical Froude number: the smallest of three limits in CWP, CP and ATR/AX, each
// clamped to the data behind it.
double CalcCriticalFroudeNumber(const clsVXHull& hull);
double CalcCriticalFroudeNumber();  // of the open project's hull

// The design speed of a speed table in `unit`: false when the table has no design row or
// its speed is not positive.
bool DesignSpeed(const clsVXSpeedPerformance& sp, int unit, double& speed);

// Checks the method of `checkId` (0 to 67; -1: no method) against the vessel of `set` in
// `mode`. Without a design speed it returns 0 and touches nothing. Otherwise it stores the
// design row's Froude numbers, replaces `rows`, sets the three statuses and the note, and
// returns the rating. Ids above 67 give a single row "Not coded" and every status Fail.
// A speedStatus of -1 on entry leaves Holtrop's speed row out. fullEvaluation runs Holtrop's
// own rules (the Method Expert); without it Holtrop gives its rows only.
// Reads push words on the classes' error stacks as any read does; the caller clears them.
int CheckMethodParameters(const ModelSet& set, Mode mode, int checkId, std::vector<ParameterCheckRow>& rows,
                          int& speedStatus, int& parameterStatus, int& methodStatus, std::string& note,
                          bool fullEvaluation);
// The same on the open project in the current mode.
int CheckMethodParameters(int checkId, std::vector<ParameterCheckRow>& rows, int& speedStatus,
                          int& parameterStatus, int& methodStatus, std::string& note, bool fullEvaluation);

// The outcome of one check, for callers that want it whole.
struct MethodCheck {
  int checkId = kCheckIdNone;
  int rating = 0;
  // -1 where the check did not set them (no design speed).
  int speedStatus = -1, parameterStatus = -1, methodStatus = -1;
  std::string note;
  std::vector<ParameterCheckRow> rows;
};
// Runs CheckMethodParameters and clears the error stacks that its reads filled.
MethodCheck CheckMethod(const ModelSet& set, Mode mode, int checkId, bool fullEvaluation = true);
// Clears the error stacks of the classes a check reads.
void ClearCheckErrorStacks(const ModelSet& set);

// The cells of a table of rows: name, range, value, and "Range" for a failed row, "Missing"
// for a missing one, empty otherwise.
void ShowCheckRows(const std::vector<ParameterCheckRow>& rows,
                   std::vector<std::array<std::string, 4>>& table);

// The proposals for one item of the project `set`, at its design Froude number, each with
// the rows of its parameter check in `mode` where it has a check id.
std::vector<EstimateRow> EstimateList(EstimateItem item, const ModelSet& set, Mode mode);

}  // namespace velmar
