// The business word pattern, compiled once with PCRE2, and the check pass of the trees that
// classify by it.
#include "sync/word_pattern.hpp"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <memory>
#include <string>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "records/node_keys.hpp"
#include "sync/client_tree.hpp"

namespace lf {
namespace {

// The literal as the trees have always used it. "collectibanquet" (no bar between the two
// words), "eduacation", "appartments", "auotmotive", "valueation" and "mangement" are
// intended: the pattern is kept exactly as users have known its guesses.
constexpr std::string_view kBusinessPattern =
    R"(([0-9]|llp|,llp|,llp\.|llp\.|inc|,inc|,inc\.|inc\.|ltd|,ltd|,ltd\.|ltd\.|co|,co|,co\.|co\.|trust|estate|office|farms|limited|institute|service|club|centre|system|community|council|ontario|alberta|toronto|organization|consult|corp|,corp|,corp\.|corp\.|assoc|group|partner|college|university|school|dentist|pension|professional|heights|plaza|hardwood|flooring|charity|charities|non-bill|develop|farm|appartments|venture|environ|solution|optometry|eduacation|edu.|fund|invest|national|craft|union|canada|design|medical|pharmacy|photograph|united|carpent|join|trans|refrig|chiropract|foundation|founder|minist| of |canadian|royal|restaurant|product|produce|account|sales|purchase|person|communicat|computer|department|processing|company|snow|plow|landscap|lawn|indust|thermal|insulat|apprentice|perform|collectibanquet|garden|paint|holding|access|auction|wine|enterprise|mechan|construct|model|financi|studio|health care|graphic|medicine|sport|promotion|propert|barrister|capital|meat|pharmaceutical|law|auotmotive|market|advertis|decor|vision|food|valueation|resource|wealth|ecom|manage|mangement|bank|merchant|Dr |Dr. {1,}))";

struct CodeDeleter {
  void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};

const pcre2_code* businessPattern() {
  static const std::unique_ptr<pcre2_code, CodeDeleter> code = [] {
    int error = 0;
    PCRE2_SIZE offset = 0;
    pcre2_code* compiled =
        pcre2_compile(reinterpret_cast<PCRE2_SPTR>(kBusinessPattern.data()),
                      kBusinessPattern.size(), PCRE2_CASELESS, &error, &offset, nullptr);
    if (compiled == nullptr) throw Failure("The business word pattern does not compile");
    return std::unique_ptr<pcre2_code, CodeDeleter>(compiled);
  }();
  return code.get();
}

}  // namespace

bool looksLikeBusinessName(std::string_view nodeText) {
  if (!nodeText.empty() && nodeText.back() == ',') nodeText.remove_suffix(1);
  const std::string text = GeneralUtilities::trim(nodeText);
  const pcre2_code* code = businessPattern();
  std::unique_ptr<pcre2_match_data, decltype(&pcre2_match_data_free)> match(
      pcre2_match_data_create_from_pattern(code, nullptr), &pcre2_match_data_free);
  const int rc = pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), 0, 0,
                             match.get(), nullptr);
  return rc >= 0;
}

bool populateInitialCheckedItemsByWordPattern(ClientTree& tree, bool businessList,
                                              const std::function<void(long&)>& onProgress) {
  long counter = 0;
  for (int i = 0; i < tree.count(); ++i) {
    ClientTreeNode& node = tree.node(i);
    if (getSelectedMajorNodeTypeFromString(node.key) != 2) {
      node.checked = false;
      continue;
    }
    const bool business = looksLikeBusinessName(node.text);
    node.checked = businessList ? business : !business;
    ++counter;
    if (onProgress) onProgress(counter);
  }
  return !businessList;
}

}  // namespace lf
