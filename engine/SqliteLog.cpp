#include "engine/SqliteLog.h"

#include <sqlite3.h>

#include "engine/SqliteHandles.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

void run(sqlite3& database, std::string_view text) {
  stepSqlite(prepareSqlite(&database, text).get());
}

// A page is written although it stays as it is.
void writeSomething(sqlite3& database) {
  const SqliteStatement version = prepareSqlite(&database, "PRAGMA user_version");
  stepSqlite(version.get());
  run(database, concat("PRAGMA user_version=", sqlite3_column_int(version.get(), 0)));
}

}  // namespace

void commitNothing(sqlite3& database) {
  run(database, "BEGIN IMMEDIATE");
  try {
    writeSomething(database);
    run(database, "COMMIT");
  } catch (const RuntimeError&) {
    if (sqlite3_get_autocommit(&database) == 0) run(database, "ROLLBACK");
    throw;
  }
}

bool mayStandInLog(sqlite3& database) noexcept {
  if (sqlite3_get_autocommit(&database) == 0) return false;
  // What can fail once the last page of a commit is written.
  const int code = sqlite3_extended_errcode(&database);
  return code == SQLITE_IOERR_FSYNC || code == SQLITE_IOERR_SHMSIZE || code == SQLITE_IOERR_SHMMAP;
}

bool takeBackCommit(sqlite3& database) noexcept {
  try {
    commitNothing(database);
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace bw
