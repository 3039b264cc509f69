// The duplicates control's actions.
#include "text/duplicate_question.hpp"

#include <string>

#include "base/module_state.hpp"
#include "host/import_duplicates_control.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"

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

}  // namespace lf
