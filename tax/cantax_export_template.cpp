// The CANTAX export templates and their saving.
#include "tax/cantax_export_template.hpp"

#include <filesystem>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "host/folder_services.hpp"
#include "host/locale_service.hpp"
#include "tax/cantax_modified_file.hpp"

namespace lf {

const std::vector<std::string>& cantaxTemplateLines(CANTAXProduct product) {
  static const std::vector<std::string> t1 = {"@EXPORT",
                                              "@CLIENT_SIN,",
                                              "@BIRTH_DATE,",
                                              "@CLIENT_FIRST_NAME,",
                                              "@CLIENT_LAST_NAME,",
                                              "@CLIENT_FULL_NAME,",
                                              "@CLIENT_ADDRESS1,",
                                              "@CLIENT_ADDRESS2,",
                                              "@CLIENT_PROVINCE,",
                                              "@CLIENT_POSTAL_CODE,",
                                              "@CLIENT_PHONE,",
                                              "@CELL_PHONE,",
                                              "@FAX_PHONE,",
                                              "@PAGE_PHONE,",
                                              "@EMAIL_ADDRESS,",
                                              "@CLIENT_WORK_PHONE,",
                                              "@EXTN_WORK,",
                                              "@MARITAL_STATUS,",
                                              "@SPOUSE_FIRST_NAME,",
                                              "@SPOUSE_LAST_NAME,",
                                              "@SPOUSE_BIRTH_MONTH,",
                                              "@SPOUSE_BIRTH_DAY,",
                                              "@SPOUSE_BIRTH_YEAR,",
                                              "@LINE_101,",
                                              "@LINE_102,",
                                              "@LINE_104,",
                                              "@LINE_113,",
                                              "@LINE_114,",
                                              "@LINE_115,",
                                              "@LINE_119,",
                                              "@LINE_120,",
                                              "@LINE_126,",
                                              "@LINE_128,",
                                              "@LINE_129,",
                                              "@LINE_130,",
                                              "@LINE_135,",
                                              "@LINE_139,",
                                              "@LINE_144,",
                                              "@LINE_152,",
                                              "@LINE_156,",
                                              "@LINE_160,",
                                              "@LINE_162,",
                                              "@LINE_166,",
                                              "@LINE_208,",
                                              "@LINE_212,",
                                              "@LINE_214,",
                                              "@LINE_215,",
                                              "@LINE_230,",
                                              "@LINE_323,",
                                              "@LINE_324,",
                                              "@LINE_326,",
                                              "@LINE_330,",
                                              "@LINE_340,",
                                              "@LINE_342,",
                                              "@LINE_349,",
                                              "@LINE_409",
                                              "@CR"};
  static const std::vector<std::string> t2plus = {"@EXPORT",
                                                  "@CORP_NAME,",
                                                  "@YEAR_END_DATE,",
                                                  "@CORP_ACCOUNT_NO,",
                                                  "@ALBERTA_ACCOUNT_NO,",
                                                  "@MANITOBA_ACCOUNT_NO,",
                                                  "@ONTARIO_ACCOUNT_NO,",
                                                  "@SASK_ACCOUNT_NO,",
                                                  "@CORP_ADDRESS1,",
                                                  "@CORP_ADDRESS2,",
                                                  "@CORP_CITY,",
                                                  "@CORP_PROVINCE,",
                                                  "@CORP_POSTCODE,",
                                                  "@CORP_COUNTRY,",
                                                  "@CORP_PHONE,",
                                                  "@CORP_FAX,",
                                                  "@CORP_MAIL_ADDRESS1,",
                                                  "@CORP_MAIL_ADDRESS2,",
                                                  "@CORP_MAIL_CITY,",
                                                  "@CORP_MAIL_PROV,",
                                                  "@CORP_MAIL_POSTCODE,",
                                                  "@CORP_MAIL_COUNTRY,",
                                                  "@CORP_CONTACT_NAME,",
                                                  "@CORP_CONTACT_PHONE,",
                                                  "@CORP_CONTACT_FAX,",
                                                  "@CR"};
  return product == CANTAXProduct::T1 ? t1 : t2plus;
}

std::string cantaxTemplateText(CANTAXProduct product) {
  std::string text;
  for (const std::string& line : cantaxTemplateLines(product)) text += line + "\r\n";
  return text;
}

std::string defaultCANTAXTemplatePath(CANTAXProduct product, const std::string& rememberedPath,
                                      const std::string& fallbackFolder) {
  namespace fs = std::filesystem;
  if (!GeneralUtilities::isBlank(rememberedPath)) {
    const fs::path folder = fs::path(rememberedPath).parent_path();
    if (!folder.empty() && fs::is_directory(folder)) return rememberedPath;
  }
  std::string working = fallbackFolder;
  if (WorkingFolderService* service = moduleState().WorkingFolderReference)
    working = service->getImportFolder();
  LocaleService* locale = moduleState().LocaleReference;
  const std::string name = locale != nullptr ? locale->getApplicationName() : "Ledgerfolio";
  const fs::path folder = fs::path(working) / "CANTAX Import";
  std::error_code ignored;
  fs::create_directories(folder, ignored);
  return (folder / (name + (product == CANTAXProduct::T1 ? " T1 Export File.tpl"
                                                         : " T2Plus Export File.tpl")))
      .string();
}

std::string saveCANTAXTemplate(CANTAXProduct product, const std::string& path) {
  namespace fs = std::filesystem;
  std::string target = path;
  if (target.size() < 4 || GeneralUtilities::upperCase(target.substr(target.size() - 4)) != ".TPL")
    target += ".tpl";
  const fs::path folder = fs::path(target).parent_path();
  std::error_code ignored;
  if (!folder.empty()) fs::create_directories(folder, ignored);
  writeModifiedFile(target, cantaxTemplateText(product));
  return target;
}

}  // namespace lf
