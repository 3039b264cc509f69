// The open procedures of Profile returns. Automation calls run with error trapping off: each
// call is made, then its error state is inspected, then cleared.
#include "tax/profile_automation_layer.hpp"

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "tax/profile_return_file.hpp"

namespace lf {
namespace {

constexpr std::string_view kIncorrectPassword = "Incorrect password for file";
constexpr std::string_view kInUse = "This file may be in use by another user";

constexpr std::array<ProfileT1YearRow, 13> kYears = {{
    {"16T", 2016, "openProfile2016T1File", "Profile.T2016T1File"},
    {"15T", 2015, "openProfile2015T1File", "Profile.T2015T1File"},
    {"14T", 2014, "openProfile2014T1File", "Profile.T2014T1File"},
    {"13T", 2013, "openProfile2013T1File", "Profile.T2013T1File"},
    {"12T", 2012, "openProfile2012T1File", "Profile.T2012T1File"},
    {"11T", 2011, "openProfile2011T1File", "Profile.T2011T1File"},
    {"10T", 2010, "openProfile2010T1File", "Profile.T2010T1File"},
    {"09T", 2009, "openProfile2009T1File", "Profile.T2009T1File"},
    {"08T", 2008, "openProfile2008T1File", "Profile.T2008T1File"},
    {"07T", 2007, "openProfile2007T1File", "Profile.T2007T1File"},
    {"06T", 2006, "openProfile2006T1File", "Profile.T2006T1File"},
    {"05T", 2005, "openProfile2005T1File", "Profile.T2005T1File"},
    {"04T", 2004, "openProfile2004T1File", "Profile.T2004T1File"},
}};

// A refusal by Profile whose description holds the words, compared without letter case.
bool isRefusal(const AutomationError& err, std::string_view words) {
  return err.number == kProfileRefusal &&
         GeneralUtilities::upperCase(err.description).find(GeneralUtilities::upperCase(words)) !=
             std::string::npos;
}

// The file name without its folder ("/" and "\" both end a folder).
std::string withoutFolder(const std::string& path) {
  size_t slash = path.find_last_of("/\\");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string applicationName() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr ? locale->getApplicationName() : std::string("Ledgerfolio");
}

std::string notInitializedText() {
  return " could not initialize Profile on this computer.  Make sure you have Profile "
         "initialized and installed on this computer.";
}

std::string unknownErrorText(const std::string& fileName, std::string_view ending) {
  return "There was an unknown error while trying to opening the Profile file '" + fileName +
         "'.  " + applicationName() + std::string(ending);
}

}  // namespace

const std::array<ProfileT1YearRow, 13>& profileT1YearTable() {
  return kYears;
}

const ProfileT1YearRow* profileT1YearOfExtension(std::string_view extension) {
  std::string upper = GeneralUtilities::upperCase(extension);
  for (const ProfileT1YearRow& row : kYears)
    if (row.extension == upper) return &row;
  return nullptr;
}

ProfilePasswordEntry ProfileListedPasswords::ask(const std::string& /*title*/,
                                                 const std::string& /*label*/,
                                                 const std::string& text) {
  MessageBox* box = moduleState().MsgboxClass;
  if (box != nullptr && box->pressesCancel(text, kMessageWrongPassword)) return {};
  if (next_ >= passwords_.size()) return {"", false, true};
  return {passwords_[next_++], true, false};
}

std::string ProfileAutomationLayer::displayName() {
  return applicationName();
}

void ProfileAutomationLayer::showMessage(const std::string& text) {
  if (MessageBox* box = moduleState().MsgboxClass) box->show(text, kMessageInformation);
}

std::string ProfileAutomationLayer::procedureLabel(std::string_view procedureName) const {
  // Intended: the personal class's labels read "clsImporttProfileT1", the doubled t included.
  std::string className = family_ == Family::T1 ? "clsImporttProfileT1" : "clsImportProfileT2";
  return "Ledgerfolio.exe-" + className + "-" + std::string(procedureName);
}

void ProfileAutomationLayer::openProfileT1File(const std::string& path, bool readOnly) {
  std::string label = procedureLabel("openProfileT1File");
  procedure(label, [&] {
    // The year is told by the extension alone; nothing inside the file is consulted.
    std::string extension = profileFileExtension(path);
    if (const ProfileT1YearRow* row = profileT1YearOfExtension(extension))
      openProfileYearT1File(*row, path, readOnly);
  });
}

void ProfileAutomationLayer::openProfileYearT1File(const ProfileT1YearRow& row,
                                                   const std::string& path, bool readOnly) {
  std::string label = procedureLabel(row.procedure);
  passwordCancelled_ = false;
  procedure(label, [&] {
    AutomationError err;
    std::unique_ptr<ProfileFile> file;
    ProfileObjectFactory* factory = profileObjectFactory();
    if (factory != nullptr)
      trapAutomationError(err, [&] { file = factory->createFile(row.progID); });
    if (factory == nullptr || err.number != 0 || !file) {
      showMessage(displayName() + notInitializedText());
      return;
    }

    trapAutomationError(err, [&] { file->LoadFile(path, readOnly); });
    std::string fileName = withoutFolder(path);
    bool success = false;
    if (err.number == kProfileRefusal && isRefusal(err, kIncorrectPassword)) {
      openPasswordProtectedProfileT1File(path, file.get(), readOnly, success);
    } else if (err.number == kProfileRefusal && isRefusal(err, kInUse)) {
      showMessage(displayName() + " could not open the Profile file '" + fileName +
                  "' because this file may be in use by another user.");
    } else if (err.number != 0) {
      showMessage(unknownErrorText(fileName, " could not open this file."));
    } else {
      success = true;
    }

    std::shared_ptr<ProfileClient> second, client;
    trapAutomationError(err, [&] { second = file->secondClient(); });
    if (success) {
      trapAutomationError(err, [&] { client = file->primaryClient(); });
      if (err.number != 0 || !client)
        showMessage(unknownErrorText(fileName, " could not open this client."));
      else
        runProfileFileAction(path, *file, *client, second.get());
    }
    client.reset();
    second.reset();
    trapAutomationError(err, [&] { file->close(); });
  });
}

bool ProfileAutomationLayer::passwordLoop(const std::string& path, ProfileFile& file,
                                          bool readOnly) {
  AutomationError err;
  trapAutomationError(err, [&] { file.LoadFile(path, readOnly); });
  if (!isRefusal(err, kIncorrectPassword)) return false;
  std::string fileName = withoutFolder(path);
  for (;;) {
    // The remembered passwords first, in the order they were remembered.
    for (const std::string& password : passwords_) {
      if (GeneralUtilities::isBlank(password)) continue;
      trapAutomationError(err, [&] {
        file.setFilePassword(password);
        file.LoadFile(path, readOnly);
      });
      if (err.number != kProfileRefusal) return true;
    }
    ProfilePasswordEntry entry;
    if (passwordForm_ != nullptr)
      // Intended: "is is" stands as the question has always read.
      entry = passwordForm_->ask("Enter Profile Password", "Password:",
                                 "The Profile file '" + fileName +
                                     "' is is a password protected Profile file.\n\nEnter the "
                                     "password and then click 'Ok', or click 'Cancel' to continue "
                                     "without opening this file.");
    bool blank = GeneralUtilities::isBlank(entry.password);
    if (entry.remember && !blank) passwords_.push_back(entry.password);
    if (blank) {
      passwordCancelled_ = !entry.unanswered;
      return false;  // Cancel: no message, the batch moves on
    }
    trapAutomationError(err, [&] {
      file.setFilePassword(entry.password);
      file.LoadFile(path, readOnly);
    });
    if (err.number != kProfileRefusal) return true;
    if (MessageBox* box = moduleState().MsgboxClass)
      box->show("The password you have entered is incorrect.  Please try again.",
                kMessageWrongPassword);
  }
}

void ProfileAutomationLayer::openPasswordProtectedProfileT1File(const std::string& path,
                                                                ProfileFile* file, bool readOnly,
                                                                bool& success) {
  success = false;
  std::string label = procedureLabel("openPasswordProtectedProfileT1File");
  procedure(label, [&] {
    if (file != nullptr) success = passwordLoop(path, *file, readOnly);
  });
}

void ProfileAutomationLayer::openPasswordProtectedProfileT2File(const std::string& path,
                                                                ProfileFile* file) {
  std::string label = procedureLabel("openPasswordProtectedProfileT2File");
  procedure(label, [&] {
    if (file != nullptr) passwordLoop(path, *file, true);
  });
}

void ProfileAutomationLayer::openProfileT2File(const std::string& path,
                                               std::unique_ptr<ProfileFile>& file,
                                               std::shared_ptr<ProfileClient>& client) {
  client.reset();
  passwordCancelled_ = false;
  std::string label = procedureLabel("openProfileT2File");
  procedure(label, [&] {
    AutomationError err;
    if (!file) {
      ProfileObjectFactory* factory = profileObjectFactory();
      if (factory != nullptr)
        trapAutomationError(err, [&] { file = factory->createFile(kProfileT2ProgID); });
      if (factory == nullptr || err.number != 0 || !file) {
        file.reset();
        showMessage(displayName() + notInitializedText());
        return;
      }
    }
    trapAutomationError(err, [&] { file->LoadFile(path, true); });
    long number = err.number;
    std::string fileName = withoutFolder(path);
    if (isRefusal(err, kIncorrectPassword)) {
      openPasswordProtectedProfileT2File(path, file.get());
    } else if (isRefusal(err, kInUse)) {
      showMessage(displayName() + " could not open the Profile file '" + fileName +
                  "' because this file may be in use by another user.");
    }
    if (number != 0 && number != kProfileRefusal) {
      // Another error may be passing: the client is asked for up to ten times.
      for (int attempt = 0; attempt < 10 && !client; ++attempt) {
        trapAutomationError(err, [&] { client = file->primaryClient(); });
        if (err.number != 0) client.reset();
      }
      if (!client) showMessage(unknownErrorText(fileName, " could not open this file."));
    } else {
      trapAutomationError(err, [&] { client = file->primaryClient(); });
      if (err.number != 0 || !client) {
        client.reset();
        showMessage(unknownErrorText(fileName, " could not open this client."));
      }
    }
  });
}

void ProfileAutomationLayer::closeProfileT2File(std::unique_ptr<ProfileFile>& file,
                                                std::shared_ptr<ProfileClient>& client) {
  std::string label = procedureLabel("closeProfileT2File");
  procedure(label, [&] {
    client.reset();
    if (file) {
      AutomationError err;
      trapAutomationError(err, [&] { file->close(); });
    }
    file.reset();
  });
}

bool ProfileAutomationLayer::testProfileInstallation(std::string_view progID) {
  AutomationError err;
  std::unique_ptr<ProfileFile> file;
  ProfileObjectFactory* factory = profileObjectFactory();
  if (factory != nullptr) trapAutomationError(err, [&] { file = factory->createFile(progID); });
  if (factory != nullptr && err.number == 0 && file) return true;
  showMessage(displayName() + notInitializedText());
  return false;
}

void ProfileAutomationLayer::testProfileInstallationAndRegistration(bool& result) {
  result = false;
  std::string label = procedureLabel("testProfileInstallationAndRegistration");
  procedure(label, [&] { result = testProfileInstallation(kProfileT2ProgID); });
}

}  // namespace lf
