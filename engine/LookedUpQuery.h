#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "engine/Engine.h"

namespace bw {

// A saved query that takes the rows of one table and looks further columns up in others: a row of
// the table is one row of the query, whether or not what it names exists. The engine's view and the
// reading on our side both come from this description. Each column is a field once.

// Where columns are looked up: in the row of `table` whose `key` is what stands in column `foreign`
// of `from`.
struct LookUpTable {
  std::string_view alias;
  std::string_view table;
  std::string_view key;
  std::string_view from;  // alias of the base or of a table that stands before
  std::string_view foreign;
};

// Words for the numbers of a column of the base, from 0 on; "" for every other number. The field's
// column is "word".
struct LookUpWords {
  std::string_view alias;
  std::string_view foreign;
  std::span<const std::string_view> words;
};

struct LookUpField {
  std::string_view from;  // alias
  std::string_view column;
  std::string_view name = {};  // of the query's column, when it is not the column's own
  std::string_view shown() const noexcept { return name.empty() ? column : name; }
};

struct LookedUpQuery {
  std::string_view name;
  std::string_view base;
  std::string_view alias;                 // of the base
  std::span<const std::string_view> key;  // of the base; its rows come in this order
  std::span<const LookUpTable> tables;
  LookUpWords words;
  std::span<const LookUpField> fields;
};

// The statement that makes the engine's view.
std::string viewStatement(const LookedUpQuery& query);

// The rows of "SELECT * FROM name [WHERE criteria]", in the order of the key. Where the criteria
// compare columns of the base, and of the tables those that the base names itself, with numbers or
// moments, joined by AND, further columns are looked up on our side, all as of one moment; else
// the engine's view delivers them. nullptr for every other statement.
std::shared_ptr<RowStore> readLookedUp(Engine& engine, const LookedUpQuery& query,
                                       std::string_view statement);

}  // namespace bw
