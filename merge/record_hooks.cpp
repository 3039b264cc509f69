// The personal-tax template filler: a clsInsertFieldsInRTB made for a personal-tax list.
#include "merge/record_hooks.hpp"

#include "merge/cls_insert_fields_in_rtb.hpp"
#include "records/client_record_hooks.hpp"

namespace lf {

void installMergeRecordHooks() {
  clientRecordHooks().fillPersonalTaxTemplate = [](const std::string& templateText, long contactID,
                                                   long) {
    clsInsertFieldsInRTB merge;
    merge.ListType = 4;
    merge.setMergeFieldListUse(3);
    merge.TestComment = false;
    merge.ConvertStrToRTF = false;
    merge.ConvertCompanyNameToContactNameForContacts = false;
    merge.contactID = static_cast<std::int32_t>(contactID);
    bool noListBox = true;
    bool clear = true;
    merge.createDefaultFieldListStructure(noListBox, clear);
    merge.initializeDataRecordsetsForSingleDocMerge();
    merge.TemplateText = templateText;
    std::string filled = merge.parseRTBComment();
    merge.Terminate();
    return filled;
  };
}

}  // namespace lf
