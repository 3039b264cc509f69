// The run report written as JSON whatever bytes its texts hold.
#include "host/run_report.hpp"

#include <gtest/gtest.h>

namespace lf {
namespace {

TEST(RunReport, TextsThatAreNotUtf8AreWrittenWithReplacementCharacters) {
  RunReport report;
  report.addMessage("Caf\xE9 Ouimet: Is this a business client?", 4);  // a Latin-1 name
  report.addQuestion("Sunrise \xC3\x28 Bakery", 4, 0, "Sunrise");      // a broken sequence
  report.addError("Ledgerfolio.exe-clsImportTPSInformation-importClients", 5, "bad \xFF",
                  {"\xFE trace"}, 2);
  report.stage("Clients \xE9").created = 2;
  report.addMessage("Caf\xC3\xA9 stays as it is", 0);
  nlohmann::json written = nlohmann::json::parse(report.toJson().dump());
  EXPECT_EQ(written["messages"][0]["text"], "Caf\xEF\xBF\xBD Ouimet: Is this a business client?");
  EXPECT_EQ(written["messages"][1]["text"], "Caf\xC3\xA9 stays as it is");
  EXPECT_EQ(written["questions"][0]["text"], "Sunrise \xEF\xBF\xBD( Bakery");
  EXPECT_EQ(written["errors"][0]["description"], "bad \xEF\xBF\xBD");
  EXPECT_EQ(written["errors"][0]["trace"][0], "\xEF\xBF\xBD trace");
  EXPECT_EQ(written["stages"][0]["stage"], "Clients \xEF\xBF\xBD");
  EXPECT_EQ(written["stages"][0]["created"], 2);
}

}  // namespace
}  // namespace lf
