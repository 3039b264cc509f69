#include "host/key_list.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/file_utilities.hpp"

namespace lf {
namespace {

TEST(KeyList, ScanVisitsRowsInOrderAndEnds) {
  KeyList list;
  list.initializeList("Key|Path|Text");
  EXPECT_TRUE(list.isEmptyList());
  EXPECT_FALSE(list.hasItems());
  EXPECT_TRUE(list.isAtEnd());
  list.addRow({Variant::text("C1"), Variant::text("/a.t1"), Variant::text("Smith")});
  list.addRow({Variant::text("C2")});
  EXPECT_EQ(list.count(), 2);
  ASSERT_TRUE(list.hasItems());
  EXPECT_EQ(list.currentValue(1).toString(), "C1");
  EXPECT_EQ(list.currentValue(3).toString(), "Smith");
  list.moveNext();
  EXPECT_FALSE(list.isAtEnd());
  EXPECT_TRUE(list.currentValue(2).isNull());  // beyond the row's columns
  list.moveNext();
  EXPECT_TRUE(list.isAtEnd());
  EXPECT_TRUE(list.currentValue(1).isNull());
  list.clearList();
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(list.isAtEnd());
}

TEST(KeyList, FindKeyPlacesTheCursor) {
  KeyList list;
  list.addRow({Variant::integer(1), Variant::text("first")});
  list.addRow({Variant::text("abc"), Variant::text("second")});
  EXPECT_TRUE(list.findKey("ABC"));
  EXPECT_EQ(list.currentValue(2).toString(), "second");
  EXPECT_TRUE(list.findKey("1"));
  EXPECT_EQ(list.currentValue(2).toString(), "first");
  EXPECT_FALSE(list.findKey("2"));
  EXPECT_TRUE(list.isAtEnd());
}

TEST(FileUtilities, PathsAndExistence) {
  EXPECT_EQ(FileUtilities::folderOfPath("/data/tps/export.mdb"), "/data/tps");
  EXPECT_EQ(FileUtilities::folderOfPath("C:\\TPS\\export.mdb"), "C:\\TPS");
  EXPECT_EQ(FileUtilities::folderOfPath("C:\\export.mdb"), "C:\\");
  EXPECT_EQ(FileUtilities::folderOfPath("/export.mdb"), "/");
  EXPECT_EQ(FileUtilities::folderOfPath("export.mdb"), "");
  EXPECT_EQ(FileUtilities::getSystemDrive("C:\\"), "/");
  auto dir = std::filesystem::temp_directory_path();
  EXPECT_EQ(FileUtilities::getSystemDrive(dir.string()), dir.string());
  auto file = dir / "lf_file_utilities_test.txt";
  std::ofstream(file) << "x";
  EXPECT_TRUE(FileUtilities::fileExists(file.string()));
  EXPECT_FALSE(FileUtilities::fileExists(dir.string()));
  std::filesystem::remove(file);
  EXPECT_FALSE(FileUtilities::fileExists(file.string()));
}

}  // namespace
}  // namespace lf
