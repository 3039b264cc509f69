// clsInsertFieldsInRTB: the merge-field engine.
//
// Builds the catalogue of placeholders (FieldList) for a kind of merge, checks and merges
// templates written with «Name», «(Name, format)» and «(Todays Date, format)» in plain or
// RTF-escaped spelling, reads the value behind a field from the practice database (and
// writes one back), and makes the calendar's display and title texts. It reads the
// database only through moduleState().DatabaseReference and the locale and client
// drop-down services of the module state.
//
// The class holds recordset handles between calls: a caller ends with Terminate.
// The operations are split over merge/: field_catalogue.cpp, placeholder_grammar.cpp,
// value_resolution.cpp, merge_text.cpp, calendar_text.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/variant.hpp"
#include "merge/field_list.hpp"
#include "merge/list_controls.hpp"

namespace lf {

namespace merge {
// The record kinds the engine holds a recordset for.
enum RecordsetSlot : int {
  kClientRecordset,
  kCompanyRecordset,
  kCompanyNotesRecordset,
  kContactRecordset,
  kContactNotesRecordset,
  kSoftwareRecordset,
  kFirmRecordset,
  kEmployeeRecordset,
  kAppointmentRecordset,
  kTaskRecordset,
  kDocketRecordset,
};
struct RecordsetKind;
}  // namespace merge

// Purposes of the list (MergeFieldListUse).
enum MergeFieldListUseKind : std::int32_t {
  kUseSingleDocument = 1,
  kUseManyRecords = 2,
  kUseColumnChooser = 3,
  kUseProgramRead = 4,
  kUseWrite = 5,
};

class clsInsertFieldsInRTB {
 public:
  clsInsertFieldsInRTB();
  // Closes what Terminate would close, in case a caller forgot it.
  ~clsInsertFieldsInRTB();
  clsInsertFieldsInRTB(const clsInsertFieldsInRTB&) = delete;
  clsInsertFieldsInRTB& operator=(const clsInsertFieldsInRTB&) = delete;

  // ---- Properties ----
  const lf::FieldList& FieldList() const { return fieldList_; }
  std::int32_t ListType = 0;
  std::int32_t MergeFieldListUse() const { return mergeFieldListUse_; }
  // 3 and 5 also turn the category headings off.
  void setMergeFieldListUse(std::int32_t use);
  void setUseWordWrap(bool wrap) { useWordWrap_ = wrap; }
  RichTextBoxControl* RTB = nullptr;
  ListBoxControl* ListBox = nullptr;
  ListBoxControl* ListBox2 = nullptr;
  bool ShowListCategoryHeaders = true;
  std::string TemplateText;
  std::int32_t companyID = -1;
  std::int32_t contactID = -1;
  std::int32_t firmID = -1;
  std::int32_t userID = -1;
  std::int32_t appointmentID = -1;
  std::int32_t docketID = -1;
  std::int32_t TaskID = -1;
  void setScheduleID(std::int32_t scheduleID);
  bool TestComment = false;
  bool ConvertStrToRTF = true;
  bool ConvertCompanyNameToContactNameForContacts = false;

  // Event: a fault message of testRTBComment.
  std::function<void(const std::string& message)> testErrorComment;

  void Terminate();
  void resetAllItemIDs();

  // ---- Catalogue ----
  void createDefaultFieldListStructure(bool& noListBox, bool& clearListBox);
  void createAppointmentInfoFieldListStructure(lf::FieldList& list, bool noListBox);
  void createTaskInfoFieldListStructure(lf::FieldList& list, bool noListBox);
  void createDocketInfoFieldListStructure(lf::FieldList& list, bool noListBox);
  void createCompanyInfoFieldListStructure(lf::FieldList& list, bool noListBox);
  void createAccountantFieldListStructure(bool& noListBox, bool& clearListBox);

  // ---- Grammar ----
  std::string convertProvinceFields(std::string text);
  static std::string convertFieldName(std::string_view text);
  bool testStr(std::string_view name);
  bool testRTBComment(std::string text, bool isRTFText, bool showErrors, bool skipFieldNameTest);
  bool verifyFieldListIsPopulated();
  std::string parseRTBComment();
  std::string parseTodaysDateInRTBComment(std::string& text, std::string_view open,
                                          std::string_view close);

  // ---- Values ----
  void initializeDataRecordsetsForSingleDocMerge();
  std::string getDataFieldInfo(std::int32_t key, std::string_view format);
  std::string getDataFieldFromRecordset(std::string& field);
  bool writeDataToField(std::string_view field, std::string_view value);
  std::string getMergeDataFromFieldName(std::string_view field);
  std::string getMergeDataFromDisplayName(std::string_view name);
  std::string getDBFieldNameFromDisplayFieldName(std::string_view name);
  std::string getDisplayFieldNameFromDBFieldName(std::string_view field);
  std::string getTimeDurationFieldValue(const Date& start, const Date& end);
  static std::string getAbbreviatedProvince(std::string_view province);
  static std::string getFullProvinceString(std::string_view province);
  std::string getTodaysDate(std::string_view format);
  void closeDataRecordsets();

  // ---- Text and lists ----
  // `first`, when given, is the place of the token's first occurrence, already found.
  bool replaceText(std::string& text, std::string_view token, std::string_view value,
                   size_t first = std::string_view::npos);
  std::string removeBlankLinesFromRTFText(std::string& text);
  bool replaceUnfoundMergeFieldsWithBlanks(std::string& text);
  std::string getDBFieldFromListItem(long itemData);
  std::string parseListItem(long itemData, bool withBrackets);
  void onListClick(long itemData);
  std::string insertCurrentDateMergeField(int format, bool withBrackets);
  void insertCurrentDate(int format);
  // A field value on its way into an RTF template (line breaks and paragraph indent).
  std::string convertToRTF(std::string_view value);

  // ---- Calendar ----
  std::string createDisplayTextByID2();
  std::string createTitleBarTextByID2();
  std::int32_t getTaskIDFromScheduleIDNum(std::int32_t scheduleID);
  std::int32_t getDefaultContactIDFromCompanyID(std::int32_t companyID);

  // Today's date as the engine sees it; tests pin it. Unset means the system clock.
  void setTodayForTesting(std::optional<Date> today) { todayOverride_ = today; }
  Date today() const;

 private:
  // Catalogue helpers.
  void addField(lf::FieldList& list, bool noListBox, std::string_view databaseField,
                std::string_view displayName, std::string_view tableTag, std::int16_t type,
                std::string_view sample, std::int16_t length, std::string_view listText = {});
  void addListEntry(ListBoxControl* box, bool noListBox, std::string_view text);
  void addHeading(bool noListBox, std::string_view text);
  void addBlank(bool noListBox);
  void addContactNameRows(bool noListBox);
  void addAccountingRows(bool noListBox);
  void addSoftwareRows(bool noListBox);
  void addMoreContactRows(bool noListBox);
  // The five custom rows of a family; the firm's go to ListBox2 like the other firm rows.
  void addCustomRows(lf::FieldList& list, bool noListBox, int family);
  void addFirmRows(bool noListBox);

  // Grammar helpers.
  bool runDelimiterPass(std::string& text, std::string_view open, std::string_view close);
  void sendFault(bool showErrors, const std::string& message);

  // Value helpers.
  std::int32_t& handleOf(int slot);
  std::int32_t openForKind(const merge::RecordsetKind& kind, std::int32_t id, int lockType);
  bool seekRow(std::int32_t& handle, const merge::RecordsetKind& kind, std::int32_t id);
  std::string readText(std::int32_t handle, std::string_view field);
  bool contactInheritsFromCompany();
  bool writeByType(std::int32_t handle, std::string_view field, std::int16_t type,
                   std::string_view value);
  void yieldToMessageQueue(int times);

  lf::FieldList fieldList_;
  std::int32_t itemCounter_ = 0;
  std::int32_t mergeFieldListUse_ = kUseSingleDocument;
  bool useWordWrap_ = true;
  std::optional<Date> todayOverride_;

  // Recordset handles; -1 is none.
  std::int32_t clientRecordset_ = -1;
  std::int32_t companyRecordset_ = -1;
  std::int32_t companyNotesRecordset_ = -1;
  std::int32_t contactRecordset_ = -1;
  std::int32_t contactNotesRecordset_ = -1;
  std::int32_t softwareRecordset_ = -1;
  std::int32_t firmRecordset_ = -1;
  std::int32_t employeeRecordset_ = -1;
  std::int32_t appointmentRecordset_ = -1;
  std::int32_t taskRecordset_ = -1;
  std::int32_t docketRecordset_ = -1;

  // Memo of the last template's rewrite and of the upper-cased display names of the list: a
  // merge over many records runs one template against one list again and again.
  struct RewriteMemo {
    std::string source;
    std::string result;
    int country = 0;
    int province = 0;
    double day = 0;
    bool valid = false;
  } rewriteMemo_;
  std::vector<std::string> upperNames_;
  std::uint64_t listBuild_ = 0;
  std::uint64_t upperNamesBuild_ = ~std::uint64_t{0};

  // The text being merged and where the current token stands, for convertToRTF.
  const std::string* mergeText_ = nullptr;
  size_t mergeTokenPosition_ = 0;
};

}  // namespace lf
