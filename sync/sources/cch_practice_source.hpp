// The CCH Practice source as data: its description (words, cross-reference tables, the
// two-column client key, contact tree) and its field maps. The stages and creators are
// clsImportCCHPracticeInfo's.
#pragma once

#include <span>

#include "sync/field_map.hpp"
#include "sync/source_description.hpp"

namespace lf {

const SourceDescription& cchPracticeSourceDescription();
// Every CCH Practice field map with the export table it reads and the practice table it
// writes.
std::span<const FieldMap> cchPracticeFieldMaps();

}  // namespace lf
