#include <ostream>

#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/NewOffice.h"
#include "tools/OfficeRows.h"

namespace bw {
namespace {

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
    if (const std::string difference = differenceOf(*rows, *rowsOf(to, table), table);
        !difference.empty())
      throw Refused(difference);
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
