// The stand-in Profile product: the automation objects over the return files of
// profile_return_file.hpp, for machines where the tax product itself does not run.
//
// It behaves as the product does towards its callers:
// - A T1 file object (Profile.T2004T1File to Profile.T2016T1File) loads only returns of its
//   year; Profile.T2016T2File loads corporate returns of any year. Other files fail with the
//   unspecified error.
// - A password-protected return loads only after FilePassword was set to its password; else
//   the refusal kProfileRefusal with "Incorrect password for file '<name>'".
// - A return that another holder has locked (profile_file_lock.hpp) is refused with "This file
//   may be in use by another user". A writable load holds the lock until close.
// - A damaged or foreign file fails with the unspecified error, never worse.
// - Field keys are read without regard to letter case ("SpouseFirstname" is "SpouseFirstName");
//   a text that is no field key fails with the unspecified error, and so does a cell of a copy
//   of a repeating form ("T2125.S[1,3]", "T2125Owners[1,2,0]") of which the return holds no
//   cell at all: that form is not in the return.
// - SaveFile writes the whole return atomically (temporary file, then rename).
// - Which ProgIDs are installed is given to the factory (the host setting
//   "ProfileInstalledProgIDs": "all", "none", or the ProgIDs separated by commas); creating
//   another fails with kProfileCannotCreateObject.
// - The services object's CurrentClient is the primary client of the return last handed to
//   the product by openInProduct, once its delay has passed; "never" keeps it from ever
//   appearing, so callers' time-outs can be seen.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "tax/profile_automation.hpp"
#include "tax/profile_file_lock.hpp"
#include "tax/profile_return_file.hpp"

namespace lf {

class DatabaseService;

// The running stand-in product: the return its window shows.
class ProfileStandInProduct {
 public:
  // Nothing for "never".
  using Delay = std::optional<std::chrono::milliseconds>;

  explicit ProfileStandInProduct(Delay delay = std::chrono::milliseconds(1000)) : delay_(delay) {}

  // The platform's open action on a return file: the product opens it in its window.
  void openInProduct(const std::string& path);
  // The client open in the window; fails while none is (yet) open.
  std::shared_ptr<ProfileClient> currentClient();

  void setDelay(Delay delay) { delay_ = delay; }
  const std::string& openedPath() const { return openedPath_; }

 private:
  Delay delay_;
  std::string openedPath_;
  std::chrono::steady_clock::time_point openedAt_;
  std::unique_ptr<ProfileFile> file_;
};

class ProfileStandInFactory : public ProfileObjectFactory {
 public:
  // Every ProgID installed when `installed` is nothing.
  explicit ProfileStandInFactory(std::optional<std::set<std::string>> installed = std::nullopt,
                                 std::shared_ptr<ProfileStandInProduct> product = nullptr);

  std::unique_ptr<ProfileFile> createFile(std::string_view progID) override;
  std::unique_ptr<ProfileServices> createServices(std::string_view progID) override;

  ProfileStandInProduct& product() { return *product_; }
  bool isInstalled(std::string_view progID) const;

 private:
  std::optional<std::set<std::string>> installed_;
  std::shared_ptr<ProfileStandInProduct> product_;
};

// Every ProgID the stand-in answers: the T1 files of 2004 to 2016, the T2 file, the services.
const std::set<std::string>& profileStandInProgIDs();

// Reads the installed ProgIDs from their setting text: "" or "all" all, "none" none, otherwise
// the ProgIDs separated by commas, semicolons or blanks.
std::optional<std::set<std::string>> parseInstalledProfileProgIDs(std::string_view setting);

// The stand-in as the practice database's host settings describe it: "ProfileInstalledProgIDs"
// and "ProfileCurrentClientDelay" (seconds, or "never"; default 1).
std::shared_ptr<ProfileStandInFactory> makeProfileStandIn(DatabaseService& db);

}  // namespace lf
