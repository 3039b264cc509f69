// Tests of the open invoice import: the invoice of an AR row, its dates and amounts, the
// business-client question answered both ways. Re-runs: tests/cli/cmd_import_batch_test.cpp.
#include "sync/batch/cls_import_invoices.hpp"

#include "tests/sync/batch/prepared_import_fixture.hpp"

namespace lf {
namespace {

using testing::PreparedImportTest;

class ImportInvoicesTest : public PreparedImportTest {
 protected:
  Variant invoice(const std::string& number, const std::string& field) {
    return value("SELECT * FROM Invoices WHERE InvoiceNum='" + number + "';", field);
  }
};

TEST_F(ImportInvoicesTest, InvoiceTakesNumberDueDateAndTheStatedAmounts) {
  prepared.exec(
      "INSERT INTO AR (ClientID, ClientName, InvoiceID, DueDate, Amount, Taxes, Total) VALUES"
      " ('P100', 'Harbourline Marine Ltd', 'INV-7001', '2026-02-15 00:00:00', '$1200.00', "
      "'156', '1356'),"
      " ('P100', 'Harbourline Marine Ltd', 'INV-7003', '2026-01-31', '($50.00)', '0', "
      "'($50.00)');");
  run<clsImportInvoices>();

  ASSERT_EQ(count("SELECT * FROM Invoices;"), 2);
  const std::optional<Date> date = invoice("INV-7001", "InvoiceDate").toDate();
  ASSERT_TRUE(date);
  EXPECT_EQ(date->serial, Date::fromParts(2026, 2, 15).serial);
  EXPECT_EQ(invoice("INV-7001", "InvoiceDueDate").toDate()->serial, date->serial);
  EXPECT_EQ(invoice("INV-7001", "InvoiceType").toLong(), 1);
  EXPECT_EQ(invoice("INV-7001", "InvoiceAdjustedAmountTaxes").toDouble(), 156.0);
  EXPECT_EQ(invoice("INV-7001", "InvoiceFinalAmountWithTaxes").toDouble(), 1356.0);
  EXPECT_TRUE(invoice("INV-7001", "UseAdjustedAmount").toBool());
  EXPECT_EQ(invoice("INV-7001", "InvoiceFinalAmountTaxDetailID").toLong(), -1);
  EXPECT_EQ(invoice("INV-7003", "InvoiceAdjustedAmountSubTotal").toDouble(), -50.0);
  EXPECT_EQ(invoice("INV-7003", "InvoiceFinalAmountWithTaxes").toDouble(), -50.0);
  // Two rows of one client: one question, one company.
  EXPECT_EQ(messages.asked.size(), 1u);
  EXPECT_EQ(invoice("INV-7001", "CompanyIDNum").toLong(),
            invoice("INV-7003", "CompanyIDNum").toLong());
}

TEST_F(ImportInvoicesTest, BlankDueDateLeavesTheInvoiceDateAsItWas) {
  prepared.exec(
      "INSERT INTO AR (ClientID, ClientName, InvoiceID, DueDate, Amount, Taxes, Total) VALUES"
      " ('P200', 'Tamsin Okonedo', 'INV-7002', '2026-03-01', '300', '39', '339'),"
      " ('P200', 'Tamsin Okonedo', 'INV-7005', NULL, '10', '0', '10');");
  run<clsImportInvoices>();
  EXPECT_TRUE(invoice("INV-7005", "InvoiceDate").isNull());

  // A later run over the same invoice with its due date gone rewrites the amounts only.
  prepared.exec(
      "UPDATE AR SET DueDate=NULL, Amount='320', Total='359' WHERE InvoiceID='INV-7002';");
  run<clsImportInvoices>(false);
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 2);
  EXPECT_EQ(invoice("INV-7002", "InvoiceAdjustedAmountSubTotal").toDouble(), 320.0);
  EXPECT_EQ(invoice("INV-7002", "InvoiceDate").toDate()->serial,
            Date::fromParts(2026, 3, 1).serial);
  EXPECT_EQ(counters.at("invoices").updated, 2);
}

TEST_F(ImportInvoicesTest, BusinessClientQuestionAnsweredYesMakesACompanyAndNoAContact) {
  prepared.exec(
      "INSERT INTO AR (ClientID, ClientName, InvoiceID, Amount, Total) VALUES"
      " ('P500', 'Wrenfield Dental Partners', 'INV-1', '1', '1'),"
      " ('P200', 'Tamsin Okonedo', 'INV-2', '2', '2'),"
      " ('P400', NULL, 'INV-3', '3', '3'),"
      " (NULL, 'Nobody', 'INV-4', '4', '4');");
  messages.answers = {kAnswerYes, kAnswerNo};
  run<clsImportInvoices>();

  ASSERT_EQ(messages.asked.size(), 2u);
  EXPECT_EQ(messages.asked[0].text, "Wrenfield Dental Partners: Is this a business client?");
  EXPECT_EQ(messages.asked[1].text, "Tamsin Okonedo: Is this a business client?");
  const long company = invoice("INV-1", "CompanyIDNum").toLong();
  EXPECT_EQ(value("SELECT * FROM Companies WHERE CompanyID=" + std::to_string(company) + ";",
                  "CompanyName")
                .toString(),
            "Wrenfield Dental Partners");
  EXPECT_EQ(invoice("INV-1", "ContactIDNum").toLong(), -1);
  const long contact = invoice("INV-2", "ContactIDNum").toLong();
  EXPECT_GT(contact, 0);
  EXPECT_EQ(invoice("INV-2", "CompanyIDNum").toLong(), -1);
  EXPECT_EQ(
      value("SELECT * FROM Contacts WHERE ContactID=" + std::to_string(contact) + ";", "LastName")
          .toString(),
      "Okonedo");
  // The cross-references are the CCH Practice ones, keyed by the prepared database's firm.
  EXPECT_EQ(count("SELECT * FROM CCHPracticeClients WHERE CCHPracticeDBID='PREP-1' AND "
                  "CCHPracticeClientID='P500' AND CompanyID=" +
                  std::to_string(company) + ";"),
            1);
  // Without a name nothing can be asked; without a client ID there is no client.
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 2);
  EXPECT_EQ(counters.at("invoices").skipReasons.at("client P400 is not known and has no name"), 1);
  EXPECT_EQ(counters.at("invoices").skipReasons.at("no client"), 1);
}

}  // namespace
}  // namespace lf
