// The two front ends of the TPS wizard: the answers file (parsing, the unattended run over the
// sample export, questions) and the terminal session.
#include "sync/wizard_answers.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "base/failure.hpp"
#include "base/module_state.hpp"
#include "db/database.hpp"
#include "host/run_report.hpp"
#include "host/terminal_message_box.hpp"
#include "sync/sync_wizard_terminal.hpp"
#include "sync/tps_wizard.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

TEST(WizardAnswers, ParsesEveryChoice) {
  const WizardAnswers a = parseWizardAnswers(R"({
    "source": "exports/tps.db",
    "groups": {"contacts": true, "timeEntries": false},
    "businessClients": "all",
    "personalClients": [104, "105"],
    "timeEntries": {"range": "between", "start": "2024-01-01", "end": "2024-06-30", "onlyWIP": false},
    "invoices": {"range": "all"},
    "category": 12,
    "onlyNewEntries": false,
    "questions": {"default": "yes", "answers": {"Robert Chen": "no"}}
  })",
                                             "/data");
  EXPECT_EQ(a.source, "/data/exports/tps.db");
  EXPECT_EQ(a.timeEntries, false);
  EXPECT_FALSE(a.invoices.has_value());
  EXPECT_EQ(a.businessClients.kind, WizardAnswers::ClientChoice::All);
  EXPECT_EQ(a.personalClients.ids, (std::vector<std::string>{"104", "105"}));
  EXPECT_EQ(a.timeEntryDates.rangeType, kSynchBetween);
  EXPECT_EQ(a.timeEntryDates.end, "2024-06-30");
  EXPECT_EQ(a.invoiceDates.useRange, false);
  EXPECT_EQ(a.onlyWIP, false);
  EXPECT_EQ(a.category, 12);

  const auto box = makeAnswersMessageBox(a, nullptr, nullptr);
  EXPECT_EQ(box->ask("Robert Chen: Is this a business client?", kMessageValidation), kAnswerNo);
  EXPECT_EQ(box->ask("Jane Smith: Is this a business client?", kMessageValidation), kAnswerYes);
}

TEST(WizardAnswers, RejectsFieldsOfTheWrongForm) {
  EXPECT_THROW(parseWizardAnswers("{\"businessClients\": \"some\"}", ""), Failure);
  EXPECT_THROW(parseWizardAnswers("{\"invoices\": {\"range\": \"after\"}}", ""), Failure);
  EXPECT_THROW(parseWizardAnswers("{\"groups\": {\"contacts\": \"yes\"}}", ""), Failure);
  EXPECT_THROW(parseWizardAnswers("not json", ""), Failure);
  EXPECT_THROW(parseWizardAnswers("{\"category\": 9E999}", ""), Failure);  // no double holds it
}

// The wizard over a real export file, with the engine's location setter opening it.
class WizardFrontEndTest : public ::testing::Test {
 protected:
  void SetUp() override {
    hooks.setTPSDatabaseLocation = [this](const std::string& path) {
      engine.TPSDatabaseLocation = path;
      source.setDatabasePath(path);
      source.connect(2);
      engine.useTPSDatabase = source.isOpen();
    };
    hooks.sourceDatabase = [this] { return &source; };
    hooks.importTPSInformation = [this] { ++imports; };
  }

  std::string sampleExport() {
    const std::string path =
        ::testing::TempDir() + "/lf_tps_answers_" + std::to_string(::getpid()) + ".db";
    std::filesystem::remove(path);
    const std::string command =
        std::string("python3 ") + LF_SOURCE_DIR + "/samples/make_tps_export.py " + path;
    EXPECT_EQ(std::system(command.c_str()), 0);
    return path;
  }

  testing::ModuleStateGuard stateGuard;
  Database source;
  TPSImportOptions engine;
  TPSWizardHooks hooks;
  int imports = 0;
};

TEST_F(WizardFrontEndTest, BundledAnswersTakeThePreCheckedClientsAndAllDates) {
  if (std::system("python3 --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "no python3";
  WizardAnswers answers =
      readWizardAnswers(std::string(LF_SOURCE_DIR) + "/samples/tps_answers.json");
  EXPECT_EQ(std::filesystem::path(answers.source).filename(), "tps_export.db");
  answers.source = sampleExport();
  RunReport report;
  const auto box = makeAnswersMessageBox(answers, &report, nullptr);
  moduleState().MsgboxClass = box.get();

  frmTPSWizard wizard(engine, hooks);
  ASSERT_TRUE(runSyncWizardFromAnswers(wizard, answers));
  EXPECT_EQ(imports, 1);
  EXPECT_TRUE(report.messages().empty());
  EXPECT_EQ(keysOf(engine.companyCollection),
            (std::vector<std::string>{"101", "102", "103", "107", "109", "110", "111", "112"}));
  EXPECT_EQ(keysOf(engine.contactsCollection),
            (std::vector<std::string>{"104", "105", "106", "108"}));
  EXPECT_FALSE(engine.mvarUseTimeEntryDateRange);
  EXPECT_FALSE(engine.mvarUseInvoiceDateRange);
  EXPECT_FALSE(engine.importOnlyWIPTimeEntries);
}

TEST_F(WizardFrontEndTest, AnswersStopAtAStepThatRefuses) {
  WizardAnswers answers = parseWizardAnswers(R"({"source": "/nonexistent/export.db"})", "");
  RunReport report;
  const auto box = makeAnswersMessageBox(answers, &report, nullptr);
  moduleState().MsgboxClass = box.get();
  frmTPSWizard wizard(engine, hooks);
  EXPECT_FALSE(runSyncWizardFromAnswers(wizard, answers));
  EXPECT_EQ(wizard.step(), 2);
  EXPECT_EQ(report.messages().size(), 1u);
  EXPECT_EQ(imports, 0);
}

TEST_F(WizardFrontEndTest, TerminalSessionTogglesClientsAndFinishes) {
  if (std::system("python3 --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "no python3";
  std::istringstream in("n\no " + sampleExport() +
                        "\nn\nt 1-3\nn\nn\nrange\nstart 13/45/2024\nall\nn\nn\nnew\nf\n");
  std::ostringstream out;
  TerminalMessageBox box(nullptr, &out, true);
  box.setInput(&in);
  moduleState().MsgboxClass = &box;
  frmTPSWizard wizard(engine, hooks);
  EXPECT_TRUE(runSyncWizardAtTerminal(wizard, in, out));
  // Clients 1 to 3 of the list were pre-checked as businesses and are now unticked.
  EXPECT_EQ(keysOf(engine.companyCollection),
            (std::vector<std::string>{"107", "109", "110", "111", "112"}));
  EXPECT_FALSE(engine.importOnlyNewEntries);
  EXPECT_EQ(imports, 1);
  const std::string text = out.str();
  EXPECT_NE(text.find("TPS Import Wizard - Select the business companies to synchronize"),
            std::string::npos);
  EXPECT_NE(text.find("[x]     1  Northwind Trading LTD  (101)"), std::string::npos);
  EXPECT_NE(text.find("You must enter a valid date.\n"), std::string::npos);
}

}  // namespace
}  // namespace lf
