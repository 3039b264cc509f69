// The stand-in Profile product: its return files, passwords, lock, saving, field keys and the
// current client of its window.
#include "tax/profile_stand_in.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "base/failure.hpp"
#include "tax/profile_blank_returns.hpp"
#include "tax/profile_field_key.hpp"
#include "tax/profile_file_lock.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

std::string fileText(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The automation error a call leaves.
AutomationError errorOf(const std::function<void()>& call) {
  AutomationError err;
  trapAutomationError(err, call);
  return err;
}

TEST(ProfileFieldKey, EveryShapeReadsAndWritesBack) {
  struct Case {
    const char* text;
    ProfileKeyShape shape;
    size_t indexes;
  } cases[] = {
      {"ClientSIN", ProfileKeyShape::BareName, 0},
      {"Line101", ProfileKeyShape::LineNumber, 0},
      {"line166", ProfileKeyShape::LineNumber, 0},
      {"Schedule4[30]", ProfileKeyShape::ScheduleCell, 1},
      {"RC71[15]", ProfileKeyShape::FormCell, 1},
      {"T1Info.S[23]", ProfileKeyShape::TextCell, 1},
      {"T1Info.B[24]", ProfileKeyShape::ChoiceCell, 1},
      {"T2125.S[1,3]", ProfileKeyShape::RepeatingFormCell, 2},
      {"T2125[1,2]", ProfileKeyShape::RepeatingFormCell, 2},
      {"T2125Owners.S[1,2,1]", ProfileKeyShape::RepeatingTableCell, 3},
      {"T2125Owners[1,0,0]", ProfileKeyShape::RepeatingTableCell, 3},
  };
  for (const Case& c : cases) {
    auto key = parseProfileFieldKey(c.text);
    ASSERT_TRUE(key) << c.text;
    EXPECT_EQ(key->shape, c.shape) << c.text;
    EXPECT_EQ(key->index.size(), c.indexes) << c.text;
    EXPECT_EQ(key->toText(), c.text);
  }
  EXPECT_EQ(parseProfileFieldKey("line166")->lineNumber, 166);
  EXPECT_EQ(parseProfileFieldKey("T2125Owners.S[1,2,1]")->name, "T2125Owners");
}

TEST(ProfileFieldKey, TextsThatAreNoKey) {
  for (const char* text :
       {"", "1Line", "T1Info.X[2]", "T1Info.S", "T1[]", "T1[1,2,3,4]", "T1[1", "T1[1]x", "T1[-1]",
        "T1[01]", "T1[100000]", "Client SIN", "T1[1,]", "T1.S[1]]"})
    EXPECT_FALSE(parseProfileFieldKey(text)) << text;
}

TEST(ProfilePasswordHash, Sha256KnownAnswersAndSaltedMatch) {
  EXPECT_EQ(sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(sha256Hex("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  ProfilePasswordHash a = hashProfilePassword("pw"), b = hashProfilePassword("pw");
  EXPECT_NE(a.salt, b.salt);
  EXPECT_TRUE(profilePasswordMatches(a, "pw"));
  EXPECT_FALSE(profilePasswordMatches(a, "PW"));
}

TEST(ProfileReturnFile, DamagedAndForeignTextsAreRefused) {
  const char* texts[] = {
      "",
      "[]",
      "{\"kind\": \"T1\", \"year\": 2016, \"primary\": {}}",
      "{\"format\": \"Profile return\", \"kind\": \"T3\", \"year\": 2016, \"primary\": {}}",
      "{\"format\": \"Profile return\", \"kind\": \"T1\", \"year\": 2019, \"primary\": {}}",
      "{\"format\": \"Profile return\", \"kind\": \"T1\", \"year\": 2016}",
      "{\"format\": \"Profile return\", \"kind\": \"T1\", \"year\": 2016, \"primary\": "
      "{\"fields\": {\"Bad Key\": \"x\"}}}",
      "{\"format\": \"Profile return\", \"kind\": \"T1\", \"year\": 2016, \"primary\": "
      "{\"fields\": {\"Line101\": 5}}}",
      "{\"format\": \"Profile return\", \"kind\": \"T1\", \"year\": 2016, \"primary\": {}, "
      "\"password\": {\"salt\": \"x\", \"sha256\": \"y\"}}",
  };
  for (const char* text : texts) {
    try {
      readProfileReturn(text);
      ADD_FAILURE() << "read: " << text;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), kProfileUnspecifiedError) << text;
    }
  }
}

class ProfileStandInTest : public ProfileTest {};

TEST_F(ProfileStandInTest, WritableLoadSavesAtomicallyAndHoldsTheLock) {
  std::string path = writeReturn("save.16T", 2016, {{"ClientSIN", "046454286"}}, "pw");
  EXPECT_EQ(fileText(path).find("\"pw\""), std::string::npos);  // no password in clear

  auto file = factory->createFile("Profile.T2016T1File");
  file->setFilePassword("pw");
  file->LoadFile(path, false);
  EXPECT_TRUE(ProfileFileLock::isInUse(path));
  auto client = file->primaryClient();
  client->setField("T1Info.S[23]", Variant::text("Toronto"));
  client->setField("ClientSIN", Variant::text(""));  // a blank erases the field
  file->SaveFile(path);
  EXPECT_TRUE(ProfileFileLock::isInUse(path));  // the lock moved onto the renamed file
  EXPECT_FALSE(std::filesystem::exists(path + ".saving-" + std::to_string(::getpid())));
  client.reset();
  file->close();
  EXPECT_FALSE(ProfileFileLock::isInUse(path));

  ProfileReturn saved = loadProfileReturnFile(path);
  EXPECT_EQ(saved.primary.fields.at("T1Info.S[23]"), "Toronto");
  EXPECT_EQ(saved.primary.fields.count("ClientSIN"), 0u);
  ASSERT_TRUE(saved.password);
  EXPECT_TRUE(profilePasswordMatches(*saved.password, "pw"));
}

TEST_F(ProfileStandInTest, RefusalsCarryTheirNumberAndWords) {
  std::string path = writeReturn("r.16T", 2016, {}, "pw");
  auto file = factory->createFile("Profile.T2016T1File");
  AutomationError err = errorOf([&] { file->LoadFile(path, true); });
  EXPECT_EQ(err.number, kProfileRefusal);
  EXPECT_EQ(err.description, "Incorrect password for file 'r.16T'");

  ProfileFileLock other;
  ASSERT_TRUE(other.acquire(path));
  file->setFilePassword("pw");
  err = errorOf([&] { file->LoadFile(path, true); });
  EXPECT_EQ(err.number, kProfileRefusal);
  EXPECT_EQ(err.description, "This file may be in use by another user");
  other.release();
  EXPECT_EQ(errorOf([&] { file->LoadFile(path, true); }).number, 0);
  // A read-only load leaves the file free; saving over it is refused.
  EXPECT_FALSE(ProfileFileLock::isInUse(path));
  EXPECT_EQ(errorOf([&] { file->SaveFile(path); }).number, kProfileUnspecifiedError);
  EXPECT_EQ(errorOf([&] { file->primaryClient()->Field("Not a key"); }).number,
            kProfileUnspecifiedError);
  file->close();
  EXPECT_EQ(errorOf([&] { file->primaryClient(); }).number, kProfileUnspecifiedError);
}

TEST_F(ProfileStandInTest, InstalledProgIDsComeFromTheirSetting) {
  EXPECT_FALSE(parseInstalledProfileProgIDs("all"));
  EXPECT_TRUE(parseInstalledProfileProgIDs("none")->empty());
  EXPECT_EQ(*parseInstalledProfileProgIDs("Profile.T2016T2File; Profile.T2015T1File"),
            (std::set<std::string>{"Profile.T2016T2File", "Profile.T2015T1File"}));

  writeHostSetting(*db, "ProfileInstalledProgIDs", "Profile.T2015T1File");
  auto standIn = makeProfileStandIn(*db);
  EXPECT_TRUE(standIn->isInstalled("Profile.T2015T1File"));
  EXPECT_FALSE(standIn->isInstalled("Profile.T2016T1File"));
  EXPECT_EQ(errorOf([&] { standIn->createFile("Profile.T2016T1File"); }).number,
            kProfileCannotCreateObject);
  EXPECT_EQ(errorOf([&] { standIn->createFile("Profile.T2017T1File"); }).number,
            kProfileCannotCreateObject);
}

TEST_F(ProfileStandInTest, CurrentClientAppearsAfterTheDelayOrNever) {
  std::string path = writeReturn("new.16T", 2016, {{"ClientSIN", "9"}});
  auto product = std::make_shared<ProfileStandInProduct>(std::chrono::milliseconds(30));
  ProfileStandInFactory standIn(std::nullopt, product);
  auto services = standIn.createServices(kProfileServicesProgID);
  EXPECT_NE(errorOf([&] { services->CurrentClient(); }).number, 0);  // nothing open yet
  product->openInProduct(path);
  EXPECT_NE(errorOf([&] { services->CurrentClient(); }).number, 0);
  std::this_thread::sleep_for(std::chrono::milliseconds(40));
  EXPECT_EQ(services->CurrentClient()->Field("ClientSIN").toString(), "9");

  product->setDelay(std::nullopt);
  product->openInProduct(path);
  EXPECT_NE(errorOf([&] { services->CurrentClient(); }).number, 0);
}

TEST_F(ProfileStandInTest, BlankReturnsOfEachYearLoad) {
  EXPECT_FALSE(loadProfileResource(2003));
  EXPECT_FALSE(loadProfileResource(2017));
  for (int year = kFirstBlankProfileYear; year <= kLastBlankProfileYear; ++year) {
    std::string path =
        (folder / ("Template." + std::to_string(year - 2000 + 100).substr(1) + "T")).string();
    std::ofstream(path, std::ios::binary) << *loadProfileResource(year);
    auto file = factory->createFile("Profile.T" + std::to_string(year) + "T1File");
    EXPECT_EQ(errorOf([&] { file->LoadFile(path, true); }).number, 0) << year;
    EXPECT_EQ(file->primaryClient()->Field("ClientSIN").toString(), "");
    EXPECT_FALSE(file->secondClient());
  }
}

}  // namespace
}  // namespace lf::testing
