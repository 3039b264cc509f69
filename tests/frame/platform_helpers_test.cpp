#include <gtest/gtest.h>
#include <unistd.h>

#include "frame/input_state.hpp"
#include "frame/shell_errors.hpp"
#include "frame/text_measure.hpp"

namespace lf {
namespace {

TEST(ShellErrors, KnownCodesHaveTheirTexts) {
  EXPECT_EQ(shellErrorText(2), "The specified file was not found.");
  EXPECT_EQ(shellErrorText(5), "The operating system denied access to the specified file. ");
  EXPECT_EQ(shellErrorText(11),
            "The .exe file is invalid (non-Win32® .exe or error in .exe image).");
  EXPECT_EQ(shellErrorText(32), "The specified dynamic-link library was not found. ");
}

TEST(ShellErrors, AnUnknownShellCodeGivesAnEmptyText) {
  for (long code : {0L, 1L, 4L, 33L, 42L, -2L}) EXPECT_EQ(shellErrorText(code), "") << code;
}

TEST(TextMeasure, WrapsWordByWordWithHalfABlankPerWord) {
  // "aaaa" is 4.5 units with its half blank; two fit in 9 units, three do not.
  EXPECT_EQ(measureTextHeight("aaaa aaaa", 9), 1);
  EXPECT_EQ(measureTextHeight("aaaa aaaa", 8.9), 2);
  EXPECT_EQ(measureTextHeight("aaaa aaaa aaaa", 9), 2);
  EXPECT_EQ(measureTextHeight("aaaa aaaa aaaa aaaa aaaa", 9), 3);
  EXPECT_EQ(measureTextHeight("short", 100), 1);
}

TEST(TextMeasure, HeightFactorAppliesFromOne) {
  EXPECT_EQ(measureTextHeight("aaaa aaaa aaaa", 9, 240), 480);
  EXPECT_EQ(measureTextHeight("aaaa aaaa aaaa", 9, 0.5), 2);
}

TEST(InputState, InputWaitingOnAPipeIsNoUserInput) {
  int saved = dup(STDIN_FILENO);
  int fds[2];
  ASSERT_EQ(pipe(fds), 0);
  ASSERT_EQ(write(fds[1], "x\n", 2), 2);
  dup2(fds[0], STDIN_FILENO);
  bool waiting = getInputState();
  dup2(saved, STDIN_FILENO);
  close(saved);
  close(fds[0]);
  close(fds[1]);
  EXPECT_FALSE(waiting);
}

}  // namespace
}  // namespace lf
