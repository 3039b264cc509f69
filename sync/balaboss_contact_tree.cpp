// The Balaboss contact tree: the shared source tree on the Balaboss description.
#include "sync/balaboss_contact_tree.hpp"

#include "sync/sources/balaboss_source.hpp"

namespace lf {

clsBalabossContactTree::clsBalabossContactTree() : SourceContactTree(balabossSourceDescription()) {}

}  // namespace lf
