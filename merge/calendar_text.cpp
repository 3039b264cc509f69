// The calendar's texts for an appointment, a time entry or a task: the display text and the
// title bar, each merged from the user's template (or the default of the kind).
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"
#include "merge/text_search.hpp"

namespace lf {
namespace {

struct CalendarKind {
  std::string_view word;  // of the settings columns
  std::string_view key;   // key column of the item's table
  std::string_view defaultText;
};

CalendarKind calendarKind(std::int32_t listType) {
  switch (listType) {
    case 5:
      return {"Appt", "AppointmentID",
              "«Appointment Name» for «Company Name»\r\n«Appointment Start Time» to "
              "«Appointment End Time»"};
    case 6:
      return {"Docket", "DocketID",
              "«Time Entry Start Time» to «Time Entry End Time»\r\n«Company Name»\r\n«Time Entry "
              "Name»"};
    case 8:
      return {"Task", "TaskID",
              "«Task Name» for «Company Name»\r\n«Task Start Time» to «Task End Time»"};
    default:
      return {"", "", ""};
  }
}

DatabaseService* openDatabase() {
  DatabaseService* db = moduleState().DatabaseReference;
  return db != nullptr && db->isOpen() ? db : nullptr;
}

// The user's template from the calendar settings; empty when there is none.
std::string settingsTemplate(std::string_view column) {
  DatabaseService* db = openDatabase();
  if (db == nullptr) return {};
  std::int32_t rs = db->openRecordset(
      "SELECT UserCalendarSettings.* FROM UserCalendarSettings WHERE UserIDNum = -1;",
      kCursorKeyset, kLockOptimistic);
  std::string text;
  if (db->hasRecord(rs)) {
    Variant value = db->getField(rs, column);
    if (!GeneralUtilities::isBlank(value) && value.toString() != "0") text = value.toString();
  }
  db->closeRecordset(rs);
  return text;
}

}  // namespace

std::string clsInsertFieldsInRTB::createDisplayTextByID2() {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createDisplayTextByID", [&] {
    setMergeFieldListUse(kUseSingleDocument);
    const CalendarKind kind = calendarKind(ListType);
    std::string templateText = settingsTemplate("Template" + std::string(kind.word));
    if (templateText.empty() || templateText == "Text Constant") templateText = kind.defaultText;
    templateText = convertProvinceFields(std::move(templateText));

    if (companyID >= 0 && contactID < 0) {
      if (merge::containsNoCase(templateText, "«Contact Display Name»") &&
          !merge::containsNoCase(templateText, "«Company Name»"))
        merge::replaceNoCase(templateText, "«Contact Display Name»", "«Company Name»", 1);
    } else if (contactID >= 0 && companyID < 0) {
      if (merge::containsNoCase(templateText, "«Company Name»") &&
          !merge::containsNoCase(templateText, "«Contact Display Name»"))
        merge::replaceNoCase(templateText, "«Company Name»", "«Contact Display Name»", 1);
    }
    // The company's default contact gives the contact fields.
    if (companyID >= 0 && contactID < 0) contactID = getDefaultContactIDFromCompanyID(companyID);

    if (TestComment && testRTBComment(templateText, false, false, false))
      templateText = kind.defaultText;

    const std::int32_t itemID = ListType == 5   ? appointmentID
                                : ListType == 6 ? docketID
                                : ListType == 8 ? TaskID
                                                : -1;
    std::string merged;
    std::string before;
    std::string after;
    if (itemID >= 0) {
      initializeDataRecordsetsForSingleDocMerge();
      TemplateText = templateText;
      merged = parseRTBComment();
      std::int32_t handle = ListType == 5   ? appointmentRecordset_
                            : ListType == 6 ? docketRecordset_
                                            : taskRecordset_;
      DatabaseService* db = openDatabase();
      if (db != nullptr && handle >= 0) {
        yieldToMessageQueue(8);
        if (db->findRecord(handle, kind.key, std::to_string(itemID), "", "", "", "")) {
          Variant b = db->getField(handle, "BeforeAppointmentText");
          Variant a = db->getField(handle, "AfterAppointmentText");
          if (!GeneralUtilities::isBlank(b)) before = b.toString();
          if (!GeneralUtilities::isBlank(a)) after = a.toString();
        }
      }
    }
    if (!before.empty()) result = before + "\r\n";
    result += merged;
    if (!after.empty()) result += "\r\n" + after;
  });
  return result;
}

std::string clsInsertFieldsInRTB::createTitleBarTextByID2() {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-createTitleBarTextByID", [&] {
    setMergeFieldListUse(kUseSingleDocument);
    const CalendarKind kind = calendarKind(ListType);
    std::string templateText = settingsTemplate("TitleBarText" + std::string(kind.word));
    if (templateText == "Text Constant") templateText.clear();  // no default for a title
    templateText = convertProvinceFields(std::move(templateText));

    if (companyID >= 0 && contactID < 0) {
      if (merge::containsNoCase(templateText, "«Contact Display Name»") &&
          !merge::containsNoCase(templateText, "«Company Name»"))
        merge::replaceNoCase(templateText, "«Contact Display Name»", "«Company Name»", 1);
    } else if (contactID >= 0 && companyID < 0) {
      if (merge::containsNoCase(templateText, "«Company Name»") &&
          !merge::containsNoCase(templateText, "«Contact Display Name»"))
        merge::replaceNoCase(templateText, "«Company Name»", "«Contact Display Name»", 1);
    }
    if (companyID >= 0 && contactID < 0) contactID = getDefaultContactIDFromCompanyID(companyID);

    if (templateText.empty()) return;  // an empty title stays empty
    // A bare field name is a valid title.
    if (templateText.rfind("«", 0) != 0) templateText = "«" + templateText;
    if (templateText.size() < 2 || templateText.compare(templateText.size() - 2, 2, "»") != 0)
      templateText += "»";
    templateText = convertProvinceFields(std::move(templateText));

    const std::int32_t itemID = ListType == 5   ? appointmentID
                                : ListType == 6 ? docketID
                                : ListType == 8 ? TaskID
                                                : -1;
    if (itemID >= 0) {
      initializeDataRecordsetsForSingleDocMerge();
      TemplateText = templateText;
      result = parseRTBComment();
    }
  });
  return result;
}

std::int32_t clsInsertFieldsInRTB::getTaskIDFromScheduleIDNum(std::int32_t scheduleID) {
  std::int32_t taskID = -1;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getTaskIDFromScheduleIDNum", [&] {
    DatabaseService* db = openDatabase();
    if (db == nullptr) return;
    const std::string id = std::to_string(scheduleID);
    std::int32_t rs = db->openRecordset(
        "SELECT Tasks.TaskID, Tasks.ScheduleIDNum FROM Tasks WHERE ScheduleIDNum=" + id + ";",
        kCursorKeyset, kLockReadOnly);
    if (db->hasRecord(rs)) taskID = static_cast<std::int32_t>(db->getField(rs, "TaskID").toLong());
    db->closeRecordset(rs);
    if (taskID >= 0) return;
    rs = db->openRecordset(
        "SELECT archiveTasks.oldTaskID, archiveTasks.ScheduleIDNum FROM archiveTasks WHERE "
        "ScheduleIDNum=" +
            id + ";",
        kCursorKeyset, kLockReadOnly);
    if (db->hasRecord(rs))
      taskID = static_cast<std::int32_t>(db->getField(rs, "oldTaskID").toLong());
    db->closeRecordset(rs);
  });
  return taskID;
}

std::int32_t clsInsertFieldsInRTB::getDefaultContactIDFromCompanyID(std::int32_t company) {
  std::int32_t contact = -1;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getDefaultContactIDFromCompanyID", [&] {
    DatabaseService* db = openDatabase();
    if (db == nullptr) return;
    std::int32_t rs = db->openRecordset(
        "SELECT ContactLinks.CompanyNum, ContactLinks.ContactIDNum, ContactLinks.DefaultContact "
        "FROM ContactLinks WHERE ContactLinks.CompanyNum = " +
            std::to_string(company) + ";",
        kCursorKeyset, kLockReadOnly);
    if (db->hasRecord(rs)) {
      while (!db->isEOF(rs)) {
        if (db->getField(rs, "DefaultContact").toBool()) {
          contact = static_cast<std::int32_t>(db->getField(rs, "ContactIDNum").toLong());
          break;
        }
        db->moveNext(rs);
      }
    }
    db->closeRecordset(rs);
  });
  return contact;
}

}  // namespace lf
