// Case-insensitive search and replace for the merge language.
#include "merge/text_search.hpp"

#include <cstring>
#include <vector>

namespace lf::merge {
namespace {
inline unsigned char fold(unsigned char c) {
  return (c >= 'a' && c <= 'z') ? c - 32 : c;
}

}  // namespace

size_t findNoCase(std::string_view text, std::string_view needle, size_t from) {
  if (needle.empty()) return from <= text.size() ? from : std::string_view::npos;
  if (from >= text.size() || needle.size() > text.size() - from) return std::string_view::npos;
  const unsigned char upperFirst = fold(static_cast<unsigned char>(needle[0]));
  const unsigned char lowerFirst = (upperFirst >= 'A' && upperFirst <= 'Z')
                                       ? static_cast<unsigned char>(upperFirst + 32)
                                       : upperFirst;
  const char* base = text.data();
  const size_t end = text.size() - needle.size() + 1;  // candidates lie in [from, end)
  // The next place of each case of the first byte. A place is looked for again only once the
  // search has passed it, so each case is scanned over the text once: a byte that is frequent
  // in one case and absent in the other (hex digits of an embedded picture) costs no more.
  auto next = [&](unsigned char c, size_t at) -> size_t {
    const void* hit = std::memchr(base + at, c, end - at);
    return hit == nullptr ? end : static_cast<size_t>(static_cast<const char*>(hit) - base);
  };
  size_t nextUpper = next(upperFirst, from);
  size_t nextLower = lowerFirst != upperFirst ? next(lowerFirst, from) : end;
  for (;;) {
    const size_t i = nextUpper < nextLower ? nextUpper : nextLower;
    if (i >= end) return std::string_view::npos;
    size_t k = 1;
    while (k < needle.size() && fold(static_cast<unsigned char>(base[i + k])) ==
                                    fold(static_cast<unsigned char>(needle[k])))
      ++k;
    if (k == needle.size()) return i;
    if (nextUpper == i) nextUpper = next(upperFirst, i + 1);
    if (nextLower == i) nextLower = next(lowerFirst, i + 1);
  }
}

bool containsNoCase(std::string_view text, std::string_view needle) {
  return findNoCase(text, needle) != std::string_view::npos;
}

bool equalsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (fold(static_cast<unsigned char>(a[i])) != fold(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

int replaceNoCase(std::string& text, std::string_view find, std::string_view with, int count,
                  size_t from) {
  if (find.empty() || count == 0) return 0;
  size_t pos = findNoCase(text, find, from);
  if (pos == std::string_view::npos) return 0;
  int done = 0;
  if (with.size() <= find.size()) {
    // In place, front to back: the part still to be searched lies beyond what is written.
    char* d = text.data();
    size_t read = pos, write = pos;
    while (pos != std::string_view::npos && (count < 0 || done < count)) {
      std::memmove(d + write, d + read, pos - read);
      write += pos - read;
      if (!with.empty()) std::memcpy(d + write, with.data(), with.size());
      write += with.size();
      read = pos + find.size();
      ++done;
      pos = findNoCase(text, find, read);
    }
    std::memmove(d + write, d + read, text.size() - read);
    text.resize(text.size() - (read - write));
    return done;
  }
  // Growing: every place first, then the pieces moved back to front in the longer text.
  std::vector<size_t> places;
  while (pos != std::string_view::npos && (count < 0 || done < count)) {
    places.push_back(pos);
    ++done;
    pos = findNoCase(text, find, pos + find.size());
  }
  const size_t grow = with.size() - find.size();
  size_t end = text.size();
  text.resize(text.size() + places.size() * grow);
  char* d = text.data();
  for (size_t k = places.size(); k-- > 0;) {
    const size_t after = places[k] + find.size();
    std::memmove(d + after + (k + 1) * grow, d + after, end - after);
    std::memcpy(d + places[k] + k * grow, with.data(), with.size());
    end = places[k];
  }
  return done;
}

int replaceExact(std::string& text, std::string_view find, std::string_view with) {
  if (find.empty()) return 0;
  size_t pos = text.find(find);
  if (pos == std::string::npos) return 0;
  std::string out;
  size_t from = 0;
  int done = 0;
  while (pos != std::string::npos) {
    out.append(text, from, pos - from);
    out.append(with);
    from = pos + find.size();
    ++done;
    pos = text.find(find, from);
  }
  out.append(text, from, std::string::npos);
  text.swap(out);
  return done;
}

std::string upper(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(fold(static_cast<unsigned char>(c)));
  return out;
}

}  // namespace lf::merge
