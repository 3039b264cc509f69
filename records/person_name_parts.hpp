// PersonNameParts: one person's name as the name columns of a Contacts row hold it. The name
// parser returns it, the contact creators write it, the staff creator copies it.
#pragma once

#include <string>

namespace lf {

// Five strings in column order; all start empty. Returned by value.
struct PersonNameParts {
  std::string NamePrefix;
  std::string FirstName;
  std::string MiddleName;
  std::string LastName;
  std::string DisplayName;

  friend bool operator==(const PersonNameParts&, const PersonNameParts&) = default;
};

}  // namespace lf
