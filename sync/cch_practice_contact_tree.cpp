// The CCH Practice contact tree: the shared source tree on the CCH Practice description.
#include "sync/cch_practice_contact_tree.hpp"

#include "sync/sources/cch_practice_source.hpp"

namespace lf {

clsCCHPracticeContactTree::clsCCHPracticeContactTree()
    : SourceContactTree(cchPracticeSourceDescription()) {}

}  // namespace lf
