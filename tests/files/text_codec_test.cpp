#include "files/text_codec.h"

#include <gtest/gtest.h>

#include <string>

namespace velmar {
namespace {

TEST(TextCodecTest, EveryWindows1252ByteSurvivesARoundTrip) {
  std::string all;
  for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
  EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
  EXPECT_EQ(Cp1252ToUtf8("\x80\xB0\xB7\x9F"), "\u20AC\u00B0\u00B7\u0178");
  EXPECT_EQ(Utf8ToCp1252("\u2192x"), "?x");
}

TEST(TextCodecTest, IllFormedUtf8DecodesToReplacementCharacters) {
  const struct {
    std::string in;
    std::u32string out;
  } cases[] = {
      {"a\xC3", U"a\uFFFD"},                    // cut sequence
      {"\xC0\xAF", U"\uFFFD\uFFFD"},            // overlong '/'
      {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},  // surrogate
      {"\xF0\x9F\x98\x80", U"\U0001F600"},
      {"\xFF", U"\uFFFD"},
  };
  for (const auto& c : cases) EXPECT_EQ(Utf8ToCodePoints(c.in), c.out);
}

}  // namespace
}  // namespace velmar
