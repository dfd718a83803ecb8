#include "tools/OfficeRows.h"

#include <vector>

#include "text/Text.h"

namespace bw {

std::shared_ptr<RowStore> rowsOf(Engine& engine, const SchemaTable& table) {
  std::shared_ptr<RowStore> rows =
      engine.read(concat("SELECT ", listOf(table.columns), " FROM ", table.name));
  std::vector<std::size_t> key;
  for (const SchemaColumn& column : table.key()) key.push_back(rows->indexOf(column.name));
  rows->orderBy(key);
  return rows;
}

std::string differenceOf(const RowStore& wanted, const RowStore& copied, const SchemaTable& table) {
  if (wanted.rowCount() != copied.rowCount())
    return concat("The copy has another number of rows in ", table.name);
  for (std::size_t i = 0; i < wanted.columns.size(); ++i)
    for (std::size_t row = 0; row < wanted.rowCount(); ++row)
      if (wanted.columns[i].value(row) != copied.columns[i].value(row))
        return concat("The copy differs in ", table.name, ".", table.columns[i].name, ", row ",
                      row + 1);
  return {};
}

}  // namespace bw
