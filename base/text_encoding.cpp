// Reading outside text as UTF-8, with Windows-1252 for the bytes that are not.
#include "base/text_encoding.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lf {
namespace {

// Windows-1252 bytes 0x80 to 0x9F; the undefined ones keep their own number.
constexpr char32_t kWindows1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The length of the valid UTF-8 sequence that starts at bytes[i], or 0 when none does.
// Overlong forms, surrogates and code points above U+10FFFF are not valid.
std::size_t sequenceLength(std::string_view bytes, std::size_t i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(bytes[k]); };
  const unsigned char lead = byte(i);
  if (lead < 0x80) return 1;
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;  // the range of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (bytes.size() - i < length) return 0;
  if (byte(i + 1) < low || byte(i + 1) > high) return 0;
  for (std::size_t k = 2; k < length; ++k)
    if (byte(i + k) < 0x80 || byte(i + k) > 0xBF) return 0;
  return length;
}

void appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

}  // namespace

bool isCleanText(std::string_view bytes) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    // Eight bytes at a time while they are ASCII without NUL, the bulk of most text.
    constexpr std::uint64_t kOnes = 0x0101010101010101ULL, kHighs = 0x8080808080808080ULL;
    while (bytes.size() - i >= 8) {
      std::uint64_t word;
      std::memcpy(&word, bytes.data() + i, 8);
      if (((word | ((word - kOnes) & ~word)) & kHighs) != 0) break;
      i += 8;
    }
    if (i >= bytes.size()) break;
    const unsigned char c = static_cast<unsigned char>(bytes[i]);
    if (c >= 0x01 && c < 0x80) {
      ++i;
      continue;
    }
    const std::size_t length = c == 0 ? 0 : sequenceLength(bytes, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

std::string textFromOutside(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 4);
  std::size_t i = 0;
  while (i < bytes.size()) {
    const unsigned char c = static_cast<unsigned char>(bytes[i]);
    if (c == 0) {
      ++i;
      continue;
    }
    if (const std::size_t length = sequenceLength(bytes, i); length > 0) {
      out.append(bytes.substr(i, length));
      i += length;
      continue;
    }
    appendUtf8(out, c < 0xA0 ? kWindows1252High[c - 0x80] : static_cast<char32_t>(c));
    ++i;
  }
  return out;
}

void makeCleanText(std::string& text) {
  if (!isCleanText(text)) text = textFromOutside(text);
}

}  // namespace lf
