// Numeric and text helpers shared by the whole engine.
#include "core/helpers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "core/format.h"

namespace velmar {

double Log10(double x) { return std::log(x) / std::log(10.0); }

double ArcSin(double x) {
  if (x > 1.0 || x < -1.0) return 0.0;
  if (x == 1.0) return 2.0 * std::atan(1.0);
  if (x == -1.0) return -2.0 * std::atan(1.0);
  return std::atan(x / std::sqrt(1.0 - x * x));
}

double ArcTan2(double y, double x) {
  const double quarter = std::atan(1.0);
  if (x > 0.0) return std::atan(y / x);
  if (x < 0.0) return std::atan(y / x) + (y >= 0.0 ? 4.0 * quarter : -4.0 * quarter);
  if (y > 0.0) return 2.0 * quarter;
  if (y < 0.0) return -2.0 * quarter;
  return 0.0;
}

double ArrayMax(const std::vector<double>& a) {
  if (a.empty()) return 0.0;
  double m = a.front();
  for (double v : a) m = v > m ? v : m;
  return m;
}

double ArrayMin(const std::vector<double>& a) {
  if (a.empty()) return 0.0;
  double m = a.front();
  for (double v : a) m = v < m ? v : m;
  return m;
}

void SortPairs(int count, std::vector<double>& keys, std::vector<double>& values) {
  const int n = std::min<int>({count, static_cast<int>(keys.size()), static_cast<int>(values.size())});
  bool swapped = true;
  while (swapped) {
    swapped = false;
    for (int i = 0; i + 1 < n; ++i) {
      if (keys[i] > keys[i + 1]) {
        std::swap(keys[i], keys[i + 1]);
        std::swap(values[i], values[i + 1]);
        swapped = true;
      }
    }
  }
}

namespace {
// 10^k as the run-time std::pow gives it. Every unit-converting read rounds through
// RoundToSigDigits, and std::pow was most of its time; the table holds the very values
// std::pow returns, so the rounding stays bit for bit the same. The library's pow is not
// correctly rounded for every k (10^23 comes out one unit above the nearest double), while
// the compiler folds constant calls exactly: so the table is filled at run time, by a
// function that is not constexpr, from a volatile base. Other exponents call std::pow.
constexpr int kPow10TableMax = 64;
using Pow10Table = std::array<double, 2 * kPow10TableMax + 1>;

Pow10Table FillPow10Table() {
  volatile double ten = 10.0;
  const double base = ten;
  Pow10Table t{};
  for (int i = -kPow10TableMax; i <= kPow10TableMax; ++i) t[i + kPow10TableMax] = std::pow(base, i);
  return t;
}

const Pow10Table& Pow10s() {
  static const Pow10Table table = FillPow10Table();
  return table;
}

// The same table filled during the start-up of the program, for the common case of the
// rounding, which then needs no guard of a function-local static (a call that could happen
// in the middle of the rounding). Until it is filled (a static initializer of another file
// that converts), `ready` is false and the rounding takes the general way.
struct StartupPow10 {
  Pow10Table table = FillPow10Table();
  bool ready = true;
};
StartupPow10 startupPow10;

double Pow10(const Pow10Table& table, int k) {
  return k >= -kPow10TableMax && k <= kPow10TableMax ? table[k + kPow10TableMax] : std::pow(10.0, k);
}

// The decimal exponent e of the rounding, floor(log10(a)) + 1, as the program has always
// formed it: from Log10, the quotient of two natural logarithms. That quotient is off from
// the true logarithm by a few units in the last place, so right at a power of ten it may
// fall on either side of the integer. Away from the powers of ten it cannot: there e
// follows from the binary exponent and one comparison with a power of ten, without a
// logarithm. Within a relative 1e-10 of a power of ten (the logarithm is then within 4e-11
// of an integer, two hundred times its worst error), and outside the binades of the table
// below (about 1e-289..1e289), the logarithm itself decides, so every value keeps the
// exponent it always had.
constexpr int kFastExpMin = -290, kFastExpMax = 290;
constexpr double kNearPowerOfTen = 1e-10;

// 10^k for kFastExpMin <= k <= kFastExpMax + 1, each within a few units of the nearest
// double: close enough for the comparisons outside the band around the power.
struct DecimalScale {
  std::array<double, kFastExpMax - kFastExpMin + 2> pow10{};
  constexpr DecimalScale() {
    double p = 1.0;
    for (int k = 0; k <= kFastExpMax + 1; ++k, p *= 10.0) pow10[k - kFastExpMin] = p;
    p = 1.0;
    for (int k = 0; k >= kFastExpMin; --k, p /= 10.0) pow10[k - kFastExpMin] = p;
  }
  constexpr double operator()(int k) const { return pow10[k - kFastExpMin]; }
};

// One entry per binade [2^n, 2^(n+1)): d is the decimal exponent of 2^n, so that every a of
// the binade has d or d + 1 (d + 1 from 10^d on; 10^(d + 1) lies beyond the binade). The
// bounds are the edges of the bands around 10^(d - 1) and 10^d in which the logarithm decides.
struct Binade {
  double aboveLower;  // 10^(d - 1) (1 + band): a above it is clear of the lower power
  double belowPower;  // 10^d (1 - band): a below it has exponent d
  double abovePower;  // 10^d (1 + band): a above it has exponent d + 1
  int d;
};
constexpr int kBinadeMin = -960, kBinadeMax = 960;  // 2^-960 is 1.0e-289, 2^961 1.9e289
constexpr int kExponentBias = 1023;

// Indexed by the biased binary exponent, all 2048 of them: the binades outside kBinadeMin ..
// kBinadeMax (zero and the subnormals, infinity and NaN included) have bounds of infinity,
// which no value passes, so that the logarithm decides there without a test of the range.
struct BinadeTable {
  std::array<Binade, 2048> binade{};
  constexpr BinadeTable() {
    constexpr double inf = std::numeric_limits<double>::infinity();
    for (Binade& b : binade) b = {inf, inf, inf, 0};
    constexpr DecimalScale scale;
    double p = 1.0;  // 2^n, exact
    for (int n = kBinadeMin; n < 0; ++n) p /= 2.0;
    int d = kFastExpMin + 1;
    for (int n = kBinadeMin; n <= kBinadeMax; ++n, p *= 2.0) {
      while (scale(d) <= p) ++d;  // the first power of ten above 2^n
      binade[static_cast<size_t>(n + kExponentBias)] = {scale(d - 1) * (1.0 + kNearPowerOfTen),
                                                         scale(d) * (1.0 - kNearPowerOfTen),
                                                         scale(d) * (1.0 + kNearPowerOfTen), d};
    }
  }
};
constexpr BinadeTable kBinades;

int LogarithmExponent(double a) { return static_cast<int>(std::floor(Log10(a))) + 1; }

// The exponent e of a >= 0 (biased binary exponent `biased`); false when a lies in a band
// around a power of ten or outside the binades of the table, where the logarithm decides.
inline bool TableExponent(double a, unsigned biased, int& e) {
  const Binade& b = kBinades.binade[biased];
  if (a < b.belowPower) {
    e = b.d;
    return a > b.aboveLower;
  }
  e = b.d + 1;
  return a > b.abovePower;
}

unsigned BiasedExponent(double a) { return static_cast<unsigned>(std::bit_cast<std::uint64_t>(a) >> 52); }

int DecimalExponent(double a) {
  int e;
  return TableExponent(a, BiasedExponent(a), e) ? e : LogarithmExponent(a);
}

// floor(x) for x >= 0 (or NaN): below 2^52 the truncation through a 64-bit integer, which
// the baseline x86-64 target does in two instructions; from 2^52 on every double is an integer.
inline double FloorNonNegative(double x) {
  return x < 0x1p52 ? static_cast<double>(static_cast<std::int64_t>(x)) : x;
}

// The integer part of x >= 0, plus one when the fraction reaches one half (as x + 0.5 rounds).
// That is the integer part of x + 0.5 itself: below 2^52 it is the integer part of x or the
// next integer, and from 2^52 on x + 0.5 rounds to x or x + 1 as the longer form did.
inline double RoundUp(double x) { return FloorNonNegative(x + 0.5); }

// Steps of the historical rounding: scale to an integer of `digits` digits, take the integer
// part, add one when the fraction reaches one half, and scale back. Every case, and the
// format text; RoundToSigDigits takes a shorter way for the common one.
[[gnu::noinline]] double RoundAnyValue(double value, int digits, std::string* formatOut) {
  if (value == 0.0 || digits < 1) {
    if (formatOut) formatOut->clear();
    return 0.0;
  }
  // Infinity and NaN have no digits to round: they pass unchanged (and the reading of a
  // file never lets them into the model).
  if (!std::isfinite(value)) {
    if (formatOut) formatOut->clear();
    return value;
  }
  const double sign = value < 0.0 ? -1.0 : 1.0;
  double a = std::fabs(value);
  const int e = DecimalExponent(a);
  static constexpr std::string_view kPattern = "#########0.0000000000";
  const Pow10Table& pow10 = Pow10s();
  double r;
  if (digits > e && digits - e > 300) {
    // Below about 1e-290 the scale 10^(digits - e) would overflow: scale in two steps.
    // Numbers this small round as before to the last digit they can hold.
    const double s1 = Pow10(pow10, digits - e - 300), s2 = Pow10(pow10, 300);
    r = RoundUp(a * s1 * s2) / s2 / s1;
    if (formatOut) *formatOut = kPattern;
  } else if (digits > e) {
    const double s = Pow10(pow10, digits - e);
    r = RoundUp(a * s) / s;
    if (formatOut) {
      const int len = std::clamp(digits + 11 - e, 0, static_cast<int>(kPattern.size()));
      *formatOut = kPattern.substr(0, static_cast<size_t>(len));
    }
  } else if (digits == e) {
    r = RoundUp(a);
    if (formatOut) *formatOut = "#########0";
  } else {
    const double s = Pow10(pow10, e - digits);
    r = RoundUp(a / s) * s;
    if (formatOut) *formatOut = "#########0";
  }
  // A digit count far beyond what a double holds would scale past the range: no rounding.
  if (!std::isfinite(r)) r = a;
  return sign * r;
}

// Every unit-converting read and write comes here. The common case (1 to kShortDigits digits,
// a value of a binade of the table clear of the powers of ten, and a scale within the power
// table) takes the same steps as RoundAnyValue, with one table lookup each for the exponent
// and the scale and no call. Its scaled value stays below 10^kShortDigits (times a few units
// in the last place), far below 2^52, so the integer part is the plain truncation, and the
// result is finite and positive before the sign is put back.
constexpr int kShortDigits = 15;

inline double TruncateShort(double x) { return static_cast<double>(static_cast<std::int64_t>(x)); }

// Whether `digits` takes the common case: 1 to kShortDigits digits, once the power table is
// filled. A prepared conversion asks once (PreparedRounding).
bool ShortDigits(int digits) {
  return static_cast<unsigned>(digits - 1) < unsigned{kShortDigits} && startupPow10.ready;
}

// RoundToSigDigits for digits that pass ShortDigits.
double RoundShortDigits(double value, int digits) {
  const double a = std::fabs(value);
  int e;
  if (TableExponent(a, BiasedExponent(a), e)) {
    const int k = digits - e;  // 10^k scales a to an integer of `digits` digits
    const Pow10Table& pow10 = startupPow10.table;
    if (k > 0 && k <= kPow10TableMax) {
      const double s = pow10[static_cast<size_t>(k + kPow10TableMax)];
      return std::copysign(TruncateShort(a * s + 0.5) / s, value);
    }
    if (k == 0) return std::copysign(TruncateShort(a + 0.5), value);
    if (k < 0 && k >= -kPow10TableMax) {
      const double s = pow10[static_cast<size_t>(kPow10TableMax - k)];
      return std::copysign(TruncateShort(a / s + 0.5) * s, value);
    }
  }
  return RoundAnyValue(value, digits, nullptr);
}

}  // namespace

double RoundToSigDigits(double value, int digits) {
  return ShortDigits(digits) ? RoundShortDigits(value, digits) : RoundAnyValue(value, digits, nullptr);
}

RoundingFn PreparedRounding(int digits) {
  return ShortDigits(digits) ? RoundShortDigits : static_cast<RoundingFn>(RoundToSigDigits);
}

double RoundToSigDigits(double value, int digits, std::string* formatOut) {
  return formatOut ? RoundAnyValue(value, digits, formatOut) : RoundToSigDigits(value, digits);
}

std::string FormatPeriod(double value, std::string_view format) {
  std::string s = FormatNumber(value, format);
  std::replace(s.begin(), s.end(), ',', '.');
  return Trim(s);
}

std::vector<std::string> SplitDelimited(std::string_view text, std::string_view delimiter) {
  std::vector<std::string> out;
  if (delimiter.empty()) {
    out.emplace_back(text);
    return out;
  }
  size_t start = 0;
  for (;;) {
    const size_t pos = text.find(delimiter, start);
    if (pos == std::string_view::npos) {
      out.emplace_back(text.substr(start));
      return out;
    }
    out.emplace_back(text.substr(start, pos - start));
    start = pos + delimiter.size();
  }
}

std::string Trim(std::string_view text) {
  size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t')) ++b;
  while (e > b && (text[e - 1] == ' ' || text[e - 1] == '\t')) --e;
  return std::string(text.substr(b, e - b));
}

size_t LeadingNumberLength(std::string_view s) {
  size_t i = 0;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
  size_t digits = 0;
  while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) ++i, ++digits;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) ++i, ++digits;
  }
  if (digits == 0) return 0;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    size_t j = i + 1;
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
    size_t expDigits = 0;
    while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) ++j, ++expDigits;
    if (expDigits > 0) i = j;
  }
  return i;
}

double TextToDouble(std::string_view text) {
  const std::string t = Trim(text);
  const size_t n = LeadingNumberLength(t);
  if (n == 0) return 0.0;
  return std::strtod(t.substr(0, n).c_str(), nullptr);
}

long TextToInteger(std::string_view text) {
  const double v = TextToDouble(text);
  // Conversion to an integer rounds half to even, as the old runtime's CInt did.
  return static_cast<long>(std::nearbyint(v));
}

std::string StripControlChars(std::string_view text, bool keepLineBreaks) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    const auto u = static_cast<unsigned char>(c);
    if (u >= 32 || (keepLineBreaks && (c == '\r' || c == '\n'))) out.push_back(c);
  }
  return out;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    // Equal bytes are equal in any case; only the others ask the locale.
    if (a[i] != b[i] &&
        std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  }
  return true;
}

int FindInList(std::string_view text, const std::vector<std::string>& list) {
  for (size_t i = 0; i < list.size(); ++i) {
    if (EqualsNoCase(text, list[i])) return static_cast<int>(i) + 1;
  }
  return 0;
}

std::string Bracketed(std::string_view text) { return "[" + std::string(text) + "]"; }

}  // namespace velmar
