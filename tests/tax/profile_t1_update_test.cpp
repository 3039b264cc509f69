// Writing a contact into their Profile return: the file-location questions, the SIN and
// spouse-SIN comparisons, the write table with blanks that never erase, and the return's row
// of PersonalTaxProfileInfo afterwards.
#include <gmock/gmock.h>

#include "host/file_dialog.hpp"
#include "records/contact_records.hpp"
#include "tax/profile_file_locations.hpp"
#include "tax/profile_t1_import.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class ProfileT1UpdateTest : public ProfileTest {
 protected:
  void SetUp() override {
    ProfileTest::SetUp();
    profile = std::make_unique<clsImportProfileT1>();
    app = locale->getApplicationName();
  }
  // A contact with the given columns.
  long contactWith(const std::map<std::string, std::string>& columns) {
    long id = addNewContact("Ada Birch", -1, -1);
    std::int32_t h = db->openRecordset(
        "SELECT Contacts.* FROM Contacts WHERE ContactID=" + std::to_string(id) + ";",
        kCursorKeyset, kLockOptimistic);
    for (const auto& [column, text] : columns) db->setField(h, column, text);
    db->closeRecordset(h);
    return id;
  }
  // A 2016 return whose location is stored for the contact.
  std::string storedReturn(long contact, std::map<std::string, std::string> fields,
                           std::optional<std::map<std::string, std::string>> spouse = {}) {
    std::string path = writeReturn("birch.16T", 2016, std::move(fields), {}, std::move(spouse));
    storeProfileFileLocation(contact, 2016, path);
    return path;
  }
  std::map<std::string, std::string> fieldsOf(const std::string& path) {
    return loadProfileReturnFile(path).primary.fields;
  }
  std::vector<std::string> askedTexts() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages.asked) texts.push_back(entry.text);
    return texts;
  }

  std::unique_ptr<clsImportProfileT1> profile;
  std::string app;
};

TEST_F(ProfileT1UpdateTest, ContactIsWrittenOverTheReturnAndBlanksNeverErase) {
  long id = contactWith({{"NamePrefix", "Dr."},
                         {"FirstName", "Ada"},
                         {"MiddleName", "May"},
                         {"LastName", "Birch"},
                         {"HomeAddress", "12 Elm St"},
                         {"HomeProvince", "ON"},
                         {"Gender", "Female"},
                         {"MaritialStatus", "Common Law"},
                         {"Birthday", "1970-03-04"},
                         {"SocialInsuranceNumber", "046454286"},
                         {"SpouseFirstName", "Ben"},
                         {"SpouseLastName", "Birch"}});
  std::string path = storedReturn(id, {{"ClientSIN", "046 454 286"},
                                       {"ClientLastName", "Burch"},
                                       {"T1Info.S[8]", "Oldtown"},
                                       {"T1Info.S[11]", "555-0100"},
                                       {"SpouseCity", "Oldtown"},
                                       {"T1[48]", "10"},
                                       {"T1[51]", "10"}});

  EXPECT_EQ(profile->updateProfile(id, 2016), ProfileUpdateStatus::Updated);

  // The SINs are equal after clean-up: the only question is the file's.
  EXPECT_THAT(askedTexts(),
              ElementsAre("The file we last used for this client was '" + path +
                          "'.\r\n\r\nIs this the file you want associated with this client for "
                          "the 2016 tax year?  If you click 'No'm you can specify the correct "
                          "file location."));
  auto fields = fieldsOf(path);
  EXPECT_EQ(fields["ClientTitle"], "Dr.");
  EXPECT_EQ(fields["ClientFirstName"], "Ada May");
  EXPECT_EQ(fields["ClientLastName"], "Birch");
  EXPECT_EQ(fields["T1Info.S[7]"], "12 Elm St");
  EXPECT_EQ(fields["T1Info.S[9]"], "ON");
  EXPECT_EQ(fields["ClientGender"], "2");
  EXPECT_EQ(fields["ClientMaritalStatus"], "2");
  EXPECT_EQ(fields["ClientBirthDate"], "3/4/1970");
  EXPECT_EQ(fields["ClientSIN"], "046454286");
  EXPECT_EQ(fields["SpouseFirstName"], "Ben");
  // What Ledgerfolio leaves blank stays as Profile has it.
  EXPECT_EQ(fields["T1Info.S[8]"], "Oldtown");
  EXPECT_EQ(fields["T1Info.S[11]"], "555-0100");
  EXPECT_EQ(fields["SpouseCity"], "Oldtown");
  EXPECT_EQ(fields.count("SpouseBirthDate"), 0u);

  const std::string row =
      "SELECT * FROM PersonalTaxProfileInfo WHERE TaxYear=2016 AND ContactNum=" +
      std::to_string(id);
  EXPECT_EQ(count(row), 1);
  EXPECT_EQ(value(row, "ProfileFileLocation").toString(), path);
  EXPECT_TRUE(value(row, "T5007").toBool());
  EXPECT_THAT(shownTexts(), ElementsAre("The profile file was updated successfully."));
}

TEST_F(ProfileT1UpdateTest, OtherWordsAndABlankMiddleNameWriteNothingExtra) {
  long id = contactWith({{"FirstName", "Ada"},
                         {"Gender", "Unknown"},
                         {"MaritialStatus", "Engaged"},
                         {"SpouseFirstName", "Ben"},
                         {"SpouseMiddleName", "Lee"}});
  std::string path = storedReturn(id, {{"ClientGender", "1"}, {"ClientMaritalStatus", "6"}});
  EXPECT_EQ(profile->updateProfile(id, 2016), ProfileUpdateStatus::Updated);
  auto fields = fieldsOf(path);
  EXPECT_EQ(fields["ClientFirstName"], "Ada");
  EXPECT_EQ(fields["ClientGender"], "1");
  EXPECT_EQ(fields["ClientMaritalStatus"], "6");
  EXPECT_EQ(fields["SpouseFirstName"], "Ben Lee");
}

TEST_F(ProfileT1UpdateTest, SinsFillEachOtherAndADifferenceIsAsked) {
  // The return has none: it takes the contact's.
  long first = contactWith({{"SocialInsuranceNumber", "046454286"}});
  std::string path = storedReturn(first, {{"ClientFirstName", "Ada"}});
  EXPECT_EQ(profile->updateProfile(first, 2016), ProfileUpdateStatus::Updated);
  EXPECT_EQ(fieldsOf(path)["ClientSIN"], "046454286");

  // The contact has none: it takes the return's, cleaned.
  long second = contactWith({{"FirstName", "Ada"}});
  path = storedReturn(second, {{"ClientSIN", "046454286"}, {"SpouseSIN", "130692544"}});
  EXPECT_EQ(profile->updateProfile(second, 2016), ProfileUpdateStatus::Updated);
  const std::string where = "SELECT * FROM Contacts WHERE ContactID=" + std::to_string(second);
  EXPECT_EQ(value(where, "SocialInsuranceNumber").toString(), "046 454 286");
  EXPECT_EQ(value(where, "SpouseSIN").toString(), "130 692 544");
  EXPECT_EQ(messages.asked.size(), 2u);  // the two file questions only

  // Different numbers: answered No, the return is left as it was.
  messages.asked.clear();
  messages.shown.clear();
  long third = contactWith({{"SocialInsuranceNumber", "046454286"}, {"LastName", "Birch"}});
  path = storedReturn(third, {{"ClientSIN", "130692544"}, {"ClientLastName", "Burch"}});
  messages.answers = {kAnswerYes, kAnswerNo};
  EXPECT_EQ(profile->updateProfile(third, 2016), ProfileUpdateStatus::Stopped);
  ASSERT_EQ(messages.asked.size(), 2u);
  EXPECT_EQ(messages.asked[1].text,
            "The SIN numbers between " + app +
                " ('046454286') and Profile ('130692544') don't match.\r\n\r\nThe Profile file "
                "being accessed is '" +
                path + "'\r\n\r\nAre you sure you want to continue updating this Profile file " +
                "with the information from " + app + "?");
  EXPECT_EQ(fieldsOf(path)["ClientLastName"], "Burch");
  EXPECT_TRUE(shownTexts().empty());
}

TEST_F(ProfileT1UpdateTest, DifferentSpouseSinAnsweredYesGoesOn) {
  long id = contactWith({{"SpouseSIN", "046454286"}, {"SpouseLastName", "Birch"}});
  std::string path = storedReturn(id, {{"SpouseSIN", "130692544"}});
  EXPECT_EQ(profile->updateProfile(id, 2016), ProfileUpdateStatus::Updated);
  ASSERT_EQ(messages.asked.size(), 2u);
  EXPECT_THAT(messages.asked[1].text,
              HasSubstr("The spouse SIN numbers between " + app +
                        " ('046454286') and Profile ('130692544') don't match."));
  EXPECT_EQ(fieldsOf(path)["SpouseLastName"], "Birch");
}

TEST_F(ProfileT1UpdateTest, WithoutAKnownFileTheUserIsAskedWhereItIs) {
  long id = contactWith({{"LastName", "Birch"}});
  std::string path = writeReturn("ada.16T", 2016, {{"ClientLastName", "Burch"}});

  // Nothing stored, and No: nothing happens.
  messages.answers = {kAnswerNo};
  EXPECT_EQ(profile->updateProfile(id, 2016), ProfileUpdateStatus::Stopped);
  EXPECT_THAT(askedTexts(),
              ElementsAre("There is no file currently associated with this client in " + app +
                          " for the 2016 tax year.  Do you want to specify the Profile file "
                          "location now?\r\n\r\nNote: " +
                          app +
                          " will automtically record the file location if you import this "
                          "client from the 2016 Profile using our import wizard."));

  // Yes, and the dialog's file is stored (a new row) and written.
  PresetFileDialog dialog(path);
  profile->profileFileDialog = &dialog;
  EXPECT_EQ(profile->updateProfile(id, 2016), ProfileUpdateStatus::Updated);
  EXPECT_EQ(dialog.title(), "Select the 2016 Profile file for " + dropDown->getContactName(id));
  EXPECT_EQ(getProfileFileLocationFromContactID(id, 2016), path);
  EXPECT_EQ(fieldsOf(path)["ClientLastName"], "Birch");

  // A stored file that is gone: the other words, and No again stops.
  messages.asked.clear();
  putProfileFileLocationFromContactID(id, 2016, path + ".gone");
  messages.answers = {kAnswerNo};
  EXPECT_EQ(profile->updateProfile(id, 2016), ProfileUpdateStatus::Stopped);
  EXPECT_THAT(askedTexts()[0], ::testing::StartsWith("The file '" + path +
                                                     ".gone' associated with this client for "
                                                     "the 2016 tax year could not be found."));
}

TEST_F(ProfileT1UpdateTest, LocationStoreChangesRowsAndTheSaveToFolderAddsItsYear) {
  putProfileFileLocationFromContactID(7, 2016, "/x.16T");
  EXPECT_EQ(getProfileFileLocationFromContactID(7, 2016), "");  // no row is added
  EXPECT_EQ(getProfileT1SaveToFolder(2016), "");
  EXPECT_EQ(count("SELECT * FROM PersonalTaxDataImportInfo WHERE TaxYear=2016"), 1);
  putProfileT1SaveToFolder("/returns", 2016);
  EXPECT_EQ(getProfileT1SaveToFolder(2016), "/returns");
  EXPECT_EQ(getProfileT1SaveToFolder(2015), "");
}

}  // namespace
}  // namespace lf::testing
