// Option value checks of the lfimport commands.
#include "cli/option_checks.hpp"

#include <charconv>
#include <cstdint>
#include <limits>

#include "base/text_encoding.hpp"

namespace lf::cli {

CLI::Validator wholeNumber(long long low, long long high, const std::string& what) {
  return CLI::Validator(
      [low, high, what](std::string& text) -> std::string {
        long long value = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        if (text.empty() || error != std::errc() || stop != end || value < low || value > high)
          return "'" + textFromOutside(text) + "' is not " + what;
        return {};
      },
      what);
}

CLI::Validator recordID() {
  return wholeNumber(1, std::numeric_limits<std::int32_t>::max(),
                     "a record ID (a whole number above 0)");
}

CLI::Validator provinceIndex() {
  return wholeNumber(0, 12, "a province index from 0 to 12");
}

CLI::Validator outsideText() {
  CLI::Validator clean(
      [](std::string& text) {
        makeCleanText(text);
        return std::string();
      },
      "");
  return clean;
}

}  // namespace lf::cli
