// The tagged block file under the project file: a document tree in memory (objects are
// clsVXHashTable blocks, keys are tags), read from and written to text in a relaxed JSON
// dialect, with typed access by block and tag for the model classes.
//
// The reader is forgiving. Nothing here throws at its caller: faults of the document end up
// as lines in the parser error text (ErrorsFound / GetParserErrors), a missing tag yields a
// default and a line naming group, tag and kind, and the caller decides what to make of it.
// Files are Windows-1252; all text in the program, and the parse/write string entry points,
// are UTF-8.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "files/hash_table.h"

namespace velmar {

// Thrown by a typed read when a tag holds a value of a kind the tag cannot take (a text that
// is no number in a float tag, a list in a text tag, a number too large for an integer tag).
// The reading of the block ends at its handler, which adds the message as an error line.
struct ConversionFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The text a number is written with: the general form of up to 15 significant digits when it
// reads back to the same double, else the shortest form that does. Infinity and NaN, which
// the writer refuses, give "0".
std::string FileNumberText(double value);

class clsVXFileJSON {
 public:
  // Nesting of objects and lists the reader accepts; deeper documents stop with an error line.
  static constexpr int kMaxNesting = 256;

  clsVXFileJSON();

  // The document tree: an object or a list.
  const JsonValue& Parsed() const { return parsed_; }
  void Parsed(JsonValue root) { parsed_ = std::move(root); }
  // The root as an object (nullptr when the root is a list).
  JsonObject ParsedObject() const { return parsed_.Object(); }

  void SetErrorMessageGroupString(std::string_view group) { group_ = group; }
  bool ErrorsFound() const { return !errors_.empty(); }
  const std::string& GetParserErrors() const { return errors_; }
  void ClearParserErrors() { errors_.clear(); }
  // Appends a line to the error text (a CR LF goes before it if the text isn't empty).
  void AddError(std::string_view message);
  // Choices whose stored label this version doesn't know (a method added by a newer version,
  // a mistyped label): one line `group "tag": "label"` each. They read as the first choice of
  // their list and add no parser error line; the open command warns with these lines.
  const std::vector<std::string>& UnknownLabels() const { return unknownLabels_; }
  // While set, missing tags add no error lines (nor count dialogs).
  void HideError(bool hide) { hideErrors_ = hide; }
  bool HideError() const { return hideErrors_; }
  // Parsed becomes a new empty object whose tags compare exactly.
  void ResetParsed();

  // Loads and parses a file; parse faults go to the error text. A path that names no regular
  // file, or one that can't be opened, gives false; it and an empty file leave the tree as it is.
  bool ReadFile(const std::filesystem::path& path);
  // Writes the tree safely (see files/safe_write.h): a temporary file beside the target and a
  // rename, through symbolic links, keeping the target's permissions; a read-only target is
  // refused. False on any failure, and the old file stays.
  bool WriteFile(const std::filesystem::path& path);
  // Why the last WriteFile failed, in the product's words (empty after a success).
  const std::string& WriteError() const { return writeError_; }
  // The same from and to program text (UTF-8): the parse replaces Parsed and the error text;
  // the text written is that of the file, with its final CR LF. False when the tree can't be
  // written (nested deeper than kMaxNesting, as a tree holding itself is).
  void ParseText(std::string_view utf8);
  bool WriteToString(std::string& out);

  // The writer's filter for text values: escapes quote, apostrophe, backslash, the control
  // characters and the braces, and every character without a Windows-1252 byte as \uXXXX.
  static std::string toUnicode(std::string_view text);
  // The filter of GetStringFromBlockTag with `encode` set: works on UTF-16 code units, keeps
  // the apostrophe and everything from U+0020 to U+00FF but the braces.
  static std::string EncodeText(std::string_view text);

  // Typed access. `block` is the object node acted on; nullptr counts as a block without tags.
  // A missing tag gives the default and, unless hidden, the line `group "tag" [Kind]`, with
  // " (found)" when the alternative tag was read instead.
  std::string GetStringFromBlockTag(const JsonObject& block, std::string_view tag, bool encode = false,
                                    std::string_view altTag = {});
  void SetStringToBlockTag(const JsonObject& block, std::string_view tag, std::string_view value,
                           bool addIfMissing = true);
  // Array reads return the count of the stored list; the out array has that many elements, or
  // one default element when the tag is missing (or holds no list). With `expected` other than
  // -1 a differing count is shown in a dialog.
  std::int16_t GetStringArrayFromBlockTag(const JsonObject& block, std::string_view tag,
                                          std::vector<std::string>& out, std::int16_t expected = -1);
  void SetStringArrayToBlockTag(const JsonObject& block, std::string_view tag,
                                std::span<const std::string> values, bool addIfMissing = true);
  double GetFloatFromBlockTag(const JsonObject& block, std::string_view tag, bool report = true,
                              std::string_view altTag = {});
  void SetFloatToBlockTag(const JsonObject& block, std::string_view tag, double value,
                          bool addIfMissing = true);
  std::int16_t GetFloatArrayFromBlockTag(const JsonObject& block, std::string_view tag,
                                         std::vector<double>& out, std::int16_t expected = -1);
  void SetFloatArrayToBlockTag(const JsonObject& block, std::string_view tag, std::span<const double> values,
                               bool addIfMissing = true);
  // Numbers are rounded half to even and limited to the 16-bit range.
  std::int16_t GetIntegerFromBlockTag(const JsonObject& block, std::string_view tag, bool report = true);
  void SetIntegerToBlockTag(const JsonObject& block, std::string_view tag, std::int16_t value,
                            bool addIfMissing = true);
  // The stored label's index in `labels` (compared in any case; 0 when none matches). Missing:
  // the alternative tag's label looked up in `altLabels` (none given: in `labels`), else
  // `defaultIndex`, or 0 for -1.
  std::int16_t GetIndexFromBlockTag(const JsonObject& block, std::string_view tag,
                                    std::span<const std::string> labels, std::int16_t defaultIndex = -1,
                                    bool report = true, std::string_view altTag = {},
                                    std::span<const std::string> altLabels = {});
  // Stores labels[index]; an index outside the labels stores an empty text.
  void SetIndexToBlockTag(const JsonObject& block, std::string_view tag, std::int16_t index,
                          std::span<const std::string> labels, bool addIfMissing = true);
  std::int16_t GetIndexArrayFromBlockTag(const JsonObject& block, std::string_view tag,
                                         std::span<const std::string> labels, std::vector<std::int16_t>& out,
                                         std::int16_t expected = -1);
  void SetIndexArrayToBlockTag(const JsonObject& block, std::string_view tag,
                               std::span<const std::int16_t> indexes, std::span<const std::string> labels,
                               bool addIfMissing = true);
  // The object under the tag; nullptr (and a line unless hidden) when missing.
  JsonObject GetObjectFromBlockTag(const JsonObject& block, std::string_view tag);
  void SetObjectToBlockTag(const JsonObject& block, std::string_view tag, JsonObject object,
                           bool addIfMissing = true);

 private:
  // Typed reads of one stored value: a number (a damaged one gives 0 and a line, a wrong kind
  // throws ConversionFailure) and a text (lists, objects and null throw).
  double NumberOf(const JsonValue& v, std::string_view tag, std::string_view kindMark);
  std::string TextOf(const JsonValue& v, std::string_view tag, std::string_view kindMark);
  // A number to store; infinity and NaN become 0 with a line.
  JsonValue FiniteValue(double value, std::string_view tag, std::string_view kindMark);

  template <class Unit>
  class Parser;
  class Writer;

  std::string writeError_;

  std::string MissingLine(std::string_view tag, std::string_view kindMark) const;
  void SetValue(const JsonObject& block, std::string_view tag, JsonValue value, bool addIfMissing,
                std::string_view kindMark);
  // The stored list of an array tag, or nullptr after the missing-tag line.
  const JsonList* ArrayOf(const JsonObject& block, std::string_view tag, std::string_view kindMark);
  void CheckCount(std::string_view tag, std::int16_t expected, size_t actual) const;

  JsonValue parsed_;
  bool hideErrors_ = false;
  std::string group_;
  std::string errors_;
  std::vector<std::string> unknownLabels_;
};

}  // namespace velmar
