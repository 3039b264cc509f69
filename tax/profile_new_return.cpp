// createNewProfileReturn of clsImportProfileT1: starts a client's Profile T1 return of a year
// from the blank return the program carries, and fills it in with the client's details.
//
// The blank return is written to the working folder's "Temp" folder, copied into the save-to
// folder of the year and handed to Profile with the platform's open action. The class then
// waits for Profile to show that copy as its current client (20 seconds at most, or until the
// user cancels), writes the contact into it and has Profile save it under the client's own
// file name. The temporary template is deleted on every path past its writing.
#include <filesystem>
#include <fstream>
#include <thread>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "frame/shell_errors.hpp"
#include "host/client_drop_down.hpp"
#include "host/file_dialog.hpp"
#include "host/message_box.hpp"
#include "tax/profile_blank_returns.hpp"
#include "tax/profile_file_locations.hpp"
#include "tax/profile_return_file.hpp"
#include "tax/profile_t1_import.hpp"

namespace lf {
namespace {

namespace fs = std::filesystem;
using GU = GeneralUtilities;

constexpr std::chrono::seconds kNewProfileFileTimeOut{20};

bool fileExists(const std::string& path) {
  std::error_code ec;
  return !path.empty() && fs::is_regular_file(path, ec);
}

bool folderExists(const std::string& path) {
  std::error_code ec;
  return !path.empty() && fs::is_directory(path, ec);
}

int ask(const std::string& text) {
  MessageBox* box = moduleState().MsgboxClass;
  return box == nullptr ? kAnswerNo : box->ask(text, kMessageFileLocation);
}

// The client's name as a file name: the host's name for the contact, without the characters
// no file name may hold; the contact's number when the host has no name.
std::string clientFileName(long contactID) {
  std::string name;
  if (ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference)
    ignoreErrors([&] { name = dropDown->getContactName(contactID); });
  std::string clean;
  for (char c : name)
    if (std::string_view("\\/:*?\"<>|").find(c) == std::string_view::npos) clean += c;
  clean = GU::trim(clean);
  return clean.empty() ? std::to_string(contactID) : clean;
}

}  // namespace

void clsImportProfileT1::createNewProfileReturn(long contactID) {
  std::string temporaryTemplate;
  procedure(procedureLabel("createNewProfileReturn"), [&] {
    newProfileFileEnding_ = NewProfileFileEnding::None;
    newProfileFileCreated_ = false;
    // 1: the client and the year.
    profileContactID_ = contactID;
    long taxYear = askProfileTaxYear ? askProfileTaxYear() : 0;
    if (taxYear < kFirstBlankProfileYear) return;
    const std::string year = std::to_string(taxYear);

    // 2: a return already stored for the client and year.
    const std::string stored = getProfileFileLocationFromContactID(contactID, taxYear);
    if (!GU::isBlank(stored)) {
      std::string question = "There is already a Profile file of '" + stored +
                             "' associated with this client for the " + year + " tax year.\r\n\r\n";
      question += fileExists(stored) ? "Are you sure want to continue creating a new Profile file?"
                                     : "However, the Profile file could not be found.  Are you "
                                       "sure want to continue creating a new Profile file?";
      if (ask(question) != kAnswerYes) return;
    }

    // 3: the blank return of the year, written out unchanged.
    char twoDigits[8];
    std::snprintf(twoDigits, sizeof twoDigits, "%02ld", (taxYear - 2000) % 100);
    const std::string templateName = "Template." + std::string(twoDigits) + "T";
    const fs::path base = workingFolder.empty() ? fs::current_path() : fs::path(workingFolder);
    const std::string templateFolder = (base / "Temp").string();
    temporaryTemplate = (fs::path(templateFolder) / templateName).string();
    ignoreErrors([&] {
      fs::create_directories(templateFolder);
      if (std::optional<std::string> blank = loadProfileResource(static_cast<int>(taxYear))) {
        std::ofstream out(temporaryTemplate, std::ios::binary | std::ios::trunc);
        out.write(blank->data(), static_cast<std::streamsize>(blank->size()));
      }
    });

    // 4: no template of the year: one of the user's own.
    std::string templatePath = temporaryTemplate;
    if (!fileExists(templatePath)) {
      const std::string question =
          displayName() + " could not create the required Profile template file '" + templateName +
          "' which should be in the folder '" + templateFolder +
          "'.\r\n\r\nYou can easily create an new Profile template file and save it in the "
          "folder shown above.  Simply create a new Profile file and save the empty file as "
          "'Template'.\r\n\r\nWould you like to specify a different location for the Profile "
          "template file now?";
      if (ask(question) == kAnswerYes) {
        for (;;) {
          std::string chosen = requestTemplateProfileFile(templateName, templateFolder);
          if (chosen == "-1") break;
          if (GU::isBlank(chosen)) {
            showMessage(
                "The file you have entered does not appear to be valid.  Please try again.");
            continue;
          }
          templatePath = chosen;
          break;
        }
      }
    }
    if (!fileExists(templatePath)) return;

    // 5: the folder new returns are saved to.
    std::string folder = getProfileT1SaveToFolder(taxYear);
    profileTaxYear_ = taxYear;
    if (!askForSaveToFolder(folder)) return;
    putProfileT1SaveToFolder(folder, taxYear);

    // 6: the copy Profile will open.
    const std::string copy = (fs::path(folder) / fs::path(templatePath).filename()).string();
    ignoreErrors([&] { fs::copy_file(templatePath, copy, fs::copy_options::overwrite_existing); });
    if (!fileExists(copy)) {
      showMessage(displayName() +
                  " could not create the new Profile file in the designated "
                  "folder '" +
                  folder +
                  "'.  Make sure you have full permissions to this folder.\r\n\r\nThe Profile "
                  "file was not created.");
      return;
    }

    // 7-8: Profile opens the copy; wait until it shows it.
    long opened = openDocument ? openDocument(copy) : 31;
    if (opened <= 32) {
      showMessage(shellErrorText(opened));
      return;
    }
    newProfileFileDone_ = false;
    newProfileFilePath_ = copy;
    startCreateNewProfileFile();
  });
  // 9: the temporary template goes, however the run ended.
  std::error_code ec;
  if (!temporaryTemplate.empty()) fs::remove(temporaryTemplate, ec);
}

std::string clsImportProfileT1::requestTemplateProfileFile(const std::string& /*fileName*/,
                                                           const std::string& folder) {
  std::string chosen = "-1";
  procedure(procedureLabel("requestTemplateProfileFile"), [&] {
    if (templateFileDialog == nullptr) return;
    templateFileDialog->setDialogTitle("Select client files");
    templateFileDialog->setFilter("All Files (*.*)|*.*");
    templateFileDialog->setInitialFolder(folder);
    FileDialogResult result = templateFileDialog->showOpen();
    if (result.confirmed) chosen = result.path;
  });
  return chosen;
}

bool clsImportProfileT1::askForSaveToFolder(std::string& folder) {
  const std::string title = "Select the folder where you want " + displayName() + " to save the " +
                            std::to_string(profileTaxYear_) + " Profile T1 files to";
  while (!folderExists(folder)) {
    // Without a folder browser there is nobody to ask.
    if (!browseForFolder) return false;
    std::optional<std::string> chosen = browseForFolder(title);
    if (!chosen) {
      showMessage(
          "You need to select the folder where you want to save your Profile files to.  Please "
          "try again.");
      continue;
    }
    folder = *chosen;
  }
  return true;
}

void clsImportProfileT1::startCreateNewProfileFile() {
  procedure(procedureLabel("startCreateNewProfileFile"),
            [&] { newProfileFileDialog_StartProgress(); });
}

void clsImportProfileT1::newProfileFileDialog_StartProgress() {
  procedure(procedureLabel("newProfileFileDialog_StartProgress"), [&] {
    caption("Connecting with Profile, please wait ...");
    createNewProfileFile();
  });
}

void clsImportProfileT1::newProfileFileDialog_ButtonClicked() {
  // Cancel only ends the loop; the loop's ending stays "cancelled".
  newProfileFileDone_ = true;
  newProfileFileEnding_ = NewProfileFileEnding::Cancelled;
}

void clsImportProfileT1::createNewProfileFile() {
  procedure(procedureLabel("createNewProfileFile"), [&] {
    ProfileObjectFactory* factory = profileObjectFactory();
    if (factory == nullptr) throw Failure("Profile is not installed");
    std::unique_ptr<ProfileServices> services = factory->createServices(kProfileServicesProgID);
    std::string folder = getProfileT1SaveToFolder(profileTaxYear_);
    if (!folderExists(folder)) {
      if (!askForSaveToFolder(folder)) return;
      putProfileT1SaveToFolder(folder, profileTaxYear_);
    }

    auto now = [&] { return waitClock ? waitClock() : std::chrono::steady_clock::now(); };
    const auto started = now();
    newProfileFileEnding_ = NewProfileFileEnding::Cancelled;
    const std::string wanted = GU::upperCase(newProfileFilePath_);
    while (!newProfileFileDone_) {
      AutomationError err;
      trapAutomationError(err, [&] {
        std::shared_ptr<ProfileClient> current = services->CurrentClient();
        if (GU::upperCase(current->ProFileFile().fileName()) == wanted) {
          newProfileFileDone_ = true;
          newProfileFileEnding_ = NewProfileFileEnding::Connected;
        }
      });
      if (newProfileFileDone_) break;
      if (now() - started > kNewProfileFileTimeOut) {
        newProfileFileDone_ = true;
        newProfileFileEnding_ = NewProfileFileEnding::TimedOut;
        break;
      }
      if (betweenPolls)
        betweenPolls();
      else
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    caption("");

    switch (newProfileFileEnding_) {
      case NewProfileFileEnding::Connected:
        openNewProfileFile(profileContactID_, *services, profileTaxYear_, newProfileFilePath_);
        showMessage(newProfileFileCreated_
                        ? "The profile file was created successfully."
                        : "There was an error while updating this profile file.");
        break;
      case NewProfileFileEnding::TimedOut:
        showMessage("The connection between " + displayName() + " and Profile has timed out.  " +
                    displayName() + " was not able to connect to the new Profile file.");
        break;
      default:
        showMessage(displayName() + " was not able to connect to the new Profile file.");
        break;
    }
  });
}

void clsImportProfileT1::openNewProfileFile(long contactID, ProfileServices& services, long taxYear,
                                            const std::string& path) {
  procedure(procedureLabel("openNewProfileFile"), [&] {
    const fs::path copy(path);
    const std::string extension = profileFileExtension(path);
    profileContactID_ = contactID;
    profileFilePath_ =
        (copy.parent_path() / (clientFileName(contactID) + "." + extension)).string();
    profileTaxYear_ = taxYear;
    profileFileAction = kProfileUpdateReturn;
    openProfileNewT1File(services);
  });
}

void clsImportProfileT1::openProfileNewT1File(ProfileServices& services) {
  procedure(procedureLabel("openProfileNewT1File"), [&] {
    if (const ProfileT1YearRow* row =
            profileT1YearOfExtension(profileFileExtension(profileFilePath_)))
      createNewYearProfileReturn(*row, services);
  });
}

void clsImportProfileT1::createNewYearProfileReturn(const ProfileT1YearRow& row,
                                                    ProfileServices& services) {
  char label[32];
  std::snprintf(label, sizeof label, "createNew%02dProfileReturn", row.year % 100);
  procedure(procedureLabel(label), [&] {
    ProfileFile& file = services.CurrentClient()->ProFileFile();
    std::shared_ptr<ProfileClient> primary = file.primaryClient();
    std::shared_ptr<ProfileClient> second = file.secondClient();
    bool success = false;
    if (primary) updateProfileT1FileInformation(file, *primary, second.get(), success);
    primary.reset();
    second.reset();
    AutomationError err;
    trapAutomationError(err, [&] { file.close(); });
    newProfileFileCreated_ = success;
    if (success)
      putProfileFileLocationFromContactID(profileContactID_, profileTaxYear_, profileFilePath_);
  });
}

}  // namespace lf
