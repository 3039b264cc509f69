// Writing a field map, and the transforms the sources share.
#include "sync/field_map.hpp"

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "db/database_service.hpp"
#include "sync/sync_engine.hpp"
#include "sync/sync_values.hpp"

namespace lf {

void writeFields(DatabaseService& source, std::int32_t from, DatabaseService& db, std::int32_t to,
                 std::span<const FieldMapping> map) {
  for (const FieldMapping& field : map) {
    FieldValues values;
    for (size_t i = 0; i < field.source.size() && !field.source[i].empty(); ++i)
      values[i] = SyncEngine::readText(source, from, field.source[i]);
    const std::string value = field.transform ? field.transform(values) : values[0];
    if (!GeneralUtilities::isBlank(value)) db.setField(to, field.target, value);
  }
}

namespace fields {

std::string telephone(const FieldValues& v) {
  return composeTelephone(v[0], v[1], v[2]);
}

std::string firstEmail(const FieldValues& v) {
  FieldValues sorted = v;
  sortEmailAddresses(sorted[0], sorted[1], sorted[2]);
  return sorted[0];
}

std::string secondEmail(const FieldValues& v) {
  FieldValues sorted = v;
  sortEmailAddresses(sorted[0], sorted[1], sorted[2]);
  return sorted[1];
}

std::string validDate(const FieldValues& v) {
  if (GeneralUtilities::isBlank(v[0])) return {};
  auto date = DateUtilities::parseDateText(GeneralUtilities::trim(v[0]));
  return date ? date->toIso() : std::string();
}

std::string trimmed(const FieldValues& v) {
  return GeneralUtilities::trim(v[0]);
}

std::string displayName(const FieldValues& v) {
  const std::string &nick = v[0], &first = v[1], &last = v[2];
  if (!nick.empty() && !last.empty()) return nick + " " + last;
  if (!first.empty() && !last.empty()) return first + " " + last;
  return {};
}

}  // namespace fields
}  // namespace lf
