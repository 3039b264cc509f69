// The two field lists of the personal Profile import (createFieldList): which Profile field
// goes to which column of the client's contact row, which amounts set which check mark of the
// personal-tax sheet, and the same for the spouse's contact with the columns swapped.
#pragma once

#include <string>
#include <vector>

namespace lf {

struct ProfileFieldRow {
  std::string key;      // column 1: the Profile field key
  std::string label;    // column 2
  std::string format;   // column 3: a format of formatProfileString
  std::string column4;  // column 4: blank, but for the one row that holds a column name here
  std::string column5;  // column 5: the column to write
  int option = -1;      // the wizard option (chkOption index) of an option row, else -1
};

struct ProfileFieldLists {
  std::vector<ProfileFieldRow> client;
  std::vector<ProfileFieldRow> spouse;
};

// Both lists, in list order. Built once; never changed.
const ProfileFieldLists& createFieldList();

}  // namespace lf
