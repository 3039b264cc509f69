// The CANTAX export templates, byte for byte, and the naming of a saved template.
#include "tax/cantax_export_template.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace lf {
namespace {

std::string fileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

TEST(CANTAXExportTemplate, T1HasFiftyFiveVariablesTheLastWithoutComma) {
  const std::string text = cantaxTemplateText(CANTAXProduct::T1);
  EXPECT_TRUE(
      text.starts_with("@EXPORT\r\n@CLIENT_SIN,\r\n@BIRTH_DATE,\r\n@CLIENT_FIRST_NAME,\r\n"));
  EXPECT_NE(text.find("\r\n@EXTN_WORK,\r\n@MARITAL_STATUS,\r\n@SPOUSE_FIRST_NAME,\r\n"),
            std::string::npos);
  EXPECT_TRUE(text.ends_with("\r\n@LINE_349,\r\n@LINE_409\r\n@CR\r\n"));
  const auto& lines = cantaxTemplateLines(CANTAXProduct::T1);
  ASSERT_EQ(lines.size(), 57u);  // @EXPORT, 55 variables, @CR
  int withComma = 0;
  for (const std::string& line : lines) withComma += line.back() == ',';
  EXPECT_EQ(withComma, 54);
  EXPECT_EQ(lines[23], "@LINE_101,");
  EXPECT_EQ(lines[55], "@LINE_409");
}

TEST(CANTAXExportTemplate, T2PlusListsTheCorporationVariables) {
  EXPECT_EQ(cantaxTemplateText(CANTAXProduct::T2Plus),
            "@EXPORT\r\n@CORP_NAME,\r\n@YEAR_END_DATE,\r\n@CORP_ACCOUNT_NO,\r\n"
            "@ALBERTA_ACCOUNT_NO,\r\n@MANITOBA_ACCOUNT_NO,\r\n@ONTARIO_ACCOUNT_NO,\r\n"
            "@SASK_ACCOUNT_NO,\r\n@CORP_ADDRESS1,\r\n@CORP_ADDRESS2,\r\n@CORP_CITY,\r\n"
            "@CORP_PROVINCE,\r\n@CORP_POSTCODE,\r\n@CORP_COUNTRY,\r\n@CORP_PHONE,\r\n"
            "@CORP_FAX,\r\n@CORP_MAIL_ADDRESS1,\r\n@CORP_MAIL_ADDRESS2,\r\n@CORP_MAIL_CITY,\r\n"
            "@CORP_MAIL_PROV,\r\n@CORP_MAIL_POSTCODE,\r\n@CORP_MAIL_COUNTRY,\r\n"
            "@CORP_CONTACT_NAME,\r\n@CORP_CONTACT_PHONE,\r\n@CORP_CONTACT_FAX,\r\n@CR\r\n");
}

TEST(CANTAXExportTemplate, SavingAppendsTplUnlessPresentAndReplacesTheFile) {
  const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) /
                                       ("cantax_tpl_" + std::to_string(::getpid())) / "sub";
  const std::string plain = saveCANTAXTemplate(CANTAXProduct::T1, (folder / "export").string());
  EXPECT_EQ(plain, (folder / "export.tpl").string());
  EXPECT_EQ(fileBytes(plain), cantaxTemplateText(CANTAXProduct::T1));

  std::ofstream((folder / "OLD.TPL").string()) << "something longer than nothing at all";
  const std::string upper =
      saveCANTAXTemplate(CANTAXProduct::T2Plus, (folder / "OLD.TPL").string());
  EXPECT_EQ(upper, (folder / "OLD.TPL").string());
  EXPECT_EQ(fileBytes(upper), cantaxTemplateText(CANTAXProduct::T2Plus));
  std::filesystem::remove_all(folder.parent_path());
}

TEST(CANTAXExportTemplate, DefaultPathUsesTheRememberedFolderWhenItExists) {
  const std::string temp = ::testing::TempDir();
  const std::string remembered = (std::filesystem::path(temp) / "mine.tpl").string();
  EXPECT_EQ(defaultCANTAXTemplatePath(CANTAXProduct::T1, remembered, temp), remembered);
  const std::string fallback =
      defaultCANTAXTemplatePath(CANTAXProduct::T2Plus, "/no/such/folder/x.tpl", temp);
  EXPECT_EQ(std::filesystem::path(fallback).parent_path().filename(), "CANTAX Import");
  EXPECT_TRUE(fallback.ends_with(" T2Plus Export File.tpl")) << fallback;
}

}  // namespace
}  // namespace lf
