// Tests of the Balaboss sync: what it does differently from the other sources, on a fresh
// practice database and an export made from the sample generator's schema by each test.
#include <filesystem>
#include <string>
#include <vector>

#include "sync/balaboss_wizard.hpp"
#include "sync/close_paid_invoices.hpp"
#include "sync/cls_import_balaboss_info.hpp"
#include "tests/sync/sync_export_file.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class BalabossSyncTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    fill(exportFile);
  }

  static void fill(testing::SyncExportFile& file) {
    file.exec(
        "INSERT INTO tblKeyPerson VALUES ('MQ', 'Marion', 'Quayle', 1, '180', '150', NULL, NULL),"
        " ('TF', 'Tobias', 'Fenwick', 0, '95', NULL, NULL, '45');"
        "INSERT INTO tblClient (autClientID, strClientNo, strCompany, strEMail, strKeyPerson1Code,"
        " strKeyPerson2Code, strYearEnd, ysnActive) VALUES"
        " (1, 'P-100', 'Pinecrest Ltd', 'office@pinecrest.example', 'MQ', 'TF', 'Jun 30,  2025', "
        "1),"
        " (2, 'H-200', 'Harlow & Voss LLP', '#mailto:info@harlowvoss.example', 'ZZ', NULL, NULL, "
        "1),"
        " (4, 'S-400', 'Ingrid Solberg', NULL, NULL, NULL, NULL, 1),"
        " (6, 'U-600', 'Ulla Brandt', NULL, NULL, NULL, NULL, 1);");
  }

  // An engine on the practice database with the export open, every range off, clients 1 and 2
  // as business clients and 4 as a personal client.
  std::unique_ptr<clsImportBalabossInfo> makeEngine(const std::string& path = {}) {
    auto engine = std::make_unique<clsImportBalabossInfo>();
    engine->setErrorClass(&errors);
    engine->setMsgboxClass(&messages);
    engine->setLocaleReference(locale.get());
    engine->setClientDropDownCtrlReference(dropDown.get());
    engine->setDatabaseReference(db.get());
    engine->setShowProgress(false);
    BalabossImportOptions& o = engine->options();
    o.mvarUseTimeEntryDateRange = o.mvarUseInvoiceDateRange = false;
    o.duplicateCheckEnabled = false;
    o.companyCollection.addRow({Variant::text("1")});
    o.companyCollection.addRow({Variant::text("2")});
    o.contactsCollection.addRow({Variant::text("4")});
    engine->setBalabossDatabaseLocation(path.empty() ? exportFile.path : path);
    return engine;
  }

  void addWIP(int id, int client, const std::string& date) {
    exportFile.exec("INSERT INTO tblTBWIP VALUES (" + std::to_string(id) + ", " +
                    std::to_string(client) + ", 'MQ', NULL, '2', '" + date +
                    "', '360', 'Review');");
  }

  std::string text(const std::string& sql, const std::string& field) {
    return value(sql, field).toString();
  }

  std::vector<long> tableCounts() {
    std::vector<long> counts;
    for (const char* table : {"Companies", "Contacts", "AccountantEmployeeInfo", "Dockets",
                              "Invoices", "Deposits", "DepositPayments", "UserBillingRates",
                              "BillingJobCodes", "NonBillingJobCodes", "CustomInvoiceDockets"})
      counts.push_back(count(std::string("SELECT * FROM ") + table + ";"));
    return counts;
  }

  testing::SyncExportFile exportFile{"make_balaboss_export.py"};
};

TEST(BalabossValuesTest, MailLinkMarksAreRemovedFromTheEmail) {
  EXPECT_EQ(balabossEmail({"#mailto:info@harlowvoss.example"}), "info@harlowvoss.example");
  // Intended: only the mark goes, the rest of a mail link stays.
  EXPECT_EQ(balabossEmail({"ap@tern.example#mailto:ap@tern.example#"}),
            "ap@tern.exampleap@tern.example#");
  EXPECT_EQ(balabossEmail({" office@pinecrest.example "}), "office@pinecrest.example");
}

TEST(BalabossValuesTest, YearEndIsCutAtCommaAndTwoBlanks) {
  EXPECT_EQ(balabossYearEnd("  Jun 30,  2025 ", 2030)->toIso(), "2025-06-30 00:00:00");
  EXPECT_EQ(balabossYearEnd("Dec 31", 2030)->toIso(), "2030-12-31 00:00:00");
  EXPECT_EQ(balabossYearEnd("Dec 31,  ", 2030)->toIso(), "2030-12-31 00:00:00");
  EXPECT_EQ(balabossYearEnd("2024-03-31", 2030)->toIso(), "2024-03-31 00:00:00");
  EXPECT_FALSE(balabossYearEnd("", 2030));
  EXPECT_FALSE(balabossYearEnd("n/a,  2025", 2030));
}

TEST_F(BalabossSyncTest, CompanyTakesKeyPersonsMailLinkAndYearEnd) {
  auto engine = makeEngine();
  EXPECT_EQ(engine->sourceFirmID(), "123");
  engine->setSyncObjects(true, false, false, false);
  engine->importBalabossInformation();

  const std::string pinecrest = "SELECT * FROM Companies WHERE ClientID='P-100';";
  EXPECT_EQ(text(pinecrest, "PartnerName"), "Marion Quayle");
  EXPECT_EQ(text(pinecrest, "AccountantName"), "Tobias Fenwick");
  EXPECT_EQ(text(pinecrest, "Email"), "office@pinecrest.example");
  const std::string harlow = "SELECT * FROM Companies WHERE ClientID='H-200';";
  EXPECT_EQ(text(harlow, "Email"), "info@harlowvoss.example");
  EXPECT_EQ(value(harlow, "CompanyType").toLong(), 2);
  // A key person the export does not know is kept by its code.
  EXPECT_EQ(text(harlow, "PartnerName"), "ZZ");
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Solberg';"), 1);
  // Staff: one per key person, rates " Rate 1" to " Rate 4" with the first as the default.
  EXPECT_EQ(count("SELECT * FROM BalabossUserEntries WHERE BalabossDBID='123';"), 2);
  EXPECT_EQ(count("SELECT * FROM UserBillingRates;"), 4);
  EXPECT_EQ(count("SELECT * FROM UserBillingRates WHERE UserBillingRateCode=' Rate 4' AND "
                  "UserBillingRate=45 AND DefaultBillingRate=0;"),
            1);
}

TEST_F(BalabossSyncTest, TwoSourcesShareOneSetOfCrossReferences) {
  makeEngine()->importBalabossInformation();
  const std::vector<long> first = tableCounts();

  // Another export file with the same client IDs is the same source to the cross-references.
  testing::SyncExportFile other{"make_balaboss_export.py"};
  fill(other);
  other.exec("UPDATE tblClient SET strCompany = strCompany || ' (copy)';");
  auto again = makeEngine(other.path);
  again->importBalabossInformation();
  EXPECT_EQ(tableCounts(), first);
  EXPECT_EQ(again->ownCounters().at("business clients").created, 0);
  EXPECT_EQ(again->ownCounters().at("business clients").skipped, 2);
  EXPECT_EQ(count("SELECT * FROM BalabossClients WHERE BalabossDBID='123';"), 3);
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName LIKE '%(copy)%';"), 0);
}

TEST_F(BalabossSyncTest, InvoicesOnlySyncSettlesTheInvoicesThereAndImportsNone) {
  exportFile.exec(
      "INSERT INTO tblTBInv VALUES (1, 1, 'INV-1', '2026-01-31 00:00:00', '100', '13');"
      "INSERT INTO tblTBInvTrans VALUES (1, 1, 1, 'Cheque', '2026-02-10 00:00:00', NULL, '0',"
      " '113');");
  db->executeStatement(
      "INSERT INTO Invoices (InvoiceID, InvoiceFinalAmountWithTaxes, InvoicePaid) VALUES (70, 50,"
      " 0);");
  db->executeStatement(
      "INSERT INTO DepositPayments (DepositIDNum, InvoiceIDNum, Amount) VALUES (1, 70, 50);");
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, true, false);
  engine->importBalabossInformation();
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 1);
  EXPECT_EQ(count("SELECT * FROM Deposits;"), 0);
  EXPECT_EQ(count("SELECT * FROM BalabossInvoiceEntries;"), 0);
  EXPECT_TRUE(value("SELECT * FROM Invoices WHERE InvoiceID=70;", "InvoicePaid").toBool());
}

TEST_F(BalabossSyncTest, InvoiceAndDepositStagesStayCallable) {
  exportFile.exec(
      "INSERT INTO tblTBTransType VALUES (1, 'Payment', 'Cheque');"
      "INSERT INTO tblTBInv VALUES (1, 1, 'INV-1', '2026-01-31 00:00:00', '100', '13'),"
      " (2, 4, 'INV-2', '2026-02-28 00:00:00', '40', '0');"
      "INSERT INTO tblTBInvTrans VALUES (1, 1, 1, 'Cheque 4471', '2026-02-10 00:00:00', 1, '0',"
      " '113'), (1, 2, 2, NULL, '2026-03-01 00:00:00', 1, '0', '10');");
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, true, false);
  engine->initializeDataRecordsets();
  engine->importBalabossInvoices();
  engine->importBalabossDeposits();
  engine->closeDataRecordsets();
  closeAllPaidInvoices();

  const std::string first = "SELECT * FROM Invoices WHERE InvoiceNum='INV-1';";
  EXPECT_EQ(value(first, "InvoiceFinalAmountWithTaxes").toDouble(), 113.0);
  EXPECT_TRUE(value(first, "InvoicePaid").toBool());
  const std::string second = "SELECT * FROM Invoices WHERE InvoiceNum='INV-2';";
  EXPECT_FALSE(value(second, "InvoicePaid").toBool());
  EXPECT_EQ(value(second, "ARBalance").toDouble(), 30.0);
  // Two lines of one transaction are two deposits.
  EXPECT_EQ(count("SELECT * FROM Deposits;"), 2);
  EXPECT_EQ(text("SELECT * FROM Deposits WHERE TotalAmount=113;", "Subject"), "Payment Cheque");
  EXPECT_EQ(text("SELECT * FROM Deposits WHERE TotalAmount=113;", "Notes"), "Cheque 4471");
  EXPECT_EQ(count("SELECT * FROM BalabossInvoiceEntries WHERE BalabossCashID='1,2';"), 1);
  // Clients 1 and 4 were not brought in yet: each is asked about once and made on the spot.
  EXPECT_EQ(messages.asked.size(), 2u);
}

TEST_F(BalabossSyncTest, RepairsSetKeyPersonNamesAndTheInvoiceFirm) {
  auto engine = makeEngine();
  engine->setSyncObjects(true, false, false, false);
  engine->importBalabossInformation();
  db->executeStatement("UPDATE Companies SET PartnerName=NULL, AccountantName=NULL;");
  db->executeStatement("INSERT INTO Invoices (InvoiceID, FirmIDNum) VALUES (1, 0), (2, 5);");

  auto repair = makeEngine();
  repair->fixBusinessClients();
  repair->fixInvoiceFirm();
  const std::string pinecrest = "SELECT * FROM Companies WHERE ClientID='P-100';";
  EXPECT_EQ(text(pinecrest, "PartnerName"), "Marion Quayle");
  EXPECT_EQ(text(pinecrest, "AccountantName"), "Tobias Fenwick");
  EXPECT_EQ(count("SELECT * FROM Invoices WHERE FirmIDNum=1;"), 2);
  EXPECT_TRUE(errors.errors.empty());
}

TEST_F(BalabossSyncTest, WorkCodesInThreePassesDefaultBillChoosesTheTable) {
  exportFile.exec(
      "INSERT INTO tblTBStdPara VALUES (1, 'Bookkeeping services'), (2, 'Year-end work');"
      "INSERT INTO tblTBSvcCategory VALUES (1, 'Accounting'), (2, 'Administration');"
      "INSERT INTO tblTBSvcCode VALUES (1, 'BK', 'Bookkeeping', 1, 1), (2, 'FS', 'Statements', 1,"
      " 1), (3, 'TRN', 'Training', 2, 0);");
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, false, true);
  engine->importBalabossInformation();
  EXPECT_EQ(count("SELECT * FROM CustomInvoiceDockets WHERE DescriptionClient='Year-end work';"),
            1);
  EXPECT_EQ(count("SELECT * FROM BillingJobCodes;"), 2);
  const long training = value(
                            "SELECT * FROM BillingCategories WHERE "
                            "BillingCategoryName='Administration';",
                            "BillingCategoryID")
                            .toLong();
  EXPECT_EQ(
      value("SELECT * FROM NonBillingJobCodes WHERE NonBillingJobCode='TRN';", "BillingCategoryNum")
          .toLong(),
      training);

  // Codes are written again, not made again.
  auto again = makeEngine();
  again->setSyncObjects(false, false, false, true);
  again->importBalabossInformation();
  EXPECT_EQ(again->ownCounters().at("work codes").created, 0);
  EXPECT_EQ(again->ownCounters().at("work codes").updated, 3);
  EXPECT_EQ(count("SELECT * FROM BillingJobCodes;"), 2);
}

TEST_F(BalabossSyncTest, AScanWithRepeatedKeysKeepsItsPlaceAroundTheCreator) {
  // The creator searches the recordset the stage scans; a repeated key must not send the scan
  // back to its first row.
  exportFile.exec(
      "INSERT INTO tblTBStdPara VALUES (1, 'First'), (1, 'First again'), (2, 'Second');");
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, false, true);
  engine->importBalabossInformation();
  EXPECT_EQ(engine->ownCounters().at("invoice paragraphs").read, 3);
}

TEST_F(BalabossSyncTest, AScanWithRepeatedKeysKeepsItsPlaceAroundTheServiceCodeLookUp) {
  // Service codes are found again by a search of the recordset the stage scans; an export
  // whose table lost its key may repeat a code's ID, and the scan must still end.
  exportFile.exec(
      "DROP TABLE tblTBSvcCode;"
      "CREATE TABLE tblTBSvcCode (autSvcCodeID, strSvcCode, strSvcCodeDescr, lngSvcCategoryID,"
      " ysnDefaultBill);"
      "INSERT INTO tblTBSvcCode VALUES (4, 'BK', 'Bookkeeping', NULL, 1),"
      " ('4', 'TRN', 'Staff training', NULL, 0), (5, 'FS', 'Financial statements', NULL, 1);");
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, false, true);
  engine->importBalabossInformation();
  const StageCounters& codes = engine->ownCounters().at("work codes");
  EXPECT_EQ(codes.read, 3);
  EXPECT_EQ(codes.failed, 0);
  EXPECT_EQ(count("SELECT * FROM BillingJobCodes WHERE BillingJobCode='FS';"), 1);
}

TEST_F(BalabossSyncTest, WIPRowsFollowTheTimeEntryRangeInTheStatement) {
  addWIP(10, 1, "2026-01-10 00:00:00");
  addWIP(15, 1, "2026-01-15 09:30:00");
  addWIP(20, 1, "2026-01-20 00:00:00");
  auto engine = makeEngine();
  BalabossImportOptions& o = engine->options();
  o.mvarUseTimeEntryDateRange = true;
  o.mvarTimeEntriesSynchDateRangeType = kSynchOnOrAfter;
  o.mvarTimeEntriesSynchStartRange = Date::fromParts(2026, 1, 15);
  engine->setSyncObjects(false, true, false, false);
  engine->importBalabossInformation();
  EXPECT_EQ(count("SELECT * FROM Dockets;"), 2);
  EXPECT_EQ(count("SELECT * FROM BalabossTimeEntries WHERE BalabossTimeID='10';"), 0);
  EXPECT_EQ(value("SELECT * FROM Dockets ORDER BY DocketID;", "TotalAmountFinal").toDouble(),
            360.0);
}

TEST_F(BalabossSyncTest, AKnownClientAsksNothingAndAnUnknownOneIsAskedOnce) {
  auto engine = makeEngine();
  engine->setSyncObjects(true, false, false, false);
  engine->importBalabossInformation();
  ASSERT_TRUE(messages.asked.empty());

  // Client 1 is known from the first run; 6 was never selected.
  addWIP(1, 1, "2026-01-10 00:00:00");
  addWIP(2, 6, "2026-01-11 00:00:00");
  addWIP(3, 6, "2026-01-12 00:00:00");
  auto money = makeEngine();
  money->options().companyCollection.clearList();
  money->options().contactsCollection.clearList();
  money->setSyncObjects(false, true, false, false);
  money->importBalabossInformation();
  ASSERT_EQ(messages.asked.size(), 1u);
  EXPECT_EQ(messages.asked.front().text, "Ulla Brandt: Is this a business client?");
  EXPECT_EQ(count("SELECT * FROM Dockets;"), 3);
}

TEST_F(BalabossSyncTest, ARerunWithOnlyNewEntriesCreatesNothing) {
  addWIP(1, 1, "2026-02-01 00:00:00");
  addWIP(2, 4, "2026-02-02 00:00:00");
  exportFile.exec(
      "INSERT INTO tblTBSvcCode VALUES (1, 'BK', 'Bookkeeping', NULL, 1);"
      "INSERT INTO tblContact VALUES (11, 1, 'Petra', 'Lindqvist', 'Ms.', 'Controller');"
      "INSERT INTO tblContactAddress VALUES (1, 11, '12 Fir Street', 'Westmere', 'ON', NULL);");
  makeEngine()->importBalabossInformation();
  const std::vector<long> first = tableCounts();
  EXPECT_EQ(first[3], 2);
  EXPECT_EQ(text("SELECT * FROM Contacts WHERE LastName='Lindqvist';", "HomeAddress"),
            "12 Fir Street");

  auto again = makeEngine();
  again->importBalabossInformation();
  EXPECT_EQ(tableCounts(), first);
  for (const auto& [stage, counters] : again->ownCounters())
    EXPECT_EQ(counters.created, 0) << stage;
  EXPECT_EQ(again->ownCounters().at("time entries").skipped, 2);
}

TEST_F(BalabossSyncTest, TheFixedSampleSyncsWhole) {
  const std::string copy = exportFile.path + ".sample";
  std::filesystem::copy_file(std::string(LF_SOURCE_DIR) + "/samples/balaboss_export.db", copy,
                             std::filesystem::copy_options::overwrite_existing);
  auto engine = makeEngine(copy);
  BalabossImportOptions& o = engine->options();
  o.companyCollection.addRow({Variant::text("3")});
  o.contactsCollection.addRow({Variant::text("5")});
  engine->importBalabossInformation();
  std::filesystem::remove(copy);

  EXPECT_TRUE(messages.asked.empty());
  EXPECT_EQ(count("SELECT * FROM Companies WHERE ClientID IS NOT NULL;"), 3);
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyType=2;"), 2);  // LLP, Partners
  EXPECT_EQ(count("SELECT * FROM Dockets;"), 3);
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 0);  // the run imports no invoice
  EXPECT_EQ(count("SELECT * FROM UserBillingRates;"), 5);
  EXPECT_EQ(count("SELECT * FROM NonBillingJobCodes;"), 1);
  for (const auto& [stage, counters] : engine->ownCounters())
    EXPECT_EQ(counters.failed, 0) << stage;
}

TEST_F(BalabossSyncTest, EveryFieldMapColumnStandsInTheExportAndThePracticeSchema) {
  ASSERT_EQ(balabossFieldMaps().size(), 12u);
  testing::expectFieldMapsMatchTheSchemas(exportFile.path, balabossFieldMaps(), *db);
}

TEST_F(BalabossSyncTest, WizardRefusesWithoutAnOpenExport) {
  BalabossImportOptions options;
  SyncWizardHooks hooks;
  hooks.importInformation = [] {};
  hooks.categories = [] { return std::vector<WizardCategory>{}; };
  frmBalabossWizard wizard(options, hooks);
  wizard.Initialize();
  wizard.chkSynchObjects = {true, true, false, false};
  wizard.SetStep(SyncWizard::kFinishStep, 1);
  options.useDatabase = false;
  wizard.cmdNav_Click(SyncWizard::kNavFinish);
  EXPECT_TRUE(wizard.isOpen());
  ASSERT_FALSE(messages.shown.empty());
  EXPECT_EQ(messages.shown.front().text,
            "You must open the Balaboss Export file, usually names 'Export.mdb' in order to "
            "continue.");
}

}  // namespace
}  // namespace lf
