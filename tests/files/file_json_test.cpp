#include "files/file_json.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "core/ui_hooks.h"
#include "files/text_codec.h"
#include "project_fixture.h"

namespace velmar {
namespace {

// A compact picture of a tree: 5 is a 32-bit integer, d:5 a double, "x" a text, {k=v;...} an
// object in key order, [..] a list, nothing at all for an empty slot.
std::string Describe(const JsonValue& v) {
  std::string s;
  if (const JsonList* list = v.List()) {
    for (const JsonValue& e : *list) s += "," + Describe(e);
    return "[" + s.erase(0, 1) + "]";
  }
  if (const JsonObject o = v.Object()) {
    for (const std::string& k : o->Keys()) s += ";" + k + "=" + Describe(o->item(k));
    return "{" + s.erase(0, 1) + "}";
  }
  if (v.Text()) return '"' + *v.Text() + '"';
  return (v.Kind() == JsonKind::Double ? "d:" : "") + v.ToText();
}

// Each case: the document, its tree, the error text.
void CheckParse(std::initializer_list<std::array<const char*, 3>> cases) {
  for (const auto& [input, tree, errors] : cases) {
    clsVXFileJSON f;
    f.ParseText(input);
    EXPECT_EQ(Describe(f.Parsed()), tree) << input;
    EXPECT_EQ(f.GetParserErrors(), errors) << input;
  }
}

TEST(FileJsonParseTest, DialectOfTheFiles) {
  CheckParse({
      {R"({"a" : 1, /* note */ "b": 2})", "{a=1;b=2}", ""},
      {"{\"a\": 1 // note\r\n, \"b\": 2}", "{a=1;b=2}", ""},
      {R"(({"a": (1)}))", "{a=1}", ""},
      {R"({"a": / 1, "b": * 2})", "{a=1;b=2}", ""},
      {R"({'a': 1, b : 2, "c d": 3})", "{a=1;b=2;cd=3}", ""},
      {R"({"a": abc, "b": x y, "c": 1})", R"({a="abc";b="x y";c=1})", ""},
      {R"({"a": "x,y}", "b": -.5, "c": 1})", R"({a="x,y}";b="-.5";c=1})", ""},
      {R"({"a": 1} text behind the root)", "{a=1}", ""},
      {"[1 2, 3,]", "[1,2,3]", ""},
      // Nine characters make an integer, ten a double; '.', 'e', 'E' always a double, read
      // up to the first character that doesn't fit.
      {"[123456789, 1234567890, -12345678, -123456789, 1e3, 1.5, .5, 2E-2, 1.2.3, 1e-999]",
       "[123456789,d:1234567890,-12345678,d:-123456789,d:1000,d:1.5,d:0.5,d:0.02,d:1.2,d:0]", ""},
      {R"({"a": "x\qy", "b": "\"\\\/\'", "c": "\b\f\n\r\t", "d": "\u00B0\u007b\uD83D\uDE00"})",
       "{a=\"xqy\";b=\"\"\\/'\";c=\"\b\f\n\r\t\";d=\"\u00B0{\U0001F600\"}", ""},
  });
}

TEST(FileJsonParseTest, FaultsBecomeErrorLinesAndEndOnlyTheirNode) {
  CheckParse({
      {"x", "{}", "Invalid JSON"},
      {R"({"a":1,"A":2,"b":3})", "{a=1}",
       "This key is already associated with an element of this collection: A\r\n"},
      {R"({"a" 1, "b": 2})", "{a=1;b=2}", "Invalid Key at position 6 : a\r\n"},
      {R"({"a": 1e999, "b": 2})", "{a=d:inf;b=2}", ""},  // the typed read refuses it, not the parser
      {R"({"a": 5-3, "b": 1})", "{}", "Type mismatch: a\r\n"},
      {R"({"a": "\uZZZZ"})", "{}", "Invalid escape at position 8: a\r\n"},
      // The inner object ends at its fault; its '}' then closes the outer one.
      {R"({"x": {"a": 5-3}, "y": 2})", "{x={}}", "Type mismatch: a\r\n"},
      {"[TRUE, 1]", R"([,"RUE",1])", "Invalid Boolean at position 2 : TRUE, 1]\r\n"},
      {R"({"a": 1)", "{a=}", "Unexpected end of document at position 8\r\n"},
  });
}

TEST(FileJsonParseTest, ListGapsAreFilledWithEmptyTextAfterAWarning) {
  auto& shown = DefaultHeadlessHooks().messages;
  shown.clear();
  clsVXFileJSON f;
  f.ParseText("[,1,,,2]");
  EXPECT_EQ(Describe(f.Parsed()), R"(["",1,"","",2])");
  EXPECT_FALSE(f.ErrorsFound());
  ASSERT_EQ(shown.size(), 3u);  // one per gap, the last at the character behind its comma
  EXPECT_EQ(shown[2].text, "Possible loss of data while importing file at position 7");
  shown.clear();
}

TEST(FileJsonParseTest, ParsedObjectsIgnoreCaseNewOnesDoNot) {
  clsVXFileJSON f;
  f.ParseText(R"({"Hull": {"LengthWL": 5}})");
  const JsonObject hull = f.ParsedObject()->item("HULL").Object();
  EXPECT_EQ(f.GetFloatFromBlockTag(hull, "lengthwl"), 5.0);
  f.ResetParsed();
  f.SetFloatToBlockTag(f.ParsedObject(), "LengthWL", 5.0);
  EXPECT_FALSE(f.ParsedObject()->Exists("lengthwl"));
}

// The writer's layout, byte for byte: tabs, CR LF, number lists on one line, objects inside a
// list on their own line, a list inside a list on a new line, the escapes of toUnicode.
const char* const kGolden =
    "{\r\n\t\"Hull\": {\r\n\t\t\"LengthWL\": 100,\r\n"
    "\t\t\"Name\": \"A\\u007Bb\\u007D\\'c \\\"q\\\" 25\u00B0\u00B7\\\\\",\r\n"
    "\t\t\"Made\": \"2024-03-05 14:07:09\",\r\n\t\t\"Speed\": [10,12.5,14]\r\n\t},\r\n"
    "\t\"Tasks\": [\r\n\t\t {\"A\": 1,\"B\": \"x\"},\r\n\t\t {\"A\": 2}\r\n\t],\r\n"
    "\t\"Grid\": [\r\n\t\t[1,2],\r\n\t\t[3]],\r\n\t\"Empty\": {\r\n\t}\r\n}\r\n";

std::string Written(clsVXFileJSON& f) {
  std::string out;
  EXPECT_TRUE(f.WriteToString(out));
  return out;
}

TEST(FileJsonWriteTest, ReadingAndWritingAFileGivesTheSameBytes) {
  clsVXFileJSON f;
  f.ParseText(kGolden);
  EXPECT_FALSE(f.ErrorsFound()) << f.GetParserErrors();
  const JsonObject hull = f.ParsedObject()->item("hull").Object();
  EXPECT_EQ(f.GetStringFromBlockTag(hull, "name"), "A{b}'c \"q\" 25\u00B0\u00B7\\");
  hull->item("Made", JsonValue(DateTime{2024, 3, 5, 14, 7, 9}));  // a date is written as its text
  EXPECT_EQ(Written(f), kGolden);
}

TEST(FileJsonWriteTest, CommentsStandBehindTheCommaAndTheLastOneIsDropped) {
  clsVXFileJSON f;
  f.ParsedObject()->Add("a", JsonValue(1), "first");
  f.ParsedObject()->Add("b", JsonValue(2), "last");
  EXPECT_EQ(Written(f), "{\r\n\t\"a\": 1,\t/* first*/\r\n\t\"b\": 2\r\n}\r\n");
}

TEST(FileJsonWriteTest, FiltersEscapeControlsAndWhatWindows1252Lacks) {
  EXPECT_EQ(clsVXFileJSON::toUnicode("\b\t\n\f\r\x01\x1f"), "\\b\\t\\n\\f\\r\\u0001\\u001F");
  // Kept: characters of Windows-1252; escaped: the rest, by UTF-16 unit.
  EXPECT_EQ(clsVXFileJSON::toUnicode("\u20AC \u00FF \x7f \u0080 \U0001F600"),
            "\u20AC \u00FF \x7f \\u0080 \\uD83D\\uDE00");
  // The second encoder keeps the apostrophe and Latin-1, escapes the rest by UTF-16 unit.
  EXPECT_EQ(clsVXFileJSON::EncodeText("it's {\"\u00E9\"}\\\u2192\n"),
            "it's \\u007B\\\"\u00E9\\\"\\u007D\\\\\\u2192\\n");
}

TEST(FileJsonFileTest, Windows1252OnDiskUtf8InTheProgram) {
  testing::TempDir dir;
  const std::string text = "25\u00B0 \u00B7 5 \u20AC \u2192";
  const auto path = dir / "a.vxvl";
  clsVXFileJSON f;
  f.SetStringToBlockTag(f.ParsedObject(), "Note", text);
  ASSERT_TRUE(f.WriteFile(path));
  EXPECT_EQ(testing::ReadBytes(path), "{\r\n\t\"Note\": \"25\xB0 \xB7 5 \x80 \\u2192\"\r\n}\r\n");
  EXPECT_FALSE(std::filesystem::exists(path.string() + ".vxtmp"));
  clsVXFileJSON back;
  back.ReadFile(path);
  EXPECT_EQ(back.GetStringFromBlockTag(back.ParsedObject(), "note"), text);
}

TEST(FileJsonFileTest, FailuresLeaveTheTreeAndTheOldFile) {
  testing::TempDir dir;
  const auto path = dir / "old.vxvl";
  testing::WriteBytes(path, "old");
  testing::WriteBytes(dir / "empty.vxvl", "");
  clsVXFileJSON f;
  f.ParseText(R"({"a": 1})");
  for (const auto& p : {dir / "none.vxvl", dir / "empty.vxvl", dir.path()}) f.ReadFile(p);
  EXPECT_EQ(Describe(f.Parsed()), "{a=1}");
  EXPECT_FALSE(f.ErrorsFound());

  f.ParsedObject()->Add("self", JsonValue(f.ParsedObject()));  // a tree that holds itself can't be written
  EXPECT_FALSE(f.WriteFile(path));
  f.ParsedObject()->RemoveAll();
  std::filesystem::create_directories(dir / "old.vxvl.vxtmp" / "x");  // nor can its temporary file be made
  EXPECT_FALSE(f.WriteFile(path));
  EXPECT_EQ(testing::ReadBytes(path), "old");
  EXPECT_FALSE(f.WriteFile(dir.path()));
  EXPECT_TRUE(std::filesystem::is_directory(dir.path()));
}

// Every prefix of a file that stops before its last brace must end with an error line.
TEST(FileJsonParseTest, TruncatedDocumentsEndWithAnErrorLine) {
  const std::string doc = kGolden;
  for (size_t n = 1; n < doc.rfind('}'); ++n) {
    clsVXFileJSON f;
    f.ParseText(doc.substr(0, n));
    const std::string& e = f.GetParserErrors();
    const std::string at = std::to_string(Utf8ToCodePoints(doc.substr(0, n)).size() + 1);
    EXPECT_NE(e.find("Unexpected end of document at position " + at), std::string::npos) << n << ": " << e;
  }
}

TEST(FileJsonParseTest, NestingStopsAt256LevelsWithOneLine) {
  clsVXFileJSON f;
  f.ParseText(std::string(256, '[') + std::string(256, ']'));
  EXPECT_FALSE(f.ErrorsFound());
  Written(f);
  f.ParseText(std::string(100000, '['));
  EXPECT_EQ(f.GetParserErrors(), "Nesting deeper than 256 levels at position 257\r\n");
  Written(f);  // what was read can be written
}

}  // namespace
}  // namespace velmar
