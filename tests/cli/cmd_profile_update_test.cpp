// lfimport profile update and new-return end to end: a client imported from a return is
// written back into it, a new return is made under the client's name, and a contact that is
// not there or a missing save-to folder ends with exit code 1.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

namespace fs = std::filesystem;

struct CommandRun {
  int exitCode = -1;
  std::string out;
};

CommandRun lfimport(const std::string& arguments) {
  CommandRun result;
  const std::string command = std::string(LF_BINARY_DIR) + "/lfimport " + arguments;
  FILE* pipe = popen((command + " </dev/null 2>&1").c_str(), "r");
  if (pipe == nullptr) return result;
  std::array<char, 4096> buffer{};
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
    result.out.append(buffer.data(), n);
  const int status = pclose(pipe);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

std::string sqlValue(const std::string& db, const std::string& sql) {
  sqlite3* handle = nullptr;
  sqlite3_open_v2(db.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
  std::string out;
  sqlite3_stmt* stmt = nullptr;
  if (sqlite3_prepare_v2(handle, sql.c_str(), -1, &stmt, nullptr) == SQLITE_OK &&
      sqlite3_step(stmt) == SQLITE_ROW && sqlite3_column_text(stmt, 0) != nullptr)
    out = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
  sqlite3_finalize(stmt);
  sqlite3_close(handle);
  return out;
}

nlohmann::json fieldsOf(const std::string& path) {
  std::ifstream in(path);
  return nlohmann::json::parse(in)["primary"]["fields"];
}

class ProfileUpdateCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = fs::path(::testing::TempDir()) / ("profile_update_" + std::to_string(::getpid()));
    fs::remove_all(dir);
    fs::create_directories(dir / "returns");
    practice = (dir / "p.db").string();
    ret = (dir / "returns" / "Birch.16T").string();
    answers = (dir / "yes.json").string();
    std::ofstream(answers) << R"({"questions": {"default": "yes"}})";
    ASSERT_EQ(lfimport("init " + practice).exitCode, 0);
    ASSERT_EQ(lfimport("profile-file new " + ret +
                       " --set ClientSIN=046454286 --set ClientFirstName=Ada "
                       "--set ClientLastName=Birch --set T1Info.S[8]=Oldtown")
                  .exitCode,
              0);
    ASSERT_EQ(lfimport("import profile-t1 --quiet --practice " + practice + " --folder " +
                       (dir / "returns").string() + " --answers " + answers)
                  .exitCode,
              0);
  }
  void TearDown() override { fs::remove_all(dir); }

  fs::path dir;
  std::string practice, ret, answers;
};

TEST_F(ProfileUpdateCommand, UpdateWritesTheContactIntoItsImportedReturn) {
  sqlite3* handle = nullptr;
  sqlite3_open(practice.c_str(), &handle);
  sqlite3_exec(handle, "UPDATE Contacts SET HomeCity='Kingston', MiddleName='May';", nullptr,
               nullptr, nullptr);
  sqlite3_close(handle);
  const std::string year = sqlValue(practice, "SELECT TaxYear FROM PersonalTaxProfileInfo");

  CommandRun run = lfimport("profile update --practice " + practice + " --contact 1 --year " +
                            year + " --answers " + answers);
  EXPECT_EQ(run.exitCode, 0) << run.out;
  EXPECT_NE(run.out.find("The profile file was updated successfully."), std::string::npos);
  nlohmann::json fields = fieldsOf(ret);
  EXPECT_EQ(fields["ClientFirstName"], "Ada May");
  EXPECT_EQ(fields["T1Info.S[8]"], "Kingston");
  EXPECT_EQ(fields["ClientSIN"], "046454286");

  run = lfimport("profile update --practice " + practice + " --contact 99 --year " + year);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.out.find("contact 99 is not in the practice database"), std::string::npos);
}

TEST_F(ProfileUpdateCommand, NewReturnIsSavedUnderTheClientsNameAndStored) {
  const std::string saveTo = (dir / "new").string();
  fs::create_directories(saveTo);
  CommandRun missing = lfimport("profile new-return --practice " + practice +
                                " --contact 1 --year 2016 --answers " + answers);
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.out.find("no folder to save the new return to (--save-to)"), std::string::npos);

  CommandRun run =
      lfimport("profile new-return --practice " + practice + " --contact 1 --year 2016 --save-to " +
               saveTo + " --answers " + answers + " --working-folder " + dir.string());
  EXPECT_EQ(run.exitCode, 0) << run.out;
  const std::string stored = sqlValue(
      practice, "SELECT ProfileFileLocation FROM PersonalTaxProfileInfo WHERE TaxYear=2016");
  EXPECT_EQ(fs::path(stored).parent_path(), fs::path(saveTo));
  nlohmann::json fields = fieldsOf(stored);
  EXPECT_EQ(fields["ClientLastName"], "Birch");
  EXPECT_EQ(fields["ClientSIN"], "046454286");
  EXPECT_FALSE(fs::exists(dir / "Temp" / "Template.16T"));
}

TEST_F(ProfileUpdateCommand, CancelsAreSkippedRowsThatWriteNothing) {
  const std::string year = sqlValue(practice, "SELECT TaxYear FROM PersonalTaxProfileInfo");
  const std::string saveTo = (dir / "new").string();
  fs::create_directories(saveTo);
  auto answering = [&](const std::string& json) {
    const std::string path = (dir / "cancel.json").string();
    std::ofstream(path) << json;
    return " --answers " + path;
  };
  // The Yes/No/Cancel question of the stored file.
  sqlite3* handle = nullptr;
  sqlite3_open(practice.c_str(), &handle);
  sqlite3_exec(handle, "UPDATE Contacts SET HomeCity='Kingston';", nullptr, nullptr, nullptr);
  sqlite3_close(handle);
  CommandRun run = lfimport(
      "profile update --practice " + practice + " --contact 1 --year " + year +
      answering(R"({"questions": {"default": "yes", "answers": {"The file we last": "cancel"}}})"));
  EXPECT_EQ(run.exitCode, 0) << run.out;
  EXPECT_NE(run.out.find("-> cancel (answers)"), std::string::npos);
  EXPECT_EQ(fieldsOf(ret)["T1Info.S[8]"], "Oldtown");

  // The year question, from the answers file and at a terminal whose input ends.
  const std::string newReturn = "profile new-return --practice " + practice +
                                " --contact 1 --working-folder " + dir.string() + " --save-to " +
                                saveTo;
  run = lfimport(newReturn + answering(R"({"questions": {"answers": {"Select year": "cancel"}}})"));
  EXPECT_EQ(run.exitCode, 0) << run.out;
  run = lfimport(newReturn + " --interactive");
  EXPECT_EQ(run.exitCode, 0) << run.out;
  EXPECT_NE(run.out.find("Select year for new Profile T1 file:"), std::string::npos);
  EXPECT_TRUE(fs::is_empty(saveTo));

  // The wait for Profile, with the year from the answers file.
  run = lfimport(newReturn + answering(R"({"year": 2016, "questions": {"answers":
                                           {"Connecting with Profile": "cancel"}}})"));
  EXPECT_EQ(run.exitCode, 0) << run.out;
  EXPECT_NE(run.out.find("was not able to connect to the new Profile file."), std::string::npos);
  EXPECT_TRUE(fs::exists(fs::path(saveTo) / "Template.16T"));
  EXPECT_EQ(sqlValue(practice,
                     "SELECT ProfileFileLocation FROM PersonalTaxProfileInfo WHERE TaxYear=2016"),
            "");
}

}  // namespace
