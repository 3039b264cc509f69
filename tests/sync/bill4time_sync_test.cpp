// Tests of the Bill4Time sync: deleted clients left out, staff from the time entries, the WIP
// statement, deposits of paid invoices, and the Balaboss cross-references it shares.
#include <filesystem>
#include <string>
#include <vector>

#include "db/database_factory.hpp"
#include "sync/bill4time_contact_tree.hpp"
#include "sync/bill4time_wizard.hpp"
#include "sync/client_tree.hpp"
#include "sync/cls_import_balaboss_info.hpp"
#include "sync/cls_import_bill4time_info.hpp"
#include "tests/sync/sync_export_file.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class Bill4TimeSyncTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    // The fixed sample: clients 101 and 102 are companies, 104 and 105 persons, 103 deleted.
    std::filesystem::copy_file(std::string(LF_SOURCE_DIR) + "/samples/bill4time_export.db",
                               exportPath, std::filesystem::copy_options::overwrite_existing);
  }
  void TearDown() override {
    std::filesystem::remove(exportPath);
    PracticeDatabaseTest::TearDown();
  }

  template <class Engine>
  void wire(Engine& engine) {
    engine.setErrorClass(&errors);
    engine.setMsgboxClass(&messages);
    engine.setLocaleReference(locale.get());
    engine.setClientDropDownCtrlReference(dropDown.get());
    engine.setDatabaseReference(db.get());
    engine.setShowProgress(false);
    SyncOptions& o = engine.syncOptions();
    o.mvarUseTimeEntryDateRange = o.mvarUseInvoiceDateRange = false;
    o.duplicateCheckEnabled = false;
  }

  std::unique_ptr<clsImportBill4TimeInfo> makeEngine() {
    auto engine = std::make_unique<clsImportBill4TimeInfo>();
    wire(*engine);
    Bill4TimeImportOptions& o = engine->options();
    for (const char* id : {"101", "102"}) o.companyCollection.addRow({Variant::text(id)});
    for (const char* id : {"104", "105"}) o.contactsCollection.addRow({Variant::text(id)});
    engine->setBill4TimeDatabaseLocation(exportPath);
    return engine;
  }

  std::vector<std::string> docketEntries() {
    std::vector<std::string> ids;
    std::int32_t h = db->openRecordset(
        "SELECT BalabossTimeID FROM BalabossTimeEntries WHERE DocketIDNum > 0 ORDER BY "
        "BalabossTimeID;",
        kCursorKeyset, kLockReadOnly);
    for (bool more = db->hasRecord(h); more && !db->isEOF(h); db->moveNext(h))
      ids.push_back(db->getField(h, "BalabossTimeID").toString());
    db->closeRecordset(h);
    return ids;
  }

  std::vector<long> tableCounts() {
    std::vector<long> counts;
    for (const char* table :
         {"Companies", "Contacts", "Dockets", "Invoices", "Deposits", "DepositPayments"})
      counts.push_back(count(std::string("SELECT * FROM ") + table + ";"));
    return counts;
  }

  std::string exportPath =
      ::testing::TempDir() + "bill4time_sync_test_" + std::to_string(::getpid()) + ".db";
};

using Ids = std::vector<std::string>;

TEST_F(Bill4TimeSyncTest, ADeletedClientReachesNeitherTheTreeNorTheStages) {
  std::unique_ptr<Database> source = openDatabase(exportPath);
  ASSERT_TRUE(source->isOpen());
  ClientTree tree;
  clsBill4TimeContactTree contacts;
  contacts.setTreeViewControl(&tree);
  contacts.setShowProgress(false);
  contacts.setSourceDatabase(source.get());
  contacts.populateBill4TimeTree();
  EXPECT_EQ(tree.count(), 5);  // the root and four clients
  EXPECT_LT(tree.findKey(ClientTree::clientKey("103")), 0);
  EXPECT_EQ(tree.node(tree.findKey(ClientTree::clientKey("102"))).text, "Harlow & Voss LLP");

  // Entry 6 and no invoice belong to the deleted client: nothing is asked and nothing made.
  auto engine = makeEngine();
  engine->importBill4TimeInformation();
  EXPECT_TRUE(messages.asked.empty());
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName LIKE 'Gullwing%';"), 0);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE DisplayName LIKE '%Gullwing%';"), 0);
  EXPECT_EQ(engine->ownCounters().at("time entries").skipReasons.at("client not in the export"), 1);
  // The deleted contact of Pinecrest is left out too.
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Marsh';"), 0);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Lindqvist';"), 1);
}

TEST_F(Bill4TimeSyncTest, APaidInvoiceGetsOneDepositAcrossReRuns) {
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, true, false);
  engine->importBill4TimeInformation();
  EXPECT_EQ(count("SELECT * FROM Deposits;"), 2);  // 5001 and 5003
  EXPECT_EQ(count("SELECT * FROM DepositPayments WHERE Amount=678;"), 1);
  const std::string paid = "SELECT * FROM Invoices WHERE InvoiceNum='5001';";
  EXPECT_TRUE(value(paid, "InvoicePaid").toBool());
  EXPECT_EQ(value(paid, "InvoiceFinalAmountWithTaxes").toDouble(), 678.0);
  EXPECT_EQ(value(paid, "InvoiceFinalAmountAdjustments").toDouble(), -50.0);
  EXPECT_TRUE(value(paid, "UseFinalAmountAdjustment").toBool());
  EXPECT_EQ(value(paid, "ARBalance").toDouble(), 0.0);
  EXPECT_FALSE(value("SELECT * FROM Invoices WHERE InvoiceNum='5002';", "InvoicePaid").toBool());

  // A second run finds the invoices; one that rewrites them adds no deposit either.
  for (bool onlyNew : {true, false}) {
    auto again = makeEngine();
    again->setSyncObjects(false, false, true, false);
    again->options().importOnlyNewEntries = onlyNew;
    again->importBill4TimeInformation();
    EXPECT_EQ(count("SELECT * FROM Deposits;"), 2) << onlyNew;
    EXPECT_EQ(count("SELECT * FROM DepositPayments;"), 2) << onlyNew;
    EXPECT_EQ(count("SELECT * FROM Invoices;"), 3) << onlyNew;
  }
}

TEST_F(Bill4TimeSyncTest, Bill4TimeRowsAreSeenByABalabossRunAsItsOwn) {
  makeEngine()->importBill4TimeInformation();
  EXPECT_EQ(count("SELECT * FROM BalabossClients WHERE BalabossDBID='123' AND "
                  "BalabossClientID='101';"),
            1);
  const long companies = count("SELECT * FROM Companies;");

  // A Balaboss export whose client 101 is the same client to the cross-references.
  testing::SyncExportFile balaboss{"make_balaboss_export.py"};
  balaboss.exec(
      "INSERT INTO tblClient (autClientID, strCompany) VALUES (101, 'Pinecrest (Balaboss)');");
  clsImportBalabossInfo engine;
  wire(engine);
  engine.options().companyCollection.addRow({Variant::text("101")});
  engine.setSyncObjects(true, false, false, false);
  engine.setBalabossDatabaseLocation(balaboss.path);
  engine.importBalabossInformation();
  EXPECT_EQ(engine.ownCounters().at("business clients").skipped, 1);
  EXPECT_EQ(count("SELECT * FROM Companies;"), companies);
}

TEST_F(Bill4TimeSyncTest, StaffComeFromTimeEntriesWithRatesByFrequency) {
  // The run itself makes no staff: the dockets get the neutral user.
  auto run = makeEngine();
  run->setSyncObjects(false, true, false, false);
  run->importBill4TimeInformation();
  EXPECT_EQ(count("SELECT * FROM BalabossUserEntries;"), 0);
  EXPECT_EQ(count("SELECT * FROM Dockets WHERE UserIDNum > 0;"), 0);
  db->executeStatement("DELETE FROM Dockets;");
  db->executeStatement("DELETE FROM BalabossTimeEntries;");

  auto engine = makeEngine();
  engine->setSyncObjects(true, true, false, false);
  engine->initializeDataRecordsets();
  engine->importBill4TimeUsers();
  engine->importBill4TimeWIPEntries();
  engine->closeDataRecordsets();

  const long marion =
      value("SELECT * FROM AccountantEmployeeInfo WHERE LastName='Quayle';", "ContactID").toLong();
  // 180 on two entries, 150 on one: the most used is "Rate 1" and the default.
  const std::string rate1 =
      "SELECT * FROM UserBillingRates WHERE UserBillingRateCode='Rate 1' "
      "AND UserIDNum=" +
      std::to_string(marion) + ";";
  EXPECT_EQ(value(rate1, "UserBillingRate").toDouble(), 180.0);
  EXPECT_TRUE(value(rate1, "DefaultBillingRate").toBool());
  EXPECT_EQ(count("SELECT * FROM UserBillingRates WHERE UserBillingRateCode='Rate 2' AND "
                  "UserBillingRate=150;"),
            1);
  // A rate of 0 is no rate: Tobias has one.
  EXPECT_EQ(count("SELECT * FROM UserBillingRates;"), 3);

  const long rateID = engine->getBillingRate(marion, 180.0);
  EXPECT_EQ(rateID, value(rate1, "UserBillingRateID").toLong());
  EXPECT_EQ(engine->getBillingRate(marion, 99.0), -1);
  EXPECT_EQ(count("SELECT * FROM Dockets WHERE BillingRateIDNum=" + std::to_string(rateID) + ";"),
            2);
  EXPECT_EQ(count("SELECT * FROM Dockets WHERE UserIDNum=" + std::to_string(marion) + ";"), 3);
}

TEST_F(Bill4TimeSyncTest, AUserIDUnderTwoNamesIsOneStaffMember) {
  sqlite3* source = nullptr;
  ASSERT_EQ(sqlite3_open(exportPath.c_str(), &source), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(source, "UPDATE TimeEntries SET User='M. Quayle' WHERE \"Entry ID\"=2;",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(source);
  auto engine = makeEngine();
  engine->setSyncObjects(true, false, false, false);
  engine->initializeDataRecordsets();
  engine->importBill4TimeUsers();
  engine->closeDataRecordsets();
  // Both staff rows are read once each, and the second finds the first one's record.
  const StageCounters& staff = engine->ownCounters().at("staff");
  EXPECT_EQ(staff.read, 3);
  EXPECT_EQ(staff.created, 2);
  EXPECT_EQ(staff.updated, 1);
  EXPECT_EQ(count("SELECT * FROM AccountantEmployeeInfo WHERE LastName='Quayle';"), 1);
}

TEST_F(Bill4TimeSyncTest, TheWIPStatementKeepsItsStatusesAndItsOnDateRefusal) {
  auto runWith = [&](bool useRange, long type) {
    db->executeStatement("DELETE FROM Dockets;");
    db->executeStatement("DELETE FROM BalabossTimeEntries;");
    auto engine = makeEngine();
    Bill4TimeImportOptions& o = engine->options();
    o.mvarUseTimeEntryDateRange = useRange;
    o.mvarTimeEntriesSynchDateRangeType = type;
    o.mvarTimeEntriesSynchStartRange = Date::fromParts(2026, 1, 16);
    o.mvarTimeEntriesSynchEndRange = Date::fromParts(2026, 12, 31);
    engine->setSyncObjects(false, true, true, false);
    engine->importBill4TimeInformation();
    return docketEntries();
  };
  // Billed entry 5 never; 6 is of a deleted client.
  EXPECT_EQ(runWith(false, kSynchOnOrAfter), (Ids{"1", "2", "3", "4"}));
  // Intended: the range binds only to the "Pending Ticket Close" entries (AND before OR).
  EXPECT_EQ(runWith(true, kSynchOnOrAfter), (Ids{"1", "2", "4"}));
  EXPECT_EQ(runWith(true, kSynchBetween), (Ids{"1", "2", "4"}));

  // On a date: the statement is refused, the error service hears of it, and the run goes on.
  errors.errors.clear();
  EXPECT_EQ(runWith(true, kSynchOnDate), Ids{});
  ASSERT_FALSE(errors.errors.empty());
  EXPECT_EQ(errors.errors.front().source,
            "Ledgerfolio.exe-clsImportBill4Time-initializeDataRecordsets");
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 3);
}

TEST_F(Bill4TimeSyncTest, ARerunWithOnlyNewEntriesCreatesNothing) {
  makeEngine()->importBill4TimeInformation();
  const std::vector<long> first = tableCounts();
  EXPECT_EQ(first[2], 4);
  EXPECT_EQ(first[4], 2);
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyType=2;"), 1);  // the LLP

  auto again = makeEngine();
  again->importBill4TimeInformation();
  EXPECT_EQ(tableCounts(), first);
  for (const auto& [stage, counters] : again->ownCounters()) {
    EXPECT_EQ(counters.created, 0) << stage;
    EXPECT_EQ(counters.failed, 0) << stage;
  }
  EXPECT_TRUE(messages.asked.empty());
}

// Entry 3 (Advice, 0.5 h for Harlow & Voss) names invoice 5002; entry 5 names 5003 but is
// billed, so the WIP statement never brings it.
TEST_F(Bill4TimeSyncTest, AnEntryNamingAnInvoiceBecomesOneOfItsDockets) {
  auto text = [&](const std::string& sql, const char* column) {
    return value(sql, column).toString();
  };
  auto expectOneInvoiceDocket = [&](const std::string& when) {
    ASSERT_EQ(count("SELECT * FROM InvoiceDockets;"), 1) << when;
    const std::string invoice =
        value("SELECT * FROM Invoices WHERE InvoiceNum='5002';", "InvoiceID").toString();
    const std::string docket =
        value("SELECT DocketIDNum FROM BalabossTimeEntries WHERE BalabossTimeID='3';",
              "DocketIDNum")
            .toString();
    const std::string row = "SELECT * FROM InvoiceDockets WHERE InvoiceIDNum=" + invoice +
                            " AND DocketIDNum=" + docket + ";";
    ASSERT_EQ(count(row), 1) << when;
    const std::string stored = "SELECT * FROM Dockets WHERE DocketID=" + docket + ";";
    EXPECT_TRUE(value(stored, "DocketLocked").toBool()) << when;
    EXPECT_TRUE(value(stored, "Invoiced").toBool()) << when;
    // The invoice docket is a copy of the docket.
    EXPECT_EQ(text(row, "Subject"), "Advice") << when;
    for (const char* column : {"UserIDNum", "CompanyIDNum", "BillingRateIDNum", "TimeFrom"})
      EXPECT_EQ(text(row, column), text(stored, column)) << when << " " << column;
    EXPECT_TRUE(value(row, "Invoiced").toBool()) << when;
  };

  // One run: the entry's docket is made before the invoice, which then takes it.
  makeEngine()->importBill4TimeInformation();
  expectOneInvoiceDocket("first run");
  for (bool onlyNew : {true, false}) {
    auto again = makeEngine();
    again->options().importOnlyNewEntries = onlyNew;
    again->importBill4TimeInformation();
    expectOneInvoiceDocket(onlyNew ? "re-run with only new entries" : "re-run rewriting");
    EXPECT_EQ(count("SELECT * FROM Dockets;"), 4);
  }
}

TEST_F(Bill4TimeSyncTest, AnEntryOfAnInvoiceBroughtEarlierJoinsItsDockets) {
  auto invoices = makeEngine();
  invoices->setSyncObjects(true, false, true, false);
  invoices->importBill4TimeInformation();
  EXPECT_EQ(count("SELECT * FROM InvoiceDockets;"), 0);
  auto entries = makeEngine();
  entries->setSyncObjects(false, true, false, false);
  entries->importBill4TimeInformation();
  const std::string invoice =
      value("SELECT * FROM Invoices WHERE InvoiceNum='5002';", "InvoiceID").toString();
  EXPECT_EQ(count("SELECT * FROM InvoiceDockets WHERE InvoiceIDNum=" + invoice + ";"), 1);
  EXPECT_EQ(count("SELECT * FROM InvoiceDockets;"), 1);
}

TEST_F(Bill4TimeSyncTest, EveryFieldMapColumnStandsInTheExportAndThePracticeSchema) {
  ASSERT_EQ(bill4TimeFieldMaps().size(), 4u);
  testing::expectFieldMapsMatchTheSchemas(exportPath, bill4TimeFieldMaps(), *db);
}

TEST_F(Bill4TimeSyncTest, WizardRefusesWithoutAnOpenExport) {
  Bill4TimeImportOptions options;
  SyncWizardHooks hooks;
  hooks.importInformation = [] {};
  hooks.categories = [] { return std::vector<WizardCategory>{}; };
  frmBill4TimeWizard wizard(options, hooks);
  wizard.Initialize();
  wizard.chkSynchObjects = {true, true, false, false};
  wizard.SetStep(SyncWizard::kFinishStep, 1);
  options.useDatabase = false;
  wizard.cmdNav_Click(SyncWizard::kNavFinish);
  EXPECT_TRUE(wizard.isOpen());
  ASSERT_FALSE(messages.shown.empty());
  EXPECT_EQ(messages.shown.front().text,
            "You must open the Bill4Time Export file, usually names 'Export.mdb' in order to "
            "continue.");
}

}  // namespace
}  // namespace lf
