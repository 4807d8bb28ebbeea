#include "core/format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace velmar {
namespace {

struct NumberCase {
  double value;
  const char* pattern;
  const char* expected;
};

void CheckNumbers(const std::vector<NumberCase>& cases) {
  for (const auto& c : cases) {
    EXPECT_EQ(FormatNumber(c.value, c.pattern), c.expected)
        << "value " << c.value << ", pattern \"" << c.pattern << '"';
  }
}

TEST(FormatNumberTest, FixedRoundsHalfAwayFromZeroOnShortestDecimal) {
  CheckNumbers({
      {2.675, "0.00", "2.68"},  // stored as 2.67499999...
      {-2.5, "0", "-3"},
      {0.4999, "0", "0"},
      {9.995, "0.00", "10.00"},
      {-0.001, "0.00", "-0.00"},
      {0.1 + 0.2, "0.0000", "0.3000"},
      {0.000123, "0.00000", "0.00012"},
      {123.0, "0000000", "0000123"},
      {12345.0, "00", "12345"},
      {-1e20, "0.0", "-100000000000000000000.0"},
      {123456789.123, "#########0", "123456789"},
      {98765432109876.5, "#########0", "98765432109877"},
      {2.5, "#########0.", "3."},
  });
}

TEST(FormatNumberTest, OptionalDigitsDropLeadingAndTrailingZeros) {
  CheckNumbers({
      {0.0, "########", ""},
      {12.6, "########", "13"},
      {0.5, "#.##", ".5"},
      {1.5, "0.0##", "1.5"},
      {1.1, "0.00#", "1.10"},
      {1.9999, "0.00#", "2.00"},
      {0.1 + 0.2, "0.0##############", "0.3"},
      {1.0 / 3.0, "0.0##############", "0.333333333333333"},  // 15 places
      {0.1234567, "#####0.0#####", "0.123457"},
      {-12.25, "#####0.0#####", "-12.25"},
      {5.0, "0.0 m", "5.0 m"},
  });
}

TEST(FormatNumberTest, Scientific) {
  CheckNumbers({
      {1.27908e-5, "0.00000e+0", "1.27908e-5"},
      {0.00012, "0.00e-0", "1.20e-4"},
      {12000.0, "0.00e-0", "1.20e4"},
      {0.0, "0.00e-0", "0.00e0"},
      {9.99995, "0.0000e+0", "1.0000e+1"},
      {1.00005, "0.0000e+0", "1.0001e+0"},
      {-0.0456, "0.000e+0", "-4.560e-2"},
      {1.5e-300, "0.00e+0", "1.50e-300"},
      {12345.0, "0.00E+00", "1.23E+04"},
  });
}

TEST(FormatNumberTest, GeneralFormAndNonFiniteValues) {
  CheckNumbers({
      {0.0, "", "0"},
      {-1.5, "", "-1.5"},
      {0.1 + 0.2, "", "0.3"},
      {1.0 / 3.0, "", "0.333333333333333"},
      {0.0001, "", "0.0001"},
      {1e-5, "", "1E-05"},
      {-1.5e-7, "", "-1.5E-07"},
      {123456789012345.0, "", "123456789012345"},
      {999999999999999.9, "", "1E+15"},
      {1.2345e20, "", "1.2345E+20"},
      // Non-finite values are named whatever the pattern.
      {std::numeric_limits<double>::infinity(), "0.00", "inf"},
      {-std::numeric_limits<double>::infinity(), "0.00e+0", "-inf"},
      {std::nan(""), "", "nan"},
  });
}

struct DateCase {
  DateTime time;
  const char* pattern;
  const char* expected;
};

TEST(FormatDateTest, PatternsAndNamedForms) {
  const DateTime morning{2026, 11, 21, 8, 5, 9};
  const DateTime evening{2026, 3, 5, 20, 45, 0};
  const DateTime midnight{2026, 1, 2, 0, 7, 3};
  const DateTime noon{2026, 6, 30, 12, 0, 0};
  const std::vector<DateCase> cases = {
      {morning, "yyyy-mm-dd", "2026-11-21"},
      {morning, "hh:mm:ss", "08:05:09"},
      {morning, "d mmm yyyy", "21 Nov 2026"},
      {morning, "yymmdd.hhmmss", "261121.080509"},
      {morning, "hh mm", "08 11"},  // only ':' may stand between hour and minute
      {morning, "Medium Date", "21-Nov-26"},
      {morning, "Medium Time", "08:05 AM"},
      {morning, "MEDIUM TIME", "08:05 AM"},
      {evening, "Medium Date", "05-Mar-26"},
      {evening, "Medium Time", "08:45 PM"},
      {evening, "m/d/yy", "3/5/26"},
      {evening, "h:nn", "20:45"},
      {evening, "mmmm", "March"},
      {evening, "hh am/pm", "08 pm"},
      {midnight, "Medium Time", "12:07 AM"},
      {midnight, "Short Time", "00:07"},
      {midnight, "h:n:s", "0:7:3"},
      {noon, "Medium Time", "12:00 PM"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FormatDate(c.time, c.pattern), c.expected) << "pattern \"" << c.pattern << '"';
  }
}

TEST(FormatDateTest, NowIsAPlausibleLocalTime) {
  const DateTime t = Now();
  EXPECT_GE(t.year, 2024);
  EXPECT_TRUE(t.month >= 1 && t.month <= 12 && t.day >= 1 && t.day <= 31) << t.month << "/" << t.day;
  EXPECT_TRUE(t.hour <= 23 && t.minute <= 59 && t.second <= 60);
}

}  // namespace
}  // namespace velmar
