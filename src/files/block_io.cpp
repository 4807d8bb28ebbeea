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
  ShowWarning(0, "File write error", "Writing [" + std::string(name) + "] block\r\n" + file.GetParserErrors(),
              -1.0);
  file.ClearParserErrors();
  return 0;
}

namespace {
std::span<const std::string> Keys(const FieldDesc& d) {
  static const std::vector<std::string> none;
  return d.labels ? std::span<const std::string>(d.labels->keys) : std::span<const std::string>(none);
}
}  // namespace

JsonObject ChildObject(const JsonObject& parent, std::string_view key, bool create) {
  if (!parent) return nullptr;
  JsonObject child = parent->item(key).Object();
  if (!child && create) {
    child = std::make_shared<clsVXHashTable>();
    if (parent->Exists(key))
      parent->item(key, JsonValue(child));
    else
      parent->Add(key, JsonValue(child));
  }
  return child;
}

JsonObject TagBlock(const JsonObject& block, std::string_view& tag, bool create) {
  const size_t dot = tag.find('.');
  if (dot == std::string_view::npos) return block;
  const std::string_view object = tag.substr(0, dot);
  tag.remove_prefix(dot + 1);
  return ChildObject(block, object, create);
}

void ReadField(clsVXFileJSON& file, const JsonObject& outer, DataClass& obj, int field,
               std::string_view olderTag) {
  const FieldDesc& d = obj.Fields()[field];
  std::string_view tag = d.Tag();
  const JsonObject block = TagBlock(outer, tag, false);
  switch (d.kind) {
    case FieldKind::Quantity:
    case FieldKind::Real:
      obj.SetRaw(field, file.GetFloatFromBlockTag(block, tag, true, olderTag));
      break;
    case FieldKind::Int:
      obj.SetRaw(field, file.GetIntegerFromBlockTag(block, tag));
      break;
    case FieldKind::Enum:
      // `fallback` is the index a missing tag reads as; an unknown label reads as 0.
      obj.SetRaw(field, file.GetIndexFromBlockTag(block, tag, Keys(d), static_cast<std::int16_t>(d.fallback),
                                                  true, olderTag));
      break;
    case FieldKind::Text:
      obj.SetText(field, file.GetStringFromBlockTag(block, tag, false, olderTag));
      break;
  }
}

void WriteField(clsVXFileJSON& file, const JsonObject& outer, const DataClass& obj, int field) {
  const FieldDesc& d = obj.Fields()[field];
  std::string_view tag = d.Tag();
  const JsonObject block = TagBlock(outer, tag, true);
  switch (d.kind) {
    case FieldKind::Quantity:
    case FieldKind::Real: {
      double v = obj.Raw(field);
      if (d.flags & kRoundOnWrite) v = RoundToSigDigits(v, 6);
      file.SetFloatToBlockTag(block, tag, v);
      break;
    }
    case FieldKind::Int:
      file.SetIntegerToBlockTag(block, tag, static_cast<std::int16_t>(obj.Raw(field)));
      break;
    case FieldKind::Enum:
      file.SetIndexToBlockTag(block, tag, static_cast<std::int16_t>(obj.Raw(field)), Keys(d));
      break;
    case FieldKind::Text:
      file.SetStringToBlockTag(block, tag, obj.TextOf(field));
      break;
  }
}

void ReadFields(clsVXFileJSON& file, const JsonObject& block, DataClass& obj, int first, int last,
                std::span<const OlderTag> older) {
  const int n = static_cast<int>(obj.Fields().size());
  if (last < 0 || last > n) last = n;
  for (int i = first; i < last; ++i) {
    const FieldDesc& d = obj.Fields()[i];
    if (d.flags & kNotInFile) continue;
    std::string_view olderTag;
    for (const OlderTag& o : older)
      if (o.field == d.name) olderTag = o.tag;
    ReadField(file, block, obj, i, olderTag);
  }
}

void WriteFields(clsVXFileJSON& file, const JsonObject& block, const DataClass& obj, int first, int last) {
  const int n = static_cast<int>(obj.Fields().size());
  if (last < 0 || last > n) last = n;
  for (int i = first; i < last; ++i)
    if (!(obj.Fields()[i].flags & kNotInFile)) WriteField(file, block, obj, i);
}

void WriteSchemaVersion(clsVXFileJSON& file, const JsonObject& block) {
  file.SetIntegerToBlockTag(block, "SchemaVersion", 1);
}

int ReadSchemaVersion(clsVXFileJSON& file, const JsonObject& block) {
  return file.GetIntegerFromBlockTag(block, "SchemaVersion", false);
}

}  // namespace velmar
