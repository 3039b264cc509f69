// The practice schema against the tables and columns the system names: every table and column
// that an import, a look-up, the merge engine or a summary reads or writes must exist once the
// statements have run, with the declared types the database service converts by.
#include "db/practice_schema.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "db/database.hpp"

namespace {

using Names = std::vector<std::string>;

// stem1 .. stemN, as the system writes "Custom1 to Custom5".
Names numbered(const std::string& stem, int last, int first = 1) {
  Names out;
  for (int i = first; i <= last; ++i) out.push_back(stem + std::to_string(i));
  return out;
}

Names operator+(Names a, const Names& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// The columns of a contact row that the name parser, the creators, the imports' field maps,
// the merge catalogue and the summaries name.
Names personColumns() {
  return Names{"NamePrefix",
               "FirstName",
               "MiddleName",
               "LastName",
               "DisplayName",
               "NameSuffix",
               "SpouseNamePrefix",
               "SpouseFirstName",
               "SpouseMiddleName",
               "SpouseLastName",
               "SpouseName",
               "SpouseNameSuffix",
               "ClientID",
               "SocialInsuranceNumber",
               "SpouseSIN",
               "Gender",
               "SpouseGender",
               "MaritialStatus",
               "SpokenLanguage",
               "Children",
               "EmployeeType",
               "Birthday",
               "SpouseBirthday",
               "Anniversary",
               "HomeAddress",
               "HomeCity",
               "HomeProvince",
               "HomePostalCode",
               "HomeCountry",
               "HomePhone_Main",
               "HomePhone_Cell",
               "HomePhone_Fax",
               "HomePhone_Pager",
               "PersonalAltPhoneNumber",
               "PersonalEmail",
               "PersonalWebSite",
               "PersonalFaceBookURL",
               "PersonalTwitterAccount",
               "BusinessName",
               "BusinessAddress",
               "BusinessCity",
               "BusinessProvince",
               "BusinessPostalCode",
               "BusinessCountry",
               "BusinessDepartment",
               "BusinessOffice",
               "BusinessJobTitle",
               "BusinessPhone_Main",
               "BusinessPhone_Cell",
               "BusinessPhone_Fax",
               "BusinessPhone_Pager",
               "BusinessAltPhoneNumber",
               "BusinessEmail",
               "BusinessWebSite",
               "BusinessFaceBookURL",
               "BusinessTwitterAccount",
               "SpouseAddress",
               "SpouseCity",
               "SpouseProvince",
               "SpousePostalCode",
               "SpouseCountry",
               "SpousePhone_Main",
               "SpousePhone_Cell",
               "SpouseEmail",
               "AltAddressName",
               "AltAddress",
               "AltCity",
               "AltProvince",
               "AltPostalCode",
               "AltCountry",
               "InheritCompanyInfo",
               "StakeHolder",
               "PercentageOwnership",
               "AccountantName",
               "PartnerName"} +
         numbered("Custom", 5);
}

Names companyColumns() {
  return Names{"CompanyName",
               "CorporateName",
               "ClientID",
               "Address",
               "City",
               "Province",
               "PostalCode",
               "Country",
               "AltAddressName",
               "AltAddress",
               "AltCity",
               "AltProvince",
               "AltPostalCode",
               "AltCountry",
               "AltPhoneNumber",
               "OfficeNumber",
               "FaxNumber",
               "Email",
               "WebSite",
               "FaceBookURL",
               "TwitterAccount",
               "IndustryType",
               "PartnerName",
               "AccountantName",
               "CompanyType",
               "CategoryNum",
               "CompanyNum",
               "AccountantInfo",
               "BankerInfo",
               "CRAInfo",
               "FinancialLendersInfo",
               "InsuranceInfo",
               "LawyerInfo"} +
         numbered("Custom", 5);
}

Names docketColumns() {
  return Names{"CompanyIDNum",
               "ContactIDNum",
               "UserIDNum",
               "FirmIDNum",
               "BillToCompanyIDNum",
               "BillToContactIDNum",
               "BillingRateIDNum",
               "BillingProjectIDNum",
               "ScheduleIDNum",
               "ApptIDNum",
               "TaskIDNum",
               "ToDoIDNum",
               "UserGroupNum",
               "DateFrom",
               "TimeFrom",
               "TimeTo",
               "RealTimeFrom",
               "RealTimeTo",
               "OriginalRealTimeFrom",
               "OriginalRealTimeTo",
               "RoundedTimeFrom",
               "RoundedTimeTo",
               "DateCreated",
               "TotalTimeReal",
               "TotalTimeRounded",
               "TotalTimeAdjusted",
               "TotalTimeFinal",
               "TotalAmountReal",
               "TotalAmountAdjusted",
               "TotalAmountFinal",
               "BillingJobRate",
               "Subject",
               "DescriptionClient",
               "DescriptionInternal",
               "TextBody",
               "TitleText",
               "AppointmentText",
               "BeforeAppointmentText",
               "AfterAppointmentText",
               "DocketStatus",
               "DocketBillingType",
               "TaskType",
               "notifyType",
               "RepeatNum",
               "ReminderPeriod",
               "SchemeID",
               "BackColour",
               "ForeColour",
               "TitleBackColour",
               "TitleForeColour",
               "Invoiced",
               "DocketLocked",
               "ShowOnInvoice",
               "UseAdjustedAmount",
               "UseAdjustedTime",
               "UsedRealTime",
               "BillableTime",
               "Private",
               "Remind",
               "RecurAnnually",
               "IsInterrupt",
               "WasInterrupted",
               "WasPaused",
               "NotesFlag",
               "ClientNotifiedFlag",
               "hideInTasks"} +
         numbered("Custom", 5) + numbered("Status", 5);
}

// Every practice table the system names, with the columns it reads or writes there.
std::vector<std::pair<std::string, Names>> documentedPracticeTables() {
  std::vector<std::pair<std::string, Names>> tables = {
      {"Companies", Names{"CompanyID", "DefaultContactName", "DefaultContactPhoneNumber",
                          "DefaultContactFaxNumber", "DefaultContactEmail"} +
                        companyColumns() + numbered("CompanyLabel", 5)},
      {"ClientData",
       {"ClientDataID", "CompanyIDNum", "ActiveStatus", "ShowThisClient", "BusinessNumber",
        "GSTNumber", "PayrollNumber", "FederalCorpNumber", "ONCorpNumber", "PSTNumber", "EHTNumber",
        "MCBS", "YearEndDate", "IncorporationDate", "GSTFilingMethod", "FinancialStatements",
        "RC59Permission", "RC59Status", "WSIBNumber"}},
      {"AccountingServices", {"AccountingServiceID"}},
      {"ClientOptions", {"ClientOptionID"}},
      {"ClientNotes", {"ClientNoteID"}},
      {"CorpTaxInfo",
       {"CorpTaxInfoID", "PayrollRegisteredAs", "CorporationType", "CorporationLevel",
        "CharitableNum"}},
      {"LawInfo", {"LawInfoID", "NameRenewalDate", "LawSocietyMemberNumber"}},
      {"OtherInfo", Names{"OtherInfoID"} + numbered("ClientCustom", 5)},
      {"WSIB_EHTInfo",
       {"WSIB_EHTInfoID", "WSIBFirmNumber", "WSIBPremiumRate", "Coverage", "EHTPremiumRate"}},
      {"ClientUSInfo",
       {"ClientUSInfoID", "EIN", "SellersPermitNum", "USYearEndDate", "SoSFileNum",
        "USIncorporationDate", "PropertyTaxNum", "Form637RegNum", "TCN", "TerminalName",
        "TerminalLocation", "AlcoholNum"}},
      {"CompaniesNotes", {"CompanyNum", "ComapnyNum", "Notes", "BusinessNotes", "ContactNotes"}},
      {"Clients", {"ClientID", "CompanyIDNum", "ContactIDNum"}},
      {"AccountantFirmInfo", Names{"CompanyID", "BusinessNotes"} + companyColumns()},
      {"AccountantEmployeeInfo",
       Names{"ContactID", "CompanyNum", "UserName", "UserLevel", "UserColour", "ActiveStatus",
             "ShowUserInAppointments", "ShowUserInSearchAppointments", "ShowUserInTasks",
             "ShowUserInSearchTasks", "ShowUserInPersonalTax", "Notes", "PersonalNotes",
             "BusinessNotes", "PersonalTaxNotes"} +
           personColumns()},
      {"SoftwareInfo",
       {"CompanyIDNum", "ContactIDNum", "CompanyID", "DefaultSoftware", "SoftwareName",
        "SoftwareSerialNumber", "SoftwareVersion", "SoftwareAccountNumber", "FileSavedAs",
        "UserName", "Password"}},
      {"Contacts", Names{"ContactID", "Language"} + personColumns()},
      {"ContactLinks",
       {"ContactIDNum", "CategoryNum", "CompanyNum", "ContactNum", "FamilyRelationship",
        "IsPersonalTaxCategory", "DefaultContact"}},
      {"ContactsNotes", {"ContactNum", "Notes", "PersonalNotes", "BusinessNotes"}},
      {"Categories", {"CategoryID", "CategoryNum", "CategoryName", "CategorySpecialCode"}},
      {"CustomFields",
       numbered("CustomName", 5) + numbered("TaskCustomName", 5) + numbered("ApptCustomName", 5) +
           numbered("DocketCustomName", 5) + numbered("RemittanceLabel", 5) +
           numbered("PersonalTaxTaskCustomType", 5) + numbered("PersonalTaxTaskCustomInfo", 5)},
      {"CustomAddressFields", numbered("CompanyLabel", 5) + numbered("ContactLabel", 5)},
      {"PersonalTaxInfo", Names{"ContactNum", "TaxYear"} + numbered("PersonalCustom", 5)},
      {"PersonalTaxStatus", Names{"ContactNum",
                                  "TaxYear",
                                  "ReturnStatus",
                                  "ActiveStatus",
                                  "ReturnDate",
                                  "InHouseDueDate",
                                  "EmployeeAssigned",
                                  "OverdueFlag",
                                  "ContactPersonalTaxDisplayType",
                                  "EmploymentIncome",
                                  "CommissionIncome",
                                  "OtherIncome",
                                  "OldAgeSecurity",
                                  "PensionIncome",
                                  "DisabilityBenefits",
                                  "EmploymentInsurance",
                                  "Dividends",
                                  "RentalIncome",
                                  "AlimonyReceived",
                                  "RRSP",
                                  "SelfEmplomentIncome",
                                  "SelfEmploymentCommission",
                                  "WorkersCompensation",
                                  "UnionDues",
                                  "ChildCareExpenses",
                                  "AttendantCare",
                                  "AlimonyPaid",
                                  "TuitionFeesSelf",
                                  "TuitionFeesOther",
                                  "MedicalExpenses",
                                  "CharitableDonations",
                                  "PoliticalDonations",
                                  "IncomeForeign",
                                  "SafetyDepositBoxes",
                                  "AccountingInvestmentManagementFees",
                                  "InvestmentManagementFees"} +
                                numbered("Custom", 5)},
      {"PersonalTaxNotes", {"ContactNum", "TaxYear"}},
      {"PersonalTaxClientSummary", {"ContactNum", "TaxYear", "PersonalTaxNotes"}},
      {"PersonalTaxDataImportInfo",
       {"TaxYear", "ShowProfileT1InfoInSummary", "DefaultProfileT1Folder",
        "T1InfoProfileClientStatus", "T1InfoeFileStatus", "T1InfoT5007", "T1InfoRevenue",
        "T1InfoEstimatedRefund", "T1InfoActualRefund", "T1InfoPaidtoClient", "T1InfoGSTRefund",
        "T1InfoDiscounted", "T1InfoDeceasedReturn", "T1InfoDateReturnCreated",
        "T1InfoDateReturnSigned", "T1InfoPreparerName", "T1InfoPartnerName"}},
      {"PersonalTaxProfileInfo",
       {"ContactNum", "TaxYear", "ProfileFileLocation", "ProfileClientStatus", "EFILEStatus",
        "PreparerName", "PartnerName", "EstimatedRefund", "ActualRefund", "PaidtoClient", "Revenue",
        "GST", "DateCreated", "DateSigned", "DateLastSynched", "DeceasedReturn", "T5007",
        "Discounted"}},
      {"PersonalTaxSteps", {"TaxYear", "StepNum", "SortIndex"}},
      {"PersonalTaxTasks", {"ContactNum", "TaxYear", "StepNum"}},
      {"Dockets", Names{"DocketID"} + docketColumns()},
      {"InvoiceDockets", Names{"DocketIDNum", "InvoiceIDNum"} + docketColumns()},
      {"Invoices", Names{"InvoiceID",
                         "CompanyIDNum",
                         "ContactIDNum",
                         "FirmIDNum",
                         "InvoiceTemplateNum",
                         "InvoiceNum",
                         "Subject",
                         "InvoiceType",
                         "InvoiceDate",
                         "InvoiceDueDate",
                         "DateCreated",
                         "InvoiceAmountSubTotal",
                         "InvoiceAmountTaxes",
                         "InvoiceAmountWithTaxes",
                         "InvoiceAmountDue",
                         "InvoiceAmountPaid",
                         "InvoiceAdjustedAmountSubTotal",
                         "InvoiceAdjustedAmountTaxes",
                         "InvoiceAdjustedAmountWithTaxes",
                         "InvoiceAdjustedAmountDue",
                         "InvoiceFinalAmountSubTotal",
                         "InvoiceFinalAmountTaxes",
                         "InvoiceFinalAmountWithTaxes",
                         "InvoiceFinalAmountAdjustments",
                         "InvoiceDiffAmount",
                         "DepositTotals",
                         "ARBalance",
                         "InvoiceAmountTaxDetailID",
                         "InvoiceAdjustedAmountTaxDetailID",
                         "InvoiceFinalAmountTaxDetailID",
                         "InvoiceAmountTaxesOption",
                         "UseAdjustedAmount",
                         "UseFinalAmountAdjustment",
                         "InvoiceAmountUseTaxes",
                         "InvoicePaid",
                         "Locked"} +
                       numbered("InvoiceAmountTax", 3) + numbered("InvoiceAdjustedAmountTax", 3)},
      {"Deposits",
       {"DepositID", "CompanyIDNum", "ContactIDNum", "FirmIDNum", "TotalAmount", "DateCreated",
        "DateReceived", "DateDeposited", "Notes", "Subject", "ChequeNumber", "DepositType"}},
      {"DepositPayments",
       {"DepositID", "DepositIDNum", "InvoiceIDNum", "CompanyIDNum", "ContactIDNum", "FirmIDNum",
        "TotalAmount", "Amount", "DateCreated", "DateDeposited", "DateReceived", "Subject", "Notes",
        "ChequeNumber"}},
      {"UserBillingRates",
       {"UserBillingRateID", "UserIDNum", "UserBillingRate", "UserBillingRateCode",
        "DefaultBillingRate"}},
      {"BillingCategories", {"BillingCategoryID", "BillingCategoryName"}},
      {"BillingJobCodes",
       {"BillingJobCode", "BillingJobCodeName", "BillingCategoryNum", "BillingType"}},
      {"NonBillingJobCodes",
       {"NonBillingJobCode", "NonBillingJobCodeName", "BillingCategoryNum", "BillingType"}},
      {"CustomInvoiceDockets",
       {"CustomInvoiceDocketID", "CustomItemName", "DescriptionClient", "TotalAmountFinal",
        "TotalAmountFinalWithTaxes"}},
      {"Appointments",
       Names{"AppointmentID", "UserIDNum", "DateFrom", "TimeFrom", "TimeTo", "Subject",
             "AppointmentText", "BeforeAppointmentText", "AfterAppointmentText"} +
           numbered("Custom", 5)},
      {"Tasks",
       Names{"TaskID", "ScheduleIDNum", "UserIDNum", "DateFrom", "TimeFrom", "TimeTo", "Subject",
             "AppointmentText", "BeforeAppointmentText", "AfterAppointmentText"} +
           numbered("Custom", 5)},
      {"archiveTasks", {"oldTaskID", "ScheduleIDNum"}},
      {"Schedule",
       Names{"ScheduleID", "ClientNum", "ScheduleNum", "TotalNum", "scheduleName", "Subject",
             "DueDate", "inHouseDueDate", "PeriodEndDate", "PeriodDescription", "CalendarDate",
             "EmployeeAssigned", "Year", "Amount", "PersonCompleted", "DateCompleted"} +
           numbered("Custom", 5)},
      {"archiveSchedule", {"oldScheduleID", "ClientNum", "ScheduleNum", "TotalNum"}},
      {"ScheduleTypes", {"TotalNum"}},
      {"Searches", {"SearchID", "SearchType"}},
      {"SearchesUserSpecific", {"UserIDNum", "SearchIDNum", "SearchType"}},
      {"UserGeneralSettings",
       {"UserIDNum", "ProfileT1Folder", "ProfileT2Folder", "CANTAXT1ExportFile",
        "CANTAXT2ExportFile"}},
      {"UserCalendarSettings",
       {"UserIDNum", "TemplateAppt", "TemplateDocket", "TemplateTask", "TitleBarTextAppt",
        "TitleBarTextDocket", "TitleBarTextTask"}},
      {"GlobalGeneralSettings", {}},
  };
  // The cross-reference tables, told on TPS; the other sources put their word in every name.
  for (const std::string source : {"TPS", "CCHPractice", "Balaboss"}) {
    const Names stamp{source + "DBID", "DateLastSync"};
    tables.push_back({source + "UserEntries", stamp + Names{"UserIDNum", source + "UserID"}});
    tables.push_back(
        {source + "Clients",
         stamp + Names{"CompanyID", "ContactID", source + "ClientID", source + "ContactID"}});
    tables.push_back({source + "InvoiceEntries", stamp + Names{"InvoiceIDNum", source + "InvoiceID",
                                                               "DepositIDNum", source + "CashID"}});
    tables.push_back({source + "TimeEntries", stamp + Names{"DocketIDNum", source + "TimeID"}});
    tables.push_back({source + "WorkCodeEntries",
                      stamp + Names{"WorkcodeIDNum", source + "WorkcodeID", "InvoiceItemIDNum",
                                    source + "ParagraphID", "BillingCategoryIDNum",
                                    source + "BillingCategoryID"}});
  }
  return tables;
}

struct ColumnInfo {
  std::string type;
  bool primaryKey = false;
};

class PracticeSchemaTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(sqlite3_open(":memory:", &db_), SQLITE_OK);
    for (const auto& statement : lf::practiceSchemaStatements()) {
      char* error = nullptr;
      ASSERT_EQ(sqlite3_exec(db_, statement.c_str(), nullptr, nullptr, &error), SQLITE_OK)
          << statement << "\n"
          << (error ? error : "");
    }
  }
  void TearDown() override { sqlite3_close(db_); }

  // Columns by name, generated ones included.
  std::map<std::string, ColumnInfo> columnsOf(const std::string& table) {
    std::map<std::string, ColumnInfo> columns;
    sqlite3_stmt* stmt = nullptr;
    const std::string sql = "PRAGMA table_xinfo(\"" + table + "\")";
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK);
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      const auto text = [&](int i) {
        const auto* p = sqlite3_column_text(stmt, i);
        return std::string(p ? reinterpret_cast<const char*>(p) : "");
      };
      columns[text(1)] = ColumnInfo{text(2), sqlite3_column_int(stmt, 5) != 0};
    }
    sqlite3_finalize(stmt);
    return columns;
  }

  // Column names of a result, in order.
  Names resultColumns(const std::string& sql) {
    Names names;
    sqlite3_stmt* stmt = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK)
        << sqlite3_errmsg(db_);
    for (int i = 0; stmt && i < sqlite3_column_count(stmt); ++i)
      names.push_back(sqlite3_column_name(stmt, i));
    sqlite3_finalize(stmt);
    return names;
  }

  void exec(const std::string& sql) {
    char* error = nullptr;
    ASSERT_EQ(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK)
        << sql << "\n"
        << (error ? error : "");
  }

  long long scalar(const std::string& sql) {
    sqlite3_stmt* stmt = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK);
    long long value = -999;
    if (sqlite3_step(stmt) == SQLITE_ROW) value = sqlite3_column_int64(stmt, 0);
    sqlite3_finalize(stmt);
    return value;
  }

  sqlite3* db_ = nullptr;
};

TEST_F(PracticeSchemaTest, EveryNamedTableHasEveryNamedColumn) {
  for (const auto& [table, columns] : documentedPracticeTables()) {
    const auto actual = columnsOf(table);
    EXPECT_FALSE(actual.empty()) << "missing table " << table;
    for (const auto& column : columns)
      EXPECT_TRUE(actual.count(column)) << "missing column " << table << "." << column;
  }
}

TEST_F(PracticeSchemaTest, TableNamesAreTheTablesCreated) {
  std::set<std::string> created;
  sqlite3_stmt* stmt = nullptr;
  sqlite3_prepare_v2(db_, "SELECT name FROM sqlite_master WHERE type='table'", -1, &stmt, nullptr);
  while (sqlite3_step(stmt) == SQLITE_ROW)
    created.insert(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
  sqlite3_finalize(stmt);
  const auto& names = lf::practiceTableNames();
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()), created);
  EXPECT_EQ(names.size(), created.size());
}

TEST(PracticeSchemaStatements, EachElementIsExactlyOneStatement) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
  for (const auto& statement : lf::practiceSchemaStatements()) {
    sqlite3_stmt* stmt = nullptr;
    const char* tail = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db, statement.c_str(), -1, &stmt, &tail), SQLITE_OK)
        << statement << "\n"
        << sqlite3_errmsg(db);
    EXPECT_EQ(std::string(tail).find_first_not_of(" \t\r\n;"), std::string::npos) << statement;
    sqlite3_step(stmt);  // later statements may need the tables of earlier ones
    sqlite3_finalize(stmt);
  }
  sqlite3_close(db);
}

// The statements also pass through the database service's statement translator, which is how
// a stand-alone practice database is made.
TEST(PracticeSchemaStatements, RunThroughTheDatabaseService) {
  lf::Database db;
  db.createNew(":memory:");
  for (const auto& statement : lf::practiceSchemaStatements())
    ASSERT_NO_THROW(db.executeStatement(statement)) << statement;
  for (const auto& table : lf::practiceTableNames()) EXPECT_TRUE(db.hasTable(table)) << table;
}

// Rows written through the service are found again by the second name of their key.
TEST(PracticeSchemaStatements, AliasColumnsFollowRowsWrittenThroughTheService) {
  lf::Database db;
  db.createNew(":memory:");
  for (const auto& statement : lf::practiceSchemaStatements()) db.executeStatement(statement);
  std::int32_t notes = db.openRecordset("SELECT CompaniesNotes.* FROM CompaniesNotes;",
                                        lf::kCursorKeyset, lf::kLockOptimistic);
  db.addNewRecord(notes);
  db.setNewField(notes, "CompanyNum", "12");
  db.updateRecord(notes);
  db.closeRecordset(notes);
  notes = db.openRecordset(
      "SELECT CompaniesNotes.* From CompaniesNotes WHERE CompaniesNotes.CompanyNum=12",
      lf::kCursorKeyset, lf::kLockOptimistic);
  ASSERT_TRUE(db.findRecord(notes, "ComapnyNum", "12"));
  db.setField(notes, "BusinessNotes", "{\\rtf1}");
  EXPECT_EQ(db.getField(notes, "BusinessNotes").toString(), "{\\rtf1}");
  db.closeRecordset(notes);
}

TEST_F(PracticeSchemaTest, DeclaredTypesFollowTheConversionConvention) {
  EXPECT_EQ(columnsOf("Contacts")["Birthday"].type, "DATETIME");
  EXPECT_EQ(columnsOf("ContactLinks")["DefaultContact"].type, "BOOLEAN");
  EXPECT_EQ(columnsOf("Invoices")["ARBalance"].type, "CURRENCY");
  EXPECT_EQ(columnsOf("Dockets")["TotalTimeFinal"].type, "DOUBLE");
  EXPECT_EQ(columnsOf("Companies")["CompanyType"].type, "INTEGER");
  EXPECT_EQ(columnsOf("Contacts")["MaritialStatus"].type, "TEXT");
  // A source ID that TPS handles as text is text; one it numbers is a number.
  EXPECT_EQ(columnsOf("TPSInvoiceEntries")["TPSCashID"].type, "TEXT");
  EXPECT_EQ(columnsOf("TPSInvoiceEntries")["TPSInvoiceID"].type, "INTEGER");
  for (const auto& [table, key] : std::vector<std::pair<std::string, std::string>>{
           {"Companies", "CompanyID"},
           {"Contacts", "ContactID"},
           {"ClientData", "ClientDataID"},
           {"Dockets", "DocketID"},
           {"Invoices", "InvoiceID"},
           {"Deposits", "DepositID"},
           {"Categories", "CategoryID"},
           {"AccountingServices", "AccountingServiceID"}}) {
    const auto info = columnsOf(table)[key];
    EXPECT_EQ(info.type, "INTEGER") << table;
    EXPECT_TRUE(info.primaryKey) << table;
  }
}

TEST_F(PracticeSchemaTest, NewCompanyGetsItsKeyFromTheDatabase) {
  exec("INSERT INTO Companies (CompanyName) VALUES ('')");
  exec("INSERT INTO Companies (CompanyName) VALUES ('')");
  EXPECT_EQ(scalar("SELECT MAX(CompanyID) FROM Companies"), 2);
  EXPECT_EQ(scalar("SELECT CompanyID FROM Companies WHERE rowid = last_insert_rowid()"), 2);
}

TEST_F(PracticeSchemaTest, TextComparesCaseInsensitivelyAndBooleansDefaultFalse) {
  exec("INSERT INTO Contacts (DisplayName) VALUES ('John Smith')");
  EXPECT_EQ(scalar("SELECT COUNT(*) FROM Contacts WHERE DisplayName = 'JOHN SMITH'"), 1);
  EXPECT_EQ(scalar("SELECT InheritCompanyInfo FROM Contacts"), 0);
  exec("INSERT INTO ContactLinks (ContactIDNum, CompanyNum) VALUES (1, 4)");
  EXPECT_EQ(scalar("SELECT DefaultContact FROM ContactLinks"), 0);
  EXPECT_EQ(scalar("SELECT COUNT(*) FROM ContactLinks WHERE CategoryNum IS NULL"), 1);
}

TEST_F(PracticeSchemaTest, CompanyNotesAreFoundByTheMisspeltNameToo) {
  exec("INSERT INTO CompaniesNotes (CompanyNum) VALUES (7)");
  EXPECT_EQ(scalar("SELECT ComapnyNum FROM CompaniesNotes"), 7);
  exec("INSERT INTO SoftwareInfo (CompanyIDNum, DefaultSoftware) VALUES (9, 1)");
  EXPECT_EQ(scalar("SELECT CompanyID FROM SoftwareInfo"), 9);
}

// The sheet's check marks are written on the main personal row; on the contact row the same
// write must fail, since the import relies on that failure for unticked options.
TEST_F(PracticeSchemaTest, CheckMarksStandOnTheStatusRowNotOnTheContact) {
  auto contacts = columnsOf("Contacts");
  auto status = columnsOf("PersonalTaxStatus");
  for (const char* mark : {"EmploymentIncome", "SelfEmplomentIncome", "CharitableDonations"}) {
    EXPECT_FALSE(contacts.count(mark)) << mark;
    EXPECT_EQ(status[mark].type, "BOOLEAN") << mark;
  }
  EXPECT_FALSE(contacts.count("0"));
}

// The main business selection reads every column by its bare name, so the tables it joins must
// not repeat a name, apart from ClientID, which the selection itself repeats.
TEST_F(PracticeSchemaTest, MainBusinessSelectionRepeatsNoColumnButClientID) {
  const std::string from =
      " FROM ((((((((Companies INNER JOIN ClientData ON Companies.CompanyID = "
      "ClientData.CompanyIDNum) INNER JOIN AccountingServices ON ClientData.ClientDataID = "
      "AccountingServices.AccountingServiceID) INNER JOIN ClientOptions ON "
      "ClientData.ClientDataID = ClientOptions.ClientOptionID) INNER JOIN CorpTaxInfo ON "
      "ClientData.ClientDataID = CorpTaxInfo.CorpTaxInfoID) INNER JOIN LawInfo ON "
      "ClientData.ClientDataID = LawInfo.LawInfoID) INNER JOIN OtherInfo ON "
      "ClientData.ClientDataID = OtherInfo.OtherInfoID) INNER JOIN WSIB_EHTInfo ON "
      "ClientData.ClientDataID = WSIB_EHTInfo.WSIB_EHTInfoID) INNER JOIN CompaniesNotes ON "
      "Companies.CompanyID = CompaniesNotes.CompanyNum) INNER JOIN Clients ON "
      "Companies.CompanyID = Clients.CompanyIDNum";
  const std::string fromUS =
      " FROM ((((Companies INNER JOIN ClientData ON Companies.CompanyID = "
      "ClientData.CompanyIDNum) INNER JOIN AccountingServices ON ClientData.ClientDataID = "
      "AccountingServices.AccountingServiceID) INNER JOIN ClientOptions ON "
      "ClientData.ClientDataID = ClientOptions.ClientOptionID) INNER JOIN ClientUSInfo ON "
      "ClientData.ClientDataID = ClientUSInfo.ClientUSInfoID) INNER JOIN CompaniesNotes ON "
      "Companies.CompanyID = CompaniesNotes.CompanyNum INNER JOIN Clients ON "
      "Companies.CompanyID = Clients.CompanyIDNum";
  const std::string canada =
      "SELECT Clients.ClientID, AccountingServices.*, ClientData.*, ClientOptions.*, "
      "Companies.*, CorpTaxInfo.*, LawInfo.*, OtherInfo.*, WSIB_EHTInfo.*, "
      "CompaniesNotes.BusinessNotes, CompaniesNotes.ContactNotes" +
      from;
  const std::string unitedStates =
      "SELECT Clients.ClientID, AccountingServices.*, ClientData.*, ClientOptions.*, "
      "Companies.*, ClientUSInfo.*, CompaniesNotes.BusinessNotes, CompaniesNotes.ContactNotes" +
      fromUS;
  for (const auto& sql : {canada, unitedStates}) {
    std::map<std::string, int> seen;
    for (const auto& name : resultColumns(sql)) ++seen[name];
    for (const auto& [name, count] : seen) {
      if (name != "ClientID") {
        EXPECT_EQ(count, 1) << name;
      }
    }
    EXPECT_EQ(seen["ClientID"], 2);
    EXPECT_EQ(seen["ShowThisClient"], 1);
    EXPECT_EQ(seen["BusinessNumber"], 1);
  }
}

}  // namespace
