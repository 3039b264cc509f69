// Tests of the TPS sync engine and its stages, on a fresh practice database and a small TPS
// export built by each test.
#include <sqlite3.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host/progress_dialog.hpp"
#include "host/run_report.hpp"
#include "sync/cls_import_tps_information.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

constexpr const char* kExportSchema = R"(
CREATE TABLE Firm (FirmID INTEGER PRIMARY KEY, Name TEXT, Active BOOLEAN);
CREATE TABLE Employees (EmployeeID INTEGER PRIMARY KEY, ContactID INTEGER, EmployeeType TEXT,
  LoginName TEXT, Status INTEGER, SIN TEXT);
CREATE TABLE Contacts (ContactID INTEGER PRIMARY KEY, autContactID INTEGER,
  strContactFirst TEXT, strContactLast TEXT, Title TEXT, FirstName TEXT, MiddleName TEXT,
  LastName TEXT, NickName TEXT, HomeTelephoneNumber TEXT, MobileTelephoneNumber TEXT,
  HomeAddressStreet TEXT, HomeAddressCity TEXT, HomeAddressState TEXT,
  HomeAddressPostalCode TEXT, HomeAddressCountry TEXT, WebPage TEXT, Birthday TEXT,
  JobTitle TEXT, CompanyName TEXT, Department TEXT, OfficeLocation TEXT,
  BusinessTelephoneNumber TEXT, BusinessFaxNumber TEXT, Email1Address TEXT,
  Email2Address TEXT, Email3Address TEXT, Profession TEXT, OtherAddressStreet TEXT,
  OtherAddressCity TEXT, OtherAddressState TEXT, OtherAddressPostalCode TEXT,
  OtherAddressCountry TEXT);
CREATE TABLE Clients (ClientID INTEGER PRIMARY KEY, Name TEXT, PrintAs TEXT, Title TEXT,
  FirstName TEXT, First TEXT, Industry TEXT, ClientCode TEXT, Street1 TEXT, City1 TEXT,
  State1 TEXT, Zip1 TEXT, Country1 TEXT, Street2 TEXT, City2 TEXT, State2 TEXT, Zip2 TEXT,
  Country2 TEXT, AreaCode1 TEXT, Phone1 TEXT, Ext1 TEXT, AreaCode2 TEXT, Phone2 TEXT,
  Ext2 TEXT, AreaCodeFax TEXT, Fax TEXT, ExtFax TEXT, AreaCode3 TEXT, Phone3 TEXT, Ext3 TEXT,
  AreaCode4 TEXT, Phone4 TEXT, Ext4 TEXT, Email TEXT, Email2 TEXT, WebPage TEXT, SIN TEXT,
  BusinessNum TEXT, CorporationNum TEXT, YearEnd TEXT, ProvTaxNum TEXT, InActive BOOLEAN,
  OtherNum TEXT, Prospect BOOLEAN);
CREATE TABLE ClientContacts (ClientID INTEGER, ContactID INTEGER, "Primary" BOOLEAN);
CREATE TABLE WorkCodes (WorkID INTEGER PRIMARY KEY, Name TEXT, Parent INTEGER);
CREATE TABLE Paragraphs (ParagraphID INTEGER PRIMARY KEY, ParCode TEXT, Description TEXT);
CREATE TABLE Invoices (InvoiceID INTEGER PRIMARY KEY, ClientID INTEGER, InvoiceNum TEXT,
  BillDate DATETIME, Amount TEXT, Tax1 TEXT, Tax2 TEXT, Tax3 TEXT);
CREATE TABLE Payments (PaymentID INTEGER PRIMARY KEY, PayDate DATETIME, ClientID INTEGER,
  InvoiceID INTEGER, Amount TEXT, Description TEXT);
CREATE TABLE Times (TimeID INTEGER PRIMARY KEY, ClientID INTEGER, EmployeeID INTEGER,
  Start DATETIME, Minute REAL, InvoiceID INTEGER, Status INTEGER, WorkID INTEGER,
  Description TEXT, Amount TEXT, Mark TEXT);
)";

// A TPS export file in the test's temporary folder.
class SourceExport {
 public:
  SourceExport() {
    static std::atomic<int> serial{0};
    path = ::testing::TempDir() + "tps_sync_test_" + std::to_string(::getpid()) + "_" +
           std::to_string(serial++) + ".db";
    std::filesystem::remove(path);
    exec(kExportSchema);
  }
  ~SourceExport() { std::filesystem::remove(path); }
  void exec(const std::string& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    char* error = nullptr;
    int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error);
    std::string message = error != nullptr ? error : "";
    sqlite3_free(error);
    sqlite3_close(db);
    ASSERT_EQ(rc, SQLITE_OK) << message;
  }
  std::string path;
};

// Progress dialog that records what the run shows on it.
class RecordingProgress : public ProgressDialog {
 public:
  explicit RecordingProgress(std::vector<std::string>& captions, long& maximum)
      : captions_(captions), maximum_(maximum) {}
  void setTextAlignment(int) override {}
  void setMinimum(long) override {}
  void setMaximum(long maximum) override { maximum_ = maximum; }
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
  long& maximum_;
  long value_ = 0;
};

class TPSSyncTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    exportFile.exec("INSERT INTO Firm VALUES (1, 'Bayfield Books', 0), (2, 'Harrow Quill', 1);");
  }

  // An engine on the practice database, with the export opened and no progress dialog.
  std::unique_ptr<clsImportTPSInformation> makeEngine() {
    auto engine = std::make_unique<clsImportTPSInformation>();
    engine->setErrorClass(&errors);
    engine->setMsgboxClass(&messages);
    engine->setLocaleReference(locale.get());
    engine->setClientDropDownCtrlReference(dropDown.get());
    engine->setDatabaseReference(db.get());
    engine->setShowProgress(false);
    engine->options().mvarUseTimeEntryDateRange = false;
    engine->options().mvarUseInvoiceDateRange = false;
    engine->options().importOnlyWIPTimeEntries = false;
    engine->options().duplicateCheckEnabled = false;
    engine->setTPSDatabaseLocation(exportFile.path);
    return engine;
  }

  void addClient(const std::string& id, const std::string& columns, const std::string& values) {
    exportFile.exec("INSERT INTO Clients (ClientID, " + columns + ") VALUES (" + id + ", " +
                    values + ");");
  }

  std::string text(const std::string& sql, const std::string& field) {
    return value(sql, field).toString();
  }

  SourceExport exportFile;
};

TEST_F(TPSSyncTest, FirmIdentityIsTheFirstActiveFirmCutTo255OrUnknown) {
  EXPECT_EQ(makeEngine()->sourceFirmID(), "Harrow Quill");

  exportFile.exec("UPDATE Firm SET Active = 0;");
  EXPECT_EQ(makeEngine()->sourceFirmID(), "Unknown");

  exportFile.exec("UPDATE Firm SET Active = 1, Name = '   ' WHERE FirmID = 2;");
  EXPECT_EQ(makeEngine()->sourceFirmID(), "Unknown");

  exportFile.exec("UPDATE Firm SET Name = '" + std::string(300, 'x') + "' WHERE FirmID = 2;");
  EXPECT_EQ(makeEngine()->sourceFirmID(), std::string(255, 'x'));
}

TEST_F(TPSSyncTest, MissingOrUnopenableExportLeavesTheSourceUnused) {
  auto engine = makeEngine();
  ASSERT_TRUE(engine->useTPSDatabase());
  engine->setTPSDatabaseLocation(exportFile.path + ".missing");
  EXPECT_FALSE(engine->useTPSDatabase());
  EXPECT_TRUE(messages.shown.empty());

  struct NeverOpens : Database {
    void connect(int) override {}
  };
  engine->makeSourceDatabase = [] { return std::make_unique<NeverOpens>(); };
  engine->setTPSDatabaseLocation(exportFile.path);
  EXPECT_FALSE(engine->useTPSDatabase());
  EXPECT_TRUE(engine->failedToInitializeFlag());
  ASSERT_EQ(messages.shown.size(), 1u);
  EXPECT_EQ(messages.shown[0].text,
            "The user wizard was not able to access the database and needs to close.");
  EXPECT_EQ(messages.shown[0].kind, 3);
}

TEST_F(TPSSyncTest, TimeQueryTakesEveryRangeFormAndTheWorkInProgressClause) {
  auto engine = makeEngine();
  TPSImportOptions& o = engine->options();
  o.mvarUseTimeEntryDateRange = true;
  o.mvarTimeEntriesSynchStartRange = Date::fromParts(2024, 1, 1);
  o.mvarTimeEntriesSynchEndRange = Date::fromParts(2024, 12, 31);
  o.importOnlyWIPTimeEntries = false;
  const std::string base = "SELECT Times.TimeID, Times.Status, Times.Start FROM Times";
  const std::string start = db->formatDateForSql(o.mvarTimeEntriesSynchStartRange);
  const std::string end = db->formatDateForSql(o.mvarTimeEntriesSynchEndRange);
  o.mvarTimeEntriesSynchDateRangeType = 0;
  EXPECT_EQ(engine->getTPSTimeQuery(), base + " WHERE (Times.Start = #" + start + "#);");
  o.mvarTimeEntriesSynchDateRangeType = 1;
  EXPECT_EQ(engine->getTPSTimeQuery(), base + " WHERE (Times.Start >= #" + start + "#);");
  o.mvarTimeEntriesSynchDateRangeType = 2;
  EXPECT_EQ(engine->getTPSTimeQuery(), base + " WHERE (Times.Start <= #" + start + "#);");
  o.mvarTimeEntriesSynchDateRangeType = 3;
  o.importOnlyWIPTimeEntries = true;
  EXPECT_EQ(engine->getTPSTimeQuery(), base + " WHERE (Times.Start >= #" + start +
                                           "# And Times.Start <= #" + end +
                                           "#) AND (Times.Status=0 Or Times.Status=1);");
  o.mvarTimeEntriesSynchDateRangeType = 7;  // never produced by the wizard: a broken statement
  EXPECT_EQ(engine->getTPSTimeQuery(), base + " AND (Times.Status=0 Or Times.Status=1);");
  o.mvarUseTimeEntryDateRange = false;
  EXPECT_EQ(engine->getTPSTimeQuery(), base + " WHERE Times.Status=0 Or Times.Status=1;");
  o.importOnlyWIPTimeEntries = false;
  EXPECT_EQ(engine->getTPSTimeQuery(), base + ";");
}

TEST_F(TPSSyncTest, DepositsShareTheInvoicesDateRange) {
  auto engine = makeEngine();
  TPSImportOptions& o = engine->options();
  o.mvarUseInvoiceDateRange = true;
  o.mvarInvoicesSynchDateRangeType = 3;
  o.mvarInvoicesSynchStartRange = Date::fromParts(2024, 4, 1);
  o.mvarInvoicesSynchEndRange = Date::fromParts(2024, 4, 30);
  o.mvarTimeEntriesSynchDateRangeType = 0;  // the time range plays no part
  const std::string s = db->formatDateForSql(o.mvarInvoicesSynchStartRange);
  const std::string e = db->formatDateForSql(o.mvarInvoicesSynchEndRange);
  EXPECT_EQ(engine->getTPSInvoicesQuery(),
            "SELECT Invoices.InvoiceID, Invoices.BillDate FROM Invoices WHERE (Invoices.BillDate "
            ">= #" +
                s + "# And Invoices.BillDate <= #" + e + "#);");
  EXPECT_EQ(engine->getTPSDepositQuery(),
            "SELECT Payments.PaymentID, Payments.PayDate FROM Payments WHERE (Payments.PayDate >= "
            "#" +
                s + "# And Payments.PayDate <= #" + e + "#);");
  o.mvarUseInvoiceDateRange = false;
  EXPECT_EQ(engine->getTPSDepositQuery(),
            "SELECT Payments.PaymentID, Payments.PayDate FROM Payments;");
}

TEST_F(TPSSyncTest, StagesRunInOrderUnderTheProgressDialogWithTheirCaptions) {
  addClient("101", "Name, ClientCode", "'Northwind Trading LTD', 'NOR001'");
  exportFile.exec(
      "INSERT INTO Invoices VALUES (2, 101, '1002', '2024-03-31 00:00:00', '$100.00', '0', NULL, "
      "NULL);"
      "INSERT INTO Payments VALUES (1, '2024-04-20 00:00:00', 101, 2, '$100.00', 'Cheque');"
      "INSERT INTO Employees VALUES (1, NULL, 'Owner', 'eharrow', 1, NULL);"
      "INSERT INTO Times (TimeID, ClientID, EmployeeID, Start, Minute, Description) VALUES "
      "(1, 101, 1, '2024-03-04 09:00:00', 90, 'Bookkeeping');");
  std::vector<std::string> captions;
  long maximum = -1;
  int dialogs = 0;
  moduleState().makeProgressDialog = [&]() -> std::unique_ptr<ProgressDialog> {
    ++dialogs;
    return std::make_unique<RecordingProgress>(captions, maximum);
  };
  auto engine = makeEngine();
  engine->setShowProgress(true);
  engine->options().companyCollection.addRow({Variant::text("101")});
  EXPECT_FALSE(engine->importTPSInformation());

  EXPECT_EQ(dialogs, 1);
  EXPECT_EQ(maximum, 1 + 1 + 1 + 1);  // one client, invoice, payment and time entry
  EXPECT_EQ(captions, (std::vector<std::string>{
                          "Importing TPS information, please wait ...",
                          "Synchronizing Northwind Trading LTD", "Importing TPS Invoice 1 of 1",
                          "Importing TPS deposit 1 of 1", "Importing TPS Time Entry 1 of 1"}));
  EXPECT_TRUE(engine->refreshData());
  EXPECT_EQ(engine->rsCompanies, 0) << "recordsets are closed after the run";
  EXPECT_TRUE(errors.errors.empty());
}

TEST_F(TPSSyncTest, NothingRunsUnderProgressWhenAllGroupsAreOff) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  int dialogs = 0;
  moduleState().makeProgressDialog = [&]() -> std::unique_ptr<ProgressDialog> {
    ++dialogs;
    return nullptr;
  };
  auto engine = makeEngine();
  engine->setShowProgress(true);
  engine->setSyncObjects(false, false, false, false);
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  EXPECT_EQ(dialogs, 0);
  EXPECT_EQ(count("SELECT Companies.* FROM Companies;"), 0);
  EXPECT_EQ(count("SELECT TPSClients.* FROM TPSClients;"), 0);
}

TEST_F(TPSSyncTest, SecondRunOnOneEngineReopensTheRecordsetsAndAddsNothing) {
  addClient("101", "Name, ClientCode", "'Northwind Trading LTD', 'NOR001'");
  addClient("104", "Name, FirstName, SIN", "'Jane Smith', 'Jane', '900 100 104'");
  exportFile.exec(
      "INSERT INTO Invoices VALUES (2, 104, '1002', '2024-03-31', '50', NULL, NULL, NULL);");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->options().contactsCollection.addRow({Variant::text("104")});
  engine->importTPSInformation();
  const long companies = count("SELECT Companies.* FROM Companies;");
  const long contacts = count("SELECT Contacts.* FROM Contacts;");
  const long crossReferences = count("SELECT TPSClients.* FROM TPSClients;");
  EXPECT_EQ(companies, 1);
  EXPECT_EQ(count("SELECT Invoices.* FROM Invoices;"), 1);

  engine->importTPSInformation();
  EXPECT_EQ(count("SELECT Companies.* FROM Companies;"), companies);
  EXPECT_EQ(count("SELECT Contacts.* FROM Contacts;"), contacts);
  EXPECT_EQ(count("SELECT TPSClients.* FROM TPSClients;"), crossReferences);
  EXPECT_EQ(count("SELECT Invoices.* FROM Invoices;"), 1);
  EXPECT_TRUE(errors.errors.empty());
}

TEST_F(TPSSyncTest, KnownClientIsRewrittenOnlyWithoutOnlyNewEntriesKeepingBlankFields) {
  addClient("101", "Name, Industry, City1", "'Northwind Trading LTD', 'Wholesale', 'Toronto'");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  const std::string sql = "SELECT Companies.* FROM Companies;";
  ASSERT_EQ(text(sql, "City"), "Toronto");

  exportFile.exec("UPDATE Clients SET City1 = 'Ottawa', Industry = NULL;");
  engine->importTPSInformation();
  EXPECT_EQ(text(sql, "City"), "Toronto");

  engine->setImportOnlyNewEntries(false);
  engine->importTPSInformation();
  EXPECT_EQ(text(sql, "City"), "Ottawa");
  EXPECT_EQ(text(sql, "IndustryType"), "Wholesale");
  EXPECT_EQ(count(sql), 1);
}

TEST_F(TPSSyncTest, AnotherFirmsCrossReferencesAreNotSeen) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  exportFile.exec("UPDATE Firm SET Active = 1 - Active;");
  auto other = makeEngine();
  ASSERT_EQ(other->sourceFirmID(), "Bayfield Books");
  other->options().companyCollection.addRow({Variant::text("101")});
  other->importTPSInformation();
  EXPECT_EQ(count("SELECT Companies.* FROM Companies;"), 2);
  EXPECT_EQ(count("SELECT TPSClients.* FROM TPSClients WHERE TPSDBID = 'Bayfield Books';"), 1);
}

TEST_F(TPSSyncTest, ApostropheInTheFirmNameFailsTheCrossReferenceStatements) {
  exportFile.exec("UPDATE Firm SET Name = 'O''Hara & Co' WHERE FirmID = 2;");
  addClient("101", "Name", "'Northwind Trading LTD'");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  ASSERT_FALSE(errors.errors.empty());
  EXPECT_EQ(errors.errors.front().source,
            "Ledgerfolio.exe-clsImportTPSInformation-initializeDataRecordsets");
  EXPECT_EQ(count("SELECT TPSClients.* FROM TPSClients;"), 0);
}

TEST_F(TPSSyncTest, CompanyTypeFollowsTheLegalFormAfterABlank) {
  addClient("1", "Name", "'Northwind Trading LTD'");
  addClient("2", "Name", "'Maple & Birch LLP'");
  addClient("3", "Name", "'NorthwindLTD'");
  addClient("4", "Name", "'Sunrise Bakery Ltd,'");
  addClient("5", "Name, PrintAs", "NULL, '  '");
  auto engine = makeEngine();
  for (const char* id : {"1", "2", "3", "4", "5"})
    engine->options().companyCollection.addRow({Variant::text(id)});
  engine->importTPSInformation();
  auto type = [&](const std::string& name) {
    return value("SELECT Companies.* FROM Companies WHERE CompanyName = '" + name + "';",
                 "CompanyType");
  };
  EXPECT_EQ(type("Northwind Trading LTD").toLong(), 1);
  EXPECT_EQ(type("Maple & Birch LLP").toLong(), 2);
  EXPECT_TRUE(type("NorthwindLTD").isNull());
  EXPECT_EQ(type("Sunrise Bakery Ltd,").toLong(), 1);
  // No name: nothing is created, and the cross-reference stores -1.
  EXPECT_EQ(count("SELECT Companies.* FROM Companies;"), 4);
  EXPECT_EQ(text("SELECT TPSClients.* FROM TPSClients WHERE TPSClientID = 5;", "CompanyID"), "-1");
}

TEST_F(TPSSyncTest, BusinessNumbersTakeTheProgramSuffixesEvenWhenAbsent) {
  addClient("1", "Name, InActive", "'Bare Holdings', 1");
  addClient("2", "Name, BusinessNum, YearEnd, ProvTaxNum",
            "'Numbered Ltd', '111222333', 'June 30, 2024', '4455667'");
  addClient("3", "Name, YearEnd", "'Dateless Inc', 'sometime'");
  auto engine = makeEngine();
  for (const char* id : {"1", "2", "3"})
    engine->options().companyCollection.addRow({Variant::text(id)});
  engine->importTPSInformation();
  auto data = [&](const std::string& name, const std::string& column) {
    return value(
        "SELECT ClientData.* FROM ClientData INNER JOIN Companies ON "
        "Companies.CompanyID = ClientData.CompanyIDNum WHERE CompanyName = '" +
            name + "';",
        column);
  };
  EXPECT_EQ(data("Bare Holdings", "GSTNumber").toString(), " RT0001");
  EXPECT_EQ(data("Bare Holdings", "PayrollNumber").toString(), " RP0001");
  EXPECT_EQ(data("Bare Holdings", "FederalCorpNumber").toString(), " RC0001");
  EXPECT_EQ(data("Bare Holdings", "ActiveStatus").toLong(), 2);
  const std::string bn = "11122 2333";
  EXPECT_EQ(data("Numbered Ltd", "BusinessNumber").toString(), bn);
  EXPECT_EQ(data("Numbered Ltd", "GSTNumber").toString(), bn + " RT0001");
  EXPECT_EQ(data("Numbered Ltd", "FederalCorpNumber").toString(), bn + " RC0001");
  EXPECT_EQ(data("Numbered Ltd", "ONCorpNumber").toString(), "4455667");
  EXPECT_EQ(data("Numbered Ltd", "YearEndDate").toDate()->toIso(), "2024-06-30 00:00:00");
  EXPECT_TRUE(data("Dateless Inc", "YearEndDate").isNull());
}

TEST_F(TPSSyncTest, CompanyNotesKeepTheirOwnOrdinals) {
  addClient("1", "Name, Street2, City2, AreaCode3, Phone3, Phone4, Ext4, Email, OtherNum, Prospect",
            "'Northwind LTD', 'PO Box 77', 'Toronto', '647', '5550130', '5550131', '4', "
            "'info@northwind.example', 'Lease 7', 1");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("1")});
  engine->importTPSInformation();
  const std::string notes = text("SELECT CompaniesNotes.* FROM CompaniesNotes;", "Notes");
  EXPECT_NE(notes.find("TPS 2nd Address:\r\n\\par PO Box 77"), std::string::npos) << notes;
  EXPECT_NE(notes.find("TPS 3nd Phone Number: "), std::string::npos);
  EXPECT_NE(notes.find("TPS 4nd Phone Number: 5550131 ext. 4"), std::string::npos);
  // A single address is also the second one.
  EXPECT_NE(notes.find("2nd Email Address: info@northwind.example"), std::string::npos);
  EXPECT_NE(notes.find("TPS Other Number: Lease 7"), std::string::npos);
  EXPECT_NE(notes.find("Prospective Client: Yes"), std::string::npos);
  EXPECT_EQ(text("SELECT Companies.* FROM Companies;", "Email"), "info@northwind.example");
}

TEST_F(TPSSyncTest, BusinessContactsAreLinkedAndThePrimaryIsTheDefault) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  exportFile.exec(
      "INSERT INTO Contacts (ContactID, autContactID, FirstName, LastName, NickName, "
      "Email2Address, Birthday) VALUES (20, 20, 'Gordon', 'Pike', 'Gord', 'g@x.example', "
      "'not known'), (21, 21, 'Lena', 'Marsh', NULL, NULL, '1970-02-03');"
      "INSERT INTO ClientContacts VALUES (101, 20, 0), (101, 21, 1);");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  EXPECT_EQ(text("SELECT Contacts.* FROM Contacts WHERE LastName = 'Pike';", "DisplayName"),
            "Gord Pike");
  EXPECT_EQ(text("SELECT Contacts.* FROM Contacts WHERE LastName = 'Pike';", "BusinessEmail"),
            "g@x.example");
  EXPECT_TRUE(
      value("SELECT Contacts.* FROM Contacts WHERE LastName = 'Pike';", "Birthday").isNull());
  EXPECT_EQ(value("SELECT ContactLinks.* FROM ContactLinks INNER JOIN Contacts ON "
                  "Contacts.ContactID = ContactLinks.ContactIDNum WHERE LastName = 'Marsh' AND "
                  "ContactLinks.CompanyNum > 0;",
                  "DefaultContact")
                .toBool(),
            true);
  EXPECT_EQ(count("SELECT TPSClients.* FROM TPSClients WHERE TPSContactID > 0;"), 2);
}

TEST_F(TPSSyncTest, InvoicesParseMoneySkipIdOneAndCountAsSettled) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  exportFile.exec(
      "INSERT INTO Invoices VALUES (1, 101, '0001', '2024-01-02', '$0.00', '0', '0', '0'),"
      " (2, 101, '1002', '2024-03-31', '$1,250.00', '$162.50', '0', NULL),"
      " (3, 101, '1003', '2024-04-15', '$100.00', NULL, NULL, NULL);"
      "INSERT INTO Payments VALUES (1, '2024-04-20', 101, 2, '$1,412.50', 'Cheque'),"
      " (2, '2024-05-01', 101, 3, '$50.00', 'Part'), (3, '2024-05-02', 101, 3, '($12.50)', "
      "'Discount'),"
      " (4, '2024-05-03', 101, 3, 'no amount', '  Unreadable  ');");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  EXPECT_EQ(count("SELECT Invoices.* FROM Invoices;"), 2);
  EXPECT_EQ(count("SELECT TPSInvoiceEntries.* FROM TPSInvoiceEntries WHERE TPSInvoiceID = 1;"), 0);
  const std::string paid = "SELECT Invoices.* FROM Invoices WHERE InvoiceNum = '1002';";
  EXPECT_TRUE(value(paid, "InvoicePaid").toBool());
  EXPECT_DOUBLE_EQ(value(paid, "InvoiceFinalAmountWithTaxes").toDouble(), 1412.5);
  EXPECT_DOUBLE_EQ(value(paid, "ARBalance").toDouble(), 0.0);
  EXPECT_TRUE(value(paid, "UseAdjustedAmount").toBool());
  const std::string part = "SELECT Invoices.* FROM Invoices WHERE InvoiceNum = '1003';";
  EXPECT_FALSE(value(part, "InvoicePaid").toBool());
  EXPECT_DOUBLE_EQ(value(part, "InvoiceAmountPaid").toDouble(), 37.5);
  EXPECT_DOUBLE_EQ(value(part, "ARBalance").toDouble(), 0.0);
  EXPECT_EQ(text("SELECT Deposits.* FROM Deposits WHERE TotalAmount < 0;", "Notes"), "Discount");
  EXPECT_EQ(text("SELECT Deposits.* FROM Deposits WHERE TotalAmount = 0;", "Notes"), "Unreadable");
}

TEST_F(TPSSyncTest, DepositRewrittenWithoutOnlyNewEntriesGetsAnotherPaymentRow) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  exportFile.exec(
      "INSERT INTO Invoices VALUES (2, 101, '1002', '2024-03-31', '$10.00', NULL, NULL, NULL);"
      "INSERT INTO Payments VALUES (1, '2024-04-20', 101, 2, '$10.00', 'Cheque');");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  engine->importTPSInformation();
  EXPECT_EQ(count("SELECT DepositPayments.* FROM DepositPayments;"), 1);
  engine->setImportOnlyNewEntries(false);
  engine->importTPSInformation();
  EXPECT_EQ(count("SELECT Deposits.* FROM Deposits;"), 1);
  EXPECT_EQ(count("SELECT Invoices.* FROM Invoices;"), 1);
  EXPECT_EQ(count("SELECT DepositPayments.* FROM DepositPayments;"), 2);
}

TEST_F(TPSSyncTest, ClientNotSelectedIsAskedAboutAndCreatedOnTheSpot) {
  addClient("112", "Name", "'Sunrise Bakery Ltd,'");
  addClient("113", "Name, FirstName", "'Robert Chen', 'Robert'");
  exportFile.exec(
      "INSERT INTO Invoices VALUES (6, 112, '1006', '2024-06-01', '$95.00', NULL, NULL, NULL),"
      " (7, 112, '1007', '2024-06-02', '$5.00', NULL, NULL, NULL),"
      " (8, 113, '1008', '2024-06-03', '$5.00', NULL, NULL, NULL);");
  messages.answers = {kAnswerYes, kAnswerNo};
  auto engine = makeEngine();
  // The source clients are read with the contacts group; none of them is selected.
  engine->setSyncObjects(true, false, true, false);
  engine->importTPSInformation();
  ASSERT_EQ(messages.asked.size(), 2u);  // the second invoice of 112 finds it made
  EXPECT_EQ(messages.asked[0].text, "Sunrise Bakery Ltd,: Is this a business client?");
  EXPECT_EQ(messages.asked[0].kind, 3);
  EXPECT_EQ(messages.asked[1].text, "Robert Chen: Is this a business client?");
  EXPECT_EQ(count("SELECT Companies.* FROM Companies WHERE CompanyName = 'Sunrise Bakery Ltd,';"),
            1);
  EXPECT_EQ(count("SELECT Invoices.* FROM Invoices WHERE ContactIDNum > 0;"), 1);
  EXPECT_EQ(count("SELECT TPSClients.* FROM TPSClients;"), 2);
}

TEST_F(TPSSyncTest, TimeEntriesBecomeDocketsAndBilledOnesInvoiceDockets) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  exportFile.exec(
      "INSERT INTO Employees VALUES (3, NULL, 'Staff', 'praman', 1, NULL);"
      "INSERT INTO WorkCodes VALUES (1, 'Accounting', NULL), (10, 'Bookkeeping', 1);"
      "INSERT INTO Invoices VALUES (2, 101, '1002', '2024-03-31', '$150.00', NULL, NULL, NULL);"
      "INSERT INTO Times VALUES"
      " (1, 101, 3, '2024-03-04 09:00:00', 90, 2, 2, 10, 'Monthly bookkeeping', '$150.00', NULL),"
      " (2, 101, 3, '2024-03-05 10:00:00', NULL, NULL, 0, 99, 'Phone call', '$50.00', '(5.00)'),"
      " (3, NULL, 3, '2024-03-06 10:00:00', 15, NULL, 0, NULL, 'No client', NULL, NULL),"
      " (4, 101, 3, '2024-03-07 10:00:00', 30, 99, 2, NULL, 'Unknown invoice', NULL, NULL);");
  auto engine = makeEngine();
  engine->options().companyCollection.addRow({Variant::text("101")});
  engine->importTPSInformation();
  ASSERT_EQ(count("SELECT Dockets.* FROM Dockets;"), 3);
  const std::string billed =
      "SELECT Dockets.* FROM Dockets WHERE TextBody = 'Monthly bookkeeping';";
  EXPECT_EQ(text(billed, "Subject"), "Bookkeeping");
  EXPECT_DOUBLE_EQ(value(billed, "TotalTimeReal").toDouble(), 1.5);
  EXPECT_EQ(value(billed, "TimeTo").toDate()->toIso(), "2024-03-04 10:30:00");
  EXPECT_TRUE(value(billed, "DocketLocked").toBool());
  EXPECT_EQ(value(billed, "DocketStatus").toLong(), 3);
  EXPECT_EQ(count("SELECT InvoiceDockets.* FROM InvoiceDockets;"), 1);
  EXPECT_EQ(text("SELECT InvoiceDockets.* FROM InvoiceDockets;", "Subject"), "Bookkeeping");

  const std::string call = "SELECT Dockets.* FROM Dockets WHERE TextBody = 'Phone call';";
  EXPECT_EQ(text(call, "Subject"), "Phone call");  // work code 99 is not there
  EXPECT_DOUBLE_EQ(value(call, "TotalTimeReal").toDouble(), 1.0);
  EXPECT_DOUBLE_EQ(value(call, "TotalAmountFinal").toDouble(), 45.0);
  EXPECT_EQ(value(call, "DocketStatus").toLong(), 0);
  // Billed on an invoice that was not imported: invoiced, but no invoice docket.
  EXPECT_TRUE(value("SELECT Dockets.* FROM Dockets WHERE TextBody = 'Unknown invoice';", "Invoiced")
                  .toBool());
}

TEST_F(TPSSyncTest, StaffTakesLoginAndContactDetailsAndIsAlwaysRewritten) {
  exportFile.exec(
      "INSERT INTO Contacts (ContactID, autContactID, FirstName, LastName) VALUES "
      "(1, 1, 'Tobias', 'Quill');"
      "INSERT INTO Employees VALUES (2, 1, 'pArTnEr', 'tquill', 1, '900 200 002'),"
      " (3, NULL, NULL, 'praman', 1, NULL), (4, NULL, 'Bookkeeper', 'sokafor', 1, NULL);");
  auto engine = makeEngine();
  engine->setSyncObjects(true, false, false, false);
  engine->importTPSInformation();
  // Every staff member's level is 2 or above whatever the kind; the kind only picks 1 or 2.
  EXPECT_EQ(count("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE UserName "
                  "In ('tquill', 'praman', 'sokafor');"),
            3);
  EXPECT_EQ(text("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE UserName = "
                 "'tquill';",
                 "EmployeeType"),
            "pArTnEr");
  EXPECT_EQ(text("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE UserName = "
                 "'tquill';",
                 "DisplayName"),
            "Tobias Quill");
  exportFile.exec("UPDATE Employees SET SIN = '900 200 003' WHERE EmployeeID = 3;");
  const long staff = count("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo;");
  engine->importTPSInformation();  // importOnlyNewEntries is true: staff is rewritten all the same
  EXPECT_EQ(count("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo;"), staff);
  EXPECT_EQ(text("SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE UserName = "
                 "'praman';",
                 "SocialInsuranceNumber"),
            "900 200 003");
}

TEST_F(TPSSyncTest, ParentWorkCodesStoreZeroAndChildCodesMinusOne) {
  exportFile.exec(
      "INSERT INTO WorkCodes VALUES (1, 'Accounting', NULL), (10, 'Bookkeeping', 1);"
      "INSERT INTO Paragraphs VALUES (1, 'BOOK', 'Bookkeeping services'), (2, NULL, 'No code');");
  auto engine = makeEngine();
  engine->importTPSInformation();
  EXPECT_EQ(text("SELECT TPSWorkCodeEntries.* FROM TPSWorkCodeEntries WHERE "
                 "TPSBillingCategoryID = '1';",
                 "BillingCategoryIDNum"),
            "0");
  EXPECT_EQ(text("SELECT TPSWorkCodeEntries.* FROM TPSWorkCodeEntries WHERE TPSWorkcodeID = '10';",
                 "WorkcodeIDNum"),
            "-1");
  EXPECT_EQ(text("SELECT CustomInvoiceDockets.* FROM CustomInvoiceDockets;", "DescriptionClient"),
            "Bookkeeping services");
  EXPECT_EQ(count("SELECT CustomInvoiceDockets.* FROM CustomInvoiceDockets;"), 1);
}

TEST_F(TPSSyncTest, PersonalClientsJoinTheYearsTaxCategory) {
  addClient("104", "Name, Title, FirstName, Email2, SIN, Phone3, InActive",
            "'Smith', 'Ms.', 'Jane', 'jsmith@work.example', '900 100 104', '5550162', 1");
  auto engine = makeEngine();
  engine->options().contactsCollection.addRow({Variant::text("104")});
  engine->importTPSInformation();
  const std::string sql =
      "SELECT Contacts.* FROM Contacts WHERE SocialInsuranceNumber = '900 100 104';";
  EXPECT_EQ(text(sql, "FirstName"), "Jane");
  EXPECT_EQ(text(sql, "BusinessEmail"), "jsmith@work.example");
  EXPECT_EQ(text(sql, "PersonalEmail"), "jsmith@work.example");
  EXPECT_EQ(value("SELECT PersonalTaxStatus.* FROM PersonalTaxStatus;", "ActiveStatus").toLong(),
            2);
  EXPECT_EQ(value("SELECT PersonalTaxStatus.* FROM PersonalTaxStatus;", "TaxYear").toLong(),
            locale->getCurrentPersonalYear());
}

// Runs the sync with the client as the one business client, counting into the report.
void syncWithReport(clsImportTPSInformation& engine, const char* client, RunReport& report) {
  engine.setRunReport(&report);
  engine.options().companyCollection.addRow({Variant::text(client)});
  engine.importTPSInformation();
}

TEST_F(TPSSyncTest, StaffWithoutLoginIsNamedFromThePersonAndOwnsItsTimeEntries) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  exportFile.exec(
      "INSERT INTO Contacts (ContactID, autContactID, FirstName, LastName) VALUES "
      "(5, 5, 'Mira', 'Okafor');"
      "INSERT INTO Employees VALUES (5, 5, 'Staff', NULL, 1, NULL), (6, NULL, 'Staff', '  ', 1, "
      "NULL);"
      "INSERT INTO Times (TimeID, ClientID, EmployeeID, Start, Minute, Description) VALUES "
      "(1, 101, 5, '2024-03-04 09:00:00', 30, 'Filing');");
  RunReport report;
  syncWithReport(*makeEngine(), "101", report);
  const long staff =
      value(
          "SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE LastName = "
          "'Okafor';",
          "ContactID")
          .toLong();
  ASSERT_GT(staff, 0);
  EXPECT_EQ(value("SELECT TPSUserEntries.* FROM TPSUserEntries WHERE TPSUserID = 5;", "UserIDNum")
                .toLong(),
            staff);
  EXPECT_EQ(value("SELECT Dockets.* FROM Dockets;", "UserIDNum").toLong(), staff);
  // Neither a login nor a person to name the staff member after: said so in the report.
  EXPECT_EQ(report.stage("staff").created, 1);
  EXPECT_EQ(report.stage("staff").skipReasons.at("no login name and no name of the person"), 1);
}

TEST_F(TPSSyncTest, ReportExplainsEveryRowItReadAndShowsStagesThatFoundNothing) {
  addClient("101", "Name", "'Northwind Trading LTD'");
  exportFile.exec(
      "INSERT INTO Employees VALUES (3, NULL, 'Staff', 'praman', 1, NULL);"
      "INSERT INTO WorkCodes VALUES (1, 'Accounting', NULL), (10, 'Bookkeeping', 1);"
      "INSERT INTO Invoices VALUES (1, 101, '0001', '2024-01-02', '$0.00', NULL, NULL, NULL),"
      " (2, NULL, '1002', '2024-03-31', '$10.00', NULL, NULL, NULL);"
      "INSERT INTO Times (TimeID, ClientID, EmployeeID, Start, Minute, Description) VALUES"
      " (1, NULL, 3, '2024-03-06 10:00:00', 15, 'No client'),"
      " (2, 101, NULL, '2024-03-06 11:00:00', 15, 'No staff'),"
      " (3, 101, 3, '2024-03-06 12:00:00', 15, 'Filing');");
  RunReport report;
  syncWithReport(*makeEngine(), "101", report);

  const nlohmann::json stages = report.toJson().at("stages");
  std::vector<std::string> names;
  for (const nlohmann::json& stage : stages) {
    names.push_back(stage.at("stage"));
    long skipped = 0, failed = 0;
    for (const auto& [reason, rows] : stage.at("skippedBecause").items())
      skipped += rows.get<long>();
    for (const auto& [reason, rows] : stage.at("failedBecause").items()) failed += rows.get<long>();
    EXPECT_EQ(skipped, stage.at("skipped")) << stage.at("stage");
    EXPECT_EQ(failed, stage.at("failed")) << stage.at("stage");
    EXPECT_EQ(stage.at("read"),
              stage.at("created").get<long>() + stage.at("updated").get<long>() + skipped + failed)
        << stage.at("stage");
  }
  // The paragraphs stage ran and found nothing: it is there with read 0.
  EXPECT_EQ(names, (std::vector<std::string>{"staff", "business clients", "personal clients",
                                             "invoice paragraphs", "work codes", "invoices",
                                             "deposits", "time entries"}));
  EXPECT_EQ(report.stage("invoice paragraphs").read, 0);
  const StageCounters& codes = report.stage("work codes");
  EXPECT_EQ(codes.read, 2);
  EXPECT_EQ(codes.created, 0);
  EXPECT_EQ(codes.skipReasons.size(), 2u);  // parents and children, each with its own reason
  const StageCounters& invoices = report.stage("invoices");
  EXPECT_EQ(invoices.skipReasons.at("invoice 1 is the export's placeholder"), 1);
  EXPECT_EQ(invoices.skipReasons.at("no client"), 1);
  const StageCounters& times = report.stage("time entries");
  EXPECT_EQ(times.skipReasons.at("no client"), 1);
  EXPECT_EQ(times.skipReasons.at("no staff member"), 1);
  EXPECT_EQ(times.created, 1);
}

}  // namespace
}  // namespace lf
