// The calculation error state that collects messages during a prediction run, and the
// warning box that shows them once at the end.
#pragma once

#include <string>
#include <string_view>

namespace velmar {

// The progress text of the running step. A text that lives as long as the program (a literal,
// as nearly every step passes) is kept as its pointer; any other text is copied.
void SetCalcLocation(const char* location);
void SetCalcLocation(std::string_view location);
void AddCalcError(std::string_view text);
void AddCalcErrors(std::string_view stack);
// Composes the pending cause into the error text; true if there was one. Always leaves the
// cause and both flags cleared.
bool CalcErrorsPending();
bool CalcErrorFoundFlag();
// Marks the pending cause as belonging to the current speed row.
void SetCalcErrorAtSpeed(bool atSpeed);
std::string GetCalcErrorText();
std::string GetCalcLocation();
// The location as it stands, for a step that shows its own text for a while and then puts
// the caller's back; a literal is kept as its pointer.
struct SavedCalcLocation {
  const char* literal;
  std::string text;
};
SavedCalcLocation SaveCalcLocation();
void RestoreCalcLocation(const SavedCalcLocation& saved);
std::string GetCalcCause();
// The user's stop request. The RPM solution polls it between its passes; it is read, never
// cleared, by a prediction, and gives no error text.
bool CalcCancelFlag();
void SetCalcCancelFlag(bool cancel);

// Clears the whole state (a new run of a test, a new project).
void ResetCalcErrorState();

// Composes the warning box text; severity 0 "WARNING: ", 1 "DATA ERROR: ", 2 "CALCULATION
// ERROR: ". A speed of -1 adds no speed line.
std::string ComposeWarningText(int severity, std::string_view location, std::string_view message,
                               double speed);
// Shows the composed text through the UI hooks under the title "Warning!". A helpContext of
// -1 is set to 0 (OK button alone). Returns the text shown.
std::string ShowWarning(int severity, std::string_view location, std::string_view message, double speed,
                        int* helpContext = nullptr);

}  // namespace velmar
