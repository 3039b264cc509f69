// The settling of invoices after the invoices and deposits of a sync: every invoice of the
// practice database gets its paid flag, its deposit total and its balance from the deposit
// payments that point to it. Shared by the CCH Practice, Balaboss and Bill4Time syncs.
#pragma once

namespace lf {

// REQUIRES: the practice database reference of the module state; does nothing when it is not
// open. Reads each invoice's final amount with taxes (blank: 0) and adds the non-blank
// amounts of its DepositPayments rows, both in single precision as the host keeps them; then
// InvoicePaid is total >= final, DepositTotals the total, ARBalance final - total or 0 when
// that is below 0. Every invoice is rewritten, paid or not.
void closeAllPaidInvoices();

}  // namespace lf
