// updateProfile of clsImportProfileT1: writes what Ledgerfolio knows of a client into the
// client's Profile return of a year, after making sure which file that is.
//
// The SINs of the contact and the return are compared first (a difference is a question);
// then the contact's details are written over the return's, where the contact has them: a
// blank in Ledgerfolio never erases what Profile holds. Whatever the save gave, the contact's
// PersonalTaxProfileInfo row of the year is rewritten from the return as the import does.
#include <filesystem>

#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/file_dialog.hpp"
#include "host/message_box.hpp"
#include "tax/profile_file_locations.hpp"
#include "tax/profile_t1_import.hpp"

namespace lf {
namespace {

using GU = GeneralUtilities;

// The message box's answer to a question with Yes and No; no box answers No.
int ask(const std::string& text) {
  MessageBox* box = moduleState().MsgboxClass;
  return box == nullptr ? kAnswerNo : box->ask(text, kMessageFileLocation);
}

// The same with Yes, No and Cancel; no box answers Cancel.
int askWithCancel(const std::string& text) {
  MessageBox* box = moduleState().MsgboxClass;
  return box == nullptr ? kAnswerCancel : box->askYesNoCancel(text, kMessageFileLocation);
}

bool fileExists(const std::string& path) {
  std::error_code ec;
  return !path.empty() && std::filesystem::is_regular_file(path, ec);
}

std::string contactName(long contactID) {
  std::string name;
  if (ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference)
    ignoreErrors([&] { name = dropDown->getContactName(contactID); });
  return name;
}

// A field of the return as text; a failed read is blank.
std::string returnField(ProfileClient& client, std::string_view key) {
  std::string value;
  ignoreErrors([&] { value = client.Field(key).toString(); });
  return value;
}

std::string withMiddleName(const std::string& first, const std::string& middle) {
  return GU::isBlank(middle) ? first : first + " " + middle;
}

// The Profile codes of the contact's words; blank for any other word.
std::string genderCode(const std::string& gender) {
  if (gender == "Male") return "1";
  if (gender == "Female") return "2";
  return {};
}

std::string maritalStatusCode(const std::string& status) {
  static const std::pair<const char*, const char*> codes[] = {
      {"Common Law", "2"}, {"Divorced", "4"}, {"Married", "1"},
      {"Separated", "5"},  {"Single", "6"},   {"Widowed", "3"}};
  for (const auto& [word, code] : codes)
    if (status == word) return code;
  return {};
}

std::string shortDate(const Variant& value) {
  std::optional<Date> date = value.toDate();
  return date ? formatDate(*date, "Short Date") : std::string();
}

}  // namespace

ProfileUpdateStatus clsImportProfileT1::updateProfile(long contactID, long taxYear) {
  ProfileUpdateStatus status = ProfileUpdateStatus::Stopped;
  procedure(procedureLabel("updateProfile"), [&] {
    const std::string year = std::to_string(taxYear);
    std::string path = getProfileFileLocationFromContactID(contactID, taxYear);
    if (fileExists(path)) {
      int answer =
          askWithCancel("The file we last used for this client was '" + path + "'.\r\n\r\n" +
                        "Is this the file you want associated with this client for the " + year +
                        " tax year?  If you click 'No'm you can specify the correct file "
                        "location.");  // Intended: the "'No'm" misprint is the message's own.
      if (answer == kAnswerCancel) return;
      if (answer == kAnswerNo) path = promptUserForProfileFileLocation(taxYear, contactID);
    } else {
      std::string question =
          GU::isBlank(path)
              ? "There is no file currently associated with this client in " + displayName() +
                    " for the " + year +
                    " tax year.  Do you want to specify the Profile file location now?"
              : "The file '" + path + "' associated with this client for the " + year +
                    " tax year could not be found.  Do you want to specify the Profile file "
                    "location now?";
      question += "\r\n\r\nNote: " + displayName() +
                  " will automtically record the file location if you import this client from "
                  "the " +
                  year + " Profile using our import wizard.";
      if (ask(question) == kAnswerYes) path = promptUserForProfileFileLocation(taxYear, contactID);
    }
    if (!fileExists(path)) return;

    profileContactID_ = contactID;
    profileFilePath_ = path;
    profileTaxYear_ = taxYear;
    updateSucceeded_ = false;
    updateStoppedByUser_ = false;
    profileFileAction = kProfileUpdateReturn;
    openProfileT1File(path, false);
    status = updateSucceeded_       ? ProfileUpdateStatus::Updated
             : updateStoppedByUser_ ? ProfileUpdateStatus::Stopped
                                    : ProfileUpdateStatus::Failed;
  });
  return status;
}

std::string clsImportProfileT1::promptUserForProfileFileLocation(long taxYear, long contactID) {
  std::string chosen;
  procedure(procedureLabel("promptUserForProfileFileLocation"), [&] {
    if (profileFileDialog == nullptr) return;
    FileDialog& dialog = *profileFileDialog;
    dialog.setDialogTitle("Select the " + std::to_string(taxYear) + " Profile file for " +
                          contactName(contactID));
    // Intended: the filter stops at 2010.
    dialog.setFilter(
        "Profile T1 Tax File (*.10T;*.09T;*.08T;*.07T;*.06T;*.05T;*.04T)|*.10T;*.09T;*.08T;*.07T;"
        "*.06T;*.05T;*.04T|All Files (*.*)|*.*");
    dialog.setDefaultExtension("10T");
    std::string clientFolder = getProfileFileLocationFromContactID(contactID, taxYear);
    if (!clientFolder.empty())
      dialog.setInitialFolder(std::filesystem::path(clientFolder).parent_path().string());
    FileDialogResult result = dialog.showOpen();
    if (!result.confirmed || result.path.empty()) return;
    chosen = result.path;
    storeProfileFileLocation(contactID, taxYear, chosen);
  });
  return chosen;
}

void clsImportProfileT1::updateProfileT1FileInformation(ProfileFile& file, ProfileClient& client,
                                                        ProfileClient* /*second*/, bool& success) {
  success = false;
  const std::string failed = "There was an error while updating this profile file.";
  procedure(procedureLabel("updateProfileT1FileInformation"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope contacts(*db, "SELECT Contacts.* FROM Contacts;", kLockOptimistic);
    if (!db->findRecord(contacts, "ContactID", std::to_string(profileContactID_))) {
      showMessage(failed);
      return;
    }
    auto column = [&](const char* name) {
      return GU::trim(db->getField(contacts, name).toString());
    };

    // 1-2: the SINs, the client's then the spouse's.
    struct SinPair {
      const char* contactColumn;
      const char* fieldKey;
      const char* question;
    } pairs[] = {{"SocialInsuranceNumber", "ClientSIN", "The SIN numbers between "},
                 {"SpouseSIN", "SpouseSIN", "The spouse SIN numbers between "}};
    for (const SinPair& pair : pairs) {
      const std::string ours = column(pair.contactColumn);
      const std::string theirs = GU::trim(returnField(client, pair.fieldKey));
      if (theirs.empty()) {
        if (!ours.empty())
          ignoreErrors([&] { client.setField(pair.fieldKey, Variant::text(ours)); });
      } else if (ours.empty()) {
        ignoreErrors([&] { db->setField(contacts, pair.contactColumn, GU::formatSIN(theirs)); });
      } else if (GU::formatSIN(ours) != GU::formatSIN(theirs)) {
        const std::string question =
            std::string(pair.question) + displayName() + " ('" + ours + "') and Profile ('" +
            theirs + "') don't match.\r\n\r\nThe Profile file being accessed is '" +
            profileFilePath_ +
            "'\r\n\r\nAre you sure you want to continue updating this Profile file with the "
            "information from " +
            displayName() + "?";
        if (ask(question) != kAnswerYes) {
          updateStoppedByUser_ = true;
          return;
        }
      }
    }

    // 3: the contact over the return, where the contact has a value.
    auto put = [&](std::string_view key, const std::string& value) {
      if (!GU::isBlank(value)) ignoreErrors([&] { client.setField(key, Variant::text(value)); });
    };
    put("ClientTitle", column("NamePrefix"));
    if (!GU::isBlank(column("FirstName")))
      put("ClientFirstName", withMiddleName(column("FirstName"), column("MiddleName")));
    put("ClientLastName", column("LastName"));
    put("T1Info.S[7]", column("HomeAddress"));
    put("T1Info.S[8]", column("HomeCity"));
    put("T1Info.S[9]", column("HomeProvince"));
    put("T1Info.S[10]", column("HomePostalCode"));
    put("T1Info.S[11]", column("HomePhone_Main"));
    put("ClientGender", genderCode(column("Gender")));
    put("ClientMaritalStatus", maritalStatusCode(column("MaritialStatus")));
    put("ClientBirthDate", shortDate(db->getField(contacts, "Birthday")));
    put("ClientSIN", column("SocialInsuranceNumber"));
    put("SpouseTitle", column("SpouseNamePrefix"));
    if (!GU::isBlank(column("SpouseFirstName")))
      put("SpouseFirstName", withMiddleName(column("SpouseFirstName"), column("SpouseMiddleName")));
    put("SpouseLastName", column("SpouseLastName"));
    put("SpouseAddress", column("SpouseAddress"));
    put("SpouseCity", column("SpouseCity"));
    put("SpouseProvince", column("SpouseProvince"));
    put("SpousePostalCode", column("SpousePostalCode"));
    put("SpouseHomePhone", column("SpousePhone_Main"));
    put("SpouseBirthDate", shortDate(db->getField(contacts, "SpouseBirthday")));
    contacts.close();

    // 4-6: save, the figures of the return, and the outcome.
    AutomationError err;
    trapAutomationError(err, [&] { file.SaveFile(profileFilePath_); });
    success = err.number == 0;
    writePersonalTaxProfileInfo(profileContactID_, profileTaxYear_, profileFilePath_, client);
    showMessage(success ? "The profile file was updated successfully." : failed);
  });
}

}  // namespace lf
