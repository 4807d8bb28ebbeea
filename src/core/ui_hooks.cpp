#include "core/ui_hooks.h"

#include <atomic>

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
// Installed by a front end for the whole process (worker threads of a batch run share the
// quiet hooks their runner installs), so it is read from any thread.
std::atomic<UIHooks*> g_hooks = nullptr;
}  // namespace

// Each thread has its own headless hooks: their scripted answers and collected messages
// belong to the project of that thread.
HeadlessHooks& DefaultHeadlessHooks() {
  thread_local HeadlessHooks hooks;
  return hooks;
}

UIHooks& Hooks() {
  UIHooks* installed = g_hooks.load(std::memory_order_acquire);
  return installed ? *installed : DefaultHeadlessHooks();
}

void SetHooks(UIHooks* hooks) { g_hooks.store(hooks, std::memory_order_release); }

}  // namespace velmar
