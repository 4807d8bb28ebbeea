// The rule letters of the parameter checks, one row a rule in tests/data/check_rules.txt: a
// vessel that fires the rule and one that does not, on a method that carries it, and the order
// in which rules overwrite each other (the last MethodStatus stands, D silences R, a transom
// test silences D, a chain ends at its first rule).
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "check_vessel.h"

namespace velmar::testing {
namespace {

// The check of the vessel a table cell describes ("base" or key=value words).
MethodCheck CheckOf(const std::string& cell, int checkId) {
  CheckVessel v;
  Mode mode = Mode::Resistance;
  std::istringstream words(cell == "base" ? "" : cell);
  for (std::string w; words >> w;) {
    const std::string key = w.substr(0, w.find('=')), value = w.substr(w.find('=') + 1);
    if (key == "mode")
      mode = value == "P" ? Mode::Propulsion : Mode::Resistance;
    else if (key == "id")
      checkId = std::stoi(value);
    else
      EXPECT_TRUE(v.Set(key, std::stod(value))) << "unknown item " << key;
  }
  v.Enter();
  return Check(checkId, mode);
}

// Compares the statuses a cell names ("param=UN method=OK").
void ExpectStatuses(const MethodCheck& c, const std::string& cell, const char* which) {
  std::istringstream words(cell);
  for (std::string w; words >> w;) {
    const std::string key = w.substr(0, w.find('=')), value = w.substr(w.find('=') + 1);
    const int expected = value == "OK"   ? kCheckOK
                         : value == "UN" ? kCheckUncertain
                         : value == "FA" ? kCheckFail
                         : value == "MI" ? kCheckMissing
                                         : -9;
    ASSERT_NE(expected, -9) << w;
    ASSERT_TRUE(key == "param" || key == "method") << w;
    EXPECT_EQ(key == "param" ? c.parameterStatus : c.methodStatus, expected)
        << which << " vessel, " << key << ", note \"" << c.note << "\"";
  }
}

TEST(CheckRules, EachRuleFiresOnOneVesselAndNotOnAnother) {
  for (const TableRow& r : ReadTable("check_rules.txt", 7)) {
    SCOPED_TRACE(r.where + ": " + r[0]);
    const int id = static_cast<int>(r.Num(1));
    const std::string& note = r[6];
    const MethodCheck fired = CheckOf(r[2], id);
    ExpectStatuses(fired, r[3], "fired");
    if (note != "-") {
      EXPECT_EQ(fired.note, note);
    }
    if (r[4] == "-") continue;
    const MethodCheck quiet = CheckOf(r[4], id);
    ExpectStatuses(quiet, r[5], "quiet");
    if (note != "-" && !note.empty()) {
      EXPECT_NE(quiet.note, note);
    }
  }
}

}  // namespace
}  // namespace velmar::testing
