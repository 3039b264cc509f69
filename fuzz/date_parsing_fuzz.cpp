// Date texts of any bytes through the three readers of dates (the permissive reader of the
// wizards and imports, the stored ISO form, the text between # marks of a statement). A date
// that is read must be within the date range and survive the formatter and the arithmetic.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/date_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/variant.hpp"
#include "db/access_sql.hpp"

namespace {

void use(const lf::Date& date) {
  if (!date.isValid()) std::abort();
  lf::formatDate(date, "dddd, mmmm d yyyy h:nn:ss am/pm");
  lf::DateUtilities::addMonths(date, 1);
  lf::DateUtilities::addDays(date, -1);
  lf::DateUtilities::minutesBetween(date, lf::Date{});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (auto date = lf::DateUtilities::parseDateText(text)) use(*date);
  if (auto date = lf::Date::fromIso(text)) use(*date);
  std::string iso;
  if (lf::parseSqlDateText(text, iso)) {
    auto date = lf::Date::fromIso(iso);
    if (!date) std::abort();  // what a statement's date turns into must read back
    use(*date);
  }
  return 0;
}
