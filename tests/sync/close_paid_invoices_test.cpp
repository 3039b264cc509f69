// Invoices settled from their deposit payments: paid, part paid, unpaid, overpaid, blank.
#include "sync/close_paid_invoices.hpp"

#include <gtest/gtest.h>

#include "tests/test_support.hpp"

namespace lf {
namespace {

class ClosePaidInvoicesTest : public testing::PracticeDatabaseTest {
 protected:
  // An invoice with its final amount (empty: blank) and payments against it.
  long invoice(const std::string& finalAmount, std::vector<std::string> payments) {
    std::int32_t h = db->openRecordset("SELECT Invoices.* FROM Invoices WHERE InvoiceID = -1;",
                                       kCursorKeyset, kLockOptimistic);
    db->addNewRecord(h);
    if (!finalAmount.empty()) db->setNewField(h, "InvoiceFinalAmountWithTaxes", finalAmount);
    db->setNewField(h, "InvoicePaid", "True");  // stale: the settling decides again
    const long id = static_cast<long>(db->getField(h, "InvoiceID").toLong());
    db->updateRecord(h);
    db->closeRecordset(h);
    for (const std::string& paid : payments) {
      h = db->openRecordset("SELECT DepositPayments.* FROM DepositPayments WHERE DepositID = -1;",
                            kCursorKeyset, kLockOptimistic);
      db->addNewRecord(h);
      db->setNewField(h, "InvoiceIDNum", std::to_string(id));
      if (!paid.empty()) db->setNewField(h, "Amount", paid);
      db->updateRecord(h);
      db->closeRecordset(h);
    }
    return id;
  }
  Variant column(long id, const char* name) {
    return value("SELECT Invoices.* FROM Invoices WHERE InvoiceID = " + std::to_string(id) + ";",
                 name);
  }
};

TEST_F(ClosePaidInvoicesTest, PaidFlagTotalAndBalanceFollowTheDeposits) {
  const long paid = invoice("113", {"100", "13"});
  const long part = invoice("226", {"100", ""});  // a blank payment adds nothing
  const long none = invoice("50.5", {});
  const long zero = invoice("0", {});
  const long blank = invoice("", {});
  const long over = invoice("80", {"100"});
  closeAllPaidInvoices();
  EXPECT_TRUE(errors.errors.empty());

  EXPECT_TRUE(column(paid, "InvoicePaid").toBool());
  EXPECT_DOUBLE_EQ(column(paid, "DepositTotals").toDouble(), 113);
  EXPECT_DOUBLE_EQ(column(paid, "ARBalance").toDouble(), 0);

  EXPECT_FALSE(column(part, "InvoicePaid").toBool());
  EXPECT_DOUBLE_EQ(column(part, "DepositTotals").toDouble(), 100);
  EXPECT_DOUBLE_EQ(column(part, "ARBalance").toDouble(), 126);

  // No deposits: unpaid, unless the final amount is 0 or blank.
  EXPECT_FALSE(column(none, "InvoicePaid").toBool());
  EXPECT_DOUBLE_EQ(column(none, "ARBalance").toDouble(), 50.5);
  EXPECT_TRUE(column(zero, "InvoicePaid").toBool());
  EXPECT_TRUE(column(blank, "InvoicePaid").toBool());

  // Overpaid: the balance is 0 and the deposit total above the final amount.
  EXPECT_TRUE(column(over, "InvoicePaid").toBool());
  EXPECT_DOUBLE_EQ(column(over, "DepositTotals").toDouble(), 100);
  EXPECT_DOUBLE_EQ(column(over, "ARBalance").toDouble(), 0);
}

TEST_F(ClosePaidInvoicesTest, AmountsAreComparedInSinglePrecision) {
  // In double precision 0.1 + 0.7 falls short of 0.8 and 0.1 + 3.3 reaches 3.4; in single
  // precision, as the host keeps amounts, it is the other way round.
  const long reached = invoice("0.8", {"0.1", "0.7"});
  const long short_ = invoice("3.4", {"0.1", "3.3"});
  closeAllPaidInvoices();
  EXPECT_TRUE(column(reached, "InvoicePaid").toBool());
  EXPECT_EQ(column(reached, "DepositTotals").toString(), "0.8");
  EXPECT_FALSE(column(short_, "InvoicePaid").toBool());
}

TEST_F(ClosePaidInvoicesTest, ClosedDatabaseIsLeftAlone) {
  const long id = invoice("10", {});
  moduleState().DatabaseReference = nullptr;
  closeAllPaidInvoices();
  moduleState().DatabaseReference = db.get();
  EXPECT_TRUE(column(id, "InvoicePaid").toBool());
}

}  // namespace
}  // namespace lf
