#include "files/hash_table.h"

#include <algorithm>
#include <cstring>

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
  slots_.clear();
}

namespace {

char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

// Eight bytes at a time, each with bit 5 cleared: a letter hashes as its upper case. (A few
// other pairs of characters meet as well, such as '@' and '`', which a hash may do.)
size_t clsVXHashTable::KeyHash::operator()(std::string_view s) const {
  constexpr std::uint64_t kFold = ~0x2020202020202020ull, kMultiplier = 0x9E3779B97F4A7C15ull;
  std::uint64_t h = s.size() * kMultiplier;
  for (size_t i = 0; i < s.size(); i += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, s.data() + i, std::min<size_t>(8, s.size() - i));
    h = (h ^ (word & kFold)) * kMultiplier;
    h ^= h >> 32;
  }
  return static_cast<size_t>(h);
}

bool clsVXHashTable::KeyEqual::operator()(AnyCase k, std::string_view stored) const {
  return stored.size() == k.key.size() && std::equal(stored.begin(), stored.end(), k.key.begin(),
                                                     [](char s, char c) { return s == AsciiUpper(c); });
}

std::string clsVXHashTable::Normal(std::string_view key) const {
  std::string k(key);
  if (ignoreCase_) std::transform(k.begin(), k.end(), k.begin(), AsciiUpper);
  return k;
}

const clsVXHashTable::Slot* clsVXHashTable::Find(std::string_view key) const {
  if (key.empty()) return nullptr;
  const auto it = ignoreCase_ ? slots_.find(AnyCase{key}) : slots_.find(key);
  return it == slots_.end() ? nullptr : &it->second;
}

bool clsVXHashTable::Exists(std::string_view key) const { return Find(key) != nullptr; }

int clsVXHashTable::Add(std::string_view key, JsonValue value, std::string_view comment) {
  if (key.empty()) return kHashInvalidCall;
  const auto [it, added] = slots_.try_emplace(Normal(key));
  if (!added) return kHashKeyExists;
  it->second.value = std::move(value);
  it->second.comment = comment;
  keyList_.emplace_back(key);
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
  if (!key.empty()) slots_[Normal(key)].value = std::move(value);
}

int clsVXHashTable::Remove(std::string_view key) {
  const auto it = key.empty() ? slots_.end() : slots_.find(Normal(key));
  if (it == slots_.end()) return kHashInvalidCall;
  slots_.erase(it);
  // Exact comparison: in a case-blind table a key removed under another case stays listed.
  std::erase(keyList_, key);
  return kHashOk;
}

void clsVXHashTable::RemoveAll() {
  SetSize(hashSize_, listSize_, chunkSize_);
  keyList_.clear();
}

std::string clsVXHashTable::Comment(std::string_view key) const {
  const Slot* s = Find(key);
  return s ? s->comment : std::string();
}

void clsVXHashTable::Comment(std::string_view key, std::string_view comment) {
  if (!key.empty()) slots_[Normal(key)].comment = comment;
}

}  // namespace velmar
