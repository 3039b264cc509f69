// The inside of the database service (db/database.hpp), shared by the files that implement
// it, one concern each: the connection and write groups, the tables and their keys, the
// keysets and the rows they read, the search indexes, the gathered writes and their
// propagation to open recordsets. Internal to db/.
#pragma once

#include <charconv>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/text_encoding.hpp"
#include "db/access_sql.hpp"
#include "db/column_values.hpp"
#include "db/database.hpp"
#include "db/row_cache.hpp"
#include "db/row_keys.hpp"
#include "db/sql_backend.hpp"

namespace lf {

class ErrorService;

namespace database_detail {

inline std::string upper(std::string_view s) {
  return GeneralUtilities::upperCase(s);
}

// The values of a new row by column name; the names belong to the statement's shape.
using ColumnValues = std::vector<std::pair<std::string_view, Variant>>;

// The name of the index over these columns, and the columns of an index name.
inline std::string indexName(const std::vector<int>& cols) {
  std::string name;
  for (int c : cols) name += std::to_string(c) + ",";
  return name;
}

inline std::vector<int> indexColumns(const std::string& name) {
  std::vector<int> cols;
  for (size_t p = 0; p < name.size();) {
    size_t q = name.find(',', p);
    cols.push_back(std::stoi(name.substr(p, q - p)));
    p = q + 1;
  }
  return cols;
}

// A text value as clean text: the bytes are kept when they are valid UTF-8.
inline std::string cleanText(std::string_view bytes) {
  return isCleanText(bytes) ? std::string(bytes) : textFromOutside(bytes);
}

// A number literal of plain digits (a sign allowed) as an integer; false for anything else,
// which the callers then read as a general number or not at all.
inline bool wholeNumber(std::string_view text, std::int64_t& out) {
  const char* end = text.data() + text.size();
  auto [stop, error] = std::from_chars(text.data(), end, out);
  return error == std::errc() && stop == end && !text.empty();
}

// True when a value written reads back as the same value: text that is clean, a date that
// has a stored form (asStored then gives what reads back).
inline bool cleanValue(const Variant& value) {
  if (value.kind() == Variant::Kind::Text) return isCleanText(value.toString());
  if (value.kind() == Variant::Kind::Date) return !value.toDate()->toIso().empty();
  return true;
}

// A value as it reads back once stored: a date to the second, as it is stored.
inline Variant asStored(const Variant& value) {
  if (value.kind() != Variant::Kind::Date) return value;
  if (auto stored = Date::fromIso(value.toDate()->toIso())) return Variant::date(*stored);
  return value;
}

// A column name as the statements of the service quote it.
inline std::string quoted(std::string_view name) {
  return "\"" + std::string(name) + "\"";
}

// A value as it stands in the result, by storage class and untouched (key columns).
inline Variant rawValue(SqlStatement& stmt, int i) {
  switch (stmt.type(i)) {
    case SqlType::Null:
      return Variant::null();
    case SqlType::Integer:
      return Variant::integer(stmt.integer(i));
    case SqlType::Real:
      return Variant::real(stmt.real(i));
    case SqlType::Text:
      break;
  }
  return Variant::text(std::string(stmt.text(i)));
}

}  // namespace database_detail

struct Database::Impl {
  using ColumnValues = database_detail::ColumnValues;

  // Null until connect when the backend is chosen by the location.
  std::unique_ptr<SqlBackend> backend;
  bool backendGiven = false;
  std::string path;
  bool bulk = false;
  ConnectOptions options;
  std::function<void(Database&)> openCheck;
  ConnectFailure failure = ConnectFailure::None;
  std::string failureMessage;
  bool connected = false;
  std::int32_t nextHandle = 1;
  std::unordered_map<std::int32_t, std::unique_ptr<Recordset>> recordsets;
  std::unordered_map<std::string, std::unique_ptr<SqlStatement>> statements;
  NameMap<TableInfo> tables;
  // Per table, where readBack's "SELECT *" has each column and the column's kind.
  NameMap<NameMap<std::pair<int, Kind>>> readBackLayouts;
  RowKeyRegistry rowKeys;
  // Shapes of the statements opened most recently; per-row statements make the list long,
  // so it is bounded.
  static constexpr size_t kShapeCacheSize = 64;
  std::list<std::string> shapeOrder;
  std::unordered_map<std::string,
                     std::pair<std::shared_ptr<const Shape>, std::list<std::string>::iterator>>
      shapes;
  // Statements that differ from one opened before only in their plain numbers ("... WHERE
  // ContactID = 12"), by their text with each number masked: their shape, so that they are
  // not translated again (keyset_reading.cpp).
  static constexpr size_t kNumberedShapesSize = 256;
  std::unordered_map<std::string, std::shared_ptr<const Shape>> numberedShapes;
  // Statements that cannot be masked (texts, dates, True/False), by their exact text: their
  // shape and parameters.
  static constexpr size_t kExactShapesSize = 256;
  struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  std::unordered_map<std::string,
                     std::pair<std::shared_ptr<const Shape>, std::vector<TranslatedSql::Parameter>>,
                     TextHash, std::equal_to<>>
      exactShapes;
  // Buffers of open's number masking, kept to spare two allocations per statement.
  std::string maskedText;
  std::vector<TranslatedSql::Parameter> maskedNumbers;
  std::unordered_map<std::string, std::int64_t> lastReserved;
  int groupDepth = 0;
  // The largest key of each table as last read or written here, valid while the backend's
  // change counter stands at `knownMaxStamp`: every recordset opened and every new row needs
  // it, and while the database is held alone only this connection's own writes move it.
  NameMap<std::int64_t> knownMax;
  std::int64_t knownMaxStamp = -1;
  std::string originKey;  // propagate's look-up key, kept to spare an allocation per write
  // The columns written by setField to one row and not yet stored: consecutive writes to a
  // row become one UPDATE, run before any other statement of this connection.
  struct PendingWrite {
    std::string table;
    std::int64_t key = 0;
    std::vector<std::pair<std::string, Variant>> columns;
  };
  std::optional<PendingWrite> pendingWrite;
  // Told of the writes a connection going away could not store (setErrorService).
  ErrorService* errors = nullptr;
  // The rows a recordset statement read, by statement and parameters, handed to the next
  // recordset opened on them while nothing they read has been written since: per client, the
  // record operations and summaries read the same few rows many times. Only while the
  // database is held alone, where this connection's writes are all the writes.
  struct KeptResult {
    std::shared_ptr<const Shape> shape;  // keeps the shape, and so the key, unique
    std::vector<Row> rows;
    std::int64_t readAt = 0;  // `writeClock` when read
  };
  static constexpr size_t kKeptResultsSize = 1024;
  static constexpr size_t kKeptRowsLimit = 32;
  std::unordered_map<std::string, KeptResult> keptResults;
  std::int64_t writeClock = 0;
  NameMap<std::int64_t> tableWrittenAt;  // `writeClock` at the last write to each table
  std::int64_t anythingWrittenAt = 0;    // at the last write whose tables are not known
  std::int64_t countedChanges = -1;      // the backend's change counter as last accounted
  // Per table and row key, `writeClock` at the row's last write; and the kept results that
  // read one row by its key, by that row.
  NameMap<std::unordered_map<std::int64_t, std::int64_t>> rowsWrittenAt;
  static constexpr size_t kRowStampsSize = 16384;
  size_t rowStampCount = 0;
  NameMap<std::unordered_map<std::int64_t, std::vector<std::string>>> keptByRow;
  // Images of single rows by table and key (row_images.cpp), bounded in number.
  struct RowImage {
    Row row;              // the stored columns in table order
    std::int64_t at = 0;  // `writeClock` when last read or written whole
  };
  static constexpr size_t kRowImagesSize = 4096;
  NameMap<std::unordered_map<std::int64_t, RowImage>> rowImages;
  size_t rowImageCount = 0;

  SqlBackend& db() { return *backend; }

  // Connection, statements and write groups (database_connection.cpp).
  ~Impl();
  // Stores the pending writes and commits an open group, then disconnects; a write that
  // cannot be stored is rolled back with its group and raised after the disconnect.
  void storeAndDisconnect();
  // Ends the outermost group with COMMIT. A COMMIT that fails (or the flush of the pending
  // writes before it) is rolled back and raised; either way no group is open afterwards.
  void commitGroup();
  // Undoes the open transaction. What the open recordsets read or wrote inside it may be
  // gone, so each reads its rows again when next used, as if opened now.
  void rollBack();
  void forget(Recordset& r);
  void disconnect();
  void requireOpen();
  // Connects the backend at `path`, runs the open check, then lets the backend write.
  void connect(Database& owner);
  // Runs a statement of the backend, after the pending writes.
  void exec(std::string_view sql);
  SqlStatement& cached(const std::string& sql);

  // Tables and how their rows are keyed (table_keys.cpp).
  const TableInfo& tableInfo(const std::string& table);
  // The key columns of a table as the translation appends them.
  std::vector<std::string> keyColumnsOf(const std::string& table);
  // The largest key of a table whose keys grow.
  std::int64_t maxKey(const TableInfo& info);
  // " WHERE ..." naming the row of a table by its key, and the binding of its values from
  // parameter `first` on.
  std::string whereKey(const TableInfo& info);
  void bindKey(SqlStatement& stmt, int first, const TableInfo& info, std::int64_t key);
  // The key of a row just inserted into a table whose keys are held as values: the values
  // written, else the table's defaults.
  std::int64_t insertedKey(const TableInfo& info, const ColumnValues& values);
  std::int64_t reserveKey(const TableInfo& info);

  // Recordsets: shapes, keysets and the rows they read (keyset_reading.cpp).
  // The recordset of a handle, and the same with its rows read: the hot paths, inline.
  Recordset& rs(std::int32_t handle) {
    auto it = recordsets.find(handle);
    if (it == recordsets.end())
      throw DatabaseFailure("Operation is not allowed when the object is closed (recordset " +
                            std::to_string(handle) + ").");
    return *it->second;
  }
  Recordset& ready(std::int32_t handle) {
    Recordset& r = rs(handle);
    if (!r.loaded) load(r);
    return r;
  }
  int columnIndex(Recordset& r, std::string_view field) {
    std::string_view name = field;
    if (name.size() > 2 && name.front() == '[' && name.back() == ']')
      name = name.substr(1, name.size() - 2);
    auto it = r.byName.find(name);
    if (it == r.byName.end())
      throw DatabaseFailure(
          "Item cannot be found in the collection corresponding to the requested name or "
          "ordinal: " +
          std::string(name));
    return it->second;
  }
  Row& currentRow(Recordset& r) {
    if (r.cursor >= r.rows.size() || r.currentDeleted)
      throw DatabaseFailure(
          "Either BOF or EOF is True, or the current record has been deleted. Requested operation "
          "requires a current record.");
    return r.rows[r.cursor];
  }
  static Variant convertLenient(Kind kind, std::string text);
  // One value of a result row, as the column's kind reads it.
  static Variant readValue(SqlStatement& stmt, int i, Kind kind);
  // Reads the visible values of a result row into a cached row with room for the keys.
  void readRow(SqlStatement& stmt, const std::vector<Column>& columns, Row& row);
  // The key of each FROM table of a result row, after its visible columns.
  void readKeys(SqlStatement& stmt, const Shape& shape, Row& row);
  TranslatedSql translate(std::string_view accessSql, bool appendKeys);
  // The shape of a statement, from the cache of the most recently used ones.
  std::shared_ptr<const Shape> shapeOf(std::string_view accessSql, const TranslatedSql& translated);
  std::int32_t open(std::string_view accessSql, int lockType);
  void bindParameters(Recordset& r, SqlStatement& stmt);
  // Reads the rows of the keyset.
  void load(Recordset& r);
  // Runs the recordset's statement for the rows of its keyset, and keeps them when they are
  // the statement's whole result.
  void readKeyset(Recordset& r, std::string keptName);
  // The row just inserted into the recordset's first table, from the values written and the
  // table's defaults, without reading it back when the defaults are plain literals.
  Row composeRow(Recordset& r, std::int64_t key, const ColumnValues& values);
  // The row stored by the last updateRecord of a recordset not read yet.
  Row& addedRow(Recordset& r);
  // A row of the recordset's first table read by its key, with the table's defaults.
  Row readBack(Recordset& r, std::int64_t key);

  // Results kept for statements read again (result_reuse.cpp).
  // After a write to one row of a table (or, with no table, to anything), with the backend's
  // change counter as it stood before the write; `updated`, the columns an UPDATE wrote.
  using RowValues = std::vector<std::pair<std::string, Variant>>;
  void noteWrite(const std::string* table, std::int64_t key, std::int64_t changesBefore,
                 const RowValues* updated = nullptr);
  std::int64_t rowWrittenAt(const std::string& table, std::int64_t key) const;
  // Accounts for the rows changed by anything but the service's own writes.
  void noteUntrackedChanges();
  // Forgets every kept result: the tables or the transaction changed under them.
  void forgetKeptResults();
  // The name a recordset's result is kept under; empty when it is not kept.
  std::string keptName(const Recordset& r) const;
  // Fills a recordset about to be read from a kept result of the same statement still
  // valid; false when there is none.
  bool reuseResult(Recordset& r, const std::string& name);
  // Keeps the rows a recordset has just read, when nothing kept them out of its keyset.
  void keepResult(const Recordset& r, bool wholeResult, std::string name);
  // True when the current row of a read recordset is known to hold `value` in column `col`
  // as stored: nothing but the service has written since the rows were read, and every
  // write of the service reaches the rows it holds.
  bool holdsStoredValue(Recordset& r, int col, const Variant& value);

  // Row images (row_images.cpp).
  // The image of a row still valid, else null (and the stale one dropped).
  RowImage* validImage(const std::string& table, std::int64_t key);
  RowImage& newImage(const std::string& table, std::int64_t key, size_t columns);
  // Fills a recordset reading one row by its key from the row's image; false when there is
  // no valid image or the statement reads anything else.
  bool answerFromImage(Recordset& r);
  // The image of the one row a statement reading a whole row has just read.
  void imageFromRead(const Recordset& r);
  // The image of a row just inserted, from the values written and the table's defaults.
  void imageFromInsert(const TableInfo& info, std::int64_t key, const ColumnValues& values);
  // An update of a row's columns reaches its image, which stays valid when nothing else has
  // written the row since (`writtenBefore`, the row's write stamp before this update).
  void imageTakesUpdate(const std::string& table, std::int64_t key, std::int64_t writtenBefore,
                        const RowValues& updated);

  // Search indexes of findRecord (search_index.cpp).
  std::string rowKey(const Recordset& r, size_t row, const std::vector<int>& cols);
  std::unordered_map<std::string, std::vector<std::uint32_t>>& index(Recordset& r,
                                                                     const std::vector<int>& cols);

  // Writes, gathered per row (gathered_writes.cpp).
  // Runs a statement that writes one row of a table, keeping the known largest keys valid
  // (raised by an insert). Answers the key of an inserted row whose key grows: the rowid the
  // backend gave it, else `key`, the auto-number written.
  std::int64_t writeOneRow(SqlStatement& stmt, const TableInfo& info, bool insert, std::int64_t key,
                           std::string_view what, std::string_view name);
  // Keeps a column's new value for the row's UPDATE; a write to another row stores the
  // pending one first.
  void writeLater(const std::string& table, std::int64_t key, const std::string& column,
                  Variant value);
  // Stores the pending row writes in one UPDATE, columns in name order so that rows written
  // alike share a prepared statement.
  void flushWrites();
  static void bind(SqlStatement& stmt, int pos, const Variant& v);
  // Runs a write; a failure says what was written (`what` followed by `name`).
  void step(SqlStatement& stmt, std::string_view what, std::string_view name = {});
  const Column& writableColumn(Recordset& r, int col);

  // Written values reaching every open recordset (write_propagation.cpp).
  void buildKeyMaps(Recordset& r);
  // Updates a cached cell and every index that holds its column.
  void changeCell(Recordset& r, size_t row, int col, const Variant& value);
  // A written value reaches every open recordset that holds the same row and column.
  void propagate(const std::string& table, std::int64_t key, const std::string& column,
                 const Variant& value);
};

}  // namespace lf
