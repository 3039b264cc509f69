// importProfileSoleProprietorshipInformation.
#include "tax/sole_proprietorship_import.hpp"

#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/import_duplicates_control.hpp"
#include "records/company_records.hpp"
#include "records/contact_records.hpp"
#include "records/default_contacts.hpp"
#include "records/lookups.hpp"
#include "summaries/address_parsing.hpp"
#include "summaries/company_summaries.hpp"
#include "summaries/contact_summaries.hpp"
#include "tax/profile_automation.hpp"
#include "tax/profile_value_formats.hpp"
#include "text/duplicate_question.hpp"

namespace lf {
namespace {

using GU = GeneralUtilities;

std::string field(ProfileClient& client, const std::string& key) {
  std::string value;
  ignoreErrors([&] { value = GU::trim(client.Field(key).toString()); });
  return value;
}

void write(DatabaseService& db, std::int32_t handle, const char* column, const std::string& value) {
  ignoreErrors([&] { db.setField(handle, column, value); });
}

// StakeHolder and PercentageOwnership for a share above 0.
void writeShare(DatabaseService& db, std::int32_t contacts, const std::string& share) {
  double number = 0;
  if (GU::parseNumber(share, number) && number > 0) {
    write(db, contacts, "StakeHolder", "True");
    write(db, contacts, "PercentageOwnership", std::to_string(static_cast<long>(number)));
  }
}

}  // namespace

void importProfileSoleProprietorshipInformation(ProfileClient& client, long& contactID,
                                                bool isSecondClient,
                                                ImportDuplicatesControl* companyDuplicates,
                                                long taxYear) {
  procedure("Ledgerfolio.exe-clsImporttProfileT1-importProfileSoleProprietorshipInformation", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    int copy = isSecondClient ? 1 : 0;
    std::string form = "2125";
    // The probe: the form and copy whose name reads without an error.
    auto readName = [&](std::string& name) {
      AutomationError err;
      trapAutomationError(err, [&] {
        name = GU::trim(client.Field("T" + form + ".S[" + std::to_string(copy) + ",3]").toString());
      });
      return err.number == 0;
    };
    std::string name;
    if (!readName(name)) {
      form = "2124";
      if (!readName(name)) {
        if (!isSecondClient) return;
        copy = 2;
        if (!readName(name)) {
          form = "2125";
          if (!readName(name)) return;
        }
      }
    }
    const std::string c = std::to_string(copy);
    const std::string tf = "T" + form;
    std::string suffix;
    bool valid = false;
    const std::string rawNumber = field(client, tf + ".S[" + c + ",12]");
    const std::string number =
        rawNumber.empty() ? "" : GU::parseBusinessNumber(rawNumber, suffix, valid);

    bool create = true, import = true;
    long company = -1, clientData = -1;
    if (!name.empty() && companyDuplicates != nullptr && companyDuplicates->checkingOn()) {
      companyDuplicates->clearSearch();
      companyDuplicates->setBusinessNumber(number);
      companyDuplicates->setName(name);
      companyDuplicates->setCorporateName("");
      companyDuplicates->runSearch();
      company = companyDuplicates->matchByFirstTest() > 0 ? companyDuplicates->matchByFirstTest()
                                                          : companyDuplicates->matchBySecondTest();
      if (company > 0) {
        clientData = getClientDataIDFromCompanyID(company);
        decideOnDuplicate(companyDuplicates->getAction(), name, create, import);
      }
    }
    if (create) {
      if (name.empty()) return;
      clientData = addNewClientDataEntry();
    }
    if (import) {
      RecordsetScope main(*db, getMainBusinessSQLString(false, 3, clientData), kLockOptimistic);
      if (db->hasRecord(main)) {
        write(*db, main, "CompanyName", name);
        std::string yearEnd = formatProfileString("Date", field(client, tf + "[" + c + ",2]"));
        if (!yearEnd.empty()) write(*db, main, "YearEndDate", yearEnd);
        if (!number.empty()) write(*db, main, "BusinessNumber", number);
        const std::pair<const char*, const char*> places[] = {
            {"5", "Address"}, {"7", "City"}, {"10", "Province"}, {"8", "PostalCode"}};
        for (const auto& [cell, column] : places) {
          std::string value = field(client, tf + ".S[" + c + "," + cell + "]");
          if (!value.empty()) write(*db, main, column, value);
        }
        write(*db, main, "CompanyType", "2");
      }
    }
    company = getCompanyIDFromClientDataID(clientData);
    if (company <= 0) return;

    auto contactRow = [&](long contact, const std::function<void(std::int32_t)>& fill) {
      RecordsetScope rs(
          *db, "SELECT Contacts.* FROM Contacts WHERE ContactID=" + std::to_string(contact) + ";",
          kLockOptimistic);
      if (db->hasRecord(rs)) fill(rs);
    };
    if (validContactID(std::to_string(contactID))) {
      addContactLink(contactID, -1, company, -1, "", false);
      contactRow(contactID, [&](std::int32_t rs) {
        const std::string share = field(client, tf + "Owners[" + c + ",0,0]");
        if (!share.empty()) {
          writeShare(*db, rs, share);
          write(*db, rs, "EmployeeType", "Owner");
          write(*db, rs, "InheritCompanyInfo", "True");
        }
      });
    }
    // Intended: rows 0 and 1 of the owners' table are not read as further owners.
    for (int n = 2; n <= 6; ++n) {
      const std::string row = c + "," + std::to_string(n);
      const std::string first = field(client, tf + "Owners.S[" + row + ",0]");
      const std::string last = field(client, tf + "Owners.S[" + row + ",1]");
      if (first.empty() && last.empty()) continue;
      const std::string owner = GU::trim(first + " " + last);
      long found = -1;
      long contact = doesContactNameAlreadyExistForThisCompany(owner, company, found)
                         ? found
                         : addNewContact(owner, -1, company);
      contactRow(contact, [&](std::int32_t rs) {
        writeShare(*db, rs, field(client, tf + "Owners[" + row + ",0]"));
        const std::string sin = field(client, tf + "Owners.S[" + row + ",2]");
        if (!sin.empty()) write(*db, rs, "SocialInsuranceNumber", sin);
        std::string address = field(client, tf + "Owners.S[" + row + ",3]");
        if (!address.empty()) {
          AddressFields parts = parseAddressString(address);
          if (!GU::isBlank(parts.Street)) write(*db, rs, "HomeAddress", parts.Street);
          if (!GU::isBlank(parts.City)) write(*db, rs, "HomeCity", parts.City);
          if (!GU::isBlank(parts.Province)) write(*db, rs, "HomeProvince", parts.Province);
          if (!GU::isBlank(parts.PostalCode)) write(*db, rs, "HomePostalCode", parts.PostalCode);
        }
        write(*db, rs, "InheritCompanyInfo", "True");
      });
      contactID = contact;
      if (validContactID(std::to_string(contact))) {
        ignoreErrors([&] { saveContactPersonalRTF(contact, -1); });
        ignoreErrors([&] { saveContactPersonalTaxRTF(contact, taxYear, -1); });
        ignoreErrors([&] { saveContactBusinessRTF(contact, -1, company, false); });
      }
    }
    ignoreErrors([&] { saveCompanyRTF(company, -1); });
    ignoreErrors(
        [&] { saveCompanyContactRTF(company, getDefaultContactIDFromCompanyID(company)); });
    if (companyDuplicates != nullptr) companyDuplicates->addCompany(company, name, number, "");
  });
}

}  // namespace lf
