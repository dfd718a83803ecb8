#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;

namespace bw {

// The trees of pages in which an embedded database keeps tables and indexes, as its schema tells of
// them.

struct TreeColumn {
  enum class Kind : std::uint8_t { number, moment, text, other };

  std::string name;
  Kind kind = Kind::other;
  int keyPlace = 0;  // from 1 on; 0 for a column outside the key
};

struct TableTree {
  std::string name;
  bool inKeyOrder = false;  // its rows stand in the order of the key, ascending
  std::vector<TreeColumn> columns;

  // Whether rows of one would pass for rows of the other.
  bool isLike(const TableTree& other) const;
  // The columns of the key, in its order.
  std::vector<std::size_t> key() const;
};

struct IndexTree {
  std::string name;
  std::string table;
  std::string condition;             // of the rows that stand in it, "" for all
  std::vector<std::string> columns;  // the last is the row's number
};

// One column that names a row of a table by that table's key of one column.
struct TreeReference {
  std::size_t table = 0;  // place in the list of tables
  std::size_t column = 0;
  std::size_t parent = 0;
};

std::vector<TableTree> tableTrees(sqlite3& database);
// Of tables with row numbers, and without expressions.
std::vector<IndexTree> indexTrees(sqlite3& database);
std::vector<TreeReference> treeReferences(sqlite3& database, const std::vector<TableTree>& tables);

}  // namespace bw
