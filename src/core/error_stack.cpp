#include "core/error_stack.h"

#include "core/helpers.h"

namespace velmar {

void ErrorStack::Push(std::string_view message) {
  if (!(found_ && StripControlChars(text_, false).find(message) != std::string::npos)) {
    text_ += '\t';
    text_ += message;
    text_ += "\r\n";
  }
  found_ = true;
}

}  // namespace velmar
