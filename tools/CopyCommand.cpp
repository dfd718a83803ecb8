#include <ostream>

#include "data/Tables.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/NewOffice.h"

namespace bw {
namespace {

// The rows of a table in the order of its key.
std::shared_ptr<RowStore> rowsOf(Engine& engine, const SchemaTable& table) {
  std::shared_ptr<RowStore> rows =
      engine.read(concat("SELECT ", listOf(table.columns), " FROM ", table.name));
  std::vector<std::size_t> key;
  for (const SchemaColumn& column : table.key()) key.push_back(rows->indexOf(column.name));
  rows->orderBy(key);
  return rows;
}

void copyRows(const RowStore& rows, Engine& to, const SchemaTable& table) {
  std::vector<std::string> columns;
  for (const SchemaColumn& column : table.columns) columns.emplace_back(column.name);
  const std::unique_ptr<BulkInsert> insert =
      to.prepareInsert(std::string(table.name), columns, RowsAre::good);
  std::vector<Value> values(columns.size());
  for (std::size_t row = 0; row < rows.rowCount(); ++row) {
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = rows.columns[i].value(row);
    insert->row(values);
  }
}

void refuseDifference(const RowStore& wanted, const RowStore& copied, const SchemaTable& table) {
  if (wanted.rowCount() != copied.rowCount())
    throw Refused(concat("The copy has another number of rows in ", table.name));
  for (std::size_t i = 0; i < wanted.columns.size(); ++i)
    for (std::size_t row = 0; row < wanted.rowCount(); ++row)
      if (wanted.columns[i].value(row) != copied.columns[i].value(row))
        throw Refused(concat("The copy differs in ", table.name, ".", table.columns[i].name,
                             ", row ", row + 1));
}

// Into a new database, which has lookup rows of its own.
void copyAll(Engine& from, Engine& to, std::ostream& out) {
  EngineTransaction snapshot(from, TransactionKind::snapshot);
  const auto tables = schemaTables();
  for (const SchemaTable& table : tables)
    if (table.isLookup) to.execute(concat("DELETE FROM ", table.name));
  std::size_t total = 0;
  for (const SchemaTable& table : tables) {
    const std::shared_ptr<RowStore> rows = rowsOf(from, table);
    copyRows(*rows, to, table);
    refuseDifference(*rows, *rowsOf(to, table), table);
    total += rows->rowCount();
  }
  snapshot.end();
  out << "Copied and compared " << total << " rows.\n";
}

}  // namespace

Exit copyDatabase(const std::filesystem::path& from, const std::filesystem::path& to,
                  std::ostream& out, const Access& access) {
  const std::unique_ptr<Engine> source = openEngine(from.string());
  makeOffice(
      to, [&](Engine& target) { copyAll(*source, target, out); }, out, access);
  return Exit::done;
}

}  // namespace bw
