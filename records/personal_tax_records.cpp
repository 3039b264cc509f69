// addNewPersonalTaxClientForExistingContact, populateNewPersonalTaxListCustomColumns and
// isContactPersonalTaxContactForTaxYear.
#include "records/personal_tax_records.hpp"

#include <string>
#include <string_view>

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "records/client_record_hooks.hpp"
#include "records/contact_records.hpp"
#include "records/lookups.hpp"
#include "records/record_support.hpp"

namespace lf {
namespace {

using records::blank;
using records::dropDown;
using records::locale;
using records::text;
using records::toLong;

constexpr std::string_view kLabel = "Ledgerfolio.exe-modDatabaseClientFunctions-";

std::string label(std::string_view procedureName) {
  return std::string(kLabel) + std::string(procedureName);
}

// The due date of a new return: April 30 of the next year in Canada, April 15 elsewhere.
std::string returnDueDate(long taxYear) {
  const int day = locale().getCountryMode() == kCountryCanada ? 30 : 15;
  return Date::fromParts(static_cast<int>(taxYear + 1), 4, day).toIso();
}

// Adds the row of one per-year table when the contact has none for the year; `fill` sets
// the columns of a new row beyond the key pair.
template <class Fill>
void addPerYearRow(DatabaseService& db, std::string_view table, const std::string& contact,
                   const std::string& year, Fill&& fill) {
  const std::string name(table);
  RecordsetScope rs(db,
                    "SELECT " + name + ".* FROM " + name + " WHERE ContactNum=" + contact +
                        " AND " + name + ".TaxYear = " + year + ";",
                    kLockOptimistic);
  if (db.hasRecord(rs)) return;
  db.addNewRecord(rs);
  db.setNewField(rs, "ContactNum", contact);
  db.setNewField(rs, "TaxYear", year);
  fill(rs.handle());
  db.updateRecord(rs);
}

// The client's checklist of the year: a row for each used step, and no row for a step
// number beyond the year's list.
void copyPersonalTaxChecklist(DatabaseService& db, const std::string& contact,
                              const std::string& year) {
  RecordsetScope steps(db,
                       "SELECT PersonalTaxSteps.* FROM PersonalTaxSteps WHERE "
                       "PersonalTaxSteps.TaxYear = " +
                           year + " ORDER BY PersonalTaxSteps.SortIndex;",
                       kLockReadOnly);
  RecordsetScope tasks(db,
                       "SELECT PersonalTaxTasks.* FROM PersonalTaxTasks "
                       "WHERE PersonalTaxTasks.ContactNum = " +
                           contact + " AND PersonalTaxTasks.TaxYear = " + year + " " +
                           "ORDER BY PersonalTaxTasks.StepNum;",
                       kLockOptimistic);
  long counter = 1;
  if (db.hasRecord(steps)) {
    while (!db.isEOF(steps)) {
      resumeNext([&] {
        // The step's number marks it used: among the step columns read here (TaxYear,
        // StepNum, SortIndex) it is the first that can say so, and 0 means no step.
        const Variant stepNum = db.getField(steps, "StepNum");
        if (!blank(stepNum) && stepNum.toDouble() > 0) {
          const std::string step = stepNum.toString();
          if (!db.findRecord(tasks, "StepNum", step)) {
            db.addNewRecord(tasks);
            // Intended: the new row takes the current personal year, not the year asked for.
            db.setNewField(tasks, "TaxYear", text(locale().getCurrentPersonalYear()));
            db.setNewField(tasks, "ContactNum", contact);
            db.setNewField(tasks, "StepNum", step);
            db.updateRecord(tasks);
          }
        }
      });
      ++counter;
      db.moveNext(steps);
    }
  }
  for (long step = counter; db.findRecord(tasks, "StepNum", text(step)); ++step)
    db.deleteRecord(tasks);
}

}  // namespace

void addNewPersonalTaxClientForExistingContact(long contactID, long categoryID, long taxYear,
                                               long activeStatus) {
  procedure(label("addNewPersonalTaxClientForExistingContact"), [&] {
    if (taxYear < 1900) taxYear = locale().getCurrentPersonalYear();
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const std::string contact = text(contactID);
    const std::string year = text(taxYear);
    {
      RecordsetScope rs(*db, "SELECT Contacts.* FROM Contacts WHERE ContactID=" + contact + ";",
                        kLockReadOnly);
      if (!db->hasRecord(rs)) return;
    }

    addNewContactReferences(contactID);
    callRecordHook(clientRecordHooks().saveContactPersonalTaxRTF, contactID, taxYear, -1L);

    auto keyOnly = [](std::int32_t) {};
    addPerYearRow(*db, "PersonalTaxInfo", contact, year, keyOnly);
    addPerYearRow(*db, "PersonalTaxStatus", contact, year, [&](std::int32_t rs) {
      const std::string due = returnDueDate(taxYear);
      db->setNewField(rs, "ReturnStatus", "6");
      if (activeStatus > 0) db->setNewField(rs, "ActiveStatus", text(activeStatus));
      db->setNewField(rs, "ReturnDate", due);
      db->setNewField(rs, "InHouseDueDate", due);
      db->setNewField(rs, "EmployeeAssigned", "None Assigned");
    });
    addPerYearRow(*db, "PersonalTaxNotes", contact, year, keyOnly);
    addPerYearRow(*db, "PersonalTaxProfileInfo", contact, year, keyOnly);

    for (int custom = 1; custom <= 5; ++custom)
      populateNewPersonalTaxListCustomColumns(contactID, custom, taxYear);
    checkIfPersonalTaxTaskOverdue(contactID);
    copyPersonalTaxChecklist(*db, contact, year);

    addContactLink(contactID, categoryID, -1, -1, "", false);
    dropDown().refreshPersonalList();
  });
}

std::string populateNewPersonalTaxListCustomColumns(long contactID, int customNumber,
                                                    long taxYear) {
  std::string result;
  procedure(label("populateNewPersonalTaxListCustomColumns"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const std::string n = std::to_string(customNumber);
    long kind = 0;
    {
      RecordsetScope rs(*db,
                        "SELECT CustomFields.CustomName1, CustomFields.PersonalTaxTaskCustomType" +
                            n + " FROM CustomFields;",
                        kLockOptimistic);
      if (!db->hasRecord(rs)) {
        db->addNewRecord(rs);
        db->setNewField(rs, "CustomName1", "Custom 1:");
        db->updateRecord(rs);
      }
      if (!db->hasRecord(rs)) return;
      const Variant kindValue = db->getField(rs, "PersonalTaxTaskCustomType" + n);
      if (!blank(kindValue)) kind = toLong(kindValue);
    }
    // Kind 3: the column's value comes from a merge template.
    if (kind != 3) return;
    const auto& fill = clientRecordHooks().fillPersonalTaxTemplate;
    if (!fill) return;

    std::string templateText;
    {
      RecordsetScope rs(*db,
                        "SELECT CustomFields.PersonalTaxTaskCustomInfo" + n + " FROM CustomFields;",
                        kLockReadOnly);
      if (!db->hasRecord(rs)) return;
      const Variant info = db->getField(rs, "PersonalTaxTaskCustomInfo" + n);
      if (blank(info)) return;
      templateText = info.toString();
    }
    result = fill(templateText, contactID, taxYear);

    RecordsetScope status(*db,
                          "SELECT PersonalTaxStatus.Custom" + n +
                              ", PersonalTaxStatus.TaxYear, PersonalTaxStatus.ContactNum FROM "
                              "PersonalTaxStatus WHERE TaxYear = " +
                              text(taxYear) + " AND ContactNum = " + text(contactID) + ";",
                          kLockOptimistic);
    if (db->hasRecord(status)) db->setField(status, "Custom" + n, result);
  });
  return result;
}

bool isContactPersonalTaxContactForTaxYear(long contactID, long taxYear) {
  bool result = false;
  procedure(label("isContactPersonalTaxContactForTaxYear"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const std::string contact = text(contactID);
    const std::string year = text(taxYear);
    {
      RecordsetScope rs(
          *db,
          "SELECT Contacts.ContactID, PersonalTaxInfo.TaxYear, PersonalTaxStatus.TaxYear "
          "FROM (Contacts INNER JOIN PersonalTaxInfo ON Contacts.ContactID = "
          "PersonalTaxInfo.ContactNum) INNER JOIN PersonalTaxStatus ON Contacts.ContactID = "
          "PersonalTaxStatus.ContactNum WHERE ContactID=" +
              contact + " AND PersonalTaxInfo.TaxYear=" + year +
              " AND PersonalTaxStatus.TaxYear=" + year + ";",
          kLockReadOnly);
      if (!db->hasRecord(rs)) return;
    }
    result = true;

    // Repair the link to the year's category when it is missing.
    long yearForCategory = taxYear;
    const long category = dropDown().getCategoryForYear(yearForCategory, "");
    if (!validCategoryID(category)) return;  // no category of that year to link to
    bool linked = false;
    {
      RecordsetScope links(*db,
                           "SELECT ContactLinks.* FROM ContactLinks WHERE "
                           "ContactLinks.ContactIDNum = " +
                               contact + " AND ContactLinks.CategoryNum = " + text(category) + ";",
                           kLockReadOnly);
      if (db->hasRecord(links)) {
        while (!db->isEOF(links) && !linked) {
          linked =
              dropDown().getCategoryInfo(toLong(db->getField(links, "CategoryNum"))).needsRecord;
          db->moveNext(links);
        }
      }
    }
    if (!linked) addContactLink(contactID, category, -1, -1, "", false);
  });
  return result;
}

}  // namespace lf
