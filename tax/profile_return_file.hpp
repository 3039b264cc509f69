// The return file of the stand-in Profile product: one return per file, a JSON object.
//
//   {
//     "format": "Profile return",          // marks the file; anything else is no return
//     "kind": "T1",                        // "T1" personal, "T2" corporate
//     "year": 2016,                        // T1: 2004 to 2018; T2: 1900 to 2100
//     "password": {"salt": "<32 hex>", "sha256": "<64 hex>"},   // optional
//     "primary": {"ClientStatus": "", "EFILEStatus": "", "fields": {"ClientSIN": "..."}},
//     "second": {...}                      // optional: the spouse of a coupled return
//   }
//
// Field keys are Profile field keys (profile_field_key.hpp) and values are texts. The
// password is the salted hash of profile_password_hash.hpp. The extension of a T1 file names
// its year ("16T" for 2016, "04T" for 2004); a corporate return is "GT2". A file that is not
// such an object, or breaks any rule above, is damaged: reading it fails with the product's
// unspecified error and says why.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "tax/profile_password_hash.hpp"

namespace lf {

struct ProfileReturnClient {
  std::string clientStatus;
  std::string efileStatus;
  std::map<std::string, std::string> fields;
};

struct ProfileReturn {
  std::string kind = "T1";
  int year = 2016;
  std::optional<ProfilePasswordHash> password;
  ProfileReturnClient primary;
  std::optional<ProfileReturnClient> second;
};

// Reads a return from its text; throws Failure (kProfileUnspecifiedError) when damaged.
ProfileReturn readProfileReturn(std::string_view text);
// The return as text, keys sorted, two-space indentation, ending in a line end.
std::string writeProfileReturn(const ProfileReturn& profileReturn);

// Reads a return file; a missing or unreadable file fails as a damaged one does.
ProfileReturn loadProfileReturnFile(const std::string& path);
// Writes the file whole or not at all: a temporary file beside it, then a rename over it.
void saveProfileReturnFile(const std::string& path, const ProfileReturn& profileReturn);

// The kind and year an extension names ("16T" or "16t": T1 2016; "GT2": T2, year 0), or
// nothing for any other extension.
struct ProfileExtensionKind {
  std::string kind;
  int year = 0;
};
std::optional<ProfileExtensionKind> profileKindOfExtension(std::string_view extension);

// The extension of a path, after its last dot, or "" when it has none.
std::string profileFileExtension(std::string_view path);

}  // namespace lf
