// Helpers of the summary tests: rows written straight into the practice database and the RTF
// frame strings the expected texts are built from.
#pragma once

#include <string>

#include "tests/test_support.hpp"

namespace lf::summaries_test {

inline const std::string kPrologue =
    R"({\rtf1\ansi\ansicpg1252\deff0\deflang4105{\fonttbl{\f0\fswiss\fcharset0 Arial;}})"
    R"(\viewkind4\uc1\pard\f0\fs16)";
inline const std::string kPar = "\\par\r\n";
inline const std::string kEnd = "\\par\r\n}";

class SummaryTest : public testing::PracticeDatabaseTest {
 protected:
  void exec(const std::string& sql) { db->executeStatement(sql); }
  std::string text(const std::string& sql, const std::string& field) {
    return value(sql, field).toString();
  }
};

}  // namespace lf::summaries_test
