// Answers files of the personal Profile import of any bytes: either they read, or the reader
// throws its Failure naming what is wrong; nothing else may come out. What reads holds only
// option numbers the wizard has and a couples choice it knows.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.hpp"
#include "tax/profile_t1_answers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  lf::ProfileT1Answers answers;
  try {
    answers = lf::parseProfileT1Answers(text, "/srv/returns");
  } catch (const lf::Failure&) {
    return 0;
  }
  for (int option : answers.options)
    if (option < 0 || option > 38) std::abort();
  if (answers.couples < 0 || answers.couples > 2) std::abort();
  return 0;
}
