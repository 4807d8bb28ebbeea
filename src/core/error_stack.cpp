#include "core/error_stack.h"

namespace velmar {
namespace {

bool IsControl(char c) { return static_cast<unsigned char>(c) < 32; }

// Whether `message` occurs in `text` once the control characters of `text` are left out.
// A read that fails in every speed row asks this on each push, so it compares in place
// instead of building the stripped copy of the whole stack each time.
bool ContainsIgnoringControls(std::string_view text, std::string_view message) {
  for (char c : message)
    if (IsControl(c)) return false;  // the stripped text holds no control character
  // An occurrence in the text as it stands holds no control character, so it is one in the
  // stripped text too; that is the common case, a word pushed again by every speed row.
  if (text.find(message) != std::string_view::npos) return true;
  // Otherwise an occurrence broken by control characters: it starts at the message's first
  // character (not a control character), found by the library's search.
  for (size_t start = text.find(message.front()); start != std::string_view::npos;
       start = text.find(message.front(), start + 1)) {
    size_t i = start, j = 0;
    while (j < message.size() && i < text.size()) {
      if (IsControl(text[i])) {
        ++i;
      } else if (text[i] == message[j]) {
        ++i;
        ++j;
      } else {
        break;
      }
    }
    if (j == message.size()) return true;
  }
  return false;
}

}  // namespace

void ErrorStack::Push(std::string_view message) {
  if (!(found_ && ContainsIgnoringControls(text_, message))) {
    text_ += '\t';
    text_ += message;
    text_ += "\r\n";
  }
  found_ = true;
}

}  // namespace velmar
