#include "engine/SqliteHandles.h"

#include <sqlite3.h>

#include <string>
#include <string_view>

#include "engine/BreakableReading.h"
#include "engine/Refusals.h"

namespace bw {
namespace {

// What follows the last colon of the engine's text: the name of a constraint or of a column.
std::string detailOf(std::string_view message) {
  const std::size_t colon = message.rfind(": ");
  return std::string(colon == std::string_view::npos ? message : message.substr(colon + 2));
}

}  // namespace

void CloseSqlite::operator()(sqlite3* database) const noexcept { sqlite3_close_v2(database); }

void FinalizeSqlite::operator()(sqlite3_stmt* statement) const noexcept {
  sqlite3_finalize(statement);
}

BreakableSqlite::BreakableSqlite(sqlite3& database) : database_(database) {
  constexpr int kStepsBetween = 1'000'000;  // of the engine's machine: some hundredths of a second
  const auto ask = [](void* asked) noexcept -> int {
    return (*static_cast<BreakableReading::Asked*>(asked))() ? 1 : 0;
  };
  if (BreakableReading::Asked* asked = BreakableReading::current())
    sqlite3_progress_handler(&database_, kStepsBetween, ask, asked);
}

BreakableSqlite::~BreakableSqlite() { sqlite3_progress_handler(&database_, 0, nullptr, nullptr); }

void refuseSqlite(int code, const char* message) {
  switch (code) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_ROWID:
      throw DatabaseRefusal(Refusal::duplicateKey);
    case SQLITE_CONSTRAINT_CHECK:
      throw DatabaseRefusal(Refusal::check, detailOf(message));
    case SQLITE_CONSTRAINT_NOTNULL:
      throw DatabaseRefusal(Refusal::missingValue, detailOf(message));
    case SQLITE_CONSTRAINT_TRIGGER:
      throw DatabaseRefusal(Refusal::rule, message);  // the schema's own sentence
    default:
      break;
  }
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw DatabaseRefusal(Refusal::locked);
    case SQLITE_INTERRUPT:
      throw BrokenOff();
    case SQLITE_FULL:
      throw DatabaseRefusal(Refusal::full);
    case SQLITE_READONLY:
      throw DatabaseRefusal(Refusal::readOnly);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      throw DatabaseRefusal(Refusal::damaged);
    case SQLITE_IOERR:
      throw DatabaseRefusal(Refusal::unreadable);
    case SQLITE_NOMEM:
      throw RuntimeError(ErrorNumber::database, std::string(errorText(ErrorNumber::outOfMemory)));
    default:
      throw DatabaseRefusal(Refusal::statement, message);
  }
}

SqliteStatement prepareSqlite(sqlite3* database, std::string_view text) {
  sqlite3_stmt* prepared = nullptr;
  const int status =
      sqlite3_prepare_v2(database, text.data(), static_cast<int>(text.size()), &prepared, nullptr);
  SqliteStatement statement(prepared);
  if (status != SQLITE_OK)
    refuseSqlite(sqlite3_extended_errcode(database), sqlite3_errmsg(database));
  if (!statement) throw DatabaseRefusal(Refusal::statement, "The statement is empty.");
  return statement;
}

bool stepSqlite(sqlite3_stmt* statement) {
  const int status = sqlite3_step(statement);
  if (status == SQLITE_ROW) return true;
  if (status == SQLITE_DONE) return false;
  sqlite3* database = sqlite3_db_handle(statement);
  refuseSqlite(sqlite3_extended_errcode(database), sqlite3_errmsg(database));
}

}  // namespace bw
