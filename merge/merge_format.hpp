// Date, money and duration texts of the merge engine.
//
// The engine formats with the legacy Format patterns it stores ("mmm d, yyyy",
// "h:Nn am/pm", "$#,##0.00;$-#,##0.00") and writes durations as "1 hr 30 min". These
// helpers cover the patterns the engine uses; they are kept private to merge/ so that they
// can be switched to the shared formatter in one place.
#pragma once

#include <string>
#include <string_view>

#include "db/variant.hpp"

namespace lf::merge {

// Legacy date pattern: d dd ddd dddd, m mm mmm mmmm, yy yyyy, h hh, n nn, s ss, am/pm;
// letters in either case, anything else literal. "m" right after an hour means minutes.
std::string formatDate(const Date& date, std::string_view pattern);
// "$#,##0.00;$-#,##0.00".
std::string formatMoney(double value);
// Minutes as "1 hr 30 min", "2 hr", "31 min", "0 min".
std::string minutesToText(long minutes);

}  // namespace lf::merge
