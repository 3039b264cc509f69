// The case-insensitive search of the merge language on a text shaped like a template with an
// embedded picture: a letter's first byte frequent in one case and absent in the other.
#include "merge/text_search.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace lf::merge {
namespace {

// Lower-case hex lines, as a word processor writes a picture, about `bytes` long.
std::string pictureHex(size_t bytes) {
  std::string out;
  std::uint32_t state = 7;
  while (out.size() < bytes) {
    state = state * 1103515245u + 12345u;
    out += "0123456789abcdef"[(state >> 16) & 15];
    if (out.size() % 130 == 128) out += "\r\n";
  }
  return out;
}

TEST(TextSearch, FindsEitherCaseBehindAPictureOfTheOtherCase) {
  std::string text = pictureHex(1 << 20);
  const size_t first = text.size() / 2, second = text.size() - 100;
  text.replace(first, 6, "DOCKET");
  text.replace(second, 6, "docket");
  EXPECT_EQ(findNoCase(text, "Docket"), first);
  EXPECT_EQ(findNoCase(text, "Docket", first + 1), second);
  EXPECT_EQ(findNoCase(text, "Docket", second + 1), std::string_view::npos);
  EXPECT_TRUE(containsNoCase(text, "dOcKeT"));
  // The needle's first byte is everywhere, the needle nowhere.
  EXPECT_EQ(findNoCase(pictureHex(1 << 20), "deadbeefcafe0123456789"), std::string_view::npos);
  EXPECT_EQ(replaceNoCase(text, "Docket", "Time Entry"), 2);
  EXPECT_EQ(text.substr(first, 10), "Time Entry");
}

TEST(TextSearch, EdgesOfTheText) {
  EXPECT_EQ(findNoCase("abc", "ABC"), 0u);
  EXPECT_EQ(findNoCase("abc", "BC", 1), 1u);
  EXPECT_EQ(findNoCase("abc", "c", 3), std::string_view::npos);
  EXPECT_EQ(findNoCase("abc", "abcd"), std::string_view::npos);
  EXPECT_EQ(findNoCase("abc", "", 3), 3u);
  EXPECT_EQ(findNoCase("\xC2\xAB\xC2\xBB", "\xC2\xBB"), 2u);
}

TEST(TextSearch, ReplacesInPlaceWhetherTheTextGrowsOrShrinks) {
  std::string text = "a«x»b«X»c«x»";
  EXPECT_EQ(replaceNoCase(text, "«x»", "LONGER TEXT"), 3);
  EXPECT_EQ(text, "aLONGER TEXTbLONGER TEXTcLONGER TEXT");
  EXPECT_EQ(replaceNoCase(text, "longer text", "y", 2), 2);
  EXPECT_EQ(text, "aybycLONGER TEXT");
  EXPECT_EQ(replaceNoCase(text, "Y", "", -1, 2), 1);  // the first one lies before `from`
  EXPECT_EQ(text, "aybcLONGER TEXT");
  EXPECT_EQ(replaceNoCase(text, "zzz", "w"), 0);
  EXPECT_EQ(text, "aybcLONGER TEXT");
}

}  // namespace
}  // namespace lf::merge
