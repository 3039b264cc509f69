// The CANTAX and Dr. Tax wizards end to end on a fresh practice database: the modified file,
// the mapped import, the CANTAX T1 marks, and each wizard's checks and messages.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tax/cantax_import_wizard.hpp"
#include "tax/cantax_t1_repair.hpp"
#include "tax/cantax_wizard_answers.hpp"
#include "tax/cantax_wizard_terminal.hpp"
#include "tax/drtax_import_wizard.hpp"
#include "tests/tax/cantax_t1_test_rows.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

namespace fs = std::filesystem;
using testing::cantaxT1Row;

class TaxExportWizardTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    folder = fs::path(::testing::TempDir()) / ("tax_export_" + std::to_string(::getpid()));
    fs::create_directories(folder);
  }
  void TearDown() override { fs::remove_all(folder); }

  std::string writeExport(const std::string& name, const std::string& bytes) {
    const std::string path = (folder / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  static std::string fileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }
  void toLastPage(TaxExportImportWizard& wizard) {
    while (wizard.page() < wizard.pageCount() - 1) {
      const int before = wizard.page();
      wizard.cmdNext_Click();
      ASSERT_NE(wizard.page(), before);
    }
    EXPECT_EQ(wizard.cmdNextCaption(), "Finish");
  }
  std::string lastMessage() const {
    return messages.shown.empty() ? std::string() : messages.shown.back().text;
  }
  std::string contact(const std::string& where, const std::string& field) {
    Variant v = value("SELECT * FROM Contacts WHERE " + where, field);
    return v.isNull() ? std::string("<null>") : v.toString();
  }
  std::string company(const std::string& where, const std::string& field) {
    Variant v = value(
        "SELECT * FROM Companies INNER JOIN ClientData ON Companies.CompanyID = "
        "ClientData.CompanyIDNum WHERE " +
            where,
        field);
    return v.isNull() ? std::string("<null>") : v.toString();
  }
  bool mark(long contactID, const std::string& column) {
    return value("SELECT * FROM PersonalTaxStatus WHERE TaxYear=2024 AND ContactNum=" +
                     std::to_string(contactID),
                 column)
        .toBool();
  }

  fs::path folder;
};

TEST_F(TaxExportWizardTest, CANTAXT1ImportsClientsAndSetsTheTickedMarks) {
  // Element 30 is LINE_340, 32 LINE_349, 33 LINE_409; raw position = element + 22.
  const std::string raw =
      cantaxT1Row({{52, "100"}, {54, "50"}, {55, "-5"}}) + "\r\n" +
      cantaxT1Row(
          {{1, "527 210 956"}, {3, "Anna"}, {4, "Bell"}, {5, "Anna Bell"}, {23, ""}, {24, "1200"}});
  const std::string path = writeExport("cantax.txt", raw);
  frmImportCANTAXT1 wizard;
  wizard.Initialize();
  wizard.cmdNext_Click();
  ASSERT_EQ(wizard.page(), CANTAXImportWizard::kTemplatePage);
  wizard.cmdNext_Click();  // no template saved: asked, answered yes
  ASSERT_EQ(messages.asked.size(), 1u);
  EXPECT_TRUE(messages.asked[0].text.starts_with(
      "You have not saved the export file yet.  You need to click the 'Save Export Template "
      "File' button to let "));
  EXPECT_TRUE(messages.asked[0].text.ends_with(
      "\r\nAre you sure you want to continue without creating this file?"));

  wizard.cmdNext_Click();
  ASSERT_EQ(wizard.page(), CANTAXImportWizard::kOpenPage);
  ASSERT_TRUE(wizard.openExportFile(path));
  EXPECT_EQ(wizard.modifiedPath(), (folder / "CANTAX_Modified.txt").string());
  std::string expected;
  long rows = 0;
  ASSERT_TRUE(repairCANTAXT1Text(raw, expected, rows));
  EXPECT_EQ(fileBytes(wizard.modifiedPath()), expected);
  EXPECT_EQ(wizard.import().grid.dataRowCount(), 2);
  EXPECT_EQ(wizard.import().columnKey(4), "MIDDLENAME");
  EXPECT_EQ(wizard.import().columnKey(21), "SPOUSEBIRTHDAY");
  EXPECT_EQ(wizard.import().columnKey(22), std::string(kNotAssignedKey));
  EXPECT_EQ(wizard.lineAmounts().size(), 2u);

  wizard.chkOption[30] = false;  // LINE_340 off, LINE_349 (option 27) on
  toLastPage(wizard);
  wizard.cboYear = "2024";
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(), "The data was imported successfully");
  EXPECT_TRUE(wizard.imported());
  EXPECT_EQ(wizard.importingCaption(), "Importing Anna Bell");

  const std::string john = "FirstName='John'";
  EXPECT_EQ(contact(john, "MiddleName"), "Albert");
  EXPECT_EQ(contact(john, "HomeCity"), "Toronto");
  EXPECT_EQ(contact(john, "Birthday").substr(0, 10), "1970-05-17");
  EXPECT_NE(contact(john, "BusinessPhone_Main").find("555-9999"), std::string::npos);
  const long johnID = value("SELECT ContactID FROM Contacts WHERE " + john, "ContactID").toLong();
  const long annaID =
      value("SELECT ContactID FROM Contacts WHERE FirstName='Anna'", "ContactID").toLong();
  EXPECT_TRUE(mark(johnID, "EmploymentIncome"));
  EXPECT_TRUE(mark(johnID, "CharitableDonations"));  // by LINE_349 alone
  EXPECT_FALSE(mark(johnID, "PoliticalDonations"));  // a negative LINE_409
  EXPECT_FALSE(mark(johnID, "CommissionIncome"));
  EXPECT_FALSE(mark(annaID, "EmploymentIncome"));  // a blank LINE_101
  EXPECT_TRUE(mark(annaID, "CommissionIncome"));   // LINE_102
}

TEST_F(TaxExportWizardTest, EveryMappedFieldIsInTheImportListWithItsLength) {
  clsImportPersonalTextFile personal;
  clsImportBusinessTextFile business;
  personal.createFieldList();
  business.createFieldList();
  for (const auto* table : {&cantaxT1MappedColumns(), &drTaxT1MappedColumns()})
    for (const MappedColumn& column : *table) {
      if (std::string_view(column.field) == kNotAssigned) continue;
      const FieldItem* item = personal.mapping.fieldList().findByDatabaseField(column.field);
      ASSERT_NE(item, nullptr) << column.field;
      if (item->maxLength > 0) {  // dates have none
        EXPECT_EQ(item->maxLength, column.maxLength) << column.field;
      }
    }
  // Every column of the corporation files finds its field, the mailing address included.
  EXPECT_TRUE(setupMappedColumns(business, cantaxT2PlusMappedColumns()).empty());
  EXPECT_TRUE(setupMappedColumns(business, drTaxT2MappedColumns()).empty());
  // Dr. Tax's language has no Language field to go to; SpokenLanguage takes it.
  EXPECT_EQ(personal.mapping.fieldList().findByDatabaseField("Language"), nullptr);
}

TEST_F(TaxExportWizardTest, CANTAXFinishChecksAndAForeignFile) {
  frmImportCANTAXT1 wizard;
  wizard.Initialize();
  messages.defaultAnswer = kAnswerNo;
  wizard.cmdNext_Click();
  wizard.cmdNext_Click();
  EXPECT_EQ(wizard.page(), CANTAXImportWizard::kTemplatePage);  // answered no: stays
  wizard.cmdSaveTemplate_Click((folder / "t1").string());
  EXPECT_TRUE(wizard.checkCreatedExportFile(true));
  wizard.cmdNext_Click();
  EXPECT_EQ(wizard.page(), CANTAXImportWizard::kTemplatePage + 1);

  const std::string foreign = writeExport("other.txt", "Name,City\r\nAnn,Toronto\r\n");
  wizard.cmdNext_Click();
  EXPECT_FALSE(wizard.openExportFile(foreign));
  EXPECT_FALSE(fs::exists(folder / "CANTAX_Modified.txt"));
  EXPECT_EQ(count("SELECT * FROM UserGeneralSettings WHERE CANTAXT1ExportFile IS NOT NULL"), 0);
  toLastPage(wizard);
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(),
            "You must open the results of the CANTAX export by clicking the 'Open CANTAX Export "
            "File' button above.");
  EXPECT_FALSE(wizard.finished());

  ASSERT_TRUE(wizard.openExportFile(writeExport("cantax.txt", cantaxT1Row())));
  wizard.cboYear = "20x4";
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(), "You must enter a valid year to import into.  Please try again");
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE FirstName='John'"), 0);
}

TEST_F(TaxExportWizardTest, CANTAXT2PlusMailingAddressBecomesTheMainOne) {
  const std::string raw =
      "Maple Leaf Bakery Inc,Dec31,123456789,,,ON-55,,1 King St,,Toronto,ON,M5H1A1,Canada,"
      "4165550000,4165550001,PO Box 9,,Ottawa,ON,K1A0B1,Canada,Jane Doe,4165550002,4165550003";
  frmImportCANTAXT2Plus wizard;
  wizard.Initialize();
  wizard.cmdSaveTemplate_Click((folder / "t2").string());
  ASSERT_TRUE(wizard.openExportFile(writeExport("t2plus.txt", raw)));
  wizard.optAddress_Click(frmImportCANTAXT2Plus::kMailingAddress);
  toLastPage(wizard);
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(), "The data was imported successfully");
  const std::string maple = "CompanyName='Maple Leaf Bakery Inc'";
  EXPECT_EQ(company(maple, "City"), "Ottawa");
  EXPECT_EQ(company(maple, "Address"), "PO Box 9");
  EXPECT_EQ(company(maple, "YearEndDate").substr(0, 10),
            std::to_string(locale->getCurrentTaxYear()) + "-12-31");
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE FirstName='Jane' AND LastName='Doe'"), 1);
  // The main address is kept as the alternate one.
  EXPECT_EQ(company(maple, "AltAddress"), "1 King St");
  EXPECT_EQ(company(maple, "AltCity"), "Toronto");
  EXPECT_EQ(company(maple, "AltPostalCode"), "M5H1A1");
}

TEST_F(TaxExportWizardTest, CANTAXT2PlusMailingAddressIsTheAlternateOne) {
  const std::string raw =
      "Maple Leaf Bakery Inc,Dec31,123456789,,,ON-55,,1 King St,,Toronto,ON,M5H1A1,Canada,"
      "4165550000,4165550001,PO Box 9,,Ottawa,QC,K1A0B1,Canada,Jane Doe,4165550002,4165550003";
  frmImportCANTAXT2Plus wizard;
  wizard.Initialize();
  wizard.cmdSaveTemplate_Click((folder / "t2").string());
  ASSERT_TRUE(wizard.openExportFile(writeExport("t2plus.txt", raw)));
  toLastPage(wizard);
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(), "The data was imported successfully");
  const std::string maple = "CompanyName='Maple Leaf Bakery Inc'";
  EXPECT_EQ(company(maple, "Address"), "1 King St");
  EXPECT_EQ(company(maple, "City"), "Toronto");
  EXPECT_EQ(company(maple, "AltAddress"), "PO Box 9");
  EXPECT_EQ(company(maple, "AltCity"), "Ottawa");
  EXPECT_EQ(company(maple, "AltProvince"), "QC");
  EXPECT_EQ(company(maple, "AltPostalCode"), "K1A0B1");
  EXPECT_EQ(company(maple, "AltCountry"), "Canada");
}

TEST_F(TaxExportWizardTest, DrTaxT1ImportsAndMovesToTheGrid) {
  const std::string raw =
      "C-101,Tremblay,Luc,046454286,1968-11-03,fr ,45 Rue Principale,Gatineau,J8X1A1,QC,"
      "Canada,H: 8195551111,W:8195552222,C: 8195553333,luc@example.org\r\n"
      "short,row\r\n";
  frmImportDrTaxT1 wizard;
  wizard.Initialize();
  toLastPage(wizard);
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(),
            "You must open the results of the Dr. Tax export by clicking the 'Open Dr. Tax "
            "Export File' button above.");
  wizard.cmdBack_Click();
  ASSERT_TRUE(wizard.openExportFile(writeExport("drtax.csv", raw)));
  EXPECT_EQ(wizard.page(), wizard.gridPage());
  EXPECT_EQ(wizard.droppedRows(), 1);
  EXPECT_TRUE(fs::exists(folder / "DrTax_Modified.txt"));
  EXPECT_EQ(wizard.import().columnKey(1), std::string(kNotAssignedKey));
  toLastPage(wizard);
  wizard.cboYear = "2024";
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(), "The data was imported successfully");
  EXPECT_EQ(contact("LastName='Tremblay'", "FirstName"), "Luc");
  EXPECT_EQ(contact("LastName='Tremblay'", "SpokenLanguage"), "Francais");
  EXPECT_EQ(contact("LastName='Tremblay'", "HomePhone_Main"), "(819) 555-1111");
  EXPECT_EQ(contact("LastName='Tremblay'", "HomeCity"), "Gatineau");
}

TEST_F(TaxExportWizardTest, DrTaxRefusesAForeignFileWithItsMessage) {
  frmImportDrTaxT2 t2;
  t2.Initialize();
  EXPECT_FALSE(t2.openExportFile(writeExport("x.csv", "a,b,c,d,e,f,g,h,i,j,k,l,m,n\n")));
  EXPECT_EQ(lastMessage(), locale->getApplicationName() +
                               " did not recognize this file as a Dr Tax export file.  Try "
                               "opening the file created by the Dr Tax Export process.");
  frmImportDrTaxT1 t1;
  t1.Initialize();
  EXPECT_FALSE(t1.openExportFile(writeExport("empty.csv", "")));
  EXPECT_EQ(lastMessage(), locale->getApplicationName() +
                               " did not recognize this file as a Dr. Tax export file.  Try "
                               "opening the file created by the Dr. Tax Export process.");
  EXPECT_FALSE(fs::exists(folder / "DrTax_Modified.txt"));
}

TEST_F(TaxExportWizardTest, DrTaxT2ImportsCorporations) {
  const std::string raw =
      "C-7,Northern Lights Ltd,123456789RC0001,1170000001,Dec31,Ann Roy,9 Bay St,Toronto,"
      "M5J2N8,ON,W: 4165550100,N:4165550101,F: 4165550102,info@example.org,\r\n";
  frmImportDrTaxT2 wizard;
  wizard.Initialize();
  ASSERT_TRUE(wizard.openExportFile(writeExport("drtax2.csv", raw)));
  toLastPage(wizard);
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(), "The data was imported successfully");
  const std::string corp = "CompanyName='Northern Lights Ltd'";
  EXPECT_EQ(company(corp, "City"), "Toronto");
  EXPECT_EQ(company(corp, "OfficeNumber"), "(416) 555-0100");
  EXPECT_EQ(company(corp, "FaxNumber"), "(416) 555-0102");
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE FirstName='Ann' AND LastName='Roy'"), 1);
}

TEST_F(TaxExportWizardTest, TerminalDrivesTheCANTAXPagesWithAnUntickedOption) {
  const std::string path = writeExport("cantax.txt", cantaxT1Row());
  frmImportCANTAXT1 wizard;
  std::istringstream in("next\nsave " + (folder / "t1").string() +
                        "\nnext\nnext\nnext\nnext\nuntick 0\nnext\nnext\nyear 2024\nnext\n");
  std::ostringstream out;
  ASSERT_TRUE(runTaxImportWizardAtTerminal(wizard, in, out, path));
  EXPECT_TRUE(fs::exists(folder / "t1.tpl"));
  EXPECT_NE(out.str().find("1 data rows"), std::string::npos);
  const long john =
      value("SELECT ContactID FROM Contacts WHERE FirstName='John'", "ContactID").toLong();
  EXPECT_FALSE(mark(john, "EmploymentIncome"));
  // The advanced page lists each box with its caption.
  EXPECT_NE(out.str().find("[ ] 0 If Line101 - 'Employment Income' in CANTAX then check "
                           "'Employment Income'"),
            std::string::npos);
  EXPECT_NE(
      out.str().find("[x] 13 If Line130 - 'Other Income' in CANTAX then check 'Other Income'"),
      std::string::npos);
}

TEST_F(TaxExportWizardTest, AnswersFileRefusesWrongOptionsAndAddress) {
  const TaxImportAnswers answers = parseTaxImportAnswers(
      R"({"file": "x.txt", "options": [0, 30], "address": "Mailing", "template": "t.tpl"})",
      "/data");
  EXPECT_EQ(answers.text.file, "/data/x.txt");
  EXPECT_EQ(answers.templatePath, "/data/t.tpl");
  EXPECT_EQ(*answers.options, (std::vector<int>{0, 30}));
  EXPECT_EQ(answers.address, frmImportCANTAXT2Plus::kMailingAddress);
  EXPECT_THROW(parseTaxImportAnswers(R"({"options": [31]})", ""), Failure);
  EXPECT_THROW(parseTaxImportAnswers(R"({"address": "home"})", ""), Failure);
}

}  // namespace
}  // namespace lf
