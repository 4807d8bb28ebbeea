// The ratings of every method of every family for the bundled examples, pinned in one file
// per example (tests/data/method_ratings_<example>.txt). A change names each method whose
// line moved, old and new, with the rows that now stand behind it, so that a reviewer sees
// which parameter or rule caused it. After a deliberate change, rewrite the files with
//   VELMAR_UPDATE_GOLDEN=1 velmar-tests --gtest_filter='MethodRatingsGolden*'
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "../core/test_support.h"
#include "files/project_file.h"
#include "validation/method_expert.h"

namespace velmar::testing {
namespace {

struct Line {
  std::string key;   // family | index | label
  std::string text;  // the whole line
  std::string rows;  // the rows behind it, for the explanation
};

std::vector<Line> Ratings() {
  std::vector<Line> lines;
  for (MethodFamily f : kMethodFamilies) {
    for (const MethodEvaluation& e : EvaluateMethods(f, App().primary, MethodFamilyMode(f))) {
      const std::string key =
          std::string(MethodFamilyName(f)) + " | " + std::to_string(e.methodIndex) + " | " + e.label;
      std::ostringstream text, rows;
      text << key << " | " << e.checkId << " | " << e.rating << " | " << ParameterCheckLabel(e.speedStatus)
           << " | " << ParameterCheckLabel(e.parameterStatus) << " | " << ParameterCheckLabel(e.methodStatus)
           << " | \"" << e.note << "\"";
      for (const ParameterCheckRow& r : e.rows)
        rows << "    " << r.name << " " << r.value << " in " << r.range << ": "
             << ParameterCheckLabel(r.status) << "\n";
      lines.push_back({key, text.str(), rows.str()});
    }
  }
  return lines;
}

std::string Header(const std::string& example) {
  return "# Method ratings of examples/" + example +
         " at its design speed, one method a line:\n"
         "# family | method index | label | check id | rating | speed, parameter and method status | note.\n"
         "# Interaction methods are checked in propulsion mode, the others in resistance mode.\n";
}

class MethodRatingsGolden : public ::testing::TestWithParam<const char*> {};

TEST_P(MethodRatingsGolden, MatchesThePinnedFile) {
  const std::string example = GetParam();
  FreshApp();
  ASSERT_TRUE(OpenProjectFile(ExamplePath(example)).opened);
  const std::vector<Line> now = Ratings();
  const std::string name = "method_ratings_" + example.substr(0, example.find('.')) + ".txt";

  if (std::getenv("VELMAR_UPDATE_GOLDEN")) {
    std::string text = Header(example);
    for (const Line& l : now) text += l.text + "\n";
    WriteBytes(DataPath(name), text);
    GTEST_SKIP() << "rewrote " << name;
  }

  std::map<std::string, std::string> pinned;
  std::istringstream in(ReadBytes(DataPath(name)));
  for (std::string line; std::getline(in, line);)
    if (!line.empty() && line[0] != '#')
      pinned[line.substr(0, line.find(" | ", line.find(" | ") + 3))] = line;
  ASSERT_FALSE(pinned.empty()) << "no ratings in " << DataPath(name);

  for (const Line& l : now) {
    const std::string key = l.key.substr(0, l.key.rfind(" | "));
    const auto it = pinned.find(key);
    if (it == pinned.end()) {
      ADD_FAILURE() << "not pinned: " << l.text;
      continue;
    }
    if (l.text != it->second)
      ADD_FAILURE() << "changed:\nwas: " << it->second << "\nnow: " << l.text << "\nrows now:\n" << l.rows;
    pinned.erase(it);
  }
  for (const auto& [key, line] : pinned) ADD_FAILURE() << "pinned but no longer listed: " << line;
}

INSTANTIATE_TEST_SUITE_P(Examples, MethodRatingsGolden,
                         ::testing::Values("cargo_ship_si.vxvl", "patrol_vessel_imperial.vxvl",
                                           "catamaran_ferry.vxvl", "planing_craft_si.vxvl"),
                         [](const auto& info) {
                           const std::string n = info.param;
                           return n.substr(0, n.find('.'));
                         });

}  // namespace
}  // namespace velmar::testing
