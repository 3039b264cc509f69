// The contact SIN synchronisation: spouses linked to each other fill each other's blank SIN
// columns, never overwrite one, and other relatives are left alone.
#include "records/contact_sin_synch.hpp"

#include <string>

#include "records/contact_records.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class ContactSINSynchTest : public testing::PracticeDatabaseTest {
 protected:
  // Every operation here runs without a reported failure.
  void TearDown() override { EXPECT_TRUE(errors.errors.empty()); }
  long person(const std::string& name, const std::string& sin, const std::string& spouseSin) {
    const long id = addNewContact(name, -1, -1);
    db->executeStatement("UPDATE Contacts SET SocialInsuranceNumber = " + sql(sin) +
                         ", SpouseSIN = " + sql(spouseSin) +
                         " WHERE ContactID = " + std::to_string(id) + ";");
    return id;
  }
  static std::string sql(const std::string& text) {
    return text.empty() ? "Null" : "'" + text + "'";
  }
  std::string field(long contact, const std::string& column) {
    return value("SELECT * FROM Contacts WHERE ContactID=" + std::to_string(contact) + ";", column)
        .toString();
  }
};

TEST_F(ContactSINSynchTest, SpousesFillEachOthersBlankNumbers) {
  const long john = person("John Smith", "123 456 789", "");
  const long mary = person("Mary Smith", "", "");
  const long son = person("Tom Smith", "", "");
  addContactLink(john, -1, -1, mary, "Wife", false);
  addContactLink(john, -1, -1, son, "Son", false);
  db->executeStatement(
      "UPDATE Contacts SET SocialInsuranceNumber = '987 654 321' WHERE "
      "ContactID = " +
      std::to_string(mary) + ";");

  auto synch = contactSINSynchClassInit();
  EXPECT_EQ(synch->DatabaseReference, db.get());
  EXPECT_EQ(synch->LocaleReference, locale.get());
  EXPECT_EQ(synch->synchContactSIN(john), 2);

  EXPECT_EQ(field(john, "SpouseSIN"), "987 654 321");
  EXPECT_EQ(field(mary, "SpouseSIN"), "123 456 789");
  EXPECT_EQ(field(son, "SpouseSIN"), "");
  EXPECT_EQ(synch->synchContactSIN(john), 0);
}

TEST_F(ContactSINSynchTest, ANumberThatDiffersIsNotOverwritten) {
  const long john = person("John Smith", "", "111 111 111");
  const long mary = person("Mary Smith", "222 222 222", "333 333 333");
  addContactLink(mary, -1, -1, john, "Husband", false);
  auto synch = contactSINSynchClassInit();
  EXPECT_EQ(synch->synchContactSIN(mary), 1);
  EXPECT_EQ(field(john, "SocialInsuranceNumber"), "333 333 333");
  EXPECT_EQ(field(mary, "SocialInsuranceNumber"), "222 222 222");
  EXPECT_EQ(field(john, "SpouseSIN"), "111 111 111");
}

}  // namespace
}  // namespace lf
