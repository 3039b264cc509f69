// Small helpers shared by the client-record procedures of records/: the services of the
// module state as references, and the blank test and number conversions of field values.
// Internal to records/; callers outside it use the procedures' headers.
#pragma once

#include <string>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/variant.hpp"
#include "host/client_drop_down.hpp"
#include "host/locale_service.hpp"

namespace lf::records {

// Reaching a service the host has not set is the legacy "Object variable not set" failure.
[[noreturn]] inline void serviceNotSet() {
  throw Failure("Object variable or With block variable not set", 91);
}

inline LocaleService& locale() {
  LocaleService* service = moduleState().LocaleReference;
  if (service == nullptr) serviceNotSet();
  return *service;
}

inline ClientDropDownService& dropDown() {
  ClientDropDownService* service = moduleState().clientDropDownCtrlReference;
  if (service == nullptr) serviceNotSet();
  return *service;
}

inline bool blank(const Variant& value) {
  return GeneralUtilities::isBlank(value);
}

inline long toLong(const Variant& value) {
  return static_cast<long>(value.toLong());
}

// An ID as it goes into SQL and into a field: its decimal text.
inline std::string text(long value) {
  return std::to_string(value);
}

inline const char* boolText(bool value) {
  return value ? "True" : "False";
}

}  // namespace lf::records
