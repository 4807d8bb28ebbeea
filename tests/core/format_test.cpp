// Numbers and dates as text through the product's format patterns; the cases are the tables
// tests/data/format_numbers.txt and format_dates.txt.
#include "core/format.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "core/test_support.h"

namespace velmar {
namespace {

using testing::ReadTable;

TEST(FormatNumberTest, TableOfValuesPatternsAndTexts) {
  for (const auto& row : ReadTable("format_numbers.txt", 3))
    EXPECT_EQ(FormatNumber(row.Num(0), row[1]), row[2]) << row.where << ": pattern \"" << row[1] << '"';
}

TEST(FormatDateTest, TableOfPatternsAndNamedForms) {
  for (const auto& row : ReadTable("format_dates.txt", 3)) {
    DateTime t;
    ASSERT_EQ(std::sscanf(row[0].c_str(), "%d-%d-%d %d:%d:%d", &t.year, &t.month, &t.day, &t.hour, &t.minute,
                          &t.second),
              6)
        << row.where;
    EXPECT_EQ(FormatDate(t, row[1]), row[2]) << row.where << ": pattern \"" << row[1] << '"';
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
