// The shared look-ups against a fresh practice database: the main client selections run and
// pick the right rows, IDs convert both ways, and the per-year and per-user rows are kept.
#include "records/lookups.hpp"

#include "db/practice_database.hpp"
#include "records/export_folders.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

using Strings = std::vector<std::string>;

class LookupsTest : public testing::PracticeDatabaseTest {
 protected:
  void exec(const std::string& sql) { db->executeStatement(sql); }

  // One field of every row, as text, in the statement's order.
  Strings column(const std::string& sql, const std::string& field) {
    Strings out;
    std::int32_t h = db->openRecordset(sql, kCursorKeyset, kLockReadOnly);
    if (db->hasRecord(h)) {
      for (; !db->isEOF(h); db->moveNext(h)) out.push_back(db->getField(h, field).toString());
    }
    db->closeRecordset(h);
    return out;
  }

  // Changes a setting of the stand-alone host and makes the services read it again.
  void hostSetting(const std::string& name, const std::string& setting,
                   const HostOverrides& overrides = {}) {
    writeHostSetting(*db, name, setting);
    locale = std::make_unique<PracticeLocale>(*db, overrides);
    dropDown = std::make_unique<PracticeClientDropDown>(*db, overrides);
    moduleState().LocaleReference = locale.get();
    moduleState().clientDropDownCtrlReference = dropDown.get();
  }

  // A business client with its whole family; the client-data ID is the company ID + 100.
  void addBusinessClient(long company, const std::string& name, int active, bool show,
                         bool withSatellites = true) {
    const std::string id = std::to_string(company);
    const std::string data = std::to_string(company + 100);
    exec("INSERT INTO Companies (CompanyID, CompanyName, CorporateName) VALUES (" + id + ", '" +
         name + "', 'Z" + name + "');");
    exec("INSERT INTO CompaniesNotes (CompanyNum) VALUES (" + id + ");");
    exec("INSERT INTO Clients (CompanyIDNum, ContactIDNum) VALUES (" + id + ", -1);");
    exec(
        "INSERT INTO ClientData (ClientDataID, CompanyIDNum, ActiveStatus, ShowThisClient) "
        "VALUES (" +
        data + ", " + id + ", " + std::to_string(active) + ", " + (show ? "True" : "False") + ");");
    if (!withSatellites) return;
    for (const auto& [table, key] : std::vector<std::pair<std::string, std::string>>{
             {"AccountingServices", "AccountingServiceID"},
             {"ClientOptions", "ClientOptionID"},
             {"ClientNotes", "ClientNoteID"},
             {"CorpTaxInfo", "CorpTaxInfoID"},
             {"LawInfo", "LawInfoID"},
             {"OtherInfo", "OtherInfoID"},
             {"WSIB_EHTInfo", "WSIB_EHTInfoID"},
             {"ClientUSInfo", "ClientUSInfoID"}})
      exec("INSERT INTO " + table + " (" + key + ") VALUES (" + data + ");");
  }

  Strings businessNames(bool showOnly, short statusKind, long clientDataID = -1) {
    return column(getMainBusinessSQLString(showOnly, statusKind, clientDataID), "CompanyName");
  }
};

TEST_F(LookupsTest, MainBusinessSelectionFiltersByStatusShowFlagAndClient) {
  addBusinessClient(1, "Cole Inc.", 1, true);
  addBusinessClient(2, "Acme Ltd", 2, false);
  addBusinessClient(3, "Baker LLP", 1, false);
  EXPECT_EQ(businessNames(false, 3), (Strings{"Acme Ltd", "Baker LLP", "Cole Inc."}));
  EXPECT_EQ(businessNames(false, 1), (Strings{"Baker LLP", "Cole Inc."}));
  EXPECT_EQ(businessNames(false, 2), (Strings{"Acme Ltd"}));
  EXPECT_EQ(businessNames(true, 3), (Strings{"Cole Inc."}));
  EXPECT_EQ(businessNames(true, 2), Strings{});
  EXPECT_EQ(businessNames(false, 3, 102), (Strings{"Acme Ltd"}));
  EXPECT_EQ(businessNames(true, 1, 101), (Strings{"Cole Inc."}));
  hostSetting("SortOrderBusiness", "2");
  EXPECT_EQ(businessNames(false, 3).front(), "Acme Ltd");
  EXPECT_NE(getMainBusinessSQLString(false, 3, -1).find("ORDER BY Companies.CorporateName;"),
            std::string::npos);
  hostSetting("SortOrderBusiness", "0");
  EXPECT_EQ(getMainBusinessSQLString(false, 3, -1).back(), ';');
  EXPECT_EQ(getMainBusinessSQLString(false, 3, -1).find("ORDER BY"), std::string::npos);
}

TEST_F(LookupsTest, CompanyWithAMissingSatelliteDropsOutOfTheMainSelection) {
  addBusinessClient(1, "Whole", 1, true);
  addBusinessClient(2, "Partial", 1, true, false);
  EXPECT_EQ(businessNames(false, 3), (Strings{"Whole"}));
}

TEST_F(LookupsTest, UnitedStatesSelectionJoinsClientUSInfo) {
  hostSetting("CountryMode", "2");
  addBusinessClient(1, "Acme LLC", 1, true);
  const std::string sql = getMainBusinessSQLString(false, 3, -1);
  EXPECT_NE(sql.find("ClientUSInfo.*"), std::string::npos);
  EXPECT_EQ(sql.find("CorpTaxInfo"), std::string::npos);
  EXPECT_EQ(column(sql, "CompanyName"), (Strings{"Acme LLC"}));
  EXPECT_EQ(value(sql, "ClientUSInfoID").toLong(), 101);
}

// The imports write a business client's columns by name on this selection, whichever of the
// joined tables holds them.
TEST_F(LookupsTest, MainBusinessSelectionWritesThroughToEveryMemberTable) {
  addBusinessClient(5, "Acme", 1, false);
  std::int32_t h =
      db->openRecordset(getMainBusinessSQLString(false, 3, -1), kCursorKeyset, kLockOptimistic);
  ASSERT_TRUE(db->findRecord(h, "ClientDataID", "105"));
  db->setField(h, "CompanyName", "Acme Holdings");
  db->setField(h, "BusinessNumber", "123456789");
  db->setField(h, "ShowThisClient", "True");
  db->setField(h, "YearEndDate", "2010-12-31");
  db->setField(h, "ClientCustom1", "fee basis");
  db->closeRecordset(h);
  EXPECT_EQ(value("SELECT * FROM Companies WHERE CompanyID = 5;", "CompanyName").toString(),
            "Acme Holdings");
  const std::string data = "SELECT * FROM ClientData WHERE ClientDataID = 105;";
  EXPECT_EQ(value(data, "BusinessNumber").toString(), "123456789");
  EXPECT_TRUE(value(data, "ShowThisClient").toBool());
  EXPECT_EQ(value(data, "YearEndDate").toDate()->toIso(), "2010-12-31 00:00:00");
  EXPECT_EQ(value("SELECT * FROM OtherInfo;", "ClientCustom1").toString(), "fee basis");
}

TEST_F(LookupsTest, MainPersonalSelectionNeedsAStatusRowOfTheYear) {
  exec(
      "INSERT INTO Contacts (ContactID, DisplayName, FirstName) VALUES (1, 'Mary Jones', 'Mary');");
  exec("INSERT INTO Contacts (ContactID, DisplayName, FirstName) VALUES (2, 'Anna Bell', 'Anna');");
  exec("INSERT INTO Contacts (ContactID, DisplayName, FirstName) VALUES (3, 'Info Only', 'X');");
  exec("INSERT INTO PersonalTaxInfo (ContactNum, TaxYear) VALUES (1, 2010), (2, 2010), (3, 2010);");
  exec(
      "INSERT INTO PersonalTaxStatus (ContactNum, TaxYear, ActiveStatus) VALUES (1, 2010, 1), "
      "(2, 2010, 2), (3, 2009, 1);");
  EXPECT_EQ(column(getMainPersonalSQLString(3, 2010), "DisplayName"),
            (Strings{"Anna Bell", "Mary Jones"}));
  EXPECT_EQ(column(getMainPersonalSQLString(1, 2010), "DisplayName"), (Strings{"Mary Jones"}));
  EXPECT_EQ(column(getMainPersonalSQLString(2, 2010), "DisplayName"), (Strings{"Anna Bell"}));
  // A year outside 1951 to 3999 is replaced by the locale's current tax year.
  hostSetting("CurrentTaxYear", "2009");
  EXPECT_NE(getMainPersonalSQLString(3, 1950).find("PersonalTaxInfo.TaxYear=2009 "),
            std::string::npos);
  EXPECT_NE(getMainPersonalSQLString(3, 4000).find("PersonalTaxStatus.TaxYear=2009 "),
            std::string::npos);
  hostSetting("SortOrderPersonal", "2");
  EXPECT_EQ(column(getMainPersonalSQLString(3, 2010), "ContactID"), (Strings{"2", "1"}));
}

TEST_F(LookupsTest, ClientDataAndCompanyIDsConvertBothWays) {
  addBusinessClient(7, "Acme", 1, true);
  EXPECT_EQ(getClientDataIDFromCompanyID(7), 107);
  EXPECT_EQ(getCompanyIDFromClientDataID(107), 7);
  EXPECT_EQ(getClientDataIDFromCompanyID(8), 0);
  moduleState().DatabaseReference = nullptr;
  EXPECT_EQ(getCompanyIDFromClientDataID(107), 0);
  moduleState().DatabaseReference = db.get();
}

TEST_F(LookupsTest, AnIDIsValidWhenNumericAndAboveZero) {
  EXPECT_FALSE(validContactID("0"));
  EXPECT_TRUE(validContactID("12"));
  EXPECT_FALSE(validContactID("abc"));
  EXPECT_FALSE(validCompanyID("-1"));
  EXPECT_FALSE(validCategoryID("   "));
  EXPECT_TRUE(validInvoiceID(" 5 "));
  EXPECT_TRUE(validEmployeeID(3L));
  EXPECT_FALSE(validFirmID(0L));
}

TEST_F(LookupsTest, OverdueFollowsTheDueDateExceptForStatusFive) {
  exec(
      "INSERT INTO PersonalTaxStatus (ContactNum, TaxYear, ReturnStatus, InHouseDueDate) "
      "VALUES (1, 2008, 6, #2009-04-30#), (1, 2009, 5, #2010-04-30#), (1, 2099, 6, "
      "#2100-04-30#);");
  exec(
      "INSERT INTO PersonalTaxStatus (ContactNum, TaxYear, ReturnStatus, ReturnDate) VALUES "
      "(1, 2010, 6, #2011-04-30#);");
  exec("INSERT INTO PersonalTaxStatus (ContactNum, TaxYear, ReturnStatus) VALUES (1, 2011, 6);");
  EXPECT_TRUE(checkIfPersonalTaxTaskOverdue(1));
  const std::string row = "SELECT * FROM PersonalTaxStatus WHERE ContactNum = 1 AND TaxYear = ";
  EXPECT_TRUE(value(row + "2008;", "OverdueFlag").toBool());
  EXPECT_FALSE(value(row + "2009;", "OverdueFlag").toBool());  // status 5 is never overdue
  EXPECT_FALSE(value(row + "2099;", "OverdueFlag").toBool());
  // An empty due date takes the return date and is then judged.
  EXPECT_EQ(value(row + "2010;", "InHouseDueDate").toDate()->toIso(), "2011-04-30 00:00:00");
  EXPECT_TRUE(value(row + "2010;", "OverdueFlag").toBool());
  // Both dates blank: the row is left alone.
  EXPECT_TRUE(value(row + "2011;", "InHouseDueDate").isNull());
  EXPECT_FALSE(checkIfPersonalTaxTaskOverdue(2));
}

TEST_F(LookupsTest, TaxYearOfACategoryComesFromItselfOrAnAncestor) {
  exec(
      "INSERT INTO Categories (CategoryID, CategoryName, CategorySpecialCode) VALUES "
      "(101, 'Personal 2010', 'TaxYear:2010');");
  exec(
      "INSERT INTO Categories (CategoryID, CategoryNum, CategoryName) VALUES (102, 101, 'A'), "
      "(103, 102, 'B');");
  exec("INSERT INTO Categories (CategoryID, CategorySpecialCode) VALUES (104, 'TaxYear:1850');");
  exec("INSERT INTO Categories (CategoryID, CategoryNum) VALUES (105, 106), (106, 105);");
  EXPECT_EQ(getPersonalTaxYearFromCategoryID(101), 2010);
  EXPECT_EQ(getPersonalTaxYearFromCategoryID(103), 2010);
  EXPECT_EQ(getPersonalTaxYearFromCategoryID(104), 0);
  EXPECT_EQ(getPersonalTaxYearFromCategoryID(105), 0);  // a loop in the data ends
  EXPECT_EQ(getPersonalTaxYearFromCategoryID(999), 0);
}

TEST_F(LookupsTest, NewUserGetsOneRowPerSearch) {
  exec("INSERT INTO Searches (SearchID, SearchType) VALUES (1, 4), (2, NULL), (3, 1);");
  exec("INSERT INTO SearchesUserSpecific (UserIDNum, SearchIDNum, SearchType) VALUES (9, 3, 1);");
  addNewUserIDToSearchesUserSpecificTable(9);
  addNewUserIDToSearchesUserSpecificTable(9);
  const std::string rows =
      "SELECT * FROM SearchesUserSpecific WHERE UserIDNum = 9 ORDER BY SearchIDNum;";
  EXPECT_EQ(column(rows, "SearchIDNum"), (Strings{"1", "2", "3"}));
  EXPECT_EQ(column(rows, "SearchType"), (Strings{"4", "", "1"}));
}

TEST_F(LookupsTest, AdministratorLookupAnswersAnExistingAdministratorOnly) {
  exec("UPDATE AccountantEmployeeInfo SET UserLevel = 2;");
  exec("INSERT INTO AccountantEmployeeInfo (ContactID, UserLevel) VALUES (40, 2);");
  EXPECT_EQ(forceFirstUserToBeAnAdminUser(), 0);
  exec("INSERT INTO AccountantEmployeeInfo (ContactID, UserLevel) VALUES (50, 1);");
  EXPECT_EQ(forceFirstUserToBeAnAdminUser(), 50);
}

TEST_F(LookupsTest, YearRowsAreAddedOnceAndKept) {
  putPersonalTaxClientSummaryNotes(1, 2010, "first");
  putPersonalTaxClientSummaryNotes(1, 2010, "second");
  EXPECT_EQ(column("SELECT * FROM PersonalTaxClientSummary;", "PersonalTaxNotes"),
            (Strings{"second"}));
  EXPECT_FALSE(getShowProfileT1InfoInSummary(2010));
  EXPECT_EQ(count("SELECT * FROM PersonalTaxDataImportInfo WHERE TaxYear = 2010;"), 1);
  exec("UPDATE PersonalTaxDataImportInfo SET ShowProfileT1InfoInSummary = True;");
  EXPECT_TRUE(getShowProfileT1InfoInSummary(2010));
}

TEST_F(LookupsTest, ExportLocationsArePerUserAndPerProduct) {
  const std::string rows = "SELECT * FROM UserGeneralSettings;";
  const long before = count(rows);
  putCANTAXT1Folder("/exports/t1.txt");
  putCANTAXT2Folder("/exports/t2.txt");
  EXPECT_EQ(getCANTAXT1Folder(), "/exports/t1.txt");
  EXPECT_EQ(getCANTAXT2Folder(), "/exports/t2.txt");
  EXPECT_EQ(count(rows), before);
  // Another user starts without a location and gets a row of its own.
  HostOverrides otherUser;
  otherUser.currentUserID = 44;
  hostSetting("Unused", "", otherUser);
  EXPECT_EQ(getCANTAXT1Folder(), "");
  EXPECT_EQ(count(rows), before + 1);
  EXPECT_EQ(value("SELECT * FROM UserGeneralSettings WHERE UserIDNum = 44;", "UserIDNum").toLong(),
            44);
}

TEST_F(LookupsTest, MissingServiceIsReportedUnderTheProcedureLabel) {
  moduleState().clientDropDownCtrlReference = nullptr;
  EXPECT_EQ(getMainBusinessSQLString(false, 3, -1), "");
  ASSERT_EQ(errors.errors.size(), 1u);  // no statement to resume after: the procedure leaves
  EXPECT_EQ(errors.errors[0].source,
            "nvImportlf6.dll-modDatabaseFunctions-getMainBusinessSQLString");
  EXPECT_EQ(errors.errors[0].number, 91);
}

}  // namespace
}  // namespace lf
