// Generic reading and writing of data-class blocks by their field tables.
#include "files/block_io.h"

#include "core/diagnostics.h"
#include "core/helpers.h"

namespace velmar {

JsonObject BeginReadBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name) {
  if (!root) root = file.ParsedObject();
  if (!root) {
    // A document whose root is a list holds no blocks: read against an empty block.
    file.AddError("Missing: \"" + std::string(name) + "\" [Group]");
    file.HideError(true);
    return std::make_shared<clsVXHashTable>();
  }
  if (!root->Exists(name)) {
    root->Add(std::string(name), JsonValue(std::make_shared<clsVXHashTable>()));
    file.AddError("Missing: \"" + std::string(name) + "\" [Group]");
    file.HideError(true);
  }
  JsonObject block = root->item(name).Object();
  if (!block) {
    // The block's name holds a value that is no object: its tags are all missing.
    file.AddError("Missing: \"" + std::string(name) + "\" [Group]");
    file.HideError(true);
    block = std::make_shared<clsVXHashTable>();
  }
  file.SetErrorMessageGroupString(name);
  return block;
}

int EndReadBlock(clsVXFileJSON& file) {
  const bool errors = file.ErrorsFound();
  file.HideError(false);
  return errors ? 0 : 1;
}

JsonObject BeginWriteBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name) {
  if (!root) root = file.ParsedObject();
  if (!root) {
    file.ResetParsed();
    root = file.ParsedObject();
  }
  if (!root->Exists(name)) root->Add(std::string(name), JsonValue(std::make_shared<clsVXHashTable>()));
  JsonObject block = root->item(name).Object();
  if (!block) {
    // A value that is no object stands under the block's name: it is replaced by the block.
    block = std::make_shared<clsVXHashTable>();
    root->item(name, JsonValue(block));
  }
  file.SetErrorMessageGroupString(name);
  return block;
}

int EndWriteBlock(clsVXFileJSON& file, std::string_view name) {
  if (!file.ErrorsFound()) return 1;
  ShowWarning(0, "File write error", "Writing [" + std::string(name) + "] block\r\n" + file.GetParserErrors(), -1.0);
  file.ClearParserErrors();
  return 0;
}

namespace {
std::span<const std::string> Keys(const FieldDesc& d) {
  static const std::vector<std::string> none;
  return d.labels ? std::span<const std::string>(d.labels->keys) : std::span<const std::string>(none);
}
}  // namespace

void ReadField(clsVXFileJSON& file, const JsonObject& block, DataClass& obj, int field) {
  const FieldDesc& d = obj.Fields()[field];
  switch (d.kind) {
    case FieldKind::Quantity:
    case FieldKind::Real: obj.SetRaw(field, file.GetFloatFromBlockTag(block, d.Tag())); break;
    case FieldKind::Int: obj.SetRaw(field, file.GetIntegerFromBlockTag(block, d.Tag())); break;
    case FieldKind::Enum:
      obj.SetRaw(field, file.GetIndexFromBlockTag(block, d.Tag(), Keys(d), static_cast<std::int16_t>(d.fallback)));
      break;
    case FieldKind::Text: obj.SetText(field, file.GetStringFromBlockTag(block, d.Tag())); break;
  }
}

void WriteField(clsVXFileJSON& file, const JsonObject& block, const DataClass& obj, int field) {
  const FieldDesc& d = obj.Fields()[field];
  switch (d.kind) {
    case FieldKind::Quantity:
    case FieldKind::Real: {
      double v = obj.Raw(field);
      if (d.flags & kRoundOnWrite) v = RoundToSigDigits(v, 6);
      file.SetFloatToBlockTag(block, d.Tag(), v);
      break;
    }
    case FieldKind::Int: file.SetIntegerToBlockTag(block, d.Tag(), static_cast<std::int16_t>(obj.Raw(field))); break;
    case FieldKind::Enum:
      file.SetIndexToBlockTag(block, d.Tag(), static_cast<std::int16_t>(obj.Raw(field)), Keys(d));
      break;
    case FieldKind::Text: file.SetStringToBlockTag(block, d.Tag(), obj.TextOf(field)); break;
  }
}

void ReadFields(clsVXFileJSON& file, const JsonObject& block, DataClass& obj, int first, int last) {
  const int n = static_cast<int>(obj.Fields().size());
  if (last < 0 || last > n) last = n;
  for (int i = first; i < last; ++i)
    if (!(obj.Fields()[i].flags & kNotInFile)) ReadField(file, block, obj, i);
}

void WriteFields(clsVXFileJSON& file, const JsonObject& block, const DataClass& obj, int first, int last) {
  const int n = static_cast<int>(obj.Fields().size());
  if (last < 0 || last > n) last = n;
  for (int i = first; i < last; ++i)
    if (!(obj.Fields()[i].flags & kNotInFile)) WriteField(file, block, obj, i);
}

int ReadFieldBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name, DataClass& obj) {
  const JsonObject block = BeginReadBlock(file, root, name);
  ReadFields(file, block, obj);
  return EndReadBlock(file);
}

int WriteFieldBlock(clsVXFileJSON& file, JsonObject& root, std::string_view name, const DataClass& obj) {
  const JsonObject block = BeginWriteBlock(file, root, name);
  WriteFields(file, block, obj);
  return EndWriteBlock(file, name);
}

}  // namespace velmar
