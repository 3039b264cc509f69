// The merge engine filling a personal-tax template column for a new personal-tax client.
#include "merge/record_hooks.hpp"

#include <gtest/gtest.h>

#include "records/client_record_hooks.hpp"
#include "records/personal_tax_records.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class MergeRecordHooksTest : public testing::PracticeDatabaseTest {
 protected:
  void TearDown() override { clientRecordHooks().fillPersonalTaxTemplate = nullptr; }
};

// List type 4 holds only the firm's own fields, and the tax path sets no firm ID: the engine
// blanks every placeholder and keeps the text around them.
TEST_F(MergeRecordHooksTest, TemplateColumnIsMergedWithPlaceholdersBlanked) {
  installMergeRecordHooks();
  db->executeStatement(
      "INSERT INTO Contacts (ContactID, FirstName, LastName, DisplayName) VALUES (40, 'Ada', "
      "'Byron', 'Ada Byron')");
  db->executeStatement(
      "UPDATE CustomFields SET PersonalTaxTaskCustomType2 = 3, PersonalTaxTaskCustomInfo2 = "
      "'\xC2\xAB"
      "Your Company Name\xC2\xBB for \xC2\xAB"
      "First Name\xC2\xBB'");
  addNewPersonalTaxClientForExistingContact(40, -1, 2010, 0);
  EXPECT_EQ(
      value("SELECT * FROM PersonalTaxStatus WHERE ContactNum=40 AND TaxYear=2010;", "Custom2")
          .toString(),
      " for ");
}

}  // namespace
}  // namespace lf
