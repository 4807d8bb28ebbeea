// The engine's only way to reach a screen: questions, warning boxes, busy pointer, event-loop
// breathing, ending an open cell edit and refreshing views. The GUI implements these with
// windows; HeadlessHooks answers from its caller and collects the warning texts.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmar {

enum class Answer { Yes, No, Cancel };

class UIHooks {
 public:
  virtual ~UIHooks() = default;
  // A Yes/No (or Yes/No/Cancel) question under a title.
  virtual Answer Ask(std::string_view title, std::string_view text, bool withCancel,
                     Answer defaultAnswer) = 0;
  // A message box. `helpContext` 0 means an OK button alone.
  virtual void ShowMessage(std::string_view title, std::string_view text, int helpContext) = 0;
  virtual void BusyPointer(bool /*on*/) {}
  virtual void Breathe() {}
  virtual void EndCellEdit() {}
  // The results tables and graphs of the mode windows are to be rebuilt.
  virtual void RefreshResults() {}
  // The Calculate toolbar image ("Calculate" or "NeedCalculate") and button 5's state:
  // enabled or disabled, or no value to leave it as it is.
  virtual void SetCalculateButton(std::string_view /*image*/, std::optional<bool> /*button5Enabled*/) {}
  // Button 5 alone (the command that needs a hull drag table) with its menu entry.
  virtual void EnableHullDragTableCommand(bool /*enabled*/) {}
  // The window of a mode (0 Resistance, 1 Propulsion) is to be shown; CurrentMode is set.
  virtual void ShowModeView(int /*mode*/) {}
  // Keep a picture of the graph on screen, for the animated change-over after a Calculate.
  virtual void SnapshotGraph() {}
  // A file dialog: the path chosen, or empty when the user cancels. Headless: the next
  // scripted path, else empty.
  virtual std::string AskFilePath(std::string_view /*title*/, std::string_view /*filter*/,
                                  bool /*forSaving*/) {
    return {};
  }
  // The propeller sizing window, shown modally before a propulsion analysis when a sizing is
  // set. Headless: closed at once without sizing.
  virtual void ShowPropellerSizing() {}
};

// Answers questions from a script (first in, first out), else with the default answer,
// and keeps every message shown.
class HeadlessHooks : public UIHooks {
 public:
  struct Message {
    std::string title, text;
  };
  Answer Ask(std::string_view title, std::string_view text, bool withCancel, Answer defaultAnswer) override;
  void ShowMessage(std::string_view title, std::string_view text, int helpContext) override;

  std::string AskFilePath(std::string_view title, std::string_view filter, bool forSaving) override;

  std::deque<Answer> scriptedAnswers;
  std::deque<std::string> scriptedPaths;
  std::vector<Message> questions;
  std::vector<Message> messages;
};

// The hooks in force: those a front end installed for the process, else the calling
// thread's own HeadlessHooks.
UIHooks& Hooks();
// Installs `hooks` for every thread (not owned; nullptr restores the built-in headless hooks).
void SetHooks(UIHooks* hooks);
// The built-in headless hooks of the calling thread, for tests and the command line.
HeadlessHooks& DefaultHeadlessHooks();

}  // namespace velmar
