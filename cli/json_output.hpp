// JSON text of the commands' output and of the run report. Text that enters the component is
// made valid UTF-8 where it enters; should a value slip through all the same, it is written
// with U+FFFD in place of the bad bytes: the output of a run never fails on a value.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace lf::cli {

template <class Json>
std::string jsonText(const Json& value, int indent = 2) {
  return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace lf::cli
