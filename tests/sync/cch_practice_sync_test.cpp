// Tests of the CCH Practice sync: what it does differently from the other sources, on a fresh
// practice database and an export made from the sample generator's schema by each test.
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/general_utilities.hpp"
#include "host/progress_dialog.hpp"
#include "sync/cch_practice_client_id.hpp"
#include "sync/cch_practice_wizard.hpp"
#include "sync/cls_import_cch_practice_info.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

// The export's CREATE TABLE statements, as the sample generator holds them.
std::string exportSchema() {
  std::ifstream in(std::string(LF_SOURCE_DIR) + "/samples/make_cch_export.py");
  std::stringstream text;
  text << in.rdbuf();
  const std::string script = text.str();
  const size_t from = script.find("SCHEMA = \"\"\"") + 12;
  return script.substr(from, script.find("\"\"\"", from) - from);
}

class CCHExport {
 public:
  CCHExport() {
    static std::atomic<int> serial{0};
    path = ::testing::TempDir() + "cch_sync_test_" + std::to_string(::getpid()) + "_" +
           std::to_string(serial++) + ".db";
    std::filesystem::remove(path);
    exec(exportSchema());
  }
  ~CCHExport() { std::filesystem::remove(path); }
  void exec(const std::string& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    char* error = nullptr;
    const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error);
    const std::string message = error != nullptr ? error : "";
    sqlite3_free(error);
    sqlite3_close(db);
    ASSERT_EQ(rc, SQLITE_OK) << message;
  }
  std::string path;
};

class CaptionProgress : public ProgressDialog {
 public:
  explicit CaptionProgress(std::vector<std::string>& captions) : captions_(captions) {}
  void setTextAlignment(int) override {}
  void setMinimum(long) override {}
  void setMaximum(long) override {}
  void setShowPercent(bool) override {}
  void setStep(long) override {}
  void setShowCancel(bool) override {}
  void setDelay(long) override {}
  void setCaption(std::string_view caption) override { captions_.emplace_back(caption); }
  long getValue() override { return value_; }
  void setValue(long value) override { value_ = value; }
  void showDialog(const std::function<void()>& startProgress) override { startProgress(); }
  void closeDialog() override {}

 private:
  std::vector<std::string>& captions_;
  long value_ = 0;
};

class CCHPracticeSyncTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    exportFile.exec(
        "INSERT INTO Firm VALUES ('QLX-2291', 'Quayle Ledger'), ('ZZ-2', 'Other');"
        "INSERT INTO Client (ClientID, Engagement, Name1) VALUES ('1001', 'A', 'Pinecrest Ltd'),"
        " ('1001', 'B', 'Pinecrest Payroll'), ('2001', 'A', 'Ingrid Solberg');"
        "INSERT INTO Staff (EmpID, FirstName, LastName, StaffLevel, Inactive) VALUES"
        " ('E1', 'Marion', 'Quayle', 'ADM', 'F');");
  }

  // An engine on the practice database with the export open, every range off, and the two
  // engagements of 1001 as business clients and 2001 as a personal client.
  std::unique_ptr<clsImportCCHPracticeInfo> makeEngine() {
    auto engine = std::make_unique<clsImportCCHPracticeInfo>();
    engine->setErrorClass(&errors);
    engine->setMsgboxClass(&messages);
    engine->setLocaleReference(locale.get());
    engine->setClientDropDownCtrlReference(dropDown.get());
    engine->setDatabaseReference(db.get());
    engine->setShowProgress(false);
    CCHPracticeImportOptions& o = engine->options();
    o.mvarUseTimeEntryDateRange = o.mvarUseInvoiceDateRange = false;
    o.importOnlyWIPTimeEntries = false;
    o.duplicateCheckEnabled = false;
    o.companyCollection.addRow({Variant::text("1001,A")});
    o.companyCollection.addRow({Variant::text("1001,B")});
    o.contactsCollection.addRow({Variant::text("2001,A")});
    engine->setCCHPracticeDatabaseLocation(exportFile.path);
    return engine;
  }

  void addWIP(const std::string& ref, const std::string& date, const std::string& status,
              const std::string& client = "1001', 'A") {
    exportFile.exec(
        "INSERT INTO WIP (ReferenceNumber, ClientID, Engagement, EmpID, Hours, TranDate, "
        "AdjAmount, BillingStatus) VALUES ('" +
        ref + "', '" + client + "', 'E1', 1.5, '" + date + "', '90', '" + status + "');");
  }

  // The source references of the dockets made, in order.
  std::vector<std::string> docketRefs() {
    std::vector<std::string> refs;
    std::int32_t h = db->openRecordset(
        "SELECT CCHPracticeTimeID FROM CCHPracticeTimeEntries WHERE DocketIDNum > 0 "
        "ORDER BY CCHPracticeTimeID;",
        kCursorKeyset, kLockReadOnly);
    for (bool more = db->hasRecord(h); more && !db->isEOF(h); db->moveNext(h))
      refs.push_back(db->getField(h, "CCHPracticeTimeID").toString());
    db->closeRecordset(h);
    return refs;
  }

  std::string text(const std::string& sql, const std::string& field) {
    return value(sql, field).toString();
  }

  CCHExport exportFile;
};

using Refs = std::vector<std::string>;

TEST(CCHPracticeClientIDTest, SplitsAtTheCommaAndTrimsOrLeavesBothEmpty) {
  clsCCHPracticeClientID id;
  id.parseClientID(" 1001 , A ");
  EXPECT_EQ(id.cCHClientID, "1001");
  EXPECT_EQ(id.cCHEngagement, "A");
  EXPECT_EQ(id.clientIDText(), "1001,A");
  id.parseClientID("1001,B,extra");
  EXPECT_EQ(id.cCHClientID, "1001");
  EXPECT_EQ(id.cCHEngagement, "B");
  id.parseClientID("1001,");
  EXPECT_EQ(id.cCHClientID, "1001");
  EXPECT_EQ(id.cCHEngagement, "");
  // Without a comma, or blank, both parts are emptied.
  for (const char* text : {"1001", "   ", ""}) {
    id.parseClientID(text);
    EXPECT_EQ(id.cCHClientID, "") << text;
    EXPECT_EQ(id.cCHEngagement, "") << text;
  }
}

TEST_F(CCHPracticeSyncTest, FirmIdentityAndFixedMoneyStatements) {
  auto engine = makeEngine();
  EXPECT_EQ(engine->sourceFirmID(), "QLX-2291");
  EXPECT_EQ(engine->getCCHPracticeWIPQuery(), "SELECT WIP.* FROM WIP;");
  EXPECT_EQ(engine->getCCHPracticeARQuery(), "SELECT AR.* FROM AR;");
  EXPECT_EQ(engine->getCCHPracticeCASHQuery(), "SELECT CASH.* FROM CASH;");
  exportFile.exec("DELETE FROM Firm; INSERT INTO Firm VALUES ('" + std::string(300, 'f') +
                  "', '');");
  EXPECT_EQ(engine->getCCHPracticeUniqueID(), std::string(255, 'f'));
  exportFile.exec("DELETE FROM Firm;");
  EXPECT_EQ(engine->getCCHPracticeUniqueID(), "Unknown");
}

TEST_F(CCHPracticeSyncTest, WIPRowsFollowTheTimeEntryRangeRowByRow) {
  addWIP("W10", "2026-01-10 00:00:00", "U");
  addWIP("W15", "2026-01-15 09:30:00", "U");
  addWIP("W20", "2026-01-20 00:00:00", "U");
  addWIP("W25", "2026-01-25 00:00:00", "U");
  const std::vector<std::pair<long, Refs>> cases = {
      {kSynchOnDate, {"W15"}},
      {kSynchOnOrAfter, {"W15", "W20", "W25"}},
      {kSynchOnOrBefore, {"W10", "W15"}},
      {kSynchBetween, {"W15", "W20"}},
  };
  for (const auto& [type, expected] : cases) {
    db->executeStatement("DELETE FROM CCHPracticeTimeEntries;");
    db->executeStatement("DELETE FROM Dockets;");
    auto engine = makeEngine();
    CCHPracticeImportOptions& o = engine->options();
    o.mvarUseTimeEntryDateRange = true;
    o.mvarTimeEntriesSynchDateRangeType = type;
    o.mvarTimeEntriesSynchStartRange = Date::fromParts(2026, 1, 15);
    o.mvarTimeEntriesSynchEndRange = Date::fromParts(2026, 1, 20);
    // The invoices' range does not touch time entries.
    o.mvarUseInvoiceDateRange = true;
    o.mvarInvoicesSynchDateRangeType = kSynchOnDate;
    engine->setSyncObjects(false, true, false, false);
    engine->importCCHPracticeInformation();
    EXPECT_EQ(docketRefs(), expected) << "range type " << type;
    EXPECT_EQ(count("SELECT * FROM Dockets;"), static_cast<long>(expected.size()));
  }
}

TEST_F(CCHPracticeSyncTest, OnlyWIPEntriesSkipsBilledReversedAndStatusS) {
  const Refs statuses = {"B", "R", "S", "I", "M", "U", "X", "Q", ""};
  for (size_t i = 0; i < statuses.size(); ++i)
    addWIP("W" + std::to_string(i), "2026-02-01 00:00:00", " " + statuses[i] + " ");
  auto engine = makeEngine();
  engine->setImportOnlyWIPTimeEntries(true);
  engine->setSyncObjects(false, true, false, false);
  engine->importCCHPracticeInformation();
  EXPECT_EQ(docketRefs(), (Refs{"W3", "W4", "W5", "W6", "W7", "W8"}));
  const StageCounters& counters = engine->ownCounters().at("time entries");
  EXPECT_EQ(counters.created, 6);

  // Without the choice every status goes on; the known ones are left alone.
  engine->setImportOnlyWIPTimeEntries(false);
  engine->importCCHPracticeInformation();
  EXPECT_EQ(docketRefs(), (Refs{"W0", "W1", "W2", "W3", "W4", "W5", "W6", "W7", "W8"}));
  EXPECT_EQ(count("SELECT * FROM Dockets;"), 9);
}

TEST_F(CCHPracticeSyncTest, WIPDocketTakesWorkCodeNameHoursAndAmount) {
  exportFile.exec(
      "INSERT INTO WorkCode VALUES ('BK', 'Bookkeeping', NULL, 'C');"
      "INSERT INTO WIP (ReferenceNumber, ClientID, Engagement, EmpID, Hours, TranDate, WorkCode, "
      "Name, Description, AdjAmount, BillingStatus) VALUES"
      " ('W1', '1001', 'A', 'E1', 2.5, '2026-01-12', 'BK', 'Own name', 'January books', '450', "
      "'U'),"
      " ('W2', '1001', 'A', 'E1', 'n/a', '2026-01-13', 'ZZ', NULL, 'Call', '95', 'U'),"
      " ('W3', '1001', 'A', NULL, 1, '2026-01-14', NULL, NULL, NULL, '10', 'U');");
  auto engine = makeEngine();
  engine->importCCHPracticeInformation();
  const std::string w1 = "SELECT * FROM Dockets WHERE Subject='Bookkeeping';";
  EXPECT_EQ(text(w1, "TextBody"), "January books");
  EXPECT_EQ(value(w1, "TotalTimeReal").toDouble(), 2.5);
  EXPECT_EQ(value(w1, "TotalAmountFinal").toDouble(), 450.0);
  EXPECT_EQ(text(w1, "UserIDNum"),
            text("SELECT * FROM AccountantEmployeeInfo WHERE LastName='Quayle';", "ContactID"));
  // An unknown work code leaves the description; hours that are no number, one hour.
  EXPECT_EQ(value("SELECT * FROM Dockets WHERE Subject='Call';", "TotalTimeReal").toDouble(), 1.0);
  // No staff member, no docket.
  EXPECT_EQ(count("SELECT * FROM Dockets;"), 2);
}

TEST_F(CCHPracticeSyncTest, InvoicesFilterOnInvoiceDateAndDepositsOnDateApplied) {
  exportFile.exec(
      "INSERT INTO AR (ReferenceNumber, ClientID, Engagement, InvoiceNumber, InvoiceDate, "
      "FinalBillAmt) VALUES ('A1', '1001', 'A', 'INV-1', '2026-01-31', '100'),"
      " ('A2', '1001', 'A', 'INV-2', '2026-03-31', '100');"
      // Received before the range, applied inside it; and the other way round.
      "INSERT INTO CASH (ReferenceNumber, ARReference, ClientID, Engagement, DateReceived, "
      "DateApplied, OriginalAmount) VALUES ('C1', 'A2', '1001', 'A', '2026-01-02', "
      "'2026-03-02', '40'), ('C2', 'A2', '1001', 'A', '2026-03-02', '2026-01-02', '60');");
  auto engine = makeEngine();
  CCHPracticeImportOptions& o = engine->options();
  o.mvarUseInvoiceDateRange = true;
  o.mvarInvoicesSynchDateRangeType = kSynchOnOrAfter;
  o.mvarInvoicesSynchStartRange = Date::fromParts(2026, 3, 1);
  engine->setSyncObjects(false, false, true, false);
  engine->importCCHPracticeInformation();
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 1);
  EXPECT_EQ(text("SELECT InvoiceNum FROM Invoices;", "InvoiceNum"), "INV-2");
  EXPECT_EQ(count("SELECT * FROM Deposits;"), 1);
  EXPECT_EQ(value("SELECT TotalAmount FROM Deposits;", "TotalAmount").toDouble(), 40.0);
}

TEST_F(CCHPracticeSyncTest, TimeEntriesRunBeforeInvoices) {
  addWIP("W1", "2026-02-01 00:00:00", "U");
  exportFile.exec(
      "INSERT INTO AR (ReferenceNumber, ClientID, Engagement, InvoiceDate, FinalBillAmt) "
      "VALUES ('A1', '1001', 'A', '2026-02-02', '10');");
  std::vector<std::string> captions;
  moduleState().makeProgressDialog = [&]() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<CaptionProgress>(captions);
  };
  auto engine = makeEngine();
  engine->setShowProgress(true);
  engine->setSyncObjects(false, true, true, false);
  engine->importCCHPracticeInformation();
  const auto wip =
      std::find(captions.begin(), captions.end(), "Importing CCH Practice WIP Entry 1 of 1");
  const auto invoice =
      std::find(captions.begin(), captions.end(), "Importing CCH Practice Invoice 1 of 1");
  ASSERT_NE(wip, captions.end());
  ASSERT_NE(invoice, captions.end());
  EXPECT_LT(wip, invoice);
}

TEST_F(CCHPracticeSyncTest, ProgressAndFormProceduresAreLabelledWithTheComponentFile) {
  std::vector<std::string> captions;
  moduleState().makeProgressDialog = [&]() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<CaptionProgress>(captions);
  };
  auto engine = makeEngine();
  engine->setShowProgress(true);
  engine->setSyncObjects(false, true, false, false);
  engine->openCCHPracticeImportForm();
  engine->importCCHPracticeInformation();
  CCHPracticeImportOptions options;
  SyncWizardHooks hooks;
  hooks.categories = [] { return std::vector<WizardCategory>{}; };
  frmCCHPracticeWizard wizard(options, hooks);
  wizard.Initialize();

  auto entered = [&](const std::string& label) {
    return std::count(errors.entered.begin(), errors.entered.end(), label);
  };
  EXPECT_EQ(entered("nvImportlf.dll-clsImportCCHPracticeInfo-openCCHPracticeImportForm"), 1);
  EXPECT_EQ(
      entered(
          "nvImportlf.dll-clsImportCCHPracticeInfo-importFromCCHPracticeProgress_StartProgress"),
      1);
  EXPECT_EQ(entered("nvImportlf.dll-frmCCHPracticeWizard-Form_Load"), 1);
  // The engine's other operations keep the program's own file.
  EXPECT_EQ(entered("Ledgerfolio.exe-clsImportCCHPracticeInfo-importCCHPracticeWIPEntries"), 1);
}

TEST_F(CCHPracticeSyncTest, WorkCodesInThreePassesChargeableChoosesTheTable) {
  exportFile.exec(
      "INSERT INTO BillCode VALUES ('B1', 'Bookkeeping', 'Books for the period', '250');"
      "INSERT INTO Category VALUES ('ACC', 'Accounting'), ('ADM', 'Administration');"
      "INSERT INTO WorkCode VALUES ('BK', 'Bookkeeping', 'ACC', 'C'),"
      " ('T2', 'Corporate return', 'ACC', 'N'), ('TRN', 'Training', 'ADM', 'B'),"
      " ('ODD', 'Odd code', 'ADM', 'Z');");
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, false, true);
  engine->importCCHPracticeInformation();

  EXPECT_EQ(text("SELECT * FROM CustomInvoiceDockets;", "CustomItemName"), "Bookkeeping");
  EXPECT_EQ(text("SELECT * FROM CustomInvoiceDockets;", "DescriptionClient"),
            "Books for the period");
  EXPECT_EQ(value("SELECT * FROM CustomInvoiceDockets;", "TotalAmountFinal").toDouble(), 250.0);
  EXPECT_EQ(value("SELECT * FROM CustomInvoiceDockets;", "TotalAmountFinalWithTaxes").toDouble(),
            250.0);
  EXPECT_EQ(count("SELECT * FROM BillingCategories;"), 2);
  const long accounting =
      value(
          "SELECT BillingCategoryID FROM BillingCategories WHERE BillingCategoryName='Accounting';",
          "BillingCategoryID")
          .toLong();
  EXPECT_EQ(count("SELECT * FROM BillingJobCodes WHERE BillingType=1 AND BillingJobCode IN "
                  "('BK', 'T2', 'ODD');"),
            3);
  EXPECT_EQ(count("SELECT * FROM BillingJobCodes WHERE BillingCategoryNum=" +
                  std::to_string(accounting) + ";"),
            2);
  EXPECT_EQ(text("SELECT * FROM NonBillingJobCodes;", "NonBillingJobCode"), "TRN");
  EXPECT_EQ(text("SELECT * FROM NonBillingJobCodes;", "NonBillingJobCodeName"), "Training");
  EXPECT_EQ(value("SELECT * FROM NonBillingJobCodes;", "BillingType").toLong(), 1);

  // Codes are written again on every run, not added again.
  auto again = makeEngine();
  again->setSyncObjects(false, false, false, true);
  again->importCCHPracticeInformation();
  EXPECT_EQ(again->ownCounters().at("work codes").created, 0);
  EXPECT_EQ(again->ownCounters().at("work codes").updated, 4);
  EXPECT_EQ(count("SELECT * FROM BillingJobCodes;"), 3);
  EXPECT_EQ(count("SELECT * FROM NonBillingJobCodes;"), 1);
  EXPECT_EQ(count("SELECT * FROM CustomInvoiceDockets;"), 1);
}

TEST_F(CCHPracticeSyncTest, StaffAndClientsByTheirFieldMaps) {
  exportFile.exec(
      "UPDATE Staff SET SSN='046 454 286', HomePhone='555-0140', OtherPhone='555-0190', "
      "JobTitle='Partner', WorkEmail='m@q.example', Rate1='180', Rate3='120';"
      "UPDATE Client SET Name1='Harlow & Voss LLP', Phone='555-0101', Extension='12', "
      "FederalTaxID='123456782', AltAddress1='PO Box 19', AltCity='Westmere', Partner='M. Q.' "
      "WHERE Engagement='A' AND ClientID='1001';"
      "UPDATE Client SET Address1='3 Aspen Court', AltAddress1='77 Cedar Hill', "
      "Email='ingrid@mailbox.example' WHERE ClientID='2001';"
      "INSERT INTO CONTACT (ContactGUID, ClientID, Engagement, FirstName, LastName, JobTitle) "
      "VALUES ('{G1}', '1001', 'A', 'Nils', 'Pinecrest', 'Owner'),"
      " ('{G2}', '1001', 'B', 'Greta', 'Oakes', 'Clerk');");
  auto engine = makeEngine();
  engine->setSyncObjects(true, false, false, false);
  engine->importCCHPracticeInformation();

  const std::string staff = "SELECT * FROM AccountantEmployeeInfo WHERE LastName='Quayle';";
  EXPECT_EQ(text(staff, "SocialInsuranceNumber"), "046 454 286");
  EXPECT_EQ(text(staff, "HomePhone_Cell"), "555-0190");
  EXPECT_EQ(text(staff, "BusinessEmail"), "m@q.example");
  EXPECT_EQ(value(staff, "ActiveStatus").toLong(), 1);
  const std::string user = value(staff, "ContactID").toString();
  EXPECT_EQ(count("SELECT * FROM UserBillingRates WHERE UserIDNum=" + user + ";"), 2);
  EXPECT_TRUE(value("SELECT * FROM UserBillingRates WHERE UserBillingRateCode=' Rate 1';",
                    "DefaultBillingRate")
                  .toBool());
  EXPECT_FALSE(value("SELECT * FROM UserBillingRates WHERE UserBillingRateCode=' Rate 3';",
                     "DefaultBillingRate")
                   .toBool());

  // The two engagements of one client ID are two companies, each with its own contacts.
  EXPECT_EQ(count("SELECT * FROM Companies WHERE ClientID='1001';"), 2);
  const std::string harlow = "SELECT * FROM Companies WHERE CompanyName='Harlow & Voss LLP';";
  EXPECT_EQ(value(harlow, "CompanyType").toLong(), 2);
  EXPECT_EQ(text(harlow, "OfficeNumber"), "555-0101 ext. 12");
  EXPECT_EQ(text(harlow, "PartnerName"), "M. Q.");
  const std::string company = value(harlow, "CompanyID").toString();
  EXPECT_NE(text("SELECT Notes FROM CompaniesNotes WHERE CompanyNum=" + company + ";", "Notes")
                .find("CCHPractice 2nd Address:"),
            std::string::npos);
  EXPECT_EQ(count("SELECT * FROM ContactLinks l JOIN Contacts c ON c.ContactID=l.ContactIDNum "
                  "WHERE c.LastName='Pinecrest' AND l.CompanyNum=" +
                  company + ";"),
            1);
  EXPECT_EQ(text("SELECT * FROM Contacts WHERE LastName='Oakes';", "BusinessJobTitle"), "Clerk");
  const std::string ingrid = "SELECT * FROM Contacts WHERE BusinessEmail='ingrid@mailbox.example';";
  EXPECT_EQ(text(ingrid, "BusinessAddress"), "3 Aspen Court");
  EXPECT_EQ(text(ingrid, "HomeAddress"), "77 Cedar Hill");
}

TEST_F(CCHPracticeSyncTest, AnEmpIDRepeatedInTheExportIsOneStaffMember) {
  // The export's key is not enforced: a staff table copied without it holds E1 twice.
  exportFile.exec(
      "CREATE TABLE StaffCopy AS SELECT * FROM Staff; DROP TABLE Staff;"
      "ALTER TABLE StaffCopy RENAME TO Staff;"
      "INSERT INTO Staff (EmpID, FirstName, LastName, StaffLevel, Inactive, JobTitle, Rate2)"
      " VALUES ('E1', 'Marion', 'Quayle', 'ADM', 'F', 'Senior Partner', '150');");
  auto engine = makeEngine();
  engine->setSyncObjects(true, false, false, false);
  engine->initializeDataRecordsets();
  engine->importCCHPracticeUsers();
  engine->closeDataRecordsets();
  const StageCounters& staff = engine->ownCounters().at("staff");
  EXPECT_EQ(staff.read, 2);
  EXPECT_EQ(staff.created, 1);
  EXPECT_EQ(staff.updated, 1);
  // The second row updates the member the first one made.
  const std::string quayle = "SELECT * FROM AccountantEmployeeInfo WHERE LastName='Quayle';";
  EXPECT_EQ(count(quayle), 1);
  EXPECT_EQ(text(quayle, "BusinessJobTitle"), "Senior Partner");
  EXPECT_EQ(count("SELECT * FROM UserBillingRates WHERE UserBillingRateCode=' Rate 2' AND "
                  "UserIDNum=" +
                  value(quayle, "ContactID").toString() + ";"),
            1);
}

TEST_F(CCHPracticeSyncTest, DepositsSettleTheirInvoicesAtTheEndOfTheRun) {
  exportFile.exec(
      "INSERT INTO AR (ReferenceNumber, ClientID, Engagement, InvoiceNumber, InvoiceDate, "
      "FinalBillAmt, Tax1, Tax2) VALUES"
      " ('A1', '1001', 'A', 'PAID', '2026-01-31', '450', '50', '8.5'),"
      " ('A2', '1001', 'A', 'PART', '2026-01-31', '540', NULL, NULL),"
      " ('A3', '2001', 'A', 'OVER', '2026-01-31', '100', NULL, NULL),"
      " ('A4', '2001', 'A', 'NONE', '2026-01-31', '75', NULL, NULL),"
      " ('A5', '2001', 'A', 'ZERO', '2026-01-31', '0', NULL, NULL);"
      "INSERT INTO CASH (ReferenceNumber, ARReference, ClientID, Engagement, CheckNumber, "
      "DateReceived, DatePosted, DateApplied, Reversed, OriginalAmount, Description) VALUES"
      " ('C1', 'A1', '1001', 'A', '3301', '2026-02-10', '2026-02-11', '2026-02-11', 'N', "
      "'508.50', ' Cheque 3301 '),"
      " ('C2', 'A2', '1001', 'A', NULL, '2026-02-10', NULL, '2026-02-10', 'n', '300', NULL),"
      " ('C3', 'A2', '1001', 'A', NULL, '2026-02-10', NULL, '2026-02-10', 'R', '240', NULL),"
      " ('C4', 'A3', '2001', 'A', NULL, '2026-02-10', NULL, '2026-02-10', 'N', '150', NULL);");
  auto engine = makeEngine();
  engine->setSyncObjects(false, false, true, false);
  engine->importCCHPracticeInformation();

  auto invoice = [&](const std::string& number, const std::string& field) {
    return value("SELECT * FROM Invoices WHERE InvoiceNum='" + number + "';", field);
  };
  EXPECT_EQ(invoice("PAID", "InvoiceFinalAmountWithTaxes").toDouble(), 508.5);
  EXPECT_TRUE(invoice("PAID", "InvoicePaid").toBool());
  EXPECT_EQ(invoice("PAID", "ARBalance").toDouble(), 0.0);
  // The reversed cheque pays nothing.
  EXPECT_FALSE(invoice("PART", "InvoicePaid").toBool());
  EXPECT_EQ(invoice("PART", "DepositTotals").toDouble(), 300.0);
  EXPECT_EQ(invoice("PART", "ARBalance").toDouble(), 240.0);
  // Overpaid: no negative balance, the total above the final amount.
  EXPECT_TRUE(invoice("OVER", "InvoicePaid").toBool());
  EXPECT_EQ(invoice("OVER", "ARBalance").toDouble(), 0.0);
  EXPECT_EQ(invoice("OVER", "DepositTotals").toDouble(), 150.0);
  // No deposits: unpaid unless there is nothing to pay.
  EXPECT_FALSE(invoice("NONE", "InvoicePaid").toBool());
  EXPECT_TRUE(invoice("ZERO", "InvoicePaid").toBool());

  const std::string deposit = "SELECT * FROM Deposits WHERE ChequeNumber='3301';";
  EXPECT_EQ(value(deposit, "DepositType").toLong(), 1);
  EXPECT_EQ(text(deposit, "Subject"), "Cheque 3301");
  EXPECT_EQ(value(deposit, "DateDeposited").toDate()->day(), 11);
  EXPECT_EQ(value("SELECT * FROM Deposits WHERE TotalAmount=240;", "TotalAmount").toDouble(),
            240.0);
}

TEST_F(CCHPracticeSyncTest, ARerunWithOnlyNewEntriesCreatesNothing) {
  addWIP("W1", "2026-02-01 00:00:00", "U");
  addWIP("W2", "2026-02-02 00:00:00", "I", "2001', 'A");
  exportFile.exec(
      "INSERT INTO AR (ReferenceNumber, ClientID, Engagement, InvoiceDate, FinalBillAmt) "
      "VALUES ('A1', '1001', 'B', '2026-02-02', '10');"
      "INSERT INTO CASH (ReferenceNumber, ARReference, ClientID, Engagement, DateApplied, "
      "OriginalAmount) VALUES ('C1', 'A1', '1001', 'B', '2026-02-03', '10');");
  auto tables = [&] {
    std::vector<long> counts;
    for (const char* table : {"Companies", "Contacts", "AccountantEmployeeInfo", "Dockets",
                              "Invoices", "Deposits", "DepositPayments", "UserBillingRates"})
      counts.push_back(count(std::string("SELECT * FROM ") + table + ";"));
    return counts;
  };
  makeEngine()->importCCHPracticeInformation();
  const std::vector<long> first = tables();
  EXPECT_EQ(first[3], 2);
  EXPECT_EQ(first[6], 1);

  auto again = makeEngine();
  again->importCCHPracticeInformation();
  EXPECT_EQ(tables(), first);
  for (const auto& [stage, counters] : again->ownCounters())
    EXPECT_EQ(counters.created, 0) << stage;
  EXPECT_EQ(again->ownCounters().at("time entries").skipped, 2);
}

// Column names as the export's database compares them: without regard to case.
std::set<std::string> columnsOf(sqlite3* db, std::string_view table) {
  std::set<std::string> columns;
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, ("PRAGMA table_info(\"" + std::string(table) + "\")").c_str(), -1, &st,
                     nullptr);
  while (sqlite3_step(st) == SQLITE_ROW)
    columns.emplace(
        GeneralUtilities::upperCase(reinterpret_cast<const char*>(sqlite3_column_text(st, 1))));
  sqlite3_finalize(st);
  return columns;
}

TEST_F(CCHPracticeSyncTest, EveryFieldMapColumnStandsInTheExportAndThePracticeSchema) {
  sqlite3* exportDb = nullptr;
  ASSERT_EQ(sqlite3_open(exportFile.path.c_str(), &exportDb), SQLITE_OK);
  ASSERT_EQ(cchPracticeFieldMaps().size(), 10u);
  for (const FieldMap& map : cchPracticeFieldMaps()) {
    const std::set<std::string> source = columnsOf(exportDb, map.sourceTable);
    std::set<std::string> target;
    for (const std::string& name : db->tableColumnNames(map.targetTable))
      target.insert(GeneralUtilities::upperCase(name));
    ASSERT_FALSE(source.empty()) << map.sourceTable;
    ASSERT_FALSE(target.empty()) << map.targetTable;
    for (const FieldMapping& field : map.fields) {
      EXPECT_TRUE(target.count(GeneralUtilities::upperCase(field.target)))
          << map.targetTable << "." << field.target;
      for (std::string_view column : field.source) {
        if (column.empty()) continue;
        EXPECT_TRUE(source.count(GeneralUtilities::upperCase(column)))
            << map.sourceTable << "." << column;
      }
    }
  }
  sqlite3_close(exportDb);
}

// The fixed sample export, run as its answers file chooses: every business and personal
// client, only WIP entries, all dates.
TEST_F(CCHPracticeSyncTest, TheFixedSampleSyncsWhole) {
  const std::string copy = exportFile.path + ".sample";
  std::filesystem::copy_file(std::string(LF_SOURCE_DIR) + "/samples/cch_export.db", copy,
                             std::filesystem::copy_options::overwrite_existing);
  auto engine = std::make_unique<clsImportCCHPracticeInfo>();
  engine->setErrorClass(&errors);
  engine->setMsgboxClass(&messages);
  engine->setLocaleReference(locale.get());
  engine->setClientDropDownCtrlReference(dropDown.get());
  engine->setDatabaseReference(db.get());
  engine->setShowProgress(false);
  CCHPracticeImportOptions& o = engine->options();
  o.mvarUseTimeEntryDateRange = o.mvarUseInvoiceDateRange = false;
  o.duplicateCheckEnabled = false;
  for (const char* id : {"1001,A", "1001,B", "1002,A", "1003,A"})
    o.companyCollection.addRow({Variant::text(id)});
  for (const char* id : {"2001,A", "2002,A"}) o.contactsCollection.addRow({Variant::text(id)});
  engine->setCCHPracticeDatabaseLocation(copy);
  engine->importCCHPracticeInformation();
  std::filesystem::remove(copy);

  EXPECT_TRUE(messages.asked.empty());  // every client of a money row was selected
  EXPECT_EQ(count("SELECT * FROM Companies WHERE ClientID IS NOT NULL;"), 4);
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyType=2;"), 2);  // LLP, Partners
  EXPECT_EQ(count("SELECT * FROM Dockets;"), 4);                        // W4 to W6 billed
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 4);
  EXPECT_EQ(count("SELECT * FROM Invoices WHERE InvoicePaid<>0;"), 3);  // INV-101, 103, 104
  EXPECT_EQ(count("SELECT * FROM Deposits;"), 4);
  EXPECT_EQ(count("SELECT * FROM UserBillingRates;"), 6);
  EXPECT_EQ(count("SELECT * FROM NonBillingJobCodes;"), 2);
  for (const auto& [stage, counters] : engine->ownCounters())
    EXPECT_EQ(counters.failed, 0) << stage;
}

TEST_F(CCHPracticeSyncTest, WizardRefusesWithoutAnOpenExport) {
  CCHPracticeImportOptions options;
  SyncWizardHooks hooks;
  hooks.importInformation = [] {};
  hooks.categories = [] { return std::vector<WizardCategory>{}; };
  frmCCHPracticeWizard wizard(options, hooks);
  wizard.Initialize();
  wizard.chkSynchObjects = {true, true, false, false};
  wizard.SetStep(SyncWizard::kFinishStep, 1);
  options.useDatabase = false;
  wizard.cmdNav_Click(SyncWizard::kNavFinish);
  EXPECT_TRUE(wizard.isOpen());
  ASSERT_FALSE(messages.shown.empty());
  EXPECT_EQ(messages.shown.front().text,
            "You must open the CCHPractice Export file, usually names 'Export.mdb' in order to "
            "continue.");
}

}  // namespace
}  // namespace lf
