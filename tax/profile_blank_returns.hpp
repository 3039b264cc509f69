// The blank Profile T1 returns the program carries, one per tax year 2004 to 2016, under the
// resource type "PROFILE" with the year as the resource number. A new return for a client
// starts as one of them, written out unchanged.
#pragma once

#include <optional>
#include <string>

namespace lf {

inline constexpr int kFirstBlankProfileYear = 2004;
inline constexpr int kLastBlankProfileYear = 2016;

// The bytes of the "PROFILE" resource numbered `year`, or nothing for a year without one.
std::optional<std::string> loadProfileResource(int year);

}  // namespace lf
