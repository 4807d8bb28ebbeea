// The object node of a project document: an insertion-ordered table of tagged values with a
// comment per key. The order of its keys is the order in which a block's tags are written, so
// a tag added to a loaded block goes to its end and a replaced one keeps its place.
//
// Also here: JsonValue, the tagged value the table's slots hold (text, numbers, boolean, date,
// null, empty, list, object). Objects are shared references; lists are values.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/format.h"

namespace velmar {

class clsVXHashTable;
class JsonValue;

struct JsonNull {};
using JsonList = std::vector<JsonValue>;
using JsonObject = std::shared_ptr<clsVXHashTable>;

// The kinds, in the order of the alternatives of JsonValue::Storage.
enum class JsonKind { Empty, Null, Text, Int16, Int32, Double, Boolean, Date, List, Object };

class JsonValue {
 public:
  using Storage = std::variant<std::monostate, JsonNull, std::string, std::int16_t, std::int32_t, double,
                               bool, DateTime, JsonList, JsonObject>;

  JsonValue() = default;
  JsonValue(JsonNull v) : data(v) {}
  JsonValue(const char* v) : data(std::string(v)) {}
  JsonValue(std::string v) : data(std::move(v)) {}
  JsonValue(std::string_view v) : data(std::string(v)) {}
  JsonValue(std::int16_t v) : data(v) {}
  JsonValue(std::int32_t v) : data(v) {}
  JsonValue(double v) : data(v) {}
  JsonValue(bool v) : data(v) {}
  JsonValue(const DateTime& v) : data(v) {}
  JsonValue(JsonList v) : data(std::move(v)) {}
  JsonValue(JsonObject v) : data(std::move(v)) {}

  JsonKind Kind() const { return static_cast<JsonKind>(data.index()); }
  bool IsEmpty() const { return Kind() == JsonKind::Empty; }
  const std::string* Text() const { return std::get_if<std::string>(&data); }
  const JsonList* List() const { return std::get_if<JsonList>(&data); }
  JsonList* List() { return std::get_if<JsonList>(&data); }
  // The object, or nullptr for any other kind.
  JsonObject Object() const;

  // The conversions the typed readers apply to whatever is stored. Booleans count as -1 and 0,
  // text is read by its leading number, and null, empty, lists and objects give 0 and "".
  double ToDouble() const;
  std::string ToText() const;

  Storage data;
};

// Number text as the file holds it: up to 15 significant digits, '.' as decimal separator.
std::string NumberText(double value);
// A date as the file holds it: "yyyy-mm-dd hh:mm:ss".
std::string DateText(const DateTime& value);

// Failures are returned as the error numbers the table has always raised; 0 is success.
enum HashTableError : int {
  kHashOk = 0,
  kHashInvalidCall = 5,  // Remove of an unknown key, Add of an empty key
  kHashKeyExists = 457,  // Add of a key that is there
  kHashNotEmpty = 1001,  // IgnoreCase set on a table with items
};
// The description that goes with an error number ("" for 0).
std::string_view HashTableErrorText(int error);

// The table itself. Keys are looked up exactly or, with IgnoreCase, after ASCII upper-casing;
// `Keys` keeps them as the caller gave them. Only `Add` enters a key into the ordered key list:
// a slot created by the `item` or `Comment` setters holds a value but is not listed, so it is
// neither seen by `Keys` nor written to a file.
class clsVXHashTable : public std::enable_shared_from_this<clsVXHashTable> {
 public:
  clsVXHashTable() = default;

  bool IgnoreCase() const { return ignoreCase_; }
  int IgnoreCase(bool value);

  // Drops every item (the key list stays, as it always has; RemoveAll clears both). A size
  // below 1 keeps the present value. The sizes are tuning hints of the table's storage.
  void SetSize(std::int32_t hashSize, std::int32_t listSize = 0, std::int32_t chunkSize = 0);

  bool Exists(std::string_view key) const;
  int Add(std::string_view key, JsonValue&& value, std::string_view comment = {});
  // The value; empty when the key is unknown; the table itself for an empty key.
  JsonValue item(std::string_view key) const;
  void item(std::string_view key, JsonValue value);
  // The stored value without a copy; nullptr when the key is unknown.
  const JsonValue* Lookup(std::string_view key) const;
  // Removes the item and every entry of the key list that equals `key` exactly.
  int Remove(std::string_view key);
  void RemoveAll();
  std::int32_t count() const { return static_cast<std::int32_t>(entries_.size()); }
  // The listed keys, in order; KeyCount and KeyAt give them without copies.
  std::vector<std::string> Keys() const;
  size_t KeyCount() const { return keyList_.size(); }
  std::string_view KeyAt(size_t i) const { return {keyChars_.data() + keyList_[i].at, keyList_[i].size}; }
  std::string Comment(std::string_view key) const;
  void Comment(std::string_view key, std::string_view comment);
  // Removes the whole item, like Remove.
  int RemoveComment(std::string_view key) { return Remove(key); }

 private:
  // A comment is rare, so a slot holds it apart (nullptr for none) and stays small to move.
  struct Slot {
    JsonValue value;
    std::unique_ptr<std::string> comment;
  };
  // An item: its key (a stretch of keyChars_, as the caller gave it), the key's hash and the
  // slot. A case-blind table compares keys with their letters in upper case.
  struct Entry {
    Entry(std::uint32_t at, std::uint32_t size, size_t keyHash, JsonValue&& value)
        : keyAt(at), keySize(size), hash(keyHash), slot{std::move(value), nullptr} {}
    std::uint32_t keyAt, keySize;
    size_t hash;
    Slot slot;
  };
  // A listed key: a stretch of keyChars_.
  struct KeyRef {
    std::uint32_t at, size;
  };

  std::string_view KeyOf(const Entry& e) const { return {keyChars_.data() + e.keyAt, e.keySize}; }
  bool SameKey(const Entry& e, std::string_view key, size_t hash) const;
  // The entry of `key` (whose hash is `hash`), or nullptr.
  Entry* FindEntry(std::string_view key, size_t hash);
  const Entry* FindEntry(std::string_view key, size_t hash) const;
  // A new entry at the end holding `value` (the key is not there yet).
  Entry& NewEntry(std::string_view key, size_t hash, JsonValue&& value);
  // Rebuilds the index for `capacity` places (a power of two).
  void Reindex(size_t capacity);
  const Slot* Find(std::string_view key) const;
  Slot& SlotFor(std::string_view key);

  // The items in the order they were made, their keys one after the other, and an open
  // addressing index over them (entry number + 1 per place, 0 for a free place), at most half
  // full. The storage takes a few blocks per table instead of one or more per item. The key
  // list refers to the keys' characters, which stay as long as it lists any (SetSize keeps
  // them then, and Remove never takes characters away).
  std::vector<Entry> entries_;
  std::string keyChars_;
  std::vector<std::uint32_t> index_;
  std::vector<KeyRef> keyList_;
  bool ignoreCase_ = false;
  std::int32_t hashSize_ = 1024, listSize_ = 2048, chunkSize_ = 1024;
};

}  // namespace velmar
