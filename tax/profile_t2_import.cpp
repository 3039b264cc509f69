// The corporate Profile import: the selection by business number and year end, and one
// corporation written as a company with its contacts.
#include "tax/profile_t2_import.hpp"

#include <algorithm>
#include <tuple>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/import_duplicates_control.hpp"
#include "host/message_box.hpp"
#include "host/run_report.hpp"
#include "records/company_records.hpp"
#include "records/contact_records.hpp"
#include "records/default_contacts.hpp"
#include "records/lookups.hpp"
#include "summaries/company_summaries.hpp"
#include "tax/profile_value_formats.hpp"
#include "text/duplicate_question.hpp"
#include "text/row_write_group.hpp"

namespace lf {
namespace {

using GU = GeneralUtilities;

std::string field(ProfileClient& client, std::string_view key) {
  std::string value;
  ignoreErrors([&] { value = GU::trim(client.Field(key).toString()); });
  return value;
}

std::string businessNumberRoot(const std::string& text, std::string& suffix) {
  bool valid = false;
  return GU::parseBusinessNumber(text, suffix, valid);
}

// The year end or incorporation date, unless blank or the empty time "12:00:00 AM".
std::string corporateDate(const std::string& value) {
  if (GU::isBlank(value) || value == "12:00:00 AM") return "";
  return formatProfileString("Date", value, true);
}

struct AddressKeys {
  const char* street;
  const char* second;
  const char* third;
  const char* city;
  const char* province;
  const char* postalCode;
};

// The two sets of each address type; type 4 has one. Intended: type 4 reads T2Info.S[55] for
// the street and for the province alike.
const AddressKeys kAddressSets[4][2] = {
    {{"T2Info.S[21]", "T2Info.S[22]", "T2Info.S[19]", "T2Info.S[23]", "T2Info.S[24]",
      "T2Info.S[25]"},
     {"T2.S[6]", "T2.S[7]", "", "T2.S[8]", "T2.S[9]", "T2.S[10]"}},
    {{"T2Info.S[31]", "T2Info.S[32]", "T2Info.S[20]", "T2Info.S[33]", "T2Info.S[34]",
      "T2Info.S[35]"},
     {"T2.S[16]", "T2.S[17]", "", "T2.S[18]", "T2.S[19]", "T2.S[20]"}},
    {{"T2Info.S[41]", "T2Info.S[42]", "", "T2Info.S[43]", "T2Info.S[44]", "T2Info.S[45]"},
     {"T2.S[26]", "T2.S[27]", "T2.S[42]", "T2.S[28]", "T2.S[29]", "T2.S[30]"}},
    {{"T2Info.S[55]", "T2Info.S[56]", "", "T2Info.S[57]", "T2Info.S[55]", "T2Info.S[59]"},
     {"T2Info.S[55]", "T2Info.S[56]", "", "T2Info.S[57]", "T2Info.S[55]", "T2Info.S[59]"}},
};

struct ProvincialNumber {
  const char* province;
  const char* key;
  const char* column;
};
const ProvincialNumber kProvincialNumbers[] = {
    {"ON", "T2Info.S[80]", "ONCorpNumber"},     {"ON", "T2Info.S[79]", "MCBS"},
    {"ON", "T2Info.S[82]", "EHTNumber"},        {"ON", "T2Info.S[81]", "PSTNumber"},
    {"AB", "AT1AccountNumber", "ONCorpNumber"}, {"BC", "T2Info.S[85]", "ONCorpNumber"},
    {"MB", "T2Info.S[48]", "ONCorpNumber"},     {"SK", "T2Info.S[6]", "ONCorpNumber"},
    {"QC", "T2Info.S[9]", "ONCorpNumber"},      {"QC", "T2Info.S[49]", "MCBS"},
};

void write(DatabaseService& db, std::int32_t handle, const std::string& column,
           const std::string& value) {
  ignoreErrors([&] { db.setField(handle, column, value); });
}

}  // namespace

void clsImportProfileT2::addProfileFileToImportList(const std::string& path) {
  ProfileT2FileRow row;
  row.key = std::to_string(nextFileKey_++);
  row.path = row.display = path;
  profileFileList.push_back(row);
}

void clsImportProfileT2::selectAllProfileFiles(bool selected) {
  for (ProfileT2FileRow& row : profileFileList) row.selected = selected;
}

void clsImportProfileT2::setProfileAddressType(const std::string& text) {
  if (text == "Profile Head Office Address") profileAddressType = 1;
  if (text == "Profile Mailing Address") profileAddressType = 2;
  if (text == "Profile Location of Books Address") profileAddressType = 3;
  if (text == "Profile Signing Officer Address") profileAddressType = 4;
}

void clsImportProfileT2::getAnalysisInfoFromAllProfileFiles() {
  std::unique_ptr<ProfileFile> file;
  std::shared_ptr<ProfileClient> client;
  for (ProfileT2FileRow& row : profileFileList) {
    if (!row.businessNumber.empty() || !row.yearEnd.empty()) continue;
    openProfileT2File(row.path, file, client);
    if (!client) continue;
    std::string suffix;
    std::string number = field(*client, "T2Info.S[3]");
    if (!number.empty()) row.businessNumber = businessNumberRoot(number, suffix);
    row.yearEnd = corporateDate(field(*client, "T2Info[2]"));
    client.reset();
  }
  closeProfileT2File(file, client);
}

void clsImportProfileT2::selectSpecificProfileT2Files() {
  procedure(procedureLabel("selectSpecificProfileT2Files"), [&] {
    if (!selectOnlyMostRecentClientsFlag && !selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag)
      return;
    if (profileFileList.empty()) return;
    getAnalysisInfoFromAllProfileFiles();
    std::stable_sort(profileFileList.begin(), profileFileList.end(),
                     [](const ProfileT2FileRow& a, const ProfileT2FileRow& b) {
                       return std::tie(a.businessNumber, a.yearEnd) <
                              std::tie(b.businessNumber, b.yearEnd);
                     });
    std::string last;
    bool keep = false;
    for (size_t i = 0; i < profileFileList.size(); ++i) {
      ProfileT2FileRow& row = profileFileList[i];
      if (row.businessNumber != last) {
        // Intended: a group's last row gets its tick only when the next group begins, so the
        // very last group gets none from here.
        if (keep && i > 0 && selectOnlyMostRecentClientsFlag)
          profileFileList[i - 1].selected = true;
        last = row.businessNumber;
        keep = true;
        if (selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag) {
          bool known = false;
          if (companyDuplicatesControl != nullptr) {
            companyDuplicatesControl->clearSearch();
            companyDuplicatesControl->setBusinessNumber(row.businessNumber);
            companyDuplicatesControl->runSearch();
            known = companyDuplicatesControl->matchByFirstTest() > 0;
          }
          keep = !known;
        }
      } else if (selectOnlyMostRecentClientsFlag) {
        row.selected = false;
      }
      if (!last.empty() && keep && !selectOnlyMostRecentClientsFlag) row.selected = true;
    }
  });
}

bool clsImportProfileT2::startImportProfileT2Files() {
  bool result = false;
  procedure(procedureLabel("startImportProfileT2Files"), [&] {
    if (!testProfileInstallation(kProfileT2ProgID)) return;
    long selected = std::count_if(profileFileList.begin(), profileFileList.end(),
                                  [](const ProfileT2FileRow& row) { return row.selected; });
    if (selected == 0) {
      if (MessageBox* box = moduleState().MsgboxClass)
        box->show(
            "You must select some profile files in the list.  If there are no profile files "
            "shown in the list, than click 'Back' and browse to a folder which contains "
            "'*.04T', '*.05T', '*.06T', or '*.07T' files.",
            kMessageValidation);
      return;
    }
    if (importingProfileClientsStart) importingProfileClientsStart(selected);
    result = true;
  });
  return result;
}

void clsImportProfileT2::importProfileT2Files() {
  successFlag = false;
  procedure(procedureLabel("importProfileT2Files"), [&] {
    long total = static_cast<long>(profileFileList.size());
    long position = 0;
    // Returns imported commit several at a time, each whole.
    RowWriteGroups rows(procedureLabel("commitRows"), counters);
    rowGroups_ = &rows;
    struct Unset {
      RowWriteGroups*& slot;
      ~Unset() { slot = nullptr; }
    } unset{rowGroups_};
    for (const ProfileT2FileRow& row : profileFileList) {
      if (!row.selected) continue;
      ++position;
      if (importingProfileClientsInc) importingProfileClientsInc(position, total);
      const std::string path = row.path;
      resumeNext([&] { importProfileT2File(path); });
    }
    rows.commit();
    std::shared_ptr<ProfileClient> none;
    closeProfileT2File(file_, none);
    successFlag = true;
    if (importingProfileClientsStop) importingProfileClientsStop();
  });
}

bool clsImportProfileT2::importProfileT2File(const std::string& path) {
  bool written = false;
  std::shared_ptr<ProfileClient> client;
  openProfileT2File(path, file_, client);
  if (!client) {
    if (counters != nullptr) {
      ++counters->read;
      if (passwordCancelled())
        counters->skip("the password question was cancelled: " + path);
      else
        counters->fail("could not be opened: " + path);
    }
    return false;
  }
  const auto body = [&](std::string& skipReason) {
    procedure(procedureLabel("importProfileT2File"), [&] {
      DatabaseService* db = usablePracticeDatabase();
      if (db == nullptr) return;
      const std::string operatingName = field(*client, "OperatingName");
      const std::string legalName = field(*client, "LegalName");
      const std::string name = operatingName.empty() ? legalName : operatingName;
      const std::string number = field(*client, "T2Info.S[3]");

      bool create = true, import = true;
      long company = -1, clientData = -1;
      ImportDuplicatesControl* duplicates = companyDuplicatesControl;
      if (duplicates != nullptr && duplicates->checkingOn()) {
        duplicates->clearSearch();
        duplicates->setBusinessNumber(number);
        duplicates->setName(name);
        duplicates->setCorporateName(legalName);
        duplicates->runSearch();
        company = duplicates->matchByFirstTest() > 0 ? duplicates->matchByFirstTest()
                                                     : duplicates->matchBySecondTest();
        if (company >= 1) {
          clientData = getClientDataIDFromCompanyID(company);
          decideOnDuplicate(duplicates->getAction(), GU::trim(name + " " + legalName), create,
                            import);
        }
      }
      created_ = false;
      if (create && (!operatingName.empty() || !legalName.empty())) {
        clientData = addNewClientDataEntry();
        company = getCompanyIDFromClientDataID(clientData);
        created_ = true;
      }
      if (!import || company < 1) return;
      if (importingProfileClientsPrompt) importingProfileClientsPrompt("Importing " + legalName);

      RecordsetScope main(*db, getMainBusinessSQLString(false, 3, clientData), kLockOptimistic);
      if (!db->hasRecord(main)) return;
      if (!operatingName.empty() && !legalName.empty()) {
        write(*db, main, "CompanyName", operatingName);
        write(*db, main, "CorporateName", legalName);
      } else if (!name.empty()) {
        write(*db, main, "CompanyName", name);
      }
      write(*db, main, "CompanyType", "1");
      if (std::string date = corporateDate(field(*client, "T2Info[2]")); !date.empty())
        write(*db, main, "YearEndDate", date);
      if (std::string date = corporateDate(field(*client, "T2Info[17]")); !date.empty())
        write(*db, main, "IncorporationDate", date);
      if (!number.empty()) {
        std::string suffix;
        std::string root = businessNumberRoot(number, suffix);
        write(*db, main, "BusinessNumber", root);
        write(*db, main, "GSTNumber", root + " RT" + suffix);
        write(*db, main, "FederalCorpNumber", number);
        write(*db, main, "PayrollNumber", root + " RP" + suffix);
      }

      int type = std::clamp(profileAddressType, 1, 4);
      const AddressKeys& keys =
          kAddressSets[type - 1]
                      [type < 4 && field(*client, kAddressSets[type - 1][0].street).empty()];
      std::string address = field(*client, keys.street);
      for (const char* key : {keys.second, keys.third}) {
        std::string part = *key ? field(*client, key) : "";
        if (!part.empty()) address += ", " + part;
      }
      write(*db, main, "Address", address);
      write(*db, main, "City", field(*client, keys.city));
      write(*db, main, "Province", field(*client, keys.province));
      write(*db, main, "PostalCode", field(*client, keys.postalCode));
      if (std::string phone = field(*client, "T2Info.S[27]"); !phone.empty())
        write(*db, main, "OfficeNumber", GU::formatPhoneNumber(phone));
      if (std::string fax = field(*client, "T2Info.S[28]"); !fax.empty())
        write(*db, main, "FaxNumber", GU::formatPhoneNumber(fax));
      const std::string province = GU::upperCase(field(*client, "T2Info.S[10]"));
      for (const ProvincialNumber& n : kProvincialNumbers)
        if (province == n.province) write(*db, main, n.column, field(*client, n.key));
      main.close();

      auto contactRow = [&](long contact, const std::function<void(std::int32_t)>& fill) {
        RecordsetScope rs(
            *db, "SELECT Contacts.* FROM Contacts WHERE ContactID=" + std::to_string(contact) + ";",
            kLockOptimistic);
        if (db->hasRecord(rs)) fill(rs);
      };
      const std::string officer = GU::trim(field(*client, "SigningOfficerTitle") + " " +
                                           field(*client, "SigningOfficerFirstName") + " " +
                                           field(*client, "SigningOfficerLastName"));
      long found = -1;
      if (!officer.empty() && !doesContactNameAlreadyExistForThisCompany(officer, company, found)) {
        long contact = addNewContact(officer, -1, company);
        contactRow(contact, [&](std::int32_t rs) {
          std::string street = field(*client, "SigningOfficerAddress1");
          std::string apt = field(*client, "SigningOfficerAddress2");
          if (!apt.empty()) street += (street.empty() ? "Apt. " : ", Apt. ") + apt;
          write(*db, rs, "BusinessAddress", street);
          write(*db, rs, "BusinessCity", field(*client, "SigningOfficerCity"));
          write(*db, rs, "BusinessPostalCode", field(*client, "SigningOfficerPostalCode"));
          write(*db, rs, "BusinessProvince", field(*client, "SigningOfficerProvince"));
          write(*db, rs, "BusinessPhone_Main", field(*client, "SigningOfficerTelephone"));
        });
      }
      const std::string second = field(*client, "T2Info.S[65]");
      if (!second.empty() && GU::upperCase(second) != GU::upperCase(officer) &&
          !doesContactNameAlreadyExistForThisCompany(second, company, found)) {
        long contact = addNewContact(second, -1, company);
        contactRow(contact, [&](std::int32_t rs) {
          write(*db, rs, "BusinessPhone_Main", field(*client, "T2Info.S[66]"));
          write(*db, rs, "BusinessPhone_Fax", field(*client, "T2Info.S[67]"));
        });
      }

      ignoreErrors([&] { saveCompanyRTF(company, -1); });
      ignoreErrors(
          [&] { saveCompanyContactRTF(company, getDefaultContactIDFromCompanyID(company)); });
      if (duplicates != nullptr) {
        std::string suffix;
        duplicates->addCompany(company, name, businessNumberRoot(number, suffix), "");
      }
      written = true;
    });
    if (!written) skipReason = "an existing client, not updated";
    return !written ? RowOutcome::Skipped : created_ ? RowOutcome::Created : RowOutcome::Updated;
  };
  if (rowGroups_ != nullptr)
    rowGroups_->importRow(body);
  else
    importOneRow(counters, body);
  // The file is closed; its object serves the next file of the run.
  client.reset();
  AutomationError err;
  trapAutomationError(err, [&] { file_->close(); });
  return written;
}

}  // namespace lf
