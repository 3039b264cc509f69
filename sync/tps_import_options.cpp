// Key list and date defaults of the TPS sync choices.
#include "sync/tps_import_options.hpp"

namespace lf {

void ClientKeyList::clear() {
  keys_.clear();
  index_.clear();
}

void ClientKeyList::add(std::string key) {
  if (index_.insert(key).second) keys_.push_back(std::move(key));
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
