// The steps every source takes to store one of its clients as a personal client (a contact):
// the category it falls into, the contact found or made, its links, its personal-tax row and
// its summaries. A source gives its name, its fields and the tax status it reads.
#include <string>

#include "db/database_service.hpp"
#include "host/client_drop_down.hpp"
#include "records/lookups.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_engine.hpp"
#include "sync/sync_record_calls.hpp"

namespace lf {

namespace rec = syncrecords;
using namespace sourcerows;

long SyncEngine::personalClientCategory(long categoryID, long companyID) {
  if (validCategoryID(categoryID) || validCompanyID(companyID) || dropDown() == nullptr)
    return categoryID;
  long year = currentPersonalYear();
  return dropDown()->getCategoryForYear(year, "");
}

long SyncEngine::storePersonalClientContact(
    DatabaseService& db, std::int32_t contacts, const std::string& name, long contactID,
    long companyID, long category, long taxStatus,
    const std::function<void(std::int32_t contactRow)>& writeRow) {
  setProgressCaption("Synchronizing " + name);
  const long contact = contactID > 0 && contactRow(db, contacts, contactID).found()
                           ? contactID
                           : rec::addNewContact(name);
  if (validCompanyID(companyID)) rec::addContactLink(contact, -1, companyID);
  if (validCategoryID(category)) {
    rec::addContactLink(contact, category, -1);
    if (dropDown() != nullptr && dropDown()->getCategoryInfo(category).needsRecord)
      rec::addNewPersonalTaxClientForExistingContact(contact, category, currentPersonalYear(),
                                                     taxStatus);
  }
  if (writeRow) {
    RowAccess row = contactRow(db, contacts, contact);
    if (row.found()) writeRow(row);
  }
  rec::saveContactBusinessRTF(contact);
  rec::saveContactPersonalRTF(contact);
  rec::saveContactPersonalTaxRTF(contact, currentPersonalYear());
  setRefreshData(true);
  return contact;
}

}  // namespace lf
