#include <array>

#include "data/Dialect.h"
#include "text/Text.h"

namespace bw {
namespace {

// A record set knows a column's type by its declaration. The engine itself keeps neither type nor
// size nor range, so each column has its rule. Only texts that are written as date() and its like
// write them are good: other spellings of a moment would not compare with them.
// clang-format off
constexpr std::array kTypes{
    Dialect::Type{.type = FieldType::smallint, .name = "SMALLINT", .start = "0",
                  .rule = "typeof(#) = 'integer' AND # BETWEEN -32768 AND 32767",
                  .noValue = "# IS NULL OR "},
    Dialect::Type{.type = FieldType::integer, .name = "INTEGER", .start = "0",
                  .rule = "typeof(#) = 'integer' AND # BETWEEN -2147483648 AND 2147483647",
                  .noValue = "# IS NULL OR "},
    Dialect::Type{.type = FieldType::text, .collation = Collation::letters, .name = "TEXT",
                  .start = "''", .collate = " COLLATE NOCASE", .rule = "length(#) <= 255"},
    Dialect::Type{.type = FieldType::text, .collation = Collation::codes, .name = "TEXT",
                  .start = "''", .collate = " COLLATE RTRIM", .rule = "length(#) <= 255"},
    Dialect::Type{.type = FieldType::date, .name = "DATE", .rule = "# IS date(#, '+0 days')"},
    Dialect::Type{.type = FieldType::time, .name = "TIME", .rule = "# IS time(#, '+0 seconds')"},
    Dialect::Type{.type = FieldType::dateTime, .name = "DATETIME",
                  .rule = "# IS datetime(#, '+0 seconds')"},
};
// clang-format on

// What the planner must know of the statuses: they narrow less than a patient does, more than an
// insurance. Statistics gathered from the rows would mislead it about the statuses that are rare.
constexpr std::array<std::string_view, 3> kHints{
    "ANALYZE sqlite_schema",
    "INSERT INTO sqlite_stat1 (tbl, idx, stat)"
    " VALUES ('PatientCharges', 'ChargesByStatus', '1000000 2000 400')",
    "ANALYZE sqlite_schema",
};

constexpr std::string_view kChangeLog =
    "CREATE TABLE ChangeLog (\n"
    "  Number INTEGER PRIMARY KEY,\n"
    "  Moment DATETIME NOT NULL,\n"
    "  UserName TEXT NOT NULL,\n"
    "  Station TEXT NOT NULL,\n"
    "  RowCount INTEGER NOT NULL,\n"
    "  Statement TEXT NOT NULL\n"
    ")";

std::string trigger(const SchemaGuard& guard) {
  std::string text = concat("CREATE TRIGGER ", guard.name, " BEFORE ", guard.event, " ON ",
                            guard.table, guard.when.empty() ? "" : " WHEN ", guard.when, "\nBEGIN");
  for (const SchemaGuard::Refusal& refusal : guard.refusals)
    text += concat("\n  SELECT RAISE(ABORT, '", refusal.sentence, "')\n  WHERE ", refusal.condition,
                   ";");
  return text + "\nEND";
}

}  // namespace

const Dialect kSqliteDialect{.engine = SqlDialect::sqlite,
                             .types = kTypes,
                             .inKeyOrder = "WITHOUT ROWID",
                             .guard = trigger,
                             .hints = kHints,
                             .version = "PRAGMA user_version = 1",
                             .changeLog = kChangeLog};

}  // namespace bw
