#pragma once

#include <string>

#include "data/Tables.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"

namespace bw {

// All cells of a result, each closed by a "|".
inline std::string cellsOf(const RowStore& rows) {
  std::string cells;
  for (std::size_t row = 0; row < rows.rowCount(); ++row)
    for (const Column& column : rows.columns) cells += textOrEmpty(column.value(row)) + "|";
  return cells;
}

// Every cell of every table.
inline std::string contentOf(const std::string& database) {
  const std::unique_ptr<Engine> engine = openSqlite(database);
  std::string content;
  for (const SchemaTable& table : schemaTables())
    content += cellsOf(
        *engine->read(concat("SELECT * FROM ", table.name, " ORDER BY ", listOf(table.key()))));
  return content;
}

}  // namespace bw
