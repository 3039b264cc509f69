// lfimport profile-file end to end: a return made, shown, changed, protected and locked.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

struct CommandRun {
  int exitCode = -1;
  std::string out;
};

CommandRun lfimport(const std::string& arguments) {
  const std::string command =
      std::string(LF_BINARY_DIR) + "/lfimport " + arguments + " </dev/null 2>&1";
  CommandRun run;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return run;
  std::array<char, 4096> buffer{};
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) run.out.append(buffer.data(), n);
  const int status = pclose(pipe);
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

class ProfileFileCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(::testing::TempDir()) / ("lfimport_profile_" + std::to_string(::getpid()));
    fs::create_directories(folder);
    file = (folder / "Smith.16T").string();
  }
  void TearDown() override { fs::remove_all(folder); }
  fs::path folder;
  std::string file;
};

TEST_F(ProfileFileCommand, NewShowSetWithPassword) {
  ASSERT_EQ(lfimport("profile-file new '" + file +
                     "' --set ClientSIN=046454286 --set ClientLastName=Smith "
                     "--spouse ClientSIN=527000145 --password maple")
                .exitCode,
            0);
  EXPECT_EQ(lfimport("profile-file new '" + file + "'").exitCode, 1);  // exists

  CommandRun refused = lfimport("profile-file show '" + file + "'");
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_NE(refused.out.find("Incorrect password for file"), std::string::npos);

  ASSERT_EQ(lfimport("profile-file set '" + file +
                     "' --password maple --set Line101=52000.00 --set ClientLastName= "
                     "--clear-password")
                .exitCode,
            0);
  CommandRun shown = lfimport("profile-file show '" + file + "'");
  ASSERT_EQ(shown.exitCode, 0) << shown.out;
  auto json = nlohmann::json::parse(shown.out);
  EXPECT_EQ(json["year"], 2016);
  EXPECT_EQ(json["passwordProtected"], false);
  EXPECT_EQ(json["primary"]["fields"]["Line101"], "52000.00");
  EXPECT_FALSE(json["primary"]["fields"].contains("ClientLastName"));
  EXPECT_EQ(json["second"]["fields"]["ClientSIN"], "527000145");
}

TEST_F(ProfileFileCommand, BadKeysExtensionsAndALockedFile) {
  EXPECT_EQ(lfimport("profile-file new '" + file + "' --set 'Bad Key=1'").exitCode, 2);
  EXPECT_EQ(lfimport("profile-file new '" + (folder / "x.txt").string() + "'").exitCode, 2);
  ASSERT_EQ(
      lfimport("profile-file new '" + (folder / "Corp.GT2").string() + "' --year 2014").exitCode,
      0);
  ASSERT_EQ(lfimport("profile-file new '" + file + "'").exitCode, 0);

  // A lock held by another process makes the file in use until it ends.
  const std::string locker = std::string(LF_BINARY_DIR) + "/lfimport profile-file lock '" + file +
                             "' --seconds 3 >/dev/null 2>&1 &";
  ASSERT_EQ(std::system(locker.c_str()), 0);
  CommandRun busy;
  for (int i = 0; i < 50; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    busy = lfimport("profile-file set '" + file + "' --set Line101=1");
    if (busy.exitCode != 0) break;
  }
  EXPECT_EQ(busy.exitCode, 1);
  EXPECT_NE(busy.out.find("in use by another user"), std::string::npos);
}

}  // namespace
