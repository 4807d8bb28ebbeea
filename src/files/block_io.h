// One mechanism for the file blocks of all data classes: a block is opened (added empty when
// missing, with one "Missing" line for the whole block), its tags are read or written by
// walking the class's field table, and the status of the block is returned. Classes with
// arrays or file quirks call the same pieces and add their own tags in between.
#pragma once

#include <span>
#include <string_view>

#include "core/data_class.h"
#include "files/file_json.h"

namespace velmar {

// The block object under `name` for reading. `root` becomes the parsed root when empty. A
// missing block is added empty, the line `Missing: "name" [Group]` is added and errors are
// hidden, so that its tags add no lines of their own.
JsonObject BeginReadBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name);
// Ends reading: errors are shown again; 0 if the file has any error lines, else 1.
int EndReadBlock(clsVXFileJSON& file);
// The block object under `name` for writing; a missing block is added empty, silently.
JsonObject BeginWriteBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name);
// Ends writing: any error lines are shown as "File write error" and cleared; 0 then, else 1.
int EndWriteBlock(clsVXFileJSON& file, std::string_view name);

// An older tag name that a field is read from when its own tag is missing (the value loads,
// and the missing-tag line ends " (found)").
struct OlderTag {
  std::string_view field, tag;
};
// The one older tag several blocks share: `ImportFilePath` was `FileNamePath`.
inline constexpr OlderTag kImportFilePathOlderTag[] = {{"ImportFilePath", "FileNamePath"}};

// The object under `key` of `parent`: nullptr when missing (or `parent` is nullptr); with
// `create`, added empty at the end of `parent` (a value that is no object is replaced).
JsonObject ChildObject(const JsonObject& parent, std::string_view key, bool create);
// A field's tag "Object.Tag" names a tag inside the object `Object` of the block. The object
// of such a tag: for reading, nullptr when missing (its tags then read as missing); for
// writing, added empty when missing. `tag` is left holding the inner tag.
JsonObject TagBlock(const JsonObject& block, std::string_view& tag, bool create);

// Reads or writes one field by its table row (float, integer, label or text tag).
void ReadField(clsVXFileJSON& file, const JsonObject& block, DataClass& obj, int field,
               std::string_view olderTag = {});
void WriteField(clsVXFileJSON& file, const JsonObject& block, const DataClass& obj, int field);
// Every field of the table that has a tag, in table order, from `first` to before `last`
// (-1: to the end).
void ReadFields(clsVXFileJSON& file, const JsonObject& block, DataClass& obj, int first = 0, int last = -1,
                std::span<const OlderTag> older = {});
void WriteFields(clsVXFileJSON& file, const JsonObject& block, const DataClass& obj, int first = 0,
                 int last = -1);

// `SchemaVersion`, the block's format version: written as 1; read without a line when
// missing (0 then).
void WriteSchemaVersion(clsVXFileJSON& file, const JsonObject& block);
int ReadSchemaVersion(clsVXFileJSON& file, const JsonObject& block);

}  // namespace velmar
