#include "engine/SqliteTrees.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <utility>

#include "engine/SqliteHandles.h"
#include "text/Text.h"

namespace bw {
namespace {

std::string cell(const SqliteStatement& statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
  return text == nullptr ? std::string() : std::string(text);
}

TreeColumn::Kind kindOf(std::string_view declared) {
  using enum TreeColumn::Kind;
  constexpr std::array kKinds{std::pair{std::string_view("SMALLINT"), number},
                              std::pair{std::string_view("INTEGER"), number},
                              std::pair{std::string_view("TEXT"), text},
                              std::pair{std::string_view("DATE"), moment},
                              std::pair{std::string_view("TIME"), moment},
                              std::pair{std::string_view("DATETIME"), moment}};
  const auto* found = std::ranges::find_if(
      kKinds, [declared](const auto& one) { return sameName(one.first, declared); });
  return found == kKinds.end() ? other : found->second;
}

// Behind the list of its columns.
std::string conditionOf(const std::string& definition) {
  constexpr std::string_view kWhere = ") WHERE ";
  const std::size_t at = definition.find(kWhere);
  return at == std::string::npos ? std::string() : definition.substr(at + kWhere.size());
}

std::size_t placeOf(const std::vector<TableTree>& tables, const std::string& name) {
  const auto found = std::ranges::find_if(
      tables, [&name](const TableTree& table) { return sameName(table.name, name); });
  return static_cast<std::size_t>(found - tables.begin());
}

std::size_t placeOf(const TableTree& table, const std::string& column) {
  const auto found = std::ranges::find_if(
      table.columns, [&column](const TreeColumn& one) { return sameName(one.name, column); });
  return static_cast<std::size_t>(found - table.columns.begin());
}

}  // namespace

bool TableTree::isLike(const TableTree& other) const {
  return inKeyOrder == other.inKeyOrder &&
         std::ranges::equal(columns, other.columns, [](const TreeColumn& a, const TreeColumn& b) {
           return a.kind == b.kind && a.keyPlace == b.keyPlace;
         });
}

std::vector<std::size_t> TableTree::key() const {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].keyPlace > 0) places.push_back(i);
  std::ranges::sort(places, {}, [this](std::size_t place) { return columns[place].keyPlace; });
  return places;
}

std::vector<TableTree> tableTrees(sqlite3& database) {
  const SqliteStatement columns =
      prepareSqlite(&database,
                    "SELECT m.name, m.sql LIKE '%WITHOUT ROWID' AND m.sql NOT LIKE '% DESC)%' AND "
                    "m.sql NOT LIKE '% DESC,%', c.name, c.type, "
                    "c.pk FROM sqlite_schema m, pragma_table_info(m.name) c "
                    "WHERE m.type = 'table' AND m.rootpage > 0 ORDER BY m.rowid, c.cid");
  std::vector<TableTree> tables;
  while (stepSqlite(columns.get())) {
    std::string name = cell(columns, 0);
    if (tables.empty() || tables.back().name != name)
      tables.push_back({std::move(name), sqlite3_column_int(columns.get(), 1) != 0, {}});
    tables.back().columns.push_back(
        {cell(columns, 2), kindOf(cell(columns, 3)), sqlite3_column_int(columns.get(), 4)});
  }
  return tables;
}

std::vector<IndexTree> indexTrees(sqlite3& database) {
  const std::string rowNumber = "rowid";
  const SqliteStatement columns = prepareSqlite(
      &database,
      "SELECT m.name, m.tbl_name, m.sql, coalesce(x.name, iif(x.cid = -1, 'rowid', '')) "
      "FROM sqlite_schema m, pragma_index_xinfo(m.name) x "
      "WHERE m.type = 'index' AND m.rootpage > 0 ORDER BY m.rowid, x.seqno");
  std::vector<IndexTree> indexes;
  while (stepSqlite(columns.get())) {
    std::string name = cell(columns, 0);
    if (indexes.empty() || indexes.back().name != name)
      indexes.push_back({std::move(name), cell(columns, 1), conditionOf(cell(columns, 2)), {}});
    indexes.back().columns.push_back(cell(columns, 3));
  }
  std::erase_if(indexes, [&rowNumber](const IndexTree& index) {
    return index.columns.back() != rowNumber || std::ranges::count(index.columns, "") > 0;
  });
  return indexes;
}

std::vector<TreeReference> treeReferences(sqlite3& database, const std::vector<TableTree>& tables) {
  const SqliteStatement keys =
      prepareSqlite(&database,
                    "SELECT m.name, f.\"from\", f.\"table\" FROM sqlite_schema m, "
                    "pragma_foreign_key_list(m.name) "
                    "f WHERE m.type = 'table' GROUP BY m.name, f.id HAVING count(*) = 1");
  std::vector<TreeReference> references;
  while (stepSqlite(keys.get())) {
    const std::size_t table = placeOf(tables, cell(keys, 0));
    const std::size_t parent = placeOf(tables, cell(keys, 2));
    if (table == tables.size() || parent == tables.size()) continue;
    const std::size_t column = placeOf(tables[table], cell(keys, 1));
    if (column < tables[table].columns.size() && tables[parent].key().size() == 1)
      references.push_back({table, column, parent});
  }
  return references;
}

}  // namespace bw
