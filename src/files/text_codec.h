// Text at the file boundary: files are single-byte Windows-1252, the program holds UTF-8.
// These helpers convert between the two and walk UTF-8 text one code point at a time.
#pragma once

#include <string>
#include <string_view>

namespace velmar {

// The Windows-1252 byte of a code point, or -1 when the code page has none. The five bytes the
// code page leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) stand for U+0081 ... U+009D, as
// the system's conversion maps them, so every byte survives a round trip.
int Cp1252Byte(char32_t cp);
char32_t Cp1252CodePoint(unsigned char byte);

// Bytes of a file to program text and back; a character without a byte becomes `replacement`.
std::string Cp1252ToUtf8(std::string_view bytes);
std::string Utf8ToCp1252(std::string_view utf8, char replacement = '?');

// Decodes UTF-8; an ill-formed sequence yields U+FFFD for its first byte and decoding resumes
// at the next byte, so any input decodes.
std::u32string Utf8ToCodePoints(std::string_view utf8);
void AppendUtf8(std::string& out, char32_t cp);

}  // namespace velmar
