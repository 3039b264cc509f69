// The contact SIN synchronisation object: after an import has written a person and, for a
// couple, the spouse as a contact of their own, the same social insurance numbers stand in
// two places (the person's SocialInsuranceNumber and the spouse's SpouseSIN, and the other
// way round). The object fills a blank one of each pair from the other, over the contact's
// spousal links. It never overwrites a number: a mismatch is left for the user.
#pragma once

#include <memory>

namespace lf {

class ErrorService;
class LocaleService;
class DatabaseService;
class ClientDropDownService;

class clsContactSINSynch {
 public:
  ErrorService* errorClass = nullptr;
  LocaleService* LocaleReference = nullptr;
  DatabaseService* DatabaseReference = nullptr;
  ClientDropDownService* clientDropDownCtrlReference = nullptr;

  // For each link of the contact to another contact with a spousal relationship ("Husband",
  // "Wife", "Spouse", "Commonlaw Partner"): a blank SpouseSIN of the contact takes the
  // spouse's SocialInsuranceNumber and a blank SocialInsuranceNumber of the spouse takes the
  // contact's SpouseSIN; the same for the spouse's SpouseSIN and the contact's number.
  // Answers how many columns were written; 0 when the database is not open.
  long synchContactSIN(long contactID);
};

// Makes the object with the module's error, locale, database and drop-down services.
std::unique_ptr<clsContactSINSynch> contactSINSynchClassInit();

}  // namespace lf
