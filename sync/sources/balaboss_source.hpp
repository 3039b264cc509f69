// The Balaboss source as data: its description (words, cross-reference tables, client key,
// contact tree) and its field maps. The stages and creators are clsImportBalabossInfo's.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/variant.hpp"
#include "sync/field_map.hpp"
#include "sync/source_description.hpp"

namespace lf {

const SourceDescription& balabossSourceDescription();
// Every Balaboss field map with the export table it reads and the practice table it writes.
std::span<const FieldMap> balabossFieldMaps();

// The e-mail of a client with every "#mailto:" mark of a mail link removed, trimmed.
std::string balabossEmail(const FieldValues& values);
// The year end of strYearEnd: the text trimmed and cut at ",  " into day and month before and
// the year after ("Jun 30,  2025"); without a year, `thisYear`. Nothing when it is no date.
std::optional<Date> balabossYearEnd(std::string_view text, long thisYear);

}  // namespace lf
