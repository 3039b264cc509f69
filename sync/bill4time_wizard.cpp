// The Bill4Time wizard: the sync wizard on the Bill4Time description and contact tree.
#include "sync/bill4time_wizard.hpp"

#include <memory>
#include <utility>

#include "sync/bill4time_contact_tree.hpp"
#include "sync/sources/bill4time_source.hpp"

namespace lf {

frmBill4TimeWizard::frmBill4TimeWizard(Bill4TimeImportOptions& engine, SyncWizardHooks hooks)
    : SyncWizard(engine, std::move(hooks), bill4TimeSourceDescription(),
                 std::make_unique<clsBill4TimeContactTree>()) {}

}  // namespace lf
