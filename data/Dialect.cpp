#include "data/Dialect.h"

#include <algorithm>

#include "text/Text.h"

namespace bw {

const Dialect::Type& Dialect::typeOf(const SchemaColumn& column) const noexcept {
  return *std::ranges::find_if(types, [&column](const Type& type) {
    return type.type == column.type &&
           (column.type != FieldType::text || type.collation == column.collation);
  });
}

std::string Dialect::named(std::string_view constraint) const {
  return guard != nullptr ? std::string(constraint) : concat("\"", constraint, "\"");
}

const Dialect& dialectOf(SqlDialect engine) noexcept {
  return engine == SqlDialect::sqlite ? kSqliteDialect : kPostgresDialect;
}

}  // namespace bw
