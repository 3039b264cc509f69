// The cross-reference tables: saves and gets round-trip for every kind of pair, a firm sees
// only its own rows, a save re-points a known record, and the CCH Practice and Bill4Time
// words reach their own tables through the same code.
#include "sync/cross_reference.hpp"

#include <string>

#include "tests/test_support.hpp"

namespace lf {
namespace {

class CrossReferenceTest : public testing::PracticeDatabaseTest {
 protected:
  void TearDown() override {
    tps.close();
    other.close();
    EXPECT_TRUE(errors.errors.empty());
  }
  CrossReferenceTables tps{tpsCrossReferenceWords()};
  CrossReferenceTables other{tpsCrossReferenceWords()};
};

TEST_F(CrossReferenceTest, SelectStatementTakesTheFirmUnescaped) {
  EXPECT_EQ(tps.selectStatement("TPSUserEntries", "Firm A"),
            "SELECT TPSUserEntries.* From TPSUserEntries WHERE TPSUserEntries.TPSDBID = "
            "'Firm A';");
  CrossReferenceTables cch(cchPracticeCrossReferenceWords());
  EXPECT_EQ(cch.selectStatement("CCHPracticeClients", "F1"),
            "SELECT CCHPracticeClients.* From CCHPracticeClients WHERE "
            "CCHPracticeClients.CCHPracticeDBID = 'F1';");
}

TEST_F(CrossReferenceTest, EveryTpsPairRoundTripsAndIsStampedWithTheFirm) {
  tps.open("Firm A");
  tps.saveEmployeeIDAndTPSEmployeeID(2, "501");
  tps.saveCompanyIDAndTPSClientID(10, "601");
  tps.saveContactIDAndTPSClientID(20, "602");
  tps.saveContactIDAndTPSContactID(21, "701");
  tps.saveInvoiceItemIDAndTPSParagraphID(30, "P-1");
  tps.saveBillingCategoryIDAndTPSServiceCategoryID(31, "C-1");
  tps.saveWorkcodeIDAndTPSWorkcodeID(32, "W-1");
  tps.saveInvoiceIDAndTPSInvoiceID(40, "801");
  tps.saveDepositIDAndTPSDepositID(41, "CASH-9");
  tps.saveDocketIDAndTPSTimeID(50, "901");

  EXPECT_EQ(tps.getEmployeeIDFromTPSEmployeeID("501"), 2);
  EXPECT_EQ(tps.getCompanyIDFromTPSClientIDOnly("601"), 10);
  EXPECT_EQ(tps.getContactIDFromTPSClientIDOnly("602"), 20);
  EXPECT_EQ(tps.getContactIDFromTPSContactIDOnly("701"), 21);
  EXPECT_EQ(tps.getInvoiceItemIDFromTPSParagraphID("P-1"), 30);
  EXPECT_EQ(tps.getBillingCategoryIDFromTPSServiceCategoryID("C-1"), 31);
  EXPECT_EQ(tps.getWorkcodeIDFromTPSWorkcodeID("W-1"), 32);
  EXPECT_EQ(tps.getInvoiceIDFromTPSInvoiceID("801"), 40);
  EXPECT_EQ(tps.getDepositIDFromTPSDepositID("CASH-9"), 41);
  EXPECT_EQ(tps.getDocketIDFromTPSTimeID("901"), 50);
  EXPECT_EQ(tps.getTPSClientIDFromCompanyID(10), 601);
  EXPECT_EQ(tps.getTPSClientIDFromContactID(20), 602);

  EXPECT_EQ(count("SELECT * FROM TPSWorkCodeEntries WHERE TPSDBID = 'Firm A';"), 3);
  EXPECT_EQ(count("SELECT * FROM TPSInvoiceEntries WHERE TPSDBID = 'Firm A';"), 2);
  EXPECT_FALSE(value("SELECT * FROM TPSTimeEntries;", "DateLastSync").isNull());
}

TEST_F(CrossReferenceTest, UnknownIDsAndBlankResultsGiveMinusOne) {
  db->executeStatement(
      "INSERT INTO TPSUserEntries (TPSDBID, UserIDNum, TPSUserID) VALUES ('Firm A', Null, 77);");
  tps.open("Firm A");
  EXPECT_EQ(tps.getEmployeeIDFromTPSEmployeeID("77"), -1);
  EXPECT_EQ(tps.getEmployeeIDFromTPSEmployeeID("78"), -1);
  EXPECT_EQ(tps.getTPSClientIDFromCompanyID(10), -1);
}

TEST_F(CrossReferenceTest, AnotherFirmsRowsAreNotSeenAndStayApart) {
  other.open("Firm B");
  other.saveCompanyIDAndTPSClientID(10, "601");
  tps.open("Firm A");
  EXPECT_EQ(tps.getCompanyIDFromTPSClientIDOnly("601"), -1);
  EXPECT_EQ(tps.getTPSClientIDFromCompanyID(10), -1);
  tps.saveCompanyIDAndTPSClientID(15, "601");
  EXPECT_EQ(tps.getCompanyIDFromTPSClientIDOnly("601"), 15);
  EXPECT_EQ(other.getCompanyIDFromTPSClientIDOnly("601"), 10);
  EXPECT_EQ(count("SELECT * FROM TPSClients;"), 2);
}

TEST_F(CrossReferenceTest, SavingAKnownRecordRepointsItsSourceID) {
  tps.open("Firm A");
  tps.saveInvoiceIDAndTPSInvoiceID(40, "801");
  tps.saveInvoiceIDAndTPSInvoiceID(40, "802");
  EXPECT_EQ(tps.getInvoiceIDFromTPSInvoiceID("802"), 40);
  EXPECT_EQ(tps.getInvoiceIDFromTPSInvoiceID("801"), -1);
  EXPECT_EQ(count("SELECT * FROM TPSInvoiceEntries;"), 1);
}

TEST_F(CrossReferenceTest, PersonalClientAndBusinessContactShareOneClientsRow) {
  tps.open("Firm A");
  tps.saveContactIDAndTPSClientID(20, "602");
  tps.saveContactIDAndTPSContactID(20, "702");
  EXPECT_EQ(count("SELECT * FROM TPSClients WHERE ContactID = 20 AND TPSClientID = 602 AND "
                  "TPSContactID = 702;"),
            1);
  EXPECT_EQ(count("SELECT * FROM TPSClients;"), 1);
}

TEST_F(CrossReferenceTest, CchPracticeCodesRoundTripInItsOwnTables) {
  CrossReferenceTables cch(cchPracticeCrossReferenceWords());
  cch.open("FIRM-7");
  cch.saveCompanyIDAndTPSClientID(12, "ACME,2024");
  cch.saveDocketIDAndTPSTimeID(50, "REF-1");
  EXPECT_EQ(cch.getCompanyIDFromTPSClientIDOnly("ACME,2024"), 12);
  EXPECT_EQ(cch.getSourceID(CrossReferenceKind::CompanyClient, 12), "ACME,2024");
  EXPECT_EQ(cch.getTPSClientIDFromCompanyID(12), -1);  // a code is not a number
  EXPECT_EQ(count("SELECT * FROM CCHPracticeClients WHERE CCHPracticeDBID = 'FIRM-7' AND "
                  "CCHPracticeClientID = 'ACME,2024';"),
            1);
  EXPECT_EQ(count("SELECT * FROM CCHPracticeTimeEntries WHERE CCHPracticeTimeID = 'REF-1';"), 1);
  EXPECT_EQ(count("SELECT * FROM TPSClients;"), 0);
  cch.close();
}

TEST_F(CrossReferenceTest, Bill4TimeRowsAreBalabossRowsToABalabossRun) {
  CrossReferenceTables bill4Time(bill4TimeCrossReferenceWords());
  bill4Time.open("123");
  bill4Time.saveInvoiceIDAndTPSInvoiceID(40, "INV-1");
  bill4Time.close();
  CrossReferenceTables balaboss(balabossCrossReferenceWords());
  balaboss.open("123");
  EXPECT_EQ(balaboss.getInvoiceIDFromTPSInvoiceID("INV-1"), 40);
  balaboss.close();
  EXPECT_EQ(count("SELECT * FROM BalabossInvoiceEntries WHERE BalabossDBID = '123';"), 1);
}

}  // namespace
}  // namespace lf
