// The terminal and answers-file front ends of the two questions a new Profile return asks
// besides its message boxes: frmProfileTaxYear (the year of the return, 0 on Cancel) and the
// Cancel button of the dialog that waits for Profile to show the new return.
//
// At the terminal the year question takes one line (Enter keeps the year picked, a number of
// the list picks that item, a year may be typed, "cancel" or the end of input is Cancel), and
// while Profile is awaited a line typed, or the end of input, presses Cancel. Unattended, the
// run's answers (MsgboxClass) press Cancel on either by a part of its text, as they answer the
// message boxes: "Select year for new Profile T1 file:" or "Connecting with Profile".
#pragma once

#include <istream>
#include <optional>
#include <ostream>
#include <vector>

namespace lf {

class clsImportProfileT1;

// The years the question offers: the host's current personal year down to 2004.
std::vector<long> profileTaxYearItems();

// frmProfileTaxYear at the terminal; the chosen year, 0 after Cancel.
long askProfileTaxYearAtTerminal(const std::vector<long>& years, std::istream& in,
                                 std::ostream& out);
// frmProfileTaxYear answered beforehand: Cancel when the run's answers press it, otherwise
// OK with the year given (typed into the box) or the year first picked.
long askProfileTaxYearFromAnswers(const std::vector<long>& years, std::optional<long> year);

// Hooks the waiting dialog of `profile` to the terminal: its caption is shown, and between two
// polls a line on `in` (or its end) presses Cancel. `fd` is the descriptor behind `in`, waited
// on for up to 50 ms a poll; -1 reads `in` at once.
void connectNewProfileFileDialogToTerminal(clsImportProfileT1& profile, std::istream& in, int fd,
                                           std::ostream& out);
// Hooks it to the run's answers: Cancel is pressed as the dialog shows when they say so.
void connectNewProfileFileDialogToAnswers(clsImportProfileT1& profile);

}  // namespace lf
