#include "base/text_encoding.hpp"

#include <gtest/gtest.h>

#include <string>

namespace lf {
namespace {

using namespace std::string_literals;

TEST(TextFromOutside, ValidUtf8StandsAsItIs) {
  const std::string text = "Caf\xC3\xA9 \xE2\x82\xAC 5 \xF0\x9F\x98\x80";
  EXPECT_TRUE(isCleanText(text));
  EXPECT_EQ(textFromOutside(text), text);
}

TEST(TextFromOutside, InvalidBytesAreReadAsWindows1252) {
  EXPECT_EQ(textFromOutside("Caf\xE9"), "Caf\xC3\xA9");    // é
  EXPECT_EQ(textFromOutside("\x80 5"), "\xE2\x82\xAC 5");  // €
  EXPECT_EQ(textFromOutside("\x93Quoted\x94"), "\xE2\x80\x9CQuoted\xE2\x80\x9D");
  EXPECT_EQ(textFromOutside("\x81"), "\xC2\x81");  // undefined in the code page: kept as U+0081
  EXPECT_EQ(textFromOutside("\xFF"), "\xC3\xBF");
  // A valid sequence beside an invalid byte keeps its meaning.
  EXPECT_EQ(textFromOutside("\xC3\xA9\xE9"), "\xC3\xA9\xC3\xA9");
}

TEST(TextFromOutside, MalformedSequencesAreNotTakenForUtf8) {
  EXPECT_FALSE(isCleanText("\xC0\xAF"));          // overlong
  EXPECT_FALSE(isCleanText("\xED\xA0\x80"));      // surrogate
  EXPECT_FALSE(isCleanText("\xF4\x90\x80\x80"));  // above U+10FFFF
  EXPECT_FALSE(isCleanText("\xE2\x82"));          // cut short
  EXPECT_EQ(textFromOutside("\xE2\x82"), "\xC3\xA2\xE2\x80\x9A");
}

TEST(TextFromOutside, NulIsDroppedNotAnEnd) {
  EXPECT_FALSE(isCleanText("Smith\0Jones"s));
  EXPECT_EQ(textFromOutside("Smith\0Jones\0\0"s), "SmithJones");
}

TEST(TextFromOutside, AByteIsJudgedWhereverItStandsInALongText) {
  // Long ASCII runs are checked several bytes at a time: a NUL, a Windows-1252 byte or a
  // sequence split across such a step is still seen at every position.
  const std::string ascii(40, 'a');
  for (size_t at = 0; at <= 24; ++at) {
    EXPECT_FALSE(isCleanText(ascii.substr(0, at) + "\0"s + ascii)) << at;
    EXPECT_EQ(textFromOutside(ascii.substr(0, at) + "\xE9" + ascii),
              ascii.substr(0, at) + "\xC3\xA9" + ascii)
        << at;
    EXPECT_TRUE(isCleanText(ascii.substr(0, at) + "\xE2\x82\xAC" + ascii)) << at;
  }
  EXPECT_TRUE(isCleanText(ascii));
}

TEST(TextFromOutside, TheResultIsCleanAndStable) {
  std::string all;
  for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
  const std::string once = textFromOutside(all);
  EXPECT_TRUE(isCleanText(once));
  std::string twice = once;
  makeCleanText(twice);
  EXPECT_EQ(twice, once);
}

}  // namespace
}  // namespace lf
