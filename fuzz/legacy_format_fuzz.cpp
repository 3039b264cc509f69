// The legacy Format() patterns: the first eight bytes are a double (any bits: NaN, infinities,
// the far ends of the range), the rest the pattern. The value goes through the number
// formatter, as a date serial through the date formatter and the date arithmetic, and as a
// variant of each kind through formatValue.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "base/date_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/variant.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  double value = 0;
  if (size < sizeof value) return 0;
  std::memcpy(&value, data, sizeof value);
  const std::string_view pattern(reinterpret_cast<const char*>(data) + sizeof value,
                                 size - sizeof value);
  lf::formatNumber(value, pattern);
  const lf::Date date{value};
  lf::formatDate(date, pattern);
  date.toIso();
  date.weekday();
  lf::DateUtilities::addMonths(date, static_cast<long>(size) - 64);
  lf::DateUtilities::addHours(date, value);
  lf::DateUtilities::addDays(date, value > 0 ? static_cast<long>(size) : -static_cast<long>(size));
  lf::DateUtilities::minutesBetween(date, lf::Date::fromParts(2010, 12, 31));
  lf::formatValue(lf::Variant::real(value), pattern);
  lf::formatValue(lf::Variant::date(date), pattern);
  lf::formatValue(lf::Variant::text(std::string(pattern)), "Long Date");
  lf::Variant::real(value).toLong();
  lf::Variant::date(date).toString();
  return 0;
}
