// Numbers, texts and column lists of the machine-readable outputs.
#include "cli/result_output.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "cli/commands.h"
#include "core/helpers.h"
#include "core/speed_performance.h"

namespace velmar::cli {

void AppendFull(std::string& out, double v) {
  char buf[40];
  const auto r = std::to_chars(buf, buf + sizeof buf, v);
  out.append(buf, r.ptr);
}

std::string Full(double v) {
  std::string s;
  AppendFull(s, v);
  return s;
}

void AppendJsonNumber(std::string& out, double v) {
  if (std::isfinite(v)) {
    AppendFull(out, v);
  } else {
    out += "null";
  }
}

std::string JsonNumber(double v) {
  std::string s;
  AppendJsonNumber(s, v);
  return s;
}

namespace {

// The two-character escape of a character that a JSON string can't hold as it is; the other
// control characters take \u escapes.
const char* ShortJsonEscape(char c) {
  switch (c) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return nullptr;
  }
}

// The characters a JSON string can't hold as they are: the control characters, '"' and '\\'.
constexpr std::array<bool, 256> kNeedsEscape = [] {
  std::array<bool, 256> table{};
  for (unsigned c = 0; c < 0x20; ++c) table[c] = true;
  table['"'] = table['\\'] = true;
  return table;
}();

}  // namespace

void AppendJsonString(std::string& out, std::string_view s) {
  out += '"';
  size_t plain = 0;  // the start of the run of characters that go out as they are
  for (size_t i = 0; i < s.size(); ++i) {
    if (!kNeedsEscape[static_cast<unsigned char>(s[i])]) continue;  // the usual case, one load
    const char* escape = ShortJsonEscape(s[i]);
    out.append(s, plain, i - plain);
    plain = i + 1;
    if (escape) {
      out += escape;
    } else {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", s[i]);
      out += buf;
    }
  }
  out.append(s, plain);
  out += '"';
}

std::string JsonString(std::string_view s) {
  std::string out;
  AppendJsonString(out, s);
  return out;
}

std::string CsvText(std::string_view s) {
  if (s.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(s);
  std::string out = "\"";
  for (char c : s) out += c == '"' ? std::string("\"\"") : std::string(1, c);
  return out + "\"";
}

std::string UnitLabel(const FieldDesc& d, const clsVXUnits& units) {
  return d.family == UnitFamily::None ? "" : units.Label(d.family, kCurrent);
}

bool ParseColumns(const std::string& list, std::vector<int>& cols) {
  for (const std::string& name : SplitDelimited(list, ",")) {
    const std::string n = Trim(name);
    if (n.empty()) continue;
    const int c = clsVXSpeedPerformance::ColumnIndex(n);
    if (c < 0) {
      Fail(kExitUsage, "unknown column \"" + n + "\"; the columns are named as in the csv header");
      return false;
    }
    cols.push_back(c);
  }
  if (cols.empty()) Fail(kExitUsage, "--columns names no column");
  return !cols.empty();
}

}  // namespace velmar::cli
