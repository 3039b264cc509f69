// The records that address blocks and summaries are made from: the statements that select a
// contact, an employee, a company or the firm, the choice between employee and contact row,
// field reading, and the default-contact questions the summaries ask of a company.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"

namespace lf {

std::string employeeStatement(long employeeID);
std::string contactStatement(long contactID);
std::string firmStatement(long firmID);
std::string companyStatement(long companyID);

// A field's text: a null reads as the empty text.
std::string fieldText(DatabaseService& db, std::int32_t handle, std::string_view field);
// Whether any of the fields is not blank.
bool anyNotBlank(DatabaseService& db, std::int32_t handle,
                 std::initializer_list<std::string_view> fields);

// The row a contact summary is made from: the employee's when employeeID is valid, otherwise
// the contact's. Empty when neither id is valid.
struct PersonSource {
  long id = -1;  // the key of the row: employee or contact id
  bool isEmployee = false;
  std::unique_ptr<RecordsetScope> record;
};
PersonSource openPersonSource(DatabaseService& db, long contactID, long employeeID, int lockType);

// Stores a summary in `column` of the notes row (ContactsNotes, CompaniesNotes) that
// `notesHandle` holds, adding the row with keyColumn = id when there is none.
void storeOnNotesRow(DatabaseService& db, std::int32_t notesHandle, std::string_view keyColumn,
                     long id, std::string_view column, const std::string& text);

// The default contact of a company (first link row with DefaultContact True), 0 when none;
// read only, nothing is picked or written.
long defaultContactOfCompany(long companyID);
// Whether a link row of the company and contact has DefaultContact True.
bool contactIsDefaultOfCompany(long companyID, long contactID);

}  // namespace lf
