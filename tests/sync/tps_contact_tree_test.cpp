// Client classification of the sync trees: the word pattern, the TPS number rule, and the
// TPS tree filled from a small export database.
#include "sync/tps_contact_tree.hpp"

#include <gtest/gtest.h>

#include "base/failure.hpp"
#include "db/database.hpp"
#include "sync/client_tree.hpp"
#include "sync/word_pattern.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

TEST(WordPattern, FavoursBusinessAsDocumented) {
  EXPECT_TRUE(looksLikeBusinessName("Marco Rossi"));  // "co" inside a word
  EXPECT_FALSE(looksLikeBusinessName("Jane Smith"));
  EXPECT_TRUE(looksLikeBusinessName("Jane Smith 2"));         // any digit
  EXPECT_TRUE(looksLikeBusinessName("NORTHWIND HOLDINGS"));   // case ignored
  EXPECT_TRUE(looksLikeBusinessName("Friends of Anne Lee"));  // " of " with its blanks
  EXPECT_TRUE(looksLikeBusinessName("Smith Mangement"));      // misspelt alternative kept
}

TEST(WordPattern, DoctorNeedsABlankAfterDrOrItsFullStop) {
  EXPECT_TRUE(looksLikeBusinessName("Dr Jane Smith"));
  EXPECT_TRUE(looksLikeBusinessName("Dr. Jane Smith"));
  EXPECT_TRUE(looksLikeBusinessName("Dr.  Jane Smith"));
  EXPECT_FALSE(looksLikeBusinessName("Dr.Jane Smith"));
  EXPECT_FALSE(looksLikeBusinessName("Drake Hall"));
}

TEST(WordPattern, TrailingCommaIsDroppedBeforeTheTest) {
  // With the comma kept, "edu," would match the alternative "edu." (any character).
  EXPECT_FALSE(looksLikeBusinessName("Pat Fredu,"));
  EXPECT_TRUE(looksLikeBusinessName("Pat Fredu, Jones"));
}

TEST(WordPattern, TreePassChecksOneListOnlyAndClearsTheRoot) {
  ClientTree tree;
  const int root = tree.add(-1, "Main", "Contacts");
  tree.add(root, ClientTree::clientKey("1"), "Marco Rossi");
  tree.add(root, ClientTree::clientKey("2"), "Jane Smith");
  tree.node(root).checked = true;
  long events = 0;
  EXPECT_FALSE(populateInitialCheckedItemsByWordPattern(tree, true, [&](long& n) { events = n; }));
  EXPECT_EQ(tree.checkedIDs(), std::vector<std::string>{"1"});
  EXPECT_FALSE(tree.node(root).checked);
  EXPECT_EQ(events, 2);
  EXPECT_TRUE(populateInitialCheckedItemsByWordPattern(tree, false));
  EXPECT_EQ(tree.checkedIDs(), std::vector<std::string>{"2"});
}

TEST(TPSClientRule, NumbersThenSinThenFirstName) {
  const Variant none;
  const Variant blank = Variant::text("   ");
  auto text = [](const char* t) { return Variant::text(t); };
  // Business number and a SIN: business.
  EXPECT_TRUE(
      isTPSBusinessClient({text("123456789 RT0001"), none, none, text("900 100 104"), none}));
  EXPECT_TRUE(isTPSBusinessClient({none, text("8899001"), none, none, text("Ann")}));
  EXPECT_TRUE(isTPSBusinessClient({none, none, text("7654321"), none, text("Ann")}));
  // Only SIN and first name: personal. Only a name: business. First name alone: personal.
  EXPECT_FALSE(isTPSBusinessClient({none, none, none, text("900 100 104"), text("Jane")}));
  EXPECT_TRUE(isTPSBusinessClient({blank, none, blank, none, blank}));
  EXPECT_FALSE(isTPSBusinessClient({none, none, none, none, text("Marco")}));
  EXPECT_FALSE(isTPSBusinessClient({none, none, none, text("900 100 105"), none}));
}

TEST(ClientTree, CheckAllChildNodesWalksEveryLevelOrChecksOneNode) {
  ClientTree tree;
  const int root = tree.add(-1, "Main", "Categories");
  const int a = tree.add(root, "Category:1", "A");
  const int a1 = tree.add(a, "Category:2", "A1");
  const int b = tree.add(root, "Category:3", "B");
  tree.checkAllChildNodes(true);
  EXPECT_TRUE(tree.node(a).checked && tree.node(a1).checked && tree.node(b).checked);
  EXPECT_FALSE(tree.node(root).checked);

  tree.allowOnlyOneCheckedItem = true;
  tree.checkAllChildNodes(true, b);
  EXPECT_EQ(tree.checkedIDs(3), std::vector<std::string>{"3"});
  EXPECT_THROW(tree.add(root, "Category:3", "again"), Failure);
}

class TPSContactTreeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    source.createNew(":memory:");
    source.executeStatement(
        "CREATE TABLE Clients (ClientID INTEGER PRIMARY KEY, Name TEXT, FirstName TEXT, SIN TEXT, "
        "BusinessNum TEXT, ProvTaxNum TEXT, CorporationNum TEXT, InActive BOOLEAN)");
    source.executeStatement(
        "INSERT INTO Clients VALUES (101, 'Northwind Trading LTD', NULL, '900 1', '111222333', "
        "NULL, NULL, 0)");
    source.executeStatement(
        "INSERT INTO Clients VALUES (104, 'Jane Smith', 'Jane', '900 2', NULL, NULL, NULL, 0)");
    source.executeStatement(
        "INSERT INTO Clients VALUES (107, 'Lakeview Dental Office', NULL, NULL, NULL, NULL, "
        "NULL, 1)");
    source.executeStatement(
        "INSERT INTO Clients VALUES (108, 'Peter O''Brien', 'Peter', NULL, NULL, NULL, NULL, 1)");
    tps.setTreeViewControl(&tree);
    tps.setSourceDatabase(&source);
  }

  Database source;
  ClientTree tree;
  clsTPSContactTree tps;
};

TEST_F(TPSContactTreeTest, FillAddsRootAndOneNodePerClient) {
  long filled = 0;
  tps.incProgressBarForPopulatingList = [&](long& n) { filled = n; };
  tps.populateTPSTree();
  ASSERT_EQ(tree.count(), 5);
  const ClientTreeNode& root = tree.node(0);
  EXPECT_EQ(root.key, "Main");
  EXPECT_EQ(root.text, "TPS Contacts");
  EXPECT_TRUE(root.bold && root.expanded);
  EXPECT_EQ(tree.selected, 0);
  EXPECT_EQ(tree.indentation, 79);
  EXPECT_EQ(tree.node(tree.findKey("Company:104")).text, "Jane Smith");
  EXPECT_EQ(tree.node(tree.findKey("Company:107")).text, "Lakeview Dental Office -(InActive)");
  EXPECT_EQ(filled, 4);
}

TEST_F(TPSContactTreeTest, PersonalPassIsTheExactNegationOfTheBusinessPass) {
  tps.populateTPSTree();
  tree.add(0, "Company:999", "Not in the export");
  long businessEvents = 0, personalEvents = 0;
  tps.incProgressBarForInitialBusinessClientsSelection = [&](long& n) { businessEvents = n; };
  tps.incProgressBarForInitialPersonalClientsSelection = [&](long& n) { personalEvents = n; };

  bool result = true;
  tps.populateInitialTPSClientsCheckedItems(true, result);
  EXPECT_FALSE(result);
  EXPECT_EQ(tree.checkedIDs(), (std::vector<std::string>{"101", "107"}));
  EXPECT_EQ(businessEvents, 4);

  tps.populateInitialTPSClientsCheckedItems(false, result);
  EXPECT_TRUE(result);
  EXPECT_EQ(tree.checkedIDs(), (std::vector<std::string>{"104", "108"}));  // 999 unknown: cleared
  EXPECT_EQ(personalEvents, 4);
}

// A progress dialog that runs its StartProgress at once and keeps what it was told.
struct RecordingDialog : ProgressDialog {
  std::vector<std::string>* captions;
  long* maximum;
  long value = 0;
  RecordingDialog(std::vector<std::string>* c, long* m) : captions(c), maximum(m) {}
  void setTextAlignment(int) override {}
  void setMinimum(long) override {}
  void setMaximum(long m) override { *maximum = m; }
  void setShowPercent(bool) override {}
  void setStep(long) override {}
  void setShowCancel(bool) override {}
  void setDelay(long) override {}
  void setCaption(std::string_view c) override { captions->emplace_back(c); }
  long getValue() override { return value; }
  void setValue(long v) override { value = v; }
  void showDialog(const std::function<void()>& startProgress) override { startProgress(); }
  void closeDialog() override { captions->push_back("closed"); }
};

TEST_F(TPSContactTreeTest, FillRunsUnderTheProgressDialog) {
  testing::ModuleStateGuard guard;
  std::vector<std::string> captions;
  long maximum = 0;
  moduleState().makeProgressDialog = [&] {
    return std::make_unique<RecordingDialog>(&captions, &maximum);
  };
  tps.populateTPSTree();
  EXPECT_EQ(captions,
            (std::vector<std::string>{"Getting TPS information, please wait ...",
                                      "Getting TPS contacts, please wait ...", "closed"}));
  EXPECT_EQ(maximum, 4);
  EXPECT_EQ(tree.count(), 5);
}

TEST_F(TPSContactTreeTest, WithoutSourceOnlyTheRootStands) {
  tps.setSourceDatabase(nullptr);
  tps.populateTPSTree();
  EXPECT_EQ(tree.count(), 1);
}

}  // namespace
}  // namespace lf
