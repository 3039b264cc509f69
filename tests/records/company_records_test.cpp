// The family of rows of a business client: a new client gets all twelve, a second run adds
// none, and a company left half-built is completed.
#include "records/company_records.hpp"

#include <string>
#include <utility>
#include <vector>

#include "base/general_utilities.hpp"
#include "records/lookups.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

const std::vector<std::pair<std::string, std::string>> kSatellites = {
    {"AccountingServices", "AccountingServiceID"},
    {"ClientOptions", "ClientOptionID"},
    {"ClientNotes", "ClientNoteID"},
    {"CorpTaxInfo", "CorpTaxInfoID"},
    {"LawInfo", "LawInfoID"},
    {"OtherInfo", "OtherInfoID"},
    {"WSIB_EHTInfo", "WSIB_EHTInfoID"},
    {"ClientUSInfo", "ClientUSInfoID"}};

class CompanyRecordsTest : public testing::PracticeDatabaseTest {
 protected:
  // Every operation here runs without a reported failure.
  void TearDown() override { EXPECT_TRUE(errors.errors.empty()); }
  // The satellite rows of a client, leaving out the table `skip`.
  long satelliteRows(long clientDataID, const std::string& skip = "") {
    long rows = 0;
    for (const auto& [table, key] : kSatellites)
      if (table != skip)
        rows += count("SELECT * FROM " + table + " WHERE " + key + "=" +
                      std::to_string(clientDataID) + ";");
    return rows;
  }
  long rowsOf(const std::string& table) { return count("SELECT * FROM " + table + ";"); }
};

TEST_F(CompanyRecordsTest, NewClientIsTwelveRowsWithAnEmptyNameInTheCurrentCategory) {
  const long clientData = addNewClientDataEntry();
  ASSERT_GT(clientData, 0);
  const long company = getCompanyIDFromClientDataID(clientData);
  ASSERT_GT(company, 0);
  const std::string id = std::to_string(company);

  EXPECT_TRUE(GeneralUtilities::isBlank(
      value("SELECT * FROM Companies WHERE CompanyID=" + id + ";", "CompanyName")));
  EXPECT_EQ(value("SELECT * FROM Companies WHERE CompanyID=" + id + ";", "CategoryNum").toLong(),
            dropDown->getCurrentCategoryID());
  EXPECT_EQ(count("SELECT * FROM CompaniesNotes WHERE CompanyNum=" + id + ";"), 1);
  EXPECT_EQ(value("SELECT * FROM Clients WHERE CompanyIDNum=" + id + ";", "ContactIDNum").toLong(),
            -1);
  EXPECT_EQ(count("SELECT * FROM ClientData WHERE CompanyIDNum=" + id + ";"), 1);
  EXPECT_EQ(satelliteRows(clientData), 8);
  // The main selection joins them all with inner joins: the client is visible.
  EXPECT_EQ(count(getMainBusinessSQLString(false, 3, clientData)), 1);
}

TEST_F(CompanyRecordsTest, ClosedDatabaseGivesMinusOneAndCreatesNothing) {
  const long companiesBefore = rowsOf("Companies");
  Database closed;
  moduleState().DatabaseReference = &closed;
  EXPECT_EQ(addNewClientDataEntry(), -1);
  EXPECT_EQ(addNewClientDataEntryForExistingCompany(1), -1);
  moduleState().DatabaseReference = db.get();
  EXPECT_EQ(rowsOf("Companies"), companiesBefore);
  EXPECT_EQ(rowsOf("ClientData"), 0);
}

TEST_F(CompanyRecordsTest, SecondRunForACompanyAddsNothingAndResetsItsClientsContact) {
  const long clientData = addNewClientDataEntry();
  const long company = getCompanyIDFromClientDataID(clientData);
  db->executeStatement(
      "UPDATE Clients SET ContactIDNum = 7 WHERE CompanyIDNum = " + std::to_string(company) + ";");
  const std::vector<std::string> tables = {"Companies",  "CompaniesNotes", "Clients",
                                           "ClientData", "ClientUSInfo",   "OtherInfo"};
  std::vector<long> before;
  for (const auto& t : tables) before.push_back(rowsOf(t));

  EXPECT_EQ(addNewClientDataEntryForExistingCompany(company), clientData);

  for (size_t i = 0; i < tables.size(); ++i) EXPECT_EQ(rowsOf(tables[i]), before[i]) << tables[i];
  EXPECT_EQ(value("SELECT * FROM Clients WHERE CompanyIDNum=" + std::to_string(company) + ";",
                  "ContactIDNum")
                .toLong(),
            -1);
}

TEST_F(CompanyRecordsTest, PartialFamilyIsCompletedAroundItsExistingClientData) {
  db->executeStatement("INSERT INTO Companies (CompanyID, CompanyName) VALUES (40, 'Half Built');");
  db->executeStatement("INSERT INTO ClientData (ClientDataID, CompanyIDNum) VALUES (90, 40);");
  db->executeStatement("INSERT INTO AccountingServices (AccountingServiceID) VALUES (90);");
  db->executeStatement("INSERT INTO LawInfo (LawInfoID) VALUES (90);");
  EXPECT_EQ(count(getMainBusinessSQLString(false, 3, 90)), 0);

  EXPECT_EQ(addNewClientDataEntryForExistingCompany(40), 90);

  EXPECT_EQ(satelliteRows(90), 8);
  EXPECT_EQ(count("SELECT * FROM Clients WHERE CompanyIDNum=40 AND ContactIDNum=-1;"), 1);
  EXPECT_EQ(rowsOf("ClientData"), 1);
  // The company's own rows are not this operation's: its notes row stays missing.
  EXPECT_EQ(rowsOf("CompaniesNotes"), 0);
  EXPECT_EQ(value("SELECT * FROM Companies WHERE CompanyID=40;", "CompanyName").toString(),
            "Half Built");
}

TEST_F(CompanyRecordsTest, FailingSatelliteIsReportedAndTheOthersAreStillMade) {
  db->executeStatement("DROP TABLE LawInfo;");
  const long clientData = addNewClientDataEntry();  // the recording service answers resume
  ASSERT_GT(clientData, 0);
  EXPECT_EQ(satelliteRows(clientData, "LawInfo"), 7);
  ASSERT_EQ(errors.errors.size(), 1u);
  EXPECT_EQ(errors.errors[0].source,
            "Ledgerfolio.exe-modDatabaseClientFunctions-addNewClientDataEntry");
  errors.errors.clear();
}

}  // namespace
}  // namespace lf
