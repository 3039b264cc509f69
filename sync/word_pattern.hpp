// The word-pattern guess of a client's kind, used by the source trees whose export has no
// tax numbers to tell a business from a person (CCH Practice, Balaboss, Bill4Time).
//
// A node text that matches the pattern anywhere is taken for a business. The pattern favours
// business on purpose: any digit, and "co" inside any word, count; a plain person's name is
// what stays unmatched. The expression is compiled once and shared by every tree.
#pragma once

#include <functional>
#include <string_view>

namespace lf {

class ClientTree;

// True when the node text looks like a business. A trailing "," is dropped and the rest
// trimmed before the test; the match is case-insensitive.
bool looksLikeBusinessName(std::string_view nodeText);

// The initial check pass of a word-pattern tree over every node of the tree: client nodes are
// checked when their guess agrees with the list being filled (business list when
// businessList is true, personal list otherwise), every other node is cleared. onProgress is
// called per client node with the running count. Returns the negation of businessList, as
// the trees' result argument does.
bool populateInitialCheckedItemsByWordPattern(ClientTree& tree, bool businessList,
                                              const std::function<void(long&)>& onProgress = {});

}  // namespace lf
