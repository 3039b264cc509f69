// clsImportWIP: the WIP stage and its creators.
#include "sync/batch/cls_import_wip.hpp"

#include <memory>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "db/database_service.hpp"
#include "host/docket_object.hpp"
#include "records/lookups.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_record_calls.hpp"

namespace lf {

using G = GeneralUtilities;

const SourceDescription& importWIPDescription() {
  static const CrossReferenceWords words = batchImportCrossReferenceWords("clsImportWIP");
  static const SourceDescription description = batchImportDescription(words);
  return description;
}

std::string importWIPDescriptionText(const std::string& activity, const std::string& engagement,
                                     const std::string& project) {
  std::string text;
  for (const std::string* part : {&activity, &engagement, &project}) {
    const std::string piece = G::trim(*part);
    if (piece.empty()) continue;
    if (!text.empty()) text += ", ";
    text += piece;
  }
  return text;
}

clsImportWIP::clsImportWIP()
    : BatchImportEngine(importWIPDescription(), "SELECT WIP.* FROM WIP;",
                        &SyncOptions::syncObjectsTimeEntries) {
  timeEntries_ = {.reportName = "time entries",
                  .procedureName = "ImportImportTimeEntries",
                  .rows = &rsImport,
                  .keyOfRow =
                      [](DatabaseService& source, std::int32_t rows) {
                        return "WIP row " + std::to_string(source.getPosition(rows) + 1);
                      },
                  .crossReference = CrossReferenceKind::Docket,
                  .progressCaption = "Importing Import Time Entry {} of {}"};
  timeEntries_.create = [this](const std::string& key, long known) {
    return createNewImportTimeAsDocketInLedgerfolio(key, known);
  };
}

std::vector<SyncEngine::StageGroup> clsImportWIP::runOrder() {
  return {{&SyncOptions::syncObjectsTimeEntries, {[this] { ImportImportTimeEntries(); }}}};
}

long clsImportWIP::getEmployeeIDFromImportEmployeeCode(const std::string& employeeCode) {
  if (G::isBlank(employeeCode)) return -1;
  long user = crossReferences().find(CrossReferenceKind::Employee, employeeCode);
  if (user != -1) return user;
  user = syncrecords::addAccountantEmployee(employeeCode, practiceFirmID(), 2);
  if (user > 0) crossReferences().store(CrossReferenceKind::Employee, user, employeeCode);
  return user;
}

long clsImportWIP::createNewImportTimeAsDocketInLedgerfolio(const std::string&, long docketID) {
  return createFromImportRow(__func__, -1, [&](DatabaseService&) -> long {
    const std::string employee = field("EmployeeCode");
    if (employee.empty()) return skipBecause("no employee code");
    long company = -1, contact = -1;
    if (!clientOfImportRow(company, contact)) return -1;
    const long user = getEmployeeIDFromImportEmployeeCode(employee);

    std::unique_ptr<DocketObject> docket = makeDocketObject();
    if (!docket) return -1;
    if (docketID <= 0 || !docket->loadDocket(docketID)) docket->newDocket();
    docket->setUserIDNum(user);
    docket->setFirmIDNum(practiceFirmID());
    docket->setCompanyIDNum(company);
    docket->setContactIDNum(contact);
    docket->setBillToCompanyIDNum(company);
    docket->setBillToContactIDNum(contact);
    if (auto date = DateUtilities::parseDateText(field("DueDate"))) docket->setDateTimeFrom(*date);
    double hours = 1.0;
    if (!G::isNumeric(field("Hours")) || !G::parseNumber(field("Hours"), hours)) hours = 1.0;
    docket->setDuration(hours);
    docket->setInvoiced(false);
    docket->setDocketStatus(0);
    const std::string description =
        importWIPDescriptionText(field("Activity"), field("Engagement"), field("Project"));
    docket->setSubject(description.substr(0, 255));
    if (!description.empty()) docket->setTextBody(description);
    docket->setShowOnInvoice(false);
    return docket->saveDocket();
  });
}

}  // namespace lf
