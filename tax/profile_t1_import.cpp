// The file list, the selection and the client import of clsImportProfileT1.
#include "tax/profile_t1_import.hpp"

#include <cmath>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/file_utilities.hpp"
#include "host/import_duplicates_control.hpp"
#include "host/run_report.hpp"
#include "records/contact_records.hpp"
#include "records/contact_sin_synch.hpp"
#include "records/export_folders.hpp"
#include "records/lookups.hpp"
#include "records/personal_tax_records.hpp"
#include "summaries/contact_summaries.hpp"
#include "tax/profile_return_file.hpp"
#include "tax/profile_t1_field_list.hpp"
#include "tax/profile_value_formats.hpp"
#include "tax/sole_proprietorship_import.hpp"
#include "text/duplicate_question.hpp"
#include "text/row_write_group.hpp"

namespace lf {
namespace {

// A field of the return; a failed read is blank.
std::string field(ProfileClient& client, std::string_view key) {
  std::string value;
  ignoreErrors([&] { value = client.Field(key).toString(); });
  return value;
}

std::string joinName(std::initializer_list<std::string> parts) {
  std::string name;
  for (const std::string& part : parts) name += part + " ";
  return GeneralUtilities::trim(name);
}

// The SIN as the duplicates control and the file list keep it.
std::string normalisedSIN(const std::string& sin) {
  return GeneralUtilities::formatSIN(GeneralUtilities::trim(sin));
}

// Street, apartment, post-office box and rural route joined: the first part present stands
// alone, or with its prefix ("Apt. "), a later one joins with ", " and its prefix.
std::string composedAddress(ProfileClient& client, const std::string& who) {
  struct Part {
    const char* suffix;
    const char* prefix;
  } parts[] = {{"Address", ""}, {"Apt", "Apt. "}, {"PoBox", "P.O. Box "}, {"RR", "R.R. "}};
  std::string address;
  for (const Part& part : parts) {
    std::string value = field(client, who + part.suffix);
    if (GeneralUtilities::isBlank(value)) continue;
    address += (address.empty() ? "" : ", ") + std::string(part.prefix) + value;
  }
  return address;
}

void write(DatabaseService& db, std::int32_t handle, const std::string& column,
           const std::string& value) {
  ignoreErrors([&] { db.setField(handle, column, value); });
}

// The relations of a couple's two links, by T1Info.B[10] and T1Info.B[23]: the spouse's link
// first, the client's second; blank when there is no link.
std::pair<std::string, std::string> coupleRelations(const std::string& b10,
                                                    const std::string& b23) {
  if (b10 == "1") {
    if (b23 == "1") return {"Husband", "Wife"};
    if (b23 == "2") return {"Wife", "Husband"};
    return {"Spouse", "Spouse"};
  }
  if (b10 == "2") return {"Commonlaw Partner", "Commonlaw Partner"};
  return {"", ""};
}

// One return as one row: in the file loop's write groups, or committed alone.
void importReturn(const std::function<RowOutcome(std::string&)>& body, RowWriteGroups* groups,
                  StageCounters* counters) {
  if (groups != nullptr)
    groups->importRow(body);
  else
    importOneRow(counters, body);
}

}  // namespace

clsImportProfileT1::clsImportProfileT1() : ProfileAutomationLayer(Family::T1) {
  createFieldList();
}

std::string clsImportProfileT1::folderString() {
  std::string folder = getProfileT1Folder();
  return FileUtilities::getSystemDrive(folder.empty() ? "C:\\" : folder);
}

void clsImportProfileT1::setFolderString(const std::string& folder) {
  putProfileT1Folder(folder);
}

void clsImportProfileT1::addProfileFileToImportList(const std::string& path) {
  ProfileFileRow row;
  row.key = std::to_string(nextFileKey_++);
  row.path = path;
  row.display = path;
  profileFileList.push_back(row);
}

void clsImportProfileT1::selectAllProfileFiles(bool selected) {
  for (ProfileFileRow& row : profileFileList) row.selected = selected;
}

void clsImportProfileT1::caption(const std::string& text) {
  if (onCaption) onCaption(text);
}

void clsImportProfileT1::selectSpecificProfileT1Files(bool /*showDialog*/) {
  procedure(procedureLabel("selectSpecificProfileT1Files"),
            [&] { analyizeAndSelectSpecificProfileT1Files(); });
}

void clsImportProfileT1::analyizeAndSelectSpecificProfileT1Files() {
  if (!selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag && !selectOnlySpecificTaxYearFlag)
    return;
  if (profileFileList.empty()) return;
  progressPosition_ = 1;
  progressTotal_ = static_cast<long>(profileFileList.size()) * 2;
  getAnalysisInfoFromAllProfileFiles();
  for (ProfileFileRow& row : profileFileList) {
    bool selected = false;
    if (selectOnlySpecificTaxYearFlag && row.taxYear == specificTaxYearSelection) selected = true;
    // The two options add up: a file of another year is ticked when its client is new.
    if (!selected && selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag &&
        !GeneralUtilities::isBlank(row.sin)) {
      bool known = false;
      if (contactDuplicatesControl != nullptr) {
        contactDuplicatesControl->clearSearch();
        contactDuplicatesControl->setSIN(row.sin);
        contactDuplicatesControl->runSearch();
        known = contactDuplicatesControl->matchByFirstTest() > 0;
      }
      selected = !known;
    }
    row.selected = selected;
    ++progressPosition_;
    caption("Analyzing Profile T1 files " + std::to_string(progressPosition_) + " of " +
            std::to_string(progressTotal_) + ", Please wait ...");
  }
}

void clsImportProfileT1::getAnalysisInfoFromAllProfileFiles() {
  int savedAction = profileFileAction;
  profileFileAction = kProfileAnalyze;
  importProfileT1Files(false);
  profileFileAction = savedAction;
}

void clsImportProfileT1::doesProfileFileSINAlreadyExistInLedgerfolio(ProfileClient* client) {
  if (currentRow_ >= profileFileList.size()) return;
  ProfileFileRow& row = profileFileList[currentRow_];
  if (client != nullptr) row.sin = normalisedSIN(field(*client, "ClientSIN"));
  if (const ProfileT1YearRow* year = profileT1YearOfExtension(profileFileExtension(row.path)))
    row.taxYear = year->year;
  ++progressPosition_;
  // Both halved, because the total counts every file twice.
  caption("Analyzing Profile T1 file " + std::to_string(std::lround(progressPosition_ / 2.0)) +
          " of " + std::to_string(std::lround(progressTotal_ / 2.0)) + ", Please wait ...");
}

bool clsImportProfileT1::importProfileT1Files(bool /*showDialog*/) {
  lastImported_ = false;
  procedure(procedureLabel("importProfileT1Files"), [&] {
    if (!testProfileInstallation("Profile.T2006T1File")) return;
    openProfileT1Files();
  });
  return lastImported_;
}

void clsImportProfileT1::openProfileT1Files() {
  procedure(procedureLabel("openProfileT1Files"), [&] {
    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    bool paused = true;
    if (dropDown != nullptr) {
      dropDown->setLoadingPaused(paused);
      dropDown->setRefreshPaused(paused);
    }
    long position = 1;
    long total = static_cast<long>(profileFileList.size());
    // Returns imported commit several at a time, each whole.
    RowWriteGroups rows(procedureLabel("commitRows"), counters);
    rowGroups_ = &rows;
    struct Unset {
      RowWriteGroups*& slot;
      ~Unset() { slot = nullptr; }
    } unset{rowGroups_};
    for (currentRow_ = 0; currentRow_ < profileFileList.size(); ++currentRow_) {
      const ProfileFileRow& row = profileFileList[currentRow_];
      if (profileFileAction != kProfileAnalyze && !row.selected) continue;
      ++position;
      // Intended: the analysing words stand during an import too.
      caption("Analyzing Profile T1 files " + std::to_string(position) + " of " +
              std::to_string(total) + ", Please wait ...");
      std::string path = row.path;
      actionRan_ = false;
      resumeNext([&] { openProfileT1File(path, true); });
      if (counters != nullptr && profileFileAction == kProfileImportClient && !actionRan_) {
        ++counters->read;
        if (profileT1YearOfExtension(profileFileExtension(path)) == nullptr)
          counters->skip("no Profile object opens the year of " + row.display);
        else if (passwordCancelled())
          counters->skip("the password question was cancelled: " + row.display);
        else
          counters->fail("could not be opened: " + row.display);
      }
    }
    rows.commit();
    paused = false;
    if (dropDown != nullptr) {
      dropDown->setLoadingPaused(paused);
      dropDown->setRefreshPaused(paused);
    }
  });
}

void clsImportProfileT1::runProfileFileAction(const std::string& path, ProfileFile& file,
                                              ProfileClient& client, ProfileClient* second) {
  switch (profileFileAction) {
    case kProfileImportClient:
      actionRan_ = true;
      importReturn(
          [&](std::string& skipReason) {
            clientCreated_ = false;
            lastImported_ = importProfileT1FileInformation(path, client, second);
            if (!lastImported_) {
              skipReason = "an existing client, not updated";
              return RowOutcome::Skipped;
            }
            return clientCreated_ ? RowOutcome::Created : RowOutcome::Updated;
          },
          rowGroups_, counters);
      break;
    case kProfileUpdateReturn:
      updateProfileT1FileInformation(file, client, second, updateSucceeded_);
      break;
    case kProfileAnalyze:
      doesProfileFileSINAlreadyExistInLedgerfolio(&client);
      break;
    default:
      break;
  }
}

void clsImportProfileT1::writePersonalTaxProfileInfo(long contact, long taxYear,
                                                     const std::string& path,
                                                     ProfileClient& client) {
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) return;
  const std::string year = std::to_string(taxYear);
  ignoreErrors([&] {
    // The year's rows of this contact only: the same find, without reading the whole year
    // for every return.
    RecordsetScope info(
        *db,
        "SELECT PersonalTaxProfileInfo.* FROM PersonalTaxProfileInfo WHERE "
        "PersonalTaxProfileInfo.TaxYear = " +
            year + " AND PersonalTaxProfileInfo.ContactNum = " + std::to_string(contact) + ";",
        kLockOptimistic);
    bool found = db->findRecord(info, "ContactNum", std::to_string(contact));
    auto set = [&](const std::string& column, const std::string& value) {
      ignoreErrors([&] {
        if (found)
          db->setField(info, column, value);
        else
          db->setNewField(info, column, value);
      });
    };
    if (!found) db->addNewRecord(info);
    set("ContactNum", std::to_string(contact));
    set("TaxYear", year);
    set("DateLastSynched", Date::now().toIso());
    set("ProfileFileLocation", path);
    double t48 = Variant::text(field(client, "T1[48]")).toDouble();
    double t51 = Variant::text(field(client, "T1[51]")).toDouble();
    if (t48 == t51 && t48 > 0) set("T5007", "True");
    std::string status, efile;
    ignoreErrors([&] { status = client.ClientStatus(); });
    ignoreErrors([&] { efile = client.EFILEStatus(); });
    set("ProfileClientStatus", status);
    set("EFILEStatus", efile);
    auto amount = [&](const char* key) {
      std::string value = GeneralUtilities::trim(field(client, key));
      return GeneralUtilities::isNumeric(value) ? value : std::string("0");
    };
    if (GeneralUtilities::trim(field(client, "T1Info.B[2]")) == "1") {
      set("Revenue", amount("RC71[15]"));
      set("Discounted", "True");
      set("EstimatedRefund", amount("RC71[5]"));
      set("PaidtoClient", amount("RC71[14]"));
      set("GST", amount("RC71[10]"));
      if (Variant::text(amount("RC72[2]")).toDouble() != 0) set("ActualRefund", amount("RC72[2]"));
    } else {
      set("Revenue", amount("Invoice[155]"));
      set("GST", amount("Invoice[157]"));
      set("Discounted", "False");
    }
    std::string deceased = formatProfileString("Date", field(client, "T1Info[4]"));
    if (!deceased.empty() && deceased != "1899-12-30") set("DeceasedReturn", "True");
    std::string signedOn = formatProfileString("Date", field(client, "T1Info[7]"));
    if (!signedOn.empty()) set("DateSigned", signedOn);
    set("PreparerName", field(client, "T1Info.S[13]"));
    set("PartnerName", field(client, "T1Info.S[14]"));
    if (!found) db->updateRecord(info);
  });
}

bool clsImportProfileT1::importProfileT1FileInformation(const std::string& path,
                                                        ProfileClient& client,
                                                        ProfileClient* second) {
  bool imported = false;
  procedure(procedureLabel("importProfileT1FileInformation"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const ProfileFieldLists& lists = createFieldList();
    const std::string year = std::to_string(importTaxYear);
    long listID = -1;
    if (ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference) {
      long y = importTaxYear;
      ignoreErrors([&] { listID = dropDown->getCategoryForYear(y, ""); });
    }

    // Finds a person by SIN, then by name; what to do with a match follows the control.
    auto findPerson = [&](const std::string& sin, const std::string& first, const std::string& last,
                          bool& create, bool& import) {
      create = import = true;
      ImportDuplicatesControl* duplicates = contactDuplicatesControl;
      if (duplicates == nullptr || !duplicates->checkingOn()) return -1L;
      duplicates->clearSearch();
      duplicates->setSIN(normalisedSIN(sin));
      duplicates->setFirstName(GeneralUtilities::trim(first));
      duplicates->setLastName(GeneralUtilities::trim(last));
      duplicates->setName(GeneralUtilities::trim(first) + " " + GeneralUtilities::trim(last));
      duplicates->runSearch();
      long found = duplicates->matchByFirstTest() > 0 ? duplicates->matchByFirstTest()
                                                      : duplicates->matchBySecondTest();
      if (found > 0) {
        std::string foundName;
        ignoreErrors([&] {
          RecordsetScope rs(
              *db, "SELECT Contacts.* FROM Contacts WHERE ContactID=" + std::to_string(found) + ";",
              kLockReadOnly);
          if (db->hasRecord(rs))
            foundName = db->getField(rs, "FirstName").toString() + " " +
                        db->getField(rs, "LastName").toString();
        });
        decideOnDuplicate(duplicates->getAction(), foundName, create, import);
      }
      return found;
    };

    // Makes the contact a personal-tax client of the year and writes the list's fields on it.
    // clientSide: the client's list (first names skipped) or the spouse's.
    auto importPerson = [&](long contact, const std::vector<ProfileFieldRow>& list, bool clientSide,
                            const std::string& otherName, const std::string& clientAddress,
                            const std::string& spouseAddress) {
      if (!isContactPersonalTaxContactForTaxYear(contact, importTaxYear))
        addNewPersonalTaxClientForExistingContact(contact, listID, importTaxYear, 1);
      const std::string id = std::to_string(contact);
      RecordsetScope personal(*db,
                              "SELECT PersonalTaxStatus.* FROM PersonalTaxStatus WHERE "
                              "ContactNum=" +
                                  id + " AND TaxYear=" + year + ";",
                              kLockOptimistic);
      if (!db->hasRecord(personal)) return false;
      RecordsetScope contacts(*db, "SELECT Contacts.* FROM Contacts WHERE ContactID=" + id + ";",
                              kLockOptimistic);
      if (!db->hasRecord(contacts)) return false;
      if (!GeneralUtilities::isBlank(otherName)) write(*db, contacts, "SpouseName", otherName);
      for (const ProfileFieldRow& row : list) {
        if (row.option >= 0 && row.option < static_cast<int>(chkOption.size()) &&
            chkOption[row.option]) {
          if (isValueTrue(formatProfileString(row.format, field(client, row.key))))
            write(*db, personal, row.column5, "True");
        } else if (row.key == "ClientAddress") {
          write(*db, contacts, row.column5, clientAddress);
        } else if (row.key == "SpouseAddress") {
          write(*db, contacts, row.column5, spouseAddress);
        } else if (clientSide && (row.key == "ClientFirstName" || row.key == "SpouseFirstName")) {
          // The name parts came from addNewContact.
        } else {
          // An option row whose box is not ticked lands here too: its column is no column of
          // Contacts, and the failed write is ignored.
          std::string value = formatProfileString(row.format, field(client, row.key));
          if (!GeneralUtilities::isBlank(value)) write(*db, contacts, row.column5, value);
        }
      }
      if (clientSide)
        write(*db, personal, "ContactPersonalTaxDisplayType", optCouplesReturn == 2 ? "2" : "1");
      return true;
    };

    auto finishPerson = [&](long contact, const std::string& first, const std::string& last,
                            const std::string& sin) {
      ignoreErrors([&] { contactSINSynchClassInit()->synchContactSIN(contact); });
      ignoreErrors([&] { saveContactPersonalRTF(contact, -1); });
      ignoreErrors([&] { saveContactPersonalTaxRTF(contact, importTaxYear, -1); });
      ignoreErrors([&] { saveContactBusinessRTF(contact, -1, -1, false); });
      if (contactDuplicatesControl != nullptr)
        contactDuplicatesControl->addContact(contact, first, last, normalisedSIN(sin), "");
    };

    // 1-4: the client.
    const std::string clientName =
        joinName({field(client, "ClientTitle"), field(client, "ClientFirstName"),
                  field(client, "ClientLastName")});
    const std::string spouseName =
        joinName({field(client, "SpouseTitle"), field(client, "SpouseFirstName"),
                  field(client, "SpouseLastName")});
    bool create = true, import = true;
    long contact = findPerson(field(client, "ClientSIN"), field(client, "ClientFirstName"),
                              field(client, "ClientLastName"), create, import);
    if (create) {
      contact = addNewContact(clientName, listID, -1);
      ++contactsCreated;
      clientCreated_ = true;
    }
    const std::string clientAddress = composedAddress(client, "Client");
    const std::string spouseAddress = composedAddress(client, "Spouse");

    // 5: the client's fields and marks.
    if (import && contact > 0) {
      caption("Importing " + clientName);
      imported =
          importPerson(contact, lists.client, true, spouseName, clientAddress, spouseAddress);
      if (imported) ++contactsImported;
    }

    // 6: the return's row of PersonalTaxProfileInfo.
    if (contact > 0) writePersonalTaxProfileInfo(contact, importTaxYear, path, client);

    // 7: the spouse, as a contact of their own.
    bool business =
        chkImprtBusinessInformation && !GeneralUtilities::isBlank(field(client, "T2125.S[1,3]"));
    long spouse = -1;
    bool spouseImported = false;
    if ((optCouplesReturn == 0 || business) && !GeneralUtilities::isBlank(spouseName)) {
      bool spouseCreate = true, spouseImport = true;
      spouse = findPerson(field(client, "SpouseSIN"), field(client, "SpouseFirstName"),
                          field(client, "SpouseLastName"), spouseCreate, spouseImport);
      if (spouseCreate) {
        spouse = addNewContact(spouseName, listID, -1);
        ++contactsCreated;
      }
      if (spouseImport && spouse > 0) {
        const auto relations =
            coupleRelations(GeneralUtilities::trim(field(client, "T1Info.B[10]")),
                            GeneralUtilities::trim(field(client, "T1Info.B[23]")));
        const std::string& spouseRelation = relations.first;
        const std::string& clientRelation = relations.second;
        if (!spouseRelation.empty() && contact > 0)
          ignoreErrors([&] { addContactLink(spouse, -1, -1, contact, spouseRelation, true); });
        // Intended: the first-name skip reads the client list's row, which is past its end,
        // so on the spouse's contact both first-name rows are written.
        spouseImported =
            importPerson(spouse, lists.spouse, false, clientName, clientAddress, spouseAddress);
        if (!clientRelation.empty() && contact > 0)
          ignoreErrors([&] { addContactLink(contact, -1, -1, spouse, clientRelation, true); });
      }
    }

    // 8: the businesses of the statements of business activities.
    if (chkImprtBusinessInformation && imported) {
      long owner = contact;
      importProfileSoleProprietorshipInformation(client, owner, false, companyDuplicatesControl,
                                                 importTaxYear);
      if (second != nullptr) {
        owner = spouse;
        importProfileSoleProprietorshipInformation(*second, owner, true, companyDuplicatesControl,
                                                   importTaxYear);
      }
    }

    // 9: summaries, the SIN synchronisation, and the duplicates control learns the contacts.
    if (imported)
      finishPerson(contact, field(client, "ClientFirstName"), field(client, "ClientLastName"),
                   field(client, "ClientSIN"));
    if (spouseImported)
      finishPerson(spouse, field(client, "SpouseFirstName"), field(client, "SpouseLastName"),
                   field(client, "SpouseSIN"));
  });
  return imported;
}

}  // namespace lf
