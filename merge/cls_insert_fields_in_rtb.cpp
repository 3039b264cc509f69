// Life cycle and properties of the merge engine.
#include "merge/cls_insert_fields_in_rtb.hpp"

#include "base/procedure.hpp"

namespace lf {

clsInsertFieldsInRTB::clsInsertFieldsInRTB() {
  mergeFieldListUse_ = kUseSingleDocument;
  ShowListCategoryHeaders = true;
  resetAllItemIDs();
  TestComment = false;
  ConvertStrToRTF = true;
  ConvertCompanyNameToContactNameForContacts = false;
  useWordWrap_ = true;
  itemCounter_ = 0;
  RTB = nullptr;
}

clsInsertFieldsInRTB::~clsInsertFieldsInRTB() {
  ignoreErrors([&] { closeDataRecordsets(); });
}

void clsInsertFieldsInRTB::setMergeFieldListUse(std::int32_t use) {
  mergeFieldListUse_ = use;
  if (use == kUseColumnChooser || use == kUseWrite) ShowListCategoryHeaders = false;
}

void clsInsertFieldsInRTB::setScheduleID(std::int32_t scheduleID) {
  TaskID = getTaskIDFromScheduleIDNum(scheduleID);
}

void clsInsertFieldsInRTB::resetAllItemIDs() {
  companyID = -1;
  contactID = -1;
  firmID = -1;
  userID = -1;
  appointmentID = -1;
  docketID = -1;
  TaskID = -1;
}

void clsInsertFieldsInRTB::Terminate() {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-Terminate", [&] {
    fieldList_.clear();
    ++listBuild_;
    itemCounter_ = 0;
    closeDataRecordsets();
  });
}

Date clsInsertFieldsInRTB::today() const {
  return todayOverride_ ? todayOverride_->datePart() : Date::today();
}

// The host pumps its window here during long merges; a build without a window has nothing
// to pump.
void clsInsertFieldsInRTB::yieldToMessageQueue(int /*times*/) {}

}  // namespace lf
