// The practice database schema, written as a table description from which the CREATE
// statements are generated.
//
// Each table is declared once, by area: the companies family, contacts and links, personal
// tax, billing and time, calendar and searches, settings, and the cross-reference tables of
// the sync engines. Where two tables share a column set (Contacts and AccountantEmployeeInfo,
// Companies and AccountantFirmInfo, Dockets and InvoiceDockets, the cross-reference tables of
// the four sources) one function adds it to both, so the pairs cannot drift apart.
//
// Columns of the main business selection (Companies, ClientData and its satellites) must not
// repeat a name across those tables, other than the keys the selection already repeats:
// its recordset reads every column by its bare name.
#include "db/practice_schema.hpp"

#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace lf {
namespace {

constexpr std::string_view kKey = "INTEGER PRIMARY KEY";
constexpr std::string_view kLong = "INTEGER";
constexpr std::string_view kBool = "BOOLEAN DEFAULT 0";
constexpr std::string_view kDate = "DATETIME";
constexpr std::string_view kMoney = "CURRENCY";
constexpr std::string_view kDouble = "DOUBLE";
constexpr std::string_view kText = "TEXT COLLATE NOCASE";

// One table under construction: its column definitions and the column lists of its indexes.
// Names stand unquoted: none is an SQL keyword, and the statements pass through the service's
// statement translator, which reads double quotes as string delimiters.
class TableDef {
 public:
  explicit TableDef(std::string name) : name_(std::move(name)) {}

  TableDef& key(std::string_view column) { return add(column, kKey); }
  TableDef& column(std::string_view name, std::string_view type) { return add(name, type); }
  TableDef& longs(std::initializer_list<std::string_view> columns) { return add(columns, kLong); }
  TableDef& bools(std::initializer_list<std::string_view> columns) { return add(columns, kBool); }
  TableDef& dates(std::initializer_list<std::string_view> columns) { return add(columns, kDate); }
  TableDef& money(std::initializer_list<std::string_view> columns) { return add(columns, kMoney); }
  TableDef& doubles(std::initializer_list<std::string_view> columns) {
    return add(columns, kDouble);
  }
  TableDef& texts(std::initializer_list<std::string_view> columns) { return add(columns, kText); }

  // stem + first .. stem + last, e.g. Custom1 to Custom5.
  TableDef& numbered(std::string_view stem, int first, int last, std::string_view type) {
    for (int n = first; n <= last; ++n) add(std::string(stem) + std::to_string(n), type);
    return *this;
  }

  // A read-only column that always holds the value of another one: the host's table carries
  // the same number under a second name that some statements search by.
  TableDef& alias(std::string_view column, std::string_view of) {
    columns_.push_back(std::string(column) + " INTEGER GENERATED ALWAYS AS (" + std::string(of) +
                       ") VIRTUAL");
    return *this;
  }

  TableDef& index(std::initializer_list<std::string_view> columns) {
    indexes_.emplace_back(columns.begin(), columns.end());
    return *this;
  }

  const std::string& name() const { return name_; }

  std::vector<std::string> columnNames() const {
    std::vector<std::string> names;
    for (const std::string& definition : columns_)
      names.push_back(definition.substr(0, definition.find(' ')));
    return names;
  }

  void appendStatements(std::vector<std::string>& out) const {
    std::string create = "CREATE TABLE " + name_ + " (";
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (i > 0) create += ", ";
      create += columns_[i];
    }
    out.push_back(create + ")");
    for (const auto& columns : indexes_) {
      std::string indexName = "ix_" + name_;
      std::string list;
      for (std::size_t i = 0; i < columns.size(); ++i) {
        indexName += "_" + columns[i];
        if (i > 0) list += ", ";
        list += columns[i];
      }
      out.push_back("CREATE INDEX " + indexName + " ON " + name_ + " (" + list + ")");
    }
  }

 private:
  TableDef& add(std::string_view column, std::string_view type) {
    columns_.push_back(std::string(column) + " " + std::string(type));
    return *this;
  }
  TableDef& add(std::initializer_list<std::string_view> columns, std::string_view type) {
    for (auto column : columns) add(column, type);
    return *this;
  }

  std::string name_;
  std::vector<std::string> columns_;
  std::vector<std::vector<std::string>> indexes_;
};

// The tables in creation order. A deque, so that a reference to a table stays valid while
// later tables are added.
class Schema {
 public:
  TableDef& table(std::string name) { return tables_.emplace_back(std::move(name)); }
  const std::deque<TableDef>& tables() const { return tables_; }

 private:
  std::deque<TableDef> tables_;
};

// The columns of a company row, shared by Companies and the firm's own AccountantFirmInfo.
void addCompanyColumns(TableDef& t) {
  t.texts({"CompanyName",
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
           "DefaultContactName",
           "DefaultContactPhoneNumber",
           "DefaultContactFaxNumber",
           "DefaultContactEmail"})
      .numbered("Custom", 1, 5, kText)
      .numbered("CompanyLabel", 1, 5, kText)
      .texts({"AccountantInfo", "BankerInfo", "CRAInfo", "FinancialLendersInfo", "InsuranceInfo",
              "LawyerInfo"})
      .longs({"CategoryNum", "CompanyNum", "CompanyType"});
}

// The person columns of a contact, shared by Contacts and AccountantEmployeeInfo.
void addPersonColumns(TableDef& t) {
  t.texts({"NamePrefix", "FirstName", "MiddleName", "LastName", "NameSuffix", "DisplayName",
           "SpouseNamePrefix", "SpouseFirstName", "SpouseMiddleName", "SpouseLastName",
           "SpouseNameSuffix", "SpouseName"})
      .texts({"ClientID", "SocialInsuranceNumber", "SpouseSIN", "Gender", "SpouseGender",
              "MaritialStatus", "SpokenLanguage", "Language", "Children", "EmployeeType"})
      .dates({"Birthday", "SpouseBirthday", "Anniversary"})
      .texts({"HomeAddress", "HomeCity", "HomeProvince", "HomePostalCode", "HomeCountry",
              "HomePhone_Main", "HomePhone_Cell", "HomePhone_Fax", "HomePhone_Pager",
              "PersonalAltPhoneNumber", "PersonalEmail", "PersonalWebSite", "PersonalFaceBookURL",
              "PersonalTwitterAccount"})
      .texts({"BusinessName", "BusinessAddress", "BusinessCity", "BusinessProvince",
              "BusinessPostalCode", "BusinessCountry", "BusinessDepartment", "BusinessOffice",
              "BusinessJobTitle", "BusinessPhone_Main", "BusinessPhone_Cell", "BusinessPhone_Fax",
              "BusinessPhone_Pager", "BusinessAltPhoneNumber", "BusinessEmail", "BusinessWebSite",
              "BusinessFaceBookURL", "BusinessTwitterAccount"})
      .texts({"SpouseAddress", "SpouseCity", "SpouseProvince", "SpousePostalCode", "SpouseCountry",
              "SpousePhone_Main", "SpousePhone_Cell", "SpouseEmail"})
      .texts(
          {"AltAddressName", "AltAddress", "AltCity", "AltProvince", "AltPostalCode", "AltCountry"})
      .bools({"InheritCompanyInfo", "StakeHolder"})
      .longs({"PercentageOwnership"})
      .texts({"AccountantName", "PartnerName"})
      .numbered("Custom", 1, 5, kText);
}

// The columns of a time entry, shared by Dockets and the invoice's copy in InvoiceDockets.
void addDocketColumns(TableDef& t) {
  t.longs({"CompanyIDNum", "ContactIDNum", "UserIDNum", "FirmIDNum", "BillToCompanyIDNum",
           "BillToContactIDNum", "BillingRateIDNum", "BillingProjectIDNum", "ScheduleIDNum",
           "ApptIDNum", "TaskIDNum", "ToDoIDNum", "UserGroupNum"})
      .dates({"DateFrom", "TimeFrom", "TimeTo", "RealTimeFrom", "RealTimeTo",
              "OriginalRealTimeFrom", "OriginalRealTimeTo", "RoundedTimeFrom", "RoundedTimeTo",
              "DateCreated"})
      .doubles({"TotalTimeReal", "TotalTimeRounded", "TotalTimeAdjusted", "TotalTimeFinal"})
      .money({"TotalAmountReal", "TotalAmountAdjusted", "TotalAmountFinal", "BillingJobRate"})
      .texts({"Subject", "DescriptionClient", "DescriptionInternal", "TextBody", "TitleText",
              "AppointmentText", "BeforeAppointmentText", "AfterAppointmentText"})
      .numbered("Custom", 1, 5, kText)
      .longs({"DocketStatus", "DocketBillingType", "TaskType"})
      .numbered("Status", 1, 5, kLong)
      .longs({"notifyType", "RepeatNum", "ReminderPeriod", "SchemeID", "BackColour", "ForeColour",
              "TitleBackColour", "TitleForeColour"})
      .bools({"Invoiced", "DocketLocked", "ShowOnInvoice", "UseAdjustedAmount", "UseAdjustedTime",
              "UsedRealTime", "BillableTime", "Private", "Remind", "RecurAnnually", "IsInterrupt",
              "WasInterrupted", "WasPaused", "NotesFlag", "ClientNotifiedFlag", "hideInTasks"});
}

// The five cross-reference tables of one sync source: the Ledgerfolio ID beside the source's
// ID, each row stamped with the source firm (<source>DBID) and the time of its last write.
// One table carries several kinds of row, told apart by which pair is filled.
// TPS numbers its rows, except the four IDs it handles as text throughout; CCH Practice and
// Balaboss (and Bill4Time, which shares the Balaboss tables) key by codes, so theirs are text.
void addCrossReferenceTables(Schema& s, const std::string& source, bool numericSourceIds) {
  const std::string_view numberOrCode = numericSourceIds ? kLong : kText;
  const std::string dbid = source + "DBID";
  auto xref = [&](const std::string& table) -> TableDef& {
    return s.table(source + table).column(dbid, kText).dates({"DateLastSync"}).index({dbid});
  };
  auto pair = [&](TableDef& t, std::string_view ledgerfolioColumn, const std::string& sourceColumn,
                  std::string_view sourceType) {
    t.column(ledgerfolioColumn, kLong).column(sourceColumn, sourceType);
  };
  // A sync reads a table once by its firm ("WHERE TPSDBID = ...") and searches the rows in
  // memory: one index serves it, and every further index would cost each record's commit.

  auto& users = xref("UserEntries");
  pair(users, "UserIDNum", source + "UserID", numberOrCode);

  auto& clients = xref("Clients");
  pair(clients, "CompanyID", source + "ClientID", numberOrCode);
  clients.column("ContactID", kLong).column(source + "ContactID", numberOrCode);

  auto& invoices = xref("InvoiceEntries");
  pair(invoices, "InvoiceIDNum", source + "InvoiceID", numberOrCode);
  pair(invoices, "DepositIDNum", source + "CashID", kText);

  auto& times = xref("TimeEntries");
  pair(times, "DocketIDNum", source + "TimeID", numberOrCode);

  auto& workCodes = xref("WorkCodeEntries");
  pair(workCodes, "WorkcodeIDNum", source + "WorkcodeID", kText);
  pair(workCodes, "InvoiceItemIDNum", source + "ParagraphID", kText);
  pair(workCodes, "BillingCategoryIDNum", source + "BillingCategoryID", kText);
}

Schema buildPracticeSchema() {
  Schema s;

  // --- Companies and their client-data family -------------------------------------------
  // A business client is a Companies row, its CompaniesNotes and Clients rows, one ClientData
  // row and the one-to-one satellites keyed by the ClientDataID. The tax and registration
  // numbers that the imports write on the main business selection stand in ClientData, which
  // that selection joins in both country modes; the columns only the merge reads sit in the
  // satellite of their kind.
  auto& companies = s.table("Companies").key("CompanyID");
  addCompanyColumns(companies);
  // The second address set of the corporate tax exports' column map.
  companies.texts({"Address1_2", "City_2", "Province_2", "PostalCode_2", "Country_2"})
      .index({"CategoryNum"})
      .index({"CompanyNum"});

  s.table("CompaniesNotes")
      .key("CompanyNum")
      // Intended: the merge engine seeks company notes by this misspelt name.
      .alias("ComapnyNum", "CompanyNum")
      .texts({"Notes", "BusinessNotes", "ContactNotes"});

  s.table("Clients")
      .key("ClientID")
      .longs({"CompanyIDNum", "ContactIDNum"})
      .index({"CompanyIDNum"})
      .index({"ContactIDNum"});

  s.table("ClientData")
      .key("ClientDataID")
      .longs({"CompanyIDNum", "ActiveStatus"})
      .bools({"ShowThisClient"})
      .texts({"BusinessNumber", "GSTNumber", "PayrollNumber", "FederalCorpNumber", "ONCorpNumber",
              "PSTNumber", "EHTNumber", "MCBS", "WSIBNumber"})
      .dates({"YearEndDate", "IncorporationDate"})
      .longs({"GSTFilingMethod", "FinancialStatements", "RC59Permission", "RC59Status"})
      .index({"CompanyIDNum"});

  s.table("AccountingServices").key("AccountingServiceID");
  s.table("ClientOptions").key("ClientOptionID");
  s.table("ClientNotes").key("ClientNoteID");
  s.table("CorpTaxInfo")
      .key("CorpTaxInfoID")
      .texts({"PayrollRegisteredAs", "CharitableNum"})
      .longs({"CorporationType", "CorporationLevel"});
  s.table("LawInfo").key("LawInfoID").dates({"NameRenewalDate"}).texts({"LawSocietyMemberNumber"});
  s.table("OtherInfo").key("OtherInfoID").numbered("ClientCustom", 1, 5, kText);
  s.table("WSIB_EHTInfo")
      .key("WSIB_EHTInfoID")
      .texts({"WSIBFirmNumber", "WSIBPremiumRate", "Coverage", "EHTPremiumRate"});
  s.table("ClientUSInfo")
      .key("ClientUSInfoID")
      .texts({"EIN", "SellersPermitNum", "SoSFileNum", "PropertyTaxNum", "Form637RegNum", "TCN",
              "TerminalName", "TerminalLocation", "AlcoholNum"})
      .dates({"USYearEndDate", "USIncorporationDate"});

  s.table("SoftwareInfo")
      .longs({"CompanyIDNum", "ContactIDNum"})
      // Intended: the merge engine seeks a company's software by CompanyID.
      .alias("CompanyID", "CompanyIDNum")
      .bools({"DefaultSoftware"})
      .texts({"SoftwareName", "SoftwareSerialNumber", "SoftwareVersion", "SoftwareAccountNumber",
              "FileSavedAs", "UserName", "Password"})
      .index({"CompanyIDNum"})
      .index({"ContactIDNum"});

  // The practice itself and its staff.
  auto& firm = s.table("AccountantFirmInfo").key("CompanyID");
  addCompanyColumns(firm);
  firm.texts({"Notes", "BusinessNotes"});

  auto& staff = s.table("AccountantEmployeeInfo").key("ContactID");
  addPersonColumns(staff);
  staff.longs({"CompanyNum"})
      .texts({"UserName"})
      .longs({"UserLevel", "UserColour", "ActiveStatus"})
      .bools({"ShowUserInAppointments", "ShowUserInSearchAppointments", "ShowUserInTasks",
              "ShowUserInSearchTasks", "ShowUserInPersonalTax"})
      .texts({"Notes", "PersonalNotes", "BusinessNotes", "PersonalTaxNotes"});

  // --- Contacts, links, categories and custom labels -------------------------------------
  auto& contacts = s.table("Contacts").key("ContactID");
  addPersonColumns(contacts);
  contacts.longs({"ContactPersonalTaxDisplayType"});

  s.table("ContactLinks")
      .longs({"ContactIDNum", "CategoryNum", "CompanyNum", "ContactNum"})
      .texts({"FamilyRelationship"})
      .bools({"IsPersonalTaxCategory", "DefaultContact"})
      .index({"ContactIDNum"})
      // A contact's link to one category or company is found by both: without the pair the
      // search walks every link of the category (the address book holds most contacts).
      .index({"ContactIDNum", "CategoryNum"})
      .index({"ContactIDNum", "CompanyNum"})
      .index({"CompanyNum"})
      .index({"CategoryNum"})
      .index({"ContactNum"});

  s.table("ContactsNotes").key("ContactNum").texts({"Notes", "PersonalNotes", "BusinessNotes"});

  s.table("Categories")
      .key("CategoryID")
      .longs({"CategoryNum"})
      .texts({"CategoryName", "CategorySpecialCode"})
      .index({"CategoryNum"});

  s.table("CustomFields")
      .numbered("CustomName", 1, 5, kText)
      .numbered("TaskCustomName", 1, 5, kText)
      .numbered("ApptCustomName", 1, 5, kText)
      .numbered("DocketCustomName", 1, 5, kText)
      .numbered("RemittanceLabel", 1, 5, kText)
      .numbered("PersonalTaxTaskCustomType", 1, 5, kLong)
      .numbered("PersonalTaxTaskCustomInfo", 1, 5, kText);

  s.table("CustomAddressFields")
      .numbered("CompanyLabel", 1, 5, kText)
      .numbered("ContactLabel", 1, 5, kText);

  // --- Personal tax, per contact and tax year ---------------------------------------------
  s.table("PersonalTaxInfo")
      .longs({"ContactNum", "TaxYear"})
      .numbered("PersonalCustom", 1, 5, kText)
      .index({"ContactNum", "TaxYear"});

  // The check marks of the personal-tax sheet are written on the main personal selection,
  // which takes PersonalTaxStatus whole; they must not exist on Contacts.
  s.table("PersonalTaxStatus")
      .longs({"ContactNum", "TaxYear", "ReturnStatus", "ActiveStatus"})
      .dates({"ReturnDate", "InHouseDueDate"})
      .texts({"EmployeeAssigned"})
      .bools({"OverdueFlag"})
      .numbered("Custom", 1, 5, kText)
      .longs({"ContactPersonalTaxDisplayType"})
      .bools({"EmploymentIncome",
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
              "InvestmentManagementFees"})
      .index({"ContactNum", "TaxYear"});

  s.table("PersonalTaxNotes").longs({"ContactNum", "TaxYear"}).index({"ContactNum", "TaxYear"});

  s.table("PersonalTaxClientSummary")
      .longs({"ContactNum", "TaxYear"})
      .texts({"PersonalTaxNotes"})
      .index({"ContactNum", "TaxYear"});

  s.table("PersonalTaxDataImportInfo")
      .key("TaxYear")
      .bools({"ShowProfileT1InfoInSummary"})
      .texts({"DefaultProfileT1Folder"})
      .bools({"T1InfoProfileClientStatus", "T1InfoeFileStatus", "T1InfoT5007", "T1InfoRevenue",
              "T1InfoEstimatedRefund", "T1InfoActualRefund", "T1InfoPaidtoClient",
              "T1InfoGSTRefund", "T1InfoDiscounted", "T1InfoDeceasedReturn",
              "T1InfoDateReturnCreated", "T1InfoDateReturnSigned", "T1InfoPreparerName",
              "T1InfoPartnerName"});

  s.table("PersonalTaxProfileInfo")
      .longs({"ContactNum", "TaxYear"})
      .texts({"ProfileFileLocation", "ProfileClientStatus", "EFILEStatus", "PreparerName",
              "PartnerName"})
      .money({"EstimatedRefund", "ActualRefund", "PaidtoClient", "Revenue", "GST"})
      .dates({"DateCreated", "DateSigned", "DateLastSynched"})
      .bools({"DeceasedReturn", "T5007", "Discounted"})
      .index({"ContactNum", "TaxYear"});

  s.table("PersonalTaxSteps").longs({"TaxYear", "StepNum", "SortIndex"}).index({"TaxYear"});

  s.table("PersonalTaxTasks")
      .longs({"ContactNum", "TaxYear", "StepNum"})
      .index({"ContactNum", "TaxYear"});

  // --- Billing and time ----------------------------------------------------------------------
  auto& dockets = s.table("Dockets").key("DocketID");
  addDocketColumns(dockets);
  dockets.index({"UserIDNum", "DateFrom"});  // the calendar's search by user and day

  auto& invoiceDockets = s.table("InvoiceDockets").key("DocketID");
  addDocketColumns(invoiceDockets);
  invoiceDockets.longs({"DocketIDNum", "InvoiceIDNum"}).index({"InvoiceIDNum"});

  s.table("Invoices")
      .key("InvoiceID")
      .longs({"CompanyIDNum", "ContactIDNum", "FirmIDNum", "InvoiceTemplateNum"})
      .texts({"InvoiceNum", "Subject"})
      .longs({"InvoiceType"})
      .dates({"InvoiceDate", "InvoiceDueDate", "DateCreated"})
      .money({"InvoiceAmountSubTotal", "InvoiceAmountTaxes", "InvoiceAmountWithTaxes"})
      .numbered("InvoiceAmountTax", 1, 3, kMoney)
      .money({"InvoiceAmountDue", "InvoiceAmountPaid", "InvoiceAdjustedAmountSubTotal",
              "InvoiceAdjustedAmountTaxes", "InvoiceAdjustedAmountWithTaxes"})
      .numbered("InvoiceAdjustedAmountTax", 1, 3, kMoney)
      .money({"InvoiceAdjustedAmountDue", "InvoiceFinalAmountSubTotal", "InvoiceFinalAmountTaxes",
              "InvoiceFinalAmountWithTaxes", "InvoiceFinalAmountAdjustments", "InvoiceDiffAmount",
              "DepositTotals", "ARBalance"})
      .longs({"InvoiceAmountTaxDetailID", "InvoiceAdjustedAmountTaxDetailID",
              "InvoiceFinalAmountTaxDetailID", "InvoiceAmountTaxesOption"})
      .bools({"UseAdjustedAmount", "UseFinalAmountAdjustment", "InvoiceAmountUseTaxes",
              "InvoicePaid", "Locked"});

  s.table("Deposits")
      .key("DepositID")
      .longs({"CompanyIDNum", "ContactIDNum", "FirmIDNum", "DepositType"})
      .money({"TotalAmount"})
      .dates({"DateCreated", "DateDeposited", "DateReceived"})
      .texts({"Subject", "Notes", "ChequeNumber"});

  // One row a payment of a deposit against an invoice.
  s.table("DepositPayments")
      .key("DepositID")
      .longs({"DepositIDNum", "InvoiceIDNum", "CompanyIDNum", "ContactIDNum", "FirmIDNum"})
      .money({"TotalAmount", "Amount"})
      .dates({"DateCreated", "DateDeposited", "DateReceived"})
      .texts({"Subject", "Notes", "ChequeNumber"})
      // The payments of one deposit (a sync rewrites them) and of one invoice (settling it).
      .index({"DepositIDNum"})
      .index({"InvoiceIDNum"});

  s.table("UserBillingRates")
      .key("UserBillingRateID")
      .longs({"UserIDNum"})
      .money({"UserBillingRate"})
      .texts({"UserBillingRateCode"})
      .bools({"DefaultBillingRate"})
      .index({"UserIDNum"});

  // Work codes and invoice paragraphs.
  s.table("BillingCategories")
      .key("BillingCategoryID")
      .texts({"BillingCategoryName"})
      .longs({"CategoryNum"});
  s.table("BillingJobCodes")
      .key("BillingJobCodeID")
      .texts({"BillingJobCode", "BillingJobCodeName"})
      .longs({"BillingCategoryNum", "CategoryNum", "BillingType"});
  s.table("NonBillingJobCodes")
      .key("NonBillingJobCodeID")
      .texts({"NonBillingJobCode", "NonBillingJobCodeName"})
      .longs({"BillingCategoryNum", "CategoryNum", "BillingType"});
  s.table("CustomInvoiceDockets")
      .key("CustomInvoiceDocketID")
      .texts({"CustomItemName", "DescriptionClient"})
      .money({"TotalAmountFinal", "TotalAmountFinalWithTaxes"});

  // --- Calendar and searches (read by the merge engine; no import writes them) ----------------
  s.table("Appointments")
      .key("AppointmentID")
      .longs({"UserIDNum"})
      .texts({"Subject"})
      .dates({"DateFrom", "TimeFrom", "TimeTo"})
      .texts({"AppointmentText", "BeforeAppointmentText", "AfterAppointmentText"})
      .numbered("Custom", 1, 5, kText)
      .index({"UserIDNum", "DateFrom"});

  s.table("Tasks")
      .key("TaskID")
      .longs({"ScheduleIDNum", "UserIDNum"})
      .texts({"Subject"})
      .dates({"DateFrom", "TimeFrom", "TimeTo"})
      .texts({"AppointmentText", "BeforeAppointmentText", "AfterAppointmentText"})
      .numbered("Custom", 1, 5, kText)
      .index({"ScheduleIDNum"})
      .index({"UserIDNum", "DateFrom"});

  s.table("archiveTasks").longs({"oldTaskID", "ScheduleIDNum"}).index({"ScheduleIDNum"});

  // A task's schedule: the remittance columns of the task merge rows.
  s.table("Schedule")
      .key("ScheduleID")
      .longs({"ClientNum", "ScheduleNum", "TotalNum"})
      .texts({"scheduleName", "Subject"})
      .numbered("Custom", 1, 5, kText)
      .dates({"DueDate", "inHouseDueDate", "PeriodEndDate", "CalendarDate", "DateCompleted"})
      .texts({"PeriodDescription", "EmployeeAssigned", "Year", "PersonCompleted"})
      .money({"Amount"});

  s.table("archiveSchedule").longs({"oldScheduleID", "ClientNum", "ScheduleNum", "TotalNum"});

  s.table("ScheduleTypes").longs({"TotalNum"});

  s.table("Searches").key("SearchID").longs({"SearchType"});

  s.table("SearchesUserSpecific")
      .longs({"UserIDNum", "SearchIDNum", "SearchType"})
      .index({"UserIDNum"});

  // --- Settings --------------------------------------------------------------------------------
  s.table("UserGeneralSettings")
      .longs({"UserIDNum"})
      .texts({"ProfileT1Folder", "ProfileT2Folder", "CANTAXT1ExportFile", "CANTAXT2ExportFile"})
      .index({"UserIDNum"});

  s.table("UserCalendarSettings")
      .longs({"UserIDNum"})
      .texts({"TemplateAppt", "TemplateDocket", "TemplateTask", "TitleBarTextAppt",
              "TitleBarTextDocket", "TitleBarTextTask"})
      .index({"UserIDNum"});

  // One row; the merge engine reads it whole.
  s.table("GlobalGeneralSettings").key("GlobalGeneralSettingsID");

  // --- Cross-reference tables of the sync engines -----------------------------------------------
  addCrossReferenceTables(s, "TPS", true);
  addCrossReferenceTables(s, "CCHPractice", false);
  addCrossReferenceTables(s, "Balaboss", false);

  return s;
}

}  // namespace

const std::vector<std::string>& practiceSchemaStatements() {
  static const std::vector<std::string> statements = [] {
    std::vector<std::string> out;
    const Schema schema = buildPracticeSchema();
    for (const auto& table : schema.tables()) table.appendStatements(out);
    return out;
  }();
  return statements;
}

const std::vector<std::string>& practiceTableNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> out;
    const Schema schema = buildPracticeSchema();
    for (const auto& table : schema.tables()) out.push_back(table.name());
    return out;
  }();
  return names;
}

const std::vector<std::pair<std::string, std::vector<std::string>>>& practiceTableColumns() {
  static const std::vector<std::pair<std::string, std::vector<std::string>>> tables = [] {
    std::vector<std::pair<std::string, std::vector<std::string>>> out;
    const Schema schema = buildPracticeSchema();
    for (const auto& table : schema.tables()) out.emplace_back(table.name(), table.columnNames());
    return out;
  }();
  return tables;
}

}  // namespace lf
