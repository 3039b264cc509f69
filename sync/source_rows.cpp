// Practice rows the source creators share.
#include "sync/source_rows.hpp"

#include <fmt/format.h>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "db/database_service.hpp"
#include "host/client_drop_down.hpp"
#include "host/locale_service.hpp"
#include "sync/sync_record_calls.hpp"

namespace lf::sourcerows {

DatabaseService& practice() {
  return *moduleState().DatabaseReference;
}

ClientDropDownService* dropDown() {
  return moduleState().clientDropDownCtrlReference;
}

long currentPersonalYear() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr ? locale->getCurrentPersonalYear() : Date::today().year();
}

std::string idText(long id) {
  return std::to_string(id);
}

std::string numberText(double value) {
  return fmt::format("{}", value);
}

void addNoteItem(std::string& note, const std::string& item) {
  note += item;
  note += "\r\n\r\n";
}

RowAccess companyRow(DatabaseService& db, std::int32_t companies, long companyID) {
  return RowAccess(db, companies, "CompanyID", companyID,
                   "SELECT Companies.* FROM Companies WHERE CompanyID=" + idText(companyID) + ";");
}

RowAccess contactRow(DatabaseService& db, std::int32_t contacts, long contactID) {
  return RowAccess(db, contacts, "ContactID", contactID,
                   "SELECT Contacts.* FROM Contacts WHERE ContactID=" + idText(contactID) + ";");
}

RowAccess employeeRow(DatabaseService& db, std::int32_t staff, long employeeID) {
  return RowAccess(db, staff, "ContactID", employeeID,
                   "SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE ContactID=" +
                       idText(employeeID) + ";");
}

long clientRowOf(DatabaseService& db, std::int32_t rs, std::string_view keyColumn, long known,
                 long firm, long company, long contact,
                 std::initializer_list<std::pair<const char*, const char*>> newColumns) {
  long key = known;
  if (known <= 0 || !db.findRecord(rs, keyColumn, idText(known))) {
    db.addNewRecord(rs);
    db.setNewField(rs, "CompanyIDNum", idText(company));
    db.setNewField(rs, "ContactIDNum", idText(contact));
    for (const auto& [column, value] : newColumns) db.setNewField(rs, column, value);
    db.updateRecord(rs);
    key = static_cast<long>(db.getField(rs, keyColumn).toLong());
  }
  if (!db.findRecord(rs, keyColumn, idText(key))) return -1;
  db.setField(rs, "FirmIDNum", idText(firm));
  db.setField(rs, "CompanyIDNum", idText(company));
  db.setField(rs, "ContactIDNum", idText(contact));
  return key;
}

long codeRowOf(DatabaseService& db, std::int32_t rs, std::string_view keyColumn, long known,
               std::string_view nameColumn, const std::string& name) {
  long key = known;
  if (known <= 0 || !db.findRecord(rs, keyColumn, idText(known))) {
    db.addNewRecord(rs);
    db.setNewField(rs, nameColumn, name);
    key = static_cast<long>(db.getField(rs, keyColumn).toLong());
    db.updateRecord(rs);
  }
  return db.findRecord(rs, keyColumn, idText(key)) ? key : -1;
}

void saveUserBillingRate(DatabaseService& db, std::int32_t rates, long userID,
                         const std::string& code, float amount, bool isDefault) {
  if (db.findRecord(rates, "UserBillingRateCode", code)) {
    db.setField(rates, "UserBillingRate", numberText(amount));
    return;
  }
  db.addNewRecord(rates);
  db.setNewField(rates, "UserIDNum", idText(userID));
  db.setNewField(rates, "UserBillingRateCode", code);
  db.setNewField(rates, "UserBillingRate", numberText(amount));
  db.setNewField(rates, "DefaultBillingRate", isDefault ? "True" : "False");
  db.updateRecord(rates);
}

void writeInvoiceAmounts(DatabaseService& db, std::int32_t rs, float subtotal, float taxes) {
  writeInvoiceAmounts(db, rs, subtotal, taxes, subtotal + taxes);
}

void writeInvoiceAmounts(DatabaseService& db, std::int32_t rs, double subtotal, double taxes,
                         double withTaxes) {
  db.setField(rs, "UseAdjustedAmount", "True");
  for (const char* amounts : {"InvoiceAdjustedAmount", "InvoiceFinalAmount"}) {
    const std::string a(amounts);
    db.setField(rs, a + "SubTotal", numberText(subtotal));
    db.setField(rs, a + "TaxDetailID", "-1");
    db.setField(rs, a + "Taxes", numberText(taxes));
    db.setField(rs, a + "WithTaxes", numberText(withTaxes));
  }
  db.setField(rs, "InvoiceDiffAmount", "0");
}

void writeCompanyNote(DatabaseService& db, std::int32_t companiesNotes, long companyID,
                      const std::string& note) {
  if (GeneralUtilities::isBlank(note)) return;
  RowAccess notes(db, companiesNotes, "CompanyNum", companyID,
                  "SELECT CompaniesNotes.CompanyNum, CompaniesNotes.Notes FROM CompaniesNotes "
                  "WHERE CompanyNum=" +
                      idText(companyID) + ";");
  if (notes.found()) db.setField(notes, "Notes", syncrecords::convertToRTF(note));
}

}  // namespace lf::sourcerows
