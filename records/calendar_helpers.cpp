// End time of a duration, best free time of a day, start/end order.
#include "records/calendar_helpers.hpp"

#include <cmath>
#include <string>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"

namespace lf {
namespace {

constexpr long kWindowStart = 9 * 3600;  // 0.375 of a day
constexpr long kWindowEnd = 17 * 3600;   // 0.7083333333333334 of a day

// Seconds into the day of a calendar time, taken through its "hh:nn am/pm" text as the
// calendar compares them (so to the minute).
long secondsOfTime(const Variant& value) {
  auto date = value.toDate();
  if (!date) return -1;
  auto time = DateUtilities::parseDateText(formatDate(*date, "hh:nn am/pm"));
  return time ? std::lround(time->serial * 86400.0) : -1;
}

}  // namespace

Date determineEndTimeFromTimeDuration(const Date& start, float hours) {
  Date result = start;
  procedure("Ledgerfolio.exe-modDatabaseFunctions-determineEndTimeFromTimeDuration", [&] {
    if (hours <= 0) return;
    std::string day = formatDate(start, "Short Date");
    std::string time = formatDate(start, "h:nn am/pm");
    auto midnight = DateUtilities::parseDateText(day + " 12:00 am");
    if (midnight && DateUtilities::datesAreEqual(start, *midnight)) time = "12:00 am";
    auto normalised = DateUtilities::parseDateText(day + " " + time);
    if (!normalised) return;
    result = DateUtilities::addHours(*normalised, hours);
  });
  return result;
}

Date getBestTimeInCalendarForSpecificDayAndUser(long kind, long userID, const Date& date,
                                                float hours) {
  Date result;
  procedure("Ledgerfolio.exe-modDatabaseFunctions-getBestTimeInCalendarForSpecificDayAndUser", [&] {
    DatabaseService* db = moduleState().DatabaseReference;
    if (db == nullptr || !db->isOpen()) return;
    const char* table = kind == 0   ? "Appointments"
                        : kind == 1 ? "Tasks"
                        : kind == 2 ? "Dockets"
                                    : nullptr;
    if (table == nullptr) return;
    const std::string t = table;
    std::string sql = "SELECT " + t + ".UserIDNum, " + t + ".DateFrom, " + t + ".TimeFrom, " + t +
                      ".TimeTo FROM " + t + " WHERE " + t +
                      ".UserIDNum = " + std::to_string(userID) + " AND " + t + ".DateFrom = #" +
                      db->formatDateForSql(date.datePart()) + "# ORDER BY " + t + ".TimeTo;";
    const long wanted = std::lround(static_cast<double>(hours) * 3600.0);
    long candidate = kWindowStart;
    bool found = false;
    std::int32_t rs = db->openRecordset(sql, kCursorKeyset, kLockReadOnly);
    if (db->hasRecord(rs)) {
      while (!db->isEOF(rs)) {
        long from = -1, to = -1;
        if (!GeneralUtilities::isBlank(db->getField(rs, "TimeFrom")) &&
            !GeneralUtilities::isBlank(db->getField(rs, "TimeTo"))) {
          from = secondsOfTime(db->getField(rs, "TimeFrom"));
          to = secondsOfTime(db->getField(rs, "TimeTo"));
        }
        if (from >= 0 && to >= kWindowStart && to <= kWindowEnd) {
          if (from - candidate >= wanted) {
            found = true;
            break;
          }
          candidate = to;
        }
        db->moveNext(rs);
      }
    }
    db->closeRecordset(rs);
    if (!found && kWindowEnd - candidate < wanted) candidate = kWindowStart;
    result = Date{candidate / 86400.0};
  });
  return result;
}

void verifyStartAndEndTime(Date& start, Date& end) {
  if (start.serial > end.serial) std::swap(start, end);
}

}  // namespace lf
