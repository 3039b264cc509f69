// The stand-in Profile product's file, client and services objects and their factory.
#include "tax/profile_stand_in.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "db/practice_database.hpp"
#include "tax/profile_field_key.hpp"

namespace lf {
namespace {

[[noreturn]] void fail(const std::string& description, long number = kProfileUnspecifiedError) {
  throw Failure(description, number);
}

std::string nameOnly(const std::string& path) {
  return std::filesystem::path(path).filename().string();
}

class StandInFile;

class StandInClient : public ProfileClient {
 public:
  StandInClient(StandInFile& file, bool second) : file_(file), second_(second) {}
  Variant Field(std::string_view key) override;
  void setField(std::string_view key, const Variant& value) override;
  std::string ClientStatus() override { return data().clientStatus; }
  std::string EFILEStatus() override { return data().efileStatus; }
  ProfileFile& ProFileFile() override;

 private:
  ProfileReturnClient& data();
  StandInFile& file_;
  bool second_;
};

class StandInFile : public ProfileFile {
 public:
  // kind "T1" with its year, or "T2" (any year).
  StandInFile(std::string kind, int year) : kind_(std::move(kind)), year_(year) {}

  void LoadFile(const std::string& path, bool readOnly) override {
    close();
    std::optional<ProfileExtensionKind> byName = profileKindOfExtension(profileFileExtension(path));
    if (!byName || byName->kind != kind_ || (kind_ == "T1" && byName->year != year_))
      fail("The file '" + nameOnly(path) + "' is not a " + describe() + " file");
    if (readOnly ? ProfileFileLock::isInUse(path) : !lock_.acquire(path)) {
      if (!std::filesystem::exists(path)) fail("The file '" + nameOnly(path) + "' does not exist");
      fail("This file may be in use by another user", kProfileRefusal);
    }
    try {
      ProfileReturn loaded = loadProfileReturnFile(path);
      if (loaded.kind != kind_ || (kind_ == "T1" && loaded.year != year_))
        fail("The file '" + nameOnly(path) + "' is not a " + describe() + " file");
      if (loaded.password && !profilePasswordMatches(*loaded.password, password_))
        fail("Incorrect password for file '" + nameOnly(path) + "'", kProfileRefusal);
      return_ = std::move(loaded);
    } catch (...) {
      lock_.release();
      throw;
    }
    path_ = path;
    readOnly_ = readOnly;
  }

  void setFilePassword(const std::string& password) override { password_ = password; }

  void SaveFile(const std::string& path) override {
    if (!return_) fail("No Profile file is loaded");
    bool samePath = std::filesystem::absolute(path) == std::filesystem::absolute(path_);
    if (samePath && readOnly_) fail("The file '" + nameOnly(path) + "' was opened read-only");
    if (!samePath && ProfileFileLock::isInUse(path))
      fail("This file may be in use by another user", kProfileRefusal);
    saveProfileReturnFile(path, *return_);
    // The rename put a new file in place: the lock of a writable load moves onto it.
    if (samePath) lock_.acquire(path);
  }

  std::shared_ptr<ProfileClient> primaryClient() override {
    if (!return_) fail("No Profile file is loaded");
    return std::make_shared<StandInClient>(*this, false);
  }
  std::shared_ptr<ProfileClient> secondClient() override {
    if (!return_ || !return_->second) return nullptr;
    return std::make_shared<StandInClient>(*this, true);
  }
  std::string fileName() override { return path_; }
  void close() override {
    return_.reset();
    path_.clear();
    lock_.release();
  }

  ProfileReturn& loaded() {
    if (!return_) fail("No Profile file is loaded");
    return *return_;
  }

 private:
  std::string describe() const {
    return kind_ == "T2" ? std::string("Profile T2") : "Profile " + std::to_string(year_) + " T1";
  }

  std::string kind_;
  int year_;
  std::string password_;
  std::string path_;
  bool readOnly_ = true;
  std::optional<ProfileReturn> return_;
  ProfileFileLock lock_;
};

ProfileReturnClient& StandInClient::data() {
  ProfileReturn& loaded = file_.loaded();
  if (second_) {
    if (!loaded.second) fail("The return has no second client");
    return *loaded.second;
  }
  return loaded.primary;
}

// The stored key that answers `key`: the product reads keys without regard to letter case
// ("SpouseFirstname" and "SpouseFirstName" are one field), the exact spelling first.
std::map<std::string, std::string>::iterator findKey(ProfileReturnClient& client,
                                                     std::string_view key) {
  auto it = client.fields.find(std::string(key));
  if (it != client.fields.end()) return it;
  // Field keys are ASCII: compared letter by letter, without building upper-case copies of
  // every stored key for each read (most keys read are not in the return).
  auto upper = [](unsigned char c) { return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c; };
  for (it = client.fields.begin(); it != client.fields.end(); ++it) {
    const std::string& stored = it->first;
    if (stored.size() == key.size() &&
        std::equal(stored.begin(), stored.end(), key.begin(), [&](char a, char b) {
          return upper(static_cast<unsigned char>(a)) == upper(static_cast<unsigned char>(b));
        }))
      return it;
  }
  return client.fields.end();
}

// Whether the return holds any cell of the copy of a repeating form (or of its table).
bool hasFormCopy(ProfileReturnClient& client, const ProfileFieldKey& wanted) {
  std::string form = GeneralUtilities::upperCase(wanted.name);
  if (form.size() > 6 && form.ends_with("OWNERS")) form.resize(form.size() - 6);
  for (const auto& [stored, value] : client.fields) {
    std::optional<ProfileFieldKey> key = parseProfileFieldKey(stored);
    if (!key || key->index.size() < 2 || key->index[0] != wanted.index[0]) continue;
    std::string name = GeneralUtilities::upperCase(key->name);
    if (name.size() > 6 && name.ends_with("OWNERS")) name.resize(name.size() - 6);
    if (name == form) return true;
  }
  return false;
}

Variant StandInClient::Field(std::string_view key) {
  std::optional<ProfileFieldKey> parsed = parseProfileFieldKey(key);
  if (!parsed) fail("Unknown field '" + std::string(key) + "'");
  ProfileReturnClient& client = data();
  // A copy of a repeating form that the return does not have cannot be read.
  if (parsed->index.size() >= 2 && !hasFormCopy(client, *parsed))
    fail("The return has no copy " + std::to_string(parsed->index[0]) + " of form " + parsed->name);
  auto it = findKey(client, key);
  return Variant::text(it == client.fields.end() ? std::string() : it->second);
}

void StandInClient::setField(std::string_view key, const Variant& value) {
  if (!parseProfileFieldKey(key)) fail("Unknown field '" + std::string(key) + "'");
  ProfileReturnClient& client = data();
  std::string text = value.toString();
  auto it = findKey(client, key);
  if (text.empty()) {
    if (it != client.fields.end()) client.fields.erase(it);
  } else if (it != client.fields.end()) {
    it->second = text;
  } else {
    client.fields[std::string(key)] = text;
  }
}

ProfileFile& StandInClient::ProFileFile() {
  return file_;
}

class StandInServices : public ProfileServices {
 public:
  explicit StandInServices(std::shared_ptr<ProfileStandInProduct> product)
      : product_(std::move(product)) {}
  std::shared_ptr<ProfileClient> CurrentClient() override { return product_->currentClient(); }

 private:
  std::shared_ptr<ProfileStandInProduct> product_;
};

// The T1 year of "Profile.T2016T1File", or 0 for any other text.
int t1YearOfProgID(std::string_view progID) {
  constexpr std::string_view prefix = "Profile.T", suffix = "T1File";
  if (progID.size() != prefix.size() + 4 + suffix.size() || !progID.starts_with(prefix) ||
      !progID.ends_with(suffix))
    return 0;
  int year = 0;
  for (char c : progID.substr(prefix.size(), 4)) {
    if (c < '0' || c > '9') return 0;
    year = year * 10 + (c - '0');
  }
  return year;
}

}  // namespace

void ProfileStandInProduct::openInProduct(const std::string& path) {
  file_.reset();
  openedPath_ = path;
  openedAt_ = std::chrono::steady_clock::now();
}

std::shared_ptr<ProfileClient> ProfileStandInProduct::currentClient() {
  bool ready =
      !openedPath_.empty() && delay_ && std::chrono::steady_clock::now() - openedAt_ >= *delay_;
  if (!ready) fail("Profile has no client open");
  if (!file_) {
    std::optional<ProfileExtensionKind> kind =
        profileKindOfExtension(profileFileExtension(openedPath_));
    if (!kind) fail("Profile could not open '" + nameOnly(openedPath_) + "'");
    auto file = std::make_unique<StandInFile>(kind->kind, kind->year);
    file->LoadFile(openedPath_, true);
    file_ = std::move(file);
  }
  return file_->primaryClient();
}

const std::set<std::string>& profileStandInProgIDs() {
  static const std::set<std::string> all = [] {
    std::set<std::string> ids{std::string(kProfileT2ProgID), std::string(kProfileServicesProgID)};
    for (int year = 2004; year <= 2016; ++year)
      ids.insert("Profile.T" + std::to_string(year) + "T1File");
    return ids;
  }();
  return all;
}

ProfileStandInFactory::ProfileStandInFactory(std::optional<std::set<std::string>> installed,
                                             std::shared_ptr<ProfileStandInProduct> product)
    : installed_(std::move(installed)),
      product_(product ? std::move(product) : std::make_shared<ProfileStandInProduct>()) {}

bool ProfileStandInFactory::isInstalled(std::string_view progID) const {
  std::string id(progID);
  return profileStandInProgIDs().count(id) && (!installed_ || installed_->count(id));
}

std::unique_ptr<ProfileFile> ProfileStandInFactory::createFile(std::string_view progID) {
  if (!isInstalled(progID) || progID == kProfileServicesProgID)
    fail("ActiveX component can't create object", kProfileCannotCreateObject);
  if (progID == kProfileT2ProgID) return std::make_unique<StandInFile>("T2", 0);
  return std::make_unique<StandInFile>("T1", t1YearOfProgID(progID));
}

std::unique_ptr<ProfileServices> ProfileStandInFactory::createServices(std::string_view progID) {
  if (progID != kProfileServicesProgID || !isInstalled(progID))
    fail("ActiveX component can't create object", kProfileCannotCreateObject);
  return std::make_unique<StandInServices>(product_);
}

std::optional<std::set<std::string>> parseInstalledProfileProgIDs(std::string_view setting) {
  std::string text = GeneralUtilities::trim(setting);
  std::string upper = GeneralUtilities::upperCase(text);
  if (upper.empty() || upper == "ALL") return std::nullopt;
  std::set<std::string> ids;
  if (upper == "NONE") return ids;
  std::string id;
  for (char c : text + ",") {
    if (c == ',' || c == ';' || c == ' ' || c == '\t') {
      if (!id.empty()) ids.insert(id);
      id.clear();
    } else {
      id += c;
    }
  }
  return ids;
}

std::shared_ptr<ProfileStandInFactory> makeProfileStandIn(DatabaseService& db) {
  auto installed = parseInstalledProfileProgIDs(readHostSetting(db, "ProfileInstalledProgIDs"));
  std::string delayText =
      GeneralUtilities::trim(readHostSetting(db, "ProfileCurrentClientDelay", "1"));
  ProfileStandInProduct::Delay delay = std::chrono::milliseconds(1000);
  double seconds = 0;
  if (GeneralUtilities::upperCase(delayText) == "NEVER")
    delay.reset();
  else if (GeneralUtilities::parseNumber(delayText, seconds) && seconds >= 0 && seconds < 86400)
    delay = std::chrono::milliseconds(static_cast<long long>(seconds * 1000));
  return std::make_shared<ProfileStandInFactory>(std::move(installed),
                                                 std::make_shared<ProfileStandInProduct>(delay));
}

}  // namespace lf
