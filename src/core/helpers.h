// Small numeric and text helpers shared by the whole engine. Their contracts reproduce the
// program's historical behaviour (ArcSin of an argument out of range is 0, not an error).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmar {

double Log10(double x);
// 0 outside [-1, 1]; +-Pi/2 at +-1; otherwise atan(x / sqrt(1 - x*x)).
double ArcSin(double x);
// Quadrant-correct arctangent built on 4 atan(1).
double ArcTan2(double y, double x);
double ArrayMax(const std::vector<double>& a);
double ArrayMin(const std::vector<double>& a);
// Bubble sort of the first `count` keys ascending, applying the same swaps to values.
void SortPairs(int count, std::vector<double>& keys, std::vector<double>& values);

// Rounds to `digits` significant digits, half away from zero. `formatOut`, when given,
// receives the format text that shows the rounded value without loss.
double RoundToSigDigits(double value, int digits);
double RoundToSigDigits(double value, int digits, std::string* formatOut);
// The rounding a conversion prepared for `digits` takes for each of its values: the same
// numbers as RoundToSigDigits(value, digits), with the tests of `digits` made here once.
using RoundingFn = double (*)(double value, int digits);
RoundingFn PreparedRounding(int digits);

// Value formatted by pattern with '.' as the decimal separator, trimmed: the form for files.
std::string FormatPeriod(double value, std::string_view format);
std::vector<std::string> SplitDelimited(std::string_view text, std::string_view delimiter);
// Trimmed text to a number: the whole text when it is numeric, else its leading number, else 0.
// Length of the leading decimal number of `s` (sign, digits, one point, exponent), 0 if none.
size_t LeadingNumberLength(std::string_view s);
double TextToDouble(std::string_view text);
long TextToInteger(std::string_view text);
std::string StripControlChars(std::string_view text, bool keepLineBreaks);
// 1-based index of `text` in `list`, compared without regard to case; 0 if absent.
int FindInList(std::string_view text, const std::vector<std::string>& list);
// The text between "[" and "]" (empty when there is no "[").
std::string Bracketed(std::string_view text);
std::string Trim(std::string_view text);
bool EqualsNoCase(std::string_view a, std::string_view b);

}  // namespace velmar
