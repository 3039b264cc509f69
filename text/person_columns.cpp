// The person columns of a text import row.
#include "text/person_columns.hpp"

#include <initializer_list>
#include <map>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;
constexpr std::string_view kLineBreak = "\r\n";
constexpr int kJoinedAddressLength = 255;

std::string joinWithBlanks(std::initializer_list<std::string_view> parts) {
  std::string out;
  for (std::string_view part : parts) {
    if (GU::isBlank(part)) continue;
    if (!out.empty()) out += ' ';
    out += GU::trim(part);
  }
  return out;
}

bool keyIn(std::string_view key, std::initializer_list<std::string_view> keys) {
  for (std::string_view k : keys)
    if (k == key) return true;
  return false;
}

// The address groups in the order they are written: the key stem and the column.
struct AddressGroup {
  std::string_view keyStem;
  std::string_view column;
};
constexpr AddressGroup kAddressGroups[] = {
    {"BUSINESSADDRESS", "BusinessAddress"},
    {"HOMEADDRESS", "HomeAddress"},
    {"SPOUSEADDRESS", "SpouseAddress"},
    {"ALTADDRESS", "AltAddress"},
};

// The line number (1 to 3) of an address key of a group, or 0.
int addressLine(std::string_view key, std::string_view stem) {
  if (key.size() != stem.size() + 1 || !key.starts_with(stem)) return 0;
  const char n = key.back();
  return n >= '1' && n <= '3' ? n - '0' : 0;
}

}  // namespace

bool PersonIdentity::hasName() const {
  return !GU::isBlank(firstName) || !GU::isBlank(lastName) || !GU::isBlank(displayName);
}

std::string PersonIdentity::fullName() const {
  if (!GU::isBlank(displayName)) return displayName;
  return GU::trim(firstName) + " " + GU::trim(lastName);
}

std::string PersonIdentity::newContactName() const {
  if (!GU::isBlank(displayName)) return displayName;
  return joinWithBlanks({firstName, middleName, lastName});
}

std::string PersonIdentity::spouseNameForContact() const {
  if (!GU::isBlank(spouseFirstName) || !GU::isBlank(spouseMiddleName) ||
      !GU::isBlank(spouseLastName))
    return joinWithBlanks({spouseFirstName, spouseMiddleName, spouseLastName});
  return GU::isBlank(spouseName) ? std::string() : spouseName;
}

std::string PersonIdentity::eventName() const {
  if (GU::isBlank(firstName) && GU::isBlank(lastName)) return displayName;
  return firstName + " " + lastName;
}

PersonIdentity readPersonIdentity(const ColumnMapping& mapping, const ImportGrid& grid, int row,
                                  std::string_view requiredTag) {
  PersonIdentity person;
  const std::map<std::string_view, std::string PersonIdentity::*> holders = {
      {"SOCIALINSURANCENUMBER", &PersonIdentity::sin},
      {"CLIENTID", &PersonIdentity::clientID},
      {"FIRSTNAME", &PersonIdentity::firstName},
      {"MIDDLENAME", &PersonIdentity::middleName},
      {"LASTNAME", &PersonIdentity::lastName},
      {"DISPLAYNAME", &PersonIdentity::displayName},
      {"SPOUSEFIRSTNAME", &PersonIdentity::spouseFirstName},
      {"SPOUSEMIDDLENAME", &PersonIdentity::spouseMiddleName},
      {"SPOUSELASTNAME", &PersonIdentity::spouseLastName},
      {"SPOUSENAME", &PersonIdentity::spouseName},
  };
  for (int col = 1; col < grid.cols(); ++col) {
    const FieldItem* item = mapping.columnItem(col);
    if (item == nullptr || (!requiredTag.empty() && item->tableTag != requiredTag)) continue;
    const auto holder = holders.find(mapping.columnKey(col));
    if (holder != holders.end()) person.*(holder->second) = GU::trim(grid.textMatrix(row, col));
  }
  return person;
}

std::string cutToLength(std::string_view text, int maxLength) {
  if (maxLength <= 0) return std::string(text);
  size_t i = 0;
  for (int n = 0; i < text.size() && n < maxLength; ++n) {
    ++i;
    while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) ++i;
  }
  return std::string(text.substr(0, i));
}

std::string writeContactValues(DatabaseService& db, std::int32_t handle,
                               const ColumnMapping& mapping, const ImportGrid& grid, int row,
                               const ContactValueOptions& options) {
  std::string notes;
  std::string addressLines[std::size(kAddressGroups)][3];
  for (int col = 1; col < grid.cols(); ++col) {
    const std::string_view cell = grid.textMatrix(row, col);
    const FieldItem* item = mapping.columnItem(col);
    if (item == nullptr) {
      if (options.unmatchedToNotes && options.requiredTag.empty() && !GU::isBlank(cell)) {
        if (options.captionsInFirstRow) notes += GU::trim(grid.textMatrix(kCaptionRow, col)) + ": ";
        notes += GU::trim(cell);
        notes += kLineBreak;
      }
      continue;
    }
    if (!options.requiredTag.empty() && item->tableTag != options.requiredTag &&
        item->tableTag != options.notesTag)
      continue;
    const std::string key = mapping.columnKey(col);
    const std::string cut = cutToLength(cell, item->maxLength);
    if (keyIn(key, {"DISPLAYNAME", "SPOUSENAME"})) continue;  // written by the name rules only
    if (GU::isBlank(cell)) continue;                          // a blank cell is never written
    bool isAddress = false;
    for (size_t g = 0; g < std::size(kAddressGroups); ++g)
      if (const int line = addressLine(key, kAddressGroups[g].keyStem); line > 0) {
        addressLines[g][line - 1] = cell;
        isAddress = true;
      }
    if (isAddress) continue;
    if (keyIn(key, {"BUSINESSPHONE_MAIN", "BUSINESSALTPHONENUMBER", "BUSINESSPHONE_CELL",
                    "BUSINESSPHONE_PAGER", "BUSINESSPHONE_FAX", "HOMEPHONE_MAIN",
                    "PERSONALALTPHONENUMBER", "HOMEPHONE_CELL", "HOMEPHONE_PAGER", "HOMEPHONE_FAX",
                    "SPOUSEPHONE_MAIN", "SPOUSEPHONE_CELL"})) {
      db.setField(handle, item->databaseField, GU::formatPhoneNumber(cut));
    } else if (keyIn(key, {"BUSINESSPOSTALCODE", "HOMEPOSTALCODE", "SPOUSEPOSTALCODE"})) {
      db.setField(handle, item->databaseField, GU::formatPostalCode(cut));
    } else if (keyIn(key, {"SOCIALINSURANCENUMBER", "SPOUSESIN"})) {
      db.setField(handle, item->databaseField,
                  options.canada ? GU::formatSIN(cut) : GU::formatSSN(cut));
    } else if (keyIn(key, {"BIRTHDAY", "ANNIVERSARY", "SPOUSEBIRTHDAY"})) {
      // Only a text that is a date is written; anything else is dropped in silence.
      if (const auto date = DateUtilities::parseDateText(GU::trim(cell)))
        db.setField(handle, item->databaseField, date->toIso());
    } else if (key == "NOTES") {
      notes += GU::trim(cell);
      notes += kLineBreak;
    } else if (key.starts_with("CONTACTCUSTOM") && key.size() == 14 &&
               options.customKeysUpperCase) {
      db.setField(handle, "Custom" + key.substr(13), cut);
    } else {
      db.setField(handle, item->databaseField, cut);
    }
  }
  for (size_t g = 0; g < std::size(kAddressGroups); ++g) {
    std::string joined;
    for (const std::string& line : addressLines[g]) {
      if (GU::isBlank(line)) continue;
      if (!joined.empty()) joined += ", ";
      joined += GU::trim(line);
    }
    if (!GU::isBlank(joined))
      db.setField(handle, kAddressGroups[g].column, cutToLength(joined, kJoinedAddressLength));
  }
  return notes;
}

void appendNotes(DatabaseService& db, const std::string& sql, const std::string& holder) {
  if (GU::isBlank(holder)) return;
  RecordsetScope notes(db, sql, kLockOptimistic);
  if (!db.hasRecord(notes)) return;
  const Variant old = db.getField(notes, "Notes");
  db.setField(notes, "Notes",
              GU::isBlank(old) ? holder : old.toString() + std::string(kLineBreak) + holder);
}

}  // namespace lf
