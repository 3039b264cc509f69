// What a text import does with a row whose client the duplicates control found, by the
// control's action: 0 skip, 1 a new client, 2 update the one found, 3 ask the user
//   "<application> has found that there is already a client named '<name>'.  Do you want
//    to update this client?"
// and update on yes, leave the row out on no.
#pragma once

#include <string_view>

namespace lf {

// Sets create (make a new client) and import (write the row's values).
void decideOnDuplicate(int action, std::string_view name, bool& create, bool& import);

struct PersonIdentity;
class ImportDuplicatesControl;

// The contact a row's person already is, by the control's first test and then its second, and
// what to do about it (decideOnDuplicate); -1 with create and import left true when checking
// is off or nobody is found.
long findDuplicatePerson(ImportDuplicatesControl* duplicates, const PersonIdentity& person,
                         bool& create, bool& import);

}  // namespace lf
