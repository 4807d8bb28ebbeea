// Calculation error state and warning box.
#include "core/diagnostics.h"

#include "core/model_set.h"
#include "core/format.h"
#include "core/speed_performance.h"
#include "core/ui_hooks.h"

namespace velmar {
namespace {

struct CalcErrorState {
  const char* staticLocation = "";  // the location when it is a literal, else nullptr
  std::string location;             // the location when it is not
  std::string_view Location() const {
    return staticLocation ? std::string_view(staticLocation) : std::string_view(location);
  }
  std::string cause;
  std::string text;
  bool found = false;
  bool atSpeed = false;
  bool cancel = false;
};

// One state per thread, like the project it reports on (App()).
CalcErrorState& State() {
  thread_local CalcErrorState state;
  return state;
}

constexpr const char* kCrLf = "\r\n";

}  // namespace

void SetCalcLocation(const char* location) {
  CalcErrorState& s = State();
  s.staticLocation = location;
  s.cause.clear();
  s.found = false;
  s.atSpeed = false;
}

void SetCalcLocation(std::string_view location) {
  CalcErrorState& s = State();
  if (s.staticLocation || s.location != location) s.location = location;
  s.staticLocation = nullptr;
  s.cause.clear();
  s.found = false;
  s.atSpeed = false;
}

void AddCalcError(std::string_view text) {
  CalcErrorState& s = State();
  s.cause += '\t';
  s.cause += text;
  s.cause += kCrLf;
  s.found = true;
  s.atSpeed = true;
}

void AddCalcErrors(std::string_view stack) {
  CalcErrorState& s = State();
  s.cause += stack;
  s.cause += kCrLf;
  s.text = s.cause;
  s.found = true;
}

bool CalcErrorsPending() {
  CalcErrorState& s = State();
  bool pending = false;
  if (s.found) {
    std::string t = "\t" + std::string(s.Location()) + kCrLf + kCrLf + "Cause: " + kCrLf + s.cause;
    if (s.atSpeed) {
      double speed = 0.0;
      if (auto sp = App().primary.SpeedPerformance; sp && sp->count() > 0) {
        try {
          speed = sp->Speed(-1, -1);
        } catch (...) {
          speed = 0.0;  // a current row outside the table names no speed
        }
      }
      t += std::string(kCrLf) + kCrLf + "Speed: " + FormatNumber(speed, "");
    }
    t += kCrLf;
    s.text = std::move(t);
    pending = true;
  }
  s.cause.clear();
  s.found = false;
  s.atSpeed = false;
  return pending;
}

bool CalcErrorFoundFlag() { return State().found; }
void SetCalcErrorAtSpeed(bool atSpeed) { State().atSpeed = atSpeed; }
std::string GetCalcErrorText() { return State().text; }
std::string GetCalcLocation() { return std::string(State().Location()); }
SavedCalcLocation SaveCalcLocation() {
  const CalcErrorState& s = State();
  return s.staticLocation ? SavedCalcLocation{s.staticLocation, {}} : SavedCalcLocation{nullptr, s.location};
}
void RestoreCalcLocation(const SavedCalcLocation& saved) {
  if (saved.literal) {
    SetCalcLocation(saved.literal);
  } else {
    SetCalcLocation(std::string_view(saved.text));
  }
}
std::string GetCalcCause() { return State().cause; }
void ResetCalcErrorState() { State() = CalcErrorState{}; }
bool CalcCancelFlag() { return State().cancel; }
void SetCalcCancelFlag(bool cancel) { State().cancel = cancel; }

std::string ComposeWarningText(int severity, std::string_view location, std::string_view message,
                               double speed) {
  static const char* const kSeverity[] = {"WARNING: ", "DATA ERROR: ", "CALCULATION ERROR: "};
  std::string t = (severity >= 0 && severity <= 2) ? kSeverity[severity] : "";
  t += kCrLf;
  t += location;
  t += std::string(kCrLf) + kCrLf + "LOCATION: " + kCrLf;
  t += message;
  if (speed != -1.0) t += std::string(kCrLf) + kCrLf + "SPEED: " + kCrLf + FormatNumber(speed, "");
  return t;
}

std::string ShowWarning(int severity, std::string_view location, std::string_view message, double speed,
                        int* helpContext) {
  int context = helpContext ? *helpContext : -1;
  if (context == -1) context = 0;
  if (helpContext) *helpContext = context;
  std::string text = ComposeWarningText(severity, location, message, speed);
  Hooks().ShowMessage("Warning!", text, context);
  return text;
}

}  // namespace velmar
