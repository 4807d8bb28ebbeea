// The section file: parsing into blocks of trimmed lines, typed reads and writes of tags,
// and the safe write of the whole document.
#include "files/file_ini.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <optional>

#include "core/helpers.h"
#include "files/file_json.h"
#include "files/safe_write.h"
#include "files/text_codec.h"

namespace velmar {

namespace {

// Tag and value of a line "Tag=Value", both trimmed; no "=" gives an empty value.
std::pair<std::string, std::string> SplitLine(std::string_view line) {
  const size_t eq = line.find('=');
  if (eq == std::string_view::npos) return {Trim(line), {}};
  return {Trim(line.substr(0, eq)), Trim(line.substr(eq + 1))};
}

std::string Upper(std::string_view s) {
  std::string u(s);
  std::ranges::transform(u, u.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return u;
}

// The position of `value` in `labels`, upper case against upper case, as a whole; -1.
int Position(const std::string& upper, std::span<const std::string> labels) {
  for (size_t i = 0; i < labels.size(); ++i)
    if (Upper(Trim(labels[i])) == upper) return static_cast<int>(i);
  return -1;
}

// A number of the value, or false when it holds none (or one beyond the double range).
bool NumberOf(std::string_view text, double& value) {
  const std::string t = Trim(text);
  if (LeadingNumberLength(t) == 0) return false;
  value = TextToDouble(t);
  return std::isfinite(value);
}

std::vector<std::string> Items(std::string_view value) {
  if (Trim(value).empty()) return {};
  std::vector<std::string> items = SplitDelimited(value, std::string(1, clsVXFileINI::kArraySeparator));
  for (std::string& s : items) s = Trim(s);
  return items;
}

std::string Joined(std::span<const std::string> items) {
  std::string s;
  for (size_t i = 0; i < items.size(); ++i)
    s += (i ? std::string(1, clsVXFileINI::kArraySeparator) : "") + items[i];
  return s;
}

}  // namespace

// ---- The document ----------------------------------------------------------------------------

bool clsVXFileINI::ReadFile(const std::filesystem::path& path) {
  doc_.clear();
  loaded_ = path;
  block_.clear();
  lines_.clear();
  used_.clear();
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return false;
  std::ifstream f(path, std::ios::binary);
  if (!f) return false;
  const std::string bytes((std::istreambuf_iterator<char>(f)), {});
  if (f.bad()) return false;
  ParseText(Cp1252ToUtf8(bytes));
  loaded_ = path;
  return true;
}

void clsVXFileINI::ParseText(std::string_view utf8) {
  doc_.clear();
  block_.clear();
  lines_.clear();
  used_.clear();
  Block* current = nullptr;
  size_t start = 0;
  while (start <= utf8.size()) {
    size_t end = utf8.find('\n', start);
    if (end == std::string_view::npos) end = utf8.size();
    std::string line(utf8.substr(start, end - start));
    std::erase(line, '\r');
    std::erase(line, '\0');
    line = Trim(line);
    start = end + 1;
    // Blank lines and ";" comments carry nothing; lines before the first block neither.
    if (line.empty() || line[0] == ';') continue;
    const size_t close = line.find(']');
    if (line[0] == '[' && close != std::string::npos) {
      doc_.push_back({Trim(std::string_view(line).substr(1, close - 1)), {}});
      current = &doc_.back();
    } else if (current) {
      current->lines.push_back(line);
    }
  }
}

std::string clsVXFileINI::WriteText() const {
  std::string text;
  for (const Block& b : doc_) {
    text += "[" + b.name + "]\r\n";
    for (const std::string& line : b.lines) text += line + "\r\n";
    text += "\r\n";
  }
  return text;
}

bool clsVXFileINI::WriteFile(const std::filesystem::path& path, std::string* error) const {
  const SafeWriteResult r = WriteFileSafely(path, Utf8ToCp1252(WriteText()));
  if (!r.ok && error) *error = r.message;
  return r.ok;
}

std::vector<std::string> clsVXFileINI::BlockNames() const {
  std::vector<std::string> names;
  for (const Block& b : doc_) names.push_back(b.name);
  return names;
}

// ---- Blocks ----------------------------------------------------------------------------------

void clsVXFileINI::ReadBlock(std::string_view block, bool& found) {
  block_ = block;
  lines_.clear();
  const auto it = std::ranges::find_if(doc_, [&](const Block& b) { return EqualsNoCase(b.name, block); });
  if (it != doc_.end()) lines_ = it->lines;
  used_.assign(lines_.size(), false);
  found = !lines_.empty();
}

void clsVXFileINI::ReadBlock(const std::filesystem::path& file, std::string_view block, bool& found) {
  if (file != loaded_) ReadFile(file);
  ReadBlock(block, found);
}

void clsVXFileINI::WriteBlock(std::string_view block, bool& ok) {
  const auto it = std::ranges::find_if(doc_, [&](const Block& b) { return EqualsNoCase(b.name, block); });
  if (it != doc_.end())
    it->lines = out_;
  else
    doc_.push_back({std::string(block), out_});
  ok = true;
  ResetArrayIndex();
}

void clsVXFileINI::WriteBlock(const std::filesystem::path& file, std::string_view block, bool& ok) {
  WriteBlock(block, ok);
  ok = WriteFile(file);
  if (ok) loaded_ = file;
}

void clsVXFileINI::ResetArrayIndex() { out_.clear(); }

bool clsVXFileINI::HasTag(std::string_view tag) const {
  return std::ranges::any_of(lines_,
                             [&](const std::string& l) { return EqualsNoCase(SplitLine(l).first, tag); });
}

std::vector<std::string> clsVXFileINI::UnusedTags() const {
  std::vector<std::string> tags;
  for (size_t i = 0; i < lines_.size(); ++i)
    if (!used_[i]) tags.push_back(SplitLine(lines_[i]).first);
  return tags;
}

std::optional<std::string> clsVXFileINI::Find(std::string_view tag) {
  // The first line of a tag wins; later lines of the same tag are marked used all the same,
  // since the reader did ask for that tag.
  std::optional<std::string> value;
  for (size_t i = 0; i < lines_.size(); ++i) {
    auto [key, v] = SplitLine(lines_[i]);
    if (!EqualsNoCase(key, tag)) continue;
    used_[i] = true;
    if (!value) value = std::move(v);
  }
  return value;
}

void clsVXFileINI::Put(std::string_view tag, std::string value) {
  std::string line = std::string(tag) + "=" + value;
  for (std::string& l : out_) {
    if (EqualsNoCase(SplitLine(l).first, tag)) {
      l = std::move(line);
      return;
    }
  }
  out_.push_back(std::move(line));
}

void clsVXFileINI::Fail(bool& failed, std::string& errorText, std::string_view line) const {
  failed = true;
  if (!errorText.empty()) errorText += "\r\n";
  errorText += line;
}

// ---- Gets ------------------------------------------------------------------------------------

std::int16_t clsVXFileINI::GetIndexFromBlockTag(std::string_view tag, std::span<const std::string> labels,
                                                bool& failed, std::string& errorText,
                                                std::span<const std::string> altLabels) {
  const std::string head = block_ + " [" + std::string(tag);
  const std::optional<std::string> v = Find(tag);
  if (!v) {
    Fail(failed, errorText, head + "] not found.");
    return 0;
  }
  const std::string upper = Upper(*v);
  int at = Position(upper, labels);
  if (at < 0) at = Position(upper, altLabels);
  if (at >= 0) return static_cast<std::int16_t>(at);
  Fail(failed, errorText, head + "] tag [" + *v + "] not recognized.");
  return 0;
}

std::string clsVXFileINI::GetStringFromBlockTag(std::string_view tag, bool& failed, std::string& errorText) {
  const std::optional<std::string> v = Find(tag);
  if (v) return *v;
  Fail(failed, errorText, std::string(tag) + " not found.");
  return {};
}

std::vector<std::string> clsVXFileINI::GetStringArrayFromBlockTag(std::string_view tag, bool& failed,
                                                                  std::string& errorText) {
  const std::optional<std::string> v = Find(tag);
  if (v) return Items(*v);
  Fail(failed, errorText, std::string(tag) + " tag required but not found.");
  return {};
}

double clsVXFileINI::GetFloatFromBlockTag(std::string_view tag, bool& failed, std::string& errorText) {
  const std::optional<std::string> v = Find(tag);
  if (!v) {
    Fail(failed, errorText, std::string(tag) + " not found.");
    return 0.0;
  }
  double value = 0.0;
  if (NumberOf(*v, value)) return value;
  Fail(failed, errorText, std::string(tag) + " [" + *v + "] not a number.");
  return 0.0;
}

int clsVXFileINI::GetIntegerFromBlockTag(std::string_view tag, bool& failed, std::string& errorText) {
  const double v = GetFloatFromBlockTag(tag, failed, errorText);
  return static_cast<int>(std::clamp(std::nearbyint(v), -32768.0, 32767.0));
}

std::vector<double> clsVXFileINI::GetFloatArrayFromBlockTag(std::string_view tag, bool& failed,
                                                            std::string& errorText) {
  const std::optional<std::string> v = Find(tag);
  if (!v) {
    Fail(failed, errorText, std::string(tag) + " tag required but not found.");
    return {};
  }
  std::vector<double> values;
  for (const std::string& item : Items(*v)) {
    double x = 0.0;
    if (!NumberOf(item, x)) Fail(failed, errorText, std::string(tag) + " [" + item + "] not a number.");
    values.push_back(x);
  }
  return values;
}

std::vector<int> clsVXFileINI::GetIntegerArrayFromBlockTag(std::string_view tag, bool& failed,
                                                           std::string& errorText) {
  std::vector<int> values;
  for (double x : GetFloatArrayFromBlockTag(tag, failed, errorText))
    values.push_back(static_cast<int>(std::clamp(std::nearbyint(x), -32768.0, 32767.0)));
  return values;
}

std::string clsVXFileINI::GetMultiStringFromBlockTag(std::string_view tag, bool& failed,
                                                     std::string& errorText) {
  std::string text = GetStringFromBlockTag(tag, failed, errorText);
  for (size_t at; (at = text.find("\\n")) != std::string::npos;) text.replace(at, 2, "\r\n");
  return text;
}

// ---- Sets ------------------------------------------------------------------------------------

void clsVXFileINI::SetIndexToBlockTag(std::string_view tag, int index, std::span<const std::string> labels,
                                      bool& failed, std::string& errorText) {
  if (index < 0 || index >= static_cast<int>(labels.size())) {
    Fail(failed, errorText, "[" + std::string(tag) + "] tag error.");
    return;
  }
  Put(tag, labels[static_cast<size_t>(index)]);
}

void clsVXFileINI::SetStringToBlockTag(std::string_view tag, std::string_view value, bool& failed,
                                       std::string& errorText) {
  if (value.find_first_of("\r\n") != std::string_view::npos) {
    Fail(failed, errorText, std::string(tag) + " tag error.");
    return;
  }
  Put(tag, Trim(value));
}

void clsVXFileINI::SetStringArrayToBlockTag(std::string_view tag, std::span<const std::string> values,
                                            bool& failed, std::string& errorText) {
  for (const std::string& v : values) {
    if (v.find_first_of(std::string("\r\n") + kArraySeparator) != std::string::npos) {
      Fail(failed, errorText, std::string(tag) + " tag error.");
      return;
    }
  }
  Put(tag, Joined(values));
}

void clsVXFileINI::SetFloatToBlockTag(std::string_view tag, double value, bool& failed,
                                      std::string& errorText) {
  if (!std::isfinite(value)) {
    Fail(failed, errorText, std::string(tag) + " tag error.");
    return;
  }
  Put(tag, FileNumberText(value));
}

void clsVXFileINI::SetIntegerToBlockTag(std::string_view tag, int value, bool&, std::string&) {
  Put(tag, std::to_string(value));
}

void clsVXFileINI::SetFloatArrayToBlockTag(std::string_view tag, std::span<const double> values, bool& failed,
                                           std::string& errorText) {
  std::vector<std::string> items;
  for (double v : values) {
    if (!std::isfinite(v)) {
      Fail(failed, errorText, std::string(tag) + " tag error.");
      return;
    }
    items.push_back(FileNumberText(v));
  }
  Put(tag, Joined(items));
}

void clsVXFileINI::SetIntegerArrayToBlockTag(std::string_view tag, std::span<const int> values, bool&,
                                             std::string&) {
  std::vector<std::string> items;
  for (int v : values) items.push_back(std::to_string(v));
  Put(tag, Joined(items));
}

void clsVXFileINI::SetMultiStringToBlockTag(std::string_view tag, std::string_view value, bool& failed,
                                            std::string& errorText) {
  std::string text;
  for (size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\r') continue;
    text += value[i] == '\n' ? std::string("\\n") : std::string(1, value[i]);
  }
  SetStringToBlockTag(tag, text, failed, errorText);
}

}  // namespace velmar
