// Opening Profile returns through the automation objects: the ProgID of each tax year, the
// open steps with their messages, the password loop with its session cache, the corporate
// open with one file object per run, and the installation test.
//
// The personal and corporate import classes both carry these procedures; each keeps its own
// cache of the passwords the user asked to remember, which lives as long as the class. A
// failed open costs the user one message and never stops a batch: the caller goes on with the
// next file. What an opened personal return is used for is the caller's runProfileFileAction.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tax/profile_automation.hpp"

namespace lf {

// One year of the personal returns: the file extension, the tax year, the name of its open
// procedure and the ProgID of its file object.
struct ProfileT1YearRow {
  std::string_view extension;
  int year;
  std::string_view procedure;
  std::string_view progID;
};

// The thirteen years, "16T" (2016) down to "04T" (2004). The table is closed.
const std::array<ProfileT1YearRow, 13>& profileT1YearTable();
// The row of an extension, any letter case ("16t" is "16T"); nothing outside the table.
const ProfileT1YearRow* profileT1YearOfExtension(std::string_view extension);

// The password question (frmEnterFilePassword). A blank password means Cancel; an unattended
// front end that has no password left marks it unanswered, which is no choice of the user's.
struct ProfilePasswordEntry {
  std::string password;
  bool remember = false;
  bool unanswered = false;
};
class ProfilePasswordForm {
 public:
  virtual ~ProfilePasswordForm() = default;
  virtual ProfilePasswordEntry ask(const std::string& title, const std::string& label,
                                   const std::string& text) = 0;
};

// The password question answered from a list, each password once and remembered; then
// Cancel. For unattended runs: the run's answers (MsgboxClass) may also press Cancel on the
// question of a file, by a part of its text such as the file's name.
class ProfileListedPasswords : public ProfilePasswordForm {
 public:
  explicit ProfileListedPasswords(std::vector<std::string> passwords)
      : passwords_(std::move(passwords)) {}
  ProfilePasswordEntry ask(const std::string& title, const std::string& label,
                           const std::string& text) override;

 private:
  std::vector<std::string> passwords_;
  size_t next_ = 0;
};

class ProfileAutomationLayer {
 public:
  enum class Family { T1, T2 };
  explicit ProfileAutomationLayer(Family family) : family_(family) {}
  virtual ~ProfileAutomationLayer() = default;

  // The question asked for passwords; without one every question is answered Cancel.
  void setPasswordForm(ProfilePasswordForm* form) { passwordForm_ = form; }
  const std::vector<std::string>& rememberedPasswords() const { return passwords_; }
  // The last open ended because the user cancelled the password question (not because an
  // unattended run had no password for it).
  bool passwordCancelled() const { return passwordCancelled_; }

  // Opens a personal return by its extension's year; any other extension does nothing.
  void openProfileT1File(const std::string& path, bool readOnly);
  // The open procedure of one year (openProfile2016T1File and its twelve fellows).
  void openProfileYearT1File(const ProfileT1YearRow& row, const std::string& path, bool readOnly);
  // The password loop: cache first, then the question, until a load gets past the password or
  // the user cancels.
  void openPasswordProtectedProfileT1File(const std::string& path, ProfileFile* file, bool readOnly,
                                          bool& success);

  // Opens a corporate return into `file` (created only when it is nothing, so one object
  // serves a run) and hands back its client, or nothing after a failure and its message.
  void openProfileT2File(const std::string& path, std::unique_ptr<ProfileFile>& file,
                         std::shared_ptr<ProfileClient>& client);
  void closeProfileT2File(std::unique_ptr<ProfileFile>& file,
                          std::shared_ptr<ProfileClient>& client);
  void openPasswordProtectedProfileT2File(const std::string& path, ProfileFile* file);

  // Creates the corporate file object and drops it; false, after the message, when Profile
  // is not installed.
  void testProfileInstallationAndRegistration(bool& result);
  // The same test with another ProgID (the personal import tests with Profile.T2006T1File).
  bool testProfileInstallation(std::string_view progID);

 protected:
  // What an opened personal return is used for. The clients are released after it returns.
  virtual void runProfileFileAction(const std::string& /*path*/, ProfileFile& /*file*/,
                                    ProfileClient& /*client*/, ProfileClient* /*second*/) {}
  // The label of one procedure of this class.
  std::string procedureLabel(std::string_view procedureName) const;
  // The message box's message, with the application's display name where the text needs it.
  static void showMessage(const std::string& text);
  static std::string displayName();

 private:
  bool passwordLoop(const std::string& path, ProfileFile& file, bool readOnly);

  Family family_;
  ProfilePasswordForm* passwordForm_ = nullptr;
  std::vector<std::string> passwords_;
  bool passwordCancelled_ = false;
};

}  // namespace lf
