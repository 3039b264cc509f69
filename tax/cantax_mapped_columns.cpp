// The mapped columns of the CANTAX and Dr. Tax modified files.
#include "tax/cantax_mapped_columns.hpp"

#include "base/procedure.hpp"
#include "text/delimited_text_import.hpp"

namespace lf {

const std::vector<MappedColumn>& cantaxT1MappedColumns() {
  static const std::vector<MappedColumn> columns = {
      {"CLIENT_SIN", "SocialInsuranceNumber", 20},
      {"BIRTH_DATE", "Birthday", 50},
      {"CLIENT_FIRST_NAME", "FirstName", 100},
      {"CLIENT_MIDDLE_NAME", "MiddleName", 100},
      {"CLIENT_LAST_NAME", "LastName", 100},
      {"CLIENT_FULL_NAME", "DisplayName", 255},
      {"CLIENT_ADDRESS1", "HomeAddress1", 255},
      {"CLIENT_CITY", "HomeCity", 50},
      {"CLIENT_PROVINCE", "HomeProvince", 50},
      {"CLIENT_POSTAL_CODE", "HomePostalCode", 50},
      {"CLIENT_PHONE", "HomePhone_Main", 50},
      {"CELL_PHONE", "HomePhone_Cell", 50},
      {"FAX_PHONE", "HomePhone_Fax", 50},
      {"PAGE_PHONE", "HomePhone_Pager", 50},
      {"EMAIL_ADDRESS", "PersonalEmail", 255},
      {"CLIENT_WORK_PHONE", "BusinessPhone_Main", 50},
      {"MARITAL_STATUS", "MaritialStatus", 50},
      {"SPOUSE_FIRST_NAME", "SpouseFirstName", 100},
      {"SPOUSE_MIDDLE_NAME", "SpouseMiddleName", 100},
      {"SPOUSE_LAST_NAME", "SpouseLastName", 100},
      {"SPOUSE_BIRTH_DATE", "SpouseBirthday", 20},
  };
  return columns;
}

const std::vector<MappedColumn>& cantaxT2PlusMappedColumns() {
  static const std::vector<MappedColumn> columns = {
      {"Corporation Type", "CompanyType", 255},
      {"CORP_NAME", "CompanyName", 255},
      {"YEAR_END_DATE", "YearEndDate", 50},
      {"CORP_ACCOUNT_NO", "FederalCorpNumber", 50},
      {"PROV_ACCOUNT_NO", "ONCorpNumber", 50},
      {"CORP_ADDRESS1", "Address1", 50},
      {"CORP_CITY", "City", 50},
      {"CORP_PROVINCE", "Province", 50},
      {"CORP_POSTAL_CODE", "PostalCode", 50},
      {"CORP_COUNTRY", "Country", 50},
      {"CORP_PHONE", "OfficeNumber", 50},
      {"CORP_FAX", "FaxNumber", 50},
      // The second address set is the company's alternate address, the business import's
      // second address group.
      {"CORP_MAIL_ADDRESS1", "AltAddress1", 50},
      {"CORP_MAIL_CITY", "AltCity", 50},
      {"CORP_MAIL_POSTALCODE", "AltPostalCode", 50},
      {"CORP_MAIL_PROV", "AltProvince", 50},
      {"CORP_MAIL_COUNTRY", "AltCountry", 50},
      {"CORP_CONTACT_NAME", "DisplayName", 255},
      {"CORP_CONTACT_PHONE", "BusinessPhone_Main", 50},
      {"CORP_CONTACT_FAX", "BusinessPhone_Fax", 50},
  };
  return columns;
}

const std::vector<MappedColumn>& drTaxT1MappedColumns() {
  static const std::vector<MappedColumn> columns = {
      {"Client #", "Not Assigned", 255},
      {"Last Name", "LastName", 100},
      {"First Name", "FirstName", 100},
      {"SIN", "SocialInsuranceNumber", 20},
      {"Birth Date", "Birthday", 50},
      // The importer's list has no Language field: the contact's language is SpokenLanguage.
      {"Language", "SpokenLanguage", 50},
      {"Street", "HomeAddress1", 255},
      {"City", "HomeCity", 50},
      {"Postal Code", "HomePostalCode", 50},
      {"Province", "HomeProvince", 50},
      {"Country", "HomeCountry", 50},
      {"Home Phone Number", "HomePhone_Main", 50},
      {"Work Phone Number", "BusinessPhone_Main", 50},
      {"Cell Phone Number", "HomePhone_Cell", 50},
      {"Email Address", "PersonalEmail", 255},
  };
  return columns;
}

const std::vector<MappedColumn>& drTaxT2MappedColumns() {
  static const std::vector<MappedColumn> columns = {
      {"Corporation Type", "CompanyType", 255},
      {"Client #", "Not Assigned", 255},
      {"Corporation Name", "CompanyName", 255},
      {"Business Number", "BusinessNumber", 50},
      {"Quebec NEQ Number", "WSIBNumber", 50},
      {"Year End Date", "YearEndDate", 50},
      {"Contact Name", "DisplayName", 255},
      {"Street", "Address1", 50},
      {"City", "City", 50},
      {"Postal Code", "PostalCode", 50},
      {"Province", "Province", 50},
      {"Phone Number", "OfficeNumber", 50},
      {"Phone Number (night)", "Not Assigned", 50},
      {"Fax Number", "FaxNumber", 50},
      {"Email Address", "Email", 50},
  };
  return columns;
}

std::vector<std::string> setupMappedColumns(DelimitedTextImport& import,
                                            const std::vector<MappedColumn>& columns) {
  std::vector<std::string> missing;
  procedure("nvImportlf6.dll-frmImportCANTAX-setupMappedColumns", [&] {
    import.mapping.clearAssignments(import.grid);
    int column = 1;
    for (const MappedColumn& mapped : columns) {
      std::int32_t key = -1;
      if (std::string_view(mapped.field) != kNotAssigned) {
        const FieldItem* item = import.mapping.fieldList().findByDatabaseField(mapped.field);
        if (item != nullptr)
          key = item->key;
        else
          missing.emplace_back(mapped.field);
      }
      if (column < import.grid.cols()) import.mapping.assign(import.grid, column, key);
      ++column;
    }
  });
  return missing;
}

}  // namespace lf
