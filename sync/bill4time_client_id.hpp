// clsBill4TimeClientID: a Bill4Time client as the contact tree and the stages key it: one source ID
// beside the Ledgerfolio record it became.
#pragma once

#include <string>

namespace lf {

class clsBill4TimeClientID {
 public:
  std::string Bill4TimeClientID;
  long ledgerfolioID = -1;
};

}  // namespace lf
