// Answers files of the corporate Profile import of any bytes: either they read, or the reader
// throws its Failure naming what is wrong; nothing else may come out. What reads names one of
// the wizard's four address items and a duplicates action it knows.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.hpp"
#include "tax/profile_t2_answers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  lf::ProfileT2Answers answers;
  try {
    answers = lf::parseProfileT2Answers(text, "/srv/returns");
  } catch (const lf::Failure&) {
    return 0;
  }
  if (answers.address < 0 || answers.address > 3) std::abort();
  if (answers.action < 0 || answers.action > 3) std::abort();
  return 0;
}
