// One row of a parameter check and the status codes, on their own so that the estimate lists
// can carry check rows without the whole check frame.
#pragma once

#include <string>

namespace velmar {

// Status codes of a check and of each of its rows.
inline constexpr int kCheckOK = 0;
inline constexpr int kCheckUncertain = 1;
inline constexpr int kCheckFail = 2;
inline constexpr int kCheckMissing = 3;

// One row of a check: the parameter's name, its range ("lower··upper", each in the row's
// format), its value in that format, and its status.
struct ParameterCheckRow {
  std::string name;
  std::string range;
  std::string value;
  int status = kCheckOK;
};

}  // namespace velmar
