// lfimport import preview end to end: the guessed delimiter, the grid as JSON, and one clear
// failure for a file that cannot be previewed.
#include <gtest/gtest.h>
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
  const std::string command = std::string(LF_BINARY_DIR) + "/lfimport " + arguments + " 2>&1";
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

class ImportPreviewCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(::testing::TempDir()) / ("lfimport_preview_" + std::to_string(::getpid()));
    fs::create_directories(folder);
  }
  void TearDown() override { fs::remove_all(folder); }
  std::string file(const std::string& name, const std::string& bytes) {
    const fs::path path = folder / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
  }
  fs::path folder;
};

TEST_F(ImportPreviewCommand, JsonShowsTheGuessedDelimiterAndTheFirstRows) {
  const std::string path =
      file("clients.txt", "Name\tCity\r\nAnn Lee\tToronto\r\nBo Chen\tLaval\r\n");
  const CommandRun run =
      lfimport("import preview --file '" + path + "' --first-row-names --rows 1 --json");
  ASSERT_EQ(run.exitCode, 0) << run.out;
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["delimiter"], "tab");
  EXPECT_EQ(json["delimiterGuessed"], true);
  EXPECT_EQ(json["columns"], 2);
  EXPECT_EQ(json["dataRows"], 2);
  EXPECT_EQ(json["captions"], nlohmann::json({"Name", "City"}));
  EXPECT_EQ(json["rows"], nlohmann::json::array({{"Ann Lee", "Toronto"}}));
}

TEST_F(ImportPreviewCommand, GivenDelimiterAndNoQualifierAreUsed) {
  const std::string path = file("clients.csv", "\"a\";b,c\n");
  const CommandRun run = lfimport("import preview --file '" + path +
                                  "' --delimiter semicolon --qualifier none --json");
  ASSERT_EQ(run.exitCode, 0) << run.out;
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["delimiterGuessed"], false);
  EXPECT_EQ(json["rows"], nlohmann::json::array({{"\"a\"", "b,c"}}));
}

TEST_F(ImportPreviewCommand, UnusableFilesFailWithOneLine) {
  const CommandRun missing =
      lfimport("import preview --file '" + (folder / "none.csv").string() + "'");
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.out.find("does not exist"), std::string::npos);
  const CommandRun directory = lfimport("import preview --file '" + folder.string() + "'");
  EXPECT_EQ(directory.exitCode, 1);
  EXPECT_NE(directory.out.find("is a folder"), std::string::npos);
  const CommandRun blank =
      lfimport("import preview --file '" + file("blank.csv", "\n\n  \n") + "'");
  EXPECT_EQ(blank.exitCode, 1);
  EXPECT_NE(blank.out.find("holds no data rows"), std::string::npos);
  const CommandRun wide =
      lfimport("import preview --file '" + file("a.csv", "a\n") + "' --delimiter ab");
  EXPECT_EQ(wide.exitCode, 2);
}

}  // namespace
