// Field keys of Profile returns: the text passed unchanged to a client's Field, read into its
// shape so that a return file holds only keys the product would answer.
//
// Shapes, as the component writes them:
//   bare name            ClientSIN, SpouseTitle
//   line number          Line101, line166 (the case stands as written)
//   schedule cell        Schedule4[30]
//   form cell            T1[48], RC71[15], T1Info[4]
//   text cell            T1Info.S[23]
//   choice cell          T1Info.B[24]
//   repeating form cell  T2125.S[1,3], T2125[1,2]       form, copy, cell
//   repeating table cell T2125Owners.S[1,2,1]           copy, row, column
// A name is a letter followed by letters and digits; an index is 0 to 99999.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lf {

enum class ProfileKeyShape {
  BareName,
  LineNumber,
  ScheduleCell,
  FormCell,
  TextCell,
  ChoiceCell,
  RepeatingFormCell,
  RepeatingTableCell,
};

struct ProfileFieldKey {
  ProfileKeyShape shape = ProfileKeyShape::BareName;
  std::string name;        // the bare name, or the form's name
  char cellKind = 0;       // 'S' or 'B' after the form's name, 0 for none
  std::vector<int> index;  // the indexes between the brackets, 0 to 3 of them
  int lineNumber = 0;      // the number of a LineNNN key

  // The key as text again: toText(parse(k)) == k for every key that parses.
  std::string toText() const;
};

// The key's shape, or nothing for a text that is no key.
std::optional<ProfileFieldKey> parseProfileFieldKey(std::string_view text);

}  // namespace lf
