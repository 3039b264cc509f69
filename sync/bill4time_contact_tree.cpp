// The Bill4Time contact tree: the shared source tree on the Bill4Time description.
#include "sync/bill4time_contact_tree.hpp"

#include "sync/sources/bill4time_source.hpp"

namespace lf {

clsBill4TimeContactTree::clsBill4TimeContactTree()
    : SourceContactTree(bill4TimeSourceDescription()) {}

}  // namespace lf
