// clsImportPersonalTextFile.ImportData: people from the mapped grid into Contacts.
#include <functional>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/import_duplicates_control.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "host/run_report.hpp"
#include "records/contact_records.hpp"
#include "records/contact_sin_synch.hpp"
#include "records/name_parsing.hpp"
#include "records/personal_tax_records.hpp"
#include "summaries/contact_summaries.hpp"
#include "text/cls_import_personal_text_file.hpp"
#include "text/duplicate_question.hpp"
#include "text/person_columns.hpp"
#include "text/row_write_group.hpp"

namespace lf {

RowOutcome clsImportPersonalTextFile::importRow(int row, std::string& skipReason) {
  DatabaseService& db = *moduleState().DatabaseReference;
  const PersonIdentity person = readPersonIdentity(mapping, grid, row);
  if (!person.hasName()) {
    skipReason = "no first, last or full name";
    return RowOutcome::Skipped;
  }

  bool create = true;
  bool import = true;
  long contact = findDuplicatePerson(contactDuplicatesControl, person, create, import);

  if (create) {
    contact = addNewContact(person.newContactName(), importCategory, -1);
    const std::string spouse = person.spouseNameForContact();
    if (!spouse.empty()) addSpouseNameToContact(contact, spouse);
  } else if (importIsPersonalTax &&
             !isContactPersonalTaxContactForTaxYear(contact, importTaxYear)) {
    addNewPersonalTaxClientForExistingContact(contact, importCategory, importTaxYear, -1);
  }
  if (!import) {
    skipReason = "an existing client, not updated";
    return RowOutcome::Skipped;
  }
  if (ImportingClientName) ImportingClientName(person.eventName());

  const std::string id = std::to_string(contact);
  const std::string sql = importIsPersonalTax
                              ? "SELECT Contacts.*, PersonalTaxInfo.ContactNum "
                                "FROM Contacts INNER JOIN PersonalTaxInfo ON Contacts.ContactID = "
                                "PersonalTaxInfo.ContactNum "
                                "WHERE PersonalTaxInfo.TaxYear=" +
                                    std::to_string(importTaxYear) +
                                    " AND Contacts.ContactID=" + id + ";"
                              : "SELECT Contacts.* FROM Contacts "
                                "WHERE Contacts.ContactID=" +
                                    id + ";";
  RecordsetScope contactRow(db, sql, kLockOptimistic);
  if (db.hasRecord(contactRow)) {
    ContactValueOptions options;
    options.unmatchedToNotes = putUnmatchedFieldsInNotes;
    options.captionsInFirstRow = reader.firstRowFieldNames;
    options.canada = moduleState().LocaleReference == nullptr ||
                     moduleState().LocaleReference->getCountryMode() == 1;
    const std::string notes = writeContactValues(db, contactRow, mapping, grid, row, options);
    appendNotes(db, "SELECT ContactsNotes.* FROM ContactsNotes WHERE ContactNum=" + id + ";",
                notes);
    contactSINSynchClassInit()->synchContactSIN(contact);
    saveContactPersonalRTF(contact, -1);
    saveContactPersonalTaxRTF(contact, importTaxYear, -1);
    saveContactBusinessRTF(contact, -1, -1, false);
    if (finishImportingClient) finishImportingClient(person.eventName());
    if (finishImportingClientContact) finishImportingClientContact(contact, person.sin);
  }
  contactRow.close();

  if (importCategory >= 0) addContactLink(contact, importCategory, -1, -1, "", false);
  if (contactDuplicatesControl != nullptr)
    contactDuplicatesControl->addContact(contact, person.firstName, person.lastName, person.sin,
                                         person.clientID);
  return create ? RowOutcome::Created : RowOutcome::Updated;
}

void clsImportPersonalTextFile::ImportData(bool& succeeded) {
  importSuccessful = importSelectedRows(
      [this] {
        if (!isValidImportYear(importTaxYear) && moduleState().LocaleReference != nullptr)
          importTaxYear = moduleState().LocaleReference->getCurrentPersonalYear();
        setupCategoryParameters();
      },
      [this](int row, std::string& skipReason) { return importRow(row, skipReason); }, counters,
      eventPump);
  succeeded = importSuccessful;
}

}  // namespace lf
