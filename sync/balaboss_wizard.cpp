// The Balaboss wizard: the sync wizard on the Balaboss description and contact tree.
#include "sync/balaboss_wizard.hpp"

#include <memory>
#include <utility>

#include "sync/balaboss_contact_tree.hpp"
#include "sync/sources/balaboss_source.hpp"

namespace lf {

frmBalabossWizard::frmBalabossWizard(BalabossImportOptions& engine, SyncWizardHooks hooks)
    : SyncWizard(engine, std::move(hooks), balabossSourceDescription(),
                 std::make_unique<clsBalabossContactTree>()) {}

}  // namespace lf
