// A text import over a client file written for the test, on the fresh practice database of
// PracticeDatabaseTest: columns are assigned by database field, as the wizard's list would.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>

#include "host/practice_import_duplicates.hpp"
#include "tests/test_support.hpp"
#include "text/delimited_text_import.hpp"

namespace lf::testing {

class TextImportTest : public PracticeDatabaseTest {
 protected:
  void TearDown() override {
    if (!path.empty()) std::filesystem::remove(path);
  }

  // Writes the file and loads it into the import's grid.
  void load(DelimitedTextImport& import, const std::string& bytes, bool captions = false) {
    path = (std::filesystem::path(::testing::TempDir()) /
            ("text_import_" + std::to_string(::getpid()) + ".csv"))
               .string();
    std::ofstream(path, std::ios::binary) << bytes;
    import.reader.fileLocation = path;
    import.reader.firstRowFieldNames = captions;
    import.loadFile();
  }
  // Assigns the columns 1, 2, ... the catalogue fields (an empty name leaves one unassigned).
  void assign(DelimitedTextImport& import, std::initializer_list<std::string_view> fields) {
    int column = 1;
    for (std::string_view field : fields) {
      const FieldItem* item = import.mapping.fieldList().findByDatabaseField(field);
      if (!field.empty()) {
        ASSERT_NE(item, nullptr) << field;
      }
      import.mapping.assign(import.grid, column++, item == nullptr ? -1 : item->key);
    }
  }
  long category(const std::string& name) {
    return static_cast<long>(
        value("SELECT CategoryID FROM Categories WHERE CategoryName='" + name + "'", "CategoryID")
            .toLong());
  }
  std::string contactText(const std::string& where, const std::string& field) {
    Variant v = value("SELECT * FROM Contacts WHERE " + where, field);
    return v.isNull() ? std::string("<null>") : v.toString();
  }

  std::string path;
};

}  // namespace lf::testing
