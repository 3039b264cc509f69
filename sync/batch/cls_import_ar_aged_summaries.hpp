// clsImportARAgedSummaries: loads aged receivable totals from the AR table of a prepared
// database as starting-balance invoices, on the shared batch import engine.
//
// A client row holds up to four balances, in the columns named 30, 90, 180 and 275. Each
// balance that is there and not zero becomes one locked invoice of the client, dated back by
// its bucket, whose whole amount is outstanding. Each bucket is a stage over the table, and
// an invoice is known to a re-run by its client and bucket ("1001,90").
#pragma once

#include <array>
#include <string>

#include "sync/batch/batch_import_engine.hpp"

namespace lf {

const SourceDescription& importARAgedSummariesDescription();

// One bucket of the aged receivables: its column, the texts of its invoice and how many days
// before today the invoice is dated.
struct AgedBucket {
  const char* column;
  const char* invoiceNum;
  const char* subject;
  int daysBack;
};
// The four buckets, in the order they run.
const std::array<AgedBucket, 4>& agedBuckets();

class clsImportARAgedSummaries : public BatchImportEngine {
 public:
  clsImportARAgedSummaries();

  // The four bucket stages, one after the other.
  void ImportImportARAgedSummaries() {
    for (const SyncStage& stage : buckets_) runStage(stage);
  }

  // The starting-balance invoice of the driving row in hand for one bucket; `invoiceID` is its
  // invoice from an earlier run, or -1.
  long createNewImportARSummaryAsInvoiceInLedgerfolio(const AgedBucket& bucket, long invoiceID);

 protected:
  std::vector<StageGroup> runOrder() override;

 private:
  std::array<SyncStage, 4> buckets_;
};

}  // namespace lf
