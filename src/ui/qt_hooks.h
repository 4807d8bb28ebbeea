// The UI hooks of the engine as the window program answers them: real message boxes and
// file dialogs, the busy pointer, a breath of the event loop, and the calls back into the
// main window (end the open cell edit, rebuild the results, the Calculate button).
#pragma once

#include <QPointer>
#include <QWidget>

#include "core/ui_hooks.h"

namespace velmar {

class MainWindow;

class QtHooks : public UIHooks {
 public:
  Answer Ask(std::string_view title, std::string_view text, bool withCancel, Answer defaultAnswer) override;
  void ShowMessage(std::string_view title, std::string_view text, int helpContext) override;
  std::string AskFilePath(std::string_view title, std::string_view filter, bool forSaving) override;
  void BusyPointer(bool on) override;
  void Breathe() override;
  void EndCellEdit() override;
  void RefreshResults() override;
  void SetCalculateButton(std::string_view image, std::optional<bool> button5Enabled) override;
  void EnableHullDragTableCommand(bool enabled) override;
  void ShowModeView(int mode) override;
  void ShowPropellerSizing() override;

  void SetWindow(MainWindow* window) { window_ = window; }

 protected:
  QWidget* Parent() const;

 private:
  MainWindow* window_ = nullptr;
  int busy_ = 0;
};

}  // namespace velmar
