// The duplicates control's actions.
#include "text/duplicate_question.hpp"

#include <string>

#include "base/module_state.hpp"
#include "host/import_duplicates_control.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "text/person_columns.hpp"

namespace lf {

void decideOnDuplicate(int action, std::string_view name, bool& create, bool& import) {
  switch (action) {
    case kDuplicateSkip:
      create = false;
      import = false;
      break;
    case kDuplicateNewClient:
      create = true;
      import = true;
      break;
    case kDuplicateUpdate:
      create = false;
      import = true;
      break;
    case kDuplicateAsk: {
      create = false;
      ModuleState& state = moduleState();
      const std::string application =
          state.LocaleReference != nullptr ? state.LocaleReference->getApplicationName() : "";
      const std::string question = application +
                                   " has found that there is already a client named '" +
                                   std::string(name) + "'.  Do you want to update this client?";
      import = state.MsgboxClass != nullptr &&
               state.MsgboxClass->ask(question, kMessageValidation) == kAnswerYes;
      break;
    }
    default:
      break;
  }
}

long findDuplicatePerson(ImportDuplicatesControl* duplicates, const PersonIdentity& person,
                         bool& create, bool& import) {
  if (duplicates == nullptr || !duplicates->checkingOn()) return -1;
  duplicates->clearSearch();
  duplicates->setSIN(person.sin);
  duplicates->setFirstName(person.firstName);
  duplicates->setLastName(person.lastName);
  duplicates->setName(person.fullName());
  duplicates->setClientID(person.clientID);
  duplicates->runSearch();
  const long contact = duplicates->matchByFirstTest() > 0 ? duplicates->matchByFirstTest()
                                                          : duplicates->matchBySecondTest();
  if (contact >= 1) decideOnDuplicate(duplicates->getAction(), person.fullName(), create, import);
  return contact;
}

}  // namespace lf
