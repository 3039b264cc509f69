// The word-by-word line measure.
#include "frame/text_measure.hpp"

namespace lf {
namespace {

constexpr double kCharWidth = 1.0;
constexpr double kLineHeight = 1.0;

}  // namespace

double measureTextHeight(std::string_view text, double width, double heightFactor) {
  const double halfBlank = kCharWidth / 2.0;
  long lines = 1;
  double lineWidth = 0;
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find(' ', start);
    if (end == std::string_view::npos) end = text.size();
    double word = static_cast<double>(end - start) * kCharWidth + halfBlank;
    lineWidth += word;
    if (lineWidth > width) {
      ++lines;
      lineWidth = word;
    }
    start = end + 1;
  }
  return static_cast<double>(lines) * (heightFactor >= 1 ? heightFactor : kLineHeight);
}

}  // namespace lf
