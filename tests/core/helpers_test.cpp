// Numeric and text helpers whose historical contracts other code relies on.
#include "core/helpers.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/constants.h"

namespace velmar {
namespace {

TEST(Helpers, TrigonometryContracts) {
  EXPECT_EQ(ArcSin(1.5), 0.0);  // out of range gives 0, not an error
  EXPECT_EQ(ArcSin(-1.0001), 0.0);
  EXPECT_DOUBLE_EQ(ArcSin(1.0), 2.0 * std::atan(1.0));
  EXPECT_DOUBLE_EQ(ArcSin(-1.0), -2.0 * std::atan(1.0));
  EXPECT_DOUBLE_EQ(ArcSin(0.5), std::asin(0.5));
  struct Case {
    double y, x, expected;
  };
  const double q = std::atan(1.0);
  const Case cases[] = {{1, 1, q},     {1, -1, 3 * q},  {0, -1, 4 * q}, {-1, -1, -3 * q},
                        {1, 0, 2 * q}, {-1, 0, -2 * q}, {0, 0, 0}};
  for (const Case& c : cases) EXPECT_DOUBLE_EQ(ArcTan2(c.y, c.x), c.expected) << c.y << "," << c.x;
  EXPECT_DOUBLE_EQ(Log10(1000.0), 3.0);
}

TEST(Helpers, SortPairsSortsKeysAndCarriesValues) {
  std::vector<double> k = {3, 1, 2, 0, 9}, v = {30, 10, 20, 0, 90};
  SortPairs(4, k, v);  // only the first four take part
  EXPECT_EQ(k, (std::vector<double>{0, 1, 2, 3, 9}));
  EXPECT_EQ(v, (std::vector<double>{0, 10, 20, 30, 90}));
  EXPECT_EQ(ArrayMax(k), 9.0);
  EXPECT_EQ(ArrayMin(v), 0.0);
}

TEST(Helpers, TextConversions) {
  struct Case {
    const char* text;
    double value;
  };
  const Case cases[] = {{" 12.5 ", 12.5}, {"3.5 kt", 3.5}, {"-2e3x", -2000.0}, {"abc", 0.0},
                        {"", 0.0},        {"1e", 1.0},     {".5", 0.5}};
  for (const Case& c : cases) EXPECT_EQ(TextToDouble(c.text), c.value) << c.text;
  EXPECT_EQ(TextToInteger("2.5"), 2);  // half to even, as the old runtime
  EXPECT_EQ(TextToInteger("3.5"), 4);
  EXPECT_EQ(StripControlChars("a\tb\r\nc", false), "abc");
  EXPECT_EQ(StripControlChars("a\tb\r\nc", true), "ab\r\nc");
  EXPECT_EQ(FindInList("FRESH", {"Salt", "Fresh"}), 2);
  EXPECT_EQ(FindInList("Lake", {"Salt", "Fresh"}), 0);
  EXPECT_EQ(Bracketed("ft"), "[ft]");
  EXPECT_EQ(SplitDelimited("a|b||c", "|"), (std::vector<std::string>{"a", "b", "", "c"}));
  EXPECT_EQ(FormatPeriod(2.675, "0.00"), "2.68");
}

}  // namespace
}  // namespace velmar
