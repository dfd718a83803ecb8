#pragma once

#include <unordered_map>
#include <vector>

#include "engine/PostgresLink.h"
#include "engine/PostgresRows.h"

namespace bw {

// The keys of a database's tables, and the order of rows by them: the server keeps none.
class PostgresKeys {
 public:
  // Brings rows into the order of the key of the table that their first column comes from, as far
  // as its columns are there.
  void order(PostgresLink& link, const PostgresRows& read, RowStore& rows);
  // After a change of the tables.
  void forget() noexcept { keys_.clear(); }

 private:
  const std::vector<int>& keyOf(PostgresLink& link, Oid table);

  std::unordered_map<Oid, std::vector<int>> keys_;  // numbers of columns; none for queries
};

// Whether a statement itself says in which order its rows come.
bool saysAnOrder(std::string_view statement);

}  // namespace bw
