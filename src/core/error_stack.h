// The error stack every data class carries: reads of missing or invalid values push the
// field's long name here; the prediction driver tests ErrorsFound after a batch of reads.
#pragma once

#include <string>
#include <string_view>

namespace velmar {

class ErrorStack {
 public:
  void Clear() {
    text_.clear();
    found_ = false;
  }
  // Returns the found flag and clears it; the text stays until it is taken.
  bool ErrorsFound() {
    const bool f = found_;
    found_ = false;
    return f;
  }
  bool Peek() const { return found_; }
  // Returns the stack text and empties it.
  std::string Take() {
    std::string t = std::move(text_);
    text_.clear();
    return t;
  }
  const std::string& Text() const { return text_; }
  // Adds one message: tab, message, CR LF. While the flag is set, a message already contained
  // in the stack (control characters stripped) is not added twice. The flag is set always.
  void Push(std::string_view message);

 private:
  std::string text_;
  bool found_ = false;
};

}  // namespace velmar
