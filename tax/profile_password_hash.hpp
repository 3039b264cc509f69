// Passwords of stand-in Profile returns: kept as a random salt and the SHA-256 of salt and
// password, never in clear.
#pragma once

#include <string>
#include <string_view>

namespace lf {

struct ProfilePasswordHash {
  std::string salt;    // 32 hex digits
  std::string sha256;  // 64 hex digits: SHA-256 of the salt's text followed by the password
};

// SHA-256 of the bytes, as 64 lower-case hex digits.
std::string sha256Hex(std::string_view bytes);

// A new random salt and the hash of the password with it.
ProfilePasswordHash hashProfilePassword(std::string_view password);

// True when the password gives the stored hash.
bool profilePasswordMatches(const ProfilePasswordHash& stored, std::string_view password);

}  // namespace lf
