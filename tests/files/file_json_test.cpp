#include "files/file_json.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/ui_hooks.h"
#include "files/text_codec.h"
#include "project_fixture.h"

namespace velmar {
namespace {

// A compact picture of a tree: 5 is a 32-bit integer, d:5 a double, "x" a text, {k=v;...} an
// object in key order, [..] a list.
std::string Describe(const JsonValue& v) {
  switch (v.Kind()) {
    case JsonKind::Empty:
      return "empty";
    case JsonKind::Null:
      return "null";
    case JsonKind::Text:
      return '"' + *v.Text() + '"';
    case JsonKind::Int16:
      return "i16:" + v.ToText();
    case JsonKind::Int32:
      return v.ToText();
    case JsonKind::Double:
      return "d:" + v.ToText();
    case JsonKind::Boolean:
      return std::get<bool>(v.data) ? "true" : "false";
    case JsonKind::Date:
      return "date:" + v.ToText();
    case JsonKind::List: {
      std::string s = "[";
      for (const JsonValue& e : *v.List()) s += (s.size() > 1 ? "," : "") + Describe(e);
      return s + "]";
    }
    case JsonKind::Object: {
      std::string s = "{";
      for (const std::string& k : v.Object()->Keys())
        s += (s.size() > 1 ? ";" : "") + k + "=" + Describe(v.Object()->item(k));
      return s + "}";
    }
  }
  return "?";
}

struct ParseCase {
  const char* input;
  const char* tree;
  const char* errors;
};

void CheckParse(const std::vector<ParseCase>& cases) {
  for (const auto& c : cases) {
    clsVXFileJSON f;
    f.ParseText(c.input);
    EXPECT_EQ(Describe(f.Parsed()), c.tree) << c.input;
    EXPECT_EQ(f.GetParserErrors(), c.errors) << c.input;
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
      {R"({"a": true, "b": false, "c": null})", "{a=true;b=false;c=null}", ""},
      {R"([1, "a", [2, 3], {"k": 4}, []])", R"([1,"a",[2,3],{k=4},[]])", ""},
      {R"({"a": 1} text behind the root)", "{a=1}", ""},
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
      {R"({"a:b": 1, "c": 2})", "{c=2}", "Invalid Key at position 4 : a\r\n"},
      {R"({"a": 1e999, "b": 2})", "{}", "Overflow: a\r\n"},
      {"[1, 1e999, 2]", "[1]", "Overflow: , 2]\r\n"},
      {R"({"a": 5-3, "b": 1})", "{}", "Type mismatch: a\r\n"},
      {R"({"a": "\uZZZZ"})", "{}", "Invalid escape at position 8: a\r\n"},
      // The inner object ends at its fault; its '}' then closes the outer one.
      {R"({"x": {"a": 1e999}, "y": 2})", "{x={}}", "Overflow: a\r\n"},
      {"[TRUE, 1]", R"([empty,"RUE",1])", "Invalid Boolean at position 2 : TRUE, 1]\r\n"},
      {"[NULL]", R"([empty,""])",
       "Invalid null value at position 2 : NULL]\r\nUnexpected end of document at position 7\r\n"},
      {R"({"a": 1)", "{a=empty}", "Unexpected end of document at position 8\r\n"},
      {R"({"a": abc})", R"({a=""})", "Unexpected end of document at position 11\r\n"},
  });
}

TEST(FileJsonParseTest, ListGapsAreFilledWithEmptyTextAfterAWarning) {
  struct GapCase {
    const char* input;
    const char* tree;
    std::vector<std::string> positions;
  };
  const std::vector<GapCase> cases = {
      {"[1,,3]", R"([1,"",3])", {"5"}},
      {"[,1]", R"(["",1])", {"3"}},
      {"[1,,,2]", R"([1,"","",2])", {"5", "6"}},
      {"[1,]", "[1]", {}},
      {"[1 2]", "[1,2]", {}},
  };
  for (const auto& c : cases) {
    auto& shown = DefaultHeadlessHooks().messages;
    shown.clear();
    clsVXFileJSON f;
    f.ParseText(c.input);
    EXPECT_EQ(Describe(f.Parsed()), c.tree) << c.input;
    EXPECT_FALSE(f.ErrorsFound()) << c.input;
    ASSERT_EQ(shown.size(), c.positions.size()) << c.input;
    for (size_t i = 0; i < shown.size(); ++i)
      EXPECT_EQ(shown[i].text, "Possible loss of data while importing file at position " + c.positions[i]);
  }
  DefaultHeadlessHooks().messages.clear();
}

TEST(FileJsonParseTest, ParsedObjectsIgnoreCaseNewOnesDoNot) {
  clsVXFileJSON f;
  EXPECT_FALSE(f.ParsedObject()->IgnoreCase());
  f.ParseText(R"({"Hull": {"LengthWL": 5}})");
  const JsonObject hull = f.ParsedObject()->item("HULL").Object();
  ASSERT_TRUE(hull);
  EXPECT_TRUE(hull->IgnoreCase());
  EXPECT_EQ(f.GetFloatFromBlockTag(hull, "lengthwl"), 5.0);
  EXPECT_FALSE(f.ErrorsFound());

  f.ResetParsed();
  const JsonObject fresh = f.ParsedObject();
  f.SetFloatToBlockTag(fresh, "LengthWL", 5.0);
  EXPECT_FALSE(fresh->Exists("lengthwl"));
}

// The writer's layout, byte for byte: tabs, CR LF, number lists on one line, objects inside a
// list on their own line, a list inside a list on a new line, the escapes of toUnicode.
const char* const kGolden =
    "{\r\n"
    "\t\"Hull\": {\r\n"
    "\t\t\"LengthWL\": 100,\r\n"
    "\t\t\"Name\": \"A\\u007Bb\\u007D\\'c \\\"q\\\" 25\u00B0\u00B7\\\\\",\r\n"
    "\t\t\"Flag\": true,\r\n"
    "\t\t\"Nothing\": null,\r\n"
    "\t\t\"Ratio\": 0.1,\r\n"
    "\t\t\"Small\": 1E-05,\r\n"
    "\t\t\"Made\": \"2024-03-05 14:07:09\",\r\n"
    "\t\t\"Speed\": [10,12.5,14]\r\n"
    "\t},\r\n"
    "\t\"Tasks\": [\r\n"
    "\t\t {\"A\": 1,\"B\": \"x\"},\r\n"
    "\t\t {\"A\": 2}\r\n"
    "\t],\r\n"
    "\t\"Grid\": [\r\n"
    "\t\t[1,2],\r\n"
    "\t\t[3]],\r\n"
    "\t\"Empty\": {\r\n"
    "\t}\r\n"
    "}\r\n";

std::string Written(clsVXFileJSON& f) {
  std::string out;
  EXPECT_TRUE(f.WriteToString(out));
  return out;
}

JsonObject NewObject(std::vector<std::pair<std::string, JsonValue>> items) {
  auto o = std::make_shared<clsVXHashTable>();
  for (auto& [k, v] : items) o->Add(k, v);
  return o;
}

TEST(FileJsonWriteTest, LayoutOfTheFile) {
  clsVXFileJSON f;
  const JsonObject root = f.ParsedObject();
  JsonObject hull = std::make_shared<clsVXHashTable>();
  f.SetObjectToBlockTag(root, "Hull", hull);
  f.SetIntegerToBlockTag(hull, "LengthWL", 100);
  f.SetStringToBlockTag(hull, "Name", "A{b}'c \"q\" 25\u00B0\u00B7\\");
  hull->Add("Flag", JsonValue(true));
  hull->Add("Nothing", JsonValue(JsonNull{}));
  f.SetFloatToBlockTag(hull, "Ratio", 0.1);
  f.SetFloatToBlockTag(hull, "Small", 1e-5);
  hull->Add("Made", JsonValue(DateTime{2024, 3, 5, 14, 7, 9}));
  f.SetFloatArrayToBlockTag(hull, "Speed", std::vector<double>{10, 12.5, 14});
  root->Add("Tasks", JsonValue(JsonList{NewObject({{"A", 1}, {"B", "x"}}), NewObject({{"A", 2}})}));
  root->Add("Grid", JsonValue(JsonList{JsonList{1, 2}, JsonList{3}}));
  f.SetObjectToBlockTag(root, "Empty", std::make_shared<clsVXHashTable>());
  EXPECT_FALSE(f.ErrorsFound());
  EXPECT_EQ(Written(f), kGolden);

  // Parsing the file and writing it again gives the same bytes.
  clsVXFileJSON again;
  again.ParseText(kGolden);
  EXPECT_FALSE(again.ErrorsFound()) << again.GetParserErrors();
  EXPECT_EQ(Written(again), kGolden);
  EXPECT_EQ(again.GetStringFromBlockTag(again.ParsedObject()->item("hull").Object(), "name"),
            "A{b}'c \"q\" 25\u00B0\u00B7\\");
}

TEST(FileJsonWriteTest, CommentsStandBehindTheCommaAndTheLastOneIsDropped) {
  clsVXFileJSON f;
  const JsonObject root = f.ParsedObject();
  root->Add("a", JsonValue(1), "first");
  root->Add("b", JsonValue(2), "last");
  EXPECT_EQ(Written(f), "{\r\n\t\"a\": 1,\t/* first*/\r\n\t\"b\": 2\r\n}\r\n");
}

TEST(FileJsonWriteTest, FilterEscapesWhatTheReaderMustGetBack) {
  struct Case {
    const char* text;
    const char* filtered;
  };
  const std::vector<Case> cases = {
      {"{}", "\\u007B\\u007D"},
      {"it's \"q\" a\\b/c", "it\\'s \\\"q\\\" a\\\\b/c"},
      {"\b\t\n\f\r\x01\x1f", "\\b\\t\\n\\f\\r\\u0001\\u001F"},
      {"25\u00B0 \u00B7 \u20AC \u00FF \x7f",
       "25\u00B0 \u00B7 \u20AC \u00FF \x7f"},                          // Windows-1252 characters
      {"\u2192 \u0080 \U0001F600", "\\u2192 \\u0080 \\uD83D\\uDE00"},  // none in Windows-1252
  };
  for (const auto& c : cases) {
    EXPECT_EQ(clsVXFileJSON::toUnicode(c.text), c.filtered) << c.text;
    clsVXFileJSON f;
    f.ParseText(std::string("[\"") + clsVXFileJSON::toUnicode(c.text) + "\"]");
    EXPECT_EQ(Describe(f.Parsed()), std::string("[\"") + c.text + "\"]");
  }
  // The second encoder keeps the apostrophe and Latin-1, escapes the rest by UTF-16 unit.
  EXPECT_EQ(clsVXFileJSON::EncodeText("it's {\"\u00E9\"}\\\u2192\n"),
            "it's \\u007B\\\"\u00E9\\\"\\u007D\\\\\\u2192\\n");
}

class FileJsonFileTest : public ::testing::Test {
 protected:
  testing::TempDir dir_;
};

TEST_F(FileJsonFileTest, Windows1252OnDiskUtf8InTheProgram) {
  const std::string text = "25 \u00B0C \u00B7 5 \u20AC \u2192";
  const auto path = dir_ / "a.vxvl";
  clsVXFileJSON f;
  f.SetStringToBlockTag(f.ParsedObject(), "Note", text);
  ASSERT_TRUE(f.WriteFile(path));
  EXPECT_EQ(testing::ReadBytes(path),
            "{\r\n\t\"Note\": \"25 \xB0"
            "C \xB7 5 \x80 \\u2192\"\r\n}\r\n");
  EXPECT_FALSE(std::filesystem::exists(path.string() + ".vxtmp"));

  clsVXFileJSON back;
  back.ReadFile(path);
  EXPECT_FALSE(back.ErrorsFound());
  EXPECT_EQ(back.GetStringFromBlockTag(back.ParsedObject(), "note"), text);
}

TEST_F(FileJsonFileTest, MissingOrEmptyFileLeavesTheTree) {
  clsVXFileJSON f;
  f.ParseText(R"({"a": 1})");
  f.ReadFile(dir_ / "none.vxvl");
  testing::WriteBytes(dir_ / "empty.vxvl", "");
  f.ReadFile(dir_ / "empty.vxvl");
  f.ReadFile(dir_.path());
  EXPECT_EQ(Describe(f.Parsed()), "{a=1}");
  EXPECT_FALSE(f.ErrorsFound());
}

TEST_F(FileJsonFileTest, FailedWriteKeepsTheOldFile) {
  const auto path = dir_ / "old.vxvl";
  testing::WriteBytes(path, "old");
  clsVXFileJSON f;
  f.ParsedObject()->Add("self", JsonValue(f.ParsedObject()));  // a tree that holds itself can't be written
  EXPECT_FALSE(f.WriteFile(path));
  EXPECT_EQ(testing::ReadBytes(path), "old");
  f.ParsedObject()->RemoveAll();
  EXPECT_FALSE(f.WriteFile(dir_ / "no" / "such" / "folder.vxvl"));
  EXPECT_FALSE(f.WriteFile(dir_.path()));
  EXPECT_TRUE(std::filesystem::is_directory(dir_.path()));
  EXPECT_TRUE(f.WriteFile(path));
  EXPECT_EQ(testing::ReadBytes(path), "{\r\n}\r\n");
}

// Every prefix of a file that stops before its last brace must end with an error line.
TEST(FileJsonParseTest, TruncatedDocumentsEndWithAnErrorLine) {
  const std::string doc = kGolden;
  const size_t last = doc.rfind('}');
  for (size_t n = 0; n < last; ++n) {
    clsVXFileJSON f;
    f.ParseText(doc.substr(0, n));
    const std::string& e = f.GetParserErrors();
    if (n == 0) {
      EXPECT_EQ(e, "Invalid JSON");
    } else {
      const size_t chars = Utf8ToCodePoints(doc.substr(0, n)).size();
      EXPECT_NE(e.find("Unexpected end of document at position " + std::to_string(chars + 1)),
                std::string::npos)
          << "prefix of " << n << ": " << e;
    }
  }
}

TEST(FileJsonParseTest, DeepNestingStopsWithOneLine) {
  struct Case {
    std::string doc;
    std::string errors;
  };
  std::string objects;
  for (int i = 0; i < 100000; ++i) objects += "{\"a\":";
  const std::vector<Case> cases = {
      {std::string(100000, '['), "Nesting deeper than 256 levels at position 257\r\n"},
      {objects, "Nesting deeper than 256 levels at position 1281\r\n"},
      {std::string(256, '[') + std::string(256, ']'), ""},
  };
  for (const auto& c : cases) {
    clsVXFileJSON f;
    f.ParseText(c.doc);
    EXPECT_EQ(f.GetParserErrors(), c.errors);
    std::string out;
    EXPECT_TRUE(f.WriteToString(out));  // what was read can be written
  }
}

}  // namespace
}  // namespace velmar
