// Practice rows the source creators share: the row of a company, contact, invoice or deposit
// found or added, the note items of a client, the amounts of an imported invoice, and the
// texts the database service takes for IDs and numbers.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "sync/sync_engine.hpp"

namespace lf {

class ClientDropDownService;
class DatabaseService;

namespace sourcerows {

// The practice database of the module state. REQUIRES: it is set.
DatabaseService& practice();
ClientDropDownService* dropDown();
// The personal tax year of the locale, or this year without one.
long currentPersonalYear();

std::string idText(long id);
// A number as the service takes it in a text: no trailing zeros.
std::string numberText(double value);

// Adds one item of a note, followed by two line breaks.
void addNoteItem(std::string& note, const std::string& item);

// The practice row of a company or a contact, found in the run's open recordset or read alone.
RowAccess companyRow(DatabaseService& db, std::int32_t companies, long companyID);
RowAccess contactRow(DatabaseService& db, std::int32_t contacts, long contactID);
// The practice row of a staff member; a member added during the run is found too.
RowAccess employeeRow(DatabaseService& db, std::int32_t staff, long employeeID);

// The practice row of an invoice or a deposit, made current: the known row when its key finds
// it, else a new row of the record's client (with the further columns given) whose key is read
// back; the firm and the client are then written. -1 when the row is not there.
long clientRowOf(DatabaseService& db, std::int32_t rs, std::string_view keyColumn, long known,
                 long firm, long company, long contact,
                 std::initializer_list<std::pair<const char*, const char*>> newColumns = {});

// The row of a key in a practice code table (invoice items, billing categories, job codes),
// made current: the known row when its key finds it, else a new one, named, whose key is read
// back. -1 when the row is not there.
long codeRowOf(DatabaseService& db, std::int32_t rs, std::string_view keyColumn, long known,
               std::string_view nameColumn, const std::string& name);

// The billing rate of a staff member under its code: rewritten when the code is there, else
// added, the default rate when `isDefault`. `rates` is open updatable on the member's rates.
void saveUserBillingRate(DatabaseService& db, std::int32_t rates, long userID,
                         const std::string& code, float amount, bool isDefault);

// The amounts of an imported invoice on its current row: the adjusted and the final amounts
// take the subtotal, the taxes and their sum, and the adjusted amount is the one used.
void writeInvoiceAmounts(DatabaseService& db, std::int32_t rs, float subtotal, float taxes);
// The same with the total given apart (a prepared table states it; it is not recomputed).
void writeInvoiceAmounts(DatabaseService& db, std::int32_t rs, double subtotal, double taxes,
                         double withTaxes);

// Writes the note of a company (as RTF) when it holds anything.
void writeCompanyNote(DatabaseService& db, std::int32_t companiesNotes, long companyID,
                      const std::string& note);

}  // namespace sourcerows
}  // namespace lf
