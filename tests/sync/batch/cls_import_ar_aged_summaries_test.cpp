// Tests of the AR aged summaries import: the starting-balance invoices of the four buckets,
// their texts and dates, and clients found through the shared cross-references.
#include "sync/batch/cls_import_ar_aged_summaries.hpp"

#include "sync/batch/cls_import_invoices.hpp"
#include "tests/sync/batch/prepared_import_fixture.hpp"

namespace lf {
namespace {

using testing::PreparedImportTest;

class ARAgedSummariesTest : public PreparedImportTest {
 protected:
  Variant invoice(const std::string& number, const std::string& field) {
    return value("SELECT * FROM Invoices WHERE InvoiceNum='" + number + "';", field);
  }
  // Days between the invoice's date and today.
  double daysBack(const std::string& number) {
    const std::optional<Date> date = invoice(number, "InvoiceDate").toDate();
    return date ? Date::today().serial - date->serial : -1;
  }
};

TEST_F(ARAgedSummariesTest, BalancesIn90And275GiveTwoInvoicesDated100And290DaysBack) {
  prepared.exec(
      "INSERT INTO AR (ClientID, ClientName, \"90\", \"275\") VALUES"
      " ('P200', 'Tamsin Okonedo', '339.00', '120.50');");
  run<clsImportARAgedSummaries>();

  ASSERT_EQ(count("SELECT * FROM Invoices;"), 2);
  EXPECT_EQ(daysBack("SB - 93 to 184 Days"), 100);
  EXPECT_EQ(daysBack("SB - Over 275 days"), 290);
  EXPECT_EQ(invoice("SB - 93 to 184 Days", "Subject").toString(),
            "Starting Balance - 93 to 184 Days");
  EXPECT_EQ(invoice("SB - Over 275 days", "Subject").toString(),
            "Starting Balance - Over 275 days");
  EXPECT_EQ(invoice("SB - Over 275 days", "ARBalance").toDouble(), 120.5);
  EXPECT_EQ(invoice("SB - Over 275 days", "InvoiceFinalAmountWithTaxes").toDouble(), 120.5);
  EXPECT_EQ(invoice("SB - 93 to 184 Days", "InvoiceAmountSubTotal").toDouble(), 339.0);
  // The due date is the invoice's date; the invoice is locked, of type 2, without taxes.
  EXPECT_EQ(invoice("SB - Over 275 days", "InvoiceDueDate").toDate()->serial,
            invoice("SB - Over 275 days", "InvoiceDate").toDate()->serial);
  EXPECT_TRUE(invoice("SB - Over 275 days", "Locked").toBool());
  EXPECT_FALSE(invoice("SB - Over 275 days", "InvoiceAmountUseTaxes").toBool());
  EXPECT_EQ(invoice("SB - Over 275 days", "InvoiceType").toLong(), 2);
  EXPECT_EQ(invoice("SB - Over 275 days", "InvoiceTemplateNum").toLong(), 1);
  EXPECT_EQ(invoice("SB - Over 275 days", "InvoiceAmountTaxDetailID").toLong(), -1);
}

TEST_F(ARAgedSummariesTest, EveryBucketWithABalanceAndNoneForZeroOrBlank) {
  prepared.exec(
      "INSERT INTO AR (ClientID, ClientName, \"30\", \"90\", \"180\", \"275\") VALUES"
      " ('P300', 'Cobblers Row Bakery Inc', '($25.00)', '0', '410', NULL);");
  messages.defaultAnswer = kAnswerYes;
  run<clsImportARAgedSummaries>();

  ASSERT_EQ(count("SELECT * FROM Invoices;"), 2);
  EXPECT_EQ(daysBack("SB - Current"), 0);
  EXPECT_EQ(invoice("SB - Current", "Subject").toString(), "Starting Balance - Current");
  EXPECT_EQ(invoice("SB - Current", "ARBalance").toDouble(), -25.0);
  // Intended: the invoice number says "185-275", the subject "185 to 275".
  EXPECT_EQ(daysBack("SB - 185-275 Days"), 200);
  EXPECT_EQ(invoice("SB - 185-275 Days", "Subject").toString(),
            "Starting Balance - 185 to 275 Days");
  EXPECT_EQ(counters.at("starting balances 90").skipReasons.at("no balance in 90"), 1);
  EXPECT_EQ(counters.at("starting balances 275").skipReasons.at("no balance in 275"), 1);
  // One question for the client, though it has two invoices.
  ASSERT_EQ(messages.asked.size(), 1u);
  EXPECT_EQ(messages.asked[0].text, "Cobblers Row Bakery Inc: Is this a business client?");
  EXPECT_EQ(invoice("SB - Current", "CompanyIDNum").toLong(),
            invoice("SB - 185-275 Days", "CompanyIDNum").toLong());
}

TEST_F(ARAgedSummariesTest, ClientKnownFromTheInvoiceImportRaisesNoQuestion) {
  prepared.exec(
      "INSERT INTO AR (ClientID, ClientName, InvoiceID, Amount, Total, \"30\") VALUES"
      " ('P100', 'Harbourline Marine Ltd', 'INV-7001', '100', '113', '113');");
  messages.answers = {kAnswerYes};
  run<clsImportInvoices>();
  ASSERT_EQ(messages.asked.size(), 1u);
  const long company = invoice("INV-7001", "CompanyIDNum").toLong();
  ASSERT_GT(company, 0);

  run<clsImportARAgedSummaries>();
  EXPECT_EQ(messages.asked.size(), 1u);
  EXPECT_EQ(invoice("SB - Current", "CompanyIDNum").toLong(), company);
  EXPECT_EQ(invoice("SB - Current", "ContactIDNum").toLong(), -1);
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName='Harbourline Marine Ltd';"), 1);
}

TEST_F(ARAgedSummariesTest, ARerunWithOnlyNewEntriesCreatesNothing) {
  prepared.exec(
      "INSERT INTO AR (ClientID, ClientName, \"30\", \"90\", \"180\", \"275\") VALUES"
      " ('P200', 'Tamsin Okonedo', '10', '20', '30', '40'),"
      " ('P500', 'Wrenfield Dental Partners', '723.20', NULL, NULL, NULL);");
  run<clsImportARAgedSummaries>();
  ASSERT_EQ(count("SELECT * FROM Invoices;"), 5);
  const long contacts = count("SELECT * FROM Contacts;");
  const size_t questions = messages.asked.size();

  run<clsImportARAgedSummaries>();
  EXPECT_EQ(count("SELECT * FROM Invoices;"), 5);
  EXPECT_EQ(count("SELECT * FROM Contacts;"), contacts);
  EXPECT_EQ(messages.asked.size(), questions);
  EXPECT_EQ(counters.at("starting balances 30").created, 0);
  EXPECT_EQ(counters.at("starting balances 30").skipped, 2);
}

}  // namespace
}  // namespace lf
