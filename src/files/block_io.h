// One mechanism for the file blocks of all data classes: a block is opened (added empty when
// missing, with one "Missing" line for the whole block), its tags are read or written by
// walking the class's field table, and the status of the block is returned. Classes with
// arrays or file quirks call the same pieces and add their own tags in between.
#pragma once

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

// Reads or writes one field by its table row (float, integer, label or text tag).
void ReadField(clsVXFileJSON& file, const JsonObject& block, DataClass& obj, int field);
void WriteField(clsVXFileJSON& file, const JsonObject& block, const DataClass& obj, int field);
// Every field of the table that has a tag, in table order, from `first` to before `last`
// (-1: to the end).
void ReadFields(clsVXFileJSON& file, const JsonObject& block, DataClass& obj, int first = 0, int last = -1);
void WriteFields(clsVXFileJSON& file, const JsonObject& block, const DataClass& obj, int first = 0,
                 int last = -1);

// The whole block of a class whose fields are all in its table.
int ReadFieldBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name, DataClass& obj);
int WriteFieldBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name, const DataClass& obj);

}  // namespace velmar
