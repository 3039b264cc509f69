// The Profile automation interface: the file, client and services objects of the tax product,
// their creation by ProgID, and the error state the callers inspect after each call.
//
// Everything that works with Profile returns (reading clients, writing back, starting a new
// return) is written against these three interfaces only, so any object that answers the same
// operations can stand behind them. An operation that fails throws a Failure whose number and
// message are the automation error's number and description; callers run such calls through
// trapAutomationError, which records the error instead of leaving, as the product's callers
// inspect the error state after each call.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/variant.hpp"

namespace lf {

class ProfileFile;

// The number of a refusal by Profile (wrong password, file in use); the description tells which.
inline constexpr long kProfileRefusal = 0x8000FFFF;
// The number of an object that cannot be created (its ProgID is not installed).
inline constexpr long kProfileCannotCreateObject = 429;
// The number of any other failure of the product (damaged file, no file loaded).
inline constexpr long kProfileUnspecifiedError = 0x80004005;

// The ProgIDs the component creates.
inline constexpr std::string_view kProfileT2ProgID = "Profile.T2016T2File";
inline constexpr std::string_view kProfileServicesProgID = "Profile.ProfileServices";

// The taxpayer (or, for a corporate return, the corporation) of a loaded return.
class ProfileClient {
 public:
  virtual ~ProfileClient() = default;
  // The value of one field of the return by its key; a field that holds nothing reads as "".
  virtual Variant Field(std::string_view key) = 0;
  virtual void setField(std::string_view key, const Variant& value) = 0;
  virtual std::string ClientStatus() = 0;
  virtual std::string EFILEStatus() = 0;
  // The file that holds this client.
  virtual ProfileFile& ProFileFile() = 0;
};

// One return file.
class ProfileFile {
 public:
  virtual ~ProfileFile() = default;
  virtual void LoadFile(const std::string& path, bool readOnly) = 0;
  // The password used by the next LoadFile.
  virtual void setFilePassword(const std::string& password) = 0;
  virtual void SaveFile(const std::string& path) = 0;
  // The taxpayer; fails when no file is loaded.
  virtual std::shared_ptr<ProfileClient> primaryClient() = 0;
  // The spouse of a coupled return, or nothing.
  virtual std::shared_ptr<ProfileClient> secondClient() = 0;
  virtual std::string fileName() = 0;
  virtual void close() = 0;
};

// The running product: the client open in its window.
class ProfileServices {
 public:
  virtual ~ProfileServices() = default;
  // Fails when the product has no client open.
  virtual std::shared_ptr<ProfileClient> CurrentClient() = 0;
};

// Creates the objects by ProgID; a ProgID that is not installed fails with
// kProfileCannotCreateObject.
class ProfileObjectFactory {
 public:
  virtual ~ProfileObjectFactory() = default;
  virtual std::unique_ptr<ProfileFile> createFile(std::string_view progID) = 0;
  virtual std::unique_ptr<ProfileServices> createServices(std::string_view progID) = 0;
};

// The factory the component creates its objects with; the program installs one at start.
// Without one, every creation fails as if Profile were not installed.
ProfileObjectFactory* profileObjectFactory();
void setProfileObjectFactory(std::shared_ptr<ProfileObjectFactory> factory);

// The error state after an automation call: 0 when the call went through.
struct AutomationError {
  long number = 0;
  std::string description;
  void clear() { *this = {}; }
};

// Runs one automation call with error trapping off: a failure is recorded in err (number and
// description) and the caller goes on. err is cleared first.
void trapAutomationError(AutomationError& err, const std::function<void()>& call);

}  // namespace lf
