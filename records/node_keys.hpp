// The keys of the nodes of the category and client trees: a prefix and an ID, such as
// "Contact:15", "TaxCategory:7" or "Company:42". These operations tell a key's kind and take
// its ID back out.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// The ID after "FirmCategory:", else after "TaxCategory:", else after "Category:" (found
// without regard to case). The number form is 0 when that text is no number.
long getCategoryIDFromCategoryNodeKey(std::string_view key);
std::string getCategoryIDStringFromCategoryNodeKey(std::string_view key);

// The ID after the first of "FirmTaxContact:", "FirmContact:", "TaxContact:", "Contact:" that
// the key holds. The number form strips the prefix again, up to three more times, while the
// rest is no number, and is 0 when none is found.
long getContactIDFromContactNodeKey(std::string_view key);
std::string getContactIDStringFromContactNodeKey(std::string_view key);

// 1 for a key holding "Contact:", 2 for "Company:", 3 for "Category:", tested in that order;
// 0 otherwise.
long getSelectedMajorNodeTypeFromString(std::string_view key);

// The ID of a contact, company or category key, by its major type; 0 (or empty) otherwise.
long getSelectedNodeIDFromString(std::string_view key);
std::string getSelectedNodeIDStringFromString(std::string_view key);

}  // namespace lf
