// closeAllPaidInvoices, of the import functions module.
#include "sync/close_paid_invoices.hpp"

#include <fmt/format.h>

#include <string>

#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"

namespace lf {
namespace {

// A single-precision amount, blank counting 0.
float amount(DatabaseService& db, std::int32_t handle, const char* column) {
  const Variant value = db.getField(handle, column);
  return GeneralUtilities::isBlank(value) ? 0.0f : static_cast<float>(value.toDouble());
}

// A single as the host writes it into a text: the shortest digits that read back the same.
std::string singleText(float value) {
  return fmt::format("{}", value);
}

}  // namespace

void closeAllPaidInvoices() {
  procedure("Ledgerfolio.exe-modImportFunctions-closeAllPaidInvoices", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope invoices(*db, "SELECT Invoices.* From Invoices;", kLockOptimistic);
    for (bool more = db->hasRecord(invoices); more && !db->isEOF(invoices);
         db->moveNext(invoices)) {
      const std::string invoiceID = db->getField(invoices, "InvoiceID").toString();
      const float finalAmount = amount(*db, invoices, "InvoiceFinalAmountWithTaxes");
      float total = 0.0f;
      {
        RecordsetScope payments(*db,
                                "SELECT DepositPayments.* From DepositPayments WHERE "
                                "DepositPayments.InvoiceIDNum = " +
                                    invoiceID + ";",
                                kLockReadOnly);
        for (bool paid = db->hasRecord(payments); paid && !db->isEOF(payments);
             db->moveNext(payments))
          if (!GeneralUtilities::isBlank(db->getField(payments, "Amount")))
            total += amount(*db, payments, "Amount");
      }
      db->setField(invoices, "InvoicePaid", total >= finalAmount ? "True" : "False");
      db->setField(invoices, "DepositTotals", singleText(total));
      const float balance = finalAmount - total;
      db->setField(invoices, "ARBalance", balance >= 0.0f ? singleText(balance) : "0");
    }
  });
}

}  // namespace lf
