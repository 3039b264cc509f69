// The CCH Practice wizard: the sync wizard on the CCH Practice description and contact tree.
#include "sync/cch_practice_wizard.hpp"

#include <memory>
#include <utility>

#include "sync/cch_practice_contact_tree.hpp"
#include "sync/sources/cch_practice_source.hpp"

namespace lf {

frmCCHPracticeWizard::frmCCHPracticeWizard(CCHPracticeImportOptions& engine, SyncWizardHooks hooks)
    : SyncWizard(engine, std::move(hooks), cchPracticeSourceDescription(),
                 std::make_unique<clsCCHPracticeContactTree>()) {}

}  // namespace lf
