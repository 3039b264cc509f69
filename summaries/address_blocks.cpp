// The address formatters of modFormatAddresses: the block writer, its contact-info variant and
// the four loaders that fill AddressFields from a contact, an employee, a company or the firm.
#include "summaries/address_blocks.hpp"

#include "base/general_utilities.hpp"
#include "base/legacy_text.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"
#include "records/lookups.hpp"
#include "summaries/summary_records.hpp"

namespace lf {
namespace {

constexpr std::string_view kCrLf = "\r\n";

bool blank(std::string_view text) {
  return GeneralUtilities::isBlank(text);
}

// A Canadian address shows no country.
bool isCanada(std::string_view country) {
  std::string upper = GeneralUtilities::upperCase(country);
  return upper == "CANADA" || upper == "CA" || upper == "CAN" || upper == "CDA";
}

std::string text(DatabaseService& db, std::int32_t handle, std::string_view field) {
  return fieldText(db, handle, field);
}

}  // namespace

std::string convertToRTF(std::string_view text) {
  return replaceAll(text, kCrLf, "\r\n\\par ");
}

std::string createAddress(AddressFields& fields, bool includeContactName, bool asRTF) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-createAddress", [&] {
    std::string name = GeneralUtilities::trim(fields.Name);
    std::string contactName = GeneralUtilities::trim(fields.ContactName);
    std::string street = GeneralUtilities::trim(fields.Street);
    std::string city = GeneralUtilities::trim(fields.City);
    std::string province = GeneralUtilities::trim(fields.Province);
    std::string postalCode = GeneralUtilities::trim(fields.PostalCode);
    std::string country = GeneralUtilities::trim(fields.Country);

    if (!blank(name)) result += name + std::string(kCrLf);
    if (includeContactName && !blank(contactName)) result += contactName + std::string(kCrLf);
    if (!blank(street)) result += street + std::string(kCrLf);

    std::string cityLine;
    if (!blank(city)) cityLine = city;
    if (!blank(province)) cityLine += (cityLine.empty() ? "" : ", ") + province;
    if (!blank(postalCode)) cityLine += (cityLine.empty() ? "" : "  ") + postalCode;
    // Without a street the city is set off by an empty line below the name.
    if (blank(street) && !blank(city)) result += kCrLf;
    result += cityLine;

    if (!blank(country) && !isCanada(country)) result += std::string(kCrLf) + country;
    if (asRTF) result = convertToRTF(result);
  });
  return result;
}

std::string createAddressWithContactInfo(AddressFields& fields, bool includeContactName,
                                         bool asRTF) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-createAddressWithContactInfo", [&] {
    result = createAddress(fields, includeContactName, asRTF);
    const std::pair<std::string_view, const std::string*> lines[] = {
        {"Phone: ", &fields.Phone}, {"Fax: ", &fields.Fax},     {"Cell: ", &fields.Cell},
        {"Home: ", &fields.Home},   {"Email: ", &fields.Email}, {"Web Site: ", &fields.WebSite}};
    bool any = false;
    for (const auto& [label, value] : lines) {
      std::string v = GeneralUtilities::trim(*value);
      if (blank(v)) continue;
      result += std::string(kCrLf) + std::string(label) + v;
      any = true;
    }
    // Intended: the address lines, already converted, get a second "\par " here.
    if (any && asRTF) result = convertToRTF(result);
  });
  return result;
}

namespace {

// The columns of one of a person's addresses; an empty name is a column the address lacks.
struct PersonAddressColumns {
  const char* name;
  const char* street;
  const char* city;
  const char* province;
  const char* postalCode;
  const char* country;
  const char* phone;
  const char* fax;
  const char* cell;
  const char* email;
};

// Loads one address of a contact (or employee) and formats it as an address block.
std::string loadPersonAddress(const char* label, const PersonAddressColumns& columns,
                              long contactID, bool asRTF, long employeeID, bool withAddress,
                              bool withPhones, bool withEmail) {
  std::string result;
  procedure(label, [&] {
    AddressFields fields;
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    PersonSource source = openPersonSource(*db, contactID, employeeID, kLockReadOnly);
    if (!source.record || !db->hasRecord(*source.record)) return;
    std::int32_t h = *source.record;
    if (withAddress) {
      fields.Name = text(*db, h, columns.name);
      fields.Street = text(*db, h, columns.street);
      fields.City = text(*db, h, columns.city);
      fields.Province = text(*db, h, columns.province);
      fields.PostalCode = text(*db, h, columns.postalCode);
      fields.Country = text(*db, h, columns.country);
    }
    if (withPhones) {
      fields.Phone = text(*db, h, columns.phone);
      if (*columns.fax != '\0') fields.Fax = text(*db, h, columns.fax);
      fields.Cell = text(*db, h, columns.cell);
    }
    if (withEmail) fields.Email = text(*db, h, columns.email);
    source.record->close();
    result = GeneralUtilities::trim(createAddressWithContactInfo(fields, false, asRTF));
  });
  return result;
}

}  // namespace

std::string createPersonalContactAddress(long contactID, bool asRTF, long employeeID,
                                         bool withAddress, bool withPhones, bool withEmail) {
  static const PersonAddressColumns home = {
      "DisplayName", "HomeAddress",    "HomeCity",      "HomeProvince",   "HomePostalCode",
      "HomeCountry", "HomePhone_Main", "HomePhone_Fax", "HomePhone_Cell", "PersonalEmail"};
  return loadPersonAddress("Ledgerfolio.exe-modFormatAddresses-createPersonalContactAddress", home,
                           contactID, asRTF, employeeID, withAddress, withPhones, withEmail);
}

std::string createPersonalSpouseContactAddress(long contactID, bool asRTF, long employeeID,
                                               bool withAddress, bool withPhones, bool withEmail) {
  static const PersonAddressColumns spouse = {
      "SpouseName",    "SpouseAddress",    "SpouseCity", "SpouseProvince",   "SpousePostalCode",
      "SpouseCountry", "SpousePhone_Main", "",           "SpousePhone_Cell", "SpouseEmail"};
  return loadPersonAddress("Ledgerfolio.exe-modFormatAddresses-createPersonalSpouseContactAddress",
                           spouse, contactID, asRTF, employeeID, withAddress, withPhones,
                           withEmail);
}

std::string createBusinessContactAddress(long contactID, bool asRTF, long employeeID,
                                         long companyID, bool withAddress, bool withPhones,
                                         bool withEmail, bool withBusinessName) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-createBusinessContactAddress", [&] {
    AddressFields fields;
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    PersonSource source = openPersonSource(*db, contactID, employeeID, kLockReadOnly);
    if (!source.record || !db->hasRecord(*source.record)) return;
    std::int32_t h = *source.record;
    if (withBusinessName) {
      fields.Name = text(*db, h, "BusinessName");
      fields.ContactName = text(*db, h, "DisplayName");
    }
    if (withAddress) {
      fields.Street = text(*db, h, "BusinessAddress");
      fields.City = text(*db, h, "BusinessCity");
      fields.Province = text(*db, h, "BusinessProvince");
      fields.PostalCode = text(*db, h, "BusinessPostalCode");
      fields.Country = text(*db, h, "BusinessCountry");
    }
    if (withPhones) {
      fields.Phone = text(*db, h, "BusinessPhone_Main");
      fields.Fax = text(*db, h, "BusinessPhone_Fax");
      fields.Cell = text(*db, h, "BusinessPhone_Cell");
    }
    if (withEmail) fields.Email = text(*db, h, "BusinessEmail");

    // A contact that inherits the company's information shows the company's address and
    // numbers: the firm's for an employee, the company's for a contact.
    if (db->getField(h, "InheritCompanyInfo").toBool() && validCompanyID(companyID)) {
      RecordsetScope company(
          *db, source.isEmployee ? firmStatement(companyID) : companyStatement(companyID),
          kLockReadOnly);
      if (db->hasRecord(company)) {
        if (withAddress) {
          fields.Street = text(*db, company, "Address");
          fields.City = text(*db, company, "City");
          fields.Province = text(*db, company, "Province");
          fields.PostalCode = text(*db, company, "PostalCode");
          fields.Country = text(*db, company, "Country");
        }
        if (withPhones) {
          fields.Phone = text(*db, company, "OfficeNumber");
          fields.Fax = text(*db, company, "FaxNumber");
        }
      }
    }
    source.record->close();
    result = GeneralUtilities::trim(createAddressWithContactInfo(fields, withBusinessName, asRTF));
  });
  return result;
}

std::string createCompanyAddress(long companyID, bool& includeContactName, bool asRTF, long firmID,
                                 bool withAddress, bool withPhones, bool withEmail) {
  std::string result;
  procedure("Ledgerfolio.exe-modFormatAddresses-createCompanyAddress", [&] {
    AddressFields fields;
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    long id = -1;
    std::optional<RecordsetScope> record;
    if (validFirmID(firmID)) {
      id = firmID;
      record.emplace(*db, firmStatement(firmID), kLockReadOnly);
    } else if (validCompanyID(companyID)) {
      id = companyID;
      record.emplace(*db, companyStatement(companyID), kLockReadOnly);
    } else {
      return;
    }
    if (!db->hasRecord(*record)) return;
    std::int32_t h = *record;
    if (withAddress) {
      fields.Name = text(*db, h, "CompanyName");
      fields.Street = text(*db, h, "Address");
      fields.City = text(*db, h, "City");
      fields.Province = text(*db, h, "Province");
      fields.PostalCode = text(*db, h, "PostalCode");
      fields.Country = text(*db, h, "Country");
    }
    if (includeContactName) {
      RecordsetScope contact(*db,
                             "SELECT Contacts.ContactID, Contacts.DisplayName FROM Contacts WHERE "
                             "Contacts.ContactID=" +
                                 std::to_string(defaultContactOfCompany(id)) + ";",
                             kLockReadOnly);
      if (db->hasRecord(contact))
        fields.ContactName = text(*db, contact, "DisplayName");
      else
        includeContactName = false;
    }
    if (withPhones) {
      fields.Phone = text(*db, h, "OfficeNumber");
      fields.Fax = text(*db, h, "FaxNumber");
    }
    if (withEmail) fields.Email = text(*db, h, "Email");
    record->close();
    result = GeneralUtilities::trim(
        withPhones || withEmail ? createAddressWithContactInfo(fields, includeContactName, asRTF)
                                : createAddress(fields, includeContactName, asRTF));
  });
  return result;
}

}  // namespace lf
