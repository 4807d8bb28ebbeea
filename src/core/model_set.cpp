// The application state, one per thread: the window program and the CLI see one project on
// their main thread, and a batch run calculates one project per worker thread.
#include "core/model_set.h"

namespace velmar {

Application& App() {
  thread_local Application app;
  return app;
}

}  // namespace velmar
