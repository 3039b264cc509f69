// The choices of a TPS sync: what the wizard fills and the engine (clsImportTPSInformation)
// runs on. Field names are the engine's; defaults are the engine's own, except the dates,
// which the wizard sets when it opens (defaultTPSImportDates).
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "db/variant.hpp"

namespace lf {

// Date range types of the time entry and invoice filters.
enum SynchDateRangeType : long {
  kSynchOnDate = 0,
  kSynchOnOrAfter = 1,
  kSynchOnOrBefore = 2,
  kSynchBetween = 3,
};

// A key list of source ClientIDs: insertion order, no repeated key.
class ClientKeyList {
 public:
  void clear();
  long count() const { return static_cast<long>(keys_.size()); }
  bool contains(std::string_view key) const { return index_.count(std::string(key)) != 0; }
  // Adds the key unless it is already there.
  void add(std::string key);
  const std::vector<std::string>& keys() const { return keys_; }

 private:
  std::vector<std::string> keys_;
  std::unordered_set<std::string> index_;
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
  ClientKeyList companyCollection;
  ClientKeyList contactsCollection;

  long importCategory = -1;  // the engine takes getCurrentCategoryID when the database is set
  bool importOnlyNewEntries = true;
  bool importOnlyWIPTimeEntries = true;
  // Value 2 routes the wizard through its category step and lets importCategory apply to
  // personal clients; nothing in the TPS wizard sets it.
  long importOption = 1;

  // Duplicate check setting of the company finder, copied from the wizard at finish.
  bool duplicateCheckEnabled = true;
};

// Start yesterday and end December 31 of this year, for both filters, with the range in use
// and type "on or after": what the wizard sets as it opens.
void defaultTPSImportDates(TPSImportOptions& options, Date today);

}  // namespace lf
