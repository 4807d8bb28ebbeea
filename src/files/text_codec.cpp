#include "files/text_codec.h"

#include <array>

namespace velmar {
namespace {

// Code points of the bytes 0x80 ... 0x9F; the rest of the code page equals Latin-1.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t kReplacement = 0xFFFD;

}  // namespace

char32_t Cp1252CodePoint(unsigned char byte) {
  return byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80] : byte;
}

int Cp1252Byte(char32_t cp) {
  if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<int>(cp);
  for (size_t i = 0; i < kHighControls.size(); ++i) {
    if (kHighControls[i] == cp) return static_cast<int>(0x80 + i);
  }
  return -1;
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) cp = kReplacement;
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

std::u32string Utf8ToCodePoints(std::string_view s) {
  std::u32string out;
  out.reserve(s.size());
  size_t i = 0;
  while (i < s.size()) {
    const auto b = static_cast<unsigned char>(s[i]);
    int extra = 0;
    char32_t cp = b;
    char32_t min = 0;
    if (b >= 0xF0 && b <= 0xF4) {
      extra = 3, cp = b & 0x07, min = 0x10000;
    } else if (b >= 0xE0 && b <= 0xEF) {
      extra = 2, cp = b & 0x0F, min = 0x800;
    } else if (b >= 0xC2 && b <= 0xDF) {
      extra = 1, cp = b & 0x1F, min = 0x80;
    } else if (b >= 0x80) {
      extra = -1;
    }
    bool ok = extra >= 0 && i + static_cast<size_t>(extra) < s.size();
    for (int k = 1; ok && k <= extra; ++k) {
      const auto c = static_cast<unsigned char>(s[i + static_cast<size_t>(k)]);
      ok = (c & 0xC0) == 0x80;
      cp = (cp << 6) | (c & 0x3F);
    }
    if (ok && (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))) ok = false;
    if (ok) {
      out += cp;
      i += static_cast<size_t>(extra) + 1;
    } else {
      out += kReplacement;
      ++i;
    }
  }
  return out;
}

std::string Cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (char b : bytes) AppendUtf8(out, Cp1252CodePoint(static_cast<unsigned char>(b)));
  return out;
}

std::string Utf8ToCp1252(std::string_view utf8, char replacement) {
  std::string out;
  out.reserve(utf8.size());
  for (char32_t cp : Utf8ToCodePoints(utf8)) {
    const int b = Cp1252Byte(cp);
    out += b < 0 ? replacement : static_cast<char>(b);
  }
  return out;
}

}  // namespace velmar
