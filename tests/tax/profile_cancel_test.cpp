// Cancel from the command line in the Profile flows: the Yes/No/Cancel question of an update,
// the password question, the year question and the wait for a new return, each cancelled at
// the terminal and from an answers file, checking what is (not) written.
#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>

#include "host/file_dialog.hpp"
#include "host/run_report.hpp"
#include "records/contact_records.hpp"
#include "sync/wizard_answers.hpp"
#include "tax/profile_file_locations.hpp"
#include "tax/profile_new_return_questions.hpp"
#include "tax/profile_t1_import.hpp"
#include "tax/profile_wizard_terminal.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The run's message box as the command line makes it from an answers file's "questions".
std::unique_ptr<TerminalMessageBox> answersBox(const std::string& questions, RunReport& report) {
  return makeAnswersMessageBox(parseWizardAnswers(R"({"questions": )" + questions + "}", ""),
                               &report, nullptr);
}

class ProfileCancelTest : public ProfileTest {
 protected:
  void SetUp() override {
    ProfileTest::SetUp();
    app = locale->getApplicationName();
    contact = addNewContact("Ada Birch", -1, -1);
    profile = std::make_unique<clsImportProfileT1>();
  }
  void use(MessageBox& box) { moduleState().MsgboxClass = &box; }
  std::string answerOf(const RunReport& report, size_t i) {
    return report.questions().at(i)["answer"].get<std::string>();
  }

  std::string app;
  long contact = 0;
  std::unique_ptr<clsImportProfileT1> profile;
  RunReport report;
};

TEST_F(ProfileCancelTest, UpdateQuestionCancelledLeavesTheReturnAndAsksNoFile) {
  const std::string path = writeReturn("birch.16T", 2016, {{"ClientLastName", "Burch"}});
  storeProfileFileLocation(contact, 2016, path);
  PresetFileDialog dialog(path);
  profile->profileFileDialog = &dialog;

  // From the answers file.
  auto box =
      answersBox(R"({"default": "yes", "answers": {"The file we last used": "cancel"}})", report);
  use(*box);
  EXPECT_EQ(profile->updateProfile(contact, 2016), ProfileUpdateStatus::Stopped);
  EXPECT_EQ(answerOf(report, 0), "cancel");
  // At the terminal: "c", and the end of input, which closes the box.
  for (const char* typed : {"maybe\nc\n", ""}) {
    std::istringstream in(typed);
    std::ostringstream out;
    TerminalMessageBox terminal(&report, &out, true);
    terminal.setInput(&in);
    use(terminal);
    EXPECT_EQ(profile->updateProfile(contact, 2016), ProfileUpdateStatus::Stopped);
    EXPECT_THAT(out.str(), ::testing::HasSubstr("[y/n/c]"));
  }
  EXPECT_EQ(answerOf(report, 2), "cancel");
  EXPECT_TRUE(dialog.title().empty());  // the file dialog was never shown
  EXPECT_EQ(loadProfileReturnFile(path).primary.fields["ClientLastName"], "Burch");
}

TEST_F(ProfileCancelTest, CancelOnAYesNoQuestionIsItsNo) {
  auto box =
      answersBox(R"({"default": "yes", "answers": {"no file currently": "cancel"}})", report);
  use(*box);
  PresetFileDialog dialog("/unused.16T");
  profile->profileFileDialog = &dialog;
  EXPECT_EQ(profile->updateProfile(contact, 2016), ProfileUpdateStatus::Stopped);
  EXPECT_EQ(answerOf(report, 0), "no");
  EXPECT_TRUE(dialog.title().empty());

  // A word that is no answer is refused with the field.
  try {
    parseWizardAnswers(R"({"questions": {"answers": {"x": "later"}}})", "");
    ADD_FAILURE() << "read";
  } catch (const Failure& f) {
    EXPECT_STREQ(f.what(), "\"questions.answers.x\" must be \"yes\", \"no\" or \"cancel\"");
  }
}

TEST_F(ProfileCancelTest, PasswordQuestionCancelledSkipsTheFileWithoutAMessage) {
  writeReturn("Pw.16T", 2016, {{"ClientSIN", "123456782"}, {"ClientLastName", "Poplar"}}, "maple");
  writeReturn("Ash.16T", 2016, {{"ClientSIN", "193456787"}, {"ClientLastName", "Ash"}});
  auto runImport = [&](ProfilePasswordForm& form, StageCounters& counters,
                       std::vector<const char*> names) {
    clsImportProfileT1 import;
    import.setPasswordForm(&form);
    import.counters = &counters;
    import.importTaxYear = 2016;
    for (const char* name : names) import.addProfileFileToImportList((folder / name).string());
    import.importProfileT1Files(false);
    return import.rememberedPasswords();
  };

  // The answers file names the file's question; the listed password stays unused.
  auto box = answersBox(R"({"answers": {"'Pw.16T'": "cancel"}})", report);
  use(*box);
  ProfileListedPasswords listed({"maple"});
  StageCounters& answered = report.stage("answers");
  EXPECT_THAT(runImport(listed, answered, {"Ash.16T", "Pw.16T"}), IsEmpty());
  EXPECT_EQ(answerOf(report, 0), "cancel");
  EXPECT_EQ(answered.skipped, 1);
  EXPECT_EQ(answered.failed, 0);
  EXPECT_EQ(answered.skipReasons.count("the password question was cancelled: " +
                                       (folder / "Pw.16T").string()),
            1u);

  // At the terminal "!cancel" is the Cancel button.
  use(messages);
  std::istringstream in("!cancel\n");
  std::ostringstream out;
  ProfilePasswordTerminal terminal(in, out);
  StageCounters typed;
  runImport(terminal, typed, {"Pw.16T"});
  EXPECT_EQ(typed.skipped, 1);
  EXPECT_EQ(typed.failed, 0);

  EXPECT_THAT(shownTexts(), IsEmpty());
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Poplar'"), 0);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Ash'"), 1);
}

TEST_F(ProfileCancelTest, YearQuestionAtTheTerminalAndFromTheAnswers) {
  const std::vector<long> years = profileTaxYearItems();
  EXPECT_EQ(years.front(), 2024);  // the practice's current personal year
  EXPECT_EQ(years.back(), 2004);
  auto typed = [&](const std::string& line) {
    std::istringstream in(line);
    std::ostringstream out;
    long year = askProfileTaxYearAtTerminal(years, in, out);
    EXPECT_THAT(out.str(), ::testing::HasSubstr("Select year for new Profile T1 file:"));
    return year;
  };
  EXPECT_EQ(typed("\n"), 2024);
  EXPECT_EQ(typed("9\n"), 2016);  // the ninth item
  EXPECT_EQ(typed("2003\n"), 2003);
  EXPECT_EQ(typed("cancel\n"), 0);
  EXPECT_EQ(typed(""), 0);

  EXPECT_EQ(askProfileTaxYearFromAnswers(years, std::nullopt), 2024);
  EXPECT_EQ(askProfileTaxYearFromAnswers(years, 2015), 2015);
  auto box = answersBox(R"({"answers": {"Select year for new Profile T1": "cancel"}})", report);
  use(*box);
  EXPECT_EQ(askProfileTaxYearFromAnswers(years, 2015), 0);
  EXPECT_EQ(answerOf(report, 0), "cancel");
}

class ProfileNewReturnCancelTest : public ProfileCancelTest {
 protected:
  void SetUp() override {
    ProfileCancelTest::SetUp();
    saveTo = (folder / "returns").string();
    fs::create_directories(saveTo);
    profile->workingFolder = (folder / "work").string();
    profile->browseForFolder = [this](const std::string&) -> std::optional<std::string> {
      ++browsed;
      return saveTo;
    };
    profile->openDocument = [this](const std::string& path) -> long {
      factory->product().openInProduct(path);
      return 42;
    };
    profile->waitClock = [this] { return std::chrono::steady_clock::time_point{} + ++seconds; };
    factory->product().setDelay(std::nullopt);  // Profile never shows the return
  }
  // Nothing of a new return is left: no copy, no client's file, no stored location.
  void expectNothingWritten() {
    EXPECT_FALSE(fs::exists(fs::path(saveTo) / (dropDown->getContactName(contact) + ".16T")));
    EXPECT_FALSE(fs::exists(folder / "work" / "Temp" / "Template.16T"));
    EXPECT_EQ(getProfileFileLocationFromContactID(contact, 2016), "");
  }

  std::string saveTo;
  int browsed = 0;
  std::chrono::seconds seconds{0};
};

TEST_F(ProfileNewReturnCancelTest, CancelledYearEndsBeforeAnythingIsAsked) {
  std::istringstream in("cancel\n");
  std::ostringstream out;
  profile->askProfileTaxYear = [&] {
    return askProfileTaxYearAtTerminal(profileTaxYearItems(), in, out);
  };
  profile->createNewProfileReturn(contact);
  EXPECT_EQ(profile->newProfileFileEnding(), NewProfileFileEnding::None);
  EXPECT_EQ(browsed, 0);
  EXPECT_THAT(messages.asked, IsEmpty());
  EXPECT_THAT(shownTexts(), IsEmpty());
  expectNothingWritten();
}

TEST_F(ProfileNewReturnCancelTest, WaitCancelledAtTheTerminalOrByTheAnswers) {
  profile->askProfileTaxYear = [] { return 2016L; };
  const std::string notConnected = app + " was not able to connect to the new Profile file.";

  // A line typed while Profile is awaited presses Cancel at the first poll.
  std::istringstream in("\n");
  std::ostringstream out;
  connectNewProfileFileDialogToTerminal(*profile, in, -1, out);
  profile->createNewProfileReturn(contact);
  EXPECT_EQ(profile->newProfileFileEnding(), NewProfileFileEnding::Cancelled);
  EXPECT_EQ(seconds, std::chrono::seconds(2));  // the start and one look
  EXPECT_THAT(out.str(),
              ::testing::HasSubstr("Connecting with Profile, please wait ... (Enter: Cancel)"));
  EXPECT_THAT(shownTexts(), ElementsAre(notConnected));
  expectNothingWritten();

  // The answers press Cancel as the dialog shows: Profile is not polled at all.
  auto box = answersBox(R"({"answers": {"Connecting with Profile": "cancel"}})", report);
  use(*box);
  seconds = std::chrono::seconds(0);
  connectNewProfileFileDialogToAnswers(*profile);
  profile->createNewProfileReturn(contact);
  EXPECT_EQ(profile->newProfileFileEnding(), NewProfileFileEnding::Cancelled);
  EXPECT_EQ(seconds, std::chrono::seconds(1));
  EXPECT_EQ(answerOf(report, 0), "cancel");
  EXPECT_EQ(report.messages().back()["text"], notConnected);
  expectNothingWritten();
}

}  // namespace
}  // namespace lf::testing
