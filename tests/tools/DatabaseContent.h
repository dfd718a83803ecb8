#pragma once

#include <string>

#include "data/Tables.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"

namespace bw {

// Every cell of every table.
inline std::string contentOf(const std::string& database) {
  const std::unique_ptr<Engine> engine = openSqlite(database);
  std::string content;
  for (const SchemaTable& table : schemaTables()) {
    const std::shared_ptr<RowStore> rows =
        engine->read(concat("SELECT * FROM ", table.name, " ORDER BY ", listOf(table.key())));
    for (std::size_t row = 0; row < rows->rowCount(); ++row)
      for (const Column& column : rows->columns) content += textOrEmpty(column.value(row)) + "\f";
  }
  return content;
}

}  // namespace bw
