#include <array>

#include "data/Dialect.h"
#include "data/FoldFunction.h"
#include "engine/ServerNames.h"

namespace bw {
namespace {

// Columns of numbers are wider than what they take, so that a number that is too large is refused
// by the column's own rule, which names it. The type bpchar compares without trailing blanks, which
// its length leaves out as well. In a database of the locale C citext compares without regard to
// the case of ASCII letters alone. Moments take no text that is none, but they take infinity,
// 24:00:00 and dates before Christ.
// clang-format off
constexpr std::array kTypes{
    Dialect::Type{.type = FieldType::smallint, .name = "int4", .start = "0",
                  .rule = "# BETWEEN -32768 AND 32767"},
    Dialect::Type{.type = FieldType::integer, .name = "int8", .start = "0",
                  .rule = "# BETWEEN -2147483648 AND 2147483647"},
    Dialect::Type{.type = FieldType::text, .collation = Collation::letters, .name = "citext",
                  .start = "''", .rule = "length(#) <= 255"},
    Dialect::Type{.type = FieldType::text, .collation = Collation::codes, .name = "bpchar",
                  .start = "''",
                  .rule = "length(#) + octet_length(#) - octet_length(#::text) <= 255"},
    Dialect::Type{.type = FieldType::date, .name = "date",
                  .rule = "# BETWEEN '0001-01-01' AND '9999-12-31'"},
    Dialect::Type{.type = FieldType::time, .name = "time(0)", .rule = "# < '24:00:00'"},
    Dialect::Type{.type = FieldType::dateTime, .name = "timestamp(0)",
                  .rule = "# BETWEEN '0001-01-01' AND '9999-12-31 23:59:59'"},
};
// clang-format on

constexpr std::string_view kChangeLog =
    "CREATE TABLE ChangeLog ("
    "Number int8 GENERATED ALWAYS AS IDENTITY PRIMARY KEY, Moment timestamp(0) NOT NULL, "
    "UserName text NOT NULL, Station text NOT NULL, RowCount int8 NOT NULL, "
    "Statement text NOT NULL)";

std::vector<std::string> beforehand() {
  return {"CREATE EXTENSION IF NOT EXISTS citext", foldFunctionStatement(),
          std::string(kDesksStatement)};
}

}  // namespace

const Dialect kPostgresDialect{.engine = SqlDialect::postgres,
                               .types = kTypes,
                               .beforehand = beforehand,
                               .changeLog = kChangeLog};

}  // namespace bw
