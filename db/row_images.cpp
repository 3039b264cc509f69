// Row images: the stored values of single rows, by table and key, as the service last read or
// wrote them whole. A statement that reads one row by its auto-number key, every column a
// stored column of the table, is answered from the row's image while nothing but the
// service's own updates of that row (which the image takes) has written it. A client's new
// rows are read back many times by the record operations and summaries.
#include <cmath>

#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

Database::Impl::RowImage* Database::Impl::validImage(const std::string& table, std::int64_t key) {
  auto rows = rowImages.find(table);
  if (rows == rowImages.end()) return nullptr;
  auto image = rows->second.find(key);
  if (image == rows->second.end()) return nullptr;
  if (image->second.at < anythingWrittenAt || image->second.at < rowWrittenAt(table, key)) {
    rows->second.erase(image);
    --rowImageCount;
    return nullptr;
  }
  return &image->second;
}

Database::Impl::RowImage& Database::Impl::newImage(const std::string& table, std::int64_t key,
                                                   size_t columns) {
  if (rowImageCount >= kRowImagesSize) {
    rowImages.clear();
    rowImageCount = 0;
  }
  auto [image, added] = rowImages[table].try_emplace(key);
  if (added) ++rowImageCount;
  image->second.row = Row{};
  image->second.row.cells.resize(columns);
  image->second.at = writeClock;
  return image->second;
}

bool Database::Impl::answerFromImage(Recordset& r) {
  const Shape& shape = *r.shape;
  if (!shape.answeredByImage || !r.addedHere.empty() || !options.writeAheadLog) return false;
  std::int64_t key = 0;
  if (!wholeNumber(r.parameters[0].text, key)) return false;
  noteUntrackedChanges();
  const RowImage* image = validImage(tableInfo(r.translated.tables[0].table).name, key);
  if (image == nullptr) return false;
  r.rows.clear();
  if (!r.snapshotMax.empty() && key > r.snapshotMax[0]) return true;  // added after the open
  Row row;
  row.cells.resize(r.columns.size() + r.slotCount);
  for (size_t c = 0; c < shape.imagePositions.size(); ++c) {
    const Cell& cell = image->row.cells[static_cast<size_t>(shape.imagePositions[c])];
    if (cell.kind == Kind::Text)
      row.setText(c, std::string_view(image->row.arena).substr(cell.off, cell.len));
    else
      row.cells[c] = cell;
  }
  row.cells[r.columns.size()].kind = Kind::Integer;
  row.cells[r.columns.size()].i = key;
  r.rows.push_back(std::move(row));
  return true;
}

void Database::Impl::imageFromRead(const Recordset& r) {
  if (!r.shape->readsWholeRow || r.rows.size() != 1 || !options.writeAheadLog) return;
  const TableInfo& info = tableInfo(r.translated.tables[0].table);
  const Row& read = r.rows[0];
  RowImage& image = newImage(info.name, r.keyOf(0, 0), info.columnOrder.size());
  for (size_t c = 0; c < r.shape->imagePositions.size(); ++c) {
    if (r.shape->imagePositions[c] < 0) continue;
    const Cell& cell = read.cells[c];
    const auto at = static_cast<size_t>(r.shape->imagePositions[c]);
    if (cell.kind == Kind::Text)
      image.row.setText(at, std::string_view(read.arena).substr(cell.off, cell.len));
    else
      image.row.cells[at] = cell;
  }
}

void Database::Impl::imageFromInsert(const TableInfo& info, std::int64_t key,
                                     const ColumnValues& values) {
  // Not after a write that changed more than the row (a trigger may have changed it too).
  if (!options.writeAheadLog || !info.literalDefaults || !info.keys.grows() ||
      info.rowidAlias.empty() || anythingWrittenAt == writeClock)
    return;
  for (const auto& [name, value] : values)
    if (!cleanValue(value) || info.columnPosition.find(name) == info.columnPosition.end()) return;
  RowImage& image = newImage(info.name, key, info.columnOrder.size());
  for (const auto& [name, value] : info.defaults)
    image.row.set(static_cast<size_t>(info.columnPosition.at(name)), value);
  for (const auto& [name, value] : values)
    image.row.set(static_cast<size_t>(info.columnPosition.at(std::string(name))), asStored(value));
  image.row.set(static_cast<size_t>(info.columnPosition.at(info.rowidAlias)),
                Variant::integer(key));
}

void Database::Impl::imageTakesUpdate(const std::string& table, std::int64_t key,
                                      std::int64_t writtenBefore, const RowValues& updated) {
  auto rows = rowImages.find(table);
  if (rows == rowImages.end()) return;
  auto image = rows->second.find(key);
  if (image == rows->second.end()) return;
  const TableInfo& info = tableInfo(table);
  bool takes = image->second.at >= writtenBefore && image->second.at >= anythingWrittenAt;
  for (const auto& [column, value] : updated)
    takes = takes && cleanValue(value) && info.columnPosition.count(column) > 0;
  if (!takes) {
    rows->second.erase(image);
    --rowImageCount;
    return;
  }
  for (const auto& [column, value] : updated)
    image->second.row.set(static_cast<size_t>(info.columnPosition.at(column)), asStored(value));
  image->second.at = writeClock;
}

}  // namespace lf
