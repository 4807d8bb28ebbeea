// clsVXFileINI: the section file of older versions (*.vl5, *.mdl, *.vxf, legacy engine and
// waterjet files). A line "[Block]" opens a block; each line below it is "Tag=Value". Blocks
// and tags match in any case, lines are trimmed, and each side of the first "=" is trimmed.
//
// The object holds the whole document and the lines of one block at a time. Reading: a
// `ReadBlock` selects a block, and `Get...FromBlockTag` take its values; a tag that cannot be
// read appends a line to the caller's error text and sets the caller's failure flag, which
// stays set, so that a block is read to its end and judged once. Writing: `Set...ToBlockTag`
// put lines into the block being built (the running array index counts them), and
// `WriteBlock` stores that block in the document and starts the next one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmar {

class clsVXFileINI {
 public:
  // Separator of the items of an array value ("1.5,2,3").
  static constexpr char kArraySeparator = ',';

  // ---- The document -------------------------------------------------------------------------
  // Loads a file (Windows-1252) and makes it the document. False, with the document empty,
  // when the file does not exist or cannot be read.
  bool ReadFile(const std::filesystem::path& path);
  // The document from program text (UTF-8).
  void ParseText(std::string_view utf8);
  // The document as file text (UTF-8; CR LF line ends), and written to a file safely: a
  // temporary file beside the target and a rename. False, with the reason in `error`.
  std::string WriteText() const;
  bool WriteFile(const std::filesystem::path& path, std::string* error = nullptr) const;
  // Block names in file order; an empty document has none.
  std::vector<std::string> BlockNames() const;

  // ---- Blocks -------------------------------------------------------------------------------
  // Selects the first block of that name for reading; found is false for a block that is
  // missing or has no lines (the object's defaults then stay).
  void ReadBlock(std::string_view block, bool& found);
  // The same from `file`, loaded first when it is not the document held.
  void ReadBlock(const std::filesystem::path& file, std::string_view block, bool& found);
  // Stores the lines set since the last ResetArrayIndex as `block` (replacing a block of that
  // name, else appended), then calls ResetArrayIndex.
  void WriteBlock(std::string_view block, bool& ok);
  // The same, and the document is written to `file`.
  void WriteBlock(const std::filesystem::path& file, std::string_view block, bool& ok);
  // Starts a new block to write: no lines set yet.
  void ResetArrayIndex();
  int ArrayIndex() const { return static_cast<int>(out_.size()); }

  // The name of the block read; whether it holds a tag; the tags of its lines that no Get
  // has asked for (unknown to the reader), in file order.
  const std::string& BlockName() const { return block_; }
  bool HasTag(std::string_view tag) const;
  std::vector<std::string> UnusedTags() const;

  // ---- Values -------------------------------------------------------------------------------
  // A Get that fails sets `failed` and appends a line to `errorText` (on a new line); a value
  // that is read leaves both alone. Values are the trimmed text behind the first "=" of the
  // first line of the tag.
  //
  // The position of the value in `labels`, compared in upper case as a whole (then in
  // `altLabels`, whose position is returned likewise); 0 when it matches none.
  std::int16_t GetIndexFromBlockTag(std::string_view tag, std::span<const std::string> labels, bool& failed,
                                    std::string& errorText, std::span<const std::string> altLabels = {});
  std::string GetStringFromBlockTag(std::string_view tag, bool& failed, std::string& errorText);
  // The items of the value; none for an empty value.
  std::vector<std::string> GetStringArrayFromBlockTag(std::string_view tag, bool& failed,
                                                      std::string& errorText);
  // A locale-free number: the leading number of the text ("12.5 m" gives 12.5); 0 when the
  // tag is missing or the value holds no number.
  double GetFloatFromBlockTag(std::string_view tag, bool& failed, std::string& errorText);
  // A whole number within the 16-bit range (held to it).
  int GetIntegerFromBlockTag(std::string_view tag, bool& failed, std::string& errorText);
  std::vector<double> GetFloatArrayFromBlockTag(std::string_view tag, bool& failed, std::string& errorText);
  std::vector<int> GetIntegerArrayFromBlockTag(std::string_view tag, bool& failed, std::string& errorText);
  // A text of several lines, stored on one line with each line break as the two characters
  // "\n"; returned with CR LF breaks.
  std::string GetMultiStringFromBlockTag(std::string_view tag, bool& failed, std::string& errorText);

  // A Set replaces the line of a tag set before in the same block, else adds a line. One that
  // fails (a number that is not finite, a line break in a one-line text, an array item
  // holding the separator, an index outside the labels) sets `failed` and appends a line.
  void SetIndexToBlockTag(std::string_view tag, int index, std::span<const std::string> labels, bool& failed,
                          std::string& errorText);
  void SetStringToBlockTag(std::string_view tag, std::string_view value, bool& failed,
                           std::string& errorText);
  void SetStringArrayToBlockTag(std::string_view tag, std::span<const std::string> values, bool& failed,
                                std::string& errorText);
  void SetFloatToBlockTag(std::string_view tag, double value, bool& failed, std::string& errorText);
  void SetIntegerToBlockTag(std::string_view tag, int value, bool& failed, std::string& errorText);
  void SetFloatArrayToBlockTag(std::string_view tag, std::span<const double> values, bool& failed,
                               std::string& errorText);
  void SetIntegerArrayToBlockTag(std::string_view tag, std::span<const int> values, bool& failed,
                                 std::string& errorText);
  void SetMultiStringToBlockTag(std::string_view tag, std::string_view value, bool& failed,
                                std::string& errorText);

 private:
  struct Block {
    std::string name;
    std::vector<std::string> lines;
  };
  // The value of the first line of `tag` in the block read, marked as used; nullptr if none.
  std::optional<std::string> Find(std::string_view tag);
  void Put(std::string_view tag, std::string value);
  void Fail(bool& failed, std::string& errorText, std::string_view line) const;

  std::vector<Block> doc_;
  std::filesystem::path loaded_;
  std::string block_;
  std::vector<std::string> lines_;  // of the block read
  std::vector<bool> used_;
  std::vector<std::string> out_;  // of the block being written
};

}  // namespace velmar
