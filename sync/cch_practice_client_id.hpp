// clsCCHPracticeClientID: a CCH Practice client as the contact tree and the stages key it. The
// export knows a client by two columns, ClientID and Engagement; the tree keeps the pair as one
// text with a comma between.
#pragma once

#include <string>
#include <string_view>

namespace lf {

class clsCCHPracticeClientID {
 public:
  std::string cCHClientID;
  std::string cCHEngagement;
  long ledgerfolioID = -1;

  // Empties both parts; then a text that is not blank and holds a comma is split at "," and
  // each piece trimmed: the first is the client ID, the second the engagement.
  void parseClientID(std::string_view text);
  // The pair as the tree keeps it.
  std::string clientIDText() const;
};

}  // namespace lf
