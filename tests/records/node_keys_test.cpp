// Node keys of the trees: the kind of a key and the ID behind its prefix.
#include "records/node_keys.hpp"

#include <gtest/gtest.h>

namespace lf {
namespace {

TEST(NodeKeys, ContactIDFollowsTheLongestMatchingPrefix) {
  EXPECT_EQ(getContactIDFromContactNodeKey("FirmTaxContact:15"), 15);
  EXPECT_EQ(getContactIDFromContactNodeKey("Contact:15"), 15);
  EXPECT_EQ(getContactIDFromContactNodeKey("TaxContact:8"), 8);
  EXPECT_EQ(getContactIDStringFromContactNodeKey("FirmContact:31"), "31");
  // The number form strips a repeated prefix; the text form does not.
  EXPECT_EQ(getContactIDFromContactNodeKey("Contact:Contact:9"), 9);
  EXPECT_EQ(getContactIDStringFromContactNodeKey("Contact:Contact:9"), "Contact:9");
  EXPECT_EQ(getContactIDFromContactNodeKey("Company:4"), 0);
}

TEST(NodeKeys, CategoryIDPrefersFirmThenTaxThenPlainCategory) {
  EXPECT_EQ(getCategoryIDFromCategoryNodeKey("TaxCategory:7"), 7);
  EXPECT_EQ(getCategoryIDFromCategoryNodeKey("FirmCategory:12"), 12);
  EXPECT_EQ(getCategoryIDFromCategoryNodeKey("category:3"), 3);
  EXPECT_EQ(getCategoryIDStringFromCategoryNodeKey("TaxCategory:7"), "7");
  EXPECT_EQ(getCategoryIDFromCategoryNodeKey("Main"), 0);
}

TEST(NodeKeys, MajorTypeAndSelectedIDGoByContactCompanyCategory) {
  EXPECT_EQ(getSelectedMajorNodeTypeFromString("TaxContact:5"), 1);
  EXPECT_EQ(getSelectedMajorNodeTypeFromString("Company:42"), 2);
  EXPECT_EQ(getSelectedMajorNodeTypeFromString("FirmCategory:3"), 3);
  EXPECT_EQ(getSelectedMajorNodeTypeFromString("Main"), 0);
  EXPECT_EQ(getSelectedNodeIDFromString("Company:42"), 42);
  EXPECT_EQ(getSelectedNodeIDFromString("FirmTaxContact:15"), 15);
  EXPECT_EQ(getSelectedNodeIDFromString("TaxCategory:7"), 7);
  EXPECT_EQ(getSelectedNodeIDStringFromString("Company:ABC1, 2"), "ABC1, 2");
  EXPECT_EQ(getSelectedNodeIDFromString("Company:ABC1"), 0);
}

}  // namespace
}  // namespace lf
