// Merge values: from an item of FieldList to the text it shows, through one open recordset
// per record kind, and back again for writing.
//
// Recordsets stay open between calls; each read seeks the row of the identifier that is set
// at the time, so a caller may change companyID and the like between calls. With
// MergeFieldListUse 2 the recordsets hold whole tables.
#include <cmath>

#include "base/date_utilities.hpp"
#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/client_drop_down.hpp"
#include "merge/client_column_words.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"
#include "merge/text_search.hpp"
#include "records/enumerations.hpp"
#include "records/lookups.hpp"

namespace lf {

// One kind of record the engine reads: its statement (with and without the identifier),
// the column a read seeks on, and the handle that holds it.
namespace merge {
struct RecordsetKind {
  int slot;
  const char* select;     // up to the WHERE clause
  const char* whereKey;   // "... WHERE x=" or nullptr for none
  const char* wholeTail;  // what ends the whole-table statement
  const char* seekKey;    // column of findRecord
};
}  // namespace merge

namespace {

using merge::RecordsetKind;

DatabaseService* database() {
  return moduleState().DatabaseReference;
}
bool databaseOpen() {
  DatabaseService* db = database();
  return db != nullptr && db->isOpen();
}

std::string idText(std::int32_t id) {
  return std::to_string(id);
}

std::optional<Date> parseDateText(const std::string& raw) {
  if (auto d = Date::fromIso(raw)) return d;
  if (auto d = DateUtilities::parseDateText(raw)) return d;
  double serial = 0;
  if (GeneralUtilities::parseNumber(raw, serial)) return Date{serial};
  return std::nullopt;
}

Date requireDate(const std::string& raw) {
  auto d = parseDateText(raw);
  if (!d) throw Failure("Type mismatch", 13);
  return *d;
}

double requireNumber(const std::string& raw) {
  double v = 0;
  if (!GeneralUtilities::parseNumber(raw, v)) throw Failure("Type mismatch", 13);
  return v;
}

bool textToBool(const std::string& raw) {
  std::string u = merge::upper(GeneralUtilities::trim(raw));
  if (u == "TRUE" || u == "YES") return true;
  if (u == "FALSE" || u == "NO") return false;
  return requireNumber(raw) != 0;
}

// The seven business fields a contact that inherits takes from its company, with the
// company's column. The two phones prefer the contact's own value, the rest the company's:
// intended.
struct InheritedField {
  std::string_view contactField;
  std::string_view companyField;
  bool contactFirst;
};
constexpr InheritedField kInherited[] = {
    {"BusinessPhone_Main", "OfficeNumber", true}, {"BusinessPhone_Fax", "FaxNumber", true},
    {"BusinessAddress", "Address", false},        {"BusinessCity", "City", false},
    {"BusinessProvince", "Province", false},      {"BusinessPostalCode", "PostalCode", false},
    {"BusinessCountry", "Country", false},
};
const InheritedField* inheritedField(std::string_view field) {
  for (const InheritedField& f : kInherited)
    if (f.contactField == field) return &f;
  return nullptr;
}

bool isAbbreviatedContactProvince(const std::string& upperField) {
  return upperField == "ABBREVIATEDPROVINCE" || upperField == "BUSINESSABBREVIATEDPROVINCE" ||
         upperField == "HOMEABBREVIATEDPROVINCE" || upperField == "SPOUSEABBREVIATEDPROVINCE" ||
         upperField == "ALTABBREVIATEDPROVINCE";
}

bool isAbbreviatedCompanyProvince(const std::string& upperField) {
  return upperField == "ABBREVIATEDPROVINCE" || upperField == "ALTABBREVIATEDPROVINCE";
}

void removeAbbreviated(std::string& field) {
  merge::replaceNoCase(field, "Abbreviated", "");
}

const RecordsetKind kCompanyKind{
    merge::kCompanyRecordset,
    "SELECT Companies.*, Companies.Custom1 AS CompanyCustom1, Companies.Custom2 AS "
    "CompanyCustom2, Companies.Custom3 AS CompanyCustom3, Companies.Custom4 AS CompanyCustom4, "
    "Companies.Custom5 AS CompanyCustom5 From Companies",
    " WHERE Companies.CompanyID=", ";", "CompanyID"};
const RecordsetKind kSoftwareOfCompanyKind{
    merge::kSoftwareRecordset,
    "SELECT SoftwareInfo.* From SoftwareInfo WHERE SoftwareInfo.DefaultSoftware=True",
    " AND SoftwareInfo.CompanyIDNum=", ";", "CompanyID"};
const RecordsetKind kSoftwareOfContactKind{
    merge::kSoftwareRecordset,
    "SELECT SoftwareInfo.* From SoftwareInfo WHERE SoftwareInfo.DefaultSoftware=True",
    " AND SoftwareInfo.ContactIDNum=", ";", "CompanyID"};
const RecordsetKind kContactKind{
    merge::kContactRecordset,
    "SELECT Contacts.*, Contacts.Custom1 AS ContactCustom1, Contacts.Custom2 AS ContactCustom2, "
    "Contacts.Custom3 AS ContactCustom3, Contacts.Custom4 AS ContactCustom4, Contacts.Custom5 AS "
    "ContactCustom5 From Contacts",
    " WHERE Contacts.ContactID=", ";", "ContactID"};
const RecordsetKind kFirmKind{
    merge::kFirmRecordset,
    "SELECT AccountantFirmInfo.*, AccountantFirmInfo.Custom1 AS FirmCustom1, "
    "AccountantFirmInfo.Custom2 AS FirmCustom2, AccountantFirmInfo.Custom3 AS FirmCustom3, "
    "AccountantFirmInfo.Custom4 AS FirmCustom4, AccountantFirmInfo.Custom5 AS FirmCustom5 From "
    "AccountantFirmInfo",
    " WHERE CompanyID=", ";", "CompanyID"};
const RecordsetKind kEmployeeKind{merge::kEmployeeRecordset,
                                  "SELECT AccountantEmployeeInfo.* From AccountantEmployeeInfo",
                                  " WHERE ContactID=", ";", "ContactID"};
const RecordsetKind kAppointmentKind{
    merge::kAppointmentRecordset,
    "SELECT Appointments.*, Appointments.Custom1 AS ApptCustom1, Appointments.Custom2 AS "
    "ApptCustom2, Appointments.Custom3 AS ApptCustom3, Appointments.Custom4 AS ApptCustom4, "
    "Appointments.Custom5 AS ApptCustom5 From Appointments",
    " WHERE Appointments.AppointmentID=", ";", "AppointmentID"};
const RecordsetKind kDocketKind{
    merge::kDocketRecordset,
    "SELECT Dockets.*, Dockets.Custom1 AS DocketCustom1, Dockets.Custom2 AS DocketCustom2, "
    "Dockets.Custom3 AS DocketCustom3, Dockets.Custom4 AS DocketCustom4, Dockets.Custom5 AS "
    "DocketCustom5 From Dockets",
    " WHERE Dockets.DocketID=", ";", "DocketID"};
const RecordsetKind kTaskWithScheduleKind{
    merge::kTaskRecordset,
    "SELECT Schedule.*, Tasks.*, Schedule.Custom1 AS ScheduleCustom1, Schedule.Custom2 AS "
    "ScheduleCustom2, Schedule.Custom3 AS ScheduleCustom3, Schedule.Custom4 AS ScheduleCustom4, "
    "Schedule.Custom5 AS ScheduleCustom5, Tasks.Custom1 AS TaskCustom1, Tasks.Custom2 AS "
    "TaskCustom2, Tasks.Custom3 AS TaskCustom3, Tasks.Custom4 AS TaskCustom4, Tasks.Custom5 AS "
    "TaskCustom5 FROM Schedule INNER JOIN Tasks ON Schedule.ScheduleID = Tasks.ScheduleIDNum",
    " WHERE Tasks.TaskID=", ";", "TaskID"};
const RecordsetKind kTaskAloneKind{
    merge::kTaskRecordset,
    "SELECT Tasks.*, Tasks.Custom1 AS TaskCustom1, Tasks.Custom2 AS TaskCustom2, Tasks.Custom3 "
    "AS TaskCustom3, Tasks.Custom4 AS TaskCustom4, Tasks.Custom5 AS TaskCustom5 FROM Tasks",
    " WHERE Tasks.TaskID=", ";", "TaskID"};
// The key of the company notes is spelt "ComapnyNum", as the column is named. Intended.
const RecordsetKind kCompanyNotesKind{merge::kCompanyNotesRecordset,
                                      "SELECT CompaniesNotes.* From CompaniesNotes",
                                      " WHERE CompaniesNotes.CompanyNum=", ";", "ComapnyNum"};
const RecordsetKind kContactNotesKind{merge::kContactNotesRecordset,
                                      "SELECT ContactsNotes.* From ContactsNotes",
                                      " WHERE ContactsNotes.ContactNum=", ";", "ContactNum"};
// The full business client record; its statement is built by getMainBusinessSQLString.
const RecordsetKind kClientKind{merge::kClientRecordset, nullptr, nullptr, nullptr, "CompanyID"};

}  // namespace

std::int32_t& clsInsertFieldsInRTB::handleOf(int slot) {
  switch (slot) {
    case merge::kClientRecordset:
      return clientRecordset_;
    case merge::kCompanyRecordset:
      return companyRecordset_;
    case merge::kCompanyNotesRecordset:
      return companyNotesRecordset_;
    case merge::kContactRecordset:
      return contactRecordset_;
    case merge::kContactNotesRecordset:
      return contactNotesRecordset_;
    case merge::kSoftwareRecordset:
      return softwareRecordset_;
    case merge::kFirmRecordset:
      return firmRecordset_;
    case merge::kEmployeeRecordset:
      return employeeRecordset_;
    case merge::kAppointmentRecordset:
      return appointmentRecordset_;
    case merge::kTaskRecordset:
      return taskRecordset_;
    default:
      return docketRecordset_;
  }
}

std::int32_t clsInsertFieldsInRTB::openForKind(const RecordsetKind& kind, std::int32_t id,
                                               int lockType) {
  DatabaseService* db = database();
  std::string sql;
  const bool whole = mergeFieldListUse_ == kUseManyRecords;
  if (kind.select == nullptr) {
    long clientDataID = -1;
    if (!whole) {
      ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
      clientDataID = dropDown ? dropDown->getClientDataIDFromCompanyID(id) : -1;
      if (clientDataID < 0) clientDataID = getClientDataIDFromCompanyID(id);
    }
    sql = getMainBusinessSQLString(false, 3, clientDataID);
  } else if (whole) {
    sql = std::string(kind.select) + kind.wholeTail;
  } else {
    sql = std::string(kind.select) + kind.whereKey + idText(id) + ";";
  }
  std::int32_t handle = db->openRecordset(sql, kCursorKeyset, lockType);
  handleOf(kind.slot) = handle;
  return handle;
}

bool clsInsertFieldsInRTB::seekRow(std::int32_t& handle, const RecordsetKind& kind,
                                   std::int32_t id) {
  yieldToMessageQueue(8);
  return database()->findRecord(handle, kind.seekKey, idText(id), "", "", "", "");
}

std::string clsInsertFieldsInRTB::readText(std::int32_t handle, std::string_view field) {
  // A column the record does not have reads as blank: an unknown field is no failure.
  Variant value;
  try {
    value = database()->getField(handle, field);
  } catch (const DatabaseFailure&) {
    return {};
  }
  if (GeneralUtilities::isBlank(value)) return {};
  return value.toString();
}

void clsInsertFieldsInRTB::closeDataRecordsets() {
  DatabaseService* db = database();
  for (std::int32_t* handle :
       {&clientRecordset_, &companyRecordset_, &companyNotesRecordset_, &contactRecordset_,
        &contactNotesRecordset_, &softwareRecordset_, &firmRecordset_, &employeeRecordset_,
        &appointmentRecordset_, &taskRecordset_, &docketRecordset_}) {
    if (*handle >= 0 && db != nullptr) {
      std::int32_t h = *handle;
      ignoreErrors([&] {
        if (db->isRecordsetOpen(h)) db->closeRecordset(h);
      });
    }
    *handle = -1;
  }
}

void clsInsertFieldsInRTB::initializeDataRecordsetsForSingleDocMerge() {
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-initializeDataRecordsetsForSingleDocMerge", [&] {
    closeDataRecordsets();
    const int mode = mergeFieldListUse_ == kUseWrite ? kLockOptimistic : kLockReadOnly;
    if (databaseOpen()) {
      DatabaseService* db = database();
      if (companyID >= 0) {
        openForKind(kClientKind, companyID, mode);
        openForKind(kCompanyKind, companyID, mode);
        openForKind(kSoftwareOfCompanyKind, companyID, mode);
      }
      if (contactID >= 0) {
        openForKind(kContactKind, contactID, mode);
        if (softwareRecordset_ < 0) openForKind(kSoftwareOfContactKind, contactID, mode);
      }
      if (firmID >= 0) openForKind(kFirmKind, firmID, mode);
      if (userID >= 0) openForKind(kEmployeeKind, userID, mode);
      if (appointmentID >= 0) openForKind(kAppointmentKind, appointmentID, mode);
      if (docketID >= 0) openForKind(kDocketKind, docketID, mode);
      if (TaskID >= 0) {
        openForKind(kTaskWithScheduleKind, TaskID, mode);
        if (!db->hasRecord(taskRecordset_)) {
          db->closeRecordset(taskRecordset_);
          openForKind(kTaskAloneKind, TaskID, mode);
        }
      }
    }
    bool noListBox = true;
    bool clearListBox = true;
    createDefaultFieldListStructure(noListBox, clearListBox);
  });
}

std::string clsInsertFieldsInRTB::getDataFieldInfo(std::int32_t key, std::string_view format) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getDataFieldInfo", [&] {
    if (!fieldList_.moveTo(key)) return;
    const FieldItem& item = *fieldList_.current();
    const std::int16_t type = item.fieldType;
    if (TestComment) {
      result = item.sampleValue;  // a sample is never reformatted
    } else if (databaseOpen()) {
      DatabaseService* db = database();
      std::string field = item.databaseField;
      const std::string& tag = item.tableTag;
      std::string raw;

      // Opens the kind's recordset when it is closed, seeks the identifier's row and reads.
      auto readFrom = [&](const RecordsetKind& kind, std::int32_t id) {
        if (id < 0) return;
        std::int32_t& handle = handleOf(kind.slot);
        if (handle < 0) openForKind(kind, id, kLockReadOnly);
        if (seekRow(handle, kind, id)) raw = getDataFieldFromRecordset(field);
      };

      if (tag == "ContactInfo") {
        readFrom(kContactKind, contactID);
      } else if (tag == "ContactNotes") {
        readFrom(kContactNotesKind, contactID);
      } else if (tag == "CompanyInfo") {
        readFrom(kCompanyKind, companyID);
      } else if (tag == "CompanyNotes") {
        readFrom(kCompanyNotesKind, companyID);
      } else if (tag == "ClientInfo") {
        readFrom(kClientKind, companyID);
      } else if (tag == "SoftwareInfo") {
        // Only a recordset opened with the others is read, except over whole tables.
        if (companyID >= 0) {
          if (softwareRecordset_ < 0 && mergeFieldListUse_ == kUseManyRecords)
            openForKind(kSoftwareOfCompanyKind, companyID, kLockReadOnly);
          if (softwareRecordset_ >= 0 &&
              seekRow(softwareRecordset_, kSoftwareOfCompanyKind, companyID))
            raw = getDataFieldFromRecordset(field);
        }
      } else if (tag == "FirmInfo") {
        readFrom(kFirmKind, firmID);
      } else if (tag == "AppointInfo") {
        readFrom(kAppointmentKind, appointmentID);
      } else if (tag == "TaskInfo") {
        if (TaskID >= 0) {
          if (taskRecordset_ < 0) {
            openForKind(kTaskWithScheduleKind, TaskID, kLockReadOnly);
            if (mergeFieldListUse_ != kUseManyRecords && !db->hasRecord(taskRecordset_)) {
              db->closeRecordset(taskRecordset_);
              openForKind(kTaskAloneKind, TaskID, kLockReadOnly);
            }
          }
          if (seekRow(taskRecordset_, kTaskAloneKind, TaskID))
            raw = getDataFieldFromRecordset(field);
        }
      } else if (tag == "DocketInfo") {
        readFrom(kDocketKind, docketID);
      }

      if (!GeneralUtilities::isBlank(raw)) {
        switch (type) {
          case kFieldDate: {
            Date d = requireDate(raw);
            if (d.year() >= 1900)
              result = formatDate(
                  d, GeneralUtilities::isBlank(format) ? std::string_view("mmm d, yyyy") : format);
            break;
          }
          case kFieldTime:
            result = formatDate(requireDate(raw), "h:Nn am/pm");
            break;
          case kFieldMoney:
            result = formatNumber(requireNumber(raw), "$#,##0.00;$-#,##0.00");
            break;
          case kFieldYesNo:
            result = textToBool(raw) ? "Yes" : "No";
            break;
          case kFieldDuration: {
            float hours = static_cast<float>(requireNumber(raw));
            long minutes = std::lrint(static_cast<double>(hours * 60.0f));
            result = GeneralUtilities::minutesToText(minutes);
            break;
          }
          default:
            result = raw;
            break;
        }
      }
    }
    if (!GeneralUtilities::isBlank(result) && ConvertStrToRTF) result = convertToRTF(result);
  });
  return result;
}

bool clsInsertFieldsInRTB::contactInheritsFromCompany() {
  if (companyID < 0) return false;
  DatabaseService* db = database();
  if (contactRecordset_ < 0 || !db->getField(contactRecordset_, "InheritCompanyInfo").toBool())
    return false;
  if (companyRecordset_ < 0) openForKind(kCompanyKind, companyID, kLockReadOnly);
  return db->findRecord(companyRecordset_, "CompanyID", idText(companyID), "", "", "", "");
}

std::string clsInsertFieldsInRTB::getDataFieldFromRecordset(std::string& field) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getDataFieldFromRecordset", [&] {
    if (!databaseOpen()) return;
    const FieldItem* item = fieldList_.current();
    if (item == nullptr) return;
    const std::string& tag = item->tableTag;
    const std::string upperField = merge::upper(field);

    if (tag == "ContactInfo") {
      if (contactInheritsFromCompany()) {
        if (const InheritedField* inherited = inheritedField(field)) {
          std::string own = readText(contactRecordset_, field);
          std::string company = readText(companyRecordset_, inherited->companyField);
          if (inherited->contactFirst)
            result = GeneralUtilities::isBlank(own) ? company : own;
          else
            result = GeneralUtilities::isBlank(company) ? own : company;
          return;
        }
      }
      if (upperField == "CONTACTANDSPOUSENAME") {
        ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
        if (dropDown) result = dropDown->getContactAndSpouseName(contactID);
        if (result.empty()) {
          // Without the host's list: "John & Jane Smith" from the contact row.
          std::string first = readText(contactRecordset_, "FirstName");
          std::string last = readText(contactRecordset_, "LastName");
          std::string spouseFirst = readText(contactRecordset_, "SpouseFirstName");
          std::string spouseLast = readText(contactRecordset_, "SpouseLastName");
          if (GeneralUtilities::isBlank(first) && GeneralUtilities::isBlank(last)) {
            result = readText(contactRecordset_, "DisplayName");
          } else if (GeneralUtilities::isBlank(spouseFirst)) {
            result = GeneralUtilities::trim(first + " " + last);
          } else if (GeneralUtilities::isBlank(spouseLast) || spouseLast == last) {
            result = GeneralUtilities::trim(first + " & " + spouseFirst + " " + last);
          } else {
            result =
                GeneralUtilities::trim(first + " " + last + " & " + spouseFirst + " " + spouseLast);
          }
        }
        return;
      }
      if (isAbbreviatedContactProvince(upperField)) {
        removeAbbreviated(field);  // the caller's name changes with it
        result = getAbbreviatedProvince(readText(contactRecordset_, field));
        return;
      }
      result = readText(contactRecordset_, field);
    } else if (tag == "ContactNotes") {
      result = readText(contactNotesRecordset_, field);
    } else if (tag == "CompanyNotes") {
      result = readText(companyNotesRecordset_, field);
    } else if (tag == "SoftwareInfo") {
      result = readText(softwareRecordset_, field);
    } else if (tag == "FirmInfo") {
      result = readText(firmRecordset_, field);
    } else if (tag == "CompanyInfo") {
      if (isAbbreviatedCompanyProvince(upperField)) {
        removeAbbreviated(field);
        result = getAbbreviatedProvince(readText(companyRecordset_, field));
      } else if (upperField == "COMPANTYPE") {
        // This spelling, not CompanyType: the company type row is read as stored. Intended.
        result = getCompanyTypeStringFromCompanyTypeNum(
            static_cast<long>(database()->getField(clientRecordset_, field).toLong()));
      } else {
        result = readText(companyRecordset_, field);
      }
    } else if (tag == "ClientInfo") {
      std::string word;
      if (merge::clientColumnWord(upperField, merge::clientColumnDefault(upperField), word)) {
        std::string raw = readText(clientRecordset_, field);
        if (!GeneralUtilities::isBlank(raw))
          merge::clientColumnWord(upperField, static_cast<long>(requireNumber(raw)), word);
        result = word;
      } else {
        result = readText(clientRecordset_, field);
      }
    } else if (tag == "AppointInfo" || tag == "TaskInfo" || tag == "DocketInfo") {
      std::int32_t handle = tag == "AppointInfo" ? appointmentRecordset_
                            : tag == "TaskInfo"  ? taskRecordset_
                                                 : docketRecordset_;
      if (upperField == "TIMEDURATION") {
        // A task's times come from the appointment recordset, not the task's. Intended.
        std::int32_t timesFrom = tag == "TaskInfo" ? appointmentRecordset_ : handle;
        DatabaseService* db = database();
        auto readTime = [&](std::string_view column) -> std::optional<Date> {
          try {
            return db->getField(timesFrom, column).toDate();
          } catch (const DatabaseFailure&) {
            return std::nullopt;  // no appointment recordset for a task: no duration
          }
        };
        auto from = readTime("TimeFrom");
        auto to = readTime("TimeTo");
        // Without both times there is no duration: blank, like any blank value.
        if (from && to) result = getTimeDurationFieldValue(*from, *to);
      } else {
        result = readText(handle, field);
      }
    }
  });
  return result;
}

std::string clsInsertFieldsInRTB::getTimeDurationFieldValue(const Date& start, const Date& end) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getTimeDurationFieldValue", [&] {
    if (!start.isValid() || !end.isValid()) return;  // no time: no duration
    long minutes = std::lround(std::fabs(end.serial - start.serial) * 1440.0);
    result = GeneralUtilities::minutesToText(minutes);
  });
  return result;
}

std::string clsInsertFieldsInRTB::getMergeDataFromFieldName(std::string_view field) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getMergeDataFromFieldName", [&] {
    if (GeneralUtilities::isBlank(field)) return;
    if (!verifyFieldListIsPopulated()) return;
    // The company-name test looks at the still empty result and never fires; the swap
    // happens only in parseRTBComment. Kept as it is.
    if (fieldList_.findByColumn(kColumnDatabaseField, field))
      result = getDataFieldInfo(fieldList_.currentKey(), "");
  });
  return result;
}

std::string clsInsertFieldsInRTB::getMergeDataFromDisplayName(std::string_view name) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getMergeDataFromDisplayName", [&] {
    if (GeneralUtilities::isBlank(name)) return;
    if (!verifyFieldListIsPopulated()) return;
    if (fieldList_.findByColumn(kColumnDisplayName, name))
      result = getDataFieldInfo(fieldList_.currentKey(), "");
  });
  return result;
}

std::string clsInsertFieldsInRTB::getDBFieldNameFromDisplayFieldName(std::string_view name) {
  std::string result(name);
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getDBFieldNameFromDisplayFieldName", [&] {
    if (const FieldItem* item = fieldList_.findByDisplayName(name)) result = item->databaseField;
  });
  return result;
}

std::string clsInsertFieldsInRTB::getDisplayFieldNameFromDBFieldName(std::string_view field) {
  std::string result(field);
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getDisplayFieldNameFromDBFieldName", [&] {
    if (const FieldItem* item = fieldList_.findByDatabaseField(field)) result = item->displayName;
  });
  return result;
}

namespace {
struct ProvinceRow {
  std::initializer_list<std::string_view> names;
  std::string_view abbreviated;
  std::string_view full;
};
// "NEWFOUNDLAND And LABRADOR" and "Nfld." are compared with an upper-cased argument and
// never match; they stay as written.
const ProvinceRow kProvinces[] = {
    {{"ALBERTA", "ALTA.", "ALTA", "AB"}, "AB", "Alberta"},
    {{"BRITISHCOLUMBIA", "BRITISH COLUMBIA", "B.C.", "BC"}, "BC", "British Columbia"},
    {{"MANITOBA", "MAN.", "MAN", "MB"}, "MB", "Manitoba"},
    {{"ONTARIO", "ONT.", "ONT", "ON"}, "ON", "Ontario"},
    {{"SASKATCHEWAN", "SASK.", "SASK", "SK"}, "SK", "Saskatchewan"},
    {{"QUEBEC", "QUE.", "QUE", "QC"}, "QC", "Quebec"},
    {{"NOVASCOTIA", "NOVA SCOTIA", "N.S.", "NS"}, "NS", "Nova Scotia"},
    {{"NEWBRUNSWICK", "NEW BRUNSWICK", "N.B.", "NB"}, "NB", "New Brunswick"},
    {{"NEWFOUNDLAND", "NEWFOUNDLAND And LABRADOR", "NEWFOUNDLAND & LABRADOR", "Nfld.", "NL"},
     "NL",
     "Newfoundland"},
    {{"PRINCE EDWARD ISLAND", "PEI", "P.E.I."}, "PEI", "Prince Edward Island"},
    {{"NORTHWEST TERRITORIES", "N.W.T.", "NWT", "NT"}, "NT", "Northwest Territories"},
    {{"NUNAVUT", "NU"}, "NU", "Nunavut"},
    {{"YUKON", "YT"}, "YT", "Yukon"},
};
const ProvinceRow* findProvince(std::string_view province) {
  const std::string u = merge::upper(province);
  for (const ProvinceRow& row : kProvinces)
    for (std::string_view name : row.names)
      if (name == u) return &row;
  return nullptr;
}
}  // namespace

std::string clsInsertFieldsInRTB::getAbbreviatedProvince(std::string_view province) {
  const ProvinceRow* row = findProvince(province);
  return row ? std::string(row->abbreviated) : std::string(province);
}

std::string clsInsertFieldsInRTB::getFullProvinceString(std::string_view province) {
  const ProvinceRow* row = findProvince(province);
  return row ? std::string(row->full) : std::string(province);
}

std::string clsInsertFieldsInRTB::getTodaysDate(std::string_view format) {
  std::string result;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-getTodaysDate", [&] {
    result = formatDate(
        today(), GeneralUtilities::isBlank(format) ? std::string_view("mmm d, yyyy") : format);
    if (!GeneralUtilities::isBlank(result) && ConvertStrToRTF) result = convertToRTF(result);
  });
  return result;
}

bool clsInsertFieldsInRTB::writeByType(std::int32_t handle, std::string_view field,
                                       std::int16_t type, std::string_view value) {
  DatabaseService* db = database();
  std::string text(value);
  switch (type) {
    case kFieldDate:
    case kFieldTime: {
      auto d = parseDateText(text);
      if (!d) throw Failure("Type mismatch", 13);
      if (type == kFieldDate && d->year() < 1900) return false;
      return db->setField(handle, field, d->toIso());
    }
    case kFieldMoney:
    case kFieldDuration: {
      float v = static_cast<float>(requireNumber(text));
      Variant asText = Variant::real(static_cast<double>(v));
      return db->setField(handle, field, asText.toString());
    }
    case kFieldYesNo:
      return db->setField(handle, field, textToBool(text) ? "True" : "False");
    default:
      return db->setField(handle, field, text);
  }
}

bool clsInsertFieldsInRTB::writeDataToField(std::string_view fieldName, std::string_view value) {
  bool stored = false;
  procedure("Ledgerfolio.exe-clsInsertFieldsInRTB-writeDataToField", [&] {
    if (!databaseOpen() || GeneralUtilities::isBlank(fieldName)) return;
    if (!verifyFieldListIsPopulated()) return;
    if (!fieldList_.findByColumn(kColumnDatabaseField, fieldName)) return;
    const FieldItem item = *fieldList_.current();
    DatabaseService* db = database();
    std::string field(fieldName);
    const std::string upperField = merge::upper(field);
    const std::string& tag = item.tableTag;

    // Positions the kind's recordset on the identifier's row, opening it for writing first.
    auto position = [&](const RecordsetKind& kind, std::int32_t id) -> std::int32_t {
      if (id < 0) return -1;
      std::int32_t& handle = handleOf(kind.slot);
      if (handle < 0) openForKind(kind, id, kLockOptimistic);
      return seekRow(handle, kind, id) ? handle : -1;
    };

    if (tag == "ContactInfo") {
      std::int32_t rs = position(kContactKind, contactID);
      if (rs < 0) return;
      if (contactInheritsFromCompany()) {
        if (const InheritedField* inherited = inheritedField(field)) {
          stored = db->setField(companyRecordset_, inherited->companyField, std::string(value));
          return;
        }
      }
      if (upperField == "CONTACTANDSPOUSENAME") return;  // not a column
      if (isAbbreviatedContactProvince(upperField)) removeAbbreviated(field);
      stored = writeByType(rs, field, item.fieldType, value);
    } else if (tag == "ContactNotes" || tag == "CompanyNotes") {
      const RecordsetKind& kind = tag == "ContactNotes" ? kContactNotesKind : kCompanyNotesKind;
      std::int32_t rs = position(kind, tag == "ContactNotes" ? contactID : companyID);
      if (rs >= 0) stored = db->setField(rs, field, std::string(value));
    } else if (tag == "CompanyInfo") {
      std::int32_t rs = position(kCompanyKind, companyID);
      if (rs < 0) return;
      if (isAbbreviatedCompanyProvince(upperField)) {
        removeAbbreviated(field);
        stored = db->setField(rs, field, std::string(value));
      } else if (upperField == "COMPANTYPE") {
        auto num = static_cast<std::int16_t>(requireNumber(std::string(value)));
        stored = db->setField(rs, field, std::to_string(num));
      } else {
        stored = writeByType(rs, field, item.fieldType, value);
      }
    } else if (tag == "ClientInfo") {
      std::int32_t rs = position(kClientKind, companyID);
      if (rs < 0) return;
      long num = 0;
      std::string word;
      if (merge::clientColumnWord(upperField, 0, word)) {
        if (merge::clientColumnNumber(upperField, value, num))
          stored = db->setField(rs, field, std::to_string(num));
      } else {
        stored = writeByType(rs, field, item.fieldType, value);
      }
    } else {
      std::int32_t rs = -1;
      if (tag == "SoftwareInfo") {
        if (softwareRecordset_ >= 0 &&
            seekRow(softwareRecordset_, kSoftwareOfCompanyKind, companyID))
          rs = softwareRecordset_;
      } else if (tag == "FirmInfo") {
        rs = position(kFirmKind, firmID);
      } else if (tag == "AppointInfo") {
        rs = position(kAppointmentKind, appointmentID);
      } else if (tag == "TaskInfo") {
        rs = position(kTaskAloneKind, TaskID);
      } else if (tag == "DocketInfo") {
        rs = position(kDocketKind, docketID);
      }
      if (rs >= 0) stored = writeByType(rs, field, item.fieldType, value);
    }
  });
  return stored;
}

}  // namespace lf
