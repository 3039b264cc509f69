// The choices of a TPS sync: what the wizard fills and the engine (clsImportTPSInformation)
// runs on. Field names are the engine's; defaults are the engine's own, except the dates,
// which the wizard sets when it opens (defaultTPSImportDates).
#pragma once

#include <string>
#include <vector>

#include "base/variant.hpp"
#include "host/key_list.hpp"

namespace lf {

// Date range types of the time entry and invoice filters.
enum SynchDateRangeType : long {
  kSynchOnDate = 0,
  kSynchOnOrAfter = 1,
  kSynchOnOrBefore = 2,
  kSynchBetween = 3,
};

struct TPSImportOptions {
  // Stage groups.
  bool syncObjectsContacts = true;
  bool syncObjectsTimeEntries = true;
  bool syncObjectsInvoices = true;
  bool syncObjectsWorkCodes = true;

  // Source export file, and whether it is open and usable (set by the engine when the
  // location is set).
  std::string TPSDatabaseLocation;
  bool useTPSDatabase = false;

  // Time entry filter.
  bool mvarUseTimeEntryDateRange = true;
  long mvarTimeEntriesSynchDateRangeType = kSynchOnOrAfter;
  Date mvarTimeEntriesSynchStartRange;
  Date mvarTimeEntriesSynchEndRange;

  // Invoice filter; deposits share it.
  bool mvarUseInvoiceDateRange = true;
  long mvarInvoicesSynchDateRangeType = kSynchOnOrAfter;
  Date mvarInvoicesSynchStartRange;
  Date mvarInvoicesSynchEndRange;

  // Clients chosen in the wizard: source ClientIDs to import as business or as personal.
  KeyList companyCollection;
  KeyList contactsCollection;

  long importCategory = -1;  // the engine takes getCurrentCategoryID when the database is set
  bool importOnlyNewEntries = true;
  bool importOnlyWIPTimeEntries = true;
  // Value 2 routes the wizard through its category step and lets importCategory apply to
  // personal clients; nothing in the TPS wizard sets it.
  long importOption = 1;

  // Duplicate check setting of the company finder, copied from the wizard at finish.
  bool duplicateCheckEnabled = true;
};

// The keys of a key list, in order. Moves the list's cursor.
std::vector<std::string> keysOf(KeyList& list);

// Start yesterday and end December 31 of this year, for both filters, with the range in use
// and type "on or after": what the wizard sets as it opens.
void defaultTPSImportDates(TPSImportOptions& options, Date today);

}  // namespace lf
