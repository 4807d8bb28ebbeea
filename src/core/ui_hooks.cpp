#include "core/ui_hooks.h"

namespace velmar {

Answer HeadlessHooks::Ask(std::string_view title, std::string_view text, bool withCancel,
                          Answer defaultAnswer) {
  questions.push_back({std::string(title), std::string(text)});
  if (!scriptedAnswers.empty()) {
    Answer a = scriptedAnswers.front();
    scriptedAnswers.pop_front();
    if (a == Answer::Cancel && !withCancel) a = Answer::No;
    return a;
  }
  return defaultAnswer;
}

void HeadlessHooks::ShowMessage(std::string_view title, std::string_view text, int /*helpContext*/) {
  messages.push_back({std::string(title), std::string(text)});
}

std::string HeadlessHooks::AskFilePath(std::string_view title, std::string_view, bool) {
  questions.push_back({std::string(title), ""});
  if (scriptedPaths.empty()) return {};
  std::string path = std::move(scriptedPaths.front());
  scriptedPaths.pop_front();
  return path;
}

namespace {
UIHooks* g_hooks = nullptr;
}

HeadlessHooks& DefaultHeadlessHooks() {
  static HeadlessHooks hooks;
  return hooks;
}

UIHooks& Hooks() { return g_hooks ? *g_hooks : DefaultHeadlessHooks(); }

void SetHooks(UIHooks* hooks) { g_hooks = hooks; }

}  // namespace velmar
