// Node texts of any bytes against the business-name word pattern (PCRE2, case-insensitive).
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "sync/word_pattern.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lf::looksLikeBusinessName(std::string_view(reinterpret_cast<const char*>(data), size));
  return 0;
}
