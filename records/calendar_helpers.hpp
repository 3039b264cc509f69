// The calendar arithmetic of the shared database functions: the end of a booked duration,
// the first free time of a user's working day, and the order of a start and an end.
//
// The working day is the window 0.375 to 0.7083333333333334 of a day (09:00 to 17:00).
// Calendar rows keep their times on 30 December 1899, so a time of day is a Date whose serial
// is the fraction of the day.
#pragma once

#include "base/variant.hpp"

namespace lf {

// The start plus `hours`, counted from the start's minute (seconds are dropped). A duration
// of 0 or less gives the start unchanged.
Date determineEndTimeFromTimeDuration(const Date& start, float hours);

// The first time of day from 09:00 at which `hours` fit before the user's next entry of that
// date, or before 17:00, in the Appointments (kind 0), Tasks (1) or Dockets (2) of the practice
// database; 09:00 when nothing fits. Entries are taken in the order of their end time; only
// those ending inside the working window move the candidate. Answers a time of day (on
// 30 December 1899), or 0 on a closed database or an unknown kind.
Date getBestTimeInCalendarForSpecificDayAndUser(long kind, long userID, const Date& date,
                                                float hours);

// Swaps the two when the start is later than the end.
void verifyStartAndEndTime(Date& start, Date& end);

}  // namespace lf
