#include "files/file_json.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <new>
#include <system_error>
#include <type_traits>
#include <utility>

#include "core/helpers.h"
#include "core/ui_hooks.h"
#include "files/safe_write.h"
#include "files/text_codec.h"

namespace velmar {
namespace {

constexpr std::string_view kCrLf = "\r\n";
// Error lines quote "the rest of the document" after a bad token. Once the error text holds
// kQuoteBudget characters, later quotes are cut to kShortQuote, so that a large document full
// of bad tokens can't make the error text grow quadratically.
constexpr size_t kQuoteBudget = 65536;
constexpr size_t kShortQuote = 80;

constexpr std::string_view kMarkString = "\" [String]";
constexpr std::string_view kMarkStringArray = "\" [StringArray]";
constexpr std::string_view kMarkFloat = "\" [Float]";
constexpr std::string_view kMarkFloatArray = "\" [FloatArray]";
constexpr std::string_view kMarkInteger = "\" [Integer]";
constexpr std::string_view kMarkIndex = "\" [Index]";
constexpr std::string_view kMarkIndexArray = "\" [IndexArray]";
constexpr std::string_view kMarkObject = "\" [Object]";

// A fault inside a value. It is caught by the object or list that contains the value, which
// adds a line and ends; the enclosing nodes carry on from the present position.
struct ParseFailure {
  std::string description;
};

constexpr bool IsDigit(char32_t c) { return c >= '0' && c <= '9'; }
constexpr bool IsBlank(char32_t c) { return c == '\r' || c == '\n' || c == '\t' || c == ' '; }

char32_t AsciiLower(char32_t c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; }

// Characters that the reader copies as they are, in runs: those of a key, of a quoted text
// and of a bare text, and those a number is read from.
constexpr bool IsKeyCharacter(char32_t c) { return c != '"' && c != '\'' && c != ':' && !IsBlank(c); }
bool IsTextCharacter(char32_t c) { return c != '"' && c != '\\'; }
bool IsBareTextCharacter(char32_t c) { return IsTextCharacter(c) && c != ','; }
bool IsNumberCharacter(char32_t c) {
  return IsDigit(c) || c == '+' || c == '-' || c == '.' || c == 'e' || c == 'E';
}
// IsKeyCharacter for the ASCII bytes, false for the others: one load a character.
constexpr std::array<bool, 256> kKeyByte = [] {
  std::array<bool, 256> table{};
  for (unsigned c = 0; c < 0x80; ++c) table[c] = IsKeyCharacter(c);
  return table;
}();

// CR, LF, tab, space and the parentheses: the blanks that change no state of a comment.
constexpr std::array<bool, 256> kPlainBlankByte = [] {
  std::array<bool, 256> table{};
  for (unsigned char c : {'\r', '\n', '\t', ' ', '(', ')'}) table[c] = true;
  return table;
}();

// Keys and texts are mostly ASCII, which is one byte in UTF-8 as well. A character of the
// document is a code point of program text or a Windows-1252 byte of a file.
void Append(std::string& out, char32_t c) {
  if (c < 0x80)
    out += static_cast<char>(c);
  else
    AppendUtf8(out, c);
}
void Append(std::string& out, unsigned char byte) {
  if (byte < 0x80)
    out += static_cast<char>(byte);
  else
    AppendUtf8(out, Cp1252CodePoint(byte));
}

void AppendHex4(std::string& out, unsigned unit) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  out += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out += kHex[(unit >> shift) & 0xF];
}

// \u escapes carry UTF-16 code units: a character beyond U+FFFF takes two.
void AppendUnicodeEscape(std::string& out, char32_t cp) {
  if (cp >= 0x10000) {
    AppendHex4(out, static_cast<unsigned>(0xD800 + ((cp - 0x10000) >> 10)));
    AppendHex4(out, static_cast<unsigned>(0xDC00 + ((cp - 0x10000) & 0x3FF)));
  } else {
    AppendHex4(out, static_cast<unsigned>(cp));
  }
}

// The two-character escapes of the writer's filters; the apostrophe only with `apostrophe`.
const char* ShortEscape(long c, bool apostrophe) {
  static constexpr std::pair<char, const char*> kEscapes[] = {{'\b', "\\b"}, {'\t', "\\t"}, {'\n', "\\n"},
                                                              {'\f', "\\f"}, {'\r', "\\r"}, {'"', "\\\""},
                                                              {'\\', "\\\\"}};
  for (const auto& [ch, escape] : kEscapes) {
    if (c == ch) return escape;
  }
  return apostrophe && c == '\'' ? "\\'" : nullptr;
}

// The reading of a number text that contains '.', 'e' or 'E' or is longer than nine
// characters: the longest leading part of the form [+-]digits[.digits][e[+-]digits], the rest
// ignored, 0 when there are no digits. Locale-free, like the old runtime's Val.
double NumberValue(std::string_view t) {
  size_t i = 0;
  bool negative = false;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) negative = t[i++] == '-';
  const auto digitsFrom = [&t](size_t at) {
    while (at < t.size() && IsDigit(static_cast<unsigned char>(t[at]))) ++at;
    return at;
  };
  // The text read: "0", the digits with their point (a point last left out) and the exponent.
  const size_t mantissa = i;
  i = digitsFrom(i);
  size_t digits = i - mantissa;
  if (i < t.size() && t[i] == '.') {
    const size_t point = i;
    i = digitsFrom(i + 1);
    digits += i - point - 1;
  }
  if (digits == 0) return 0.0;
  std::string m = "0";
  m.append(t.substr(mantissa, (t[i - 1] == '.' ? i - 1 : i) - mantissa));
  bool negativeExponent = false;
  if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
    size_t j = i + 1;
    if (j < t.size() && (t[j] == '+' || t[j] == '-')) negativeExponent = t[j] == '-', ++j;
    const size_t first = j;
    j = digitsFrom(j);
    if (j > first) {
      m += 'e';
      m.append(t.substr(i + 1, j - i - 1));
    } else {
      negativeExponent = false;
    }
  }
  double v = 0.0;
  const auto r = std::from_chars(m.data(), m.data() + m.size(), v);
  if (r.ec == std::errc::result_out_of_range) {
    // Too large a number reads as infinity, which the typed reads then refuse with a line
    // for its tag; too small a one is 0.
    v = negativeExponent ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return negative ? -v : v;
}

// The reading of a short number text without '.', 'e' or 'E': a 32-bit integer; anything but
// an optional sign and digits is a type mismatch.
std::int32_t IntegerValue(std::string_view t) {
  const size_t first = !t.empty() && (t[0] == '+' || t[0] == '-') ? 1 : 0;
  if (first == t.size() || !std::all_of(t.begin() + static_cast<std::ptrdiff_t>(first), t.end(),
                                        [](char c) { return IsDigit(static_cast<unsigned char>(c)); })) {
    throw ParseFailure{"Type mismatch"};
  }
  std::int32_t v = 0;
  for (size_t i = first; i < t.size(); ++i) v = v * 10 + (t[i] - '0');
  return t[0] == '-' ? -v : v;
}

// An open file, closed when it goes.
struct FileDescriptor {
  explicit FileDescriptor(int descriptor) : fd(descriptor) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (fd >= 0) ::close(fd);
  }
  const int fd;
};

}  // namespace

// ---------------------------------------------------------------------------------------------
// Reader. It walks the document in place, one character a unit: the bytes of a Windows-1252
// file as they were read, or the code points of program text. Positions in error lines count
// characters from 1, and a character becomes UTF-8 only where it goes into a key or a text.
//
// The dialect is forgiving on purpose: comments and parentheses are blanks, keys may be bare or
// single-quoted, strings may be bare, and a fault inside a value ends only the node that holds
// it. Every path that reads a character also moves past it, and every loop stops at the end of
// the document, so no input can make the reader stall; the first end-of-document inside a node
// and a too deep nesting stop the whole reading with one line.
// ---------------------------------------------------------------------------------------------
template <class Unit>
class clsVXFileJSON::Parser {
 public:
  Parser(std::span<const Unit> doc, std::string& errors) : doc_(doc), errors_(errors) {}

  void Run(JsonValue& parsed) {
    errors_.clear();
    SkipBlanks();
    if (!AtEnd() && doc_[pos_] == '{') {
      parsed = JsonValue(ParseObject(1));
    } else if (!AtEnd() && doc_[pos_] == '[') {
      parsed = JsonValue(ParseList(1));
    } else {
      errors_ = "Invalid JSON";
    }
  }

 private:
  bool AtEnd() const { return pos_ >= doc_.size(); }
  // Moves past the run of ASCII characters from pos_ that `plain` accepts and returns it. The
  // bytes of a file are the run itself; code points are narrowed into `buffer`.
  template <class Plain>
  std::string_view AsciiRun(Plain plain, std::string& buffer) {
    const size_t start = pos_;
    size_t end = start;  // a local: the member would be stored at every character
    while (end < doc_.size() && doc_[end] < 0x80 && plain(doc_[end])) ++end;
    pos_ = end;
    if constexpr (std::is_same_v<Unit, unsigned char>) {
      return {reinterpret_cast<const char*>(doc_.data()) + start, pos_ - start};
    } else {
      buffer.assign(pos_ - start, '\0');
      std::transform(doc_.begin() + static_cast<std::ptrdiff_t>(start),
                     doc_.begin() + static_cast<std::ptrdiff_t>(pos_), buffer.begin(),
                     [](Unit c) { return static_cast<char>(c); });
      return buffer;
    }
  }
  char32_t At(size_t ahead) const { return pos_ + ahead < doc_.size() ? doc_[pos_ + ahead] : 0; }
  std::string Position() const { return std::to_string(pos_ + 1); }
  std::string Slice(size_t count) const {
    std::string s;
    for (size_t i = pos_; i < doc_.size() && i - pos_ < count; ++i) Append(s, doc_[i]);
    return s;
  }
  std::string Rest() const { return Slice(errors_.size() < kQuoteBudget ? doc_.size() : kShortQuote); }
  void Line(std::string_view text) {
    errors_ += text;
    errors_ += kCrLf;
  }
  void Stop(std::string_view text) {
    if (!stopped_) Line(text);
    stopped_ = true;
  }
  void Truncated() { Stop("Unexpected end of document at position " + std::to_string(doc_.size() + 1)); }
  // The next characters, compared without regard to case (exactCase false) or exactly.
  bool Ahead(std::u32string_view word, bool exactCase) const {
    if (doc_.size() - pos_ < word.size()) return false;
    for (size_t i = 0; i < word.size(); ++i) {
      const char32_t c = doc_[pos_ + i];
      if ((exactCase ? c : AsciiLower(c)) != word[i]) return false;
    }
    return true;
  }

  // Blanks between tokens: CR, LF, tab, space, parentheses, lone '/' and '*', "//" line
  // comments and "/* */" block comments. The three flags follow the scanner the format was
  // defined by, quirks included: a lone '/' inside a line comment ends it, and "**/" does not
  // close a block comment (the second '*' restarts it). `pending` means the last character
  // that counted was a lone '/' or '*'; any other character inside a comment clears it.
  [[gnu::always_inline]] void SkipBlanks() {
    // Mostly the next token follows at once.
    if (!AtEnd()) {
      const char32_t c = doc_[pos_];
      if (c > ' ' && c != '(' && c != ')' && c != '/' && c != '*') return;
    }
    SkipBlankRun();
  }
  [[gnu::noinline]] void SkipBlankRun() {
    // The position is kept in a local: the document's bytes may alias the member, which would
    // be stored and loaded again at every character.
    const size_t size = doc_.size();
    size_t at = pos_;
    // Outside a comment, line ends, tabs, spaces and parentheses change nothing: the usual run
    // between two tokens is passed by a table of them, and the states below are needed only
    // when a '/' or '*' follows.
    while (at < size && doc_[at] < 0x80 && kPlainBlankByte[doc_[at]]) ++at;
    if (at == size || (doc_[at] != '/' && doc_[at] != '*')) {
      pos_ = at;
      return;
    }
    bool pending = false, inComment = false, inBlock = false;
    for (; at < size; ++at) {
      const char32_t c = doc_[at];
      if (c == ' ' || c == '\t' || c == '(' || c == ')') continue;
      if (c == '\r' || c == '\n') {
        if (!inBlock) pending = inComment = false;
      } else if (c == '/') {
        if (inBlock) {
          if (pending) pending = inComment = inBlock = false;
        } else if (pending) {
          pending = false, inComment = true;
        } else {
          pending = true, inComment = false;
        }
      } else if (c == '*') {
        if (pending) {
          pending = false, inComment = inBlock = true;
        } else {
          pending = true;
        }
      } else if (inComment) {
        pending = false;
        // In a block comment only a '*' can change the state from here: go on at the next.
        if (inBlock) at = NextStar(at + 1) - 1;
      } else {
        break;
      }
    }
    pos_ = at;
  }
  // The position of the next '*' from `from` on, or the end of the document.
  size_t NextStar(size_t from) const {
    if (from >= doc_.size()) return doc_.size();
    if constexpr (std::is_same_v<Unit, unsigned char>) {
      const void* star = std::memchr(doc_.data() + from, '*', doc_.size() - from);
      return star ? static_cast<size_t>(static_cast<const Unit*>(star) - doc_.data()) : doc_.size();
    } else {
      return static_cast<size_t>(
          std::find(doc_.begin() + static_cast<std::ptrdiff_t>(from), doc_.end(), U'*') - doc_.begin());
    }
  }

  JsonObject ParseObject(int depth) {
    SkipBlanks();
    auto object = std::make_shared<clsVXHashTable>();
    object->IgnoreCase(true);
    if (AtEnd() || doc_[pos_] != '{') {
      Line("Invalid Object at position " + Position() + " : " + Rest());
      return object;
    }
    ++pos_;
    std::string keyText;  // a key that is not read in place
    for (;;) {
      SkipBlanks();
      if (AtEnd()) break;
      if (doc_[pos_] == '}') {
        ++pos_;
        return object;
      }
      // The blanks behind a comma would be the comment of the previous key; comments are
      // never kept, so there is nothing to store.
      if (doc_[pos_] == ',') {
        ++pos_;
        SkipBlanks();
      }
      bool valid = true;
      const std::string_view key = ParseKey(valid, keyText);
      if (AtEnd()) break;
      try {
        JsonValue value = ParseValue(depth);
        if (valid) {
          const int error = object->Add(key, std::move(value));
          if (error != kHashOk) throw ParseFailure{std::string(HashTableErrorText(error))};
        }
      } catch (const ParseFailure& f) {
        Line(f.description + ": " + std::string(key));
        return object;
      }
      if (stopped_) return object;
    }
    Truncated();
    return object;
  }

  // A key runs to the ':' behind it. '"' and '\'' toggle one quote state, blanks are dropped
  // everywhere, escapes are not read. A quoted key must be followed by ':'; without it the
  // line is added and the key kept, and the value is read as usual. A ':' inside quotes makes
  // the key invalid: the line is added, the scan goes on to the key's end and the caller
  // reads the value and drops the pair.
  // The key is returned in place in the file when it is a quoted run of key characters, as
  // nearly all are; otherwise it is built in `key`.
  std::string_view ParseKey(bool& valid, std::string& key) {
    SkipBlanks();
    if constexpr (std::is_same_v<Unit, unsigned char>) {
      if (!AtEnd() && doc_[pos_] == '"') {
        const size_t start = pos_ + 1;
        size_t end = start;
        while (end < doc_.size() && kKeyByte[doc_[end]]) ++end;
        if (end < doc_.size() && doc_[end] == '"') {
          const std::string_view inPlace(reinterpret_cast<const char*>(doc_.data()) + start, end - start);
          pos_ = end + 1;
          SkipBlanks();
          if (!AtEnd() && doc_[pos_] == ':') {
            ++pos_;
          } else {
            Line("Invalid Key at position " + Position() + " : " + std::string(inPlace));
          }
          return inPlace;
        }
      }
    }
    key.clear();
    bool quoted = false;
    while (!AtEnd()) {
      const Unit c = doc_[pos_];
      if (c == '"' || c == '\'') {
        ++pos_;
        quoted = !quoted;
        if (!quoted) {
          SkipBlanks();
          if (!AtEnd() && doc_[pos_] == ':') {
            ++pos_;
          } else {
            Line("Invalid Key at position " + Position() + " : " + key);
          }
          return key;
        }
      } else if (c == ':' && !quoted) {
        ++pos_;
        return key;
      } else if (c < 0x80 && IsKeyCharacter(c)) {
        key += AsciiRun([](char32_t k) { return IsKeyCharacter(k); }, scratch_);
      } else {
        if (c == ':' && valid) {
          Line("Invalid Key at position " + Position() + " : " + key);
          valid = false;
        }
        if (!IsBlank(c)) Append(key, c);
        ++pos_;
      }
    }
    return key;
  }

  // A list. A comma with no value before it (leading, or two in a row) leaves a gap, which is
  // filled with an empty text after warning the user; a comma before ']' is harmless.
  JsonList ParseList(int depth) {
    SkipBlanks();
    if (AtEnd() || doc_[pos_] != '[') {
      Line("Invalid Array at position " + Position() + " : " + Slice(20));
      return {};
    }
    ++pos_;
    // The items gather in the list kept for this depth, and the list returned gets its size
    // at once rather than growing item by item.
    if (items_.empty()) items_.resize(kMaxNesting + 1);
    JsonList& items = items_[static_cast<size_t>(depth)];
    items.clear();
    const auto done = [&items] {
      JsonList list(std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
      items.clear();
      return list;
    };
    size_t index = 0;
    for (;;) {
      SkipBlanks();
      while (!AtEnd() && (doc_[pos_] == ']' || doc_[pos_] == ',')) {
        if (doc_[pos_] == ']') {
          ++pos_;
          return done();
        }
        ++pos_;
        ++index;
        while (items.size() < index) {
          Hooks().ShowMessage("Loss of data",
                              "Possible loss of data while importing file at position " + Position(), 0);
          items.emplace_back(std::string());
        }
        SkipBlanks();
      }
      if (AtEnd()) break;
      try {
        items.push_back(ParseValue(depth));
      } catch (const ParseFailure& f) {
        Line(f.description + ": " + Slice(20));
        return done();
      }
      if (stopped_) return done();
    }
    Truncated();
    return done();
  }

  // The kind of a value is told by its first characters. "-.5" is a string: the number test
  // asks for a digit right behind the sign or point.
  JsonValue ParseValue(int depth) {
    SkipBlanks();
    if (AtEnd()) return {};
    const char32_t c = At(0);
    if (IsDigit(c) || ((c == '-' || c == '.') && IsDigit(At(1)))) return ParseNumber();
    const char32_t first = AsciiLower(c);  // the words are looked for only behind their letter
    if ((first == 't' || first == 'f') && (Ahead(U"true", false) || Ahead(U"false", false)))
      return ParseWord(U"true", U"false", "Invalid Boolean");
    if (first == 'n' && Ahead(U"null", false)) return ParseWord(U"null", U"", "Invalid null value");
    if (c == '{' || c == '[') {
      // The recursion is bounded, so a hostile document can't exhaust the stack.
      if (depth >= kMaxNesting) {
        Stop("Nesting deeper than " + std::to_string(kMaxNesting) + " levels at position " + Position());
        return {};
      }
      return c == '{' ? JsonValue(ParseObject(depth + 1)) : JsonValue(ParseList(depth + 1));
    }
    return JsonValue(ParseString());
  }

  // true, false or null in exact case; any other case adds the line and moves one on.
  JsonValue ParseWord(std::u32string_view first, std::u32string_view second, std::string_view what) {
    if (Ahead(first, true)) {
      pos_ += first.size();
      return first == U"null" ? JsonValue(JsonNull{}) : JsonValue(true);
    }
    if (!second.empty() && Ahead(second, true)) {
      pos_ += second.size();
      return JsonValue(false);
    }
    Line(std::string(what) + " at position " + Position() + " : " + Rest());
    ++pos_;
    return {};
  }

  // Nine characters or fewer without '.', 'e' or 'E' make a 32-bit integer, anything else a
  // double. A number that runs to the end of the document is cut off and yields empty.
  JsonValue ParseNumber() {
    // Most numbers of a project are a few plain digits ("0" in a list of results): they are
    // read at once, as the integer the general path below would make of them.
    {
      const size_t size = doc_.size();
      size_t end = pos_;
      std::int32_t v = 0;
      // At most nine digits, which an int32 holds; a tenth digit is a number character and
      // sends the number the general way.
      while (end < size && end - pos_ < 9 && IsDigit(doc_[end]))
        v = v * 10 + static_cast<std::int32_t>(doc_[end++] - '0');
      if (end < size && !IsNumberCharacter(doc_[end])) {
        pos_ = end;
        return JsonValue(v);
      }
    }
    const std::string_view text = AsciiRun([](char32_t c) { return IsNumberCharacter(c); }, scratch_);
    if (AtEnd()) return {};
    if (text.size() > 9 ||
        std::any_of(text.begin(), text.end(), [](char c) { return c == '.' || c == 'e' || c == 'E'; }))
      return JsonValue(NumberValue(text));
    return JsonValue(IntegerValue(text));
  }

  // Four hexadecimal digits of a \u escape (at pos_ + 2), or -1.
  long Hex4(size_t at) const {
    if (doc_.size() - at < 4) return -1;
    long v = 0;
    for (size_t i = at; i < at + 4; ++i) {
      const char32_t c = doc_[i];
      const int d = IsDigit(c) ? static_cast<int>(c - '0')
                    : (AsciiLower(c) >= 'a' && AsciiLower(c) <= 'f')
                        ? static_cast<int>(AsciiLower(c) - 'a' + 10)
                        : -1;
      if (d < 0) return -1;
      v = v * 16 + d;
    }
    return v;
  }

  // A string, quoted or bare. '"' ends either kind; ',' ends a bare one only, so a bare string
  // runs over '}' and ']'. The end of the document inside a string yields an empty text.
  std::string ParseString() {
    SkipBlanks();
    const bool quoted = !AtEnd() && doc_[pos_] == '"';
    if (quoted) ++pos_;
    std::string out;
    while (!AtEnd()) {
      const Unit c = doc_[pos_];
      if (c == '"') {
        ++pos_;
        return out;
      }
      if (c == ',' && !quoted) {
        ++pos_;
        return out;
      }
      if (c < 0x80 && IsTextCharacter(c)) {
        out += quoted ? AsciiRun([](char32_t t) { return IsTextCharacter(t); }, scratch_)
                      : AsciiRun([](char32_t t) { return IsBareTextCharacter(t); }, scratch_);
        continue;
      }
      if (c != '\\') {
        Append(out, c);
        ++pos_;
        continue;
      }
      if (doc_.size() - pos_ < 2) break;
      const Unit e = doc_[pos_ + 1];
      pos_ += 2;
      if (const size_t k = std::u32string_view(U"bfnrt").find(e); k != std::u32string_view::npos) {
        out += "\b\f\n\r\t"[k];
      } else if (e != 'u') {
        Append(out, e);  // '"', '\\', '/', '\'' and any other character as it is
      } else {
        if (doc_.size() - pos_ < 4) break;
        const long unit = Hex4(pos_);
        if (unit < 0) throw ParseFailure{"Invalid escape at position " + std::to_string(pos_ - 1)};
        pos_ += 4;
        char32_t cp = static_cast<char32_t>(unit);
        if (cp >= 0xD800 && cp <= 0xDBFF && At(0) == '\\' && At(1) == 'u') {
          const long low = Hex4(pos_ + 2);
          if (low >= 0xDC00 && low <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + static_cast<char32_t>(low - 0xDC00);
            pos_ += 6;
          }
        }
        AppendUtf8(out, cp);  // a lone surrogate becomes U+FFFD
      }
    }
    pos_ = doc_.size();
    return {};
  }

  std::span<const Unit> doc_;
  std::string scratch_;  // the narrowed runs of program text
  std::vector<JsonList> items_;  // per depth, the items of the list being read
  std::string& errors_;
  size_t pos_ = 0;
  bool stopped_ = false;
};

// ---------------------------------------------------------------------------------------------
// Writer. The layout is that of the files in use, so that a save changes nothing but values:
// objects one key a line, indented by tabs, keys as given; lists on one line with no blanks
// ("Speed": [10,12,14]); an object inside a list on its own line, indent and a blank first,
// with its keys on that line ({"A": 1,"B": 2}); a list inside a list on a new line. The four
// members are the state the layout depends on.
// ---------------------------------------------------------------------------------------------
class clsVXFileJSON::Writer {
 public:
  bool Write(const JsonValue& v, std::string& out) { return Emit(v, true, 0, out); }

 private:
  bool Emit(const JsonValue& v, bool filter, int depth, std::string& out) {
    switch (v.Kind()) {
      case JsonKind::Empty:
        // An empty value (a number cut off by the end of a document) is written as an empty
        // text, which reads back as itself; writing nothing would leave `"key": ,` behind.
        out += "\"\"";
        return true;
      case JsonKind::Null:
        out += "null";
        return true;
      case JsonKind::Boolean:
        out += std::get<bool>(v.data) ? "true" : "false";
        return true;
      case JsonKind::Date:
        out += '"' + DateText(std::get<DateTime>(v.data)) + '"';
        return true;
      case JsonKind::Text:
        out += '"';
        out += filter ? toUnicode(*v.Text()) : *v.Text();
        out += '"';
        return true;
      case JsonKind::Object: {
        const JsonObject o = v.Object();
        if (!o) {
          out += "null";
          return true;
        }
        return depth < kMaxNesting && EmitObject(*o, filter, depth + 1, out);
      }
      case JsonKind::List:
        return depth < kMaxNesting && EmitList(*v.List(), filter, depth + 1, out);
      case JsonKind::Double:
        out += FileNumberText(std::get<double>(v.data));
        return true;
      default:
        out += v.ToText();
        return true;
    }
  }

  bool EmitObject(const clsVXHashTable& o, bool filter, int depth, std::string& out) {
    const bool inline_ = inArray_;
    if (inline_) {
      objectInArray_ = true;
      out += kCrLf;
      out += indent_ + " {";
    } else {
      out += '{';
      indent_ += '\t';
    }
    for (size_t i = 0; i < o.KeyCount(); ++i) {
      if (i > 0) {
        out += ',';
        const std::string comment = o.Comment(o.KeyAt(i - 1));
        if (!comment.empty()) out += "\t/* " + comment + "*/";
      }
      if (!inline_) {
        out += kCrLf;
        out += indent_;
      }
      const std::string_view key = o.KeyAt(i);
      out += '"';
      out += key;
      out += "\": ";
      const JsonValue* value = o.Lookup(key);
      if (value && !Emit(*value, filter, depth, out)) return false;
    }
    if (!inline_) {
      indent_.pop_back();
      out += kCrLf;
      out += indent_;
    }
    out += '}';
    return true;
  }

  bool EmitList(const JsonList& list, bool filter, int depth, std::string& out) {
    if (inArray_) {
      out += kCrLf;
      out += indent_;
      ++nesting_;
    } else {
      inArray_ = true;
    }
    out += '[';
    indent_ += '\t';
    for (size_t i = 0; i < list.size(); ++i) {
      if (i > 0) out += ',';
      if (!Emit(list[i], filter, depth, out)) return false;
    }
    indent_.pop_back();
    if (objectInArray_) {
      out += kCrLf;
      out += indent_;
    }
    out += ']';
    if (nesting_ > 0) {
      --nesting_;
    } else {
      inArray_ = false;
    }
    objectInArray_ = false;
    return true;
  }

  std::string indent_;
  bool inArray_ = false;
  int nesting_ = 0;
  bool objectInArray_ = false;
};

// ---------------------------------------------------------------------------------------------

clsVXFileJSON::clsVXFileJSON() { ResetParsed(); }

void clsVXFileJSON::ResetParsed() { parsed_ = JsonValue(std::make_shared<clsVXHashTable>()); }

// The old routine also meant to drop a line equal to the previous one, but compared it with
// the line break still attached, so repeated lines have always stayed; they stay here too.
void clsVXFileJSON::AddError(std::string_view message) {
  if (!errors_.empty()) errors_ += kCrLf;
  errors_ += message;
}

void clsVXFileJSON::ParseText(std::string_view utf8) {
  try {
    const std::u32string doc = Utf8ToCodePoints(utf8);
    Parser<char32_t>(doc, errors_).Run(parsed_);
  } catch (const std::bad_alloc&) {
    AddError("Out of memory");
  }
}

bool clsVXFileJSON::ReadFile(const std::filesystem::path& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return false;
  const FileDescriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
  if (file.fd < 0) return false;
  try {
    // The whole file in one read into one buffer, which the parser then walks in place.
    std::string bytes;
    struct stat st {};
    if (::fstat(file.fd, &st) == 0 && st.st_size > 0) {
      bytes.resize(static_cast<size_t>(st.st_size));
      size_t got = 0;
      while (got < bytes.size()) {
        const ssize_t n = ::read(file.fd, bytes.data() + got, bytes.size() - got);
        if (n > 0)
          got += static_cast<size_t>(n);
        else if (n == 0 || errno != EINTR)
          break;
      }
      bytes.resize(got);
    }
    if (!bytes.empty())
      Parser<unsigned char>(std::span(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()),
                            errors_)
          .Run(parsed_);
  } catch (const std::bad_alloc&) {
    AddError("Out of memory");
  } catch (...) {
    // Any other failure of the reading ends it quietly, as a missing file does.
  }
  return true;
}

bool clsVXFileJSON::WriteToString(std::string& out) {
  try {
    std::string text;
    if (!Writer().Write(parsed_, text)) return false;
    text += kCrLf;
    out = std::move(text);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool clsVXFileJSON::WriteFile(const std::filesystem::path& path) {
  writeError_.clear();
  try {
    std::string text;
    if (!WriteToString(text)) {
      writeError_ = "The project could not be written: its data nest too deeply.";
      return false;
    }
    const SafeWriteResult r = WriteFileSafely(path, Utf8ToCp1252(text));
    writeError_ = r.message;
    return r.ok;
  } catch (const std::exception& e) {
    writeError_ = std::string("The file could not be written: ") + e.what();
    return false;
  }
}

std::string clsVXFileJSON::toUnicode(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char32_t cp : Utf8ToCodePoints(text)) {
    const int b = Cp1252Byte(cp);
    if (const char* e = ShortEscape(b, true)) {
      out += e;
    } else if (b < 32 || b == '{' || b == '}') {
      AppendUnicodeEscape(out, cp);
    } else {
      AppendUtf8(out, cp);
    }
  }
  return out;
}

std::string clsVXFileJSON::EncodeText(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char32_t cp : Utf8ToCodePoints(text)) {
    if (const char* e = ShortEscape(cp, false)) {
      out += e;
    } else if ((cp >= 32 && cp <= 255 && cp != '{' && cp != '}') || cp == 0xFFFF) {
      AppendUtf8(out, cp);
    } else {
      AppendUnicodeEscape(out, cp);
    }
  }
  return out;
}

// ---------------------------------------------------------------------------------------------
// Typed access by block and tag.
// ---------------------------------------------------------------------------------------------
namespace {

const JsonValue* Lookup(const JsonObject& block, std::string_view tag) {
  return block ? block->Lookup(tag) : nullptr;
}

std::int16_t ToInt16(double v) {
  if (!std::isfinite(v)) return 0;
  return static_cast<std::int16_t>(std::clamp(std::nearbyint(v), -32768.0, 32767.0));
}

// 0-based index of the first label equal to `text` in any case (the last one with
// `lastWins`), or -1.
int LabelIndex(std::string_view text, std::span<const std::string> labels, bool lastWins) {
  int found = -1;
  for (size_t i = 0; i < labels.size(); ++i) {
    if (EqualsNoCase(text, labels[i])) {
      found = static_cast<int>(i);
      if (!lastWins) break;
    }
  }
  return found;
}

// How a stored value reads as a number. Texts must be a number as a whole (blanks around
// it allowed); "inf", "infinity" and "nan" in any case, with a sign, count as numbers that
// are not finite. Booleans, null, dates, lists and objects are of the wrong kind.
enum class NumberRead { Ok, NotFinite, WrongKind };

NumberRead StrictNumber(const JsonValue& v, double& out) {
  out = 0.0;
  switch (v.Kind()) {
    case JsonKind::Empty:
      return NumberRead::Ok;
    case JsonKind::Int16:
      out = std::get<std::int16_t>(v.data);
      return NumberRead::Ok;
    case JsonKind::Int32:
      out = std::get<std::int32_t>(v.data);
      return NumberRead::Ok;
    case JsonKind::Double:
      out = std::get<double>(v.data);
      return std::isfinite(out) ? NumberRead::Ok : NumberRead::NotFinite;
    case JsonKind::Text: {
      const std::string t = Trim(*v.Text());
      std::string_view word = t;
      if (!word.empty() && (word[0] == '+' || word[0] == '-')) word.remove_prefix(1);
      for (const char* nonFinite : {"inf", "infinity", "nan"})
        if (EqualsNoCase(word, nonFinite)) return NumberRead::NotFinite;
      if (t.empty() || LeadingNumberLength(t) != t.size()) return NumberRead::WrongKind;
      out = NumberValue(t);
      return std::isfinite(out) ? NumberRead::Ok : NumberRead::NotFinite;
    }
    default:
      return NumberRead::WrongKind;
  }
}

// What a tag holds, for an error line: a text in quotes (cut at 40 characters), a number,
// or the kind of value.
std::string FoundText(const JsonValue& v) {
  switch (v.Kind()) {
    case JsonKind::Text: {
      const std::string& t = *v.Text();
      return "\"" + (t.size() > 40 ? t.substr(0, 40) + "..." : t) + "\"";
    }
    case JsonKind::Double: {
      const double d = std::get<double>(v.data);
      return std::isnan(d) ? "NaN" : std::isinf(d) ? (d < 0 ? "-infinity" : "infinity") : NumberText(d);
    }
    case JsonKind::Boolean:
      return std::get<bool>(v.data) ? "true" : "false";
    case JsonKind::Null:
      return "null";
    case JsonKind::List:
      return "a list";
    case JsonKind::Object:
      return "an object";
    default:
      return v.ToText();
  }
}

std::string LabelAt(std::span<const std::string> labels, std::int16_t index) {
  return index >= 0 && static_cast<size_t>(index) < labels.size() ? labels[static_cast<size_t>(index)] : "";
}

}  // namespace

std::string clsVXFileJSON::MissingLine(std::string_view tag, std::string_view kindMark) const {
  return group_ + " \"" + std::string(tag) + std::string(kindMark);
}

void clsVXFileJSON::SetValue(const JsonObject& block, std::string_view tag, JsonValue value,
                             bool addIfMissing, std::string_view kindMark) {
  if (block && block->Exists(tag)) {
    block->item(tag, std::move(value));
  } else if (!(block && addIfMissing && block->Add(tag, std::move(value)) == kHashOk) && !hideErrors_) {
    AddError(MissingLine(tag, kindMark));
  }
}

const JsonList* clsVXFileJSON::ArrayOf(const JsonObject& block, std::string_view tag,
                                       std::string_view kindMark) {
  const JsonValue* v = Lookup(block, tag);
  if (v && v->List()) return v->List();
  if (!hideErrors_) AddError(MissingLine(tag, kindMark));
  return nullptr;
}

void clsVXFileJSON::CheckCount(std::string_view tag, std::int16_t expected, size_t actual) const {
  if (expected == -1 || actual == static_cast<size_t>(expected)) return;
  Hooks().ShowMessage("Unexpected number of data in array",
                      "The amount of data in the " + std::string(tag) +
                          " float array differs from the expected value.\r\nExpected: " +
                          std::to_string(expected) + " Actual: " + std::to_string(actual),
                      0);
}

// Fills `out` from the tag's list by `convert`, or with one default element when missing. A
// list longer than the 16-bit count is read up to that count.
template <typename T, typename Convert>
static std::int16_t ReadArray(const JsonList* list, std::vector<T>& out, Convert convert) {
  if (!list) {
    out.assign(1, T{});
    return 0;
  }
  const size_t n = std::min<size_t>(list->size(), 32767);
  out.resize(n);
  for (size_t i = 0; i < n; ++i) out[i] = convert((*list)[i]);
  return static_cast<std::int16_t>(n);
}

std::string clsVXFileJSON::TextOf(const JsonValue& v, std::string_view tag, std::string_view kindMark) {
  const JsonKind k = v.Kind();
  if (k == JsonKind::List || k == JsonKind::Object || k == JsonKind::Null)
    throw ConversionFailure(MissingLine(tag, kindMark) + ": " + FoundText(v) + " is not a text");
  return v.ToText();
}

std::string clsVXFileJSON::GetStringFromBlockTag(const JsonObject& block, std::string_view tag, bool encode,
                                                 std::string_view altTag) {
  std::string value;
  if (const JsonValue* v = Lookup(block, tag)) {
    value = TextOf(*v, tag, kMarkString);
  } else {
    std::string line = MissingLine(tag, kMarkString);
    if (const JsonValue* alt = Lookup(block, altTag)) {
      value = TextOf(*alt, altTag, kMarkString);
      line += " (found)";
    }
    if (!hideErrors_) AddError(line);
  }
  return encode ? EncodeText(value) : value;
}

void clsVXFileJSON::SetStringToBlockTag(const JsonObject& block, std::string_view tag, std::string_view value,
                                        bool addIfMissing) {
  SetValue(block, tag, JsonValue(value), addIfMissing, kMarkString);
}

std::int16_t clsVXFileJSON::GetStringArrayFromBlockTag(const JsonObject& block, std::string_view tag,
                                                       std::vector<std::string>& out, std::int16_t expected) {
  const JsonList* list = ArrayOf(block, tag, kMarkStringArray);
  const std::int16_t n =
      ReadArray(list, out, [&](const JsonValue& v) { return TextOf(v, tag, kMarkStringArray); });
  if (list || !hideErrors_) CheckCount(tag, expected, out.size());
  return n;
}

void clsVXFileJSON::SetStringArrayToBlockTag(const JsonObject& block, std::string_view tag,
                                             std::span<const std::string> values, bool addIfMissing) {
  SetValue(block, tag, JsonValue(JsonList(values.begin(), values.end())), addIfMissing, kMarkStringArray);
}

double clsVXFileJSON::NumberOf(const JsonValue& v, std::string_view tag, std::string_view kindMark) {
  double value = 0.0;
  switch (StrictNumber(v, value)) {
    case NumberRead::Ok:
      return value;
    case NumberRead::NotFinite:
      // A damaged number: the tag keeps the default, and the open tells the user.
      AddError(MissingLine(tag, kindMark) + ": " + FoundText(v) + " is not a finite number; 0 is taken");
      return 0.0;
    case NumberRead::WrongKind:
      break;
  }
  throw ConversionFailure(MissingLine(tag, kindMark) + ": " + FoundText(v) + " is not a number");
}

double clsVXFileJSON::GetFloatFromBlockTag(const JsonObject& block, std::string_view tag, bool report,
                                           std::string_view altTag) {
  if (const JsonValue* v = Lookup(block, tag)) return NumberOf(*v, tag, kMarkFloat);
  double value = 0.0;
  std::string line = MissingLine(tag, kMarkFloat);
  if (const JsonValue* alt = Lookup(block, altTag)) {
    value = NumberOf(*alt, altTag, kMarkFloat);
    line += " (found)";
  }
  if (report && !hideErrors_) AddError(line);
  return value;
}

JsonValue clsVXFileJSON::FiniteValue(double value, std::string_view tag, std::string_view kindMark) {
  if (std::isfinite(value)) return JsonValue(value);
  // Infinity and NaN have no text that reads back as a number: the tag gets 0 and the save
  // says so.
  AddError(MissingLine(tag, kindMark) + ": " + FoundText(JsonValue(value)) +
           " is not a finite number; 0 is written");
  return JsonValue(0.0);
}

void clsVXFileJSON::SetFloatToBlockTag(const JsonObject& block, std::string_view tag, double value,
                                       bool addIfMissing) {
  SetValue(block, tag, FiniteValue(value, tag, kMarkFloat), addIfMissing, kMarkFloat);
}

std::int16_t clsVXFileJSON::GetFloatArrayFromBlockTag(const JsonObject& block, std::string_view tag,
                                                      std::vector<double>& out, std::int16_t expected) {
  const JsonList* list = ArrayOf(block, tag, kMarkFloatArray);
  const std::int16_t n =
      ReadArray(list, out, [&](const JsonValue& v) { return NumberOf(v, tag, kMarkFloatArray); });
  if (list || !hideErrors_) CheckCount(tag, expected, out.size());
  return n;
}

void clsVXFileJSON::SetFloatArrayToBlockTag(const JsonObject& block, std::string_view tag,
                                            std::span<const double> values, bool addIfMissing) {
  JsonList list;
  list.reserve(values.size());
  for (double v : values) list.push_back(FiniteValue(v, tag, kMarkFloatArray));
  SetValue(block, tag, JsonValue(std::move(list)), addIfMissing, kMarkFloatArray);
}

std::int16_t clsVXFileJSON::GetIntegerFromBlockTag(const JsonObject& block, std::string_view tag,
                                                   bool report) {
  if (const JsonValue* v = Lookup(block, tag)) {
    const double value = NumberOf(*v, tag, kMarkInteger);
    // An integer tag holds a 16-bit number; a larger one is an overflow, as it always was
    // for the old runtime's conversion.
    if (value < -32768.5 || value >= 32767.5)
      throw ConversionFailure(MissingLine(tag, kMarkInteger) + ": " + FoundText(*v) +
                              " is outside -32768 to 32767");
    return ToInt16(value);
  }
  if (report && !hideErrors_) AddError(MissingLine(tag, kMarkInteger));
  return 0;
}

void clsVXFileJSON::SetIntegerToBlockTag(const JsonObject& block, std::string_view tag, std::int16_t value,
                                         bool addIfMissing) {
  SetValue(block, tag, JsonValue(value), addIfMissing, kMarkInteger);
}

std::int16_t clsVXFileJSON::GetIndexFromBlockTag(const JsonObject& block, std::string_view tag,
                                                 std::span<const std::string> labels,
                                                 std::int16_t defaultIndex, bool report,
                                                 std::string_view altTag,
                                                 std::span<const std::string> altLabels) {
  if (const JsonValue* v = Lookup(block, tag)) {
    const std::string text = TextOf(*v, tag, kMarkIndex);
    const int index = LabelIndex(text, labels, false);
    if (index < 0 && !labels.empty())
      unknownLabels_.push_back(group_ + " \"" + std::string(tag) + "\": \"" + text + "\"");
    return static_cast<std::int16_t>(std::max(0, index));
  }
  std::int16_t result = defaultIndex == -1 ? std::int16_t{0} : defaultIndex;
  std::string line = MissingLine(tag, kMarkIndex);
  if (const JsonValue* alt = Lookup(block, altTag)) {
    result = static_cast<std::int16_t>(
        std::max(0, LabelIndex(alt->ToText(), altLabels.empty() ? labels : altLabels, false)));
    line += " (found)";
  }
  if (report && !hideErrors_) AddError(line);
  return result;
}

void clsVXFileJSON::SetIndexToBlockTag(const JsonObject& block, std::string_view tag, std::int16_t index,
                                       std::span<const std::string> labels, bool addIfMissing) {
  SetValue(block, tag, JsonValue(LabelAt(labels, index)), addIfMissing, kMarkIndex);
}

std::int16_t clsVXFileJSON::GetIndexArrayFromBlockTag(const JsonObject& block, std::string_view tag,
                                                      std::span<const std::string> labels,
                                                      std::vector<std::int16_t>& out, std::int16_t expected) {
  const JsonList* list = ArrayOf(block, tag, kMarkIndexArray);
  const std::int16_t n = ReadArray(list, out, [&](const JsonValue& v) {
    return static_cast<std::int16_t>(std::max(0, LabelIndex(TextOf(v, tag, kMarkIndexArray), labels, true)));
  });
  if (list || !hideErrors_) CheckCount(tag, expected, out.size());
  return n;
}

void clsVXFileJSON::SetIndexArrayToBlockTag(const JsonObject& block, std::string_view tag,
                                            std::span<const std::int16_t> indexes,
                                            std::span<const std::string> labels, bool addIfMissing) {
  JsonList list;
  list.reserve(indexes.size());
  for (std::int16_t i : indexes) list.emplace_back(LabelAt(labels, i));
  SetValue(block, tag, JsonValue(std::move(list)), addIfMissing, kMarkIndexArray);
}

JsonObject clsVXFileJSON::GetObjectFromBlockTag(const JsonObject& block, std::string_view tag) {
  if (const JsonValue* v = Lookup(block, tag)) return v->Object();
  if (!hideErrors_) AddError("Object: " + std::string(tag) + " not found. Set to [Nothing].");
  return nullptr;
}

void clsVXFileJSON::SetObjectToBlockTag(const JsonObject& block, std::string_view tag, JsonObject object,
                                        bool addIfMissing) {
  SetValue(block, tag, JsonValue(std::move(object)), addIfMissing, kMarkObject);
}

std::string FileNumberText(double value) {
  if (!std::isfinite(value)) return "0";
  std::string text = NumberText(value);
  if (NumberValue(text) == value) return text;
  std::array<char, 32> buf{};
  const auto r = std::to_chars(buf.data(), buf.data() + buf.size(), value);
  return std::string(buf.data(), r.ptr);
}

}  // namespace velmar
