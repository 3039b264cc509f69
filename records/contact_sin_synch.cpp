// clsContactSINSynch and contactSINSynchClassInit.
#include "records/contact_sin_synch.hpp"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "records/record_support.hpp"

namespace lf {
namespace {

using records::blank;
using records::text;
using records::toLong;

// The family relationships that make the other contact a spouse.
constexpr std::array<std::string_view, 4> kSpouseRelationships = {"Husband", "Wife", "Spouse",
                                                                  "Commonlaw Partner"};

bool isSpouseRelationship(const Variant& relationship) {
  if (blank(relationship)) return false;
  const std::string word = relationship.toString();
  for (std::string_view spouse : kSpouseRelationships)
    if (word == spouse) return true;
  return false;
}

}  // namespace

long clsContactSINSynch::synchContactSIN(long contactID) {
  long written = 0;
  procedure("nvImportlf6.dll-clsContactSINSynch-synchContactSIN", [&] {
    DatabaseService* db = DatabaseReference;
    if (db == nullptr || !db->isOpen()) return;

    std::vector<long> spouses;
    {
      RecordsetScope links(
          *db,
          "SELECT ContactLinks.ContactIDNum, ContactLinks.ContactNum, "
          "ContactLinks.FamilyRelationship FROM ContactLinks WHERE ContactLinks.ContactIDNum = " +
              text(contactID) + " AND Not ContactLinks.ContactNum Is Null;",
          kLockReadOnly);
      if (db->hasRecord(links)) {
        while (!db->isEOF(links)) {
          if (isSpouseRelationship(db->getField(links, "FamilyRelationship")))
            spouses.push_back(toLong(db->getField(links, "ContactNum")));
          db->moveNext(links);
        }
      }
    }
    if (spouses.empty()) return;

    // Only the contact and its spouses: finding them in the whole table cost a scan of every
    // contact for each couple.
    std::string ids = text(contactID);
    for (long spouse : spouses) ids += "," + text(spouse);
    RecordsetScope contacts(
        *db,
        "SELECT Contacts.ContactID, Contacts.SocialInsuranceNumber, Contacts.SpouseSIN FROM "
        "Contacts WHERE Contacts.ContactID IN (" +
            ids + ");",
        kLockOptimistic);
    // Fills `to` on row `toID` from `from` on row `fromID` when `to` is blank.
    auto fill = [&](long toID, std::string_view to, long fromID, std::string_view from) {
      if (!db->findRecord(contacts, "ContactID", text(fromID))) return;
      const Variant source = db->getField(contacts, from);
      if (blank(source)) return;
      if (!db->findRecord(contacts, "ContactID", text(toID))) return;
      if (!blank(db->getField(contacts, to))) return;
      db->setField(contacts, to, source.toString());
      ++written;
    };
    for (long spouse : spouses) {
      resumeNext([&] {
        fill(contactID, "SpouseSIN", spouse, "SocialInsuranceNumber");
        fill(spouse, "SocialInsuranceNumber", contactID, "SpouseSIN");
        fill(spouse, "SpouseSIN", contactID, "SocialInsuranceNumber");
        fill(contactID, "SocialInsuranceNumber", spouse, "SpouseSIN");
      });
    }
  });
  return written;
}

std::unique_ptr<clsContactSINSynch> contactSINSynchClassInit() {
  auto synch = std::make_unique<clsContactSINSynch>();
  const ModuleState& state = moduleState();
  synch->errorClass = state.errorClass;
  synch->LocaleReference = state.LocaleReference;
  synch->DatabaseReference = state.DatabaseReference;
  synch->clientDropDownCtrlReference = state.clientDropDownCtrlReference;
  return synch;
}

}  // namespace lf
