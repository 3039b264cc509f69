// clsImportInvoices: loads open invoices from the AR table of a prepared database, one invoice
// a row, found again by its InvoiceID through the invoice cross-reference, on the shared batch
// import engine.
#pragma once

#include <string>

#include "sync/batch/batch_import_engine.hpp"

namespace lf {

const SourceDescription& importInvoicesDescription();

class clsImportInvoices : public BatchImportEngine {
 public:
  clsImportInvoices();

  // The invoice stage: every row of the AR table.
  void ImportImportInvoices() { runStage(invoices_); }

  // The invoice of the driving row in hand (key its InvoiceID); `invoiceID` is its invoice from
  // an earlier run, or -1. Number, dates (from DueDate, left as they were when it is blank),
  // amounts as stated, adjusted and final alike.
  long createNewImportInvoiceAsInvoiceInLedgerfolio(const std::string& importInvoiceID,
                                                    long invoiceID);

 protected:
  std::vector<StageGroup> runOrder() override;

 private:
  SyncStage invoices_;
};

}  // namespace lf
