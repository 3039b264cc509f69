// The blank returns: a stand-in T1 return of the year with one client and no field filled.
#include "tax/profile_blank_returns.hpp"

#include "tax/profile_return_file.hpp"

namespace lf {

std::optional<std::string> loadProfileResource(int year) {
  if (year < kFirstBlankProfileYear || year > kLastBlankProfileYear) return std::nullopt;
  ProfileReturn blank;
  blank.kind = "T1";
  blank.year = year;
  return writeProfileReturn(blank);
}

}  // namespace lf
