// lfimport profile-file: creates, prints, edits and locks the return files of the stand-in
// Profile product, for users preparing data and for tests.
//
//   lfimport profile-file new FILE [--year Y] [--password P] [--set KEY=VALUE ...]
//                                  [--spouse KEY=VALUE ...] [--status S] [--efile S]
//   lfimport profile-file show FILE [--password P]
//   lfimport profile-file set FILE [--password P] [--set KEY=VALUE ...] [--spouse KEY=VALUE ...]
//                                  [--new-password P | --clear-password]
//   lfimport profile-file lock FILE [--seconds N]
//
// The extension tells the kind and year ("16T" a 2016 personal return, "GT2" a corporate one
// whose year --year gives). `set` takes the file's lock as a writable load does, so a file in
// use is refused; `lock` holds the lock for N seconds, or until it is ended.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <thread>

#include "cli/command_registry.hpp"
#include "cli/json_output.hpp"
#include "cli/option_checks.hpp"
#include "tax/profile_field_key.hpp"
#include "tax/profile_file_lock.hpp"
#include "tax/profile_return_file.hpp"

namespace lf::cli {
namespace {

using Json = nlohmann::ordered_json;

struct ProfileFileOptions {
  std::string file;
  int year = 0;
  std::string password;
  std::vector<std::string> fields;
  std::vector<std::string> spouse;
  std::string status;
  std::string efile;
  std::string newPassword;
  bool clearPassword = false;
  double seconds = -1;
};

// "KEY=VALUE" pairs into the client's fields; an empty value erases the field.
void applyFields(ProfileReturnClient& client, const std::vector<std::string>& pairs) {
  for (const std::string& pair : pairs) {
    size_t equals = pair.find('=');
    if (equals == std::string::npos) throw UsageError("'" + pair + "' is not KEY=VALUE");
    std::string key = pair.substr(0, equals), value = pair.substr(equals + 1);
    if (!parseProfileFieldKey(key)) throw UsageError("'" + key + "' is not a Profile field key");
    if (value.empty())
      client.fields.erase(key);
    else
      client.fields[key] = value;
  }
}

ProfileExtensionKind kindOf(const std::string& file) {
  std::optional<ProfileExtensionKind> kind = profileKindOfExtension(profileFileExtension(file));
  if (!kind) throw UsageError(file + ": the extension is neither a tax year (\"16T\") nor \"GT2\"");
  return *kind;
}

// Reads the file and checks the password, as the product's load would.
ProfileReturn loadChecked(const ProfileFileOptions& o) {
  ProfileReturn r = loadProfileReturnFile(o.file);
  if (r.password && !profilePasswordMatches(*r.password, o.password))
    throw Failure("Incorrect password for file " + o.file);
  return r;
}

Json clientJson(const ProfileReturnClient& client) {
  Json fields = Json::object();
  for (const auto& [key, value] : client.fields) fields[key] = value;
  return Json{{"ClientStatus", client.clientStatus},
              {"EFILEStatus", client.efileStatus},
              {"fields", fields}};
}

int runNew(const ProfileFileOptions& o) {
  ProfileExtensionKind kind = kindOf(o.file);
  if (std::filesystem::exists(o.file)) throw Failure(o.file + " already exists");
  ProfileReturn r;
  r.kind = kind.kind;
  r.year = kind.kind == "T1" ? kind.year : (o.year > 0 ? o.year : 2016);
  if (kind.kind == "T1" && (r.year < 2004 || r.year > 2018))
    throw UsageError(o.file + ": Profile has no " + std::to_string(r.year) + " personal returns");
  if (!o.password.empty()) r.password = hashProfilePassword(o.password);
  r.primary.clientStatus = o.status;
  r.primary.efileStatus = o.efile;
  applyFields(r.primary, o.fields);
  if (!o.spouse.empty()) {
    r.second.emplace();
    applyFields(*r.second, o.spouse);
  }
  saveProfileReturnFile(o.file, r);
  return 0;
}

int runShow(const ProfileFileOptions& o) {
  ProfileReturn r = loadChecked(o);
  Json out{{"file", o.file},
           {"kind", r.kind},
           {"year", r.year},
           {"passwordProtected", r.password.has_value()},
           {"inUse", ProfileFileLock::isInUse(o.file)},
           {"primary", clientJson(r.primary)}};
  out["second"] = r.second ? clientJson(*r.second) : Json(nullptr);
  std::cout << jsonText(out) << "\n";
  return 0;
}

int runSet(const ProfileFileOptions& o) {
  ProfileFileLock lock;
  if (!lock.acquire(o.file)) {
    if (!std::filesystem::exists(o.file)) throw Failure(o.file + " does not exist");
    throw Failure("This file may be in use by another user: " + o.file);
  }
  ProfileReturn r = loadChecked(o);
  if (!o.status.empty()) r.primary.clientStatus = o.status;
  if (!o.efile.empty()) r.primary.efileStatus = o.efile;
  applyFields(r.primary, o.fields);
  if (!o.spouse.empty()) {
    if (!r.second) r.second.emplace();
    applyFields(*r.second, o.spouse);
  }
  if (o.clearPassword) r.password.reset();
  if (!o.newPassword.empty()) r.password = hashProfilePassword(o.newPassword);
  saveProfileReturnFile(o.file, r);
  return 0;
}

int runLock(const ProfileFileOptions& o) {
  ProfileFileLock lock;
  if (!lock.acquire(o.file)) {
    if (!std::filesystem::exists(o.file)) throw Failure(o.file + " does not exist");
    throw Failure("This file may be in use by another user: " + o.file);
  }
  std::cout << "locked " << o.file << std::endl;
  if (o.seconds >= 0) {
    std::this_thread::sleep_for(
        std::chrono::milliseconds(static_cast<long long>(o.seconds * 1000)));
  } else {
    for (;;) ::pause();  // held until the process is ended
  }
  return 0;
}

const CommandRegistration registration(95, [](CLI::App& app) {
  CLI::App* cmd = app.add_subcommand("profile-file", "Create, show, edit or lock a Profile return");
  cmd->require_subcommand(1);
  auto o = std::make_shared<ProfileFileOptions>();

  auto fileOption = [&](CLI::App* sub) {
    sub->add_option("FILE", o->file, "The return file (.04T to .18T, .GT2)")->required();
  };
  auto passwordOption = [&](CLI::App* sub, const char* text) {
    sub->add_option("--password", o->password, text)->transform(outsideText());
  };
  auto fieldOptions = [&](CLI::App* sub) {
    sub->add_option("--set", o->fields, "A field of the client, KEY=VALUE")
        ->transform(outsideText());
    sub->add_option("--spouse", o->spouse, "A field of the second client, KEY=VALUE")
        ->transform(outsideText());
    sub->add_option("--status", o->status, "ClientStatus")->transform(outsideText());
    sub->add_option("--efile", o->efile, "EFILEStatus")->transform(outsideText());
  };

  CLI::App* create = cmd->add_subcommand("new", "Write a new return (refuses an existing file)");
  fileOption(create);
  create->add_option("--year", o->year, "Year of a corporate return (default 2016)")
      ->check(wholeNumber(1900, 2100, "--year"));
  passwordOption(create, "Protect the return with a password");
  fieldOptions(create);
  create->callback([o] { runCommand("profile-file new", [&] { return runNew(*o); }); });

  CLI::App* show = cmd->add_subcommand("show", "Print a return as JSON");
  fileOption(show);
  passwordOption(show, "The return's password");
  show->callback([o] { runCommand("profile-file show", [&] { return runShow(*o); }); });

  CLI::App* set = cmd->add_subcommand("set", "Change fields of a return (a blank value erases)");
  fileOption(set);
  passwordOption(set, "The return's password");
  fieldOptions(set);
  auto* newPassword =
      set->add_option("--new-password", o->newPassword, "A new password")->transform(outsideText());
  set->add_flag("--clear-password", o->clearPassword, "Drop the password")->excludes(newPassword);
  set->callback([o] { runCommand("profile-file set", [&] { return runSet(*o); }); });

  CLI::App* lock = cmd->add_subcommand("lock", "Hold the return's lock: it is in use");
  fileOption(lock);
  lock->add_option("--seconds", o->seconds, "How long (default: until the process is ended)")
      ->check(CLI::Range(0.0, 86400.0));
  lock->callback([o] { runCommand("profile-file lock", [&] { return runLock(*o); }); });
});

}  // namespace
}  // namespace lf::cli
