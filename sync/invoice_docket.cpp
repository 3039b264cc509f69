// The invoice docket of a time entry that the source has billed: the docket copied, column by
// column, to the dockets of the Ledgerfolio invoice, and the docket locked as invoiced. Every
// source that links its time entries to invoices uses this one operation under its TPS name.
#include <string>
#include <utility>
#include <vector>

#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_engine.hpp"

namespace lf {

using G = GeneralUtilities;
using sourcerows::idText;
using sourcerows::practice;

void SyncEngine::createNewTPSTimeAsInvoiceDocketInLedgerfolio(long docketID, long invoiceID) {
  procedure(label(__func__), [&] {
    if (!practiceOpen()) return;
    DatabaseService& db = practice();
    RecordsetScope invoiceDockets(
        db,
        "SELECT InvoiceDockets.* FROM InvoiceDockets WHERE InvoiceDockets.InvoiceIDNum=" +
            idText(invoiceID) + ";",
        kLockOptimistic);
    RowAccess docket(db, dockets_ != nullptr ? *dockets_ : 0, "DocketID", docketID,
                     "SELECT Dockets.* FROM Dockets WHERE DocketID=" + idText(docketID) + ";");
    if (!docket.found()) return;
    db.setField(docket, "DocketLocked", "True");
    db.setField(docket, "Invoiced", "True");
    db.setField(docket, "DocketStatus", db.getField(docket, "DocketStatus").toString());
    const bool exists = db.findRecord(invoiceDockets, "DocketIDNum", idText(docketID));
    static const char* const kDocketColumns[] = {
        "UserIDNum", "BillingProjectIDNum", "BillToCompanyIDNum", "CompanyIDNum", "ContactIDNum",
        "BillToCompanyIDNum", "ScheduleIDNum", "TaskIDNum", "ApptIDNum", "ToDoIDNum",
        "RecurAnnually", "WasInterrupted", "WasPaused", "IsInterrupt", "DocketStatus",
        "DocketLocked", "Invoiced", "ShowOnInvoice", "RepeatNum", "UserGroupNum", "Subject",
        "DateFrom", "TimeFrom", "TimeTo", "UsedRealTime", "RealTimeFrom", "RealTimeTo",
        "OriginalRealTimeFrom", "OriginalRealTimeTo", "RoundedTimeFrom", "RoundedTimeTo",
        "BeforeAppointmentText", "AppointmentText", "AfterAppointmentText", "TextBody", "NotesFlag",
        "SchemeID", "TitleBackColour",
        // The further columns of the docket table.
        "FirmIDNum", "BillToContactIDNum", "BillingRateIDNum", "DateCreated", "TotalTimeReal",
        "TotalTimeRounded", "TotalTimeAdjusted", "TotalTimeFinal", "TotalAmountReal",
        "TotalAmountAdjusted", "TotalAmountFinal", "BillingJobRate", "DescriptionClient",
        "DescriptionInternal", "TitleText", "Custom1", "Custom2", "Custom3", "Custom4", "Custom5",
        "DocketBillingType", "TaskType", "Status1", "Status2", "Status3", "Status4", "Status5",
        "notifyType", "ReminderPeriod", "BackColour", "ForeColour", "TitleForeColour",
        "UseAdjustedAmount", "UseAdjustedTime", "BillableTime", "Private", "Remind",
        "ClientNotifiedFlag", "hideInTasks"};
    std::vector<std::pair<const char*, std::string>> copied;
    for (const char* column : kDocketColumns) {
      Variant value = db.getField(docket, column);
      if (G::isBlank(value)) continue;
      copied.emplace_back(column, value.kind() == Variant::Kind::Boolean
                                      ? (value.toBool() ? "True" : "False")
                                  : value.kind() == Variant::Kind::Date ? value.toDate()->toIso()
                                                                        : value.toString());
    }
    // A new invoice docket takes the copied columns in the one row it adds; an existing
    // one has them written over.
    if (!exists) {
      db.addNewRecord(invoiceDockets);
      db.setNewField(invoiceDockets, "InvoiceIDNum", idText(invoiceID));
      db.setNewField(invoiceDockets, "DocketIDNum", idText(docketID));
      for (const auto& [column, text] : copied) db.setNewField(invoiceDockets, column, text);
      db.updateRecord(invoiceDockets);
      return;
    }
    db.setField(invoiceDockets, "InvoiceIDNum", idText(invoiceID));
    db.setField(invoiceDockets, "DocketIDNum", idText(docketID));
    for (const auto& [column, text] : copied) db.setField(invoiceDockets, column, text);
  });
}

}  // namespace lf
