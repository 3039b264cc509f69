// Key list reading and date defaults of the TPS sync choices.
#include "sync/tps_import_options.hpp"

namespace lf {

std::vector<std::string> keysOf(KeyList& list) {
  std::vector<std::string> keys;
  keys.reserve(static_cast<size_t>(list.count()));
  if (!list.hasItems()) return keys;
  for (; !list.isAtEnd(); list.moveNext()) keys.push_back(list.currentValue(1).toString());
  return keys;
}

void defaultTPSImportDates(TPSImportOptions& options, Date today) {
  const Date yesterday{today.datePart().serial - 1.0};
  const Date yearEnd = Date::fromParts(today.year(), 12, 31);
  options.mvarUseTimeEntryDateRange = true;
  options.mvarTimeEntriesSynchDateRangeType = kSynchOnOrAfter;
  options.mvarTimeEntriesSynchStartRange = yesterday;
  options.mvarTimeEntriesSynchEndRange = yearEnd;
  options.mvarUseInvoiceDateRange = true;
  options.mvarInvoicesSynchDateRangeType = kSynchOnOrAfter;
  options.mvarInvoicesSynchStartRange = yesterday;
  options.mvarInvoicesSynchEndRange = yearEnd;
}

}  // namespace lf
