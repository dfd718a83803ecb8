#pragma once

#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace bw {

// What the sources share that know the embedded engine.

struct CloseSqlite {
  void operator()(sqlite3* database) const noexcept;
};
struct FinalizeSqlite {
  void operator()(sqlite3_stmt* statement) const noexcept;
};
using SqliteHandle = std::unique_ptr<sqlite3, CloseSqlite>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeSqlite>;

// Raises the refusal that one of the engine's codes stands for.
[[noreturn]] void refuseSqlite(int code, const char* message);

SqliteStatement prepareSqlite(sqlite3* database, std::string_view text);

// As long as it lives the statements of a database can be broken off (BreakableReading).
class BreakableSqlite {
 public:
  explicit BreakableSqlite(sqlite3& database);
  ~BreakableSqlite();
  BreakableSqlite(const BreakableSqlite&) = delete;
  BreakableSqlite& operator=(const BreakableSqlite&) = delete;

 private:
  sqlite3& database_;
};

// True for a row, false at the end.
bool stepSqlite(sqlite3_stmt* statement);

}  // namespace bw
