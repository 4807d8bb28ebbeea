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

struct MissingCase {
  const char* what;
  std::function<void(clsVXFileJSON&, const JsonObject&)> call;
  const char* line;
};

// Each call meets a block without the tag (the block holds "Old": "Wedge" only).
TEST(FileJsonAccessTest, MissingTagsGiveDefaultsAndOneLineEach) {
  std::vector<std::string> texts;
  std::vector<double> floats;
  std::vector<std::int16_t> indexes;
  const std::vector<MissingCase> cases = {
      {"string", [](auto& f, auto& b) { EXPECT_EQ(f.GetStringFromBlockTag(b, "Name"), ""); },
       "Hull \"Name\" [String]"},
      {"string alt",
       [](auto& f, auto& b) { EXPECT_EQ(f.GetStringFromBlockTag(b, "Name", false, "Old"), "Wedge"); },
       "Hull \"Name\" [String] (found)"},
      {"float", [](auto& f, auto& b) { EXPECT_EQ(f.GetFloatFromBlockTag(b, "Length"), 0.0); },
       "Hull \"Length\" [Float]"},
      {"float unreported", [](auto& f, auto& b) { f.GetFloatFromBlockTag(b, "Length", false, "Old"); }, ""},
      {"integer", [](auto& f, auto& b) { EXPECT_EQ(f.GetIntegerFromBlockTag(b, "Count"), 0); },
       "Hull \"Count\" [Integer]"},
      {"index default", [](auto& f, auto& b) { EXPECT_EQ(f.GetIndexFromBlockTag(b, "Type", kLabels, 2), 2); },
       "Hull \"Type\" [Index]"},
      {"index alt",
       [](auto& f, auto& b) { EXPECT_EQ(f.GetIndexFromBlockTag(b, "Type", kLabels, 2, true, "Old"), 1); },
       "Hull \"Type\" [Index] (found)"},
      {"index alt labels",
       [](auto& f, auto& b) {
         const std::vector<std::string> old = {"Plate", "wedge"};
         EXPECT_EQ(f.GetIndexFromBlockTag(b, "Type", kLabels, 2, true, "Old", old), 1);
       },
       "Hull \"Type\" [Index] (found)"},
      {"float array",
       [&](auto& f, auto& b) {
         EXPECT_EQ(f.GetFloatArrayFromBlockTag(b, "Speed", floats), 0);
         EXPECT_EQ(floats.size(), 1u);
       },
       "Hull \"Speed\" [FloatArray]"},
      {"string array",
       [&](auto& f, auto& b) {
         EXPECT_EQ(f.GetStringArrayFromBlockTag(b, "Names", texts), 0);
         EXPECT_EQ(texts.size(), 1u);
       },
       "Hull \"Names\" [StringArray]"},
      {"index array", [&](auto& f, auto& b) { f.GetIndexArrayFromBlockTag(b, "Types", kLabels, indexes); },
       "Hull \"Types\" [IndexArray]"},
      {"object", [](auto& f, auto& b) { EXPECT_EQ(f.GetObjectFromBlockTag(b, "Sub"), nullptr); },
       "Object: Sub not found. Set to [Nothing]."},
      {"set float", [](auto& f, auto& b) { f.SetFloatToBlockTag(b, "X", 1.0, false); }, "Hull \"X\" [Float]"},
      {"set object", [](auto& f, auto& b) { f.SetObjectToBlockTag(b, "X", nullptr, false); },
       "Hull \"X\" [Object]"},
      {"no block", [](auto& f, auto&) { f.GetFloatFromBlockTag(nullptr, "Length"); },
       "Hull \"Length\" [Float]"},
  };
  for (bool hidden : {false, true}) {
    for (const auto& c : cases) {
      clsVXFileJSON f;
      f.ParseText(R"({"Hull": {"Old": "Wedge"}})");
      const JsonObject block = f.ParsedObject()->item("Hull").Object();
      f.SetErrorMessageGroupString("Hull");
      f.HideError(hidden);
      c.call(f, block);
      EXPECT_EQ(f.GetParserErrors(), hidden ? "" : c.line) << c.what;
      EXPECT_EQ(block->Keys(), std::vector<std::string>{"Old"}) << c.what;
    }
  }
}

TEST(FileJsonAccessTest, LinesAreJoinedByCrLfAndRepeatsStay) {
  clsVXFileJSON f;
  f.SetErrorMessageGroupString("Hull");
  f.GetFloatFromBlockTag(f.ParsedObject(), "A");
  f.GetFloatFromBlockTag(f.ParsedObject(), "A");
  EXPECT_EQ(f.GetParserErrors(), "Hull \"A\" [Float]\r\nHull \"A\" [Float]");
  f.ClearParserErrors();
  EXPECT_FALSE(f.ErrorsFound());
}

TEST(FileJsonAccessTest, StoredValuesAreConvertedToTheKindAsked) {
  clsVXFileJSON f;
  f.ParseText(R"({"B": {"t": "wedge", "u": "none", "n": 2.5, "m": 3.5, "big": 1e6, "yes": true,
                        "s": " 12.5 kn", "list": ["flap", "WEDGE", "?"], "o": {"k": 1}}})");
  const JsonObject b = f.ParsedObject()->item("B").Object();
  EXPECT_EQ(f.GetIndexFromBlockTag(b, "t", kLabels), 1);
  EXPECT_EQ(f.GetIndexFromBlockTag(b, "u", kLabels, 2), 0);  // stored but unknown: 0, no line
  EXPECT_EQ(f.GetIntegerFromBlockTag(b, "n"), 2);            // half to even
  EXPECT_EQ(f.GetIntegerFromBlockTag(b, "m"), 4);
  EXPECT_EQ(f.GetIntegerFromBlockTag(b, "big"), 32767);
  EXPECT_EQ(f.GetFloatFromBlockTag(b, "yes"), -1.0);
  EXPECT_EQ(f.GetFloatFromBlockTag(b, "s"), 12.5);
  EXPECT_EQ(f.GetStringFromBlockTag(b, "n"), "2.5");
  EXPECT_EQ(f.GetStringFromBlockTag(b, "yes"), "True");
  std::vector<std::int16_t> idx;
  EXPECT_EQ(f.GetIndexArrayFromBlockTag(b, "list", kLabels, idx), 3);
  EXPECT_EQ(idx, (std::vector<std::int16_t>{0, 1, 0}));
  const std::vector<std::string> twice = {"Flap", "FLAP"};  // the last matching label wins
  EXPECT_EQ(f.GetIndexArrayFromBlockTag(b, "list", twice, idx), 3);
  EXPECT_EQ(idx[0], 1);
  std::vector<std::string> texts;
  EXPECT_EQ(f.GetStringArrayFromBlockTag(b, "list", texts), 3);
  EXPECT_EQ(texts[1], "WEDGE");
  EXPECT_EQ(f.GetObjectFromBlockTag(b, "o")->item("k").ToDouble(), 1.0);
  EXPECT_FALSE(f.ErrorsFound()) << f.GetParserErrors();
}

TEST(FileJsonAccessTest, ArrayCountOtherThanExpectedIsShownInADialog) {
  // A hidden error keeps the dialog of a list that is there, not that of a missing one.
  struct Case {
    const char* tag;
    bool hidden;
    int actual;  // 0: no dialog
  };
  for (const Case& c :
       {Case{"Speed", false, 2}, Case{"Speed", true, 2}, Case{"Gone", false, 1}, Case{"Gone", true, 0}}) {
    auto& shown = DefaultHeadlessHooks().messages;
    shown.clear();
    clsVXFileJSON f;
    f.ParseText(R"({"Speed": [10, 12]})");
    f.HideError(c.hidden);
    std::vector<std::string> out;
    f.GetStringArrayFromBlockTag(f.ParsedObject(), c.tag, out, 3);
    ASSERT_EQ(shown.size(), c.actual ? 1u : 0u) << c.tag;
    if (!c.actual) continue;
    EXPECT_EQ(shown[0].title, "Unexpected number of data in array");
    EXPECT_EQ(shown[0].text, std::string("The amount of data in the ") + c.tag +
                                 " float array differs from the expected value.\r\nExpected: 3 Actual: " +
                                 std::to_string(c.actual));
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
  f.SetIndexToBlockTag(b, "idx", 1, kLabels);
  f.SetStringArrayToBlockTag(b, "s", std::vector<std::string>{"x", "y"});
  EXPECT_EQ(b->Keys(), (std::vector<std::string>{"a", "b", "c", "new", "idx", "s"}));
  std::string out;
  ASSERT_TRUE(f.WriteToString(out));
  EXPECT_EQ(out,
            "{\r\n\t\"B\": {\r\n\t\t\"a\": 5,\r\n\t\t\"b\": [7.5],\r\n\t\t\"c\": 3,\r\n"
            "\t\t\"new\": [\"Interceptor\",\"Flap\",\"\"],\r\n\t\t\"idx\": \"Wedge\",\r\n"
            "\t\t\"s\": [\"x\",\"y\"]\r\n\t}\r\n}\r\n");
}

TEST(FileJsonAccessTest, EncodedStringRead) {
  clsVXFileJSON f;
  f.SetStringToBlockTag(f.ParsedObject(), "t", "a\"{\u00E9}\u2192");
  EXPECT_EQ(f.GetStringFromBlockTag(f.ParsedObject(), "t", true), "a\\\"\\u007B\u00E9\\u007D\\u2192");
}

}  // namespace
}  // namespace velmar
