// Stand-in Profile returns written for a test into a folder of their own, with the stand-in
// product installed as the Profile object factory for the test's lifetime.
#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tax/profile_automation.hpp"
#include "tax/profile_automation_layer.hpp"
#include "tax/profile_return_file.hpp"
#include "tax/profile_stand_in.hpp"
#include "tests/test_support.hpp"

namespace lf::testing {

// Answers the password question from a queue (Cancel when it runs out) and keeps every text.
class ScriptedPasswordForm : public ProfilePasswordForm {
 public:
  ProfilePasswordEntry ask(const std::string& title, const std::string& label,
                           const std::string& text) override {
    asked.push_back(title + "|" + label + "|" + text);
    if (answers.empty()) return {};
    ProfilePasswordEntry entry = answers.front();
    answers.erase(answers.begin());
    return entry;
  }
  std::vector<ProfilePasswordEntry> answers;
  std::vector<std::string> asked;
};

class ProfileTest : public PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    static std::atomic<int> serial{0};
    folder = std::filesystem::path(::testing::TempDir()) /
             ("profile_" + std::to_string(::getpid()) + "_" + std::to_string(serial++));
    std::filesystem::create_directories(folder);
    install();
  }
  void TearDown() override {
    setProfileObjectFactory(nullptr);
    std::filesystem::remove_all(folder);
  }

  // Installs the stand-in with only the given ProgIDs (all when nothing is given).
  void install(std::optional<std::set<std::string>> installed = std::nullopt) {
    factory = std::make_shared<ProfileStandInFactory>(std::move(installed));
    setProfileObjectFactory(factory);
  }

  // Writes a return under the folder and answers its path.
  std::string writeReturn(const std::string& name, int year,
                          std::map<std::string, std::string> fields,
                          const std::string& password = {},
                          std::optional<std::map<std::string, std::string>> spouse = {},
                          const std::string& kind = "T1") {
    ProfileReturn r;
    r.kind = kind;
    r.year = year;
    r.primary.fields = std::move(fields);
    if (spouse) r.second = ProfileReturnClient{"", "", std::move(*spouse)};
    if (!password.empty()) r.password = hashProfilePassword(password);
    std::string path = (folder / name).string();
    saveProfileReturnFile(path, r);
    return path;
  }

  std::vector<std::string> shownTexts() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages.shown) texts.push_back(entry.text);
    return texts;
  }

  std::filesystem::path folder;
  std::shared_ptr<ProfileStandInFactory> factory;
};

}  // namespace lf::testing
