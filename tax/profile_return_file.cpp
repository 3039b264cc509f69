// Reading and writing stand-in return files.
#include "tax/profile_return_file.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "tax/profile_automation.hpp"
#include "tax/profile_field_key.hpp"

namespace lf {
namespace {

using nlohmann::json;

[[noreturn]] void damaged(const std::string& why) {
  throw Failure("The file is damaged or is not a Profile return: " + why, kProfileUnspecifiedError);
}

bool isHex(const std::string& text, size_t length) {
  if (text.size() != length) return false;
  for (char c : text)
    if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'))) return false;
  return true;
}

const json* member(const json& object, const char* name) {
  auto it = object.find(name);
  return it == object.end() ? nullptr : &*it;
}

std::string textMember(const json& object, const char* name) {
  const json* value = member(object, name);
  if (value == nullptr) return {};
  if (!value->is_string()) damaged(std::string(name) + " is not a text");
  return value->get<std::string>();
}

ProfileReturnClient readClient(const json& object, const char* which) {
  if (!object.is_object()) damaged(std::string(which) + " is not an object");
  ProfileReturnClient client;
  client.clientStatus = textMember(object, "ClientStatus");
  client.efileStatus = textMember(object, "EFILEStatus");
  const json* fields = member(object, "fields");
  if (fields == nullptr) return client;
  if (!fields->is_object()) damaged(std::string(which) + " fields is not an object");
  for (auto it = fields->begin(); it != fields->end(); ++it) {
    if (!parseProfileFieldKey(it.key())) damaged("'" + it.key() + "' is no field key");
    if (!it.value().is_string()) damaged("the value of " + it.key() + " is not a text");
    client.fields[it.key()] = it.value().get<std::string>();
  }
  return client;
}

json writeClient(const ProfileReturnClient& client) {
  json fields = json::object();
  for (const auto& [key, value] : client.fields) fields[key] = value;
  return json{{"ClientStatus", client.clientStatus},
              {"EFILEStatus", client.efileStatus},
              {"fields", fields}};
}

}  // namespace

ProfileReturn readProfileReturn(std::string_view text) {
  json document = json::parse(text.begin(), text.end(), nullptr, false);
  if (document.is_discarded()) damaged("it is not JSON");
  if (!document.is_object()) damaged("it is not a JSON object");
  const json* format = member(document, "format");
  if (format == nullptr || !format->is_string() || *format != "Profile return")
    damaged("it has no \"format\": \"Profile return\"");

  ProfileReturn result;
  result.kind = textMember(document, "kind");
  if (result.kind != "T1" && result.kind != "T2") damaged("kind is neither T1 nor T2");
  const json* year = member(document, "year");
  if (year == nullptr || !year->is_number_integer()) damaged("year is not a whole number");
  long long y = year->get<long long>();
  bool yearFits = result.kind == "T1" ? (y >= 2004 && y <= 2018) : (y >= 1900 && y <= 2100);
  if (!yearFits) damaged("year " + std::to_string(y) + " is out of range");
  result.year = static_cast<int>(y);

  if (const json* password = member(document, "password")) {
    if (!password->is_object()) damaged("password is not an object");
    ProfilePasswordHash hash{textMember(*password, "salt"), textMember(*password, "sha256")};
    if (!isHex(hash.salt, 32) || !isHex(hash.sha256, 64)) damaged("password is no salted hash");
    result.password = hash;
  }
  const json* primary = member(document, "primary");
  if (primary == nullptr) damaged("it has no primary client");
  result.primary = readClient(*primary, "primary");
  if (const json* second = member(document, "second"); second != nullptr && !second->is_null())
    result.second = readClient(*second, "second");
  return result;
}

std::string writeProfileReturn(const ProfileReturn& profileReturn) {
  json document{{"format", "Profile return"},
                {"kind", profileReturn.kind},
                {"year", profileReturn.year},
                {"primary", writeClient(profileReturn.primary)}};
  if (profileReturn.password)
    document["password"] = {{"salt", profileReturn.password->salt},
                            {"sha256", profileReturn.password->sha256}};
  if (profileReturn.second) document["second"] = writeClient(*profileReturn.second);
  return document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

ProfileReturn loadProfileReturnFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) damaged("it cannot be read");
  std::ostringstream text;
  text << in.rdbuf();
  return readProfileReturn(text.str());
}

void saveProfileReturnFile(const std::string& path, const ProfileReturn& profileReturn) {
  std::string temporary = path + ".saving-" + std::to_string(::getpid());
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out << writeProfileReturn(profileReturn);
    out.flush();
    if (!out) {
      std::remove(temporary.c_str());
      throw Failure("Profile could not write the file " + path, kProfileUnspecifiedError);
    }
  }
  if (std::rename(temporary.c_str(), path.c_str()) != 0) {
    std::string why = std::strerror(errno);
    std::remove(temporary.c_str());
    throw Failure("Profile could not write the file " + path + ": " + why,
                  kProfileUnspecifiedError);
  }
}

std::optional<ProfileExtensionKind> profileKindOfExtension(std::string_view extension) {
  std::string upper = GeneralUtilities::upperCase(extension);
  if (upper == "GT2") return ProfileExtensionKind{"T2", 0};
  if (upper.size() == 3 && upper[2] == 'T' && upper[0] >= '0' && upper[0] <= '9' &&
      upper[1] >= '0' && upper[1] <= '9')
    return ProfileExtensionKind{"T1", 2000 + (upper[0] - '0') * 10 + (upper[1] - '0')};
  return std::nullopt;
}

std::string profileFileExtension(std::string_view path) {
  size_t slash = path.find_last_of("/\\");
  size_t dot = path.find_last_of('.');
  if (dot == std::string_view::npos || (slash != std::string_view::npos && dot < slash)) return {};
  return std::string(path.substr(dot + 1));
}

}  // namespace lf
