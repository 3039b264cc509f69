// Opening Profile returns through the stand-in: every outcome of the personal and corporate
// opens, with the messages the user sees.
#include "tax/profile_automation_layer.hpp"

#include <gmock/gmock.h>

#include <fstream>

#include "tax/profile_file_lock.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Records the SIN of every personal return the action receives, and its spouse's.
class RecordingT1Layer : public ProfileAutomationLayer {
 public:
  RecordingT1Layer() : ProfileAutomationLayer(Family::T1) {}
  std::vector<std::string> opened;

 protected:
  void runProfileFileAction(const std::string&, ProfileFile&, ProfileClient& client,
                            ProfileClient* second) override {
    std::string text = client.Field("ClientSIN").toString();
    if (second != nullptr) text += "+" + second->Field("ClientSIN").toString();
    opened.push_back(text);
  }
};

const std::string kNotInstalled =
    "Ledgerfolio could not initialize Profile on this computer.  Make sure you have Profile "
    "initialized and installed on this computer.";

class ProfileOpenTest : public ProfileTest {
 protected:
  RecordingT1Layer layer;
  ScriptedPasswordForm form;
  void SetUp() override {
    ProfileTest::SetUp();
    layer.setPasswordForm(&form);
  }
};

TEST_F(ProfileOpenTest, EveryYearOfTheTableOpensWithItsOwnObject) {
  for (const ProfileT1YearRow& row : profileT1YearTable()) {
    std::string path = writeReturn("client." + std::string(row.extension), row.year,
                                   {{"ClientSIN", std::to_string(row.year)}});
    layer.openProfileT1File(path, true);
  }
  ASSERT_EQ(layer.opened.size(), 13u);
  EXPECT_EQ(layer.opened.front(), "2016");
  EXPECT_EQ(layer.opened.back(), "2004");
  EXPECT_THAT(shownTexts(), IsEmpty());
}

TEST_F(ProfileOpenTest, LowerCaseExtensionOpensAndUnknownYearsPassSilently) {
  layer.openProfileT1File(writeReturn("lower.16t", 2016, {{"ClientSIN", "1"}}), true);
  // A 17T file exists but no object opens it; "T1" is no year at all.
  std::string seventeen = (folder / "later.17T").string();
  std::filesystem::copy_file(folder / "lower.16t", seventeen);
  layer.openProfileT1File(seventeen, true);
  layer.openProfileT1File((folder / "other.T1").string(), true);
  EXPECT_THAT(layer.opened, ElementsAre("1"));
  EXPECT_THAT(shownTexts(), IsEmpty());
  EXPECT_EQ(profileT1YearOfExtension("09t")->progID, "Profile.T2009T1File");
  EXPECT_EQ(profileT1YearOfExtension("17T"), nullptr);
}

TEST_F(ProfileOpenTest, CoupledReturnHandsBothClients) {
  layer.openProfileT1File(
      writeReturn("couple.15T", 2015, {{"ClientSIN", "046454286"}}, "",
                  std::map<std::string, std::string>{{"ClientSIN", "527000145"}}),
      true);
  EXPECT_THAT(layer.opened, ElementsAre("046454286+527000145"));
}

TEST_F(ProfileOpenTest, NotInstalledSaysSoAndOpensNothing) {
  install(std::set<std::string>{"Profile.T2015T1File"});
  layer.openProfileT1File(writeReturn("a.16T", 2016, {}), true);
  EXPECT_THAT(layer.opened, IsEmpty());
  EXPECT_THAT(shownTexts(), ElementsAre(kNotInstalled));

  bool result = true;
  ProfileAutomationLayer t2(ProfileAutomationLayer::Family::T2);
  t2.testProfileInstallationAndRegistration(result);
  EXPECT_FALSE(result);
  install();
  t2.testProfileInstallationAndRegistration(result);
  EXPECT_TRUE(result);
  EXPECT_EQ(messages.shown.size(), 2u);
}

TEST_F(ProfileOpenTest, WrongPasswordAsksAgainUntilTheRightOne) {
  std::string path = writeReturn("locked.16T", 2016, {{"ClientSIN", "7"}}, "s3cret");
  form.answers = {{"wrong", false}, {"s3cret", false}};
  layer.openProfileT1File(path, true);
  EXPECT_THAT(layer.opened, ElementsAre("7"));
  EXPECT_THAT(shownTexts(),
              ElementsAre("The password you have entered is incorrect.  Please try again."));
  ASSERT_EQ(form.asked.size(), 2u);
  EXPECT_EQ(form.asked[0],
            "Enter Profile Password|Password:|The Profile file 'locked.16T' is is a password "
            "protected Profile file.\n\nEnter the password and then click 'Ok', or click "
            "'Cancel' to continue without opening this file.");
  EXPECT_THAT(layer.rememberedPasswords(), IsEmpty());
}

TEST_F(ProfileOpenTest, RememberedPasswordOpensTheNextFileWithoutAQuestion) {
  std::string first = writeReturn("one.16T", 2016, {{"ClientSIN", "1"}}, "pw");
  std::string second = writeReturn("two.14T", 2014, {{"ClientSIN", "2"}}, "pw");
  form.answers = {{"pw", true}};
  layer.openProfileT1File(first, true);
  layer.openProfileT1File(second, true);
  EXPECT_THAT(layer.opened, ElementsAre("1", "2"));
  EXPECT_EQ(form.asked.size(), 1u);
  EXPECT_THAT(layer.rememberedPasswords(), ElementsAre("pw"));
}

TEST_F(ProfileOpenTest, CancelEndsTheFileWithoutAMessageAndTheNextOpens) {
  std::string locked = writeReturn("locked.16T", 2016, {{"ClientSIN", "1"}}, "pw");
  std::string open = writeReturn("open.16T", 2016, {{"ClientSIN", "2"}});
  layer.openProfileT1File(locked, true);  // the form's queue is empty: Cancel
  layer.openProfileT1File(open, true);
  EXPECT_THAT(layer.opened, ElementsAre("2"));
  EXPECT_THAT(shownTexts(), IsEmpty());
  EXPECT_EQ(form.asked.size(), 1u);
}

TEST_F(ProfileOpenTest, FileInUseAndDamagedFileEachCostOneMessage) {
  std::string busy = writeReturn("busy.16T", 2016, {{"ClientSIN", "1"}});
  ProfileFileLock otherUser;
  ASSERT_TRUE(otherUser.acquire(busy));
  layer.openProfileT1File(busy, true);
  otherUser.release();

  std::string damaged = (folder / "damaged.13T").string();
  std::ofstream(damaged) << "{\"format\": \"Profile return\", \"kind\": \"T1\"";
  layer.openProfileT1File(damaged, true);
  // A file of another year under this year's extension is as foreign as a damaged one.
  layer.openProfileT1File(writeReturn("wrongyear.12T", 2011, {}), true);

  EXPECT_THAT(layer.opened, IsEmpty());
  EXPECT_THAT(
      shownTexts(),
      ElementsAre("Ledgerfolio could not open the Profile file 'busy.16T' because this file may "
                  "be in use by another user.",
                  "There was an unknown error while trying to opening the Profile file "
                  "'damaged.13T'.  Ledgerfolio could not open this file.",
                  "There was an unknown error while trying to opening the Profile file "
                  "'wrongyear.12T'.  Ledgerfolio could not open this file."));
}

class ProfileT2OpenTest : public ProfileTest {
 protected:
  ProfileAutomationLayer layer{ProfileAutomationLayer::Family::T2};
  ScriptedPasswordForm form;
  std::unique_ptr<ProfileFile> file;
  std::shared_ptr<ProfileClient> client;
};

TEST_F(ProfileT2OpenTest, OneObjectServesEveryFileOfTheRun) {
  std::string a = writeReturn("a.GT2", 2015, {{"CorpName", "Birch Ltd"}}, "", {}, "T2");
  std::string b = writeReturn("b.gt2", 2009, {{"CorpName", "Cedar Inc"}}, "", {}, "T2");
  layer.openProfileT2File(a, file, client);
  ProfileFile* first = file.get();
  ASSERT_TRUE(client);
  EXPECT_EQ(client->Field("CorpName").toString(), "Birch Ltd");
  layer.openProfileT2File(b, file, client);
  EXPECT_EQ(file.get(), first);
  ASSERT_TRUE(client);
  EXPECT_EQ(client->Field("CorpName").toString(), "Cedar Inc");
  layer.closeProfileT2File(file, client);
  EXPECT_FALSE(file);
  EXPECT_FALSE(client);
  EXPECT_THAT(shownTexts(), IsEmpty());
}

TEST_F(ProfileT2OpenTest, PasswordThenDamagedThenNotInstalled) {
  layer.setPasswordForm(&form);
  form.answers = {{"corp", false}};
  layer.openProfileT2File(writeReturn("p.GT2", 2016, {{"CorpName", "Pine"}}, "corp", {}, "T2"),
                          file, client);
  ASSERT_TRUE(client);
  EXPECT_EQ(client->Field("CorpName").toString(), "Pine");

  // A damaged file: ten tries for its client, then the one message.
  std::string damaged = (folder / "d.GT2").string();
  std::ofstream(damaged) << "not a return";
  layer.openProfileT2File(damaged, file, client);
  EXPECT_FALSE(client);
  EXPECT_THAT(shownTexts(), ElementsAre("There was an unknown error while trying to opening the "
                                        "Profile file 'd.GT2'.  Ledgerfolio could not open this "
                                        "file."));

  layer.closeProfileT2File(file, client);
  install(std::set<std::string>{});
  layer.openProfileT2File(damaged, file, client);
  EXPECT_FALSE(file);
  EXPECT_EQ(shownTexts().back(), kNotInstalled);
}

}  // namespace
}  // namespace lf::testing
