// clsClientAddrBkCatTxt: the address-book path of a business client; see the header.
#include "summaries/cls_client_addr_bk_cat_txt.hpp"

#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"

namespace lf {
namespace {

// Both look-ups report under one label.
constexpr std::string_view kLookupLabel =
    "Ledgerfolio.exe-modDatabaseFunctions-getParentCategoryIDFromCompanyID";

// A cycle in the parents of categories (or of companies) ends after this many rounds.
constexpr int kMaxRounds = 100;

}  // namespace

clsClientAddrBkCatTxt::clsClientAddrBkCatTxt() {
  nodes_.initializeList("Kind|ID");
}

void clsClientAddrBkCatTxt::generateCategoryText() {
  // Intended: the label keeps a different form of the class name.
  procedure("Ledgerfolio.exe-clsClientAddrBookCatText-generateCategoryText", [&] {
    if (clientType_ != 2) return;
    nodes_.clearList();
    categoryText_.clear();

    long id = getParentCategoryIDFromCompanyID(companyIDNum_);
    for (int rounds = 0; id >= 1 && rounds < kMaxRounds; ++rounds)
      id = getParentCategoryIDFromCategoryNum(id);

    ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
    long mainCategory = dropDown != nullptr ? dropDown->getMainAddressBookCategoryID() : -1;
    std::string indent = "    ";
    for (long n = nodes_.count(); n >= 1; --n) {
      nodes_.hasItems();
      for (long skip = 1; skip < n; ++skip) nodes_.moveNext();
      long kind = static_cast<long>(nodes_.currentValue(1).toLong());
      long nodeID = static_cast<long>(nodes_.currentValue(2).toLong());
      if (kind == kCategoryNode && !showMainAddressBookCategory_ && nodeID == mainCategory)
        continue;
      std::string name;
      if (dropDown != nullptr) {
        if (kind == kCategoryNode)
          name = dropDown->getCategoryName(nodeID);
        else if (kind == kCompanyNode)
          name = dropDown->getCompanyName(nodeID);
        else
          name = dropDown->getContactName(nodeID);
      }
      categoryText_ += indent + name + "\r\n";
      indent += "    ";
    }
  });
}

long clsClientAddrBkCatTxt::getParentCategoryIDFromCompanyID(long companyID) {
  long result = -1;
  // A chain of parent companies is walked by recursion; a cycle in it stops like one in the
  // categories.
  int depth = 0;
  for (long id = companyID; depth < kMaxRounds; ++depth) {
    long parentCompany = -1;
    procedure(kLookupLabel, [&] {
      DatabaseService* db = usablePracticeDatabase();
      if (db == nullptr) return;
      RecordsetScope company(*db,
                             "SELECT Companies.CompanyID, Companies.CompanyNum, "
                             "Companies.CategoryNum FROM Companies WHERE Companies.CompanyID = " +
                                 std::to_string(id) + ";",
                             kLockReadOnly);
      if (!db->hasRecord(company)) return;
      long category = static_cast<long>(db->getField(company, "CategoryNum").toLong());
      long parent = static_cast<long>(db->getField(company, "CompanyNum").toLong());
      if (category > 0) {
        nodes_.addRow({Variant::integer(kCategoryNode), Variant::integer(category)});
        result = category;
      } else if (parent > 0) {
        nodes_.addRow({Variant::integer(kCompanyNode), Variant::integer(parent)});
        parentCompany = parent;
      }
    });
    if (parentCompany <= 0) break;
    id = parentCompany;
  }
  return result;
}

long clsClientAddrBkCatTxt::getParentCategoryIDFromCategoryNum(long categoryID) {
  long result = -1;
  procedure(kLookupLabel, [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope category(*db,
                            "SELECT Categories.CategoryID, Categories.CategoryNum FROM Categories "
                            "WHERE CategoryID = " +
                                std::to_string(categoryID) + ";",
                            kLockReadOnly);
    if (!db->hasRecord(category)) return;
    long parent = static_cast<long>(db->getField(category, "CategoryNum").toLong());
    if (parent > 0) {
      nodes_.addRow({Variant::integer(kCategoryNode), Variant::integer(parent)});
      result = parent;
    }
  });
  return result;
}

}  // namespace lf
