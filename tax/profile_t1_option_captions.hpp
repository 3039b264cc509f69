// The captions of the personal Profile wizard's options: the chkOption boxes 0 to 38 of the
// advanced pages, "If Line130 - 'Other Income' in Profile then check 'Other Income'", each
// naming the return's field, its label and the mark of the personal-tax sheet it sets, and the
// three optCouplesReturn choices of the import options page. The answers file may name an
// option by its caption.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace lf {

inline constexpr int kProfileT1OptionCount = 39;

// The caption of each chkOption box. Boxes 0 to 32 speak of the client list's option rows,
// 33 to 36 of the spouse list's (which consult boxes 0 to 3), 37 and 38 of Line342 and Line340,
// which no row reads.
const std::array<std::string, kProfileT1OptionCount>& profileT1OptionCaptions();
// The box an answers file names: by its caption, or by the field key it speaks of ("Line130",
// any letter case). -1 for none.
int profileT1OptionOfName(std::string_view name);

// The captions of optCouplesReturn 0, 1 and 2.
const std::array<std::string, 3>& profileT1CouplesCaptions();

}  // namespace lf
