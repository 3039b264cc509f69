// The person columns of a text import row, shared by the personal import and the contact of
// the business import: the identification pass, the value pass that writes a contact's
// columns, the joined address groups and the notes that are appended to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/column_mapping.hpp"
#include "text/import_grid.hpp"

namespace lf {

class DatabaseService;

// The name and identity cells of a row, trimmed.
struct PersonIdentity {
  std::string sin, clientID;
  std::string firstName, middleName, lastName, displayName;
  std::string spouseFirstName, spouseMiddleName, spouseLastName, spouseName;

  // First, last or display name is there: without one the row is skipped.
  bool hasName() const;
  // What the duplicates control is given: the display name, or first and last joined.
  std::string fullName() const;
  // What the new contact is named: the display name, or first, middle and last joined.
  std::string newContactName() const;
  // The spouse's name for addSpouseNameToContact; empty when there is none.
  std::string spouseNameForContact() const;
  // The name of the progress events: first and last, or the display name when both are blank.
  std::string eventName() const;
};

// The identification pass over the row's columns; with a tag, only the columns whose item
// carries it.
PersonIdentity readPersonIdentity(const ColumnMapping& mapping, const ImportGrid& grid, int row,
                                  std::string_view requiredTag = {});

// The text cut to a number of characters; a length of 0 or less leaves it whole.
std::string cutToLength(std::string_view text, int maxLength);

struct ContactValueOptions {
  std::string_view requiredTag;     // only columns of this tag (the business contact) ...
  std::string_view notesTag;        // ... and the notes column of this one
  bool customKeysUpperCase = true;  // custom columns compared as "CONTACTCUSTOM1"
  bool unmatchedToNotes = false;    // unassigned cells go to the notes
  bool captionsInFirstRow = false;  // ... with their caption in front
  bool canada = true;               // SIN form, otherwise SSN form
};

// The value pass of a row on the open Contacts row `handle`: every assigned column is written
// by its key's rule, and the four address groups joined ("line 1, line 3", cut to 255).
// Answers the notes holder: NOTES cells, and unassigned cells when the option says so, each
// with a line break.
std::string writeContactValues(DatabaseService& db, std::int32_t handle,
                               const ColumnMapping& mapping, const ImportGrid& grid, int row,
                               const ContactValueOptions& options);

// The notes holder added to a notes row (`sql` selects it): an existing text is kept, a line
// break and the holder follow it. Nothing happens for a blank holder or when there is no row.
void appendNotes(DatabaseService& db, const std::string& sql, const std::string& holder);

}  // namespace lf
