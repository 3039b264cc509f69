// The personal Profile import through the stand-in: the selection options, a client with its
// marks and return row, couples by the three choices, and duplicates within a run.
#include "tax/profile_t1_import.hpp"

#include <gmock/gmock.h>

#include "host/practice_import_duplicates.hpp"
#include "records/contact_records.hpp"
#include "tax/profile_t1_field_list.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

using ::testing::ElementsAre;

std::map<std::string, std::string> taxpayer(const std::string& sin, const std::string& first,
                                            const std::string& last) {
  return {{"ClientSIN", sin}, {"ClientFirstName", first}, {"ClientLastName", last}};
}

class ProfileT1ImportTest : public ProfileTest {
 protected:
  void SetUp() override {
    ProfileTest::SetUp();
    import = std::make_unique<clsImportProfileT1>();
    // The public class replaced the module's utilities; the fixture's services stay.
    import->importTaxYear = 2025;
  }
  void add(const std::string& path) { import->addProfileFileToImportList(path); }
  std::string contact(const std::string& where, const std::string& column) {
    Variant v = value("SELECT * FROM Contacts WHERE " + where, column);
    return v.isNull() ? "<null>" : v.toString();
  }
  std::string status(long contactID, const std::string& column) {
    return value("SELECT * FROM PersonalTaxStatus WHERE TaxYear=2025 AND ContactNum=" +
                     std::to_string(contactID),
                 column)
        .toString();
  }
  long idOf(const std::string& last, const std::string& first) {
    return static_cast<long>(value("SELECT ContactID FROM Contacts WHERE LastName='" + last +
                                       "' AND FirstName='" + first + "'",
                                   "ContactID")
                                 .toLong());
  }
  // A contact known before the run, with its SIN.
  long addNewContactForTest(const std::string& name, const std::string& sin) {
    long id = addNewContact(name, -1, -1);
    std::int32_t h = db->openRecordset(
        "SELECT Contacts.* FROM Contacts WHERE ContactID=" + std::to_string(id) + ";",
        kCursorKeyset, kLockOptimistic);
    db->setField(h, "SocialInsuranceNumber", sin);
    db->closeRecordset(h);
    return id;
  }
  std::vector<bool> ticks() const {
    std::vector<bool> t;
    for (const auto& row : import->profileFileList) t.push_back(row.selected);
    return t;
  }
  std::unique_ptr<clsImportProfileT1> import;
  PracticeImportDuplicates duplicates{PracticeImportDuplicates::Contact};
};

TEST_F(ProfileT1ImportTest, FieldListsAsWritten) {
  const ProfileFieldLists& lists = createFieldList();
  EXPECT_EQ(lists.client.size(), 26u + 33u);
  EXPECT_EQ(lists.spouse.size(), 22u + 4u);
  EXPECT_EQ(lists.client[15].key, "SpouseFirstname");
  EXPECT_EQ(lists.client[26 + 17].format, "None '");
  EXPECT_EQ(lists.spouse[23].column5, "0");
  EXPECT_EQ(lists.spouse[23].column4, "EmploymentIncome");
}

TEST_F(ProfileT1ImportTest, ClientWithMarksAndReturnRow) {
  auto fields = taxpayer("046454286", "Ada", "Birch");
  fields.insert({{"ClientTitle", "Ms."},
                 {"ClientAddress", "12 Elm St"},
                 {"ClientApt", "4"},
                 {"ClientRR", "2"},
                 {"ClientBirthDate", "1961-04-23"},
                 {"ClientMaritalStatus", "7"},
                 {"ClientGender", "2"},
                 {"T1Info.B[24]", "1"},
                 {"T1Info.S[23]", "ada@example.com"},
                 {"Line101", "52000.00"},
                 {"Line349", "0.00"},
                 {"line139", "900.00"},
                 {"Line330", "-5"},
                 {"Line120", "10.00"},
                 {"Invoice[155]", "120.00"},
                 {"Invoice[157]", "6.00"},
                 {"T1[48]", "300"},
                 {"T1[51]", "300"},
                 {"T1Info.S[13]", "R. Preparer"}});
  std::string path = writeReturn("birch.16T", 2016, fields);
  add(path);
  import->chkOption[0] = import->chkOption[27] = import->chkOption[17] = true;
  import->chkOption[26] = true;  // Line330 negative: no mark
  // Option 7 (Line120) unticked: its amount is tried on the contact and ignored.
  EXPECT_TRUE(import->importProfileT1Files(false));

  long id = idOf("Birch", "Ada");
  ASSERT_GT(id, 0);
  EXPECT_EQ(contact("ContactID=" + std::to_string(id), "HomeAddress"), "12 Elm St, Apt. 4, R.R. 2");
  EXPECT_EQ(contact("ContactID=" + std::to_string(id), "SocialInsuranceNumber"), "046454286");
  EXPECT_EQ(contact("ContactID=" + std::to_string(id), "Gender"), "Female");
  EXPECT_EQ(contact("ContactID=" + std::to_string(id), "SpokenLanguage"), "French");
  EXPECT_EQ(contact("ContactID=" + std::to_string(id), "BusinessEmail"), "ada@example.com");
  EXPECT_THAT(contact("ContactID=" + std::to_string(id), "Birthday"),
              ::testing::StartsWith("1961-04-23"));
  // Marital status 7 formats to blank, and blank stays out of the record.
  EXPECT_EQ(contact("ContactID=" + std::to_string(id), "MaritialStatus"), "<null>");
  EXPECT_EQ(status(id, "EmploymentIncome"), "True");
  EXPECT_NE(status(id, "CharitableDonations"), "True");
  EXPECT_NE(status(id, "SelfEmploymentCommission"), "True");
  EXPECT_NE(status(id, "MedicalExpenses"), "True");
  EXPECT_NE(status(id, "Dividends"), "True");
  EXPECT_EQ(status(id, "ContactPersonalTaxDisplayType"), "1");

  const std::string info =
      "SELECT * FROM PersonalTaxProfileInfo WHERE TaxYear=2025 AND ContactNum=" +
      std::to_string(id);
  EXPECT_EQ(value(info, "ProfileFileLocation").toString(), path);
  EXPECT_DOUBLE_EQ(value(info, "Revenue").toDouble(), 120.0);
  EXPECT_EQ(value(info, "Discounted").toString(), "False");
  EXPECT_EQ(value(info, "T5007").toString(), "True");
  EXPECT_EQ(value(info, "PreparerName").toString(), "R. Preparer");
}

TEST_F(ProfileT1ImportTest, CoupleChoicesAndTheirLinks) {
  auto couple = [&](const std::string& name, const std::string& b10, const std::string& b23) {
    auto fields = taxpayer("046454286", "Tom", name);
    fields.insert({{"SpouseFirstname", "Mia"},
                   {"SpouseLastName", name},
                   {"SpouseSIN", "527000145"},
                   {"T1Info.B[10]", b10},
                   {"T1Info.B[23]", b23},
                   {"Line101", "1.00"}});
    return writeReturn(name + ".16T", 2016, fields);
  };
  add(couple("Hill", "1", "1"));
  add(couple("Oak", "3", "1"));
  import->chkOption[0] = true;
  import->optCouplesReturn = 0;
  import->importProfileT1Files(false);

  long tom = idOf("Hill", "Tom"), mia = idOf("Hill", "Mia");
  ASSERT_GT(tom, 0);
  ASSERT_GT(mia, 0);
  EXPECT_EQ(contact("ContactID=" + std::to_string(mia), "SocialInsuranceNumber"), "527000145");
  EXPECT_EQ(contact("ContactID=" + std::to_string(mia), "SpouseName"), "Tom Hill");
  EXPECT_EQ(contact("ContactID=" + std::to_string(tom), "SpouseName"), "Mia Hill");
  EXPECT_EQ(value("SELECT * FROM ContactLinks WHERE ContactIDNum=" + std::to_string(mia) +
                      " AND ContactNum=" + std::to_string(tom),
                  "FamilyRelationship")
                .toString(),
            "Husband");
  EXPECT_EQ(value("SELECT * FROM ContactLinks WHERE ContactIDNum=" + std::to_string(tom) +
                      " AND ContactNum=" + std::to_string(mia),
                  "FamilyRelationship")
                .toString(),
            "Wife");
  // The return's row is the client's: the spouse's row, made with the personal-tax client,
  // stays empty.
  EXPECT_EQ(value("SELECT * FROM PersonalTaxProfileInfo WHERE ContactNum=" + std::to_string(tom),
                  "ProfileFileLocation")
                .toString(),
            (folder / "Hill.16T").string());
  EXPECT_TRUE(value("SELECT * FROM PersonalTaxProfileInfo WHERE ContactNum=" + std::to_string(mia),
                    "ProfileFileLocation")
                  .isNull());
  // T1Info.B[10] = 3: both contacts, no link between them.
  long oakTom = idOf("Oak", "Tom"), oakMia = idOf("Oak", "Mia");
  ASSERT_GT(oakMia, 0);
  EXPECT_EQ(count("SELECT * FROM ContactLinks WHERE ContactIDNum=" + std::to_string(oakMia) +
                  " AND ContactNum=" + std::to_string(oakTom)),
            0);
}

TEST_F(ProfileT1ImportTest, PrimaryOnlyAndOneContactChoices) {
  auto fields = taxpayer("046454286", "Tom", "Pine");
  fields.insert({{"SpouseFirstname", "Mia"}, {"SpouseLastName", "Pine"}, {"T1Info.B[10]", "1"}});
  add(writeReturn("pine.16T", 2016, fields));
  import->optCouplesReturn = 2;
  import->importProfileT1Files(false);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Pine'"), 1);
  long tom = idOf("Pine", "Tom");
  EXPECT_EQ(status(tom, "ContactPersonalTaxDisplayType"), "2");
  EXPECT_EQ(contact("ContactID=" + std::to_string(tom), "SpouseFirstName"), "Mia");

  // The primary only, but the business on the return brings the spouse in all the same.
  fields["T2125.S[1,3]"] = "Pine Bakery";
  fields["ClientLastName"] = fields["SpouseLastName"] = "Fir";
  import->profileFileList.clear();
  add(writeReturn("fir.16T", 2016, fields));
  import->optCouplesReturn = 1;
  import->chkImprtBusinessInformation = true;
  import->importProfileT1Files(false);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Fir'"), 2);
}

TEST_F(ProfileT1ImportTest, SecondFileOfAClientFindsTheFirstThroughTheDuplicatesControl) {
  duplicates.setCheckingOn(true);
  duplicates.setMatchBy(kMatchBySIN);
  duplicates.setAction(kDuplicateAsk);
  import->contactDuplicatesControl = &duplicates;
  add(writeReturn("a.15T", 2015, taxpayer("046454286", "Ada", "Birch")));
  add(writeReturn("b.16T", 2016, taxpayer("046 454 286", "Ada", "Birch")));
  messages.answers = {kAnswerYes};
  import->importProfileT1Files(false);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Birch'"), 1);
  ASSERT_EQ(messages.asked.size(), 1u);
  EXPECT_EQ(messages.asked[0].text,
            "Ledgerfolio has found that there is already a client named 'Ada Birch'.  Do you "
            "want to update this client?");
}

TEST_F(ProfileT1ImportTest, RememberedFolderOnlyWhileItExists) {
  EXPECT_EQ(import->folderString(), "/");  // nothing stored: the root of the system drive
  import->setFolderString(folder.string());
  EXPECT_EQ(import->folderString(), folder.string());
  EXPECT_EQ(
      value("SELECT * FROM UserGeneralSettings WHERE UserIDNum=1", "ProfileT1Folder").toString(),
      folder.string());
  import->setFolderString((folder / "gone").string());
  EXPECT_EQ(import->folderString(), "/");
}

TEST_F(ProfileT1ImportTest, SelectionOptionsAddUpAndNeverNarrow) {
  add(writeReturn("known.15T", 2015, taxpayer("046454286", "Ada", "Birch")));
  add(writeReturn("new.15T", 2015, taxpayer("527000145", "Ben", "Cedar")));
  add(writeReturn("known.16T", 2016, taxpayer("046454286", "Ada", "Birch")));
  add(writeReturn("later.16T", 2016, {}));  // blank SIN
  std::filesystem::copy_file(folder / "new.15T", folder / "later.17T");
  add((folder / "later.17T").string());
  long ada = addNewContactForTest("Ada Birch", "046 454 286");
  ASSERT_GT(ada, 0);
  duplicates.setCheckingOn(true);
  import->contactDuplicatesControl = &duplicates;

  // Neither option: nothing changes.
  import->selectAllProfileFiles(false);
  import->selectSpecificProfileT1Files(false);
  EXPECT_THAT(ticks(), ElementsAre(false, false, false, false, false));

  import->selectOnlySpecificTaxYearFlag = true;
  import->specificTaxYearSelection = 2016;
  import->selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = true;
  import->selectSpecificProfileT1Files(false);
  EXPECT_THAT(ticks(), ElementsAre(false, true, true, true, false));
  EXPECT_EQ(import->profileFileList[1].sin, "527 000 145");
  EXPECT_EQ(import->profileFileList[4].taxYear, 0);  // a 17T file is never analysed

  // The year alone on a folder of another year unticks everything.
  import->selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = false;
  import->specificTaxYearSelection = 2014;
  import->selectSpecificProfileT1Files(false);
  EXPECT_THAT(ticks(), ElementsAre(false, false, false, false, false));
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Cedar'"), 0);  // analysis writes nothing
}

}  // namespace
}  // namespace lf::testing
