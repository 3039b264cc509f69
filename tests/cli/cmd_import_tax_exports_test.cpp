// lfimport cantax template and import cantax-t1|cantax-t2plus|drtax-t1|drtax-t2 end to end on
// copies of the bundled samples, and the refusals of files that are no such export.
#include <algorithm>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "tax/cantax_export_template.hpp"

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

class TaxExportCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(::testing::TempDir()) / ("lfimport_tax_" + std::to_string(::getpid()));
    fs::create_directories(folder);
    for (const char* name :
         {"cantax_t1_export.txt", "cantax_t1_answers.json", "cantax_t2plus_export.txt",
          "cantax_t2plus_answers.json", "drtax_t1_export.csv", "drtax_t1_answers.json",
          "drtax_t2_export.csv", "drtax_t2_answers.json"})
      fs::copy_file(fs::path(LF_SOURCE_DIR) / "samples" / name, folder / name);
    practice = (folder / "practice.db").string();
    ASSERT_EQ(lfimport("init '" + practice + "' --year 2025").exitCode, 0);
  }
  void TearDown() override { fs::remove_all(folder); }
  CommandRun import(const std::string& route, const std::string& extra) {
    return lfimport("import " + route + " --practice '" + practice + "' " + extra);
  }
  std::string in(const std::string& name) { return "'" + (folder / name).string() + "'"; }
  long rows(const std::string& table) {
    return nlohmann::json::parse(lfimport("info '" + practice + "'").out)["rows"].value(table, 0L);
  }
  fs::path folder;
  std::string practice;
};

TEST_F(TaxExportCommand, TemplateIsWrittenByteForByte) {
  const CommandRun run = lfimport("cantax template t2plus --out " + in("corp"));
  ASSERT_EQ(run.exitCode, 0) << run.out;
  std::ifstream file(folder / "corp.tpl", std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  EXPECT_EQ(bytes.str(), lf::cantaxTemplateText(lf::CANTAXProduct::T2Plus));
  EXPECT_EQ(lfimport("cantax template t3 --out " + in("x")).exitCode, 2);
}

TEST_F(TaxExportCommand, SamplesImportThroughAllFourRoutes) {
  CommandRun run = import(
      "cantax-t1", "--answers " + in("cantax_t1_answers.json") + " --report " + in("report.json"));
  ASSERT_EQ(run.exitCode, 0) << run.out;
  EXPECT_EQ(rows("Contacts"), 3);
  const auto report = nlohmann::json::parse(std::ifstream(folder / "report.json"));
  EXPECT_NE(report.dump().find("CANTAX_Modified.txt"), std::string::npos);
  EXPECT_TRUE(fs::exists(folder / "CANTAX_Modified.txt"));

  run = import("cantax-t2plus", "--answers " + in("cantax_t2plus_answers.json"));
  ASSERT_EQ(run.exitCode, 0) << run.out;
  EXPECT_EQ(rows("Companies"), 2);
  run = import("drtax-t1",
               "--answers " + in("drtax_t1_answers.json") + " --report " + in("drtax.json"));
  ASSERT_EQ(run.exitCode, 0) << run.out;
  const auto drtax = nlohmann::json::parse(std::ifstream(folder / "drtax.json"));
  EXPECT_NE(drtax.dump().find("1 rows of the export have fewer than 15 values"), std::string::npos);
  run = import("drtax-t2", "--answers " + in("drtax_t2_answers.json"));
  ASSERT_EQ(run.exitCode, 0) << run.out;
  EXPECT_EQ(rows("Companies"), 4);
  // A re-run matches the clients it made.
  ASSERT_EQ(import("cantax-t1", "--answers " + in("cantax_t1_answers.json")).exitCode, 0);
  EXPECT_EQ(rows("PersonalTaxInfo"), 6);
}

TEST_F(TaxExportCommand, ForeignEmptyAndBrokenFilesWriteNothing) {
  std::ofstream(folder / "other.txt") << "Name,City\nAnn,Toronto\n";
  std::ofstream(folder / "empty.csv");
  std::ofstream(folder / "binary.txt", std::ios::binary)
      << std::string("\xff\xfe\x00\x01\"open quote,", 16) << std::string(2'000'000, 'x');
  for (const auto& [route, file] : {std::pair{"cantax-t1", "other.txt"},
                                    {"cantax-t2plus", "empty.csv"},
                                    {"drtax-t1", "binary.txt"},
                                    {"drtax-t2", "other.txt"}}) {
    const CommandRun run = import(route, "--file " + in(file));
    EXPECT_EQ(run.exitCode, 1) << route << run.out;
    // The error is one line that names the command and the file.
    const std::string error = run.out.substr(run.out.find("lfimport import "));
    EXPECT_EQ(error.rfind(std::string("lfimport import ") + route + ": ", 0), 0u) << run.out;
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1) << run.out;
    EXPECT_NE(error.find(file), std::string::npos);
  }
  EXPECT_EQ(rows("Contacts"), 0);
  EXPECT_EQ(rows("Companies"), 0);
  EXPECT_FALSE(fs::exists(folder / "CANTAX_Modified.txt"));
  EXPECT_FALSE(fs::exists(folder / "DrTax_Modified.txt"));
  EXPECT_EQ(import("drtax-t1", "").exitCode, 2);  // no file
}

}  // namespace
