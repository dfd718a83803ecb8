#include "engine/SqliteCopy.h"

#include <sqlite3.h>

#include <string_view>

#include "engine/Refusals.h"
#include "engine/SqliteHandles.h"
#include "engine/SqliteTrees.h"
#include "text/Text.h"

namespace bw {
namespace {

SqliteHandle open(const std::string& path, int flags) {
  constexpr int kPatience = 5000;  // milliseconds
  sqlite3* opened = nullptr;
  const int status = sqlite3_open_v2(path.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  SqliteHandle database(opened);
  if (status != SQLITE_OK) throw DatabaseRefusal(Refusal::notOpened, sqlite3_errmsg(opened));
  sqlite3_extended_result_codes(opened, 1);
  sqlite3_busy_timeout(opened, kPatience);
  return database;
}

// Sums bytes, eight at a time.
class Sum {
 public:
  void add(std::uint64_t word) noexcept {
    sum_ = (sum_ ^ word) * 0x9E3779B97F4A7C15U;
    sum_ ^= sum_ >> 29U;
  }
  void add(std::string_view bytes) noexcept {
    add(bytes.size());
    while (!bytes.empty()) {
      std::uint64_t word = 0;
      const std::string_view piece = bytes.substr(0, sizeof word);
      for (const char byte : piece) word = word << 8U | static_cast<unsigned char>(byte);
      add(word);
      bytes.remove_prefix(piece.size());
    }
  }
  std::uint64_t value() const noexcept { return sum_; }

 private:
  std::uint64_t sum_ = 0xCBF29CE484222325U;
};

void addCell(Sum& sum, sqlite3_stmt* row, int column) {
  const int type = sqlite3_column_type(row, column);
  sum.add(static_cast<std::uint64_t>(type));
  if (type == SQLITE_INTEGER) {
    sum.add(static_cast<std::uint64_t>(sqlite3_column_int64(row, column)));
  } else if (type != SQLITE_NULL) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
    sum.add(bytes == nullptr ? std::string_view() : std::string_view(bytes, size));
  }
}

// In the order in which the rows stand.
TablePrint printOf(sqlite3& database, const TableTree& table) {
  TablePrint print{.table = table.name};
  Sum sum;
  const SqliteStatement rows =
      prepareSqlite(&database, concat("SELECT * FROM \"", table.name, "\" NOT INDEXED"));
  for (; stepSqlite(rows.get()); ++print.rows)
    for (int i = 0; i < sqlite3_column_count(rows.get()); ++i) addCell(sum, rows.get(), i);
  print.sum = sum.value();
  return print;
}

std::vector<TablePrint> printsOf(sqlite3& database) {
  std::vector<TablePrint> prints;
  for (const TableTree& table : tableTrees(database)) prints.push_back(printOf(database, table));
  return prints;
}

void copyPages(sqlite3* from, sqlite3* to) {
  sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
  if (backup == nullptr) refuseSqlite(sqlite3_extended_errcode(to), sqlite3_errmsg(to));
  const int stepped = sqlite3_backup_step(backup, -1);
  const int finished = sqlite3_backup_finish(backup);
  if (finished != SQLITE_OK) refuseSqlite(finished, sqlite3_errstr(finished));
  if (stepped != SQLITE_DONE) refuseSqlite(stepped, sqlite3_errstr(stepped));
}

}  // namespace

std::vector<TablePrint> copySqlite(const std::string& from, const std::string& to) {
  const SqliteHandle source = open(from, SQLITE_OPEN_READWRITE);
  const SqliteHandle target = open(to, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  // Both the pages and the sums are those of its moment.
  const SqliteStatement snapshot = prepareSqlite(source.get(), "SELECT 1 FROM sqlite_schema");
  stepSqlite(snapshot.get());
  copyPages(source.get(), target.get());
  return printsOf(*source);
}

std::vector<TablePrint> printsOf(const std::string& path) {
  const SqliteHandle database = open(path, SQLITE_OPEN_READWRITE);
  const SqliteStatement snapshot = prepareSqlite(database.get(), "SELECT 1 FROM sqlite_schema");
  stepSqlite(snapshot.get());
  return printsOf(*database);
}

}  // namespace bw
