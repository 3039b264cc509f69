// Merge templates of any bytes: the check of the template editor, then a merge for a company,
// its contact (whose anniversary is far out of the date range) and a time entry, in either
// delimiter spelling and any province. Three procedures are also held to their plain
// definitions: the case-insensitive search, the in-place replacement, and the blanking of
// unfound fields, whose one-pass form must leave exactly the text that removing the first span
// and its copies, again and again, leaves.
//
// Input: byte 0 chooses the spelling, name check, RTF values and list type; byte 1 the country
// and province; bytes 2 and 3 a needle inside the template; the rest is the template.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/practice_database.hpp"
#include "host/locale_service.hpp"
#include "host/practice_host_services.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"
#include "merge/text_search.hpp"

namespace {

class FuzzLocale : public lf::LocaleService {
 public:
  int country = lf::kCountryCanada;
  int province = 3;
  std::string getApplicationName() override { return "Ledgerfolio"; }
  int getCountryMode() override { return country; }
  int getProvinceIndex() override { return province; }
  long getCurrentUserID() override { return 1; }
  long getCurrentPersonalYear() override { return 2012; }
  long getCurrentTaxYear() override { return 2012; }
  std::string getDefaultFileFolder() override { return "/tmp"; }
};

struct Practice {
  lf::Database db;
  FuzzLocale locale;
  std::unique_ptr<lf::PracticeClientDropDown> dropDown;
};

Practice& practice() {
  static Practice* p = [] {
    auto* pr = new Practice();
    lf::Database& db = pr->db;
    db.createNew(":memory:");
    lf::createPracticeTables(db);
    for (const char* sql :
         {"INSERT INTO Companies (CompanyID, CompanyName, Address, City, Province) VALUES "
          "(1, 'Acme «Ltd»', '1 Main\r\nSuite 2', 'Ottawa', 'Ontario');",
          "INSERT INTO Clients (CompanyIDNum, ContactIDNum) VALUES (1, -1);",
          "INSERT INTO ClientData (ClientDataID, CompanyIDNum, ActiveStatus, YearEndDate) "
          "VALUES (10, 1, 1, '2012-03-05 00:00:00');",
          "INSERT INTO Contacts (ContactID, DisplayName, FirstName, LastName, Birthday, "
          "Anniversary) VALUES (5, 'Jane \\''abO''Hara\\''bb', 'Jane', 'O''Hara', "
          "'1970-01-02 00:00:00', 1e300);",
          "INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) "
          "VALUES (5, 1, 1);",
          "INSERT INTO Dockets (DocketID, Subject, TimeFrom, TimeTo) VALUES "
          "(7, 'Review', '1899-12-30 10:30:00', -1e300);"})
      db.executeStatement(sql);
    pr->dropDown = std::make_unique<lf::PracticeClientDropDown>(db);
    lf::ModuleState& state = lf::moduleState();
    state.DatabaseReference = &db;
    state.LocaleReference = &pr->locale;
    state.clientDropDownCtrlReference = pr->dropDown.get();
    return pr;
  }();
  return *p;
}

// The blanking of unfound fields by its definition: the first span, from an opening delimiter
// to the first character of the next closing one, goes with all its exact copies, and the
// search starts again; the escaped pair is tried only when the plain one removed nothing; an
// opening delimiter without a closing one ends the procedure where it stands.
bool blankByDefinition(std::string& text) {
  const std::string_view pairs[2][2] = {{"\xC2\xAB", "\xC2\xBB"}, {"\\'ab", "\\'bb"}};
  bool removed = false;
  for (const auto& pair : pairs) {
    for (;;) {
      size_t o = lf::merge::findNoCase(text, pair[0]);
      if (o == std::string_view::npos) break;
      size_t c = lf::merge::findNoCase(text, pair[1], o + pair[0].size());
      if (c == std::string_view::npos) return removed;
      size_t length = c - o + (pair[1][0] == '\\' ? 1 : 2);
      lf::merge::replaceExact(text, text.substr(o, length), "");
      removed = true;
    }
    if (removed) break;
  }
  return removed;
}

unsigned char fold(unsigned char c) {
  return c >= 'a' && c <= 'z' ? c - 32 : c;
}

size_t findByDefinition(std::string_view text, std::string_view needle, size_t from) {
  if (needle.empty()) return from <= text.size() ? from : std::string_view::npos;
  for (size_t i = from; i < text.size() && text.size() - i >= needle.size(); ++i) {
    size_t k = 0;
    while (k < needle.size() && fold(text[i + k]) == fold(needle[k])) ++k;
    if (k == needle.size()) return i;
  }
  return std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  Practice& p = practice();
  const std::uint8_t flags = data[0];
  p.locale.country = (data[1] & 0x80) ? lf::kCountryUnitedStates : lf::kCountryCanada;
  p.locale.province = data[1] % 14;
  const std::string text(reinterpret_cast<const char*>(data) + 4, size - 4);

  // The search against its definition, for a needle cut from the template.
  const size_t at = text.empty() ? 0 : data[2] % text.size();
  const std::string_view needle = std::string_view(text).substr(at, data[3] % 8);
  for (size_t from : {size_t{0}, at / 2})
    if (lf::merge::findNoCase(text, needle, from) != findByDefinition(text, needle, from))
      std::abort();
  // Replacing, in place, growing or shrinking, against a copy built piece by piece.
  if (!needle.empty()) {
    const std::string with = (data[3] & 8) ? "\xC2\xAB-longer-\xC2\xBB" : "";
    const std::string find(needle);
    std::string replaced = text, expected;
    size_t copied = 0, found = 0;
    for (size_t p = findByDefinition(text, find, 0); p != std::string_view::npos;
         p = findByDefinition(text, find, p + find.size()), ++found) {
      expected.append(text, copied, p - copied).append(with);
      copied = p + find.size();
    }
    expected.append(text, copied, std::string::npos);
    if (lf::merge::replaceNoCase(replaced, find, with) != static_cast<int>(found) ||
        replaced != expected)
      std::abort();
  }

  // One merge object per list type, its catalogue built and its recordsets opened once, as a
  // run over many records keeps them.
  static const int kListTypes[] = {1, 2, 5, 6, 8};
  static std::unique_ptr<lf::clsInsertFieldsInRTB> merges[5];
  const size_t which = ((flags >> 3) & 7) % 5;
  if (!merges[which]) {
    merges[which] = std::make_unique<lf::clsInsertFieldsInRTB>();
    merges[which]->ListType = kListTypes[which];
    bool noListBox = true, clearListBox = true;
    merges[which]->createDefaultFieldListStructure(noListBox, clearListBox);
  }
  lf::clsInsertFieldsInRTB& rtb = *merges[which];
  rtb.ConvertStrToRTF = (flags & 4) != 0;
  int messages = 0;
  rtb.testErrorComment = [&messages](const std::string&) { ++messages; };
  rtb.testRTBComment(text, (flags & 1) != 0, true, (flags & 2) != 0);

  std::string blanked = text, expected = text;
  const bool removed = rtb.replaceUnfoundMergeFieldsWithBlanks(blanked);
  if (removed != blankByDefinition(expected) || blanked != expected) std::abort();

  rtb.companyID = 1;
  rtb.contactID = 5;
  rtb.docketID = 7;
  rtb.firmID = 1;
  rtb.TemplateText = text;
  rtb.parseRTBComment();
  return 0;
}
