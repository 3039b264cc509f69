// The answers-file front end of the Profile import wizards: the page machine driven by the
// choices of an answers file (tax/profile_t1_answers.hpp, tax/profile_t2_answers.hpp), pressing
// the buttons a user would, so that a folder imports unattended through the same checks.
#pragma once

#include "tax/profile_t1_answers.hpp"
#include "tax/profile_t2_answers.hpp"

namespace lf {

class frmImportProfileT1;
class frmImportProfileT2;

// Initializes the wizard and answers each page up to Finish. False when a page refused to move
// on (its message went through MsgboxClass) or the run left the wizard open.
bool runProfileT1WizardFromAnswers(frmImportProfileT1& wizard, const ProfileT1Answers& answers);
bool runProfileT2WizardFromAnswers(frmImportProfileT2& wizard, const ProfileT2Answers& answers);

}  // namespace lf
