// Numbers, texts and column lists of the machine-readable outputs.
#include "cli/result_output.h"

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

std::string JsonString(std::string_view s) {
  std::string out = "\"";
  for (char c : s) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\u%04x", c);
          out += buf;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
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
