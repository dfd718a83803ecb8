#include <array>
#include <ostream>

#include "data/Schema.h"
#include "engine/ChangeLog.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/NewOffice.h"
#include "tools/OfficeRows.h"

namespace bw {
namespace {

constexpr std::array kLineColumns{SchemaColumn{.name = "Moment"}, SchemaColumn{.name = "UserName"},
                                  SchemaColumn{.name = "Station"}, SchemaColumn{.name = "RowCount"},
                                  SchemaColumn{.name = "Statement"}};
constexpr SchemaTable kLines{.name = kChangeLogTable, .about = "", .columns = kLineColumns};

std::shared_ptr<RowStore> linesOf(Engine& engine) {
  return engine.read(
      concat("SELECT ", listOf(kLineColumns), " FROM ", kChangeLogTable, " ORDER BY Number"));
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

void refuse(const std::string& difference) {
  if (!difference.empty()) throw Refused(difference);
}

// The log of changes as it is kept or was stopped. Its lines are numbered anew, in their order.
void copyLog(Engine& from, Engine& to, std::ostream& out) {
  if (!from.hasTable(kChangeLogTable)) return;
  keepChangeLog(to, true);
  const std::shared_ptr<RowStore> lines = linesOf(from);
  copyRows(*lines, to, kLines);
  refuse(differenceOf(*lines, *linesOf(to), kLines));
  keepChangeLog(to, !from.hasTable(kChangeLogStopped));
  out << "Copied and compared the log of changes, " << lines->rowCount() << " lines.\n";
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
    refuse(differenceOf(*rows, *rowsOf(to, table), table));
    total += rows->rowCount();
  }
  copyLog(from, to, out);
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
