// Typed access by block and tag: defaults and error lines of missing tags, alternative tags,
// label matching, array counts, and where a set tag lands in its block.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "core/ui_hooks.h"
#include "files/file_json.h"

namespace velmar {
namespace {

const std::vector<std::string> kLabels = {"Flap", "Wedge", "Interceptor"};
const std::vector<std::string> kOld = {"Plate", "wedge"};  // labels of an older tag

// Each call meets a block without the tag (the block holds "Old": "Wedge" only).
TEST(FileJsonAccessTest, MissingTagsGiveDefaultsAndOneLineEach) {
  using Call = std::function<void(clsVXFileJSON&, const JsonObject&)>;
  std::vector<double> floats;
  const std::vector<std::pair<Call, const char*>> cases = {
      {[](auto& f, auto& b) { EXPECT_EQ(f.GetStringFromBlockTag(b, "Name"), ""); }, "Hull \"Name\" [String]"},
      {[](auto& f, auto& b) { f.GetFloatFromBlockTag(b, "A"), f.GetFloatFromBlockTag(b, "A"); },
       "Hull \"A\" [Float]\r\nHull \"A\" [Float]"},  // lines are joined by CR LF, repeats stay
      {[](auto& f, auto& b) { EXPECT_EQ(f.GetStringFromBlockTag(b, "Name", false, "Old"), "Wedge"); },
       "Hull \"Name\" [String] (found)"},
      {[](auto& f, auto& b) { EXPECT_EQ(f.GetFloatFromBlockTag(b, "Length", false, "Name"), 0.0); },
       ""},  // not reported
      {[](auto& f, auto& b) { EXPECT_EQ(f.GetIndexFromBlockTag(b, "Type", kLabels, 2), 2); },
       "Hull \"Type\" [Index]"},
      {[](auto& f, auto& b) { EXPECT_EQ(f.GetIndexFromBlockTag(b, "T", kLabels, 2, true, "Old", kOld), 1); },
       "Hull \"T\" [Index] (found)"},
      {[&](auto& f, auto& b) { EXPECT_EQ(f.GetFloatArrayFromBlockTag(b, "Speed", floats), 0); },
       "Hull \"Speed\" [FloatArray]"},
      {[](auto& f, auto& b) { EXPECT_EQ(f.GetObjectFromBlockTag(b, "Sub"), nullptr); },
       "Object: Sub not found. Set to [Nothing]."},
      {[](auto& f, auto& b) { f.SetFloatToBlockTag(b, "X", 1.0, false); }, "Hull \"X\" [Float]"},
      {[](auto& f, auto&) { f.GetFloatFromBlockTag(nullptr, "Length"); }, "Hull \"Length\" [Float]"},
  };
  for (bool hidden : {false, true}) {
    for (const auto& [call, line] : cases) {
      clsVXFileJSON f;
      f.ParseText(R"({"Hull": {"Old": "Wedge"}})");
      const JsonObject block = f.ParsedObject()->item("Hull").Object();
      f.SetErrorMessageGroupString("Hull");
      f.HideError(hidden);
      call(f, block);
      EXPECT_EQ(f.GetParserErrors(), hidden ? "" : line);
      EXPECT_EQ(block->Keys(), std::vector<std::string>{"Old"}) << line;
    }
  }
  EXPECT_EQ(floats.size(), 1u);  // a missing list reads as one default element
}

TEST(FileJsonAccessTest, StoredValuesAreConvertedToTheKindAsked) {
  clsVXFileJSON f;
  f.ParseText(R"({"B": {"u": "none", "n": 2.5, "m": 3.5, "t": " 12.5e1 ", "list": ["flap", "WEDGE", "?"]}})");
  const JsonObject b = f.ParsedObject()->item("B").Object();
  EXPECT_EQ(f.GetIndexFromBlockTag(b, "u", kLabels, 2), 0);  // stored but unknown: 0, no line
  EXPECT_EQ(f.GetIntegerFromBlockTag(b, "n"), 2);            // half to even
  EXPECT_EQ(f.GetIntegerFromBlockTag(b, "m"), 4);
  EXPECT_EQ(f.GetFloatFromBlockTag(b, "t"), 125.0);  // a number as a text, blanks around it
  std::vector<std::int16_t> idx;
  EXPECT_EQ(f.GetIndexArrayFromBlockTag(b, "list", kLabels, idx), 3);
  EXPECT_EQ(idx, (std::vector<std::int16_t>{0, 1, 0}));
  const std::vector<std::string> twice = {"Flap", "FLAP"};  // the last matching label wins
  f.GetIndexArrayFromBlockTag(b, "list", twice, idx);
  EXPECT_EQ(idx[0], 1);
  // Read encoded, a text gets the escapes of the second encoder.
  f.SetStringToBlockTag(b, "e", "a\"{\u00E9}\u2192");
  EXPECT_EQ(f.GetStringFromBlockTag(b, "e", true), "a\\\"\\u007B\u00E9\\u007D\\u2192");
  EXPECT_FALSE(f.ErrorsFound()) << f.GetParserErrors();
}

// A value of the wrong kind is no number to guess at: the read throws with a line that names
// block, tag and what the tag held (the block's handler ends the block there). A number that
// is not finite is damage to that tag alone: 0 and a line.
TEST(FileJsonAccessTest, WrongKindsFailAndNonFiniteNumbersAreRefused) {
  clsVXFileJSON f;
  f.ParseText(R"({"B": {"abc": "abc", "half": "12abc", "list": [24.5], "yes": true, "nil": null,
                        "big": 40000, "obj": {"a": 1}, "huge": 1e999, "nan": nan, "minf": "-Infinity"}})");
  const JsonObject b = f.ParsedObject()->item("B").Object();
  f.SetErrorMessageGroupString("B");
  for (const auto& [call, what] : std::vector<std::pair<std::function<void()>, std::string>>{
           {[&] { f.GetFloatFromBlockTag(b, "abc"); }, "B \"abc\" [Float]: \"abc\" is not a number"},
           {[&] { f.GetFloatFromBlockTag(b, "half"); }, "B \"half\" [Float]: \"12abc\" is not a number"},
           {[&] { f.GetFloatFromBlockTag(b, "list"); }, "B \"list\" [Float]: a list is not a number"},
           {[&] { f.GetFloatFromBlockTag(b, "yes"); }, "B \"yes\" [Float]: true is not a number"},
           {[&] { f.GetIntegerFromBlockTag(b, "nil"); }, "B \"nil\" [Integer]: null is not a number"},
           {[&] { f.GetIntegerFromBlockTag(b, "big"); },
            "B \"big\" [Integer]: 40000 is outside -32768 to 32767"},
           {[&] { f.GetStringFromBlockTag(b, "obj"); }, "B \"obj\" [String]: an object is not a text"},
       }) {
    try {
      call();
      ADD_FAILURE() << what;
    } catch (const ConversionFailure& e) {
      EXPECT_EQ(e.what(), what);
    }
  }
  EXPECT_FALSE(f.ErrorsFound());
  for (const char* tag : {"huge", "nan", "minf"}) EXPECT_EQ(f.GetFloatFromBlockTag(b, tag), 0.0) << tag;
  EXPECT_EQ(f.GetParserErrors(),
            "B \"huge\" [Float]: infinity is not a finite number; 0 is taken\r\n"
            "B \"nan\" [Float]: \"nan\" is not a finite number; 0 is taken\r\n"
            "B \"minf\" [Float]: \"-Infinity\" is not a finite number; 0 is taken");
}

TEST(FileJsonAccessTest, ArrayCountOtherThanExpectedIsShownInADialog) {
  // A hidden error keeps the dialog of a list that is there, not that of a missing one.
  for (const auto& [tag, hidden, actual] :
       {std::tuple{"Speed", true, 2}, {"Gone", false, 1}, {"Gone", true, 0}}) {
    auto& shown = DefaultHeadlessHooks().messages;
    shown.clear();
    clsVXFileJSON f;
    f.ParseText(R"({"Speed": [10, 12]})");
    f.HideError(hidden);
    std::vector<std::string> out;
    f.GetStringArrayFromBlockTag(f.ParsedObject(), tag, out, 3);
    ASSERT_EQ(shown.size(), actual ? 1u : 0u) << tag;
    if (actual) {
      EXPECT_EQ(shown[0].text, std::string("The amount of data in the ") + tag +
                                   " float array differs from the expected value.\r\nExpected: 3 Actual: " +
                                   std::to_string(actual));
    }
  }
  DefaultHeadlessHooks().messages.clear();
}

TEST(FileJsonAccessTest, SetReplacesInPlaceAndAppendsNewTagsAtTheEnd) {
  clsVXFileJSON f;
  f.ParseText(R"({"B": {"a": 1, "b": [1, 2, 3], "c": 3}})");
  const JsonObject b = f.ParsedObject()->item("B").Object();
  f.SetFloatToBlockTag(b, "A", 5.0);  // a loaded block matches in any case
  f.SetFloatArrayToBlockTag(b, "b", std::vector<double>{7.5});
  f.SetIndexArrayToBlockTag(b, "new", std::vector<std::int16_t>{2, 0, 9}, kLabels);
  std::string out;
  ASSERT_TRUE(f.WriteToString(out));
  EXPECT_EQ(out,
            "{\r\n\t\"B\": {\r\n\t\t\"a\": 5,\r\n\t\t\"b\": [7.5],\r\n\t\t\"c\": 3,\r\n"
            "\t\t\"new\": [\"Interceptor\",\"Flap\",\"\"]\r\n\t}\r\n}\r\n");
}

}  // namespace
}  // namespace velmar
