#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "records/Column.h"

namespace bw {

// The rows of a record set, column by column, in load order. A row's number never changes;
// a deleted row only leaves the record set's view.
class RowStore {
 public:
  std::vector<Column> columns;

  std::size_t rowCount() const noexcept { return columns.empty() ? 0 : columns.front().size(); }

  // Without regard to case; nothing when there is none.
  std::optional<std::size_t> find(std::string_view name) const noexcept;
  // Raises 3265 when there is none.
  std::size_t indexOf(std::string_view name) const;

  // Stores a value that fits the column's type already. Columns that are looked up by this one keep
  // what they have in that row.
  void set(std::size_t row, std::size_t column, const Value& value);

  // Brings rows into the order of the columns with those indexes, the first one before the others.
  // Not with looked-up columns.
  void orderBy(const std::vector<std::size_t>& keys);

  std::size_t bytes() const noexcept;
};

}  // namespace bw
