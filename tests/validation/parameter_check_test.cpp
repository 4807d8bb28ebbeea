// The parameter check frame: one row against its limits and tolerances, the rating, the
// entry (design speed, Froude numbers, ids without ranges), the rows a check shows and the
// limits computed from the vessel.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "../resistance/example_ship.h"
#include "check_vessel.h"

namespace velmar::testing {
namespace {

TEST(ParameterCheckRow, ValueAgainstLimitsTimesTolerances) {
  struct Case {
    double value, lower, upper, lowerTol, upperTol;
    bool zeroIsValue;
    int status;
  };
  const Case cases[] = {
      {0.2 * 0.95, 0.2, 1.1, 0.95, 1.1, false, kCheckOK},   // exactly at the lower limit x tolerance
      {0.189, 0.2, 1.1, 0.95, 1.1, false, kCheckFail},      // just below it
      {1.1 * 1.1, 0.2, 1.1, 0.95, 1.1, false, kCheckOK},    // the upper bound is in range too
      {0.201, 0.2, 0.2, 1.0, 1.0, false, kCheckFail},       // no tolerance, no width
      {0.0, 0.22, 0.34, 0.95, 1.05, false, kCheckMissing},  // a zero is a missing value ...
      {0.0, 0.22, 0.34, 0.95, 1.05, true, kCheckFail},      // ... unless zero is a value
      {0.0, 0.0, 0.54, 0.95, 1.05, true, kCheckOK},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.value);
    std::vector<ParameterCheckRow> rows(1);  // rows are appended
    int rowCount = 4, inRange = 2;
    EXPECT_EQ(AddParameterCheckRow("X", c.value, "0.00", c.lower, c.upper, c.lowerTol, c.upperTol, rows,
                                   rowCount, inRange, c.zeroIsValue),
              c.status);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].status, c.status);
    EXPECT_EQ(rowCount, 5);
    EXPECT_EQ(inRange, c.status == kCheckOK ? 3 : 2);
  }
  // The range shows the plain limits in the row's format, joined by two middle dots.
  std::vector<ParameterCheckRow> rows;
  int n = 0, in = 0;
  AddParameterCheckRow("XCB/LWL", 0.4567, "0.000", 0.35, 0.391, 0.95, 1.05, rows, n, in, false);
  EXPECT_EQ(rows[0].range, "0.350\u00B7\u00B70.391");
  EXPECT_EQ(rows[0].value, "0.457");
}

TEST(ParameterCheckRating, MissingCostsLessAsParameterStatus) {
  EXPECT_EQ(RateCheckStatuses(kCheckOK, kCheckOK, kCheckOK), 6);
  EXPECT_EQ(RateCheckStatuses(kCheckUncertain, kCheckUncertain, kCheckFail), 2);
  EXPECT_EQ(RateCheckStatuses(kCheckMissing, kCheckMissing, kCheckMissing), 4);
  EXPECT_EQ(ParameterCheckLabel(kCheckMissing), "Missing");
  EXPECT_EQ(ParameterCheckLabel(4), "");
}

TEST(ParameterCheckFrame, WithoutDesignSpeedNothingIsTouched) {
  CheckVessel().Enter([](ModelSet& p) { p.SpeedPerformance->DesignSpeedIndex(1); });  // one row only
  std::vector<ParameterCheckRow> rows = {{"kept", "", "", kCheckOK}};
  int s = 7, ps = 7, ms = 7;
  std::string note = "kept";
  EXPECT_EQ(CheckMethodParameters(0, rows, s, ps, ms, note, true), 0);
  EXPECT_EQ(rows.size(), 1u);
  EXPECT_EQ(s + ps + ms, 21);
  EXPECT_EQ(note, "kept");
  EXPECT_EQ(App().primary.SpeedPerformance->CoefFroudeLength(0), 0.0);
}

TEST(ParameterCheckFrame, StoresTheDesignFroudeNumbersAndAnswersIdsWithoutRanges) {
  CheckVessel().Enter();
  const MethodCheck none = Check(kCheckIdNone);
  ASSERT_EQ(none.rows.size(), 1u);
  EXPECT_EQ(none.rows[0].name, "None given");
  EXPECT_EQ(none.rating, 3);
  for (int id : {kCheckIdLast + 1, -2}) {
    const MethodCheck c = Check(id);
    ASSERT_EQ(c.rows.size(), 1u);
    EXPECT_EQ(c.rows[0].name, "Not coded");
    EXPECT_EQ(c.rating, 0);
  }
  // 16 kn on 50 m: V / sqrt(g L) with V = 8.2311 m/s.
  EXPECT_NEAR(App().primary.SpeedPerformance->CoefFroudeLength(0), 8.231111 / std::sqrt(9.80665 * 50.0),
              1e-6);
  EXPECT_GT(App().primary.SpeedPerformance->CoefFroudeChineBeam(0), 0.0);
}

std::vector<std::string> Names(const MethodCheck& c) {
  std::vector<std::string> n;
  for (const auto& r : c.rows) n.push_back(r.name);
  return n;
}

TEST(ParameterCheckFrame, HoltropRowsByModeAndOnRequest) {
  CheckVessel().Enter();
  using V = std::vector<std::string>;
  EXPECT_EQ(Names(Check(0)), (V{"FN [design]", "CP", "LWL/BWL", "BWL/T", "Lambda"}));
  const MethodCheck propulsion = Check(0, Mode::Propulsion);
  EXPECT_EQ(Names(propulsion), (V{"FN [design]", "CP", "LWL/BWL", "BWL/T"}));
  EXPECT_EQ(propulsion.rows[0].range, "0.06\u00B7\u00B70.80");  // no critical Froude number
  // A speed status of -1 on entry leaves the speed row out.
  std::vector<ParameterCheckRow> rows;
  int s = -1, ps = 0, ms = 0;
  std::string note;
  CheckMethodParameters(0, rows, s, ps, ms, note, false);
  EXPECT_EQ(rows.front().name, "CP");
}

TEST(ParameterCheckFrame, RowsKeptAsTheyHaveAlwaysStood) {
  CheckVessel().Enter();
  // UBC Series: the row named BWL/T shows LWL/BWL.
  const MethodCheck ubc = Check(32);
  ASSERT_EQ(ubc.rows[4].name, "BWL/T");
  EXPECT_EQ(ubc.rows[4].value, "5.00");
  // Delft Series (2): one parent form, equal limits; CP 0.625 lies inside 0.55 x 1.05 ...
  const MethodCheck delft = Check(11);
  ASSERT_EQ(delft.rows[2].name, "CP");
  EXPECT_EQ(delft.rows[2].range, "0.55\u00B7\u00B70.55");
  EXPECT_EQ(delft.rows[2].status, kCheckFail);
  // ... and a CP of 0.57 inside it passes.
  CheckVessel v;
  v.vol = 0.57 * 50 * 24;
  v.Enter();
  EXPECT_EQ(Check(11).rows[2].status, kCheckOK);
  // A missing CP reads "Missing", an unimmersed transom on UBC's row "Fail".
  v = CheckVessel();
  v.atr = 0, v.ax = 0;
  v.Enter();
  EXPECT_EQ(Check(1).rows[2].status, kCheckMissing);
  EXPECT_EQ(Check(32).rows[7].status, kCheckFail);
}

TEST(ParameterCheckLimits, ComputedFromTheVessel) {
  // The Holtrop & Mennen (1982) ship: CWP 0.75 clamps to 0.73 (1.2961), CP 0.5833 gives
  // 0.8464, ATR/AX 0.0510 gives 0.7442: the transom limit is the critical Froude number.
  EnterExampleShip();
  EXPECT_NEAR(CalcCriticalFroudeNumber(), 0.7442, 1e-4);

  // NPL Series for CVOL 5.50 and LWL/BWL 5.0: FVN 0.714 c - 0.103 l - 0.872 = 2.54,
  // CVL 0.7657 l + 1.4324 = 5.26, CVH (cubic in l) = 7.10.
  CheckVessel().Enter();
  const MethodCheck npl = Check(27);
  EXPECT_EQ(npl.rows[0].range, "0.80\u00B7\u00B72.54");
  EXPECT_EQ(npl.rows[1].range, "5.26\u00B7\u00B77.10");
  // Savitsky at 16 kn with 750 m3 on a chine beam of 9.5 m: load coefficient 2.41 > 0.5,
  // s = 2.19, FBL 0.6 s - 0.1 = 1.22, FBH held at 13.
  EXPECT_EQ(Check(34).rows[0].range, "1.22\u00B7\u00B713.00");
}

TEST(ParameterCheckRows, ShownWithTheirFlags) {
  std::vector<std::array<std::string, 4>> table;
  ShowCheckRows(
      {{"a", "1··2", "3", kCheckFail}, {"b", "", "0", kCheckMissing}, {"c", "", "", kCheckUncertain}}, table);
  ASSERT_EQ(table.size(), 3u);
  EXPECT_EQ(table[0][3], "Range");
  EXPECT_EQ(table[1][3], "Missing");
  EXPECT_EQ(table[2][3], "");
}

}  // namespace
}  // namespace velmar::testing
