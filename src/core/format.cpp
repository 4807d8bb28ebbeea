// Number and date formatting by the program's user-defined patterns.
//
// Numbers are rounded in decimal, never in binary: the value is first turned into its
// shortest round-trip digit string (std::to_chars without a precision), and that string is
// rounded half away from zero. So 2.675 (stored as 2.67499999...) still gives "2.68" with
// "0.00", as the program has always shown it.
#include "core/format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <ctime>

#include "core/helpers.h"
#include "velmar_version.h"

namespace velmar {
namespace {

// The magnitude of a finite number as value = 0.digits x 10^point. `digits` has no leading
// or trailing zeros; it is empty for zero.
struct Decimal {
  std::string digits;
  int point = 0;
};

Decimal ToDecimal(double magnitude) {
  Decimal d;
  if (magnitude == 0.0) return d;
  std::array<char, 64> buf{};
  const auto res =
      std::to_chars(buf.data(), buf.data() + buf.size(), magnitude, std::chars_format::scientific);
  const std::string_view s(buf.data(), static_cast<size_t>(res.ptr - buf.data()));
  const size_t e = s.find('e');
  for (char c : s.substr(0, e)) {
    if (c != '.') d.digits += c;
  }
  const bool negExp = s[e + 1] == '-';
  int exp = 0;
  std::from_chars(s.data() + e + 2, s.data() + s.size(), exp);
  d.point = (negExp ? -exp : exp) + 1;
  while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
  return d;
}

// Keeps the first `keep` significant digits, rounding half away from zero on the next one.
// A carry out of the first digit moves the decimal point (9.99 -> 10.0).
void RoundTo(Decimal& d, int keep) {
  if (keep >= static_cast<int>(d.digits.size())) return;
  if (keep < 0) {
    d = Decimal{};
    return;
  }
  const bool up = d.digits[static_cast<size_t>(keep)] >= '5';
  d.digits.resize(static_cast<size_t>(keep));
  if (up) {
    int i = keep - 1;
    while (i >= 0 && d.digits[static_cast<size_t>(i)] == '9') d.digits[static_cast<size_t>(i--)] = '0';
    if (i < 0) {
      d.digits.insert(d.digits.begin(), '1');
      ++d.point;
    } else {
      ++d.digits[static_cast<size_t>(i)];
    }
  }
  while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
  if (d.digits.empty()) d.point = 0;
}

// The i-th significant digit (0 = the first), '0' outside the stored digits.
char DigitAt(const Decimal& d, int i) {
  return i >= 0 && i < static_cast<int>(d.digits.size()) ? d.digits[static_cast<size_t>(i)] : '0';
}

// The general number form: up to 15 significant digits, no trailing zeros, and the
// scientific "1E-05" / "1.2345E+20" form when the leading digit is at 1E+15 or above or
// below 1E-04.
std::string GeneralForm(double value) {
  if (value == 0.0) return "0";
  Decimal d = ToDecimal(std::fabs(value));
  RoundTo(d, 15);
  std::string out = value < 0 ? "-" : "";
  const int size = static_cast<int>(d.digits.size());
  const int exp = d.point - 1;
  if (exp >= 15 || exp < -4) {
    out += d.digits[0];
    if (size > 1) out += "." + d.digits.substr(1);
    out += exp < 0 ? "E-" : "E+";
    const std::string e = std::to_string(std::abs(exp));
    out += std::string(e.size() < 2 ? 2 - e.size() : 0, '0') + e;
  } else if (d.point <= 0) {
    out += "0." + std::string(static_cast<size_t>(-d.point), '0') + d.digits;
  } else {
    for (int i = 0; i < d.point; ++i) out += DigitAt(d, i);
    if (size > d.point) out += "." + d.digits.substr(static_cast<size_t>(d.point));
  }
  return out;
}

// Where the parts of a numeric pattern are. Placeholders are '0' (a digit always shown) and
// '#' (a digit shown only when significant); "e+"/"e-" (or "E") starts the exponent.
struct NumberPattern {
  static constexpr size_t kNone = std::string_view::npos;
  size_t point = kNone;
  size_t expMark = kNone;
  int intPlaces = 0;
  int intMandatory = 0;   // integer places from the first '0' on
  std::string fracKinds;  // '0' or '#' for each decimal place
  int expMinDigits = 0;

  explicit NumberPattern(std::string_view p) {
    for (size_t i = 0; i < p.size(); ++i) {
      const char c = p[i];
      const bool place = c == '0' || c == '#';
      if (expMark != kNone) {
        if (c == '0') ++expMinDigits;
      } else if ((c == 'e' || c == 'E') && i + 1 < p.size() && (p[i + 1] == '+' || p[i + 1] == '-')) {
        expMark = i++;
      } else if (c == '.' && point == kNone) {
        point = i;
      } else if (place && point == kNone) {
        ++intPlaces;
        if (c == '0' || intMandatory > 0) ++intMandatory;
      } else if (place) {
        fracKinds += c;
      }
    }
  }
};

}  // namespace

// Infinity and NaN have no form in the program's patterns; they are written as "inf",
// "-inf" and "nan" whatever the pattern, so a bad value shows up in the output instead of
// stopping it.
//
// The sign goes first, before any literal text. A negative value that rounds to zero keeps
// its sign: -0.001 with "0.00" gives "-0.00", as the program's output always showed.
std::string FormatNumber(double value, std::string_view pattern) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
  if (pattern.empty()) return GeneralForm(value);

  const NumberPattern pat(pattern);
  const int fracPlaces = static_cast<int>(pat.fracKinds.size());
  Decimal d = ToDecimal(std::fabs(value));
  std::string intText, fracText;
  int exp = 0;
  if (pat.expMark != NumberPattern::kNone) {
    // Scientific: as many integer digits as integer places (at least one), the first of
    // them significant. Rounding may carry into the exponent (9.999e3 -> 1.00e4).
    const int n = std::max(pat.intPlaces, 1);
    RoundTo(d, n + fracPlaces);
    if (!d.digits.empty()) exp = d.point - n;
    for (int i = 0; i < n; ++i) intText += DigitAt(d, i);
    for (int j = 0; j < fracPlaces; ++j) fracText += DigitAt(d, n + j);
  } else {
    RoundTo(d, d.point + fracPlaces);
    for (int i = 0; i < d.point; ++i) intText += DigitAt(d, i);
    for (int j = 0; j < fracPlaces; ++j) fracText += DigitAt(d, d.point + j);
  }
  if (static_cast<int>(intText.size()) < pat.intMandatory) {
    intText.insert(0, static_cast<size_t>(pat.intMandatory) - intText.size(), '0');
  }
  while (!fracText.empty() && fracText.back() == '0' && pat.fracKinds[fracText.size() - 1] == '#') {
    fracText.pop_back();
  }

  // Walk the pattern: integer digits are right-aligned on the integer places, the first
  // place taking any digits left over; decimals fill the decimal places from the left.
  std::string out = value < 0 ? "-" : "";
  const int spare = static_cast<int>(intText.size()) - pat.intPlaces;
  int intIndex = 0, fracIndex = 0;
  for (size_t i = 0; i < pattern.size(); ++i) {
    const char c = pattern[i];
    const bool place = c == '0' || c == '#';
    if (i == pat.expMark) {
      out += c;
      if (exp < 0) {
        out += '-';
      } else if (pattern[i + 1] == '+') {
        out += '+';
      }
      const std::string e = std::to_string(std::abs(exp));
      out +=
          std::string(static_cast<size_t>(std::max(0, pat.expMinDigits - static_cast<int>(e.size()))), '0');
      out += e;
      ++i;
      while (i + 1 < pattern.size() && (pattern[i + 1] == '0' || pattern[i + 1] == '#')) ++i;
    } else if (i == pat.point) {
      if (pat.intPlaces == 0) out += intText;
      out += '.';
    } else if (place && i < pat.point && i < pat.expMark) {  // kNone is the largest index
      if (intIndex == 0) {
        out += intText.substr(0, static_cast<size_t>(std::max(0, spare + 1)));
      } else if (spare + intIndex >= 0) {
        out += intText[static_cast<size_t>(spare + intIndex)];
      }
      ++intIndex;
    } else if (place && i > pat.point && i < pat.expMark) {
      if (fracIndex < static_cast<int>(fracText.size())) out += fracText[static_cast<size_t>(fracIndex)];
      ++fracIndex;
    } else {
      out += c;
    }
  }
  return out;
}

DateTime LocalTime(std::time_t t) {
  std::tm tm{};
#ifdef _WIN32
  localtime_s(&tm, &t);
#else
  localtime_r(&t, &tm);
#endif
  return DateTime{tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
}

DateTime Now() { return LocalTime(std::time(nullptr)); }

namespace {

std::string TwoDigits(int v) {
  const std::string s = std::to_string(v);
  return s.size() < 2 ? "0" + s : s;
}

bool StartsWithNoCase(std::string_view text, size_t at, std::string_view token) {
  return text.size() - at >= token.size() && EqualsNoCase(text.substr(at, token.size()), token);
}

}  // namespace

// Tokens are matched without regard to case, longest first. "m"/"mm" directly after an hour
// token (a ':' may stand between) is the minute, otherwise the month. An "AM/PM" anywhere in
// the pattern switches the hours to the 12-hour clock (0 shows as 12); it is written in the
// case it has in the pattern ("am/pm" gives "am").
std::string FormatDate(const DateTime& t, std::string_view pattern) {
  if (EqualsNoCase(pattern, "Medium Date")) return FormatDate(t, "dd-mmm-yy");
  if (EqualsNoCase(pattern, "Short Time")) return FormatDate(t, "hh:mm");
  if (EqualsNoCase(pattern, "Medium Time")) return FormatDate(t, "hh:mm AM/PM");

  static constexpr std::array<std::string_view, 12> kMonths = {
      "January", "February", "March",     "April",   "May",      "June",
      "July",    "August",   "September", "October", "November", "December"};
  const std::string_view month = kMonths[static_cast<size_t>(std::clamp(t.month, 1, 12) - 1)];
  bool twelveHour = false;
  for (size_t i = 0; i < pattern.size(); ++i)
    twelveHour = twelveHour || StartsWithNoCase(pattern, i, "AM/PM");
  const int hour = twelveHour ? (t.hour % 12 == 0 ? 12 : t.hour % 12) : t.hour;

  std::string out;
  bool afterHour = false;
  for (size_t i = 0; i < pattern.size();) {
    const auto take = [&](std::string_view token) {
      if (!StartsWithNoCase(pattern, i, token)) return false;
      i += token.size();
      return true;
    };
    bool hourToken = false;
    if (take("AM/PM")) {
      const bool upper = pattern[i - 5] == 'A' || pattern[i - 5] == 'P';
      out += t.hour < 12 ? (upper ? "AM" : "am") : (upper ? "PM" : "pm");
    } else if (take("yyyy")) {
      const std::string y = std::to_string(t.year);
      out += std::string(y.size() < 4 ? 4 - y.size() : 0, '0') + y;
    } else if (take("yy")) {
      out += TwoDigits(std::abs(t.year) % 100);
    } else if (take("mmmm")) {
      out += month;
    } else if (take("mmm")) {
      out += month.substr(0, 3);
    } else if (take("mm")) {
      out += TwoDigits(afterHour ? t.minute : t.month);
    } else if (take("m")) {
      out += std::to_string(afterHour ? t.minute : t.month);
    } else if (take("dd")) {
      out += TwoDigits(t.day);
    } else if (take("d")) {
      out += std::to_string(t.day);
    } else if (take("hh")) {
      out += TwoDigits(hour);
      hourToken = true;
    } else if (take("h")) {
      out += std::to_string(hour);
      hourToken = true;
    } else if (take("nn")) {
      out += TwoDigits(t.minute);
    } else if (take("n")) {
      out += std::to_string(t.minute);
    } else if (take("ss")) {
      out += TwoDigits(t.second);
    } else if (take("s")) {
      out += std::to_string(t.second);
    } else {
      const char c = pattern[i++];
      out += c;
      if (c == ':' && afterHour) continue;
    }
    afterHour = hourToken;
  }
  return out;
}

std::string ProgramVersionText() {
  return "Velmar " + FormatNumber(kVersionMajor, "0") + "." + FormatNumber(kVersionMinor, "00") + "." +
         FormatNumber(kVersionRevision, "0000");
}

}  // namespace velmar
