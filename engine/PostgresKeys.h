#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/PostgresLink.h"
#include "engine/PostgresRows.h"

namespace bw {

// The keys of a database's tables and saved queries, and the order of rows by them: the server
// keeps none.
class PostgresKeys {
 public:
  // Brings rows into the order of the key of the table that their first column comes from, as far
  // as its columns are there.
  void order(PostgresLink& link, const PostgresRows& read, RowStore& rows);
  // Where a statement orders the rows of one whole table or query: the key, for the rows that are
  // equal then.
  std::string behindItsOrder(PostgresLink& link, const std::string& statement);
  // After a change of the tables.
  void forget() noexcept { tables_.clear(); }

 private:
  struct Table {
    std::string name;
    std::vector<int> key;  // numbers of columns
    std::string columns;   // of the key: "a, b"
  };
  void load(PostgresLink& link);
  const Table* tableOf(PostgresLink& link, Oid table);

  std::unordered_map<Oid, Table> tables_;
};

// Whether a statement itself says in which order its rows come.
bool saysAnOrder(std::string_view statement);

}  // namespace bw
