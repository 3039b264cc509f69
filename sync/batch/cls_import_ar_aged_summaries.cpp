// clsImportARAgedSummaries: the bucket stages and the starting-balance invoices.
#include "sync/batch/cls_import_ar_aged_summaries.hpp"

#include <optional>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "db/database_service.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_values.hpp"

namespace lf {

using namespace sourcerows;

const SourceDescription& importARAgedSummariesDescription() {
  static const CrossReferenceWords words =
      batchImportCrossReferenceWords("clsImportARAgedSummaries");
  static const SourceDescription description = batchImportDescription(words);
  return description;
}

const std::array<AgedBucket, 4>& agedBuckets() {
  // Intended: the captions do not follow the column names (90 is "93 to 184 Days"), the third
  // number is written "185-275" but its subject "185 to 275", and "days" of the last is lower
  // case; the invoices are known by these texts.
  static const std::array<AgedBucket, 4> buckets = {{
      {"30", "SB - Current", "Starting Balance - Current", 0},
      {"90", "SB - 93 to 184 Days", "Starting Balance - 93 to 184 Days", 100},
      {"180", "SB - 185-275 Days", "Starting Balance - 185 to 275 Days", 200},
      {"275", "SB - Over 275 days", "Starting Balance - Over 275 days", 290},
  }};
  return buckets;
}

clsImportARAgedSummaries::clsImportARAgedSummaries()
    : BatchImportEngine(importARAgedSummariesDescription(), "SELECT AR.* FROM AR;",
                        &SyncOptions::syncObjectsInvoices) {
  for (size_t i = 0; i < buckets_.size(); ++i) {
    const AgedBucket& bucket = agedBuckets()[i];
    SyncStage& stage = buckets_[i];
    stage = {.reportName = std::string("starting balances ") + bucket.column,
             .procedureName = "ImportImportARAgedSummaries",
             .rows = &rsImport,
             .keyOfRow = [&bucket](DatabaseService& source, std::int32_t rows) -> std::string {
               const std::string client = SyncEngine::readText(source, rows, "ClientID");
               return client.empty() ? client : client + "," + bucket.column;
             },
             .crossReference = CrossReferenceKind::Invoice};
    // Only the first bucket advances the bar: the total counts each row once.
    stage.stepsProgress = i == 0;
    stage.rowFilter = [&bucket](const SourceRow& row) -> std::optional<std::string> {
      const std::string value = row.text(bucket.column);
      if (value.empty() || parseMoneyText(value) == 0.0)
        return std::string("no balance in ") + bucket.column;
      return std::nullopt;
    };
    stage.create = [this, &bucket](const std::string&, long known) {
      return createNewImportARSummaryAsInvoiceInLedgerfolio(bucket, known);
    };
  }
}

std::vector<SyncEngine::StageGroup> clsImportARAgedSummaries::runOrder() {
  return {{&SyncOptions::syncObjectsInvoices, {[this] { ImportImportARAgedSummaries(); }}}};
}

long clsImportARAgedSummaries::createNewImportARSummaryAsInvoiceInLedgerfolio(
    const AgedBucket& bucket, long invoiceID) {
  return createFromImportRow(__func__, -1, [&](DatabaseService& db) -> long {
    const double value = parseMoneyText(field(bucket.column));
    long company = -1, contact = -1;
    if (!clientOfImportRow(company, contact)) return -1;
    const long invoice =
        clientRowOf(db, rsInvoices, "InvoiceID", invoiceID, practiceFirmID(), company, contact);
    if (invoice == -1) return -1;
    const Date today = Date::today();
    const std::string dated = DateUtilities::addDays(today, -bucket.daysBack).toIso();
    const std::string amount = numberText(value);
    auto put = [&](const char* column, const std::string& text) {
      db.setField(rsInvoices, column, text);
    };
    put("InvoiceTemplateNum", "1");
    put("Locked", "True");
    put("DateCreated", today.toIso());
    put("InvoiceNum", bucket.invoiceNum);
    put("Subject", bucket.subject);
    put("InvoiceDate", dated);
    put("InvoiceDueDate", dated);
    put("InvoiceType", "2");
    put("InvoiceAmountSubTotal", amount);
    put("InvoiceAmountUseTaxes", "False");
    put("InvoiceAmountTaxDetailID", "-1");
    put("InvoiceAmountTaxes", "0");
    put("InvoiceAmountWithTaxes", amount);
    put("InvoiceFinalAmountSubTotal", amount);
    put("UseFinalAmountAdjustment", "False");
    put("InvoiceFinalAmountTaxes", "0");
    put("InvoiceFinalAmountWithTaxes", amount);
    put("InvoiceDiffAmount", "0");
    put("ARBalance", amount);
    return invoice;
  });
}

}  // namespace lf
