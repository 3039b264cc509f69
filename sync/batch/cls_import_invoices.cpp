// clsImportInvoices: the invoice stage and its creator.
#include "sync/batch/cls_import_invoices.hpp"

#include "base/date_utilities.hpp"
#include "db/database_service.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_values.hpp"

namespace lf {

using namespace sourcerows;

const SourceDescription& importInvoicesDescription() {
  static const CrossReferenceWords words = batchImportCrossReferenceWords("clsImportInvoices");
  static const SourceDescription description = batchImportDescription(words);
  return description;
}

clsImportInvoices::clsImportInvoices()
    : BatchImportEngine(importInvoicesDescription(), "SELECT AR.* FROM AR;",
                        &SyncOptions::syncObjectsInvoices) {
  invoices_ = scanStage("invoices", "ImportImportInvoices", &rsImport, "InvoiceID",
                        CrossReferenceKind::Invoice);
  invoices_.progressCaption = "Importing Import Invoice {} of {}";
  invoices_.create = [this](const std::string& key, long known) {
    return createNewImportInvoiceAsInvoiceInLedgerfolio(key, known);
  };
}

std::vector<SyncEngine::StageGroup> clsImportInvoices::runOrder() {
  return {{&SyncOptions::syncObjectsInvoices, {[this] { ImportImportInvoices(); }}}};
}

long clsImportInvoices::createNewImportInvoiceAsInvoiceInLedgerfolio(
    const std::string& importInvoiceID, long invoiceID) {
  return createFromImportRow(__func__, -1, [&](DatabaseService& db) -> long {
    long company = -1, contact = -1;
    if (!clientOfImportRow(company, contact)) return -1;
    const long invoice =
        clientRowOf(db, rsInvoices, "InvoiceID", invoiceID, practiceFirmID(), company, contact);
    if (invoice == -1) return -1;
    db.setField(rsInvoices, "InvoiceType", "1");
    db.setField(rsInvoices, "InvoiceNum", importInvoiceID);
    if (auto due = DateUtilities::parseDateText(field("DueDate"))) {
      db.setField(rsInvoices, "InvoiceDate", due->toIso());
      db.setField(rsInvoices, "InvoiceDueDate", due->toIso());
    }
    writeInvoiceAmounts(db, rsInvoices, parseMoneyText(field("Amount")),
                        parseMoneyText(field("Taxes")), parseMoneyText(field("Total")));
    return invoice;
  });
}

}  // namespace lf
