// The choices of a sync: what the wizard fills and the engine runs on. Every source has the
// same choices; the field names are the engines' own, and a source's engine names the export
// location and its use flag with its word (TPSDatabaseLocation, useTPSDatabase). Defaults are
// the engine's own, except the dates, which the wizard sets when it opens
// (defaultSyncDates).
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

struct SyncOptions {
  // Stage groups.
  bool syncObjectsContacts = true;
  bool syncObjectsTimeEntries = true;
  bool syncObjectsInvoices = true;
  bool syncObjectsWorkCodes = true;

  // Source export file, and whether it is open and usable (set by the engine when the
  // location is set).
  std::string databaseLocation;
  bool useDatabase = false;

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

  // Clients chosen in the wizard: source client IDs to import as business or as personal.
  KeyList companyCollection;
  KeyList contactsCollection;

  long importCategory = -1;  // the engine takes getCurrentCategoryID when the database is set
  bool importOnlyNewEntries = true;
  bool importOnlyWIPTimeEntries = true;
  // Value 2 routes the wizard through its category step and lets importCategory apply to
  // personal clients; nothing in the wizards sets it.
  long importOption = 1;

  // Duplicate check setting of the company finder, copied from the wizard at finish.
  bool duplicateCheckEnabled = true;
};

// The keys of a key list, in order. Moves the list's cursor.
std::vector<std::string> keysOf(KeyList& list);

// True when the date passes a range filter of type 0 to 3 (on, on or after, on or before,
// between), compared by day; any date passes when the range is not in use. The sources that
// filter row by row instead of in SQL use this.
bool dateInSynchRange(const Date& date, bool useRange, long rangeType, const Date& start,
                      const Date& end);

// Start yesterday and end December 31 of this year, for both filters, with the range in use
// and type "on or after": what the wizard sets as it opens.
void defaultSyncDates(SyncOptions& options, Date today);

}  // namespace lf
