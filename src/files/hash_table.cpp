#include "files/hash_table.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/helpers.h"

namespace velmar {

JsonObject JsonValue::Object() const {
  const JsonObject* o = std::get_if<JsonObject>(&data);
  return o ? *o : nullptr;
}

double JsonValue::ToDouble() const {
  switch (Kind()) {
    case JsonKind::Text:
      return TextToDouble(*Text());
    case JsonKind::Int16:
      return std::get<std::int16_t>(data);
    case JsonKind::Int32:
      return std::get<std::int32_t>(data);
    case JsonKind::Double:
      return std::get<double>(data);
    case JsonKind::Boolean:
      return std::get<bool>(data) ? -1.0 : 0.0;
    default:
      return 0.0;
  }
}

std::string JsonValue::ToText() const {
  switch (Kind()) {
    case JsonKind::Text:
      return *Text();
    case JsonKind::Int16:
      return std::to_string(std::get<std::int16_t>(data));
    case JsonKind::Int32:
      return std::to_string(std::get<std::int32_t>(data));
    case JsonKind::Double:
      return NumberText(std::get<double>(data));
    case JsonKind::Boolean:
      return std::get<bool>(data) ? "True" : "False";
    case JsonKind::Date:
      return DateText(std::get<DateTime>(data));
    default:
      return "";
  }
}

std::string NumberText(double value) {
  std::string s = FormatNumber(value, "");
  std::replace(s.begin(), s.end(), ',', '.');
  return s;
}

std::string DateText(const DateTime& value) {
  return FormatDate(value, "yyyy-mm-dd") + " " + FormatDate(value, "hh:mm:ss");
}

std::string_view HashTableErrorText(int error) {
  switch (error) {
    case kHashOk:
      return "";
    case kHashInvalidCall:
      return "Invalid procedure call or argument";
    case kHashKeyExists:
      return "This key is already associated with an element of this collection";
    case kHashNotEmpty:
      return "The Hash Table isn't empty";
    default:
      return "Application-defined or object-defined error";
  }
}

int clsVXHashTable::IgnoreCase(bool value) {
  if (count() > 0) return kHashNotEmpty;
  ignoreCase_ = value;
  return kHashOk;
}

void clsVXHashTable::SetSize(std::int32_t hashSize, std::int32_t listSize, std::int32_t chunkSize) {
  if (hashSize >= 1) hashSize_ = hashSize;
  if (listSize >= 1) listSize_ = listSize;
  if (chunkSize >= 1) chunkSize_ = chunkSize;
  entries_.clear();
  if (keyList_.empty()) keyChars_.clear();
  index_.clear();
}

std::vector<std::string> clsVXHashTable::Keys() const {
  std::vector<std::string> keys;
  keys.reserve(keyList_.size());
  for (size_t i = 0; i < keyList_.size(); ++i) keys.emplace_back(KeyAt(i));
  return keys;
}

namespace {

char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Eight bytes at a time, each with bit 5 cleared: a letter hashes as its upper case, so that
// a key is found in any case in a case-blind table. (A few other pairs of characters meet as
// well, such as '@' and '`', which a hash may do.)
// The last one to seven bytes are taken by two loads of four that may overlap, or by the
// first, middle and last byte: fixed-size loads, where a copy of the exact rest would be a
// call. Both depend only on the bytes and the length, so equal keys still hash alike.
size_t KeyHash(std::string_view s) {
  constexpr std::uint64_t kFold = ~0x2020202020202020ull, kMultiplier = 0x9E3779B97F4A7C15ull;
  const char* p = s.data();
  const size_t n = s.size();
  std::uint64_t h = n * kMultiplier;
  const auto mix = [&h](std::uint64_t word) {
    h = (h ^ (word & kFold)) * kMultiplier;
    h ^= h >> 32;
  };
  size_t i = 0;
  for (; i + 8 <= n; i += 8) {
    std::uint64_t word;
    std::memcpy(&word, p + i, 8);
    mix(word);
  }
  const size_t rest = n - i;
  if (rest >= 4) {
    std::uint32_t low, high;
    std::memcpy(&low, p + i, 4);
    std::memcpy(&high, p + n - 4, 4);
    mix(low | std::uint64_t{high} << 32);
  } else if (rest > 0) {
    const auto byte = [p](size_t at) { return std::uint64_t{static_cast<unsigned char>(p[at])}; };
    mix(byte(i) | byte(i + rest / 2) << 8 | byte(n - 1) << 16);
  }
  return static_cast<size_t>(h);
}

// The first sizes of a table's storage: most blocks of a project hold a few dozen tags, so a
// table starts at 16 items and 256 characters of keys rather than growing from a handful.
constexpr size_t kFirstIndexSize = 32, kFirstEntries = 16, kFirstKeyChars = 256;

}  // namespace

bool clsVXHashTable::SameKey(const Entry& e, std::string_view key, size_t hash) const {
  if (e.hash != hash || e.keySize != key.size()) return false;
  const std::string_view stored = KeyOf(e);
  if (stored == key) return true;
  return ignoreCase_ && std::equal(stored.begin(), stored.end(), key.begin(),
                                   [](char s, char c) { return AsciiUpper(s) == AsciiUpper(c); });
}

const clsVXHashTable::Entry* clsVXHashTable::FindEntry(std::string_view key, size_t hash) const {
  if (index_.empty()) return nullptr;
  const size_t mask = index_.size() - 1;
  for (size_t at = hash & mask;; at = (at + 1) & mask) {
    const std::uint32_t n = index_[at];
    if (n == 0) return nullptr;
    const Entry& e = entries_[n - 1];
    if (SameKey(e, key, hash)) return &e;
  }
}

clsVXHashTable::Entry* clsVXHashTable::FindEntry(std::string_view key, size_t hash) {
  return const_cast<Entry*>(std::as_const(*this).FindEntry(key, hash));
}

void clsVXHashTable::Reindex(size_t capacity) {
  index_.assign(capacity, 0);
  const size_t mask = capacity - 1;
  for (size_t i = 0; i < entries_.size(); ++i) {
    size_t at = entries_[i].hash & mask;
    while (index_[at] != 0) at = (at + 1) & mask;
    index_[at] = static_cast<std::uint32_t>(i + 1);
  }
}

clsVXHashTable::Entry& clsVXHashTable::NewEntry(std::string_view key, size_t hash, JsonValue&& value) {
  const size_t at = keyChars_.size();
  if (keyChars_.capacity() < kFirstKeyChars) keyChars_.reserve(kFirstKeyChars);
  keyChars_.append(key);
  if (entries_.empty()) entries_.reserve(kFirstEntries);
  entries_.emplace_back(static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(key.size()), hash,
                        std::move(value));
  if (entries_.size() * 2 > index_.size()) {
    Reindex(index_.empty() ? kFirstIndexSize : index_.size() * 2);
  } else {
    const size_t mask = index_.size() - 1;
    size_t place = hash & mask;
    while (index_[place] != 0) place = (place + 1) & mask;
    index_[place] = static_cast<std::uint32_t>(entries_.size());
  }
  return entries_.back();
}

const clsVXHashTable::Slot* clsVXHashTable::Find(std::string_view key) const {
  if (key.empty()) return nullptr;
  const Entry* e = FindEntry(key, KeyHash(key));
  return e ? &e->slot : nullptr;
}

clsVXHashTable::Slot& clsVXHashTable::SlotFor(std::string_view key) {
  const size_t hash = KeyHash(key);
  if (Entry* e = FindEntry(key, hash)) return e->slot;
  return NewEntry(key, hash, JsonValue()).slot;
}

bool clsVXHashTable::Exists(std::string_view key) const { return Find(key) != nullptr; }

int clsVXHashTable::Add(std::string_view key, JsonValue&& value, std::string_view comment) {
  if (key.empty()) return kHashInvalidCall;
  const size_t hash = KeyHash(key);
  if (FindEntry(key, hash)) return kHashKeyExists;
  Entry& e = NewEntry(key, hash, std::move(value));
  if (!comment.empty()) e.slot.comment = std::make_unique<std::string>(comment);
  if (keyList_.empty()) keyList_.reserve(kFirstEntries);
  keyList_.push_back({e.keyAt, e.keySize});
  return kHashOk;
}

JsonValue clsVXHashTable::item(std::string_view key) const {
  if (key.empty()) return JsonValue(std::const_pointer_cast<clsVXHashTable>(weak_from_this().lock()));
  const Slot* s = Find(key);
  return s ? s->value : JsonValue();
}

const JsonValue* clsVXHashTable::Lookup(std::string_view key) const {
  const Slot* s = Find(key);
  return s ? &s->value : nullptr;
}

void clsVXHashTable::item(std::string_view key, JsonValue value) {
  if (!key.empty()) SlotFor(key).value = std::move(value);
}

int clsVXHashTable::Remove(std::string_view key) {
  const Entry* e = key.empty() ? nullptr : FindEntry(key, KeyHash(key));
  if (!e) return kHashInvalidCall;
  entries_.erase(entries_.begin() + (e - entries_.data()));
  Reindex(index_.size());
  // Exact comparison: in a case-blind table a key removed under another case stays listed.
  std::erase_if(keyList_, [this, key](const KeyRef& k) {
    return std::string_view(keyChars_.data() + k.at, k.size) == key;
  });
  return kHashOk;
}

void clsVXHashTable::RemoveAll() {
  keyList_.clear();
  SetSize(hashSize_, listSize_, chunkSize_);
}

std::string clsVXHashTable::Comment(std::string_view key) const {
  const Slot* s = Find(key);
  return s && s->comment ? *s->comment : std::string();
}

void clsVXHashTable::Comment(std::string_view key, std::string_view comment) {
  if (key.empty()) return;
  std::unique_ptr<std::string>& c = SlotFor(key).comment;
  if (c)
    c->assign(comment);
  else if (!comment.empty())
    c = std::make_unique<std::string>(comment);
}

}  // namespace velmar
