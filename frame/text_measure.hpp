// How tall a text is when wrapped into a given width: the line count of a word-by-word walk,
// times the line height. Measured over a fixed-width font in which every character, the blank
// included, is one unit wide and a line is one unit high.
#pragma once

#include <string_view>

namespace lf {

// Walks the blank-separated words, adding each word's width and half a blank to the line;
// when the line exceeds `width` the count grows by 1 and the new line starts with that word.
// Answers lines times the line height, or times `heightFactor` when that is 1 or more.
double measureTextHeight(std::string_view text, double width, double heightFactor = 0);

}  // namespace lf
