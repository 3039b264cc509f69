// The Bill4Time source as data: its description (words, cross-reference tables, client key,
// contact tree) and its field maps. The stages and creators are clsImportBill4TimeInfo's.
#pragma once

#include <span>

#include "sync/field_map.hpp"
#include "sync/source_description.hpp"

namespace lf {

const SourceDescription& bill4TimeSourceDescription();
// Every Bill4Time field map with the export table it reads and the practice table it writes.
std::span<const FieldMap> bill4TimeFieldMaps();

}  // namespace lf
