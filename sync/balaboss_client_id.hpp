// clsBalabossClientID: a Balaboss client as the contact tree and the stages key it: one source ID
// beside the Ledgerfolio record it became.
#pragma once

#include <string>

namespace lf {

class clsBalabossClientID {
 public:
  std::string BalabossClientID;
  long ledgerfolioID = -1;
};

}  // namespace lf
