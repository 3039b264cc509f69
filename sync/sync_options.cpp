// Key list reading, the row-by-row date filter and the date defaults of the sync choices.
#include "sync/sync_options.hpp"

namespace lf {

std::vector<std::string> keysOf(KeyList& list) {
  std::vector<std::string> keys;
  keys.reserve(static_cast<size_t>(list.count()));
  if (!list.hasItems()) return keys;
  for (; !list.isAtEnd(); list.moveNext()) keys.push_back(list.currentValue(1).toString());
  return keys;
}

bool dateInSynchRange(const Date& date, bool useRange, long rangeType, const Date& start,
                      const Date& end) {
  if (!useRange) return true;
  const double day = date.datePart().serial;
  const double first = start.datePart().serial, second = end.datePart().serial;
  switch (rangeType) {
    case kSynchOnDate:
      return day == first;
    case kSynchOnOrAfter:
      return day >= first;
    case kSynchOnOrBefore:
      return day <= first;
    case kSynchBetween:
      return day >= first && day <= second;
    default:
      return true;
  }
}

void defaultSyncDates(SyncOptions& options, Date today) {
  const Date yesterday{today.datePart().serial - 1.0};
  const Date yearEnd = Date::fromParts(today.year(), 12, 31);
  auto setRange = [&](bool& use, long& type, Date& start, Date& end) {
    use = true;
    type = kSynchOnOrAfter;
    start = yesterday;
    end = yearEnd;
  };
  setRange(options.mvarUseTimeEntryDateRange, options.mvarTimeEntriesSynchDateRangeType,
           options.mvarTimeEntriesSynchStartRange, options.mvarTimeEntriesSynchEndRange);
  setRange(options.mvarUseInvoiceDateRange, options.mvarInvoicesSynchDateRangeType,
           options.mvarInvoicesSynchStartRange, options.mvarInvoicesSynchEndRange);
}

}  // namespace lf
