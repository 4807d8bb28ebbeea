// Numbers and dates as text, by the program's format patterns. The decimal separator is
// always '.', whatever the locale, and rounding is half away from zero on the value's
// shortest decimal form (2.675 with "0.00" gives "2.68").
#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace velmar {

// Renders `value` by a pattern such as "0.000", "0.0##", "#####0.0#####", "0.00e-0",
// "0.00e+0", "0000", "########". An empty pattern gives the general number form.
std::string FormatNumber(double value, std::string_view pattern);

// A broken-down local date and time.
struct DateTime {
  int year = 1899, month = 12, day = 30;
  int hour = 0, minute = 0, second = 0;
};

// The local date and time of a calendar time, and of now.
DateTime LocalTime(std::time_t t);
DateTime Now();

// Renders a date/time by a pattern: "yyyymmdd", "hhmm", "yyyy-mm-dd", "hh:mm:ss", "hh:mm",
// "d mmm yyyy", "yymmdd.hhmmss", and the named forms "Medium Date", "Short Time",
// "Medium Time" (names compared without regard to case).
std::string FormatDate(const DateTime& t, std::string_view pattern);

// "Velmar 1.00.0000": the product word and the version as major, minor and revision.
std::string ProgramVersionText();

}  // namespace velmar
