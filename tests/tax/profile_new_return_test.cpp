// A new Profile return for a client: the blank return of the year copied into the save-to
// folder and handed to Profile, then the three endings of the wait (connected, timed out,
// cancelled) with a clock that the test moves.
#include <gmock/gmock.h>

#include <filesystem>

#include "records/contact_records.hpp"
#include "tax/profile_file_locations.hpp"
#include "tax/profile_t1_import.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

class ProfileNewReturnTest : public ProfileTest {
 protected:
  void SetUp() override {
    ProfileTest::SetUp();
    app = locale->getApplicationName();
    contact = addNewContact("Ada Birch", -1, -1);
    std::int32_t h = db->openRecordset(
        "SELECT Contacts.* FROM Contacts WHERE ContactID=" + std::to_string(contact) + ";",
        kCursorKeyset, kLockOptimistic);
    db->setField(h, "SocialInsuranceNumber", "046454286");
    db->setField(h, "HomeCity", "Kingston");
    db->closeRecordset(h);

    saveTo = (folder / "returns").string();
    fs::create_directories(saveTo);
    profile = std::make_unique<clsImportProfileT1>();
    profile->workingFolder = (folder / "work").string();
    profile->askProfileTaxYear = [this] { return year; };
    profile->browseForFolder = [this](const std::string& title) -> std::optional<std::string> {
      browsed.push_back(title);
      return saveTo;
    };
    profile->openDocument = [this](const std::string& path) -> long {
      factory->product().openInProduct(path);
      return 42;
    };
    // The clock moves a second at each look, so 20 seconds pass in a few polls.
    profile->waitClock = [this] { return std::chrono::steady_clock::time_point{} + ++seconds; };
    profile->betweenPolls = [this] { ++polls; };
  }
  std::string finalPath() const {
    return (fs::path(saveTo) / (dropDown->getContactName(contact) + ".16T")).string();
  }
  bool temporaryTemplateGone() const {
    return !fs::exists(folder / "work" / "Temp" / "Template.16T");
  }

  std::unique_ptr<clsImportProfileT1> profile;
  std::string app;
  std::string saveTo;
  long contact = 0;
  long year = 2016;
  std::vector<std::string> browsed;
  std::chrono::seconds seconds{0};
  int polls = 0;
};

TEST_F(ProfileNewReturnTest, ConnectedReturnIsFilledInAndStoredUnderTheClientsName) {
  factory->product().setDelay(std::chrono::milliseconds(0));
  profile->createNewProfileReturn(contact);

  EXPECT_EQ(profile->newProfileFileEnding(), NewProfileFileEnding::Connected);
  EXPECT_TRUE(profile->newProfileFileCreated());
  // The save-to folder was asked for once, and kept for the year.
  EXPECT_THAT(browsed, ElementsAre("Select the folder where you want " + app +
                                   " to save the 2016 Profile T1 files to"));
  EXPECT_EQ(getProfileT1SaveToFolder(2016), saveTo);
  // Profile opened the copy of the blank return; the client's return is written beside it.
  EXPECT_TRUE(fs::exists(fs::path(saveTo) / "Template.16T"));
  ProfileReturn written = loadProfileReturnFile(finalPath());
  EXPECT_EQ(written.year, 2016);
  EXPECT_EQ(written.primary.fields["ClientFirstName"], "Ada");
  EXPECT_EQ(written.primary.fields["ClientLastName"], "Birch");
  EXPECT_EQ(written.primary.fields["ClientSIN"], "046454286");
  EXPECT_EQ(written.primary.fields["T1Info.S[8]"], "Kingston");
  EXPECT_EQ(getProfileFileLocationFromContactID(contact, 2016), finalPath());
  EXPECT_THAT(shownTexts(), ElementsAre("The profile file was updated successfully.",
                                        "The profile file was created successfully."));
  EXPECT_TRUE(temporaryTemplateGone());
}

TEST_F(ProfileNewReturnTest, ProfileThatNeverShowsTheReturnTimesOutAfterTwentySeconds) {
  factory->product().setDelay(std::nullopt);
  profile->createNewProfileReturn(contact);

  EXPECT_EQ(profile->newProfileFileEnding(), NewProfileFileEnding::TimedOut);
  EXPECT_EQ(seconds, std::chrono::seconds(22));  // the start, then a look each second past 20
  EXPECT_EQ(polls, 20);
  EXPECT_THAT(shownTexts(),
              ElementsAre("The connection between " + app + " and Profile has timed out.  " + app +
                          " was not able to connect to the new Profile file."));
  EXPECT_FALSE(fs::exists(finalPath()));
  EXPECT_EQ(getProfileFileLocationFromContactID(contact, 2016), "");
  EXPECT_TRUE(temporaryTemplateGone());
}

TEST_F(ProfileNewReturnTest, CancelEndsTheWait) {
  factory->product().setDelay(std::nullopt);
  profile->betweenPolls = [this] {
    if (++polls == 3) profile->newProfileFileDialog_ButtonClicked();
  };
  profile->createNewProfileReturn(contact);

  EXPECT_EQ(profile->newProfileFileEnding(), NewProfileFileEnding::Cancelled);
  EXPECT_EQ(polls, 3);
  EXPECT_THAT(shownTexts(), ElementsAre(app + " was not able to connect to the new Profile file."));
  EXPECT_FALSE(fs::exists(finalPath()));
  EXPECT_TRUE(temporaryTemplateGone());
}

TEST_F(ProfileNewReturnTest, EarlyYearsAndAKeptAnswerNoEndQuietly) {
  year = 2003;
  profile->createNewProfileReturn(contact);
  EXPECT_TRUE(messages.asked.empty());
  EXPECT_TRUE(shownTexts().empty());

  year = 2016;
  storeProfileFileLocation(contact, 2016, "/nowhere/ada.16T");
  messages.answers = {kAnswerNo};
  profile->createNewProfileReturn(contact);
  EXPECT_THAT(messages.asked[0].text,
              ::testing::StartsWith("There is already a Profile file of '/nowhere/ada.16T' "
                                    "associated with this client for the 2016 tax year.\r\n\r\n"
                                    "However, the Profile file could not be found."));
  EXPECT_TRUE(browsed.empty());
  EXPECT_EQ(profile->newProfileFileEnding(), NewProfileFileEnding::None);
}

}  // namespace
}  // namespace lf::testing
