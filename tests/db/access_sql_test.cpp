// Translation of Access-dialect statements.
#include "db/access_sql.hpp"

#include <gtest/gtest.h>

#include "base/failure.hpp"

namespace lf {
namespace {

std::string plain(std::string_view sql) {
  return translateAccessSql(sql, false).sql;
}

TEST(AccessSqlTranslation, DateLiteralsInEveryFormBecomeIsoText) {
  EXPECT_EQ(plain("SELECT * FROM Dockets WHERE DateFrom = #2010-12-31#;"),
            "SELECT * FROM Dockets WHERE DateFrom = '2010-12-31 00:00:00'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE D >= #12/31/2010 2:05:00 PM#"),
            "SELECT * FROM T WHERE D >= '2010-12-31 14:05:00'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE D <= #December 31, 2010#"),
            "SELECT * FROM T WHERE D <= '2010-12-31 00:00:00'");
  EXPECT_THROW(plain("SELECT * FROM T WHERE D = #31st of the 31st month#"), DatabaseFailure);
}

TEST(AccessSqlTranslation, BooleansNamesAndStrings) {
  EXPECT_EQ(plain("SELECT [Client Id] FROM Clients WHERE ShowThisClient = True AND X=false"),
            "SELECT \"Client Id\" FROM Clients WHERE ShowThisClient = 1 AND X=0");
  EXPECT_EQ(plain("SELECT * FROM T WHERE Name = \"O'Brien\""),
            "SELECT * FROM T WHERE Name = 'O''Brien'");
  // True inside a string stays text.
  EXPECT_EQ(plain("SELECT * FROM T WHERE Name = 'True'"), "SELECT * FROM T WHERE Name = 'True'");
  EXPECT_EQ(plain("SELECT A & ' ' & B FROM T"), "SELECT A || ' ' || B FROM T");
}

TEST(AccessSqlTranslation, QualifiedColumnsMayBeSqliteKeywords) {
  EXPECT_EQ(plain("SELECT ClientContacts.ClientID, ClientContacts.Primary FROM ClientContacts;"),
            "SELECT ClientContacts.\"ClientID\", ClientContacts.\"Primary\" FROM ClientContacts");
}

TEST(AccessSqlTranslation, LikeWildcardsAndNullTests) {
  EXPECT_EQ(plain("SELECT * FROM Clients WHERE Clients.[Client Status] Not Like 'Deleted';"),
            "SELECT * FROM Clients WHERE Clients.\"Client Status\" Not Like 'Deleted'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE N Like 'Sm*th?'"),
            "SELECT * FROM T WHERE N Like 'Sm%th_'");
  EXPECT_EQ(plain("SELECT * FROM T WHERE N Like '100%*'"),
            "SELECT * FROM T WHERE N Like '100\\%%' ESCAPE '\\'");
  EXPECT_EQ(plain("SELECT WorkCodes.* From WorkCodes WHERE Not WorkCodes.Parent Is Null;"),
            "SELECT WorkCodes.* From WorkCodes WHERE Not WorkCodes.\"Parent\" Is Null");
}

TEST(AccessSqlTranslation, LiteralsBecomeParametersOfTheSharedStatement) {
  TranslatedSql a = translateAccessSql(
      "SELECT Contacts.* FROM Contacts WHERE ContactID=12 AND LastName = 'O''Hara';");
  TranslatedSql b =
      translateAccessSql("SELECT Contacts.* FROM Contacts WHERE ContactID=7 AND LastName = 'Ng';");
  EXPECT_EQ(a.parameterizedSql, b.parameterizedSql);
  ASSERT_EQ(a.parameters.size(), 2u);
  EXPECT_EQ(a.parameters[0].text, "12");
  EXPECT_TRUE(a.parameters[0].number);
  EXPECT_EQ(a.parameters[1].text, "O'Hara");
  TranslatedSql d =
      translateAccessSql("SELECT * FROM Dockets WHERE DateFrom = #12/31/2010# AND Invoiced = True");
  ASSERT_EQ(d.parameters.size(), 2u);
  EXPECT_EQ(d.parameters[0].text, "2010-12-31 00:00:00");
  EXPECT_EQ(d.parameters[1].text, "1");
}

TEST(AccessSqlTranslation, OnlyOneStatementIsAccepted) {
  EXPECT_THROW(plain("SELECT * FROM T WHERE N = 'x'; DROP TABLE T;"), DatabaseFailure);
  // A value holding the attack stays inside its literal.
  EXPECT_EQ(plain("SELECT * FROM T WHERE N = 'x''; DROP TABLE T; --'"),
            "SELECT * FROM T WHERE N = 'x''; DROP TABLE T; --'");
  EXPECT_THROW(plain("SELECT * FROM T WHERE N = 'unterminated"), DatabaseFailure);
}

TEST(AccessSqlTranslation, JoinedSelectNamesItsTablesAndAppendsRowids) {
  TranslatedSql t = translateAccessSql(
      "SELECT Companies.*, ClientData.* FROM (Companies INNER JOIN ClientData ON "
      "Companies.CompanyID = ClientData.CompanyIDNum) INNER JOIN Clients AS c ON c.CompanyIDNum = "
      "Companies.CompanyID WHERE ClientData.ActiveStatus=1 ORDER BY Companies.CompanyName;");
  ASSERT_EQ(t.tables.size(), 3u);
  EXPECT_EQ(t.tables[0].table, "Companies");
  EXPECT_EQ(t.tables[1].table, "ClientData");
  EXPECT_EQ(t.tables[2].alias, "c");
  EXPECT_TRUE(t.rowidsAppended);
  EXPECT_NE(t.sql.find("\"c\".rowid AS \"__rowid2\" FROM"), std::string::npos);
  EXPECT_FALSE(translateAccessSql("SELECT DISTINCT A FROM T").rowidsAppended);
}

}  // namespace
}  // namespace lf
